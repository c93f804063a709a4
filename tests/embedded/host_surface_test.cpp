// The embedded host as the module's adapter meets it: database, object data, automation, documents.
#include "host/adapter/host_adapter.h"
#include "host/embedded/embedded_host.h"
#include "sima/records/lot_data.h"
#include "sima/records/sima_point.h"
#include "support/drawing_support.h"

#include <gtest/gtest.h>

namespace fenmark::host::embedded {
namespace {

class HostSurface : public ::testing::Test {
  protected:
    EmbeddedHost host_;
    HostAdapter adapter_;
    DrawingWriter& writer_ = adapter_.drawingWriter();
    ObjectDataWriter& rows_ = adapter_.objectDataWriter();

    Drawing& drawing() { return host_.drawing(); }
    void TearDown() override {
        EXPECT_EQ(EmbeddedHost::liveAutomationReferences(), 0);
        EXPECT_EQ(EmbeddedHost::liveDatabaseObjects(), 0);
    }
};

TEST_F(HostSurface, APointGetsItsPlaceItsLayerAndItsRow) {
    drawing().addLayer("点");
    rows_.definePointTable();
    const MdDbObjectId id = writer_.appendPointXyz(1.5, 2.5, 12.5, "点");
    sima::SimaPoint point;
    point.number = 7;
    point.name = "K1";
    rows_.writeCoordinateRow(id, "a.sim", point);
    ASSERT_EQ(drawing().entityCount(), 1U);
    const EntityView entity = drawing().entity(0);
    EXPECT_EQ(entity.id, id);
    EXPECT_EQ(entity.kind, EntityKind::Point);
    EXPECT_EQ(entity.layer, "点");
    EXPECT_EQ(entity.position(), (MdGePoint3d{1.5, 2.5, 12.5}));
    ASSERT_TRUE(entity.row);
    EXPECT_EQ(entity.row->table, "JSIMA_V3_Point");
    EXPECT_EQ(entity.row->no, 7);
    EXPECT_EQ(entity.row->name, "K1");
    EXPECT_EQ(entity.row->type, "座標");
    EXPECT_EQ(entity.row->fileName, "a.sim");
}

// Null, never given, and gone: an identifier is valid while its object is in a drawing that is open.
TEST_F(HostSurface, AnIdentifierIsValidAsLongAsItsObjectIsThere) {
    EXPECT_FALSE(MdDbObjectId().isValid());
    EXPECT_FALSE(MdDbObjectId(12345).isValid());
    const std::uint64_t before = drawing().lastId();
    const MdDbObjectId id = writer_.appendPointXyz(1, 2, 0, "0");
    drawing::Import record;
    record.firstId = before + 1;
    record.lastId = drawing().lastId();
    const MdDbObjectId import = drawing().addImport(record);
    const MdDbObjectId layer = drawing().addLayer("点");
    const MdDbObjectId site = drawing().addSite("サイト");
    EXPECT_TRUE(id.isValid() && layer.isValid() && site.isValid());
    {
        const EmbeddedHost other;
        EXPECT_FALSE(id.isValid()) << "another host answers";
    }
    EXPECT_TRUE(id.isValid());
    Document& second = host_.newDocument();
    EXPECT_TRUE(id.isValid()) << "its drawing is open, though not current";
    host_.closeDocument(second);
    ASSERT_TRUE(drawing().removeImport(import));
    EXPECT_FALSE(id.isValid());
    EXPECT_FALSE(id.isNull());
}

TEST_F(HostSurface, TwoPointsAtOnePlaceAreTwoEntities) {
    const MdDbObjectId first = writer_.appendPointXyz(1, 2, 0, "0");
    const MdDbObjectId second = writer_.appendPointXyz(1, 2, 0, "0");
    EXPECT_NE(first, second);
    EXPECT_EQ(drawing().entityCount(), 2U);
}

TEST_F(HostSurface, APointOnALayerThatIsNotThereGoesToTheCurrentLayer) {
    drawing().setCurrentLayer(*drawing().findLayer(drawing().addLayer("current")));
    writer_.appendPointXyz(1, 2, 0, "none");
    EXPECT_EQ(drawing().entity(0).layer, "current");
}

TEST_F(HostSurface, ALotIsMadeConvertedClosedAndGivenItsRowUnderOneIdentifier) {
    drawing().addLayer("画地");
    rows_.definePolylineTable();
    std::vector<MdGePoint3d> vertices = {{0, 0, 1}, {10, 0, 2}, {10, 10, 3}};
    const MdDbObjectId id = writer_.appendPolyline(vertices);
    EXPECT_TRUE(vertices.empty());
    EXPECT_EQ(drawing().entity(0).kind, EntityKind::Polyline2d);
    EXPECT_FALSE(writer_.setLotPolyline(id, "画地", true)) << "a 2D polyline does not open as a lightweight one";
    writer_.convertToLightweight(id);
    EXPECT_TRUE(writer_.setLotPolyline(id, "画地", true));
    sima::LotData lot;
    rows_.writeLotRow(id, "a.sim", lot);
    const EntityView entity = drawing().entity(0);
    EXPECT_EQ(entity.id, id);
    EXPECT_EQ(entity.kind, EntityKind::Polyline);
    EXPECT_TRUE(entity.closed);
    EXPECT_EQ(entity.layer, "画地");
    EXPECT_EQ(entity.vertices.size(), 3U);
    ASSERT_TRUE(entity.row);
    EXPECT_EQ(entity.row->table, "JSIMA_V3_Pline");
    EXPECT_EQ(entity.row->name, "") << "an empty text, not a missing one";
}

TEST_F(HostSurface, APolylineOfTwoVerticesAndOneOfOneAreTaken) {
    for (std::size_t count : {2U, 1U}) {
        std::vector<MdGePoint3d> vertices(count, MdGePoint3d{3, 4, 0});
        const MdDbObjectId id = writer_.appendPolyline(vertices);
        writer_.convertToLightweight(id);
        writer_.setPolylineLayer(id, "0");
        EXPECT_EQ(drawing().entity(drawing().entityCount() - 1).vertices.size(), count);
        EXPECT_EQ(drawing().entity(drawing().entityCount() - 1).id, id);
    }
}

TEST_F(HostSurface, LayersAreListedInTableOrder) {
    drawing().addLayer("道路");
    drawing().addLayer("A");
    EXPECT_EQ(writer_.listLayers(), (std::vector<std::string>{"0", "道路", "A"}));
    EXPECT_EQ(writer_.getCurrentLayerName(), "0");
}

TEST_F(HostSurface, ATableThatIsThereKeepsItsRows) {
    rows_.definePointTable();
    const MdDbObjectId id = writer_.appendPointXyz(1, 2, 0, "0");
    rows_.writeResultRow(id, "a.sim", 3, "No.1", true);
    rows_.definePointTable();
    EXPECT_EQ(drawing().tables().size(), 1U);
    EXPECT_EQ(drawing().entity(0).row->type, "横断成果");
}

TEST_F(HostSurface, ARowWithoutATableOrAnObjectIsNotAttached) {
    const MdDbObjectId id = writer_.appendPointXyz(1, 2, 0, "0");
    rows_.writeResultRow(id, "a.sim", 3, "No.1", true);
    EXPECT_FALSE(drawing().entity(0).row);
    rows_.definePointTable();
    rows_.writeResultRow(MdDbObjectId(4711), "a.sim", 3, "No.1", true);
    EXPECT_FALSE(drawing().entity(0).row);
}

TEST_F(HostSurface, ATableOfOtherColumnsIsRefused) {
    mirdane::MdMapProject* project = nullptr;
    ASSERT_EQ(mirdane::MdMapGetSession()->getProjectOfDocument(project, mirdane::mdDocManagerPtr()->curDocument()), 0);
    mirdane::MdMapODTables* tables = nullptr;
    ASSERT_EQ(project->getTables(tables), 0);
    mirdane::MdMapODTableDefinition definition;
    EXPECT_EQ(tables->addTable("T", &definition, nullptr, false), 1);
    EXPECT_EQ(tables->addTable("T", nullptr, nullptr, false), 1);
    EXPECT_TRUE(drawing().tables().empty());
}

TEST_F(HostSurface, AColumnOutsideARecordIsAnInvalidArgument) {
    mirdane::MdMapODTableRecord record;
    EXPECT_THROW(record.Value(0), std::invalid_argument);
}

// --- sites and alignments ---

TEST_F(HostSurface, SitesAndAlignmentsAreListed) {
    const std::unique_ptr<CorridorUtility> utility = adapter_.makeCorridorUtility();
    utility->connect();
    std::vector<std::string> names;
    EXPECT_EQ(utility->listSites(names), 0);
    EXPECT_TRUE(names.empty());
    EXPECT_EQ(utility->createSite("サイト"), 0);
    EXPECT_EQ(utility->createSite("B"), 0);
    EXPECT_NE(utility->createSite("B"), 0) << "a name that is taken";
    EXPECT_EQ(utility->listSites(names), 0);
    EXPECT_EQ(names, (std::vector<std::string>{"サイト", "B"}));
    EXPECT_EQ(utility->findSite("b"), -1) << "case matters";

    sima::Array<sima::EntityData> none;
    const MdDbObjectId first = utility->createAlignment("路線", "サイト", "d", 1.0, none);
    std::map<std::string, MdDbObjectId> only;
    EXPECT_EQ(utility->collectAlignments(only), 0);
    EXPECT_EQ(only, (std::map<std::string, MdDbObjectId>{{"路線", first}}));
    const MdDbObjectId second = utility->createAlignment("路線", "B", "d", 2.0, none);
    const MdDbObjectId third = utility->createAlignment("", "B", "d", 2.0, none);
    EXPECT_TRUE(first.isValid());
    EXPECT_TRUE(third.isValid());
    EXPECT_FALSE(utility->createAlignment("路線", "gone", "d", 2.0, none).isValid());
    std::map<std::string, MdDbObjectId> alignments;
    EXPECT_EQ(utility->collectAlignments(alignments), 0);
    EXPECT_EQ(alignments, (std::map<std::string, MdDbObjectId>{{"路線", second}, {"", third}}));
    EXPECT_EQ(utility->getAlignmentName(first), "路線");
    EXPECT_EQ(utility->getAlignmentName(MdDbObjectId(4711)), "");
    utility->disconnect();
    EXPECT_EQ(drawing().alignment(0).layer, "0");
    EXPECT_EQ(drawing().alignment(0).firstStyle, "Standard");
    EXPECT_EQ(drawing().alignment(0).startStation, 1.0);
}

TEST_F(HostSurface, PointsAtStationsAreGivenAndRefused) {
    addSmallImport(drawing());
    const MdDbObjectId id = drawing().alignment(0).id;
    const std::unique_ptr<CorridorUtility> utility = adapter_.makeCorridorUtility();
    utility->connect();
    PlanPoint point;
    EXPECT_EQ(utility->pointAtStation(id, 123.456 + 25, point), 0);
    EXPECT_NEAR(point.x, 15, 1e-9);
    EXPECT_NEAR(point.y, 20, 1e-9);
    EXPECT_EQ(utility->pointAtStationOffset(id, 123.456 + 25, 5, point), 0);
    EXPECT_NEAR(point.x, 19, 1e-9) << "right of travel";
    EXPECT_NEAR(point.y, 17, 1e-9);
    EXPECT_EQ(utility->pointAtStation(id, 123.4, point), -1);
    EXPECT_EQ(utility->pointAtStation(id, 123.456 + 190.1, point), -1);
    EXPECT_EQ(utility->pointAtStation(MdDbObjectId(), 130, point), -1);
    EXPECT_EQ(utility->pointAtStation(drawing().alignment(1).id, 0, point), -1) << "an alignment without elements";
    EXPECT_EQ(utility->pointAtStation(drawing().entity(0).id, 130, point), -1) << "a point is no alignment";
    utility->disconnect();
}

// --- documents ---

class Reactor : public mirdane::MdApDocManagerReactor {
  public:
    void documentToBeDestroyed(mirdane::MdApDocument* document) override { destroyed.push_back(document); }
    std::vector<mirdane::MdApDocument*> destroyed;
};

TEST_F(HostSurface, EverythingGoesToTheCurrentDocument) {
    Document& first = *host_.currentDocument();
    Document& second = host_.newDocument();
    writer_.appendPointXyz(1, 2, 3, "0");
    EXPECT_EQ(first.drawing().entityCount(), 0U);
    EXPECT_EQ(second.drawing().entityCount(), 1U);
    host_.makeCurrent(first);
    writer_.appendPointXyz(1, 2, 3, "0");
    writer_.appendPointXyz(1, 2, 3, "0");
    EXPECT_EQ(first.drawing().entityCount(), 2U);
    EXPECT_EQ(mirdane::mdDocManagerPtr()->curDocument(), &first);
}

TEST_F(HostSurface, ReactorsHearOfADocumentThatCloses) {
    Reactor reactor;
    mirdane::mdDocManagerPtr()->addReactor(&reactor);
    Document& first = *host_.currentDocument();
    Document& second = host_.newDocument();
    host_.closeDocument(second);
    EXPECT_EQ(reactor.destroyed, std::vector<mirdane::MdApDocument*>{&second});
    EXPECT_EQ(host_.currentDocument(), &first);
    mirdane::mdDocManagerPtr()->removeReactor(&reactor);
}

TEST_F(HostSurface, AutomationObjectsOfAClosedDocumentAnswerWithAFailure) {
    addSmallImport(drawing());
    const MdDbObjectId id = drawing().alignment(0).id;
    const std::unique_ptr<CorridorUtility> utility = adapter_.makeCorridorUtility();
    utility->connect();
    Document& old = *host_.currentDocument();
    host_.newDocument();
    host_.closeDocument(old);
    PlanPoint point;
    EXPECT_EQ(utility->pointAtStation(id, 130, point), -1);
    std::vector<std::string> names;
    EXPECT_EQ(utility->listSites(names), 0) << "the new document has no sites";
    utility->disconnect();
}

TEST_F(HostSurface, MessageBoxesAreKeptAndHandedOn) {
    std::string seen;
    host_.onMessageBox([&](const MessageBox& box) { seen = box.caption; });
    mirdane::showMessageBox("text", "caption");
    ASSERT_EQ(host_.messageBoxes().size(), 1U);
    EXPECT_EQ(host_.messageBoxes()[0].text, "text");
    EXPECT_EQ(seen, "caption");
}

TEST(HostSurfaceWithoutAHost, NothingIsThere) {
    EXPECT_EQ(mirdane::mddbHostApplicationServices(), nullptr);
    EXPECT_EQ(mirdane::mdDocManagerPtr(), nullptr);
    EXPECT_EQ(mirdane::MdMapGetSession(), nullptr);
    EXPECT_EQ(mirdane::MirdanGetIDispatch(true), nullptr);
    EXPECT_EQ(mirdane::mdsw_mirdanMainWnd(), nullptr);
    mirdane::MdDbPolyline* polyline = nullptr;
    EXPECT_EQ(mirdane::mddbOpenObject(polyline, MdDbObjectId(1), mirdane::OpenMode::Read, false), 1);
}

} // namespace
} // namespace fenmark::host::embedded
