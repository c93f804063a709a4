// The longitudinal section.
#include "support.h"

#include <gtest/gtest.h>

namespace fenmark::sima {

using test::fullRead;
using test::Lines;
using test::Pass;
using test::preview;

namespace {

Lines sectionLines(const Pass& pass) {
    const Lines all = pass.processLines();
    return Lines(all.begin(), all.end() - 1);
}

// A pass with an alignment chosen beforehand.
Pass readWithAlignment(std::initializer_list<std::string_view> lines) {
    Pass pass;
    const test::TemporaryFolder folder;
    const std::string path = folder.write("h.sim", test::cp932(test::joined(lines)));
    test::tickAll(pass.reader);
    pass.reader.alignmentName = "中心";
    ReadContext context;
    context.sink = &pass.sink;
    pass.result = pass.reader.fullRead(path, context);
    return pass;
}

} // namespace

TEST(LongitudinalSection, TakesItsRecords) {
    const Pass pass =
        readWithAlignment({"H00,3, 本線 ,", "H01, No.1 ,　20.5　,100.25, 101.5 ,1,", "H01,No.2,,,,2,", "H99,"});
    EXPECT_EQ(pass.errors(), Lines{});
    ASSERT_EQ(pass.reader.hSeries.size(), 1U);
    const HSeriesData& section = pass.reader.hSeries[0];
    EXPECT_EQ(section.routeNumber, 3);
    EXPECT_EQ(section.routeName, "本線");
    EXPECT_EQ(section.firstLine, 1);
    EXPECT_EQ(section.lastLine, 4);
    EXPECT_TRUE(section.opened);
    EXPECT_TRUE(section.closed);
    EXPECT_FALSE(section.routeFound);
    EXPECT_EQ(section.label, "");
    ASSERT_EQ(section.verticals.size(), 2U);
    EXPECT_EQ(section.verticals[0].stationName, "No.1");
    EXPECT_EQ(section.verticals[0].station, 20.5);
    EXPECT_EQ(section.verticals[0].groundHeight, 100.25);
    EXPECT_EQ(section.verticals[0].pileHeadHeight, 101.5);
    EXPECT_EQ(section.verticals[0].sourceText, "H01, No.1 ,　20.5　,100.25, 101.5 ,1,");
    EXPECT_EQ(section.verticals[1].groundHeight, 0.0);
    EXPECT_EQ(pass.reader.verticals.size(), 2U);
    EXPECT_EQ(pass.reader.longitudinalPointCount(), 2);
    ASSERT_EQ(pass.sink.longitudinals.size(), 1U);
    EXPECT_EQ(pass.sink.longitudinals[0].verticals.size(), 2U);
    EXPECT_TRUE(pass.sink.longitudinals[0].closed);
    EXPECT_EQ(sectionLines(pass),
              (Lines{"00001 H00 縦断成果データの読み込み開始", "          中心線”中心”の縦断成果データ",
                     "00004 H99 縦断成果データの読み込み終了", "          2点のポイント\n"}));
}

TEST(LongitudinalSection, DropsRefusedRecords) {
    const Pass pass =
        readWithAlignment({"H00,3,R,", "H01,No.1,a,1,2,1,", "H01,No.2,0", "H01", "H01,No.3,1,2,3,1,", "H99,"});
    EXPECT_EQ(pass.errorCodes(), (Lines{"ErrH01-1", "ErrX001", "ErrX001"}));
    ASSERT_EQ(pass.reader.hSeries[0].verticals.size(), 1U);
    EXPECT_EQ(pass.reader.hSeries[0].verticals[0].stationName, "No.3");
}

TEST(LongitudinalSection, CountsTheRecordsOfAllSectionsSoFar) {
    const Pass pass =
        readWithAlignment({"H00,1,R,", "H01,a,0,0,0,1,", "H01,b,0,0,0,1,", "H01,c,0,0,0,1,", "H99,", "H00,2,S,",
                           "H01,a,0,0,0,1,", "H01,b,0,0,0,1,", "H01,c,0,0,0,1,", "H01,d,0,0,0,1,", "H99,"});
    const Lines lines = sectionLines(pass);
    EXPECT_EQ(lines[3], "          3点のポイント\n");
    EXPECT_EQ(lines[7], "          7点のポイント\n");
}

TEST(LongitudinalSection, WithoutAnAlignmentNameIsKeptAndLoggedAsFailed) {
    const Pass pass = fullRead({"H00,1,R,", "H01,a,0,0,0,1,", "H99,"});
    EXPECT_EQ(pass.reader.hSeries.size(), 1U);
    EXPECT_EQ(pass.sink.longitudinals.size(), 1U);
    EXPECT_EQ(pass.errors(), Lines{}) << "the lines beginning with ERROR are no error blocks";
    EXPECT_EQ(sectionLines(pass),
              (Lines{"00001 H00 縦断成果データの読み込み開始", "ERROR     中心線が指定されませんでした",
                     "00003 H99 縦断成果データの読み込み終了", "          0点のポイント",
                     "ERROR     縦断成果をポイントに変換できませんでした\n"}));
}

TEST(LongitudinalSection, CutOffLogsItsEndWithTheLastLineAndIsLost) {
    const Pass pass = readWithAlignment({"H00,1,R,", "H01,a,0,0,0,1,"});
    EXPECT_TRUE(pass.reader.hSeries.empty());
    EXPECT_TRUE(pass.sink.longitudinals.empty());
    EXPECT_EQ(pass.reader.verticals.size(), 1U);
    EXPECT_EQ(pass.processLines(),
              (Lines{"00001 H00 縦断成果データの読み込み開始", "          中心線”中心”の縦断成果データ",
                     "00002 H99 縦断成果データの読み込み終了", "          1点のポイント\n", "00002     読み込み終了"}));
    EXPECT_EQ(pass.reader.passedOver.at("result of a section without its end record: H01"), 1);
}

TEST(LongitudinalSection, RaisesForAnOpeningRecordOfFewerThanThreeFields) {
    const test::TemporaryFolder folder;
    SimaReader reader;
    EXPECT_THROW(reader.fullRead(folder.write("h.sim", "H00,1\r\nH99,\r\n"), {}), std::invalid_argument);
    EXPECT_EQ(reader.lineNumber, 1);
    EXPECT_EQ(fullRead({"H00,1,R", "H99,"}).reader.hSeries.size(), 1U);
}

TEST(LongitudinalPreview, CountsRecordsWithoutLookingAtThem) {
    const Pass pass = preview({"F00,4,1,R,2,", "F99,", "H00,4,R,", "H01", "H01,x", "XXX,", "H99", "H00,5,S,", "H01,",
                               "H99,", "H00,4,R,", "H99,"});
    ASSERT_EQ(pass.reader.hSeries.size(), 3U);
    EXPECT_EQ(pass.reader.longitudinalPointCount(), 3);
    EXPECT_EQ(pass.reader.verticals.size(), 3U);
    EXPECT_EQ(pass.reader.hSeries[0].routeNumber, 4);
    EXPECT_TRUE(pass.reader.hSeries[0].routeFound);
    EXPECT_EQ(pass.reader.hSeries[0].routeName, "");
    EXPECT_FALSE(pass.reader.hSeries[0].opened);
    EXPECT_EQ(pass.reader.hSeries[0].firstLine, 0);
    EXPECT_FALSE(pass.reader.hSeries[1].routeFound);
    EXPECT_FALSE(pass.reader.hSeries[2].routeFound) << "a section without records finds no route";
    EXPECT_EQ(pass.reader.hSeries[2].routeNumber, 0);
    EXPECT_FALSE(pass.reader.allLongitudinalRoutesFound());
    EXPECT_TRUE(pass.reader.usedRouteType2);
    EXPECT_FALSE(pass.reader.usedRouteType3);
}

TEST(LongitudinalPreview, NeedsTheNumberOfTheRouteAndNoMore) {
    const Pass pass = preview({"F00,4,1,R,2,", "F99,", "H00,4", "H01,", "H99,"});
    ASSERT_EQ(pass.reader.hSeries.size(), 1U);
    EXPECT_EQ(pass.reader.hSeries[0].routeNumber, 4);
    EXPECT_TRUE(pass.reader.hSeries[0].routeFound);
}

TEST(LongitudinalPreview, DoesNotStoreASectionThatIsCutOff) {
    const Pass pass = preview({"H00,4,R,", "H01,", "H01,"});
    EXPECT_TRUE(pass.reader.hSeries.empty());
    EXPECT_EQ(pass.reader.verticals.size(), 2U);
}

TEST(LongitudinalPreview, TakesAFailingRouteForFound) {
    const std::initializer_list<std::string_view> lines = {"F00,4,1,R,2,", "B01,9,,",        "F99,",
                                                           "H00,4,R,",     "H01,a,0,0,0,1,", "H99,"};
    EXPECT_TRUE(preview(lines).reader.allLongitudinalRoutesFound());
    EXPECT_FALSE(fullRead(lines).reader.allLongitudinalRoutesFound());
}

} // namespace fenmark::sima
