// The lines of fenmark stakes and fenmark report.
#include "cli/argument_lines.h"
#include "cli/argument_values.h"
#include "cli/drawings.h"
#include "cli/help_texts.h"
#include "cli/messages.h"
#include "cli/suggestion.h"
#include "exchange/station_text.h"
#include "values/ascii_case.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cmath>
#include <utility>

namespace fenmark::cli {

namespace {

void declareNames(CLI::App& command, NamesLine& line, Language language) {
    command.add_option("--pitch", line.pitch, said(language, Help::Pitch))->type_name("METRES")->check(refusalOfEmpty);
    command.add_option("--point-names", line.pointNames, said(language, Help::PointNames))
        ->check(CLI::IsMember({"ka", "btc"}).description(""))
        ->type_name("ka|btc");
    command.add_option("--station-names", line.stationNames, said(language, Help::StationNames))
        ->check(CLI::IsMember({"stake", "kilometre"}).description(""))
        ->type_name("stake|kilometre");
}

double pitchOf(const NamesLine& line, Language language) {
    constexpr double kLeastPitch = 0.001; // metres
    if (line.pitch.empty()) {
        return exchange::kStakePitch;
    }
    const double pitch = metresIn(line.pitch, "--pitch", language);
    if (!(pitch >= kLeastPitch)) {
        refuse(language, Text::PitchTooSmall, {{"text", line.pitch}});
    }
    return pitch;
}

exchange::StationNames stationNamesOf(const NamesLine& line, Language language) {
    return {line.stationNames == "kilometre" ? exchange::StationNames::Style::Kilometre
                                             : exchange::StationNames::Style::Stake,
            pitchOf(line, language)};
}

exchange::MainPointNames pointNamesOf(const NamesLine& line) {
    return line.pointNames == "btc" ? exchange::MainPointNames::Btc : exchange::MainPointNames::Ka;
}

exchange::StakeFormat stakeFormatOf(const StakesLine& line) {
    std::string format = line.format;
    if (format.empty() && line.arguments.target) {
        const std::size_t point = line.arguments.target->rfind('.');
        format = point == std::string::npos ? "" : asciiLower(line.arguments.target->substr(point + 1));
    }
    return format == "csv"    ? exchange::StakeFormat::Csv
           : format == "sim"  ? exchange::StakeFormat::Sima
           : format == "json" ? exchange::StakeFormat::Json
                              : exchange::StakeFormat::Table;
}

std::vector<std::string> reportTables() {
    return {exchange::kReportParts.begin(), exchange::kReportParts.end()};
}

} // namespace

void declare(CLI::App& app, StakesLine& line, Language language) {
    const auto say = [language](Help text) { return said(language, text); };
    CLI::App& command = *app.add_subcommand("stakes", say(Help::Stakes));
    command.add_option("DRAWING", line.arguments.drawing, say(Help::Drawing))->required()->type_name("");
    command.add_option("ALIGNMENT", line.arguments.alignment, say(Help::AlignmentName))->required()->type_name("");
    command.add_option("--every", line.every, say(Help::Every))->type_name("METRES")->check(refusalOfEmpty);
    command.add_option("--at", line.at, say(Help::At))->type_name("STATION,...")->check(refusalOfEmpty);
    command.add_option("--offset", line.offset, say(Help::Offsets))->type_name("METRES,...")->check(refusalOfEmpty);
    command.add_flag("--main-points", line.arguments.options.mainPoints, say(Help::MainPoints));
    declareNames(command, line.names, language);
    command.add_option("--format", line.format, say(Help::StakeFormat))
        ->check(CLI::IsMember({"table", "csv", "sim", "json"}).description(""))
        ->type_name("table|csv|sim|json");
    command.add_option("--out", line.arguments.target, say(Help::StakeOut))->type_name("FILE");
    command.footer(say(Help::StakesFooter));
}

StakesArguments checked(StakesLine line, Language language) {
    takeTyped(line.arguments.drawing);
    takeTyped(line.arguments.target);
    line.arguments.format = stakeFormatOf(line);
    // A table in a file that other programs take for a drawing or a document is of no use.
    if (line.format.empty() && line.arguments.format == exchange::StakeFormat::Table && line.arguments.target &&
        (!commandThatWrites(*line.arguments.target).empty() || endsIn(*line.arguments.target, ".gpkg"))) {
        throw WrongUsage(
            otherExtension(language, *line.arguments.target, ".csv, .sim, .json" + said(language, Text::Or) + ".txt"));
    }
    exchange::StakeOptions& options = line.arguments.options;
    options.stationNames = stationNamesOf(line.names, language);
    options.mainPointNames = pointNamesOf(line.names);
    options.every = line.at.empty() ? options.stationNames.pitch : 0.0;
    if (!line.every.empty()) {
        options.every = metresIn(line.every, "--every", language);
        if (options.every < 0.0) {
            refuse(language, Text::EveryBelowZero, {{"text", line.every}});
        }
    }
    if (!line.at.empty()) {
        for (const std::string& piece : listed(line.at)) {
            const auto station = exchange::parseStation(piece, options.stationNames.pitch);
            if (!station) {
                refuse(language, Text::AtTakesStations, {{"text", piece}});
            }
            options.stations.push_back(*station);
        }
    }
    if (!line.offset.empty()) {
        options.offsets.clear();
        for (const std::string& piece : listed(line.offset)) {
            const double offset = metresIn(piece, "--offset", language);
            if (!(std::abs(offset) <= exchange::kMostOffset)) {
                refuse(language, Text::OffsetTooFar, {{"text", piece}});
            }
            options.offsets.push_back(offset);
        }
    }
    return std::move(line.arguments);
}

void declare(CLI::App& app, ReportLine& line, Language language) {
    const auto say = [language](Help text, std::initializer_list<Figure> figures = {}) {
        return said(language, text, figures);
    };
    CLI::App& command = *app.add_subcommand("report", say(Help::Report));
    command.add_option("DRAWING", line.arguments.drawing, say(Help::Drawing))->required()->type_name("");
    command.add_option("OUT", line.arguments.target, say(Help::ReportOut))->required()->type_name("");
    command.add_option("--tables", line.tables, say(Help::Tables, {{"tables", withBlanks(reportTables())}}))
        ->type_name("TABLE,...")
        ->check(refusalOfEmpty);
    command.add_option("--scale", line.figureScale, say(Help::FigureScale))
        ->check(CLI::Range(1, 100000000).description(""))
        ->type_name("N");
    command.add_option("--sides", line.sides, say(Help::Sides))
        ->check(CLI::IsMember({"cut", "round"}).description(""))
        ->type_name("cut|round");
    command.add_option("--land", line.land, say(Help::Land))
        ->check(CLI::IsMember({"residential", "other"}).description(""))
        ->type_name("residential|other");
    declareNames(command, line.names, language);
    command.add_option("--log", line.arguments.logs, say(Help::Log))
        ->expected(1)
        ->allow_extra_args(false)
        ->take_all()
        ->type_name("LOG");
    command.add_flag("-q,--quiet", line.arguments.quiet, say(Help::QuietNotes));
    command.footer(say(Help::ReportFooter));
}

ReportArguments checked(ReportLine line, Language language) {
    takeTyped(line.arguments.drawing);
    takeTyped(line.arguments.target);
    takeTyped(line.arguments.logs);
    if (line.figureScale != 0 && endsIn(line.arguments.target, ".csv")) {
        refuse(language, Text::OptionOfFormat,
               {{"path", line.arguments.target}, {"option", "--scale"}, {"extension", ".html"}});
    }
    exchange::ReportOptions& options = line.arguments.options;
    options.stationNames = stationNamesOf(line.names, language);
    options.mainPointNames = pointNamesOf(line.names);
    options.sides = line.sides == "round" ? exchange::SideRule::Round : exchange::SideRule::Cut;
    options.land = line.land.empty()            ? exchange::LandCategory::Unknown
                   : line.land == "residential" ? exchange::LandCategory::Residential
                                                : exchange::LandCategory::Other;
    if (line.figureScale != 0) {
        options.figureScale = line.figureScale;
    }
    if (!line.tables.empty()) {
        const std::vector<std::string> known = reportTables();
        options.parts.fill(false);
        for (const std::string& piece : listed(line.tables)) {
            const auto found = std::find(known.begin(), known.end(), piece);
            if (found == known.end()) {
                refuse(language, Text::NoTable,
                       {{"name", piece}, {"tables", withBlanks(known)}, {"meant", suggestion(piece, known, language)}});
            }
            options.parts[static_cast<std::size_t>(found - known.begin())] = true;
        }
    }
    return std::move(line.arguments);
}

} // namespace fenmark::cli
