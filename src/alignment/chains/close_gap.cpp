// The gap of a chain closed by moving one of its elements.
//
// dl is the gap, metres; it becomes 0. Nothing is written before everything has been built.
// Axes: records and azimuths in the survey plane; Vec values in the calculation plane. Source: plane geometry.
#include "fenmark/alignment/chains.h"

#include "fenmark/alignment/compound.h"
#include "fenmark/alignment/construction.h"
#include "fenmark/alignment/intersection.h"
#include "fenmark/alignment/movement.h"

#include "alignment/calelm/answer.h"
#include "alignment/calelm/tolerances.h"
#include "alignment/chains/refit.h"
#include "alignment/primitives/tools.h"

#include <array>

using namespace fenmark::alignment;
using namespace fenmark::alignment::laying;

namespace {

// The straight through p square to the azimuth, reaching `half` to both sides; false when it has no length.
bool crossLine(Vec p, double azimuth, double half, Calelm& line) {
    const Vec across = half * leftOf(plane::unit(-azimuth));
    line = Calelm{};
    setStart(line, p - across);
    setEnd(line, p + across);
    return signed16(ali_makS(&line)) == 0;
}

} // namespace

extern "C" {

int moveR_dl0_rfAArf(int side, double* dl, Calelm chain[4]) {
    return fenmark::alignment::answerInPlace({&chain[0], &chain[1], &chain[2], &chain[3]}, [&]() -> int {
        const bool moveLast = signed16(side) == 1;
        Calelm& arc = chain[moveLast ? 3 : 0];
        if (arc.type != element::kArc || !std::isfinite(*dl) || !std::isfinite(chain[1].eang)) {
            return -1;
        }
        Calelm moved = arc;
        if (signed16(ali_pmovR(&arc, moveLast ? -*dl : *dl, chain[1].eang, &moved)) != 0) {
            return -1;
        }
        arc = moved;
        *dl = 0.0;
        return 0;
    });
}

int moveR_dl0_rfArf(int side, double* dl, Calelm chain[3]) {
    return fenmark::alignment::answerInPlace(
        {&chain[0], &chain[1], &chain[2]},
        [&]() -> int { // The arc built anew takes the length of the clothoid, not its own: existing results have it so.
            if (signed16(side) == 1) {
                Calelm arc = chain[2];
                arc.sx = chain[1].ex;
                arc.sy = chain[1].ey;
                arc.len = chain[1].len;
                arc.sang = chain[1].eang;
                if (signed16(ali_makangR(&arc, 1)) != 0) {
                    return -1;
                }
                chain[2] = arc;
                *dl = 0.0;
                return 0;
            }
            Calelm clothoid = chain[1];
            clothoid.ex = chain[2].sx;
            clothoid.ey = chain[2].sy;
            clothoid.eang = chain[2].sang;
            if (signed16(ali_makangA(&clothoid, 2)) < 0) {
                return -1;
            }
            Calelm arc = chain[0];
            arc.ex = clothoid.sx;
            arc.ey = clothoid.sy;
            arc.len = clothoid.len;
            arc.eang = clothoid.sang;
            if (signed16(ali_makangR(&arc, 2)) != 0) {
                return -1;
            }
            chain[1] = clothoid;
            chain[0] = arc;
            *dl = 0.0;
            return 0;
        });
}

int moveR_dl0_rfAsf(int moverSide, int elementSide, double* dl, Calelm chain[3]) {
    return fenmark::alignment::answerInPlace({&chain[0], &chain[1], &chain[2]}, [&]() -> int {
        const bool straightFirst = signed16(elementSide) == 1;
        std::array<Calelm, 3> made{chain[0], chain[1], chain[2]};
        Calelm& straight = made[straightFirst ? 0 : 2];
        Calelm& arc = made[straightFirst ? 2 : 0];
        Calelm& clothoid = made[1];

        // Where the normal of the clothoid's flat end meets the straight.
        const Vec flat = straightFirst ? startOf(clothoid) : endOf(clothoid);
        Calelm line{};
        if (!crossLine(flat, straightFirst ? clothoid.sang : clothoid.eang, 2.0 * *dl, line)) {
            return -1;
        }
        double crossing[2];
        double onStraight = 0.0;
        double onLine = 0.0;
        if (signed16(ali_intpSS(&straight, &line, crossing, &onStraight, &onLine)) < 0) {
            return -1;
        }
        // Its direction is that of the move: from the first element of the chain towards the last.
        setStart(line, straightFirst ? fromSurvey(crossing) : flat);
        setEnd(line, straightFirst ? flat : fromSurvey(crossing));
        if (signed16(ali_makS(&line)) != 0) {
            return -1;
        }
        const bool moveLast = signed16(moverSide) == 1;
        Calelm& mover = made[moveLast ? 2 : 0];
        Calelm moved = mover;
        if (signed16(ali_pmov(&mover, moveLast ? -*dl : *dl, line.sang, &moved)) != 0) {
            return -1;
        }
        mover = moved;
        double gap = 0.0;
        if (signed16(ali_makSAR(elementSide, &straight, &clothoid, &arc, &gap)) != 0) {
            return -1;
        }
        // What is left is the rounding of the moved element, which turns a short straight; more means that dl was not
        // the gap of this chain. The gap is measured at the foot of the arc's centre, which for a flat clothoid lies
        // hundreds of metres beyond the straight.
        const Vec inner = straightFirst ? endOf(straight) : startOf(straight);
        const double reach = std::fabs(plane::dot(centreOf(arc) - inner, plane::unit(-straight.sang)));
        if (!(gap <= kRoundedJointTolerance * (1.0 + reach / straight.len))) {
            return -1;
        }
        const int status = alimake_rfAsf(made.data(), 0.0, elementSide);
        if (status == -1) {
            return -1;
        }
        chain[0] = made[0];
        chain[1] = made[1];
        chain[2] = made[2];
        *dl = 0.0;
        return status;
    });
}

} // extern "C"
