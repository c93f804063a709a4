// Sites, the alignments in them, and stations.
#include "connected.h"

#include "host/boundary/automation_error.h"

#include <map>

namespace fenmark {
namespace {

using host::MdDbObjectId;
using host::PlanPoint;

class Sites : public test::CorridorAdapter {
  protected:
    void SetUp() override { connect(); }
    std::vector<std::string> names{"left over"};
};

TEST_F(Sites, AreListedInOrderAndTheListIsEmptiedFirst) {
    EXPECT_EQ(utility->listSites(names), 0);
    EXPECT_EQ(names, (std::vector<std::string>{"サイト", "Site 2"}));
    EXPECT_EQ(host.callText(), "getSites, count of sites, item i32 0 of sites, getName of site, release site, "
                               "item i32 1 of sites, getName of site, release site, release sites");
}

TEST_F(Sites, CannotBeListedIfTheyCannotBeHad) {
    host.failCall = "getSites";
    EXPECT_EQ(utility->listSites(names), -1);
    EXPECT_TRUE(names.empty());
    EXPECT_TRUE(host.messageBoxes.empty());
}

TEST_F(Sites, SiteThatDoesNotComeBackEndsTheListingWithAMessage) {
    host.failCall = "item i32 1";
    EXPECT_EQ(utility->listSites(names), -1);
    EXPECT_EQ(names, (std::vector<std::string>{"サイト"}));
    EXPECT_EQ(host.messageBoxes,
              (std::vector<std::string>{"SIMAインポート: エラーが発生しました（サイトが取得できません）"}));
}

TEST_F(Sites, AreFoundByTheirExactName) {
    EXPECT_EQ(utility->findSite("Site 2"), 0);
    EXPECT_EQ(utility->findSite("site 2"), -1) << "case counts";
    EXPECT_EQ(utility->findSite("Site"), -1);
    EXPECT_EQ(utility->findSite(""), -1);
    host.sites.clear();
    EXPECT_EQ(utility->findSite("サイト"), -1);
}

TEST_F(Sites, FirstMatchIsTaken) {
    host.sites = {{"A", {}}, {"B", {}}, {"B", {}}};
    EXPECT_EQ(utility->findSite("B"), 0);
    EXPECT_EQ(host.callText().find("item i32 2"), std::string::npos);
}

TEST_F(Sites, SiteThatCannotBeReadEndsTheSearchWithoutAMessage) {
    host.failCall = "item i32 0";
    EXPECT_EQ(utility->findSite("Site 2"), -1);
    EXPECT_TRUE(host.messageBoxes.empty());
}

TEST_F(Sites, NewSiteIsReleasedAtOnce) {
    EXPECT_EQ(utility->createSite("サイト"), 0);
    EXPECT_EQ(host.callText(), "getSites, add site サイト, release site, release sites");
    EXPECT_EQ(host.sites.back().name, "サイト");
}

TEST_F(Sites, CreatingASiteGivesTheStatusOfTheAddOrMinusOne) {
    host.failCall = "add site";
    EXPECT_EQ(utility->createSite("サイト"), 1);
    host.failCall = "getSites";
    EXPECT_EQ(utility->createSite("サイト"), -1);
}

TEST_F(Sites, AlignmentsOfAllSitesAreCollectedAndReleasedBeforeTheNext) {
    std::map<std::string, MdDbObjectId> found;
    EXPECT_EQ(utility->collectAlignments(found), 0);
    EXPECT_EQ(found, (std::map<std::string, MdDbObjectId>{
                         {"A線", MdDbObjectId(100)}, {"B線", MdDbObjectId(101)}, {"C線", MdDbObjectId(200)}}));
    EXPECT_EQ(host.callText(), "getSites, count of sites, "
                               "item i32 0 of sites, getAlignments, count of alignments, "
                               "item i32 0 of alignments, getName of alignment, getObjectId, release alignment, "
                               "item i32 1 of alignments, getName of alignment, getObjectId, release alignment, "
                               "release alignments, release site, "
                               "item i32 1 of sites, getAlignments, count of alignments, "
                               "item i32 0 of alignments, getName of alignment, getObjectId, release alignment, "
                               "release alignments, release site, release sites");
}

TEST_F(Sites, LaterAlignmentOfOneNameReplacesTheEarlier) {
    host.sites = {{"1", {"中心線"}}, {"2", {"中心線"}}};
    std::map<std::string, MdDbObjectId> found;
    EXPECT_EQ(utility->collectAlignments(found), 0);
    EXPECT_EQ(found, (std::map<std::string, MdDbObjectId>{{"中心線", MdDbObjectId(200)}}));
}

TEST_F(Sites, CollectingKeepsWhatItHasWhenAStepFails) {
    host.failCall = "item i32 1 of sites";
    std::map<std::string, MdDbObjectId> found{{"before", MdDbObjectId(5)}};
    EXPECT_EQ(utility->collectAlignments(found), -1);
    EXPECT_EQ(found.size(), 3U);
}

TEST_F(Sites, EveryStepOfCollectingCounts) {
    std::map<std::string, MdDbObjectId> all;
    ASSERT_EQ(utility->collectAlignments(all), 0);
    const int steps = host.steps;
    EXPECT_EQ(steps, 17);
    for (int k = 1; k <= steps; ++k) {
        host.steps = 0;
        host.failAt = k;
        std::map<std::string, MdDbObjectId> found;
        EXPECT_EQ(utility->collectAlignments(found), -1) << "step " << k;
        EXPECT_LT(found.size(), all.size());
    }
}

class Stations : public Sites {
  protected:
    const MdDbObjectId id{4711};
    PlanPoint point{1.0, 2.0};
};

TEST_F(Stations, PointAtStationPassesOffsetZeroAndReleasesBothObjects) {
    EXPECT_EQ(utility->pointAtStation(id, 120.0, point), 0);
    EXPECT_EQ(point, (PlanPoint{120.0, 0.0}));
    EXPECT_EQ(host.callText(),
              "objectFromId 4711, query CivilAlignment, release object, pointAt 120 0, release alignment");
}

TEST_F(Stations, PointAtStationOffsetPassesTheFilesOffsetThrough) {
    EXPECT_EQ(utility->pointAtStationOffset(id, 120.0, -3.5, point), 0);
    EXPECT_EQ(point, (PlanPoint{120.0, 3.5}));
    EXPECT_EQ(host.calls[3], "pointAt 120 -3.5");
}

TEST_F(Stations, StationOutsideTheAlignmentIsMinusOneAndThePointStays) {
    EXPECT_EQ(utility->pointAtStation(id, 1000.5, point), -1);
    EXPECT_EQ(point, (PlanPoint{1.0, 2.0}));
}

TEST_F(Stations, NullIdentifierFailsAtTheLookUp) {
    EXPECT_EQ(utility->pointAtStation({}, 0.0, point), -1);
    EXPECT_EQ(host.callText(), "objectFromId 0");
}

TEST_F(Stations, EveryStepMayFail) {
    for (int k = 1; k <= 3; ++k) {
        host.steps = 0;
        host.failAt = k;
        EXPECT_EQ(utility->pointAtStationOffset(id, 10.0, 1.0, point), -1) << "step " << k;
        EXPECT_EQ(point, (PlanPoint{1.0, 2.0}));
    }
}

TEST_F(Stations, MissingObjectRaisesThePointerError) {
    for (int k = 1; k <= 2; ++k) {
        host.steps = 0;
        host.missingAt = k;
        EXPECT_THROW(utility->pointAtStation(id, 10.0, point), host::AutomationError) << "step " << k;
    }
}

TEST_F(Stations, AlignmentNameComesFromTheObject) {
    EXPECT_EQ(utility->getAlignmentName(id), "中心線");
    EXPECT_EQ(host.callText(),
              "objectFromId 4711, query CivilAlignment, release object, getName of alignment, release alignment");
}

TEST_F(Stations, AlignmentNameIsEmptyAfterAnyFailedStep) {
    EXPECT_EQ(utility->getAlignmentName({}), "");
    for (int k = 1; k <= 3; ++k) {
        host.steps = 0;
        host.failAt = k;
        EXPECT_EQ(utility->getAlignmentName(id), "") << "step " << k;
    }
}

} // namespace
} // namespace fenmark
