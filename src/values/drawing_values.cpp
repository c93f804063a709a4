// Comparison of points in drawing axes.
#include "values/drawing_values.h"

#include <cmath>

namespace fenmark::host {

bool MdGePoint3d::isEqualTo(const MdGePoint3d& other, double tolerance) const {
    return std::abs(x - other.x) <= tolerance && std::abs(y - other.y) <= tolerance &&
           std::abs(z - other.z) <= tolerance;
}

} // namespace fenmark::host
