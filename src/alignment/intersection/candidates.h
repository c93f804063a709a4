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
    double start_direction;
    double sweep; // from start to end in the sense of dir

    CentredArc(double R_, double dir_, Point start, Point finish)
        : R(R_), dir(dir_), start_direction(directionOf(start.x, start.y)), sweep(0.0) {
        const double finish_direction = directionOf(finish.x, finish.y);
        sweep = start_direction <= finish_direction ? finish_direction - start_direction
                                                    : kTwoPi - (start_direction - finish_direction);
        if (dir == -1.0) {
            sweep = kTwoPi - sweep;
        }
    }

    // Length run from the start to a point of the circle. A point on the start has run nothing, not a full circle,
    // whatever the last bit says.
    double lengthTo(Point p) const {
        const double direction = directionOf(p.x, p.y);
        double w = dir == -1.0 ? start_direction - direction : direction - start_direction;
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
    double on_first = 0.0;
    double on_second = 0.0;
    bool accepted = false;
};

inline void writeCrossing(const Crossing& crossing, double p[2], double* on_first, double* on_second) {
    p[0] = crossing.point.x;
    p[1] = crossing.point.y;
    *on_first = crossing.on_first;
    *on_second = crossing.on_second;
}

// Gives out the accepted ones of two crossings, the lower station on the first element first: 0 one, 1 two that
// coincide, 2 two, -2 none.
inline int giveOut(const Crossing (&found)[2], double p1[2], double* a, double* b, double p2[2], double* c, double* d) {
    if (found[0].accepted && found[1].accepted) {
        const bool exchanged = found[0].on_first > found[1].on_first;
        writeCrossing(found[exchanged ? 1 : 0], p1, a, b);
        writeCrossing(found[exchanged ? 0 : 1], p2, c, d);
        return std::fabs(found[0].on_first - found[1].on_first) < kSameLength ? 1 : 2;
    }
    if (!found[0].accepted && !found[1].accepted) {
        return -2;
    }
    writeCrossing(found[found[0].accepted ? 0 : 1], p1, a, b);
    return 0;
}

} // namespace fenmark::alignment
