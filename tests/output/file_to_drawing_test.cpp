// Whole files through the reader into a recorded drawing: what reaches the host, in which order, and what the log says.
#include "output_fixture.h"
#include "support/exact_chain.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace fenmark {
namespace {

constexpr double kJointTolerance = 1e-3; // metres: coordinates are written to 0.1 mm, radii to 1 mm

class FileToDrawing : public test::Output {
  protected:
    ~FileToDrawing() override { std::filesystem::remove(path); }

    // Texts are ASCII here, so that the encoding of the file plays no part.
    void import(const std::string& lines) {
        {
            std::ofstream file(path, std::ios::binary);
            for (const char c : lines) {
                c == '\n' ? file << "\r\n" : file << c;
            }
        }
        sima::ReadContext context;
        context.sink = &output;
        context.host = &host;
        reader.fullRead(path, context);
    }

    // An A section of the joints of a chain, numbered from 1. North is the drawing's y.
    static std::string pointsOf(const std::vector<Calelm>& chain) {
        std::string text = "A00,\n";
        for (std::size_t i = 0; i <= chain.size(); ++i) {
            const double x = i < chain.size() ? chain[i].sx : chain[i - 1].ex;
            const double y = i < chain.size() ? chain[i].sy : chain[i - 1].ey;
            char line[120];
            std::snprintf(line, sizeof line, "A01,%zu,P%zu,%.4f,%.4f,,\n", i + 1, i + 1, y, x);
            text += line;
        }
        return text + "A99,\n";
    }

    // A positive radius turns left on the map, which is the construction's right in the drawing's numbers.
    static std::string routeOf(const std::vector<Calelm>& chain) {
        std::string text = "F00,7,1,route,3,\nF03,100.0,\n";
        char line[120];
        for (std::size_t i = 0; i <= chain.size(); ++i) {
            std::snprintf(line, sizeof line, "B01,%zu,P%zu,\n", i + 1, i + 1);
            text += line;
            if (i == chain.size()) {
                break;
            }
            const double sign = chain[i].dir == 1.0 ? -1.0 : 1.0;
            if (chain[i].type == ALI_ARC) {
                std::snprintf(line, sizeof line, "C01,0,%.3f,\n", sign * chain[i].par);
            } else if (chain[i].type == ALI_CLOTHOID) {
                std::snprintf(line, sizeof line, "C02,%.3f,%.3f,%.3f,\n", chain[i].par, sign * chain[i].r1,
                              sign * chain[i].r2);
            }
            if (chain[i].type != ALI_STRAIGHT) {
                text += line;
            }
        }
        return text + "F99,\n";
    }

