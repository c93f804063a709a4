// Tools that the compound, chain, IP and point builders share.
//
// Symbols and planes as in laying.h: Vec values are in the calculation plane, records in the survey plane.
// A clothoid is built by its two end points from the series, so that its direction is as exact as its points are; the
// tangents that a record carries fall to 0 within 1e-5 of it and would turn a long element too far.
// Sources: the shift relations of the clothoid [Kasper 1968] and plane geometry of circles.
#include "alignment/compound/laying.h"

#include "fenmark/alignment/clothoid.h"
#include "fenmark/alignment/construction.h"
#include "fenmark/alignment/conventions.h"
#include "fenmark/alignment/primitives.h"

#include "alignment/calelm/planes.h"
#include "alignment/calelm/rounding.h"
#include "alignment/clothoid/series.h"
#include "alignment/primitives/tools.h"
#include "alignment/tangent/fallen_azimuth.h"

#include <algorithm>
#include <array>

namespace fenmark::alignment::laying {

namespace {

// A point this near to where an arc begins leaves nothing of the arc, metres.
constexpr double kNoArc = kSameLength;
// So near to a half circle, and beyond it, an arc is built from one end, radians. Seen below it: 1.0e-7, 8.4e-3.
constexpr double kHalfCircleMargin = 1e-6;
// A kept tangent that moved by more than this, beyond what rounded ends explain, belongs to an arc that flipped. Seen: 9.96e-6, 8.2e-3.
constexpr double kKeptTangentTolerance = kTangentTolerance;
// How far an end built from the kept tangent may lie from where it should, metres: the rounding of one point. And how far
// its tangent may be off that of the circle there, radians: a kept tangent that fell to 0 is up to 1e-5 off.
// Seen in 17,000 seeded ends: 9.96e-6 m, and 1.005e-5 m of those refused.
constexpr double kLaidEndTolerance = kJointTolerance;
constexpr double kLaidTangentTolerance = kTangentTolerance / 2.0;
// Two circles that miss one another by no more than this touch, metres. Seen: circles that meet, and 1.6e-3 of those that miss.
constexpr double kTouchTolerance = 1e-6;

} // namespace

Offset offsetOf(double parameter, double radius) {
    Offset offset;
    shiftAtRadius(parameter, radius, offset.tau, offset.shift, offset.xm);
    offset.rho = radius + offset.shift;
    return offset;
}

Vec rounded(Vec p) {
    return {roundLength(p.x), roundLength(p.y)};
}

int layClothoid(Vec origin, Vec axis, double turn, double parameter, double flat, double sharp, bool sharpFirst,
                Calelm& clothoid) {
    Vec flatLocal;
    Vec sharpLocal;
    CDRcalxy(parameter, flat, &flatLocal.x, &flatLocal.y);
    CDRcalxy(parameter, sharp, &sharpLocal.x, &sharpLocal.y);
    const auto laid = [&](Vec local) { return origin + local.x * axis + (turn * local.y) * leftOf(axis); };
    const Vec flatEnd = laid(flatLocal);
    const Vec sharpEnd = laid(sharpLocal);
    if (!finite(flatEnd) || !finite(sharpEnd)) {
        return -1;
    }
    Calelm made{};
    made.type = element::kClothoid;
    made.par = parameter;
    made.dir = sharpFirst ? -turn : turn;
    made.r1 = sharpFirst ? sharp : flat;
    made.r2 = sharpFirst ? flat : sharp;
    setStart(made, sharpFirst ? sharpEnd : flatEnd);
    setEnd(made, sharpFirst ? flatEnd : sharpEnd);
    const int status = completeClothoid(made);
    if (status == 0) {
        clothoid = made;
    }
    return status;
}

bool eggTangent(Vec centre1, double radius1, Vec centre2, double radius2, double dir, double parameter,
                EggTangent& tangent) {
    const Offset at1 = offsetOf(parameter, radius1);
    const Offset at2 = offsetOf(parameter, radius2);
    const Vec between = centre2 - centre1;
    const double D = plane::norm(between);
    // Across the tangent the centres stand apart by the difference of their offset radii.
    const double sine = dir * (at2.rho - at1.rho) / D;
    if (!(std::fabs(sine) <= 1.0)) {
        return false;
    }
    tangent.direction = (1.0 / D) * plane::turned(between, std::sqrt((1.0 - sine) * (1.0 + sine)), -sine);
    // The local x axis runs from the larger radius to the smaller one, which is back along the travel when the curve
    // flattens.
    const bool sharpens = radius1 > radius2;
    const Offset& flat = sharpens ? at1 : at2;
    const Vec flatCentre = sharpens ? centre1 : centre2;
    const Vec foot = flatCentre - (dir * flat.rho) * leftOf(tangent.direction);
    tangent.origin = foot - ((sharpens ? 1.0 : -1.0) * flat.xm) * tangent.direction;
    return finite(tangent.origin);
}

int layEgg(const EggTangent& tangent, double radius1, double radius2, double dir, double parameter, Calelm& clothoid) {
    const bool sharpens = radius1 > radius2;
    const double along = sharpens ? 1.0 : -1.0;
    return layClothoid(tangent.origin, along * tangent.direction, along * dir, parameter, std::max(radius1, radius2),
                       std::min(radius1, radius2), !sharpens, clothoid);
}

bool circleCrossLeftRight(Vec c1, double d1, Vec c2, double d2, Vec& left, Vec& right) {
    const Vec between = c2 - c1;
    const double D = plane::norm(between);
    if (!(D > 0.0)) {
        return false;
    }
    const double along = ((d1 - d2) * (d1 + d2) + D * D) / (2.0 * D);
    const double across2 = (d1 - along) * (d1 + along);
    if (!(across2 >= -2.0 * d1 * kTouchTolerance)) {
        return false;
    }
    const double across = std::sqrt(std::max(across2, 0.0));
    const Vec u = (1.0 / D) * between;
    left = c1 + along * u + across * leftOf(u);
    right = c1 + along * u - across * leftOf(u);
    return finite(left) && finite(right);
}

bool onCircle(Vec centre, double radius, Vec p) {
    return std::fabs(plane::distance(centre, p) - radius) <= kRoundedJointTolerance;
}

bool sameDirection(double a, double b, double tolerance) {
    return std::fabs(plane::wrappedSigned(a - b)) < tolerance;
}

namespace {

// The sweep that stays of an arc cut at q; below 0 when nothing would stay, or more than the arc has and a half circle.
double keptSweep(const Calelm& arc, bool keepEnd, Vec q) {
    if (!isTurn(arc.dir) || !(arc.par > 0.0) || !finite(q) || !finite(centreOf(arc))) {
        return -1.0;
    }
    const Vec kept = keepEnd ? endOf(arc) : startOf(arc);
    if (!(plane::distance(kept, q) >= kNoArc) || !onCircle(centreOf(arc), arc.par, kept) ||
        !onCircle(centreOf(arc), arc.par, q)) {
        return -1.0;
    }
    const double sweep =
        keepEnd ? sweepBetween(centreOf(arc), q, kept, arc.dir) : sweepBetween(centreOf(arc), kept, q, arc.dir);
    return sweep <= longestSweep(arc) ? sweep : -1.0;
}

// By the two ends; not for half circles, whose ends leave the side of the centre open.
int cutByEnds(Calelm& arc, bool keepEnd, Vec q) {
    Calelm cut = arc;
    (keepEnd ? setStart : setEnd)(cut, q);
    cut.type = element::kArc;
    const int status = signed16(ali_makR(&cut));
    if (status != 0) {
        return status;
    }
    levelFarEnd(cut, keepEnd, keepEnd ? arc.eang : arc.sang);
    // Ends that were rounded turn the tangents of a short arc by their share of its length.
    const double tolerance = kKeptTangentTolerance + kLengthStep / plane::distance(startOf(cut), endOf(cut));
    if (!sameDirection(keepEnd ? cut.eang : cut.sang, keepEnd ? arc.eang : arc.sang, tolerance)) {
        return -1;
    }
    arc = cut;
    return 0;
}

// By the end that stays and its tangent.
int cutByTangent(Calelm& arc, bool keepEnd, Vec q, double sweep) {
    Calelm cut = arc;
    cut.type = element::kArc;
    cut.len = sweep * arc.par;
    const int status = signed16(ali_makangR(&cut, keepEnd ? 2 : 1));
    if (status != 0) {
        return status;
    }
    const double atJoint = -plane::direction(arc.dir * leftOf(q - centreOf(arc)));
    if (!(plane::distance(keepEnd ? startOf(cut) : endOf(cut), q) <= kLaidEndTolerance) ||
        !sameDirection(keepEnd ? cut.sang : cut.eang, atJoint, kLaidTangentTolerance)) {
        return -1;
    }
    arc = cut;
    return 0;
}

} // namespace

double longestSweep(const Calelm& arc) {
    return std::max(kPi, arc.len / arc.par) + kLengthStep / arc.par;
}

int cutArc(Calelm& arc, bool keepEnd, Vec q) {
    const double sweep = keptSweep(arc, keepEnd, q);
    if (!(sweep > 0.0)) {
        return -1;
    }
    if (sweep < kPi - kHalfCircleMargin) {
        return cutByEnds(arc, keepEnd, q);
    }
    Calelm cut = arc;
    (keepEnd ? setStart : setEnd)(cut, q);
    completeAboutCentre(cut);
    levelFarEnd(cut, keepEnd, keepEnd ? arc.eang : arc.sang);
    if (!sameDirection(keepEnd ? cut.eang : cut.sang, keepEnd ? arc.eang : arc.sang,
                       kKeptTangentTolerance + kLengthStep / arc.par)) {
        return -1;
    }
    arc = cut;
    return 0;
}

int cutArcFromKeptEnd(Calelm& arc, bool keepEnd, Vec q) {
    const double sweep = keptSweep(arc, keepEnd, q);
    if (!(sweep > 0.0)) {
        return -1;
    }
    // A tangent may be rounded (it falls to 0 within 1e-5), and a long arc then misses q: its points are better.
    return cutByTangent(arc, keepEnd, q, sweep) == 0 ? 0 : cutArc(arc, keepEnd, q);
}

bool finishTangentChain(std::span<Calelm> chain, double jointTolerance) {
    for (std::size_t i = 1; i < chain.size(); ++i) {
        levelJoint(chain[i - 1], chain[i]);
    }
    return isTangentChain(chain, chain.front(), chain.back(), jointTolerance);
}

bool finishTangentChain(std::initializer_list<Calelm*> chain, double jointTolerance) {
    std::array<Calelm, 4> records;
    const std::span<Calelm> used = std::span(records).first(chain.size());
    std::transform(chain.begin(), chain.end(), used.begin(), [](const Calelm* e) { return *e; });
    if (!finishTangentChain(used, jointTolerance)) {
        return false;
    }
    std::for_each(chain.begin(), chain.end(), [next = used.begin()](Calelm* e) mutable { *e = *next++; });
    return true;
}

bool joinsInCalculationPlane(const Calelm& arc1, const Calelm& clothoid, const Calelm& arc2) {
    Calelm laid{};
    toOtherPlane(&clothoid, &laid);
    if (completeClothoid(laid) != 0 || endIsLost(laid.par, laid.r1) || endIsLost(laid.par, laid.r2)) {
        return false;
    }
    // Direction of travel of an arc at a point of its circle.
    const auto tangentAt = [](const Calelm& arc, Vec p) {
        return plane::direction(p - Vec{arc.k1, arc.k2}) + arc.dir * kPi / 2.0;
    };
    const Vec start{clothoid.sx, clothoid.sy};
    const Vec end{clothoid.ex, clothoid.ey};
    const double tolerance = kTangentTolerance + lostByFalling(laid);
    return onCircle({arc1.k1, arc1.k2}, arc1.par, {arc1.sx, arc1.sy}) &&
           onCircle({arc1.k1, arc1.k2}, arc1.par, start) && onCircle({arc2.k1, arc2.k2}, arc2.par, end) &&
           sameDirection(-laid.sang, tangentAt(arc1, start), tolerance) &&
           sameDirection(-laid.eang, tangentAt(arc2, end), tolerance);
}

Calelm reversed(const Calelm& e) {
    Calelm out = e;
    CDreverA(&out, 1);
    return out;
}

} // namespace fenmark::alignment::laying
