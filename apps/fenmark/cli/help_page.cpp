// The layout of --help: names in a first column, what they are in a second one, all headings in the user's language.
#include "cli/help_page.h"

#include "cli/help_texts.h"
#include "cli/terminal_text.h"

#include <set>

namespace fenmark::cli {

namespace {

constexpr std::size_t kHelpColumn = 34; // where the descriptions begin
constexpr std::size_t kTerminalColumns = 80;

std::string row(const std::string& name, const std::string& description) {
    std::string text = "  " + name;
    std::size_t column = columnsOf(text);
    if (column >= kHelpColumn) {
        text += '\n';
        column = 0;
    }
    for (const std::string& line : folded(description, kTerminalColumns - kHelpColumn)) {
        text.append(kHelpColumn - column, ' ').append(line).append("\n");
        column = 0;
    }
    return text;
}

} // namespace

HelpPage::HelpPage(Language language) {
    label("Usage", said(language, Help::Usage));
    label("OPTIONS", said(language, Help::UsageOptions));
    label("SUBCOMMAND", said(language, Help::UsageCommand));
    label("Positionals", said(language, Help::Arguments));
    label("Excludes", said(language, Help::ExcludesLabel));
}

std::string HelpPage::make_option(const CLI::Option* option, bool isPositional) const {
    return row(make_option_name(option, isPositional) + make_option_opts(option), make_option_desc(option));
}

// The parser keeps what an option excludes by address; here by name, so that one help is like the other.
std::string HelpPage::make_option_opts(const CLI::Option* option) const {
    std::string text;
    if (option->get_type_size() != 0) {
        text += option->get_type_name().empty() ? "" : " " + option->get_type_name();
        text += option->get_expected_max() == CLI::detail::expected_max_vector_size ? " ..." : "";
    }
    std::set<std::string> excluded;
    for (const CLI::Option* other : option->get_excludes()) {
        excluded.insert(other->get_name());
    }
    if (!excluded.empty()) {
        text += " " + get_label("Excludes") + ":";
    }
    for (const std::string& name : excluded) {
        text += " " + name;
    }
    return text;
}

std::string HelpPage::make_subcommand(const CLI::App* command) const {
    return row(command->get_display_name(true), command->get_description());
}

} // namespace fenmark::cli
