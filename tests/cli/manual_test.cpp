// The manual page and the completion name what --help names, and nothing else.
#include "command_line.h"
#include "exchange/formats.h"
#include "support/manual_page.h"

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

TEST_F(Manual, CompletionOffersTheOptionsOfHelpAndNoOthers) {
    const std::string script = test::readFile(FENMARK_SOURCE_DIR "/apps/fenmark/completion/fenmark.bash");
    EXPECT_EQ(test::optionsIn(script), optionsOfAllHelp());
}

TEST_F(Manual, HelpPageAndCompletionNameEveryExportFormatAndKind) {
    const std::string help = fenmark({"export", "--help"}).out;
    const std::string page = test::plainManualPage(FENMARK_SOURCE_DIR "/apps/fenmark/man/fenmark.1");
    const std::string script = test::readFile(FENMARK_SOURCE_DIR "/apps/fenmark/completion/fenmark.bash");
    std::string pattern;
    for (const exchange::Format& format : exchange::formats()) {
        if (!format.isPlan) {
            EXPECT_NE(help.find(format.extension), std::string::npos) << format.extension;
            EXPECT_NE(page.find(format.extension), std::string::npos) << format.extension;
            pattern.append(pattern.empty() ? "" : "|").append(format.extension.substr(1));
        }
    }
    EXPECT_NE(script.find("*.@(" + pattern + ")"), std::string::npos) << pattern;
    std::string kinds;
    for (const exchange::KindEntry& entry : exchange::kKindTable) {
        kinds.append(kinds.empty() ? "" : " ").append(entry.option);
        EXPECT_NE(page.find(entry.option), std::string::npos) << entry.option;
    }
    EXPECT_NE(script.find("objects=\"" + kinds + "\""), std::string::npos) << kinds;
}

} // namespace
} // namespace fenmark::cli
