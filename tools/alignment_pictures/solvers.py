"""Pictures of the solvers: tangent, compound, point, curves at an IP, chains."""

import ctypes
import math

import fenmark_alignment as fa
from fenmark_alignment import Arc, IpEntry, Straight, raw

from .chains_of import BEFORE, EAST, GIVEN, INF, INK, L, POINT, Panel, R, lay, longer_end, longer_start, sized, solved
from .drawing import THIN, sheet


def tangent():
    """Curves tangent to given elements."""
    panels = []

    def add(title, caption, chain, solve, made, labels, more=(30, 30), **choices):
        first, last = longer_end(chain[0], more[0]), longer_start(chain[-1], more[1])
        panels.append(solved(title, caption, (first, last), solve(first, last, **choices), made, labels, side=R * ("SS" in title)))

    chain = lay(("S", 120), ("R", 90, R, 130), ("S", 120), azimuth=EAST - 0.72)
    add("ali_RmakSS", "arc between two straights", chain, fa.arc_between_straights, {1}, ["S1", "R", "S2"], (115, 115),
        radius=90)  # fmt: skip
    chain = lay(("S", 80), ("A", 100, R, INF, 80), ("A", 95, R, 80, INF), ("S", 80), azimuth=EAST - 0.74)
    add("ali_AAmakSS", "two clothoids that meet at one radius", chain, fa.clothoids_between_straights, {1, 2},
        ["S1", "A1", "A2", "S2"], (185, 185), a1=100, a2=95)  # fmt: skip
    chain = lay(("S", 90), ("A", 75, R, INF, 80), ("R", 80, R, 60), ("A", 85, R, 80, INF), ("S", 90), azimuth=EAST - 0.85)
    add("ali_ARAmakSS", "clothoid, arc, clothoid between two straights", chain, fa.eased_arc_between_straights, {1, 2, 3},
        ["S1", "A1", "R", "A2", "S2"], (170, 170), a1=75, radius=80, a2=85)  # fmt: skip
    chain = lay(("S", 110), ("R", 60, R, 70), ("R", 150, R, 130))
    add("ali_RmakSR", "arc between straight and arc (side -1: S, R2, R1)", chain, fa.arc_between_straight_and_arc, {1},
        ["S", "R2", "R1"], radius=60)  # fmt: skip
    chain = lay(("S", 100), ("R", 70, R, 60), ("A", 85, R, 70, 170), ("R", 170, R, 110))
    add("ali_RAmakSR", "arc and clothoid (side -1: S, R1, A, R)", chain, fa.arc_and_clothoid_between_straight_and_arc, {1, 2},
        ["S", "R1", "A", "R"], radius=70, a=85, from_infinite=False)  # fmt: skip
    chain = lay(("S", 80), ("A", 70, L, INF, 80), ("R", 80, L, 60), ("A", 65, L, 80, INF), ("A", 70, R, INF, 110),
                ("R", 110, R, 110), azimuth=EAST + 0.4)  # fmt: skip
    add("ali_ARAAmakSR", "clothoid, arc and an S of clothoids", chain, fa.reverse_curve_between_straight_and_arc, {1, 2, 3, 4},
        ["S", "A1", "R1", "A2", "A3", "R"], a1=70, radius=80, a2=65, a3=70)  # fmt: skip
    chain = lay(("R", 90, R, 90), ("R", 260, R, 110), ("R", 80, R, 80), azimuth=EAST - 1.1)
    add("ali_RmakRR", "arc between two arcs, R3's dir is given", chain, fa.arc_between_arcs, {1}, ["R1", "R3", "R2"], radius=260,
        turn=R)  # fmt: skip
    chain = lay(("R", 90, R, 90), ("S", 130), ("R", 80, L, 90), azimuth=EAST - 0.6)
    add("ali_SmakRR", "common tangent of two arcs", chain, fa.straight_between_arcs, {1}, ["R1", "S", "R2"])
    chain = lay(("R", 220, R, 90), ("A", 90, R, 220, 70), ("R", 70, R, 50), ("R", 200, R, 90), azimuth=EAST - 1.0)
    add("ali_ARmakRR", "clothoid and arc (side -1: R1, A, R3, R2)", chain, fa.clothoid_and_arc_between_arcs, {1, 2},
        ["R1", "A", "R3", "R2"], radius=70, a=90)  # fmt: skip
    chain = lay(("R", 220, R, 90), ("A", 90, R, 220, 70), ("R", 70, R, 40), ("A", 90, R, 70, 200), ("R", 200, R, 90),
                azimuth=EAST - 1.1)  # fmt: skip
    add("ali_ARAmakRR", "clothoid, arc, clothoid between two arcs", chain, fa.eased_arc_between_arcs, {1, 2, 3},
        ["R1", "A1", "R3", "A2", "R2"], a1=90, radius=70, a2=90, from_infinite1=False, from_infinite2=False)  # fmt: skip
    chain = lay(("R", 90, R, 80), ("S", 90), ("A", 70, L, INF, 80), ("R", 80, L, 80), azimuth=EAST - 0.7)
    add("ali_SAmakRR", "straight and clothoid (side 1: R1, S, A, R2)", chain, fa.straight_and_clothoid_between_arcs, {1, 2},
        ["R1", "S", "A", "R2"], a=70)  # fmt: skip
    chain = lay(("R", 90, R, 80), ("A", 70, R, 90, INF), ("S", 60), ("A", 70, L, INF, 80), ("R", 80, L, 80), azimuth=EAST - 0.5)
    add("ali_ASAmakRR", "a straight eased at both ends", chain, fa.eased_straight_between_arcs, {1, 2, 3},
        ["R1", "A1", "S", "A2", "R2"], a1=70, a2=70)  # fmt: skip
    panels.extend(cross_lines())
    return sheet(panels, points=False)


