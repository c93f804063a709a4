// What command lines mean: every option with its limits, and what is said of a line that is refused, held to the letter
// to a file beside this test. Help is held so too.
#include "cli/arguments.h"
#include "cli/messages.h"
#include "support/sample_file.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace fenmark::cli {
namespace {

using Line = std::vector<std::string>;
// The name of an option's value, and the value.
using Values = std::vector<std::pair<std::string, std::string>>;

std::string shown(const std::string& text) {
    return "'" + text + "'";
}

std::string shown(bool value) {
    return value ? "yes" : "no";
}

std::string shown(double value) {
    return plainReal(value);
}

template <typename Whole>
requires((std::is_integral_v<Whole> && !std::is_same_v<Whole, bool>) || std::is_enum_v<Whole>) std::string
    shown(Whole value) {
    return std::to_string(static_cast<long long>(value));
}

std::string shown(const drawing::Extent& extent) {
    return shown(extent.minX) + " " + shown(extent.minY) + " " + shown(extent.maxX) + " " + shown(extent.maxY);
}

template <typename Value>
std::string shown(const std::optional<Value>& value) {
    return value ? shown(*value) : "-";
}

// Of lists and arrays; of flags their places.
template <typename Items>
requires requires(const Items& items) {
    items.front();
} &&(!std::is_same_v<Items, std::string>)std::string shown(const Items& items) {
    std::string text;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if constexpr (std::is_same_v<typename Items::value_type, bool>) {
            text += items[i] ? " " + std::to_string(i) : "";
        } else {
            text += " " + shown(items[i]);
        }
    }
    return "[" + text + " ]";
}

Values valuesOf(const ImportArguments& a) {
    return {{"files", shown(a.files)},
            {"drawing", shown(a.drawing)},
            {"site", shown(a.site)},
            {"wanted", shown(a.wanted)},
            {"point layer", shown(a.pointLayer)},
            {"ip layer", shown(a.ipLayer)},
            {"lot layer", shown(a.lotLayer)},
            {"stake layer", shown(a.stakeLayer)},
            {"continuous layer", shown(a.continuousLayer)},
            {"shift", shown(a.shift)},
            {"alignment", shown(a.alignment)},
            {"force alignment", shown(a.forceAlignment)},
            {"create layers", shown(a.createLayers)},
            {"zone", shown(a.zone)},
            {"encoding", shown(a.encoding)},
            {"positive radius", shown(a.positiveRadius)},
            {"plan tangents", shown(a.planTangents)},
            {"replace", shown(a.replace)},
            {"keep partial", shown(a.keepPartial)},
            {"strict", shown(a.strict)},
            {"json", shown(a.json)},
            {"quiet", shown(a.quiet)}};
}

Values valuesOf(const PreviewArguments& a) {
    return {
        {"file", shown(a.file)}, {"encoding", shown(a.encoding)}, {"json", shown(a.json)}, {"quiet", shown(a.quiet)}};
}

Values valuesOf(const InfoArguments& a) {
    return {{"drawing", shown(a.drawing)}, {"json", shown(a.json)}, {"alignments", shown(a.alignments)}};
}

Values valuesOf(const StationArguments& a) {
    return {{"drawing", shown(a.drawing)},
            {"alignment", shown(a.alignment)},
            {"station", shown(a.station)},
            {"offset", shown(a.offset)},
            {"json", shown(a.json)}};
}

Values valuesOf(const LocateArguments& a) {
    return {{"drawing", shown(a.drawing)},
            {"alignment", shown(a.alignment)},
            {"x", shown(a.x)},
            {"y", shown(a.y)},
            {"json", shown(a.json)}};
}

Values valuesOf(const ExportArguments& a) {
    return {{"drawing", shown(a.drawing)},
            {"target", shown(a.target)},
            {"left out", shown(a.options.selection.left)},
            {"layers", shown(a.options.selection.layers)},
            {"rectangle", shown(a.options.selection.rectangle)},
            {"zone", shown(a.options.zone)},
            {"plane", shown(a.options.plane)},
            {"DXF version", shown(a.options.dxfVersion)},
            {"DXF layers", shown(a.options.dxfLayers)},
            {"elements", shown(a.options.elements)},
            {"LandXML", shown(a.options.landXmlProfile)},
            {"scale", shown(a.options.scale)},
            {"title", shown(a.options.title)},
            {"columns", shown(a.options.columns)},
            {"quiet", shown(a.quiet)}};
}

