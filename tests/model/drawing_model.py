"""A small model of the drawing that an import makes, written from the rules and not from the importer.

It takes the records of a well-formed file and gives alignments, points and polylines as `fenmark info --json` tells
them, laid in the sense that a positive radius turns left, or right, or in the one that the joints of each route prove.
Coordinates are the drawing's: x east, y north, metres.
"""
import copy
import math
import re

from construction import clothoid_tangents

BLANKS = " \t\n\v\f\r"
PI = 3.141592653589793
SAME_POINT = 1e-10    # metres
PARALLEL = 1e-10      # sine of the angle between two lines
MERGE_ANGLE = 1.0 / 180.0 * PI
AUXILIARY = 100.0     # metres
STATION_SLACK = 1e-6  # metres beyond either end of an alignment
PI_SHARE = 0.01       # how far a PI's distance may be off
PI_DISTANCE = 0.01    # metres, at least
HALF_CIRCLE = 0.002   # metres that a chord may be longer than the diameter
KINK = math.radians(1.0)  # a joint that is worse is no worse for that
ROUTE_TYPES = {1: "IP線", 4: "幅杭線左", 5: "幅杭線右", 6: "連続線"}
POINT_TABLE, POLYLINE_TABLE = "JSIMA_V3_Point", "JSIMA_V3_Pline"
NO_POINT = (0.0, 0.0)


class BrokenOff(Exception):
    """The route begins with a clothoid: nothing behind it is read."""


class Refused(Exception):
    """The host does not lay the element."""


def real(text):
    found = re.match(r"[ \t\n\v\f\r]*([+-]?(?:\d+\.?\d*|\.\d+)(?:[eE][+-]?\d+)?)", text)
    return float(found.group(1)) if found else 0.0


def clean(text):
    return text.replace("\u3000", " ").strip(BLANKS)


# ---- elements -------------------------------------------------------------------------------------------------------

class Element:
    """Coordinates are kept as a text of twelve decimals would keep them."""

    def __init__(self, point):
        self.type, self.left, self.radius = "S", False, 0.0
        self.parameter, self.radii = 0.0, (0.0, 0.0)
        self.start, self.start_z = point[:2], point[2]
        self.end, self.end_z = None, 0.0
        self.pi = NO_POINT

    def restart(self, point):
        self.start = tuple(float("%0.12f" % value) for value in point)
        self.find_pi()

    def length(self):
        first, last = (self.parameter ** 2 / radius if radius else 0.0 for radius in self.radii)
        return abs(last - first)

    def find_pi(self):
        """Where the end tangents meet; the origin where they do not, or run at unequal heights."""
        self.pi = NO_POINT
        if self.end is None or self.type != "A" or abs(self.start_z - self.end_z) > SAME_POINT:
            return
        first, last = clothoid_tangents(self.start, self.end, self.left, self.parameter, *self.radii)
        sine = math.sin(last - first)
        if abs(sine) > PARALLEL:
            dx, dy = self.end[0] - self.start[0], self.end[1] - self.start[1]
            along = (dx * math.sin(last) - dy * math.cos(last)) / sine
            self.pi = (self.start[0] + along * math.cos(first), self.start[1] + along * math.sin(first))


def direction(start, end):
    angle = math.atan2(end[1] - start[1], end[0] - start[0])
    return angle + 2.0 * math.pi if angle < 0.0 else angle


def cleaned(elements):
    """Without the open last element, elements of no length, and the joints of nearly straight straights."""
    chain = [element for element in elements[:-1]
             if math.dist(element.start, element.end) > SAME_POINT or abs(element.start_z - element.end_z) > SAME_POINT]
    i = 0
    while i + 1 < len(chain):
        here, there = chain[i], chain[i + 1]
        a, b = direction(here.start, here.end), direction(there.start, there.end)
        if here.type == there.type == "S" and b - MERGE_ANGLE <= a <= b + MERGE_ANGLE:
            here.end, here.end_z = there.end, there.end_z
            del chain[i + 1]
        else:
            i += 1
    return chain


# ---- the curves that a host lays ------------------------------------------------------------------------------------

NODES = [0.1834346424956498, 0.5255324099163290, 0.7966664774136267, 0.9602898564975363]
WEIGHTS = [0.3626837833783620, 0.3137066458778873, 0.2223810344533745, 0.1012285362903763]


