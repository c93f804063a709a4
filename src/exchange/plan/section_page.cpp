// A page of sections in the making.
#include "exchange/plan/section_page.h"

#include "exchange/plan/plan.h"
#include "exchange/text.h"

namespace fenmark::exchange {

namespace {

constexpr char kSectionStyle[] = R"(<style>
text{font-family:"IPAGothic","Noto Sans CJK JP","Yu Gothic","MS Gothic",sans-serif;fill:#222}
.ground{fill:none;stroke:#1b5e20;stroke-width:.4;stroke-linejoin:round}
.planned{fill:none;stroke:#1565c0;stroke-width:.4;stroke-dasharray:3 .8}
.thin{fill:none;stroke:#222;stroke-width:.15}
.faint{fill:none;stroke:#9aa7ad;stroke-width:.1}
.frame{fill:none;stroke:#222;stroke-width:.4}
.centre{fill:none;stroke:#c62828;stroke-width:.18;stroke-dasharray:4 1 .6 1}
.curve{fill:none;stroke:#c62828;stroke-width:.3}
.base{fill:none;stroke:#222;stroke-width:.3}
.lot{fill:#f4efdf;stroke:#333;stroke-width:.3}
circle{fill:#fff;stroke:#333;stroke-width:.2}
.north{fill:#333}
.title{font-weight:bold}
circle.point{fill:#1b5e20;stroke:none}
</style>
)";

void moveTo(std::string& path, char command, const PaperPoint& at) {
    path += command;
    path += mm(at.x);
    path += ' ';
    path += mm(at.y);
}

} // namespace

SectionPage::SectionPage(const std::string& paper, bool upright) {
    const PlanSheet sheet({}, 0.0, 1, paper, upright); // knows the sizes of paper
    width_ = sheet.width();
    height_ = sheet.height();
}

void SectionPage::line(const char* style, const PaperPoint& from, const PaperPoint& to) {
    polyline(style, {from, to});
}

void SectionPage::polyline(const char* style, const std::vector<PaperPoint>& points) {
    if (points.size() < 2) {
        return;
    }
    body_ += "<path class=\"" + std::string(style) + "\" d=\"";
    for (std::size_t i = 0; i < points.size(); ++i) {
        moveTo(body_, i == 0 ? 'M' : 'L', points[i]);
    }
    body_ += "\"/>\n";
}

void SectionPage::dot(const PaperPoint& at) {
    body_ += "<circle class=\"point\" cx=\"" + mm(at.x) + "\" cy=\"" + mm(at.y) + "\" r=\".4\"/>\n";
}

void SectionPage::text(const PaperPoint& at, double size, const char* anchor, std::string_view content, double degrees,
                       const char* style) {
    body_ += "<text font-size=\"" + mm(size) + "\" text-anchor=\"" + anchor + '"';
    if (*style != '\0') {
        body_ += " class=\"" + std::string(style) + '"';
    }
    if (degrees == 0.0) {
        body_ += " x=\"" + mm(at.x) + "\" y=\"" + mm(at.y + baseLineBelow(size)) + '"';
    } else {
        body_ += " transform=\"translate(" + mm(at.x) + ' ' + mm(at.y) + ") rotate(" + mm(degrees) + ")\" y=\"" +
                 mm(baseLineBelow(size)) + '"';
    }
    // What runs off the paper would only cost time in a PDF.
    body_ += '>' + xmlText(cutToEms(content, (width_ + height_) / size)) + "</text>\n";
}

void SectionPage::figure(const PaperPoint& at, double width, double height, std::string_view svg) {
    // Its own size stands in units of the page already.
    const std::size_t inside = svg.find('>');
    const std::size_t end = svg.rfind("</svg>");
    if (inside == std::string_view::npos || end == std::string_view::npos || end <= inside) {
        return;
    }
    body_ += "<g transform=\"translate(" + mm(at.x) + ' ' + mm(at.y) + ")\"><rect class=\"thin\" width=\"" + mm(width) +
             "\" height=\"" + mm(height) + "\"/>";
    body_ += svg.substr(inside + 1, end - inside - 1);
    body_ += "</g>\n";
}

void SectionPage::finish(std::string_view title, std::string_view remarks,
                         const std::vector<std::pair<std::string, std::string>>& titles) {
    body_ += "<rect class=\"frame\" x=\"" + mm(kMargin) + "\" y=\"" + mm(kMargin) + "\" width=\"" +
             mm(width_ - 2.0 * kMargin) + "\" height=\"" + mm(height_ - 2.0 * kMargin) + "\"/>\n";
    text({kMargin + 5.0, kMargin + 7.0}, 5.0, "start", title, 0.0, "title");
    text({width_ - kMargin - 5.0, kMargin + 7.0}, 2.8, "end", remarks);
    std::string line;
    for (const auto& [name, value] : titles) {
        line += (line.empty() ? "" : "　") + name + " " + value;
    }
    if (!line.empty()) {
        text({width_ - kMargin - 5.0, kMargin + 11.5}, 2.4, "end", line);
    }
}

std::string SectionPage::svg() const {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" +
           mm(width_) + "mm\" height=\"" + mm(height_) + "mm\" viewBox=\"0 0 " + mm(width_) + ' ' + mm(height_) +
           "\">\n" + kSectionStyle + "<rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>\n" + body_ + "</svg>\n";
}

int roundSectionScale(double wanted) {
    for (long long decade = 10; decade <= 100000000; decade *= 10) {
        for (const int factor : {10, 20, 25, 30, 50}) {
            const long long scale = decade * factor / 10;
            if (wanted <= static_cast<double>(scale) && (decade > 10 || factor != 25)) {
                return static_cast<int>(scale);
            }
        }
    }
    return 1000000000;
}

} // namespace fenmark::exchange
