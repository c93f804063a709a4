// The coordinate points of a SIMA file.
#include "exchange/sima_points.h"

#include "exchange/placed.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_set>

namespace fenmark::exchange {

using drawing::EntityView;

namespace {

constexpr double kPointCell = 0.5; // metres

std::int64_t cellNumber(double value) {
    constexpr double kLast = 9e17; // beyond it all lies in one cell
    return static_cast<std::int64_t>(std::clamp(std::floor(value / kPointCell), -kLast, kLast));
}

std::uint64_t mixed(std::int64_t column, std::int64_t row) {
    // Two cells far apart may share a number: positions are compared all the same.
    return static_cast<std::uint64_t>(column) * 0x9E3779B97F4A7C15U + static_cast<std::uint64_t>(row);
}

} // namespace

SimaPointTable::Cell SimaPointTable::cellOf(double x, double y) {
    return mixed(cellNumber(x), cellNumber(y));
}

SimaPointTable::SimaPointTable(const drawing::Drawing& drawing) : drawing_(drawing) {
    std::unordered_set<std::int32_t> numbers;
    for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
        const EntityView entity = drawing.entity(i);
        if (entity.row) {
            lastNumber_ = std::max(lastNumber_, entity.row->no);
        }
        const Kind kind = kindOf(entity);
        if (!entity.isPoint() || !hasPlace(entity) || (kind != Kind::Points && kind != Kind::Others)) {
            continue;
        }
        const auto height = knownHeight(entity);
        Point point{entity.position().x,
                    entity.position().y,
                    height.value_or(0.0),
                    height.has_value(),
                    false,
                    false,
                    entity.row ? entity.row->no : -1,
                    static_cast<Index>(i)};
        if (point.number >= 0) {
            point.findable = numbers.insert(point.number).second;
            repeated_ = repeated_ || !point.findable;
        }
        withoutRow_ += kind == Kind::Others ? 1 : 0;
        points_.push_back(point);
    }
    for (Point& point : points_) {
        if (point.number < 0) { // no reader takes such a number
            point.number = freeNumber();
            point.findable = true;
            renumbered_ += drawing.entity(point.entity).row ? 1 : 0;
        }
    }
    firstAdded_ = static_cast<Index>(points_.size());
    sortPlaces();
    if (repeated_) {
        renumberWhatLinesNeed(drawing);
    }
}

std::int32_t SimaPointTable::freeNumber() {
    if (lastNumber_ < std::numeric_limits<std::int32_t>::max()) {
        return ++lastNumber_;
    }
    if (taken_.empty()) {
        for (std::size_t i = 0; i < drawing_.entityCount(); ++i) {
            if (const EntityView entity = drawing_.entity(i); entity.row) {
                taken_.push_back(entity.row->no);
            }
        }
        std::sort(taken_.begin(), taken_.end());
    }
    while (std::binary_search(taken_.begin(), taken_.end(), lowestFree_)) {
        ++lowestFree_;
    }
    return lowestFree_++;
}

void SimaPointTable::sortPlaces() {
    places_.reserve(points_.size());
    for (Index i = 0; i < points_.size(); ++i) {
        places_.emplace_back(cellOf(points_[i].x, points_[i].y), i);
    }
    std::sort(places_.begin(), places_.end());
}

template <typename Use>
void SimaPointTable::forCell(Cell cell, const Use& use) const {
    for (auto place = std::lower_bound(places_.begin(), places_.end(), std::pair(cell, Index{0}));
         place != places_.end() && place->first == cell; ++place) {
        use(place->second);
    }
    const auto [first, last] = addedPlaces_.equal_range(cell);
    for (auto place = first; place != last; ++place) {
        use(place->second);
    }
}

void SimaPointTable::renumberWhatLinesNeed(const drawing::Drawing& drawing) {
    for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
        const EntityView entity = drawing.entity(i);
        if (entity.isPoint() || !hasPlace(entity)) {
            continue;
        }
        for (const host::MdGePoint3d& vertex : entity.vertices) {
            if (at(vertex.x, vertex.y) != kNone) {
                continue;
            }
            Index hidden = kNone;
            forCell(cellOf(vertex.x, vertex.y), [&](Index index) {
                if (hidden == kNone && points_[index].x == vertex.x && points_[index].y == vertex.y) {
                    hidden = index;
                }
            });
            if (hidden != kNone) {
                points_[hidden].number = freeNumber();
                points_[hidden].findable = true;
                ++renumbered_;
            }
        }
    }
}

std::string_view SimaPointTable::name(Index index) const {
    const Point& point = points_[index];
    if (point.entity == kNone) {
        return addedNames_[index - firstAdded_];
    }
    const EntityView entity = drawing_.entity(point.entity);
    return entity.row ? entity.row->name : std::string_view();
}

SimaPointTable::Index SimaPointTable::ofEntity(std::size_t entity) const {
    const auto end = points_.begin() + static_cast<std::ptrdiff_t>(firstAdded_);
    const auto found = std::lower_bound(points_.begin(), end, entity,
                                        [](const Point& point, std::size_t wanted) { return point.entity < wanted; });
    return found != end && found->entity == entity ? static_cast<Index>(found - points_.begin()) : kNone;
}

SimaPointTable::Index SimaPointTable::at(double x, double y) const {
    Index best = kNone;
    forCell(cellOf(x, y), [&](Index index) {
        const Point& point = points_[index];
        if (point.findable && point.x == x && point.y == y) {
            best = std::min(best, index);
        }
    });
    return best;
}

std::vector<SimaPointTable::Index> SimaPointTable::within(double x, double y, double distance) const {
    std::vector<std::pair<double, Index>> found;
    for (std::int64_t column = -1; column <= 1; ++column) {
        for (std::int64_t row = -1; row <= 1; ++row) {
            forCell(mixed(cellNumber(x) + column, cellNumber(y) + row), [&](Index index) {
                const Point& point = points_[index];
                const double away = std::hypot(point.x - x, point.y - y);
                if (point.findable && away <= distance) {
                    found.emplace_back(away, index);
                }
            });
        }
    }
    std::sort(found.begin(), found.end());
    std::vector<Index> indexes;
    for (const auto& [away, index] : found) {
        indexes.push_back(index);
    }
    return indexes;
}

SimaPointTable::Index SimaPointTable::add(double x, double y, double z, bool hasHeight, std::string name) {
    const auto index = static_cast<Index>(points_.size());
    points_.push_back({x, y, z, hasHeight, true, false, freeNumber(), kNone});
    addedNames_.push_back(std::move(name));
    addedPlaces_.emplace(cellOf(x, y), index);
    return index;
}

} // namespace fenmark::exchange
