// The route section.
#include "support.h"

#include <gtest/gtest.h>

namespace fenmark::sima {

using test::fullRead;
using test::Lines;
using test::Pass;
using test::preview;
using test::readAfterPoints;

namespace {

// The process lines of what follows the points.
Lines routeLines(const Pass& pass) {
    const Lines all = pass.processLines();
    return Lines(all.begin() + 1, all.end() - 1);
}

constexpr std::string_view kF00 = "F00,1,2,本線,3,";

} // namespace

TEST(RouteSection, TakesItsFields) {
    const Pass pass = readAfterPoints({"F00,5,6, 本線 ,3,", "F03,123.5,", "F99,"}, {}, 77);
    ASSERT_EQ(pass.reader.alignments.size(), 1U);
    const SimaAlignment& route = pass.reader.alignments[0];
    EXPECT_EQ(route.routeNumber, 5);
    EXPECT_EQ(route.routeType, 3);
    EXPECT_EQ(route.routeName, " 本線 ");
    EXPECT_EQ(route.alignmentName, "test- 本線 ");
    EXPECT_EQ(route.startStation, 123.5);
    EXPECT_EQ(route.objectId, host::MdDbObjectId{77});
    EXPECT_EQ(route.points.size(), 3U);
    EXPECT_EQ(pass.reader.routeNumberText, "5");
    EXPECT_EQ(pass.reader.routeGroupText, "6");
    EXPECT_EQ(pass.reader.routeNameText, " 本線 ");
    EXPECT_EQ(pass.reader.routesRead(3), 1);
    EXPECT_TRUE(pass.reader.entities.empty());
}

// The room of a long route is taken at once, as if the rest of the file belonged to it.
TEST(RouteSection, KeepsEveryElementOfALongRouteAndOfTheOneBehindIt) {
    constexpr std::size_t kPoints = 70000;
    std::string text = std::string(test::kThreePoints) + std::string(kF00) + "\r\n";
    for (std::size_t i = 0; i < kPoints; ++i) {
        text += "B01," + std::to_string(1 + i % 3) + ",,\r\n";
    }
    text += "F99,\r\n" + std::string(kF00) + "\r\nB01,3,,\r\nB01,2,,\r\nF99,\r\n";
    const Pass pass = fullRead(text);
    ASSERT_EQ(pass.reader.alignments.size(), 2U);
    const Array<EntityData>& elements = pass.reader.alignments[0].entities;
    ASSERT_EQ(elements.size(), kPoints);
    for (std::size_t i = 0; i < kPoints; ++i) {
        ASSERT_EQ(elements[i].startX, elements[i % 3].startX) << i;
        ASSERT_EQ(elements[i].endX, i + 1 < kPoints ? elements[i + 1].startX : SharedText()) << i;
        ASSERT_EQ(elements[i].startZ, elements[i % 3].startZ) << i;
    }
    EXPECT_EQ(pass.reader.alignments[1].entities.size(), 2U);
}

TEST(RouteSection, KeepsNoRoomToSpeakOfForWhatFollowsALongRoute) {
    std::string text = std::string(test::kThreePoints) + std::string(kF00) + "\r\n";
    constexpr std::size_t kPoints = 65536;
    for (std::size_t i = 0; i < kPoints; ++i) {
        text += "B01,1,,\r\n";
    }
    text += "F99,\r\n";
    const std::size_t length = text.size();
    while (text.size() < 4 * length) {
        text += "Z00,a comment of some length,\r\n";
    }
    const Pass pass = fullRead(text);
    ASSERT_EQ(pass.reader.alignments.size(), 1U);
    EXPECT_EQ(pass.reader.alignments[0].entities.size(), kPoints);
    EXPECT_LE(pass.reader.alignments[0].entities.capacity(), kPoints * 4 / 3);
}

TEST(RouteSection, MakesAnOpenElementOfEachPointAndClosesTheOneBefore) {
    const Pass pass = readAfterPoints({kF00, "B01,1,,", "B01,3,,", "F99,"});
    const Array<EntityData>& elements = pass.reader.alignments[0].entities;
    ASSERT_EQ(elements.size(), 2U);
    EXPECT_EQ(elements[0].type, "S");
    EXPECT_EQ(elements[0].startX, "200.000000000000");
    EXPECT_EQ(elements[0].startY, "100.000000000000");
    EXPECT_EQ(elements[0].endX, "300.000000000000");
    EXPECT_EQ(elements[0].endY, "400.000000000000");
    EXPECT_EQ(elements[0].startZ, 0.0);
    EXPECT_EQ(elements[0].endZ, 5.0);
    EXPECT_EQ(elements[0].nominalValue, 100.0);
    EXPECT_EQ(elements[0].direction, "");
    EXPECT_EQ(elements[1].startX, "300.000000000000");
    EXPECT_EQ(elements[1].startZ, 5.0);
    EXPECT_EQ(elements[1].endX, "");
    EXPECT_EQ(routeLines(pass), (Lines{"00006 F00 路線データの読み込み開始", "00009 F99 路線データの読み込み終了",
                                       "          平面線形”本線”", "          2個の線形要素\n"}));
}

TEST(RouteSection, LogsPolylinesByTheirPoints) {
    for (const char* type : {"1", "4", "5", "6"}) {
        const Pass pass = readAfterPoints({"F00,1,2,R," + std::string(type) + ",", "B01,1,,", "F99,"});
        EXPECT_EQ(routeLines(pass).back(), "          1点の構成点\n") << type;
        EXPECT_EQ(pass.sink.calls.back(), "polyline") << type;
        EXPECT_TRUE(pass.reader.alignments[0].objectId.isNull());
    }
}

TEST(RouteSection, MakesAnArcOfTheElementThatBeginsAtTheLastPoint) {
    const Pass pass =
        readAfterPoints({kF00, "B01,1,,", "C01,0,-140.0,", "B01,2,,", "C01,1,250.0,", "B01,3,,", "C01,0,,", "F99,"});
    EXPECT_EQ(pass.errors(), Lines{});
    const Array<EntityData>& elements = pass.reader.alignments[0].entities;
    EXPECT_EQ(elements[0].type, "R");
    EXPECT_EQ(elements[0].curve().radius, "-140.0");
    EXPECT_EQ(elements[0].direction, "L");
    EXPECT_EQ(elements[1].curve().radius, "250.0");
    EXPECT_EQ(elements[1].direction, "R");
    EXPECT_EQ(elements[2].curve().radius, "");
    EXPECT_EQ(elements[2].direction, "R");
}

TEST(RouteSection, ConvertsTheRawRadius) {
    // The ideographic space passes the test and makes the value 0.0, so the turn is to the right.
    const Pass pass = readAfterPoints({kF00, "B01,1,,", "C01,0,　-140.0,", "F99,"});
    EXPECT_EQ(pass.errors(), Lines{});
    EXPECT_EQ(pass.reader.alignments[0].entities[0].curve().radius, "　-140.0");
    EXPECT_EQ(pass.reader.alignments[0].entities[0].direction, "R");
}

TEST(RouteSection, MakesAClothoidOfTheElementThatBeginsAtTheLastPoint) {
    const Pass pass = readAfterPoints({kF00, "B01,1,,", "C02,　100.0 , 0　, 200.0,", "B01,2,,", "F99,"});
    EXPECT_EQ(pass.errors(), Lines{});
    const EntityData& clothoid = pass.reader.alignments[0].entities[0];
    EXPECT_EQ(clothoid.type, "A");
    EXPECT_EQ(clothoid.curve().parameterA, "100.0");
    EXPECT_EQ(clothoid.curve().startRadius, "0");
    EXPECT_EQ(clothoid.curve().endRadius, "200.0");
    EXPECT_EQ(clothoid.curve().length, "50.000000000000");
    EXPECT_EQ(clothoid.direction, "R");
    EXPECT_EQ(clothoid.clothoidLength(), 50.0);
}

TEST(RouteSection, KeepsALengthOfTheClothoidThatIsNotItsTrueOne) {
    const Pass pass = readAfterPoints({kF00, "B01,1,,", "C02,60,100,200,", "F99,"});
    const EntityData& egg = pass.reader.alignments[0].entities[0];
    EXPECT_EQ(egg.curve().length, "36.000000000000");
    EXPECT_EQ(egg.clothoidLength(), 18.0);
}

TEST(RouteSection, TurnsAClothoidLeftIfEitherRadiusIsNegative) {
    const auto direction = [](std::string_view line) {
        return readAfterPoints({kF00, "B01,1,,", line, "F99,"}).reader.alignments[0].entities[0].direction;
    };
    EXPECT_EQ(direction("C02,100,-200,0,"), "L");
    EXPECT_EQ(direction("C02,100,0,-200,"), "L");
    EXPECT_EQ(direction("C02,100,0,200,"), "R");
    EXPECT_EQ(direction("C02,100,-0,0,"), "R");
}

TEST(RouteSection, HoldsTheTextOfInfinityForTheLengthBetweenEqualRadii) {
    const Pass pass = readAfterPoints({kF00, "B01,1,,", "C02,100,200,200,", "F99,"});
    EXPECT_EQ(pass.reader.alignments[0].entities[0].curve().length, "inf");
}

TEST(RouteSection, UsesRefusedCurvesAsFarAsTheyConvert) {
    const Pass pass = readAfterPoints({kF00, "B01,1,,", "C01,9,1-2", "B01,2,,", "C02,x,1e2,3", "F99,"});
    EXPECT_EQ(pass.errorCodes(), (Lines{"ErrX001", "ErrX001"}));
    const Array<EntityData>& elements = pass.reader.alignments[0].entities;
    EXPECT_EQ(elements[0].curve().radius, "1-2");
    EXPECT_EQ(elements[1].curve().parameterA, "x");
    EXPECT_EQ(elements[1].curve().length, "0.000000000000");
}

TEST(RouteSection, LosesACurveBeforeItsFirstPoint) {
    const Pass pass = readAfterPoints({kF00, "C01,0,100,", "C02,1,2,3,", "C01,0", "C02,1", "B01,1,,", "F99,"});
    EXPECT_EQ(pass.errorCodes(), (Lines{"ErrX001", "ErrX001"})) << "and a short one raises nothing";
    EXPECT_EQ(pass.reader.alignments[0].entities[0].type, "S");
    EXPECT_EQ(pass.reader.passedOver.at("before the first point of a route: C01"), 2);
    EXPECT_EQ(pass.reader.passedOver.at("before the first point of a route: C02"), 2);
}

TEST(RouteSection, RaisesForCurvesAndStationsThatAreTooShort) {
    const test::TemporaryFolder folder;
    const auto lineOfException = [&folder](std::initializer_list<std::string_view> lines) {
        SimaReader reader;
        const std::string path =
            folder.write("short.sim", test::cp932(std::string(test::kThreePoints) + test::joined(lines)));
        EXPECT_THROW(reader.fullRead(path, {}), std::invalid_argument);
        return reader.lineNumber;
    };
    EXPECT_EQ(lineOfException({kF00, "B01,1,,", "C01,0", "F99,"}), 8);
    EXPECT_EQ(lineOfException({kF00, "B01,1,,", "C02,1,2", "F99,"}), 8);
    EXPECT_EQ(lineOfException({kF00, "F03", "F99,"}), 7);
    EXPECT_EQ(lineOfException({"F00,1,2,R,8,", "B01,1,,", "C01,0", "F99,"}), 8);
}

TEST(RouteSection, RefusesCurvesInPolylinesWhateverTheirShape) {
    for (const char* type : {"1", "4", "5", "6"}) {
        const Pass pass = readAfterPoints(
            {"F00,1,2,R," + std::string(type) + ",", "B01,1,,", "C01,0,100,", "C02", "B01,2,,", "F99,"});
        EXPECT_EQ(pass.errors(),
                  (Lines{"ErrF002 円弧とクロソイドが作成出来ません。これを無視して、処理を続けます。 | "
                         "00008行目 C01,0,100,",
                         "ErrF002 円弧とクロソイドが作成出来ません。これを無視して、処理を続けます。 | 00009行目 C02"}))
            << type;
        EXPECT_EQ(pass.reader.alignments[0].entities[0].type, "S");
    }
}

TEST(RouteSection, TakesCurvesOverInTypesThatItDoesNotKnow) {
    for (const char* type : {"0", "8", "x"}) {
        const Pass pass = readAfterPoints({"F00,1,2,R," + std::string(type) + ",", "B01,1,,", "C01,0,100,", "F99,"});
        EXPECT_EQ(pass.errorCodes(), Lines{"ErrF00-3"}) << type;
        ASSERT_EQ(pass.reader.alignments.size(), 1U);
        EXPECT_EQ(pass.reader.alignments[0].entities[0].type, "R");
        EXPECT_TRUE(pass.sink.routes.empty()) << "such a route is stored and never created";
        EXPECT_EQ(routeLines(pass).back(), "          1点の構成点\n");
        for (int known = 1; known <= 7; ++known) {
            EXPECT_EQ(pass.reader.routesRead(known), 0);
        }
    }
}

TEST(RouteSection, ReadsTheTypeAsFarAsItConverts) {
    const Pass pass = readAfterPoints({"F00,1,2,R,3x,", "B01,1,,", "F99,"});
    EXPECT_EQ(pass.errorCodes(), Lines{"ErrF00-3"});
    EXPECT_EQ(pass.reader.alignments[0].routeType, 3);
    EXPECT_EQ(pass.reader.routesRead(3), 1);
    EXPECT_EQ(pass.sink.routes.size(), 1U);
}

TEST(RouteSection, KeepsTheFieldsOfTheRouteBeforeIfItsOwnRecordIsTooShort) {
    const Pass pass = readAfterPoints({"F00,5,6,R,2,", "F03,10,", "F99,", "F00,9", "F99,"});
    EXPECT_EQ(pass.errorCodes(), Lines{"ErrX001"});
    ASSERT_EQ(pass.reader.alignments.size(), 2U);
    EXPECT_EQ(pass.reader.alignments[1].routeNumber, 5);
    EXPECT_EQ(pass.reader.alignments[1].routeName, "R");
    EXPECT_EQ(pass.reader.alignments[1].routeType, 2);
    EXPECT_EQ(pass.reader.alignments[1].startStation, 0.0) << "the start station does not go on";
    EXPECT_EQ(pass.reader.routesRead(2), 2);
}

TEST(RouteSection, UsesAPointRecordOfThreeFieldsAndPassesOverOneOfTwo) {
    const Pass pass = readAfterPoints({kF00, "B01,1,", "B01,2", "F99,"});
    EXPECT_EQ(pass.errorCodes(), (Lines{"ErrX001", "ErrX001"}));
    EXPECT_EQ(pass.reader.alignments[0].entities.size(), 1U);
}

TEST(RouteSection, WithAMissingPointFailsAtItsEnd) {
    const Pass pass = readAfterPoints(
        {kF00, "B01,1,,", "B01,9,gone,", "B01,2,,", "B01,8,,", "C01,0,x,", "F99", kF00, "B01,3,,", "F99,"});
    EXPECT_EQ(pass.errors()[0], "参照する座標が見つかりません。 | 00008 B01,9,gone,");
    EXPECT_EQ(pass.errorCodes(),
              (Lines{"参照する座標が見つかりません。", "参照する座標が見つかりません。", "ErrC01-2", "ErrX001"}))
        << "everything is still read and tested";
    ASSERT_EQ(pass.reader.alignments.size(), 1U);
    EXPECT_EQ(pass.reader.alignments[0].entities.size(), 1U) << "nothing is left of the failed route";
    EXPECT_EQ(pass.sink.routes.size(), 1U);
    EXPECT_EQ(pass.reader.routesRead(3), 2);
    const Lines lines = routeLines(pass);
    EXPECT_EQ(lines[1], "00012 F99 路線データの読み込み終了");
    EXPECT_EQ(lines[2], "ERROR     平面線形を作成できませんでした\n");
}

TEST(RouteSection, ThatFailsIsAPolylineForTheUnknownTypes) {
    EXPECT_EQ(routeLines(readAfterPoints({"F00,1,2,R,6,", "B01,9,,", "F99,"})).back(),
              "ERROR     ポリラインを作成できませんでした\n");
    EXPECT_EQ(routeLines(readAfterPoints({"F00,1,2,R,7,", "B01,9,,", "F99,"})).back(),
              "ERROR     平面線形を作成できませんでした\n");
    EXPECT_EQ(routeLines(readAfterPoints({"F00,1,2,R,8,", "B01,9,,", "F99,"})).back(),
              "ERROR     ポリラインを作成できませんでした\n");
}

TEST(RouteSection, IsTakenAsGoodAtTheEndOfTheFileEvenIfAPointWasMissing) {
    const Pass pass = readAfterPoints({kF00, "B01,1,,", "B01,9,,"});
    ASSERT_EQ(pass.reader.alignments.size(), 1U);
    EXPECT_EQ(pass.sink.routes.size(), 1U);
    EXPECT_EQ(routeLines(pass).back(), "          1個の線形要素\n");
}

TEST(RouteSection, SkipsTheBlockRightBehindAnElement) {
    for (const char* element : {"C01,0,100,", "C02,1,2,3,", "C03,1,2,"}) {
        const Pass pass = readAfterPoints(
            {kF00, "B01,1,,", element, "C00,", "B01,9,,", "C01,x", "ZZZ,", "F99,", "C99,", "B01,2,,", "F99,"});
        EXPECT_EQ(pass.errors(), Lines{}) << element;
        ASSERT_EQ(pass.reader.alignments.size(), 1U);
        EXPECT_EQ(pass.reader.alignments[0].entities.size(), 2U);
        EXPECT_EQ(pass.reader.passedOver.at("inside element data: F99"), 1);
    }
}

TEST(RouteSection, ReadsTheBlockThatDoesNotStandRightBehindAnElement) {
    for (const char* between : {"B01,2,,", "", "C04,", "B04,", "C99,", "F03,1,", "B03,1,"}) {
        const Pass pass = readAfterPoints({kF00, "B01,1,,", "C01,0,100,", between, "C00,", "ZZZ,", "C99,", "F99,"});
        EXPECT_EQ(pass.errorCodes(), Lines{"ErrF001"}) << between;
    }
}

TEST(RouteSection, TakesTheFieldsOfAHeadOfFiveAndOfNoShorterOne) {
    const Pass pass = readAfterPoints({"F00,7,8,R7,3", "B01,1,,", "F99,", "F00,9,8,R9", "B01,2,,", "F99,"});
    ASSERT_EQ(pass.reader.alignments.size(), 2U);
    for (const SimaAlignment& route : pass.reader.alignments) {
        EXPECT_EQ(route.routeNumber, 7) << "the second has what the first left";
        EXPECT_EQ(route.routeName, "R7");
        EXPECT_EQ(route.routeType, 3);
    }
    EXPECT_EQ(pass.reader.routesRead(3), 2);
}

TEST(RouteSection, ReadsOnBehindTheHeadOfABlockWithoutAnElement) {
    const Pass pass = readAfterPoints({kF00, "C00,", "B01,1,,", "C00,", "B01,2,,", "C99,", "B01,3,,", "F99,"});
    EXPECT_EQ(pass.errors(), Lines{});
    EXPECT_EQ(pass.reader.alignments[0].entities.size(), 3U);
    EXPECT_EQ(pass.reader.passedOver.at("not used in a route: C00"), 2);
    EXPECT_EQ(pass.reader.passedOver.at("not used in a route: C99"), 1);
}

TEST(RouteSection, SkipsTheBlockBehindALineThatTheFilterRefused) {
    const Pass pass = readAfterPoints({kF00, "B01,1,,", "C01,0,100,", "XXX,", "C00,", "ZZZ,", "C99,", "F99,"});
    EXPECT_EQ(pass.errors().size(), 1U);
    EXPECT_EQ(pass.errors()[0].substr(pass.errors()[0].size() - 4), "XXX,");
}

TEST(RouteSection, SkipsTheBlockBehindACurveThatItRefuses) {
    const Pass pass = readAfterPoints({"F00,1,2,R,6,", "B01,1,,", "C01,0,100,", "C00,", "ZZZ,", "C99,", "F99,"});
    EXPECT_EQ(pass.errorCodes(), Lines{"ErrF002"});
}

TEST(RouteSection, SkipsBlocksAfterItFailedToo) {
    const Pass pass = readAfterPoints({kF00, "B01,9,,", "C01,0,100,", "C00,", "F99,", "C99,", "F99,"});
    EXPECT_EQ(pass.errorCodes(), Lines{"参照する座標が見つかりません。"});
    EXPECT_TRUE(pass.reader.alignments.empty());
}

TEST(RouteSection, LosesTheRestOfTheFileInABlockThatIsNotClosed) {
    const Pass pass = readAfterPoints({kF00, "B01,1,,", "C01,0,100,", "C00,", "F99,", "A00,"});
    EXPECT_EQ(pass.errors(), Lines{});
    EXPECT_EQ(routeLines(pass)[1], "00011 F99 路線データの読み込み終了");
    EXPECT_EQ(pass.reader.passedOver.at("inside element data: A00"), 1);
}

TEST(RouteSection, HoldsTwoArcsInARowApart) {
    const Pass pass = readAfterPoints({kF00, "B01,1,,", "C01,0,100,", "C01,0,-50,", "B01,2,,", "F99,"});
    EXPECT_EQ(pass.reader.alignments[0].entities[0].curve().radius, "-50");
    EXPECT_EQ(pass.reader.alignments[0].entities[1].curve().radius, "");
}

TEST(RouteSection, KeepsAnElementWithoutLength) {
    const Pass pass = readAfterPoints({kF00, "B01,1,,", "B01,1,,", "F99,"});
    const Array<EntityData>& elements = pass.reader.alignments[0].entities;
    ASSERT_EQ(elements.size(), 2U);
    EXPECT_EQ(elements[0].startX, elements[0].endX);
}

TEST(RouteSection, IsHandedOutOnlyIfItsTypeIsTicked) {
    for (std::int32_t type = 1; type <= 7; ++type) {
        const test::TemporaryFolder folder;
        const std::string path = folder.write("r.sim", test::cp932(std::string(test::kThreePoints) + "F00,1,2,R," +
                                                                   std::to_string(type) + ",\r\nB01,1,,\r\nF99,\r\n"));
        for (std::int32_t ticked = 1; ticked <= 7; ++ticked) {
            SimaReader reader;
            test::KeepingSink sink;
            sink.nextId = 40;
            reader.options.flags[static_cast<std::size_t>(3 + ticked)] = true;
            ReadContext context;
            context.sink = &sink;
            EXPECT_EQ(reader.fullRead(path, context), 0);
            EXPECT_EQ(sink.routes.size(), ticked == type ? 1U : 0U) << type << " " << ticked;
            ASSERT_EQ(reader.alignments.size(), 1U);
            const bool alignment = type == 2 || type == 3 || type == 7;
            EXPECT_EQ(reader.alignments[0].objectId.isValid(), ticked == type && alignment);
            EXPECT_EQ(reader.routesRead(type), 1);
        }
    }
}

TEST(RouteSection, HandsOutTheRouteAsItWillBeStoredButForItsIdentifier) {
    const Pass pass = readAfterPoints({"F00,5,6,R,7,", "F03,12.5,", "B01,1,,", "B01,2,,", "F99,"}, {}, 9);
    ASSERT_EQ(pass.sink.routes.size(), 1U);
    const SimaAlignment& handed = pass.sink.routes[0];
    EXPECT_EQ(handed.entities.size(), 2U);
    EXPECT_EQ(handed.startStation, 12.5);
    EXPECT_EQ(handed.alignmentName, "test-R");
    EXPECT_EQ(handed.routeNumber, 5);
    EXPECT_TRUE(handed.objectId.isNull());
}

TEST(RouteSection, KeepsThePointsAsTheyStoodAtItsBeginning) {
    const Pass pass = fullRead({"A00,", "A01,1,P,1,2,,", "A99,", "F00,1,1,R,6,", "F99,", "A00,", "A01,2,Q,3,4,,",
                                "A01,1,R,3,4,,", "A99,", "F00,2,1,S,6,", "F99,"});
    ASSERT_EQ(pass.reader.alignments.size(), 2U);
    EXPECT_EQ(pass.reader.alignments[0].points.size(), 1U);
    EXPECT_EQ(pass.reader.alignments[0].points.find(2), nullptr);
    EXPECT_EQ(pass.reader.alignments[1].points.size(), 3U);
    EXPECT_EQ(pass.reader.alignments[1].points.find(1)->name, "P");
}

TEST(RoutePreview, KeepsNumberAndTypeAndLooksAtNoOtherLine) {
    const Pass pass =
        preview({"F00,5,6,R,3,", "B01,9,,", "XXX,", "A00,", "F99,", "F00,7,6,S,x,", "F99,", "F00", "F99,"});
    ASSERT_EQ(pass.reader.alignments.size(), 3U);
    EXPECT_EQ(pass.reader.alignments[0].routeNumber, 5);
    EXPECT_EQ(pass.reader.alignments[0].routeType, 3);
    EXPECT_EQ(pass.reader.alignments[0].routeName, "");
    EXPECT_TRUE(pass.reader.alignments[0].entities.empty());
    EXPECT_EQ(pass.reader.alignments[1].routeType, 0);
    EXPECT_EQ(pass.reader.alignments[2].routeNumber, 7) << "the short record keeps the fields of the route before";
    EXPECT_EQ(pass.reader.routesRead(3), 1);
    EXPECT_EQ(pass.reader.routeNameText, "S");
}

TEST(RoutePreview, PartsFromTheFullPassAtABlockWithAnEndRecordInIt) {
    const std::initializer_list<std::string_view> lines = {"F00,5,6,R,3,", "C01,0,1,", "C00,", "F99,",
                                                           "F00,6,6,S,3,", "C99,",     "F99,"};
    EXPECT_EQ(preview(lines).reader.alignments.size(), 2U);
    EXPECT_EQ(fullRead(lines).reader.alignments.size(), 1U);
}

TEST(RoutePreview, PartsFromTheFullPassAtABlockThatIsNeverClosed) {
    const std::initializer_list<std::string_view> lines = {"F00,5,6,R,3,", "C03,1,2,",     "C00,",
                                                           "F99,",         "F00,6,6,S,3,", "F99,"};
    EXPECT_EQ(preview(lines).reader.alignments.size(), 2U);
    EXPECT_EQ(fullRead(lines).reader.alignments.size(), 1U);
}

TEST(RouteSection, ConvertsTheRawStartStationAndTestsItInNoWay) {
    const auto station = [](std::string_view line) {
        const Pass pass = readAfterPoints({kF00, line, "F99,"});
        EXPECT_EQ(pass.errors(), Lines{});
        return pass.reader.alignments[0].startStation;
    };
    EXPECT_EQ(station("F03,　140.0,"), 0.0);
    EXPECT_EQ(station("F03, 140.5x,a,b,c"), 140.5);
    EXPECT_EQ(station("F03,1e2"), 100.0);
    EXPECT_EQ(station("F03,abc,"), 0.0);
}

TEST(RoutePreview, CountsARouteThatIsCutOff) {
    EXPECT_EQ(preview({"F00,5,6,R,3,", "B01,1,,"}).reader.alignments.size(), 1U);
}

} // namespace fenmark::sima
