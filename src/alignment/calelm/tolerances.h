// Every limit, step and tolerance of the alignment library, one name each. Lengths are metres, angles radians.
// Comparisons with them are strict unless the function that uses one says otherwise.
//
// "Seen" is the largest size that counted and the smallest that did not, in the seeded trials of the tests of alignments.
// Where it is missing, the trials met sizes as near to the limit as one likes from both sides, or none near it
// (kStartsMeet, kTriangleGap, kStoredLengthSlack), or the limit was not measured.
#pragma once

#include <cmath>
#include <numbers>

#ifdef __FAST_MATH__
#error "the digits of this library are part of its contract: build it without -ffast-math"
#endif

namespace fenmark::alignment {

inline constexpr double kPi = std::numbers::pi;
inline constexpr double kTwoPi = 2.0 * std::numbers::pi;
inline constexpr double kHalfPi = 0.5 * std::numbers::pi;

// Steps to which results are rounded.
inline constexpr double kLengthStep = 1e-5;
inline constexpr double kAngleStep = 1.389e-6;

// Two points or lengths nearer than this in each coordinate are the same.
inline constexpr double kSameLength = 1e-5;
// A radius at or below this counts as infinite in AelmAtri, metres. Seen: 1e-5, 1.6e-3.
inline constexpr double kZeroRadius = 1e-5;
// An angle nearer to 0 than this becomes 0 when it changes plane; likewise near 2 pi after a turn.
inline constexpr double kPlaneAngleZero = 1e-5;
// Angles that differ by less are equal; a tangent angle below it counts as 0.
inline constexpr double kSameAngle = 1.389e-6;
// One second of arc.
inline constexpr double kOneSecond = 4.84813681109536e-6;
// Half a degree, the limit of cplnrm. Seen: 0.0074, 0.0093.
inline constexpr double kHalfDegree = 0.008726;

// Discriminants, coordinate spans and direction vectors that count as zero (square metres, metres). Seen: 1.8e-12,
// 3.7e-8.
inline constexpr double kParameterZero = 1e-10;
// Squared perpendicular distance that counts as zero, square metres.
inline constexpr double kSquaredDistanceZero = 1e-8;
// Stop test of the terms and small-angle test (radians) of the high-precision clothoid series.
inline constexpr double kPreciseSeriesStop = 1e-8;
// Determinant of two unit directions below which they are parallel; two points too close to define a line.
inline constexpr double kDirectionZero = 1e-7;
// Near-tangency scales of circleCross: radii below 1, and from 1 on. Seen of the first, as a share of it: 0.21, 21.
inline constexpr double kCircleTouchSmall = 1.5e-8;
inline constexpr double kCircleTouchLarge = 1e-6;
// A shift dl below this counts as none in the chain refits, metres. Seen: 0, 0.011.
inline constexpr double kNoShift = 1e-6;

// Stop test of the clothoid series CDAcalxy: change of X and of Y, metres.
inline constexpr double kSeriesStop = 1e-4;
// Cosine that counts as perpendicular in the foot test.
inline constexpr double kPerpendicularCosine = 1e-4;
// A point within this distance of a clothoid counts as on it, metres.
inline constexpr double kOnCurve = 1e-3;
// Chord below which a piece of a subdivided clothoid is a crossing, metres. Seen: 6.4e-6, 2.3e-4.
inline constexpr double kPieceChord = 1e-4;
// Station span below which a piece is not cut further, metres. Seen: 9.8e-6, 1.02e-5.
inline constexpr double kPieceSpan = 1e-5;
// Two crossings of a subdivision nearer than this are one, metres.
inline constexpr double kSameCrossing = 1e-3;
// Two crossings of a line and a clothoid nearer than this in both coordinates are one, metres. Seen: 1.3e-3, 29.
inline constexpr double kSameLineCrossing = 0.01;
// Ends of an arc and of a clothoid that count as meeting, metres: start with start, and the other three pairs. Seen of
// these: 5.7e-14, 0.38.
inline constexpr double kStartsMeet = 1e-3;
inline constexpr double kEndsMeet = 1e-4;
// Clearance below which two triangles of a subdivision overlap.
inline constexpr double kTriangleGap = 1e-9;
// By how much a stored length may exceed the length between the ends, which are rounded, as are the centre and the
// radius of an arc: 1.7e-5 as built, 5e-5 after a move.
inline constexpr double kStoredLengthSlack = 5e-5;
// Ends of two elements that join, metres. Seen: 0, and 1.1e-3, which a test sets.
inline constexpr double kJointGap = 1e-3;
// Largest break of direction at a joint that jointCheck accepts, radians. Seen: 0.49, 0.51, which a test sets.
inline constexpr double kJointBreak = 0.5;

// A radius at or below this multiple of A is refused. Seen: 0.5600 on both sides.
inline constexpr double kSmallestRadiusRatio = 0.56;

// Bounds that lie far beyond any real element. They end what bad input would keep going for ever.
// Passes of the clothoid series: a real element (R > 0.56 A) takes fewer than 12.
inline constexpr int kSeriesPasses = 400;
// Largest tangent angle of the high-precision series: its terms cancel, which costs 1e-9 of A at 25 and 3e-5 here.
inline constexpr double kLargestPreciseTau = 30.0;
// Turns that ali_KAdjAng takes off one by one.
inline constexpr int kSingleTurns = 64;
// Pieces that a subdivision looks at: true crossings need a few hundred.
inline constexpr int kSubdivisionItems = 200000;

} // namespace fenmark::alignment
