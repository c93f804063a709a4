// The coordinate points of a SIMA file: which stand where, and which number leads to which.
//
// Lots and routes refer to points by number, and a reader takes the first point of a number in the whole file. So a
// point whose number another one before it has cannot be referred to; where a line needs it, it gets a new number.
#pragma once

#include "drawing/drawing.h"
#include "exchange/export_options.h"

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace fenmark::exchange {

class SimaPointTable {
  public:
    using Index = std::uint32_t;
    static constexpr Index kNone = std::numeric_limits<Index>::max();

    struct Point {
        double x = 0.0;
        double y = 0.0;
        double z = 0.0;
        bool hasHeight = false;
        bool findable = false; // by its number
        bool written = false;
        std::int32_t number = 0;
        Index entity = kNone; // of the drawing; none for a point that was added
    };

    // All coordinate points of the drawing that have a place, and points of unknown kind.
    explicit SimaPointTable(const drawing::Drawing& drawing);

    const Point& operator[](Index index) const { return points_[index]; }
    void setWritten(Index index) { points_[index].written = true; }
    std::string_view name(Index index) const;
    // The point of an entity, kNone if it is none.
    Index ofEntity(std::size_t entity) const;
    // A findable point at exactly that place, kNone if there is none.
    Index at(double x, double y) const;
    // The findable points within the distance (metres, at most 0.5), the nearest first.
    std::vector<Index> within(double x, double y, double distance) const;
    // A new point of that name with a number of its own.
    Index add(double x, double y, double z, bool hasHeight, std::string name);
    // One that no object has, at least 1.
    std::int32_t freeNumber();

    bool hasRepeatedNumbers() const { return repeated_; }
    std::size_t renumbered() const { return renumbered_; }
    std::size_t withoutRow() const { return withoutRow_; }
    std::size_t added() const { return addedNames_.size(); }

  private:
    // Cells of a grid as one number each; the points in order of their cells.
    using Cell = std::uint64_t;
    static Cell cellOf(double x, double y);
    template <typename Use>
    void forCell(Cell cell, const Use& use) const;
    void sortPlaces();
    void renumberWhatLinesNeed(const drawing::Drawing& drawing);

    const drawing::Drawing& drawing_;
    std::vector<Point> points_;
    std::vector<std::pair<Cell, Index>> places_;
    std::unordered_multimap<Cell, Index> addedPlaces_;
    std::vector<std::string> addedNames_;
    Index firstAdded_ = 0;
    std::int32_t lastNumber_ = 0;
    std::int32_t lowestFree_ = 1;     // may be taken still
    std::vector<std::int32_t> taken_; // rising; gathered when no number is left above the highest
    bool repeated_ = false;
    std::size_t renumbered_ = 0;
    std::size_t withoutRow_ = 0;
};

} // namespace fenmark::exchange
