// What the embedded host refuses of a module that calls its surface: the status, and that nothing changed.
#include "embedded/route_chains.h"
#include "host/embedded/embedded_host.h"
#include "support/drawing_support.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

namespace fenmark::host::embedded {
namespace {

using mirdane::OpenMode;
using mirdane::Variant;

// Of the database; the map's services know one refusal.
constexpr mirdane::Status kNotFound = 1;
constexpr mirdane::Status kNotAllowed = 2;
constexpr mirdane::Status kRefused = 1;

constexpr mirdane::AutomationStatus kDone = 0;
constexpr auto kNotImplemented = static_cast<mirdane::AutomationStatus>(0x80004001U);
constexpr auto kNoInterface = static_cast<mirdane::AutomationStatus>(0x80004002U);
constexpr auto kFailure = static_cast<mirdane::AutomationStatus>(0x80004005U);
constexpr auto kBadArgument = static_cast<mirdane::AutomationStatus>(0x80070057U);

// A reference that is given back at the end.
template <typename T>
class Held {
  public:
    Held() = default;
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    ~Held() { giveBack(); }
    void giveBack() {
        if (object_ != nullptr) {
            object_->release();
            object_ = nullptr;
        }
    }
    T*& out() { return object_; }
    T* operator->() const { return object_; }

  private:
    T* object_ = nullptr;
};

Variant place(double x, double y) {
    std::unique_ptr<mirdane::SafeArray> array = mirdane::createSafeArray(0, 3);
    array->values() = {x, y, 0.0};
    return Variant::array(std::move(array));
}

class Refusals : public ::testing::Test {
  protected:
    EmbeddedHost host_;

