// The log: texts, file name, and the file to the byte.
#include "support.h"

#include "sima/log/process_lines.h"
#include "sima/log/sima_log.h"
#include "sima/text/cp932.h"
#include "support/ordinary_user.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <limits>
#include <string>
#include <system_error>
#include <utility>

namespace fenmark::sima {

using test::cp932;
using test::Lines;
using test::readFile;
using test::TemporaryFolder;
using test::texts;

TEST(SimaLog, WritesLineNumbersInFiveDigitsOrMore) {
    SimaLog log;
    log.coordinateBegin(0);
    log.coordinateBegin(12345);
    log.coordinateBegin(1234567);
    log.coordinateBegin(2147483647);
    EXPECT_EQ(texts(log.lines()),
              (Lines{"00000 A00 座標データの読み込み開始", "12345 A00 座標データの読み込み開始",
                     "1234567 A00 座標データの読み込み開始", "2147483647 A00 座標データの読み込み開始"}));
}

TEST(SimaLog, ReplacesPlaceholdersInItsTemplatesOnly) {
    SimaLog log;
    log.crossSectionItem(7, "<Number><SectionName>");
    log.version(8, "<Version>");
    log.routeEnd(9, true, 2, 1, "<AlignmentName>");
    EXPECT_EQ(log.lines()[0], "00007 I01 断面 <Number><SectionName> データを処理");
    EXPECT_EQ(log.lines()[1], "00008 G01 SIMAのバージョン： <Version>\n");
    EXPECT_EQ(log.lines()[3], "          平面線形”<AlignmentName>”");
}

TEST(SimaLog, EndsLotsInThreeWays) {
    SimaLog log;
    log.lotEnd(1, true, 4, false);
    log.lotEnd(2, true, 3, true);
    log.lotEnd(3, false, 0, false);
    EXPECT_EQ(texts(log.lines()), (Lines{"00001 D99 画地データの読み込み終了", "          4点の構成点\n",
                                         "00002 D99 画地データの読み込み終了", "          3点の構成点",
                                         "          三斜データは読み込みません\n", "00003 D99 画地データの読み込み終了",
                                         "ERROR     画地を作成できませんでした\n"}));
}

TEST(SimaLog, KeepsBlocksOfFourLines) {
    SimaLog log;
    log.errorBlock("ErrA01-1 点番号が５桁以下の整数ではありません。", "00012行目 A01,x,KP1,100.000,200.000,,");
    EXPECT_EQ(texts(log.errors()),
              (Lines{"ERROR --------------------------------------------------------",
                     "ErrA01-1 点番号が５桁以下の整数ではありません。", "00012行目 A01,x,KP1,100.000,200.000,,",
                     "--------------------------------------------------------------"}));
    EXPECT_EQ(log.errorCount(), 1);
}

TEST(SimaLog, KeepsItsCounterWhenCleared) {
    SimaLog log;
    log.errorBlock("a", "b");
    log.finished(1);
    log.clear();
    EXPECT_TRUE(log.lines().empty());
    EXPECT_TRUE(log.errors().empty());
    EXPECT_EQ(log.errorCount(), 1);
}

TEST(SimaLog, TakesFourCharactersOffThePathForItsName) {
    const auto nameFor = [](std::string_view path) {
        SimaLog log;
        log.setFileName(path);
        return log.fileName();
    };
    EXPECT_EQ(nameFor("a.sim"), "a_Input.log");
    EXPECT_EQ(nameFor("/x/座標.SIM"), "/x/座標_Input.log");
    EXPECT_EQ(nameFor("a.json"), "a._Input.log");
    EXPECT_EQ(nameFor("座標データ"), "座_Input.log");
    EXPECT_EQ(nameFor("sim"), "_Input.log");
}

TEST(SimaLog, WritesBannerLinesAndBlocksInCodePage932WithLineEndsOfTextMode) {
    const TemporaryFolder folder;
    SimaLog log;
    log.errorBlock("one", "two");
    log.coordinateBegin(1);
    log.version(2, "3");
    log.finished(2);
    log.setFileName(folder.at("a.sim"));
    log.writeAll();
    EXPECT_EQ(
        readFile(folder.at("a_Input.log")),
        "----- Brindlow\x81\x40Version1.0 -----\r\n\r\n"
        "00001 A00 \x8D\xC0\x95\x57\x83\x66\x81\x5B\x83\x5E\x82\xCC\x93\xC7\x82\xDD\x8D\x9E\x82\xDD\x8A\x4A\x8E\x6E"
        "\r\n" +
            cp932("00002 G01 SIMAのバージョン： 3\r\n\r\n"
                  "00002     読み込み終了\r\n"
                  "ERROR --------------------------------------------------------\r\n"
                  "one\r\n"
                  "two\r\n"
                  "--------------------------------------------------------------\r\n"));
}

// Kinds without a number or a name take neither.
TEST(ProcessLines, OfEveryKindAreInTheFileWhatTheySay) {
    ProcessLines lines;
    for (auto kind = LineKind::CoordinateBegin; kind <= LineKind::Finished;
         kind = static_cast<LineKind>(static_cast<int>(kind) + 1)) {
        for (const std::int32_t number : {0, 7, 123456, -5, std::numeric_limits<std::int32_t>::min()}) {
            lines.append(kind, number, "甲\n乙");
        }
    }
    std::string expected;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        encodeCp932Lines(expected, lines[i] + "\n");
    }
    std::string bytes;
    lines.encode(bytes, std::numeric_limits<std::size_t>::max(), [] { FAIL() << "no piece is that large"; });
    EXPECT_EQ(bytes, expected);

