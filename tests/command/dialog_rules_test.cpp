// The rules that the dialogs and the command line share.
#include "command/dialog_rules.h"
#include "command/dialogs.h"
#include "output/leading_clothoid.h"
#include "sima/text/short_record.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

namespace fenmark::command {
namespace {

using sima::ImportKind;

TEST(TreeRows, StandInTheDialogsOrder) {
    const std::array<std::size_t, 11> expected{0, 1, 4, 5, 6, 7, 8, 9, 10, 2, 3};
    for (std::size_t row = 0; row < expected.size(); ++row) {
        EXPECT_EQ(static_cast<std::size_t>(kTreeRows[row]), expected[row]) << row;
    }
}

TEST(TreeRows, ShowTheCountBehindTheLabelWithItsOwnBlank) {
    sima::SimaImportOptions options;
    options.counts[0] = 12;
    EXPECT_EQ(treeRowText(options, ImportKind::Coordinates), "座標データ  [12]");
    EXPECT_EQ(treeRowText(options, ImportKind::Lots), "画地データ ");
    options.counts[9] = 1;
    EXPECT_EQ(treeRowText(options, ImportKind::Continuous), "路線成果-連続線(直線のみ)　 [1]");
}

TEST(Counting, SetsFlagsWhereThereIsSomethingAndLeavesTheOthers) {
    test::TemporaryFolder folder;
    const std::string path = folder.write("a.sim", "A00,\nA01,1,P,1,2,,\nA99,\nF00,1,1,CL,3,\nF99,\n"
                                                   "H00,1,CL,\nH01,a,1,2,3,1,\nH01,b,1,2,3,1,\nH99,\n"
                                                   "I00,1,CL,\nI01,a,1,2,3,\nI99,\n");
    sima::SimaReader reader;
    ASSERT_EQ(reader.previewScan(path, {}), 0);
    sima::SimaImportOptions options;
    options.flags[1] = true;
    options.counts[1] = 5;
    countFromPreview(reader, options);
    EXPECT_EQ(options.counts[0], 1);
    EXPECT_EQ(options.counts[1], 0);
    EXPECT_EQ(options.counts[2], 2);
    EXPECT_EQ(options.counts[3], 1);
    EXPECT_EQ(options.counts[6], 1);
    EXPECT_TRUE(options.flags[0]);
    EXPECT_TRUE(options.flags[1]) << "a count of 0 leaves the flag as it stood";
    EXPECT_TRUE(options.flags[2]);
    EXPECT_TRUE(options.flags[3]);
    EXPECT_FALSE(options.flags[4]);
    EXPECT_TRUE(options.flags[6]);
}

TEST(ImportButton, NeedsSomethingCountedAndSomethingTicked) {
    sima::SimaImportOptions options;
    EXPECT_FALSE(canImport(options));
    options.flags[3] = true;
    EXPECT_FALSE(canImport(options));
    options.counts[0] = 1;
    EXPECT_TRUE(canImport(options));
    options.flags[3] = false;
    EXPECT_FALSE(canImport(options));
}

class AlignmentQuestion : public ::testing::TestWithParam<int> {};

TEST_P(AlignmentQuestion, IsAskedWhenAReferredRouteTypeIsNotTicked) {
    sima::SimaReader reader;
    const int type = GetParam();
    (type == 2 ? reader.usedRouteType2 : type == 3 ? reader.usedRouteType3 : reader.usedRouteType7) = true;
    const std::size_t kind = static_cast<std::size_t>(3 + type);
    for (const std::size_t result : {2U, 3U}) {
        sima::SimaImportOptions options;
        options.flags[result] = true;
        EXPECT_TRUE(mustChooseAlignment(reader, options, false));
        options.flags[kind] = true;
        EXPECT_FALSE(mustChooseAlignment(reader, options, false));
        EXPECT_TRUE(mustChooseAlignment(reader, options, true)) << "otherwise the value is kept";
        options.flags[kind] = false;
        options.flags[result] = false;
        EXPECT_FALSE(mustChooseAlignment(reader, options, false)) << "no result is ticked";
    }
}

INSTANTIATE_TEST_SUITE_P(RouteTypes, AlignmentQuestion, ::testing::Values(2, 3, 7));

TEST(FileTest, TakesTheExtensionInAnyCaseAndNeedsTheFile) {
    test::TemporaryFolder folder;
    EXPECT_TRUE(isSimFile(folder.write("a.sim", "")));
    EXPECT_TRUE(isSimFile(folder.write("B.SIM", "")));
    EXPECT_TRUE(isSimFile(folder.write("c.SiM", "")));
    EXPECT_FALSE(isSimFile(folder.write("a.sima", "")));
    EXPECT_FALSE(isSimFile(folder.write("a.txt", "")));
    EXPECT_FALSE(isSimFile(folder.write("sim", "")));
    EXPECT_FALSE(isSimFile(folder.at("missing.sim")));
    EXPECT_FALSE(isSimFile(""));
}

TEST(FileTest, RefusesPathsTooShortForAnExtension) {
    test::TemporaryFolder folder;
    const std::filesystem::path before = std::filesystem::current_path();
    for (const char* name : {"sim", "im", "a", "SIM"}) {
        folder.write(name, "");
    }
    folder.write(".sim", "");
    std::filesystem::current_path(folder.path());
    for (const char* name : {"sim", "im", "a", "SIM"}) {
        EXPECT_FALSE(isSimFile(name)) << name;
    }
    EXPECT_TRUE(isSimFile(".sim"));
    std::filesystem::current_path(before);
}

struct ShiftCase {
    const char* text;
    bool passes;
    double metres;
};

class ShiftDistance : public ::testing::TestWithParam<ShiftCase> {};

TEST_P(ShiftDistance, IsTakenOrRefused) {
    double metres = 0.0;
    EXPECT_EQ(parseShiftDistance(GetParam().text, metres), GetParam().passes) << '"' << GetParam().text << '"';
    if (GetParam().passes) {
        EXPECT_EQ(metres, GetParam().metres);
    }
}

INSTANTIATE_TEST_SUITE_P(Texts, ShiftDistance,
                         ::testing::Values(ShiftCase{"1.5", true, 1.5}, ShiftCase{" 1.5 ", true, 1.5},
                                           ShiftCase{"5.", true, 5.0}, ShiftCase{".25", true, 0.25},
                                           ShiftCase{"0.009", true, 0.009}, ShiftCase{"+1", false, 0},
                                           ShiftCase{"1e3", false, 0}, ShiftCase{"-1", false, 0},
                                           ShiftCase{"1-2", false, 0}, ShiftCase{"1.2.3", false, 0},
                                           ShiftCase{".", false, 0}, ShiftCase{"", false, 0}, ShiftCase{"0", false, 0},
                                           ShiftCase{"0.0", false, 0}, ShiftCase{"1m", false, 0}));

TEST(RefusedShiftDistance, IsGivenOutWhereItsCharactersPass) {
    const struct {
        const char* text;
        double metres;
    } cases[] = {{"-1", -1.0}, {"-0.009", -0.009}, {"0-", 0.0},     {"--1", 0.0}, {"-", 0.0},
                 {"", 0.0},    {"1-2", 7.0},       {"0.009-", 7.0}, {"-1m", 7.0}, {"-1.2.3", 7.0}};
    for (const auto& expected : cases) {
        double metres = 7.0;
        EXPECT_FALSE(parseShiftDistance(expected.text, metres)) << '"' << expected.text << '"';
        EXPECT_EQ(metres, expected.metres) << '"' << expected.text << '"';
    }
}

TEST(BrokenOffReason, IsWhatTheExceptionSaysOfItself) {
    EXPECT_EQ(brokenOffReason(output::LeadingClothoid()),
              "the route begins with a clothoid, and a clothoid needs an element before it");
    EXPECT_EQ(brokenOffReason(sima::ShortRecord()), "the record is too short for the fields that its section takes");
    EXPECT_EQ(brokenOffReason(std::invalid_argument("array index out of range")), "array index out of range")
        << "no other look-up is taken for a leading clothoid";
    EXPECT_EQ(brokenOffReason(std::bad_alloc()), "out of memory");
}

TEST(BrokenOffReason, StandsBehindFileAndLine) {
    sima::SimaReader reader;
    reader.filePath = "/survey/a.sim";
    reader.lineNumber = 12;
    EXPECT_EQ(brokenOffText(reader, std::bad_alloc()), "/survey/a.sim:12: out of memory");
}

TEST(FileTest, AFileThatIsNotThereHasNoTimeOfChange) {
    const test::TemporaryFolder folder;
    EXPECT_FALSE(modificationTime(folder.at("none.sim")));
    const std::string path = folder.write("a.sim", "");
    EXPECT_TRUE(modificationTime(path));
    EXPECT_EQ(modificationTime(path), modificationTime(path)) << "looking changes nothing";
}

TEST(ResultLines, OfAnImportThatMadeNothingIsOneLine) {
    EXPECT_EQ(resultLines({}), std::vector<std::string>{"エラー無し"});
}

TEST(ResultLines, StandInOrder) {
    ImportResult result;
    result.errorCount = 3;
    result.coordinatePoints = 10;
    result.lots = 4;
    result.alignments = 2;
    result.alignmentNames = {"甲", "乙"};
    result.polylines = 99;
    result.routesCreated = {1, 2, 3, 4, 5, 6, 7};
    result.longitudinalPoints = 8;
    result.crossSectionPoints = 9;
    EXPECT_EQ(resultLines(result),
              (std::vector<std::string>{
                  "3個のエラー", "座標データから10個のポイントを作成", "画地データから4個のポリラインを作成",
                  "平面線形【甲】を作成", "平面線形【乙】を作成", "路線成果-IP線から1個のポリラインを作成",
                  "路線成果-幅杭線左から4個のポリラインを作成", "路線成果-幅杭線右から5個のポリラインを作成",
                  "路線成果-連続線（直線のみ）から6個のポリラインを作成", "縦断成果から8個のポイントを作成",
                  "横断成果から9個のポイントを作成"}));
}

TEST(ResultLines, NameEachCountOfOne) {
    ImportResult result;
    result.errorCount = result.coordinatePoints = result.lots = result.alignments = 1;
    result.alignmentNames = {"甲"};
    result.routesCreated = {1, 1, 1, 1, 1, 1, 1};
    result.longitudinalPoints = result.crossSectionPoints = 1;
    EXPECT_EQ(resultLines(result),
              (std::vector<std::string>{
                  "1個のエラー", "座標データから1個のポイントを作成", "画地データから1個のポリラインを作成",
                  "平面線形【甲】を作成", "路線成果-IP線から1個のポリラインを作成",
                  "路線成果-幅杭線左から1個のポリラインを作成", "路線成果-幅杭線右から1個のポリラインを作成",
                  "路線成果-連続線（直線のみ）から1個のポリラインを作成", "縦断成果から1個のポイントを作成",
                  "横断成果から1個のポイントを作成"}));
}

TEST(ResultLines, NameNoAlignmentWhenNoneWasCounted) {
    ImportResult result;
    result.alignmentNames = {"甲"};
    EXPECT_EQ(resultLines(result), std::vector<std::string>{"エラー無し"});
}

} // namespace
} // namespace fenmark::command
