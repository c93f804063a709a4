// As what an element is written. Its type is what the drawing's row says; a changed row, or a radius of hundreds of
// digits, may give an arc no radius that a file can hold.
#pragma once

#include "drawing/element.h"

#include <cmath>

namespace fenmark::exchange {

// Metres. The centre of a larger circle is not known to a tenth of a millimetre.
inline constexpr double kLargestRadius = 1e12;

// An arc without such a radius is a straight where it lies within a line's tolerance of its chord; one with two radii is
// the clothoid between them, as it is drawn and asked for stations. A clothoid without any curvature is a straight.
[[nodiscard]] inline drawing::ElementType shapeOf(const drawing::Element& element) {
    using drawing::ElementType;
    if (element.type == ElementType::Clothoid && !std::isfinite(element.startRadius) &&
        !std::isfinite(element.endRadius)) {
        return ElementType::Straight;
    }
    if (element.type != ElementType::Arc || element.startRadius <= kLargestRadius) {
        return element.type;
    }
    // The rise of an arc over its chord is an eighth of its turn times its length.
    if (!(std::abs(element.turn()) * element.length > 8.0 * drawing::kLineTolerance)) {
        return ElementType::Straight;
    }
    return element.startRadius == element.endRadius ? ElementType::Arc : ElementType::Clothoid;
}

} // namespace fenmark::exchange
