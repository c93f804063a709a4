// Opening drawings to read them.
#include "cli/drawings.h"

#include "cli/messages.h"

#include <algorithm>

namespace fenmark::cli {

using drawing::Drawing;

namespace {

std::unique_ptr<Drawing> readWith(drawing::DrawingStore& store, const std::string& path, drawing::Load load) {
    auto drawing = std::make_unique<Drawing>();
    const drawing::StoreResult opened = store.open(path, *drawing, load);
    if (!opened) {
        throw Stop(kNotDone, opened.message);
    }
    return drawing;
}

} // namespace

std::unique_ptr<Drawing> readDrawing(const std::string& path, drawing::Load load) {
    drawing::DrawingStore store;
    return readWith(store, path, load);
}

std::unique_ptr<Drawing> readDrawing(const std::string& path, drawing::Load load, const Streams& streams, bool quiet) {
    drawing::DrawingStore store;
    auto drawing = readWith(store, path, load);
    for (const drawing::StoreNote& note : store.notes()) {
        tellFileNote(streams, quiet, path, drawing::noteText(note));
    }
    return drawing;
}

std::size_t alignmentNamed(const Drawing& drawing, const std::string& path, const std::string& name) {
    std::vector<std::string> names;
    for (std::size_t i = drawing.alignmentCount(); i-- > 0;) {
        if (drawing.alignment(i).name == name) {
            return i;
        }
    }
    for (std::size_t i = 0; i < drawing.alignmentCount(); ++i) {
        if (std::find(names.begin(), names.end(), drawing.alignment(i).name) == names.end()) {
            names.push_back(drawing.alignment(i).name);
        }
    }
    throw Stop(kNotDone,
               path + ": the drawing has no alignment named '" + name + "'; its alignments: " + joined(names));
}

bool endsIn(std::string_view path, std::string_view extension) {
    if (path.size() < extension.size()) {
        return false;
    }
    path.remove_prefix(path.size() - extension.size());
    for (std::size_t i = 0; i < path.size(); ++i) {
        const char c = path[i];
        if ((c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c) != extension[i]) {
            return false;
        }
    }
    return true;
}

} // namespace fenmark::cli