    Drawing& drawing() { return host_.drawing(); }
    mirdane::MdDbDatabase& database() { return *mirdane::mddbHostApplicationServices()->workingDatabase(); }
    MdDbObjectId addPoint() { return drawing().addPoint({1, 2, 3}, 0); }
    // An identifier whose object went.
    MdDbObjectId gone() {
        const Drawing::Mark mark = drawing().mark();
        const MdDbObjectId id = addPoint();
        drawing().takeBack(mark);
        return id;
    }
    mirdane::MdDbBlockTableRecord& modelSpace() {
        mirdane::MdDbBlockTable* table = nullptr;
        EXPECT_EQ(database().getSymbolTable(table, OpenMode::Read), 0);
        MdDbObjectId id;
        EXPECT_EQ(table->getIdAt("*Model_Space", id, false), 0);
        table->close();
        mirdane::MdDbBlockTableRecord* record = nullptr;
        EXPECT_EQ(mirdane::mddbOpenObject(record, id, OpenMode::Write, false), 0);
        return *record;
    }
    void TearDown() override {
        EXPECT_EQ(EmbeddedHost::liveAutomationReferences(), 0);
        EXPECT_EQ(EmbeddedHost::liveDatabaseObjects(), 0);
    }
};

// --- database ---

struct Circle : mirdane::MdDbEntity {};

TEST_F(Refusals, AnEntityIsAppendedOnceAndOnlyOfAKindThatADrawingKeeps) {
    mirdane::MdDbBlockTableRecord& space = modelSpace();
    mirdane::MdDbPoint point({1, 2, 3});
    MdDbObjectId id;
    ASSERT_EQ(space.appendMdDbEntity(id, &point), 0);
    EXPECT_EQ(point.objectId(), id);
    EXPECT_EQ(point.layer(), "0");
    MdDbObjectId other;
    Circle circle;
    EXPECT_EQ(space.appendMdDbEntity(other, &point), kNotAllowed) << "it has its place";
    EXPECT_EQ(space.appendMdDbEntity(other, &circle), kNotAllowed) << "no such kind";
    EXPECT_EQ(space.appendMdDbEntity(other, nullptr), kNotAllowed);
    EXPECT_TRUE(other.isNull());
    EXPECT_TRUE(circle.objectId().isNull());
    EXPECT_EQ(drawing().entityCount(), 1U);
    mirdane::MdString name;
    EXPECT_EQ(space.getName(name), 0);
    EXPECT_STREQ(name.c_str(), "*Model_Space");
    space.close();
}

TEST_F(Refusals, ALightweightPolylineIsAppendedAsItIs) {
    drawing().addLayer("線");
    mirdane::MdDbBlockTableRecord& space = modelSpace();
    mirdane::MdDbPolyline polyline;
    polyline.verticesForHost() = {{0, 0, 0}, {5, 0, 0}, {5, 5, 0}};
    EXPECT_EQ(polyline.setLayerOfEntity("線", false, false), 0);
    EXPECT_EQ(polyline.setClosedFlag(true), 0) << "before it is in a drawing the flag is its own";
    MdDbObjectId id;
    ASSERT_EQ(space.appendMdDbEntity(id, &polyline), 0);
    space.close();
    const EntityView entity = drawing().entity(0);
    EXPECT_EQ(entity.kind, EntityKind::Polyline);
    EXPECT_EQ(entity.layer, "線");
    EXPECT_TRUE(entity.closed);
    EXPECT_EQ(entity.vertices.size(), 3U);
}

TEST_F(Refusals, ALayerThatIsNotThereLeavesTheEntityOnItsOwn) {
    drawing().addLayer("線");
    addPoint();
    mirdane::MdDbEntity* entity = nullptr;
    ASSERT_EQ(mirdane::mddbOpenObject(entity, drawing().entity(0).id, OpenMode::Write, false), 0);
    EXPECT_EQ(entity->setLayerOfEntity("none", false, false), kNotFound);
    EXPECT_EQ(entity->layer(), "0");
    EXPECT_EQ(drawing().entity(0).layer, "0");
    EXPECT_EQ(entity->setLayerOfEntity("線", false, false), 0);
    EXPECT_EQ(drawing().entity(0).layer, "線");
    entity->close();
    mirdane::MdDbPoint lost({1, 2, 3});
    lost.setObjectId(gone());
    EXPECT_EQ(lost.setLayerOfEntity("0", false, false), kNotFound) << "an entity that went";
}

TEST_F(Refusals, OnlyA2dPolylineOfTheDrawingIsConverted) {
    const std::vector<MdGePoint3d> line = {{0, 0, 0}, {5, 0, 0}};
    drawing().addPolyline(line, 0, EntityKind::Polyline2d, false);
    drawing().addPolyline(line, 0, EntityKind::Polyline, false);
    addPoint();
    const std::string before = drawing::describe(drawing());
    mirdane::MdDbPolyline fresh;
    mirdane::MdDbEntity* none = nullptr;
    EXPECT_EQ(fresh.convertFromEntity(none, true), kNotAllowed);
    mirdane::MdDbEntity* old = nullptr;
    ASSERT_EQ(mirdane::mddbOpenObject(old, drawing().entity(0).id, OpenMode::Write, false), 0);
    EXPECT_EQ(fresh.convertFromEntity(old, false), kNotAllowed) << "its identifier is to go over";
    mirdane::MdDbPolyline placed;
    placed.setObjectId(drawing().entity(1).id);
    EXPECT_EQ(placed.convertFromEntity(old, true), kNotAllowed) << "one that has a place";
    ASSERT_NE(old, nullptr);
    old->close();
    for (const std::size_t other : {1U, 2U}) {
        mirdane::MdDbEntity* entity = nullptr;
        ASSERT_EQ(mirdane::mddbOpenObject(entity, drawing().entity(other).id, OpenMode::Write, false), 0);
        EXPECT_EQ(fresh.convertFromEntity(entity, true), kNotAllowed) << other;
        ASSERT_NE(entity, nullptr);
        entity->close();
    }
    mirdane::MdDbPoint lost({1, 2, 3});
    mirdane::MdDbEntity* notAdded = &lost;
    EXPECT_EQ(fresh.convertFromEntity(notAdded, true), kNotAllowed);
    EXPECT_EQ(notAdded, &lost);
    EXPECT_TRUE(fresh.objectId().isNull());
    EXPECT_EQ(drawing::describe(drawing()), before);
}

TEST_F(Refusals, APolylineThatWentCannotBeClosed) {
    mirdane::MdDbPolyline polyline;
    polyline.setObjectId(gone());
    EXPECT_EQ(polyline.setClosedFlag(true), kNotFound);
}

TEST_F(Refusals, AnObjectIsOpenedAsWhatItIs) {
    const MdDbObjectId point = addPoint();
    const std::vector<MdGePoint3d> line = {{0, 0, 0}, {5, 0, 0}};
    const MdDbObjectId old = drawing().addPolyline(line, 0, EntityKind::Polyline2d, true);
    const MdDbObjectId light = drawing().addPolyline(line, 0, EntityKind::Polyline, true);
    for (const MdDbObjectId id : {point, old, gone()}) {
        mirdane::MdDbPolyline* polyline = nullptr;
        EXPECT_EQ(mirdane::mddbOpenObject(polyline, id, OpenMode::Read, false), kNotFound);
        EXPECT_EQ(polyline, nullptr);
    }
    mirdane::MdDbEntity* entity = nullptr;
    EXPECT_EQ(mirdane::mddbOpenObject(entity, gone(), OpenMode::Read, false), kNotFound);
    EXPECT_EQ(entity, nullptr);
    ASSERT_EQ(mirdane::mddbOpenObject(entity, light, OpenMode::Read, false), 0);
    const auto* polyline = dynamic_cast<const mirdane::MdDbPolyline*>(entity);
    ASSERT_NE(polyline, nullptr);
    EXPECT_EQ(polyline->vertices(), line);
    EXPECT_TRUE(polyline->closed());
    entity->close();
    ASSERT_EQ(mirdane::mddbOpenObject(entity, old, OpenMode::Read, false), 0);
    const auto* simple = dynamic_cast<const mirdane::MdDb2dPolyline*>(entity);
    ASSERT_NE(simple, nullptr);
    EXPECT_EQ(simple->type(), mirdane::Poly2dType::Simple);
    EXPECT_EQ(simple->vertices(), line);
    EXPECT_TRUE(simple->closed());
    EXPECT_EQ(std::tuple(simple->elevation(), simple->startWidth(), simple->endWidth()), std::tuple(0.0, 0.0, 0.0));
    EXPECT_FALSE(simple->hasBulges() || simple->hasVertexIds());
    entity->close();
    ASSERT_EQ(mirdane::mddbOpenObject(entity, point, OpenMode::Read, false), 0);
    const auto* opened = dynamic_cast<const mirdane::MdDbPoint*>(entity);
    ASSERT_NE(opened, nullptr);
    EXPECT_EQ(opened->position(), (MdGePoint3d{1, 2, 3}));
    EXPECT_EQ(opened->objectId(), point);
    entity->close();
    mirdane::MdDbBlockTableRecord* record = nullptr;
    EXPECT_EQ(mirdane::mddbOpenObject(record, point, OpenMode::Read, false), kNotFound);
    EXPECT_EQ(record, nullptr);
    mirdane::MdDbLayerTableRecord* layer = nullptr;
    EXPECT_EQ(mirdane::mddbOpenObject(layer, point, OpenMode::Read, false), kNotFound);
    EXPECT_EQ(layer, nullptr);
}

TEST_F(Refusals, TablesKnowTheirOwnNamesAlone) {
    const MdDbObjectId line = drawing().addLayer("線");
    mirdane::MdDbBlockTable* blocks = nullptr;
    ASSERT_EQ(database().getSymbolTable(blocks, OpenMode::Read), 0);
    MdDbObjectId id;
    EXPECT_EQ(blocks->getIdAt("*Paper_Space", id, false), kNotFound);
    blocks->close();
    mirdane::MdDbLayerTable* layers = nullptr;
    ASSERT_EQ(database().getSymbolTable(layers, OpenMode::Read), 0);
    EXPECT_EQ(layers->getIdAt("none", id, false), kNotFound);
    EXPECT_TRUE(id.isNull());
    EXPECT_EQ(layers->getIdAt("線", id, false), 0);
    EXPECT_EQ(id, line);
    layers->close();
}

TEST_F(Refusals, LayersAreWalkedFromEitherEndAndNoFurther) {
    const MdDbObjectId zero = drawing().layers().front().id;
    const MdDbObjectId line = drawing().addLayer("線");
    mirdane::MdDbLayerTable* layers = nullptr;
    ASSERT_EQ(database().getSymbolTable(layers, OpenMode::Read), 0);
    for (const bool forward : {true, false}) {
        mirdane::MdDbLayerTableIterator* made = nullptr;
        ASSERT_EQ(layers->newIterator(made, forward, true), 0);
        const std::unique_ptr<mirdane::MdDbLayerTableIterator> iterator(made);
        std::vector<MdDbObjectId> seen;
        MdDbObjectId id;
        for (; !iterator->done(); iterator->step(forward, true)) {
            ASSERT_EQ(iterator->getRecordId(id), 0);
            seen.push_back(id);
        }
        EXPECT_EQ(seen, forward ? (std::vector{zero, line}) : (std::vector{line, zero}));
        EXPECT_EQ(iterator->getRecordId(id), kNotFound);
        EXPECT_EQ(id, seen.back());
    }
    layers->close();
}

TEST_F(Refusals, AStringIsCopiedToTheHostsHeap) {
    char* copy = nullptr;
    ASSERT_EQ(mirdane::mdutNewString("点", copy), 0);
    EXPECT_STREQ(copy, "点");
    EXPECT_EQ(EmbeddedHost::liveDatabaseObjects(), 1);
    mirdane::mdHeapFree(nullptr, copy);
    mirdane::mdHeapFree(nullptr, nullptr);
    EXPECT_EQ(mirdane::mdutNewString(nullptr, copy), kNotAllowed);
    EXPECT_EQ(copy, nullptr);
}

// A module may still hold its own objects when there is no drawing, or no host at all.
void expectNothingToWorkOn() {
    mirdane::MdDbPolyline polyline;
    EXPECT_EQ(polyline.setLayerOfEntity("0", false, false), kNotAllowed);
    mirdane::MdDbPoint point({1, 2, 3});
    mirdane::MdDbEntity* entity = &point;
    EXPECT_EQ(polyline.convertFromEntity(entity, true), kNotAllowed);
    EXPECT_EQ(entity, &point);
    polyline.setObjectId(MdDbObjectId(7));
    EXPECT_EQ(polyline.setClosedFlag(true), kNotFound);
    EXPECT_EQ(mirdane::mddbOpenObject(entity, MdDbObjectId(7), OpenMode::Read, false), kNotFound);
    EXPECT_EQ(entity, nullptr);
    mirdane::MdDbPolyline* opened = nullptr;
    EXPECT_EQ(mirdane::mddbOpenObject(opened, MdDbObjectId(7), OpenMode::Read, false), kNotFound);
    mirdane::MdDbBlockTableRecord* space = nullptr;
    EXPECT_EQ(mirdane::mddbOpenObject(space, MdDbObjectId(7), OpenMode::Read, false), kNotFound);
    mirdane::MdDbLayerTableRecord* layer = nullptr;
    EXPECT_EQ(mirdane::mddbOpenObject(layer, MdDbObjectId(7), OpenMode::Read, false), kNotFound);
}

TEST_F(Refusals, AHostWithoutADrawingRefusesEverything) {
    mirdane::MdDbHostApplicationServices* const services = mirdane::mddbHostApplicationServices();
    host_.closeDocument(*host_.currentDocument());
    EXPECT_EQ(host_.currentDocument(), nullptr);
    EXPECT_EQ(services->workingDatabase(), nullptr);
    EXPECT_TRUE(host_.layoutNotes().brokenJoints.empty());
    expectNothingToWorkOn();
}

TEST(RefusalsWithoutAHost, NothingIsChangedAndNothingIsShown) {
    expectNothingToWorkOn();
    mirdane::showMessageBox("text", "caption");
    EmbeddedHost later;
    EXPECT_TRUE(later.messageBoxes().empty());
}

TEST(RefusalsWithoutAHost, ServicesThatAModuleKeptHaveNoDrawing) {
    mirdane::MdDbHostApplicationServices* services = nullptr;
    mirdane::MdMapSession* session = nullptr;
    {
        const EmbeddedHost host;
        services = mirdane::mddbHostApplicationServices();
        session = mirdane::MdMapGetSession();
    }
    EXPECT_EQ(services->workingDatabase(), nullptr);
    mirdane::MdMapProject* project = nullptr;
    EXPECT_EQ(session->getProjectOfDocument(project, nullptr), kRefused);
    EXPECT_EQ(project, nullptr);
}

// --- object data ---

class ObjectDataRefusals : public Refusals {
  protected:
    struct Column {
        std::string_view name;
        mirdane::MdMap::EDataType type;
    };
    static constexpr auto kInteger = mirdane::MdMap::EDataType::Integer;
    static constexpr auto kText = mirdane::MdMap::EDataType::Character;

