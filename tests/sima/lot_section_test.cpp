// The lot section.
#include "support.h"

#include <gtest/gtest.h>

namespace fenmark::sima {

using test::fullRead;
using test::Lines;
using test::Pass;
using test::preview;
using test::readAfterPoints;

namespace {

const std::string kBegin = "00006 D00 画地データの読み込み開始";

// The process lines of the lot: those between the begin of the points and the end of the reading.
Lines lotLines(const Pass& pass) {
    const Lines all = pass.processLines();
    return Lines(all.begin() + 1, all.end() - 1);
}

} // namespace

TEST(LotSection, TakesItsPointsInTheOrderOfItsRecords) {
    const Pass pass = readAfterPoints({"D00,12,字本町 1-2 ,1,", "B01,3,P3,", "B01,1,,", "B01,2,x,", "B01,3,,", "D99,"});
    ASSERT_EQ(pass.reader.lots.size(), 1U);
    const LotData& lot = pass.reader.lots[0];
    EXPECT_EQ(lot.number, 12);
    EXPECT_EQ(lot.name, "字本町 1-2 ");
    EXPECT_TRUE(lot.isType1);
    ASSERT_EQ(lot.points.size(), 4U);
    EXPECT_EQ(lot.points[0].name, "P3");
    EXPECT_EQ(lot.points[0].z, 5.0);
    EXPECT_EQ(lot.points[1].name, "P1");
    EXPECT_EQ(lot.points[3].name, "P3");
    EXPECT_EQ(pass.errors(), Lines{});
    ASSERT_EQ(pass.sink.lots.size(), 1U);
    EXPECT_EQ(pass.sink.lots[0].points.size(), 4U);
    EXPECT_EQ(lotLines(pass), (Lines{kBegin, "00011 D99 画地データの読み込み終了", "          4点の構成点\n"}));
}

TEST(LotSection, IsOpenUnlessItsKindIsOne) {
    EXPECT_FALSE(fullRead({"D00,1,L,2,", "D99,"}).reader.lots[0].isType1);
    EXPECT_FALSE(fullRead({"D00,1,L,11,", "D99,"}).reader.lots[0].isType1);
}

TEST(LotSection, WithoutPointsIsStoredAndLogged) {
    const Pass pass = readAfterPoints({"D00,1,L,1,", "D99,"});
    EXPECT_EQ(pass.reader.lotCount(), 1);
    EXPECT_EQ(pass.sink.lots.size(), 1U);
    EXPECT_EQ(lotLines(pass).back(), "          0点の構成点\n");
}

TEST(LotSection, PassesOverItsTriangleDataAndSaysSo) {
    const Pass pass =
        readAfterPoints({"D00,1,L,1,", "B01,1,,", "E00,", "E01,1,2,", "anything", "D99,", "E99,", "B01,2,,", "D99,"});
    EXPECT_EQ(pass.errors(), Lines{});
    ASSERT_EQ(pass.reader.lots.size(), 1U);
    EXPECT_EQ(pass.reader.lots[0].points.size(), 2U);
    EXPECT_EQ(lotLines(pass), (Lines{kBegin, "00014 D99 画地データの読み込み終了", "          2点の構成点",
                                     "          三斜データは読み込みません\n"}));
}

// Blanks, zeros, quotes: what takes the long way names the same point.
TEST(LotSection, TakesAPointWhoseRecordIsNotPlain) {
    for (const std::string_view line : {"B01,2,,", "B01,00000000002,P,", "B01,  2  ,P,", "B01,\"2\",\"3\","}) {
        const Pass pass = readAfterPoints({"D00,1,L,1,", line, "D99,"});
        EXPECT_EQ(pass.errors(), Lines{}) << line;
        ASSERT_EQ(pass.reader.lots[0].points.size(), 1U) << line;
        EXPECT_EQ(pass.reader.lots[0].points[0].name, "P2") << line;
    }
}

TEST(LotSection, LeavesOutAPointWhoseRecordIsRefused) {
    const Pass pass = readAfterPoints({"D00,1,L,1,", "B01,1,,", "B01,2", "B01,x,,", "B01,3,,", "D99,"});
    EXPECT_EQ(pass.errorCodes(), (Lines{"ErrX001", "ErrB01-1"}));
    EXPECT_EQ(pass.reader.lots[0].points.size(), 2U);
}

TEST(LotSection, PassesOverCurvesAndSides) {
    const Pass pass = readAfterPoints({"D00,1,L,1,", "B01,1,,", "C01,bad", "C02,", "C03,1,2,", "E99,", "D99,"});
    EXPECT_EQ(pass.errors(), Lines{});
    EXPECT_EQ(pass.reader.lots[0].points.size(), 1U);
    EXPECT_EQ(pass.reader.passedOver.at("not used in a lot: C03"), 1);
    EXPECT_EQ(pass.reader.passedOver.at("not used in a lot: E99"), 1);
}

TEST(LotSection, CountsWhatStandsAmongItsTriangles) {
    const Pass pass =
        readAfterPoints({"D00,1,L,1,", "B01,1,,", "E00,", "E01,1,", "E03,2,", "B01,2,,", "", "Q01,", "E99,", "D99,"});
    EXPECT_EQ(pass.reader.passedOver.size(), 2U);
    EXPECT_EQ(pass.reader.passedOver.at("inside triangle data: B01"), 1);
    EXPECT_EQ(pass.reader.passedOver.at("inside triangle data: Q01"), 1);
    EXPECT_EQ(pass.reader.lots[0].points.size(), 1U);
}

TEST(LotSection, WithAMissingPointIsAbandoned) {
    const Pass pass =
        readAfterPoints({"D00,1,L,1,", "B01,1,,", "B01,9,gone,", "B01,8,,", "B01,x", "D99", "D00,2,M,1,", "D99,"});
    EXPECT_EQ(pass.errors(), Lines{"参照する座標が見つかりません。 | 00008 B01,9,gone,"});
    EXPECT_EQ(pass.reader.errorCount, 1);
    ASSERT_EQ(pass.reader.lots.size(), 1U);
    EXPECT_EQ(pass.reader.lots[0].number, 2);
    EXPECT_EQ(pass.sink.lots.size(), 1U);
    const Lines lines = lotLines(pass);
    EXPECT_EQ(lines[1], "00011 D99 画地データの読み込み終了");
    EXPECT_EQ(lines[2], "ERROR     画地を作成できませんでした\n");
}

TEST(LotSection, StillFiltersLinesAfterItWasAbandoned) {
    const Pass pass = readAfterPoints({"D00,1,L,1,", "B01,9,,", "F00,1,1,R,3,", "D99,"});
    EXPECT_EQ(pass.errorCodes(), (Lines{"参照する座標が見つかりません。", "ErrD001"}));
}

TEST(LotSection, OpensNoTriangleBlockAfterItWasAbandoned) {
    // So the D99 inside the block ends the lot, and what follows stands at top level.
    const Pass pass = readAfterPoints({"D00,1,L,1,", "B01,9,,", "E00,", "E01,1,", "D99,", "E99,", "D99,"});
    EXPECT_EQ(pass.errorCodes(), Lines{"参照する座標が見つかりません。"});
    EXPECT_TRUE(pass.reader.lots.empty());
    EXPECT_EQ(lotLines(pass),
              (Lines{kBegin, "00010 D99 画地データの読み込み終了", "ERROR     画地を作成できませんでした\n"}));
    EXPECT_EQ(pass.reader.passedOver.at("unknown code at top level: E99"), 1);
    EXPECT_EQ(pass.reader.passedOver.at("in a lot with a missing point: E00"), 1);
}

TEST(LotSection, IsKeptAtTheEndOfTheFileEvenIfAbandoned) {
    const Pass pass = readAfterPoints({"D00,1,L,1,", "B01,1,,", "B01,9,,", "B01,2,,"});
    ASSERT_EQ(pass.reader.lots.size(), 1U);
    EXPECT_EQ(pass.reader.lots[0].points.size(), 1U);
    EXPECT_EQ(pass.sink.lots.size(), 1U);
    EXPECT_EQ(lotLines(pass), (Lines{kBegin, "00009 D99 画地データの読み込み終了", "          1点の構成点\n"}));
}

TEST(LotSection, IsKeptAtTheEndOfTheFileInsideItsTriangleData) {
    const Pass pass = readAfterPoints({"D00,1,L,1,", "B01,1,,", "E00,", "D99,"});
    ASSERT_EQ(pass.reader.lots.size(), 1U);
    EXPECT_EQ(lotLines(pass).back(), "          三斜データは読み込みません\n");
}

TEST(LotSection, DoesNotFindAPointOfALaterSection) {
    const Pass pass = fullRead({"D00,1,L,1,", "B01,1,,", "D99,", "A00,", "A01,1,P,1,2,,", "A99,"});
    EXPECT_EQ(pass.errorCodes(), Lines{"参照する座標が見つかりません。"});
    EXPECT_TRUE(pass.reader.lots.empty());
}

TEST(LotSection, GoesByTheNumberOfAPointWhereNamesAreNumbersToo) {
    const Pass pass = readAfterPoints({"D00,1,L,1,", "B01,1,3,", "B01,2,1,", "B01,3,2,", "D99,"});
    ASSERT_EQ(pass.reader.lots.size(), 1U);
    ASSERT_EQ(pass.reader.lots[0].points.size(), 3U);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(pass.reader.lots[0].points[i].name, "P" + std::to_string(i + 1));
    }
}