def travelled(k0, k1, length, along):
    """Local point and turn after `along` metres of a curve whose curvature goes from k0 to k1 over its length."""
    growth = (k1 - k0) / length if length else 0.0
    parts = 1 + int(max(abs(k0), abs(k1)) * abs(along) / 0.15)
    half = along / parts / 2.0
    x = y = 0.0
    for part in range(parts):
        middle = half * (2 * part + 1)
        for node, weight in zip(NODES, WEIGHTS):
            for place in (middle - half * node, middle + half * node):
                turn = place * (k0 + growth * place / 2.0)
                x += weight * math.cos(turn)
                y += weight * math.sin(turn)
    return half * x, half * y, along * (k0 + growth * along / 2.0)


class Laid:
    def __init__(self, kind, start, end, angle, length, k0=0.0, k1=0.0, radii=None):
        self.type, self.start, self.end, self.angle, self.length = kind, start, end, angle, length
        self.k0, self.k1, self.radii = k0, k1, radii

    def end_angle(self):
        return self.angle + (self.k0 + self.k1) / 2.0 * self.length

    def point(self, along, offset):
        x, y, turn = travelled(self.k0, self.k1, self.length, along)
        angle = self.angle + turn
        return (self.start[0] + x * math.cos(self.angle) - y * math.sin(self.angle) + offset * math.sin(angle),
                self.start[1] + x * math.sin(self.angle) + y * math.cos(self.angle) - offset * math.cos(angle))


def angle_of(start, end, before):
    return direction(start, end) if start != end else before[-1].end_angle() if before else 0.0


def lay_line(start, end, before):
    return Laid("S", start, end, angle_of(start, end, before), math.dist(start, end))


def lay_arc(element, before, over):
    radius, chord = element.radius, math.dist(element.start, element.end)
    if not radius > 0.0 or chord > 2.0 * radius + HALF_CIRCLE:
        raise Refused
    radius = max(radius, chord / 2.0)
    half = math.asin(min(chord / (2.0 * radius), 1.0))
    turn = -1.0 if element.left != over else 1.0
    return Laid("R", element.start, element.end, angle_of(element.start, element.end, before) - turn * half,
                2.0 * half * radius, turn / radius, turn / radius, (radius, radius))


def lay_spiral(element, before, over):
    length, radii = element.length(), [radius or math.inf for radius in element.radii]
    if not length > 0.0:
        raise Refused
    k0, k1 = ((-1.0 if element.left else 1.0) / radius for radius in radii)
    x, y, turn = travelled(k0, k1, length, length)
    tangent = x - y / math.tan(turn)
    if abs(math.dist(element.start, element.pi) - abs(tangent)) <= max(PI_SHARE * abs(tangent), PI_DISTANCE):
        angle = direction(element.start, element.pi) if tangent >= 0.0 else direction(element.pi, element.start)
        if over:
            # The image in the chord, which lies at this angle.
            angle, k0, k1 = angle + 2.0 * math.atan2(y, x), -k0, -k1
    else:
        angle = before[-1].end_angle()
        if over:
            k0, k1 = -k0, -k1
    laid = Laid("A", element.start, None, angle, length, k0, k1, radii)
    laid.end = laid.point(length, 0.0)
    return laid


def lay(chain, laid, over):
    """Adds each element of the chain to the list, turned over if it is in the set; a curve's end is where the next
    element starts."""
    for element in chain:
        if element.type == "A":
            element.find_pi()
    for i, element in enumerate(chain):
        if element.type == "S":
            laid.append(lay_line(element.start, element.end, laid))
            continue
        if element.type == "A" and i == 0:
            away = direction(element.pi, element.start)
            behind = (element.start[0] + AUXILIARY * math.cos(away), element.start[1] + AUXILIARY * math.sin(away))
            laid.append(lay_line(behind, element.start, laid))
            raise BrokenOff
        laid.append((lay_arc if element.type == "R" else lay_spiral)(element, laid, i in over))
        if i + 1 < len(chain):
            chain[i + 1].restart(laid[-1].end)


# ---- turning senses ---------------------------------------------------------------------------------------------------

