// Every identifier and message of the validators, through whole files.
#include "support.h"

#include "sima/text/string_table.h"
#include "sima/validators/validators.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::sima {

using test::fullRead;
using test::joined;
using test::Lines;
using test::Pass;
using test::readAfterPoints;

namespace {

// A section of one record each; the line under test is line 2.
Lines inCoordinates(std::string_view line) {
    return fullRead({"A00,", line, "A99,"}).errors();
}
Lines inLongitudinal(std::string_view line) {
    return fullRead({"H00,1,R,", line, "H99,"}).errors();
}
Lines inCrossSection(std::string_view line) {
    return fullRead({"I00,1,R,", line, "I99,"}).errors();
}
// Line 8, behind three points and the first point of a route of type 3.
Lines inRoute(std::string_view line) {
    return readAfterPoints({"F00,1,1,R,3,", "B01,1,P1,", line, "F99,"}).errors();
}
Lines inLot(std::string_view line) {
    return readAfterPoints({"D00,1,L,1,", line, "D99,"}).errors();
}
Lines block(std::string_view identifier, int message, std::string_view number, std::string_view line) {
    return {std::string(identifier) + " " + std::string(resourceText(message)) + " | " + std::string(number) + "行目 " +
            std::string(line)};
}

const Lines kNone;

} // namespace

TEST(Validators, AnswerWith0OrWithMinus1AndOneBlock) {
    struct Case {
        std::int32_t (*validate)(SimaLog&, const Record&);
        std::string_view good;
    };
    const auto pointWithoutTwin = [](SimaLog& log, const Record& record) {
        return validateA01(log, record, [] { return false; });
    };
    const auto pointWithTwin = [](SimaLog& log, const Record& record) {
        return validateA01(log, record, [] { return true; });
    };
    const Case cases[] = {
        {validateEndRecord, "A99,"},
        {validateG00, "G00,3,x,"},
        {pointWithoutTwin, "A01,1,P,1.5,2,3,"},
        {pointWithTwin, "A01,1,P,1.5,2,3,"},
        {validateB01, "B01,1,P,"},
        {validateB03, "B03,1,2,"},
        {validateC01, "C01,0,100,"},
        {validateC02, "C02,100,0,200,"},
        {validateC03, "C03,1,2,"},
        {validateD00, "D00,1,L,1,"},
        {validateF00, "F00,1,2,R,3,"},
        {validateH00, "H00,1,R,"},
        {validateH01, "H01,1,P,1,2,3,"},
        {validateI00, "I00,1,R,"},
        {validateI01, "I01,1,P,1,2,"},
        {validateI02, "I02,1,2,"},
        {filterCoordinateSection, "A01,1,"},
        {filterLotSection, "B01,1,"},
        {filterRouteSection, "B01,1,"},
        {filterLongitudinalSection, "H01,1,"},
        {filterCrossSection, "I01,1,"},
    };
    int good = 0;
    int refused = 0;
    for (const Case& c : cases) {
        // The record, each of its fields as something else, and fewer and more of them.
        std::vector<std::string> lines{std::string(c.good), std::string(c.good) + ",", "B01"};
        for (std::size_t from = 0; from < c.good.size(); ++from) {
            if (from > 0 && c.good[from - 1] != ',') {
                continue;
            }
            const std::string before(c.good.substr(0, from));
            const std::string after(c.good.substr(std::min(c.good.find(',', from), c.good.size())));
            for (const char* field : {"", "x", "-1", "0", "9", " 1", "1.5", "99999999999", "A02", "Z99"}) {
                lines.push_back(before + field + after);
            }
            lines.push_back(before);
        }
        for (const std::string& line : lines) {
            Fields fields;
            splitLine(line, ",", fields);
            SimaLog log;
            const std::int32_t status = c.validate(log, {7, fields, line});
            EXPECT_TRUE(status == 0 || status == -1) << line << ": " << status;
            EXPECT_EQ(log.errorCount(), status == 0 ? 0 : 1) << line;
            EXPECT_EQ(log.errors().size(), status == 0 ? 0U : 4U) << line;
            (status == 0 ? good : refused) += 1;
        }
    }
    EXPECT_GT(good, 100);
    EXPECT_GT(refused, 300);
}

