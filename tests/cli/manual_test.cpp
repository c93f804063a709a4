// The manual page and the completion name what --help names, and nothing else.
#include "command_line.h"
#include "exchange/formats.h"
#include "support/manual_page.h"

#include <algorithm>
#include <regex>

namespace fenmark::cli {
namespace {

constexpr const char* kCommands[] = {"import", "preview", "info",   "station", "locate",
                                     "stakes", "report",  "export", "plot"};

constexpr const char* kPages[] = {"fenmark.1", "fenmark.ja.1"};

std::string manualPage(const std::string& name) {
    return test::plainManualPage(FENMARK_SOURCE_DIR "/apps/fenmark/man/" + name);
}

// The commands that a page has a section on, in order.
std::vector<std::string> commandsOf(const std::string& page) {
    static const std::regex heading("\\n\\.SS ([a-z]+)");
    std::vector<std::string> commands;
    for (std::sregex_iterator at(page.begin(), page.end(), heading), end; at != end; ++at) {
        commands.push_back((*at)[1]);
    }
    return commands;
}

// The section of a page on a command.
std::string sectionOf(const std::string& page, const std::string& command) {
    const std::size_t start = page.find("\n.SS " + command + "\n");
    const std::size_t end = std::min(page.find("\n.SS ", start + 1), page.find("\n.SH ", start + 1));
    return start == std::string::npos ? std::string() : page.substr(start, end - start);
}

struct Manual : CommandLine {
    std::set<std::string> optionsOfAllHelp(Language language = Language::English) {
        std::set<std::string> options = test::optionsIn(fenmark({"--help"}, false, language).out);
        for (const char* command : kCommands) {
            options.merge(test::optionsIn(fenmark({command, "--help"}, false, language).out));
        }
        return options;
    }
};

TEST_F(Manual, PagesHaveTheOptionsOfHelpAndNoOthers) {
    const std::vector<std::string> commands(std::begin(kCommands), std::end(kCommands));
    for (const char* name : kPages) {
        const std::string page = manualPage(name);
        EXPECT_EQ(test::optionsIn(page), optionsOfAllHelp()) << name;
        EXPECT_EQ(commandsOf(page), commands) << name;
    }
}

TEST_F(Manual, HelpHasTheSameOptionsInBothLanguages) {
    EXPECT_EQ(optionsOfAllHelp(Language::Japanese), optionsOfAllHelp());
    for (const char* command : kCommands) {
        EXPECT_EQ(test::optionsIn(inJapanese({command, "--help"}).out),
                  test::optionsIn(fenmark({command, "--help"}).out))
            << command;
    }
}

TEST_F(Manual, PagesTellTheSameOptionsOfEachCommand) {
    for (const char* command : kCommands) {
        EXPECT_EQ(test::optionsIn(sectionOf(manualPage("fenmark.1"), command)),
                  test::optionsIn(sectionOf(manualPage("fenmark.ja.1"), command)))
            << command;
    }
}

// The script for a shell. That for fish names an option "-l drawing", which comes back as "--drawing".
std::string completion(const std::string& shell) {
    const std::string script = test::readFile(FENMARK_SOURCE_DIR "/apps/fenmark/completion/fenmark." + shell);
    return shell == "fish" ? std::regex_replace(script, std::regex(" -l ([a-z])"), " --$1") : script;
}

constexpr const char* kShells[] = {"bash", "zsh", "fish"};

TEST_F(Manual, CompletionOffersTheOptionsOfHelpAndNoOthers) {
    for (const char* shell : kShells) {
        EXPECT_EQ(test::optionsIn(completion(shell)), optionsOfAllHelp()) << shell;
    }
}

TEST_F(Manual, HelpPageAndCompletionNameEveryExportFormatAndKind) {
    const std::string help = fenmark({"export", "--help"}).out;
    const std::string page = manualPage("fenmark.1");
    const std::string japanesePage = manualPage("fenmark.ja.1");
    std::string pattern;
    for (const exchange::Format& format : exchange::formats()) {
        if (!format.isPlan) {
            EXPECT_NE(help.find(format.extension), std::string::npos) << format.extension;
            EXPECT_NE(page.find(format.extension), std::string::npos) << format.extension;
            EXPECT_NE(japanesePage.find(format.extension), std::string::npos) << format.extension;
            pattern.append(pattern.empty() ? "" : "|").append(format.extension.substr(1));
        }
    }
    EXPECT_NE(completion("bash").find("*.@(" + pattern + ")"), std::string::npos) << pattern;
    EXPECT_NE(completion("zsh").find("*.(#i)(" + pattern + ")"), std::string::npos) << pattern;
    std::replace(pattern.begin(), pattern.end(), '|', ' ');
    EXPECT_NE(completion("fish").find("(__fenmark_files " + pattern + ")"), std::string::npos) << pattern;
    std::string kinds;
    for (const KindEntry& entry : kKindTable) {
        kinds.append(kinds.empty() ? "" : " ").append(entry.option);
        EXPECT_NE(page.find(entry.option), std::string::npos) << entry.option;
        EXPECT_NE(japanesePage.find(entry.option), std::string::npos) << entry.option;
    }
    EXPECT_NE(completion("bash").find("objects=\"" + kinds + "\""), std::string::npos) << kinds;
    EXPECT_NE(completion("zsh").find("objects=(" + kinds + ")"), std::string::npos) << kinds;
    EXPECT_NE(completion("fish").find("(__fish_append , " + kinds + ")"), std::string::npos) << kinds;
}

} // namespace
} // namespace fenmark::cli
