// The lines of fenmark export and fenmark plot.
#include "cli/argument_lines.h"
#include "cli/argument_values.h"
#include "cli/help_texts.h"
#include "cli/suggestion.h"
#include "exchange/formats.h"
#include "exchange/kinds.h"
#include "exchange/station_text.h"
#include "values/kinds.h"

#include <CLI/CLI.hpp>

#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace fenmark::cli {

namespace {

// Two opposite corners, in any order.
drawing::Extent rectangleIn(const std::string& text, Language language) {
    drawing::Extent rectangle;
    std::vector<double> numbers;
    for (const std::string& piece : listed(text)) {
        numbers.push_back(metresIn(piece, "--rectangle", language));
    }
    if (numbers.size() != 4) {
        refuse(language, Text::RectangleIsFourNumbers, {{"text", text}});
    }
    rectangle.add(numbers[0], numbers[1]);
    rectangle.add(numbers[2], numbers[3]);
    return rectangle;
}

// Options that say something of files of one extension alone. For another file they are refused: whoever gives one wants
// what that file cannot have.
struct FormatOption {
    const char* option;
    std::string_view extension;
    bool (*isGiven)(const ExportLine&);
};

constexpr std::array<FormatOption, 7> kFormatOptions = {{
    {"--crs", ".geojson", [](const ExportLine& line) { return !line.crs.empty(); }},
    {"--dxf-version", ".dxf", [](const ExportLine& line) { return !line.dxfVersion.empty(); }},
    {"--layers", ".dxf", [](const ExportLine& line) { return !line.dxfLayers.empty(); }},
    {"--elements", ".dxf", [](const ExportLine& line) { return line.arguments.options.elements; }},
    {"--scale", ".dxf", [](const ExportLine& line) { return !line.scale.empty(); }},
    {"--columns", ".sim", [](const ExportLine& line) { return line.arguments.options.columns; }},
    {"--profile", ".xml", [](const ExportLine& line) { return !line.profile.empty(); }},
}};

// An extension that no file of this command has is refused when the file is to be written.
void requireOptionsOfFormat(const ExportLine& line, Language language) {
    const exchange::Format* const format = exchange::formatOf(line.arguments.target);
    if (format == nullptr || format->isPlan) {
        return;
    }
    for (const FormatOption& known : kFormatOptions) {
        if (known.extension != format->extension && known.isGiven(line)) {
            refuse(language, Text::OptionOfFormat,
                   {{"path", line.arguments.target},
                    {"option", known.option},
                    {"extension", std::string(known.extension)}});
        }
    }
}

} // namespace

void declare(CLI::App& app, ExportLine& line, Language language) {
    const auto say = [language](Help text, std::initializer_list<Figure> figures = {}) {
        return said(language, text, figures);
    };
    CLI::App& command = *app.add_subcommand("export", say(Help::Export));
    exchange::ExportOptions& options = line.arguments.options;
    command.add_option("DRAWING", line.arguments.drawing, say(Help::Drawing))->required()->type_name("");
    command
        .add_option("OUT", line.arguments.target,
                    say(Help::ExportOut, {{"extensions", exchange::extensions(false, said(language, Text::Or))}}))
        ->required()
        ->type_name("");
    command.add_option("--only", line.only, say(Help::ExportOnly, {{"kinds", withBlanks(optionsOf(kKindTable))}}))
        ->expected(1)
        ->allow_extra_args(false)
        ->take_all()
        ->type_name("KIND,...");
    command.add_option("--layer", options.selection.layers, say(Help::Layer))
        ->expected(1)
        ->allow_extra_args(false)
        ->take_all()
        ->type_name("LAYER");
    command.add_option("--rectangle", line.rectangle, say(Help::Rectangle))
        ->type_name("X,Y,X,Y")
        ->check(refusalOfEmpty);
    command.add_option("--zone", options.zone, say(Help::ExportZone))
        ->check(CLI::Range(1, 19).description(""))
        ->type_name("1..19");
    command.add_option("--crs", line.crs, say(Help::Crs))
        ->check(CLI::IsMember({"lonlat", "plane"}).description(""))
        ->type_name("lonlat|plane");
    command.add_option("--dxf-version", line.dxfVersion, say(Help::DxfVersion))
        ->check(CLI::IsMember({"R12", "2000", "2018"}, CLI::ignore_case).description(""))
        ->type_name("R12|2000|2018");
    command.add_option("--layers", line.dxfLayers, say(Help::DxfLayers))
        ->check(CLI::IsMember({"kinds", "drawing"}).description(""))
        ->type_name("kinds|drawing");
    command.add_flag("--elements", options.elements, say(Help::Elements));
    command.add_option("--scale", line.scale, say(Help::DxfScale))->type_name("NUMBER")->check(refusalOfEmpty);
    command.add_flag("--columns", options.columns, say(Help::Columns));
    command.add_option("--profile", line.profile, say(Help::LandXmlProfile))
        ->check(CLI::IsMember({"landxml", "j-landxml"}).description(""))
        ->type_name("landxml|j-landxml");
    command.add_flag("-q,--quiet", line.arguments.quiet, say(Help::QuietNotes));
    command.footer(say(Help::ExportFooter));
}

