// Pages as one PDF, by the SVG renderer of the system. Texts stay texts, with the fonts they use inside.
#include "exchange/plan/plot.h"

#include <ostream>

#ifdef FENMARK_PDF

#include <cairo-pdf.h>
#include <librsvg/rsvg.h>

#include <memory>

namespace fenmark::exchange {

namespace {

constexpr double kPointsPerMillimetre = 72.0 / 25.4;

struct Free {
    void operator()(RsvgHandle* handle) const { g_object_unref(handle); }
    void operator()(GError* error) const { g_error_free(error); }
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
};
template <typename T>
using Owned = std::unique_ptr<T, Free>;

cairo_status_t append(void* out, const unsigned char* bytes, unsigned length) {
    auto& stream = *static_cast<std::ostream*>(out);
    stream.write(reinterpret_cast<const char*>(bytes), static_cast<std::streamsize>(length));
    return stream ? CAIRO_STATUS_SUCCESS : CAIRO_STATUS_WRITE_ERROR;
}

std::string textOf(GError* raw) {
    const Owned<GError> error(raw);
    return error ? error->message : "unknown failure";
}

} // namespace

std::string writePdf(const Plot& plot, std::ostream& out) {
    Owned<cairo_surface_t> surface(cairo_pdf_surface_create_for_stream(append, &out, 1.0, 1.0));
    Owned<cairo_t> cairo(cairo_create(surface.get()));
    for (const std::string& page : plot.pages) {
        GError* error = nullptr;
        const auto* bytes = reinterpret_cast<const guint8*>(page.data());
        // A plan of many points is a large text with long paths.
        GInputStream* stream = g_memory_input_stream_new_from_data(bytes, static_cast<gssize>(page.size()), nullptr);
        const Owned<RsvgHandle> svg(
            rsvg_handle_new_from_stream_sync(stream, nullptr, RSVG_HANDLE_FLAG_UNLIMITED, nullptr, &error));
        g_object_unref(stream);
        if (!svg) {
            return "the page cannot be drawn: " + textOf(error);
        }
        double width = 0.0;
        double height = 0.0;
        gboolean hasBox = FALSE;
        gboolean hasWidth = FALSE;
        gboolean hasHeight = FALSE;
        RsvgLength unused{};
        RsvgRectangle box{};
        rsvg_handle_get_intrinsic_dimensions(svg.get(), &hasWidth, &unused, &hasHeight, &unused, &hasBox, &box);
        width = box.width * kPointsPerMillimetre; // one unit of the pages is a millimetre
        height = box.height * kPointsPerMillimetre;
        cairo_pdf_surface_set_size(surface.get(), width, height);
        const RsvgRectangle all{0.0, 0.0, width, height};
        if (!rsvg_handle_render_document(svg.get(), cairo.get(), &all, &error)) {
            return "the page cannot be drawn: " + textOf(error);
        }
        cairo_show_page(cairo.get());
    }
    cairo.reset();
    cairo_surface_finish(surface.get());
    const cairo_status_t status = cairo_surface_status(surface.get());
    return status == CAIRO_STATUS_SUCCESS ? std::string() : cairo_status_to_string(status);
}

} // namespace fenmark::exchange

#else

namespace fenmark::exchange {

std::string writePdf(const Plot&, std::ostream&) {
    return "this build writes no PDF; write .svg";
}

} // namespace fenmark::exchange

#endif
