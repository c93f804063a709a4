// Curves that leave or reach a given straight and pass a point: an arc, or a clothoid and an arc.
//
// Symbols: the frame has the straight's start at the origin and its direction along +x; (px, py) the point in it, r the
// radius, x the contact; rho = r + dR offset radius and Xm abscissa of the centre for the clothoid; dir +1 left.
// Axes: calculation plane for every Vec, survey plane for the records.
// Derivation: a circle that touches the x axis at x on the side of dir has its centre at (x, dir r); through the point
// it satisfies x^2 - 2 px x + px^2 - 2 |py| r + py^2 = 0. With a clothoid the centre lies at (x, dir rho), and the
// clothoid begins Xm before it. Source: plane geometry; shift relations, Kasper, Schuerba, Lorenz, 1968.
#include "fenmark/alignment/point.h"

#include "fenmark/alignment/clothoid.h"
#include "fenmark/alignment/compound.h"
#include "fenmark/alignment/construction.h"
#include "fenmark/alignment/conventions.h"

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

// How far the new circle may pass the point, metres.
constexpr double passage_tolerance = 1e-5;

// The straight's own frame.
struct Frame {
    Vec origin;
    Vec u;
    double length = 0.0;

    bool ok() const { return length >= kSameLength; }
    Vec local(Vec p) const { return {plane::dot(u, p - origin), plane::cross(u, p - origin)}; }
    Vec global(double x, double y) const { return origin + x * u + y * leftOf(u); }
};

Frame frameOf(const Calelm& s) {
    Frame frame;
    frame.origin = startOf(s);
    const Vec chord = endOf(s) - frame.origin;
    frame.length = plane::norm(chord);
    frame.u = (1.0 / frame.length) * chord;
    return frame;
}

} // namespace

