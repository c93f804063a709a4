// What stands at a path, and a file that takes its name when it is complete.
#include "platform/files.h"
#include "support/ordinary_user.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <ostream>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include <fcntl.h>
#include <linux/fs.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fenmark::platform {
namespace {

namespace fs = std::filesystem;

void put(const std::string& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

class Files : public ::testing::Test {
  protected:
    std::string file(const std::string& name) const { return folder_.at(name); }
    std::set<std::string> names() const {
        const std::vector<std::string> found = folder_.names();
        return {found.begin(), found.end()};
    }
    unsigned rights(const std::string& path) const {
        struct ::stat status {};
        ::stat(path.c_str(), &status);
        return status.st_mode & 07777;
    }

    test::TemporaryFolder folder_;
};

TEST_F(Files, PathsLeadToOneFileByWhateverLinks) {
    put(file("a"), "abc");
    put(file("b"), "abc");
    fs::create_symlink("a", file("link"));
    fs::create_hard_link(file("a"), file("hard"));
    fs::create_symlink("none", file("dangling"));
    for (const char* same : {"a", "link", "hard", "./a"}) {
        EXPECT_TRUE(leadToOneFile(file(same), file("a"))) << same;
    }
    for (const char* other : {"b", "none", "dangling"}) {
        EXPECT_FALSE(leadToOneFile(file(other), file("a"))) << other;
    }
    EXPECT_FALSE(leadToOneFile("", ""));
}

TEST_F(Files, OnlyNothingIsMissing) {
    put(file("a"), "abc");
    fs::create_symlink("a", file("link"));
    fs::create_symlink("none", file("dangling"));
    fs::create_symlink("circle", file("circle"));
    EXPECT_EQ(lookUp(file("a")).kind, PathKind::File);
    EXPECT_EQ(lookUp(file("a")).size, 3U);
    EXPECT_EQ(lookUp(file("link")).kind, PathKind::File);
    EXPECT_EQ(lookUp(folder_.path()).kind, PathKind::Folder);
    EXPECT_EQ(lookUp("/dev/null").kind, PathKind::Other);
    EXPECT_EQ(lookUp(file("none")).kind, PathKind::Missing);
    EXPECT_EQ(lookUp(file("none/below")).kind, PathKind::Missing);
    EXPECT_EQ(lookUp(file("dangling")).kind, PathKind::DanglingLink);
    EXPECT_EQ(lookUp(file("dangling")).leadsTo, "none");
    for (const std::string& path : {file("circle"), file("a/below"), file(std::string(300, 'n'))}) {
        EXPECT_EQ(lookUp(path).kind, PathKind::Unknown) << path;
        EXPECT_TRUE(lookUp(path).error) << path;
    }
}

TEST_F(Files, ATemporaryFileTakesItsNameWhole) {
    TemporaryFile temporary;
    ASSERT_FALSE(temporary.make(file("a")));
    EXPECT_EQ(rights(temporary.path()), 0600U) << "nobody else reads what is not complete";
    ASSERT_FALSE(temporary.write("whole"));
    EXPECT_FALSE(fs::exists(file("a")));
    ASSERT_FALSE(temporary.putInPlace());
    EXPECT_EQ(test::readFile(file("a")), "whole");
    EXPECT_EQ(names(), (std::set<std::string>{"a"}));
    const mode_t mask = ::umask(0);
    ::umask(mask);
    EXPECT_EQ(rights(file("a")), 0666U & ~mask);
}

TEST_F(Files, RightsOfTheFileBeforeAreKept) {
    put(file("a"), "old");
    ::chmod(file("a").c_str(), 0640);
    ASSERT_FALSE(writeWhole(file("a"), [](std::ostream& out) { out << "new"; }));
    EXPECT_EQ(rights(file("a")), 0640U);
    EXPECT_EQ(test::readFile(file("a")), "new");
}

TEST_F(Files, TheFileOfSomebodyElseInAStickyFolderIsRefusedBeforehand) {
    put(file("a"), "theirs");
    ::chmod(file("a").c_str(), 0666);
    fs::create_symlink("none", file("link"));
    const auto made = [&](const char* name, AtLink atLink) {
        return test::asOrdinaryUser([&] { return !TemporaryFile().make(file(name), atLink); });
    };
    for (const mode_t folderRights : {mode_t{0777}, mode_t{01777}}) {
        const int refused = folderRights == mode_t{01777} && ::geteuid() == 0 ? 1 : 0;
        ::chmod(folder_.path().c_str(), folderRights);
        EXPECT_EQ(made("a", AtLink::Follow), refused);
        EXPECT_EQ(made("a", AtLink::Replace), refused);
        EXPECT_EQ(made("link", AtLink::Replace), refused) << "the link itself is somebody's";
        EXPECT_EQ(made("b", AtLink::Replace), 0);
        EXPECT_FALSE(TemporaryFile().make(file("a"))) << "it is ours";
    }
    EXPECT_EQ(names(), (std::set<std::string>{"a", "link"}));
}

TEST_F(Files, AFileThatMayOnlyGrowIsRefusedBeforehand) {
    put(file("a"), "theirs");
    const int descriptor = ::open(file("a").c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_GE(descriptor, 0);
    int flags = 0;
    const bool known = ::ioctl(descriptor, FS_IOC_GETFLAGS, &flags) == 0;
    const auto set = [&](int wanted) { return ::ioctl(descriptor, FS_IOC_SETFLAGS, &wanted) == 0; };
    if (!known || !set(flags | FS_APPEND_FL)) {
        ::close(descriptor);
        GTEST_SKIP() << "nobody here may set that";
    }
    EXPECT_EQ(TemporaryFile().make(file("a")).value(), EPERM);
    EXPECT_EQ(TemporaryFile().make(file("a"), AtLink::Replace).value(), EPERM);
    EXPECT_TRUE(set(flags));
    EXPECT_FALSE(TemporaryFile().make(file("a")));
    ::close(descriptor);
    EXPECT_EQ(names(), (std::set<std::string>{"a"}));
}

TEST_F(Files, WhatIsThereCanBeRefusedAtTheLastMoment) {
    TemporaryFile temporary;
    ASSERT_FALSE(temporary.make(file("a")));
    ASSERT_FALSE(temporary.write("mine"));
    ASSERT_FALSE(temporary.complete());
    put(file("a"), "theirs");
    EXPECT_EQ(temporary.putInPlace(AtTarget::Refuse), std::errc::file_exists);
    EXPECT_EQ(test::readFile(file("a")), "theirs");
    temporary.discard();
    EXPECT_EQ(names(), (std::set<std::string>{"a"}));
}

TEST_F(Files, NamesAreNeverTheSameAndLongOnesAreCut) {
    std::set<std::string> paths;
    const std::string name(255, 'n');
    for (int i = 0; i < 20; ++i) {
        TemporaryFile temporary;
        ASSERT_FALSE(temporary.make(file(name)));
        paths.insert(temporary.path());
    }
    EXPECT_EQ(paths.size(), 20U);
    EXPECT_TRUE(names().empty());
    ASSERT_FALSE(writeWhole(file(name), [](std::ostream& out) { out << "x"; }));
    EXPECT_EQ(test::readFile(file(name)), "x");
}

TEST_F(Files, WhatAKilledProgramLeftGoesAndWhatALivingOneHoldsStays) {
    const pid_t killed = ::fork();
    if (killed == 0) {
        TemporaryFile temporary;
        (void)temporary.make(file("a"));
        ::kill(::getpid(), SIGKILL);
    }
    ::waitpid(killed, nullptr, 0);
    ASSERT_EQ(names().size(), 1U);
    const std::string left = *names().begin();
    TemporaryFile living;
    ASSERT_FALSE(living.make(file("a")));
    EXPECT_EQ(names().count(left), 0U) << "its lock went with it";
    TemporaryFile second;
    ASSERT_FALSE(second.make(file("a")));
    EXPECT_EQ(names().size(), 2U) << "the first is held";
    TemporaryFile other;
    ASSERT_FALSE(other.make(file("b")));
    EXPECT_EQ(names().size(), 3U);
}

TEST_F(Files, FoldersAndLinksOfATemporaryNameAreLetAlone) {
    fs::create_directory(file("a.abcdef.partial"));
    put(file("kept"), "kept");
    fs::create_symlink("kept", file("a.ghijkl.partial"));
    ASSERT_EQ(::mkfifo(file("a.mnopqr.partial").c_str(), 0600), 0);
    ASSERT_FALSE(writeWhole(file("a"), [](std::ostream& out) { out << "x"; }));
    EXPECT_EQ(names(),
              (std::set<std::string>{"a", "a.abcdef.partial", "a.ghijkl.partial", "a.mnopqr.partial", "kept"}));
}

TEST_F(Files, ALinkIsFollowedOrReplacedAsAsked) {
    put(file("real"), "old");
    fs::create_symlink("real", file("link"));
    ASSERT_FALSE(writeWhole(file("link"), [](std::ostream& out) { out << "new"; }));
    EXPECT_TRUE(fs::is_symlink(file("link")));
    EXPECT_EQ(test::readFile(file("real")), "new");
    ASSERT_FALSE(writeWhole(
        file("link"), [](std::ostream& out) { out << "own"; }, AtLink::Replace));
    EXPECT_FALSE(fs::is_symlink(file("link")));
    EXPECT_EQ(test::readFile(file("link")), "own");
    EXPECT_EQ(test::readFile(file("real")), "new");
    fs::create_symlink("nowhere", file("dangling"));
    EXPECT_TRUE(writeWhole(file("dangling"), [](std::ostream& out) { out << "x"; }));
    ASSERT_FALSE(writeWhole(
        file("dangling"), [](std::ostream& out) { out << "x"; }, AtLink::Replace));
    EXPECT_FALSE(fs::exists(file("nowhere")));
}

TEST_F(Files, AWriterThatFailsLeavesTheTargetAsItWas) {
    put(file("a"), "old");
    EXPECT_THROW((void)writeWhole(file("a"),
                                  [](std::ostream& out) {
                                      out << "half";
                                      throw std::runtime_error("no more");
                                  }),
                 std::runtime_error);
    EXPECT_EQ(test::readFile(file("a")), "old");
    EXPECT_EQ(names(), (std::set<std::string>{"a"}));
    EXPECT_EQ(writeWhole("/dev/full", [](std::ostream& out) { out << "x"; }), std::errc::no_space_on_device);
    EXPECT_TRUE(isDiskFull(writeWhole("/dev/full", [](std::ostream& out) { out << "x"; })));
    EXPECT_EQ(writeWhole(folder_.path(), [](std::ostream&) {}), std::errc::is_a_directory);
}

TEST_F(Files, AFileThatWasSwappedUnderneathDoesNotTakeTheName) {
    TemporaryFile temporary;
    ASSERT_FALSE(temporary.make(file("a")));
    ASSERT_FALSE(temporary.write("mine"));
    const std::string path = temporary.path();
    fs::remove(path);
    put(path, "planted");
    EXPECT_TRUE(temporary.putInPlace());
    EXPECT_FALSE(fs::exists(file("a")));
}

} // namespace
} // namespace fenmark::platform
