// Which stretches of an alignment lie near a place, found by halving: the work grows with what lies there, and not with
// what the alignment has elsewhere.
#pragma once

#include "drawing/alignment_geometry.h"
#include "drawing/drawing.h"

#include <cstddef>
#include <functional>

namespace fenmark::exchange {

struct NearStretches {
    // Whether anything in the box is near.
    std::function<bool(const drawing::Extent&)> isNear;
    // Gets stretches as stations, in their order; false ends the search.
    std::function<bool(double from, double to)> take;
    double shortest = 0.0;        // metres; what is no longer is taken or left as a whole
    std::size_t* looks = nullptr; // how many parts of elements may still be looked at; at 0 the search ends

    // No point of the alignment that is near lies outside the stretches. False if it was ended.
    bool find(const drawing::AlignmentGeometry& geometry) const;

  private:
    bool halve(const curve::Curve& curve, double from, double to, double startStation) const;
};

} // namespace fenmark::exchange
