// Records that are taken without an error, but otherwise than somebody who reads the file would expect.
#include "sima/records/doubts.h"
#include "sima/records/import_options.h"
#include "support.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::sima {

using test::fullRead;
using test::Pass;

namespace {

constexpr std::string_view kPoints = "A00,\nA01,1,BP,0,0,,\nA01,2,IP,0,100,,\nA01,3,EP,50,200,,\nA99,\n"; // five lines
constexpr std::string_view kRoute = "F00,1,1,CL,3,\nB01,1,BP,\nB01,2,IP,\nB01,3,EP,\nF99,\n";             // five more

// "number-in-part 2 x3", with the first line and the number of records, one doubt a line.
std::string textOf(const Doubts& doubts) {
    std::string text;
    for (std::size_t i = 0; i < kDoubts; ++i) {
        const auto doubt = static_cast<Doubt>(i);
        const DoubtfulRecords& records = doubts.of(doubt);
        if (records.count > 0) {
            text += std::string(doubtName(doubt)) + " " + std::to_string(records.firstLine) + " x" +
                    std::to_string(records.count) + "\n";
        }
    }
    return text;
}

std::string doubtsIn(std::string_view lines) {
    return textOf(fullRead(lines).reader.doubts);
}

std::string behindPoints(std::string_view lines) {
    return doubtsIn(std::string(kPoints) + std::string(lines));
}

std::string behindRoute(std::string_view lines) {
    return behindPoints(std::string(kRoute) + std::string(lines));
}

} // namespace

