// Reads a drawing out of an open GeoPackage.
#pragma once

#include "drawing/geopackage/sqlite_handles.h"

#include <cstdint>

namespace fenmark::drawing {

struct DrawingHead {
    std::uint64_t lastId = 0;
    std::uint64_t currentLayer = 0;
    int zone = 0;
};

// Everything here throws a StoreFailure if the file is not a drawing of ours, or broken.
class DrawingReader {
  public:
    static DrawingHead readHead(Connection& connection);
    // Of any object in the file: a GIS gives the next one to a feature that it adds.
    static std::uint64_t readHighestId(Connection& connection);

    explicit DrawingReader(Connection& connection) : connection_(connection) {}
    Drawing read(Load load);
    std::uint64_t lastId() const { return head_.lastId; } // as the file tells it

  private:
    struct EntityRow;

    void readNamed();
    void readAlignments();
    void readEntities();
    void addEntity(Statement& row, bool isPolyline);
    std::size_t layerNamed(std::string_view name);
    void finish();

    Connection& connection_;
    DrawingHead head_;
    Drawing drawing_;
    std::vector<MdGePoint3d> vertices_;
};

} // namespace fenmark::drawing
