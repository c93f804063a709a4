// The module's application object, with its command table.
#include "module/fenmark_app.h"

#include "command/dialog_rules.h"
#include "command/import_command.h"
#include "host/adapter/host_adapter.h"
#include "module/map_modules.h"
#include "module/thread_locale.h"
#include "sima/records/doubts.h"
#include "sima/records/station_equation.h"
#include "sima/text/encoding_choice.h"
#include "ui/dialogs/ui_dialogs.h"

#include <QWidget>

#include <cstddef>
#include <cstdint>
#include <iomanip>
#include <limits>
#include <locale>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace fenmark::module {

namespace {

// Built when the module is loaded and destroyed in reverse order when it is unloaded.
command::LastRun lastRun;
[[maybe_unused]] sima::StationEquationHolder stationEquations;
mirdane::MdApDataManager<CDocData> docData;

} // namespace

namespace {

// No time of modification: the dialog reads the file anew.
constexpr std::int64_t kNeverRead = std::numeric_limits<std::int64_t>::min();

// A file that the user gave to the host, as by dropping it on its window, stands in the dialog in place of the file
// of the last run. A run that is not accepted leaves the values of the last run as they were.
class PendingFile {
  public:
    explicit PendingFile(command::LastRun& run) : run_(run) {
        std::string path;
        if (mirdane::mdedGetSystemText(mirdane::kPendingFileVariable, path) != 0 || path.empty()) {
            return;
        }
        mirdane::mdedSetSystemText(mirdane::kPendingFileVariable, {});
        pending_ = true;
        filePath_ = std::exchange(run_.filePath, path);
        fileTime_ = std::exchange(run_.fileTime, kNeverRead);
        options_ = std::exchange(run_.options, {});
    }
    ~PendingFile() {
        if (!pending_ || run_.fileTime != kNeverRead) {
            return;
        }
        run_.filePath = std::move(filePath_);
        run_.fileTime = fileTime_;
        run_.options = std::move(options_);
    }
    PendingFile(const PendingFile&) = delete;
    PendingFile& operator=(const PendingFile&) = delete;

  private:
    command::LastRun& run_;
    bool pending_ = false;
    std::string filePath_;
    std::int64_t fileTime_ = 0;
    sima::SimaImportOptions options_;
};

constexpr std::string_view kAsBytesShow = "auto";

std::string encodingSetting() {
    std::string setting;
    mirdane::mdedGetSystemText(mirdane::kEncodingVariable, setting);
    return setting;
}

// The encoding of a file under the host's setting.
sima::Encoding encodingOf(const std::string& setting, const std::string& path) {
    if (setting == kAsBytesShow) {
        return sima::chooseEncoding(path).encoding;
    }
    return sima::encodingNamed(setting).value_or(sima::Encoding::Cp932);
}

// What the dialog keeps of the last run was read under the setting of that run: under another one it reads anew.
void forgetReadingUnlessSame(const std::string& setting) {
    static std::string before;
    if (std::exchange(before, setting) != setting) {
        lastRun.fileTime = kNeverRead;
    }
}

command::CommandSettings settingsOfHost(const std::string& encoding) {
    command::CommandSettings settings;
    settings.encodingOf = [encoding](const std::string& path) {
        const sima::Encoding taken = encodingOf(encoding, path);
        mirdane::mdedSetSystemText(mirdane::kReadInVariable, sima::encodingTitle(taken));
        return taken;
    };
    std::string inPlan;
    settings.output.planTangents =
        mirdane::mdedGetSystemText(mirdane::kPlanTangentsVariable, inPlan) == 0 && !inPlan.empty();
    settings.output.alignmentMade = [](host::MdDbObjectId id, const sima::SimaAlignment& route) {
        std::ostringstream text;
        text.imbue(std::locale::classic());
        text << std::setprecision(std::numeric_limits<double>::max_digits10) << id.asUint64();
        for (const sima::EntityData& element : route.entities) {
            const host::MdGePoint3d point = element.startPoint();
            text << ' ' << point.x << ' ' << point.y << ' ' << point.z;
        }
        mirdane::mdedSetSystemText(mirdane::kRouteVariable, text.str());
    };
    return settings;
}

// Leaves for the host what a run read and made, also where it was broken off.
void leaveResult(const sima::SimaReader& reader) {
    const std::int32_t lots = reader.options.flag(sima::ImportKind::Lots) ? reader.lotCount() : 0;
    std::string counts;
    for (const std::int32_t count :
         {reader.coordinatePointsCreated, lots, reader.polylinesCreated, reader.alignmentsCreated,
          reader.longitudinalPointsCreated, reader.crossSectionPointsCreated, reader.log.errorCount()}) {
        counts += (counts.empty() ? "" : " ") + std::to_string(count);
    }
    std::string passedOver;
    for (const auto& [kind, lines] : reader.passedOver) {
        passedOver += std::to_string(lines) + '\t' + kind + '\n';
    }
    mirdane::mdedSetSystemText(mirdane::kImportedFileVariable, reader.openError ? std::string() : reader.filePath);
    mirdane::mdedSetSystemText(mirdane::kCountsVariable, counts);
    mirdane::mdedSetSystemText(mirdane::kPassedOverVariable, passedOver);
    std::string doubts;
    for (std::size_t i = 0; i < sima::kDoubts; ++i) {
        const auto doubt = static_cast<sima::Doubt>(i);
        if (const sima::DoubtfulRecords& records = reader.doubts.of(doubt); records.count > 0) {
            doubts += std::to_string(records.count) + ' ' + std::to_string(records.firstLine) + ' ';
            doubts += sima::doubtName(doubt);
            doubts += '\n';
        }
    }
    mirdane::mdedSetSystemText(mirdane::kDoubtsVariable, doubts);
}

} // namespace

