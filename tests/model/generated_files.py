"""Random SIMA files: well-formed sections, then the mistakes that survey files hold."""

NUMBERS = ["", "0", "7", "12", "00012", " 12", "12 ", "123456789", "4294967296", "-3", "+4", "1.5", "a", "\u3000", "5x"]
REALS = ["", "0", "-0", "12.5", "-7.25", " 3.5", "3.5 ", "+1", "1e2", "1.5.2", "1-2", "-1-2", "5-", "- 5", "--5", "-",
         ".", ".5", "5.", "-.5", "12a", "\u30004.5", "4.5\u3000", "4\u30005", "\t8", "0x10", "inf", "nan",
         "123456789012345678", "0.1234567890123456789"]
NAMES = ["", "KP1", "表通り", "ソ連", "ｶﾞｲﾄﾞ", "①㈱", "髙﨑", "纊Ⅰⅰ", "<Number>", " FK12 ", "能登\u3000町", "a\rb",
         '"A,B"', '"a""b"', 'ab"cd', '"open', ' "x,y"', '""', '"  "', "～－∥", "≒∵￢", "\ue000"]
CODES = ["A00", "A01", "A99", "B01", "B03", "B04", "C00", "C01", "C02", "C03", "C04", "C99", "D00", "D99", "E00", "E01",
         "E03", "E99", "F00", "F03", "F99", "G00", "H00", "H01", "H99", "I00", "I01", "I02", "I99", "Z00", "Z01", "X01",
         "a01", " A01", "B01 ", "D99 ", "C01 ", "A0", "A001", '"B01"', "\u3000B01", ""]
RAW_BYTES = [b"\x80", b"\xa0", b"\xfd", b"\x81", b"\x81\x20", b"\x82\xff", b"\x95\x5c", b"\x83\x5c", b"\x1a", b"\x00",
             b"\xf0\x40", b"\xf9\xfc", b"\xed\x40", b"\xfa\x5c", b"\x87\x54", b"\xee\xef", b"\xef\xbb\xbf"]


