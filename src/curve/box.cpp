// The box around a curve.
//
// A coordinate is extreme at an end or where the curve runs along an axis. Beyond one full turn from its flat end a wing
// lies within the turn before, so that at most five such places of each wing count, however often it winds.
#include "curve/curve.h"
#include "curve/wings.h"

#include <algorithm>
#include <cmath>

namespace fenmark::curve {

namespace {

void include(Box& box, const Point& point) {
    box.minX = std::min(box.minX, point.x);
    box.minY = std::min(box.minY, point.y);
    box.maxX = std::max(box.maxX, point.x);
    box.maxY = std::max(box.maxY, point.y);
}

} // namespace

Box boxOf(const Curve& curve) {
    const PreparedCurve prepared(curve);
    const Point start = curve.start.point;
    Box box{start.x, start.y, start.x, start.y};
    include(box, prepared.pointAt(curve.length));
    const Wings wings = wingsOf(curve);
    for (std::size_t i = 0; i < wings.count; ++i) {
        const Wing& wing = wings.wing[i];
        if (wing.turn == 0.0) {
            continue;
        }
        include(box, prepared.pointAt(wing.flat));
        // Travelled from the flat end, the wing turns to this side.
        const double side = wing.sharp >= wing.flat ? wing.side : -wing.side;
        const double azimuth = azimuthAt(curve, wing.flat);
        const double since = azimuth - std::floor(azimuth / (0.5 * kPi)) * (0.5 * kPi);
        double angle = side > 0.0 ? 0.5 * kPi - since : since;
        for (int axis = 0; axis < 5 && angle <= wing.turn; ++axis) {
            include(box, prepared.pointAt(wing.alongAtTurn(angle)));
            angle += 0.5 * kPi;
        }
    }
    return box;
}

} // namespace fenmark::curve
