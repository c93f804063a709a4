// What to say of a command line that the parser refused.
#include "cli/refused_line.h"

#include "cli/suggestion.h"
#include "cli/texts.h"

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
// negative number. "--", which ends the options, is its own name; no command looks it up.
std::string optionName(const std::string& argument) {
    if (argument.starts_with("--")) {
        return argument.substr(0, argument.find('='));
    }
    const bool isShort =
        argument.size() > 1 && argument[0] == '-' && argument[1] != '.' && !(argument[1] >= '0' && argument[1] <= '9');
    return isShort ? argument.substr(0, 2) : std::string();
}

// "; did you mean '--version'?" for "-v": the long option that begins with the letter, where it is the only one.
std::string longOption(const std::string& name, const std::vector<std::string>& names, Language language) {
    std::string found;
    for (const std::string& known : names) {
        if (known.size() > 3 && known[2] == name[1]) {
            if (!found.empty()) {
                return {};
            }
            found = known;
        }
    }
    return found.empty() ? found : said(language, Text::DidYouMean, {{"word", found}});
}

// The first option of the line that the command does not know, in words; empty if it knows them all.
std::string unknownOption(const CLI::App& command, const std::vector<std::string>& arguments, Language language) {
    const std::vector<std::string> names = optionNames(command);
    for (const std::string& argument : arguments) {
        if (argument == "--") {
            break;
        }
        const std::string name = optionName(argument);
        if (!name.empty() && std::find(names.begin(), names.end(), name) == names.end()) {
            return said(
                language, Text::NoSuchOption,
                {{"command", command.get_name()},
                 {"option", name},
                 {"meant", name.size() == 2 ? longOption(name, names, language) : suggestion(name, names, language)}});
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
std::string optionInFront(const CLI::App& app, const std::vector<std::string>& arguments, Language language) {
    const std::string option = arguments.empty() ? std::string() : optionName(arguments.front());
    if (option.empty() || unknownOption(app, {option}, language).empty()) {
        return {};
    }
    const std::vector<std::string> having = commandsWith(app, option);
    return having.empty()
               ? unknownOption(app, {option}, language)
               : said(language, Text::OptionBehindCommand, {{"option", option}, {"commands", withCommas(having)}});
}

// The part of a text before a mark, or all of it.
std::string before(const std::string& text, std::string_view mark) {
    return text.substr(0, text.find(mark));
}

// The values that an option takes, as its help names them.
std::string valuesOf(const CLI::Option& option) {
    const std::string name = option.get_type_name();
    return name == "N" ? "1..100000000" : name;
}

// What the parser says of the values of one option, in the user's words. It has its own words alone.
std::string withValue(const CLI::App& command, const CLI::ParseError& error, Language language) {
    const std::string name = before(error.what(), ": ");
    const CLI::Option* const option = command.get_option_no_throw(name);
    if (option == nullptr) {
        return error.what();
    }
    if (dynamic_cast<const CLI::ValidationError*>(&error) != nullptr && !option->results().empty()) {
        return said(language, Text::BadValue,
                    {{"option", name}, {"value", option->results().back()}, {"values", valuesOf(*option)}});
    }
    if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr) {
        if (option->results().size() > 1) {
            return said(language, Text::GivenTwice, {{"option", name}});
        }
        return said(language, Text::NeedsValue, {{"option", name}, {"values", valuesOf(*option)}});
    }
    return error.what();
}

std::string inOurWords(const CLI::App& command, const CLI::ParseError& error, Language language) {
    const std::string text = error.what();
    if (dynamic_cast<const CLI::RequiredError*>(&error) != nullptr) {
        return said(language, Text::Required, {{"name", before(text, " is required")}});
    }
    if (constexpr std::string_view kExcludes = " excludes ";
        dynamic_cast<const CLI::ExcludesError*>(&error) != nullptr && text.find(kExcludes) != std::string::npos) {
        return said(
            language, Text::Excludes,
            {{"option", before(text, kExcludes)}, {"other", text.substr(text.find(kExcludes) + kExcludes.size())}});
    }
    if (constexpr std::string_view kColon = ": ";
        dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr && text.find(kColon) != std::string::npos) {
        return said(language, Text::TooManyArguments, {{"arguments", text.substr(text.find(kColon) + kColon.size())}});
    }
    return withValue(command, error, language);
}

} // namespace

std::vector<std::string> commandNames(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
        names.push_back(command->get_name());
    }
    return names;
}

std::string withoutCommand(const CLI::App& app, const std::vector<std::string>& arguments, Language language) {
    const std::vector<std::string> names = commandNames(app);
    const std::string commands = said(language, Text::CommandsAre, {{"commands", withCommas(names)}});
    if (const std::string option = optionInFront(app, arguments, language); !option.empty()) {
        return option + commands;
    }
    if (arguments.size() > 1 && arguments.front() == "--") {
        return said(language, Text::DashesBehindCommand) + commands;
    }
    const auto word = std::find_if(arguments.begin(), arguments.end(),
                                   [](const std::string& argument) { return optionName(argument).empty(); });
    if (word == arguments.end()) {
        return said(language, Text::NoCommand) + commands;
    }
    return said(language, Text::UnknownCommand, {{"word", *word}}) + commands + suggestion(*word, names, language);
}

std::string misuse(const CLI::App& app, const std::vector<std::string>& arguments, Language language) {
    if (arguments.empty()) {
        return {};
    }
    const std::vector<const CLI::App*> named =
        app.get_subcommands([&](const CLI::App* command) { return command->get_name() == arguments.front(); });
    if (named.empty() && optionName(arguments.front()).empty()) {
        return withoutCommand(app, arguments, language);
    }
    const CLI::App& command = named.empty() ? app : *named.front();
    for (const std::string& argument : arguments) {
        if (argument == "--") {
            break;
        }
        const std::string name = optionName(argument);
        if (name.empty()) {
            continue;
        }
        const CLI::Option* const option = command.get_option_no_throw(name);
        if (option != nullptr && option->get_items_expected_max() == 0 &&
            argument.substr(name.size()).starts_with('=')) {
            return said(language, Text::TakesNoValue, {{"option", name}});
        }
    }
    return {};
}

std::string refusal(const CLI::App& app, const CLI::ParseError& error, const std::vector<std::string>& arguments,
                    Language language) {
    const std::vector<CLI::App*> chosen = app.get_subcommands();
    if (chosen.empty() || !optionInFront(app, arguments, language).empty()) {
        return withoutCommand(app, arguments, language);
    }
    const std::string unknown = unknownOption(*chosen.front(), arguments, language);
    return unknown.empty() ? inOurWords(*chosen.front(), error, language) : unknown;
}

} // namespace fenmark::cli
