// The recording doubles themselves.
#include "host/recording/recording_host.h"
#include "support/exact_chain.h"
#include "support/route_elements.h"

#include "host/boundary/automation_error.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <numbers>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace fenmark {
namespace {

using host::Call;
using host::MdDbObjectId;
using host::MdGePoint3d;
using host::PlanPoint;
using host::RecordedChain;
using host::RecordingHost;

constexpr double kPointTolerance = 1e-9; // metres
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(RecordingHost, BeginsAsANewDrawing) {
    RecordingHost host;
    EXPECT_EQ(host.drawingWriter().listLayers(), (std::vector<std::string>{"0"}));
    EXPECT_EQ(host.drawingWriter().getCurrentLayerName(), "0");
    const auto corridor = host.makeCorridorUtility();
    corridor->connect();
    std::vector<std::string> sites{"old"};
    EXPECT_EQ(corridor->listSites(sites), 0);
    EXPECT_TRUE(sites.empty());
    EXPECT_EQ(corridor->createSite("サイト"), 0);
    EXPECT_EQ(corridor->findSite("サイト"), 0);
    EXPECT_EQ(corridor->findSite("サイト "), -1);
    corridor->disconnect();
    EXPECT_EQ(host.calls.text(),
              "listLayers getCurrentLayerName connect listSites createSite findSite findSite disconnect");
}

TEST(RecordingHost, RaisesThePointerErrorOutsideAConnection) {
    RecordingHost host;
    const auto corridor = host.makeCorridorUtility();
    std::vector<std::string> sites;
    EXPECT_THROW(corridor->disconnect(), host::AutomationError);
    EXPECT_THROW(corridor->listSites(sites), host::AutomationError);
}

TEST(RecordingHost, IdentifiersAreNeverRepeated) {
    RecordingHost host;
    host.civil.sites = {"サイト"};
    std::vector<MdGePoint3d> vertices{{0.0, 0.0, 0.0}};
    const MdDbObjectId point = host.drawing.appendPoint({}, "0");
    const MdDbObjectId polyline = host.drawing.appendPolyline(vertices);
    const auto corridor = host.makeCorridorUtility();
    corridor->connect();
    sima::Array<sima::EntityData> elements{test::straight(0.0, 0.0, 10.0, 0.0)};
    const MdDbObjectId alignment = corridor->createAlignment("A", "サイト", "d", 0.0, elements);
    EXPECT_NE(point, polyline);
    EXPECT_NE(polyline, alignment);
    EXPECT_EQ(corridor->getAlignmentName(alignment), "A");
    EXPECT_EQ(corridor->getAlignmentName(polyline), "");
    EXPECT_EQ(host.calls.count(Call::GetAlignmentName), 2U);
    std::map<std::string, MdDbObjectId> found;
    EXPECT_EQ(corridor->collectAlignments(found), 0);
    EXPECT_EQ(found, (std::map<std::string, MdDbObjectId>{{"A", alignment}}));
}

TEST(RecordingHost, KeepsRowsOfDifferentSourcesApart) {
    RecordingHost host;
    host.rows.writeCoordinateRow(MdDbObjectId(1), "a.sim", {"P1", 0.0, 0.0, 0.0, 11, false});
    host.rows.writeCoordinateRow(MdDbObjectId(2), "a.sim", {"", 0.0, 0.0, 0.0, 12, false});
    host.rows.writeResultRow(MdDbObjectId(3), "b.sim", 5, "L", true);
    host.rows.writeCoordinateRow(MdDbObjectId(4), "a.sim", {"P4", 0.0, 0.0, 0.0, 14, false});
    ASSERT_EQ(host.rows.rowCount(), 4U);
    EXPECT_EQ(host.rows.row(0).name, "P1");
    EXPECT_EQ(host.rows.row(1).name, "");
    EXPECT_EQ(host.rows.row(1).no, 12);
    EXPECT_EQ(host.rows.row(2).fileName, "b.sim");
    EXPECT_EQ(host.rows.row(2).type, "横断成果");
    EXPECT_EQ(host.rows.row(3).fileName, "a.sim");
    EXPECT_EQ(host.rows.row(3).type, "座標");
    EXPECT_EQ(host.rows.row(3).id, MdDbObjectId(4));
}

TEST(RecordingHost, SitesThatCannotBeHadAreRefused) {
    RecordingHost host;
    host.civil.sites = {"サイト"};
    host.civil.failSites = true;
    const auto corridor = host.makeCorridorUtility();
    corridor->connect();
    std::vector<std::string> sites{"old"};
    EXPECT_EQ(corridor->listSites(sites), -1);
    EXPECT_TRUE(sites.empty());
    EXPECT_EQ(corridor->createSite("B"), -1);
    EXPECT_EQ(corridor->findSite("サイト"), -1);
    std::map<std::string, MdDbObjectId> found;
    EXPECT_EQ(corridor->collectAlignments(found), -1);
    sima::Array<sima::EntityData> elements{test::straight(0.0, 0.0, 10.0, 0.0)};
    EXPECT_TRUE(corridor->createAlignment("A", "サイト", "d", 0.0, elements).isNull());
    EXPECT_EQ(host.civil.sites, std::vector<std::string>{"サイト"});
    EXPECT_TRUE(host.civil.alignments.empty());
}

TEST(RecordingHost, AlignmentsAreCollectedSiteBySiteUntilItFails) {
    RecordingHost host;
    host.civil.sites = {"B", "A"};
    const auto corridor = host.makeCorridorUtility();
    corridor->connect();
    for (const char* site : {"A", "B"}) {
        sima::Array<sima::EntityData> elements{test::straight(0.0, 0.0, 10.0, 0.0)};
        ASSERT_FALSE(corridor->createAlignment(std::string("of ") + site, site, "d", 0.0, elements).isNull());
    }
    std::map<std::string, MdDbObjectId> found;
    EXPECT_EQ(corridor->collectAlignments(found), 0);
    EXPECT_EQ(found.size(), 2U);
    host.civil.failAlignments = true;
    found.clear();
    EXPECT_EQ(corridor->collectAlignments(found), -1);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found.begin()->first, "of B") << "the first site's";
}