TEST(EndRecordRule, WantsTwoFields) {
    EXPECT_EQ(fullRead({"A00", "A99"}).errors(),
              (Lines{"ErrX001 無効なデータ行です。この行を無視して、処理を続けます。.(データが不足) | 00001行目 A00",
                     "ErrX001 無効なデータ行です。この行を無視して、処理を続けます。.(データが不足) | 00002行目 A99"}));
    EXPECT_EQ(
        fullRead({"A00,,", "A99,x,"}).errors(),
        (Lines{"ErrX001 無効なデータ行です。 この行を無視して、処理を続けます。(余分なデータ) | 00001行目 A00,,",
               "ErrX001 無効なデータ行です。 この行を無視して、処理を続けます。(余分なデータ) | 00002行目 A99,x,"}));
    EXPECT_EQ(fullRead({"H00,1,R,", "H99"}).errorCodes(), Lines{"ErrX001"});
    EXPECT_EQ(fullRead({"I00,1,R,", "I99,,"}).errorCodes(), Lines{"ErrX001"});
    EXPECT_EQ(fullRead({"F00,1,1,R,3,", "F99"}).errorCodes(), Lines{"ErrX001"});
}

TEST(EndRecordRule, IsNotPutToTheEndOfALot) {
    EXPECT_EQ(fullRead({"D00,1,L,1,", "D99,x,y,"}).errors(), kNone);
}

TEST(VersionRecord, WantsFourFieldsAndANumber) {
    const Pass good = fullRead({"G00, 3.0 ,x,"});
    EXPECT_EQ(good.errors(), kNone);
    EXPECT_EQ(good.processLines().front(), "00001 G01 SIMAのバージョン： 3.0\n");
    const Pass refused = fullRead({"G00,V3,x,"});
    EXPECT_EQ(refused.errors(), block("ErrG00-1", 124, "00001", "G00,V3,x,"));
    EXPECT_EQ(refused.processLines(), Lines{"00001     読み込み終了"});
    EXPECT_EQ(refused.reader.errorCount, 1);
    EXPECT_EQ(fullRead({"G00,3,"}).errors(), block("ErrX001", 102, "00001", "G00,3,"));
    EXPECT_EQ(fullRead({"G00,3,a,b,"}).errors(), block("ErrX001", 101, "00001", "G00,3,a,b,"));
}

TEST(PointRecord, WantsSixOrSevenFields) {
    EXPECT_EQ(inCoordinates("A01,1,P,1,2"), block("ErrX001", 154, "00002", "A01,1,P,1,2"));
    EXPECT_EQ(inCoordinates("A01,1,P,1,2,3,,"), block("ErrX001", 154, "00002", "A01,1,P,1,2,3,,"));
    EXPECT_EQ(inCoordinates("A01,1,P,1,2,"), kNone);
    EXPECT_EQ(inCoordinates("A01,1,P,1,2,3,"), kNone);
}

TEST(PointRecord, IsTestedFieldByField) {
    EXPECT_EQ(inCoordinates("A01,x,P,1,2,,"), block("ErrA01-1", 104, "00002", "A01,x,P,1,2,,"));
    EXPECT_EQ(inCoordinates("A01,1,P,a,2,,"), block("ErrA01-2", 106, "00002", "A01,1,P,a,2,,"));
    EXPECT_EQ(inCoordinates("A01,1,P,1,a,,"), block("ErrA01-3", 107, "00002", "A01,1,P,1,a,,"));
    EXPECT_EQ(inCoordinates("A01,1,P,1,2,a,"), block("ErrA01-4", 108, "00002", "A01,1,P,1,2,a,"));
}

TEST(PointRecord, IsReportedForItsFirstFaultOnly) {
    EXPECT_EQ(inCoordinates("A01,x,P,a,b,c,"), block("ErrA01-1", 104, "00002", "A01,x,P,a,b,c,"));
    EXPECT_EQ(inCoordinates("A01,1,P,1,b,c,"), block("ErrA01-3", 107, "00002", "A01,1,P,1,b,c,"));
}

TEST(PointRecord, IsNotHeldToFiveDigits) {
    EXPECT_EQ(inCoordinates("A01,123456789,P,1,2,,"), kNone);
}

TEST(PointRecord, IsRefusedAsDuplicateBeforeItsCoordinatesAreTested) {
    const Pass run = fullRead({"A00,", "A01,00012,P,1,2,,", "A01,12,Q,a,b,,", "A99,"});
    EXPECT_EQ(run.errors(), block("ErrA002", 105, "00003", "A01,12,Q,a,b,,"));
    ASSERT_EQ(run.reader.points.size(), 1U);
    EXPECT_EQ(run.reader.points[0].name, "P");
}

