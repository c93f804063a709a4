/**
 * Tools of the solvers and builders that are not part of the library's interface.
 *
 * Points are pairs of reals, metres; everything that looks at `dir` means the calculation plane, (x, -y) of the
 * survey plane, in which angles run anticlockwise from +x.
 */
#pragma once

#include "fenmark/alignment/record.h"

#include "alignment/calelm/tolerances.h"

namespace fenmark::alignment {

/** Values of Calelm::type. */
namespace element {
inline constexpr int16_t kStraight = 1;
inline constexpr int16_t kArc = 2;
inline constexpr int16_t kClothoid = 3;
} // namespace element

/** Results of elementPosition and arcPosition. */
namespace position {
inline constexpr int kBefore = -1;
inline constexpr int kInside = 0;
inline constexpr int kBeyond = 1;
inline constexpr int kNone = 99;
} // namespace position

/** A mode or status as it is read: the low 16 bits, signed. 65535 is -1. */
inline int signed16(int value) {
    return static_cast<int16_t>(static_cast<uint16_t>(value));
}

/** Coefficients of a straight from its own ends, a x + b y + c = 0 of its plane, (a, b) of length 1. */
void writeUnitCoefficients(Calelm& line);

/** A direction mirrored in the y axis: pi - a, plus 2 pi when negative. */
inline double mirroredDirection(double a) {
    const double mirrored = kPi - a;
    return mirrored < 0.0 ? mirrored + kTwoPi : mirrored;
}

/**
 * The record operations CDchgSpace, CDmirA, CDmoveA, CDrot, CDturnA and CDturnAe without their last test: what comes out
 * may hold values that are not finite, which the caller's own test finds. in and out may be the same.
 */
void toOtherPlane(const Calelm* in, Calelm* out);
void mirrorRecord(const Calelm* in, Calelm* out);
void moveRecord(const Calelm* in, Calelm* out, double dx, double dy);
void turnRecord(const Calelm* in, Calelm* out, const double pivot[2], double theta);
void turnRecordAboutStart(const Calelm* in, Calelm* out, double theta);
void turnRecordAboutEnd(const Calelm* in, Calelm* out, double theta);

/**
 * Where p lies along a straight or an arc: before its start, inside, or beyond its end. A point within 1e-5 m of an
 * end counts as inside. On a straight by the foot of p; none (99) when both coordinate spans are below 1e-10. On an arc
 * as arcPosition says. Any other type: none.
 */
int elementPosition(const double p[2], const Calelm& rec);

/**
 * Where p lies along an arc: none (99) when p is more than 1e-5 m off the circle; inside; beyond when p lies within a
 * half circle after the end, counted on from the start; else before. Within 1e-5 m of an end is inside. Calculation
 * plane.
 */
int arcPosition(const double p[2], const Calelm& rec);

/** Distance of p from a line record, 0 below 1e-4 m, as CDpldist gives it; may not be finite. */
double distanceToLine(const double line[4], const double p[2]);

/** Distance of p from a line record, positive to the left in the calculation plane. */
double signedDistance(const double p[2], const double line[4]);

/**
 * Cuts of a line record with a circle: p1 the further along the line, p2 the other. Returns 0, or -1 with nothing
 * written when the discriminant b^2 - 4 a c of the quadratic is below -1e-10; below 1e-10 in magnitude it is 0.
 */
int lineCircleRoots(const double line[4], const double centre[2], double r, double p1[2], double p2[2]);

/**
 * Cuts of two circles. Returns 0 for two points, 1 for a touch (both outputs the same point), -1 for none (both
 * outputs 0). p1 lies left of the direction from circle 2 to circle 1, p2 right of it (calculation plane). Concentric
 * circles give -1. The touch has a tolerance of 1.5e-6 r^3 sqrt(r) in the value 16 times the squared area of the
 * triangle of the centres and a cut, r the larger radius (1.5e-8 r^4 for r < 1).
 */
int circleCross(double x1, double y1, double r1, double x2, double y2, double r2, double p1[2], double p2[2]);

/**
 * Cuts of the line through p and q with an arc's circle (k1, k2, par). Returns the count, 1 or 2, or -1 for none; p1
 * the further along p to q. A discriminant (half linear term) below 1e-5 in magnitude is one point.
 */
int lineCircleCross(const Calelm& rec, const double p[2], const double q[2], double p1[2], double p2[2]);

/**
 * Inner common tangent of two circles, the one that an arc of turning sense dir on circle 1 leaves towards circle 2.
 * Feet on the circles. Returns 0, or -1 when r1 + r2 exceeds the distance of the centres, or this is 0.
 */
int innerTangent(double x1, double y1, double r1, double x2, double y2, double r2, double foot1[2], double foot2[2],
                 double dir);

/**
 * The two outer common tangents of two circles. Travelling from circle 1 to circle 2, the first (outputs a1, a2) has
 * both circles on its right and the second (b1, b2) on its left, in the calculation plane. Returns 0, or -1 when the
 * radii differ by more than the distance of the centres, or this is 0.
 */
int outerTangent(double x1, double y1, double r1, double x2, double y2, double r2, double a1[2], double a2[2],
                 double b1[2], double b2[2]);

} // namespace fenmark::alignment
