"""Pictures of the conventions: the two planes, the record, the signs, and the standard clothoid."""

import ctypes
import math

from fenmark_alignment import Arc, Straight, raw

from .chains_of import EAST, GIVEN, INF, INK, L, Panel, R, lay
from .drawing import COLOURS, THIN, sheet


def _axes(panel, origin, x_reach, y_reach, x_text, y_text):
    x = (origin[0] + x_reach, origin[1])
    y = (origin[0], origin[1] + y_reach)
    panel.line(origin, x, INK, "", 1.3, head=True)
    panel.line(origin, y, INK, "", 1.3, head=True)
    panel.text(x, x_text, anchor="start" if panel.plane == "calc" else "middle", direction=0.0, reach=9)
    panel.text(y, y_text, anchor="middle" if panel.plane == "calc" else "start", direction=math.pi / 2, reach=9)


def planes():
    """One right curve in both planes."""
    chain = lay(("S", 60), ("R", 55, R, 75), azimuth=0.45, start=(25.0, 20.0))
    panels = []
    for plane, title, caption, x_text, y_text in (
        ("survey", "survey plane", "x north, y east; angles are azimuths, clockwise", "x (north)", "y (east)"),
        ("calc", "calculation plane", "(x, -y), right-handed; angles anticlockwise from +x", "x", "y' = -y"),
    ):
        panel = Panel(title, caption, plane, margin=36)
        sign = -1.0 if plane == "calc" else 1.0
        _axes(panel, (0.0, 0.0), 110.0, 110.0 if plane == "survey" else 30.0, x_text, y_text)
        panel.element(chain[0])
        panel.element(chain[1], label="R, dir = -1")
        p = (chain[0].sx, sign * chain[0].sy)
        panel.line(p, (p[0] + 34.0, p[1]))
        panel.angle(p, 0.0, sign * 0.45, 52, "sang", reach=12, label_angle=sign * 0.08)
        panel.point(p, f"({chain[0].sx:g}, {sign * chain[0].sy:g})", math.pi if plane == "survey" else -2.4)
        panels.append(panel)
    return sheet(panels, columns=2, width=380, height=270, legend=False)


def element():
    """The fields of a record, by type."""
    s = Straight((0.0, 0.0), (55.0, 130.0))
    one = Panel("type 1: straight", "dir = 1, par = r1 = r2 = 0; k1 to k3: line coefficients", margin=38)
    one.element(s)
    one.line(s.start, (45.0, 0.0))
    one.angle(s.start, 0.0, s.sang, 40, "sang = eang", reach=10, label_angle=0.42)
    one.point(s.start, "(sx, sy)", math.pi)
    one.point(s.end, "(ex, ey)", 0.0)
    one.dimension(s.start, s.end, "len", side=-1, shift=-9.0)

    r = Arc.from_start((0.0, 0.0), EAST - 0.9, 100.0, 150.0, R)
    two = Panel("type 2: arc", "r1 = r2 = 0", margin=38)
    two.element(r)
    two.line(r.center, r.start, THIN)
    two.line(r.center, r.end, THIN)
    two.dimension(r.center, r.point_at(95.0)[:2], "par = R", COLOURS[2], side=1)
    two.angle(r.center, r.sang - EAST, r.eang - EAST, 34, "k3", reach=8, label_angle=r.sang - EAST + 0.4)
    two.point(r.center, "(k1, k2)", math.pi)
    two.point(r.start, "(sx, sy)", math.pi)
    two.point(r.end, "(ex, ey)", EAST)
    for at, angle, label in ((r.start, r.sang, "sang"), (r.end, r.eang, "eang")):
        tip = (at[0] + 34 * math.cos(angle), at[1] + 34 * math.sin(angle))
        two.line(at, tip, INK, "", 1.2, head=True)
        two.text(tip, label, direction=angle, reach=12)

    a = lay(("A", 110, L, INF, 75), azimuth=EAST + 0.1)[0]
    three = Panel("type 3: clothoid", "par = A; k1 = \u03c4, k2 = \u0394R, k3 = Xm, of the sharp end", margin=38)
    three.element(a, label="dir = +1", at=0.35)
    centre = (a.ex + a.r2 * math.cos(a.eang - EAST), a.ey + a.r2 * math.sin(a.eang - EAST))
    three.line(a.end, centre, THIN, head=True)
    three.text(((a.ex + centre[0]) / 2, (a.ey + centre[1]) / 2), "r2", direction=a.eang, reach=12)
    three.point(a.start, "(sx, sy)", math.pi)
    three.text(a.start, "r1 = 0 (infinite)", direction=0.0, reach=16, anchor="start", see=False)
    three.point(a.end, "(ex, ey)", EAST)
    ahead = (a.sx + 150 * math.cos(a.sang), a.sy + 150 * math.sin(a.sang))
    three.line(a.start, ahead)
    tip = (a.ex + 34 * math.cos(a.eang), a.ey + 34 * math.sin(a.eang))
    three.line(a.end, tip, INK, "", 1.2, head=True)
    three.text(tip, "eang", direction=a.eang, reach=12)
    return sheet([one, two, three], width=330, height=230, legend=False)