    static mirdane::MdMapODTableDefinition defined(const std::vector<Column>& columns) {
        mirdane::MdMapODTableDefinition definition;
        for (const Column& column : columns) {
            mirdane::MdMapODColumnDefinition made;
            made.SetName(column.name);
            made.SetType(column.type);
            EXPECT_EQ(definition.addColumn(made, -1), 0);
        }
        return definition;
    }
    mirdane::MdMapODTables& tables() {
        mirdane::MdMapProject* project = nullptr;
        EXPECT_EQ(mirdane::MdMapGetSession()->getProjectOfDocument(project, host_.currentDocument()), 0);
        mirdane::MdMapODTables* tables = nullptr;
        EXPECT_EQ(project->getTables(tables), 0);
        return *tables;
    }
};

TEST_F(ObjectDataRefusals, ATableHasTheFourColumnsOfARowAndNoOthers) {
    const std::vector<std::vector<Column>> refused = {
        {{"No", kInteger}, {"Name", kText}, {"Type", kText}},
        {{"No", kInteger}, {"Name", kText}, {"Type", kText}, {"File", kText}},
        {{"No", kText}, {"Name", kText}, {"Type", kText}, {"FileName", kText}},
        {{"Name", kText}, {"No", kInteger}, {"Type", kText}, {"FileName", kText}},
    };
    for (const std::vector<Column>& columns : refused) {
        const mirdane::MdMapODTableDefinition definition = defined(columns);
        EXPECT_EQ(tables().addTable("T", &definition, nullptr, false), kRefused) << columns.back().name;
    }
    EXPECT_TRUE(drawing().tables().empty());
    const mirdane::MdMapODTableDefinition right =
        defined({{"No", kInteger}, {"Name", kText}, {"Type", kText}, {"FileName", kText}});
    EXPECT_EQ(tables().addTable("T", &right, nullptr, false), 0);
    EXPECT_EQ(tables().addTable("T", &right, nullptr, false), kRefused) << "it is there";
    ASSERT_EQ(drawing().tables().size(), 1U);
    mirdane::MdMapODTableDefinition inserted;
    EXPECT_EQ(inserted.addColumn(mirdane::MdMapODColumnDefinition(), 0), kRefused) << "columns are appended";
    EXPECT_TRUE(inserted.columns().empty());
}

TEST_F(ObjectDataRefusals, ARecordNeedsItsTableItsEntityAndItsColumns) {
    const MdDbObjectId point = addPoint();
    mirdane::MdMapODTable* table = nullptr;
    EXPECT_EQ(tables().getTable(table, "T"), kRefused);
    EXPECT_EQ(table, nullptr);
    const Drawing::Mark withoutTable = drawing().mark();
    drawing().addTable("T");
    ASSERT_EQ(tables().getTable(table, "T"), 0);
    mirdane::MdMapODTableRecord empty;
    EXPECT_EQ(table->addRecord(empty, point), kRefused);
    mirdane::MdMapODTableRecord record;
    ASSERT_EQ(table->initRecord(record), 0);
    record.Value(0) = mirdane::MdMapValue(7);
    record.Value(1) = mirdane::MdMapValue(std::string("K1"));
    EXPECT_THROW(record.Value(4), std::invalid_argument);
    EXPECT_THROW(record.Value(-1), std::invalid_argument);
    EXPECT_EQ(table->addRecord(record, MdDbObjectId(4711)), kRefused);
    EXPECT_FALSE(drawing().entity(0).row);
    EXPECT_EQ(table->addRecord(record, point), 0);
    ASSERT_TRUE(drawing().entity(0).row);
    EXPECT_EQ(drawing().entity(0).row->no, 7);
    EXPECT_EQ(drawing().entity(0).row->name, "K1");
    EXPECT_EQ(drawing().entity(0).row->fileName, "") << "a value that was not set";
    mirdane::MdMapODTableRecord numberless;
    ASSERT_EQ(table->initRecord(numberless), 0);
    numberless.Value(0) = mirdane::MdMapValue(std::string("7"));
    EXPECT_EQ(table->addRecord(numberless, point), 0);
    EXPECT_EQ(drawing().entity(0).row->no, 0) << "a text is no number";
    EXPECT_EQ(drawing().entity(0).row->name, "");
    drawing().takeBack(withoutTable);
    EXPECT_EQ(table->addRecord(record, point), kRefused) << "the table went with the step that made it";
}

TEST_F(ObjectDataRefusals, OnlyADocumentOfTheHostHasAProject) {
    Document other;
    mirdane::MdMapProject* project = nullptr;
    EXPECT_EQ(mirdane::MdMapGetSession()->getProjectOfDocument(project, &other), kRefused);
    EXPECT_EQ(mirdane::MdMapGetSession()->getProjectOfDocument(project, nullptr), kRefused);
    EXPECT_EQ(project, nullptr);
}

// --- automation ---

class AutomationRefusals : public Refusals {
  protected:
    Held<mirdane::AutomationObject> database_;

