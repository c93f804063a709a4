// An arc, or an arc and a clothoid, between a straight and an arc.
//
// Symbols: the worker travels S, R2 (made, radius r), R1 (given, radius R). C1 centre of R1, C2 centre of R2; s = +1
// when R2 turns as R1 and touches it from inside, -1 when it turns the other way and touches from outside. Calculation
// plane inside, survey plane at the interface. Sources: plane geometry. C2 lies r beside S and |R - s r| from C1, or at
// the distance that the clothoid demands (see CDOODistForRAR); the foot of C2 on S and the contact on the line of
// centres are the tangent points.
#include "fenmark/alignment/tangent.h"

#include "fenmark/alignment/primitives.h"

#include "alignment/calelm/answer.h"
#include "alignment/tangent/chain_check.h"
#include "alignment/tangent/solver_tools.h"

#include <algorithm>

namespace fenmark::alignment {

namespace {

// No candidate at all; a status inside this file only.
constexpr int kNoCut = 99;

// A straight and an arc in the calculation plane in the worker's order of travel: the straight first.
struct LineAndArc {
    CalcRecord line;
    CalcRecord arc;
    bool backwards; // side +1: the caller's chain ends on the straight
};

LineAndArc travelled(int side, const Calelm& s, const Calelm& r) {
    LineAndArc given{toCalc(s), toCalc(r), side == 1};
    if (given.backwards) {
        given.line = reversed(given.line);
        given.arc = reversed(given.arc);
    }
    return given;
}

// Turns a chain of the worker into the caller's order of travel, completes it and checks it: a straight and an arc are
// only cut, so that a foot beyond the straight's end or a clothoid that ends before the arc is no chain.
template <std::size_t N>
std::optional<std::array<Calelm, N>> completeTravelled(const LineAndArc& given, const std::array<CalcRecord, N>& chain,
                                                       const Calelm& s, const Calelm& r) {
    if (!given.backwards) {
        return completeChain(chain, s, r, Given::Cut);
    }
    std::array<CalcRecord, N> back;
    std::transform(chain.rbegin(), chain.rend(), back.begin(), [](const CalcRecord& e) { return reversed(e); });
    auto made = completeChain(back, r, s, Given::Cut);
    if (made) {
        std::reverse(made->begin(), made->end());
    }
    return made;
}

// Foot of a centre on the straight, and the sense of a circle about that centre that leaves the straight there.
struct Contact {
    Vec foot;
    double dir;
};

Contact contactWithLine(const CalcRecord& line, Vec centre) {
    const Vec u = unitAlong(line);
    const Vec toCentre = centre - startOf(line);
    return {startOf(line) + plane::dot(u, toCentre) * u, plane::cross(u, toCentre) > 0.0 ? 1.0 : -1.0};
}

// Whether a tangent point lies beyond the end of the straight, or before the start of the arc or off it. Ends of given
// records may be rounded, so that a chain that was built with such records is found again.
bool liesBeyond(Vec p, const CalcRecord& line) {
    return !(plane::dot(p - endOf(line), unitAlong(line)) <= kRoundedJointTolerance);
}

bool liesBefore(Vec p, const CalcRecord& arc) {
    const double point[2] = {p.x, p.y};
    const int where = arcPosition(point, *arc.raw());
    return where == position::kNone ||
           (where == position::kBefore && plane::distance(p, startOf(arc)) > kRoundedJointTolerance);
}

// All candidates of one sense; the first tangent chain goes out. Returns 0, 99 for no candidate, -1 for none accepted.
int arcWorker(double sense, const LineAndArc& given, Calelm& s, Calelm& r1, Calelm& r2) {
    const double r = r2.par;
    const double R = given.arc.par;
    const Vec centre1 = centreOf(given.arc);
    const Candidates centres = centresBesideLine(given.line, r, centre1, std::fabs(R - sense * r));
    int status = kNoCut;
    for (const Vec centre2 : centres) {
        status = -1;
        const Contact contact = contactWithLine(given.line, centre2);
        // The new arc turns as the given one for s = +1, and the other way for s = -1.
        if (liesBeyond(contact.foot, given.line) || contact.dir != sense * given.arc.dir) {
            continue;
        }
        const Vec apart = centre1 - centre2;
        const double D = plane::norm(apart);
        if (!(D >= kParameterZero)) {
            continue;
        }
        const double reach = sense > 0.0 && R > r ? -r : r;
        const Vec touch = centre2 + (reach / D) * apart;
        if (liesBefore(touch, given.arc)) {
            continue;
        }
        std::array chain = {given.line, arcBetween(contact.foot, touch, r, contact.dir), given.arc};
        setEnd(chain[0], contact.foot);
        setStart(chain[2], touch);
        if (const auto made = completeTravelled(given, chain, s, r1)) {
            s = (*made)[0];
            r2 = (*made)[1];
            r1 = (*made)[2];
            return 0;
        }
    }
    return status;
}

int arcBetweenStraightAndArc(int side, Calelm& s, Calelm& r1, Calelm& r2) {
    if ((side != 1 && side != -1) || !isGivenStraight(s) || !isGivenArc(r1) || !(r2.par > 0.0)) {
        return -1;
    }
    const LineAndArc given = travelled(side, s, r1);
    if (arcWorker(1.0, given, s, r1, r2) == 0) {
        return 0;
    }
    return arcWorker(-1.0, given, s, r1, r2) == 0 ? 0 : -1;
}

// One sense of the arc eased towards the given arc: the clothoid demands the distance of the centres.
int easedArcWorker(double sense, int mode, const LineAndArc& given, Calelm& s, Calelm& r, Calelm& r1, Calelm& a) {
    CalcRecord made = arcBetween({}, {}, r1.par, sense * given.arc.dir);
    CalcRecord clothoid;
    clothoid.type = element::kClothoid;
    clothoid.par = a.par;
    clothoid.dir = made.par < given.arc.par ? made.dir : given.arc.dir;
    double demanded = 0.0;
    if (CDOODistForRAR(made.raw(), clothoid.raw(), mode, given.arc.raw(), &demanded) != 0) {
        return -1;
    }
    const Candidates centres = centresBesideLine(given.line, r1.par, centreOf(given.arc), demanded);
    int status = kNoCut;
    for (const Vec centre : centres) {
        status = -1;
        const Contact contact = contactWithLine(given.line, centre);
        if (contact.dir != made.dir) {
            continue;
        }
        std::array chain = {given.line, made, clothoid, given.arc};
        setEnd(chain[0], contact.foot);
        setStart(chain[1], contact.foot);
        chain[1].k1 = centre.x;
        chain[1].k2 = centre.y;
        if (CDsetAToRAR(mode, chain[1].raw(), chain[3].raw(), chain[2].raw()) != 0) {
            continue;
        }
        if (const auto laid = completeTravelled(given, chain, s, r)) {
            s = (*laid)[0];
            r1 = (*laid)[1];
            a = (*laid)[2];
            r = (*laid)[3];
            return 0;
        }
    }
    return status;
}

int easedArcBetweenStraightAndArc(int side, int mode, Calelm& s, Calelm& r, Calelm& r1, Calelm& a) {
    if ((side != 1 && side != -1) || (mode != 0 && mode != -1) || !isGivenStraight(s) || !isGivenArc(r) ||
        !clothoidFits(a.par, std::fmin(r.par, r1.par))) {
        return -1;
    }
    const LineAndArc given = travelled(side, s, r);
    if (easedArcWorker(1.0, mode, given, s, r, r1, a) == 0) {
        return 0;
    }
    // A clothoid between two radii joins arcs of one sense only.
    return mode == 0 && easedArcWorker(-1.0, mode, given, s, r, r1, a) == 0 ? 0 : -1;
}

} // namespace

} // namespace fenmark::alignment

extern "C" {

int ali_RmakSR(int side, Calelm* s, Calelm* r1, Calelm* r2) {
    return fenmark::alignment::answerInPlace({s, r1, r2}, [&]() -> int {
        return fenmark::alignment::arcBetweenStraightAndArc(fenmark::alignment::signed16(side), *s, *r1, *r2);
    });
}

int ali_RAmakSR(int side, int mode, Calelm* s, Calelm* r, Calelm* r1, Calelm* a) {
    return fenmark::alignment::answerInPlace({s, r, r1, a}, [&]() -> int {
        using fenmark::alignment::signed16;
        return fenmark::alignment::easedArcBetweenStraightAndArc(signed16(side), signed16(mode), *s, *r, *r1, *a);
    });
}

} // extern "C"