ExportArguments checked(ExportLine line, Language language) {
    takeTyped(line.arguments.drawing);
    takeTyped(line.arguments.target);
    requireOptionsOfFormat(line, language);
    exchange::ExportOptions& options = line.arguments.options;
    if (!line.only.empty()) {
        options.selection.left.fill(true);
    }
    for (const std::string& list : line.only) {
        for (const std::string& name : listed(list)) {
            const auto kind = exchange::kindNamed(name);
            if (!kind) {
                const std::vector<std::string> known = optionsOf(kKindTable);
                refuse(language, Text::NoObjectKind,
                       {{"name", name}, {"kinds", withBlanks(known)}, {"meant", suggestion(name, known, language)}});
            }
            options.selection.left[static_cast<std::size_t>(*kind)] = false;
        }
    }
    if (!line.rectangle.empty()) {
        options.selection.rectangle = rectangleIn(line.rectangle, language);
    }
    if (!line.scale.empty()) {
        // Outside of this, names have heights of zero or of hundreds of digits, which other programs cannot draw.
        const std::optional<double> scale = exchange::parseReal(line.scale);
        if (!scale || !(*scale >= 0.01 && *scale <= 1e8)) {
            refuse(language, Text::ScaleOutOfRange, {{"text", line.scale}});
        }
        options.scale = *scale;
    }
    options.plane = line.crs == "plane";
    if (!line.dxfVersion.empty()) {
        options.dxfVersion = line.dxfVersion == "2018"   ? exchange::DxfVersion::R2018
                             : line.dxfVersion == "2000" ? exchange::DxfVersion::R2000
                                                         : exchange::DxfVersion::R12;
    }
    options.dxfLayers = line.dxfLayers == "drawing" ? exchange::DxfLayers::Drawing : exchange::DxfLayers::Kinds;
    options.landXmlProfile =
        line.profile == "j-landxml" ? exchange::LandXmlProfile::JLandXml : exchange::LandXmlProfile::LandXml;
    return std::move(line.arguments);
}

void declare(CLI::App& app, PlotLine& line, Language language) {
    const auto say = [language](Help text) { return said(language, text); };
    CLI::App& command = *app.add_subcommand("plot", say(Help::Plot));
    PlotArguments& a = line.arguments;
    command.add_option("DRAWING", a.drawing, say(Help::Drawing))->required()->type_name("");
    command.add_option("OUT", a.target, say(Help::PlotOut))->required()->type_name("");
    command.add_option("--scale", line.scale, say(Help::PlotScale))
        ->check(CLI::Range(1, 100000000).description(""))
        ->type_name("N");
    command.add_option("--paper", line.paper, say(Help::Paper))
        ->check(CLI::IsMember({"A4", "A3", "A2", "A1", "A0"}).description(""))
        ->type_name("A4|A3|A2|A1|A0");
    CLI::Option* along = command.add_option("--along", a.along, say(Help::Along))->type_name("ALIGNMENT");
    CLI::Option* profile = command.add_option("--profile", a.profile, say(Help::PlotProfile))->type_name("ALIGNMENT");
    command.add_option("--cross-sections", a.crossSections, say(Help::CrossSections))
        ->type_name("ALIGNMENT")
        ->excludes(along)
        ->excludes(profile);
    profile->excludes(along);
    command.add_flag("-q,--quiet", a.quiet, say(Help::QuietNotes));
    command.footer(say(Help::PlotFooter));
}

PlotArguments checked(PlotLine line, Language /*language*/) {
    takeTyped(line.arguments.drawing);
    takeTyped(line.arguments.target);
    if (line.scale != 0) {
        line.arguments.options.scale = line.scale;
    }
    if (!line.paper.empty()) {
        line.arguments.options.paper = line.paper;
    }
    return std::move(line.arguments);
}

} // namespace fenmark::cli
