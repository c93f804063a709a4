// The element pass: each element of a route's chain goes to the host, and each element after a curve restarts where the
// host says that the curve ended.
#include "output/alignment_passes.h"

#include "host/boundary/geometry.h"
#include "host/boundary/mirdan_exception.h"
#include "output/leading_clothoid.h"
#include "sima/text/number.h"

#include <memory>
#include <stdexcept>
#include <string>

namespace fenmark::output {

namespace {

constexpr double kAuxiliaryTangentLength = 100.0; // metres
constexpr std::int32_t kSpiralKind = 1;
constexpr std::int32_t kSpiralRefused = 77;
constexpr std::int32_t kCurveRefused = 777;

using host::AlignmentElement;
using host::AlignmentElements;
using host::MdGePoint3d;

// Elements are passed on in the plan: heights stay behind.
MdGePoint3d planPoint(const MdGePoint3d& point) {
    return {point.x, point.y, 0.0};
}

void raiseIfFailed(std::int32_t status, std::int32_t code) {
    if (status != 0) {
        throw new host::MirdanException("Error at " + std::to_string(code));
    }
}

std::unique_ptr<AlignmentElement> addLine(AlignmentElements& alignment, const MdGePoint3d& start,
                                          const MdGePoint3d& end) {
    std::unique_ptr<AlignmentElement> line;
    if (alignment.addFixedLine(start, end, line) != 0) {
        throw new host::MirdanException("Corridor Utility Error.");
    }
    return line;
}

// The element behind a new curve begins where the host says that the curve ends, so a clothoid there gets its PI anew.
void carryOn(AlignmentElement& curve, sima::Array<sima::EntityData>& elements, std::size_t next) {
    if (next >= elements.size()) {
        return;
    }
    sima::EntityData& element = elements[next];
    element.startX = sima::formatReal(curve.endX());
    element.startY = sima::formatReal(curve.endY());
    computeSpiralPi(element); // whatever its type; only a clothoid's is used
}

void addStraight(AlignmentElements& alignment, sima::EntityData& element) {
    const auto line = addLine(alignment, planPoint(element.startPoint()), planPoint(element.endPoint()));
    element.spareInt = line->elementId();
}

// A line that leads into a clothoid at the start of a chain, from behind it along its first tangent.
void addAuxiliaryTangent(AlignmentElements& alignment, const sima::EntityData& element) {
    const MdGePoint3d start = element.startPoint();
    const double degrees = host::radiansToDegrees(host::mdutAngle(element.curve().sparePoint2, start));
    const MdGePoint3d behind = host::mdutPolar(start, host::degreesToRadians(degrees), kAuxiliaryTangentLength);
    const auto line = addLine(alignment, behind, planPoint(start));
    static_cast<void>(line->elementId());
}

// The identifier of the element before a clothoid. A leading clothoid has none, which ends the import on purpose; the
// alignment keeps the auxiliary line.
std::int32_t elementBefore(const sima::Array<sima::EntityData>& elements, std::size_t i) {
    try {
        return elements[i - 1].spareInt;
    } catch (const std::invalid_argument&) {
        throw LeadingClothoid();
    }
}

void addSpiral(AlignmentElements& alignment, sima::Array<sima::EntityData>& elements, std::size_t i) {
    sima::EntityData& element = elements[i];
    if (i == 0) {
        addAuxiliaryTangent(alignment, element);
    }
    const std::int32_t before = elementBefore(elements, i);
    std::unique_ptr<AlignmentElement> spiral;
    const std::int32_t status = alignment.addFixedSpiral(
        before, planPoint(element.startPoint()), element.curve().sparePoint2, element.curvatureStartRadius(),
        element.curvatureEndRadius(), element.clothoidLength(), element.directionFlag(), kSpiralKind, spiral);
    raiseIfFailed(status, kSpiralRefused);
    element.spareInt = spiral->elementId();
    carryOn(*spiral, elements, i + 1);
}

void addArc(AlignmentElements& alignment, sima::Array<sima::EntityData>& elements, std::size_t i) {
    sima::EntityData& element = elements[i];
    std::unique_ptr<AlignmentElement> arc;
    const std::int32_t status = alignment.addFixedCurve(planPoint(element.startPoint()), planPoint(element.endPoint()),
                                                        element.absRadius(), element.directionFlag(), arc);
    raiseIfFailed(status, kCurveRefused);
    element.spareInt = arc->elementId();
    element.editCurve().sparePoint1.x = arc->arcValue1();
    element.editCurve().sparePoint1.y = arc->arcValue2();
    carryOn(*arc, elements, i + 1);
}

} // namespace

std::int32_t addAlignmentElements(AlignmentElements& alignment, sima::Array<sima::EntityData>& elements) {
    try {
        for (std::size_t i = 0; i < elements.size(); ++i) {
            const std::string_view type = elements[i].type;
            if (type == "S") {
                addStraight(alignment, elements[i]);
            } else if (type == "A") {
                addSpiral(alignment, elements, i);
            } else if (type == "R") {
                addArc(alignment, elements, i);
            }
        }
    } catch (host::MirdanException* exception) {
        delete exception; // its text reaches nobody: the caller only learns that the pass was stopped
        return -1;
    }
    return 0;
}

} // namespace fenmark::output