    std::string path =
        testing::TempDir() + "fenmark_" + testing::UnitTest::GetInstance()->current_test_info()->name() + ".sim";
};

TEST_F(FileToDrawing, RouteInBothSensesComesThroughWithItsResultsOnIt) {
    for (const double turn : {1.0, -1.0}) {
        const auto records = exact::lay_chain(exact::Pose{1000.0L, 500.0L, 0.4L},
                                              {exact::straight(100.0), exact::clothoid(turn, 100.0, 0.0, 200.0),
                                               exact::arc(turn, 200.0, 80.0), exact::clothoid(turn, 100.0, 200.0, 0.0),
                                               exact::straight(60.0)});
        import(pointsOf(records) + routeOf(records) + "H00,7,route,\nH01,No.1,120.0,31.5,31.0,1,\nH99,\n" +
               "I00,7,route,\nI01,No.1,120.0,31.5,31.0,\nI02,L1,-3.0,32.0,\nI99,\n");
        ASSERT_EQ(reader.alignmentsCreated, 1);
        const auto& laid = chain();
        ASSERT_EQ(laid.size(), 5U);
        for (std::size_t i = 0; i < 5; ++i) {
            EXPECT_NEAR(laid[i].laidEnd.x, records[i].ex, kJointTolerance);
            EXPECT_NEAR(laid[i].laidEnd.y, records[i].ey, kJointTolerance);
            if (i > 0) {
                EXPECT_NEAR(exact::angle_difference(laid[i].startAngle, laid[i - 1].endAngle), 0.0, 1e-4);
            }
        }
        EXPECT_EQ(host.civil.alignments.back().startStation, 100.0);
        EXPECT_EQ(reader.longitudinalPointsCreated, 1);
        EXPECT_EQ(reader.crossSectionPointsCreated, 2);
        EXPECT_EQ(reader.log.errorCount(), 0);
        // 20 m from the start, at the ground's height.
        const host::RecordedPoint point = host.drawing.point(host.drawing.pointCount() - 3);
        EXPECT_NEAR(point.position.x, 1000.0 + 20.0 * std::cos(0.4), kJointTolerance);
        EXPECT_NEAR(point.position.y, 500.0 + 20.0 * std::sin(0.4), kJointTolerance);
        EXPECT_EQ(point.position.z, 31.5);
    }
}

TEST_F(FileToDrawing, AxesCrossOnce) {
    import("A00,\nA01,1,P1,10.0,20.0,3.0,\nA99,\n");
    ASSERT_EQ(host.drawing.pointCount(), 1U);
    EXPECT_EQ(host.drawing.point(0).position, (host::MdGePoint3d{20.0, 10.0, 3.0}));
}

TEST_F(FileToDrawing, PointsOfAnUntickedSectionServeTheLotsBehindIt) {
    tick(sima::ImportKind::Coordinates, false);
    import("A00,\nA01,1,P1,0.0,0.0,,\nA01,2,P2,0.0,10.0,,\nA01,3,P3,10.0,0.0,,\nA99,\n"
           "D00,5,lot,1,\nB01,1,P1,\nB01,2,P2,\nB01,3,P3,\nD99,\n");
    EXPECT_EQ(host.drawing.pointCount(), 0U);
    ASSERT_EQ(host.drawing.polylineCount(), 1U);
    EXPECT_TRUE(host.drawing.polyline(0).closed);
    EXPECT_EQ(host.drawing.polyline(0).vertices.size(), 3U);
    EXPECT_EQ(host.rows.tables(), (std::vector<std::string>{"JSIMA_V3_Pline"}));
}

TEST_F(FileToDrawing, TwoClosingsOfASectionDefineTheTableTwiceAndDrawOnce) {
    import("A00,\nA01,1,P1,0.0,0.0,,\nA99,\nA00,\nA99,\n");
    EXPECT_EQ(host.calls.text(), "definePointTable appendPointXyz writeCoordinateRow definePointTable");
}

TEST_F(FileToDrawing, StationsOutsideRaiseTheErrorCountBehindTheEndRecordsOwnError) {
    import("A00,\nA01,1,P1,0.0,0.0,,\nA01,2,P2,0.0,50.0,,\nA99,\n"
           "F00,7,1,route,3,\nB01,1,P1,\nB01,2,P2,\nF99,\n"
           "H00,7,route,\nH01,No.9,99.0,1.0,1.0,1,\nH99,x,\n"
           "I00,7,route,\nI01,No.9,99.0,1.0,1.0,\nI02,L1,-3.0,32.0,\nI99,\n");
    EXPECT_EQ(reader.log.errorCount(), 3);
    ASSERT_EQ(reader.log.errors().size(), 12U);
    EXPECT_EQ(reader.log.errors()[5], "ErrX001 次の縦断成果を作成できませんでした。（線形範囲外の測点です）");
    EXPECT_EQ(reader.log.errors()[6], "00011行目 H01,No.9,99.0,1.0,1.0,1,") << "the line of the H99";
    EXPECT_EQ(reader.log.errors()[9], "ErrX001 次の横断成果を作成できませんでした。（線形範囲外の測点です）");
    EXPECT_EQ(reader.log.errors()[10], "00013行目 I01,No.9,99.0,1.0,1.0,") << "its own line";
    EXPECT_EQ(reader.longitudinalPointsCreated, 0);
    EXPECT_EQ(reader.crossSectionPointsCreated, 0);
}

TEST_F(FileToDrawing, RouteThatCannotBeMadeIsLoggedAsGoodAndItsResultsFail) {
    import("A00,\nA01,1,P1,0.0,0.0,,\nA01,2,P2,0.0,50.0,,\nA99,\n"
           "F00,7,1,route,3,\nB01,1,P1,\nC01,0,10.0,\nB01,2,P2,\nF99,\n"
           "H00,7,route,\nH01,No.1,0.0,1.0,1.0,1,\nH99,\n");
    EXPECT_EQ(reader.alignmentsCreated, 0);
    EXPECT_EQ(reader.routesRead(3), 1);
    ASSERT_EQ(host.civil.alignments.size(), 1U) << "the half-made alignment stays";
    EXPECT_EQ(host.civil.alignments[0].description, reader.baseName + "-route");
    EXPECT_EQ(reader.log.errorCount(), 1);
    EXPECT_EQ(reader.longitudinalPointsCreated, 0);
}

TEST_F(FileToDrawing, LeadingClothoidEndsTheReadAtItsSectionsEnd) {
    const std::string before = "A00,\nA01,1,P1,0.0,0.0,,\nA01,2,P2,2.08,49.92,,\nA99,\n"
                               "F00,7,1,route,3,\nB01,1,P1,\nC02,100.0,0.0,200.0,\nB01,2,P2,\nF99,\n";
    EXPECT_THROW(import(before + "A00,\nA01,3,P3,0.0,0.0,,\nA99,\n"), std::invalid_argument);
    EXPECT_EQ(reader.lineNumber, 9);
    EXPECT_EQ(host.drawing.pointCount(), 2U) << "the points before stay, those behind are not read";
    ASSERT_EQ(host.civil.alignments.size(), 1U);
    EXPECT_EQ(chain().size(), 1U) << "the auxiliary line";
}

TEST_F(FileToDrawing, UntickedRouteIsFoundByItsResultsAndAllStationsFail) {
    tick(sima::ImportKind::CentreLine, false);
    import("A00,\nA01,1,P1,0.0,0.0,,\nA01,2,P2,0.0,50.0,,\nA99,\n"
           "F00,7,1,route,3,\nB01,1,P1,\nB01,2,P2,\nF99,\n"
           "H00,7,route,\nH01,No.1,0.0,1.0,1.0,1,\nH01,No.2,10.0,1.0,1.0,1,\nH99,\n");
    EXPECT_TRUE(host.civil.alignments.empty());
    EXPECT_EQ(reader.log.errorCount(), 2);
}

TEST_F(FileToDrawing, PolylineRoutesGoToTheirLayers) {
    import("A00,\nA01,1,P1,0.0,0.0,,\nA01,2,P2,0.0,50.0,,\nA99,\n"
           "F00,1,1,ip,1,\nB01,1,P1,\nB01,2,P2,\nF99,\n"
           "F00,2,1,left,4,\nB01,1,P1,\nB01,2,P2,\nF99,\n"
           "F00,3,1,right,5,\nB01,1,P1,\nB01,2,P2,\nF99,\n"
           "F00,4,1,line,6,\nB01,1,P1,\nC01,0,99.0,\nB01,2,P2,\nF99,\n");
    ASSERT_EQ(host.drawing.polylineCount(), 4U);
    EXPECT_EQ(host.drawing.polyline(0).layer, "IP");
    EXPECT_EQ(host.drawing.polyline(1).layer, "幅杭");
    EXPECT_EQ(host.drawing.polyline(2).layer, "幅杭");
    EXPECT_EQ(host.drawing.polyline(3).layer, "連続");
    EXPECT_EQ(reader.polylinesCreated, 4);
    EXPECT_EQ(reader.log.errorCount(), 1) << "the arc in a line of straights only";
    EXPECT_EQ(host.rows.row(5).type, "連続線");
}

} // namespace
} // namespace fenmark
