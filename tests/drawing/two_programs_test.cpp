// Two programs at one drawing, at once: nothing that either reported as done gets lost.
#include "drawing/index_check.h"
#include "platform/files.h"
#include "support/drawing_support.h"

#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>

namespace fenmark::drawing {
namespace {

constexpr int kTries = 20;
constexpr int kMissed = 7; // exit code: the drawing appeared or grew meanwhile, and this was reported

class TwoPrograms : public ::testing::Test {
  protected:
    TemporaryFolder folder_;
    std::string path_ = folder_.at("図面.gpkg");

    // Points of one import, by number; each program has its own.
    static void import(Drawing& drawing, int program) {
        drawing.addTable("JSIMA_V3_Point");
        for (int i = 0; i < 200; ++i) {
            drawing.addPoint({1.0 * i, 1.0 * program, 0}, 0);
            drawing.setRow(drawing.entityCount() - 1, 0, program, "", "座標", "a.sim");
        }
    }
    // Runs programs that all wait for one moment; their exit codes.
    std::vector<int> together(const std::vector<std::function<int()>>& programs) const {
        int gate[2];
        EXPECT_EQ(pipe(gate), 0);
        std::vector<pid_t> children;
        for (const auto& program : programs) {
            const pid_t child = fork();
            if (child == 0) {
                close(gate[1]);
                char byte = 0;
                (void)!read(gate[0], &byte, 1); // ends when the gate is closed
                _exit(program());
            }
            children.push_back(child);
        }
        close(gate[0]);
        close(gate[1]);
        std::vector<int> codes;
        for (const pid_t child : children) {
            int status = 0;
            waitpid(child, &status, 0);
            codes.push_back(WIFEXITED(status) ? WEXITSTATUS(status) : -1);
        }
        return codes;
    }
    int importOnce(int program) const {
        Drawing drawing;
        DrawingStore store;
        if (!store.openOrBegin(path_, drawing, Load::WithoutEntities)) {
            return 1;
        }
        import(drawing, program);
        const Outcome saved = store.save(path_, drawing);
        const bool missed = saved.failure == Failure::AppearedMeanwhile || saved.failure == Failure::ChangedOutside;
        return saved ? 0 : missed && !saved.message.empty() ? kMissed : 1;
    }
    int importUntilDone(int program) const {
        int code = kMissed;
        while (code == kMissed) {
            code = importOnce(program);
        }
        return code;
    }
    std::string pointsOf(int program) const {
        return OtherProgram(path_).one("SELECT count(*) FROM points WHERE \"No\" = " + std::to_string(program));
    }
};

TEST_F(TwoPrograms, TheSecondToMakeADrawingSaysThatItIsThere) {
    for (int round = 0; round < kTries; ++round) {
        std::filesystem::remove(path_);
        const std::vector<int> codes = together({[&] { return importOnce(1); }, [&] { return importOnce(2); }});
        for (const int program : {1, 2}) {
            const int code = codes[static_cast<std::size_t>(program - 1)];
            ASSERT_TRUE(code == 0 || code == kMissed) << code;
            ASSERT_EQ(pointsOf(program), code == 0 ? "200" : "0") << "program " << program << " ended with " << code;
        }
        ASSERT_TRUE(codes[0] == 0 || codes[1] == 0);
    }
    EXPECT_EQ(folder_.names(), std::vector<std::string>{"図面.gpkg"});
}

TEST_F(TwoPrograms, OpenedAnewAllAreAppended) {
    for (int round = 0; round < kTries; ++round) {
        std::filesystem::remove(path_);
        const std::vector<int> codes = together({[&] { return importUntilDone(1); }, [&] { return importUntilDone(2); },
                                                 [&] { return importUntilDone(3); }});
        ASSERT_EQ(codes, (std::vector<int>{0, 0, 0}));
        for (const int program : {1, 2, 3}) {
            ASSERT_EQ(pointsOf(program), "200");
        }
        Drawing all;
        ASSERT_TRUE(DrawingStore().open(path_, all));
        ASSERT_EQ(all.entityCount(), 600U);
    }
}

TEST_F(TwoPrograms, ADrawingThatAppearsWhileOneIsBegunIsLeftAsItIs) {
    Drawing first;
    DrawingStore firstStore;
    ASSERT_TRUE(firstStore.openOrBegin(path_, first));
    ASSERT_TRUE(firstStore.hasChanges(first));
    ASSERT_EQ(importOnce(2), 0);
    import(first, 1);
    const Outcome saved = firstStore.save(path_, first);
    EXPECT_EQ(saved.failure, Failure::AppearedMeanwhile);
    EXPECT_NE(saved.message.english.find(path_), std::string::npos);
    EXPECT_EQ(pointsOf(1), "0");
    EXPECT_EQ(pointsOf(2), "200");
}

TEST_F(TwoPrograms, ADrawingThatWasReplacedByAnotherOfTheSameSizeIsNotAppendedTo) {
    ASSERT_EQ(importOnce(1), 0);
    Drawing drawing;
    DrawingStore store;
    ASSERT_TRUE(store.open(path_, drawing, Load::WithoutEntities));
    std::filesystem::remove(path_);
    ASSERT_EQ(importOnce(2), 0); // the same identifiers
    import(drawing, 3);
    EXPECT_EQ(store.save(path_, drawing).failure, Failure::ChangedOutside);
}

TEST_F(TwoPrograms, ADrawingThatIsHeldIsNotReplaced) {
    ASSERT_EQ(importOnce(1), 0);
    const OtherProgram other(path_);
    ASSERT_TRUE(other.ask("BEGIN IMMEDIATE; UPDATE points SET \"No\" = 9").empty() || true);
    Drawing drawing;
    import(drawing, 2);
    EXPECT_EQ(DrawingStore().save(path_, drawing).failure, Failure::Locked);
    other.ask("ROLLBACK");
    EXPECT_EQ(pointsOf(1), "200");
    EXPECT_TRUE(DrawingStore().save(path_, drawing));
    EXPECT_EQ(pointsOf(2), "200");
}

TEST_F(TwoPrograms, AJournalOfAnotherDrawingIsNotPlayedIntoANewOne) {
    std::ofstream(path_ + "-journal") << "left by somebody";
    ASSERT_EQ(importOnce(1), 0);
    EXPECT_EQ(folder_.names(), std::vector<std::string>{"図面.gpkg"});
    EXPECT_EQ(pointsOf(1), "200");
}

TEST_F(TwoPrograms, AJournalIsNotPlayedIntoADrawingThatIsMadeAgainWhereOneWentAway) {
    ASSERT_EQ(importOnce(1), 0);
    Drawing drawing;
    DrawingStore store;
    ASSERT_TRUE(store.open(path_, drawing));
    std::filesystem::remove(path_);
    std::ofstream(path_ + "-journal") << "left by somebody";
    import(drawing, 2);
    ASSERT_TRUE(store.save(path_, drawing));
    EXPECT_EQ(folder_.names(), std::vector<std::string>{"図面.gpkg"});
    EXPECT_EQ(pointsOf(1), "200");
    EXPECT_EQ(pointsOf(2), "200");
}

// --- what stands at the path ---

TEST_F(TwoPrograms, ADanglingLinkIsToldAndNotWrittenThrough) {
    std::filesystem::create_symlink("nowhere.gpkg", path_);
    Drawing drawing;
    DrawingStore store;
    const Outcome opened = store.openOrBegin(path_, drawing);
    EXPECT_EQ(opened.failure, Failure::DanglingLink);
    EXPECT_NE(opened.message.english.find("'nowhere.gpkg'"), std::string::npos) << opened.message.english;
    EXPECT_EQ(store.open(path_, drawing).failure, Failure::DanglingLink);
    EXPECT_EQ(store.save(path_, drawing).failure, Failure::DanglingLink);
    EXPECT_EQ(folder_.names(), std::vector<std::string>{"図面.gpkg"});
}

TEST_F(TwoPrograms, WhatCannotBeLookedUpIsNoNewDrawing) {
    // Links in a circle stand for any failure but "no such file".
    std::filesystem::create_symlink("図面.gpkg", path_);
    Drawing drawing;
    DrawingStore store;
    EXPECT_EQ(store.openOrBegin(path_, drawing).failure, Failure::Unreachable);
    EXPECT_EQ(store.save(path_, drawing).failure, Failure::Unreachable);
    EXPECT_TRUE(std::filesystem::is_symlink(path_)) << "and what is there stays";
}

TEST_F(TwoPrograms, ALinkToADrawingStaysALink) {
    std::filesystem::create_symlink("図面.gpkg", folder_.at("link.gpkg"));
    ASSERT_EQ(importOnce(1), 0);
    Drawing drawing;
    import(drawing, 2);
    ASSERT_TRUE(DrawingStore().save(folder_.at("link.gpkg"), drawing));
    EXPECT_TRUE(std::filesystem::is_symlink(folder_.at("link.gpkg")));
    EXPECT_EQ(pointsOf(2), "200");
}

} // namespace
} // namespace fenmark::drawing
