// The embedded host's drawing in memory: layers, sites, alignments, points, polylines and their rows of object data.
//
// Every object has an identifier of one sequence, in order of creation and never used twice. Points and polylines are
// kept compactly: a point with its row takes some 90 bytes. Indexes count from 0 in order of creation.
#pragma once

#include "drawing/alignment_geometry.h"
#include "drawing/chunked_array.h"
#include "drawing/colour.h"
#include "drawing/text_pool.h"
#include "drawing/values.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::drawing {

inline constexpr std::string_view kStandardStyle = "Standard";
inline constexpr std::string_view kFirstLayer = "0";

struct Layer {
    MdDbObjectId id;
    std::string name;
    std::optional<Colour> colour = std::nullopt; // of all that lies on it; none: each kind has its own

    friend bool operator==(const Layer&, const Layer&) = default;
};

struct Site {
    MdDbObjectId id;
    std::string name;
};

struct Alignment {
    MdDbObjectId id;
    MdDbObjectId site;
    std::string name;
    std::string description;
    std::string layer;
    std::string firstStyle;
    std::string secondStyle;
    double startStation = 0.0;
    std::vector<Element> elements;

    double length() const;
};

// An object-data table. All tables have the four columns "No", "Name", "Type", "FileName".
struct ObjectDataTable {
    MdDbObjectId id;
    std::string name;
};

// What one import made, as its result has it.
struct ImportCounts {
    std::int64_t points = 0;
    std::int64_t lots = 0;
    std::int64_t routes = 0; // polylines of routes
    std::int64_t alignments = 0;
    std::int64_t longitudinal = 0;
    std::int64_t crossSections = 0;
    std::int64_t errors = 0; // error blocks of its log

    friend bool operator==(const ImportCounts&, const ImportCounts&) = default;
};

// One import into the drawing: which file, when, and which objects came of it.
struct Import {
    MdDbObjectId id;      // given by the drawing
    std::string fileName; // as in the rows of its objects
    std::string path;     // of the file, whole
    std::uint64_t fileSize = 0;
    std::string digest; // "sha256:" and 64 digits, see file_digest.h
    std::string time;   // UTC, "2026-01-31T09:15:00Z"
    ImportCounts counts;
    std::uint64_t firstId = 0; // its objects have identifiers from this one
    std::uint64_t lastId = 0;  // to this one; less than firstId if it made none

    friend bool operator==(const Import&, const Import&) = default;
};

struct RowView {
    std::string_view table;
    std::int32_t no = 0;
    std::string_view name;
    std::string_view type;
    std::string_view fileName;
};

enum class EntityKind : std::uint8_t { Point, Polyline2d, Polyline };

// What an entity is, without a copy: good until the drawing changes.
struct EntityView {
    MdDbObjectId id;
    EntityKind kind = EntityKind::Point;
    bool closed = false;
    std::string_view layer;
    std::span<const MdGePoint3d> vertices; // of a point: its position
    std::optional<RowView> row;

    bool isPoint() const { return kind == EntityKind::Point; }
    const MdGePoint3d& position() const { return vertices.front(); }
};

// A box around things in plan; empty at first. What has an endless coordinate, or none, does not widen it.
struct Extent {
    double minX = std::numeric_limits<double>::infinity();
    double minY = std::numeric_limits<double>::infinity();
    double maxX = -std::numeric_limits<double>::infinity();
    double maxY = -std::numeric_limits<double>::infinity();

    bool empty() const { return !(minX <= maxX); }
    void add(double x, double y);
    void add(const Extent& other);

    friend bool operator==(const Extent&, const Extent&) = default;
};

// The exact box of an element and its two ends, as far as they are finite.
Extent extentOf(const Element& element);

// Objects of an import that is to go from the file.
struct IdRange {
    std::uint64_t import = 0;
    std::uint64_t first = 0;
    std::uint64_t last = 0;
};

class Drawing {
  public:
    // A state to come back to. Imports only append, so a mark is a few counts.
    struct Mark;
    // What went when the drawing came back to a mark.
    struct Removed;

    // A new drawing: layer "0", which is current; no site.
    Drawing();