def cross_lines():
    """ali_Smak on each type."""
    chosen = (
        ("ali_SmakS", Straight((0.0, 0.0), (40.0, 150.0)), 70.0, math.pi / 2),
        ("ali_SmakR", Arc.from_start((0.0, 0.0), EAST - 0.8, 100.0, 160.0, R), 70.0, math.pi / 2),
        ("ali_SmakA", lay(("A", 110, R, INF, 75), azimuth=EAST - 0.6)[0], 90.0, math.pi / 3),
    )
    for title, e, station, angle in chosen:
        turn = "90\u00b0" if angle > 1.5 else "60\u00b0"
        panel = Panel(title, f"line across at a station, angle {turn}, half length h")
        panel.element(e, GIVEN, at=0.85)
        s = fa.cross_line(e, station, 28.0, angle)
        panel.element(s, label="S", at=0.8)
        p = e.point_at(station)
        panel.point(p[:2], hollow=True, size=3)
        panel.point(e.start, "station 0", math.pi)
        panel.angle(p[:2], p.azimuth, p.azimuth - angle, 24, "angle", reach=8)
        panel.dimension(s.start, p[:2], "h", side=-1, shift=-6.0)
        yield panel


def compound():
    """Clothoids between fixed elements."""
    panels = []
    chain = lay(("R", 150, R, 90), ("A", 100, R, 150, 70), ("R", 70, R, 70), azimuth=EAST - 0.9)
    small = chain[2].moved(8.0, chain[2].sang)
    laid = fa.clothoid_between_arcs(chain[0], small, 100)
    panel = Panel("ali_makRAR", "egg-shaped clothoid, arcs fixed; D is the gap")
    panel.element(longer_end(chain[0], 40), BEFORE, width=1.2, dash="4 3", arrow=False)
    panel.element(longer_start(small, 40), BEFORE, width=1.2, dash="4 3", arrow=False)
    panel.element(chain[0], GIVEN, label="R1")
    panel.element(small, GIVEN, label="R2", side=-1)
    panel.element(laid.elements[0], label="A")
    panel.point(laid.elements[0].start, hollow=True, size=3)
    panel.point(laid.elements[0].end, f"D = {laid.gap:.2f}", 1.9, size=3, hollow=True)
    panels.append(panel)

    chain = lay(("R", 100, R, 80), ("A", 80, R, 100, INF), ("A", 75, L, INF, 90), ("R", 90, L, 80), azimuth=EAST - 0.4)
    last = chain[3].moved(16.0, chain[1].eang)
    laid = fa.clothoids_between_arcs(chain[0], last, 80, 75)
    panel = Panel("ali_makRAAR", "the S of two clothoids; D is the gap at the inflection")
    panel.element(chain[0], GIVEN, label="R1")
    panel.element(last, GIVEN, label="R2")
    for e, label in zip(laid.elements, ("A1", "A2")):
        panel.element(e, label=label)
    a, b = laid.elements[0].end, laid.elements[1].start
    panel.line(a, b, INK, "2 2")
    panel.point(a, hollow=True, size=3)
    panel.point(b, f"D = {laid.gap:.2f}", 0.9, size=3, hollow=True)
    panels.append(panel)

    chain = lay(("S", 110), ("A", 90, R, INF, 100), ("R", 100, R, 100), azimuth=EAST - 0.4)
    line = chain[0].parallel(9.0)
    laid = fa.clothoid_between_straight_and_arc(line, chain[2], 90)
    panel = Panel("ali_makSAR", "clothoid on the arc, flat end parallel to the straight")
    panel.element(line, GIVEN, label="S")
    panel.element(longer_end(line, 90), BEFORE, width=1.2, dash="4 3", arrow=False)
    panel.element(chain[2], GIVEN, label="R")
    panel.element(laid.elements[0], label="A")
    flat = laid.elements[0].start
    foot = longer_end(line, 90).project(flat)
    panel.line(flat, (foot.x, foot.y), INK, "")
    panel.point(flat, f"D = {laid.gap:.2f}", 2.6, size=3, hollow=True)
    panels.append(panel)

    chain = lay(("R", 90, R, 70), ("A", 70, R, 90, INF), ("A", 65, L, INF, 75), ("R", 75, L, 60), ("A", 65, L, 75, INF),
                ("A", 70, R, INF, 85), ("R", 85, R, 70), azimuth=EAST - 0.3)  # fmt: skip
    first, last = longer_end(chain[0], 25), longer_start(chain[-1], 25)
    found = fa.arc_between_arcs_with_clothoids(first, last, 70, 65, 75, 65, 70)
    panels.append(solved("ali_mak3R4A", "three arcs and four clothoids; R2 is placed", (first, last), found, {1, 2, 3, 4, 5},
                         ["R1", "A1", "A2", "R2", "A3", "A4", "R3"]))  # fmt: skip

    r1 = Arc.from_start((0.0, 0.0), EAST - 0.6, 260.0, 130.0, R)
    at = r1.point_at(110.0)
    p = (at.x - 78.0, at.y + 105.0)
    found = fa.clothoid_and_arc_through_point(p, r1, 75.0, 90.0, R)
    panels.append(solved("ali_makAOR_P, setAOR_P", "clothoid from infinite radius, arc through P", (r1,), found, {1, 2},
                         ["R1", "A", "R2"], [(p, "P", math.pi / 2)]))  # fmt: skip
    return sheet(panels)


