// Longitudinal results on their alignments.
#include "output_fixture.h"

namespace fenmark {
namespace {

using host::Call;
using host::MdDbObjectId;
using host::MdGePoint3d;
using host::PlanPoint;
using host::RecordedStation;
using sima::ImportKind;

constexpr MdDbObjectId kChosen{900};
constexpr MdDbObjectId kOfRoute{901};

class LongitudinalPoints : public test::Output {
  protected:
    LongitudinalPoints() {
        sima::SimaAlignment route;
        route.routeNumber = 7;
        route.objectId = kOfRoute;
        reader.alignments.push_back(route);
        reader.alignmentId = kChosen;
        reader.shiftDistance = 0.5;
        reader.lineNumber = 99;
        host.civil.pointFunction = [](const RecordedStation& asked, PlanPoint& point) {
            point = {asked.station, 2.0 * asked.station};
            return asked.station > 100.0 ? -1 : 0;
        };
    }

    static sima::HSeriesData sectionAt(const std::vector<double>& stations) {
        sima::HSeriesData section;
        section.routeNumber = 7;
        section.routeFound = true;
        for (const double station : stations) {
            sima::VerticalData vertical;
            vertical.stationName = "No." + std::to_string(section.verticals.size());
            vertical.station = station;
            vertical.groundHeight = 50.0 + static_cast<double>(section.verticals.size());
            vertical.pileHeadHeight = -1.0;
            vertical.sourceText = "H01," + std::to_string(station);
            section.verticals.push_back(vertical);
        }
        return section;
    }
};

TEST_F(LongitudinalPoints, StandAtTheirStationWithTheGroundsHeight) {
    output.createLongitudinalPoints(reader, sectionAt({10.0, 20.0}));
    ASSERT_EQ(host.drawing.pointCount(), 2U);
    EXPECT_EQ(host.drawing.point(1).position, (MdGePoint3d{20.0, 40.0, 51.0}));
    EXPECT_EQ(host.drawing.point(1).layer, "測点");
    expectRow(1, "JSIMA_V3_Point", 7, "No.1", "縦断成果");
    EXPECT_EQ(reader.longitudinalPointsCreated, 2);
    EXPECT_EQ(host.calls.text(), "definePointTable connect pointAtStation appendPoint writeLongitudinalRow "
                                 "pointAtStation appendPoint writeLongitudinalRow disconnect");
}

TEST_F(LongitudinalPoints, WithTheFlagOffNothingIsDone) {
    tick(ImportKind::Longitudinal, false);
    output.createLongitudinalPoints(reader, sectionAt({10.0}));
    EXPECT_TRUE(host.calls.all().empty());
}

TEST_F(LongitudinalPoints, SectionWithoutRecordsStillDefinesAndConnects) {
    output.createLongitudinalPoints(reader, sectionAt({}));
    EXPECT_EQ(host.calls.text(), "definePointTable connect disconnect");
}

TEST_F(LongitudinalPoints, LieOnTheRouteOfTheSectionIfItWasFound) {
    output.createLongitudinalPoints(reader, sectionAt({10.0}));
    EXPECT_EQ(host.civil.stationsAsked.at(0).alignment, kOfRoute);
}

TEST_F(LongitudinalPoints, LieOnTheChosenAlignmentIfNoRouteWasFound) {
    sima::HSeriesData section = sectionAt({10.0});
    section.routeFound = false;
    output.createLongitudinalPoints(reader, section);
    EXPECT_EQ(host.civil.stationsAsked.at(0).alignment, kChosen);
}

TEST_F(LongitudinalPoints, LieOnTheChosenAlignmentInAnyCaseIfTheUserSaidSo) {
    reader.forceChosenAlignment = true;
    output.createLongitudinalPoints(reader, sectionAt({10.0}));
    EXPECT_EQ(host.civil.stationsAsked.at(0).alignment, kChosen);
}

TEST_F(LongitudinalPoints, OfAWallAreMovedApartAndTheSectionStaysAsRead) {
    const sima::HSeriesData section = sectionAt({10.0, 10.0, 10.0, 20.0});
    output.createLongitudinalPoints(reader, section);
    ASSERT_EQ(host.drawing.pointCount(), 4U);
    EXPECT_EQ(host.drawing.point(0).position.x, 10.0);
    EXPECT_EQ(host.drawing.point(1).position.x, 10.5);
    EXPECT_EQ(host.drawing.point(2).position.x, 11.0);
    EXPECT_EQ(host.drawing.point(3).position.x, 20.0);
    EXPECT_EQ(section.verticals[1].station, 10.0);
}

TEST_F(LongitudinalPoints, WithoutAShiftDistanceSharePlanCoordinates) {
    reader.shiftDistance = 0.0;
    output.createLongitudinalPoints(reader, sectionAt({10.0, 10.0}));
    EXPECT_EQ(host.drawing.point(0).position.x, host.drawing.point(1).position.x);
    EXPECT_NE(host.drawing.point(0).position.z, host.drawing.point(1).position.z);
}

TEST_F(LongitudinalPoints, StationOutsideIsLoggedWithTheSectionsLastLineAndTheOthersGoOn) {
    output.createLongitudinalPoints(reader, sectionAt({10.0, 100.5, 20.0}));
    EXPECT_EQ(reader.longitudinalPointsCreated, 2);
    ASSERT_EQ(reader.log.errors().size(), 4U);
    EXPECT_EQ(reader.log.errors()[1], "ErrX001 次の縦断成果を作成できませんでした。（線形範囲外の測点です）");
    EXPECT_EQ(reader.log.errors()[2], "00099行目 H01,100.500000");
    EXPECT_EQ(reader.log.errorCount(), 1);
}

TEST_F(LongitudinalPoints, StationShiftedPastTheEndIsLoggedToo) {
    output.createLongitudinalPoints(reader, sectionAt({100.0, 100.0}));
    EXPECT_EQ(reader.longitudinalPointsCreated, 1);
    EXPECT_EQ(reader.log.errorCount(), 1);
}

TEST_F(LongitudinalPoints, NullAlignmentLogsEveryRecord) {
    host.civil.pointFunction = nullptr;
    reader.alignments.clear();
    output.createLongitudinalPoints(reader, sectionAt({10.0, 20.0, 30.0}));
    EXPECT_EQ(host.drawing.pointCount(), 0U);
    EXPECT_EQ(reader.log.errorCount(), 3);
    EXPECT_EQ(host.calls.all().back(), Call::Disconnect);
}

} // namespace
} // namespace fenmark
