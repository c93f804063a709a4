// Connecting to the civil automation and letting go of it.
#include "connected.h"

#include "host/adapter/host_adapter.h"
#include "host/boundary/automation_error.h"

namespace fenmark {
namespace {

using host::AutomationError;
using host::MirdaneCorridorUtility;

class Connection : public test::CorridorAdapter {
  protected:
    void SetUp() override { utility.emplace(drawing); }
};

constexpr const char* kConnect =
    "MirdanGetIDispatch true, query HostApplication, release dispatch, setPresented true, "
    "getInterfaceObject CvxXUiLand.CvxApplication.13.5, query LandApplication, release application object, "
    "getInterfaceObject CvxXUiRoadway.CvxRoadwayApplication.13.5, query RoadwayApplication, "
    "release application object, getActiveDocument of landApplication, query LandDocument, getDatabase, "
    "query CivilDatabase, release database object, release document of landApplication, "
    "getActiveDocument of roadwayApplication, query RoadwayDocument, getOwner, release document of roadwayApplication";

TEST_F(Connection, ConnectGoesThroughTheApplicationsToTheCivilDatabase) {
    utility->connect();
    EXPECT_EQ(host.callText(), kConnect);
}

TEST_F(Connection, DisconnectReleasesInItsOrderAndKeepsTheCivilDatabase) {
    utility->connect();
    host.calls.clear();
    utility->disconnect();
    EXPECT_EQ(host.callText(), "release hostApplication, release landApplication, release roadwayApplication, "
                               "release landDocument, release roadwayDocument, release databaseOwner");
    host.calls.clear();
    utility.reset();
    EXPECT_EQ(host.callText(), "release civilDatabase");
}

TEST_F(Connection, DestructionReleasesInTheReverseOfTheFieldsTheCivilDatabaseLast) {
    utility->connect();
    host.calls.clear();
    utility.reset();
    EXPECT_EQ(host.callText(), "release databaseOwner, release roadwayDocument, release roadwayApplication, "
                               "release landDocument, release landApplication, release hostApplication, "
                               "release civilDatabase");
}

TEST_F(Connection, DisconnectWithoutConnectRaisesThePointerError) {
    try {
        utility->disconnect();
        FAIL() << "nothing was raised";
    } catch (const AutomationError& error) {
        EXPECT_EQ(static_cast<std::uint32_t>(error.status()), 0x80004003U);
    }
}

TEST_F(Connection, SecondDisconnectRaisesThePointerError) {
    utility->connect();
    utility->disconnect();
    EXPECT_THROW(utility->disconnect(), AutomationError);
}

TEST_F(Connection, OperationsWithoutConnectRaiseThePointerError) {
    std::vector<std::string> names;
    EXPECT_THROW(utility->listSites(names), AutomationError);
    EXPECT_THROW(utility->getAlignmentName(host::MdDbObjectId(1)), AutomationError);
}

TEST_F(Connection, SecondConnectLeavesOneReferenceOfEach) {
    utility->connect();
    utility->connect();
    std::size_t held = 0;
    for (const std::string& object : host.unbalanced()) {
        held += object.ends_with("has 1") ? 1U : 100U;
    }
    EXPECT_EQ(held, 7U) << "the seven fields, each with one object";
    std::size_t applications = 0;
    for (const std::string& object : host.unbalanced()) {
        applications += object == "hostApplication has 1" ? 1U : 0U;
    }
    EXPECT_EQ(applications, 1U);
    EXPECT_EQ(std::count(host.calls.begin(), host.calls.end(), "release hostApplication"), 1);
}

TEST_F(Connection, OldHostApplicationGoesBeforeTheNewOneIsAskedFor) {
    utility->connect();
    host.calls.clear();
    utility->connect();
    ASSERT_GE(host.calls.size(), 3U);
    EXPECT_EQ(host.calls[1], "release hostApplication");
    EXPECT_EQ(host.calls[2], "query HostApplication");
}

TEST_F(Connection, MayBeMadeAgainAfterDisconnect) {
    utility->connect();
    utility->disconnect();
    EXPECT_NO_THROW(utility->connect());
    EXPECT_NO_THROW(utility->disconnect());
}

TEST_F(Connection, WithoutTheRoadwayDocumentThereIsNoDatabaseOwner) {
    host.failCall = "query RoadwayDocument";
    EXPECT_NO_THROW(utility->connect());
    EXPECT_EQ(host.callText().find("getOwner"), std::string::npos);
}

TEST_F(Connection, OnlyTheLastStepLooksAtAStatus) {
    for (const char* const call : {"setPresented", "getOwner"}) {
        host.failCall = call;
        EXPECT_NO_THROW(utility->connect()) << call;
    }
}

// Each object that the sequence needs is missing once: the pointer error says so, and nothing stays held.
TEST(ConnectionFailures, MissingObjectRaisesThePointerErrorWhereItIsNeeded) {
    constexpr int stepsOfConnect = 14;
    for (const bool silently : {false, true}) {
        int raised = 0;
        int steps = 0;
        for (int k = 1; k <= stepsOfConnect; ++k) {
            scripted::Host host;
            host::MirdaneDrawingWriter drawing;
            (silently ? host.missingAt : host.failAt) = k;
            {
                MirdaneCorridorUtility utility(drawing);
                try {
                    utility.connect();
                } catch (const AutomationError& error) {
                    EXPECT_EQ(error.status(), host::kStatusPointerError);
                    ++raised;
                }
                steps = std::max(steps, host.steps);
            }
            EXPECT_TRUE(host.unbalanced().empty()) << "step " << k << ": " << host.unbalanced().front();
        }
        EXPECT_EQ(steps, stepsOfConnect);
        // All but setPresented, the roadway document and the owner. A civil database that is missing shows at getOwner.
        EXPECT_EQ(raised, 11);
    }
}

TEST(HostAdapterBoundary, GivesTheThreeClassesAndAFreshUtilityEachTime) {
    scripted::Host host;
    host::HostAdapter adapter;
    host::HostBoundary& boundary = adapter;
    EXPECT_TRUE(boundary.drawingWriter().appendPointXyz(1.0, 2.0, 3.0, "0").isValid());
    boundary.objectDataWriter().definePointTable();
    EXPECT_TRUE(host.tables.contains("JSIMA_V3_Point"));
    const auto first = boundary.makeCorridorUtility();
    const auto second = boundary.makeCorridorUtility();
    EXPECT_NE(first, second);
    EXPECT_THROW(first->disconnect(), AutomationError) << "a fresh utility is not connected";
}

} // namespace
} // namespace fenmark
