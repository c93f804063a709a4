// fenmark import: the command flow on the embedded host's drawing, file by file.
#include "cli/commands.h"
#include "cli/drawings.h"
#include "cli/file_hints.h"
#include "cli/import_dialogs.h"
#include "cli/messages.h"
#include "cli/suggestion.h"
#include "command/import_command.h"
#include "drawing/file_digest.h"
#include "drawing/geopackage/package_file.h"
#include "drawing/imported_file.h"
#include "exchange/placed.h"
#include "host/adapter/host_adapter.h"
#include "host/embedded/embedded_host.h"
#include "platform/beside.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "sima/log/sima_log.h"
#include "sima/reader/line_source.h"
#include "sima/text/path.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <future>
#include <map>
#include <memory>
#include <new>
#include <optional>
#include <ostream>
#include <system_error>
#include <utility>

#include <nlohmann/json.hpp>

namespace fenmark::cli {

namespace {

using drawing::Drawing;
using host::embedded::EmbeddedHost;

std::string drawingBeside(const std::string& file) {
    return file.substr(0, file.size() - 4) + ".gpkg";
}

// A drawing is new only where it is certain that none is there. What could not be written in the end is refused at once,
// before the file is read.
void openDrawing(EmbeddedHost& host, const std::string& path, const ImportArguments& arguments,
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

// The log of one import, in a place of its own beside the input until the drawing is safe. A file that is no file, or a
// link, at the log's name is never written through.
class PendingLog {
  public:
    PendingLog(const std::string& file, Language language) : file_(file), language_(language) {
        sima::SimaLog log;
        log.setFileName(file);
        target_ = log.fileName();
    }

    const std::string& target() const { return target_; }
    // Whether the log would take the place of the drawing that is to be written, or of any other one that is there.
    bool replacesDrawing(const std::string& drawing) const {
        // A link at the log's name is replaced itself, whatever it leads to.
        std::error_code error;
        const std::filesystem::path name = platform::pathOf(target_);
        if (std::filesystem::is_symlink(std::filesystem::symlink_status(name, error))) {
            return false;
        }
        const auto whole = [](const std::string& path) {
            std::error_code failed; // of a path that is too long for the system, say
            const std::filesystem::path given = platform::pathOf(platform::behindLinks(path));
            const std::filesystem::path canonical = std::filesystem::weakly_canonical(given, failed);
            return failed ? given.lexically_normal() : canonical;
        };
        return drawing::isPackageFile(target_) || whole(target_) == whole(drawing);
    }
    // Where the command writes it.
    const std::string& path() const { return temporary_.path(); }

    Outcome make() { return judged(temporary_.make(target_, platform::AtLink::Replace)); }
    // After this only its renaming can fail.
    Outcome complete() { return judged(temporary_.complete()); }
    Outcome putInPlace() {
        // The drawing holds the import already: a fault that passes must not part the two.
        std::error_code error;
        for (int attempt = 0; attempt < kAttempts; ++attempt) {
            try {
                error = temporary_.putInPlace();
            } catch (const std::bad_alloc&) {
                error = std::make_error_code(std::errc::not_enough_memory);
            }
            if (!error) {
                break;
            }
        }
        return judged(error);
    }

  private:
    static constexpr int kAttempts = 3;

    Outcome judged(const std::error_code& error) const {
        return error ? failed(said(language_, Text::LogNotWritable,
                                   {{"path", file_}, {"reason", reasonOf(error, language_)}}))
                     : Outcome();
    }

    std::string file_;
    Language language_;
    std::string target_;
    platform::TemporaryFile temporary_;
};

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

// What the options name must be there, or be made where an option allows it. Returns the options with the names that
// the drawing has for them.
ImportArguments prepareDrawing(Drawing& drawing, const ImportArguments& given, const std::string& path,
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

void printResult(std::ostream& out, const command::ImportResult& result, bool withName) {
    if (withName) {
        out << result.filePath << ":\n";
    }
    for (const std::string& line : command::resultLines(result)) {
        out << line << '\n';
    }
    out.flush();
}

// What is known of a file from its beginning.
nlohmann::ordered_json jsonOf(const std::string& file, const std::string& drawing) {
    nlohmann::ordered_json json;
    json["file"] = sima::textOfPath(file);
    json["drawing"] = drawing.empty() ? nlohmann::ordered_json() : nlohmann::ordered_json(sima::textOfPath(drawing));
    return json;
}

// An import that was done.
void addResult(nlohmann::ordered_json& json, const command::ImportResult& result, const std::string& log) {
    json["log"] = sima::textOfPath(log);
    json["errors"] = result.errorCount;
    json["points"] = result.coordinatePoints;
    json["lots"] = result.lots;
    json["alignments"] = result.alignmentNames;
    json["routes"] = result.routesCreated;
    json["longitudinal"] = result.longitudinalPoints;
    json["cross_sections"] = result.crossSectionPoints;
}

std::uint64_t numberOf(std::string_view line) {
    std::uint64_t number = 0;
    for (const char digit : line) {
        number = 10 * number + static_cast<std::uint64_t>(digit - '0');
    }
    return number;
}

// The records that were refused and the notes, in the words of standard error.
void addReport(nlohmann::ordered_json& json, const FileReport& report) {
    nlohmann::ordered_json& records = json["error_records"] = nlohmann::ordered_json::array();
    for (const FileReport::Error& error : report.errors) {
        nlohmann::ordered_json record;
        record["line"] = numberOf(error.line);
        record["code"] = error.code;
        record["text"] = error.text;
        record["record"] = error.record;
        records.push_back(std::move(record));
    }
    nlohmann::ordered_json& notes = json["notes"] = nlohmann::ordered_json::array();
    for (const FileReport::Note& said : report.notes) {
        nlohmann::ordered_json note;
        note["code"] = said.code;
        note["text"] = said.text;
        if (!said.line.empty()) {
            note["line"] = numberOf(said.line);
        }
        notes.push_back(std::move(note));
    }
}

// Why a run of the command ended early, from the exception at hand.
std::string breakOffText(const std::string& file, const sima::SimaReader& reader, Language language) {
    try {
        throw;
    } catch (const sima::LogFailure& error) {
        return said(language, Text::LogNotWritable, {{"path", file}, {"reason", reasonOf(error.code(), language)}});
    } catch (const sima::ReadFailure& error) {
        return said(language, Text::CannotReadFurther,
                    {{"path", file},
                     {"line", std::to_string(reader.lineNumber + 1)},
                     {"reason", reasonOf(error.code(), language)}});
    } catch (...) {
        return said(
            language, Text::ImportBrokenOff,
            {{"path", file}, {"line", std::to_string(reader.lineNumber)}, {"reason", currentExceptionText(language)}});
    }
}

// What the user should look at in the file, also where the import was broken off.
void tellHints(const ImportArguments& arguments, const std::string& file, const FileEncoding& encoding,
               const sima::SimaLog& log, const Streams& streams) {
    tellLikelyMisreading(streams, arguments.quiet, file, encoding);
    tellUnclosedSection(streams, arguments.quiet, file, log);
    tellCommas(streams, arguments.quiet, file, log);
    tellPointNumbers(streams, arguments.quiet, file, log);
}

void tellNotes(const EmbeddedHost& host, const ImportArguments& arguments, const ImportDialogs& dialogs,
               const std::string& file, const sima::SimaReader& reader, const Streams& streams) {
    tellPassedOver(streams, arguments.quiet, file, reader.passedOver);
    tellDoubts(streams, arguments.quiet, file, reader.doubts);
    for (const auto& [code, text] : host::embedded::noteLines(host.layoutNotes(), streams.language)) {
        tellFileNote(streams, arguments.quiet, file, code, text);
    }
    if (arguments.alignment && !dialogs.askedForAlignment()) {
        tellFileNote(streams, arguments.quiet, file, "alignment-not-needed",
                     inLanguage(streams, "どの成果にも自分の線形があるため、--alignment は使いませんでした",
                                "--alignment was not needed: every result has an alignment of its own"));
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
    for (const exchange::Note& note : unplaced.notes(exchange::Fate::KeptUnseen)) {
        tellFileNote(streams, arguments.quiet, file, exchange::noteName(note.code),
                     exchange::wording(note, streams.language));
    }
}

// With a bar where the passes over the file had one.
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

// What became of one file.
struct FileResult {
    int code = kDone;
    command::ImportResult result;
    std::string logPath;
};

// One run of the command on the host's drawing.
struct Run {
    sima::SimaReader reader;
    Outcome outcome; // whether the command came to its end
};

// Raises Stop where the options cannot be met.
Run runCommand(ImportDialogs& dialogs, const std::string& file, const command::CommandSettings& settings,
               Language language) {
    host::HostAdapter boundary;
    command::LastRun lastRun;
    Run run;
    try {
        command::Fenmark(boundary, dialogs, lastRun, run.reader, settings);
        if (run.reader.openError) {
            run.outcome = failed(said(language, Text::CannotRead,
                                      {{"path", file}, {"reason", reasonOf(run.reader.openError, language)}}));
        }
    } catch (const Stop&) {
        throw;
    } catch (...) {
        run.outcome = failed(breakOffText(file, run.reader, language));
    }
    return run;
}

// Another program was quicker with the same drawing: nothing was written, and nothing was reported yet.
class Overtaken : public Stop {
  public:
    using Stop::Stop;
};

// The name by which rows and imports know a file.
std::string nameInRows(const std::string& file) {
    const std::string text = sima::textOfPath(file);
    return text.substr(sima::fileNameStart(text));
}

// From the root on, as a text.
std::string wholePath(const std::string& file) {
    std::error_code error;
    const std::filesystem::path whole = std::filesystem::absolute(sima::pathOf(file), error);
    return sima::textOfPath(error ? file : platform::utf8Of(whole));
}

// The digest of the file, made beside the import where the file is large.
std::future<std::optional<drawing::FileDigest>> startDigest(const std::string& file) {
    constexpr std::uint64_t kSmall = std::uint64_t{1} << 20; // bytes
    if (platform::lookUp(file).size > kSmall) {
        return platform::startBeside([file] { return drawing::digestFile(file); });
    }
    return std::async(std::launch::deferred, drawing::digestFile, file);
}

// Those among the imports that a new one of the file replaces: not what this call has just made of another file of the
// same name.
std::vector<std::size_t> replacedAmong(const std::vector<std::size_t>& earlier, const Drawing& drawing,
                                       const std::string& file, const std::vector<host::MdDbObjectId>& madeNow) {
    std::vector<std::size_t> replaced;
    for (const std::size_t place : earlier) {
        const drawing::Import& import = drawing.imports()[place];
        const bool isNew = std::find(madeNow.begin(), madeNow.end(), import.id) != madeNow.end();
        if (!isNew || platform::leadToOneFile(import.path, file)) {
            replaced.push_back(place);
        }
    }
    return replaced;
}

// When these were imported, in words; empty if there are none.
std::string timesOf(const Drawing& drawing, const std::vector<std::size_t>& earlier, const Streams& streams) {
    if (earlier.empty()) {
        return {};
    }
    const std::string& time = drawing.imports()[earlier.back()].time;
    const std::string times = std::to_string(earlier.size());
    return inLanguage(streams, times + "回、最後は " + time,
                      (earlier.size() == 1 ? "once" : times + " times") + ", last at " + time);
}

void removeImports(Drawing& drawing, const std::vector<std::size_t>& places) {
    std::vector<host::MdDbObjectId> ids;
    for (const std::size_t place : places) {
        ids.push_back(drawing.imports()[place].id);
    }
    for (const host::MdDbObjectId id : ids) {
        drawing.removeImport(id);
    }
}

drawing::ImportCounts countsOf(const sima::SimaReader& reader) {
    drawing::ImportCounts counts;
    counts.points = reader.coordinatePointsCreated;
    counts.lots = reader.options.flag(sima::ImportKind::Lots) ? reader.lotCount() : 0;
    counts.routes = reader.polylinesCreated;
    counts.alignments = reader.alignmentsCreated;
    counts.longitudinal = reader.longitudinalPointsCreated;
    counts.crossSections = reader.crossSectionPointsCreated;
    counts.errors = reader.log.errorCount();
    return counts;
}

// What a run reports once the drawing is safe, or once it is known that nothing was kept.
struct Telling {
    const ImportArguments& arguments;
    const std::string& file;
    const Streams& streams;
    FileEncoding encoding;

    void errors(const sima::SimaReader& reader) const {
        tellErrorBlocks(streams, file, reader.log);
        tellHints(arguments, file, encoding, reader.log, streams);
    }
};

// Runs the command for one file and keeps the drawing and the log on disk, the log last. Raises Stop, with both on disk
// as they were unless a part was to be kept; Overtaken if it should be tried once more.
FileResult importFile(EmbeddedHost& host, const ImportArguments& given, const std::string& file,
                      const std::string& drawingPath, std::vector<host::MdDbObjectId>& madeNow,
                      const Streams& streams) {
    Drawing& drawing = host.drawing();
    const Language language = streams.language;
    const ImportArguments arguments = prepareDrawing(drawing, given, drawingPath, language);
    PendingLog log(file, language);
    if (log.replacesDrawing(drawingPath)) {
        throw Stop(kNotDone, said(language, Text::LogOverDrawing, {{"path", file}, {"log", log.target()}}));
    }
    Outcome logged = log.make();
    if (!logged && !arguments.keepPartial) {
        throw Stop(kNotDone, said(language, Text::DrawingAsItWas, {{"message", logged.in(language)}}));
    }
    const std::string logFile = logged ? log.path() : std::string();

    const bool isNew = platform::lookUp(drawingPath).kind == platform::PathKind::Missing;
    const Telling telling{arguments, file, streams, encodingOf(file, arguments.encoding)};
    std::future<std::optional<drawing::FileDigest>> digest = startDigest(file);
    const std::string name = nameInRows(file);
    const std::vector<std::size_t> ofName = drawing.importsOf(name);
    const std::vector<std::size_t> replaced =
        arguments.replace ? replacedAmong(ofName, drawing, file, madeNow) : std::vector<std::size_t>();
    const bool keepsNamesake = arguments.replace && replaced.size() < ofName.size();
    const std::string earlier = timesOf(drawing, arguments.replace ? replaced : ofName, streams);
    removeImports(drawing, replaced);
    const std::size_t firstEntity = drawing.entityCount();
    const std::size_t firstAlignment = drawing.alignmentCount();
    drawing::Import import;
    import.firstId = drawing.lastId() + 1;
    host.setPositiveRadius(arguments.positiveRadius);
    host.setPlanTangents(arguments.planTangents);
    host.clearNotes();

    ImportDialogs dialogs(arguments, file, telling.encoding.encoding, logFile, drawing, streams);
    Run run = runCommand(dialogs, file,
                         {telling.encoding.encoding, outputSettings(host, arguments), kLongestLine, logFile}, language);
    const std::optional<drawing::FileDigest> known = digest.get();
    if (run.outcome && !dialogs.result()) {
        throw Stop(kNotDone, said(language, Text::SitesNotListed, {{"path", drawingPath}}));
    }
    if (run.outcome && !known) {
        run.outcome = failed(said(language, Text::CannotReadToEnd, {{"path", file}}));
    }
    if (run.outcome && logged) {
        logged = log.complete();
    }
    if (run.outcome) {
        run.outcome = logged;
    }
    if (!run.outcome && !arguments.keepPartial) {
        telling.errors(run.reader);
        throw Stop(kNotDone, said(language, Text::DrawingAsItWas, {{"message", run.outcome.in(language)}}));
    }

    import.lastId = drawing.lastId();
    import.fileName = name;
    import.path = wholePath(file);
    import.fileSize = known ? known->size : 0;
    import.digest = known ? known->digest : std::string();
    import.time = platform::utcNow();
    import.counts = countsOf(run.reader);
    const host::MdDbObjectId made = drawing.addImport(std::move(import));
    const bool nothingFound = run.reader.nothingFound();
    run.reader.points.clear(); // the file's records need no memory while the drawing is written
    run.reader.lots = {};
    run.reader.alignments = {};

    const Outcome saved = saveDrawing(*host.currentDocument(), drawingPath, dialogs.progress(), language);
    if (saved.failure == Failure::ChangedOutside || saved.failure == Failure::AppearedMeanwhile) {
        throw Overtaken(kNotDone, saved.in(language));
    }
    if (!saved) {
        telling.errors(run.reader);
        throw Stop(kNotDone, saved.in(language));
    }
    madeNow.push_back(made);
    if (run.outcome) {
        if (const Outcome placed = log.putInPlace(); !placed) {
            const bool removed = isNew && !platform::removeFile(drawingPath);
            throw Stop(kNotDone, said(language, removed ? Text::NoDrawingMade : Text::ImportIsIn,
                                      {{"message", placed.in(language)}, {"drawing", drawingPath}}));
        }
    }

    telling.errors(run.reader);
    if (nothingFound) {
        tellNothingFound(streams, arguments.quiet, file);
    }
    tellNotes(host, arguments, dialogs, file, run.reader, streams);
    tellUnplaced(drawing, firstEntity, firstAlignment, arguments, file, streams);
    if (!earlier.empty()) {
        if (arguments.replace) {
            tellFileNote(streams, arguments.quiet, file, "replaced",
                         inLanguage(streams,
                                    "図面にあった同じ名前のファイルの図形を置き換えます(読み込み " + earlier + ")",
                                    "replaces what the drawing had of a file of this name, imported " + earlier));
        } else {
            tellFileNote(streams, arguments.quiet, file, "imported-before",
                         inLanguage(streams,
                                    "図面には同じ名前のファイルの図形が既にあります(読み込み " + earlier +
                                        ")。--replace を付けると新しい図形に置き換わります",
                                    "the drawing has objects of a file of this name already, imported " + earlier +
                                        "; --replace puts the new ones in their place"));
        }
    } else if (arguments.replace && !keepsNamesake) {
        tellFileNote(streams, arguments.quiet, file, "nothing-replaced",
                     inLanguage(streams, "--replace: 図面には同じ名前のファイルの図形がありませんでした",
                                "--replace: the drawing had nothing of a file of this name"));
    }
    if (keepsNamesake) {
        tellFileNote(streams, arguments.quiet, file, "namesake-kept",
                     inLanguage(streams,
                                "--replace: 同じ名前の別のファイルを今回読み込みました。その図形は置き換えません",
                                "--replace: another file of this name was imported just now; its objects are kept"));
    }
    if (!run.outcome) {
        throw Stop(kNotDone,
                   said(language, Text::KeptIn, {{"message", run.outcome.in(language)}, {"drawing", drawingPath}}));
    }
    return {arguments.strict && dialogs.result()->errorCount > 0 ? kLogHasErrors : kDone, *dialogs.result(),
            log.target()};
}

// The drawing open at the moment: each file has its own, or all have one.
class OpenDrawing {
  public:
    // Raises Stop if the drawing cannot be read.
    EmbeddedHost& at(const std::string& path, const ImportArguments& arguments, const Streams& streams) {
        if (host_ && path == path_) {
            return *host_;
        }
        host_.reset();
        auto host = std::make_unique<EmbeddedHost>();
        openDrawing(*host, path, arguments, streams);
        host_ = std::move(host);
        path_ = path;
        return *host_;
    }
    // What is in memory may no longer be what is on disk.
    void forget() { host_.reset(); }
    // The imports of this call into the drawing.
    std::vector<host::MdDbObjectId>& madeNow(const std::string& path) { return madeNow_[path]; }

  private:
    std::unique_ptr<EmbeddedHost> host_;
    std::string path_;
    std::map<std::string, std::vector<host::MdDbObjectId>> madeNow_; // by drawing
};

// The import that comes second to a drawing is done again on what the first one left.
FileResult importInTurn(OpenDrawing& open, const ImportArguments& arguments, const std::string& file,
                        const std::string& drawingPath, const Streams& streams) {
    constexpr int kAttempts = 5;
    for (int attempt = 1;; ++attempt) {
        try {
            return importFile(open.at(drawingPath, arguments, streams), arguments, file, drawingPath,
                              open.madeNow(drawingPath), streams);
        } catch (const Overtaken&) {
            open.forget();
            if (streams.report != nullptr) {
                *streams.report = {};
            }
            if (attempt == kAttempts) {
                throw;
            }
        }
    }
}

} // namespace

int runImport(const ImportArguments& arguments, const Streams& given) {
    OpenDrawing open;
    std::map<std::filesystem::path, std::string> files; // of this call, by their logs: a.sim and a.SIM have one
    nlohmann::ordered_json results = nlohmann::ordered_json::array();
    int code = kDone;
    for (const std::string& file : arguments.files) {
        FileReport report;
        Streams streams = given;
        streams.report = arguments.json ? &report : nullptr;
        nlohmann::ordered_json json = jsonOf(file, arguments.drawing.value_or(""));
        std::string failure;
        try {
            requireReadableSimFile(file, streams.language);
            const std::string logPath = drawing::logOf(file);
            const auto [other, isFirst] = files.try_emplace(platform::pathOf(logPath).lexically_normal(), file);
            if (!isFirst && !platform::leadToOneFile(other->second, file)) {
                throw Stop(kNotDone, said(streams.language, Text::LogOverLog,
                                          {{"path", file}, {"log", logPath}, {"other", other->second}}));
            }
            const std::string drawingPath = arguments.drawing.value_or(drawingBeside(file));
            json = jsonOf(file, drawingPath);
            const FileResult made = importInTurn(open, arguments, file, drawingPath, streams);
            code = std::max(code, made.code);
            if (arguments.json) {
                addResult(json, made.result, made.logPath);
            } else {
                printResult(streams.out, made.result, arguments.files.size() > 1);
            }
            tellNote(streams, arguments.quiet,
                     inLanguage(streams, "図面 " + drawingPath + "、ログ " + made.logPath,
                                "drawing " + drawingPath + ", log " + made.logPath));
        } catch (const Stop& stop) {
            open.forget();
            code = std::max(code, stop.code());
            failure = stop.what();
        } catch (...) {
            open.forget();
            code = std::max<int>(code, kNotDone);
            failure = file + ": " + currentExceptionText(streams.language);
        }
        if (!failure.empty()) {
            tellError(streams, failure);
            json["log"] = nullptr;
            json["errors"] = report.errors.size();
        }
        if (arguments.json) {
            addReport(json, report);
            json["failure"] = failure.empty() ? nlohmann::ordered_json() : nlohmann::ordered_json(failure);
            results.push_back(std::move(json));
        }
    }
    if (arguments.json) {
        // A record or a name that is no UTF-8 must not keep back what was done.
        given.out << results.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
    }
    return code;
}

} // namespace fenmark::cli