TEST(RecordingHost, AnAddThatFailsLeavesTheAlignmentHalfMade) {
    for (const std::int32_t failing : {0, 1, 2}) {
        RecordingHost host;
        host.civil.sites = {"サイト"};
        host.civil.failingAdd = failing;
        const auto corridor = host.makeCorridorUtility();
        corridor->connect();
        sima::Array<sima::EntityData> elements{test::straight(0.0, 0.0, 100.0, 0.0),
                                               test::arc(100.0, 0.0, 150.0, 50.0, "50", "R"),
                                               test::clothoid(150.0, 50.0, 150.0, 90.0, "50", "50", "0", "R")};
        EXPECT_TRUE(corridor->createAlignment("A", "サイト", "d", 5.0, elements).isNull());
        ASSERT_EQ(host.civil.alignments.size(), 1U);
        EXPECT_FALSE(host.civil.alignments[0].complete);
        EXPECT_EQ(host.civil.alignments[0].startStation, 0.0);
        EXPECT_EQ(host.civil.alignments[0].chain.elements().size(), static_cast<std::size_t>(failing));
    }
}

TEST(RecordingHost, KeepsManyRecordsWhereTheyAre) {
    constexpr std::size_t kMany = 1000; // several pieces of the lists
    RecordingHost host;
    std::vector<std::span<const MdGePoint3d>> kept;
    for (std::size_t i = 0; i < kMany; ++i) {
        const auto x = static_cast<double>(i);
        std::vector<MdGePoint3d> vertices(i % 5, MdGePoint3d{x, 0.0, 0.0});
        const MdDbObjectId polyline = host.drawing.appendPolyline(vertices);
        const MdDbObjectId point = host.drawing.appendPointXyz(x, -x, 0.0, i % 2 == 0 ? "even" : "odd");
        host.rows.writeResultRow(point, "a.sim", static_cast<std::int32_t>(i), std::string(i % 7, 'n'), true);
        kept.push_back(host.drawing.polyline(i).vertices);
        EXPECT_EQ(host.drawing.polyline(i).id, polyline);
    }
    for (std::size_t i = 0; i < kMany; ++i) {
        const host::RecordedPolyline& polyline = host.drawing.polyline(i);
        EXPECT_EQ(polyline.vertices.data(), kept[i].data());
        ASSERT_EQ(polyline.vertices.size(), i % 5);
        for (const MdGePoint3d& vertex : polyline.vertices) {
            EXPECT_EQ(vertex.x, static_cast<double>(i));
        }
        const host::RecordedPoint& point = host.drawing.point(i);
        EXPECT_EQ(point.position.y, -static_cast<double>(i));
        EXPECT_EQ(point.layer, i % 2 == 0 ? "even" : "odd");
        const host::RecordedRow row = host.rows.row(i);
        EXPECT_EQ(row.id, point.id);
        EXPECT_EQ(row.no, static_cast<std::int32_t>(i));
        EXPECT_EQ(row.name, std::string(i % 7, 'n'));
        host.drawing.convertToLightweight(polyline.id);
        EXPECT_TRUE(polyline.lightweight);
    }
    EXPECT_THROW((void)host.drawing.point(kMany), std::out_of_range);
    EXPECT_THROW((void)host.drawing.polyline(kMany), std::out_of_range);
    EXPECT_THROW((void)host.rows.row(kMany), std::out_of_range);
}

