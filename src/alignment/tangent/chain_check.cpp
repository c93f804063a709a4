// The check of a finished chain. Survey plane: azimuths run clockwise on the map, so a left curve (dir +1) lowers them.
#include "alignment/tangent/chain_check.h"

#include "fenmark/alignment/clothoid.h"
#include "fenmark/alignment/construction.h"
#include "fenmark/alignment/primitives.h"

#include "alignment/calelm/planes.h"
#include "alignment/calelm/rounding.h"
#include "alignment/clothoid/series.h"
#include "alignment/primitives/plane.h"
#include "alignment/primitives/tools.h"
#include "alignment/tangent/fallen_azimuth.h"

#include <algorithm>
#include <initializer_list>
#include <limits>

namespace fenmark::alignment {

namespace {

bool sameDirection(double azimuth1, double azimuth2, double tolerance = kTangentTolerance) {
    return std::fabs(plane::wrappedSigned(azimuth1 - azimuth2)) <= tolerance;
}

bool samePoint(double x1, double y1, double x2, double y2, double tolerance) {
    return std::hypot(x1 - x2, y1 - y2) <= tolerance;
}

bool allFinite(const Calelm& e) {
    const auto values = {e.sx, e.sy, e.ex, e.ey, e.dir, e.par, e.r1, e.r2, e.len, e.sang, e.eang, e.k1, e.k2, e.k3};
    return std::all_of(values.begin(), values.end(), [](double value) { return std::isfinite(value); });
}

// Both ends of an arc lie on its circle, as well as rounded coordinates do. A centre so far away that the numbers there are
// further apart than that (radii beyond 4.5e11 m) tells nothing of the ends.
bool liesOnItsCircle(const Calelm& arc) {
    const double size = std::fmax(arc.par, std::fmax(std::fabs(arc.k1), std::fabs(arc.k2)));
    if (!(size * std::numeric_limits<double>::epsilon() <= kRoundedJointTolerance)) {
        return false;
    }
    const auto off = [&arc](double x, double y) { return std::fabs(std::hypot(x - arc.k1, y - arc.k2) - arc.par); };
    return off(arc.sx, arc.sy) <= kRoundedJointTolerance && off(arc.ex, arc.ey) <= kRoundedJointTolerance;
}

// The element turns from its start to its end tangent as its size and sense demand.
bool turnsTrue(const Calelm& e) {
    const double tolerance = kTangentTolerance + lostByFalling(e);
    switch (e.type) {
    case element::kStraight:
        return sameDirection(e.sang, e.eang);
    case element::kArc:
        return std::fabs(e.dir) == 1.0 && e.k3 > 0.0 && sameDirection(e.eang, e.sang - e.dir * e.k3, tolerance) &&
               liesOnItsCircle(e);
    case element::kClothoid: {
        const double turn = std::fabs(tauAtRadius(e.par, e.r2) - tauAtRadius(e.par, e.r1));
        return std::fabs(e.dir) == 1.0 && sameDirection(e.eang, e.sang - e.dir * turn, tolerance) &&
               !endIsLost(e.par, e.r1) && !endIsLost(e.par, e.r2);
    }
    default:
        return false;
    }
}

bool sameSize(const Calelm& now, const Calelm& before) {
    return now.type == before.type &&
           (now.type == element::kStraight || (now.par == before.par && now.dir == before.dir));
}

} // namespace

bool endIsLost(double parameter, double radius) {
    return radius != 0.0 && tauAtRadius(parameter, radius) < kAngleStep &&
           standardStation(parameter, radius) > kJointTolerance;
}

bool isTangentChain(std::span<const Calelm> chain, const Calelm& firstBefore, const Calelm& lastBefore,
                    double jointTolerance) {
    for (const Calelm& e : chain) {
        if (!allFinite(e) || !(e.len > 0.0) || !turnsTrue(e)) {
            return false;
        }
    }
    for (std::size_t i = 1; i < chain.size(); ++i) {
        const Calelm& before = chain[i - 1];
        const Calelm& after = chain[i];
        if (!samePoint(before.ex, before.ey, after.sx, after.sy, jointTolerance) ||
            !sameDirection(before.eang, after.sang)) {
            return false;
        }
    }
    const Calelm& first = chain.front();
    const Calelm& last = chain.back();
    return sameSize(first, firstBefore) && sameSize(last, lastBefore) &&
           samePoint(first.sx, first.sy, firstBefore.sx, firstBefore.sy, kJointTolerance) &&
           sameDirection(first.sang, firstBefore.sang) &&
           samePoint(last.ex, last.ey, lastBefore.ex, lastBefore.ey, kJointTolerance) &&
           sameDirection(last.eang, lastBefore.eang);
}

bool onlyCuts(std::span<const Calelm> chain, const Calelm& firstBefore, const Calelm& lastBefore) {
    return chain.front().len <= firstBefore.len + kRoundedJointTolerance &&
           chain.back().len <= lastBefore.len + kRoundedJointTolerance;
}

int completeClothoid(Calelm& clothoid) {
    Calelm made = clothoid;
    const int status = signed16(ali_makA(&made));
    if (status < 0) {
        return -1;
    }
    const double moved = std::hypot(made.sx - clothoid.sx, made.sy - clothoid.sy) +
                         std::hypot(made.ex - clothoid.ex, made.ey - clothoid.ey);
    if (!(moved <= kJointTolerance + kSameAngle * made.len)) {
        return -1;
    }
    made.sx = clothoid.sx;
    made.sy = clothoid.sy;
    made.ex = clothoid.ex;
    made.ey = clothoid.ey;
    clothoid = made;
    return 0;
}

bool keepsLongArcs(std::span<const Calelm> chain, const Calelm& firstBefore, const Calelm& lastBefore) {
    const auto kept = [](const Calelm& now, const Calelm& before) {
        return now.type != element::kArc || now.k3 <= kPi || now.len <= before.len + kRoundedJointTolerance;
    };
    return kept(chain.front(), firstBefore) && kept(chain.back(), lastBefore);
}

void completeAboutCentre(Calelm& arc) {
    const double startCalc[2] = {arc.sx, -arc.sy};
    const double endCalc[2] = {arc.ex, -arc.ey};
    const plane::Vec centreCalc{arc.k1, -arc.k2};
    double sangCalc = 0.0;
    double eangCalc = 0.0;
    double shorterSweep = 0.0;
    double shorterLength = 0.0;
    ali_KEnAng(startCalc, endCalc, arc.dir, arc.par, centreCalc.x, centreCalc.y, &sangCalc, &eangCalc, &shorterSweep,
               &shorterLength);
    arc.type = element::kArc;
    arc.r1 = arc.r2 = 0.0;
    arc.sang = otherPlaneAngle(sangCalc);
    arc.eang = otherPlaneAngle(eangCalc);
    arc.k3 = plane::sweepBetween(centreCalc, {startCalc[0], startCalc[1]}, {endCalc[0], endCalc[1]}, arc.dir);
    arc.len = roundLength(arc.k3 * arc.par);
}

int completeElement(Calelm& e) {
    const int status = e.type == element::kClothoid ? completeClothoid(e) : signed16(ali_mak(&e, 0));
    return status == 0 ? 0 : -1;
}

bool finishChain(std::span<Calelm> chain, const Calelm& firstBefore, const Calelm& lastBefore) {
    levelChain(chain, firstBefore, lastBefore);
    return isTangentChain(chain, firstBefore, lastBefore);
}

int completeSurveyChain(std::span<Calelm> chain, const Calelm& firstBefore, const Calelm& lastBefore, Given given) {
    for (Calelm& e : chain) {
        const bool outer = &e == &chain.front() || &e == &chain.back();
        if (given == Given::CutLong && outer && e.type == element::kArc) {
            completeAboutCentre(e);
        } else if (completeElement(e) != 0) {
            return -1;
        }
    }
    const bool right = finishChain(chain, firstBefore, lastBefore) &&
                       (given == Given::Anywhere || onlyCuts(chain, firstBefore, lastBefore));
    return right ? 0 : -1;
}

} // namespace fenmark::alignment