Values valuesOf(const PlotArguments& a) {
    return {{"drawing", shown(a.drawing)},
            {"target", shown(a.target)},
            {"scale", shown(a.options.scale)},
            {"paper", shown(a.options.paper)},
            {"along", shown(a.along)},
            {"profile", shown(a.profile)},
            {"cross-sections", shown(a.crossSections)},
            {"quiet", shown(a.quiet)}};
}

Values valuesOf(const StakesArguments& a) {
    return {{"drawing", shown(a.drawing)},
            {"alignment", shown(a.alignment)},
            {"every", shown(a.options.every)},
            {"stations", shown(a.options.stations)},
            {"offsets", shown(a.options.offsets)},
            {"main points", shown(a.options.mainPoints)},
            {"point names", shown(a.options.mainPointNames)},
            {"station names", shown(a.options.stationNames.style)},
            {"pitch", shown(a.options.stationNames.pitch)},
            {"format", shown(a.format)},
            {"target", shown(a.target)}};
}

Values valuesOf(const ReportArguments& a) {
    return {{"drawing", shown(a.drawing)},
            {"target", shown(a.target)},
            {"parts", shown(a.options.parts)},
            {"scale", shown(a.options.figureScale)},
            {"sides", shown(a.options.sides)},
            {"land", shown(a.options.land)},
            {"point names", shown(a.options.mainPointNames)},
            {"station names", shown(a.options.stationNames.style)},
            {"pitch", shown(a.options.stationNames.pitch)},
            {"logs", shown(a.logs)},
            {"quiet", shown(a.quiet)}};
}

Values valuesOf(const ShowText& show) {
    return {{"prints", show.text.substr(0, show.text.find('\n'))}};
}

Values valuesOf(const UsageError& error) {
    return {{"refused", error.message}};
}

std::string typed(const Line& line) {
    std::string text = "fenmark";
    for (const std::string& argument : line) {
        text += " " + (argument.empty() || argument.find(' ') != std::string::npos ? shown(argument) : argument);
    }
    return text + "\n";
}

// The line and what it means: all values of a command's first line, and of the others those that the first has not.
class Meanings {
  public:
    void add(const Line& line) {
        text_ += typed(line);
        const ParsedCommand english = parseArguments(line, Language::English);
        const Values values = std::visit([](const auto& command) { return valuesOf(command); }, english);
        const auto [first, isNew] = firsts_.try_emplace(english.index(), values);
        const bool isWhole = isNew || values.size() == 1;
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (isWhole || values[i] != first->second[i]) {
                text_ += "    " + values[i].first + ": " + values[i].second + "\n";
            }
        }
        if (std::holds_alternative<UsageError>(english)) {
            const ParsedCommand japanese = parseArguments(line, Language::Japanese);
            text_ += "    " + std::get<UsageError>(japanese).message + "\n";
        }
    }
    // The line with one of the options after another.
    void add(Line line, const std::vector<Line>& options) {
        const auto end = static_cast<std::ptrdiff_t>(line.size());
        for (const Line& option : options) {
            line.erase(line.begin() + end, line.end());
            line.insert(line.end(), option.begin(), option.end());
            add(line);
        }
    }
    const std::string& text() const { return text_; }

  private:
    std::string text_;
    std::map<std::size_t, Values> firsts_; // by command
};

