// The coordinate section.
#include "support.h"

#include "host/boundary/mirdan_exception.h"

#include <gtest/gtest.h>

namespace fenmark::sima {

using test::fullRead;
using test::Lines;
using test::Pass;
using test::preview;
using test::readAfterPoints;

namespace {

SimaPoint onePoint(std::string_view line) {
    const Pass pass = fullRead({"A00,", line, "A99,"});
    EXPECT_EQ(pass.reader.points.size(), 1U) << line;
    return pass.reader.points.empty() ? SimaPoint{} : pass.reader.points[0];
}

} // namespace

TEST(CoordinateSection, SwapsTheAxesOnce) {
    const SimaPoint point = onePoint("A01,1,P1,100.5,200.5,,");
    EXPECT_EQ(point.x, 200.5);
    EXPECT_EQ(point.y, 100.5);
    EXPECT_EQ(point.number, 1);
    EXPECT_EQ(point.name, "P1");
}

TEST(CoordinateSection, TellsNoHeightFromAHeightOfZero) {
    const SimaPoint none = onePoint("A01,1,P1,100.5,200.5,,");
    EXPECT_FALSE(none.hasZ);
    EXPECT_EQ(none.z, 0.0);
    const SimaPoint zero = onePoint("A01,1,P1,100.5,200.5,0,");
    EXPECT_TRUE(zero.hasZ);
    EXPECT_EQ(zero.z, 0.0);
    const SimaPoint height = onePoint("A01,1,P1,100.5,200.5,12.3,");
    EXPECT_TRUE(height.hasZ);
    EXPECT_EQ(height.z, 12.3);
}

TEST(CoordinateSection, ReadsRecordsPaddedWithBlanks) {
    const SimaPoint point = onePoint("A01,    1,FK12863             , -39525.623,  60295.494,,");
    EXPECT_EQ(point.number, 1);
    EXPECT_EQ(point.name, "FK12863             ");
    EXPECT_EQ(point.x, 60295.494);
    EXPECT_EQ(point.y, -39525.623);
    EXPECT_FALSE(point.hasZ);
}

TEST(CoordinateSection, TakesTheFifthFieldOfARecordWithoutTrailingCommaForItsHeight) {
    const SimaPoint point = onePoint("A01,1,P,1,2,3");
    EXPECT_TRUE(point.hasZ);
    EXPECT_EQ(point.z, 3.0);
    const SimaPoint ordinary = onePoint("A01,1,P,1,2,");
    EXPECT_FALSE(ordinary.hasZ);
}

// More digits than a number holds exactly, no last comma: what takes the long way is the same point.
TEST(CoordinateSection, ReadsARecordThatIsNotPlainLikeOneThatIs) {
    for (const std::string_view line : {
             "A01,7,P,100.5,200.25,12.5,",
             "A01,7,P,100.5,200.25,12.5",
             "A01,7,P,100.5,200.25,12.5000000000000000000,",
             "A01,7,P,100.5000000000000000000,200.25,12.5,",
             "A01,7,P,100.5,200.2500000000000000000,12.5",
         }) {
        const Pass full = fullRead({"A00,", line, "A99,"});
        const Pass first = preview({"A00,", line, "A99,"});
        for (const Pass* pass : {&full, &first}) {
            ASSERT_EQ(pass->reader.points.size(), 1U) << line;
            const SimaPoint& point = pass->reader.points[0];
            EXPECT_EQ(point.number, 7) << line;
            EXPECT_EQ(point.name, "P") << line;
            EXPECT_EQ(point.x, 200.25) << line;
            EXPECT_EQ(point.y, 100.5) << line;
            EXPECT_EQ(point.z, 12.5) << line;
            EXPECT_TRUE(point.hasZ) << line;
            EXPECT_TRUE(pass->reader.passedOver.empty()) << line;
        }
        EXPECT_EQ(full.errors(), Lines{}) << line;
    }
}

TEST(CoordinateSection, TakesEmptyCoordinatesForZero) {
    const SimaPoint point = onePoint("A01,1,,,,,");
    EXPECT_EQ(point.x, 0.0);
    EXPECT_EQ(point.y, 0.0);
    EXPECT_EQ(point.name, "");
}

TEST(CoordinateSection, StoresNoPointWithoutANumberAndSaysNothing) {
    const Pass pass = fullRead({"A00,", "A01,,P,1,2,,", "A01,   ,P,1,2,,", "A99,"});
    EXPECT_TRUE(pass.reader.points.empty());
    EXPECT_EQ(pass.errors(), Lines{});
    EXPECT_EQ(pass.reader.passedOver.at("point without a number: A01"), 2);
}

TEST(CoordinateSection, StoresQuotedBlanksAsPointZero) {
    const SimaPoint point = onePoint("A01,\"  \",P,1,2,,");
    EXPECT_EQ(point.number, 0);
}

TEST(CoordinateSection, ConvertsTheRawFieldThatTheTestCleaned) {
    // The ideographic space passes the test, and stops the conversion.
    const Pass pass = fullRead({"A00,", "A01,1,P,　140.0,150.0　,,", "A99,"});
    EXPECT_EQ(pass.errors(), Lines{});
    ASSERT_EQ(pass.reader.points.size(), 1U);
    EXPECT_EQ(pass.reader.points[0].y, 0.0);
    EXPECT_EQ(pass.reader.points[0].x, 150.0);
}

TEST(CoordinateSection, ReadsOddSignsAsTheConversionDoes) {
    const Pass pass = fullRead({"A00,", "A01,1,P,-1-2,--5,-,", "A99,"});
    EXPECT_EQ(pass.errors(), Lines{});
    ASSERT_EQ(pass.reader.points.size(), 1U);
    EXPECT_EQ(pass.reader.points[0].y, -1.0);
    EXPECT_EQ(pass.reader.points[0].x, 0.0);
    EXPECT_TRUE(pass.reader.points[0].hasZ);
}

TEST(CoordinateSection, KeepsTheFirstOfTwoPointsWithOneNumber) {
    const Pass pass = fullRead({"A00,", "A01,7,P,1,2,,", "A01,7,Q,3,4,,", "A99,"});
    EXPECT_EQ(pass.errorCodes(), Lines{"ErrA002"});
    ASSERT_EQ(pass.reader.points.size(), 1U);
    EXPECT_EQ(pass.reader.points[0].name, "P");
}

TEST(CoordinateSection, ComparesNumbersAfterTheyWereHeldTo32Bits) {
    const Pass pass = fullRead({"A00,", "A01,2147483647,P,1,2,,", "A01,2147483648,Q,3,4,,", "A01,9999999999,R,3,4,,",
                                "A01,000002147483646,S,3,4,,", "A99,"});
    EXPECT_EQ(pass.errorCodes(), (Lines{"ErrA002", "ErrA002"}));
    EXPECT_EQ(pass.reader.points.size(), 2U);
}

TEST(CoordinateSection, TakesAnEmptyNumberForADuplicateOfPointZero) {
    const Pass pass = fullRead({"A00,", "A01,0,P,1,2,,", "A01,,Q,1,2,,", "A99,"});
    EXPECT_EQ(pass.errorCodes(), Lines{"ErrA002"});
}

TEST(CoordinateSection, DoesNotTakeARefusedRecordForADuplicate) {
    const Pass pass = fullRead({"A00,", "A01,7,P,x,2,,", "A01,7,Q,3,4,,", "A99,"});
    EXPECT_EQ(pass.errorCodes(), Lines{"ErrA01-2"});
    ASSERT_EQ(pass.reader.points.size(), 1U);
    EXPECT_EQ(pass.reader.points[0].name, "Q");
}

TEST(CoordinateSection, KeepsOneNumberOfTwoSectionsTwiceAndFindsTheFirst) {
    const Pass pass = fullRead({"A00,", "A01,7,P,1,2,,", "A99,", "A00,", "A01,7,Q,3,4,,", "A01,7,R,5,6,,", "A99,",
                                "D00,1,L,1,", "B01,7,,", "D99,"});
    EXPECT_EQ(pass.errorCodes(), Lines{"ErrA002"});
    EXPECT_EQ(pass.reader.points.size(), 2U);
    ASSERT_EQ(pass.reader.lots.size(), 1U);
    EXPECT_EQ(pass.reader.lots[0].points[0].name, "P");
    EXPECT_EQ(pass.reader.findPoint(7).name, "P");
}

TEST(CoordinateSection, HandsEachSectionOutByItself) {
    const Pass pass = fullRead({"A00,", "A01,1,P,1,2,,", "A99,", "A00,", "A01,2,Q,3,4,,", "A01,3,R,5,6,,", "A99,"});
    ASSERT_EQ(pass.sink.pointSections.size(), 2U);
    ASSERT_EQ(pass.sink.pointSections[0].size(), 1U);
    ASSERT_EQ(pass.sink.pointSections[1].size(), 2U);
    EXPECT_EQ(pass.sink.pointSections[1][0].name, "Q");
}

TEST(CoordinateSection, HandsOutASectionWithoutPointsToo) {
    const Pass pass = fullRead({"A00,", "A99,"});
    ASSERT_EQ(pass.sink.pointSections.size(), 1U);
    EXPECT_TRUE(pass.sink.pointSections[0].empty());
    EXPECT_TRUE(pass.reader.points.empty());
}

TEST(CoordinateSection, IsClosedByTheEndOfTheFile) {
    const Pass pass = fullRead({"A00,", "A01,1,P,1,2,,"});
    EXPECT_EQ(pass.errors(), Lines{});
    EXPECT_EQ(pass.sink.pointSections.size(), 1U);
    EXPECT_EQ(pass.reader.points.size(), 1U);
    EXPECT_EQ(pass.processLines(), (Lines{"00001 A00 座標データの読み込み開始", "00002     読み込み終了"}));
}

TEST(CoordinateSection, AllowsCommentsInside) {
    const Pass pass = fullRead({"A00,", "Z00,note,", "A01,1,P,1,2,,", "A99,"});
    EXPECT_EQ(pass.errors(), Lines{});
    EXPECT_EQ(pass.reader.points.size(), 1U);
}

TEST(CoordinateSection, ThatIsNotClosedRefusesTheRestOfTheFileLineByLine) {
    const Pass pass = fullRead({"A00,", "A01,1,P,1,2,,", "D00,1,L,1,", "B01,1,P,", "D99,"});
    EXPECT_EQ(pass.errorCodes(), (Lines{"ErrA001", "ErrA001", "ErrA001"}));
    EXPECT_TRUE(pass.reader.lots.empty());
}

TEST(CoordinateSection, EndsTwiceWithoutHarm) {
    const Pass pass = fullRead({"A00,", "A01,1,P,1,2,,", "A99,", "A99,"});
    EXPECT_EQ(pass.errors(), Lines{});
    EXPECT_EQ(pass.reader.passedOver.at("unknown code at top level: A99"), 1);
}

TEST(CoordinateSection, CountsItsComments) {
    const Pass pass = fullRead({"A00,", "Z00,one,", "A01,1,a,1,2,,", "Z00,two", "A99,"});
    EXPECT_EQ(pass.errors(), Lines{});
    EXPECT_EQ(pass.reader.points.size(), 1U);
    EXPECT_EQ(pass.reader.passedOver.size(), 1U);
    EXPECT_EQ(pass.reader.passedOver.at("comment: Z00"), 2);
}

TEST(CoordinateSection, CountsDuplicatesInThePreview) {
    const Pass pass = preview({"A00,", "A01,7,P,1,2,,", "A01,7,Q,x,4,,", "A01,,R,3,4,,", "A01,8", "B01,", "A99,"});
    ASSERT_EQ(pass.reader.points.size(), 3U);
    EXPECT_EQ(pass.reader.points[2].number, 8); // a short record is filled up
    EXPECT_EQ(pass.reader.findPoint(7).name, "P");
}

TEST(FindPoint, RaisesTheHostsExceptionWithTheMessageOfTheMissingPoint) {
    const Pass pass = readAfterPoints({});
    EXPECT_EQ(pass.reader.findPoint(3).z, 5.0);
    try {
        (void)pass.reader.findPoint(4);
        FAIL() << "nothing was raised";
    } catch (host::MirdanException* error) {
        EXPECT_EQ(error->message(), "参照する座標が見つかりません。");
        delete error;
    }
}

} // namespace fenmark::sima
