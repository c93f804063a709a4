// The scripted drawing database.
#include "scripted_host.h"

#include <cstdlib>
#include <cstring>

namespace mirdane {

namespace {

using fenmark::scripted::current;
using fenmark::scripted::Host;

constexpr std::uint64_t kModelSpaceId = 1;
constexpr std::uint64_t kFirstLayerId = 100;

std::string modeText(OpenMode mode) {
    return mode == OpenMode::Read ? "read" : "write";
}

// A new entity is open for its maker.
std::string labelOf(const MdDbEntity& entity) {
    if (dynamic_cast<const MdDbPoint*>(&entity) != nullptr) {
        return "point";
    }
    return dynamic_cast<const MdDb2dPolyline*>(&entity) != nullptr ? "2d polyline" : "polyline";
}

class BlockRecord : public MdDbBlockTableRecord {
  public:
    Status close() override {
        current().closeObject(this);
        return 0;
    }
    Status getName(MdString& name) const override {
        name.assign("*Model_Space");
        return 0;
    }
    Status appendMdDbEntity(MdDbObjectId& id, MdDbEntity* entity) override {
        Host& host = current();
        if (!host.openLabel(this).ends_with("write")) {
            host.faults.push_back("append to a record that is not open for write");
        }
        if (host.fails("append " + labelOf(*entity))) {
            return 1;
        }
        id = MdDbObjectId(++host.nextId);
        entity->setObjectId(id);
        host.entities[id.asUint64()] = entity;
        host.open[entity] = labelOf(*entity);
        return 0;
    }
};

class LayerRecord : public MdDbLayerTableRecord {
  public:
    explicit LayerRecord(std::size_t index) : index_(index) {}
    Status close() override {
        current().closeObject(this);
        return 0;
    }
    Status getName(MdString& name) const override {
        if (current().fails("getName")) {
            return 1;
        }
        name.assign(current().layers[index_]);
        return 0;
    }

  private:
    std::size_t index_;
};

class BlockTable : public MdDbBlockTable {
  public:
    Status close() override {
        current().closeObject(this);
        return 0;
    }
    Status getIdAt(std::string_view name, MdDbObjectId& id, bool getErased) const override {
        if (current().fails("getIdAt " + std::string(name) + (getErased ? " erased" : "")) || name != "*Model_Space") {
            return 1;
        }
        id = MdDbObjectId(kModelSpaceId);
        return 0;
    }
};

std::string flags(bool first, bool second) {
    return std::string(first ? " true" : " false") + (second ? " true" : " false");
}

class LayerIterator : public MdDbLayerTableIterator {
  public:
    ~LayerIterator() override { current().note("delete iterator"); }
    void start(bool atBeginning, bool skipDeleted) override {
        current().note("start" + flags(atBeginning, skipDeleted));
        index_ = 0;
    }
    void step(bool forward, bool skipDeleted) override {
        current().note("step" + flags(forward, skipDeleted));
        ++index_;
    }
    bool done() const override { return index_ >= current().layers.size(); }
    Status getRecordId(MdDbObjectId& id) const override {
        if (current().fails("getRecordId")) {
            return 1;
        }
        id = MdDbObjectId(kFirstLayerId + index_);
        return 0;
    }

