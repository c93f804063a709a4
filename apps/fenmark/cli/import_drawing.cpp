// The drawing that an import goes into.
#include "cli/import_drawing.h"

#include "cli/drawings.h"
#include "cli/messages.h"
#include "cli/suggestion.h"
#include "platform/files.h"
#include "platform/paths.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <system_error>
#include <vector>

namespace fenmark::cli {

using drawing::Drawing;
using host::embedded::EmbeddedHost;

namespace {

std::vector<std::string> namesOf(const auto& items) {
    std::vector<std::string> names;
    names.reserve(items.size());
    for (const auto& item : items) {
        names.push_back(item.name);
    }
    return names;
}

// The item's own name for the one that was given, which may differ in blanks at the ends. An item of exactly that name
// comes first.
std::optional<std::string> nameAmong(const auto& items, const std::string& given) {
    std::optional<std::string> found;
    for (const auto& item : items) {
        if (item.name == given) {
            return given;
        }
        if (!found && withoutEndBlanks(item.name) == withoutEndBlanks(given)) {
            found = item.name;
        }
    }
    return found;
}

} // namespace

void openForImport(EmbeddedHost& host, const std::string& path, const ImportArguments& arguments,
                   const Streams& streams) {
    host::embedded::Document& document = *host.currentDocument();
    const platform::PathState state = platform::lookUp(path);
    const auto refuse = [&](const std::string& why) {
        throw Stop(kNotDone, drawing::storeMessage(Failure::NotWritable, path, why).in(streams.language));
    };
    const auto folderReason = [&](const std::error_code& error) {
        return said(streams.language, Text::ItsFolder, {{"reason", reasonOf(error, streams.language)}});
    };
    if (state.error == std::errc::not_a_directory) {
        refuse(folderReason(state.error));
    }
    if (state.kind == platform::PathKind::File) {
        if (const std::error_code error = platform::mayWrite(path)) {
            refuse(reasonOf(error, streams.language));
        }
        if (const std::error_code error = platform::mayWrite(platform::folderOf(platform::behindLinks(path)))) {
            refuse(folderReason(error));
        }
    }
    require(streams, document.store().openOrBegin(path, document.drawing(), drawing::Load::WithoutEntities));
    tellStoreNotes(streams, arguments.quiet, path, document.store().notes());
}

ImportArguments prepareForImport(Drawing& drawing, const ImportArguments& given, const std::string& path,
                                 Language language) {
    ImportArguments arguments = given;
    if (arguments.zone && drawing.zone() != *arguments.zone) {
        if (drawing.zone() != 0) {
            throw Stop(kNotDone, said(language, Text::OtherZone,
                                      {{"path", path},
                                       {"zone", std::to_string(drawing.zone())},
                                       {"wanted", std::to_string(*arguments.zone)}}));
        }
        drawing.setZone(*arguments.zone);
    }
    for (auto* layer : {&arguments.pointLayer, &arguments.ipLayer, &arguments.lotLayer, &arguments.stakeLayer,
                        &arguments.continuousLayer}) {
        if (!layer->has_value()) {
            continue;
        }
        if (const std::optional<std::string> name = nameAmong(drawing.layers(), **layer)) {
            *layer = name;
            continue;
        }
        if (!arguments.createLayers || (*layer)->empty()) {
            const std::vector<std::string> names = namesOf(drawing.layers());
            throw Stop(kNotDone, said(language, Text::NoLayerToImport,
                                      {{"path", path},
                                       {"name", **layer},
                                       {"names", joined(names, language)},
                                       {"meant", suggestion(**layer, names, language)}}));
        }
        drawing.addLayer(**layer);
    }
    if (!arguments.site) {
        return arguments;
    }
    if (const std::optional<std::string> name = nameAmong(drawing.sites(), *arguments.site)) {
        arguments.site = name;
        return arguments;
    }
    // A drawing without sites gets its first one here, so that it bears the name asked for.
    if (!drawing.sites().empty() || arguments.site->empty()) {
        const std::vector<std::string> names = namesOf(drawing.sites());
        throw Stop(kNotDone, said(language, Text::NoSite,
                                  {{"path", path},
                                   {"name", *arguments.site},
                                   {"names", joined(names, language)},
                                   {"meant", suggestion(*arguments.site, names, language)}}));
    }
    drawing.addSite(*arguments.site);
    return arguments;
}

Outcome saveDrawing(host::embedded::Document& document, const std::string& path, sima::ProgressFactory* bars,
                    Language language) {
    if (bars == nullptr) {
        return document.store().save(path, document.drawing());
    }
    const std::unique_ptr<sima::Progress> bar = bars->create(said(language, Text::Writing), false);
    return document.store().save(path, document.drawing(), [&](std::uint64_t done, std::uint64_t total) {
        bar->setRange(0, static_cast<std::int64_t>(total), 1);
        bar->setPosition(static_cast<std::int64_t>(done));
    });
}

} // namespace fenmark::cli
