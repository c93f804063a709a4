// Which stretches of an alignment lie near a place.
#include "exchange/plan/near_stretches.h"

#include "curve/curve.h"

#include <utility>

namespace fenmark::exchange {

namespace {

constexpr double kBoxSlack = 0.1; // metres, for points of a part that rounding puts beside its box

drawing::Extent boxAround(const curve::Curve& curve) {
    const curve::Box box = curve::boxOf(curve);
    drawing::Extent extent;
    extent.add(box.minX - kBoxSlack, box.minY - kBoxSlack);
    extent.add(box.maxX + kBoxSlack, box.maxY + kBoxSlack);
    return extent;
}

} // namespace

bool NearStretches::find(const drawing::AlignmentGeometry& geometry) const {
    const curve::Chain& chain = geometry.chain();
    for (std::size_t i = 0; i < chain.curves().size(); ++i) {
        const curve::Curve& curve = chain.curves()[i];
        if (curve.length > 0.0 && isNear(boxAround(curve)) &&
            !halve(curve, 0.0, curve.length, geometry.startStation() + chain.distanceOf(i))) {
            return false;
        }
    }
    return true;
}

// The part is near.
bool NearStretches::halve(const curve::Curve& curve, double from, double to, double startStation) const {
    if (to - from <= shortest) {
        return take(startStation + from, startStation + to);
    }
    const double middle = (from + to) / 2.0;
    for (const auto& [begin, end] : {std::pair(from, middle), std::pair(middle, to)}) {
        if (*looks == 0) {
            return false;
        }
        --*looks;
        if (isNear(boxAround(curve::part(curve, begin, end))) && !halve(curve, begin, end, startStation)) {
            return false;
        }
    }
    return true;
}

} // namespace fenmark::exchange
