// The line that a bar draws: percent, filled part and width to the character.
#include "cli/cli.h"
#include "cli/import_dialogs.h"
#include "cli/options.h"
#include "cli/progress_bar.h"
#include "drawing/drawing.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace fenmark::cli {
namespace {

std::string drawnAt(std::int64_t lower, std::int64_t upper, std::int64_t position, int columns = 0) {
    std::ostringstream terminal;
    ProgressBars bars(terminal, std::chrono::milliseconds(0), columns);
    const std::unique_ptr<sima::Progress> bar = bars.create("読込", false);
    bar->setRange(lower, upper, 1);
    bar->setPosition(position);
    return terminal.str();
}

std::string line(int filled, int width, int percent) {
    return "\r読込 [" + std::string(static_cast<std::size_t>(filled), '=') +
           std::string(static_cast<std::size_t>(width - filled), ' ') + "] " + std::to_string(percent) + " %";
}

TEST(ProgressBar, ShowsWholePercentsThatAreReached) {
    EXPECT_EQ(drawnAt(0, 10000, 0), line(0, 40, 0));
    EXPECT_EQ(drawnAt(0, 10000, 99), line(0, 40, 0));
    EXPECT_EQ(drawnAt(0, 10000, 101), line(0, 40, 1));
    EXPECT_EQ(drawnAt(0, 10000, 249), line(0, 40, 2));
    EXPECT_EQ(drawnAt(0, 10000, 250), line(1, 40, 2));
    EXPECT_EQ(drawnAt(0, 10000, 5000), line(20, 40, 50));
    EXPECT_EQ(drawnAt(0, 10000, 9999), line(39, 40, 99));
    EXPECT_EQ(drawnAt(0, 10000, 10000), line(40, 40, 100));
    EXPECT_EQ(drawnAt(0, 10000, 10001), line(40, 40, 100)) << "beyond the end";
    EXPECT_EQ(drawnAt(200, 300, 225), line(10, 40, 25));
    EXPECT_EQ(drawnAt(200, 300, 100), line(0, 40, 0)) << "before the beginning";
    EXPECT_EQ(drawnAt(5, 5, 5), line(0, 40, 0)) << "a range of nothing";
    EXPECT_EQ(drawnAt(5, 5, 6), line(40, 40, 100));
}

TEST(ProgressBar, CountsEveryPercentFromWhereItIsReached) {
    for (const std::int64_t range : {std::int64_t{100}, std::int64_t{700}, std::int64_t{100000000}}) {
        for (int percent = 1; percent <= 100; ++percent) {
            const std::int64_t reached = range / 100 * percent;
            EXPECT_EQ(drawnAt(0, range, reached), line(40 * percent / 100, 40, percent)) << range;
            const auto filled = static_cast<int>(40 * (reached - 1) / range);
            EXPECT_EQ(drawnAt(7, 7 + range, 7 + reached - 1), line(filled, 40, percent - 1)) << range;
        }
    }
}

// The title takes four columns, and what stands round a bar ten.
TEST(ProgressBar, IsNeverWiderThanTheTerminal) {
    EXPECT_EQ(drawnAt(0, 100, 50, 200), line(20, 40, 50));
    EXPECT_EQ(drawnAt(0, 100, 50, 54), line(20, 40, 50));
    EXPECT_EQ(drawnAt(0, 100, 50, 53), line(19, 39, 50));
    EXPECT_EQ(drawnAt(0, 100, 50, 16), line(1, 2, 50));
    EXPECT_EQ(drawnAt(0, 100, 50, 14), line(0, 0, 50));
    EXPECT_EQ(drawnAt(0, 100, 50, 1), line(0, 0, 50));
}

TEST(ProgressBar, ComesOnATerminalAloneAndNotForTheQuiet) {
    std::ostringstream out;
    std::ostringstream err;
    const drawing::Drawing drawing;
    const std::string file = "a.sim";
    for (const bool isTerminal : {false, true}) {
        for (const bool quiet : {false, true}) {
            ImportArguments arguments;
            arguments.quiet = quiet;
            const Streams streams{out, err, isTerminal};
            ImportDialogs dialogs(arguments, file, sima::Encoding::Cp932, "", drawing, streams);
            EXPECT_EQ(dialogs.progress() != nullptr, isTerminal && !quiet) << isTerminal << ' ' << quiet;
        }
    }
}

// The titles of the bars that a command draws, each with its width and the percent it comes to, in their order.
std::vector<std::string> barsOf(const std::vector<std::string>& arguments, int columns, bool isTerminal = true) {
    std::ostringstream out;
    std::ostringstream err;
    Streams streams{out, err, isTerminal};
    streams.columns = columns;
    streams.patience = std::chrono::milliseconds(0);
    EXPECT_EQ(run(arguments, streams), kDone) << err.str();
    std::vector<std::string> bars;
    std::string text = err.str();
    for (std::size_t end = text.find("\r\033[K"); end != std::string::npos; end = text.find("\r\033[K")) {
        const std::string last = text.substr(0, end).substr(text.rfind('\r', end - 1) + 1);
        bars.push_back(last.substr(0, last.find(" [")) + ' ' + std::to_string(last.find(']') - last.find('[') - 1) +
                       last.substr(last.find(']') + 1));
        text.erase(0, end + 4);
    }
    EXPECT_EQ(text.find('\r'), std::string::npos) << "a bar that stays";
    return bars;
}

TEST(ProgressBar, EachPassAndTheDrawingHaveOneOnATerminal) {
    const test::TemporaryFolder folder;
    std::string points;
    for (int number = 1; number <= 20000; ++number) { // so many that their writing is counted
        points += "A01," + std::to_string(number) + ",K,1.0,2.0,,\n";
    }
    const std::string file = folder.write("点.sim", "A00,\n" + points + "A99,\n");
    const std::vector<std::string> import{"import", file, "--replace"};
    const std::string pass = "SIMAファイル読み込み中";
    EXPECT_EQ(barsOf(import, 80), (std::vector<std::string>{pass + " 40 99 %", pass + " 40 99 %", "writing 40 92 %"}));
    EXPECT_EQ(barsOf(import, 40), (std::vector<std::string>{pass + " 8 99 %", pass + " 8 99 %", "writing 23 92 %"}));
    EXPECT_EQ(barsOf({"preview", file}, 80), (std::vector<std::string>{pass + " 40 99 %"}));
    EXPECT_EQ(barsOf({"preview", file}, 40), (std::vector<std::string>{pass + " 8 99 %"}));
    for (const char* command : {"import", "preview"}) {
        EXPECT_TRUE(barsOf({command, file, "--quiet"}, 80).empty()) << command;
        EXPECT_TRUE(barsOf({command, file}, 80, false).empty()) << command;
    }
}

TEST(ProgressBar, DrawsAThousandStepsAndGoesInTheEnd) {
    std::ostringstream terminal;
    {
        ProgressBars bars(terminal, std::chrono::milliseconds(0), 0);
        const std::unique_ptr<sima::Progress> bar = bars.create("読込", false);
        bar->setRange(0, 10000, 1);
        for (std::int64_t position = 0; position < 33; ++position) {
            bar->setPosition(position);
        }
    }
    const std::string first = line(0, 40, 0);
    EXPECT_EQ(terminal.str(), first + first + first + "\r\033[K") << "at 0, 11 and 22";
}

} // namespace
} // namespace fenmark::cli
