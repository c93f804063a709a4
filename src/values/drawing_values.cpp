// Comparison of points in drawing axes, and which identifiers are valid.
#include "values/drawing_values.h"

#include <cmath>

namespace fenmark::host {

namespace {

IdentifierCheck identifierCheck = nullptr; // a host answers on one thread, as a command runs

} // namespace

void setIdentifierCheck(IdentifierCheck check) {
    identifierCheck = check;
}

bool MdDbObjectId::isValid() const {
    return value_ != 0 && (identifierCheck == nullptr || identifierCheck(*this));
}

bool MdGePoint3d::isEqualTo(const MdGePoint3d& other, double tolerance) const {
    return std::abs(x - other.x) <= tolerance && std::abs(y - other.y) <= tolerance &&
           std::abs(z - other.z) <= tolerance;
}

} // namespace fenmark::host
