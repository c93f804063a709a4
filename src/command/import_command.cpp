// One run of the command, from the site listing to the result dialog.
#include "command/import_command.h"

#include "output/drawing_output.h"

#include <map>
#include <memory>
#include <utility>

namespace fenmark::command {

namespace {

// False if the sites cannot be listed. A drawing without sites gets one first, also if the user cancels later.
bool listSites(host::HostBoundary& host, std::vector<std::string>& names) {
    const std::unique_ptr<host::CorridorUtility> corridor = host.makeCorridorUtility();
    corridor->connect();
    std::int32_t status = corridor->listSites(names);
    if (status == 0 && names.empty()) {
        corridor->createSite(kDefaultSiteName);
        status = corridor->listSites(names);
    }
    corridor->disconnect();
    return status == 0;
}

// The alignment that the results go on when they have none of their own.
struct ChosenAlignment {
    host::MdDbObjectId id;
    std::string name;
};

// A ticked result has no route of its own among those that stand before it in the file. Counts and bindings are those
// of the preview.
bool resultWithoutRoute(const sima::SimaReader& previewed, const sima::SimaImportOptions& options) {
    auto wanted = [&options](sima::ImportKind kind) {
        return options.flag(kind) && options.counts[static_cast<std::size_t>(kind)] >= 1;
    };
    return (wanted(sima::ImportKind::Longitudinal) && !previewed.allLongitudinalRoutesFound()) ||
           (wanted(sima::ImportKind::CrossSections) && !previewed.allCrossSectionRoutesFound());
}

// False if the user cancels; id and name then stay as they were.
bool selectAlignment(host::HostBoundary& host, Dialogs& dialogs, ChosenAlignment& chosen) {
    std::map<std::string, host::MdDbObjectId> alignments;
    {
        const std::unique_ptr<host::CorridorUtility> corridor = host.makeCorridorUtility();
        corridor->connect();
        corridor->collectAlignments(alignments);
        corridor->disconnect();
    }
    return dialogs.selectAlignment(alignments, chosen.id, chosen.name);
}

ImportResult resultOf(const sima::SimaReader& reader, const LastRun& lastRun) {
    ImportResult result;
    result.errorCount = reader.log.errorCount();
    result.coordinatePoints = reader.coordinatePointsCreated;
    result.filePath = reader.filePath;
    if (lastRun.options.flag(sima::ImportKind::Lots)) {
        result.lots = reader.lotCount();
    }
    result.alignments = reader.alignmentsCreated;
    result.alignmentNames.assign(reader.createdAlignmentNames.begin(), reader.createdAlignmentNames.end());
    result.polylines = reader.polylinesCreated;
    for (std::size_t type = 1; type <= result.routesCreated.size(); ++type) {
        result.routesCreated[type - 1] = reader.routesCreated(static_cast<std::int32_t>(type));
    }
    result.longitudinalPoints = reader.longitudinalPointsCreated;
    result.crossSectionPoints = reader.crossSectionPointsCreated;
    return result;
}

} // namespace

void Fenmark(host::HostBoundary& host, Dialogs& dialogs, LastRun& lastRun, sima::SimaReader& reader,
             const CommandSettings& settings) {
    reader = sima::SimaReader();

    ImportDialogState state{lastRun, {}, {}, false};
    if (!listSites(host, state.siteNames)) {
        return;
    }
    state.layerNames = host.drawingWriter().listLayers();

    if (!dialogs.showImport(state)) {
        return;
    }
    const bool mustChoose = state.mustChooseAlignment;
    lastRun = static_cast<LastRun&&>(std::move(state));
    reader = lastRun.reader;

    // A result without a route of its own: the answer is not looked at. A cancel imports without an alignment.
    ChosenAlignment chosen;
    if (resultWithoutRoute(reader, lastRun.options)) {
        selectAlignment(host, dialogs, chosen);
    }
    // Results whose routes are not imported: only an answer given here is used for every result.
    if (mustChoose && selectAlignment(host, dialogs, chosen)) {
        reader.forceChosenAlignment = true;
    }

    reader.alignmentId = chosen.id;
    reader.alignmentName = chosen.name;
    reader.pointLayer = lastRun.pointLayer;
    reader.ipLayer = lastRun.ipLayer;
    reader.lotLayer = lastRun.lotLayer;
    reader.wideStakeLayer = lastRun.wideStakeLayer;
    reader.continuousLayer = lastRun.continuousLayer;
    reader.shiftDistance = lastRun.shiftDistance;
    reader.siteName = lastRun.siteName;
    reader.options = lastRun.options;

    output::DrawingOutput output(host, settings.output);
    const sima::Encoding encoding = settings.encodingOf ? settings.encodingOf(lastRun.filePath) : settings.encoding;
    reader.fullRead(lastRun.filePath, {&output, dialogs.progress(), &host, encoding, settings.longestLine});

    // The log is written also for a file that could not be opened: it then holds its banner alone.
    reader.log.setFileName(lastRun.filePath);
    if (settings.logFile) {
        reader.log.setFile(*settings.logFile);
    }
    if (!reader.log.fileName().empty()) {
        reader.log.writeAll();
    }

    dialogs.showResult(resultOf(reader, lastRun));
}

} // namespace fenmark::command