TEST(RecordingHost, PolylinesAreFoundByTheirIdentifiers) {
    RecordingHost host;
    host.rows.bindProject();
    std::vector<MdDbObjectId> ids;
    for (int i = 0; i < 3; ++i) {
        std::vector<MdGePoint3d> vertices{{0.0, 0.0, 0.0}, {1.0, 1.0, 0.0}};
        ids.push_back(host.drawing.appendPolyline(vertices));
        host.drawing.appendPoint({}, "0"); // identifiers of points lie between
    }
    host.drawing.convertToLightweight(ids[0]);
    host.drawing.setPolylineLayer(ids[1], "線");
    EXPECT_TRUE(host.drawing.setLotPolyline(ids[0], "画地", true));
    EXPECT_FALSE(host.drawing.setLotPolyline(ids[1], "画地", true)) << "it is no lightweight polyline";
    for (const MdDbObjectId none : {MdDbObjectId(ids[0].asUint64() + 1), MdDbObjectId(99), MdDbObjectId()}) {
        host.drawing.convertToLightweight(none);
        host.drawing.setPolylineLayer(none, "none");
        EXPECT_FALSE(host.drawing.setLotPolyline(none, "none", true));
    }
    EXPECT_TRUE(host.drawing.polyline(0).lightweight);
    EXPECT_TRUE(host.drawing.polyline(0).closed);
    EXPECT_EQ(host.drawing.polyline(0).layer, "画地");
    EXPECT_EQ(host.drawing.polyline(1).layer, "線");
    EXPECT_EQ(host.drawing.polyline(2).layer, "0");
    EXPECT_FALSE(host.drawing.polyline(2).lightweight);
    host.drawing.convertToLightweight(ids[2]);
    host.drawing.failLotPolylines = true;
    EXPECT_FALSE(host.drawing.setLotPolyline(ids[2], "画地", true));
    EXPECT_EQ(host.drawing.polyline(2).layer, "0");
    EXPECT_EQ(host.calls.count(Call::BindProject), 1U);
    EXPECT_EQ(host::nameOf(Call::BindProject), "bindProject");
}

