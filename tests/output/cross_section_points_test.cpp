// Cross-section results at their offsets.
#include "output_fixture.h"

namespace fenmark {
namespace {

using host::MdDbObjectId;
using host::MdGePoint3d;
using host::PlanPoint;
using host::RecordedStation;
using sima::ImportKind;
using SubEntity = sima::IntersectionData::SubEntity;

constexpr MdDbObjectId kChosen{900};
constexpr MdDbObjectId kOfRoute{901};

class CrossSectionPoints : public test::Output {
  protected:
    CrossSectionPoints() {
        sima::SimaAlignment route;
        route.routeNumber = 7;
        route.objectId = kOfRoute;
        reader.alignments.push_back(route);
        reader.alignmentId = kChosen;
        reader.shiftDistance = 0.1;
        reader.lineNumber = 99;
        host.civil.pointFunction = [](const RecordedStation& asked, PlanPoint& point) {
            point = {asked.station, asked.offset};
            return asked.station > 100.0 || asked.offset > 50.0 ? -1 : 0;
        };
    }

    static SubEntity at(double station, const std::vector<double>& offsets) {
        SubEntity section;
        section.sectionName = "No.1";
        section.station = station;
        section.groundHeight = 77.0;
        section.sourceLine = 12;
        section.sourceText = "I01,No.1";
        for (const double offset : offsets) {
            section.pointNames.push_back("P" + std::to_string(section.distances.size()));
            section.distances.push_back(offset);
            section.heights.push_back(10.0 + static_cast<double>(section.heights.size()));
        }
        return section;
    }
    static sima::IntersectionData sectionOf(sima::Array<SubEntity> subEntities) {
        sima::IntersectionData section;
        section.routeNumber = 7;
        section.routeFound = true;
        section.subEntities = std::move(subEntities);
        return section;
    }
    void draw(const SubEntity& subEntity) { output.createCrossSectionPoints(reader, sectionOf({subEntity})); }
};

TEST_F(CrossSectionPoints, StandAtTheirOffsetsWithTheirHeightsAndNames) {
    draw(at(20.0, {-5.0, 0.0, 5.0}));
    ASSERT_EQ(host.drawing.pointCount(), 3U);
    EXPECT_EQ(host.drawing.point(0).position, (MdGePoint3d{20.0, -5.0, 10.0}));
    EXPECT_EQ(host.drawing.point(1).position, (MdGePoint3d{20.0, 0.0, 11.0}));
    EXPECT_EQ(host.drawing.point(2).position, (MdGePoint3d{20.0, 5.0, 12.0}));
    EXPECT_EQ(host.drawing.point(2).layer, "測点");
    expectRow(1, "JSIMA_V3_Point", 7, "P1", "横断成果");
    EXPECT_EQ(reader.crossSectionPointsCreated, 3);
    EXPECT_EQ(host.calls.text(), "definePointTable connect pointAtStation "
                                 "pointAtStationOffset appendPoint writeResultRow "
                                 "pointAtStationOffset appendPoint writeResultRow "
                                 "pointAtStationOffset appendPoint writeResultRow disconnect");
}

TEST_F(CrossSectionPoints, WithTheFlagOffNothingIsDone) {
    tick(ImportKind::CrossSections, false);
    draw(at(20.0, {0.0}));
    EXPECT_TRUE(host.calls.all().empty());
}

TEST_F(CrossSectionPoints, SectionWithoutACentrePointGetsOneAtTheGroundsHeight) {
    draw(at(20.0, {-5.0, 5.0}));
    ASSERT_EQ(host.drawing.pointCount(), 3U);
    EXPECT_EQ(host.drawing.point(2).position, (MdGePoint3d{20.0, 0.0, 77.0}));
    expectRow(2, "JSIMA_V3_Point", 7, "No.1", "横断成果");
    EXPECT_EQ(reader.crossSectionPointsCreated, 3);
}

TEST_F(CrossSectionPoints, SectionWithoutRecordsGivesItsCentreAlone) {
    draw(at(20.0, {}));
    ASSERT_EQ(host.drawing.pointCount(), 1U);
    EXPECT_EQ(host.drawing.point(0).position, (MdGePoint3d{20.0, 0.0, 77.0}));
}

TEST_F(CrossSectionPoints, CentreEntryThatTheHostRefusesLeavesTheCentrePointToTheSection) {
    host.civil.pointFunction = [calls = 0](const RecordedStation& asked, PlanPoint& point) mutable {
        point = {asked.station, asked.offset};
        // The first question is for the centre, the second for the entry at offset 0.
        return calls++ == 1 ? -1 : 0;
    };
    draw(at(20.0, {0.0, 5.0}));
    ASSERT_EQ(host.drawing.pointCount(), 2U);
    EXPECT_EQ(host.drawing.point(0).position, (MdGePoint3d{20.0, 5.0, 11.0}));
    EXPECT_EQ(host.drawing.point(1).position, (MdGePoint3d{20.0, 0.0, 77.0}));
    expectRow(1, "JSIMA_V3_Point", 7, "No.1", "横断成果");
    EXPECT_EQ(reader.log.errorCount(), 0);
}

TEST_F(CrossSectionPoints, EntryMovedOffTheCentreLineIsNoCentrePoint) {
    // The first entry at offset 0 is refused, and the second has been moved to the right.
    host.civil.pointFunction = [calls = 0](const RecordedStation& asked, PlanPoint& point) mutable {
        point = {asked.station, asked.offset};
        return calls++ == 1 ? -1 : 0;
    };
    draw(at(20.0, {0.0, 0.0}));
    ASSERT_EQ(host.drawing.pointCount(), 2U);
    EXPECT_EQ(host.drawing.point(0).position, (MdGePoint3d{20.0, 0.1, 11.0}));
    EXPECT_EQ(host.drawing.point(1).position, (MdGePoint3d{20.0, 0.0, 77.0}));
}

TEST_F(CrossSectionPoints, OffsetThatTheHostRefusesIsPassedOverInSilence) {
    draw(at(20.0, {0.0, 60.0, 5.0}));
    EXPECT_EQ(host.drawing.pointCount(), 2U);
    EXPECT_EQ(reader.crossSectionPointsCreated, 2);
    EXPECT_EQ(reader.log.errorCount(), 0);
}

TEST_F(CrossSectionPoints, EmptyPointNameTakesTheSectionsName) {
    SubEntity section = at(20.0, {0.0, 1.0});
    section.pointNames[0] = "";
    section.pointNames[1] = "  L1 \t";
    draw(section);
    expectRow(0, "JSIMA_V3_Point", 7, "No.1", "横断成果");
    expectRow(1, "JSIMA_V3_Point", 7, "L1", "横断成果");
}

TEST_F(CrossSectionPoints, IdeographicSpaceIsAName) {
    SubEntity section = at(20.0, {0.0});
    section.pointNames[0] = "　";
    draw(section);
    expectRow(0, "JSIMA_V3_Point", 7, "　", "横断成果");
}

TEST_F(CrossSectionPoints, OfAWallAreMovedOutwardsWithNamesInPlaceAndTheSectionStaysAsRead) {
    const sima::IntersectionData section = sectionOf({at(20.0, {-3.0, -3.0, 1.0, 1.0})});
    output.createCrossSectionPoints(reader, section);
    ASSERT_EQ(host.drawing.pointCount(), 5U);
    EXPECT_EQ(host.drawing.point(0).position, (MdGePoint3d{20.0, -3.0, 11.0}));
    EXPECT_EQ(host.drawing.point(1).position, (MdGePoint3d{20.0, -3.1, 10.0}));
    EXPECT_EQ(host.drawing.point(2).position, (MdGePoint3d{20.0, 1.0, 12.0}));
    EXPECT_EQ(host.drawing.point(3).position, (MdGePoint3d{20.0, 1.1, 13.0}));
    EXPECT_EQ(host.drawing.point(4).position, (MdGePoint3d{20.0, 0.0, 77.0}));
    expectRow(0, "JSIMA_V3_Point", 7, "P0", "横断成果");
    EXPECT_EQ(section.subEntities[0].distances[1], -3.0);
    EXPECT_EQ(section.subEntities[0].heights[0], 10.0);
}

TEST_F(CrossSectionPoints, SecondEntryOnTheCentreLineIsMovedAndTheFirstCountsAsCentre) {
    draw(at(20.0, {0.0, 0.0}));
    ASSERT_EQ(host.drawing.pointCount(), 2U);
    EXPECT_EQ(host.drawing.point(0).position.y, 0.0);
    EXPECT_EQ(host.drawing.point(1).position.y, 0.1);
}

TEST_F(CrossSectionPoints, StationOutsideIsLoggedWithItsOwnLineAndTheNextSectionGoesOn) {
    output.createCrossSectionPoints(reader, sectionOf({at(100.5, {-1.0, 0.0}), at(20.0, {0.0})}));
    EXPECT_EQ(host.drawing.pointCount(), 1U);
    ASSERT_EQ(reader.log.errors().size(), 4U);
    EXPECT_EQ(reader.log.errors()[1], "ErrX001 次の横断成果を作成できませんでした。（線形範囲外の測点です）");
    EXPECT_EQ(reader.log.errors()[2], "00012行目 I01,No.1");
}

TEST_F(CrossSectionPoints, ChooseTheirAlignmentAsLongitudinalResultsDo) {
    sima::IntersectionData section = sectionOf({at(20.0, {0.0})});
    output.createCrossSectionPoints(reader, section);
    section.routeFound = false;
    output.createCrossSectionPoints(reader, section);
    section.routeFound = true;
    reader.forceChosenAlignment = true;
    output.createCrossSectionPoints(reader, section);
    const auto& asked = host.civil.stationsAsked;
    ASSERT_EQ(asked.size(), 6U);
    EXPECT_EQ(asked[0].alignment, kOfRoute);
    EXPECT_EQ(asked[1].alignment, kOfRoute);
    EXPECT_EQ(asked[2].alignment, kChosen);
    EXPECT_EQ(asked[4].alignment, kChosen);
}

TEST_F(CrossSectionPoints, SectionsOfOneFileDoNotMixTheirEntries) {
    output.createCrossSectionPoints(reader, sectionOf({at(10.0, {-1.0, 0.0, 1.0, 2.0}), at(20.0, {0.0})}));
    EXPECT_EQ(host.drawing.pointCount(), 5U);
}

} // namespace
} // namespace fenmark
