// Curves with clothoids that join a given arc and reach a point: one egg-shaped clothoid, or two that meet at infinite
// radius.
//
// Symbols: P the point, C1, R1 the given arc's centre and radius, C2, R2 the new one's, rho offset radius R + dR, Xm
// abscissa of a centre in the clothoid's frame, d the distance of the centres that the clothoids demand.
// Axes: calculation plane for every Vec, survey plane for the records.
// Derivation: along the common tangent the centres stand Xm1 - Xm2 (egg) or Xm1 + Xm2 (S) apart, across it rho1 - rho2
// or rho1 + rho2, which gives d. C2 lies at d from C1 and at R2 from P; of the two mirrored places one continues the
// travel. Source: [Kasper 1968].
#include "fenmark/alignment/point.h"

#include "fenmark/alignment/compound.h"
#include "fenmark/alignment/construction.h"

#include "alignment/calelm/answer.h"
#include "alignment/compound/laying.h"
#include "alignment/primitives/tools.h"

using namespace fenmark::alignment;
using namespace fenmark::alignment::laying;

namespace {

// A new arc of a given type and sense, about a centre, without ends.
Calelm arcAbout(Vec centre, double radius, double dir) {
    Calelm arc{};
    arc.type = element::kArc;
    arc.dir = dir;
    arc.par = radius;
    arc.k1 = centre.x;
    arc.k2 = -centre.y;
    return arc;
}

// Whether dir of a record to be made is the one asked for, or was left open.
bool turnsAs(const Calelm& made, double dir) {
    return made.dir == dir || made.dir == 0.0;
}

// The new arc between the clothoid and the point; its tangent at the clothoid is the clothoid's.
int arcToPoint(Calelm& arc, const Calelm& clothoid, bool clothoidFirst, Vec point) {
    if (clothoidFirst) {
        setStart(arc, endOf(clothoid));
        arc.sang = clothoid.eang;
        return cutArc(arc, false, point);
    }
    setEnd(arc, startOf(clothoid));
    arc.eang = clothoid.sang;
    return cutArc(arc, true, point);
}

double hypotenuse(double along, double across) {
    return std::sqrt(along * along + across * across);
}

} // namespace

extern "C" {

int ali_makrAR_P(const double p[2], int end, Calelm* r1, Calelm* a, Calelm* r2, double* D, double* angle) {
    return fenmark::alignment::answerInPlace({r1, a, r2}, [&]() -> int {
        const bool givenFirst = signed16(end) == 1;
        if (!isTurn(r1->dir) || !turnsAs(*r2, r1->dir) || !(r1->par > 0.0) || !(r2->par > 0.0)) {
            return -1;
        }
        const Vec point = fromSurvey(p);
        const Offset at1 = offsetOf(a->par, r1->par);
        const Offset at2 = offsetOf(a->par, r2->par);
        Vec left;
        Vec right;
        if (!circleCrossLeftRight(centreOf(*r1), hypotenuse(at1.xm - at2.xm, at1.rho - at2.rho), point, r2->par, left,
                                  right)) {
            return -1;
        }
        const double side = r1->par < r2->par ? r1->dir : -r1->dir;
        const bool leftFirst = (givenFirst ? side : -side) > 0.0;
        int failure = -1;
        for (const Vec centre : {leftFirst ? left : right, leftFirst ? right : left}) {
            Calelm given = *r1;
            Calelm clothoid = *a;
            Calelm made = arcAbout(centre, r2->par, r1->dir);
            double gap = 0.0;
            double direction = 0.0;
            int status = givenFirst ? ali_makRAR(&given, &clothoid, &made, &gap, &direction)
                                    : ali_makRAR(&made, &clothoid, &given, &gap, &direction);
            if (status == 0) {
                status = cutArcFromKeptEnd(given, !givenFirst, givenFirst ? startOf(clothoid) : endOf(clothoid));
            }
            if (status == 0) {
                status = arcToPoint(made, clothoid, givenFirst, point);
            }
            if (status == 0 && (givenFirst ? finishTangentChain({&given, &clothoid, &made}, kJointTolerance)
                                           : finishTangentChain({&made, &clothoid, &given}, kJointTolerance))) {
                *r1 = given;
                *a = clothoid;
                *r2 = made;
                *D = gap;
                *angle = direction;
                return 0;
            }
            failure = status < 0 ? status : -1;
        }
        return failure;
    });
}

int ali_makrAAR_P(const double p[2], int end, Calelm* r1, Calelm* a1, Calelm* a2, Calelm* r2, double* D) {
    return fenmark::alignment::answerInPlace({r1, a1, a2, r2}, [&]() -> int {
        const bool givenFirst = signed16(end) == 1;
        if (!isTurn(r1->dir) || !turnsAs(*r2, -r1->dir) || !(r1->par > 0.0) || !(r2->par > 0.0)) {
            return -1;
        }
        const Vec point = fromSurvey(p);
        const Offset at1 = offsetOf(a1->par, r1->par);
        const Offset at2 = offsetOf(a2->par, r2->par);
        Vec left;
        Vec right;
        if (!circleCrossLeftRight(centreOf(*r1), hypotenuse(at1.xm + at2.xm, at1.rho + at2.rho), point, r2->par, left,
                                  right)) {
            return -1;
        }
        const bool leftFirst = (givenFirst ? -r1->dir : r1->dir) > 0.0;
        int failure = -1;
        for (const Vec centre : {leftFirst ? left : right, leftFirst ? right : left}) {
            Calelm given = *r1;
            Calelm clothoid1 = *a1;
            Calelm clothoid2 = *a2;
            Calelm made = arcAbout(centre, r2->par, -r1->dir);
            double gap = 0.0;
            int status = givenFirst ? ali_makRAAR(&given, &clothoid1, &clothoid2, &made, &gap)
                                    : ali_makRAAR(&made, &clothoid2, &clothoid1, &given, &gap);
            if (status == 0) {
                status = cutArcFromKeptEnd(given, !givenFirst, givenFirst ? startOf(clothoid1) : endOf(clothoid1));
            }
            if (status == 0) {
                status = arcToPoint(made, clothoid2, givenFirst, point);
            }
            if (status == 0 &&
                (givenFirst ? finishTangentChain({&given, &clothoid1, &clothoid2, &made}, kJointTolerance)
                            : finishTangentChain({&made, &clothoid2, &clothoid1, &given}, kJointTolerance))) {
                *r1 = given;
                *a1 = clothoid1;
                *a2 = clothoid2;
                *r2 = made;
                *D = gap;
                return 0;
            }
            failure = status < 0 ? status : -1;
        }
        return failure;
    });
}

} // extern "C"
