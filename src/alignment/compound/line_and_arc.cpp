// The clothoid between a straight and an arc that are fixed.
//
// Symbols: C centre and R radius of the arc, rho = R + dR its offset radius, Xm abscissa of C in the clothoid's frame,
// u direction of the straight in the sense of travel, n its left normal, h distance of C from the straight, positive to
// the left; dir +1 left.
// Axes: calculation plane for every Vec, survey plane for the records.
// Derivation: the clothoid's tangent at its origin is parallel to the straight and at the distance rho from C, so the
// origin lies Xm before the foot of C (behind it when the arc comes first). Between it and the straight the gap
// | |h| - rho | is left. Source: shift relations, [Kasper 1968].
#include "fenmark/alignment/compound.h"

#include "alignment/calelm/answer.h"
#include "alignment/calelm/tolerances.h"
#include "alignment/compound/laying.h"
#include "alignment/primitives/tools.h"

using namespace fenmark::alignment;
using namespace fenmark::alignment::laying;

extern "C" int ali_makSAR(int side, const Calelm* s, Calelm* a, const Calelm* r, double* D) {
    return fenmark::alignment::answerInPlace({a}, [&]() -> int {
        if (s->type != element::kStraight || r->type != element::kArc || !isTurn(r->dir)) {
            return -1;
        }
        const Vec chord = endOf(*s) - startOf(*s);
        const double length = plane::norm(chord);
        if (!(length >= kSameLength)) {
            return -1;
        }
        const Vec u = (1.0 / length) * chord;
        const Vec centre = centreOf(*r);
        const double h = plane::cross(u, centre - startOf(*s));
        // The arc turns towards its centre, so this lies on the side of its turn; on the line itself it has no side.
        if (!(h * r->dir >= kSameLength)) {
            return -1;
        }
        const Offset offset = offsetOf(a->par, r->par);
        const bool straightFirst = signed16(side) == 1;
        const Vec axis = straightFirst ? u : -1.0 * u;
        const Vec origin = centre - offset.xm * axis - (r->dir * offset.rho) * leftOf(u);
        Calelm made{};
        const int status =
            layClothoid(origin, axis, straightFirst ? r->dir : -r->dir, a->par, 0.0, r->par, !straightFirst, made);
        if (status != 0) {
            return status;
        }
        *a = made;
        *D = std::fabs(std::fabs(h) - offset.rho);
        return 0;
    });
}
