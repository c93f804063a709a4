// A drawing as LandXML 1.2.
#pragma once

#include "exchange/text.h"
#include "host/embedded/drawing.h"

namespace fenmark::exchange {

// Alignments with their exact elements (Line, Curve, Spiral), points as CgPoints, closed lots as Parcels, other
// polylines as PlanFeatures. Coordinates are "north east elevation". Names that the format wants unique and that are
// not get a number behind them.
Notes writeLandXml(const host::embedded::Drawing& drawing, std::ostream& out);

} // namespace fenmark::exchange
