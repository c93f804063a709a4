"""Pictures of the families that work on one or two elements: primitives, construction, walking, movement, crossings."""

import ctypes
import math

from fenmark_alignment import Arc, Clothoid, Element, Straight, raw, wrap

from .chains_of import BEFORE, EAST, GIVEN, INF, INK, L, POINT, Panel, R, lay
from .drawing import COLOURS, THIN, sheet

PAIR, LINE = ctypes.c_double * 2, ctypes.c_double * 4


def _vector(panel, at, azimuth, label, reach=34.0, colour=INK):
    tip = (at[0] + reach * math.cos(azimuth), at[1] + reach * math.sin(azimuth))
    panel.line(at, tip, colour, "", 1.3, head=True)
    panel.text(tip, label, colour, direction=azimuth, reach=11)


# ---- primitives, in the calculation plane


def _line(x0, y0, x1, y1):
    out = LINE()
    raw.CDlinstd(x0, y0, x1, y1, out)
    return out


def _calc(function, e, *arguments):
    """A record operation in the calculation plane: the result as a survey-plane element."""
    inside, out = e.copy(), e.copy()
    raw.CDchgSpace(e, inside)
    function(inside, out, *arguments)
    raw.CDchgSpace(out, out)
    return wrap(out)


def primitives():
    """Lines and whole records."""
    panels = []
    a, b, c, d = (0.0, 0.0), (110.0, 50.0), (20.0, 70.0), (100.0, -10.0)
    panel = Panel("CDlinstd, CDlincros, CDsegcros", "crossing of lines, of segments", "calc")
    x, y = ctypes.c_double(), ctypes.c_double()
    raw.CDlincros(_line(*a, *b), _line(*c, *d), ctypes.byref(x), ctypes.byref(y))
    for p, q in ((a, b), (c, d)):
        panel.line(p, q, GIVEN, "", 2.6)
    for p, label, direction in ((a, "a", math.pi), (b, "b", 0.0), (c, "c", math.pi), (d, "d", 0.0)):
        panel.point(p, label, direction)
    panel.point((x.value, y.value), hollow=True, size=4)
    panels.append(panel)

    panel = Panel("CDlineang, CDbtwang", "direction of a line; angle from line 1 to line 2", "calc")
    one, two = (0.0, 0.0, 100.0, 25.0), (0.0, 0.0, 25.0, 75.0)
    for k, label in ((one, "line 1"), (two, "line 2")):
        panel.line(k[:2], k[2:], GIVEN, "", 2.4, head=True)
        panel.text(k[2:], label, anchor="start", direction=0.0, reach=6)
    panel.line((0.0, 0.0), (95.0, 0.0))
    angle = ctypes.c_double()
    raw.CDlineang(_line(*one), ctypes.byref(angle))
    between = raw.CDbtwang(*one, *two)
    panel.angle((0.0, 0.0), 0.0, angle.value, 110, "CDlineang", reach=6)
    panel.angle((0.0, 0.0), angle.value, angle.value + between, 48, "CDbtwang", reach=7, label_angle=0.85)
    panels.append(panel)

    panel = Panel("CDpldist, CDpojpoi", "distance and foot of a point on a line", "calc")
    k, p = _line(0.0, 0.0, 120.0, 40.0), (45.0, 75.0)
    foot, dist = PAIR(), ctypes.c_double()
    raw.CDpojpoi(k, p, foot)
    raw.CDpldist(k, p, ctypes.byref(dist))
    panel.line((0.0, 0.0), (120.0, 40.0), GIVEN, "", 2.6, head=True)
    panel.dimension(tuple(foot), p, f"{dist.value:.2f}", side=-1)
    panel.point(p, "P", EAST, POINT, 4)
    panel.point(tuple(foot), "foot", -EAST, hollow=True)
    panels.append(panel)

    e = lay(("A", 70, R, INF, 60), azimuth=-0.9, start=(25.0, -15.0))[0]
    for title, caption, made in (
        ("CDmirA", "mirror in the y axis: x and dir negated", _calc(raw.CDmirA, e)),
        ("CDmoveA", "translation by (dx, dy)", _calc(raw.CDmoveA, e, 30.0, -38.0)),
        ("CDrot, CDturnA, CDturnAe", "turn about a pivot, the own start, the own end", None),
    ):
        panel = Panel(title, caption, "calc")
        panel.element(e, GIVEN)
        if made is None:
            for function, arguments in ((raw.CDturnA, (0.9,)), (raw.CDrot, (PAIR(0.0, 0.0), -0.6))):
                panel.element(_calc(function, e, *arguments))
            panel.point((0.0, 0.0), "pivot", math.pi)
            panel.point((e.sx, -e.sy), size=3, hollow=True)
        else:
            panel.element(made)
        if title == "CDmirA":
            panel.line((0.0, 8.0), (0.0, 78.0), INK, "", 1.0, head=True)
            panel.text((0.0, 78.0), "y", direction=EAST, reach=9)
        panels.append(panel)

    flat = lay(("A", 100, R, 75, INF), azimuth=0.3)[0]
    turned = flat.copy()
    raw.CDreverA(turned, 0)
    panel = Panel("CDreverA", "runs from flat to sharp; dir and tangents turned")
    panel.element(flat, GIVEN, at=0.5, label=f"dir = {flat.dir:+.0f}")
    panel.element(turned.moved(26.0, EAST + 0.3 + 0.6), at=0.5, side=1, label=f"dir = {turned.dir:+.0f}")
    panels.append(panel)

    piece = lay(("A", 100, R, 220, 80), azimuth=-0.9, start=(60.0, 60.0))[0]
    inside = piece.copy()
    raw.CDchgSpace(piece, inside)
    framed = inside.copy()
    raw.CDAinAbs(inside, framed)
    raw.CDchgSpace(framed, framed)
    panel = Panel("CDAinAbs, CDP2Cal", "an element in the frame of its own clothoid", "calc")
    panel.element(piece, GIVEN)
    whole = Clothoid.from_start((0.0, 0.0), 0.0, 100.0, L, INF, 80.0)
    panel.element(whole, BEFORE, width=1.4, dash="4 3", arrow=False)
    panel.element(framed)
    panel.line((-8.0, 0.0), (135.0, 0.0), INK, "", 1.1, head=True)
    panel.line((0.0, -8.0), (0.0, 40.0), INK, "", 1.1, head=True)
    panel.text((135.0, 0.0), "x", direction=0.0, reach=8)
    panel.text((0.0, 40.0), "y", direction=EAST, reach=9)
    panels.append(panel)

    chain = lay(("R", 200, R, 90), ("A", 95, R, 200, 75), ("R", 75, R, 80), azimuth=EAST - 0.8)
    inside = [Element.from_buffer_copy(e) for e in chain]
    for e in inside:
        raw.CDchgSpace(e, e)
    between = ctypes.c_double()
    raw.CDOODistForRAR(inside[0], inside[1], -1, inside[2], ctypes.byref(between))
    panel = Panel("CDOODistForRAR, CDsetAToRAR", "distance of the centres that a clothoid demands")
    panel.element(chain[0], GIVEN, label="R1")
    panel.element(chain[1], label="A")
    panel.element(chain[2], GIVEN, label="R2")
    panel.dimension(chain[0].center, chain[2].center, f"{between.value:.2f}", side=-1)
    panel.point(chain[0].center, "centre 1", math.pi)
    panel.point(chain[2].center, "centre 2", EAST)
    panels.append(panel)
    return sheet(panels)


