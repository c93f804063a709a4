// Curves that leave or reach a given straight and pass a point: an arc, or a clothoid and an arc.
//
// Symbols: the frame has the straight's start at the origin and its direction along +x; (px, py) the point in it, r the
// radius, x the contact; rho = r + dR offset radius and Xm abscissa of the centre for the clothoid; dir +1 left.
// Axes: calculation plane for every Vec, survey plane for the records.
// Derivation: a circle that touches the x axis at x on the side of dir has its centre at (x, dir r); through the point
// it satisfies x^2 - 2 px x + px^2 - 2 |py| r + py^2 = 0. With a clothoid the centre lies at (x, dir rho), and the
// clothoid begins Xm before it. Source: plane geometry; shift relations, [Kasper 1968].
#include "fenmark/alignment/point.h"

#include "fenmark/alignment/clothoid.h"
#include "fenmark/alignment/compound.h"
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

// How far the new circle may pass the point, metres. Seen in 11,000 seeded cases: 2.3e-13, and 0.029 of those refused.
constexpr double kPassageTolerance = 1e-5;

// The straight's own frame.
struct Frame {
    Vec origin;
    Vec u;
    double length = 0.0;

    bool ok() const { return length >= kSameLength; }
    Vec local(Vec p) const { return {plane::dot(u, p - origin), plane::cross(u, p - origin)}; }
    Vec global(Vec p) const { return origin + p.x * u + p.y * leftOf(u); }
};

Frame frameOf(const Calelm& s) {
    Frame frame;
    frame.origin = startOf(s);
    const Vec chord = endOf(s) - frame.origin;
    frame.length = plane::norm(chord);
    frame.u = (1.0 / frame.length) * chord;
    return frame;
}

// What is asked: the curve leaves the straight and passes the point, or comes from there and reaches the straight.
struct Task {
    Frame frame;
    Vec point; ///< in the frame
    bool straightFirst;

    // What stays of the straight when it is cut at x.
    double kept(double x) const { return straightFirst ? x : frame.length - x; }
    // Sense of an arc run from the straight on.
    double turn(const Calelm& arc) const { return straightFirst ? arc.dir : -arc.dir; }
    // Sweep of an arc from its joint to the point, all in the frame.
    double sweepToPoint(const Calelm& arc, Vec centre, Vec joint) const {
        return sweepBetween(centre, joint, point, turn(arc));
    }
    // Whether the point lies on the arc itself: on its own length or, where it brings none, within a half circle.
    bool isReached(const Calelm& arc, Vec centre, Vec joint) const {
        const double sweep = sweepToPoint(arc, centre, joint);
        return arc.len > 0.0 ? sweep * arc.par <= arc.len + kSameLength : sweep <= kPi;
    }
};

// Arc joined to the straight at x. False, records untouched, for a contact off the part that stays and a circle that
// misses the point.
bool layArc(const Task& task, double x, Calelm& s, Calelm& r) {
    const bool straightFirst = task.straightFirst;
    const double radius = r.par;
    const Vec localCentre{x, r.dir * radius};
    if (!(std::fabs(plane::distance(localCentre, task.point) - radius) <= kPassageTolerance)) {
        return false;
    }
    const Vec centre = task.frame.global(localCentre);
    const Vec contact = task.frame.global({x, 0.0});
    const double sweep = r.len > 0.0 ? r.len / radius : task.sweepToPoint(r, localCentre, {x, 0.0});
    const Vec other = centre + plane::turned(contact - centre, task.turn(r) * sweep);

    const double azimuth = roundedAzimuth(plane::direction(task.frame.u));
    Calelm straight = s;
    const Vec keptEnd = rounded(straightFirst ? startOf(s) : endOf(s));
    const Vec joint = rounded(contact);
    if (!straightAlong(straightFirst ? keptEnd : joint, straightFirst ? joint : keptEnd, azimuth,
                       roundLength(task.kept(x)), straight)) {
        return false;
    }
    Calelm arc = r;
    const Vec far = rounded(other);
    const Vec from = straightFirst ? joint : far;
    const Vec to = straightFirst ? far : joint;
    const double start[2] = {from.x, from.y};
    const double finish[2] = {to.x, to.y};
    double sang = 0.0;
    double eang = 0.0;
    double shorterSweep = 0.0;
    double shorterLength = 0.0;
    ali_KEnAng(start, finish, r.dir, radius, centre.x, centre.y, &sang, &eang, &shorterSweep, &shorterLength);
    arc.type = element::kArc;
    arc.r1 = arc.r2 = 0.0;
    setStart(arc, from);
    setEnd(arc, to);
    arc.len = roundLength(radius * sweep);
    arc.sang = straightFirst ? azimuth : roundedAzimuth(sang);
    arc.eang = straightFirst ? roundedAzimuth(eang) : azimuth;
    arc.k1 = centre.x;
    arc.k2 = -centre.y;
    arc.k3 = sweep;
    if (!keepsTangent(s, straight, !straightFirst) ||
        !(straightFirst ? finishTangentChain({&straight, &arc}, kJointTolerance)
                        : finishTangentChain({&arc, &straight}, kJointTolerance))) {
        return false;
    }
    s = straight;
    r = arc;
    return true;
}

