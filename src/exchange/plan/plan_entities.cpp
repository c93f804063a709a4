// Points and polylines on a plan.
#include "exchange/plan/path_writer.h"
#include "exchange/plan/plan.h"

#include "exchange/kinds.h"
#include "exchange/plan/plan_geometry.h"
#include "exchange/text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>
#include <sstream>
#include <string_view>
#include <utility>

namespace fenmark::exchange {

using drawing::EntityView;
using host::PlanPoint;

namespace {

constexpr double kPointSize = 1.7; // millimetres of type
constexpr double kLotSize = 2.2;
constexpr double kSmallestLotSize = 1.1;
constexpr std::size_t kMostNamedPoints = 20000; // beyond this, points are dots without names
constexpr std::size_t kMostSymbols = 50000;     // of one kind; beyond this, one dot for a cell of the paper
constexpr double kDotCell = 0.5;                // millimetres
constexpr std::size_t kMostPolylines = 20000;   // beyond this, one for a cell of the paper if they are small
constexpr double kPolylineCell = 1.0;           // millimetres
constexpr std::size_t kSymbolsInPath = 1000;    // readers have limits to the length of one path

struct KindItem {
    Kind kind;
    PlanItem item;
};
constexpr std::array<KindItem, kKinds> kKindItems = {{
    {Kind::Points, PlanItem::CoordinatePoint},
    {Kind::Lots, PlanItem::Lot},
    {Kind::Alignments, PlanItem::OtherLine}, // no entity is of this kind
    {Kind::IpLines, PlanItem::IpLine},
    {Kind::LeftStakes, PlanItem::LeftStakes},
    {Kind::RightStakes, PlanItem::RightStakes},
    {Kind::Continuous, PlanItem::Continuous},
    {Kind::Longitudinal, PlanItem::LongitudinalPoint},
    {Kind::CrossSections, PlanItem::CrossSectionPoint},
    {Kind::Others, PlanItem::OtherLine},
}};
static_assert(inOrderOfKinds(kKindItems));

PlanItem itemOf(const EntityView& entity) {
    const Kind kind = drawnKindOf(entity);
    if (kind == Kind::Others && entity.isPoint()) {
        return PlanItem::OtherPoint;
    }
    return kKindItems[static_cast<std::size_t>(kind)].item;
}

const char* lineStyle(PlanItem item) {
    switch (item) {
    case PlanItem::Lot:
        return "lot";
    case PlanItem::IpLine:
        return "ip";
    case PlanItem::LeftStakes:
        return "left";
    case PlanItem::RightStakes:
        return "right";
    case PlanItem::Continuous:
        return "continuous";
    case PlanItem::OtherLine:
    case PlanItem::Straight: // elements and points draw themselves
    case PlanItem::Arc:
    case PlanItem::Clothoid:
    case PlanItem::ElementEnd:
    case PlanItem::Station:
    case PlanItem::CoordinatePoint:
    case PlanItem::LongitudinalPoint:
    case PlanItem::CrossSectionPoint:
    case PlanItem::OtherPoint:
        break;
    }
    return "other";
}

// One symbol as part of a path: a ring, a triangle, a saltire, a small square.
void symbol(std::ostream& out, PlanItem item, const PaperPoint& at) {
    switch (item) {
    case PlanItem::CoordinatePoint:
        out << 'M' << mm(at.x - 0.45) << ' ' << mm(at.y) << "a.45 .45 0 1 0 .9 0a.45 .45 0 1 0-.9 0";
        break;
    case PlanItem::LongitudinalPoint:
        out << 'M' << mm(at.x) << ' ' << mm(at.y - 0.55) << "l.48 .83h-.96z";
        break;
    case PlanItem::CrossSectionPoint:
        out << 'M' << mm(at.x - 0.3) << ' ' << mm(at.y - 0.3) << "l.6 .6m0-.6l-.6 .6";
        break;
    default:
        out << 'M' << mm(at.x - 0.25) << ' ' << mm(at.y - 0.25) << "h.5v.5h-.5z";
    }
}

// Attributes of a path of symbols, or of dots where they are too many, in the colour of their layer or of their kind.
std::string symbolStyle(PlanItem item, bool dots, std::string_view layerColour) {
    const auto in = [&](const char* before, const char* ownColour, const char* after) {
        return before + (layerColour.empty() ? std::string(ownColour) : std::string(layerColour)) + after;
    };
    if (dots) {
        return in("fill=\"none\" stroke=\"", "#263238", "\" stroke-width=\".25\" stroke-linecap=\"round\"");
    }
    switch (item) {
    case PlanItem::CoordinatePoint:
        return in("fill=\"#fff\" stroke=\"", "#263238", "\" stroke-width=\".18\"");
    case PlanItem::LongitudinalPoint:
        return in("fill=\"", "#ef6c00", "\"");
    case PlanItem::CrossSectionPoint:
        return in("fill=\"none\" stroke=\"", "#00695c", "\" stroke-width=\".16\"");
    default:
        return in("fill=\"", "#263238", "\"");
    }
}

// Symbols of one kind and colour as paths of a bounded length.
class SymbolPaths {
  public:
    SymbolPaths(std::ostream& out, const std::string& attributes) : out_(out), open_("<path " + attributes + " d=\"") {}
    std::ostream& next() {
        if (inPath_++ % kSymbolsInPath == 0) {
            out_ << (inPath_ > 1 ? "\"/>\n" : "") << open_;
        }
        return out_;
    }
    void end() { out_ << (inPath_ > 0 ? "\"/>\n" : ""); }