# ---- construction


def construction():
    """What is given (points, tangents) and what is made."""
    panels = []
    panel = Panel("ali_makS", "given both end points")
    panel.element(Straight((0.0, 0.0), (50.0, 150.0)), label="S")
    panel.point((0.0, 0.0), "start", math.pi, POINT, 4)
    panel.point((50.0, 150.0), "end", 0.0, POINT, 4)
    panels.append(panel)

    r = Arc((0.0, 0.0), (20.0, 150.0), 95.0, R)
    panel = Panel("ali_makR", "given both end points, R, dir; at most a half circle")
    panel.element(r, label="dir = -1")
    panel.element(Arc((0.0, 0.0), (20.0, 150.0), 95.0, L), BEFORE, width=1.6, dash="5 4", label="dir = +1", at=0.25)
    panel.point((0.0, 0.0), "start", math.pi, POINT, 4)
    panel.point((20.0, 150.0), "end", math.pi, POINT, 4)
    panel.line(r.center, r.point_at(50.0)[:2], COLOURS[2], "", 1.2, head=True)
    panel.text(r.point_at(50.0)[:2], "R", COLOURS[2], direction=math.pi - 0.5, reach=34, anchor="start")
    panel.point(r.center, "centre", EAST, INK, 3)
    panels.append(panel)

    a = lay(("A", 105, R, INF, 75), azimuth=EAST - 0.6)[0]
    towards = math.atan2(a.ey - a.sy, a.ex - a.sx)
    given = (a.ex + 22.0 * math.cos(towards), a.ey + 22.0 * math.sin(towards))
    made = Clothoid(a.start, given, 105.0, R, INF, 75.0)
    panel = Panel("ali_makA", f"given points, A, radii; status {2 if made.end_moved else 0}: sharp end moved", margin=44)
    panel.element(made, label="A")
    panel.line(a.start, given)
    panel.point(a.start, "anchor", math.pi, POINT, 4)
    panel.point(given, "end given", math.pi, POINT, 4, hollow=True, reach=14)
    panel.point(made.end, "end made", -0.2, INK, 3, reach=12)
    panels.append(panel)

    for title, caption, e in (
        ("ali_makangS", "given a point, its azimuth, the length", Straight.from_start((0.0, 0.0), EAST - 0.4, 150.0)),
        ("ali_makangR", "given a point, its azimuth, R, dir, the length",
         Arc.from_start((0.0, 0.0), EAST - 1.3, 60.0, 230.0, R)),
        ("ali_makangA", "given a point, its azimuth, A, dir, radii",
         Clothoid.from_start((0.0, 0.0), EAST - 0.6, 105.0, R, INF, 75.0)),
    ):  # fmt: skip
        panel = Panel(title, caption)
        panel.element(e, at=0.65)
        _vector(panel, e.start, e.sang, "sang", 44.0, POINT)
        panel.point(e.start, "end = 1", math.pi, POINT, 4)
        panel.point(e.end, "end = 2", math.pi if e.type != 2 else -EAST, INK, 3)
        _vector(panel, e.end, e.eang, "eang", 30.0, THIN)
        panels.append(panel)
    return sheet(panels)