    // --- reading ---
    const std::vector<Layer>& layers() const { return layers_; }
    const std::vector<Site>& sites() const { return sites_; }
    const std::vector<ObjectDataTable>& tables() const { return tables_; }
    // In the order in which they came. Those of an earlier version of the program are not known.
    const std::vector<Import>& imports() const { return imports_; }
    // Positions in imports() of those of a file of that name, without its folder.
    std::vector<std::size_t> importsOf(std::string_view fileName) const;
    // The import that made an object; null if none did.
    MdDbObjectId importOf(MdDbObjectId object) const;
    std::size_t alignmentCount() const { return alignments_.size(); }
    const Alignment& alignment(std::size_t index) const { return alignments_[index].alignment; }
    // The alignment prepared for stations; kept until the alignment changes.
    const AlignmentGeometry& geometry(std::size_t index) const;
    std::size_t entityCount() const { return entities_; }
    EntityView entity(std::size_t index) const;
    bool isPoint(std::size_t index) const; // what entity says, at less cost
    // Box of all entities and alignments. It grows with each of them; all are walked through only after something at its
    // edge was removed or replaced. Where points and polylines were not read it may stay larger than what is left.
    const Extent& extent() const;
    Extent entityExtent(std::size_t index) const;
    // Plane rectangular zone of the coordinates, 1 to 19; 0 where unknown.
    int zone() const { return zone_; }

    std::optional<std::size_t> findLayer(std::string_view name) const;
    std::optional<std::size_t> findLayer(MdDbObjectId id) const;
    std::optional<std::size_t> findSite(std::string_view name) const;
    std::optional<std::size_t> findSite(MdDbObjectId id) const;
    std::optional<std::size_t> findTable(std::string_view name) const;
    std::optional<std::size_t> findAlignment(MdDbObjectId id) const;
    std::optional<std::size_t> findEntity(MdDbObjectId id) const;
    // Whether any object of the drawing has that identifier: layer, site, table, alignment, point or polyline.
    bool has(MdDbObjectId id) const;
    std::size_t currentLayer() const { return currentLayer_; }
    // Numbers of points, polylines and alignments on each layer, in the order of layers().
    std::vector<std::size_t> layerCounts() const;

    // --- making ---
    // The layer of that name, made if there is none.
    MdDbObjectId addLayer(std::string_view name);
    void setCurrentLayer(std::size_t index);
    // Puts the list in the place of layers(): layers of the same identifier have its names and colours from now on, and
    // their objects follow; those that it lacks go, and those that went earlier can come back. False, with nothing
    // changed, if a name is empty or there twice, the identifiers do not rise, or a layer would go that holds an object,
    // is current, or may hold one that was not loaded.
    bool setLayers(std::vector<Layer> layers);
    void setZone(int zone);
    MdDbObjectId addSite(std::string_view name);
    // Null if the name is taken.
    MdDbObjectId addTable(std::string_view name);
    std::size_t addAlignment(MdDbObjectId site, std::string_view name, std::string_view layer,
                             std::string_view firstStyle, std::string_view secondStyle);
    void setDescription(std::size_t alignment, std::string_view text);
    void setStartStation(std::size_t alignment, double station);
    // Gives the element its identifier, which is returned.
    std::int32_t addElement(std::size_t alignment, const Element& element);
    // Puts the elements in the place of as many last ones, whose identifiers they carry.
    void relayLastElements(std::size_t alignment, std::span<const Element> last);
    void removeElement(std::size_t alignment, std::size_t element);
    MdDbObjectId addPoint(const MdGePoint3d& position, std::size_t layer);
    MdDbObjectId addPolyline(std::span<const MdGePoint3d> vertices, std::size_t layer, EntityKind kind, bool closed);
    void setEntityLayer(std::size_t entity, std::size_t layer);
    void setEntityClosed(std::size_t entity, bool closed);
    // A 2D polyline becomes a lightweight one, which lies in the plane: heights are dropped.
    void makeLightweight(std::size_t entity);
    // One row for an object; a second replaces the first.
    void setRow(std::size_t entity, std::size_t table, std::int32_t no, std::string_view name, std::string_view type,
                std::string_view fileName);

    // Notes an import; it gets its identifier here. Take lastId() + 1 before the import for its firstId, and lastId()
    // after it for its lastId.
    MdDbObjectId addImport(Import import);
    // Removes an import with the alignments, points and polylines that it made, whether they were loaded or not; layers,
    // sites and tables stay. The next save removes them from the file in its transaction. Marks taken before, and what
    // was taken back to them, are void. False if there is no such import.
    bool removeImport(MdDbObjectId import);

    // --- undo and keeping ---
    Mark mark() const;
    // Removes all that was made after the mark. Identifiers that were given out are not given again.
    void rollback(const Mark& mark);
    // The same, and returns what went, to be put back.
    Removed takeBack(const Mark& mark);
    // Puts it back under its identifiers. False, with nothing changed, if the drawing was changed since.
    bool putBack(Removed&& removed);
    std::uint64_t lastId() const { return lastId_; }

