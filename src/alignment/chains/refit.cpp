// The end elements of a chain fitted to the clothoid between them.
//
// An end element keeps its outer end if the part that stays still has its own tangent there and the clothoid's tangent
// at the joint; otherwise it is laid from the clothoid on with its own length.
// Axes: records in the survey plane; Vec values in the calculation plane. Source: plane geometry.
#include "fenmark/alignment/chains.h"

#include "fenmark/alignment/compound.h"
#include "fenmark/alignment/construction.h"

#include "alignment/chains/refit.h"

#include "alignment/calelm/tolerances.h"
#include "alignment/primitives/tools.h"

namespace fenmark::alignment::laying {

Refit refitEnd(Calelm& element, const Calelm& clothoid, bool elementFirst) {
    const Vec joint = elementFirst ? startOf(clothoid) : endOf(clothoid);
    const double tangent = elementFirst ? clothoid.sang : clothoid.eang;
    Calelm copy = element;
    if (elementFirst) {
        setEnd(copy, joint);
    } else {
        setStart(copy, joint);
    }
    if (signed16(ali_mak(&copy, 0)) != 0) {
        return Refit::impossible;
    }
    const bool keepsOuter =
        elementFirst ? sameDirection(copy.sang, element.sang) : sameDirection(copy.eang, element.eang);
    if (keepsOuter && sameDirection(elementFirst ? copy.eang : copy.sang, tangent)) {
        element = copy;
        return Refit::cut;
    }
    copy = element;
    if (elementFirst) {
        setEnd(copy, joint);
        copy.eang = tangent;
    } else {
        setStart(copy, joint);
        copy.sang = tangent;
    }
    if (signed16(ali_mak(&copy, elementFirst ? 2 : 1)) != 0) {
        return Refit::refused;
    }
    element = copy;
    return Refit::laid;
}

} // namespace fenmark::alignment::laying

using namespace fenmark::alignment;
using namespace fenmark::alignment::laying;

extern "C" {

int alimake_rfAArf(Calelm chain[4], double* dl) {
    double gap = 0.0;
    const int status = ali_makRAAR(&chain[0], &chain[1], &chain[2], &chain[3], &gap);
    if (status != 0) {
        return status;
    }
    // The gap is positive along the tangent; where the clothoids overlap, the way between their flat ends runs back.
    const Vec between = startOf(chain[2]) - endOf(chain[1]);
    const double azimuth = plane::wrapped(-plane::direction(between));
    if (!sameDirection(azimuth, chain[1].eang, kOneSecond)) {
        gap = -gap;
    }
    *dl = gap;
    // An arc that cannot be built stays as it was; the clothoids are laid all the same.
    refitEnd(chain[0], chain[1], true);
    refitEnd(chain[3], chain[2], false);
    return 0;
}

int alimake_rfArf(Calelm chain[3], const double* dl) {
    refitEnd(chain[0], chain[1], true);
    if (std::fabs(*dl) < kNoShift) {
        refitEnd(chain[2], chain[1], false);
    }
    return 0;
}

int alimake_rfAsf(Calelm chain[3], double dl, int side) {
    const bool straightFirst = side == 1;
    Calelm straight = chain[straightFirst ? 0 : 2];
    Calelm& arc = chain[straightFirst ? 2 : 0];
    const Calelm& clothoid = chain[1];
    int result = 0;
    if (std::fabs(dl) < kNoShift) {
        switch (refitEnd(straight, clothoid, straightFirst)) {
        case Refit::impossible:
            return -1;
        case Refit::cut:
            break;
        case Refit::laid:
        case Refit::refused:
            result = -3;
            break;
        }
    } else if (signed16(ali_makS(&straight)) != 0) {
        return -1;
    }
    switch (refitEnd(arc, clothoid, !straightFirst)) {
    case Refit::impossible:
        return -1;
    case Refit::cut:
        break;
    case Refit::laid:
    case Refit::refused:
        result = -2;
        break;
    }
    chain[straightFirst ? 0 : 2] = straight;
    return result;
}

} // extern "C"