void runFenmark() {
    for (const std::string_view name :
         {mirdane::kLogFileVariable, mirdane::kReadInVariable, mirdane::kImportedFileVariable, mirdane::kCountsVariable,
          mirdane::kPassedOverVariable, mirdane::kDoubtsVariable}) {
        mirdane::mdedSetSystemText(name, {});
    }
    const std::string encoding = encodingSetting();
    forgetReadingUnlessSame(encoding);
    const PendingFile pending(lastRun);
    host::HostAdapter host;
    ui::UiDialogs dialogs(static_cast<QWidget*>(mirdane::mdsw_mirdanMainWnd()), ui::openWithDesktop,
                          [&encoding](const std::string& path) {
                              mirdane::mdedSetSystemText(mirdane::kPreviewedFileVariable, path);
                              return encodingOf(encoding, path);
                          });
    sima::SimaReader reader;
    try {
        command::Fenmark(host, dialogs, lastRun, reader, settingsOfHost(encoding));
        mirdane::mdedSetSystemText(mirdane::kLogFileVariable, reader.log.fileName());
        leaveResult(reader);
    } catch (const std::invalid_argument& error) {
        // A record too short for a field ends the command. The host reports it in one line, so the line is named here; an
        // exception of the dialog's preview has it already.
        if (reader.lineNumber == 0) {
            throw;
        }
        leaveResult(reader);
        throw std::invalid_argument(command::brokenOffText(reader, error));
    } catch (const std::system_error&) { // of the log, or of a disk that cannot be read
        leaveResult(reader);             // what the import made stays in the drawing
        throw;
    }
}

void runNothing() {}

int CFenmarkApp::initApp(void* package) {
    const int result = MdRxMdmApp::initApp(package);
    setThreadLocale(kJapaneseLocale);
    loadMapModules();
    return result;
}

const std::vector<Command>& CFenmarkApp::commands() const {
    static const std::vector<Command> table{
        {kCommandGroup, "Fenmark", mirdane::kModalCommand, runFenmark},
        {kCommandGroup, "Fenmarks", mirdane::kModalCommand, runNothing},
        {kCommandGroup, "Fenmark2", mirdane::kModalCommand, runNothing},
    };
    return table;
}

const std::vector<Callable>& CFenmarkApp::callables() const {
    static const std::vector<Callable> none;
    return none;
}

void* CFenmarkApp::resourceInstance() const {
    static char instance = 0; // any address within the module
    return &instance;
}

} // namespace fenmark::module