    void SetUp() override {
        addSmallImport(drawing());
        Held<mirdane::AutomationObject> application;
        application.out() = mirdane::MirdanGetIDispatch(true);
        void* queried = nullptr;
        ASSERT_EQ(application->query(mirdane::InterfaceId::HostApplication, queried), kDone);
        Held<mirdane::HostApplication> host;
        host.out() = static_cast<mirdane::HostApplication*>(queried);
        Held<mirdane::AutomationObject> land;
        EXPECT_EQ(host->getInterfaceObject("another program", land.out()), kBadArgument);
        ASSERT_EQ(host->getInterfaceObject(mirdane::kLandProgramId, land.out()), kDone);
        ASSERT_EQ(land->query(mirdane::InterfaceId::LandApplication, queried), kDone);
        land_.out() = static_cast<mirdane::LandApplication*>(queried);
        Held<mirdane::AutomationObject> document;
        ASSERT_EQ(land_->getActiveDocument(document.out()), kDone);
        ASSERT_EQ(document->query(mirdane::InterfaceId::LandDocument, queried), kDone);
        Held<mirdane::LandDocument> landDocument;
        landDocument.out() = static_cast<mirdane::LandDocument*>(queried);
        ASSERT_EQ(landDocument->getDatabase(database_.out()), kDone);
        ASSERT_EQ(database_->query(mirdane::InterfaceId::CivilDatabase, queried), kDone);
        civil_.out() = static_cast<mirdane::CivilDatabase*>(queried);
    }
    void TearDown() override {
        civil_.giveBack();
        database_.giveBack();
        land_.giveBack();
        Refusals::TearDown();
    }
    void alignment(Held<mirdane::CivilAlignment>& held, std::size_t index = 0) {
        Held<mirdane::AutomationObject> object;
        ASSERT_EQ(civil_->objectFromId(drawing().alignment(index).id.asUint64(), object.out()), kDone);
        void* queried = nullptr;
        ASSERT_EQ(object->query(mirdane::InterfaceId::CivilAlignment, queried), kDone);
        held.out() = static_cast<mirdane::CivilAlignment*>(queried);
    }
    // No object is left where an operation fails.
    template <typename T>
    static void expectRefused(mirdane::AutomationStatus status, T*& object, mirdane::AutomationStatus wanted) {
        EXPECT_EQ(status, wanted);
        EXPECT_EQ(object, nullptr);
    }