TEST(Doubts, PointsThatAreNotWhereTheFileSeemsToSay) {
    struct Case {
        std::string_view records;
        std::string_view doubts;
    };
    const std::vector<Case> cases = {
        {"A01,1,a,12.5,-3,,\nA01,2,b,.5,5.,\nA01, 3,c, 1 ,2　,7　,\nA01,4,d,0,-0.0,0,\n", ""},
        {"A01,1,a,1,　3,,\nA01,2,b,　1,3,,\nA01,3,c,1,3,　7,\n", "number-in-part 2 x3\n"},
        {"A01,1,a,1,2,,\nA01,2,b,--5,1,,\n", "number-in-part 3 x1\n"},
        {"A01,1,a,-,.,-.,\n", "number-in-part 2 x3\n"},
        {"A01,1,a,-5-3,1,,\n", "number-in-part 2 x1\n"},
        {"A01,1,a,,5,7,\nA01,2,b,5, ,7,\nA01,3,c,　,5,\n", "empty-coordinate 2 x3\n"},
        {"A01,2147483647,a,1,2,,\n", ""},
        {"A01,2147483648,a,1,2,,\n", "number-too-large 2 x1\n"},
        {"A01,99999999999999999999,a,1,2,,\n", "number-too-large 2 x1\n"},
        {"A01,1,ab\"cd,1,2,,\nA01,2,5\" pipe,1,2,,\n", "lost-characters 2 x2\n"},
        {"A01,1,\"a,b\",1,2,,\nA01,2,\"a\"\"b\",1,2,,\nA01,3, \"q\" ,1,2,,\nZ00,5\" pipe,\n", ""},
        // What is refused has its error, and no doubt beside it.
        {"A01,1,5\" pipe,1,2\nA01,2,\"a,1,2,,\n", ""},
        {"A01,1,a,12a,　2,,\nA01,x,b,,,,\nA01,,c,,,,\n", ""},
        {"A01,1,a,1,2,,\nA99,\nA00,\nA01,1,again,1,2,7,\n", ""},
        {"A01,1,a,1,2,,\nA99,\nA00,\nA01,2,b,1,3,,\nA01,1,c,1,3,,\n", "point-number-again 6 x1\n"},
        {"A01,1,a,1,2,,\nA99,\nA00,\nA01,1,b, 1, 2.0,,\nA01, 02,c,1,　3,,\n", "number-in-part 6 x1\n"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(doubtsIn("A00,\n" + std::string(c.records) + "A99,\n"), c.doubts) << c.records;
    }
}

TEST(Doubts, LotsAndRoutesWithoutALineOrWithCurvesThatCountForNothing) {
    struct Case {
        std::string_view lines;
        std::string_view doubts;
    };
    const std::vector<Case> cases = {
        {"D00,1,a,1,\nB01,1,,\nD99,\nF00,1,1,b,1,\nB01,1,,\nB01,2,,\nF99,\n", ""},
        {"D00,1,a,1,\nD99,\nD00,2147483648,b,2,\nB01,1,,\nD99,\n", "number-too-large 8 x1\nlot-without-point 7 x1\n"},
        {"D00,2147483648a,a,1,\nB01,1,,\nD99,\nF00,2147483648a,1,a,1,\nB01,1,,\nB01,2,,\nF99,\n", ""},
        {"F00,2147483649,1,a,1,\nB01,1,,\nF99,\nF00,2,1,b,3,\nF99,\n",
         "number-too-large 6 x1\nroute-without-line 8 x2\n"},
        {"F00,1,1,a,3,\nB01,1,,\nC01,0,300,\nB01,2,,\nC02,50,0,300,\nB01,3,,\nF99,\n", ""},
        {"F00,1,1,a,3,\nB01,1,,\nC01,0,300,\nC01,0,-300,\nB01,2,,\nF99,\n", "curve-unused 9 x1\n"},
        {"F00,1,1,a,3,\nB01,1,,\nC02,50,0,300,\nC01,0,300,\nB01,2,,\nC02,50,0,300,\nF99,\n", "curve-unused 9 x2\n"},
        {"F00,1,1,a,3,\nB01,1,,\nC01,0,300,\nB01,1,,\nC02,50,0,300,\nB01,1,,\nB01,2,,\nB01,2,,\nF99,\n",
         "curve-unused 9 x2\n"},
        {"F00,1,1,a,3,\nB01,1,,\nC01,0,300,\nB01,99,,\nB01,2,,\nF99,\n", ""},
        {"F00,1,1,a,8,\nB01,1,,\nF99,\n", ""},
        {"F00,1,1,a,3,\nF03,-12.5,\nB01,1,,\nB01,2,,\nF99,\n", ""},
        {"F00,1,1,a,3,\nF03,+100.0,\nF03, 1e3,\nF03,.5E+2　,\nF03,5.,\nB01,1,,\nB01,2,,\nF99,\n", ""},
        {"F00,1,1,a,3,\nF03,1k200,\nF03,　100,\nF03,abc,\nF03,1e,\nF03,+-1,\nF03,inf,\nB01,1,,\nB01,2,,\nF99,\n",
         "number-in-part 7 x6\n"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(behindPoints(c.lines), c.doubts) << c.lines;
    }
}

TEST(Doubts, ResultsAtOtherPlacesOrHeightsThanTheirs) {
    struct Case {
        std::string_view lines;
        std::string_view doubts;
    };
    const std::vector<Case> cases = {
        {"H00,1,CL,\nH01,a,　10,　5,,1,\nH01,b,20,0,,1,\nH99,\nI00,1,CL,\nI01,a,10,5,,\nI02,l,-5,0,\nI99,\n", ""},
        {"H00,1,CL,\nH01,a,,5,,1,\nH01,b,20,,,1,\nH01,c,30,-,,1,\nH01,d,4x,,,1,\nH99,\n",
         "number-in-part 14 x1\nempty-place 12 x1\nempty-height 13 x1\n"},
        {"I00,1,CL,\nI01,a,10,,,\nI02,c,0,5,\nI01,b,20,,,\nI02,r,5,5,\nI99,\n", "empty-height 14 x1\n"},
        {"I00,1,CL,\nI01,a,10,,,\nI99,\n", "empty-height 12 x1\n"},
        {"I00,1,CL,\nI01,a,,5,,\nI02,l,,5,\nI02,r,--5,,\nI02,x,5x,,\nI99,\n",
         "number-in-part 14 x1\nempty-place 12 x2\nempty-height 14 x1\n"},
        {"I00,1,CL,\nI01,a,10,5,,\nI02,a,-5,1,\nI02,b,-5,2,\nI02,c,-5,3,\nI02,d,-5,4,\nI02,e,0,5,\nI99,\n",
         "heights-mixed 12 x1\n"},
        {"I00,1,CL,\nI01,a,10,5,,\nI02,a,-5,1,\nI02,b,-5,2,\nI02,c,-5,3,\nI02,e,0,5,\nI99,\n", ""},
        {"I00,1,CL,\nI01,a,10,5,,\nI02,a,-5,1,\nI02,b,-5,2,\nI02,c,-5,2,\nI02,d,-5,4,\nI02,e,0,5,\nI99,\n", ""},
        {"I00,1,CL,\nI01,a,10,5,,\nI02,a,-5,1,\nI02,b,-5,2,\nI02,c,-5,3,\nI02,d,-5,4,\nI02,e,-5,1,\nI02,f,0,5,\nI99,\n",
         "heights-mixed 12 x1\n"},
        {"I00,1,CL,\nI01,a,10,5,,\nI02,a,-5,1,\nI02,b,-5,2,\nI02,c,-5,3,\nI02,d,-5,4,\nI99,\n", ""},
        {"I00,1,CL,\nI01,a,10,5,,\nI02,a,5,1,\nI02,b,5,2,\nI02,c,5,3,\nI02,d,5,4,\nI02,e,6,5,\nI99,\n", ""},
        {"F00,1,1,B,3,\nB01,1,,\nB01,3,,\nF99,\nH00,1,B,\nH01,a,10,5,,1,\nH99,\nI00,1,B,\nI01,a,10,5,,\nI99,\n",
         "route-number-again 15 x2\n"},
        {"F00,1,1,B,3,\nB01,1,,\nB01,3,,\nF99,\nH00,1, CL ,\nH01,a,10,5,,1,\nH99,\n", ""},
        {"H00,1,B,\nH01,a,10,5,,1,\nH99,\n", ""},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(behindRoute(c.lines), c.doubts) << c.lines;
    }
}

TEST(Doubts, AreNoneAboutALineOfManyFieldsWithAQuote) {
    const Pass pass = fullRead("A00,\nA01,1,5\" pipe" + std::string(300, ',') + "\nA01,2,b,1,2,,\nA99,\n");
    EXPECT_EQ(pass.result, 0);
    EXPECT_EQ(pass.errorCodes(), test::Lines{"ErrX001"});
    EXPECT_EQ(pass.reader.points.size(), 1U);
    EXPECT_EQ(textOf(pass.reader.doubts), "");
}

// Many routes are looked up another way than few.
TEST(Doubts, ARouteNumberThatStandsAgainIsFoundAmongMany) {
    std::string routes;
    for (int number = 1; number <= 40; ++number) {
        const std::string text = std::to_string(number);
        routes += "F00," + text + ",1,R" + text + ",3,\nB01,1,,\nB01,2,,\nF99,\n";
    }
    const std::string results = "H00,40,B,\nH01,a,10,5,,1,\nH99,\n";
    EXPECT_EQ(behindPoints(routes + results), "");
    EXPECT_EQ(behindPoints(routes + "F00,40,1,B,3,\nB01,1,,\nB01,3,,\nF99,\n" + results),
              "route-number-again 170 x1\n");
}

TEST(Doubts, AreNoneAboutWhatIsNotImported) {
    const std::string lines =
        std::string(kPoints) +
        "F00,1,1,CL,3,\nB01,1,,\nC01,0,300,\nC01,0,-300,\nB01,2,,\nF99,\nF00,1,1,B,3,\nB01,1,,\nB01,3,,\nF99,\n"
        "H00,1,B,\nH01,a,,　5,,1,\nH01,b,--5,,,1,\nH99,\n"
        "I00,1,B,\nI01,a,,,,\nI02,l,-5,,\nI02,a,-5,2,\nI02,b,-5,3,\nI02,c,-5,4,\nI02,d,0,--5,\nI99,\n";
    EXPECT_EQ(doubtsIn(lines), "number-in-part 18 x2\n"
                               "curve-unused 9 x1\n"
                               "route-number-again 16 x2\n"
                               "empty-place 17 x2\n"
                               "empty-height 18 x2\n"
                               "heights-mixed 21 x1\n");
    const test::TemporaryFolder folder;
    SimaReader reader;
    test::tickAll(reader);
    for (const ImportKind kind : {ImportKind::Longitudinal, ImportKind::CrossSections, ImportKind::CentreLine}) {
        reader.options.flags[static_cast<std::size_t>(kind)] = false;
    }
    ASSERT_EQ(reader.fullRead(folder.write("a.sim", test::cp932(lines)), {}), 0);
    EXPECT_EQ(textOf(reader.doubts), "");
}

TEST(Doubts, BelongToOnePass) {
    const test::TemporaryFolder folder;
    const std::string doubtful = folder.write("a.sim", "A00,\nA01,1,a,,5,,\nA99,\n");
    const std::string plain = folder.write("b.sim", "A00,\nA01,1,a,5,5,,\nA99,\n");
    SimaReader reader;
    ASSERT_EQ(reader.fullRead(doubtful, {}), 0);
    EXPECT_EQ(reader.doubts.of(Doubt::EmptyCoordinate).count, 1);
    ASSERT_EQ(reader.fullRead(plain, {}), 0);
    EXPECT_EQ(reader.doubts.of(Doubt::EmptyCoordinate).count, 0);
}

TEST(Doubts, AreFoundByTheirNames) {
    for (std::size_t i = 0; i < kDoubts; ++i) {
        const auto doubt = static_cast<Doubt>(i);
        EXPECT_EQ(doubtNamed(doubtName(doubt)), doubt);
    }
    EXPECT_EQ(doubtNamed("empty"), std::nullopt);
    EXPECT_EQ(doubtNamed(""), std::nullopt);
}

} // namespace fenmark::sima