def point():
    """Elements through a point."""
    panels = []

    def add(title, caption, before, chain, made, labels, p, direction):
        panels.append(solved(title, caption, (before,), chain, made, labels, [(p, "P", direction)]))

    chain = lay(("R", 90, R, 100), ("S", 130), azimuth=EAST - 1.2)
    r = longer_end(chain[0], 45)
    beyond = fa.straight_from_arc_towards_point(chain[1].end, r, 160)
    add("ali_makrS_P", "tangent on the line to P, with its own length", r, beyond, {1}, ["R", "S"], chain[1].end, 0.9)
    chain = lay(("R", 90, R, 90), ("R", 170, R, 130), azimuth=EAST - 1.2)
    r = longer_end(chain[0], 45)
    add("ali_makrR_P", "arc of given radius and dir from R1 to P", r, fa.arc_from_arc_to_point(chain[1].end, r, 170, R), {1},
        ["R1", "R2"], chain[1].end, 0.6)  # fmt: skip
    chain = lay(("R", 90, R, 90), ("R", 110, L, 120), azimuth=EAST - 0.7)
    r = longer_end(chain[0], 40)
    add("ali_makrR_P_S", "arc that turns against R2, to P", r, fa.reverse_arc_from_arc_to_point(chain[1].end, r, 110), {1},
        ["R2", "R1"], chain[1].end, 0.6)  # fmt: skip
    chain = lay(("S", 110), ("A", 80, R, INF, 90), ("R", 90, R, 110), azimuth=EAST - 0.5)
    r, p = longer_start(chain[2], 25), chain[0].start
    shift, xm, tau = ctypes.c_double(), ctypes.c_double(), ctypes.c_double()
    raw.AelmAtri(80, 90, tau, shift, xm)
    length = math.sqrt(math.dist(p, r.center) ** 2 - (90 + shift.value) ** 2) - xm.value
    add("ali_makrAS_P", "straight from P, clothoid onto R (end 1: S, A, R)", r, fa.straight_and_clothoid_from_point(p, r, 80, length),
        {0, 1}, ["S", "A", "R"], p, math.pi)  # fmt: skip
    chain = lay(("R", 160, R, 90), ("A", 90, R, 160, 75), ("R", 75, R, 90), azimuth=EAST - 0.9)
    r = longer_end(chain[0], 40)
    add("ali_makrAR_P", "egg-shaped clothoid and arc to P", r, fa.clothoid_and_arc_to_point(chain[2].end, r, 90, 75), {1, 2},
        ["R1", "A", "R2"], chain[2].end, math.pi)  # fmt: skip
    chain = lay(("R", 90, R, 80), ("A", 75, R, 90, INF), ("A", 70, L, INF, 80), ("R", 80, L, 90), azimuth=EAST - 0.4)
    r = longer_end(chain[0], 30)
    add("ali_makrAAR_P", "S of clothoids and arc to P", r, fa.clothoids_and_arc_to_point(chain[3].end, r, 75, 70, 80), {1, 2, 3},
        ["R1", "A1", "A2", "R2"], chain[3].end, math.pi / 2)  # fmt: skip
    chain = lay(("S", 110), ("R", 100, R, 130), azimuth=EAST - 0.7)
    s = longer_end(chain[0], 50)
    add("ali_maksR_P", "arc tangent to S, its circle through P", s, fa.arc_from_straight_through_point(chain[1].end, s, 100, R),
        {1}, ["S", "R"], chain[1].end, math.pi / 2)  # fmt: skip
    chain = lay(("S", 100), ("A", 80, R, INF, 90), ("R", 90, R, 90), azimuth=EAST - 0.5)
    s = longer_end(chain[0], 60)
    add("ali_maksAR_P", "clothoid and arc from S to P", s, fa.eased_arc_from_straight_through_point(chain[2].end, s, 80, 90, R),
        {1, 2}, ["S", "A", "R"], chain[2].end, math.pi)  # fmt: skip
    return sheet(panels)