def kinks(chain, over):
    """The angles of the joints, of a route laid with these elements turned over."""
    laid = []
    try:
        lay(copy.deepcopy(chain), laid, over)
    except Refused:
        return math.inf
    return sum(min(abs(math.remainder(b.angle - a.end_angle(), 2.0 * math.pi)), KINK) for a, b in zip(laid, laid[1:]))


def turned_over(chain, sense):
    """Which elements turn the other way. For a route whose joints prove it: either whole sense, mended
    curve by curve, whatever has fewer kinks; then the one that changes between
    neighbours less often."""
    curves = {i for i, element in enumerate(chain) if element.type != "S"}
    if sense == "left" or not curves:
        return set()
    if sense == "right":
        return curves
    if chain[0].type == "A":
        return set()
    ways = [(mended(chain, curves, whole), whole) for whole in (set(), curves)]

    def changes(over, whole):
        against = [i in over ^ whole for i in range(len(chain))]
        return sum(a != b for a, b in zip([False] + against, against))

    return min(ways, key=lambda way: (round(2.0 * kinks(chain, way[0]) / KINK), changes(*way)))[0]


def mended(chain, curves, over):
    """Turns one curve over, or all from one on, as long as that mends kinks."""
    while True:
        changes = [{i} for i in sorted(curves)] + [{j for j in curves if j >= i} for i in sorted(curves)]
        best = min((change ^ over for change in changes), key=lambda senses: kinks(chain, senses))
        if kinks(chain, best) > kinks(chain, over) - KINK / 2.0:
            return over
        over = best


# ---- walls ----------------------------------------------------------------------------------------------------------

def shifted_stations(stations, shift):
    stations = list(stations)
    i, k = 0, 1
    while i < len(stations):
        if i < len(stations) - k and stations[i] == stations[i + k]:
            stations[i + k] += k * shift
            k += 1
        elif i < len(stations) - k:
            i, k = i + 1, 1
        else:
            i += 1
    return stations


def shifted_walls(offsets, heights, shift):
    offsets, heights = list(offsets), list(heights)
    i, k, left = 0, 1, False
    while i < len(offsets):
        if i < len(offsets) - k and offsets[i] == offsets[i + k]:
            left = offsets[i] < 0.0
            offsets[i + k] += -k * shift if left else k * shift
            k += 1
        elif i < len(offsets) - k:
            if k != 1 and left:
                held = heights[i]
                for m in range(k - 1):
                    heights[i + m] = heights[i + k - 1 - m]
                heights[i + k - 1] = held
            i, k = i + 1, 1
        else:
            i += 1
    return offsets, heights


# ---- the drawing ----------------------------------------------------------------------------------------------------

class Alignment:
    def __init__(self, name, description):
        self.name, self.description, self.start_station, self.laid = name, description, 0.0, []

    def point(self, station, offset=0.0):
        """The point at a station, None outside the chain."""
        length = sum(element.length for element in self.laid)
        along = station - self.start_station
        if not self.laid or not -STATION_SLACK <= along <= length + STATION_SLACK:
            return None
        along = min(max(along, 0.0), length)
        for element in self.laid[:-1]:
            if along < element.length:
                return element.point(along, offset)
            along -= element.length
        return self.laid[-1].point(along, offset)