TEST(RoutePoint, IsTestedAndUsedAllTheSame) {
    EXPECT_EQ(inRoute("B01,2,P2,x,,"), block("ErrX001", 101, "00008", "B01,2,P2,x,,"));
    EXPECT_EQ(inRoute("B01,2x,P2,"), block("ErrB01-1", 104, "00008", "B01,2x,P2,"));
}

TEST(DistanceRecord, IsTestedInARoute) {
    EXPECT_EQ(inRoute("B03,10.0,,"), block("ErrX001", 101, "00008", "B03,10.0,,"));
    EXPECT_EQ(inRoute("B03,a,"), block("ErrB03-1", 109, "00008", "B03,a,"));
    EXPECT_EQ(inRoute("B03,10.0,"), kNone);
}

TEST(ArcRecord, IsTestedFieldByField) {
    EXPECT_EQ(inRoute("C01,0,100,x,,"), block("ErrX001", 101, "00008", "C01,0,100,x,,"));
    EXPECT_EQ(inRoute("C01,0,100"), block("ErrX001", 102, "00008", "C01,0,100"));
    EXPECT_EQ(inRoute("C01,2,100,,"), block("ErrX001", 101, "00008", "C01,2,100,,"));
    EXPECT_EQ(inRoute("C01,2,100,"), block("ErrC01-1", 125, "00008", "C01,2,100,"));
    EXPECT_EQ(inRoute("C01,,100,"), block("ErrC01-1", 125, "00008", "C01,,100,"));
    EXPECT_EQ(inRoute("C01,0,a,"), block("ErrC01-2", 134, "00008", "C01,0,a,"));
    EXPECT_EQ(inRoute("C01, 1 ,-100,"), kNone);
    EXPECT_EQ(inRoute("C01,0,,"), kNone); // an empty radius is valid
}

TEST(ClothoidRecord, IsTestedFieldByField) {
    EXPECT_EQ(inRoute("C02,100,0,100"), block("ErrX001", 102, "00008", "C02,100,0,100"));
    EXPECT_EQ(inRoute("C02,a,0,100,"), block("ErrC02-1", 110, "00008", "C02,a,0,100,"));
    EXPECT_EQ(inRoute("C02,100,a,100,"), block("ErrC02-2", 111, "00008", "C02,100,a,100,"));
    EXPECT_EQ(inRoute("C02,100,0,a,"), block("ErrC02-3", 112, "00008", "C02,100,0,a,"));
    EXPECT_EQ(inRoute("C02,100,0,-100,"), kNone);
}

TEST(SideRecord, IsTestedInARoute) {
    EXPECT_EQ(inRoute("C03,1,2"), block("ErrX001", 102, "00008", "C03,1,2"));
    EXPECT_EQ(inRoute("C03,a,2,"), block("ErrC03-1", 113, "00008", "C03,a,2,"));
    EXPECT_EQ(inRoute("C03,1,a,"), block("ErrC03-2", 114, "00008", "C03,1,a,"));
    EXPECT_EQ(inRoute("C03,1,2,"), kNone);
}

TEST(LotRecord, SaysTheSameForTooManyAndTooFewFields) {
    constexpr std::string_view kText = "ErrX001 書式が正しくありませんが、無視して処理を続けます。 | 00001行目 ";
    EXPECT_EQ(fullRead({"D00,1,L,1", "D99,"}).errors(), Lines{std::string(kText) + "D00,1,L,1"});
    EXPECT_EQ(fullRead({"D00,1,L,1,,", "D99,"}).errors(), Lines{std::string(kText) + "D00,1,L,1,,"});
}

TEST(LotRecord, IsTestedFieldByField) {
    EXPECT_EQ(fullRead({"D00,x,L,1,", "D99,"}).errors(), block("ErrD00-1", 115, "00001", "D00,x,L,1,"));
    EXPECT_EQ(fullRead({"D00,1,L,3,", "D99,"}).errors(), block("ErrD00-2", 126, "00001", "D00,1,L,3,"));
    EXPECT_EQ(fullRead({"D00,1,L,2,", "D99,"}).errors(), kNone);
}

