// A page of a plot as pixels, by the SVG renderer of the system.
#include "exchange/plan/page_image.h"

#include <string_view>

#ifdef FENMARK_PDF
#include <cairo.h>
#include <librsvg/rsvg.h>

#include <memory>
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

namespace {

struct Free {
    void operator()(RsvgHandle* handle) const { g_object_unref(handle); }
    void operator()(GError* error) const { g_error_free(error); }
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
};
template <typename T>
using Owned = std::unique_ptr<T, Free>;

std::string reason(GError* raw) {
    const Owned<GError> error(raw);
    return std::string("the page cannot be drawn: ") + (error ? error->message : "unknown failure");
}

} // namespace

std::string drawPage(const std::string& svg, const PagePixels& pixels) {
    const auto size = sizeOfPage(svg);
    if (!size) {
        return "the page cannot be drawn: it has no size";
    }
    GError* error = nullptr;
    const auto* bytes = reinterpret_cast<const guint8*>(svg.data());
    GInputStream* stream = g_memory_input_stream_new_from_data(bytes, static_cast<gssize>(svg.size()), nullptr);
    const Owned<RsvgHandle> page(
        rsvg_handle_new_from_stream_sync(stream, nullptr, RSVG_HANDLE_FLAG_UNLIMITED, nullptr, &error));
    g_object_unref(stream);
    if (!page) {
        return reason(error);
    }
    const Owned<cairo_surface_t> surface(cairo_image_surface_create_for_data(
        pixels.bits, CAIRO_FORMAT_ARGB32, pixels.width, pixels.height, pixels.stride));
    const Owned<cairo_t> cairo(cairo_create(surface.get()));
    const RsvgRectangle all{-pixels.left, -pixels.top, size->width * pixels.pixelsPerMillimetre,
                            size->height * pixels.pixelsPerMillimetre};
    if (!rsvg_handle_render_document(page.get(), cairo.get(), &all, &error)) {
        return reason(error);
    }
    cairo_surface_flush(surface.get());
    const cairo_status_t status = cairo_status(cairo.get());
    return status == CAIRO_STATUS_SUCCESS ? std::string() : cairo_status_to_string(status);
}

#else

std::string drawPage(const std::string&, const PagePixels&) {
    return "this build draws no pages";
}

#endif

} // namespace fenmark::exchange
