// The sections of one alignment as the panels show them. No windows here.
#pragma once

#include "desk/plan/plan_index.h"
#include "desk/plan/plan_object.h"
#include "drawing/drawing.h"
#include "exchange/results.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace fenmark::desk {

// The sections of a drawing, found once and kept until it changes.
class SectionModel {
  public:
    // Forgets what was found; the drawing outlives the model.
    void setDrawing(const drawing::Drawing* drawing);

    [[nodiscard]] const drawing::Drawing* drawing() const { return drawing_; }
    [[nodiscard]] const exchange::AlignmentResults& resultsOf(std::size_t alignment);
    // Heights of the formation along the alignment; see exchange/planned_heights.h.
    [[nodiscard]] const std::vector<exchange::LongitudinalPoint>& plannedOf(std::size_t alignment);
    // The ground along the alignment: its longitudinal results, or the centres of its cross-sections.
    [[nodiscard]] std::vector<exchange::LongitudinalPoint> groundOf(std::size_t alignment);

    // The alignment that a selection speaks of: itself, the one that a result lies on, or the only one with results.
    [[nodiscard]] std::optional<std::size_t> alignmentOf(const std::optional<PlanObject>& selected);
    // Where the selected object lies along the alignment: a point, or the start of an element.
    [[nodiscard]] std::optional<double> stationOf(std::size_t alignment,
                                                  const std::optional<PlanObject>& selected) const;

  private:
    const exchange::Results& results();

    const drawing::Drawing* drawing_ = nullptr;
    std::optional<exchange::Results> results_;
    std::vector<std::optional<std::vector<exchange::LongitudinalPoint>>> planned_;
    exchange::AlignmentResults none_;
};

// The result of that kind at a place of the plan, within a millimetre; nothing if there is none.
std::optional<std::size_t> resultAt(const drawing::Drawing& drawing, const PlanIndex& index, FigureStyle style,
                                    const host::PlanPoint& at, double height);

// How a section lies in a window: stations or offsets to the right, heights up, in pixels.
struct SectionFrame {
    double left = 0.0; // of the graph, pixels
    double right = 0.0;
    double top = 0.0;
    double bottom = 0.0;
    double from = 0.0;  // station or offset at the left
    double scale = 1.0; // pixels for each metre along
    double base = 0.0;  // height at the bottom
    double rise = 1.0;  // pixels for each metre of height

    [[nodiscard]] double x(double along) const { return left + (along - from) * scale; }
    [[nodiscard]] double y(double height) const { return bottom - (height - base) * rise; }
    [[nodiscard]] double alongAt(double x) const { return from + (x - left) / scale; }
    [[nodiscard]] double heightAt(double y) const { return base + (bottom - y) / rise; }
    [[nodiscard]] double exaggeration() const { return rise / scale; }
};

// Puts the heights from low to high into the graph: at so many times the scale along, or, for 0, as high as they fit. The
// base line is a round height below the lowest one.
void fitHeights(SectionFrame& frame, double low, double high, double exaggeration);

} // namespace fenmark::desk
