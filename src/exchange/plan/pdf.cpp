// Pages as one PDF, by the SVG renderer of the system. Texts stay texts, with the fonts they use inside.
#include "exchange/plan/plot.h"

#include <ostream>

#ifdef FENMARK_PDF

#include "exchange/plan/svg_page.h"

#include <cairo-pdf.h>

namespace fenmark::exchange {

namespace {

constexpr double kPointsPerMillimetre = 72.0 / 25.4;

cairo_status_t append(void* out, const unsigned char* bytes, unsigned length) {
    auto& stream = *static_cast<std::ostream*>(out);
    stream.write(reinterpret_cast<const char*>(bytes), static_cast<std::streamsize>(length));
    return stream ? CAIRO_STATUS_SUCCESS : CAIRO_STATUS_WRITE_ERROR;
}

} // namespace

Outcome writePdf(const Plot& plot, std::ostream& out) {
    Owned<cairo_surface_t> surface(cairo_pdf_surface_create_for_stream(append, &out, 1.0, 1.0));
    Owned<cairo_t> cairo(cairo_create(surface.get()));
    for (const std::string& page : plot.pages) {
        GError* error = nullptr;
        const Owned<RsvgHandle> svg = loadPage(page, error);
        if (!svg) {
            return pageNotDrawn(error);
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
            return pageNotDrawn(error);
        }
        cairo_show_page(cairo.get());
    }
    cairo.reset();
    cairo_surface_finish(surface.get());
    return outcomeOf(cairo_surface_status(surface.get()));
}

} // namespace fenmark::exchange

#else

namespace fenmark::exchange {

Outcome writePdf(const Plot&, std::ostream&) {
    return failed(
        {"this build writes no PDF; write .svg", "このビルドではPDFを出力できません。.svg で出力してください"});
}

} // namespace fenmark::exchange

#endif