TEST(RecordedChains, AnswerStationsOnStraightsAndArcs) {
    RecordedChain chain;
    chain.addLine({0.0, 0.0, 0.0}, {100.0, 0.0, 0.0});
    // A quarter turn to the left of radius 50, and one to the right.
    chain.addArc({100.0, 0.0, 0.0}, {150.0, 50.0, 0.0}, 50.0, 0);
    chain.addArc({150.0, 50.0, 0.0}, {200.0, 100.0, 0.0}, 50.0, -1);
    const double quarter = 25.0 * std::numbers::pi;
    EXPECT_NEAR(chain.length(), 100.0 + 2.0 * quarter, kPointTolerance);
    PlanPoint point;
    ASSERT_TRUE(chain.pointAt(40.0, 3.0, point));
    EXPECT_NEAR(point.x, 40.0, kPointTolerance);
    EXPECT_NEAR(point.y, -3.0, kPointTolerance) << "a positive offset lies right of travel";
    ASSERT_TRUE(chain.pointAt(100.0 + quarter / 2.0, 0.0, point));
    EXPECT_NEAR(point.x, 100.0 + 50.0 * std::sqrt(0.5), kPointTolerance);
    EXPECT_NEAR(point.y, 50.0 - 50.0 * std::sqrt(0.5), kPointTolerance);
    ASSERT_TRUE(chain.pointAt(100.0 + 1.5 * quarter, 0.0, point));
    EXPECT_NEAR(point.x, 200.0 - 50.0 * std::sqrt(0.5), kPointTolerance);
    EXPECT_NEAR(point.y, 50.0 + 50.0 * std::sqrt(0.5), kPointTolerance);
}

TEST(RecordedChains, RefuseStationsBeyondAMicrometreOutside) {
    RecordedChain chain;
    PlanPoint point{7.0, 8.0};
    EXPECT_FALSE(chain.pointAt(0.0, 0.0, point)) << "an empty chain";
    chain.addLine({0.0, 0.0, 0.0}, {100.0, 0.0, 0.0});
    EXPECT_TRUE(chain.pointAt(100.0 + 0.9e-6, 0.0, point));
    EXPECT_EQ(point.x, 100.0);
    EXPECT_TRUE(chain.pointAt(-0.9e-6, 0.0, point));
    point = {7.0, 8.0};
    EXPECT_FALSE(chain.pointAt(100.0 + 1.1e-6, 0.0, point));
    EXPECT_FALSE(chain.pointAt(-1.1e-6, 0.0, point));
    EXPECT_FALSE(chain.pointAt(std::nan(""), 0.0, point));
    EXPECT_EQ(point, (PlanPoint{7.0, 8.0}));
}

TEST(RecordedChains, LayClothoidsAsTheExactIntegralDoes) {
    for (const double turn : {1.0, -1.0}) {
        exact::Pose pose{10.0L, 20.0L, 0.4L};
        const Calelm record = exact::lay(pose, exact::clothoid(turn, 100.0, 300.0, 150.0));
        RecordedChain chain;
        chain.addLine({0.0, 0.0, 0.0}, {10.0, 20.0, 0.0});
        const double ux = std::cos(record.sang);
        const double uy = std::sin(record.sang);
        const double vx = std::cos(record.eang);
        const double vy = std::sin(record.eang);
        const double t = ((record.ex - record.sx) * vy - (record.ey - record.sy) * vx) / (ux * vy - uy * vx);
        const MdGePoint3d pi{record.sx + t * ux, record.sy + t * uy, 0.0};
        ASSERT_EQ(chain.addSpiral(1, {10.0, 20.0, 0.0}, pi, 300.0, 150.0, record.len,
                                  static_cast<std::int16_t>(turn == 1.0 ? -1 : 0), 1),
                  0);
        EXPECT_NEAR(chain.last().laidEnd.x, record.ex, kPointTolerance);
        EXPECT_NEAR(chain.last().laidEnd.y, record.ey, kPointTolerance);
    }
}

TEST(RecordedChains, ClothoidWithoutAPiContinuesTheElementBefore) {
    RecordedChain chain;
    chain.addLine({100.0, 100.0, 0.0}, {200.0, 200.0, 0.0});
    ASSERT_EQ(chain.addSpiral(1, {200.0, 200.0, 0.0}, {}, kInfinity, 200.0, 50.0, 0, 1), 0);
    EXPECT_NEAR(chain.last().startAngle, std::numbers::pi / 4, kPointTolerance);
}

