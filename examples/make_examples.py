#!/usr/bin/env python3
"""Writes road.sim, cadastral.sim and dirty.sim beside this script: code page 932, lines ended by CR LF.

The files are kept in the repository; run this again only to change them. The standard library is enough. Plan
directions are in drawing axes (x east, y north), radians anticlockwise from east; the files give north first. A
positive radius turns left on the map.
"""

import math
import pathlib
import random

HERE = pathlib.Path(__file__).resolve().parent

# Gauss-Legendre nodes and weights of order 5 on [-1, 1].
_NODES = (0.0, 0.5384693101056831, -0.5384693101056831, 0.9061798459386640, -0.9061798459386640)
_WEIGHTS = (0.5688888888888889, 0.4786286704993665, 0.4786286704993665, 0.2369268850561891, 0.2369268850561891)


def run(pose, length, k0, k1):
    """The pose (x, y, direction) after `length` metres along a curve whose curvature goes evenly from k0 to k1."""
    x, y, direction = pose

    def heading(s):
        return direction + k0 * s + (k1 - k0) * s * s / (2.0 * length)

    panels = max(1, math.ceil(length / 2.0))
    step = length / panels
    dx = dy = 0.0
    for i in range(panels):
        for node, weight in zip(_NODES, _WEIGHTS):
            s = (i + 0.5 + node / 2.0) * step
            dx += weight * step / 2.0 * math.cos(heading(s))
            dy += weight * step / 2.0 * math.sin(heading(s))
    return x + dx, y + dy, heading(length)


class Straight:
    def __init__(self, length):
        self.length, self.k0, self.k1 = length, 0.0, 0.0

    def record(self):
        return None


class Arc:
    def __init__(self, radius, length):
        self.radius, self.length = radius, length
        self.k0 = self.k1 = 1.0 / radius

    def record(self):
        return f"C01,{0 if self.radius > 0 else 1},{self.radius:.3f},"


class Clothoid:
    """From start radius to end radius, 0 standing for a straight; the parameter A is positive."""

    def __init__(self, a, start_radius, end_radius):
        self.a, self.start_radius, self.end_radius = a, start_radius, end_radius
        self.k0 = 1.0 / start_radius if start_radius else 0.0
        self.k1 = 1.0 / end_radius if end_radius else 0.0
        self.length = a * a * abs(self.k1 - self.k0)

    def record(self):
        def radius(value):
            return f"{value:.3f}" if value else "0"

        return f"C02,{self.a:.3f},{radius(self.start_radius)},{radius(self.end_radius)},"


class Chain:
    """Elements laid end to end from a starting pose; poses has one entry more than elements."""

    def __init__(self, start, elements, start_station=0.0):
        self.elements, self.start_station = elements, start_station
        self.poses = [start]
        for element in elements:
            self.poses.append(run(self.poses[-1], element.length, element.k0, element.k1))
        self.length = sum(element.length for element in elements)

    def at(self, station, offset=0.0):
        """Plan position of a station and an offset, positive to the right of travel."""
        rest = station - self.start_station
        for element, pose in zip(self.elements, self.poses):
            if rest <= element.length or element is self.elements[-1]:
                break
            rest -= element.length
        k = element.k0 + (element.k1 - element.k0) * rest / element.length
        x, y, direction = run(pose, rest, element.k0, k) if rest > 0 else pose
        return x + offset * math.sin(direction), y - offset * math.cos(direction)

    def ip(self, first, last):
        """Where the tangent at the start of element `first` meets that at the end of element `last`."""
        x0, y0, d0 = self.poses[first]
        x1, y1, d1 = self.poses[last + 1]
        t = ((x1 - x0) * math.sin(d1) - (y1 - y0) * math.cos(d1)) / math.sin(d1 - d0)
        return x0 + t * math.cos(d0), y0 + t * math.sin(d0)


class Points:
    """The coordinate list of a file: one number for each point, in the order of adding."""

    def __init__(self, first=1):
        self.rows, self.next = [], first

    def add(self, name, x, y, z=None):
        number = self.next
        self.next += 1
        self.rows.append((number, name, x, y, z))
        return number

    def name(self, number):
        return next(row[1] for row in self.rows if row[0] == number)

    def records(self, decimals=4):
        for number, name, x, y, z in self.rows:
            height = "" if z is None else f"{z:.3f}"
            yield f"A01,{number},{name},{y:.{decimals}f},{x:.{decimals}f},{height},"


