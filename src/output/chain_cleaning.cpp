// Zero-length elements and nearly straight neighbours.
#include "output/chain_cleaning.h"

#include "host/boundary/geometry.h"

#include <algorithm>
#include <utility>

namespace fenmark::output {

namespace {

constexpr double kMergeAngle = host::degreesToRadians(1.0);

bool hasNoLength(const sima::EntityData& element) {
    return element.startPoint().isEqualTo(element.endPoint(), host::MdGeContext::gTol);
}

bool canMerge(const sima::EntityData& current, const sima::EntityData& next) {
    if (current.type != "S" || next.type != "S") {
        return false;
    }
    const double a = host::mdutAngle(current.startPoint(), current.endPoint());
    const double b = host::mdutAngle(next.startPoint(), next.endPoint());
    return a >= b - kMergeAngle && b + kMergeAngle >= a;
}

} // namespace

void removeZeroLengthElements(sima::Array<sima::EntityData>& elements) {
    elements.erase(std::remove_if(elements.begin(), elements.end(), hasNoLength), elements.end());
}

void mergeStraights(sima::Array<sima::EntityData>& elements) {
    if (elements.empty()) {
        return;
    }
    std::size_t current = 0;
    for (std::size_t next = 1; next < elements.size(); ++next) {
        sima::EntityData& following = elements[next];
        if (canMerge(elements[current], following)) {
            sima::EntityData& chord = elements[current];
            chord.endX = std::move(following.endX);
            chord.endY = std::move(following.endY);
            chord.endZ = following.endZ;
        } else if (++current != next) {
            elements[current] = std::move(following);
        }
    }
    elements.resize(current + 1);
}

} // namespace fenmark::output
