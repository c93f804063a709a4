// What makes the tables of a report.
#pragma once

#include "exchange/report/report.h"
#include "exchange/report/table.h"

#include <functional>
#include <optional>
#include <unordered_map>

namespace fenmark::exchange::report {

// Takes one table at a time, so that a drawing of many lots needs no memory for all of them.
using TableSink = std::function<void(const Table&)>;

// The names of the coordinate points, found by their place.
class PointNames {
  public:
    explicit PointNames(const drawing::Drawing& drawing);
    // Of the point within 5 mm in both directions, the nearest; empty if there is none.
    [[nodiscard]] std::string at(double x, double y) const;

  private:
    const drawing::Drawing& drawing_;
    std::unordered_multimap<std::uint64_t, std::size_t> places_;
};

// The name of the coordinate point at a place; empty if there is none.
using NameAt = std::function<std::string(double x, double y)>;
// The area table of one lot, as the report has it. Nothing for what is no lot, or has coordinates that no survey has.
[[nodiscard]] std::optional<Table> areaTable(const drawing::EntityView& lot, const NameAt& names,
                                             const ReportOptions& options);

// All tables that the options ask for, in the order of the document, with notes to the user.
Notes tablesOf(const drawing::Drawing& drawing, const ReportOptions& options, const TableSink& sink);

void summaryTables(const drawing::Drawing& drawing, const ReportOptions& options, const TableSink& sink);
void pointTable(const drawing::Drawing& drawing, const TableSink& sink);
// Lots that no table shows.
struct LotsLeftOut {
    std::size_t tooFar = 0; // with coordinates beyond the reach of exact decimals
    std::size_t noRing = 0; // not closed, or of fewer than three points
};
LotsLeftOut lotTables(const drawing::Drawing& drawing, const PointNames& names, const ReportOptions& options,
                      const TableSink& sink);
void alignmentTables(const drawing::Drawing& drawing, const PointNames& names, const ReportOptions& options,
                     const TableSink& sink);

// A figure of a lot to scale with the names of its points, as SVG.
struct LotFigure {
    std::vector<host::MdGePoint3d> ring;
    std::vector<std::string> names; // of the vertices
    std::string lot;
    std::optional<int> scale;
};
[[nodiscard]] std::string figureSvg(const LotFigure& figure);

} // namespace fenmark::exchange::report