    Held<mirdane::LandApplication> land_;
    Held<mirdane::CivilDatabase> civil_;
};

TEST_F(AutomationRefusals, AnObjectGivesOnlyTheInterfaceThatItHas) {
    Held<mirdane::CivilAlignment> road;
    alignment(road);
    Held<mirdane::StyleCollection> styles;
    ASSERT_EQ(civil_->getStyleCollectionA(styles.out()), kDone);
    Held<mirdane::StyleObject> style;
    ASSERT_EQ(styles->item(Variant::int32(0), style.out()), kDone);
    const std::int64_t references = EmbeddedHost::liveAutomationReferences();
    for (mirdane::AutomationObject* object :
         {static_cast<mirdane::AutomationObject*>(road.out()), static_cast<mirdane::AutomationObject*>(styles.out()),
          static_cast<mirdane::AutomationObject*>(style.out()), static_cast<mirdane::AutomationObject*>(land_.out())}) {
        void* queried = object;
        EXPECT_EQ(object->query(mirdane::InterfaceId::CivilDatabase, queried), kNoInterface);
        EXPECT_EQ(queried, nullptr);
    }
    EXPECT_EQ(EmbeddedHost::liveAutomationReferences(), references);
    std::string name;
    EXPECT_EQ(style->getName(name), kDone);
    EXPECT_EQ(name, "Standard");
}

TEST_F(AutomationRefusals, AnIndexIsAWholeNumberWithinTheCollection) {
    Held<mirdane::StyleCollection> styles;
    ASSERT_EQ(civil_->getStyleCollectionB(styles.out()), kDone);
    Held<mirdane::SiteCollection> sites;
    ASSERT_EQ(civil_->getSites(sites.out()), kDone);
    Held<mirdane::CivilSite> site;
    ASSERT_EQ(sites->item(Variant::integer(0), site.out()), kDone);
    Held<mirdane::AlignmentCollection> alignments;
    ASSERT_EQ(site->getAlignments(alignments.out()), kDone);
    std::int32_t count = 0;
    EXPECT_EQ(alignments->count(count), kDone);
    EXPECT_EQ(count, 2);
    Held<mirdane::CivilAlignment> road;
    alignment(road);
    Held<mirdane::ElementCollection> elements;
    ASSERT_EQ(road->getElements(elements.out()), kDone);
    const std::string before = drawing::describe(drawing());
    const std::function<Variant()> refused[] = {
        [] { return Variant::int32(-1); },
        [] { return Variant::int32(3); },
        [] { return Variant::string("0"); },
        [] { return Variant(); },
    };
    for (const auto& index : refused) {
        mirdane::StyleObject* style = nullptr;
        expectRefused(styles->item(index(), style), style, kBadArgument);
        mirdane::CivilSite* otherSite = nullptr;
        expectRefused(sites->item(index(), otherSite), otherSite, kBadArgument);
        mirdane::CivilAlignment* otherRoad = nullptr;
        expectRefused(alignments->item(index(), otherRoad), otherRoad, kBadArgument);
        EXPECT_EQ(elements->removeAt(index()), kBadArgument);
    }
    EXPECT_EQ(drawing::describe(drawing()), before);

    // The last one of each is there, and none behind it.
    const auto index = [](std::size_t at) { return Variant::int32(static_cast<std::int32_t>(at)); };
    const auto expectLast = [&](auto& collection, auto* object, std::size_t size) {
        expectRefused(collection->item(index(size), object), object, kBadArgument);
        EXPECT_EQ(collection->item(index(size - 1), object), kDone);
        ASSERT_NE(object, nullptr);
        object->release();
    };
    Held<mirdane::StyleCollection> otherStyles;
    ASSERT_EQ(civil_->getStyleCollectionA(otherStyles.out()), kDone);
    expectLast(styles, static_cast<mirdane::StyleObject*>(nullptr), 1);
    expectLast(otherStyles, static_cast<mirdane::StyleObject*>(nullptr), 1);
    expectLast(sites, static_cast<mirdane::CivilSite*>(nullptr), drawing().sites().size());
    expectLast(alignments, static_cast<mirdane::CivilAlignment*>(nullptr), 2);
    const std::size_t size = drawing().alignment(0).elements.size();
    EXPECT_EQ(elements->removeAt(index(size)), kBadArgument);
    EXPECT_EQ(elements->removeAt(index(size - 1)), kDone);
    EXPECT_EQ(drawing().alignment(0).elements.size(), size - 1);
}

TEST_F(AutomationRefusals, APointIsAnArrayOfThreeRealsFromZero) {
    Held<mirdane::CivilAlignment> road;
    alignment(road, 1);
    Held<mirdane::ElementCollection> elements;
    ASSERT_EQ(road->getElements(elements.out()), kDone);
    const std::function<Variant()> refused[] = {
        [] { return Variant::string("1,2"); },
        [] { return Variant::array(nullptr); },
        [] { return Variant::array(mirdane::createSafeArray(1, 3)); },
        [] { return Variant::array(mirdane::createSafeArray(0, 2)); },
    };
    mirdane::AlignmentElementObject* element = nullptr;
    for (const auto& point : refused) {
        expectRefused(elements->addFixedLine(point(), place(1, 1), element), element, kBadArgument);
        expectRefused(elements->addFixedLine(place(1, 1), point(), element), element, kBadArgument);
        expectRefused(elements->addFixedCurve(point(), place(1, 1), 10, 0, element), element, kBadArgument);
        expectRefused(elements->addFixedCurve(place(1, 1), point(), 10, 0, element), element, kBadArgument);
        expectRefused(elements->addFixedSpiral(0, point(), place(1, 1), 10, 20, 5, 0, 1, element), element,
                      kBadArgument);
        expectRefused(elements->addFixedSpiral(0, place(1, 1), point(), 10, 20, 5, 0, 1, element), element,
                      kBadArgument);
    }
    expectRefused(elements->addFixedSpiral(0, place(0, 0), place(1, 1), 10, 20, 5, 0, 2, element), element,
                  kBadArgument);
    EXPECT_TRUE(drawing().alignment(1).elements.empty());
    EXPECT_TRUE(host_.layoutNotes().refused.empty()) << "no element of a route, so nothing to report";
    expectRefused(elements->addFixedCurve(place(-10, -30), place(20, 10), 4, 0, element), element, kBadArgument);
    ASSERT_EQ(host_.layoutNotes().refused.size(), 1U);
    const RefusedElement refusal = host_.layoutNotes().refused[0];
    EXPECT_EQ(refusal.alignment, drawing().alignment(1).name);
    EXPECT_EQ(refusal.length, 0.0);
    EXPECT_EQ(refusal.why, Refusal::ChordBeyondDiameter);
    EXPECT_EQ(refusal.radius, 4.0);
    EXPECT_EQ(refusal.chord, 50.0);
}

TEST_F(AutomationRefusals, AnElementIsRemovedByItsIndex) {
    Held<mirdane::CivilAlignment> road;
    alignment(road);
    Held<mirdane::ElementCollection> elements;
    ASSERT_EQ(road->getElements(elements.out()), kDone);
    ASSERT_EQ(drawing().alignment(0).elements.size(), 3U);
    const double length = drawing().alignment(0).length();
    const double first = drawing().alignment(0).elements[0].length;
    EXPECT_EQ(elements->removeAt(Variant::int32(0)), kDone);
    EXPECT_EQ(drawing().alignment(0).elements.size(), 2U);
    EXPECT_EQ(drawing().alignment(0).length(), length - first);
    EXPECT_EQ(elements->removeAt(Variant::int32(2)), kBadArgument);
}

// The senses of what was laid are decided before anything is taken away that may have proved them.
TEST_F(AutomationRefusals, AnElementIsRemovedWhenTheOthersAreSettled) {
    Held<mirdane::CivilAlignment> road;
    alignment(road, 1);
    Held<mirdane::ElementCollection> elements;
    ASSERT_EQ(road->getElements(elements.out()), kDone);
    const PlanPoint end = layChain({{0, 0}, 0}, {arc(200, 100)})[0].end; // behind a left turn
    Held<mirdane::AlignmentElementObject> laid[3];
    ASSERT_EQ(elements->addFixedLine(place(-100, 0), place(0, 0), laid[0].out()), kDone);
    ASSERT_EQ(elements->addFixedCurve(place(0, 0), place(end.x, end.y), 200, -1, laid[1].out()), kDone);
    ASSERT_EQ(elements->addFixedLine(place(end.x, end.y), place(end.x - 50, end.y), laid[2].out()), kDone);
    ASSERT_EQ(elements->removeAt(Variant::int32(0)), kDone);
    const std::vector<Element>& left = drawing().alignment(1).elements;
    ASSERT_EQ(left.size(), 2U);
    EXPECT_TRUE(left[0].otherSense);
    EXPECT_FALSE(left[0].clockwise) << "which the line proved";
}

// Also in the drawing itself, whether the elements end with a refusal or with their collection.
TEST_F(AutomationRefusals, WhatWasLaidIsSettledWhenNothingMoreIsAdded) {
    const PlanPoint end = layChain({{0, 0}, 0}, {arc(200, 100)})[0].end; // behind a left turn
    for (const bool refused : {true, false}) {
        Held<mirdane::CivilAlignment> road;
        addSmallImport(drawing());
        alignment(road, drawing().alignmentCount() - 1);
        Held<mirdane::ElementCollection> elements;
        ASSERT_EQ(road->getElements(elements.out()), kDone);
        Held<mirdane::AlignmentElementObject> laid[4];
        ASSERT_EQ(elements->addFixedLine(place(-100, 0), place(0, 0), laid[0].out()), kDone);
        ASSERT_EQ(elements->addFixedCurve(place(0, 0), place(end.x, end.y), 200, -1, laid[1].out()), kDone);
        const std::vector<Element>& inDrawing = drawing().alignment(drawing().alignmentCount() - 1).elements;
        ASSERT_EQ(inDrawing.size(), 2U);
        EXPECT_TRUE(inDrawing[1].clockwise) << "as given so far";
        if (refused) {
            EXPECT_NE(elements->addFixedCurve(place(end.x, end.y), place(end.x + 50, end.y), 0, 0, laid[2].out()),
                      kDone);
        } else {
            elements.giveBack();
        }
        EXPECT_FALSE(inDrawing[1].clockwise) << refused;
    }
}

TEST_F(AutomationRefusals, AStraightHasNoMiddle) {
    Held<mirdane::CivilAlignment> road;
    alignment(road, 1);
    Held<mirdane::ElementCollection> elements;
    ASSERT_EQ(road->getElements(elements.out()), kDone);
    Held<mirdane::AlignmentElementObject> line;
    ASSERT_EQ(elements->addFixedLine(place(0, 0), place(10, 0), line.out()), kDone);
    double value = 7.0;
    EXPECT_EQ(line->getArcValue1(value), kNotImplemented);
    EXPECT_EQ(line->getArcValue2(value), kNotImplemented);
    EXPECT_EQ(value, 7.0);
    Held<mirdane::AlignmentElementObject> arc;
    ASSERT_EQ(elements->addFixedCurve(place(10, 0), place(20, 10), 10, 0, arc.out()), kDone);
    EXPECT_EQ(arc->getArcValue1(value), kDone);
    EXPECT_NEAR(value, 10.0, 1e-9);
    EXPECT_EQ(arc->getArcValue2(value), kDone);
    EXPECT_NEAR(value, 10.0, 1e-9);
}

TEST_F(AutomationRefusals, OnlyTheStandardStyleAndFiniteStationsAreTaken) {
    Held<mirdane::CivilAlignment> road;
    alignment(road);
    EXPECT_EQ(road->applyStyleByName(Variant::string("Standard")), kDone);
    EXPECT_EQ(road->applyStyleByName(Variant::string("Other")), kBadArgument);
    EXPECT_EQ(road->applyStyleByName(Variant::int32(0)), kBadArgument);
    EXPECT_EQ(road->applyStyleObject(nullptr), kBadArgument);
    Held<mirdane::StyleCollection> styles;
    ASSERT_EQ(civil_->getStyleCollectionA(styles.out()), kDone);
    Held<mirdane::StyleObject> style;
    ASSERT_EQ(styles->item(Variant::int32(0), style.out()), kDone);
    EXPECT_EQ(road->applyStyleObject(style.out()), kDone);
    EXPECT_EQ(road->setStartStation(std::numeric_limits<double>::infinity()), kBadArgument);
    EXPECT_EQ(drawing().alignment(0).startStation, 123.456);

    Held<mirdane::SiteCollection> sites;
    ASSERT_EQ(civil_->getSites(sites.out()), kDone);
    Held<mirdane::CivilSite> site;
    ASSERT_EQ(sites->item(Variant::int32(0), site.out()), kDone);
    Held<mirdane::AlignmentCollection> alignments;
    ASSERT_EQ(site->getAlignments(alignments.out()), kDone);
    const char* refused[][3] = {
        {"none", "Standard", "Standard"}, {"0", "Other", "Standard"}, {"0", "Standard", "Other"}};
    for (const auto& [layer, first, second] : refused) {
        mirdane::CivilAlignment* made = nullptr;
        expectRefused(alignments->add("線", layer, Variant::string(first), Variant::string(second), made), made,
                      kBadArgument);
    }
    EXPECT_EQ(drawing().alignmentCount(), 2U);
}

// Objects look into the drawing when they are asked, so that those of a closed document have nothing to look into.
TEST_F(AutomationRefusals, WhatWentAnswersWithAFailure) {
    Held<mirdane::CivilAlignment> road;
    alignment(road);
    Held<mirdane::ElementCollection> elements;
    ASSERT_EQ(road->getElements(elements.out()), kDone);
    Held<mirdane::SiteCollection> sites;
    ASSERT_EQ(civil_->getSites(sites.out()), kDone);
    Held<mirdane::CivilSite> site;
    ASSERT_EQ(sites->item(Variant::int32(0), site.out()), kDone);
    Held<mirdane::AlignmentCollection> alignments;
    ASSERT_EQ(site->getAlignments(alignments.out()), kDone);
    const std::uint64_t roadId = drawing().alignment(0).id.asUint64();
    host_.closeDocument(*host_.currentDocument());

    std::uint64_t id = 7;
    EXPECT_EQ(road->getObjectId(id), kFailure);
    EXPECT_EQ(id, 0U);
    std::string text = "as before";
    EXPECT_EQ(road->getName(text), kFailure);
    EXPECT_EQ(road->setDescription("d"), kFailure);
    EXPECT_EQ(road->applyStyleByName(Variant::string("Standard")), kBadArgument);
    EXPECT_EQ(road->setStartStation(1), kBadArgument);
    Held<mirdane::StyleCollection> styles;
    ASSERT_EQ(civil_->getStyleCollectionA(styles.out()), kDone);
    Held<mirdane::StyleObject> style;
    ASSERT_EQ(styles->item(Variant::int32(0), style.out()), kDone);
    EXPECT_EQ(road->applyStyleObject(style.out()), kBadArgument);
    double x = 1;
    double y = 2;
    EXPECT_EQ(road->pointAt(130, 0, x, y), kFailure);
    EXPECT_EQ(x, 1);
    EXPECT_EQ(y, 2);
    mirdane::ElementCollection* otherElements = nullptr;
    expectRefused(road->getElements(otherElements), otherElements, kFailure);
    mirdane::AlignmentElementObject* element = nullptr;
    expectRefused(elements->addFixedLine(place(0, 0), place(1, 1), element), element, kBadArgument);
    expectRefused(elements->addFixedCurve(place(0, 0), place(1, 1), 10, 0, element), element, kBadArgument);
    expectRefused(elements->addFixedSpiral(0, place(0, 0), place(1, 1), 10, 20, 5, 0, 1, element), element,
                  kBadArgument);
    EXPECT_EQ(elements->removeAt(Variant::int32(0)), kFailure);
    EXPECT_EQ(site->getName(text), kFailure);
    EXPECT_EQ(text, "as before");
    mirdane::AlignmentCollection* otherAlignments = nullptr;
    expectRefused(site->getAlignments(otherAlignments), otherAlignments, kFailure);
    std::int32_t count = 7;
    EXPECT_EQ(alignments->count(count), kDone);
    EXPECT_EQ(count, 0);
    mirdane::CivilAlignment* made = nullptr;
    expectRefused(alignments->add("線", "0", Variant::string("Standard"), Variant::string("Standard"), made), made,
                  kFailure);
    mirdane::CivilSite* otherSite = nullptr;
    expectRefused(sites->item(Variant::int32(0), otherSite), otherSite, kBadArgument);
    expectRefused(sites->add("新", otherSite), otherSite, kBadArgument);
    EXPECT_EQ(sites->count(count), kFailure);
    mirdane::AutomationObject* object = nullptr;
    expectRefused(civil_->objectFromId(roadId, object), object, kBadArgument);
    expectRefused(land_->getActiveDocument(object), object, kFailure);
}

TEST_F(AutomationRefusals, ACollectionOfAlignmentsFollowsItsSite) {
    Held<mirdane::SiteCollection> sites;
    ASSERT_EQ(civil_->getSites(sites.out()), kDone);
    Held<mirdane::CivilSite> site;
    ASSERT_EQ(sites->add("新", site.out()), kDone);
    const MdDbObjectId id = drawing().sites().back().id;
    Held<mirdane::AlignmentCollection> alignments;
    ASSERT_EQ(site->getAlignments(alignments.out()), kDone);
    const auto expectNames = [&](const std::vector<std::string>& wanted) {
        std::int32_t count = -1;
        EXPECT_EQ(alignments->count(count), kDone);
        EXPECT_EQ(count, static_cast<std::int32_t>(wanted.size()));
        for (std::size_t i = 0; i < wanted.size(); ++i) {
            Held<mirdane::CivilAlignment> road;
            ASSERT_EQ(alignments->item(Variant::int32(static_cast<std::int32_t>(i)), road.out()), kDone);
            std::string name;
            EXPECT_EQ(road->getName(name), kDone);
            EXPECT_EQ(name, wanted[i]);
        }
    };
    expectNames({});
    drawing().addAlignment(id, "一", "0", "Standard", "Standard");
    expectNames({"一"});
    const Drawing::Mark mark = drawing().mark();
    drawing().addAlignment(drawing().sites().front().id, "他", "0", "Standard", "Standard");
    drawing().addAlignment(id, "二", "0", "Standard", "Standard");
    expectNames({"一", "二"});
    drawing().takeBack(mark);
    expectNames({"一"});
}

TEST_F(AutomationRefusals, ASiteThatWasTakenBackTakesNoAlignment) {
    const Drawing::Mark mark = drawing().mark();
    Held<mirdane::SiteCollection> sites;
    ASSERT_EQ(civil_->getSites(sites.out()), kDone);
    Held<mirdane::CivilSite> site;
    ASSERT_EQ(sites->add("新", site.out()), kDone);
    Held<mirdane::AlignmentCollection> alignments;
    ASSERT_EQ(site->getAlignments(alignments.out()), kDone);
    drawing().takeBack(mark);
    std::string name = "as before";
    EXPECT_EQ(site->getName(name), kFailure);
    EXPECT_EQ(name, "as before");
    mirdane::CivilAlignment* made = nullptr;
    expectRefused(alignments->add("線", "0", Variant::string("Standard"), Variant::string("Standard"), made), made,
                  kFailure);
    EXPECT_EQ(drawing().alignmentCount(), 2U);
}

} // namespace
} // namespace fenmark::host::embedded
