// A page of a plot as pixels, by the SVG renderer of the system.
#include "exchange/plan/page_image.h"

#include <string_view>

#ifdef FENMARK_PDF
#include "exchange/plan/svg_page.h"
#endif

namespace fenmark::exchange {

namespace {

std::optional<double> millimetresOf(std::string_view svg, std::string_view attribute) {
    const std::size_t at = svg.find(attribute);
    if (at == std::string_view::npos) {
        return std::nullopt;
    }
    std::string_view rest = svg.substr(at + attribute.size());
    const double value = leadingReal(rest);
    if (!rest.starts_with("mm")) {
        return std::nullopt;
    }
    return value;
}

} // namespace

// No locale, and no more than this program's own numbers need.
double leadingReal(std::string_view& text) {
    double value = 0.0;
    double place = 1.0;
    bool fraction = false;
    std::size_t used = 0;
    for (; used < text.size(); ++used) {
        const char c = text[used];
        if (c == '.' && !fraction) {
            fraction = true;
        } else if (c >= '0' && c <= '9') {
            value = value * 10.0 + (c - '0');
            place *= fraction ? 10.0 : 1.0;
        } else {
            break;
        }
    }
    text.remove_prefix(used);
    return value / place;
}

std::optional<PageSize> sizeOfPage(const std::string& svg) {
    const std::string_view head = std::string_view(svg).substr(0, svg.find('>', svg.find("<svg")));
    const auto width = millimetresOf(head, " width=\"");
    const auto height = millimetresOf(head, " height=\"");
    if (!width || !height) {
        return std::nullopt;
    }
    return PageSize{*width, *height};
}

#ifdef FENMARK_PDF

Outcome drawPage(const std::string& svg, const PagePixels& pixels) {
    const auto size = sizeOfPage(svg);
    if (!size) {
        return failed({"the page cannot be drawn: it has no size", "大きさがないため、ページを描けません"});
    }
    GError* error = nullptr;
    const Owned<RsvgHandle> page = loadPage(svg, error);
    if (!page) {
        return pageNotDrawn(error);
    }
    const Owned<cairo_surface_t> surface(cairo_image_surface_create_for_data(
        pixels.bits, CAIRO_FORMAT_ARGB32, pixels.width, pixels.height, pixels.stride));
    const Owned<cairo_t> cairo(cairo_create(surface.get()));
    const RsvgRectangle all{-pixels.left, -pixels.top, size->width * pixels.pixelsPerMillimetre,
                            size->height * pixels.pixelsPerMillimetre};
    if (!rsvg_handle_render_document(page.get(), cairo.get(), &all, &error)) {
        return pageNotDrawn(error);
    }
    cairo_surface_flush(surface.get());
    return outcomeOf(cairo_status(cairo.get()));
}

#else

Outcome drawPage(const std::string&, const PagePixels&) {
    return failed({"this build draws no pages", "このビルドではページを描けません"});
}

#endif

} // namespace fenmark::exchange
