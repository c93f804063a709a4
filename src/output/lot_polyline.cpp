// A lot becomes a lightweight polyline; whether it is closed is a flag, never a repeated vertex.
#include "output/drawing_output.h"
#include "sima/reader/sima_reader.h"

namespace fenmark::output {

void DrawingOutput::createLotPolyline(sima::SimaReader& reader, const sima::LotData& lot) {
    if (!reader.options.flag(sima::ImportKind::Lots) || lot.points.empty()) {
        return;
    }
    host::DrawingWriter& drawing = host_.drawingWriter();
    host::ObjectDataWriter& rows = host_.objectDataWriter();
    rows.definePolylineTable();
    vertices_.reserve(lot.points.size());
    for (const sima::SimaPoint& point : lot.points) {
        vertices_.push_back({point.x, point.y, point.z});
    }
    const host::MdDbObjectId id = drawing.appendPolyline(vertices_);
    drawing.convertToLightweight(id);
    if (drawing.setLotPolyline(id, reader.lotLayer, lot.isType1)) {
        rows.writeLotRow(id, fileNameOf(reader), lot);
    }
}

} // namespace fenmark::output
