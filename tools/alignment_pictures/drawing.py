"""Panels and sheets of SVG: elements, points, arrows and labels in metres, fitted into a box of pixels.

A panel is in the survey plane (x north is up, y east is to the right) or in the calculation plane (x to the right, y up).
"""

import math
from xml.sax.saxutils import escape

from fenmark_alignment import raw, wrap

GIVEN, BEFORE, INK, THIN = "#7b828c", "#c3c8cf", "#22262b", "#9aa1ab"
COLOURS = {1: "#1f6fb4", 2: "#d0463b", 3: "#23935a"}
POINT = "#8e44ad"
FONT = "font-family='DejaVu Sans, Verdana, sans-serif'"
STEP = 0.4  # radians of turn in one Bezier piece
MARGIN = 30.0


def number(v):
    text = f"{v:.1f}"
    text = text.rstrip("0").rstrip(".") if "." in text else text
    return "0" if text == "-0" else text


class Panel:
    """One drawing with a title above and a caption below. Items are collected in metres and drawn when fitted."""

    def __init__(self, title, caption="", plane="survey", margin=MARGIN):
        self.title, self.caption, self.plane, self.margin = title, caption, plane, margin
        self.items, self.bounds = [], []

    # ---- collecting

    def _see(self, *points):
        self.bounds.extend(points)

    def element(self, e, colour=None, label="", width=3.0, dash="", arrow=True, see=True, side=0, at=0.5):
        """An element; its label stands outside the curve, or on the side given (+1 left, -1 right of travel)."""
        e = wrap(e)
        nodes = self._nodes(e)
        if see:
            self._see(*[p for p, _ in nodes])
        self.items.append(("path", nodes, e.len, colour or COLOURS[e.type], width, dash))
        if e.len <= 0.0:
            return
        p, t = self._at(e, at * e.len)
        if arrow:
            self.items.append(("arrow", p, t, colour or COLOURS[e.type]))
        if label:
            side = side or (-e.dir if e.type != 1 else 1)
            normal = t + math.pi / 2 * side * (1 if self.plane == "calc" else -1)
            self.items.append(("label", p, normal, label, colour or COLOURS[e.type], 13))

    def _at(self, e, s):
        """Point and direction in the panel's plane."""
        x, y, azimuth = e.point_at(min(max(s, 0.0), e.len))
        return ((x, -y), -azimuth) if self.plane == "calc" else ((x, y), azimuth)

    def _nodes(self, e):
        turn = {1: 0.0, 2: e.k3, 3: abs(e.par**2 * ((e.r2 and 1 / e.r2**2) - (e.r1 and 1 / e.r1**2)) / 2)}[e.type]
        count = max(1, math.ceil(turn / STEP)) * (2 if e.type == 3 else 1)
        return [self._at(e, e.len * i / count) for i in range(count + 1)]

    def calc_element(self, e, **style):
        """An element whose record is in the calculation plane."""
        out = wrap(e)
        raw.CDchgSpace(e, out)
        self.element(out, **style)

    def point(self, p, label="", direction=math.pi / 4, colour=INK, size=3.4, hollow=False, reach=10):
        """A point; its label stands in the direction given, an angle of the panel's plane."""
        self._see(p)
        self.items.append(("point", p, colour, size, hollow))
        if label:
            self.items.append(("label", p, direction, label, colour, reach))

    def line(self, p, q, colour=THIN, dash="4 3", width=1.1, see=True, head=False, tail=False):
        if see:
            self._see(p, q)
        self.items.append(("line", p, q, colour, dash, width, head, tail))

    def dimension(self, p, q, label, colour=INK, side=1, reach=9, shift=0.0):
        """A measured distance with a head at both ends, `shift` metres to its left, and its label beside it."""
        a = math.atan2(q[1] - p[1], q[0] - p[0])
        left = a + math.pi / 2 * (1 if self.plane == "calc" else -1)
        p = (p[0] + shift * math.cos(left), p[1] + shift * math.sin(left))
        q = (q[0] + shift * math.cos(left), q[1] + shift * math.sin(left))
        self.line(p, q, colour, "", 1.0, head=True, tail=True)
        middle = ((p[0] + q[0]) / 2, (p[1] + q[1]) / 2)
        normal = a + math.pi / 2 * side * (1 if self.plane == "calc" else -1)
        self.items.append(("label", middle, normal, label, colour, reach))

    def angle(self, at, a, b, radius, label="", colour=INK, reach=11, head=True, label_angle=None):
        """An arrow along an arc about a point from the direction a to b, radians of the panel's plane; radius in px."""
        self._see(at)
        self.items.append(("angle", at, a, b, radius, colour, head))
        if label:
            middle = (a + b) / 2 if label_angle is None else label_angle
            self.items.append(("label", at, middle, label, colour, radius + reach))

    def circle(self, center, radius, colour=THIN, dash="3 3", see=False):
        if see:
            for d in ((radius, 0), (-radius, 0), (0, radius), (0, -radius)):
                self._see((center[0] + d[0], center[1] + d[1]))
        self.items.append(("circle", center, radius, colour, dash))

    def text(self, p, text, colour=INK, anchor="middle", direction=0.0, reach=0.0, see=True):
        if see:
            self._see(p)
        self.items.append(("text", p, direction, reach, text, colour, anchor))

    def see(self, *points):
        """Makes room for points without drawing them."""
        self._see(*points)

    # ---- drawing

    def _flat(self, p):
        """A point in drawing units: to the right, downwards."""
        return (p[1], -p[0]) if self.plane == "survey" else (p[0], -p[1])

    def _pixel(self, p):
        x, y = self._flat(p)
        return (self.ox + x * self.scale, self.oy + y * self.scale)

    def _toward(self, a):
        """Unit step on the screen of a direction."""
        return (math.sin(a), -math.cos(a)) if self.plane == "survey" else (math.cos(a), -math.sin(a))

    def svg(self, width, height):
        """The panel's content in a box of the size given, origin at its upper left corner."""
        self.width = width
        flat = [self._flat(p) for p in self.bounds]
        x0, x1 = min(p[0] for p in flat), max(p[0] for p in flat)
        y0, y1 = min(p[1] for p in flat), max(p[1] for p in flat)
        wide, high = width - 2 * self.margin, height - 2 * self.margin
        self.scale = min(wide / max(x1 - x0, 1e-9), high / max(y1 - y0, 1e-9))
        self.ox = width / 2 - self.scale * (x0 + x1) / 2
        self.oy = height / 2 - self.scale * (y0 + y1) / 2
        order = {"circle": 0, "line": 1, "path": 2, "angle": 2, "arrow": 3, "point": 4, "label": 5, "text": 5}
        items = sorted(self.items, key=lambda item: order[item[0]])
        return "\n".join(getattr(self, "_svg_" + kind)(*rest) for kind, *rest in items)

    def _svg_path(self, nodes, length, colour, width, dash):
        h = length / (len(nodes) - 1) / 3 * self.scale
        x, y = self._pixel(nodes[0][0])
        text = f"M{number(x)} {number(y)}"
        for (p, a), (q, b) in zip(nodes, nodes[1:]):
            (px, py), (qx, qy), (ax, ay), (bx, by) = self._pixel(p), self._pixel(q), self._toward(a), self._toward(b)
            values = (px + ax * h, py + ay * h, qx - bx * h, qy - by * h, qx, qy)
            text += "C" + " ".join(number(v) for v in values)
        dashes = f" stroke-dasharray='{dash}'" if dash else ""
        return f"<path d='{text}' fill='none' stroke='{colour}' stroke-width='{width}'{dashes}/>"

    def _head(self, x, y, dx, dy, colour, size):
        """A filled triangle whose tip lies at (x, y)."""
        bx, by = x - dx * size, y - dy * size
        w = size * 0.42
        values = (x, y, bx - dy * w, by + dx * w, bx + dy * w, by - dx * w)
        return f"<path d='M{number(values[0])} {number(values[1])}L" + " ".join(map(number, values[2:])) + (
            f"Z' fill='{colour}'/>"
        )

    def _svg_arrow(self, p, t, colour):
        (x, y), (dx, dy) = self._pixel(p), self._toward(t)
        return self._head(x + dx * 6, y + dy * 6, dx, dy, colour, 12)

    def _svg_line(self, p, q, colour, dash, width, head, tail):
        (px, py), (qx, qy) = self._pixel(p), self._pixel(q)
        dashes = f" stroke-dasharray='{dash}'" if dash else ""
        out = f"<path d='M{number(px)} {number(py)}L{number(qx)} {number(qy)}' stroke='{colour}' stroke-width='{width}'{dashes}/>"
        length = math.hypot(qx - px, qy - py)
        if length > 1e-9:
            dx, dy = (qx - px) / length, (qy - py) / length
            out += self._head(qx, qy, dx, dy, colour, 8) if head else ""
            out += self._head(px, py, -dx, -dy, colour, 8) if tail else ""
        return out

    def _svg_point(self, p, colour, size, hollow):
        x, y = self._pixel(p)
        fill = f"fill='#fff' stroke='{colour}' stroke-width='1.4'" if hollow else f"fill='{colour}'"
        return f"<circle cx='{number(x)}' cy='{number(y)}' r='{size}' {fill}/>"

    def _svg_circle(self, center, radius, colour, dash):
        x, y = self._pixel(center)
        return (
            f"<circle cx='{number(x)}' cy='{number(y)}' r='{number(radius * self.scale)}' fill='none' "
            f"stroke='{colour}' stroke-dasharray='{dash}'/>"
        )

    def _svg_angle(self, at, a, b, radius, colour, head):
        x, y = self._pixel(at)
        (ax, ay), (bx, by) = self._toward(a), self._toward(b)
        large = 1 if abs(b - a) > math.pi else 0
        grows = (b > a) == (self.plane == "survey")
        ends = [number(v) for v in (x + ax * radius, y + ay * radius, x + bx * radius, y + by * radius)]
        out = (
            f"<path d='M{ends[0]} {ends[1]}A{radius} {radius} 0 {large} {int(grows)} {ends[2]} {ends[3]}' "
            f"fill='none' stroke='{colour}' stroke-width='1.1'/>"
        )
        if head:
            # The head's chord lies a little inside the tangent at its tip.
            back = b - math.copysign(min(4.0 / radius, abs(b - a)), b - a)
            dx, dy = self._toward(back + math.copysign(math.pi / 2, b - a))
            out += self._head(x + bx * radius, y + by * radius, dx, dy, colour, 8)
        return out

    def _svg_label(self, p, direction, text, colour, reach):
        (x, y), (dx, dy) = self._pixel(p), self._toward(direction)
        anchor = "start" if dx > 0.45 else "end" if dx < -0.45 else "middle"
        # Kept within the panel; a character is about 6.8 pixels wide.
        wide = 6.8 * len(text)
        left = {"start": 0.0, "middle": wide / 2, "end": wide}[anchor]
        x = min(max(x + dx * reach, 8 + left), self.width - 8 - wide + left)
        return self._words(x, y + dy * reach + 4.2 + dy * 3, text, colour, anchor)

    def _svg_text(self, p, direction, reach, text, colour, anchor):
        (x, y), (dx, dy) = self._pixel(p), self._toward(direction)
        return self._words(x + dx * reach, y + dy * reach + 4.2, text, colour, anchor)

    @staticmethod
    def _words(x, y, text, colour, anchor):
        """Text with a white rim; a part after "_" up to a blank is lowered."""
        parts = []
        for i, word in enumerate(text.split(" ")):
            head, _, low = word.partition("_")
            blank = "\u00a0" if i else ""
            parts.append(escape(blank + head))
            if low:
                parts.append(f"<tspan dy='3' font-size='9'>{escape(low)}</tspan><tspan dy='-3'>\u200b</tspan>")
        return (
            f"<text x='{number(x)}' y='{number(y)}' fill='{colour}' text-anchor='{anchor}' class='l'>{''.join(parts)}</text>"
        )


