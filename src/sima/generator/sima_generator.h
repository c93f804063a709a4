// Large SIMA files for measuring and trying out: a made-up village of lots on a grid, with routes and results.
#pragma once

#include <cstdint>
#include <iosfwd>

namespace fenmark::sima {

// How much of each kind. The same sizes and seed give the same bytes on every machine.
struct GeneratorSizes {
    std::int32_t points = 1000;
    std::int32_t lots = 250;        // of four points each
    std::int32_t routes = 0;        // of the types 1 to 7 in turn, of ten points each where the grid is wide enough
    std::int32_t longitudinal = 0;  // H01 records for each route of the types 2, 3 and 7
    std::int32_t crossSections = 0; // I01 records for each of these, with five offsets each
    // Numbers, names and coordinates of points, references and lots are padded with blanks, as many programs write them.
    bool padded = false;
    std::uint64_t seed = 1;
};

// Writes the file in code page 932 with CR LF. Points stand about 20 m apart; every tenth has a name in kanji. Lots and
// routes need at least four points, or are left out.
void generateSima(std::ostream& out, const GeneratorSizes& sizes);

} // namespace fenmark::sima