    const auto textOf = [](LineKind kind, std::int32_t number) {
        ProcessLines one;
        one.append(kind, number, "甲");
        return one[0];
    };
    EXPECT_EQ(textOf(LineKind::RoutePoints, 0), "          0点の構成点\n");
    EXPECT_EQ(textOf(LineKind::RoutePoints, -5), "          -5点の構成点\n");
    EXPECT_EQ(textOf(LineKind::Finished, -5), "-00005     読み込み終了");
    EXPECT_EQ(textOf(LineKind::CrossSectionItem, 123456), "123456 I01 断面 甲 データを処理");
    EXPECT_EQ(textOf(LineKind::RouteAlignment, 7), "          平面線形”甲”");
    EXPECT_EQ(textOf(LineKind::NoAlignment, 7), "ERROR     中心線が指定されませんでした");
}

TEST(SimaLog, EndsBehindTheProcessLinesIfThereAreNoErrors) {
    const TemporaryFolder folder;
    SimaLog log;
    log.finished(0);
    log.setFileName(folder.at("a.sim"));
    log.writeAll();
    EXPECT_EQ(readFile(log.fileName()), cp932("----- Brindlow　Version1.0 -----\r\n\r\n00000     読み込み終了\r\n"));
}

TEST(SimaLog, KeepsALoneCarriageReturn) {
    const TemporaryFolder folder;
    SimaLog log;
    log.errorBlock("x", "a\rb");
    log.setFileName(folder.at("a.sim"));
    log.writeErrorsOnly();
    EXPECT_NE(readFile(log.fileName()).find("\r\na\rb\r\n"), std::string::npos);
}

TEST(SimaLog, WritesAgainOverTheFileAndAppendsBehindIt) {
    const TemporaryFolder folder;
    SimaLog log;
    log.setFileName(folder.at("a.sim"));
    log.appendLines({"first"});
    EXPECT_EQ(readFile(log.fileName()), "first\r\n") << "appending creates the file";
    log.errorBlock("x", "y");
    log.writeErrorsOnly();
    log.writeErrorsOnly();
    const std::string errors = readFile(log.fileName());
    EXPECT_EQ(errors, "ERROR --------------------------------------------------------\r\nx\r\ny\r\n"
                      "--------------------------------------------------------------\r\n");
    log.appendLines({"座標", "", "b\nc"});
    EXPECT_EQ(readFile(log.fileName()), errors + cp932("座標\r\n\r\nb\r\nc\r\n"));
    log.writeAll();
    EXPECT_EQ(readFile(log.fileName()), cp932("----- Brindlow　Version1.0 -----\r\n\r\n") + errors);
}

TEST(SimaLog, RaisesWhenItsFileCannotBeWritten) {
    const TemporaryFolder folder;
    SimaLog log;
    log.setFileName(folder.at("missing/a.sim"));
    EXPECT_THROW(log.writeAll(), std::system_error);
    EXPECT_THROW(log.writeErrorsOnly(), std::system_error);
    EXPECT_THROW(log.appendLines({"x"}), std::system_error);
    if (std::filesystem::exists("/dev/full")) {
        SimaLog full;
        full.finished(1);
        full.setFile("/dev/full");
        EXPECT_THROW(full.writeAll(), std::system_error);
    }
}

