// The shape of an object as GIS formats have it: a point, a line or the ring of a polygon, in the file's coordinates.
#pragma once

#include "exchange/export_options.h"
#include "exchange/geographic.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace fenmark::exchange {

enum class ShapeKind : std::uint8_t { None, Point, Line, Polygon };

struct Position {
    double x = 0.0; // longitude in degrees, or metres east
    double y = 0.0; // latitude in degrees, or metres north
};

struct Shape {
    ShapeKind kind = ShapeKind::None;
    std::vector<Position> positions; // of a polygon: the outer ring, anticlockwise, its first position again at its end
    std::optional<double> height;    // of a point, metres
};

// Makes shapes of one drawing, in a buffer of its own: each is good until the next.
class ShapeMaker {
  public:
    // The zone is the options' or the drawing's; longitude and latitude need one.
    ShapeMaker(const drawing::Drawing& drawing, const ExportOptions& options);

    const Shape& of(const drawing::EntityView& entity);
    const Shape& of(const drawing::Alignment& alignment);
    // How many had a place in the plane, but one too far away to have a longitude.
    std::size_t tooFar() const { return tooFar_; }

  private:
    void begin(ShapeKind kind);
    void add(double x, double y);
    const Shape& finished();

    std::optional<PlaneZone> zone_; // none: metres
    drawing::LinePoints points_;
    Shape shape_;
    bool far_ = false;
    std::size_t tooFar_ = 0;
};

// The plane rectangular zone of an exported file, 0 if none is known.
inline int zoneOf(const drawing::Drawing& drawing, const ExportOptions& options) {
    return options.zone != 0 ? options.zone : drawing.zone();
}

} // namespace fenmark::exchange
