// Points and polylines of the model space.
#include "host/adapter/mirdane_drawing_writer.h"
#include "host/adapter/opened.h"
#include "host/adapter/working_database.h"

namespace fenmark::host {

namespace {

using mirdane::MdDb2dPolyline;
using mirdane::MdDbBlockTable;
using mirdane::MdDbBlockTableRecord;
using mirdane::MdDbEntity;
using mirdane::MdDbPoint;
using mirdane::MdDbPolyline;
using mirdane::OpenMode;

constexpr const char* kModelSpace = "*Model_Space";
// The room that is kept for the next polyline, vertices: that of a lot or of a usual route, 100 kB.
constexpr std::size_t kKeptVertices = 4096;

// Appends the entity and closes it. Null if any step failed, which is the only sign.
MdDbObjectId appendToModelSpace(MdDbEntity* newEntity) {
    Opened<MdDbEntity> entity(newEntity); // closed last, after the record
    Opened<MdDbBlockTableRecord> record;
    if (mirdane::MdDbDatabase* const database = workingDatabase()) {
        Opened<MdDbBlockTable> table;
        database->getSymbolTable(table.receive(), OpenMode::Read);
        MdDbObjectId recordId;
        if (table && table->getIdAt(kModelSpace, recordId, false) == 0) {
            mirdane::mddbOpenObject(record.receive(), recordId, OpenMode::Write, false);
        }
    }
    MdDbObjectId id;
    if (record) {
        record->appendMdDbEntity(id, entity.get());
    }
    return id;
}

} // namespace

MdDbObjectId MirdaneDrawingWriter::appendPoint(const MdGePoint3d& point, std::string_view layerName) {
    MdDbPoint* const entity = newOnHostHeap<MdDbPoint>(point);
    entity->setLayerOfEntity(layerName, true, false); // before the append
    return appendToModelSpace(entity);
}

MdDbObjectId MirdaneDrawingWriter::appendPointXyz(double x, double y, double z, std::string_view layerName) {
    return appendPoint({x, y, z}, layerName);
}

MdDbObjectId MirdaneDrawingWriter::appendPolyline(std::vector<MdGePoint3d>& vertices) {
    constexpr double kElevation = 0.0; // the vertices keep their own heights
    constexpr bool kClosed = false;
    constexpr double kWidth = 0.0;
    constexpr const std::vector<double>* kNoBulges = nullptr;
    constexpr const std::vector<MdDbObjectId>* kNoVertexIds = nullptr;
    MdDb2dPolyline* const entity = newOnHostHeap<MdDb2dPolyline>(mirdane::Poly2dType::Simple, vertices, kElevation,
                                                                 kClosed, kWidth, kWidth, kNoBulges, kNoVertexIds);
    // The polyline has its own by now, and the drawing will have one more.
    vertices.clear();
    if (vertices.capacity() > kKeptVertices) {
        vertices.shrink_to_fit();
    }
    return appendToModelSpace(entity);
}

void MirdaneDrawingWriter::convertToLightweight(MdDbObjectId id) {
    Opened<MdDbPolyline> polyline(newOnHostHeap<MdDbPolyline>());
    Opened<MdDbEntity> entity;
    mirdane::mddbOpenObject(entity.receive(), id, OpenMode::Write, false);
    if (entity) {
        polyline->convertFromEntity(entity.receive(), true);
    }
    // The host has closed what it converted; what it left is closed here, and the new polyline last.
}

void MirdaneDrawingWriter::setPolylineLayer(MdDbObjectId id, std::string_view layerName) {
    Opened<MdDbEntity> entity;
    mirdane::mddbOpenObject(entity.receive(), id, OpenMode::Write, false);
    if (entity) {
        entity->setLayerOfEntity(layerName, true, false);
    }
}

bool MirdaneDrawingWriter::setLotPolyline(MdDbObjectId id, std::string_view layerName, bool closed) {
    Opened<MdDbPolyline> polyline;
    mirdane::mddbOpenObject(polyline.receive(), id, OpenMode::Write, false);
    if (!polyline) {
        return false;
    }
    polyline->setLayerOfEntity(layerName, true, false);
    polyline->setClosedFlag(closed);
    return true;
}

} // namespace fenmark::host
