// The longitudinal and cross-section results of a drawing, by the alignments that they lie on.
//
// A drawing keeps results as points of their own, each with a row. Which alignment they were placed on follows from where
// they lie: all longitudinal points of a route, and the centre of each of its cross sections, lie on its line.
#pragma once

#include "drawing/drawing.h"

#include <cstddef>
#include <limits>
#include <string>
#include <vector>

namespace fenmark::exchange {

struct LongitudinalPoint {
    double station = 0.0; // metres
    double height = 0.0;  // metres
    std::string name;
};

struct SectionPoint {
    double offset = 0.0; // metres, positive to the right of travel
    double height = 0.0;
    std::string name;
};

struct CrossSection {
    double station = 0.0;
    std::string name;                 // of the point on the centre line
    std::vector<SectionPoint> points; // from left to right
};

// Both in the order of stations. Points without a height are left out.
struct AlignmentResults {
    std::vector<LongitudinalPoint> longitudinal;
    std::vector<CrossSection> sections;
};

struct Results {
    std::vector<AlignmentResults> alignments; // as many as the drawing has
    std::size_t unplaced = 0;                 // points that lie on no alignment, or whose height is no number
};

// Time grows with the number of result points, and with the number of alignments for a few points of each route only.
[[nodiscard]] Results resultsOf(const drawing::Drawing& drawing);

// Metres to the sixth decimal: what a search for the nearest point, or a sum, leaves behind it is noise.
[[nodiscard]] double withoutNoise(double metres);

} // namespace fenmark::exchange
