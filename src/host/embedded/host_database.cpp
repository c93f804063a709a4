// The declared surface, drawing database, answered by the current document.
#include "host/embedded/database_objects.h"
#include "host/embedded/host_heap.h"

#include <cstdlib>
#include <cstring>
#include <new>

namespace fenmark::host::embedded {

namespace {

using mirdane::Status;

constexpr Status kOk = 0;
constexpr Status kNotFound = 1;
constexpr Status kNotAllowed = 2;
constexpr std::string_view kModelSpace = "*Model_Space";
// Beyond any identifier that a drawing gives.
constexpr MdDbObjectId kModelSpaceId(0xFFFF'FFFF'0000'0001U);

class Opened {
  public:
    void open() { ++counters().openObjects; }
    Status close() {
        --counters().openObjects;
        return kOk;
    }
};

class LayerRecord : public mirdane::MdDbLayerTableRecord {
  public:
    explicit LayerRecord(std::string name) : name_(std::move(name)) { ++counters().openObjects; }
    Status close() override {
        --counters().openObjects;
        this->~LayerRecord();
        mirdane::mdHeapFree(nullptr, this);
        return kOk;
    }
    Status getName(mirdane::MdString& name) const override {
        name.assign(name_);
        return kOk;
    }

  private:
    std::string name_;
};

class LayerIterator : public mirdane::MdDbLayerTableIterator {
  public:
    explicit LayerIterator(const Drawing& drawing) : drawing_(drawing) {}
    void start(bool atBeginning, bool) override {
        index_ = atBeginning ? 0 : static_cast<std::ptrdiff_t>(drawing_.layers().size()) - 1;
    }
    void step(bool forward, bool) override { index_ += forward ? 1 : -1; }
    bool done() const override { return index_ < 0 || index_ >= static_cast<std::ptrdiff_t>(drawing_.layers().size()); }
    Status getRecordId(MdDbObjectId& id) const override {
        if (done()) {
            return kNotFound;
        }
        id = drawing_.layers()[static_cast<std::size_t>(index_)].id;
        return kOk;
    }

  private:
    const Drawing& drawing_;
    std::ptrdiff_t index_ = 0;
};

Drawing* currentDrawing() {
    EmbeddedHost* host = EmbeddedHost::current();
    return host != nullptr && host->currentDocument() != nullptr ? &host->drawing() : nullptr;
}

// A new object on the host's heap. Raises std::bad_alloc if there is no memory, as all of this host does.
template <typename T, typename... Arguments>
T* makeOnHeap(Arguments&&... arguments) {
    void* memory = mirdane::mdHeapAlloc(nullptr, sizeof(T));
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    try {
        return new (memory) T(std::forward<Arguments>(arguments)...);
    } catch (...) {
        mirdane::mdHeapFree(nullptr, memory);
        throw;
    }
}

void fill(mirdane::MdDbEntity& entity, const EntityView& view) {
    entity.setObjectId(view.id);
    entity.setLayerText(view.layer);
}

// Closes an entity that is not handed out, because there was no memory for all of it.
struct CloseEntity {
    void operator()(mirdane::MdDbEntity* entity) const { entity->close(); }
};

mirdane::MdDbPolyline* openLightweight(const EntityView& view) {
    std::unique_ptr<mirdane::MdDbPolyline, CloseEntity> polyline(makeOnHeap<mirdane::MdDbPolyline>());
    fill(*polyline, view);
    polyline->verticesForHost().assign(view.vertices.begin(), view.vertices.end());
    polyline->setClosedForHost(view.closed);
    return polyline.release();
}

mirdane::MdDb2dPolyline* openOld(const EntityView& view) {
    std::unique_ptr<mirdane::MdDb2dPolyline, CloseEntity> polyline(makeOnHeap<mirdane::MdDb2dPolyline>(
        mirdane::Poly2dType::Simple, std::vector<MdGePoint3d>(), 0.0, view.closed, 0.0, 0.0, nullptr, nullptr));
    fill(*polyline, view);
    polyline->verticesForHost().assign(view.vertices.begin(), view.vertices.end());
    return polyline.release();
}

} // namespace

class Document::DatabaseObjects::BlockTable : public mirdane::MdDbBlockTable, private Opened {
  public:
    using Opened::open;
    Status close() override { return Opened::close(); }
    Status getIdAt(std::string_view name, MdDbObjectId& id, bool) const override {
        if (name != kModelSpace) {
            return kNotFound;
        }
        id = kModelSpaceId;
        return kOk;
    }
};

class Document::DatabaseObjects::ModelSpace : public mirdane::MdDbBlockTableRecord, private Opened {
  public:
    explicit ModelSpace(Drawing& drawing) : drawing_(drawing) {}
    using Opened::open;
    Status close() override { return Opened::close(); }
    Status getName(mirdane::MdString& name) const override {
        name.assign(kModelSpace);
        return kOk;
    }