TEST(LotRecord, DoesNotTrimTheKindThatTheReaderTrims) {
    const Pass run = fullRead({"D00,1,L, 1,", "D99,"});
    EXPECT_EQ(run.errors(), block("ErrD00-2", 126, "00001", "D00,1,L, 1,"));
    EXPECT_TRUE(run.reader.lots[0].isType1);
}

TEST(RouteRecord, IsTestedFieldByField) {
    EXPECT_EQ(fullRead({"F00,1,1,R,3", "F99,"}).errors(), block("ErrX001", 102, "00001", "F00,1,1,R,3"));
    EXPECT_EQ(fullRead({"F00,1,1,R,3,,", "F99,"}).errors(), block("ErrX001", 101, "00001", "F00,1,1,R,3,,"));
    EXPECT_EQ(fullRead({"F00,x,1,R,3,", "F99,"}).errors(), block("ErrF00-1", 116, "00001", "F00,x,1,R,3,"));
    EXPECT_EQ(fullRead({"F00,1,x,R,3,", "F99,"}).errors(), block("ErrF00-2", 117, "00001", "F00,1,x,R,3,"));
    EXPECT_EQ(fullRead({"F00,1,1,R,8,", "F99,"}).errors(), block("ErrF00-3", 127, "00001", "F00,1,1,R,8,"));
    EXPECT_EQ(fullRead({"F00,1,1,R,0,", "F99,"}).errors(), block("ErrF00-3", 127, "00001", "F00,1,1,R,0,"));
    EXPECT_EQ(fullRead({"F00,1,1,R,,", "F99,"}).errors(), block("ErrF00-3", 127, "00001", "F00,1,1,R,,"));
    EXPECT_EQ(fullRead({"F00,1,1,R,7,", "F99,"}).errors(), kNone);
    EXPECT_EQ(fullRead({"F00,1,1,R, 7 ,", "F99,"}).errors(), kNone);
}

TEST(LongitudinalRecord, IsTestedFieldByField) {
    EXPECT_EQ(fullRead({"H00,1,R", "H99,"}).errors(), block("ErrX001", 102, "00001", "H00,1,R"));
    EXPECT_EQ(fullRead({"H00,x,R,", "H99,"}).errors(), block("ErrH00-1", 119, "00001", "H00,x,R,"));
    const auto in = [](std::string_view line) { return fullRead({"H00,1,R,", line, "H99,"}).errors(); };
    EXPECT_EQ(in("H01,No.1,0,1,2,1"), block("ErrX001", 155, "00002", "H01,No.1,0,1,2,1"));
    EXPECT_EQ(in("H01,No.1,0,1,2,1,,"), block("ErrX001", 155, "00002", "H01,No.1,0,1,2,1,,"));
    EXPECT_EQ(in("H01,No.1,a,1,2,1,"), block("ErrH01-1", 109, "00002", "H01,No.1,a,1,2,1,"));
    EXPECT_EQ(in("H01,No.1,0,a,2,1,"), block("ErrH01-2", 123, "00002", "H01,No.1,0,a,2,1,"));
    EXPECT_EQ(in("H01,No.1,0,1,a,1,"), block("ErrH01-3", 121, "00002", "H01,No.1,0,1,a,1,"));
    EXPECT_EQ(in("H01,No.1,0,1,2,3,"), block("ErrH01-4", 128, "00002", "H01,No.1,0,1,2,3,"));
    EXPECT_EQ(in("H01,No.1,0,1,2,,"), block("ErrH01-4", 128, "00002", "H01,No.1,0,1,2,,"));
    EXPECT_EQ(in("H01,,,,, 2 ,"), kNone);
}

