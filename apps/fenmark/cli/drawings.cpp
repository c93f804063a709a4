// Opening drawings to read them.
#include "cli/drawings.h"

#include "cli/messages.h"
#include "cli/suggestion.h"
#include "drawing/geopackage/foreign_package.h"
#include "drawing/imported_file.h"
#include "sima/text/number.h"
#include "sima/text/utf8.h"
#include "values/ascii_case.h"

#include <charconv>
#include <cstdint>
#include <optional>
#include <unordered_set>
#include <utility>
#include <vector>

namespace fenmark::cli {

using drawing::Drawing;

std::unique_ptr<Drawing> readDrawing(const std::string& path, drawing::Load load, const Streams& streams, bool quiet) {
    auto drawing = std::make_unique<Drawing>();
    drawing::DrawingStore store;
    require(streams, store.open(path, *drawing, load));
    tellStoreNotes(streams, quiet, path, store.notes());
    return drawing;
}

std::unique_ptr<Drawing> readDrawingOrPackage(const std::string& path, int zone, const Streams& streams, bool quiet) {
    auto drawing = std::make_unique<Drawing>();
    drawing::DrawingStore store;
    const Outcome opened = store.open(path, *drawing);
    if (opened) {
        tellStoreNotes(streams, quiet, path, store.notes());
        return drawing;
    }
    if (opened.failure != Failure::NotOurs) {
        throw Stop(kNotDone, opened.in(streams.language));
    }
    drawing::ForeignPackage package;
    require(streams, drawing::readForeignPackage(path, zone, package));
    tellStoreNotes(streams, quiet, path, package.notes);
    *drawing = std::move(package.drawing);
    return drawing;
}

std::string_view withoutEndBlanks(std::string_view name) {
    while (true) {
        const std::string_view before = name;
        name = sima::trim(name);
        if (name.starts_with(sima::kIdeographicSpace)) {
            name.remove_prefix(sima::kIdeographicSpace.size());
        }
        if (name.ends_with(sima::kIdeographicSpace)) {
            name.remove_suffix(sima::kIdeographicSpace.size());
        }
        if (name.size() == before.size()) {
            return name;
        }
    }
}

namespace {

// The identifier that "#12" gives; nothing for any other text.
std::optional<std::uint64_t> identifierIn(std::string_view text) {
    std::uint64_t id = 0;
    if (!text.starts_with('#')) {
        return std::nullopt;
    }
    const auto [end, error] = std::from_chars(text.data() + 1, text.data() + text.size(), id);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(id) : std::nullopt;
}

} // namespace

std::vector<std::string> alignmentNames(const Drawing& drawing) {
    std::vector<std::string> names;
    std::unordered_set<std::string_view> seen;
    for (std::size_t i = 0; i < drawing.alignmentCount(); ++i) {
        if (seen.insert(drawing.alignment(i).name).second) {
            names.push_back(drawing.alignment(i).name);
        }
    }
    return names;
}

std::size_t alignmentNamed(const Drawing& drawing, const std::string& path, const std::string& name,
                           Language language) {
    const std::string_view wanted = withoutEndBlanks(name);
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < drawing.alignmentCount(); ++i) {
        if (withoutEndBlanks(drawing.alignment(i).name) == wanted) {
            found.push_back(i);
        }
    }
    if (found.empty()) {
        if (const std::optional<std::uint64_t> id = identifierIn(wanted)) {
            if (const auto index = drawing.findAlignment(host::MdDbObjectId(*id))) {
                return *index;
            }
        }
        const std::vector<std::string> names = alignmentNames(drawing);
        throw Stop(kNotDone, said(language, Text::NoAlignment,
                                  {{"path", path},
                                   {"name", name},
                                   {"names", joined(names, language)},
                                   {"meant", suggestion(name, names, language)}}));
    }
    if (found.size() > 1) {
        std::vector<std::string> ids;
        for (const std::size_t index : found) {
            ids.push_back("#" + std::to_string(drawing.alignment(index).id.asUint64()));
        }
        throw Stop(kNotDone, said(language, Text::SeveralAlignments,
                                  {{"path", path}, {"name", name}, {"names", joined(ids, language)}}));
    }
    return found.front();
}

void requireNoSource(const Drawing& drawing, const std::string& target, Language language) {
    if (drawing::isImportedFile(drawing, target)) {
        throw Stop(kNotDone, said(language, Text::TargetIsSource, {{"path", target}}));
    }
    if (drawing::isImportLog(drawing, target)) {
        throw Stop(kNotDone, said(language, Text::TargetIsLog, {{"path", target}}));
    }
}

bool endsIn(std::string_view path, std::string_view extension) {
    return asciiLower(path).ends_with(extension);
}

} // namespace fenmark::cli