# ---- walking


def walking():
    """Stations, offsets, feet, lengths."""
    a = lay(("A", 120, R, INF, 80), azimuth=EAST - 0.8)[0]
    panels = []
    panel = Panel("ali_onl", "point and tangent at the station s")
    panel.element(a, GIVEN, at=0.9)
    p = a.point_at(80.0)
    panel.point(a.start, "station 0", math.pi)
    _vector(panel, p[:2], p.azimuth, "tangent", 44.0)
    panel.point(p[:2], "s = 80", -0.7, COLOURS[1], 4)
    panels.append(panel)

    panel = Panel("ali_ofl*", "d from there, in the direction tangent - angle")
    panel.element(a, GIVEN, at=0.9)
    for angle, d, label in ((math.pi / 2, 40.0, "\u03c0/2"), (3 * math.pi / 2, 40.0, "3\u03c0/2"), (math.pi / 5, 55.0, "\u03c0/5")):
        out = PAIR()
        raw.ali_oflA(a, 80.0, angle, d, out)
        panel.line(p[:2], tuple(out), INK, "", 1.1)
        panel.point(tuple(out), label, p.azimuth - angle, COLOURS[1], 4)
    panel.point(p[:2], hollow=True)
    panels.append(panel)

    panel = Panel("ali_proj", "station and foot of the perpendicular")
    panel.element(a, GIVEN, at=0.9)
    for q in ((105.0, 15.0), (30.0, 110.0)):
        foot = a.project(q)
        panel.line(q, (foot.x, foot.y))
        panel.point(q, "P", math.pi if q[0] < 50 else 0.0, POINT, 4)
        panel.point((foot.x, foot.y), f"s = {foot.station:.1f}", 0.0 if q[0] < 50 else EAST + 0.4, hollow=True, reach=12)
    panels.append(panel)

    chain = lay(("S", 60), ("A", 80, R, INF, 80), ("R", 80, R, 60), azimuth=EAST - 0.6)
    panel = Panel("Calc_moni, get_moniDist", "distance to the first element that answers")
    for e in chain:
        panel.element(e, GIVEN)
    for e in chain[1:]:
        panel.point(e.start, hollow=True, size=3)
    block = (Element * 3)(*[Element.from_buffer_copy(e) for e in chain])
    for q in ((45.0, 20.0), (80.0, 80.0), (5.0, 120.0), (-20.0, -30.0)):
        dist = ctypes.c_double()
        found = raw.get_moniDist(q, 3, block, ctypes.byref(dist))
        panel.point(q, f"{dist.value:.1f}", 0.0 if q[0] > 0 else math.pi, POINT, 4)
        for e in chain:
            if found == 1:
                try:
                    foot = e.project(q)
                except ValueError:
                    continue
                panel.line(q, (foot.x, foot.y))
                break
    panels.append(panel)

    panel = Panel("jointCheck", "0 when e2 goes on where e1 ends")
    e1, e2, e3 = chain[1], chain[2], Arc.from_start(chain[1].end, chain[1].eang - 0.9, 80.0, 60.0, R)
    panel.element(e1, GIVEN, label="e1")
    panel.element(e2, label=f"e2: {raw.jointCheck(e1, e2)}")
    panel.element(e3, BEFORE, width=2.0, dash="6 4", label=f"e2: {raw.jointCheck(e1, e3)}")
    panel.point(e1.end, hollow=True, size=3)
    panels.append(panel)

    panel = Panel("CDsameA", "two pieces of one standard clothoid")
    both = lay(("A", 110, R, INF, 180), ("A", 110, R, 180, 80), azimuth=EAST - 0.6)
    panel.element(both[0], label="A = 110")
    panel.element(both[1], label=f"A = 110, result {raw.CDsameA(*both)}")
    panel.point(both[1].start, hollow=True, size=3)
    panels.append(panel)
    return sheet(panels)


