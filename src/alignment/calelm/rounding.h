// The two rounding steps. Both are floor-based: a tie goes upwards for negative values too.
#pragma once

#include "alignment/calelm/tolerances.h"

namespace fenmark::alignment {

inline double roundLength(double v) {
    return std::floor(v / kLengthStep + 0.5) * kLengthStep;
}

inline double roundAngle(double v) {
    return std::floor(v / kAngleStep + 0.5) * kAngleStep;
}

// A survey-plane y from a calculation-plane y': the rounding runs on y', so ties of y go downwards.
inline double roundedSurveyY(double yCalc) {
    return std::floor(yCalc / kLengthStep + 0.5) * -kLengthStep;
}

} // namespace fenmark::alignment
