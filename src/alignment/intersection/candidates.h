// What the crossings of straights and arcs share: the angle run on an arc, the test of a station against a total, and
// the order in which two crossings are given out.
#pragma once

#include "alignment/calelm/planes.h"
#include "alignment/calelm/rounding.h"

namespace fenmark::alignment {

// An arc about the origin, in the calculation plane.
struct CentredArc {
    double R;
    double dir;
    double startDirection;
    double sweep; // from start to end in the sense of dir

    CentredArc(double radius, double sense, Point start, Point finish)
        : R(radius), dir(sense), startDirection(directionOf(start.x, start.y)), sweep(0.0) {
        const double finishDirection = directionOf(finish.x, finish.y);
        sweep = startDirection <= finishDirection ? finishDirection - startDirection
                                                  : kTwoPi - (startDirection - finishDirection);
        if (dir == -1.0) {
            sweep = kTwoPi - sweep;
        }
    }

    // Length run from the start to a point of the circle. A point on the start has run nothing, not a full circle,
    // whatever the last bit says.
    double lengthTo(Point p) const {
        const double direction = directionOf(p.x, p.y);
        double w = dir == -1.0 ? startDirection - direction : direction - startDirection;
        if (w < 0.0) {
            w += kTwoPi;
        }
        return (kTwoPi - w) * R < kLengthStep ? 0.0 : w * R;
    }

    // The same for a point known to lie on the arc or just off an end of it: one just before the start has run nothing.
    double lengthToNear(Point p) const {
        const double length = lengthTo(p);
        const double beyond = length - sweep * R;
        return beyond > 0.0 && kTwoPi * R - length < beyond ? 0.0 : length;
    }
};

// Whether a station lies on an element of the given total, which may be negative.
inline bool liesOn(double station, double total) {
    return total >= 0.0 ? station >= 0.0 && station <= total : station >= total && station <= 0.0;
}

// One crossing: a point, and the stations on the first and the second element.
struct Crossing {
    Point point;
    double onFirst = 0.0;
    double onSecond = 0.0;
    bool accepted = false;
};

inline void writeCrossing(const Crossing& crossing, double p[2], double* onFirst, double* onSecond) {
    p[0] = crossing.point.x;
    p[1] = crossing.point.y;
    *onFirst = crossing.onFirst;
    *onSecond = crossing.onSecond;
}

// Gives out the accepted ones of two crossings, the lower station on the first element first: 0 one, 1 two that
// coincide, 2 two, -2 none.
inline int giveOut(const Crossing (&found)[2], double p1[2], double* a, double* b, double p2[2], double* c, double* d) {
    if (found[0].accepted && found[1].accepted) {
        const bool exchanged = found[0].onFirst > found[1].onFirst;
        writeCrossing(found[exchanged ? 1 : 0], p1, a, b);
        writeCrossing(found[exchanged ? 0 : 1], p2, c, d);
        return std::fabs(found[0].onFirst - found[1].onFirst) < kSameLength ? 1 : 2;
    }
    if (!found[0].accepted && !found[1].accepted) {
        return -2;
    }
    writeCrossing(found[found[0].accepted ? 0 : 1], p1, a, b);
    return 0;
}

} // namespace fenmark::alignment
