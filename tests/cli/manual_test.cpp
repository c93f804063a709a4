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

struct Manual : CommandLine {
    std::set<std::string> optionsOfAllHelp() {
        std::set<std::string> options = test::optionsIn(fenmark({"--help"}).out);
        for (const char* command : kCommands) {
            options.merge(test::optionsIn(fenmark({command, "--help"}).out));
        }
        return options;
    }
};

TEST_F(Manual, PageHasTheOptionsOfHelpAndNoOthers) {
    const std::string page = test::plainManualPage(FENMARK_SOURCE_DIR "/apps/fenmark/man/fenmark.1");
    EXPECT_EQ(test::optionsIn(page), optionsOfAllHelp());
    for (const char* command : kCommands) {
        EXPECT_NE(page.find(std::string(".SS ") + command + "\n"), std::string::npos) << command;
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
    const std::string page = test::plainManualPage(FENMARK_SOURCE_DIR "/apps/fenmark/man/fenmark.1");
    std::string pattern;
    for (const exchange::Format& format : exchange::formats()) {
        if (!format.isPlan) {
            EXPECT_NE(help.find(format.extension), std::string::npos) << format.extension;
            EXPECT_NE(page.find(format.extension), std::string::npos) << format.extension;
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
    }
    EXPECT_NE(completion("bash").find("objects=\"" + kinds + "\""), std::string::npos) << kinds;
    EXPECT_NE(completion("zsh").find("objects=(" + kinds + ")"), std::string::npos) << kinds;
    EXPECT_NE(completion("fish").find("(__fish_append , " + kinds + ")"), std::string::npos) << kinds;
}

} // namespace
} // namespace fenmark::cli
