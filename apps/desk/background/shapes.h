// Points and lines of other files, for the background of the plan. No windows here.
//
// What is read comes out in the drawing's plane (x east, y north, metres). Coordinates that a file says to be
// geographic, or of another plane rectangular zone, are brought into the drawing's zone.
#pragma once

#include "drawing/drawing.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::desk {

struct BackgroundLine {
    std::vector<host::PlanPoint> points;
    drawing::Extent extent;
};

struct BackgroundShapes {
    std::vector<host::PlanPoint> points;
    std::vector<BackgroundLine> lines;
    drawing::Extent extent;
    std::size_t leftOut = 0; // objects of kinds that are not shown, and those without a place in the zone

    void addPoint(const host::PlanPoint& point);
    void addLine(std::vector<host::PlanPoint> points); // of two points or more
};

enum class BackgroundError {
    None,
    NotReadable,
    NotThisFormat,
    NeedsZone,        // longitude and latitude, and the drawing has no zone
    UnknownReference, // a reference system that is neither geographic nor plane rectangular
    TooLarge,
    TooMany, // backgrounds of one drawing
    TooMuch, // to be read unasked
};

struct BackgroundRead {
    BackgroundShapes shapes;
    BackgroundError error = BackgroundError::None;
    std::string detail;
};

// The zone is that of the drawing, 0 if unknown.
BackgroundRead readDxf(std::string_view text);
BackgroundRead readGeoJson(std::string_view text, int zone);
BackgroundRead readGeoPackage(const std::string& path, int zone);
// By the extension: .dxf, .geojson, .json, .gpkg.
BackgroundRead readShapes(const std::string& path, int zone);

// How coordinates of a reference system get into the drawing's zone.
class ToZone {
  public:
    // The number of EPSG; 0 and below for an unknown plane.
    ToZone(long long epsg, int zone);
    [[nodiscard]] BackgroundError error() const { return error_; }
    // NaN for what has no place in the zone.
    [[nodiscard]] host::PlanPoint operator()(double x, double y) const;

  private:
    enum class Way { AsItIs, Geographic, Mercator, OtherZone };
    Way way_ = Way::AsItIs;
    int from_ = 0; // zone
    int zone_ = 0;
    BackgroundError error_ = BackgroundError::None;
};

} // namespace fenmark::desk