TEST(CommandLines, EveryOptionOfAnImportReachesItsPlace) {
    Meanings meanings;
    meanings.add({"import", "a.sim"},
                 {{},
                  {"b.sim", "c.sim"},
                  {"--drawing", "d.gpkg"},
                  {"--drawing=d.gpkg"},
                  {"--drawing", "d.dwg"},
                  {"--drawing", "d.DXF"},
                  {"--drawing", "d.svg"},
                  {"--drawing", "d.html"},
                  {"--drawing", "d.htm"},
                  {"--drawing", "d.pdf"},
                  {"--drawing", ""},
                  {"--site", "S"},
                  {"--site", ""},
                  {"--only", "points"},
                  {"--only", "lots,longitudinal"},
                  {"--only", "cross-sections", "--only", "ip"},
                  {"--only", "main,centre,left-stake,right-stake,continuous", "--skip", "main,centre"},
                  {"--skip", "continuous-curves", "--skip", "points"},
                  {"--only", "points,"},
                  {"--only", ""},
                  {"--skip", "point"},
                  {"--only", "Points"},
                  {"--point-layer", "P"},
                  {"--ip-layer", "I"},
                  {"--lot-layer", "L"},
                  {"--stake-layer", "W"},
                  {"--continuous-layer", "C"},
                  {"--shift", "0.25"},
                  {"--shift", ".5"},
                  {"--shift", "1"},
                  {"--shift", "0"},
                  {"--shift", "-1"},
                  {"--shift", "1e3"},
                  {"--shift", "1.2.3"},
                  {"--shift", "x"},
                  {"--shift", ""},
                  {"--alignment", "CL"},
                  {"--alignment", "CL", "--force-alignment"},
                  {"--force-alignment"},
                  {"--create-layers"},
                  {"--zone", "1"},
                  {"--zone", "19"},
                  {"--zone", "0"},
                  {"--zone", "20"},
                  {"--zone", "-1"},
                  {"--zone", "9.5"},
                  {"--encoding", "auto"},
                  {"--encoding", "cp932"},
                  {"--encoding", "utf-8"},
                  {"--encoding", "utf-16"},
                  {"--encoding", "utf-16be"},
                  {"--encoding", "UTF-8"},
                  {"--encoding", "euc"},
                  {"--positive-radius", "auto"},
                  {"--positive-radius", "left"},
                  {"--positive-radius", "right"},
                  {"--positive-radius", "Left"},
                  {"--plan-tangents"},
                  {"--replace"},
                  {"--keep-partial"},
                  {"--strict"},
                  {"--json"},
                  {"--quiet"},
                  {"-q"},
                  {"--zone", "9", "--zone", "9"},
                  {"--strict", "--strict"},
                  {"--strict=no"},
                  {""}});
    meanings.add({"preview", "a.sim"},
                 {{}, {"--encoding", "utf-8"}, {"--encoding", "x"}, {"--json"}, {"--quiet"}, {"-q"}, {"b.sim"}});
    meanings.add({"preview", ""});
    test::expectSampleOf("cli", "lines_import.txt", meanings.text());
}

TEST(CommandLines, EveryOptionOfAQueryReachesItsPlace) {
    Meanings meanings;
    meanings.add({"info", "d.gpkg"}, {{}, {"--json"}, {"--alignments"}, {"--alignments", "--json"}, {"e.gpkg"}});
    meanings.add({"station", "d.gpkg", "CL"}, {{"12.5"},
                                               {"12.5", "3"},
                                               {"12.5", "-3"},
                                               {"12.5", "-.25"},
                                               {"12.5", "+3"},
                                               {"-.5"},
                                               {"-0"},
                                               {"1e3"},
                                               {"No.3"},
                                               {"no.3+4.5"},
                                               {"No.-1+16"},
                                               {"No.3-4.5"},
                                               {"1k234.5"},
                                               {"1K-20"},
                                               {"--json", "12.5"},
                                               {"12.5", "x"},
                                               {"12.5", "3", "4"},
                                               {"No.3+"},
                                               {"k5"},
                                               {"+-5"},
                                               {"nan"},
                                               {"1e999"},
                                               {""},
                                               {}});
    meanings.add({"locate", "d.gpkg", "CL"}, {{"1", "2"},
                                              {"-1.5", "-.5"},
                                              {"+1", "+2"},
                                              {"--json", "1", "2"},
                                              {"1", "2", "--json"},
                                              {"x", "2"},
                                              {"1", "y"},
                                              {"1", "inf"},
                                              {"1", ""},
                                              {"1"},
                                              {"1", "2", "3"}});
    test::expectSampleOf("cli", "lines_queries.txt", meanings.text());
}

