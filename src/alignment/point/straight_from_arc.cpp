// Straights that leave or reach a given arc, through or towards a point: plain, and with a clothoid between.
//
// Symbols: P the point, C and R the arc's centre and radius, D = |P - C|, phi the direction C->P; rho = R + dR offset
// radius and Xm abscissa of C for the clothoid; T tangent point; u direction of the straight; dir +1 left.
// Axes: calculation plane for every Vec, survey plane for the records.
// Derivation: the tangent from P touches the circle at the radial angle phi -+ acos(R / D), the sign being that which
// makes the arc's travel at T point towards P (or come from it). With a clothoid the tangent of the offset circle
// passes P, asin(rho / D) off the direction to C, and the clothoid's flat end lies Xm before the contact.
// Source: plane geometry; shift relations, [Kasper 1968].
#include "fenmark/alignment/point.h"

#include "fenmark/alignment/clothoid.h"
#include "fenmark/alignment/construction.h"
#include "fenmark/alignment/conventions.h"

#include "alignment/calelm/answer.h"
#include "alignment/calelm/planes.h"
#include "alignment/calelm/rounding.h"
#include "alignment/compound/laying.h"
#include "alignment/point/rounded_elements.h"
#include "alignment/primitives/tools.h"

#include <algorithm>
#include <array>

using namespace fenmark::alignment;
using namespace fenmark::alignment::laying;

namespace {

// A point this little inside a circle lies on it: noise of plane coordinates of 1e5 m, metres. Seen: 6.3e-12, 1.3e-3.
constexpr double kOnCircle = 1e-7;

} // namespace

extern "C" {

int ali_makrS_P(const double p[2], int end, Calelm* r, Calelm* s) {
    return fenmark::alignment::answerInPlace({r, s}, [&]() -> int {
        const bool arcFirst = signed16(end) == 1;
        const Vec centre = centreOf(*r);
        const Vec toPoint = fromSurvey(p) - centre;
        const double D = plane::norm(toPoint);
        if (!finite(toPoint) || !isTurn(r->dir) || !(r->par > 0.0) || !(s->len > 0.0) || !(r->par <= D + kOnCircle)) {
            return -1;
        }
        const double side = arcFirst ? -r->dir : r->dir;
        const double angle = plane::direction(toPoint) + side * std::acos(std::min(r->par / D, 1.0));
        const Vec radial = plane::unit(angle);
        const Vec u = r->dir * leftOf(radial);
        const Vec contact = rounded(centre + r->par * radial);
        const Vec kept = rounded(arcFirst ? startOf(*r) : endOf(*r));
        const double length = roundLength(s->len);

        Calelm arc = *r;
        if (!roundedArc(centre, arcFirst ? kept : contact, arcFirst ? contact : kept, longestSweep(*r), arc) ||
            !keepsTangent(*r, arc, !arcFirst)) {
            return -1;
        }
        const Vec start = arcFirst ? contact : rounded(contact - length * u);
        const Vec finish = arcFirst ? rounded(contact + length * u) : contact;
        // Just below 1e-5 the azimuth falls to 0. Where that of the arc, whose ends were rounded, did not, it stays.
        const double direction = plane::direction(u);
        for (const double azimuth : {ali_CExAng(direction), plane::wrapped(-direction)}) {
            Calelm straight = *s;
            if (straightAlong(start, finish, azimuth, length, straight) &&
                (arcFirst ? finishTangentChain({&arc, &straight}, kJointTolerance)
                          : finishTangentChain({&straight, &arc}, kJointTolerance))) {
                *r = arc;
                *s = straight;
                return 0;
            }
        }
        return -1;
    });
}

int ali_makrAS_P(const double p[2], int end, Calelm* r, Calelm* a, Calelm* s) {
    return fenmark::alignment::answerInPlace({r, a, s}, [&]() -> int {
        const bool straightFirst = signed16(end) == 1;
        if (!isTurn(r->dir) || !(r->par > 0.0)) {
            return -1;
        }
        const Vec point = fromSurvey(p);
        const Vec toCentre = centreOf(*r) - point;
        const double D = plane::norm(toCentre);
        const Offset offset = offsetOf(a->par, r->par);
        if (!(offset.rho <= D)) {
            return -1;
        }
        // Seen from the point the curve turns dir when it comes after the straight, and the other way when run back to it.
        const double turn = straightFirst ? r->dir : -r->dir;
        const double angle = plane::direction(toCentre) - turn * std::asin(offset.rho / D);
        const Vec away = plane::unit(angle);
        const double toFlatEnd = std::sqrt((D - offset.rho) * (D + offset.rho)) - offset.xm;
        // A length of 0 stands for as long as needed.
        const double length = s->len == 0.0 ? toFlatEnd : s->len;
        if (!(toFlatEnd >= kSameLength) || !(std::fabs(length - toFlatEnd) <= kRoundedJointTolerance)) {
            return -1;
        }
        const Vec flat = point + toFlatEnd * away;

        Calelm straight = *s;
        straight.type = element::kStraight;
        straight.len = length;
        straight.dir = 1.0;
        straight.par = straight.r1 = straight.r2 = 0.0;
        const double direction = plane::wrapped(straightFirst ? angle : angle + kPi);
        straight.sang = straight.eang = ali_CExAng(direction);
        if (straightFirst) {
            setStart(straight, point);
        } else {
            setEnd(straight, point);
        }
        int status = signed16(ali_makangS(&straight, straightFirst ? 1 : 2));
        if (status != 0) {
            return status;
        }
        Calelm clothoid{};
        status = layClothoid(flat, away, turn, a->par, 0.0, r->par, !straightFirst, clothoid);
        if (status != 0) {
            return status;
        }
        Calelm arc = *r;
        status = cutArc(arc, straightFirst, straightFirst ? endOf(clothoid) : startOf(clothoid));
        if (status != 0) {
            return status;
        }
        // Just below 1e-5 the azimuth falls to 0, which turns the straight built by it. Where the chain does not bear that,
        // the straight keeps its azimuth.
        Calelm unfallen = straight;
        const Vec far = rounded(point + length * away);
        if (!straightAlong(straightFirst ? point : far, straightFirst ? far : point, plane::wrapped(-direction), length,
                           unfallen)) {
            return -1;
        }
        for (Calelm line : {straight, unfallen}) {
            if (straightFirst ? finishTangentChain({&line, &clothoid, &arc}, kRoundedJointTolerance)
                              : finishTangentChain({&arc, &clothoid, &line}, kRoundedJointTolerance)) {
                *s = line;
                *a = clothoid;
                *r = arc;
                return 0;
            }
        }
        return -1;
    });
}

} // extern "C"
