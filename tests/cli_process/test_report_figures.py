#!/usr/bin/env python3
"""Compares the figures of `fenmark report` with independent ones from exact decimals of the input file.

usage: test_report_figures.py PROGRAM SOURCE_DIR
"""

import csv
import io
import math
import pathlib
import random
import shutil
import subprocess
import sys
import tempfile
import unittest
from decimal import ROUND_DOWN, ROUND_HALF_UP, Decimal, getcontext

PROGRAM, SOURCE = sys.argv[1], pathlib.Path(sys.argv[2])
SEED = 20261122
getcontext().prec = 60
MILLI, MICRO, CENTI, ONE = Decimal("0.001"), Decimal("0.000001"), Decimal("0.01"), Decimal(1)


def rounded(value, unit):
    text = format(value.quantize(unit, ROUND_HALF_UP), "f")
    return text[1:] if text.startswith("-") and not text.strip("-0.") else text


def cut(value, unit):
    return format(value.quantize(unit, ROUND_DOWN), "f")


def side(dx, dy, rule):
    square = (dx * dx + dy * dy) * 10**12
    micrometres = math.isqrt(int(square))  # coordinates have at most six decimals
    return format((Decimal(micrometres) / 10**6).quantize(MILLI, ROUND_DOWN if rule == "cut" else ROUND_HALF_UP), "f")


def lot_file(lots):
    """A SIMA file of the lots, each a list of coordinate texts (X, Y)."""
    points = ["A00,"]
    sections, number = [], 0
    for name, corners in lots.items():
        section = ["D00,%d,%s,1," % (len(sections) + 1, name)]
        for x, y in corners:
            number += 1
            points.append("A01,%d,P%d,%s,%s,," % (number, number, x, y))
            section.append("B01,%d,P%d," % (number, number))
        sections.append(section + ["D99,"])
    return "\r\n".join(points + ["A99,"] + [line for section in sections for line in section]) + "\r\n"


def tables(text):
    """The blocks of the report by their first line."""
    found, block = {}, []
    for row in [*csv.reader(io.StringIO(text.lstrip("\ufeff"))), []]:
        if row:
            block.append(row)
        elif block:
            found[tuple(block[0])] = block[1:]
            block = []
    return found


class Figures(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="fenmark-"))
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)

    def report(self, lots, *options):
        (self.folder / "a.sim").write_bytes(lot_file(lots).encode("cp932"))
        subprocess.run([PROGRAM, "import", "-q", "a.sim"], cwd=self.folder, check=True, capture_output=True)
        subprocess.run([PROGRAM, "report", "a.gpkg", "a.csv", "--tables", "lots", *options], cwd=self.folder, check=True,
                       capture_output=True)
        return tables((self.folder / "a.csv").read_bytes().decode("utf-8"))

    def check(self, lots, rule, land):
        found = self.report(lots, "--sides", rule, "--land", land)
        for name, texts in lots.items():
            block = found[("座標求積表", name)]
            corners = [(Decimal(x), Decimal(y)) for x, y in texts]
            count, twice = len(corners), Decimal(0)
            for i, (x, y) in enumerate(corners):
                next_x, next_y = corners[(i + 1) % count]
                width = next_y - corners[i - 1][1]
                twice += x * width
                self.assertEqual(block[1 + i][1:], [rounded(x, MILLI), rounded(y, MILLI), rounded(width, MILLI),
                                                    rounded(x * width, MICRO), side(next_x - x, next_y - y, rule)],
                                 (name, i))
            area = Decimal(rounded(abs(twice) / 2, MICRO))
            registered = cut(area, ONE) if land == "other" and area > 10 else cut(area, CENTI)
            self.assertEqual(block[1 + count:], [["倍面積", rounded(twice, MICRO), "m²"],
                                                 ["面積", rounded(area, MICRO), "m²"], ["地積", registered, "m²"]], name)

    def test_lots_of_all_sizes(self):
        generator = random.Random(SEED)
        lots = {}
        for i in range(120):
            size = 10 ** generator.uniform(-0.5, 3.5)
            north, east = generator.uniform(-180000, 180000), generator.uniform(-90000, 90000)
            decimals = generator.choice([3, 3, 3, 4, 6])
            corners = generator.randint(3, 9)
            start = generator.uniform(0, 7)
            turn = generator.choice([-1, 1]) * 2 * math.pi / corners
            lots["L%d" % i] = [("%.*f" % (decimals, north + size * math.cos(start + turn * k)),
                                "%.*f" % (decimals, east + size * math.sin(start + turn * k))) for k in range(corners)]
        self.check(lots, "cut", "other")
        for file in self.folder.iterdir():
            file.unlink()
        self.check(lots, "round", "residential")

    def test_lots_at_the_edges_of_the_rules(self):
        def box(height, width):
            return [("0.000", "0.000"), (height, "0.000"), (height, width), ("0.000", width)]

        lots = {"at-ten": box("2.500", "4.000"), "over-ten": box("2.500", "4.001"), "under": box("3.000", "3.001"),
                "hundredth": box("3.085", "4.000"), "large": box("12.340", "1.000"), "exact-side": box("5.000", "0.300"),
                "triangle": [("0.000", "0.000"), ("0.001", "0.000"), ("0.000", "0.001")]}
        self.check(lots, "cut", "other")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