TEST(CommandLines, EveryOptionOfAnExportReachesItsPlace) {
    Meanings meanings;
    meanings.add({"export", "d.gpkg", "o.dxf"},
                 {{},
                  {"--only", "points"},
                  {"--only", "lots,alignments", "--only", "ip"},
                  {"--only", "left-stake,right-stake,continuous,longitudinal,cross-sections,others"},
                  {"--only", "points,,lots"},
                  {"--only", "lot"},
                  {"--layer", "0"},
                  {"--layer", "0", "--layer", "1"},
                  {"--layer", "0", "1"},
                  {"--only", "points", "lots"},
                  {"--rectangle", "1,2,3,4"},
                  {"--rectangle", "3,4,-1,2.5"},
                  {"--rectangle=-3,4,-1,2.5"},
                  {"--rectangle", "1,2,3"},
                  {"--rectangle", "1,2,3,4,5"},
                  {"--rectangle", "1,2,3,"},
                  {"--rectangle", "1,2,3,x"},
                  {"--zone", "1"},
                  {"--zone", "19"},
                  {"--zone", "0"},
                  {"--zone", "20"},
                  {"--crs", "lonlat"},
                  {"--crs", "plane"},
                  {"--crs", "sphere"},
                  {"--dxf-version", "R12"},
                  {"--dxf-version", "r12"},
                  {"--dxf-version", "2000"},
                  {"--dxf-version", "2018"},
                  {"--dxf-version", "2004"},
                  {"--layers", "kinds"},
                  {"--layers", "drawing"},
                  {"--layers", "none"},
                  {"--elements"},
                  {"--scale", "0.01"},
                  {"--scale", "0.0099999"},
                  {"--scale", "100000000"},
                  {"--scale", "100000000.1"},
                  {"--scale", "1e2"},
                  {"--scale", "-500"},
                  {"--scale", "x"},
                  {"--columns"},
                  {"--profile", "landxml"},
                  {"--profile", "j-landxml"},
                  {"--profile", "xml"},
                  {"--quiet"},
                  {"-q"},
                  {"more"}});
    meanings.add({"export", "d.gpkg", "o.GeoJSON"}, {{"--crs", "lonlat"}, {"--crs", "plane"}, {"--scale", "500"}});
    meanings.add({"export", "d.gpkg", "o.kml"}, {{"--zone", "9"}, {"--crs", "lonlat"}, {"--elements"}});
    meanings.add({"export", "d.gpkg", "o.sim"}, {{"--columns"}, {"--layers", "kinds"}});
    meanings.add({"export", "d.gpkg", "o.csv"}, {{"--zone", "9"}, {"--dxf-version", "2000"}});
    meanings.add({"export", "d.gpkg", "o.xml"},
                 {{"--profile", "landxml"}, {"--profile", "j-landxml"}, {"--profile", "xml"}, {"--columns"}});
    meanings.add({"export", "d.gpkg", "o.txt"}, {{"--columns"}});
    meanings.add({"plot", "d.gpkg", "o.svg"}, {{},
                                               {"--scale", "1"},
                                               {"--scale", "100000000"},
                                               {"--scale", "0"},
                                               {"--scale", "100000001"},
                                               {"--scale", "2.5"},
                                               {"--paper", "A4"},
                                               {"--paper", "A3"},
                                               {"--paper", "A2"},
                                               {"--paper", "A1"},
                                               {"--paper", "A0"},
                                               {"--paper", "a4"},
                                               {"--paper", "A5"},
                                               {"--along", "CL"},
                                               {"--profile", "CL"},
                                               {"--cross-sections", "CL"},
                                               {"--along", "CL", "--profile", "CL"},
                                               {"--along", "CL", "--cross-sections", "CL"},
                                               {"--profile", "CL", "--cross-sections", "CL"},
                                               {"--quiet"},
                                               {"-q"}});
    test::expectSampleOf("cli", "lines_export.txt", meanings.text());
}

