"""A small model of the import log, written from the rules of the format and not from the importer.

It reads a SIMA file the slow and plain way and gives the bytes of the log that an import must leave beside it. It knows
every record but curves: alignments of straights alone are laid and measured here, so that results on them are modelled
too. A file that would need more raises Unmodelled.
"""
import math
import re

BLANKS = "\t\n\v\f\r "
KINDS = ["points", "lots", "longitudinal", "cross-sections", "ip", "main", "centre", "left-stake", "right-stake",
         "continuous", "continuous-curves"]
STATION_SLACK = 1e-6  # metres beyond either end of an alignment
SAME_POINT = 1e-10    # metres

MESSAGES = {
    101: "無効なデータ行です。 この行を無視して、処理を続けます。(余分なデータ)",
    102: "無効なデータ行です。この行を無視して、処理を続けます。.(データが不足)",
    103: "座標データが無効です。これを無視して、処理を続けます。",
    104: "点番号が５桁以下の整数ではありません。",
    105: "同一の点番号があります。これを無視して、処理を続けます。.",
    106: "X座標が、実数ではありません。",
    107: "Y座標が、実数ではありません。",
    108: "Z座標が、実数ではありません。",
    109: "追加距離が、実数ではありません。",
    110: "パラメータAが、実数ではありません。",
    111: "始点半径が、実数ではありません。",
    112: "終点半径が、実数ではありません。",
    113: "辺長が、実数値ではありません。",
    114: "方向角が、実数ではありません。",
    115: "画地番号が、５桁以下の整数ではありません。",
    116: "路線番号が、５桁以下の整数ではありません。",
    117: "グループ番号が、５桁以下の整数ではありません。",
    119: "路線番号が、５桁以下の整数ではありません。",
    121: "杭頭高が、実数ではありません。",
    122: "距離が、実数ではありません。",
    123: "地盤高が、実数ではありません。",
    124: "バージョン番号が、整数ではありません。",
    125: "座標系の指定が間違っています。",
    126: "画地種別の指定が無効です。",
    127: "路線種別の指定が無効です。",
    128: "測点種別の指定が無効です。",
    130: "画地データが無効です。これを無視して、処理を続けます。",
    131: "座標データが無効です。これを無視して、これを処理を続けます。",
    132: "縦断成果データが処理できません。これを無視して、処理を続けます。",
    133: "横断成果データが処理できません。これを無視して、処理を続けます。",
    134: "半径が、実数ではありません。",
    138: "参照する座標が見つかりません。",
    139: "円弧とクロソイドが作成出来ません。これを無視して、処理を続けます。",
    141: "次の縦断成果を作成できませんでした。（線形範囲外の測点です）",
    153: "次の横断成果を作成できませんでした。（線形範囲外の測点です）",
    154: "次の座標データを作成できませんでした。（書式が無効です）",
    155: "次の縦断成果を作成できませんでした。（書式が無効です）",
}
LOT_FORMAT = "書式が正しくありませんが、無視して処理を続けます。"


class Unmodelled(Exception):
    """The file needs geometry of curves."""


class BrokenOff(Exception):
    """A record is too short for the fields that are taken from it; the argument is its line."""


# ---- text -----------------------------------------------------------------------------------------------------------

def _pairs():
    table = {}
    for lead in [*range(0x81, 0xA0), *range(0xE0, 0xFD)]:
        for trail in range(0x40, 0xFD):
            try:
                text = bytes([lead, trail]).decode("cp932")
            except UnicodeDecodeError:
                continue
            if len(text) == 1:
                table[(lead, trail)] = text
    return table


PAIRS = _pairs()


def _codes():
    # Of several codes for a character: the standard's rows, row 13, the extension FA to FC, and ED and EE last.
    def rank(lead):
        return 1 if lead == 0x87 else 2 if lead >= 0xFA else 3 if lead in (0xED, 0xEE) else 0
    codes = {}
    for pair, text in sorted(PAIRS.items(), key=lambda item: (rank(item[0][0]), item[0])):
        codes.setdefault(text, bytes(pair))
    return codes