  private:
    std::ostream& out_;
    std::string open_;
    std::size_t inPath_ = 0;
};

// Which cells of the paper hold something already.
class DotCells {
  public:
    DotCells(const Rect& map, double cell)
        : map_(map), cell_(cell), columns_(static_cast<std::size_t>(map.width / cell) + 1),
          taken_(columns_ * (static_cast<std::size_t>(map.height / cell) + 1)) {}
    // True for the first place in a cell.
    bool take(const PaperPoint& at) {
        if (!(at.x >= map_.x && at.x <= map_.right() && at.y >= map_.y && at.y <= map_.bottom())) {
            return false;
        }
        const std::size_t cell = static_cast<std::size_t>((at.y - map_.y) / cell_) * columns_ +
                                 static_cast<std::size_t>((at.x - map_.x) / cell_);
        if (taken_[cell]) {
            return false;
        }
        taken_[cell] = true;
        return true;
    }

  private:
    Rect map_;
    double cell_;
    std::size_t columns_;
    std::vector<bool> taken_;
};

// Which polylines of a crowded plan are drawn: all larger ones, and one of the small ones for each cell.
class Crowd {
  public:
    explicit Crowd(const Plan& plan) : plan_(plan), cells_(plan.sheet.map(), kPolylineCell) {
        crowded_ = plan.kinds.polylines() > kMostPolylines;
    }
    bool draws(std::size_t index) {
        if (!crowded_) {
            return true;
        }
        const drawing::Extent extent = plan_.drawing.entityExtent(index);
        const double size = std::max(extent.maxX - extent.minX, extent.maxY - extent.minY);
        if (plan_.sheet.paperLength(size) > 2.0 * kPolylineCell || cells_.take(plan_.at(extent.minX, extent.minY))) {
            return true;
        }
        ++passed_;
        return false;
    }
    std::size_t passed() const { return passed_; }