TEST(CommandLines, EveryOptionOfADocumentReachesItsPlace) {
    const std::vector<Line> names = {{"--pitch", "100"},
                                     {"--pitch", "0.001"},
                                     {"--pitch", "0.00099999"},
                                     {"--pitch", "0"},
                                     {"--pitch", "-20"},
                                     {"--pitch", "x"},
                                     {"--point-names", "ka"},
                                     {"--point-names", "btc"},
                                     {"--point-names", "KA"},
                                     {"--station-names", "stake"},
                                     {"--station-names", "kilometre"},
                                     {"--station-names", "mile"}};
    Meanings meanings;
    meanings.add({"stakes", "d.gpkg", "CL"}, {{},
                                              {"--every", "5"},
                                              {"--every", "0"},
                                              {"--every", "-0.001"},
                                              {"--every", "x"},
                                              {"--at", "12.5"},
                                              {"--at", "No.6+0.5,1k-20,-3"},
                                              {"--at", "No.3", "--pitch", "100"},
                                              {"--at", "No.3", "--every", "50"},
                                              {"--at", "12,,13"},
                                              {"--at", "12,"},
                                              {"--offset", "3"},
                                              {"--offset=-3,0,4.5"},
                                              {"--offset=-100000,100000"},
                                              {"--offset", "100000.001"},
                                              {"--offset=-100000.001"},
                                              {"--offset", "1,,2"},
                                              {"--offset", "x"},
                                              {"--main-points"},
                                              {"--format", "table"},
                                              {"--format", "csv"},
                                              {"--format", "sim"},
                                              {"--format", "json"},
                                              {"--format", "xml"},
                                              {"--out", "o.csv"},
                                              {"--out", "o.sim"},
                                              {"--out", "o.json"},
                                              {"--out", "o.CSV"},
                                              {"--out", "o.Sim"},
                                              {"--out", "o.dxf"},
                                              {"--out", "o.GPKG"},
                                              {"--out", "o.pdf", "--format", "table"},
                                              {"--out", "o.txt"},
                                              {"--out", "csv"},
                                              {"--out", "a.json/o"},
                                              {"--out", "o.csv", "--format", "json"}});
    meanings.add({"stakes", "d.gpkg", "CL"}, names);
    meanings.add({"report", "d.gpkg", "o.html"}, {{"--scale", "1"}, {"--scale", "100000000"}});
    meanings.add({"report", "d.gpkg", "o.csv"}, {{},
                                                 {"--tables", "summary"},
                                                 {"--tables", "points,lots"},
                                                 {"--tables", "main-points,ips"},
                                                 {"--tables", "intermediate,widths"},
                                                 {"--tables", "lots,"},
                                                 {"--tables", "lot"},
                                                 {"--scale", "1"},
                                                 {"--scale", "100000000"},
                                                 {"--scale", "0"},
                                                 {"--scale", "100000001"},
                                                 {"--sides", "cut"},
                                                 {"--sides", "round"},
                                                 {"--sides", "up"},
                                                 {"--land", "residential"},
                                                 {"--land", "other"},
                                                 {"--land", "farm"},
                                                 {"--log", "a.log"},
                                                 {"--log", "a.log", "--log", "b.log"},
                                                 {"--log", "a.log", "b.log"},
                                                 {"--quiet"},
                                                 {"-q"}});
    meanings.add({"report", "d.gpkg", "o.csv"}, names);
    test::expectSampleOf("cli", "lines_documents.txt", meanings.text());
}

