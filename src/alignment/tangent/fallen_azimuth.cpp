// Azimuths that fell to an axis. Survey plane; names with Calc are in the calculation plane.
#include "alignment/tangent/fallen_azimuth.h"

#include "alignment/calelm/planes.h"
#include "alignment/calelm/rounding.h"
#include "alignment/primitives/plane.h"
#include "alignment/primitives/tools.h"

namespace fenmark::alignment {

namespace {

// Exactly an axis that an azimuth falls to: north, or south on an element that was run the other way.
bool isFallen(double azimuth) {
    return azimuth == 0.0 || azimuth == kPi;
}

double apart(double azimuth1, double azimuth2) {
    return std::fabs(plane::wrappedSigned(azimuth1 - azimuth2));
}

bool fell(double azimuth, double neighbour) {
    const double difference = apart(azimuth, neighbour);
    return isFallen(azimuth) && difference > kPlaneAngleZero && difference <= kPlaneAngleZero + kAngleStep;
}

// The largest rounded azimuth that falls, 9.723e-6: within 1e-5 of the axis and of all that is a little more than 1e-5
// beside it.
constexpr double kLastStep = 7 * kAngleStep;
static_assert(kLastStep < kPlaneAngleZero && kLastStep + kAngleStep >= kPlaneAngleZero);

// Gives a straight that runs about 1e-5 beside an axis, towards the neighbour's azimuth, the last step that falls.
void settle(Calelm& straight, double axis, double neighbour) {
    const double raised = plane::wrapped(axis + std::copysign(kLastStep, plane::wrappedSigned(neighbour - axis)));
    const double own = -directionOf(straight.ex - straight.sx, straight.sy - straight.ey);
    if (apart(own, raised) <= kAngleStep) {
        straight.sang = straight.eang = raised;
    }
}

// Raises a tangent that fell to the azimuth that it has at its neighbour.
void raise(Calelm& e, double& tangent, double neighbour) {
    if (e.type == element::kStraight) {
        settle(e, tangent, neighbour);
    } else {
        tangent = neighbour;
    }
}

} // namespace

double lostByFalling(const Calelm& e) {
    return isFallen(e.sang) || isFallen(e.eang) ? kPlaneAngleZero : 0.0;
}

void levelJoint(Calelm& before, Calelm& after) {
    if (fell(before.eang, after.sang)) {
        raise(before, before.eang, after.sang);
    } else if (fell(after.sang, before.eang)) {
        raise(after, after.sang, before.eang);
    }
}

void levelFarEnd(Calelm& e, bool atEnd, double given) {
    double& tangent = atEnd ? e.eang : e.sang;
    if (fell(tangent, given)) {
        raise(e, tangent, given);
    } else if (fell(given, tangent)) {
        if (e.type == element::kStraight) {
            settle(e, given, tangent);
        } else {
            tangent = given;
        }
    }
}

void levelChain(std::span<Calelm> chain, const Calelm& firstBefore, const Calelm& lastBefore) {
    levelFarEnd(chain.front(), false, firstBefore.sang);
    levelFarEnd(chain.back(), true, lastBefore.eang);
    for (std::size_t i = 1; i < chain.size(); ++i) {
        levelJoint(chain[i - 1], chain[i]);
    }
}

} // namespace fenmark::alignment
