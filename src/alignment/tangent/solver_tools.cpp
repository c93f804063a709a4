// Shared parts of the tangent solvers.
//
// Symbols: A parameter, R radius of a clothoid's sharp end; X, Y that end in the standard frame, tau its tangent,
// dR = Y + R cos tau - R the shift and Xm = X - R sin tau the abscissa of the centre. A circle tangent to a clothoid
// that leaves a line so lies at Xm along and R + dR beside that line [Kasper 1968].
#include "alignment/tangent/solver_tools.h"

#include "alignment/clothoid/series.h"

#include "fenmark/alignment/clothoid.h"
#include "fenmark/alignment/conventions.h"
#include "fenmark/alignment/primitives.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace fenmark::alignment {

namespace {

bool finiteEnds(const Calelm& e) {
    return std::isfinite(e.sx) && std::isfinite(e.sy) && std::isfinite(e.ex) && std::isfinite(e.ey);
}

// A square distance that is negative by no more than the square of the length step is a touch.
double rootOrTouch(double square) {
    if (square < 0.0 && square > -kLengthStep) {
        return 0.0;
    }
    return square >= 0.0 ? std::sqrt(square) : std::numeric_limits<double>::quiet_NaN();
}

} // namespace

bool isGivenStraight(const Calelm& e) {
    return e.type == element::kStraight && finiteEnds(e) &&
           plane::distance({e.sx, e.sy}, {e.ex, e.ey}) >= kDirectionZero;
}

bool isGivenArc(const Calelm& e) {
    return e.type == element::kArc && finiteEnds(e) && std::isfinite(e.k1) && std::isfinite(e.k2) &&
           std::isfinite(e.par) && e.par > 0.0 && (e.dir == 1.0 || e.dir == -1.0);
}

CalcRecord toCalc(const Calelm& e) {
    CalcRecord other;
    toOtherPlane(&e, other.raw());
    return other;
}

Calelm toSurvey(const CalcRecord& e) {
    Calelm other{};
    toOtherPlane(e.raw(), &other);
    return other;
}

CalcRecord reversed(const CalcRecord& e) {
    CalcRecord back = e;
    CDreverA(back.raw(), 1);
    return back;
}

Vec unitAlong(const CalcRecord& straight) {
    const Vec along = endOf(straight) - startOf(straight);
    return (1.0 / plane::norm(along)) * along;
}

CalcRecord straightBetween(Vec from, Vec to) {
    CalcRecord line;
    line.type = element::kStraight;
    setStart(line, from);
    setEnd(line, to);
    return line;
}

CalcRecord arcBetween(Vec from, Vec to, double radius, double dir) {
    CalcRecord arc;
    arc.type = element::kArc;
    setStart(arc, from);
    setEnd(arc, to);
    arc.par = radius;
    arc.dir = dir;
    return arc;
}

Vec roundedPoint(Vec p) {
    return {ali_CAroundNum(p.x), ali_CAroundNum(p.y)};
}

ClothoidEnd clothoidEnd(double parameter, double radius) {
    ClothoidEnd values;
    CDRcalxy(parameter, radius, &values.X, &values.Y);
    shiftAtRadius(parameter, radius, values.tau, values.dR, values.Xm);
    return values;
}

bool clothoidFits(double parameter, double radius) {
    return std::isfinite(parameter) && std::isfinite(radius) && parameter > 0.0 && radius > 0.0 &&
           signed16(CDchkAR(parameter, radius)) == 0;
}

CalcRecord clothoidFromLine(Vec flat, Vec u, double dir, double parameter, double radius, const ClothoidEnd& values) {
    CalcRecord clothoid;
    clothoid.type = element::kClothoid;
    clothoid.par = parameter;
    clothoid.dir = dir;
    clothoid.r1 = 0.0;
    clothoid.r2 = radius;
    setStart(clothoid, flat);
    setEnd(clothoid, flat + plane::turned(Vec{values.X, dir * values.Y}, u.x, u.y));
    return clothoid;
}

CalcRecord clothoidIntoLine(Vec flat, Vec u, double dir, double parameter, double radius, const ClothoidEnd& values) {
    // Travelled backwards it leaves the line in the direction -u and turns the other way.
    return reversed(clothoidFromLine(flat, -1.0 * u, -dir, parameter, radius, values));
}

bool commonTangent(Vec c1, double p1, double dir1, Vec c2, double p2, double dir2, CommonTangent& tangent) {
    double first[2];
    double second[2];
    if (dir1 == dir2) {
        // Travelled from circle 2, the first tangent has both circles on its right: from circle 1, on its left.
        double right1[2];
        double right2[2];
        if (outerTangent(c2.x, c2.y, p2, c1.x, c1.y, p1, second, first, right2, right1) != 0) {
            return false;
        }
        if (dir1 < 0.0) {
            std::copy(right1, right1 + 2, first);
            std::copy(right2, right2 + 2, second);
        }
    } else if (innerTangent(c1.x, c1.y, p1, c2.x, c2.y, p2, first, second, dir1) != 0) {
        return false;
    }
    tangent.foot1 = {first[0], first[1]};
    tangent.foot2 = {second[0], second[1]};
    const Vec along = tangent.foot2 - tangent.foot1;
    const double length = plane::norm(along);
    if (!(length >= kDirectionZero)) {
        return false;
    }
    tangent.t = (1.0 / length) * along;
    return true;
}

Attempts eachPass(const Candidates& centres, std::span<const Given> passes) {
    Attempts attempts;
    for (const Given pass : passes) {
        for (const Vec centre : centres) {
            attempts.items[attempts.count++] = {pass, centre};
        }
    }
    return attempts;
}

Candidates centresBesideLine(const CalcRecord& straight, double offset, Vec centre, double distance) {
    Candidates found;
    const Vec u = unitAlong(straight);
    const double around[2] = {centre.x, centre.y};
    for (const double side : {1.0, -1.0}) {
        const Vec origin = startOf(straight) + side * offset * Vec{-u.y, u.x};
        const double line[4] = {origin.x, origin.y, u.x, u.y};
        double further[2];
        double nearer[2];
        if (lineCircleRoots(line, around, distance, further, nearer) != 0) {
            continue;
        }
        Vec p{nearer[0], nearer[1]};
        Vec q{further[0], further[1]};
        if (plane::distance(origin, q) < plane::distance(origin, p)) {
            std::swap(p, q);
        }
        found.add(p);
        found.add(q);
    }
    return found;
}

Candidates centresBetween(Vec c1, double d1, Vec c2, double d2) {
    Candidates found;
    double p1[2];
    double p2[2];
    const int result = circleCross(c1.x, c1.y, d1, c2.x, c2.y, d2, p1, p2);
    if (result >= 0) {
        found.add({p1[0], p1[1]});
    }
    if (result == 0) {
        found.add({p2[0], p2[1]});
        return found;
    }
    // circleCross reports a touch within a tolerance that may hide two points some centimetres apart, or a touch just missed.
    const Vec toFirst = c1 - c2;
    const double D = plane::norm(toFirst);
    const double along = 0.5 * (D - (d1 - d2) * (d1 + d2) / D);
    const double across = rootOrTouch((d2 - along) * (d2 + along));
    if (std::isfinite(across) && D > 0.0) {
        const Vec u = (1.0 / D) * toFirst;
        const Vec base = c2 + along * u;
        found.add(base + across * Vec{-u.y, u.x});
        found.add(base - across * Vec{-u.y, u.x});
    }
    return found;
}

} // namespace fenmark::alignment