TEST(CommandLines, WhatIsNoLineIsToldInBothLanguages) {
    Meanings meanings;
    for (const Line& line : std::vector<Line>{{},
                                              {""},
                                              {"draw"},
                                              {"draw", "a.sim"},
                                              {"imprt"},
                                              {"Info"},
                                              {"satation"},
                                              {"-"},
                                              {"--"},
                                              {"-5"},
                                              {"--hlep"},
                                              {"-v"},
                                              {"-h"},
                                              {"-hx"},
                                              {"-z"},
                                              {"-q"},
                                              {"-qx", "import"},
                                              {"--json", "info", "d.gpkg"},
                                              {"--zone=9", "import", "a.sim"},
                                              {"--scale"},
                                              {"-.5", "station"},
                                              {"-.5", "station", "d.gpkg", "CL", "1"},
                                              {"-5", "import", "a.sim"},
                                              {"-", "import", "a.sim"},
                                              {"--", "import", "a.sim"},
                                              {"--", "-5", "import", "a.sim"},
                                              {"--help=no"},
                                              {"--version=no"},
                                              {"help", "--"},
                                              {"help", "-5"},
                                              {"help"},
                                              {"help", "import"},
                                              {"help", "import", "export"},
                                              {"help", "draw"},
                                              {"help", "imprt"},
                                              {"help", "--help"},
                                              {"help", "-q"},
                                              {"import"},
                                              {"import", "--"},
                                              {"import", "--", "a.sim"},
                                              {"import", "--", "--no-such-option.sim"},
                                              {"import", "a.sim", "--", "--hlep"},
                                              {"import", "--", "--strict=no"},
                                              {"import", "a.sim", "--strict="},
                                              {"import", "a.sim", "--strict=true"},
                                              {"import", "a.sim", "--strict=no", "--zone"},
                                              {"import", "a.sim", "-q=1"},
                                              {"import", "--help=no"},
                                              {"info", "d.gpkg", "--alignments=no"},
                                              {"import", "a.sim", "-v"},
                                              {"import", "a.sim", "-s"},
                                              {"import", "a.sim", "-k"},
                                              {"import", "a.sim", "-z9"},
                                              {"import", "a.sim", "-qz"},
                                              {"import", "a.sim", "--positive-radus=left"},
                                              {"import", "a.sim", "--no-such-option"},
                                              {"import", "a.sim", "--drawings", "x"},
                                              {"import", "a.sim", "--hlep", "--zoen"},
                                              {"import", "a.sim", "--zone"},
                                              {"import", "a.sim", "--only"},
                                              {"import", "a.sim", "--site"},
                                              {"import", "a.sim", "--encoding"},
                                              {"import", "a.sim", "--positive-radius"},
                                              {"import", "a.sim", "import"},
                                              {"import", "a.sim", "export", "d.gpkg", "o.dxf"},
                                              {"station"},
                                              {"station", "d.gpkg"},
                                              {"station", "d.gpkg", "CL", "-x"},
                                              {"locate", "d.gpkg", "CL", "--x", "5"},
                                              {"export", "d.gpkg"},
                                              {"export", "d.gpkg", "o.dxf", "--scale"},
                                              {"plot", "d.gpkg"},
                                              {"plot", "d.gpkg", "o.svg", "--scale"},
                                              {"plot", "d.gpkg", "o.svg", "--paper"},
                                              {"stakes", "d.gpkg"},
                                              {"stakes", "d.gpkg", "CL", "--every"},
                                              {"report", "d.gpkg"},
                                              {"report", "d.gpkg", "o.csv", "--tables"}}) {
        meanings.add(line);
    }
    test::expectSampleOf("cli", "lines_refused.txt", meanings.text());
}

TEST(CommandLines, HelpIsAsItWasWritten) {
    std::string text;
    for (const Language language : {Language::English, Language::Japanese}) {
        for (const Line& line : std::vector<Line>{{"--help"},
                                                  {"import", "--help"},
                                                  {"preview", "--help"},
                                                  {"info", "--help"},
                                                  {"station", "--help"},
                                                  {"locate", "--help"},
                                                  {"export", "--help"},
                                                  {"plot", "--help"},
                                                  {"stakes", "-h"},
                                                  {"report", "-h"}}) {
            text += typed(line) + std::get<ShowText>(parseArguments(line, language)).text;
        }
    }
    test::expectSampleOf("cli", "help.txt", text);
}

} // namespace
} // namespace fenmark::cli