  private:
    std::size_t index_ = 0;
};

class LayerTable : public MdDbLayerTable {
  public:
    Status close() override {
        current().closeObject(this);
        return 0;
    }
    Status getIdAt(std::string_view, MdDbObjectId&, bool) const override { return 1; }
    Status newIterator(MdDbLayerTableIterator*& iterator, bool atBeginning, bool skipDeleted) const override {
        if (current().fails("newIterator" + flags(atBeginning, skipDeleted))) {
            return 1;
        }
        iterator = new LayerIterator;
        return 0;
    }
};

template <typename Made, typename Pointer, typename... Arguments>
Status openNew(Pointer*& out, std::string label, Arguments&&... arguments) {
    Host& host = current();
    out = nullptr;
    if (host.fails("ask for " + label)) {
        return 1;
    }
    auto made = std::make_unique<Made>(std::forward<Arguments>(arguments)...);
    out = made.get();
    host.databaseObjects.push_back(std::move(made));
    host.openObject(out, std::move(label));
    return 0;
}

class Database : public MdDbDatabase {
  public:
    Status getSymbolTable(MdDbBlockTable*& table, OpenMode mode) override {
        return openNew<BlockTable>(table, "block table for " + modeText(mode));
    }
    Status getSymbolTable(MdDbLayerTable*& table, OpenMode mode) override {
        return openNew<LayerTable>(table, "layer table for " + modeText(mode));
    }
    MdDbObjectId clayer() const override { return MdDbObjectId(kFirstLayerId + current().currentLayer); }
};

class Services : public MdDbHostApplicationServices {
  public:
    MdDbDatabase* workingDatabase() const override {
        static Database database;
        return current().noDrawing ? nullptr : &database;
    }
};

class DocManager : public MdApDocManager {
  public:
    MdApDocument* curDocument() const override {
        static MdApDocument document;
        current().note("curDocument");
        return &document;
    }
    void addReactor(MdApDocManagerReactor*) override {}
    void removeReactor(MdApDocManagerReactor*) override {}
};

template <typename T>
Status openEntity(T*& object, MdDbObjectId id, OpenMode mode) {
    Host& host = current();
    object = nullptr;
    if (host.fails("ask for entity")) {
        return 1;
    }
    const auto found = host.entities.find(id.asUint64());
    if (found == host.entities.end()) {
        return 1;
    }
    object = dynamic_cast<T*>(found->second);
    if (object == nullptr) {
        return 1;
    }
    host.openObject(object, labelOf(*object) + " for " + modeText(mode));
    return 0;
}

} // namespace

MdDbHostApplicationServices* mddbHostApplicationServices() {
    static Services services;
    return &services;
}

Status mddbOpenObject(MdDbBlockTableRecord*& object, MdDbObjectId id, OpenMode mode, bool) {
    object = nullptr;
    return id.asUint64() == kModelSpaceId ? openNew<BlockRecord>(object, "block record for " + modeText(mode)) : 1;
}

Status mddbOpenObject(MdDbLayerTableRecord*& object, MdDbObjectId id, OpenMode mode, bool) {
    return openNew<LayerRecord>(object, "layer record for " + modeText(mode),
                                static_cast<std::size_t>(id.asUint64() - kFirstLayerId));
}

Status mddbOpenObject(MdDbPolyline*& object, MdDbObjectId id, OpenMode mode, bool) {
    return openEntity(object, id, mode);
}

Status mddbOpenObject(MdDbEntity*& object, MdDbObjectId id, OpenMode mode, bool) {
    return openEntity(object, id, mode);
}

Status mdutNewString(const char* source, char*& destination) {
    if (current().fails("mdutNewString")) {
        return 1;
    }
    const std::size_t size = std::strlen(source) + 1;
    destination = static_cast<char*>(mdHeapAlloc(nullptr, size));
    if (destination == nullptr) {
        return 1;
    }
    std::memcpy(destination, source, size);
    return 0;
}

void* mdHeapAlloc(void* heap, std::size_t size) {
    Host& host = current();
    if (heap != nullptr) {
        host.faults.push_back("a heap of its own");
    }
    if (host.noHeap) {
        return nullptr;
    }
    void* const block = std::malloc(size);
    host.heap[block] = size;
    return block;
}

void mdHeapFree(void* heap, void* pointer) {
    Host& host = current();
    if (heap != nullptr || host.heap.erase(pointer) != 1) {
        host.faults.push_back("a block was freed that is not on the heap");
    }
    std::free(pointer);
}

Status MdDbEntity::close() {
    Host& host = current();
    if (!objectId().isNull()) {
        host.closeObject(this);
        return 0;
    }
    host.note("give up " + labelOf(*this)); // never in the drawing: the host deletes it
    host.destroy(this);
    return 0;
}

Status MdDbEntity::setLayerOfEntity(std::string_view layerName, bool doSubentities, bool allowHidden) {
    if (current().fails("setLayer " + std::string(layerName) + flags(doSubentities, allowHidden))) {
        return 1;
    }
    setLayerText(layerName);
    return 0;
}

Status MdDbPolyline::convertFromEntity(MdDbEntity*& entity, bool transferIdentity) {
    Host& host = current();
    const auto* const simple = dynamic_cast<const MdDb2dPolyline*>(entity);
    if (!host.openLabel(entity).ends_with("write")) {
        host.faults.push_back("conversion of an entity that is not open for write");
    }
    if (host.fails(std::string("convert") + (transferIdentity ? " true" : " false")) || simple == nullptr) {
        return 1;
    }
    vertices_ = simple->vertices();
    closed_ = simple->closed();
    setLayerText(simple->layer());
    setObjectId(simple->objectId());
    host.entities[objectId().asUint64()] = this;
    host.open.erase(entity);
    host.destroy(entity);
    entity = nullptr;
    host.open[this] = "polyline";
    return 0;
}

Status MdDbPolyline::setClosedFlag(bool closed) {
    if (current().fails(std::string("setClosedFlag") + (closed ? " true" : " false"))) {
        return 1;
    }
    closed_ = closed;
    return 0;
}

MdApDocManager* mdDocManagerPtr() {
    static DocManager manager;
    return &manager;
}

void* mdsw_mirdanMainWnd() {
    return nullptr;
}

} // namespace mirdane
