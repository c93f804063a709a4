// Reads one command line.
#include "cli/arguments.h"

#include "cli/argument_lines.h"
#include "cli/argument_values.h"
#include "cli/help_page.h"
#include "cli/help_texts.h"
#include "cli/refused_line.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>
#include <optional>
#include <tuple>
#include <utility>

namespace fenmark::cli {

namespace {

// In the order of the help.
using Lines = std::tuple<ImportLine, PreviewLine, InfoLine, StationLine, LocateLine, ExportLine, PlotLine, StakesLine,
                         ReportLine>;

// The line and its command as the parser knows it.
template <typename Line>
std::optional<ParsedCommand> takenBy(Line& line, CLI::App& app, const std::string& name, Language language) {
    return app.got_subcommand(name) ? std::optional<ParsedCommand>(checked(std::move(line), language)) : std::nullopt;
}

ParsedCommand checkedLine(Lines& lines, CLI::App& app, const std::vector<std::string>& names, Language language) {
    std::optional<ParsedCommand> taken;
    std::size_t at = 0;
    const auto take = [&](auto& line) {
        if (!taken) {
            taken = takenBy(line, app, names[at], language);
        }
        ++at;
    };
    std::apply([&](auto&... line) { (take(line), ...); }, lines);
    return std::move(taken).value(); // the parser wants one command
}

} // namespace

ParsedCommand parseArguments(const std::vector<std::string>& given, Language language) {
    // "help COMMAND" is "COMMAND --help".
    std::vector<std::string> arguments = given;
    const bool asksForHelp = !arguments.empty() && arguments.front() == "help";
    if (asksForHelp) {
        arguments.erase(arguments.begin());
        arguments.resize(std::min<std::size_t>(arguments.size(), 1));
        arguments.emplace_back("--help");
    }
    CLI::App app(said(language, Help::Program), "fenmark");
    app.formatter(std::make_shared<HelpPage>(language));
    app.option_defaults()->group(said(language, Help::Options));
    app.set_help_flag("-h,--help", said(language, Help::Help));
    app.set_version_flag("--version", std::string("fenmark ") + FENMARK_VERSION, said(language, Help::Version));
    app.require_subcommand(1);
    app.footer(said(language, Help::ProgramFooter));
    Lines lines;
    std::apply([&](auto&... line) { (declare(app, line, language), ...); }, lines);
    for (CLI::App* command : app.get_subcommands({})) {
        command->group(said(language, Help::Commands));
        command->get_help_ptr()->group(said(language, Help::Options));
    }
    const std::vector<std::string> names = commandNames(app);
    if (asksForHelp && arguments.size() > 1 &&
        std::find(names.begin(), names.end(), arguments.front()) == names.end()) {
        return UsageError{withoutCommand(app, arguments, language)};
    }

    // The parser passes over numbers in front of a command, and takes "--strict=no".
    if (std::string error = misuse(app, arguments, language); !error.empty()) {
        return UsageError{std::move(error)};
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
        return checkedLine(lines, app, names, language);
    } catch (const CLI::CallForHelp&) {
        return ShowText{app.help()};
    } catch (const CLI::CallForVersion& version) {
        return ShowText{std::string(version.what()) + "\n"};
    } catch (const CLI::ParseError& error) {
        return UsageError{refusal(app, error, arguments, language)};
    } catch (const WrongUsage& error) {
        return UsageError{error.what()};
    }
}

} // namespace fenmark::cli