    Status appendMdDbEntity(MdDbObjectId& id, mirdane::MdDbEntity* entity) override {
        if (entity == nullptr || !entity->objectId().isNull()) {
            return kNotAllowed;
        }
        const std::size_t layer = entity->layer().empty()
                                      ? drawing_.currentLayer()
                                      : drawing_.findLayer(entity->layer()).value_or(drawing_.currentLayer());
        if (const auto* point = dynamic_cast<const mirdane::MdDbPoint*>(entity)) {
            id = drawing_.addPoint(point->position(), layer);
        } else if (const auto* old = dynamic_cast<const mirdane::MdDb2dPolyline*>(entity)) {
            id = drawing_.addPolyline(old->vertices(), layer, EntityKind::Polyline2d, old->closed());
        } else if (const auto* polyline = dynamic_cast<const mirdane::MdDbPolyline*>(entity)) {
            id = drawing_.addPolyline(polyline->vertices(), layer, EntityKind::Polyline, polyline->closed());
        } else {
            return kNotAllowed;
        }
        entity->setObjectId(id);
        entity->setLayerText(drawing_.layers()[layer].name);
        return kOk;
    }

  private:
    Drawing& drawing_;
};

class Document::DatabaseObjects::LayerTable : public mirdane::MdDbLayerTable, private Opened {
  public:
    explicit LayerTable(const Drawing& drawing) : drawing_(drawing) {}
    using Opened::open;
    Status close() override { return Opened::close(); }
    Status getIdAt(std::string_view name, MdDbObjectId& id, bool) const override {
        const std::optional<std::size_t> found = drawing_.findLayer(name);
        if (!found) {
            return kNotFound;
        }
        id = drawing_.layers()[*found].id;
        return kOk;
    }
    Status newIterator(mirdane::MdDbLayerTableIterator*& iterator, bool atBeginning, bool skipDeleted) const override {
        iterator = new LayerIterator(drawing_);
        iterator->start(atBeginning, skipDeleted);
        return kOk;
    }