// Clothoid and arc for one place of the arc's centre in the frame. 0, or the status of the step that fails, with the
// records untouched.
int layEasedArc(const Task& task, Vec localCentre, double xm, Calelm& s, Calelm& a, Calelm& r) {
    const bool straightFirst = task.straightFirst;
    const double flat = straightFirst ? localCentre.x - xm : localCentre.x + xm;
    if (!(task.kept(flat) >= kSameLength)) {
        return -1;
    }
    const Vec centre = task.frame.global(localCentre);
    Calelm straight = s;
    const Vec joint = task.frame.global({flat, 0.0});
    if (straightFirst) {
        setEnd(straight, joint);
    } else {
        setStart(straight, joint);
    }
    int status = signed16(ali_makS(&straight));
    if (status != 0) {
        return status;
    }
    Calelm arc = r;
    arc.type = element::kArc;
    arc.k1 = centre.x;
    arc.k2 = -centre.y;
    Calelm clothoid = a;
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
    const Vec near = straightFirst ? startOf(arc) : endOf(arc);
    const Vec far = r.len > 0.0 ? centre + plane::turned(near - centre, task.turn(r) * r.len / r.par)
                                : task.frame.global(task.point);
    status = cutArcFromKeptEnd(arc, !straightFirst, far);
    if (status != 0) {
        return status;
    }
    if (!(straightFirst ? finishTangentChain({&straight, &clothoid, &arc}, kJointTolerance)
                        : finishTangentChain({&arc, &clothoid, &straight}, kJointTolerance))) {
        return -1;
    }
    s = straight;
    a = clothoid;
    r = arc;
    return 0;
}

} // namespace

extern "C" {

int ali_maksR_P(const double p[2], int end, Calelm* s, Calelm* r) {
    return fenmark::alignment::answerInPlace({s, r}, [&]() -> int {
        const double radius = r->par;
        const Frame frame = frameOf(*s);
        if (!frame.ok() || !isTurn(r->dir) || !(radius > 0.0) || !(r->len >= 0.0) || !(r->len < kTwoPi * radius)) {
            return -1;
        }
        const Task task{frame, frame.local(fromSurvey(p)), signed16(end) == 1};
        const double away = std::fabs(task.point.y);
        if (!(away <= 2.0 * radius)) {
            return -1;
        }
        const double root = std::sqrt(std::fabs(2.0 * away * radius - task.point.y * task.point.y));
        const bool onTurnSide = (task.point.y > 0.0) == (r->dir == 1.0);
        const double before = onTurnSide == task.straightFirst ? -root : root;
        if (layArc(task, task.point.x + before, *s, *r)) {
            return 0;
        }
        // From the other contact the point lies beyond a half circle: only an arc that is long enough goes there.
        const double beyond = task.point.x - before;
        return task.isReached(*r, {beyond, r->dir * radius}, {beyond, 0.0}) && layArc(task, beyond, *s, *r) ? 0 : -1;
    });
}

int ali_maksAR_P(const double p[2], int end, Calelm* s, Calelm* a, Calelm* r) {
    return fenmark::alignment::answerInPlace({s, a, r}, [&]() -> int {
        const double radius = r->par;
        const Frame frame = frameOf(*s);
        if (!frame.ok() || !isTurn(r->dir) || !(radius > 0.0) || !(r->len < kTwoPi * radius)) {
            return -1;
        }
        const Offset offset = offsetOf(a->par, radius);
        const Task task{frame, frame.local(fromSurvey(p)), signed16(end) == 1};
        const double across = r->dir * offset.rho - task.point.y;
        if (!(std::fabs(across) <= radius)) {
            return -1;
        }
        const double along = std::sqrt((radius - across) * (radius + across));
        // The centre lies behind the point in the sense of travel away from the straight.
        const double behind = task.straightFirst ? -along : along;
        const int status = layEasedArc(task, {task.point.x + behind, r->dir * offset.rho}, offset.xm, *s, *a, *r);
        if (status == 0) {
            return 0;
        }
        // Ahead of the point it lies only where the whole curve turns by more than a half circle before it gets there.
        const Vec ahead{task.point.x - behind, r->dir * offset.rho};
        const Vec joint = ahead + plane::turned(Vec{0.0, -r->dir * radius}, task.turn(*r) * offset.tau);
        return task.isReached(*r, ahead, joint) && layEasedArc(task, ahead, offset.xm, *s, *a, *r) == 0 ? 0 : status;
    });
}

} // extern "C"
