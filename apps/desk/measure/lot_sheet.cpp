// The area table of a lot for a panel.
#include "desk/measure/lot_sheet.h"

#include "desk/measure/point_name.h"
#include "desk/plan/plan_text.h"
#include "exchange/report/tables.h"

namespace fenmark::desk {

std::optional<Sheet> lotSheet(const drawing::Drawing& drawing, const PlanIndex& index, std::size_t entity) {
    const auto table = exchange::report::areaTable(
        drawing.entity(entity), [&](double x, double y) { return pointNameAt(drawing, index, x, y); }, {});
    if (!table) {
        return std::nullopt;
    }
    Sheet sheet;
    sheet.title = shownName(table->subject);
    for (const exchange::report::Column& column : table->columns) {
        sheet.columns << fromUtf8(column.title);
    }
    for (const exchange::report::RowGroup& group : table->groups) {
        for (const std::vector<std::string>& row : group) {
            QStringList cells;
            for (const std::string& cell : row) {
                cells << shownName(cell);
            }
            sheet.rows.push_back(cells);
        }
    }
    for (const exchange::report::Total& total : table->totals) {
        sheet.totals.push_back({fromUtf8(total.name), fromUtf8(total.value) + QLatin1Char(' ') + fromUtf8(total.unit)});
    }
    return sheet;
}

} // namespace fenmark::desk
