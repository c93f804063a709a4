// Survey documents as pages of paper: the tables of a report, and lists of stakes.
#pragma once

#include "drawing/drawing.h"
#include "exchange/plan/plot.h"
#include "exchange/report/report.h"
#include "exchange/stakes.h"

namespace fenmark::exchange {

// The tables of the report on A4, landscape, unless the options name another paper or stand it upright: heads on every
// page, groups of rows and figures whole, pages numbered. The titles of the options stand below the head.
[[nodiscard]] Plot reportPages(const drawing::Drawing& drawing, const ReportOptions& report,
                               const PlotOptions& options);
// Stakes with their stations, offsets, coordinates and tangents.
[[nodiscard]] Plot stakePages(const drawing::Drawing& drawing, const Stakes& stakes, const PlotOptions& options);

} // namespace fenmark::exchange
