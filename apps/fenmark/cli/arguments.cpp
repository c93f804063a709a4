// Declares the commands with their options and reads one command line.
#include "cli/arguments.h"

#include "cli/station_text.h"
#include "cli/suggestion.h"
#include "command/dialog_rules.h"
#include "sima/text/encoding.h"
#include "sima/text/number.h"

#include <CLI/CLI.hpp>

#include <algorithm>
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
    ExportArguments plot;
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
};

class WrongUsage : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

std::string listOfKinds() {
    std::string list;
    for (std::string_view name : kKindNames) {
        list.append(list.empty() ? "" : " ").append(name);
    }
    return list;
}

std::size_t kindNamed(std::string_view name) {
    const auto found = std::find(kKindNames.begin(), kKindNames.end(), name);
    if (found == kKindNames.end()) {
        throw WrongUsage("no kind of data is named '" + std::string(name) + "'; the kinds are " + listOfKinds());
    }
    return static_cast<std::size_t>(found - kKindNames.begin());
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
        ->type_name("auto|cp932|utf-8");
    command
        ->add_option("--positive-radius", raw.positiveRadius,
                     "Sense in which a positive radius turns on the map; auto: left, unless a curve joins only the "
                     "other way [auto]")
        ->check(CLI::IsMember({"auto", "left", "right"}).description(""))
        ->type_name("auto|left|right");
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
        ->type_name("auto|cp932|utf-8");
    command->add_flag("--json", raw.preview.json, "Print the counts as JSON");
    command->add_flag("-q,--quiet", raw.preview.quiet, "No progress and no notes; errors are still told");
    command->footer("Example:\n  fenmark preview road.sim");
}

void addInfo(CLI::App& app, Raw& raw) {
    CLI::App* command = app.add_subcommand("info", "Sum up a drawing");
    command->add_option("DRAWING", raw.info.drawing, "Drawing to read")->required()->type_name("");
    command->add_flag("--json", raw.info.json, "Print the whole drawing as JSON, in creation order");
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

void addExport(CLI::App& app, Raw& raw) {
    CLI::App* command = app.add_subcommand("export", "Write a drawing as DXF, LandXML, GeoJSON or CSV");
    command->add_option("DRAWING", raw.exported.drawing, "Drawing to read")->required()->type_name("");
    command
        ->add_option("OUT", raw.exported.target,
                     "File to write; its extension says the format: .dxf, .xml (LandXML), .geojson, .csv (points)")
        ->required()
        ->type_name("");
    command->add_flag("-q,--quiet", raw.exported.quiet, "No notes; errors are still told");
    command->footer("Example:\n  fenmark export road.gpkg road.dxf");
}

void addPlot(CLI::App& app, Raw& raw) {
    CLI::App* command = app.add_subcommand("plot", "Draw a plan of a drawing as SVG");
    command->add_option("DRAWING", raw.plot.drawing, "Drawing to read")->required()->type_name("");
    command->add_option("OUT", raw.plot.target, "File to write, named *.svg")->required()->type_name("");
    command->add_flag("-q,--quiet", raw.plot.quiet, "No notes; errors are still told");
    command->footer("Example:\n  fenmark plot road.gpkg road.svg");
}

ParsedCommand checkedImport(Raw& raw) {
    ImportArguments& a = raw.import;
    for (const std::string& file : a.files) {
        requireName(file, "FILE");
    }
    requireName(a.drawing.value_or("-"), "--drawing");
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

ParsedCommand checked(CLI::App& app, Raw& raw) {
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
        return raw.exported;
    }
    return PlotArguments{raw.plot};
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

std::vector<std::string> commandNames(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
        names.push_back(command->get_name());
    }
    return names;
}

// What to say of a line that names no command.
std::string withoutCommand(const CLI::App& app, const std::vector<std::string>& arguments) {
    const std::vector<std::string> names = commandNames(app);
    std::string commands;
    for (const std::string& name : names) {
        commands.append(commands.empty() ? "" : ", ").append(name);
    }
    const auto word = std::find_if(arguments.begin(), arguments.end(),
                                   [](const std::string& argument) { return !argument.starts_with('-'); });
    if (word == arguments.end()) {
        return "no command is given; the commands are " + commands;
    }
    return "there is no command '" + *word + "'; the commands are " + commands + suggestion(*word, names);
}

// The first option of the line that the command does not know, in words; empty if it knows them all.
std::string unknownOption(const CLI::App& command, const std::vector<std::string>& arguments) {
    std::vector<std::string> names;
    for (const CLI::Option* option : command.get_options()) {
        for (const std::string& name : option->get_lnames()) {
            names.push_back("--" + name);
        }
    }
    for (const std::string& argument : arguments) {
        if (argument == "--") {
            break;
        }
        const std::string name = argument.substr(0, argument.find('='));
        if (name.starts_with("--") && std::find(names.begin(), names.end(), name) == names.end()) {
            return command.get_name() + " has no option " + name + suggestion(name, names);
        }
    }
    return {};
}

// What to say of a line that the parser refused.
std::string refusal(const CLI::App& app, const CLI::ParseError& error, const std::vector<std::string>& arguments) {
    const std::vector<CLI::App*> chosen = app.get_subcommands();
    if (chosen.empty()) {
        return withoutCommand(app, arguments);
    }
    const std::string unknown = unknownOption(*chosen.front(), arguments);
    return unknown.empty() ? std::string(error.what()) : unknown;
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