def ip():
    """Curves at an intersection point."""
    panels = []
    previous, corner, following = (0.0, 0.0), (150.0, 190.0), (-20.0, 370.0)
    cases = (
        ("ali_IPsetR", "one arc", fa.arc_at_ip(previous, corner, following, 150.0), ["R"]),
        ("ali_IPsetAA", "two clothoids", fa.clothoids_at_ip(previous, corner, following, 140.0, 125.0), ["A1", "A2"]),
        ("ali_IPsetARA", "clothoid, arc, clothoid", fa.eased_arc_at_ip(previous, corner, following, 95.0, 110.0, 105.0),
         ["A1", "R", "A2"]),
    )  # fmt: skip
    chain = lay(("S", 50), ("A", 85, R, INF, 150), ("R", 150, R, 50), ("A", 95, R, 150, 80), ("R", 80, R, 45),
                ("A", 65, R, 80, INF), ("S", 60), azimuth=EAST - 0.8)  # fmt: skip
    out = (ctypes.c_double * 2)()
    raw.gc_intpSS(chain[0].start, chain[0].end, chain[-1].start, chain[-1].end, out)
    at = tuple(out)
    given = math.dist(at, chain[1].start)
    curve = fa.compound_curve_at_ip(chain[0].start, at, chain[-1].end, 85, 150, 95, 80, 65, tangent1=given)
    ends = {4: (chain[0].start, at, chain[-1].end)}
    cases += (("ali_IPsetARARA", "A1 = 85, R1 = 150, A2 = 95, R2 = 80, A3 = 65; T1 given", curve, ["A1", "R1", "A2", "R2", "A3"]),)
    for i, (title, caption, curve, labels) in enumerate(cases, 1):
        p, q, r = ends.get(i, (previous, corner, following))
        panel = Panel(title, caption, margin=34)
        panel.line(p, q, GIVEN, "", 2.0)
        panel.line(q, r, GIVEN, "", 2.0)
        for e, label in zip(curve.elements, labels):
            panel.element(e, label=sized(e, label) if i < 4 else label, side=-1)
        for e in curve.elements:
            panel.point(e.start, hollow=True, size=3)
        panel.point(curve.elements[-1].end, hollow=True, size=3)
        for at, label, direction in ((p, "previous", 0.0), (q, "IP", 0.0), (r, "next", math.pi)):
            panel.point(at, label, direction, POINT, 4)
        panel.dimension(curve.elements[0].start, q, "T1", shift=8.0)
        panel.dimension(q, curve.elements[-1].end, "T2", shift=8.0)
        panel.line(q, (q[0] + 40 * math.cos(curve.azimuth_in), q[1] + 40 * math.sin(curve.azimuth_in)))
        panel.angle(q, curve.azimuth_in, curve.azimuth_out, 22, "IA", reach=8)
        panels.append(panel)
    return sheet(panels, columns=2, width=440, height=270)