TEST(RecordedChains, ElementsOfNoPlanLengthTakeTheDirectionOfTheElementBefore) {
    RecordedChain chain;
    const MdGePoint3d joint{200.0, 200.0, 0.0};
    chain.addLine({100.0, 100.0, 0.0}, joint);
    ASSERT_EQ(chain.addLine(joint, joint), 0);
    ASSERT_EQ(chain.addArc(joint, joint, 50.0, 0), 0);
    ASSERT_EQ(chain.addSpiral(3, joint, {}, kInfinity, 200.0, 50.0, 0, 1), 0);
    for (const host::RecordedElement& element : chain.elements()) {
        EXPECT_NEAR(element.startAngle, std::numbers::pi / 4, kPointTolerance) << element.type;
    }
}

TEST(RecordedChains, RefuseWhatCannotBeLaid) {
    RecordedChain chain;
    chain.addLine({0.0, 0.0, 0.0}, {10.0, 0.0, 0.0});
    const MdGePoint3d start{10.0, 0.0, 0.0};
    const MdGePoint3d end{30.0, 0.0, 0.0};
    EXPECT_NE(chain.addArc(start, end, 0.0, 0), 0);
    EXPECT_NE(chain.addArc(start, end, 9.99, 0), 0) << "the chord is longer than the diameter";
    EXPECT_EQ(chain.addArc(start, end, 10.0, 0), 0) << "the chord is the diameter";
    EXPECT_NE(chain.addSpiral(1, start, end, kInfinity, kInfinity, 50.0, 0, 1), 0);
    EXPECT_NE(chain.addSpiral(1, start, end, kInfinity, 100.0, 0.0, 0, 1), 0);
    EXPECT_NE(chain.addSpiral(77, start, end, kInfinity, 100.0, 50.0, 0, 1), 0) << "an unknown element before";
    EXPECT_NE(chain.addSpiral(1, start, end, 0.0, 100.0, 50.0, 0, 1), 0);
    EXPECT_NE(chain.addSpiral(1, start, end, 100.0, 0.0, 50.0, 0, 1), 0);
    EXPECT_NE(chain.addSpiral(1, start, end, kInfinity, 1e-300, 1e300, 0, 1), 0) << "beyond what a real holds";
    EXPECT_EQ(chain.elements().size(), 2U);
    PlanPoint point{7.0, 8.0};
    EXPECT_FALSE(chain.pointAt(5.0, kInfinity, point));
    EXPECT_EQ(point, (PlanPoint{7.0, 8.0}));
}

TEST(RecordedChains, KeepWhatTheyWereGiven) {
    RecordedChain chain;
    const MdGePoint3d a{0.0, 0.0, 1.0};
    const MdGePoint3d b{100.0, 0.0, 2.0};
    const MdGePoint3d c{150.0, 50.0, 3.0};
    const MdGePoint3d pi{150.0, 70.0, 4.0};
    ASSERT_EQ(chain.addLine(a, b), 0);
    ASSERT_EQ(chain.addArc(b, c, 50.0, -1), 0);
    ASSERT_EQ(chain.addSpiral(2, c, pi, 80.0, 50.0, 40.0, -1, 5), 0);
    ASSERT_EQ(chain.elements().size(), 3U);
    const host::RecordedElement& line = chain.elements()[0];
    EXPECT_EQ(line.type, 'S');
    EXPECT_EQ(line.id, 1);
    EXPECT_EQ(line.start, a);
    EXPECT_EQ(line.end, b);
    const host::RecordedElement& arc = chain.elements()[1];
    EXPECT_EQ(arc.type, 'R');
    EXPECT_EQ(arc.id, 2);
    EXPECT_EQ(arc.start, b);
    EXPECT_EQ(arc.end, c);
    EXPECT_EQ(arc.radius, 50.0);
    EXPECT_EQ(arc.direction, -1);
    const host::RecordedElement& spiral = chain.elements()[2];
    EXPECT_EQ(spiral.type, 'A');
    EXPECT_EQ(spiral.id, 3);
    EXPECT_EQ(spiral.start, c);
    EXPECT_EQ(spiral.end, MdGePoint3d());
    EXPECT_EQ(spiral.pi, pi);
    EXPECT_EQ(spiral.startRadius, 80.0);
    EXPECT_EQ(spiral.endRadius, 50.0);
    EXPECT_EQ(spiral.length, 40.0);
    EXPECT_EQ(spiral.direction, -1);
    EXPECT_EQ(spiral.elementBefore, 2);
    EXPECT_EQ(spiral.spiralKind, 5);
}