extern "C" {

int ali_maksR_P(const double p[2], int end, Calelm* s, Calelm* r) {
    const bool straightFirst = signed16(end) == 1;
    const double radius = r->par;
    const Frame frame = frameOf(*s);
    if (!frame.ok() || !isTurn(r->dir) || !(radius > 0.0) || !(r->len >= 0.0) || !(r->len < plane::two_pi * radius)) {
        return -1;
    }
    const Vec point = frame.local(fromSurvey(p));
    const double away = std::fabs(point.y);
    if (!(away <= 2.0 * radius)) {
        return -1;
    }
    const double root = std::sqrt(std::fabs(2.0 * away * radius - point.y * point.y));
    const bool onTurnSide = (point.y > 0.0) == (r->dir == 1.0);
    const bool smaller = onTurnSide == straightFirst;
    const double x = smaller ? point.x - root : point.x + root;
    const Vec centre = frame.global(x, r->dir * radius);
    if (!(std::fabs(plane::distance(centre, fromSurvey(p)) - radius) <= passage_tolerance)) {
        return -1;
    }
    const double kept = straightFirst ? x : frame.length - x;
    const Vec contact = frame.global(x, 0.0);
    // Run from the contact the arc turns dir, or against it when it is run back: by its length, or to the point.
    const double turn = straightFirst ? r->dir : -r->dir;
    const double sweep =
        r->len > 0.0 ? r->len / radius : sweepBetween(centre, contact, frame.global(point.x, point.y), turn);
    const Vec other = centre + plane::turned(contact - centre, turn * sweep);

    const double azimuth = roundedAzimuth(plane::direction(frame.u));
    Calelm straight = *s;
    const Vec keptEnd = rounded(straightFirst ? startOf(*s) : endOf(*s));
    const Vec joint = rounded(contact);
    if (!straightAlong(straightFirst ? keptEnd : joint, straightFirst ? joint : keptEnd, azimuth, roundLength(kept),
                       straight)) {
        return -1;
    }
    Calelm arc = *r;
    const Vec far = rounded(other);
    const double c[2] = {centre.x, centre.y};
    const Vec from = straightFirst ? joint : far;
    const Vec to = straightFirst ? far : joint;
    const double start[2] = {from.x, from.y};
    const double finish[2] = {to.x, to.y};
    double sang = 0.0;
    double eang = 0.0;
    double shorterSweep = 0.0;
    double shorterLength = 0.0;
    ali_KEnAng(start, finish, r->dir, radius, c[0], c[1], &sang, &eang, &shorterSweep, &shorterLength);
    arc.type = element::arc;
    arc.r1 = arc.r2 = 0.0;
    setStart(arc, from);
    setEnd(arc, to);
    arc.len = roundLength(radius * sweep);
    arc.sang = straightFirst ? azimuth : roundedAzimuth(sang);
    arc.eang = straightFirst ? roundedAzimuth(eang) : azimuth;
    arc.k1 = centre.x;
    arc.k2 = -centre.y;
    arc.k3 = sweep;
    if (!keepsTangent(*s, straight, !straightFirst) ||
        !(straightFirst ? finishTangentChain({&straight, &arc}, joint_tolerance)
                        : finishTangentChain({&arc, &straight}, joint_tolerance))) {
        return -1;
    }
    *s = straight;
    *r = arc;
    return 0;
}

int ali_maksAR_P(const double p[2], int end, Calelm* s, Calelm* a, Calelm* r) {
    const bool straightFirst = signed16(end) == 1;
    const double radius = r->par;
    const Frame frame = frameOf(*s);
    if (!frame.ok() || !isTurn(r->dir) || !(radius > 0.0) || !(r->len < plane::two_pi * radius)) {
        return -1;
    }
    const Offset offset = offsetOf(a->par, radius);
    const Vec point = frame.local(fromSurvey(p));
    const double across = r->dir * offset.rho - point.y;
    if (!(std::fabs(across) <= radius)) {
        return -1;
    }
    const double along = std::sqrt((radius - across) * (radius + across));
    // The centre lies behind the point in the sense of travel away from the straight.
    const double x = straightFirst ? point.x - along : point.x + along;
    const double flat = straightFirst ? x - offset.xm : x + offset.xm;
    if (!((straightFirst ? flat : frame.length - flat) >= kSameLength)) {
        return -1;
    }
    const Vec centre = frame.global(x, r->dir * offset.rho);
    Calelm straight = *s;
    (straightFirst ? setEnd : setStart)(straight, frame.global(flat, 0.0));
    int status = signed16(ali_makS(&straight));
    if (status != 0) {
        return status;
    }
    Calelm arc = *r;
    arc.type = element::arc;
    arc.k1 = centre.x;
    arc.k2 = -centre.y;
    Calelm clothoid = *a;
    double gap = 0.0;
    status = ali_makSAR(straightFirst ? 1 : 2, &straight, &clothoid, &arc, &gap);
    if (status != 0) {
        return status;
    }
    if (straightFirst) {
        setStart(arc, endOf(clothoid));
        arc.sang = clothoid.eang;
    } else {
        setEnd(arc, startOf(clothoid));
        arc.eang = clothoid.sang;
    }
    // The far end of the arc: its own length on, or the point.
    Vec far = fromSurvey(p);
    if (r->len > 0.0) {
        const Vec near = straightFirst ? startOf(arc) : endOf(arc);
        far = centre + plane::turned(near - centre, (straightFirst ? r->dir : -r->dir) * r->len / radius);
    }
    status = cutArcFromKeptEnd(arc, !straightFirst, far);
    if (status != 0) {
        return status;
    }
    if (!(straightFirst ? finishTangentChain({&straight, &clothoid, &arc}, joint_tolerance)
                        : finishTangentChain({&arc, &clothoid, &straight}, joint_tolerance))) {
        return -1;
    }
    *s = straight;
    *a = clothoid;
    *r = arc;
    return 0;
}

} // extern "C"
