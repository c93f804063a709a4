// Turns of several programs at the files of one folder.
#include "platform/folder_turn.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <sched.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fenmark::platform {
namespace {

constexpr std::chrono::hours kAsLongAsItTakes{1};

class FolderTurns : public ::testing::Test {
  protected:
    test::TemporaryFolder folder_;
};

TEST_F(FolderTurns, NoTwoProgramsAreWithinOneAtOnce) {
    constexpr int kPrograms = 4;
    constexpr int kTimes = 50;
    const std::string inside = folder_.at("inside");
    std::vector<pid_t> children;
    for (int program = 0; program < kPrograms; ++program) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            bool alone = true;
            for (int i = 0; i < kTimes; ++i) {
                const FolderTurn turn(folder_.path(), kAsLongAsItTakes);
                // Only one can make a folder that is not there.
                alone = turn.isHeld() && std::filesystem::create_directory(inside) && alone;
                sched_yield();
                std::filesystem::remove(inside);
            }
            _exit(alone ? 0 : 1);
        }
        children.push_back(child);
    }
    for (const pid_t child : children) {
        int status = -1;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
}

TEST_F(FolderTurns, OneThatNobodyGivesBackHoldsNobodyUpForEver) {
    const FolderTurn held(folder_.path());
    ASSERT_TRUE(held.isHeld());
    EXPECT_FALSE(FolderTurn(folder_.path(), std::chrono::milliseconds(1)).isHeld());
}

TEST_F(FolderTurns, WhereThereIsNoFolderThereIsNone) {
    EXPECT_FALSE(FolderTurn(folder_.at("none")).isHeld());
    std::ofstream(folder_.at("file")) << "no folder";
    EXPECT_FALSE(FolderTurn(folder_.at("file")).isHeld());
}

} // namespace
} // namespace fenmark::platform