CODES = _codes()


def decode(raw):
    out = []
    i = 0
    while i < len(raw):
        byte = raw[i]
        if byte < 0x80:
            out.append(chr(byte))
        elif 0xA1 <= byte <= 0xDF:
            out.append(chr(0xFF61 + byte - 0xA1))
        elif i + 1 < len(raw) and (byte, raw[i + 1]) in PAIRS:
            out.append(PAIRS[(byte, raw[i + 1])])
            i += 1
        else:
            out.append("\uFFFD")
        i += 1
    return "".join(out)


def encode(text):
    out = bytearray()
    for character in text:
        point = ord(character)
        if point < 0x80:
            out.append(point)
        elif 0xFF61 <= point <= 0xFF9F:
            out.append(point - 0xFF61 + 0xA1)
        else:
            out += CODES.get(character, b"?")
    return bytes(out)


def trim(text):
    return text.strip(BLANKS)


def real(text):
    match = re.match(r"[+-]?([0-9]+\.?[0-9]*|\.[0-9]+)([eE][+-]?[0-9]+)?", text.lstrip(BLANKS))
    return float(match.group()) if match else 0.0


def integer(text):
    match = re.match(r"[+-]?[0-9]+", text.lstrip(BLANKS))
    return max(-2**31, min(2**31 - 1, int(match.group()))) if match else 0


def unquote(text):
    """The field, and what is left of the text behind it."""
    rest = trim(text)
    if not rest:
        return "", rest
    rest = rest[1:]
    at = 0
    while True:
        at = rest.find('"', at)
        if at < 0:
            return text, rest
        if rest[at + 1:at + 2] != '"':
            return rest[:at].replace('""', '"'), rest[at + 1:]
        at += 2


def split(line):
    fields = []
    at = line.find(",")
    while at >= 0:
        if line.startswith('"'):
            field, line = unquote(line)
            at = 0
        elif at > 0:
            field, _ = unquote(line[:at])
        else:
            field = ""
        fields.append(field)
        line = line[at + 1:]
        at = line.find(",")
    fields.append(unquote(line)[0])
    return fields


def is_digits(text):
    return re.fullmatch("[0-9]*", trim(text)) is not None


def is_number(text):
    text = trim(text).strip("\t").strip("\u3000").replace("\u3000", " ")
    other = text
    if real(text) <= 0.0:
        other = other.replace("-", "")
    other = other.replace(".", "")
    return is_digits(other) and text.count(".") <= 1


def result_number(text):
    return real(trim(text.replace("\u3000", " ")))


# ---- straights ------------------------------------------------------------------------------------------------------

def fixed(value):
    return float("%0.12f" % value)


def direction(a, b):
    angle = math.atan2(b[1] - a[1], b[0] - a[0])
    if angle < 0.0:
        angle += 2.0 * math.pi
    return angle if 0.0 < angle < 2.0 * math.pi else 0.0


def chain_length(elements):
    """The length of a chain of straights as it is laid: without those of no length, and with near neighbours merged."""
    chain = [e for e in elements if max(abs(p - q) for p, q in zip(e[0], e[1])) > SAME_POINT]
    one_degree = 1.0 / 180.0 * 3.141592653589793
    merged = []
    for start, end in chain:
        if merged:
            a = direction(*merged[-1])
            b = direction(start, end)
            if a >= b - one_degree and b + one_degree >= a:
                merged[-1] = (merged[-1][0], end)
                continue
        merged.append((start, end))
    return sum(math.hypot(e[0] - s[0], e[1] - s[1]) for s, e in merged), len(merged)


# ---- the reader -----------------------------------------------------------------------------------------------------

