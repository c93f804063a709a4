// The end elements of a chain fitted to the clothoid between them.
//
// An end element keeps its outer end if the part that stays still has its own tangent there and the clothoid's tangent
// at the joint; otherwise it is built from the clothoid on with its own length.
// Axes: records in the survey plane; Vec values in the calculation plane. Source: plane geometry.
#include "fenmark/alignment/chains.h"

#include "fenmark/alignment/compound.h"
#include "fenmark/alignment/construction.h"

#include "alignment/calelm/answer.h"
#include "alignment/chains/refit.h"

#include "alignment/calelm/tolerances.h"
#include "alignment/primitives/tools.h"
#include "alignment/tangent/fallen_azimuth.h"

#include <algorithm>
#include <array>

namespace fenmark::alignment::laying {

namespace {

// Lays an element from the clothoid on, along its tangent and with its own length.
bool layFromClothoid(Calelm& part, const Calelm& clothoid, bool partFirst) {
    Calelm copy = part;
    (partFirst ? setEnd : setStart)(copy, partFirst ? startOf(clothoid) : endOf(clothoid));
    (partFirst ? copy.eang : copy.sang) = partFirst ? clothoid.sang : clothoid.eang;
    if (signed16(ali_mak(&copy, partFirst ? 2 : 1)) != 0) {
        return false;
    }
    part = copy;
    return true;
}

} // namespace

Refit rebuildStraight(Calelm& straight, const Calelm& clothoid, bool straightFirst) {
    Calelm copy = straight;
    if (signed16(ali_makS(&copy)) != 0) {
        return Refit::Impossible;
    }
    if (sameDirection(copy.sang, straight.sang)) {
        straight = copy;
        return Refit::Cut;
    }
    return layFromClothoid(straight, clothoid, straightFirst) ? Refit::Laid : Refit::Refused;
}

Refit refitEnd(Calelm& part, const Calelm& clothoid, bool partFirst) {
    const Vec joint = partFirst ? startOf(clothoid) : endOf(clothoid);
    const double tangent = partFirst ? clothoid.sang : clothoid.eang;
    Calelm copy = part;
    (partFirst ? setEnd : setStart)(copy, joint);
    const bool built = signed16(ali_mak(&copy, 0)) == 0;
    const auto levelled = [&](Calelm& e) {
        levelFarEnd(e, !partFirst, partFirst ? part.sang : part.eang);
        levelFarEnd(e, partFirst, tangent);
    };
    if (built) {
        levelled(copy);
        const bool keepsOuter = partFirst ? sameDirection(copy.sang, part.sang) : sameDirection(copy.eang, part.eang);
        if (keepsOuter && sameDirection(partFirst ? copy.eang : copy.sang, tangent)) {
            part = copy;
            return Refit::Cut;
        }
    }
    // Two ends leave the side of a half circle open, and a longer arc may be its complement: the centre decides.
    copy = part;
    if (part.type == element::kArc && cutArc(copy, !partFirst, joint) == 0) {
        levelled(copy);
        if (sameDirection(partFirst ? copy.eang : copy.sang, tangent)) {
            part = copy;
            return Refit::Cut;
        }
    }
    if (!built) {
        return Refit::Impossible;
    }
    return layFromClothoid(part, clothoid, partFirst) ? Refit::Laid : Refit::Refused;
}

} // namespace fenmark::alignment::laying

using namespace fenmark::alignment;
using namespace fenmark::alignment::laying;

namespace {

// Takes the status of an element that had to turn. False where no element runs from its outer end to the clothoid.
bool takeStatus(Refit refit, int turned, int& result) {
    if (refit == Refit::Laid || refit == Refit::Refused) {
        result = turned;
    }
    return refit != Refit::Impossible;
}

} // namespace

extern "C" {

int alimake_rfAArf(Calelm chain[4], double* dl) {
    return fenmark::alignment::answerInPlace({&chain[0], &chain[1], &chain[2], &chain[3]}, [&]() -> int {
        std::array<Calelm, 4> made{chain[0], chain[1], chain[2], chain[3]};
        double gap = 0.0;
        const int status = ali_makRAAR(&made[0], &made[1], &made[2], &made[3], &gap);
        if (status != 0) {
            return status;
        }
        // The gap is positive along the tangent; where the clothoids overlap, the way between their flat ends runs back.
        const Vec between = startOf(made[2]) - endOf(made[1]);
        const double azimuth = plane::wrapped(-plane::direction(between));
        if (!sameDirection(azimuth, made[1].eang, kOneSecond)) {
            gap = -gap;
        }
        if (!isFitted(refitEnd(made[0], made[1], true)) || !isFitted(refitEnd(made[3], made[2], false))) {
            return -1;
        }
        std::copy(made.begin(), made.end(), chain);
        *dl = gap;
        return 0;
    });
}

int alimake_rfArf(Calelm chain[3], const double* dl) {
    return fenmark::alignment::answerInPlace({&chain[0], &chain[1], &chain[2]}, [&]() -> int {
        Calelm first = chain[0];
        Calelm last = chain[2];
        if (!isFitted(refitEnd(first, chain[1], true)) ||
            (std::fabs(*dl) < kNoShift && !isFitted(refitEnd(last, chain[1], false)))) {
            return -1;
        }
        chain[0] = first;
        chain[2] = last;
        return 0;
    });
}

int alimake_rfAsf(Calelm chain[3], double dl, int side) {
    return fenmark::alignment::answerInPlace({&chain[0], &chain[1], &chain[2]}, [&]() -> int {
        const bool straightFirst = signed16(side) == 1;
        Calelm straight = chain[straightFirst ? 0 : 2];
        Calelm arc = chain[straightFirst ? 2 : 0];
        const Calelm& clothoid = chain[1];
        int result = 0;
        const bool closed = std::fabs(dl) < kNoShift;
        if (!takeStatus(closed ? refitEnd(straight, clothoid, straightFirst)
                               : rebuildStraight(straight, clothoid, straightFirst),
                        -3, result) ||
            !takeStatus(refitEnd(arc, clothoid, !straightFirst), -2, result)) {
            return -1;
        }
        chain[straightFirst ? 0 : 2] = straight;
        chain[straightFirst ? 2 : 0] = arc;
        return result;
    });
}

} // extern "C"