    // False if points and polylines were left in the store when the drawing was opened to append to it.
    bool entitiesLoaded() const { return entitiesLoaded_; }

  private:
    friend class DrawingReader;
    friend class DrawingWriter;

    struct EntityRecord {
        std::uint64_t id;
        std::uint64_t vertices; // position in vertices_
        std::uint64_t row;      // position in rows_, kNoRow if none
        std::uint32_t vertexCount;
        std::uint32_t layer : 24;
        std::uint32_t kind : 7;
        std::uint32_t closed : 1;
    };
    struct RowRecord {
        TextPool::Handle name;
        TextPool::Handle type;
        TextPool::Handle fileName;
        std::int32_t no;
        std::uint32_t table;
    };
    struct StoredAlignment {
        Alignment alignment;
        std::int32_t lastElementId = 0;
        mutable std::unique_ptr<AlignmentGeometry> geometry;
    };
    static constexpr std::size_t kRecordBlock = 4096;
    static constexpr std::uint64_t kNoRow = ~std::uint64_t{0};

    // Objects beyond these identifiers differ from what the store holds: they are new, changed, or gone.
    struct Unsaved {
        std::uint64_t entities = 0;
        std::uint64_t others = 0;
        bool settings = true;
        bool layers = false; // names, colours or the list of those that the store holds

        friend bool operator==(const Unsaved&, const Unsaved&) = default;
    };

    MdDbObjectId nextId() { return MdDbObjectId(++lastId_); }
    void touchEntity(std::uint64_t id);
    void touchOther(MdDbObjectId id);
    bool mayBecomeLayers(const std::vector<Layer>& layers) const;
    StoredAlignment& changeAlignment(std::size_t index);
    void addToExtent(const Element& element);
    void takeFromExtent(const Extent& gone);
    MdDbObjectId addEntity(std::span<const MdGePoint3d> vertices, std::size_t layer, EntityKind kind, bool closed);
    const EntityRecord& record(std::size_t index) const;
    EntityRecord& record(std::size_t index);

    std::vector<Layer> layers_;
    std::vector<Site> sites_;
    std::vector<ObjectDataTable> tables_;
    std::vector<Import> imports_;
    std::vector<StoredAlignment> alignments_;
    std::size_t entities_ = 0;
    ChunkedArray<EntityRecord, kRecordBlock> records_;
    ChunkedArray<MdGePoint3d> vertices_;
    ChunkedArray<RowRecord, kRecordBlock> rows_;
    TextPool texts_;
    mutable Extent extent_;
    mutable bool extentMayBeLess_ = false; // something at its edge was removed
    std::size_t currentLayer_ = 0;
    mutable std::size_t recentLayer_ = 0;
    int zone_ = 0;
    std::uint64_t lastId_ = 0;
    bool entitiesLoaded_ = true;
    Unsaved unsaved_;
    std::vector<IdRange> removed_; // objects that the file may still hold
};

struct Drawing::Mark {
    std::size_t layers = 0;
    std::size_t sites = 0;
    std::size_t tables = 0;
    std::size_t imports = 0;
    std::size_t alignments = 0;
    std::size_t entities = 0;
    ChunkedArray<EntityRecord, Drawing::kRecordBlock>::Mark records;
    ChunkedArray<MdGePoint3d>::Mark vertices;
    ChunkedArray<RowRecord, kRecordBlock>::Mark rows;
    TextPool::Mark texts;
    Extent extent;
    std::size_t currentLayer = 0;
    int zone = 0;
    std::uint64_t lastId = 0;

    friend bool operator==(const Mark&, const Mark&) = default;
};

struct Drawing::Removed {
    Mark left;                 // the drawing without what went
    Mark full;                 // and with it
    std::uint64_t firstId = 0; // what went has identifiers beyond this one
    Unsaved unsavedLeft;
    Unsaved unsavedFull;
    std::vector<Layer> layers;
    std::vector<Site> sites;
    std::vector<ObjectDataTable> tables;
    std::vector<Import> imports;
    std::vector<StoredAlignment> alignments;
    ChunkedArray<EntityRecord, Drawing::kRecordBlock>::Tail records;
    ChunkedArray<MdGePoint3d>::Tail vertices;
    ChunkedArray<RowRecord, kRecordBlock>::Tail rows;
    TextPool::Tail texts;
};

} // namespace fenmark::drawing
