// Area tables of lots from their coordinates (座標求積表), and the list of all areas.
//
// Symbols: X north, Y east. Twice the area is the sum of Xn (Yn+1 - Yn-1) over the corners. All sums are exact.
#include "exchange/report/tables.h"

#include "exchange/kinds.h"
#include "exchange/placed.h"

namespace fenmark::exchange::report {

using drawing::Drawing;
using drawing::EntityView;
using host::MdGePoint3d;

namespace {

struct Corner {
    MdGePoint3d place;
    Decimal x; // north
    Decimal y; // east
    std::string name;
};

bool isLot(const EntityView& entity) {
    return drawnKindOf(entity) == Kind::Lots && entity.closed && entity.vertices.size() >= 3;
}

// Nothing if a coordinate is beyond the reach of exact decimals.
std::vector<Corner> cornersOf(const EntityView& lot, const NameAt& names) {
    std::vector<Corner> corners;
    std::span<const MdGePoint3d> ring = lot.vertices;
    if (ring.size() > 3 && ring.front().x == ring.back().x && ring.front().y == ring.back().y) {
        ring = ring.first(ring.size() - 1); // closed once more by its own first corner
    }
    for (const MdGePoint3d& vertex : ring) {
        const auto x = Decimal::of(vertex.y);
        const auto y = Decimal::of(vertex.x);
        if (!x || !y) {
            return {};
        }
        std::string name = names(vertex.x, vertex.y);
        corners.push_back({vertex, *x, *y, name.empty() ? std::to_string(corners.size() + 1) : std::move(name)});
    }
    return corners;
}

std::string nameOf(const EntityView& lot) {
    const std::string_view name = trimmedName(lot.row->name);
    return name.empty() ? std::to_string(lot.row->no) : std::string(name);
}

std::string registeredText(const std::string& area, LandCategory land) {
    switch (land) {
    case LandCategory::Residential:
        return registeredArea(area, true);
    case LandCategory::Other:
        return registeredArea(area, false);
    case LandCategory::Unknown:
        break;
    }
    const std::string other = registeredArea(area, false);
    const std::string residential = registeredArea(area, true);
    return other == residential ? other : other + "（宅地・鉱泉地 " + residential + "）";
}

DecimalArea twiceArea(const std::vector<Corner>& corners) {
    DecimalArea twice;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const Corner& before = corners[(i + corners.size() - 1) % corners.size()];
        const Corner& next = corners[(i + 1) % corners.size()];
        twice.units += product(corners[i].x, next.y - before.y).units;
    }
    return twice;
}

Table lotTable(const EntityView& lot, const std::vector<Corner>& corners, const ReportOptions& options) {
    Table table;
    table.kind = "座標求積表";
    table.subject = nameOf(lot);
    table.columns = {{"点名", Align::Left}, {"Xn"}, {"Yn"}, {"Yn+1 - Yn-1"}, {"Xn (Yn+1 - Yn-1)"}, {"辺長"}};
    LotFigure figure;
    figure.lot = table.subject;
    figure.scale = options.figureScale;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const Corner& before = corners[(i + corners.size() - 1) % corners.size()];
        const Corner& corner = corners[i];
        const Corner& next = corners[(i + 1) % corners.size()];
        const Decimal width = next.y - before.y;
        table.add(corner.name, metresText(corner.place.y), metresText(corner.place.x), width.text(3),
                  product(corner.x, width).text(), sideText(next.x - corner.x, next.y - corner.y, options.sides));
        figure.ring.push_back(corner.place);
        figure.names.push_back(corner.name);
    }
    const DecimalArea twice = twiceArea(corners);
    const std::string area = halfOf(twice.absolute()).text();
    table.addTotal("倍面積", twice.text(), "m²");
    table.addTotal("面積", area, "m²");
    table.addTotal("地積", registeredText(area, options.land), "m²");
    table.figure = figureSvg(figure);
    return table;
}

} // namespace

std::optional<Table> areaTable(const EntityView& lot, const NameAt& names, const ReportOptions& options) {
    const std::vector<Corner> corners = isLot(lot) ? cornersOf(lot, names) : std::vector<Corner>();
    return corners.empty() ? std::nullopt : std::optional(lotTable(lot, corners, options));
}

LotsLeftOut lotTables(const Drawing& drawing, const PointNames& pointNames, const ReportOptions& options,
                      const TableSink& sink) {
    const NameAt names = [&](double x, double y) { return pointNames.at(x, y); };
    Table list;
    list.kind = "地積一覧";
    list.columns = {{"画地", Align::Left}, {"点数"}, {"面積 (m²)"}, {"地積 (m²)"}, {"ファイル", Align::Left}};
    LotsLeftOut leftOut;
    DecimalArea total;
    for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
        if (drawing.isPoint(i)) {
            continue;
        }
        const EntityView entity = drawing.entity(i);
        if (!isLot(entity)) {
            leftOut.noRing += drawnKindOf(entity) == Kind::Lots ? 1 : 0;
            continue;
        }
        const std::vector<Corner> corners = cornersOf(entity, names);
        if (corners.empty()) {
            ++leftOut.tooFar;
            continue;
        }
        const DecimalArea area = halfOf(twiceArea(corners).absolute());
        total.units += area.units; // as it is shown, so that who adds the rows finds the same
        list.add(nameOf(entity), std::to_string(corners.size()), area.text(), registeredText(area.text(), options.land),
                 entity.row->fileName);
    }
    if (list.groups.empty()) {
        return leftOut;
    }
    list.addTotal("面積の合計", total.text(), "m²");
    sink(list);
    for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
        if (drawing.isPoint(i)) {
            continue;
        }
        const EntityView entity = drawing.entity(i);
        if (!isLot(entity)) {
            continue;
        }
        const std::vector<Corner> corners = cornersOf(entity, names);
        if (!corners.empty()) {
            sink(lotTable(entity, corners, options));
        }
    }
    return leftOut;
}

} // namespace fenmark::exchange::report