LEGEND = (
    ("given", GIVEN, ""), ("given, before", BEFORE, "6 4"), ("straight made", COLOURS[1], ""),
    ("arc made", COLOURS[2], ""), ("clothoid made", COLOURS[3], ""),
)  # fmt: skip


def sheet(panels, columns=3, width=310, height=196, legend=True, points=True):
    """An SVG file of panels in a grid."""
    rows = math.ceil(len(panels) / columns)
    head, foot = 24, 22
    cell = height + head + foot
    total_w, total_h = columns * width + 20, rows * cell + 12 + (30 if legend else 0)
    out = [
        f"<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 {total_w} {total_h}' width='{total_w}' height='{total_h}' {FONT}>",
        "<style>.l{font-size:12px;paint-order:stroke;stroke:#fff;stroke-width:3px;stroke-linejoin:round}"
        ".t{font-size:13px;font-weight:bold}.c{font-size:11px}.k{font-size:11px}</style>",
        f"<rect width='{total_w}' height='{total_h}' rx='8' fill='#fff'/>",
    ]
    for i, panel in enumerate(panels):
        x, y = 10 + (i % columns) * width, 8 + (i // columns) * cell
        out.append(f"<g transform='translate({x} {y})'>")
        out.append(f"<rect x='3' y='1' width='{width - 6}' height='{cell - 6}' rx='6' fill='none' stroke='#e3e6ea'/>")
        out.append(f"<text x='14' y='19' class='t' fill='{INK}'>{escape(panel.title)}</text>")
        out.append(f"<g transform='translate(0 {head})'>{panel.svg(width, height)}")
        if panel.plane == "survey":
            out.append(
                f"<path d='M{width - 20} 14v-20' stroke='{THIN}'/><path d='M{width - 20} -10l3.4 8h-6.8Z' fill='{THIN}'/>"
                f"<text x='{width - 26}' y='4' text-anchor='end' class='k' fill='{THIN}'>N</text>"
            )
        out.append("</g>")
        out.append(f"<text x='14' y='{height + head + 8}' class='c' fill='#59616b'>{escape(panel.caption)}</text></g>")
    if legend:
        x, y = 24, total_h - 18
        for text, colour, dash in LEGEND:
            dashes = f" stroke-dasharray='{dash}'" if dash else ""
            out.append(f"<path d='M{x} {y}h26' stroke='{colour}' stroke-width='{2 if dash else 3}'{dashes}/>")
            out.append(f"<text x='{x + 32}' y='{y + 4}' class='k' fill='{INK}'>{text}</text>")
            x += 60 + 7 * len(text)
        if points:
            out.append(f"<circle cx='{x}' cy='{y}' r='4' fill='{POINT}'/>")
            out.append(f"<text x='{x + 10}' y='{y + 4}' class='k' fill='{INK}'>point given</text>")
    return "\n".join([*out, "</svg>", ""])