# ---- movement


def movement():
    """Parallel, turned, square to the element."""
    e = Arc.from_start((0.0, 0.0), EAST - 0.7, 100.0, 120.0, R)
    panels = []
    panel = Panel("ali_pmov", "moved by d along an azimuth")
    moved = e.moved(45.0, EAST + 0.5)
    panel.element(e, GIVEN)
    panel.element(moved)
    for p, q in ((e.start, moved.start), (e.end, moved.end)):
        panel.line(p, q, INK, "", 1.1, head=True)
    panels.append(panel)

    panel = Panel("ali_tmov", "turned about c, clockwise on the map")
    c = (-25.0, 10.0)
    panel.element(e, GIVEN)
    panel.element(e.turned(c, 0.7))
    panel.point(c, "c", math.pi, POINT, 4)
    direction = math.atan2(e.sy - c[1], e.sx - c[0])
    panel.angle(c, direction, direction + 0.7, 24, "0.7", reach=9)
    panels.append(panel)

    panel = Panel("ali_paraS", "d to the left of travel, negative to the right")
    s = Straight((0.0, 0.0), (45.0, 150.0))
    panel.element(s, GIVEN)
    panel.element(s.parallel(28.0), label="d = 28")
    panel.element(s.parallel(-20.0), label="d = -20", side=-1)
    panels.append(panel)

    panel = Panel("para_pmovr", "ends moved off the centre; rebuild with R + d")
    out = e.copy()
    raw.para_pmovr(e, 25.0, out)
    panel.element(e, GIVEN, label="R")
    for p, q in ((e.start, out.start), (e.end, out.end)):
        panel.line(p, q, INK, "", 1.1, head=True)
    panel.element(Arc(out.start, out.end, 125.0, R), label="R + d")
    panels.append(panel)

    chain = lay(("S", 50), ("A", 70, R, INF, 70), ("R", 70, R, 60), azimuth=EAST - 0.7)
    panel = Panel("many_ali_pmov, many_ali_tmov", "a whole chain in place")
    block = (Element * 3)(*[Element.from_buffer_copy(x) for x in chain])
    raw.many_ali_tmov(3, block, (0.0, 0.0), 0.5)
    raw.many_ali_pmov(3, block, 25.0, EAST)
    for x in chain:
        panel.element(x, GIVEN)
    for x in block:
        panel.element(x)
    panels.append(panel)
    return sheet(panels, points=True)


# ---- intersection


def intersection():
    """The six pairs."""
    s = Straight((10.0, -10.0), (60.0, 160.0))
    r = Arc.from_start((0.0, 0.0), 0.25, 80.0, 200.0, R)
    a = Clothoid.from_start((70.0, 0.0), EAST + 0.55, 110.0, L, INF, 65.0)
    cases = (
        ("ali_intpSS", "unbounded lines, signed stations", s, Straight((90.0, 20.0), (-10.0, 120.0))),
        ("ali_intpSR", "straight and arc", Straight((20.0, -20.0), (75.0, 170.0)), r),
        ("ali_intpRR", "two arcs", r, Arc.from_start((95.0, 0.0), 2.8, 90.0, 230.0, L)),
        ("ali_intpRA", "arc and clothoid", r, a),
        ("ali_intpSA", "straight and clothoid", Straight((35.0, -20.0), (45.0, 170.0)), a),
        ("ali_intpAA", "two clothoids; the stations have another order",
         a, Clothoid.from_start((25.0, -10.0), EAST - 0.25, 120.0, R, INF, 75.0)),
    )  # fmt: skip
    panels = []
    for title, caption, e1, e2 in cases:
        panel = Panel(title, caption)
        panel.element(e1, label="e1", at=0.55)
        panel.element(e2, GIVEN, label="e2", at=0.16)
        found = e1.intersect(e2)
        assert found, title
        for i, crossing in enumerate(found, 1):
            panel.point(crossing[:2], f"p{i}" if len(found) > 1 else "p1", math.pi, POINT, 4, reach=12)
        panel.point(e1.start, size=3)
        panel.point(e2.start, size=3)
        panels.append(panel)
    return sheet(panels, legend=False)
