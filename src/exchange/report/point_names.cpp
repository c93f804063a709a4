// The names of the coordinate points, found by their place.
#include "exchange/report/tables.h"

#include "exchange/kinds.h"
#include "exchange/placed.h"

#include <cmath>

namespace fenmark::exchange::report {

namespace {

constexpr double kSnap = 0.005; // metres: coordinates of two sources differ by their rounding

std::uint64_t cellOf(double x, double y) {
    const auto column = static_cast<std::uint64_t>(static_cast<std::int64_t>(std::floor(x / kSnap)));
    const auto row = static_cast<std::uint64_t>(static_cast<std::int64_t>(std::floor(y / kSnap)));
    return column * 0x9E3779B97F4A7C15U + row;
}

constexpr double kReach = 1e9; // metres: cells of places farther away have no numbers

bool inReach(double x, double y) {
    return std::abs(x) < kReach && std::abs(y) < kReach;
}

} // namespace

PointNames::PointNames(const drawing::Drawing& drawing) : drawing_(drawing) {
    for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
        if (!drawing.isPoint(i)) {
            continue;
        }
        const drawing::EntityView entity = drawing.entity(i);
        if (kindOf(entity) == Kind::Points && inReach(entity.position().x, entity.position().y) &&
            !trimmedName(entity.row->name).empty()) {
            places_.emplace(cellOf(entity.position().x, entity.position().y), i);
        }
    }
}

std::string PointNames::at(double x, double y) const {
    std::string name;
    if (!inReach(x, y)) {
        return name;
    }
    double nearest = kSnap;
    std::size_t chosen = drawing_.entityCount();
    for (const double dx : {0.0, -kSnap, kSnap}) {
        for (const double dy : {0.0, -kSnap, kSnap}) {
            const auto [begin, end] = places_.equal_range(cellOf(x + dx, y + dy));
            for (auto place = begin; place != end; ++place) {
                const host::MdGePoint3d& at = drawing_.entity(place->second).position();
                const double away = std::max(std::abs(at.x - x), std::abs(at.y - y));
                // Of two points at one place the first in the drawing.
                if (away < nearest || (away == nearest && place->second < chosen)) {
                    nearest = away;
                    chosen = place->second;
                }
            }
        }
    }
    if (chosen < drawing_.entityCount()) {
        name = trimmedName(drawing_.entity(chosen).row->name);
    }
    return name;
}

} // namespace fenmark::exchange::report
