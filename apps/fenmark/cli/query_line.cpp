// The lines of fenmark info, fenmark station and fenmark locate.
#include "cli/argument_lines.h"
#include "cli/argument_values.h"
#include "cli/help_texts.h"
#include "exchange/station_text.h"

#include <CLI/CLI.hpp>

#include <utility>

namespace fenmark::cli {

namespace {

double stationIn(const std::string& text, Language language) {
    if (const std::optional<double> station = exchange::parseStation(text)) {
        return *station;
    }
    refuse(language, Text::NotAStation, {{"text", text}});
}

} // namespace

void declare(CLI::App& app, InfoLine& line, Language language) {
    const auto say = [language](Help text) { return said(language, text); };
    CLI::App& command = *app.add_subcommand("info", say(Help::Info));
    command.add_option("DRAWING", line.arguments.drawing, say(Help::Drawing))->required()->type_name("");
    CLI::Option* json = command.add_flag("--json", line.arguments.json, say(Help::InfoJson));
    command.add_flag("--alignments", line.arguments.alignments, say(Help::InfoAlignments))->excludes(json);
    command.footer(say(Help::InfoFooter));
}

InfoArguments checked(InfoLine line, Language /*language*/) {
    takeTyped(line.arguments.drawing);
    return std::move(line.arguments);
}

void declare(CLI::App& app, StationLine& line, Language language) {
    const auto say = [language](Help text) { return said(language, text); };
    CLI::App& command = *app.add_subcommand("station", say(Help::Station));
    command.add_option("DRAWING", line.arguments.drawing, say(Help::Drawing))->required()->type_name("");
    command.add_option("ALIGNMENT", line.arguments.alignment, say(Help::AlignmentName))->required()->type_name("");
    command.add_option("STATION", line.station, say(Help::StationArgument))->required()->type_name("");
    command.add_option("OFFSET", line.offset, say(Help::Offset))->type_name("");
    command.add_flag("--json", line.arguments.json, say(Help::StationJson));
    command.footer(say(Help::StationFooter));
}

StationArguments checked(StationLine line, Language language) {
    takeTyped(line.arguments.drawing);
    line.arguments.station = stationIn(line.station, language);
    if (line.offset) {
        line.arguments.offset = metresIn(*line.offset, "OFFSET", language);
    }
    return std::move(line.arguments);
}

void declare(CLI::App& app, LocateLine& line, Language language) {
    const auto say = [language](Help text) { return said(language, text); };
    CLI::App& command = *app.add_subcommand("locate", say(Help::Locate));
    command.add_option("DRAWING", line.arguments.drawing, say(Help::Drawing))->required()->type_name("");
    command.add_option("ALIGNMENT", line.arguments.alignment, say(Help::AlignmentName))->required()->type_name("");
    command.add_option("X", line.x, say(Help::LocateX))->required()->type_name("");
    command.add_option("Y", line.y, say(Help::LocateY))->required()->type_name("");
    command.add_flag("--json", line.arguments.json, say(Help::LocateJson));
    command.footer(say(Help::LocateFooter));
}

LocateArguments checked(LocateLine line, Language language) {
    takeTyped(line.arguments.drawing);
    line.arguments.x = metresIn(line.x, "X", language);
    line.arguments.y = metresIn(line.y, "Y", language);
    return std::move(line.arguments);
}

} // namespace fenmark::cli
