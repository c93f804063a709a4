// The points of a drawing with their rows as comma-separated text.
#include "exchange/csv.h"

#include "exchange/csv_field.h"
#include "exchange/placed.h"
#include "exchange/text.h"

#include <cmath>
#include <limits>

namespace fenmark::exchange {

namespace {

// Empty if it is no number.
struct Number {
    double value;
};

std::ostream& operator<<(std::ostream& out, Number number) {
    return std::isfinite(number.value) ? out << PlainReal{number.value} : out;
}

} // namespace

Notes writeCsv(const drawing::Drawing& drawing, std::ostream& out) {
    return writeSelectedCsv(drawing, {}, out);
}

Notes writeSelectedCsv(const drawing::Drawing& drawing, const Selection& selection, std::ostream& out) {
    std::size_t polylines = 0;
    Unplaced unplaced;
    out << "\xEF\xBB\xBFid,layer,x_east,y_north,z,table,no,name,type,file\r\n";
    for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
        const drawing::EntityView entity = drawing.entity(i);
        if (!selection.takes(entity)) {
            continue;
        }
        if (!entity.isPoint()) {
            ++polylines;
            continue;
        }
        unplaced.look(entity);
        const host::MdGePoint3d& at = entity.position();
        out << entity.id.asUint64() << ',' << CsvField{entity.layer} << ',' << Number{at.x} << ',' << Number{at.y}
            << ',' << Number{knownHeight(entity).value_or(std::numeric_limits<double>::quiet_NaN())} << ',';
        if (entity.row) {
            out << CsvField{entity.row->table} << ',' << entity.row->no << ',' << CsvField{entity.row->name} << ','
                << CsvField{entity.row->type} << ',' << CsvField{entity.row->fileName};
        } else {
            out << ",,,,";
        }
        out << "\r\n";
    }
    Notes notes = unplaced.notes(Fate::LeftEmpty);
    if (polylines > 0 || drawing.alignmentCount() > 0) {
        notes.push_back({NoteCode::PointsAlone, 0, polylines, drawing.alignmentCount()});
    }
    return notes;
}

} // namespace fenmark::exchange
