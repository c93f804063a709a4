// Runs one command line.
#include "cli/cli.h"

#include "cli/arguments.h"
#include "cli/commands.h"
#include "cli/messages.h"
#include "cli/printable.h"

#include <ostream>
#include <string_view>
#include <variant>

namespace fenmark::cli {

namespace {

struct Runner {
    const Streams& streams;

    int operator()(const ShowText& show) const {
        streams.out << show.text;
        return kDone;
    }
    int operator()(const UsageError& error) const {
        tellError(streams, error.message);
        streams.err << said(streams.language, Text::HelpHint) << '\n';
        return kWrongUsage;
    }
    int operator()(const ImportArguments& a) const { return runImport(a, streams); }
    int operator()(const PreviewArguments& a) const { return runPreview(a, streams); }
    int operator()(const InfoArguments& a) const { return runInfo(a, streams); }
    int operator()(const StationArguments& a) const { return runStation(a, streams); }
    int operator()(const LocateArguments& a) const { return runLocate(a, streams); }
    int operator()(const ExportArguments& a) const { return runExport(a, streams); }
    int operator()(const StakesArguments& a) const { return runStakes(a, streams); }
    int operator()(const ReportArguments& a) const { return runReport(a, streams); }
    int operator()(const PlotArguments& a) const { return runPlot(a, streams); }
};

} // namespace

namespace {

int runGuarded(const std::vector<std::string>& arguments, const Streams& streams) {
    try {
        return std::visit(Runner{streams}, parseArguments(arguments, streams.language));
    } catch (const Stop& stop) {
        tellError(streams, stop.what());
        return stop.code();
    } catch (...) {
        tellError(streams, currentExceptionText(streams.language));
        return kNotDone;
    }
}

} // namespace

int run(const std::vector<std::string>& arguments, const Streams& streams) {
    try {
        PrintableStream out(streams.out);
        PrintableStream err(streams.err);
        return runGuarded(arguments, {out, err, streams.errIsTerminal, &streams.err, streams.columns, nullptr,
                                      streams.language, streams.patience});
    } catch (...) {
        // The message failed as well: there is no memory even for one, so this one takes none.
        constexpr std::string_view kNoMemory = "fenmark: error: out of memory\n";
        streams.err.rdbuf()->sputn(kNoMemory.data(), static_cast<std::streamsize>(kNoMemory.size()));
        return kNotDone;
    }
}

} // namespace fenmark::cli
