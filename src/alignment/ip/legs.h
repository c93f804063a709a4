/**
 * The legs of an intersection point and the centre of the curve between them.
 *
 * Vec values and angles are in the calculation plane, (x, -y) of the survey plane.
 */
#pragma once

#include "fenmark/alignment/ip.h"

#include "alignment/compound/laying.h"

namespace fenmark::alignment::laying {

/** Two legs that meet at an IP. */
struct Legs {
    Vec previous;
    Vec ip;
    Vec next;
    Vec u1;          ///< unit direction of the leg coming in
    Vec u2;          ///< unit direction of the leg going out
    double a1 = 0.0; ///< their directions in [0, 2 pi)
    double a2 = 0.0;
    double turn = 0.0; ///< from the first leg to the second, [0, 2 pi); 0 below the angle step
    double ia = 0.0;   ///< intersection angle, turn folded to at most pi
    double dir = 1.0;  ///< +1 for a curve to the left, -1 to the right
};

/** False when the points of a leg are nearer than 1e-7 m or not finite. */
bool makeLegs(const double previous[2], const AliIpCurve& ip, const double next[2], Legs& legs);

/** Crossing of the parallels of the legs at the distances d1 and d2 on the inner side; for legs in line the point
 * beside the IP at d2. */
Vec centreBetween(const Legs& legs, double d1, double d2);

/** Foot of a point on the leg coming in, and on the leg going out. */
Vec footOnFirst(const Legs& legs, Vec p);
Vec footOnSecond(const Legs& legs, Vec p);

/** Writes the outputs of an entry: azimuths, intersection angle, distances of the curve's ends from the IP. */
void writeEntry(const Legs& legs, Vec begin, Vec end, AliIpCurve& ip);

/**
 * A clothoid built whole by its closed values, without a construction function: origin, unit tangent there towards the
 * sharper end, turn when run that way, parameter and radius. With reversedRun the record runs from the arc to the
 * origin.
 */
Calelm clothoidRecord(Vec origin, Vec axis, double turn, double parameter, double radius, bool reversedRun);

} // namespace fenmark::alignment::laying
