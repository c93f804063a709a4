#include "module/fenmark_app.h"

#include "command/dialog_rules.h"
#include "command/import_command.h"
#include "host/adapter/host_adapter.h"
#include "module/map_modules.h"
#include "module/thread_locale.h"
#include "sima/records/station_equation.h"
#include "ui/dialogs/ui_dialogs.h"

#include <QWidget>

#include <stdexcept>

namespace fenmark::module {

namespace {

// Built when the module is loaded and destroyed in reverse order when it is unloaded.
command::LastRun lastRun;
[[maybe_unused]] sima::StationEquationHolder stationEquations;
mirdane::MdApDataManager<CDocData> docData;

} // namespace

void runFenmark() {
    host::HostAdapter host;
    ui::UiDialogs dialogs(static_cast<QWidget*>(mirdane::mdsw_mirdanMainWnd()));
    sima::SimaReader reader;
    try {
        command::Fenmark(host, dialogs, lastRun, reader);
    } catch (const std::invalid_argument& error) {
        // A record too short for a field ends the command. The host says so in one line, so the line is told here; an
        // exception of the dialog's preview has it already.
        if (reader.lineNumber == 0)
            throw;
        throw std::invalid_argument(command::brokenOffText(reader, error));
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
