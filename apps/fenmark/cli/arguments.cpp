// Declares the commands with their options and reads one command line.
#include "cli/arguments.h"

#include "cli/drawings.h"
#include "cli/refused_line.h"
#include "cli/station_text.h"
#include "cli/suggestion.h"
#include "command/dialog_rules.h"
#include "exchange/formats.h"
#include "platform/paths.h"
#include "sima/text/encoding.h"
#include "sima/text/number.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace fenmark::cli {

namespace {

using host::embedded::PositiveRadius;

constexpr std::size_t kHelpColumn = 34; // where the descriptions begin
constexpr std::size_t kTerminalColumns = 80;

// Options as they stand on the line, before they are looked at.
struct Raw {
    ImportArguments import;
    PreviewArguments preview;
    InfoArguments info;
    StationArguments station;
    LocateArguments locate;
    ExportArguments exported;
    StakesArguments stakes;
    ReportArguments report;
    PlotArguments plot;
    std::vector<std::string> only; // each a list of kinds with commas
    std::vector<std::string> skip;
    std::string shift;
    std::string importEncoding = "auto";
    std::string previewEncoding = "auto";
    std::string positiveRadius = "auto";
    std::string stationText;
    std::string offsetText;
    std::string xText;
    std::string yText;
    int zone = 0;
    std::vector<std::string> exportOnly; // each a list of kinds with commas
    std::string rectangle;
    std::string dxfVersion = "2000";
    std::string dxfLayers = "kinds";
    std::string scale;
    std::string crs = "lonlat";
    std::string profile = "landxml";
    std::string every;
    std::string at;     // stations with commas
    std::string offset; // metres with commas
    std::string stakeFormat;
    std::string tables; // parts of a report with commas
    std::string sides = "cut";
    std::string land;
    int figureScale = 0;
    int plotScale = 0;
    std::string paper;
    std::string pitch;
    std::string pointNames = "ka";
    std::string stationNames = "stake";
};

class WrongUsage : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

std::string listOfKinds() {
    std::string list;
    for (const sima::ImportKindEntry& entry : sima::kImportKindTable) {
        list.append(list.empty() ? "" : " ").append(entry.option);
    }
    return list;
}

std::size_t kindNamed(std::string_view name) {
    const auto& kinds = sima::kImportKindTable;
    const auto found =
        std::find_if(kinds.begin(), kinds.end(), [name](const auto& entry) { return entry.option == name; });
    if (found == kinds.end()) {
        std::vector<std::string> known;
        for (const sima::ImportKindEntry& entry : kinds) {
            known.emplace_back(entry.option);
        }
        throw WrongUsage("no kind of data is named '" + std::string(name) + "'; the kinds are " + listOfKinds() +
                         suggestion(name, known));
    }
    return static_cast<std::size_t>(found->kind);
}

std::array<bool, sima::kImportKinds> wantedKinds(const Raw& raw) {
    std::array<bool, sima::kImportKinds> wanted{};
    wanted.fill(raw.only.empty());
    const auto set = [&wanted](const std::vector<std::string>& lists, bool value) {
        for (const std::string& list : lists) {
            for (std::size_t at = 0; at <= list.size();) {
                const std::size_t end = std::min(list.find(',', at), list.size());
                wanted[kindNamed(std::string_view(list).substr(at, end - at))] = value;
                at = end + 1;
            }
        }
    };
    set(raw.only, true);
    set(raw.skip, false);
    return wanted;
}

// None for "auto".
std::optional<sima::Encoding> encodingArgument(const std::string& name) {
    if (name == "auto") {
        return std::nullopt;
    }
    if (const std::optional<sima::Encoding> encoding = sima::encodingNamed(name)) {
        return encoding;
    }
    throw WrongUsage("--encoding: no encoding is named '" + name + "'; take auto, cp932, utf-8 or utf-16");
}

double realArgument(const std::string& text, const char* what) {
    if (const std::optional<double> value = parseReal(text)) {
        return *value;
    }
    throw WrongUsage(std::string(what) + " is not a number of metres: '" + text + "'");
}

double stationArgument(const std::string& text) {
    if (const std::optional<double> station = parseStation(text)) {
        return *station;
    }
    throw WrongUsage("STATION is neither a number of metres nor a station such as No.6+0.5 or 1k234.5: '" + text + "'");
}

// Whoever starts the program from a script with an unset variable should read what is missing.
void requireName(const std::string& name, const char* what) {
    if (name.empty()) {
        throw WrongUsage(std::string(what) + " is an empty name");
    }
}

void addImport(CLI::App& app, Raw& raw) {
    CLI::App* command = app.add_subcommand("import", "Bring SIMA files into a drawing");
    ImportArguments& a = raw.import;
    command->add_option("FILE", a.files, "SIMA files, named *.sim")->required()->type_name("");
    command
        ->add_option("--drawing", a.drawing,
                     "Drawing to write (GeoPackage); made if missing, appended to if present "
                     "[default: each FILE with the extension .gpkg]")
        ->type_name("DRAWING");
    command->add_option("--site", a.site, "Site that receives the alignments [default: the first by name]")
        ->type_name("NAME");
    command->add_option("--only", raw.only, "Import these kinds alone: " + listOfKinds())
        ->expected(1)
        ->allow_extra_args(false) // what follows is a file
        ->take_all()
        ->type_name("KIND,...");
    command->add_option("--skip", raw.skip, "Leave these kinds out")
        ->expected(1)
        ->allow_extra_args(false)
        ->take_all()
        ->type_name("KIND,...");
    command->add_option("--point-layer", a.pointLayer, "Layer of the points [0]")->type_name("LAYER");
    command->add_option("--ip-layer", a.ipLayer, "Layer of the IP lines [0]")->type_name("LAYER");
    command->add_option("--lot-layer", a.lotLayer, "Layer of the lots [0]")->type_name("LAYER");
    command->add_option("--stake-layer", a.stakeLayer, "Layer of the width-stake lines [0]")->type_name("LAYER");
    command->add_option("--continuous-layer", a.continuousLayer, "Layer of the continuous lines [0]")
        ->type_name("LAYER");
    command->add_flag("--create-layers", a.createLayers, "Make named layers that the drawing does not have");
    command->add_option("--shift", raw.shift, "Distance that results of vertical walls are moved apart by [0.0001]")
        ->type_name("METRES");
    command->add_option("--alignment", a.alignment, "Alignment of the drawing for results that have none of their own")
        ->type_name("NAME");
    command->add_flag("--force-alignment", a.forceAlignment, "Put all results on --alignment, whatever they name");
    command->add_option("--zone", raw.zone, "Plane rectangular zone of the coordinates (JGD2011)")
        ->check(CLI::Range(1, 19).description(""))
        ->type_name("1..19");
    command->add_option("--encoding", raw.importEncoding, "Encoding of the files; auto: by their bytes [auto]")
        ->type_name("auto|cp932|utf-8|utf-16");
    command
        ->add_option("--positive-radius", raw.positiveRadius,
                     "Sense in which a positive radius turns on the map; auto: what the joints of the route prove "
                     "[auto]")
        ->check(CLI::IsMember({"auto", "left", "right"}).description(""))
        ->type_name("auto|left|right");
    command->add_flag("--plan-tangents", a.planTangents,
                      "Take the tangents of clothoids in plan, also where the points differ in height");
    command->add_flag("--replace", a.replace,
                      "Take away what the drawing has of files of the same names, in the same step");
    command->add_flag("--keep-partial", a.keepPartial, "Keep what was made when an import is broken off");
    command->add_flag("--strict", a.strict, "Exit with 3 if the log holds error blocks");
    command->add_flag("--json", a.json, "Print the result as JSON");
    command->add_flag("-q,--quiet", a.quiet, "No progress and no notes; errors are still told");
    command->footer("Example:\n"
                    "  fenmark import road.sim --point-layer 測点 --create-layers --zone 9\n"
                    "writes the drawing road.gpkg and the log road_Input.log.");
}

void addPreview(CLI::App& app, Raw& raw) {
    CLI::App* command = app.add_subcommand("preview", "Count what a SIMA file holds");
    command->add_option("FILE", raw.preview.file, "SIMA file, named *.sim")->required()->type_name("");
    command->add_option("--encoding", raw.previewEncoding, "Encoding of the file; auto: by its bytes [auto]")
        ->type_name("auto|cp932|utf-8|utf-16");
    command->add_flag("--json", raw.preview.json, "Print the counts as JSON");
    command->add_flag("-q,--quiet", raw.preview.quiet, "No progress and no notes; errors are still told");
    command->footer("Example:\n  fenmark preview road.sim");
}

void addInfo(CLI::App& app, Raw& raw) {
    CLI::App* command = app.add_subcommand("info", "Sum up a drawing");
    command->add_option("DRAWING", raw.info.drawing, "Drawing to read")->required()->type_name("");
    CLI::Option* json =
        command->add_flag("--json", raw.info.json, "Print the whole drawing as JSON, in creation order");
    command->add_flag("--alignments", raw.info.alignments, "Print the names of the alignments alone, one a line")
        ->excludes(json);
    command->footer("Example:\n  fenmark info road.gpkg --json");
}

void addStation(CLI::App& app, Raw& raw) {
    CLI::App* command = app.add_subcommand("station", "Find the point at a station and an offset of an alignment");
    command->add_option("DRAWING", raw.station.drawing, "Drawing to read")->required()->type_name("");
    command->add_option("ALIGNMENT", raw.station.alignment, "Name of the alignment")->required()->type_name("");
    command
        ->add_option("STATION", raw.stationText,
                     "Additional distance: metres, a stake (No.6+0.5) or kilometres (1k234.5)")
        ->required()
        ->type_name("");
    command->add_option("OFFSET", raw.offsetText, "Metres, positive to the right of travel [0]")->type_name("");
    command->add_flag("--json", raw.station.json, "Print the point as JSON");
    command->footer("Prints x (east) and y (north).\nExample:\n  fenmark station road.gpkg 中心線 120.5 -4");
}

void addLocate(CLI::App& app, Raw& raw) {
    CLI::App* command = app.add_subcommand("locate", "Find the station and the offset of a point");
    command->add_option("DRAWING", raw.locate.drawing, "Drawing to read")->required()->type_name("");
    command->add_option("ALIGNMENT", raw.locate.alignment, "Name of the alignment")->required()->type_name("");
    command->add_option("X", raw.xText, "East, metres (the Y of a SIMA file)")->required()->type_name("");
    command->add_option("Y", raw.yText, "North, metres (the X of a SIMA file)")->required()->type_name("");
    command->add_flag("--json", raw.locate.json, "Print station and offset as JSON");
    command->footer("Prints the station and the offset, positive to the right of travel.\n"
                    "Example:\n  fenmark locate road.gpkg 中心線 12087.3 -36173.1");
}

std::string listOfExportKinds() {
    std::string list;
    for (const KindEntry& entry : kKindTable) {
        list.append(list.empty() ? "" : " ").append(entry.option);
    }
    return list;
}

void addExport(CLI::App& app, Raw& raw) {
    CLI::App* command = app.add_subcommand("export", "Write a drawing in a format of other programs");
    exchange::ExportOptions& options = raw.exported.options;
    command->add_option("DRAWING", raw.exported.drawing, "Drawing to read")->required()->type_name("");
    command
        ->add_option("OUT", raw.exported.target,
                     "File to write; its extension says the format: " + exchange::extensions(false))
        ->required()
        ->type_name("");
    command->add_option("--only", raw.exportOnly, "Write these kinds alone: " + listOfExportKinds())
        ->expected(1)
        ->allow_extra_args(false)
        ->take_all()
        ->type_name("KIND,...");
    command->add_option("--layer", options.selection.layers, "Write objects of this layer alone; may be repeated")
        ->expected(1)
        ->allow_extra_args(false)
        ->take_all()
        ->type_name("LAYER");
    command
        ->add_option("--rectangle", raw.rectangle,
                     "Write objects alone whose box meets this one: two corners, east and north in metres")
        ->type_name("X,Y,X,Y");
    command->add_option("--zone", options.zone, "Plane rectangular zone, in place of the drawing's")
        ->check(CLI::Range(1, 19).description(""))
        ->type_name("1..19");
    command->add_option("--crs", raw.crs, "GeoJSON: longitude and latitude, or metres in the plane [lonlat]")
        ->check(CLI::IsMember({"lonlat", "plane"}).description(""))
        ->type_name("lonlat|plane");
    command->add_option("--dxf-version", raw.dxfVersion, "DXF: release [2000]")
        ->check(CLI::IsMember({"R12", "2000", "2018"}, CLI::ignore_case).description(""))
        ->type_name("R12|2000|2018");
    command->add_option("--layers", raw.dxfLayers, "DXF: a layer for each kind, or the drawing's own [kinds]")
        ->check(CLI::IsMember({"kinds", "drawing"}).description(""))
        ->type_name("kinds|drawing");
    command->add_flag("--elements", options.elements, "DXF: an entity for each element of an alignment");
    command->add_option("--scale", raw.scale, "DXF: names are 2.5 mm high on paper of 1 to this [500]")
        ->type_name("NUMBER");
    command->add_flag("--columns", options.columns, "SIMA: names in 20 columns, for programs that read by column");
    command->add_option("--profile", raw.profile, "Profile of LandXML: 1.2 as it is, or J-LandXML 1.7 [landxml]")
        ->check(CLI::IsMember({"landxml", "j-landxml"}).description(""))
        ->type_name("landxml|j-landxml");
    command->add_flag("-q,--quiet", raw.exported.quiet, "No notes; errors are still told");
    command->footer("Example:\n  fenmark export road.gpkg road.dxf");
}

// How points and stations are named, which stakes and reports share.
void addNames(CLI::App* command, Raw& raw) {
    command->add_option("--pitch", raw.pitch, "Metres between two numbered stakes, No.1 and No.2 [20]")
        ->type_name("METRES");
    command
        ->add_option("--point-names", raw.pointNames,
                     "Names of main points: KA1-1, KE1-1, KE1-2, KA1-2 or BTC1, BC1, EC1, ETC1 [ka]")
        ->check(CLI::IsMember({"ka", "btc"}).description(""))
        ->type_name("ka|btc");
    command->add_option("--station-names", raw.stationNames, "Names of stations: No.17+5.000 or 0k345.000 [stake]")
        ->check(CLI::IsMember({"stake", "kilometre"}).description(""))
        ->type_name("stake|kilometre");
}

void addStakes(CLI::App& app, Raw& raw) {
    CLI::App* command = app.add_subcommand("stakes", "List points to set out along an alignment");
    command->add_option("DRAWING", raw.stakes.drawing, "Drawing to read")->required()->type_name("");
    command->add_option("ALIGNMENT", raw.stakes.alignment, "Name of the alignment")->required()->type_name("");
    command
        ->add_option("--every", raw.every,
                     "Distance between stakes, counted from station 0; 0 for none [the pitch; 0 with --at]")
        ->type_name("METRES");
    command->add_option("--at", raw.at, "These stations: metres, No.6+0.5 or 1k234.5")->type_name("STATION,...");
    command->add_option("--offset", raw.offset, "Offsets of the stakes, positive to the right of travel [0]")
        ->type_name("METRES,...");
    command->add_flag("--main-points", raw.stakes.options.mainPoints, "Main points and joints too");
    addNames(command, raw);
    command->add_option("--format", raw.stakeFormat, "Format of the list [by the extension of --out, else table]")
        ->check(CLI::IsMember({"table", "csv", "sim", "json"}).description(""))
        ->type_name("table|csv|sim|json");
    command->add_option("--out", raw.stakes.target, "File to write [standard output]")->type_name("FILE");
    command->footer("In tables, CSV and SIMA files X is north and Y east; in JSON x is east.\n"
                    "Example:\n  fenmark stakes road.gpkg 中心線 --offset=-5,0,5 --main-points --out stakes.sim");
}

void addReport(CLI::App& app, Raw& raw) {
    CLI::App* command = app.add_subcommand("report", "Write survey documents: areas, coordinates, alignment tables");
    command->add_option("DRAWING", raw.report.drawing, "Drawing to read")->required()->type_name("");
    command->add_option("OUT", raw.report.target, "File to write, named *.html (for paper) or *.csv")
        ->required()
        ->type_name("");
    command
        ->add_option("--tables", raw.tables,
                     "These tables alone: summary points lots main-points ips intermediate widths")
        ->type_name("TABLE,...");
    command->add_option("--scale", raw.figureScale, "Scale of the figures of lots, 1:N [the largest that fits]")
        ->check(CLI::Range(1, 100000000).description(""))
        ->type_name("N");
    command->add_option("--sides", raw.sides, "Sides of lots to the millimetre: cut or rounded [cut]")
        ->check(CLI::IsMember({"cut", "round"}).description(""))
        ->type_name("cut|round");
    command
        ->add_option("--land", raw.land,
                     "Category of the land, which decides the decimals of registered areas [both are told]")
        ->check(CLI::IsMember({"residential", "other"}).description(""))
        ->type_name("residential|other");
    addNames(command, raw);
    command->add_option("--log", raw.report.logs, "Log of an import, whose errors the summary lists")
        ->expected(1)
        ->allow_extra_args(false)
        ->take_all()
        ->type_name("LOG");
    command->add_flag("-q,--quiet", raw.report.quiet, "No notes; errors are still told");
    command->footer("Example:\n  fenmark report road.gpkg road.html --tables lots,points");
}

void addPlot(CLI::App& app, Raw& raw) {
    CLI::App* command = app.add_subcommand("plot", "Draw a plan or sections of a drawing as SVG or PDF");
    command->add_option("DRAWING", raw.plot.drawing, "Drawing to read")->required()->type_name("");
    command->add_option("OUT", raw.plot.target, "File to write, named *.svg or *.pdf")->required()->type_name("");
    command->add_option("--scale", raw.plotScale, "Scale 1:N [the largest round one that fits; 500 with --along]")
        ->check(CLI::Range(1, 100000000).description(""))
        ->type_name("N");
    command->add_option("--paper", raw.paper, "Size of the sheets [the smallest from A3 on that serves]")
        ->check(CLI::IsMember({"A4", "A3", "A2", "A1", "A0"}).description(""))
        ->type_name("A4|A3|A2|A1|A0");
    CLI::Option* along =
        command->add_option("--along", raw.plot.along, "Sheets that follow this alignment")->type_name("ALIGNMENT");
    CLI::Option* profile =
        command
            ->add_option("--profile", raw.plot.profile, "The longitudinal section of this alignment instead of a plan")
            ->type_name("ALIGNMENT");
    command
        ->add_option("--cross-sections", raw.plot.crossSections,
                     "The cross-sections of this alignment instead of a plan")
        ->type_name("ALIGNMENT")
        ->excludes(along)
        ->excludes(profile);
    profile->excludes(along);
    command->add_flag("-q,--quiet", raw.plot.quiet, "No notes; errors are still told");
    command->footer("Several sheets are the pages of one PDF, or SVG files with numbers.\n"
                    "Example:\n  fenmark plot road.gpkg road.pdf --along 中心線 --scale 500 --paper A3");
}

// A drawing is a GeoPackage, whatever it is called; a name of another format is a wish for an export.
void requireDrawingName(const std::string& drawing, const std::string& file) {
    const exchange::Format* const format = exchange::formatOf(drawing);
    const bool isReport = endsIn(drawing, ".html");
    if (format == nullptr && !isReport) {
        return;
    }
    const std::string made = drawing.substr(0, drawing.rfind('.')) + ".gpkg";
    throw WrongUsage("--drawing " + drawing + ": a drawing is a GeoPackage, *.gpkg; 'fenmark import " + file +
                     " --drawing " + made + "' and then 'fenmark " +
                     (isReport         ? "report "
                      : format->isPlan ? "plot "
                                       : "export ") +
                     made + " " + drawing + "' write that file");
}

ParsedCommand checkedImport(Raw& raw) {
    ImportArguments& a = raw.import;
    for (const std::string& file : a.files) {
        requireName(file, "FILE");
    }
    requireName(a.drawing.value_or("-"), "--drawing");
    if (a.drawing) {
        requireDrawingName(*a.drawing, a.files.front());
    }
    a.wanted = wantedKinds(raw);
    if (!raw.shift.empty()) {
        double metres = 0.0;
        if (!command::parseShiftDistance(raw.shift, metres)) {
            throw WrongUsage("--shift must be above 0, in plain decimals: '" + raw.shift + "'");
        }
        a.shift = metres;
    }
    if (a.forceAlignment && !a.alignment) {
        throw WrongUsage("--force-alignment needs --alignment NAME");
    }
    if (raw.zone != 0) {
        a.zone = raw.zone;
    }
    a.encoding = encodingArgument(raw.importEncoding);
    a.positiveRadius = raw.positiveRadius == "left"    ? PositiveRadius::Left
                       : raw.positiveRadius == "right" ? PositiveRadius::Right
                                                       : PositiveRadius::Auto;
    return std::move(a);
}

// Two opposite corners, in any order.
drawing::Extent rectangleArgument(const std::string& text) {
    drawing::Extent rectangle;
    std::vector<double> numbers;
    for (std::size_t at = 0; at <= text.size();) {
        const std::size_t end = std::min(text.find(',', at), text.size());
        numbers.push_back(realArgument(text.substr(at, end - at), "a number of --rectangle"));
        at = end + 1;
    }
    if (numbers.size() != 4) {
        throw WrongUsage("--rectangle is four numbers with commas, X,Y,X,Y: '" + text + "'");
    }
    rectangle.add(numbers[0], numbers[1]);
    rectangle.add(numbers[2], numbers[3]);
    return rectangle;
}

ParsedCommand checkedExport(Raw& raw) {
    exchange::ExportOptions& options = raw.exported.options;
    if (!raw.exportOnly.empty()) {
        options.selection.left.fill(true);
    }
    for (const std::string& list : raw.exportOnly) {
        for (std::size_t at = 0; at <= list.size();) {
            const std::size_t end = std::min(list.find(',', at), list.size());
            const std::string name = list.substr(at, end - at);
            const auto kind = exchange::kindNamed(name);
            if (!kind) {
                std::vector<std::string> known;
                for (const KindEntry& entry : kKindTable) {
                    known.emplace_back(entry.option);
                }
                throw WrongUsage("no kind of object is named '" + name + "'; the kinds are " + listOfExportKinds() +
                                 suggestion(name, known));
            }
            options.selection.left[static_cast<std::size_t>(*kind)] = false;
            at = end + 1;
        }
    }
    if (!raw.rectangle.empty()) {
        options.selection.rectangle = rectangleArgument(raw.rectangle);
    }
    if (!raw.scale.empty()) {
        // Outside of this, names have heights of zero or of hundreds of digits, which other programs cannot draw.
        const std::optional<double> scale = parseReal(raw.scale);
        if (!scale || !(*scale >= 0.01 && *scale <= 1e8)) {
            throw WrongUsage("--scale must be a number from 0.01 to 100000000: '" + raw.scale + "'");
        }
        options.scale = *scale;
    }
    options.plane = raw.crs == "plane";
    options.dxfVersion = raw.dxfVersion == "2018"   ? exchange::DxfVersion::R2018
                         : raw.dxfVersion == "2000" ? exchange::DxfVersion::R2000
                                                    : exchange::DxfVersion::R12;
    options.dxfLayers = raw.dxfLayers == "drawing" ? exchange::DxfLayers::Drawing : exchange::DxfLayers::Kinds;
    options.landXmlProfile =
        raw.profile == "j-landxml" ? exchange::LandXmlProfile::JLandXml : exchange::LandXmlProfile::LandXml;
    return raw.exported;
}

// The pieces of a list with commas.
std::vector<std::string> listed(const std::string& list) {
    std::vector<std::string> pieces;
    for (std::size_t at = 0; at <= list.size();) {
        const std::size_t end = std::min(list.find(',', at), list.size());
        pieces.push_back(list.substr(at, end - at));
        at = end + 1;
    }
    return pieces;
}

double pitchOf(const Raw& raw) {
    constexpr double kLeastPitch = 0.001; // metres
    if (raw.pitch.empty()) {
        return kStakeDistance;
    }
    const double pitch = realArgument(raw.pitch, "--pitch");
    if (!(pitch >= kLeastPitch)) {
        throw WrongUsage("--pitch must be at least 0.001: '" + raw.pitch + "'");
    }
    return pitch;
}

exchange::StationNames stationNamesOf(const Raw& raw) {
    return {raw.stationNames == "kilometre" ? exchange::StationNames::Style::Kilometre
                                            : exchange::StationNames::Style::Stake,
            pitchOf(raw)};
}

exchange::MainPointNames pointNamesOf(const Raw& raw) {
    return raw.pointNames == "btc" ? exchange::MainPointNames::Btc : exchange::MainPointNames::Ka;
}

exchange::StakeFormat stakeFormatOf(const Raw& raw) {
    std::string format = raw.stakeFormat;
    if (format.empty() && raw.stakes.target) {
        const std::size_t point = raw.stakes.target->rfind('.');
        format = point == std::string::npos ? "" : raw.stakes.target->substr(point + 1);
    }
    return format == "csv"    ? exchange::StakeFormat::Csv
           : format == "sim"  ? exchange::StakeFormat::Sima
           : format == "json" ? exchange::StakeFormat::Json
                              : exchange::StakeFormat::Table;
}

ParsedCommand checkedStakes(Raw& raw) {
    exchange::StakeOptions& options = raw.stakes.options;
    options.stationNames = stationNamesOf(raw);
    options.mainPointNames = pointNamesOf(raw);
    options.every = raw.at.empty() ? options.stationNames.pitch : 0.0;
    if (!raw.every.empty()) {
        options.every = realArgument(raw.every, "--every");
        if (options.every < 0.0) {
            throw WrongUsage("--every must not be below 0: '" + raw.every + "'");
        }
    }
    if (!raw.at.empty()) {
        for (const std::string& piece : listed(raw.at)) {
            const auto station = parseStation(piece, options.stationNames.pitch);
            if (!station) {
                throw WrongUsage("--at takes stations such as 120.5, No.6+0.5 or 1k234.5: '" + piece + "'");
            }
            options.stations.push_back(*station);
        }
    }
    if (!raw.offset.empty()) {
        options.offsets.clear();
        for (const std::string& piece : listed(raw.offset)) {
            const double offset = realArgument(piece, "--offset");
            if (!(std::abs(offset) <= exchange::kMostOffset)) {
                throw WrongUsage("--offset must not be beyond 100000 m: '" + piece + "'");
            }
            options.offsets.push_back(offset);
        }
    }
    raw.stakes.format = stakeFormatOf(raw);
    return std::move(raw.stakes);
}

ParsedCommand checkedReport(Raw& raw) {
    exchange::ReportOptions& options = raw.report.options;
    options.stationNames = stationNamesOf(raw);
    options.mainPointNames = pointNamesOf(raw);
    options.sides = raw.sides == "round" ? exchange::SideRule::Round : exchange::SideRule::Cut;
    options.land = raw.land.empty()            ? exchange::LandCategory::Unknown
                   : raw.land == "residential" ? exchange::LandCategory::Residential
                                               : exchange::LandCategory::Other;
    if (raw.figureScale != 0) {
        options.figureScale = raw.figureScale;
    }
    if (!raw.tables.empty()) {
        options.parts.fill(false);
        for (const std::string& piece : listed(raw.tables)) {
            const auto found = std::find(exchange::kReportParts.begin(), exchange::kReportParts.end(), piece);
            if (found == exchange::kReportParts.end()) {
                std::string names;
                for (const std::string_view name : exchange::kReportParts) {
                    names.append(names.empty() ? "" : " ").append(name);
                }
                const std::vector<std::string> known(exchange::kReportParts.begin(), exchange::kReportParts.end());
                throw WrongUsage("no table is named '" + piece + "'; the tables are " + names +
                                 suggestion(piece, known));
            }
            options.parts[static_cast<std::size_t>(found - exchange::kReportParts.begin())] = true;
        }
    }
    return std::move(raw.report);
}

ParsedCommand checkedPlot(Raw& raw) {
    if (raw.plotScale != 0) {
        raw.plot.options.scale = raw.plotScale;
    }
    if (!raw.paper.empty()) {
        raw.plot.options.paper = raw.paper;
    }
    return std::move(raw.plot);
}

// Every path with the system's own separators, so that a file has one name in messages and rows however it was typed.
void takeTypedPaths(Raw& raw) {
    for (std::string* path : {&raw.preview.file, &raw.info.drawing, &raw.station.drawing, &raw.locate.drawing,
                              &raw.exported.drawing, &raw.exported.target, &raw.stakes.drawing, &raw.report.drawing,
                              &raw.report.target, &raw.plot.drawing, &raw.plot.target}) {
        *path = platform::typedPath(std::move(*path));
    }
    for (std::optional<std::string>* path : {&raw.import.drawing, &raw.stakes.target}) {
        if (*path) {
            *path = platform::typedPath(std::move(**path));
        }
    }
    for (std::vector<std::string>* paths : {&raw.import.files, &raw.report.logs}) {
        for (std::string& path : *paths) {
            path = platform::typedPath(std::move(path));
        }
    }
}

ParsedCommand checked(CLI::App& app, Raw& raw) {
    takeTypedPaths(raw);
    if (app.got_subcommand("import")) {
        return checkedImport(raw);
    }
    if (app.got_subcommand("preview")) {
        requireName(raw.preview.file, "FILE");
        raw.preview.encoding = encodingArgument(raw.previewEncoding);
        return raw.preview;
    }
    if (app.got_subcommand("info")) {
        return raw.info;
    }
    if (app.got_subcommand("station")) {
        raw.station.station = stationArgument(raw.stationText);
        if (!raw.offsetText.empty()) {
            raw.station.offset = realArgument(raw.offsetText, "OFFSET");
        }
        return raw.station;
    }
    if (app.got_subcommand("locate")) {
        raw.locate.x = realArgument(raw.xText, "X");
        raw.locate.y = realArgument(raw.yText, "Y");
        return raw.locate;
    }
    if (app.got_subcommand("export")) {
        return checkedExport(raw);
    }
    if (app.got_subcommand("stakes")) {
        return checkedStakes(raw);
    }
    if (app.got_subcommand("report")) {
        return checkedReport(raw);
    }
    return checkedPlot(raw);
}

// The text in lines that fit beside the names of the options on a terminal of 80 columns. All of it is ASCII.
std::string folded(const std::string& text) {
    std::string out;
    std::size_t column = 0;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find(' ', at), text.size());
        const bool breaks = column > 0 && column + 1 + (end - at) > kTerminalColumns - kHelpColumn;
        if (column > 0) {
            out += breaks ? '\n' : ' ';
        }
        column = (breaks || column == 0 ? 0 : column + 1) + (end - at);
        out.append(text, at, end - at);
        at = end + 1;
    }
    return out;
}

