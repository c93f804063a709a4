// The plain values that cross the host boundary: identifiers, points, tolerance, and the angle conversions.
#pragma once

#include <compare>
#include <cstdint>

namespace fenmark::host {

// Opaque 64-bit identifier of one object of the drawing; 0 is null. Stable for the life of the drawing.
class MdDbObjectId {
  public:
    constexpr MdDbObjectId() = default;
    constexpr explicit MdDbObjectId(std::uint64_t value) : value_(value) {}

    constexpr std::uint64_t asUint64() const { return value_; }
    constexpr bool isNull() const { return value_ == 0; }
    // True unless the identifier is null or stale: what it stood for is gone, or never was. Which are stale the host says
    // that answers for the process; where none does, only null is invalid.
    [[nodiscard]] bool isValid() const;

    friend constexpr auto operator<=>(const MdDbObjectId&, const MdDbObjectId&) = default;

  private:
    std::uint64_t value_ = 0;
};

// What says whether an object of an identifier is there. Null for none.
using IdentifierCheck = bool (*)(MdDbObjectId id);
void setIdentifierCheck(IdentifierCheck check);

// A point in drawing axes: x east, y north, z up, metres.
struct MdGePoint3d {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    // True if the points agree in all three coordinates within the tolerance (metres).
    bool isEqualTo(const MdGePoint3d& other, double tolerance) const;

    friend bool operator==(const MdGePoint3d&, const MdGePoint3d&) = default;
};

// The plan position of a station, drawing axes, metres.
struct PlanPoint {
    double x = 0.0;
    double y = 0.0;

    friend bool operator==(const PlanPoint&, const PlanPoint&) = default;
};

constexpr double degreesToRadians(double degrees) {
    return degrees / 180.0 * 3.141592653589793;
}
constexpr double radiansToDegrees(double radians) {
    return radians * 180.0 / 3.141592653589793;
}

} // namespace fenmark::host