TEST(SimaLog, TakesTheNameBesideItsInputAndLeavesWhatALinkThereLedTo) {
    const TemporaryFolder folder;
    const std::string other = folder.write("other.txt", "somebody's");
    SimaLog log;
    log.finished(1);
    for (const auto& [file, isHard] : {std::pair("soft", false), std::pair("hard", true)}) {
        log.setFileName(folder.at(std::string(file) + ".sim"));
        if (isHard) {
            std::filesystem::create_hard_link(other, log.fileName());
        } else {
            std::filesystem::create_symlink(other, log.fileName());
        }
        log.writeAll();
        log.appendLines({"behind"});
        EXPECT_EQ(readFile(other), "somebody's") << file;
        EXPECT_FALSE(std::filesystem::is_symlink(log.fileName()));
        EXPECT_NE(readFile(log.fileName()).find("behind"), std::string::npos);
    }
}

// The folder may take no new file, or let nobody rename the files of others.
TEST(SimaLog, IsWrittenOverWhereItsFolderRefusesANewOne) {
    const TemporaryFolder folder;
    SimaLog log;
    log.finished(1);
    log.setFileName(folder.at("a.sim"));
    log.writeAll();
    const std::string whole = readFile(log.fileName());
    const std::string other = folder.write("other.txt", "somebody's");
    chmod(other.c_str(), 0666);
    const auto written = [&] {
        return fenmark::test::asOrdinaryUser([&] {
            try {
                log.writeAll();
            } catch (const LogFailure&) {
                return false;
            }
            return true;
        });
    };
    for (const mode_t rights : {mode_t{0555}, mode_t{01777}}) {
        chmod(folder.path().c_str(), 0777);
        std::ofstream(log.fileName(), std::ios::trunc) << "of the last import, and longer than the one that is written";
        chmod(log.fileName().c_str(), 0666);
        chmod(folder.path().c_str(), rights);
        EXPECT_EQ(written(), 0);
        EXPECT_EQ(readFile(log.fileName()), whole);
        chmod(log.fileName().c_str(), 0444);
        EXPECT_EQ(written(), 1) << "it is not to be written";
    }
    for (const bool isHard : {true, false}) {
        chmod(folder.path().c_str(), 0777);
        std::filesystem::remove(log.fileName());
        if (isHard) {
            std::filesystem::create_hard_link(other, log.fileName());
        } else {
            std::filesystem::create_symlink(other, log.fileName());
        }
        chmod(folder.path().c_str(), 0555);
        EXPECT_EQ(written(), 1);
        EXPECT_EQ(readFile(other), "somebody's") << isHard;
    }
    chmod(folder.path().c_str(), 0755);
}

TEST(SimaLog, IsAValue) {
    SimaLog log;
    log.finished(1);
    SimaLog copy = log;
    copy.finished(2);
    log.finished(3);
    log.finished(4);
    EXPECT_EQ(texts(copy.lines()), (Lines{"00001     読み込み終了", "00002     読み込み終了"}));
    EXPECT_EQ(texts(log.lines()),
              (Lines{"00001     読み込み終了", "00003     読み込み終了", "00004     読み込み終了"}));
    copy.clear();
    EXPECT_EQ(log.lines().size(), 3U);
}

TEST(TextList, HoldsTextsOfAnySize) {
    TextList list;
    std::vector<std::string> expected;
    for (std::size_t i = 0; i < 3000; ++i) {
        expected.emplace_back(i % 7 == 0 ? i * 5 : i % 50, static_cast<char>('a' + i % 26));
    }
    expected.emplace_back(5'000'000, 'x');
    expected.emplace_back();
    for (const std::string& text : expected) {
        list.append(text);
    }
    ASSERT_EQ(list.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(list[i], expected[i]);
    }
    EXPECT_THROW((void)list[expected.size()], std::invalid_argument);
}

TEST(TextList, CopiesThatGoOnPartAndLiteralsStayWhereTheyAre) {
    static constexpr std::string_view kRule = "-----";
    TextList list;
    list.appendLiteral(kRule);
    list.append("one");
    EXPECT_EQ(list[0].data(), kRule.data()) << "not copied";
    TextList copy = list;
    list.appendLiteral(kRule);
    copy.appendLiteral("+++");
    copy.append({"t", "w", "o"});
    EXPECT_EQ(texts(list), (Lines{"-----", "one", "-----"}));
    EXPECT_EQ(texts(copy), (Lines{"-----", "one", "+++", "two"}));
    list.clear();
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(copy.size(), 4U);
}

TEST(BaseNameOf, StandsBetweenTheLastSeparatorAndTheLastPoint) {
    EXPECT_EQ(baseNameOf("C:\\data\\a.b.sim"), "a.b");
    EXPECT_EQ(baseNameOf("a.sim"), "a");
    EXPECT_EQ(baseNameOf("a"), "a");
    EXPECT_EQ(baseNameOf("x.y\\a"), "a");
#ifndef _WIN32
    EXPECT_EQ(baseNameOf("/data/a.sim"), "a");
#endif
}

} // namespace fenmark::sima
