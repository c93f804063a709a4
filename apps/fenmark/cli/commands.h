// The commands: each a function of its arguments and the streams that returns an exit code.
#pragma once

#include "cli/cli.h"
#include "cli/options.h"

namespace fenmark::cli {

int runImport(const ImportArguments& arguments, const Streams& streams);
int runPreview(const PreviewArguments& arguments, const Streams& streams);
int runInfo(const InfoArguments& arguments, const Streams& streams);
int runStation(const StationArguments& arguments, const Streams& streams);
int runLocate(const LocateArguments& arguments, const Streams& streams);
int runExport(const ExportArguments& arguments, const Streams& streams);
int runStakes(const StakesArguments& arguments, const Streams& streams);
int runReport(const ReportArguments& arguments, const Streams& streams);
int runPlot(const PlotArguments& arguments, const Streams& streams);

} // namespace fenmark::cli
