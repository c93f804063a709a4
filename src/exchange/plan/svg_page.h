// A page of a plot in the SVG renderer of the system, whose handles release themselves.
#pragma once

#include "values/outcome.h"

#include <cairo.h>
#include <librsvg/rsvg.h>

#include <memory>
#include <string>

namespace fenmark::exchange {

struct ReleaseHandle {
    void operator()(RsvgHandle* handle) const { g_object_unref(handle); }
    void operator()(GError* error) const { g_error_free(error); }
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
};
template <typename T>
using Owned = std::unique_ptr<T, ReleaseHandle>;

// Takes the error over.
inline Outcome pageNotDrawn(GError* raw) {
    const Owned<GError> error(raw);
    const Worded why = error ? Worded(error->message) : Worded("unknown failure", "原因不明");
    return failed({"the page cannot be drawn: " + why.english, "ページを描けません: " + why.japanese});
}

// Null if the renderer cannot read the page, with the error. A plan of many points is a large text with long paths.
inline Owned<RsvgHandle> loadPage(const std::string& svg, GError*& error) {
    const auto* bytes = reinterpret_cast<const guint8*>(svg.data());
    GInputStream* stream = g_memory_input_stream_new_from_data(bytes, static_cast<gssize>(svg.size()), nullptr);
    Owned<RsvgHandle> page(
        rsvg_handle_new_from_stream_sync(stream, nullptr, RSVG_HANDLE_FLAG_UNLIMITED, nullptr, &error));
    g_object_unref(stream);
    return page;
}

inline Outcome outcomeOf(cairo_status_t status) {
    return status == CAIRO_STATUS_SUCCESS ? Outcome() : failed(cairo_status_to_string(status));
}

} // namespace fenmark::exchange
