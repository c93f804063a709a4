// A small figure of a lot to scale, north up.
#include "exchange/report/tables.h"

#include "exchange/plan/plan.h"
#include "exchange/plan/plan_geometry.h"
#include "exchange/text.h"

#include <algorithm>
#include <cmath>

namespace fenmark::exchange::report {

namespace {

// Millimetres of paper.
constexpr double kBoxWidth = 86.0;
constexpr double kBoxHeight = 70.0;
constexpr double kRoom = 11.0; // around the lot, for the names of its points
constexpr double kTextSize = 2.4;
constexpr double kLotSize = 3.2;
constexpr double kLargest = 250.0; // a figure of a scale that was asked for is at most this wide and high
constexpr int kRoundScales[] = {10,    20,    50,    100,    150,    200,    250,     300,      400,      500,
                                600,   800,   1000,  1200,   1500,   2000,   2500,    3000,     5000,     10000,
                                20000, 25000, 50000, 100000, 200000, 500000, 1000000, 10000000, 100000000};

int scaleThatFits(double width, double height) {
    const double wanted = 1000.0 * std::max(width / (kBoxWidth - 2.0 * kRoom), height / (kBoxHeight - 2.0 * kRoom));
    for (const int scale : kRoundScales) {
        if (wanted <= scale) {
            return scale;
        }
    }
    return kRoundScales[std::size(kRoundScales) - 1];
}

void text(std::string& svg, double x, double y, double size, const char* anchor, std::string_view content) {
    svg += "<text x=\"" + mm(x) + "\" y=\"" + mm(y + baseLineBelow(size)) + "\" font-size=\"" + mm(size) +
           "\" text-anchor=\"" + anchor + "\">" + xmlText(content) + "</text>";
}

} // namespace

std::string figureSvg(const LotFigure& figure) {
    drawing::Extent extent;
    for (const host::MdGePoint3d& corner : figure.ring) {
        extent.add(corner.x, corner.y);
    }
    if (extent.empty()) {
        return {};
    }
    const double groundWidth = extent.maxX - extent.minX;
    const double groundHeight = extent.maxY - extent.minY;
    int scale = scaleThatFits(groundWidth, groundHeight);
    double width = kBoxWidth;
    double height = kBoxHeight;
    if (figure.scale) {
        const double wantedWidth = std::max(kBoxWidth, groundWidth * 1000.0 / *figure.scale + 2.0 * kRoom);
        const double wantedHeight = std::max(kBoxHeight, groundHeight * 1000.0 / *figure.scale + 2.0 * kRoom);
        if (wantedWidth <= kLargest && wantedHeight <= kLargest) {
            scale = *figure.scale;
            width = wantedWidth;
            height = wantedHeight;
        }
    }
    const double middleX = (extent.minX + extent.maxX) / 2.0;
    const double middleY = (extent.minY + extent.maxY) / 2.0;
    const auto at = [&](double x, double y) {
        return PaperPoint{width / 2.0 + (x - middleX) * 1000.0 / scale, height / 2.0 - (y - middleY) * 1000.0 / scale};
    };
    std::string svg = "<svg class=\"figure\" width=\"" + mm(width) + "mm\" height=\"" + mm(height) +
                      "mm\" viewBox=\"0 0 " + mm(width) + " " + mm(height) + "\" role=\"img\"><path class=\"lot\" d=\"";
    for (std::size_t i = 0; i < figure.ring.size(); ++i) {
        const PaperPoint corner = at(figure.ring[i].x, figure.ring[i].y);
        svg += (i == 0 ? "M" : "L") + mm(corner.x) + " " + mm(corner.y);
    }
    svg += "Z\"/>";
    const host::PlanPoint inside = labelPoint(figure.ring);
    const PaperPoint middle = at(inside.x, inside.y);
    const double signedSize = signedArea(figure.ring);
    for (std::size_t i = 0; i < figure.ring.size(); ++i) {
        const host::MdGePoint3d& before = figure.ring[(i + figure.ring.size() - 1) % figure.ring.size()];
        const host::MdGePoint3d& next = figure.ring[(i + 1) % figure.ring.size()];
        // Names stand outside, square to the line between the two neighbours.
        const double side = signedSize < 0.0 ? -1.0 : 1.0;
        const double dx = side * (next.y - before.y);
        const double dy = -side * (next.x - before.x);
        const double size = std::hypot(dx, dy);
        const double outX = size > 0.0 ? dx / size : 1.0;
        const double outY = size > 0.0 ? dy / size : 0.0;
        const PaperPoint corner = at(figure.ring[i].x, figure.ring[i].y);
        svg += "<circle cx=\"" + mm(corner.x) + "\" cy=\"" + mm(corner.y) + "\" r=\".6\"/>";
        constexpr double kAway = 2.4;
        constexpr double kUpright = 0.3; // a name above or below its point stands in the middle
        const char* anchor = std::abs(outX) < kUpright ? "middle" : outX > 0.0 ? "start" : "end";
        text(svg, corner.x + kAway * outX * (std::abs(outX) < kUpright ? 1.0 : 0.6), corner.y - kAway * outY, kTextSize,
             anchor, figure.names[i]);
    }
    text(svg, middle.x, middle.y, kLotSize, "middle", figure.lot);
    text(svg, width - 2.0, height - 2.5, kTextSize, "end", "1:" + std::to_string(scale));
    svg += "<path class=\"north\" d=\"M" + mm(5.0) + " 3l1.6 7l-1.6-1.5l-1.6 1.5z\"/>";
    text(svg, 5.0, 12.0, kTextSize, "middle", "N");
    return svg + "</svg>";
}

} // namespace fenmark::exchange::report