class Drawing:
    """What the records make; `broken` if a leading clothoid ends the import."""

    def __init__(self, records, file_name, shift, sense="left"):
        self.file_name, self.shift, self.sense = file_name, shift, sense
        self.alignments, self.entities = [], []
        self.outside = 0  # results whose station is none of the alignment
        self.broken = False
        self.points, self.routes = {}, {}
        try:
            self.take(records)
        except BrokenOff:
            self.broken = True

    def add(self, kind, layer, where, table, number, name, source, closed=False):
        self.entities.append((kind, layer, closed, where, [table, number, name, source, self.file_name]))

    def take(self, records):
        take_in = {"A00": self.take_points, "D00": self.take_lot, "F00": self.take_route, "H00": self.take_longitudinal,
                   "I00": self.take_cross_sections}
        section = []
        for fields in records:
            section.append(fields)
            if fields[0] in ("A99", "D99", "F99", "H99", "I99"):
                take_in[section[0][0]](section)
                section = []

    def take_points(self, section):
        for fields in section[1:-1]:
            x, y, z = real(fields[4]), real(fields[3]), real(fields[5])
            self.points[int(fields[1])] = (x, y, z)
            self.add("point", "0", [(x, y, z)], POINT_TABLE, int(fields[1]), fields[2], "座標")

    def take_lot(self, section):
        outline = [self.points[int(fields[1])][:2] for fields in section[1:-1]]
        if outline:
            self.add("polyline", "0", outline, POLYLINE_TABLE, int(section[0][1]), section[0][2], "画地",
                     section[0][3].strip(BLANKS) == "1")

    def take_route(self, section):
        number, name, kind = int(section[0][1]), section[0][3], section[0][4]
        elements, start_station = [], 0.0
        for fields in section[1:-1]:
            if fields[0] == "F03":
                start_station = real(fields[1])
            elif fields[0] == "B01":
                point = self.points[int(fields[1])]
                if elements:
                    elements[-1].end, elements[-1].end_z = point[:2], point[2]
                elements.append(Element(point))
            elif elements and kind in ("2", "3", "7", "0", "8"):
                self.take_curve(elements[-1], fields)
        alignment = None
        if kind in ("2", "3", "7"):
            alignment = self.make_alignment(name, start_station, elements)
        elif kind in ("1", "4", "5", "6") and elements:
            # The end of a route of one point is that of no element: the origin.
            vertices = [element.start for element in elements[:-1]]
            vertices.append(elements[-2].end if len(elements) > 1 else NO_POINT)
            self.add("polyline", "0", vertices, POLYLINE_TABLE, number, name, ROUTE_TYPES[int(kind)])
        self.routes.setdefault(number, alignment)

    @staticmethod
    def take_curve(element, fields):
        if fields[0] == "C01":
            element.type, element.radius, element.left = "R", abs(real(fields[2])), real(fields[2]) < 0.0
        else:
            parameter, first, last = (real(clean(field)) for field in fields[1:4])
            element.type, element.parameter, element.radii = "A", parameter, (abs(first), abs(last))
            element.left = first < 0.0 or last < 0.0

    def make_alignment(self, name, start_station, elements):
        """None for a half-made one, which stays in the drawing."""
        alignment = Alignment(name, self.file_name[:-len(".sim")] + "-" + name)
        self.alignments.append(alignment)
        try:
            chain = cleaned(elements)
            lay(chain, alignment.laid, turned_over(chain, self.sense))
        except Refused:
            return None
        alignment.start_station = start_station
        return alignment

    def take_longitudinal(self, section):
        alignment, number = self.routes.get(int(section[0][1])), int(section[0][1])
        stations = shifted_stations([real(clean(fields[2])) for fields in section[1:-1]], self.shift)
        for fields, station in zip(section[1:-1], stations):
            place = alignment.point(station) if alignment else None
            if place is None:
                self.outside += 1
            else:
                self.add("point", "0", [(*place, real(clean(fields[3])))], POINT_TABLE, number, fields[1].strip(BLANKS),
                         "縦断成果")

    def take_cross_sections(self, section):
        alignment, number = self.routes.get(int(section[0][1])), int(section[0][1])
        cross_sections = []
        for fields in section[1:-1]:
            if fields[0] == "I01":
                cross_sections.append((fields, []))
            else:
                cross_sections[-1][1].append(fields)
        for head, entries in cross_sections:
            self.take_cross_section(alignment, number, head, entries)

    def take_cross_section(self, alignment, number, head, entries):
        name, station = head[1].strip(BLANKS), real(clean(head[2]))
        centre = alignment.point(station) if alignment else None
        if centre is None:
            self.outside += 1
            return
        offsets, heights = shifted_walls([real(clean(fields[2])) for fields in entries],
                                         [real(clean(fields[3])) for fields in entries], self.shift)
        for fields, offset, height in zip(entries, offsets, heights):
            self.add("point", "0", [(*alignment.point(station, offset), height)], POINT_TABLE, number,
                     fields[1].strip(BLANKS) or name, "横断成果")
        if 0.0 not in offsets:
            self.add("point", "0", [(*centre, real(clean(head[3])))], POINT_TABLE, number, name, "横断成果")