class Reader:
    def __init__(self, skipped=(), shift=0.0001):
        self.skipped = set(skipped)
        self.shift = shift
        self.number_text = self.name_text = ""
        self.type = 0
        self.alignment_name = ""

    def reset(self, raw):
        pieces = raw.split(b"\n")
        if pieces[-1] == b"":
            pieces.pop()
        self.input = [decode(piece) for piece in pieces]
        self.line = 0
        self.points = {}
        self.point_count = self.lots = self.verticals = self.cross_sections = 0
        self.routes = []
        self.read = [0] * 8
        self.made = [0] * 8
        self.made_points = self.made_longitudinal = self.made_cross = 0
        self.names = []
        self.process = []
        self.errors = []

    def next(self):
        if self.line == len(self.input):
            return False
        self.text = trim(self.input[self.line])
        self.fields = split(self.text)
        self.code = self.fields[0]
        self.line += 1
        return True

    def field(self, index):
        if index >= len(self.fields):
            raise BrokenOff(self.line)
        return self.fields[index]

    # -- log --

    def say(self, text, numbered=True):
        self.process.append(("%.5d" % self.line if numbered else "") + text)

    def error(self, identifier, message, line=None, text=None):
        if isinstance(message, int):
            message = MESSAGES[message]
        self.errors.append((identifier + " " + message,
                            "%.5d行目 %s" % (line or self.line, self.text if text is None else text)))
        return False

    def missing_point(self):
        self.errors.append((MESSAGES[138], "%.5d %s" % (self.line, self.text)))

    # -- validators --

    def count(self, wanted):
        have = len(self.fields)
        return have == wanted or self.error("ErrX001", 101 if have > wanted else 102)

    def numbers(self, *rules):
        for index, identifier, message in rules:
            if not is_number(self.fields[index]):
                return self.error(identifier, message)
        return True

    def digits(self, index, identifier, message):
        return is_digits(self.fields[index]) or self.error(identifier, message)

    def valid_a01(self, section):
        if len(self.fields) not in (6, 7):
            return self.error("ErrX001", 154)
        if not self.digits(1, "ErrA01-1", 104):
            return False
        if integer(self.fields[1]) in section:
            return self.error("ErrA002", 105)
        return self.numbers((3, "ErrA01-2", 106), (4, "ErrA01-3", 107), (5, "ErrA01-4", 108))

    def valid_c01(self):
        if not self.count(4):
            return False
        if trim(self.fields[1]) not in ("0", "1"):
            return self.error("ErrC01-1", 125)
        return self.numbers((2, "ErrC01-2", 134))

    def valid_d00(self):
        if len(self.fields) != 5:
            return self.error("ErrX001", LOT_FORMAT)
        if not self.digits(1, "ErrD00-1", 115):
            return False
        return self.fields[3] in ("1", "2") or self.error("ErrD00-2", 126)

    def valid_f00(self):
        if not (self.count(6) and self.digits(1, "ErrF00-1", 116) and self.digits(2, "ErrF00-2", 117)):
            return False
        return trim(self.fields[4]) in list("1234567") or self.error("ErrF00-3", 127)

    def valid_h01(self):
        if len(self.fields) != 7:
            return self.error("ErrX001", 155)
        if not self.numbers((2, "ErrH01-1", 109), (3, "ErrH01-2", 123), (4, "ErrH01-3", 121)):
            return False
        return trim(self.fields[5]) in ("1", "2") or self.error("ErrH01-4", 128)

    def passes(self, code, codes, identifier, message):
        return code in codes or self.error(identifier, message)

    # -- points --

    def store(self, section):
        if len(self.fields) < 2 or self.fields[1] == "":
            return
        fields = self.fields + [""] * 6
        point = (real(fields[4]), real(fields[3]), real(fields[5]))
        section.append((integer(fields[1]), point))

    def keep(self, section):
        for number, point in section:
            self.points.setdefault(number, point)
        self.point_count += len(section)

    # -- preview --

    def skip_to(self, *codes):
        while self.next():
            if self.code in codes:
                return True
        return False

    def preview(self, raw):
        self.reset(raw)
        while self.next():
            if self.code == "A00":
                section = []
                while self.next() and self.code != "A99":
                    if self.code == "A01":
                        self.store(section)
                self.keep(section)
            elif self.code == "D00":
                while self.next() and self.code != "D99":
                    if self.code == "E00":
                        self.skip_to("E99")
                self.lots += 1
            elif self.code == "F00":
                self.take_route()
                self.skip_to("F99")
            elif self.code == "H00":
                opening = self.fields
                found = 0
                while self.next() and self.code != "H99":
                    if self.code == "H01":
                        if len(opening) < 2:
                            raise BrokenOff(self.line)
                        found += 1
                if self.code == "H99":
                    self.verticals += found
            elif self.code == "I00":
                opening = self.fields
                found = 0
                while self.next() and self.code != "I99":
                    found += self.code == "I01"
                if self.code == "I99":
                    if len(opening) < 2:
                        raise BrokenOff(self.line)
                    self.cross_sections += found
        counts = [self.point_count, self.lots, self.verticals, self.cross_sections, *self.read[1:]]
        self.flags = [count > 0 and kind not in self.skipped for kind, count in zip(KINDS, counts)]

    def take_route(self):
        if len(self.fields) >= 5:
            self.number_text = self.fields[1]
            self.name_text = self.fields[3]
            self.type = integer(self.fields[4])
        if 1 <= self.type <= 7:
            self.read[self.type] += 1

    # -- full pass --

    def full(self, raw):
        self.reset(raw)
        sections = {"A00": self.coordinates, "D00": self.lot, "F00": self.route, "H00": self.longitudinal,
                    "I00": self.cross, "G00": self.version}
        while self.next():
            if self.code in sections:
                sections[self.code]()
        self.say("     読み込み終了")

    def version(self):
        if self.count(4) and self.numbers((1, "ErrG00-1", 124)):
            self.say(" G01 SIMAのバージョン： " + trim(self.fields[1]) + "\n")

    def coordinates(self):
        self.count(2)
        self.say(" A00 座標データの読み込み開始")
        section = []
        while self.next():
            if not self.passes(self.code, ("", "A01", "A99", "Z00"), "ErrA001", 103):
                continue
            if self.code == "A01" and self.valid_a01([number for number, _ in section]):
                self.store(section)
            if self.code == "A99":
                self.count(2)
                break
        self.keep(section)
        if self.flags[0]:
            self.made_points += len(section)

    def lot(self):
        self.valid_d00()
        self.say(" D00 画地データの読み込み開始")
        self.field(3)
        points = 0
        abandoned = triangles = False
        while self.next():
            if not self.passes(trim(self.code), ("", "B01", "C01", "C02", "C03", "E00", "E01", "E03", "E99", "D99"),
                               "ErrD001", 130):
                continue
            if abandoned:
                if self.code == "D99":
                    self.say(" D99 画地データの読み込み終了")
                    self.say("ERROR     画地を作成できませんでした\n", False)
                    return
            elif self.code == "B01":
                if self.count(4) and self.digits(1, "ErrB01-1", 104):
                    if integer(self.fields[1]) in self.points:
                        points += 1
                    else:
                        self.missing_point()
                        abandoned = True
            elif self.code == "E00":
                triangles = True
                self.skip_to("E99")
            elif self.code == "D99":
                break
        self.lots += 1
        self.say(" D99 画地データの読み込み終了")
        if triangles:
            self.say("          %d点の構成点" % points, False)
            self.say("          三斜データは読み込みません\n", False)
        else:
            self.say("          %d点の構成点\n" % points, False)

    def route(self):
        self.valid_f00()
        self.say(" F00 路線データの読み込み開始")
        self.take_route()
        name, number, kind = self.name_text, integer(self.number_text), self.type
        polyline = kind in (1, 4, 5, 6)
        alignment = kind in (2, 3, 7)
        self.start_station = 0.0
        self.entities = []
        self.curved = False
        ok = self.route_records(polyline)
        self.say(" F99 路線データの読み込み終了")
        if not ok:
            self.say("ERROR     " + ("平面線形" if alignment else "ポリライン") + "を作成できませんでした\n", False)
            return
        made = None
        if 1 <= kind <= 7 and self.flags[3 + kind]:
            if alignment:
                if self.curved:
                    raise Unmodelled
                length, count = chain_length(list(zip(self.entities, self.entities[1:])))
                made = (name, self.start_station, length, count)
                self.names.append(name)
                self.made[kind] += 1
            elif self.entities:
                self.made[kind] += 1
        self.routes.append((number, made))
        if alignment:
            self.say("          平面線形”" + name + "”", False)
            self.say("          %d個の線形要素\n" % len(self.entities), False)
        else:
            self.say("          %d点の構成点\n" % len(self.entities), False)

    def route_records(self, polyline):
        seen = failed = False
        codes = ("", "B01", "B03", "B04", "C00", "C01", "C02", "C03", "C04", "C99", "F03", "F99")
        while self.next():
            if not self.passes(self.code, codes, "ErrF001", 131):
                continue
            if failed and self.code == "F99":
                self.count(2)
                return False
            if seen:
                seen = False
                if self.code == "C00":
                    self.skip_to("C99")
                    continue
            if self.code == "F03":
                self.start_station = real(self.field(1))
            elif self.code == "B01":
                if self.count(4):
                    self.digits(1, "ErrB01-1", 104)
                if len(self.fields) >= 3:
                    point = self.points.get(integer(self.fields[1]))
                    if point is None:
                        self.missing_point()
                        failed = True
                    else:
                        self.entities.append((fixed(point[0]), fixed(point[1]), point[2]))
            elif self.code == "B03":
                if self.count(3):
                    self.numbers((1, "ErrB03-1", 109))
            elif self.code in ("C01", "C02"):
                seen = True
                if polyline:
                    self.error("ErrF002", 139)
                    continue
                if self.code == "C01":
                    self.valid_c01()
                elif self.count(5):
                    self.numbers((1, "ErrC02-1", 110), (2, "ErrC02-2", 111), (3, "ErrC02-3", 112))
                if self.entities:
                    self.curved = True
                    self.field(2 if self.code == "C01" else 3)
            elif self.code == "C03":
                seen = True
                if self.count(4):
                    self.numbers((1, "ErrC03-1", 113), (2, "ErrC03-2", 114))
            elif self.code == "F99":
                self.count(2)
                return True
        return True

    # -- results --

    def bind(self, number):
        """Whether the route is there, and its alignment, if it has one."""
        for route, made in self.routes:
            if route == number:
                if made:
                    self.alignment_name = made[0]
                return made
        return None

    @staticmethod
    def on(alignment, station):
        if alignment is None or alignment[3] == 0:
            return False
        return -STATION_SLACK <= station - alignment[1] <= alignment[2] + STATION_SLACK

    def opening(self, identifier):
        if self.count(4):
            self.digits(1, identifier, 119)

    def begin(self, code, what):
        self.say(" " + code + " " + what + "データの読み込み開始")
        if self.alignment_name:
            self.say("          中心線”" + self.alignment_name + "”の" + what + "データ", False)
        else:
            self.say("ERROR     中心線が指定されませんでした", False)

    def end(self, code, what, count):
        self.say(" " + code + " " + what + "データの読み込み終了")
        if self.alignment_name:
            self.say("          %d点のポイント\n" % count, False)
        else:
            self.say("          %d点のポイント" % count, False)
            self.say("ERROR     " + what + "をポイントに変換できませんでした\n", False)

    def longitudinal(self):
        self.opening("ErrH00-1")
        self.field(2)
        alignment = self.bind(integer(self.fields[1]))
        self.begin("H00", "縦断成果")
        records = []
        closed = False
        while not closed and self.next():
            if not self.passes(self.code, ("", "H01", "H99"), "ErrH001", 132):
                continue
            if self.code == "H01":
                if self.valid_h01():
                    records.append([result_number(self.fields[2]), self.text])
                    self.verticals += 1
            elif self.code == "H99":
                self.count(2)
                closed = True
        if closed and self.flags[2]:
            i, k, n = 0, 1, len(records)
            while i < n:
                if i < n - k and records[i][0] == records[i + k][0]:
                    records[i + k][0] += k * self.shift
                    k += 1
                    continue
                if i < n - k:
                    k = 1
                i += 1
            for station, text in records:
                if self.on(alignment, station):
                    self.made_longitudinal += 1
                else:
                    self.error("ErrX001", 141, self.line, text)
        self.end("H99", "縦断成果", self.verticals if self.alignment_name else 0)

    def cross(self):
        self.opening("ErrI00-1")
        self.begin("I00", "横断成果")
        self.field(2)
        number = integer(self.fields[1])
        sections = []
        total = 0
        closed = False

        def close_last():
            if not sections:
                return 0
            count = len(sections[-1][1]) + (0.0 not in sections[-1][1])
            self.say("          %d個のポイント" % count, False)
            return count

        while not closed and self.next():
            if not self.passes(self.code, ("", "I01", "I02", "I99"), "ErrI001", 133):
                continue
            if self.code == "I01":
                total += close_last()
                if self.count(6):
                    self.numbers((2, "ErrI01-1", 109), (3, "ErrI01-2", 123), (4, "ErrI01-3", 121))
                self.field(4)
                sections.append((result_number(self.fields[2]), [], self.line, self.text))
                self.say(" I01 断面 " + trim(self.fields[1]) + " データを処理")
            elif self.code == "I02":
                if self.count(5):
                    self.numbers((2, "ErrI02-1", 122), (3, "ErrI02-2", 123))
                if sections:
                    self.field(3)
                    sections[-1][1].append(result_number(self.fields[2]))
            elif self.code == "I99":
                total += close_last()
                self.count(2)
                closed = True
        if closed:
            alignment = self.bind(number)
            if self.flags[3]:
                for station, offsets, line, text in sections:
                    if not self.on(alignment, station):
                        self.error("ErrX001", 153, line, text)
                        continue
                    # Every offset of a straight has its point; one at 0.0 stands for the centre, also after the shift.
                    self.made_cross += len(offsets) + (0.0 not in offsets)
        self.end("I99", "横断成果", total)

    # -- the whole file --

    def result_lines(self):
        lines = []

        def add(count, before, after):
            if count > 0:
                lines.append("%s%d%s" % (before, count, after))
        if not self.errors:
            lines.append("エラー無し")
        add(len(self.errors), "", "個のエラー")
        add(self.made_points, "座標データから", "個のポイントを作成")
        add(self.lots if self.flags[1] else 0, "画地データから", "個のポリラインを作成")
        lines += ["平面線形【" + name + "】を作成" for name in self.names]
        add(self.made[1], "路線成果-IP線から", "個のポリラインを作成")
        add(self.made[4], "路線成果-幅杭線左から", "個のポリラインを作成")
        add(self.made[5], "路線成果-幅杭線右から", "個のポリラインを作成")
        add(self.made[6], "路線成果-連続線（直線のみ）から", "個のポリラインを作成")
        add(self.made_longitudinal, "縦断成果から", "個のポイントを作成")
        add(self.made_cross, "横断成果から", "個のポイントを作成")
        return lines


def log_of(raw, skipped=()):
    """The bytes of the log of an import. Raises BrokenOff where the import ends without one."""
    reader = Reader(skipped)
    reader.preview(raw)
    reader.full(raw)
    lines = ["----- Brindlow\u3000Version1.0 -----\n", *reader.process]
    for first, second in reader.errors:
        lines += ["ERROR --------------------------------------------------------", first, second,
                  "--------------------------------------------------------------"]
    lines += reader.result_lines()
    return encode("".join(line + "\n" for line in lines)).replace(b"\n", b"\r\n")
