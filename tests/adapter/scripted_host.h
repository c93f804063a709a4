// A scripted double of the whole declared host surface. It logs every call in order, counts the references of every
// automation object, watches what is open and what stands on the host's heap, and fails at a chosen step.
#pragma once

#include "host/surface/automation.h"
#include "host/surface/database.h"
#include "host/surface/map.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::scripted {

using host::MdDbObjectId;
using host::MdGePoint3d;

// One automation object that was given out. It is kept after its last release, so that a second one shows.
class Tracked {
  public:
    explicit Tracked(std::string label) : label_(std::move(label)) {}
    Tracked(const Tracked&) = delete;
    Tracked& operator=(const Tracked&) = delete;
    virtual ~Tracked() = default;

    const std::string& label() const { return label_; }
    int references = 1;
    bool releasedTooOften = false;

  private:
    std::string label_;
};

struct Site {
    std::string name;
    std::vector<std::string> alignments;
};

struct Table {
    std::vector<std::string> columns;
    std::vector<mirdane::MdMap::EDataType> types;
};

struct Row {
    std::string table;
    MdDbObjectId id;
    std::vector<mirdane::MdMapValue> values;
};

// What an entity of the drawing ended as.
struct Entity {
    std::string kind; // "point", "2d polyline", "polyline"
    std::string layer;
    std::vector<MdGePoint3d> vertices;
    bool closed = false;
};

class Host {
  public:
    Host();
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    // ---- what the host holds, as a test sets it up ----
    std::vector<std::string> layers{"0", "測点", "画地"};
    std::size_t currentLayer = 0;
    std::vector<Site> sites;
    std::vector<std::string> stylesA{"標準A"};
    std::vector<std::string> stylesB{"標準B"};
    double firstStation = 0.0; // stations that pointAt answers, metres
    double lastStation = 1000.0;
    MdGePoint3d reportedEnd{500.0, 600.0, 0.0}; // end of every arc and clothoid
    std::map<std::string, Table> tables;

    // ---- the script ----
    int failAt = 0;         // the step that fails, counted from 1; 0 for none
    int missingAt = 0;      // the step that says success and gives no object
    std::string failCall;   // every step whose text begins so fails
    bool noHeap = false;    // the heap is full
    int arraysLeft = 1000;  // safe arrays that can still be made
    bool noDrawing = false; // no drawing is open

    // ---- what happened ----
    std::vector<std::string> calls;
    int steps = 0;
    std::string failedCall;                // the step that failed last
    std::vector<std::string> messageBoxes; // "caption: text"
    std::vector<Row> rows;
    std::map<std::uint64_t, mirdane::MdDbEntity*> entities; // in the drawing
    std::map<const void*, std::string> open;                // objects that are open now
    std::map<void*, std::size_t> heap;                      // blocks of the host's heap
    std::vector<std::string> faults;                        // misuse of the surface
    struct Alignment {
        std::string name;
        std::string layer;
        std::string firstStyle;
        std::string secondStyle;
        std::string description;
        double startStation = 0.0;
        std::vector<std::string> elements;
    };
    std::vector<Alignment> alignments;

    void note(std::string call) { calls.push_back(std::move(call)); }
    // Logs a step and says whether it is the one to fail.
    bool fails(std::string call);
    bool isMissing() const { return steps == missingAt; }
    template <typename T, typename... Arguments>
    T* make(Arguments&&... arguments) {
        auto owned = std::make_unique<T>(*this, std::forward<Arguments>(arguments)...);
        T* const object = owned.get();
        objects_.push_back(std::move(owned));
        return object;
    }
    // A step that gives an object.
    template <typename T, typename Make>
    mirdane::AutomationStatus give(std::string call, T*& out, Make&& makeObject) {
        out = nullptr;
        if (fails(std::move(call))) {
            return 1;
        }
        if (!isMissing()) {
            out = makeObject();
        }
        return 0;
    }

    // "open x, close x" of all calls, joined by ", ".
    std::string callText(std::size_t from = 0) const;
    // Automation objects that are still held or were released too often, by label.
    std::vector<std::string> unbalanced() const;
    std::size_t objectCount() const { return objects_.size(); }
    // The entities of the drawing in the order of their identifiers.
    std::vector<Entity> drawing() const;
    // Blocks of the heap that belong to nothing in the drawing.
    std::size_t strayBlocks() const;

    // ---- for the implementation ----
    std::uint64_t nextId = 1000;
    void openObject(const void* object, std::string label);
    void closeObject(const void* object);
    std::string openLabel(const void* object) const;
    void destroy(mirdane::MdDbEntity* entity);
    std::vector<std::unique_ptr<mirdane::MdDbObject>> databaseObjects;

  private:
    std::vector<std::unique_ptr<Tracked>> objects_;
};

// The host of the test that runs now.
Host& current();

} // namespace fenmark::scripted
