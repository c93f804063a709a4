// The sheet of a plan: paper, scale, and where a place on the ground lies on it. Paper units are millimetres, y down.
#pragma once

#include "drawing/drawing.h"

#include <optional>
#include <string>

namespace fenmark::exchange {

struct Rect {
    double x = 0.0;
    double y = 0.0;
    double width = 0.0;
    double height = 0.0;

    double right() const { return x + width; }
    double bottom() const { return y + height; }
};

struct PaperPoint {
    double x = 0.0;
    double y = 0.0;
};

// What a user chose of paper and scale.
struct SheetChoice {
    std::optional<int> scale;         // the N of 1:N
    std::optional<std::string> paper; // "A4" to "A0"
    std::optional<bool> upright = std::nullopt;
};

class PlanSheet {
  public:
    // The smallest sheet from A3 on and the largest round scale that the extent fits at, as far as they are not chosen.
    explicit PlanSheet(const drawing::Extent& extent, const SheetChoice& choice = {});
    // A sheet that lies around a place of the ground, turned so that the direction (radians) runs to the right.
    PlanSheet(const host::PlanPoint& middle, double direction, int scale, const std::string& paper,
              bool upright = false);

    // False if the extent does not fit at the scale that was chosen.
    bool fits() const { return fits_; }
    // Radians, anticlockwise, that the ground is turned by on the paper.
    double rotation() const { return rotation_; }
    // Whether any part of the extent may lie on the map.
    bool shows(const drawing::Extent& extent) const;

    double width() const { return width_; }
    double height() const { return height_; }
    const char* format() const { return format_; }
    const Rect& map() const { return map_; }     // the plan's own frame
    const Rect& panel() const { return panel_; } // legend and title
    int scale() const { return scale_; }         // the N of 1:N

    PaperPoint at(double x, double y) const;
    double paperLength(double metres) const { return metres * 1000.0 / scale_; }
    double groundLength(double millimetres) const { return millimetres * scale_ / 1000.0; }
    // The ground at a place of the paper, x east and y north.
    host::PlanPoint groundAt(const PaperPoint& paper) const;

  private:
    struct Paper;
    void takePaper(const Paper& paper, bool upright);
    static const Paper& paperNamed(const std::string& name);

    double width_ = 420.0;
    double height_ = 297.0;
    const char* format_ = "A3";
    Rect map_;
    Rect panel_;
    int scale_ = 500;
    double middleX_ = 0.0; // ground at the middle of the map
    double middleY_ = 0.0;
    double rotation_ = 0.0;
    double cosine_ = 1.0; // of the rotation
    double sine_ = 0.0;
    bool fits_ = true;
};

} // namespace fenmark::exchange
