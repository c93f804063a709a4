// A drawing as LandXML 1.2.
#pragma once

#include "drawing/drawing.h"
#include "exchange/text.h"

namespace fenmark::exchange {

// Alignments with their exact elements (Line, Curve, Spiral), points as CgPoints, closed lots as Parcels, other
// polylines as PlanFeatures. Coordinates are "north east elevation". Names that the format wants unique and that are
// not get a number behind them.
Notes writeLandXml(const drawing::Drawing& drawing, std::ostream& out);

} // namespace fenmark::exchange
