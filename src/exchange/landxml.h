// A drawing as LandXML 1.2, and as J-LandXML 1.7, its profile for Japanese roads.
#pragma once

#include "drawing/drawing.h"
#include "exchange/notes.h"

namespace fenmark::exchange {

enum class LandXmlProfile {
    // Points, alignments, parcels and other lines, in the fullest precision.
    LandXml,
    // Alignments with their intermediate points, for electronic delivery. It has no place for lots, other lines and
    // points without a role, which are left out and reported.
    JLandXml,
};

// Coordinates are north, east and height, and heights that nobody knows are left out. Alignments are written as their exact
// elements, straights, arcs and clothoids, with IPs and with the longitudinal and cross-section results on them.
Notes writeLandXml(const drawing::Drawing& drawing, std::ostream& out);
// In the zone in place of the drawing's, unless it is 0.
Notes writeLandXmlProfile(const drawing::Drawing& drawing, LandXmlProfile profile, std::ostream& out, int zone = 0);

} // namespace fenmark::exchange