def signs():
    """Turning senses, growth of curvature, sides."""
    panels = []
    turn = Panel("turning sense: dir", "left of travel +1, right -1; the centre lies on that side")
    for d in (L, R):
        r = Arc.from_start((0.0, 0.0), EAST, 80.0, 90.0, d)
        turn.element(r, label=f"dir = {d:+d}", at=0.7)
        turn.point(r.center, "centre", EAST, THIN)
        turn.line(r.center, r.end, THIN)
    turn.point((0.0, 0.0), "start", -EAST)
    panels.append(turn)

    kinds = Panel("growth of curvature: r1 and r2", "0 is an infinite radius; no other field says which way")
    for i, (r1, r2, label) in enumerate(((INF, 75.0, "r1 = 0, r2 = 75"), (75.0, INF, "r1 = 75, r2 = 0"),
                                         (200.0, 75.0, "r1 = 200, r2 = 75"))):  # fmt: skip
        a = lay(("A", 95, R, r1, r2), azimuth=EAST - (0.8 if r1 == 75.0 else 0.3), start=(-62.0 * i, 20.0 * (r1 != INF)))[0]
        kinds.element(a, label="")
        kinds.text((-62.0 * i + 4.0, 150.0), label, anchor="start")
        kinds.point(a.start, size=3)
        kinds.point(a.end, hollow=True, size=3)
    kinds.see((0.0, 270.0))
    panels.append(kinds)

    side = Panel("directions beside an element", "tangent - angle, in ali_ofl* and ali_Smak*")
    r = Arc.from_start((0.0, 0.0), EAST - 0.5, 150.0, 150.0, R)
    side.element(r, GIVEN, at=0.9)
    at = r.point_at(75.0)
    for angle, label in ((math.pi / 2, "angle = \u03c0/2"), (3 * math.pi / 2, "angle = 3\u03c0/2"), (0.0, "angle = 0")):
        out = (ctypes.c_double * 2)()
        raw.ali_oflR(r, 75.0, angle, 42.0, out)
        side.line(at[:2], tuple(out), INK, "", 1.2, head=True)
        side.text(tuple(out), label, direction=at.azimuth - angle, reach=10, anchor="middle" if angle else "start")
    side.point(at[:2], hollow=True)
    panels.append(side)
    return sheet(panels, width=320, height=220, legend=False)


def clothoid():
    """The standard clothoid with its values, in the calculation plane."""
    A, radius = 100.0, 80.0
    values = (ctypes.c_double * 13)()
    tau = ctypes.c_double()
    raw.CDRang(A, radius, tau)
    raw.clothoidElements(A, tau.value, values)
    x, y, shift, xm, long_tangent = values[4], values[5], values[11], values[12], values[8]
    tau = tau.value
    a = lay(("A", A, L, INF, radius), azimuth=0.0)[0]
    panel = Panel("standard clothoid", "", "calc", margin=44)
    panel.line((-12.0, 0.0), (x + 36.0, 0.0), INK, "", 1.3, head=True)
    panel.line((0.0, -18.0), (0.0, shift + radius + 8.0), INK, "", 1.3, head=True)
    panel.text((x + 36.0, 0.0), "x", direction=0.0, reach=10)
    panel.text((0.0, shift + radius + 8.0), "y", direction=EAST, reach=10)
    panel.element(a, label="L = A\u00b2 / R", side=1, at=0.27)
    centre = (xm, shift + radius)
    for part in (Arc.from_start(a.end, a.eang, radius, 0.55 * radius, L), Arc.from_end(a.end, a.eang, radius, 1.5 * radius, L)):
        panel.element(part, THIN, width=1.1, dash="4 3", arrow=False)
    panel.line(centre, (x, y), COLOURS[2], "", 1.3)
    panel.text(((xm + x) / 2, (centre[1] + y) / 2), "R", COLOURS[2], direction=0.6, reach=10)
    panel.line(centre, (xm, 0.0), THIN)
    panel.point(centre, "centre", EAST)
    panel.line((0.0, centre[1]), centre, THIN)
    panel.dimension((0.0, centre[1] - 6.0), (xm, centre[1] - 6.0), "Xm", side=-1)
    panel.line((xm, 0.0), (xm, shift), COLOURS[2], "", 2.4)
    panel.text((xm, shift / 2), "\u0394R", COLOURS[2], anchor="end", direction=math.pi, reach=6)
    panel.line((x, y), (x, -18.0), THIN)
    panel.dimension((0.0, -17.0), (x, -17.0), "X", side=-1)
    panel.dimension((x + 30.0, 0.0), (x + 30.0, y), "Y", side=-1)
    panel.line((x, y), (x + 32.0, y), THIN)
    panel.line((long_tangent, 0.0), (x + 0.22 * (x - long_tangent), y * 1.22), INK, "4 3", 1.2)
    panel.angle((long_tangent, 0.0), 0.0, tau, 30, "\u03c4", reach=9, label_angle=0.3)
    panel.point((long_tangent, 0.0), size=3, hollow=True)
    panel.dimension((0.0, -7.0), (long_tangent, -7.0), "long tangent", side=-1)
    panel.text(((long_tangent + x) / 2, y / 2), "short tangent", anchor="start", direction=-0.7, reach=8)
    panel.point((x, y), "(X, Y)", 0.0)
    panel.point((0.0, 0.0), "origin", -2.4)
    return sheet([panel], columns=1, width=720, height=480, legend=False)


