// The PI of a clothoid: the meeting point of the tangents at its two ends.
#include "output/alignment_passes.h"

#include "host/boundary/geometry.h"
#include "sima/text/number.h"

#include <fenmark/alignment/construction.h>

namespace fenmark::output {

namespace {

constexpr double kRayLength = 10.0; // metres
constexpr double kHalfTurn = 180.0; // degrees

host::MdGeLine3d ray(const host::MdGePoint3d& from, double angle) {
    return {from, host::mdutPolar(from, angle, kRayLength)};
}

} // namespace

void computeSpiralPi(sima::EntityData& element) {
    const host::MdGePoint3d start = element.startPoint();
    const host::MdGePoint3d end = element.endPoint();

    // Drawing coordinates go in as they are. The library takes its x as north and turns clockwise from it, so the
    // tangents that come back belong to a curve that turns clockwise in the drawing for the direction "L".
    Calelm record{};
    record.type = ALI_CLOTHOID;
    record.sx = start.x;
    record.sy = start.y;
    record.ex = end.x;
    record.ey = end.y;
    record.dir = element.directionSign();
    record.par = sima::toReal(element.curve().parameterA);
    record.r1 = element.absStartRadius();
    record.r2 = element.absEndRadius();
    record.len = element.clothoidLength();
    // The status is not looked at: after a failure both tangents hold what the library leaves there.
    ali_makA(&record);

    // Each ray runs at its own point's height, so that rays of unequal heights never meet and the PI stays at zero.
    host::MdGePoint3d pi;
    const host::MdGeLine3d startRay = ray(start, record.sang);
    const host::MdGeLine3d endRay = ray(end, record.eang + host::degreesToRadians(kHalfTurn));
    startRay.intersectWith(endRay, pi, host::MdGeContext::gTol);
    if (element.curve().sparePoint2 != pi) { // a straight stays without
        element.editCurve().sparePoint2 = pi;
    }
}

void resolveSpiralPis(sima::Array<sima::EntityData>& elements) {
    for (sima::EntityData& element : elements) {
        if (element.type == "A") {
            computeSpiralPi(element);
        }
    }
}

} // namespace fenmark::output