  private:
    const Drawing& drawing_;
};

Document::DatabaseObjects::DatabaseObjects(Document& document)
    : document_(document), blockTable_(std::make_unique<BlockTable>()),
      modelSpace_(std::make_unique<ModelSpace>(document.drawing())),
      layerTable_(std::make_unique<LayerTable>(document.drawing())) {}

Document::DatabaseObjects::~DatabaseObjects() = default;

Status Document::DatabaseObjects::getSymbolTable(mirdane::MdDbBlockTable*& table, mirdane::OpenMode) {
    blockTable_->open();
    table = blockTable_.get();
    return kOk;
}

Status Document::DatabaseObjects::getSymbolTable(mirdane::MdDbLayerTable*& table, mirdane::OpenMode) {
    layerTable_->open();
    table = layerTable_.get();
    return kOk;
}

MdDbObjectId Document::DatabaseObjects::clayer() const {
    const Drawing& drawing = document_.drawing();
    return drawing.layers()[drawing.currentLayer()].id;
}

mirdane::MdDbBlockTableRecord* Document::DatabaseObjects::openModelSpace(MdDbObjectId id) {
    if (id != kModelSpaceId) {
        return nullptr;
    }
    modelSpace_->open();
    return modelSpace_.get();
}

} // namespace fenmark::host::embedded

namespace mirdane {

using fenmark::drawing::Drawing;
using fenmark::drawing::EntityKind;
using fenmark::drawing::EntityView;
using fenmark::host::embedded::counters;
using fenmark::host::embedded::currentDrawing;
using fenmark::host::embedded::Document;
using fenmark::host::embedded::EmbeddedHost;
using fenmark::host::embedded::kNotAllowed;
using fenmark::host::embedded::kNotFound;
using fenmark::host::embedded::kOk;

// --- entities ---

Status MdDbEntity::close() {
    void* memory = dynamic_cast<void*>(this);
    this->~MdDbEntity();
    mdHeapFree(nullptr, memory);
    return kOk;
}

// The host does what the two flags ask for: polylines of this drawing have no parts of their own, and no layer is
// hidden.
Status MdDbEntity::setLayerOfEntity(std::string_view layerName, bool, bool) {
    Drawing* drawing = currentDrawing();
    if (drawing == nullptr) {
        return kNotAllowed;
    }
    const std::optional<std::size_t> layer = drawing->findLayer(layerName);
    if (!layer) {
        return kNotFound;
    }
    layer_.assign(layerName);
    if (!id_.isNull()) {
        const std::optional<std::size_t> entity = drawing->findEntity(id_);
        if (!entity) {
            return kNotFound;
        }
        drawing->setEntityLayer(*entity, *layer);
    }
    return kOk;
}

Status MdDbPolyline::convertFromEntity(MdDbEntity*& entity, bool transferIdentity) {
    Drawing* drawing = currentDrawing();
    if (drawing == nullptr || entity == nullptr || !transferIdentity || !objectId().isNull()) {
        return kNotAllowed;
    }
    const std::optional<std::size_t> index = drawing->findEntity(entity->objectId());
    if (!index || drawing->entity(*index).kind != EntityKind::Polyline2d) {
        return kNotAllowed;
    }
    drawing->makeLightweight(*index);
    const EntityView view = drawing->entity(*index);
    // Closed first, so that a polyline of a million vertices does not stand in memory once more.
    std::exchange(entity, nullptr)->close();
    setObjectId(view.id);
    setLayerText(view.layer);
    vertices_.assign(view.vertices.begin(), view.vertices.end());
    closed_ = view.closed;
    return kOk;
}

Status MdDbPolyline::setClosedFlag(bool closed) {
    closed_ = closed;
    if (objectId().isNull()) {
        return kOk;
    }
    Drawing* drawing = currentDrawing();
    const std::optional<std::size_t> index = drawing == nullptr ? std::nullopt : drawing->findEntity(objectId());
    if (!index) {
        return kNotFound;
    }
    drawing->setEntityClosed(*index, closed);
    return kOk;
}

// --- services and opening ---

namespace {

class Services : public MdDbHostApplicationServices {
  public:
    MdDbDatabase* workingDatabase() const override {
        EmbeddedHost* host = EmbeddedHost::current();
        return host == nullptr || host->currentDocument() == nullptr ? nullptr
                                                                     : &host->currentDocument()->databaseObjects();
    }
};

} // namespace

MdDbHostApplicationServices* mddbHostApplicationServices() {
    static Services services;
    return EmbeddedHost::current() == nullptr ? nullptr : &services;
}

Status mddbOpenObject(MdDbBlockTableRecord*& object, MdDbObjectId id, OpenMode, bool) {
    EmbeddedHost* host = EmbeddedHost::current();
    object = host == nullptr || host->currentDocument() == nullptr
                 ? nullptr
                 : host->currentDocument()->databaseObjects().openModelSpace(id);
    return object == nullptr ? kNotFound : kOk;
}

Status mddbOpenObject(MdDbLayerTableRecord*& object, MdDbObjectId id, OpenMode, bool) {
    object = nullptr;
    const Drawing* drawing = currentDrawing();
    const std::optional<std::size_t> index = drawing == nullptr ? std::nullopt : drawing->findLayer(id);
    if (!index) {
        return kNotFound;
    }
    object = fenmark::host::embedded::makeOnHeap<fenmark::host::embedded::LayerRecord>(drawing->layers()[*index].name);
    return kOk;
}

Status mddbOpenObject(MdDbPolyline*& object, MdDbObjectId id, OpenMode, bool) {
    object = nullptr;
    const Drawing* drawing = currentDrawing();
    const std::optional<std::size_t> index = drawing == nullptr ? std::nullopt : drawing->findEntity(id);
    if (!index) {
        return kNotFound;
    }
    const EntityView view = drawing->entity(*index);
    if (view.kind != EntityKind::Polyline) {
        return kNotFound;
    }
    object = fenmark::host::embedded::openLightweight(view);
    return kOk;
}

Status mddbOpenObject(MdDbEntity*& object, MdDbObjectId id, OpenMode, bool) {
    using fenmark::host::embedded::fill;
    using fenmark::host::embedded::makeOnHeap;
    object = nullptr;
    const Drawing* drawing = currentDrawing();
    const std::optional<std::size_t> index = drawing == nullptr ? std::nullopt : drawing->findEntity(id);
    if (!index) {
        return kNotFound;
    }
    const EntityView view = drawing->entity(*index);
    switch (view.kind) {
    case EntityKind::Point:
        object = makeOnHeap<MdDbPoint>(view.position());
        break;
    case EntityKind::Polyline2d:
        object = fenmark::host::embedded::openOld(view);
        break;
    case EntityKind::Polyline:
        object = fenmark::host::embedded::openLightweight(view);
        break;
    }
    fill(*object, view);
    return kOk;
}

// --- heap ---

Status mdutNewString(const char* source, char*& destination) {
    destination = nullptr;
    if (source == nullptr) {
        return kNotAllowed;
    }
    const std::size_t size = std::strlen(source) + 1;
    void* memory = mdHeapAlloc(nullptr, size);
    if (memory == nullptr) {
        return kNotAllowed;
    }
    std::memcpy(memory, source, size);
    destination = static_cast<char*>(memory);
    return kOk;
}

void* mdHeapAlloc(void*, std::size_t size) {
    void* memory = std::malloc(size);
    if (memory != nullptr) {
        ++counters().heapBlocks;
    }
    return memory;
}

void mdHeapFree(void*, void* pointer) {
    if (pointer != nullptr) {
        --counters().heapBlocks;
        std::free(pointer);
    }
}

// --- documents and the window ---

MdApDocManager* mdDocManagerPtr() {
    EmbeddedHost* host = EmbeddedHost::current();
    return host == nullptr ? nullptr : &host->documentManager();
}

void* mdsw_mirdanMainWnd() {
    EmbeddedHost* host = EmbeddedHost::current();
    return host == nullptr ? nullptr : host->mainWindow();
}

} // namespace mirdane