  private:
    const Plan& plan_;
    DotCells cells_;
    bool crowded_ = false;
    std::size_t passed_ = 0;
};

// The name beside the middle of a symbol, the usual places first.
std::vector<Label> around(const PaperPoint& at, const std::string& text) {
    using Anchor = Label::Anchor;
    constexpr double kNear = 0.8; // millimetres from the middle of the symbol
    constexpr double kUp = 1.3;
    struct Place {
        double dx;
        double dy;
        Anchor anchor;
    };
    constexpr Place kPlaces[] = {{kNear, -0.8, Anchor::Start},     {kNear, 0.9, Anchor::Start},
                                 {-kNear, -0.8, Anchor::End},      {-kNear, 0.9, Anchor::End},
                                 {1.0, 0.0, Anchor::Start},        {0.0, -kUp, Anchor::Middle},
                                 {0.0, kUp + 0.1, Anchor::Middle}, {-1.0, 0.0, Anchor::End}};
    std::vector<Label> labels;
    labels.reserve(std::size(kPlaces));
    for (const Place& place : kPlaces) {
        labels.push_back({{at.x + place.dx, at.y + place.dy}, kPointSize, 0.0, place.anchor, text, "point"});
    }
    return labels;
}

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

bool isBeside(const Plan& plan, const EntityView& point) {
    if (!plan.partial) {
        return false;
    }
    drawing::Extent extent;
    extent.add(point.position().x, point.position().y);
    return plan.isBeside(extent);
}

// In the largest type that the name fits into the lot with. False if it has no room, though the lot's middle is on the map.
bool nameLot(Plan& plan, const EntityView& lot, const std::string& name) {
    const PlanPoint ground = labelPoint(lot.vertices);
    const PaperPoint at = plan.at(ground.x, ground.y);
    if (!plan.space.shows(at)) {
        return true;
    }
    const double area = std::abs(signedArea(lot.vertices));
    const std::string areaText = fixedReal(area, 2) + " m²";
    // A square of the lot's area shows how much room there is.
    const double room = plan.sheet.paperLength(std::sqrt(area));
    const double size = std::min(kLotSize, room / std::max(1.0, 1.15 * widthInEms(name)));
    if (size < kSmallestLotSize) {
        return false;
    }
    const bool withArea = lot.closed && room > 5.0 * size;
    const double up = withArea ? 0.65 * size : 0.0;
    std::vector<Label> candidates;
    for (const double shift : {0.0, 1.5, -1.5, 3.0, -3.0}) {
        candidates.push_back({{at.x, at.y - up + shift}, size, 0.0, Label::Anchor::Middle, name, "lotname"});
    }
    if (!plan.place(candidates, false)) {
        return false;
    }
    if (!withArea) {
        return true;
    }
    const PaperPoint placed = plan.labels.back().at;
    plan.place({{{placed.x, placed.y + 1.25 * size}, 0.8 * size, 0.0, Label::Anchor::Middle, areaText, "lotname"}},
               false);
    return true;
}

void drawPolyline(Plan& plan, std::ostream& out, const EntityView& entity, std::string attributes) {
    const auto place = [&](std::size_t v) { return plan.at(entity.vertices[v].x, entity.vertices[v].y); };
    PathWriter path(out, std::move(attributes), entity.closed);
    PaperPoint before = place(0);
    path.moveTo(before);
    for (std::size_t v = 1; v < entity.vertices.size(); ++v) {
        const PaperPoint at = place(v);
        path.lineTo(at);
        plan.space.takeLine(before, at);
        before = at;
    }
    if (entity.closed) {
        plan.space.takeLine(before, place(0));
    }
    path.finish();
}

} // namespace

void PlanKinds::add(const EntityView& entity) {
    const auto item = static_cast<std::uint8_t>(itemOf(entity));
    kinds_.push_back(item);
    ++counts_[item];
    polylines_ += entity.vertices.size() >= 2 ? 1 : 0;
}

void drawPolylines(Plan& plan, std::ostream& out) {
    Crowd crowd(plan);
    for (const bool lots : {true, false}) {
        for (std::size_t i = 0; i < plan.drawing.entityCount(); ++i) {
            const PlanItem item = plan.kinds.of(i);
            if (plan.kinds.isPoint(i) || (item == PlanItem::Lot) != lots) {
                continue;
            }
            const EntityView entity = plan.drawing.entity(i);
            if (entity.vertices.size() < 2 || plan.isLeftOut(entity)) {
                continue;
            }
            if (plan.partial && plan.isBeside(plan.drawing.entityExtent(i))) {
                continue;
            }
            plan.items.insert(item);
            if (!crowd.draws(i)) {
                continue;
            }
            std::string attributes = (lots && entity.closed ? "class=\"" : "class=\"l ") + std::string(lineStyle(item));
            if (const std::string_view colour = plan.colourOn(entity.layer); !colour.empty()) {
                attributes += "\" style=\"stroke:" + std::string(colour);
            }
            drawPolyline(plan, out, entity, std::move(attributes));
        }
    }
    if (crowd.passed() > 0) {
        plan.notes.push_back({NoteCode::SmallLines, crowd.passed()});
    }
}

void nameLots(Plan& plan) {
    for (std::size_t i = 0; i < plan.drawing.entityCount(); ++i) {
        if (plan.kinds.of(i) != PlanItem::Lot) {
            continue;
        }
        const EntityView entity = plan.drawing.entity(i);
        if (entity.vertices.size() < 2 || plan.isLeftOut(entity) ||
            (plan.partial && plan.isBeside(plan.drawing.entityExtent(i)))) {
            continue;
        }
        const std::string name(trimmed(entity.row->name));
        if (!name.empty() && !nameLot(plan, entity, name)) {
            plan.unnamedLots.insert(i);
        }
    }
    if (!plan.unnamedLots.empty()) {
        plan.notes.push_back({NoteCode::NoRoomForLotNames, plan.unnamedLots.size()});
    }
}

void drawPoints(Plan& plan, std::ostream& out) {
    constexpr std::array kKinds = {PlanItem::CrossSectionPoint, PlanItem::LongitudinalPoint, PlanItem::OtherPoint,
                                   PlanItem::CoordinatePoint};
    std::array<std::size_t, kKinds.size()> counts{};
    auto place = [&kKinds](PlanItem item) {
        return static_cast<std::size_t>(std::find(kKinds.begin(), kKinds.end(), item) - kKinds.begin());
    };
    if (plan.partial || plan.leftOut > 0 || plan.beyondReach > 0) {
        for (std::size_t i = 0; i < plan.drawing.entityCount(); ++i) {
            if (!plan.kinds.isPoint(i)) {
                continue;
            }
            const EntityView entity = plan.drawing.entity(i);
            if (!plan.isLeftOut(entity) && !isBeside(plan, entity)) {
                ++counts[place(plan.kinds.of(i))];
            }
        }
    } else {
        for (std::size_t kind = 0; kind < kKinds.size(); ++kind) {
            counts[kind] = plan.kinds.count(kKinds[kind]);
        }
    }
    for (std::size_t kind = 0; kind < kKinds.size(); ++kind) {
        const PlanItem item = kKinds[kind];
        if (counts[kind] == 0) {
            continue;
        }
        plan.items.insert(item);
        const bool dots = counts[kind] > kMostSymbols;
        DotCells cells(plan.sheet.map(), kDotCell);
        SymbolPaths plain(out, symbolStyle(item, dots, {}));
        // Those in the colour of their layer stand behind the others, colour by colour.
        std::map<std::string, std::pair<std::ostringstream, std::optional<SymbolPaths>>, std::less<>> coloured;
        const auto pathsFor = [&](std::string_view colour) -> SymbolPaths& {
            if (colour.empty()) {
                return plain;
            }
            auto& [text, paths] = coloured[std::string(colour)];
            if (!paths) {
                paths.emplace(text, symbolStyle(item, dots, colour));
            }
            return *paths;
        };
        for (std::size_t i = 0; i < plan.drawing.entityCount(); ++i) {
            if (plan.kinds.of(i) != item) {
                continue;
            }
            const EntityView entity = plan.drawing.entity(i);
            if (plan.isLeftOut(entity) || isBeside(plan, entity)) {
                continue;
            }
            const PaperPoint at = plan.at(entity.position().x, entity.position().y);
            if (dots && !cells.take(at)) {
                continue;
            }
            std::ostream& path = pathsFor(plan.colourOn(entity.layer)).next();
            if (dots) {
                path << 'M' << mm(at.x) << ' ' << mm(at.y) << "h0";
                continue;
            }
            symbol(path, item, at);
            if (item == PlanItem::CoordinatePoint) {
                plan.space.takeDot(at, 0.5);
            }
        }
        plain.end();
        for (auto& [colour, paths] : coloured) {
            paths.second->end();
            out << paths.first.str();
        }
        if (dots) {
            plan.notes.push_back({NoteCode::DotsForMany, counts[kind]});
        }
    }

    const std::size_t named = counts[place(PlanItem::CoordinatePoint)];
    if (named > kMostNamedPoints) {
        plan.notes.push_back({NoteCode::NamesOfMany, named});
        return;
    }
    for (std::size_t i = 0; i < plan.drawing.entityCount(); ++i) {
        if (plan.kinds.of(i) != PlanItem::CoordinatePoint) {
            continue;
        }
        const EntityView entity = plan.drawing.entity(i);
        if (plan.isLeftOut(entity) || plan.namedAtEnds.contains(i) || isBeside(plan, entity)) {
            continue;
        }
        const std::string name(trimmed(entity.row->name));
        if (name.empty()) {
            continue;
        }
        const PaperPoint at = plan.at(entity.position().x, entity.position().y);
        if (!plan.place(around(at, name), false)) {
            plan.unnamedPoints.insert(i);
        }
    }
    if (!plan.unnamedPoints.empty()) {
        plan.notes.push_back({NoteCode::NoRoomForNames, plan.unnamedPoints.size()});
    }
}

} // namespace fenmark::exchange