TEST(RecordedChains, TakeWhatIsSmall) {
    for (const double small : {1e-3, 0.05, 0.5}) {
        RecordedChain chain;
        ASSERT_EQ(chain.addLine({0.0, 0.0, 0.0}, {0.0, small, 0.0}), 0);
        EXPECT_NEAR(chain.last().startAngle, std::numbers::pi / 2, kPointTolerance) << small;
        ASSERT_EQ(chain.addArc({0.0, small, 0.0}, {0.0, 2.0 * small, 0.0}, small, 0), 0) << small;
        EXPECT_NEAR(chain.last().laidLength, small * std::numbers::pi / 3.0, kPointTolerance) << small;
        EXPECT_EQ(chain.addSpiral(1, {}, {}, small, 200.0, 60.0, 0, 1), 0) << small;
        EXPECT_EQ(chain.addSpiral(1, {}, {}, 200.0, small, 60.0, 0, 1), 0) << small;
        EXPECT_EQ(chain.addSpiral(1, {}, {}, 200.0, 100.0, small, 0, 1), 0) << small;
        PlanPoint point;
        ASSERT_TRUE(chain.pointAt(0.5 * small, 0.0, point));
        EXPECT_NEAR(point.y, 0.5 * small, kPointTolerance) << small;
    }
}

TEST(RecordedChains, TakeAHalfCircleWhoseChordIsTooLongByRounding) {
    RecordedChain chain;
    ASSERT_EQ(chain.addArc({0.0, 0.0, 0.0}, {20.0 * (1.0 + 0.9e-9), 0.0, 0.0}, 10.0, 0), 0);
    EXPECT_NEAR(chain.length(), 10.0 * std::numbers::pi, kPointTolerance);
    EXPECT_NE(chain.addArc({0.0, 0.0, 0.0}, {20.0 * (1.0 + 1.1e-9), 0.0, 0.0}, 10.0, 0), 0);
}

TEST(RecordedChains, RemovalTakesTheElementOfItsPlace) {
    for (const std::size_t removed : {0U, 1U, 2U}) {
        RecordedChain chain;
        std::vector<std::int32_t> left;
        for (std::size_t i = 0; i < 3; ++i) {
            const auto x = static_cast<double>(i);
            chain.addLine({x, 0.0, 0.0}, {x + 1.0, 0.0, 0.0});
            if (i != removed) {
                left.push_back(chain.last().id);
            }
        }
        chain.removeAt(removed);
        ASSERT_EQ(chain.elements().size(), 2U);
        EXPECT_EQ(chain.elements()[0].id, left[0]) << removed;
        EXPECT_EQ(chain.elements()[1].id, left[1]) << removed;
        EXPECT_EQ(chain.length(), 2.0);
    }
}

TEST(RecordedChains, RemovalKeepsTheStationsOfTheRest) {
    RecordedChain chain;
    chain.addLine({-100.0, 0.0, 0.0}, {0.0, 0.0, 0.0});
    chain.addLine({0.0, 0.0, 0.0}, {10.0, 0.0, 0.0});
    chain.removeAt(0);
    EXPECT_EQ(chain.length(), 10.0);
    PlanPoint point;
    ASSERT_TRUE(chain.pointAt(4.0, 0.0, point));
    EXPECT_EQ(point.x, 4.0);
}

} // namespace
} // namespace fenmark
