// Malformed and unreadable input: each ends in a clear outcome, with the drawing on disk as it was.
#include "cli/error_blocks.h"
#include "command_line.h"
#include "sima/text/cp932.h"

#include <sqlite3.h>

#include <csignal>
#include <memory>
#include <string>
#include <utility>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fenmark::cli {
namespace {

TEST(Messages, AnErrorIsOneLineWhateverANameHolds) {
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(run({"info", "no\nsuch.gpkg"}, {out, err, false, nullptr, 0, nullptr, Language::English}), kNotDone);
    EXPECT_TRUE(err.str().starts_with("fenmark: error: no\\u000asuch.gpkg: ")) << err.str();
    EXPECT_EQ(err.str().find('\n'), err.str().size() - 1);
}

TEST(ErrorBlocks, OnlyATextThatBeginsWithACodeHasOne) {
    sima::SimaLog log;
    log.errorBlock("ErrA01-1 the text", "00012行目 A01,x,");
    log.errorBlock("a text of words", "00013 A01");
    log.errorBlock("Err", "00014行目 A01");
    ASSERT_EQ(errorBlockCount(log), 3U);
    EXPECT_EQ(errorBlock(log, 0).code, "ErrA01-1");
    EXPECT_EQ(errorBlock(log, 0).text, "the text");
    EXPECT_EQ(errorBlock(log, 0).line, "12");
    EXPECT_EQ(errorBlock(log, 1).code, "");
    EXPECT_EQ(errorBlock(log, 1).text, "a text of words");
    EXPECT_EQ(errorBlock(log, 2).code, "");
    EXPECT_EQ(errorBlock(log, 2).text, "Err");
}

TEST(ErrorBlocks, HaveTheNumberOfTheirLineWithoutZerosInFront) {
    for (const auto& [written, number] : {std::pair("00000行目", "0"),
                                          {"00001行目", "1"},
                                          {"00010行目", "10"},
                                          {"00100", "100"},
                                          {"12345行目", "12345"},
                                          {"123456行目", "123456"},
                                          {"行目", ""}}) {
        sima::SimaLog log;
        log.errorBlock("ErrA01-1 the text", std::string(written) + " A01,x,");
        EXPECT_EQ(errorBlock(log, 0).line, number);
        EXPECT_EQ(errorBlock(log, 0).record, "A01,x,");
    }
}

using BadInput = CommandLine;

// One line, which names the file.
void expectOneLine(const Ran& ran, const std::string& path) {
    EXPECT_EQ(ran.code, kNotDone);
    EXPECT_EQ(ran.out, "");
    EXPECT_EQ(std::count(ran.err.begin(), ran.err.end(), '\n'), 1) << ran.err;
    EXPECT_TRUE(contains(ran.err, path)) << ran.err;
}

TEST_F(BadInput, MissingFileIsToldAsSuch) {
    const std::string path = folder.at("missing.sim");
    for (const char* command : {"import", "preview"}) {
        const Ran ran = fenmark({command, path});
        expectOneLine(ran, path);
        EXPECT_TRUE(contains(ran.err, "No such file")) << ran.err;
    }
    EXPECT_FALSE(test::fileExists(folder.at("missing.gpkg")));
    EXPECT_FALSE(test::fileExists(folder.at("missing_Input.log")));
}

TEST_F(BadInput, UnreadableFileIsToldAsSuch) {
    // A link that leads to itself, which no user can read.
    const std::string loop = folder.at("loop.sim");
    std::filesystem::create_symlink(loop, loop);
    for (const char* command : {"import", "preview"}) {
        expectOneLine(fenmark({command, loop}), loop);
    }

    const std::string path = file(kPoints);
    std::filesystem::permissions(path, std::filesystem::perms::none);
    if (::access(path.c_str(), R_OK) != 0) { // root reads every file
        expectOneLine(fenmark({"import", path}), path);
    }
}

TEST_F(BadInput, FileWhoseReadingFailsIsToldAsSuch) {
    if (!std::filesystem::exists("/proc/self/mem")) {
        GTEST_SKIP() << "no file that opens and cannot be read";
    }
    const std::string path = folder.at("memory.sim");
    std::filesystem::create_symlink("/proc/self/mem", path);
    for (const char* command : {"import", "preview"}) {
        const Ran ran = fenmark({command, path});
        expectOneLine(ran, path);
        EXPECT_TRUE(contains(ran.err, "cannot be read")) << ran.err;
    }
    EXPECT_FALSE(test::fileExists(folder.at("memory.gpkg")));
}

TEST_F(BadInput, WrongExtensionIsRefused) {
    for (const char* name : {"a.txt", "a.sima", "sim"}) {
        const std::string path = file(kPoints, name);
        for (const char* command : {"import", "preview"}) {
            const Ran ran = fenmark({command, path});
            expectOneLine(ran, path);
            EXPECT_TRUE(contains(ran.err, "must end in .sim")) << ran.err;
        }
    }
}

TEST_F(BadInput, FolderNamedLikeAFileIsRefused) {
    const std::string path = folder.at("folder.sim");
    std::filesystem::create_directory(path);
    for (const char* command : {"import", "preview"}) {
        const Ran ran = fenmark({command, path});
        expectOneLine(ran, path);
        EXPECT_TRUE(contains(ran.err, "folder")) << ran.err;
    }
}

TEST_F(BadInput, PipeNamedLikeAFileIsRefusedAndNotWaitedFor) {
    const std::string path = folder.at("pipe.sim");
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    for (const char* command : {"import", "preview"}) {
        const Ran ran = fenmark({command, path});
        expectOneLine(ran, path);
        EXPECT_TRUE(contains(ran.err, "is not an ordinary file")) << ran.err;
    }
}

TEST_F(BadInput, EmptyFileIsReadToItsEnd) {
    const Ran ran = fenmark({"import", file("")});
    EXPECT_EQ(ran.code, kDone) << ran.err;
    EXPECT_EQ(ran.out, "エラー無し\n");
    std::string log;
    sima::encodeCp932(log, "----- Brindlow　Version1.0 -----\r\n\r\n00000     読み込み終了\r\nエラー無し\r\n");
    EXPECT_EQ(test::readFile(folder.at("a_Input.log")), log);
    EXPECT_TRUE(test::fileExists(folder.at("a.gpkg")));
}

TEST_F(BadInput, FileOfNullsIsOneUnknownLine) {
    const Ran ran = fenmark({"import", file(std::string(100000, '\0'))});
    EXPECT_EQ(ran.code, kDone) << ran.err;
    EXPECT_EQ(ran.out, "エラー無し\n");
}

TEST_F(BadInput, RandomBytesAreRefusedLineByLine) {
    std::string bytes;
    std::uint32_t state = 2463534242U; // where Marsaglia's generator starts
    for (int i = 0; i < 200000; ++i) {
        state ^= state << 13;
        state ^= state >> 17;
        state ^= state << 5;
        bytes += static_cast<char>(state >> 24);
    }
    EXPECT_EQ(fenmark({"import", file("A00,\r\n" + bytes), "--quiet"}).code, kDone);
}

TEST_F(BadInput, LineOfSixtyMegabytesIsALine) {
    constexpr std::size_t kLength = 60U << 20;
    const std::string path = file("A00,\r\n" + std::string(kLength, 'x') + "\r\nA99,\r\n");
    const Ran ran = fenmark({"import", path});
    EXPECT_EQ(ran.code, kDone);
    EXPECT_EQ(ran.out, "1個のエラー\n");
    EXPECT_EQ(ran.err.substr(0, ran.err.find('\n')),
              path + ":2: ErrA001: 座標データが無効です。これを無視して、処理を続けます。")
        << "the message does not hold the line";
}

TEST_F(BadInput, CutOffFileIsReadAsFarAsItGoes) {
    const std::string whole = test::readFile(std::string(FENMARK_SOURCE_DIR) + "/examples/road.sim");
    for (const std::size_t bytes : {1UL, 100UL, 5000UL, whole.size() / 2, whole.size() - 3}) {
        const Ran ran = fenmark({"import", file(whole.substr(0, bytes)), "--quiet"});
        EXPECT_TRUE(ran.code == kDone || ran.code == kNotDone) << bytes;
        EXPECT_FALSE(ran.code == kDone && ran.out.empty()) << bytes;
    }
}

TEST_F(BadInput, LotWithOverAThousandPoints) {
    std::string content = "A00,\r\n";
    std::string lot = "D00,1,L,1,\r\n";
    for (int i = 1; i <= 1500; ++i) {
        content +=
            "A01," + std::to_string(i) + ",P," + std::to_string(i * i % 997) + "," + std::to_string(i) + ",,\r\n";
        lot += "B01," + std::to_string(i) + ",P,\r\n";
    }
    ASSERT_EQ(fenmark({"import", file(content + "A99,\r\n" + lot + "D99,\r\n")}).code, kDone);
    EXPECT_EQ(info(folder.at("a.gpkg"))["entities"].back()["vertices"].size(), 1500U);
}

TEST_F(BadInput, PaddedFieldsMissingAndDoubledEndRecords) {
    const Ran ran = fenmark({"import", file("Z01,a,\nA00,\nA01,    1,FK12863             , -39525.623,  60295.494,,\n"
                                            "A99,\nA99,\nD00,    1,甲,1,\nB01,    1,FK12863             ,\nC03,1,2,\n"
                                            "B01,    9,,\nD99,\nA00,\nA01,2,x,1,2,")});
    EXPECT_EQ(ran.code, kDone);
    const nlohmann::json entities = info(folder.at("a.gpkg"))["entities"];
    ASSERT_EQ(entities.size(), 2U);
    EXPECT_EQ(entities[0]["position"], nlohmann::json({60295.494, -39525.623, 0.0}));
    EXPECT_EQ(entities[0]["data"]["Name"], "FK12863             ");
    EXPECT_EQ(entities[0]["data"]["No"], 1);
}

TEST_F(BadInput, DrawingThatIsNotOursIsNotTouched) {
    const std::string drawing = folder.at("other.gpkg");
    sqlite3* raw = nullptr;
    ASSERT_EQ(sqlite3_open(drawing.c_str(), &raw), SQLITE_OK);
    const std::unique_ptr<sqlite3, int (*)(sqlite3*)> database(raw, sqlite3_close);
    ASSERT_EQ(sqlite3_exec(raw, "CREATE TABLE accounts (id INTEGER)", nullptr, nullptr, nullptr), SQLITE_OK);
    const std::string before = test::readFile(drawing);
    expectOneLine(fenmark({"import", file(kPoints), "--drawing", drawing}), drawing);
    EXPECT_EQ(test::readFile(drawing), before);
    const std::string text = file("hello", "text.gpkg");
    expectOneLine(fenmark({"import", file(kPoints), "--drawing", text}), text);
    EXPECT_EQ(test::readFile(text), "hello");
    std::filesystem::create_directory(folder.at("folder.gpkg"));
    expectOneLine(fenmark({"import", file(kPoints), "--drawing", folder.at("folder.gpkg")}), folder.at("folder.gpkg"));
}

TEST_F(BadInput, DrawingThatAnotherProgramHoldsIsLeftAlone) {
    const std::string drawing = folder.at("d.gpkg");
    ASSERT_EQ(fenmark({"import", file(kPoints), "--drawing", drawing}).code, kDone);
    const std::string before = test::readFile(drawing);
    sqlite3* raw = nullptr;
    ASSERT_EQ(sqlite3_open(drawing.c_str(), &raw), SQLITE_OK);
    {
        const std::unique_ptr<sqlite3, int (*)(sqlite3*)> database(raw, sqlite3_close);
        ASSERT_EQ(sqlite3_exec(raw, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
        expectOneLine(fenmark({"import", folder.at("a.sim"), "--drawing", drawing, "--quiet"}), drawing);
        ASSERT_EQ(sqlite3_exec(raw, "ROLLBACK", nullptr, nullptr, nullptr), SQLITE_OK);
    }
    EXPECT_EQ(test::readFile(drawing), before);
}

TEST_F(BadInput, DrawingInAFolderThatCannotBeWrittenIsNotMade) {
    // A file stands where the folder should be, which no user may write into.
    file("", "no_folder");
    const std::string drawing = folder.at("no_folder/d.gpkg");
    const Ran ran = fenmark({"import", file(kPoints), "--drawing", drawing, "--quiet"});
    expectOneLine(ran, drawing);
    EXPECT_TRUE(contains(ran.err, "cannot be written (its folder: Not a directory)")) << ran.err;
    const std::string kernel = "/proc/fenmark.gpkg";
    if (std::filesystem::is_directory("/proc")) {
        expectOneLine(fenmark({"import", file(kPoints), "--drawing", kernel, "--quiet"}), kernel);
    }
}

TEST_F(BadInput, DrawingInAFolderThatDoesNotExistIsToldAsSuch) {
    const Ran ran = fenmark({"import", file(kPoints), "--drawing", folder.at("none/d.gpkg")});
    EXPECT_EQ(ran.code, kNotDone);
    EXPECT_NE(ran.err.find("none/d.gpkg: cannot be made: its folder does not exist"), std::string::npos) << ran.err;
}

TEST_F(BadInput, LogThatCannotBeWrittenLeavesTheDrawingAsItWas) {
    std::filesystem::create_directory(folder.at("a_Input.log"));
    const Ran ran = fenmark({"import", file(kPoints)});
    EXPECT_EQ(ran.code, kNotDone);
    EXPECT_TRUE(contains(ran.err, "the log beside it cannot be written")) << ran.err;
    EXPECT_FALSE(test::fileExists(folder.at("a.gpkg")));
    EXPECT_EQ(fenmark({"import", folder.at("a.sim"), "--keep-partial"}).code, kNotDone);
    EXPECT_EQ(info(folder.at("a.gpkg"))["entities"].size(), 2U);
}

// A limit to the size of files stands for a disk that has room for the log alone.
TEST_F(BadInput, ErrorsOfAFileAreToldWhereItsDrawingCannotBeWritten) {
    const std::string path = file("A00,\r\nA01,x,P,0,0,,\r\nA99,\r\n");
    struct ::rlimit before {};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    struct ::rlimit small = before;
    small.rlim_cur = 3000;
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const Ran ran = fenmark({"import", path});
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(ran.code, kNotDone);
    EXPECT_TRUE(contains(ran.err, path + ":2: ErrA01-1: ")) << ran.err;
    EXPECT_TRUE(contains(ran.err, "error: " + folder.at("a.gpkg"))) << ran.err;
    EXPECT_FALSE(test::fileExists(folder.at("a.gpkg")));
    EXPECT_FALSE(test::fileExists(folder.at("a_Input.log")));
}

TEST_F(BadInput, FullDeviceIsToldByExportAndPlot) {
    if (!std::filesystem::exists("/dev/full")) {
        GTEST_SKIP() << "no device that is always full";
    }
    ASSERT_EQ(fenmark({"import", file(kPoints)}).code, kDone);
    std::filesystem::create_symlink("/dev/full", folder.at("full.csv"));
    const Ran ran = fenmark({"export", folder.at("a.gpkg"), folder.at("full.csv")});
    expectOneLine(ran, folder.at("full.csv"));
    EXPECT_TRUE(contains(ran.err, "No space left")) << ran.err;
}

TEST_F(BadInput, CoordinatesBeyondAllNumbersAreKeptAndTold) {
    const std::string huge(400, '9');
    const Ran ran = fenmark(
        {"import", file("A00,\r\nA01,1,A,0,0,,\r\nA01,2,B," + huge + ",5,,\r\nA01,3,C,1,2," + huge + ",\r\nA99,\r\n")});
    EXPECT_EQ(ran.code, kDone);
    EXPECT_TRUE(contains(ran.err,
                         "a.sim: note: coordinates beyond all bounds; kept in the drawing, but no other program "
                         "can show them: 1 point"))
        << ran.err;
    EXPECT_TRUE(contains(ran.err, "heights beyond all bounds")) << ran.err;
    const nlohmann::json entities = info(folder.at("a.gpkg"))["entities"];
    ASSERT_EQ(entities.size(), 3U);
    EXPECT_EQ(entities[1]["data"]["Name"], "B");
    const Ran again = fenmark({"import", file(kPoints), "--drawing", folder.at("a.gpkg")});
    EXPECT_FALSE(contains(again.err, "beyond")) << "what was there before is reported no more";
}

} // namespace
} // namespace fenmark::cli