TEST(LotSection, RaisesForAnOpeningRecordOfFewerThanFourFields) {
    SimaReader reader;
    const test::TemporaryFolder folder;
    const std::string path = folder.write("short.sim", "A00,\r\nA99,\r\nD00,1,L\r\nD99,\r\n");
    EXPECT_THROW(reader.fullRead(path, {}), std::invalid_argument);
    EXPECT_EQ(reader.lineNumber, 3);
    EXPECT_EQ(reader.log.errorCount(), 1);
    // Four fields are too few for the test and enough for the reader.
    const Pass pass = fullRead({"D00,1,L,1", "D99,"});
    EXPECT_EQ(pass.errorCodes(), Lines{"ErrX001"});
    EXPECT_EQ(pass.reader.lotCount(), 1);
}

TEST(LotSection, HoldsMoreThanAThousandPoints) {
    std::string text = "A00,\r\n";
    for (int i = 1; i <= 1500; ++i) {
        text += "A01," + std::to_string(i) + ",P," + std::to_string(i) + ",0,,\r\n";
    }
    text += "A99,\r\nD00,1,L,1,\r\n";
    for (int i = 1500; i >= 1; --i) {
        text += "B01," + std::to_string(i) + ",,\r\n";
    }
    text += "D99,\r\n";
    const Pass pass = fullRead(text);
    ASSERT_EQ(pass.reader.lots.size(), 1U);
    ASSERT_EQ(pass.reader.lots[0].points.size(), 1500U);
    EXPECT_EQ(pass.reader.lots[0].points[0].number, 1500);
    EXPECT_EQ(pass.reader.lots[0].points[1499].number, 1);
}

TEST(LotPreview, CountsLotsThatTheFullPassRefuses) {
    const Pass pass = preview({"D00,1", "B01,9,,", "D99,", "D00,2,L,1,", "E00,", "D99,", "E99,", "D99,", "D00,3,M,1,"});
    EXPECT_EQ(pass.reader.lotCount(), 3);
    EXPECT_TRUE(pass.reader.lots[1].points.empty());
    EXPECT_EQ(pass.reader.lots[1].number, 0);
}

TEST(LotPreview, PartsFromTheFullPassAtATriangleBlockOfAnAbandonedLot) {
    const std::initializer_list<std::string_view> lines = {"D00,1,L,1,", "B01,9,,", "E00,", "D99,",
                                                           "D00,2,M,1,", "E99,",    "D99,"};
    EXPECT_EQ(preview(lines).reader.lotCount(), 1);
    const Pass full = fullRead(lines);
    ASSERT_EQ(full.reader.lotCount(), 1);
    EXPECT_EQ(full.reader.lots[0].number, 2); // the preview took this one for triangle data
}

} // namespace fenmark::sima