TEST(CrossSectionRecord, IsTestedFieldByField) {
    EXPECT_EQ(fullRead({"I00,1,R", "I99,"}).errors(), block("ErrX001", 102, "00001", "I00,1,R"));
    EXPECT_EQ(fullRead({"I00,x,R,", "I99,"}).errors(), block("ErrI00-1", 119, "00001", "I00,x,R,"));
    const auto in = [](std::string_view line) {
        return fullRead({"I00,1,R,", "I01,No.0,0,1,2,", line, "I99,"}).errors();
    };
    EXPECT_EQ(in("I01,No.1,0,1,2"), block("ErrX001", 102, "00003", "I01,No.1,0,1,2"));
    EXPECT_EQ(in("I01,No.1,a,1,2,"), block("ErrI01-1", 109, "00003", "I01,No.1,a,1,2,"));
    EXPECT_EQ(in("I01,No.1,0,a,2,"), block("ErrI01-2", 123, "00003", "I01,No.1,0,a,2,"));
    EXPECT_EQ(in("I01,No.1,0,1,a,"), block("ErrI01-3", 121, "00003", "I01,No.1,0,1,a,"));
    EXPECT_EQ(in("I02,P,-5.0,1.0"), block("ErrX001", 102, "00003", "I02,P,-5.0,1.0"));
    EXPECT_EQ(in("I02,P,-5.0,1.0,,"), block("ErrX001", 101, "00003", "I02,P,-5.0,1.0,,"));
    EXPECT_EQ(in("I02,P,a,1.0,"), block("ErrI02-1", 122, "00003", "I02,P,a,1.0,"));
    EXPECT_EQ(in("I02,P,-5.0,a,"), block("ErrI02-2", 123, "00003", "I02,P,-5.0,a,"));
    EXPECT_EQ(in("I02,P,-5.0,1.0,"), kNone);
}

TEST(SectionFilters, ReportEveryOtherCode) {
    EXPECT_EQ(inCoordinates("B01,1,P,"), block("ErrA001", 103, "00002", "B01,1,P,"));
    EXPECT_EQ(inCoordinates("Z01,note,"), block("ErrA001", 103, "00002", "Z01,note,"));
    EXPECT_EQ(inCoordinates("a01,1,P,1,2,,"), block("ErrA001", 103, "00002", "a01,1,P,1,2,,"));
    EXPECT_EQ(inLot("B03,1,").back(), block("ErrD001", 130, "00007", "B03,1,").front());
    EXPECT_EQ(inLot("Z00,note,").back(), block("ErrD001", 130, "00007", "Z00,note,").front());
    EXPECT_EQ(inRoute("Z00,note,").back(), block("ErrF001", 131, "00008", "Z00,note,").front());
    EXPECT_EQ(inRoute("E00,").back(), block("ErrF001", 131, "00008", "E00,").front());
    EXPECT_EQ(inLongitudinal("Z00,note,").back(), block("ErrH001", 132, "00002", "Z00,note,").front());
    EXPECT_EQ(inCrossSection("Z00,note,").back(), block("ErrI001", 133, "00002", "Z00,note,").front());
    EXPECT_EQ(inCrossSection("H01,").back(), block("ErrI001", 133, "00002", "H01,").front());
}

TEST(SectionFilters, LetBlankLinesPass) {
    EXPECT_EQ(fullRead({"A00,", "", " \t ", "A99,", "H00,1,R,", "", "H99,", "I00,1,R,", "", "I99,", "D00,1,L,1,", "",
                        "D99,", "F00,1,1,R,3,", "", "F99,"})
                  .errors(),
              kNone);
}

TEST(SectionFilters, CompareTheCodeAsSplitButForTheLot) {
    EXPECT_EQ(fullRead({"A00,", "A01 ,1,P,1,2,,", "A99,"}).errorCodes(), Lines{"ErrA001"});
    EXPECT_EQ(fullRead({"H00,1,R,", "H01 ,1,0,1,2,1,", "H99,"}).errorCodes(), Lines{"ErrH001"});
    // The lot's filter trims, the dispatch does not: the record passes and does nothing.
    const Pass run = readAfterPoints({"D00,1,L,1,", "B01 ,1,P1,", "D99 ,", "B01,2,P2,", "D99,"});
    EXPECT_EQ(run.errors(), Lines{});
    ASSERT_EQ(run.reader.lots.size(), 1U);
    EXPECT_EQ(run.reader.lots[0].points.size(), 1U);
    EXPECT_EQ(run.reader.passedOver.at("not used in a lot: B01 "), 1);
}

TEST(StringTable, HoldsTheTextsById) {
    EXPECT_EQ(resourceText(131), "座標データが無効です。これを無視して、これを処理を続けます。");
    EXPECT_EQ(resourceText(135), "Width is non-numerical value.");
    EXPECT_EQ(resourceText(152), "全て ");
    for (int id = 101; id <= 155; ++id) {
        EXPECT_FALSE(resourceText(id).empty()) << id;
    }
    EXPECT_TRUE(resourceText(100).empty());
    EXPECT_TRUE(resourceText(156).empty());
}

} // namespace fenmark::sima
