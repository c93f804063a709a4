// The import of one file: the command, then the drawing and the log put in place together.
#include "cli/import_file.h"

#include "cli/earlier_imports.h"
#include "cli/file_hints.h"
#include "cli/import_dialogs.h"
#include "cli/import_drawing.h"
#include "cli/pending_log.h"
#include "command/import_command.h"
#include "drawing/file_digest.h"
#include "drawing/imported_file.h"
#include "exchange/placed.h"
#include "host/adapter/host_adapter.h"
#include "platform/beside.h"
#include "platform/files.h"
#include "sima/log/sima_log.h"
#include "sima/reader/line_source.h"
#include "sima/reader/sima_reader.h"

#include <cstdint>
#include <future>
#include <optional>
#include <utility>

namespace fenmark::cli {

using drawing::Drawing;
using host::embedded::EmbeddedHost;

namespace {

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

// The digest of the file, made beside the import where the file is large.
std::future<std::optional<drawing::FileDigest>> startDigest(const std::string& file) {
    constexpr std::uint64_t kSmall = std::uint64_t{1} << 20; // bytes
    if (platform::lookUp(file).size > kSmall) {
        return platform::startBeside([file] { return drawing::digestFile(file); });
    }
    return std::async(std::launch::deferred, drawing::digestFile, file);
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

} // namespace

FileResult importFile(EmbeddedHost& host, const ImportArguments& given, const std::string& file,
                      const std::string& drawingPath, std::vector<host::MdDbObjectId>& madeNow,
                      const Streams& streams) {
    Drawing& drawing = host.drawing();
    const Language language = streams.language;
    const ImportArguments arguments = prepareForImport(drawing, given, drawingPath, language);
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
    const EarlierImports earlier(drawing, file, drawing::nameInRows(file), arguments.replace, madeNow, streams);
    earlier.removeReplaced(drawing);
    const std::size_t firstEntity = drawing.entityCount();
    const std::size_t firstAlignment = drawing.alignmentCount();
    const std::uint64_t firstId = drawing.lastId() + 1;
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

    drawing::Import import = drawing::importOf(file, known);
    import.counts = countsOf(run.reader);
    import.firstId = firstId;
    import.lastId = drawing.lastId();
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
            telling.errors(run.reader);
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
    earlier.tell(streams, arguments.quiet, file);
    if (!run.outcome) {
        throw Stop(kNotDone,
                   said(language, Text::KeptIn, {{"message", run.outcome.in(language)}, {"drawing", drawingPath}}));
    }
    return {arguments.strict && dialogs.result()->errorCount > 0 ? kLogHasErrors : kDone, *dialogs.result(),
            log.target()};
}

} // namespace fenmark::cli
