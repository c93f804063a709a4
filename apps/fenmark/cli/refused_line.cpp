// What to say of a command line that the parser refused.
#include "cli/refused_line.h"

#include "cli/suggestion.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <string_view>

namespace fenmark::cli {

namespace {

// The names of a command's options, with their dashes.
std::vector<std::string> optionNames(const CLI::App& command) {
    std::vector<std::string> names;
    for (const CLI::Option* option : command.get_options()) {
        for (const std::string& name : option->get_lnames()) {
            names.push_back("--" + name);
        }
        for (const std::string& name : option->get_snames()) {
            names.push_back("-" + name);
        }
    }
    return names;
}

// The name of an option in an argument: "--zone" of "--zone=9", "-v" of "-v9"; empty for all that is none, such as a
// negative number.
std::string optionName(const std::string& argument) {
    if (argument.size() > 2 && argument.starts_with("--")) {
        return argument.substr(0, argument.find('='));
    }
    const bool isShort = argument.size() > 1 && argument[0] == '-' && argument[1] != '-' && argument[1] != '.' &&
                         !(argument[1] >= '0' && argument[1] <= '9');
    return isShort ? argument.substr(0, 2) : std::string();
}

// "; did you mean '--version'?" for "-v": the long option that begins with the letter, where it is the only one.
std::string longOption(const std::string& name, const std::vector<std::string>& names) {
    std::string found;
    for (const std::string& known : names) {
        if (known.size() > 3 && known[2] == name[1]) {
            if (!found.empty()) {
                return {};
            }
            found = known;
        }
    }
    return found.empty() ? found : "; did you mean '" + found + "'?";
}

// The first option of the line that the command does not know, in words; empty if it knows them all.
std::string unknownOption(const CLI::App& command, const std::vector<std::string>& arguments) {
    const std::vector<std::string> names = optionNames(command);
    for (const std::string& argument : arguments) {
        if (argument == "--") {
            break;
        }
        const std::string name = optionName(argument);
        if (!name.empty() && std::find(names.begin(), names.end(), name) == names.end()) {
            return command.get_name() + " has no option " + name +
                   (name.size() == 2 ? longOption(name, names) : suggestion(name, names));
        }
    }
    return {};
}

// The commands that have an option of that name.
std::vector<std::string> commandsWith(const CLI::App& app, const std::string& option) {
    std::vector<std::string> commands;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
        const std::vector<std::string> names = optionNames(*command);
        if (std::find(names.begin(), names.end(), option) != names.end()) {
            commands.push_back(command->get_name());
        }
    }
    return commands;
}

std::string withCommas(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) {
        text.append(text.empty() ? "" : ", ").append(word);
    }
    return text;
}

// What to say of an option in front of the command; empty if there is none, or if it may stand there.
std::string optionInFront(const CLI::App& app, const std::vector<std::string>& arguments) {
    const std::string option = arguments.empty() ? std::string() : optionName(arguments.front());
    if (option.empty() || unknownOption(app, {option}).empty()) {
        return {};
    }
    const std::vector<std::string> having = commandsWith(app, option);
    return having.empty() ? unknownOption(app, {option})
                          : option + " stands behind a command that has it (" + withCommas(having) + ")";
}

// "--zone needs a value: 1..19" for the parser's "--zone: 1 required 1..19 missing".
std::string withoutValue(const std::string& said) {
    constexpr std::string_view kRequired = ": 1 required ";
    constexpr std::string_view kMissing = " missing";
    const std::size_t at = said.find(kRequired);
    if (at == std::string::npos || !said.ends_with(kMissing)) {
        return said;
    }
    const std::size_t value = at + kRequired.size();
    return said.substr(0, at) + " needs a value: " + said.substr(value, said.size() - kMissing.size() - value);
}

} // namespace

std::vector<std::string> commandNames(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
        names.push_back(command->get_name());
    }
    return names;
}

std::string withoutCommand(const CLI::App& app, const std::vector<std::string>& arguments) {
    const std::vector<std::string> names = commandNames(app);
    const std::string commands = "; the commands are " + withCommas(names);
    if (const std::string option = optionInFront(app, arguments); !option.empty()) {
        return option + commands;
    }
    const auto word = std::find_if(arguments.begin(), arguments.end(),
                                   [](const std::string& argument) { return !argument.starts_with('-'); });
    if (word == arguments.end()) {
        return "no command is given" + commands;
    }
    return "there is no command '" + *word + "'" + commands + suggestion(*word, names);
}

std::string refusal(const CLI::App& app, const CLI::ParseError& error, const std::vector<std::string>& arguments) {
    const std::vector<CLI::App*> chosen = app.get_subcommands();
    if (chosen.empty() || !optionInFront(app, arguments).empty()) {
        return withoutCommand(app, arguments);
    }
    const std::string unknown = unknownOption(*chosen.front(), arguments);
    return unknown.empty() ? withoutValue(error.what()) : unknown;
}

} // namespace fenmark::cli