def write(name, lines):
    (HERE / name).write_bytes("".join(line + "\r\n" for line in lines).encode("cp932"))


# ---------------------------------------------------------------------------------------------------------------- road


def ground(station, offset=0.0):
    """Ground height in metres: a gentle valley with a slope across."""
    return 42.0 + 3.5 * math.cos((station - 100.0) / 150.0) + 0.004 * (station - 100.0) - 0.06 * offset


def route(number, name, kind, points, records=None, start_station=None, extras=None):
    """An F section through the numbered points; records[i] is the line that describes the element from point i."""
    lines = [f"F00,{number},1,{name},{kind},"]
    if start_station is not None:
        lines.append(f"F03,{start_station:.3f},")
    for i, (point, point_name) in enumerate(points):
        lines.append(f"B01,{point},{point_name},")
        for extra in (extras or {}).get(i, ()):
            lines.append(extra)
        if records and i < len(records) and records[i]:
            lines.append(records[i])
    return lines + ["F99,"]


def road():
    points = Points()
    centre = Chain(
        (12040.0, -36210.0, math.radians(26.0)),
        [
            Straight(60.0),
            Clothoid(90.0, 0, 150.0), Arc(150.0, 85.0), Clothoid(90.0, 150.0, 0),
            Straight(70.0),
            Clothoid(80.0, 0, -120.0), Arc(-120.0, 75.0), Clothoid(80.0, -120.0, 0),
            Straight(55.0),
            Clothoid(110.0, 0, -200.0), Arc(-200.0, 45.0), Clothoid(120.0, -200.0, -100.0), Arc(-100.0, 30.0),
            Clothoid(75.0, -100.0, 0),
            Straight(45.0),
        ],
        start_station=100.0,
    )
    names = ["BP", "KA1-1", "KE1-1", "KE1-2", "KA1-2", "KA2-1", "KE2-1", "KE2-2", "KA2-2",
             "KA3-1", "KE3-1", "KEE3-2", "KEE3-3", "KE3-4", "KA3-4", "EP"]
    # The heights of these are left out, so that the tangents of every clothoid meet in plan.
    centre_points = [(points.add(name, x, y), name) for name, (x, y, _) in zip(names, centre.poses)]

    ips = [centre.ip(1, 3), centre.ip(5, 7), centre.ip(9, 13)]
    ip_points = [centre_points[0]]
    for i, (x, y) in enumerate(ips, 1):
        ip_points.append((points.add(f"IP.{i}", x, y), f"IP.{i}"))
    ip_points.append(centre_points[-1])

    end = centre.start_station + centre.length
    # Every 20 m, and the ends between.
    stations = [100.0 + 20.0 * i for i in range(int(centre.length // 20.0) + 1)] + [end]

    def stakes(side, offset):
        made = []
        for station in stations:
            x, y = centre.at(station, offset)
            name = f"{side}{station / 20.0:g}" if station != end else f"{side}EP"
            made.append((points.add(name, x, y, ground(station, offset)), name))
        return made

    left, right = stakes("左", -9.0), stakes("右", 9.0)

    # An old road that joins from the south: straights and one arc.
    old = Chain((12186.0, -36238.0, math.radians(100.0)), [Straight(42.0), Arc(90.0, 48.0), Straight(24.0)])
    old_points = [(points.add(f"旧{i}", x, y), f"旧{i}") for i, (x, y, _) in enumerate(old.poses, 1)]

    # A river bank, surveyed with heights: its points differ in height.
    bank = Chain((12024.0, -36086.0, math.radians(48.0)),
                 [Straight(46.0), Clothoid(45.0, 0, -70.0), Arc(-70.0, 40.0), Clothoid(45.0, -70.0, 0), Straight(34.0)])
    bank_points = [(points.add(f"ｶﾜ{i}", x, y, 36.4 - 0.11 * i), f"ｶﾜ{i}")
                   for i, (x, y, _) in enumerate(bank.poses, 1)]

    # The foot of the slope, straights only.
    foot_points = []
    for i, station in enumerate([112.0, 138.0, 171.0, 196.0, 228.0], 1):
        x, y = centre.at(station, 15.5 + 1.8 * math.sin(i))
        foot_points.append((points.add(f"法尻{i}", x, y, ground(station, 15.0) - 1.2), f"法尻{i}"))

    # Lots between the right width stakes and a line further out.
    corners_near, corners_far = [], []
    for i, station in enumerate([260.0, 284.0, 308.0, 332.0, 356.0, 380.0], 1):
        x, y = centre.at(station, 9.0)
        corners_near.append(points.add(f"K{i}", x, y))
        x, y = centre.at(station, 9.0 + 24.0 + 2.5 * math.sin(2.0 * i))
        corners_far.append(points.add(f"金属標{i}", x, y))

    lines = [
        "Z00,例　路線測量成果,,",
        "G00,4.00,バイパス路線測量,",
        "Z00,座標データ,",
        "A00,",
        "Z00,中心線主要点,",
    ]
    lines += list(points.records())
    lines += ["A99,"]

    for i in range(len(corners_near) - 1):
        ring = [corners_near[i], corners_near[i + 1], corners_far[i + 1], corners_far[i]]
        kind = "2" if i == 4 else "1"
        lines.append(f"D00,{i + 1},川端12-{i + 1},{kind},")
        lines += [f"B01,{number},{points.name(number)}," for number in ring]
        if i == 0:
            # Its triangles, from base and height in metres; they are passed over.
            lines += ["E00,", "E01,1,24.331,22.870,", "E03,1,K1,", "E01,2,24.331,23.104,", "E99,"]
        lines.append("D99,")

    lines.append("C00,路線データ,")
    lines += route(1, "ＩＰ", 1, ip_points)

    centre_records = [element.record() for element in centre.elements]
    extras = {0: ["B03,100.000,", "B04,0,"]}
    section = route(3, "中心線", 3, centre_points, centre_records, centre.start_station, extras)
    # The first straight and the first arc carry the element data that some programs add.
    at_first = section.index("B04,0,") + 1
    length, bearing = centre.elements[0].length, math.degrees(math.pi / 2 - centre.poses[0][2]) % 360.0
    section[at_first:at_first] = [f"C03,{length:.4f},{bearing:.4f},"]
    at_arc = section.index("C01,0,150.000,") + 1
    section[at_arc:at_arc] = ["C00,", "C04,85.0000,", "C99,"]
    lines += section

    lines += route(2, "旧道", 2, old_points, [e.record() for e in old.elements], 0.0)
    lines += route(4, "幅杭左", 4, left)
    lines += route(5, "幅杭右", 5, right)
    lines += route(6, "法尻", 6, foot_points)
    lines += route(7, "護岸", 7, bank_points, [e.record() for e in bank.elements])

    lines.append("H00,3,中心線,")
    # The end of the route lies some tenths of a millimetre off its computed station, since its points are rounded.
    last = math.floor((end - 0.002) * 100.0) / 100.0
    for station in stations[:-1] + [last]:
        kind = 2 if station == last else 1
        name = "EP" if station == last else f"No.{int(station / 20.0)}"
        lines.append(f"H01,{name},{station:.3f},{ground(station):.3f},{ground(station) + 0.35:.3f},{kind},")
        if station == 300.0:  # the foot and the head of a retaining wall stand at one station
            lines.append(f"H01,{name}上,{station:.3f},{ground(station) + 2.4:.3f},{ground(station) + 2.5:.3f},2,")
    lines.append("H99,")

    lines.append("I00,3,中心線,")
    for station in stations[:-1:2]:
        lines.append(f"I01,No.{int(station / 20.0)},{station:.3f},{ground(station):.3f},{ground(station) + 0.35:.3f},")
        rows = [(-12.0, "", 0.8), (-9.0, "幅杭左", 0.3), (-3.5, "", 0.0), (-3.5, "擁壁天端", 1.6), (-3.0, "", 1.6),
                (0.0, "", 0.0), (3.0, "", -0.06), (3.0, "縁石", 0.15), (9.0, "幅杭右", -0.2), (12.0, "", -0.9)]
        if station % 80.0 == 20.0:  # a section that gives no centre point: it is added
            rows = [row for row in rows if row[0] != 0.0]
        for offset, name, above in rows:
            lines.append(f"I02,{name},{offset:.3f},{ground(station, offset) + above:.3f},")
    lines.append("I99,")
    write("road.sim", lines)


# ----------------------------------------------------------------------------------------------------------- cadastral


def cadastral():
    """A village grid of six blocks, eight lots each, turned by 12 degrees."""
    rng = random.Random(1967)
    turn = math.radians(12.0)
    origin = (-18420.0, 27655.0)

    def place(u, v):
        return (origin[0] + u * math.cos(turn) - v * math.sin(turn), origin[1] + u * math.sin(turn) + v * math.cos(turn))

    markers = ["ｺﾝ杭", "金属標", "ﾌﾟﾗ杭", "刻印", "木杭"]
    hamlets = ["上川端", "下川端", "宮ノ前", "田中", "ﾜｾﾀﾞ", "ﾅｶﾞｵ"]
    rows, numbers, number = [], {}, 0

    def corner(key, u, v):
        nonlocal number
        if key not in numbers:
            number += 1
            x, y = place(u + rng.uniform(-0.9, 0.9), v + rng.uniform(-0.9, 0.9))
            name = f"{markers[number % len(markers)]}{number}"
            numbers[key] = (number, name, round(x, 3), round(y, 3))
            rows.append(numbers[key])
        return numbers[key]

    lots = []
    for block in range(6):
        u0, v0 = (block % 3) * 86.0, (block // 3) * 64.0
        widths = [rng.uniform(15.5, 22.5) for _ in range(4)]
        scale = 80.0 / sum(widths)
        edges = [0.0]
        for width in widths:
            edges.append(edges[-1] + width * scale)
        depths = [0.0, rng.uniform(25.0, 31.0), 58.0]
        for j in range(2):
            for i in range(4):
                def at(a, b):
                    return corner((block, a, b), u0 + edges[a], v0 + depths[b])
                ring = [at(i, j), at(i + 1, j), at(i + 1, j + 1), at(i, j + 1)]
                lots.append((block, ring))

    def padded(text, width):
        return text + " " * max(0, width - len(text.encode("cp932")))

    lines = ["Z01,地積測量,", "G00,3,地籍図根,", "Z00,座標データ,", "A00,"]
    lines += [f"A01,{n:5d},{padded(name, 20)},{y:11.3f},{x:11.3f},," for n, name, x, y in rows]
    lines += ["A99,", "Z00,区画データ,"]
    for index, (block, ring) in enumerate(lots, 1):
        hamlet = hamlets[block]
        lot_number = 100 * (block + 1) + index - 8 * block
        branch = f"－{rng.randrange(1, 4)}" if rng.random() < 0.3 else ""
        lines.append(f"D00,{index:5d},{hamlet}{lot_number}{branch},1,")
        lines += [f"B01,{n:5d},{padded(name, 20)}," for n, name, _, _ in ring]
        lines.append("E00,")
        for k, (a, b, c) in enumerate(((0, 1, 2), (2, 3, 0)), 1):
            base = math.dist(ring[a][2:], ring[c][2:])
            area = abs((ring[b][2] - ring[a][2]) * (ring[c][3] - ring[a][3])
                       - (ring[c][2] - ring[a][2]) * (ring[b][3] - ring[a][3]))
            lines.append(f"E01,{k},{base:.3f},{area / base:.3f},")
        lines += ["E03,", "E99,", "D99,"]
    write("cadastral.sim", lines)


# --------------------------------------------------------------------------------------------------------------- dirty


def dirty():
    """Every kind of record that is refused, each beside a good one."""
    write("dirty.sim", [
        "Z01,壊れたﾌｧｲﾙ,",
        "G00,x,版,",
        "G00,4,",
        "G00,4,版,余分,",
        "A00,x,",
        "A01,1,BP,-36000.000,12000.000,,",
        "A01,2,P2,-36000.000,12060.000,,",
        "A01,3,P3,-35960.000,12100.000,,",
        "A01,4,P4,-35900.000,12100.000,,",
        "A01,x,番号,0,0,,",
        "A01,00002,重複,0,0,,",
        "A01,11,X,12a,0,,",
        "A01,12,Y,0,1.5.2,,",
        "A01,13,Z,0,0,1-2,",
        "A01,14,足りない,",
        "A01,15,多い,0,0,0,,余分,",
        "A01,16,末尾のカンマなし,-35980.000,12020.000,5.25",
        "A01,,番号なし,0,0,,",
        "   A01,  17,字下げ            , -35990.000,  12030.000,,  ",
        "B01,1,BP,",
        "X99,知らない,",
        "",
        "A99",
        "A99,",
        "D00,x,番号,1,",
        "B01,1,BP,",
        "B01,2,P2,",
        "B01,3x,P3,",
        "B01,3,",
        "B03,20.0,",
        "B01,16,,",
        "C03,not tested here",
        "D99,x,",
        "D00,2,種別,3,",
        "D99,",
        "D00,3,書式,1,余分,",
        "B01,1,BP,",
        "B01,2,P2,",
        "B01,17,字下げ,",
        "E00,",
        "E01,1,10.0,5.0,",
        "???,",
        "E99,",
        "D99,",
        "D00,4,点がない,1,",
        "B01,1,BP,",
        "B01,99,ない点,",
        "B01,98,もうない点,",
        "E00,",
        "E99,",
        "D99,",
        "F00,x,y,番号,3,",
        "F99,",
        "F00,7,y,組,3,",
        "F99,",
        "F00,9,1,種別,8,",
        "B01,1,BP,",
        "F99,",
        "F00,10,1,足りない,",
        "F99,余分,",
        "F00,1,1,ＩＰ,1,",
        "B01,1,BP,",
        "C01,0,50.0,",
        "C02,50,0,100,",
        "B01,4,P4,",
        "B01,2x,P2,",
        "B01,3,",
        "A01,1,ここではない,0,0,,",
        "F99,",
        "F00,2,1,中心線,3,",
        "C01,0,50.0,",
        "F03,20.0,",
        "B01,1,BP,",
        "B03,a,",
        "C03,x,0,",
        "C03,60.000,y,",
        "B01,2,P2,",
        "C01,2,40.000,",
        "C01,0,4o.000,",
        "C01,0,40.000,",
        "C00,",
        "何でも,",
        "C99,",
        "B01,3,P3,",
        "C99,",
        "B01,4,P4,",
        "F99,",
        "F00,5,1,曲線,7,",
        "B01,1,BP,",
        "B01,2,P2,",
        "C02,x,0,100,",
        "C02,50,y,100,",
        "C02,50,0,z,",
        "B01,97,ない点,",
        "B01,3,P3,",
        "F99,",
        "H00,x,番号,",
        "H99,",
        "H00,2,中心線,",
        "H01,No.1,20.000,10.000,10.100,1,",
        "H01,No.2,4o.000,10.000,10.100,1,",
        "H01,No.2,40.000,1o.000,10.100,1,",
        "H01,No.2,40.000,10.000,1o.100,1,",
        "H01,No.2,40.000,10.000,10.100,3,",
        "H01,No.2,40.000,10.000,10.100,",
        "H01,No.2,40.000,10.000,10.100,1,余分,",
        "H01,No.2,40.000,10.000,,1,",
        "H01,遠い,4000.000,10.000,10.100,1,",
        "I01,ここではない,0,0,0,",
        "H99,x,",
        "I00,x,番号,",
        "I02,断面なし,0,0,",
        "I99,",
        "I00,2,中心線,",
        "I01,No.1,20.000,10.000,10.100,",
        "I02,左,-5.000,9.500,",
        "I02,,x,9.700,",
        "I02,右,5.000,y,",
        "I02,右,5.000,9.400,余分,",
        "I01,遠い,4000.000,10.000,10.100,",
        "I02,左,-5.000,9.500,",
        "I01,No.3,4x,10.000,10.100,",
        "I01,No.3,40.000,y,10.100,",
        "I01,No.3,40.000,10.000,z,",
        "H01,ここではない,",
        "I99,x,",
        "H00,77,未知の路線,",
        "H01,No.0,20.000,10.000,10.100,1,",
        "H99,",
    ])


if __name__ == "__main__":
    road()
    cadastral()
    dirty()
