/** The fit of an end element of a chain to its clothoid. Records are in the survey plane. */
#pragma once

#include "alignment/compound/laying.h"

namespace fenmark::alignment::laying {

enum class Refit {
    Cut,        ///< the outer end and its tangent stay, the joint is the clothoid's end
    Laid,       ///< built from the clothoid on with its own length
    Refused,    ///< the cut element would change its tangents, and it cannot be built: unchanged
    Impossible, ///< no such element runs between the outer end and the clothoid: unchanged
};

/** Whether the element joins the clothoid now. */
inline bool isFitted(Refit refit) {
    return refit == Refit::Cut || refit == Refit::Laid;
}

/** Fits a straight or an arc that comes before the clothoid (partFirst) or after it. */
Refit refitEnd(Calelm& part, const Calelm& clothoid, bool partFirst);

/**
 * Rebuilds a straight that keeps both ends, next to a gap; one whose own azimuth is not that of its ends is built from
 * the clothoid on.
 */
Refit rebuildStraight(Calelm& straight, const Calelm& clothoid, bool straightFirst);

} // namespace fenmark::alignment::laying