class Maker:
    """Lines of one file. `curves` says whether routes that become alignments may hold curves."""

    def __init__(self, random, curves):
        self.random = random
        self.curves = curves
        self.dirt = random.choice([0.0, 0.1, 0.3, 1.0, 2.0])  # how many mistakes the file holds
        self.lines = []
        self.numbers = []
        self.routes = []

    def chance(self, part):
        return self.random.random() < part

    def add(self, code, *values, comma=True):
        # Now and then a value is replaced, the comma is left out, or there are too many fields.
        fields = [code, *values]
        if self.chance(0.04 * self.dirt):
            at = self.random.randrange(len(fields))
            fields[at] = self.random.choice([NUMBERS, REALS, NAMES][self.random.randrange(3)])
        if self.chance(0.02 * self.dirt):
            fields.append(self.random.choice(["", " ", "x", "0"]))
        if self.chance(0.02 * self.dirt) and len(fields) > 1:
            fields.pop()
        self.lines.append(",".join(fields) + ("," if comma and not self.chance(0.02 * self.dirt) else ""))
        if self.chance(0.02 * self.dirt):
            self.lines.append(self.random.choice(["", "   ", "Z00,注記,", "X01,1,", "Z01,a,", ",", '"', "A01"]))

    def pick(self, usual, odd):
        return self.random.choice(odd) if self.chance(0.05 * self.dirt) else usual

    def name(self):
        return self.random.choice(NAMES) if self.chance(0.5) else "P%d" % self.random.randrange(100)

    def number(self, limit=30):
        number = str(self.random.randrange(1, limit))
        return self.pick(number.rjust(self.random.choice([0, 0, 5])), NUMBERS)

    def real(self, low=-100.0, high=100.0):
        return self.pick("%.3f" % self.random.uniform(low, high), REALS)

    def coordinates(self):
        self.add("A00")
        for _ in range(self.random.randrange(12)):
            number = self.number()
            height = self.random.choice(["", self.real()])
            self.add("A01", number, self.name(), self.real(), self.real(), height, comma=self.chance(0.9))
            self.numbers.append(number)
            if self.chance(0.03):
                self.lines.append("Z00,点,")
        self.add("A99")

    def reference(self):
        known = self.numbers and not self.chance(0.05 * self.dirt)
        self.add("B01", self.random.choice(self.numbers) if known else self.number(), self.name())

    def lot(self):
        self.add("D00", self.number(), self.name(), self.pick(self.random.choice("12"), ["", "3", " 1", "1 "]))
        for _ in range(self.random.randrange(6)):
            self.reference()
            if self.chance(0.1):
                self.add("C03", self.real(), self.real())
        if self.chance(0.3):
            self.add("E00")
            for _ in range(self.random.randrange(3)):
                self.add("E01", self.real(), self.real())
            self.add("E99")
        if self.chance(0.03):
            self.add("B03", self.real())
        self.add("D99")

    def route(self):
        kind = self.random.choice("12333333456777")
        self.routes.append(self.number(6))
        self.add("F00", self.routes[-1], self.number(6), self.name(), self.pick(kind, ["", "0", "8", "3x", " 3 "]))
        if self.chance(0.5):
            self.add("F03", self.real(0.0, 50.0))
        for _ in range(self.random.randrange(8)):
            self.reference()
            if self.chance(0.2):
                self.add("B03", self.real())
            if self.chance(0.3) and (self.curves or kind in "1456"):
                self.add("C01", self.pick(self.random.choice("01"), ["", "2", " 1"]), self.real())
            if self.chance(0.2) and (self.curves or kind in "1456"):
                self.add("C02", self.real(), self.real(), self.pick("0", REALS))
            if self.chance(0.2):
                self.add("C03", self.real(), self.real())
            if self.chance(0.2):
                self.add("C00")
                self.add(self.random.choice(["C04", "B04", "F99", "X99"]), self.real())
                self.add("C99")
        self.add("F99")

    def route_number(self):
        return self.random.choice(self.routes) if self.routes and self.chance(0.8) else self.number(6)

    def longitudinal(self):
        self.add("H00", self.route_number(), self.name())
        station = 0.0
        for _ in range(self.random.randrange(7)):
            station += self.random.choice([0.0, 0.0, 10.0, 20.0, 33.3])
            self.add("H01", self.name(), self.pick("%.3f" % station, REALS), self.real(), self.real(),
                     self.pick(self.random.choice("12"), ["", "3", " 1"]))
        self.add("H99")

    def cross(self):
        self.add("I00", self.route_number(), self.name())
        if self.chance(0.1):
            self.add("I02", self.name(), "1.0", "2.0")
        for _ in range(self.random.randrange(4)):
            self.add("I01", self.name(), self.real(0.0, 100.0), self.real(), self.real())
            for _ in range(self.random.randrange(5)):
                offset = self.random.choice(["-3.0", "-3.0", "0.0", "2.5", "2.5", self.real()])
                self.add("I02", self.name(), offset, self.real())
        self.add("I99")

    def version(self):
        self.add("G00", self.pick("04", REALS), self.name())


def mangle(random, raw):
    """Now and then: a line gone, doubled, or under another code; bytes of no character; the file cut off."""
    if random.random() < 0.3:
        lines = raw.split(b"\n")
        for _ in range(random.randrange(1, 4)):
            at = random.randrange(len(lines))
            what = random.randrange(4)
            if what == 0:
                lines.pop(at)
            elif what == 1:
                lines.insert(at, lines[random.randrange(len(lines))])
            elif what == 2:
                head, _, tail = lines[at].partition(b",")
                lines[at] = random.choice(CODES).encode("cp932") + b"," + tail
            else:
                where = random.randrange(len(lines[at]) + 1)
                lines[at] = lines[at][:where] + random.choice(RAW_BYTES) + lines[at][where:]
            lines = lines or [b""]
        raw = b"\n".join(lines)
    if random.random() < 0.2:
        raw = raw[:random.randrange(len(raw) + 1)]
    return raw


def make_file(random, curves):
    maker = Maker(random, curves)
    sections = [maker.coordinates, maker.lot, maker.lot, maker.route, maker.route, maker.route,
                maker.longitudinal, maker.longitudinal, maker.cross, maker.cross, maker.version]
    if random.random() < 0.9:
        maker.coordinates()
    for _ in range(random.randrange(9)):
        random.choice(sections)()
    end = random.choice(["\r\n", "\r\n", "\n"])
    text = end.join(maker.lines) + (end if random.random() < 0.8 else "")
    return mangle(random, text.encode("cp932", errors="replace"))
