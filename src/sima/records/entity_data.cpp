// One element of a route: what follows from its texts.
#include "sima/records/entity_data.h"

#include "sima/text/number.h"

#include <cmath>
#include <limits>
#include <string_view>

namespace fenmark::sima {

namespace {

double absoluteOf(std::string_view text) {
    return std::abs(toReal(text));
}

double radiusOrInfinity(double radius) {
    return radius == 0.0 ? std::numeric_limits<double>::infinity() : radius;
}

} // namespace

host::MdGePoint3d EntityData::startPoint() const {
    return {toReal(startX), toReal(startY), startZ};
}

host::MdGePoint3d EntityData::endPoint() const {
    return {toReal(endX), toReal(endY), endZ};
}

double EntityData::clothoidLength() const {
    const double parameter = toReal(curve().parameterA);
    // The clothoid's length from its point of infinite radius to the radius r.
    const auto lengthTo = [parameter](double r) { return r == 0.0 ? 0.0 : parameter * parameter / r; };
    return std::abs(lengthTo(absEndRadius()) - lengthTo(absStartRadius()));
}

double EntityData::absStartRadius() const {
    return absoluteOf(curve().startRadius);
}

double EntityData::absEndRadius() const {
    return absoluteOf(curve().endRadius);
}

double EntityData::absRadius() const {
    return absoluteOf(curve().radius);
}

double EntityData::curvatureStartRadius() const {
    return radiusOrInfinity(absStartRadius());
}

double EntityData::curvatureEndRadius() const {
    return radiusOrInfinity(absEndRadius());
}

double EntityData::directionSign() const {
    return direction == "L" ? 1.0 : -1.0;
}

std::int16_t EntityData::directionFlag() const {
    return direction == "L" ? std::int16_t{-1} : std::int16_t{0};
}

} // namespace fenmark::sima
