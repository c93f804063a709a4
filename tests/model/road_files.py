"""Random well-formed SIMA files of routes with curves, their results with walls, and lots.

Most routes are roads laid exactly: straights, arcs and clothoids, egg-shaped ones too, in both turning senses and both
habits of the sign. The others are points and curve records that nobody could drive on.
"""
import math

from drawing_model import travelled


class RoadFile:
    def __init__(self, random, only_roads=False):
        """Only roads: no odd routes, and here and there one curve with the wrong sign."""
        self.random, self.only_roads = random, only_roads
        self.decimals = random.choice([3, 4, 6, 9])
        self.left_is_positive = random.random() < 0.5
        self.points, self.body, self.routes = [], [], []

    def bytes(self, routes):
        for number in range(1, routes + 1):
            if self.random.random() < 0.1:
                number = self.random.randint(1, routes)  # a number used twice
            if self.only_roads or self.random.random() < 0.6:
                self.add_road(number)
            else:
                self.add_odd_route(number, self.random.choice("237723770811456"))
            for _ in range(self.random.randrange(3)):
                self.add_results()
            if self.random.random() < 0.3:
                self.add_lot(number)
        if self.random.random() < 0.2 and not self.only_roads:
            self.add_odd_route(routes + 1, "3", may_begin_with_clothoid=True)
            self.add_results()
        lines = ["Z00,roads,", "A00,", *self.points, "A99,", *self.body]
        return "".join(line + "\r\n" for line in lines).encode("cp932")

    def point(self, x, y, height):
        number = len(self.points) + 1
        text = "" if height is None else "%.3f" % height
        self.points.append("A01,%d,P%d,%.*f,%.*f,%s," % (number, number, self.decimals, y, self.decimals, x, text))
        return number

    # ---- roads ----

    def shapes(self):
        """(length, first curvature, last curvature, record) of each element; left turns are positive."""
        random = self.random
        self.slips = 1 if self.only_roads and random.random() < 0.4 else 0

        def straight():
            return random.uniform(5.0, 300.0), 0.0, 0.0, None

        def arc(turn, radius):
            length = random.uniform(0.1, 1.2) * radius
            return length, turn / radius, turn / radius, "C01,0,%s," % self.signed(self.slipped(turn), radius)

        def clothoid(turn, parameter, first, last):
            k0, k1 = (turn / radius if radius else 0.0 for radius in (first, last))
            written = self.slipped(turn)
            record = "C02,%.6f,%s,%s," % (parameter, self.signed(written, first), self.signed(written, last))
            return abs(k1 - k0) * parameter ** 2, k0, k1, record

        shapes = [straight()]
        for _ in range(random.randint(1, 3)):
            turn, radius, kind = random.choice([1, -1]), random.uniform(60.0, 800.0), random.random()
            if kind < 0.7:
                shapes.append(clothoid(turn, radius * random.uniform(0.35, 0.95), 0.0, radius))
            shapes.append(arc(turn, radius))
            if kind < 0.35 or kind > 0.85:
                other = radius * random.choice([0.5, 0.6, 1.5, 2.5])
                shapes.append(clothoid(turn, min(radius, other) * random.uniform(0.7, 1.5), radius, other))
                shapes.append(arc(turn, other))
                radius = other
            if kind < 0.8:
                shapes.append(clothoid(turn, radius * random.uniform(0.35, 0.95), radius, 0.0))
            if random.random() < 0.8:
                shapes.append(straight())
        return shapes

    def slipped(self, turn):
        if self.slips and self.random.random() < 0.2:
            self.slips -= 1
            return -turn
        return turn

    def signed(self, turn, radius):
        if radius == 0.0:
            return "0"
        return ("" if (turn > 0) == self.left_is_positive else "-") + "%.6f" % radius

    def add_road(self, number):
        random = self.random
        x, y = random.uniform(-90000.0, 90000.0), random.uniform(50000.0, 90000.0)
        angle = random.uniform(-math.pi, math.pi)
        if random.random() < 0.25:
            angle = random.randrange(4) * math.pi / 2.0 + random.choice([0.0, 3e-6, -3e-6, 2e-5, -2e-5])
        height = random.choice([lambda: None, lambda: 12.5, lambda: random.uniform(0.0, 500.0)])
        start = random.choice([0.0, 100.0, -50.5, 12345.678])
        self.body += ["F00,%d,1,R%d,%s," % (number, number, random.choice("237")), "F03,%.3f," % start]
        self.body.append("B01,%d,," % self.point(x, y, height()))
        total = 0.0
        for length, k0, k1, record in self.shapes():
            if record is None and random.random() < 0.3:
                # A point on the straight, some millimetres aside: both parts are one again.
                self.body.append("B01,%d,," % self.point(x + length / 3.0 * math.cos(angle),
                                                         y + length / 3.0 * math.sin(angle) + 0.005, height()))
            elif record is not None:
                self.body.append(record)
            dx, dy, turn = travelled(k0, k1, length, length)
            x, y = x + dx * math.cos(angle) - dy * math.sin(angle), y + dx * math.sin(angle) + dy * math.cos(angle)
            angle, total = angle + turn, total + length
            self.body.append("B01,%d,," % self.point(x, y, height()))
        self.body.append("F99,")
        self.routes.append((number, start, total))

    # ---- routes that are no roads ----

    def odd_curve(self, clothoid):
        random = self.random
        radii = ["0", "-0", "100", "-100", "\u300080", "80 ", "", "x", "50.5x", "1e2", "-1e2", "56", "5",
                 "%.2f" % random.uniform(-400.0, 400.0)]
        if not clothoid:
            return "C01,0,%s," % random.choice(radii)
        parameter = random.choice(["100", "60", "0", "\u300090", "-80", "120.5"])
        return "C02,%s,%s,%s," % (parameter, random.choice(radii), random.choice(radii))

    def add_odd_route(self, number, kind, may_begin_with_clothoid=False):
        random = self.random
        self.body.append("F00,%d,1,J%d,%s," % (number, number, kind))
        x, y, angle = random.uniform(3000.0, 5000.0), random.uniform(3000.0, 5000.0), random.uniform(0.0, 6.3)
        total = 0.0
        height = random.choice([lambda: None, lambda: 5.0, lambda: random.choice([5.0, 5.0, 6.0])])
        for i in range(random.choice([0, 1, 2, 3, 4, 5, 8])):
            self.body.append("B01,%d,," % self.point(x, y, height()))
            for _ in range(random.choice([0, 1, 1, 2])):
                clothoid = random.random() < 0.5 and (i > 0 or may_begin_with_clothoid)
                self.body.append(self.odd_curve(clothoid))
            length = random.choice([0.0, random.uniform(1.0, 150.0), random.uniform(1.0, 150.0)])
            angle += random.choice([0.0, 0.0, math.radians(1.0), -math.radians(0.9), random.uniform(-3.0, 3.0)])
            x, y, total = x + length * math.cos(angle), y + length * math.sin(angle), total + length
        self.body.append("F99,")
        self.routes.append((number, 0.0, total))

    # ---- results and lots ----

    def station(self, start, length):
        random = self.random
        return random.choice([start, start - 9e-7, start - 1.2e-6, start + length + random.uniform(-0.01, 5.0)]
                             + 8 * [start + random.uniform(-0.02, 1.02) * length])

    def add_results(self):
        random = self.random
        number, start, length = random.choice(self.routes)
        if random.random() < 0.5:
            self.body.append("H00,%d,x," % number)
            station = self.station(start, length)
            for i in range(random.randrange(12)):
                if random.random() < 0.5:
                    station = self.station(start, length)
                self.body.append("H01,No.%d,%.7f,%.3f,0.0,1," % (i, station, random.uniform(0.0, 99.0)))
            self.body.append("H99,")
            return
        self.body.append("I00,%d,x," % number)
        for i in range(random.randrange(5)):
            self.body.append("I01, S%d ,%.7f,%.3f,0.0," % (i, self.station(start, length), random.uniform(0.0, 99.0)))
            offset = -3.0
            for j in range(random.randrange(20)):
                if random.random() < 0.35:
                    offset = random.choice([-4.0, -3.5, -3.0, -2.5, 0.0, 0.0, 1.0, 1.5, 2.0])
                name = random.choice(["", "L%d" % j, " n%d " % j, "\u3000"])
                self.body.append("I02,%s,%s,%.3f," % (name, offset, random.uniform(0.0, 99.0)))
        self.body.append("I99,")

    def add_lot(self, number):
        self.body.append("D00,%d,lot%d,%s," % (number, number, self.random.choice(["1", " 1 ", "2"])))
        if self.points:
            for _ in range(self.random.randrange(7)):
                self.body.append("B01,%d,," % self.random.randint(1, len(self.points)))
        self.body.append("D99,")