def chains():
    """Refits and checks."""
    panels = []

    def add(title, caption, before, after, names, colours=None):
        panel = Panel(title, caption)
        for e in before:
            panel.element(e, BEFORE, width=2.0, dash="6 4", arrow=False)
        for e, name in zip(after, names):
            panel.element(e, GIVEN if e.type != 3 and name in ("S", "R", "R1", "R2") else None, label=name)
        for a, b in zip(after, after[1:]):
            panel.point(a.end, hollow=True, size=3)
            if math.dist(a.end, b.start) > 0.5:
                panel.point(b.start, hollow=True, size=3)
        panels.append(panel)
        return panel

    def array(elements):
        block = (fa.Element * len(elements))()
        for i, e in enumerate(elements):
            ctypes.memmove(ctypes.byref(block[i]), ctypes.byref(e), ctypes.sizeof(fa.Element))
        return block

    def records(block):
        return [fa.wrap(e) for e in block]

    dl = ctypes.c_double()
    s_curve = lay(("R", 100, R, 90), ("A", 80, R, 100, INF), ("A", 75, L, INF, 90), ("R", 90, L, 90), azimuth=EAST - 0.3)
    apart = s_curve[3].moved(18.0, s_curve[1].eang)
    block = array([longer_end(s_curve[0], 25), s_curve[1], s_curve[2], longer_start(apart, 25)])
    before = [fa.wrap(block[0]), fa.wrap(block[3])]
    assert raw.alimake_rfAArf(block, ctypes.byref(dl)) == 0
    names = ["R1", "A1", "A2", "R2"]
    panel = add("alimake_rfAArf", f"clothoids laid anew, arcs cut at them; gap dl = {dl.value:.1f}", before, records(block), names)
    panel.line(block[1].ex and (block[1].ex, block[1].ey), (block[2].sx, block[2].sy), INK, "2 2")
    before = records(block)
    assert raw.moveR_dl0_rfAArf(1, ctypes.byref(dl), block) == 0
    assert raw.alimake_rfAArf(block, ctypes.byref(dl)) == 0
    add("moveR_dl0_rfAArf", "side 1 moves R2 by dl, then the refit", before[2:], records(block), names)

    egg = lay(("R", 170, R, 100), ("A", 100, R, 170, 75), ("R", 75, R, 80), azimuth=EAST - 0.9)
    block = array([longer_end(egg[0], 30), egg[1], longer_start(egg[2], 25)])
    before = [fa.wrap(block[0]), fa.wrap(block[2])]
    assert raw.alimake_rfArf(block, ctypes.byref(ctypes.c_double(0.0))) == 0
    add("alimake_rfArf", "both arcs are cut at the clothoid (dl = 0)", before, records(block), ["R1", "A", "R2"])
    moved = egg[2].moved(14.0, egg[2].sang + 1.2)
    block = array([egg[0], egg[1], moved])
    dl = ctypes.c_double(14.0)
    assert raw.moveR_dl0_rfArf(1, ctypes.byref(dl), block) == 0
    add("moveR_dl0_rfArf", "side 1 lays R2 at the clothoid's end", [moved], records(block), ["R1", "A", "R2"])

    eased = lay(("S", 110), ("A", 85, R, INF, 100), ("R", 100, R, 110), azimuth=EAST - 0.4)
    block = array([longer_end(eased[0], 40), eased[1], longer_start(eased[2], 30)])
    before = [fa.wrap(block[0]), fa.wrap(block[2])]
    assert raw.alimake_rfAsf(block, 0.0, 1) & 0xFFFF == 0
    add("alimake_rfAsf", "straight and arc are led to the clothoid", before, records(block), ["S", "A", "R"])
    line = longer_end(eased[0].parallel(10.0), 60)
    laid = fa.clothoid_between_straight_and_arc(line, eased[2], 85)
    block = array([line, laid.elements[0], eased[2]])
    dl = ctypes.c_double(laid.gap)
    assert raw.moveR_dl0_rfAsf(1, 1, ctypes.byref(dl), block) == 0
    add("moveR_dl0_rfAsf", "mover 1: the arc goes to the straight", [line, laid.elements[0], eased[2]], records(block),
        ["S", "A", "R"])  # fmt: skip
    panels.append(arc_inside_arc())
    panels.extend(point_tests())
    return sheet(panels)


