// Reads a drawing out of an open GeoPackage.
#pragma once

#include "drawing/geopackage/drawing_shape.h"
#include "drawing/geopackage/geometry_blob.h"
#include "drawing/geopackage/sqlite_handles.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace fenmark::drawing {

struct DrawingHead {
    std::uint64_t lastId = 0;
    std::uint64_t currentLayer = 0;
    int zone = 0;
    int format = 0;
    std::string stamp; // another after every save; empty in the first format
};

// A feature that another program added under the identifier of another object, and the one that it gets.
struct NewIdentifier {
    std::string table;
    std::int64_t from = 0;
    std::int64_t to = 0;
};

// Everything here throws a StoreFailure if the file is not a drawing of ours, or broken.
class DrawingReader {
  public:
    static DrawingHead readHead(Connection& connection);
    // Of any object in the file: a GIS gives the next one to a feature that it adds.
    static std::uint64_t readHighestId(Connection& connection);

    explicit DrawingReader(Connection& connection) : connection_(connection) {}
    Drawing read(Load load);
    const DrawingHead& head() const { return head_; } // as the file has it
    const std::vector<StoreNote>& notes() const { return notes_; }
    const std::vector<NewIdentifier>& newIdentifiers() const { return newIdentifiers_; }

  private:
    struct EntityRow;

    void readNamed();
    void readLayers();
    void readImports();
    void readAlignments();
    std::string entityQuery(bool isPolyline, bool one) const;
    bool isOtherSystem(std::int32_t srs, const char* table) const;
    void readEntities();
    void requireSoundIdentifiers();
    void readTakenIdentifiers();
    bool isTaken(std::uint64_t id);
    void deferEntity(bool isPolyline, std::int64_t fid);
    void addDeferred();
    void addEntity(Statement& row, bool isPolyline, std::int64_t fid, std::uint64_t id);
    std::size_t layerNamed(std::string_view name);
    void finish();

    Connection& connection_;
    DrawingHead head_;
    std::optional<DrawingShape> shape_;
    Drawing drawing_;
    std::size_t layersInFile_ = 0; // the others are those that features name
    std::size_t tablesInFile_ = 0;
    std::vector<std::uint64_t> otherIds_;         // of all but points and polylines, in rising order
    std::map<std::string, std::int64_t> systems_; // of the layers, by table
    std::vector<StoreNote> notes_;
    std::vector<NewIdentifier> newIdentifiers_;
    std::vector<MdGePoint3d> vertices_;
};

} // namespace fenmark::drawing
