// Results of longitudinal and cross sections on an alignment, found again from where their points lie.
#pragma once

#include "drawing/drawing.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace fenmark::exchange {

// A point of a longitudinal section, by the station's text; nothing if it does not lie on the alignment.
std::optional<std::string> stationOnAlignment(const drawing::AlignmentGeometry& geometry,
                                              const host::MdGePoint3d& point);

struct SimaCrossSection {
    std::string station;
    std::optional<std::size_t> centre; // the entry at offset 0, counted from the first
    std::size_t first = 0;             // of the points given
    std::vector<std::string> offsets;  // of as many points
};

// Points that follow one another in a drawing, as cross sections: each takes the points that lie across its station. A
// point that lies across no station of the alignment has a section of its own without offsets.
std::vector<SimaCrossSection> crossSectionsOf(const drawing::AlignmentGeometry& geometry,
                                              std::span<const host::MdGePoint3d> points);

} // namespace fenmark::exchange