def arc_inside_arc():
    """ARmakRR, whose records are in the calculation plane."""
    chain = lay(("R", 220, R, 90), ("A", 90, R, 220, 70), ("R", 70, R, 60), ("R", 200, R, 90), azimuth=EAST - 1.0)
    given = [longer_end(chain[0], 30), longer_start(chain[3], 30)]
    r1, r3 = (e.copy() for e in given)
    for e in (r1, r3):
        raw.CDchgSpace(e, e)
    r2, a = chain[2].copy(), chain[1].copy()
    raw.CDchgSpace(r2, r2)
    assert raw.ARmakRR(-1, r1, r3, r2, a) == 0
    # It writes ends and centres and leaves tangents and lengths to the construction functions.
    made = []
    for e in (r1, a, r2, r3):
        e = e.copy()
        raw.CDchgSpace(e, e)
        raw.ali_mak(e, 0)
        made.append(fa.wrap(e))
    return solved("ARmakRR", "R2 inside R3, joined to R1 by a clothoid", given, made, {1, 2}, ["R1", "A", "R2", "R3"])


def point_tests():
    """chk_tangent, chk_on_tangent, cplnrm, gc_intpSS, gc_poionl."""
    corners = [(0.0, 0.0), (60.0, 90.0), (20.0, 190.0), (70.0, 290.0)]
    entries = (IpEntry * 4)(*[IpEntry(x=x, y=y) for x, y in corners])
    tests = [((0.0, 0.0), 0.0), ((40.0, 140.0), 0.0), (corners[3], 0.0), ((-10.0, 120.0), 0.0)]
    panel = Panel("chk_tangent", "first point 1, last 2, on a line 3, off 0")
    for p, q in zip(corners, corners[1:]):
        panel.line(p, q, GIVEN, "", 2.0)
    for p in corners:
        panel.point(p, colour=GIVEN)
    for p, _ in tests:
        index = ctypes.c_int(-1)
        found = raw.chk_tangent(4, entries, p, ctypes.byref(index), 0.1)
        panel.point(p, str(found), math.pi, POINT, 4)
    yield panel

    panel = Panel("cplnrm, gc_poionl", "foot on the line of a segment; 1 on it, -1 off it")
    a, b = (0.0, 0.0), (50.0, 160.0)
    panel.line(a, b, GIVEN, "", 3.0)
    for p in ((80.0, 70.0), (105.0, 195.0)):
        out, flag = (ctypes.c_double * 2)(), ctypes.c_int()
        raw.cplnrm(out, p, (*a, *b), ctypes.byref(flag))
        panel.line(p, tuple(out), THIN)
        panel.point(tuple(out), str(flag.value), math.pi, INK, 3, hollow=True)
        panel.point(p, "P", 0.0, POINT, 4)
        if flag.value < 0:
            panel.line(b, tuple(out), THIN)
    yield panel

    panel = Panel("gc_intpSS", "crossing of the unbounded lines ab and cd")
    a, b, c, d = (0.0, 0.0), (30.0, 90.0), (110.0, 40.0), (85.0, 130.0)
    out = (ctypes.c_double * 2)()
    raw.gc_intpSS(a, b, c, d, out)
    for p, q in ((a, b), (c, d)):
        panel.line(p, q, GIVEN, "", 3.0)
        panel.line(q, tuple(out), THIN)
    for p, label in ((a, "a"), (b, "b"), (c, "c"), (d, "d")):
        panel.point(p, label, math.pi if label in "ab" else 0.0, INK)
    panel.point(tuple(out), hollow=True, size=4)
    yield panel


