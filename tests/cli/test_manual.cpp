// The manual page and the completion name what --help names, and nothing else.
#include "command_line.h"
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

} // namespace
} // namespace fenmark::cli
