// The cross-section section.
#include "support.h"

#include <gtest/gtest.h>

namespace fenmark::sima {

using test::fullRead;
using test::Lines;
using test::Pass;
using test::preview;

namespace {

Pass readWithAlignment(std::initializer_list<std::string_view> lines) {
    Pass pass;
    const test::TemporaryFolder folder;
    const std::string path = folder.write("i.sim", test::cp932(test::joined(lines)));
    test::tickAll(pass.reader);
    pass.reader.alignmentName = "中心";
    ReadContext context;
    context.sink = &pass.sink;
    pass.result = pass.reader.fullRead(path, context);
    return pass;
}

} // namespace

TEST(CrossSection, TakesItsRecords) {
    const Pass pass = readWithAlignment({"I00,3, 本線 ,", "I01, No.1 ,　20.5,100.25,101.5,",
                                         "I02, 左杭 ,-5.0,　99.5　,", "I02,,0,100,", "I02,右,5.0,,", "I99,"});
    EXPECT_EQ(pass.errors(), Lines{});
    ASSERT_EQ(pass.reader.intersections.size(), 1U);
    const IntersectionData& section = pass.reader.intersections[0];
    EXPECT_EQ(section.routeNumber, 3);
    EXPECT_EQ(section.routeName, "本線");
    EXPECT_FALSE(section.routeFound);
    ASSERT_EQ(section.subEntities.size(), 1U);
    const IntersectionData::SubEntity& sub = section.subEntities[0];
    EXPECT_EQ(sub.sectionName, "No.1");
    EXPECT_EQ(sub.station, 20.5);
    EXPECT_EQ(sub.groundHeight, 100.25);
    EXPECT_EQ(sub.pileHeadHeight, 101.5);
    EXPECT_EQ(sub.sourceLine, 2);
    EXPECT_EQ(sub.sourceText, "I01, No.1 ,　20.5,100.25,101.5,");
    EXPECT_EQ(sub.pointNames, (Array<std::string>{" 左杭 ", "", "右"}));
    EXPECT_EQ(sub.distances, (Array<double>{-5.0, 0.0, 5.0}));
    EXPECT_EQ(sub.heights, (Array<double>{99.5, 100.0, 0.0}));
    EXPECT_EQ(pass.reader.crossSectionCount(), 1);
    EXPECT_EQ(pass.sink.crossSections.size(), 1U);
    EXPECT_EQ(pass.processLines(),
              (Lines{"00001 I00 横断成果データの読み込み開始", "          中心線”中心”の横断成果データ",
                     "00002 I01 断面 No.1 データを処理", "          3個のポイント",
                     "00006 I99 横断成果データの読み込み終了", "          3点のポイント\n", "00006     読み込み終了"}));
}

TEST(CrossSection, CountsThePointOnTheCentreLineWhetherTheFileHasItOrNot) {
    const auto points = [](std::initializer_list<double> distances) {
        IntersectionData::SubEntity sub;
        sub.distances = distances;
        return pointsOfCrossSection(sub);
    };
    EXPECT_EQ(points({-5, 0, 5}), 3);
    EXPECT_EQ(points({-5, 5}), 3);
    EXPECT_EQ(points({}), 1);
    EXPECT_EQ(points({-0.0}), 1);
    EXPECT_EQ(points({0, 0}), 2);
}

TEST(CrossSection, LogsEachCrossSectionWhenTheNextOneBegins) {
    const Pass pass =
        readWithAlignment({"I00,3,R,", "I01,a,0,1,2,", "I01,b,10,1,2,", "I02,x,1,2,", "I02,y,2,2,", "I99,"});
    const Lines lines = pass.processLines();
    EXPECT_EQ(lines[2], "00002 I01 断面 a データを処理");
    EXPECT_EQ(lines[3], "          1個のポイント");
    EXPECT_EQ(lines[4], "00003 I01 断面 b データを処理");
    EXPECT_EQ(lines[5], "          3個のポイント");
    EXPECT_EQ(lines[7], "          4点のポイント\n");
}

TEST(CrossSection, UsesRefusedRecordsAsFarAsTheyConvert) {
    const Pass pass = readWithAlignment({"I00,3,R,", "I01,a,10x,1,2,", "I02,p,abc,5.5,", "I99,"});
    EXPECT_EQ(pass.errorCodes(), (Lines{"ErrI01-1", "ErrI02-1"}));
    const auto& sub = pass.reader.intersections[0].subEntities[0];
    EXPECT_EQ(sub.station, 10.0);
    EXPECT_EQ(sub.distances, Array<double>{0.0}) << "a bad distance counts as a point on the centre line";
    EXPECT_TRUE(sub.hasCentrePoint());
}

TEST(CrossSection, DropsOffsetPointsBeforeTheFirstCrossSection) {
    const Pass pass = readWithAlignment({"I00,3,R,", "I02,p", "I02,p,1,2,", "I01,a,0,1,2,", "I99,"});
    EXPECT_EQ(pass.errorCodes(), Lines{"ErrX001"});
    EXPECT_TRUE(pass.reader.intersections[0].subEntities[0].distances.empty());
    EXPECT_EQ(pass.reader.passedOver.at("before the first cross section: I02"), 2);
}

TEST(CrossSection, CutOffIsLostAndItsSectionsAreCounted) {
    const Pass pass = readWithAlignment({"I00,3,R,", "I01,a,0,1,2,", "I02,p,1,2,", "I01,b,5,1,2,"});
    EXPECT_TRUE(pass.reader.intersections.empty());
    EXPECT_TRUE(pass.sink.crossSections.empty());
    EXPECT_EQ(pass.reader.passedOver.at("result of a section without its end record: I01"), 2);
    EXPECT_EQ(pass.reader.passedOver.size(), 1U);
}

TEST(CrossSection, RaisesForRecordsThatAreTooShort) {
    const test::TemporaryFolder folder;
    const auto lineOfException = [&folder](std::initializer_list<std::string_view> lines) {
        SimaReader reader;
        EXPECT_THROW(reader.fullRead(folder.write("i.sim", test::joined(lines)), {}), std::invalid_argument);
        return reader.lineNumber;
    };
    EXPECT_EQ(lineOfException({"I00,1", "I99,"}), 1);
    EXPECT_EQ(lineOfException({"I00,1,R,", "I01,a,0,1", "I99,"}), 2);
    EXPECT_EQ(lineOfException({"I00,1,R,", "I01,a,0,1,2,", "I02,p,1", "I99,"}), 3);
}

TEST(CrossSection, WithoutAnAlignmentNameKeepsItsTotal) {
    const Pass pass = fullRead({"I00,3,R,", "I01,a,0,1,2,", "I99,"});
    EXPECT_EQ(pass.reader.intersections.size(), 1U);
    EXPECT_EQ(pass.sink.crossSections.size(), 1U);
    const Lines lines = pass.processLines();
    EXPECT_EQ(lines[1], "ERROR     中心線が指定されませんでした");
    EXPECT_EQ(lines[5], "          1点のポイント");
    EXPECT_EQ(lines[6], "ERROR     横断成果をポイントに変換できませんでした\n");
    EXPECT_EQ(pass.errors(), Lines{});
}

TEST(CrossSection, CutOffIsLostAndItsLastCrossSectionNotCounted) {
    const Pass pass = readWithAlignment({"I00,3,R,", "I01,a,0,1,2,", "I02,x,1,1,", "I01,b,5,1,2,", "I02,x,1,1,"});
    EXPECT_TRUE(pass.reader.intersections.empty());
    EXPECT_TRUE(pass.sink.crossSections.empty());
    const Lines lines = pass.processLines();
    EXPECT_EQ(lines[lines.size() - 3], "00005 I99 横断成果データの読み込み終了");
    EXPECT_EQ(lines[lines.size() - 2], "          2点のポイント\n");
}

TEST(CrossSection, ReportsItsEndRecordBehindTheLastCrossSection) {
    const Pass pass = readWithAlignment({"I00,3,R,", "I01,a,0,1,2,", "I99"});
    EXPECT_EQ(pass.errorCodes(), Lines{"ErrX001"});
    EXPECT_EQ(pass.reader.intersections.size(), 1U);
}

TEST(CrossSection, DoesNotTakeAnIdeographicSpaceForABlankInNames) {
    const Pass pass = readWithAlignment({"I00,3,　R　,", "I01,　a　,0,1,2,", "I99,"});
    EXPECT_EQ(pass.reader.intersections[0].routeName, "　R　");
    EXPECT_EQ(pass.reader.intersections[0].subEntities[0].sectionName, "　a　");
}

TEST(CrossSectionPreview, CountsCrossSectionsWithoutLookingAtThem) {
    const Pass pass = preview({"F00,4,1,R,7,", "F99,", "I00,4,R,", "I01", "I02", "I01,x", "XXX,", "I99", "I00,5,S,",
                               "I99,", "I00,4,R,", "I01,"});
    ASSERT_EQ(pass.reader.intersections.size(), 2U);
    EXPECT_EQ(pass.reader.crossSectionCount(), 2);
    EXPECT_EQ(pass.reader.intersections[0].routeNumber, 4);
    EXPECT_TRUE(pass.reader.intersections[0].routeFound);
    EXPECT_EQ(pass.reader.intersections[0].routeName, "");
    EXPECT_FALSE(pass.reader.intersections[1].routeFound);
    EXPECT_TRUE(pass.reader.usedRouteType7);
    EXPECT_FALSE(pass.reader.allCrossSectionRoutesFound());
}

} // namespace fenmark::sima
