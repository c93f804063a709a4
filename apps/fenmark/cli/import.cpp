// fenmark import: the command flow on the embedded host's drawing, file by file.
#include "cli/commands.h"
#include "cli/file_hints.h"
#include "cli/import_dialogs.h"
#include "cli/messages.h"
#include "command/import_command.h"
#include "exchange/placed.h"
#include "host/adapter/host_adapter.h"
#include "host/embedded/embedded_host.h"
#include "sima/log/sima_log.h"
#include "sima/text/path.h"

#include <algorithm>
#include <map>
#include <memory>
#include <ostream>

#include <nlohmann/json.hpp>

#include <sys/stat.h>

namespace fenmark::cli {

namespace {

using drawing::Drawing;
using drawing::StoreResult;
using host::embedded::EmbeddedHost;

bool exists(const std::string& path) {
    struct ::stat status {};
    return ::stat(path.c_str(), &status) == 0;
}

std::string drawingBeside(const std::string& file) {
    return file.substr(0, file.size() - 4) + ".gpkg";
}

void openDrawing(EmbeddedHost& host, const std::string& path) {
    host::embedded::Document& document = *host.currentDocument();
    if (!exists(path)) {
        return;
    }
    const StoreResult opened = document.store().open(path, document.drawing(), drawing::Load::WithoutEntities);
    if (!opened) {
        throw Stop(kNotDone, opened.message);
    }
}

std::vector<std::string> namesOf(const auto& items) {
    std::vector<std::string> names;
    names.reserve(items.size());
    for (const auto& item : items) {
        names.push_back(item.name);
    }
    return names;
}

// What the options name must be there, or be made where an option allows it.
void prepareDrawing(Drawing& drawing, const ImportArguments& arguments, const std::string& path) {
    if (arguments.zone && drawing.zone() != *arguments.zone) {
        if (drawing.zone() != 0) {
            throw Stop(kNotDone, path + ": its coordinates are in zone " + std::to_string(drawing.zone()) +
                                     ", not in zone " + std::to_string(*arguments.zone));
        }
        drawing.setZone(*arguments.zone);
    }
    for (const auto* layer : {&arguments.pointLayer, &arguments.ipLayer, &arguments.lotLayer, &arguments.stakeLayer,
                              &arguments.continuousLayer}) {
        if (!layer->has_value() || drawing.findLayer(**layer)) {
            continue;
        }
        if (!arguments.createLayers || (*layer)->empty()) {
            throw Stop(kNotDone, path + ": the drawing has no layer named '" + **layer + "'; its layers: " +
                                     joined(namesOf(drawing.layers())) + " (--create-layers makes a new one)");
        }
        drawing.addLayer(**layer);
    }
    if (arguments.site && !drawing.findSite(*arguments.site)) {
        // A drawing without sites gets its first one here, so that it bears the name asked for.
        if (!drawing.sites().empty() || arguments.site->empty()) {
            throw Stop(kNotDone, path + ": the drawing has no site named '" + *arguments.site +
                                     "'; its sites: " + joined(namesOf(drawing.sites())));
        }
        drawing.addSite(*arguments.site);
    }
}

void printResult(std::ostream& out, const command::ImportResult& result, bool withName) {
    if (withName) {
        out << result.filePath << ":\n";
    }
    for (const std::string& line : command::resultLines(result)) {
        out << line << '\n';
    }
    out.flush();
}

nlohmann::ordered_json jsonOf(const command::ImportResult& result, const std::string& drawing, const std::string& log) {
    nlohmann::ordered_json json;
    json["file"] = sima::textOfPath(result.filePath);
    json["drawing"] = sima::textOfPath(drawing);
    json["log"] = sima::textOfPath(log);
    json["errors"] = result.errorCount;
    json["points"] = result.coordinatePoints;
    json["lots"] = result.lots;
    json["alignments"] = result.alignmentNames;
    json["routes"] = result.routesCreated;
    json["longitudinal"] = result.longitudinalPoints;
    json["cross_sections"] = result.crossSectionPoints;
    return json;
}

// Why a run of the command ended early, from the exception at hand.
std::string breakOffText(const std::string& file, const sima::SimaReader& reader) {
    try {
        throw;
    } catch (const std::system_error& error) {
        return file + ": the log beside it cannot be written: " + error.code().message();
    } catch (...) {
        return file + ":" + std::to_string(reader.lineNumber) + ": import broken off: " + currentExceptionText();
    }
}

// What the user should look at in the file, also where the import was broken off.
void tellHints(const ImportArguments& arguments, const std::string& file, const sima::SimaLog& log,
               const Streams& streams) {
    tellLikelyMisreading(streams, arguments.quiet, file, arguments.encoding);
    tellUnclosedSection(streams, arguments.quiet, file, log);
    tellMissingCommas(streams, arguments.quiet, file, log);
}

void tellNotes(const EmbeddedHost& host, const ImportArguments& arguments, const ImportDialogs& dialogs,
               const std::string& file, const sima::SimaReader& reader, const Streams& streams) {
    tellNothingFound(streams, arguments.quiet, file, reader);
    tellPassedOver(streams, arguments.quiet, file, reader.passedOver);
    for (const std::string& line : host::embedded::noteLines(host.layoutNotes())) {
        tellFileNote(streams, arguments.quiet, file, line);
    }
    if (arguments.alignment && !dialogs.askedForAlignment()) {
        tellFileNote(streams, arguments.quiet, file,
                     "--alignment was not needed: every result has an alignment of its own");
    }
}

// What this import made that no other program can show.
void tellUnplaced(const Drawing& drawing, std::size_t firstEntity, std::size_t firstAlignment,
                  const ImportArguments& arguments, const std::string& file, const Streams& streams) {
    exchange::Unplaced unplaced;
    for (std::size_t i = firstAlignment; i < drawing.alignmentCount(); ++i) {
        unplaced.look(drawing.alignment(i));
    }
    for (std::size_t i = firstEntity; i < drawing.entityCount(); ++i) {
        unplaced.look(drawing.entity(i));
    }
    for (const std::string& line : unplaced.notes("kept in the drawing, but no other program can show them")) {
        tellFileNote(streams, arguments.quiet, file, line);
    }
}

// With a bar where the passes over the file had one.
StoreResult saveDrawing(host::embedded::Document& document, const std::string& path, sima::ProgressFactory* bars) {
    if (bars == nullptr) {
        return document.store().save(path, document.drawing());
    }
    const std::unique_ptr<sima::Progress> bar = bars->create("writing", false);
    return document.store().save(path, document.drawing(), [&](std::uint64_t done, std::uint64_t total) {
        bar->setRange(0, static_cast<std::int64_t>(total), 1);
        bar->setPosition(static_cast<std::int64_t>(done));
    });
}

output::OutputSettings outputSettings(EmbeddedHost& host, const ImportArguments& arguments) {
    output::OutputSettings settings;
    settings.planTangents = arguments.planTangents;
    settings.alignmentMade = [&host](host::MdDbObjectId id, const sima::SimaAlignment& route) {
        std::vector<host::MdGePoint3d> points;
        points.reserve(route.entities.size());
        for (const sima::EntityData& element : route.entities) {
            points.push_back(element.startPoint());
        }
        host.noteRoute(id, points);
    };
    return settings;
}

struct Outcome {
    int code = kDone;
    command::ImportResult result;
    std::string logPath;
};

// Runs the command for one file and keeps the drawing on disk. Raises Stop, with the drawing on disk as it was unless
// a part was to be kept.
Outcome importFile(EmbeddedHost& host, const ImportArguments& arguments, const std::string& file,
                   const std::string& drawingPath, const Streams& streams) {
    prepareDrawing(host.drawing(), arguments, drawingPath);
    const std::size_t firstEntity = host.drawing().entityCount();
    const std::size_t firstAlignment = host.drawing().alignmentCount();
    host.setPositiveRadius(arguments.positiveRadius);
    host.setPlanTangents(arguments.planTangents);
    host.clearNotes();

    ImportDialogs dialogs(arguments, file, streams);
    host::HostAdapter boundary;
    command::LastRun lastRun;
    sima::SimaReader reader;
    std::string brokenOff;
    try {
        command::Fenmark(boundary, dialogs, lastRun, reader, {arguments.encoding, outputSettings(host, arguments)});
    } catch (const Stop&) {
        throw;
    } catch (...) {
        brokenOff = breakOffText(file, reader);
    }
    tellErrorBlocks(streams, file, reader.log);
    tellHints(arguments, file, reader.log, streams);
    if (!brokenOff.empty() && !arguments.keepPartial) {
        throw Stop(kNotDone, brokenOff + "; the drawing is left as it was");
    }
    if (brokenOff.empty() && !dialogs.result()) {
        throw Stop(kNotDone, drawingPath + ": the sites of the drawing cannot be listed");
    }

    tellNotes(host, arguments, dialogs, file, reader, streams);
    tellUnplaced(host.drawing(), firstEntity, firstAlignment, arguments, file, streams);
    reader = sima::SimaReader(); // the file's records need no memory while the drawing is written

    host::embedded::Document& document = *host.currentDocument();
    const StoreResult saved = saveDrawing(document, drawingPath, dialogs.progress());
    if (!saved) {
        throw Stop(kNotDone, saved.message);
    }
    if (!brokenOff.empty()) {
        throw Stop(kNotDone, brokenOff + "; what was made before that is kept in " + drawingPath);
    }
    sima::SimaLog log;
    log.setFileName(file);
    return {arguments.strict && dialogs.result()->errorCount > 0 ? kLogHasErrors : kDone, *dialogs.result(),
            log.fileName()};
}

// The drawing open at the moment: each file has its own, or all have one.
class OpenDrawing {
  public:
    // Raises Stop if the drawing cannot be read.
    EmbeddedHost& at(const std::string& path) {
        if (host_ && path == path_) {
            return *host_;
        }
        host_.reset();
        auto host = std::make_unique<EmbeddedHost>();
        openDrawing(*host, path);
        host_ = std::move(host);
        path_ = path;
        return *host_;
    }
    // What is in memory may no longer be what is on disk.
    void forget() { host_.reset(); }

  private:
    std::unique_ptr<EmbeddedHost> host_;
    std::string path_;
};

} // namespace

int runImport(const ImportArguments& arguments, const Streams& streams) {
    OpenDrawing open;
    nlohmann::ordered_json results = nlohmann::ordered_json::array();
    int code = kDone;
    for (const std::string& file : arguments.files) {
        try {
            requireReadableSimFile(file);
            const std::string drawingPath = arguments.drawing.value_or(drawingBeside(file));
            const Outcome outcome = importFile(open.at(drawingPath), arguments, file, drawingPath, streams);
            code = std::max(code, outcome.code);
            if (arguments.json) {
                results.push_back(jsonOf(outcome.result, drawingPath, outcome.logPath));
            } else {
                printResult(streams.out, outcome.result, arguments.files.size() > 1);
            }
            tellNote(streams, arguments.quiet, "drawing " + drawingPath + ", log " + outcome.logPath);
        } catch (const Stop& stop) {
            tellError(streams, stop.what());
            code = std::max(code, stop.code());
            open.forget();
        }
    }
    if (arguments.json) {
        streams.out << (arguments.files.size() == 1 && results.size() == 1 ? results[0] : results).dump() << '\n';
    }
    return code;
}

} // namespace fenmark::cli
