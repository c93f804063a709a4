// The commands on the line: the options of each as they stand there, how they are declared, and what they mean.
#pragma once

#include "cli/options.h"
#include "values/language.h"

#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
} // namespace CLI

namespace fenmark::cli {

struct ImportLine {
    ImportArguments arguments;
    std::vector<std::string> only; // each a list of kinds with commas
    std::vector<std::string> skip;
    std::string shift;
    std::string encoding = "auto";
    std::string positiveRadius = "auto";
    int zone = 0;
};

struct PreviewLine {
    PreviewArguments arguments;
    std::string encoding = "auto";
};

struct InfoLine {
    InfoArguments arguments;
};

struct StationLine {
    StationArguments arguments;
    std::string station;
    std::optional<std::string> offset;
};

struct LocateLine {
    LocateArguments arguments;
    std::string x;
    std::string y;
};

struct ExportLine {
    ExportArguments arguments;
    std::vector<std::string> only; // each a list of kinds with commas
    std::string rectangle;
    // Empty where they are not given.
    std::string dxfVersion;
    std::string dxfLayers;
    std::string scale;
    std::string crs;
    std::string profile;
};

struct PlotLine {
    PlotArguments arguments;
    int scale = 0;
    std::string paper;
};

// How points and stations are named, which stakes and reports share.
struct NamesLine {
    std::string pitch;
    std::string pointNames = "ka";
    std::string stationNames = "stake";
};

struct StakesLine {
    StakesArguments arguments;
    NamesLine names;
    std::string every;
    std::string at;     // stations with commas
    std::string offset; // metres with commas
    std::string format;
};

struct ReportLine {
    ReportArguments arguments;
    NamesLine names;
    std::string tables; // parts of a report with commas
    std::string sides = "cut";
    std::string land;
    int figureScale = 0;
};

// Each adds its command with options, help and example; the line keeps what the parser then finds.
void declare(CLI::App& app, ImportLine& line, Language language);
void declare(CLI::App& app, PreviewLine& line, Language language);
void declare(CLI::App& app, InfoLine& line, Language language);
void declare(CLI::App& app, StationLine& line, Language language);
void declare(CLI::App& app, LocateLine& line, Language language);
void declare(CLI::App& app, ExportLine& line, Language language);
void declare(CLI::App& app, PlotLine& line, Language language);
void declare(CLI::App& app, StakesLine& line, Language language);
void declare(CLI::App& app, ReportLine& line, Language language);

// The arguments that the line means, paths with the system's own separators. Each throws WrongUsage.
ImportArguments checked(ImportLine line, Language language);
PreviewArguments checked(PreviewLine line, Language language);
InfoArguments checked(InfoLine line, Language language);
StationArguments checked(StationLine line, Language language);
LocateArguments checked(LocateLine line, Language language);
ExportArguments checked(ExportLine line, Language language);
PlotArguments checked(PlotLine line, Language language);
StakesArguments checked(StakesLine line, Language language);
ReportArguments checked(ReportLine line, Language language);

} // namespace fenmark::cli