void foldHelp(CLI::App& app) {
    for (CLI::App* command : app.get_subcommands({})) {
        command->group("Commands");
        for (CLI::Option* option : command->get_options()) {
            option->description(folded(option->get_description()));
        }
    }
}

} // namespace

ParsedCommand parseArguments(const std::vector<std::string>& given) {
    // "help COMMAND" is "COMMAND --help".
    std::vector<std::string> arguments = given;
    const bool asksForHelp = !arguments.empty() && arguments.front() == "help";
    if (asksForHelp) {
        arguments.erase(arguments.begin());
        arguments.resize(std::min<std::size_t>(arguments.size(), 1));
        arguments.emplace_back("--help");
    }
    CLI::App app("Brings SIMA survey files into drawings and answers questions about them.", "fenmark");
    Raw raw;
    app.set_help_flag("-h,--help", "Print this help and exit");
    app.set_version_flag("--version", std::string("fenmark ") + FENMARK_VERSION, "Print the version and exit");
    app.require_subcommand(1);
    app.footer("Example:\n"
               "  fenmark import road.sim && fenmark plot road.gpkg road.svg\n"
               "'fenmark COMMAND --help' tells the options of a command.");
    app.get_formatter()->column_width(kHelpColumn);
    app.get_formatter()->label("SUBCOMMAND", "COMMAND");
    app.get_formatter()->label("Positionals", "Arguments");
    app.get_formatter()->label("REQUIRED", ""); // the line of the usage tells
    addImport(app, raw);
    addPreview(app, raw);
    addInfo(app, raw);
    addStation(app, raw);
    addLocate(app, raw);
    addExport(app, raw);
    addPlot(app, raw);
    addStakes(app, raw);
    addReport(app, raw);
    foldHelp(app);
    if (const std::vector<std::string> names = commandNames(app);
        asksForHelp && arguments.size() > 1 &&
        std::find(names.begin(), names.end(), arguments.front()) == names.end()) {
        return UsageError{withoutCommand(app, arguments)};
    }

    // The parser takes its arguments last first. It knows "-4" for a number, but not "-.5".
    std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
    for (std::string& argument : reversed) {
        if (argument.size() > 2 && argument.starts_with("-.") && argument[2] >= '0' && argument[2] <= '9') {
            argument.insert(1, "0");
        }
    }
    try {
        app.parse(std::move(reversed));
        return checked(app, raw);
    } catch (const CLI::CallForHelp&) {
        return ShowText{app.help()};
    } catch (const CLI::CallForVersion& version) {
        return ShowText{std::string(version.what()) + "\n"};
    } catch (const CLI::ParseError& error) {
        return UsageError{refusal(app, error, arguments)};
    } catch (const WrongUsage& error) {
        return UsageError{error.what()};
    }
}

} // namespace fenmark::cli
