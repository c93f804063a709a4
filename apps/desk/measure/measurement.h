// What was measured: sides, bearings, areas, and places on alignments, as numbers and as a table. No windows here.
//
// Plane: the drawing's (x east, y north, metres). Azimuths (方向角) are radians clockwise from north, in [0, 2 pi).
#pragma once

#include "desk/language/texts.h"
#include "desk/measure/snap.h"
#include "drawing/drawing.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace fenmark::desk {

struct MeasuredSide {
    double north = 0.0; // dX, from the side's start to its end
    double east = 0.0;  // dY
    double length = 0.0;
    double azimuth = 0.0;
    double along = 0.0; // from the first point to the side's end
    // Clockwise from the way back to the point before to the way on (夾角); nothing at the first point of an open line.
    std::optional<double> included;
};

struct Measured {
    std::vector<MeasuredSide> sides; // with the closing one, if the line is closed
    double length = 0.0;             // of all sides
    double area = 0.0;               // square metres, not negative; 0 unless closed
    bool crossesItself = false;      // the area is then that of the parts with their signs
};

// A line over the points, closed on demand if there are three or more.
Measured measure(std::span<const host::PlanPoint> points, bool closed);

// N45°00′00″E: the angle from north or south towards east or west, to the second.
std::string quadrantBearing(double azimuth);

// Where a place lies along an alignment.
struct AlignmentPlace {
    double station = 0.0;
    double offset = 0.0; // positive to the right of travel
    host::PlanPoint foot;
    double azimuth = 0.0; // of travel at the foot
    std::size_t element = 0;
    double radius = drawing::kInfiniteRadius; // at the foot
    bool turnsRight = false;
};
// Nothing if the alignment has no usable element.
std::optional<AlignmentPlace> placeOn(const drawing::Drawing& drawing, std::size_t alignment,
                                      const host::PlanPoint& point);

// A table for a panel and for the clipboard.
struct Sheet {
    struct Total {
        QString name;
        QString value;
    };
    QString title;
    QStringList columns;
    std::vector<QStringList> rows;
    std::vector<Total> totals;

    // Rows as lines, cells parted by tabs, as spreadsheets take them.
    [[nodiscard]] QString tabbed() const;
};

// The places that were taken as a table: the line and its sides.
Sheet lineSheet(std::span<const Snap> places, bool closed, const Texts& texts);
// Each place with its station, offset, radius and azimuth on the alignment that these refer to.
struct PickedPlace {
    Snap snap;
    std::optional<std::size_t> alignment;
};
Sheet placeSheet(const drawing::Drawing& drawing, std::span<const PickedPlace> places, const Texts& texts);

} // namespace fenmark::desk
