#!/usr/bin/env python3
"""Opens what `fenmark export` writes with programs that nobody here wrote: ezdxf for DXF, GDAL for GeoJSON and KML.

usage: test_exports.py PROGRAM SOURCE_DIR

The system's own Python has ezdxf; another one that comes first on the path hands over to it. Exit code 77: no ezdxf.
"""

import json
import math
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

os.environ["LC_ALL"] = "C.UTF-8"  # fenmark speaks the language of the locale

SYSTEM_PYTHON = "/usr/bin/python3"

try:
    import ezdxf
    from ezdxf.math import bulge_center, bulge_radius
except ImportError:
    if os.access(SYSTEM_PYTHON, os.X_OK) and not os.environ.get("FENMARK_HANDED_OVER"):
        os.environ["FENMARK_HANDED_OVER"] = "1"
        os.execv(SYSTEM_PYTHON, [SYSTEM_PYTHON, *sys.argv])
    print("no ezdxf: DXF is not tried")
    sys.exit(77)

PROGRAM, SOURCE = os.path.abspath(sys.argv[1]), pathlib.Path(sys.argv[2])
VERSIONS = {"R12": "AC1009", "2000": "AC1015", "2018": "AC1032"}
METRES = 1e-9
DEGREES = 2e-9  # two places of the ninth decimal


class Exports(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(tempfile.mkdtemp(prefix="fenmark-"))
        cls.addClassCleanup(shutil.rmtree, cls.folder, ignore_errors=True)
        shutil.copy(SOURCE / "examples" / "road.sim", cls.folder)
        cls.fenmark("import", "road.sim", "--zone", "9", "-q")
        cls.drawing = json.loads(cls.fenmark("info", "road.gpkg", "--json"))
        cls.alignments = [a for site in cls.drawing["sites"] for a in site["alignments"]]

    @classmethod
    def fenmark(cls, *arguments):
        ran = subprocess.run([PROGRAM, *arguments], cwd=cls.folder, capture_output=True, check=False)
        if ran.returncode != 0:
            raise AssertionError(ran.stderr.decode())
        return ran.stdout

    def points(self):
        return [e for e in self.drawing["entities"] if e["type"] == "point"]

    def dxf(self, version, *options):
        name = f"road_{version}.dxf"
        self.fenmark("export", "road.gpkg", name, "--dxf-version", version, *options)
        document = ezdxf.readfile(self.folder / name)
        audit = document.audit()
        self.assertEqual([], [str(e.message) for e in audit.errors + audit.fixes], version)
        self.assertEqual(document.dxfversion, VERSIONS[version])
        return document

    def test_points_names_and_rows(self):
        for version in VERSIONS:
            space = self.dxf(version).modelspace()
            found = list(space.query("POINT"))
            self.assertEqual(len(found), len(self.points()))
            for wanted, point in zip(self.points(), found):
                self.assertEqual(tuple(wanted["position"][:2]), tuple(point.dxf.location)[:2])
                self.assertEqual(wanted["position"][2], point.dxf.location.z)
                self.assertEqual([(1000, wanted["data"]["table"]), (1071, wanted["data"]["No"]),
                                  (1000, wanted["data"]["Name"]), (1000, wanted["data"]["Type"]),
                                  (1000, wanted["data"]["FileName"])], list(point.get_xdata("FENMARK"))[-5:])
            texts = [text.dxf.text for text in space.query("TEXT")]
            for entity in self.drawing["entities"]:
                self.assertIn(entity["data"]["Name"], texts)
            self.assertEqual({1.25}, {text.dxf.height for text in space.query("TEXT")})

    def test_kinds_lie_on_layers_of_their_own_with_colours(self):
        document = self.dxf("2000")
        layers = {entity.dxf.layer for entity in document.modelspace()}
        self.assertEqual(layers, {"座標点", "点名", "画地", "画地名", "線形", "線形名", "IP線", "幅杭", "連続線", "路線名",
                                  "縦断", "縦断点名", "横断", "横断点名"})
        self.assertGreater(len({document.layers.get(name).dxf.color for name in layers}), 5)
        own = self.dxf("2000", "--layers", "drawing")
        self.assertEqual({entity.dxf.layer for entity in own.modelspace()}, {"0", "0-NAME"})

    def test_lots_are_closed(self):
        lines = [line for line in self.dxf("2000").modelspace().query("LWPOLYLINE") if line.dxf.layer == "画地"]
        wanted = [e for e in self.drawing["entities"] if e["data"]["Type"] == "画地"]
        self.assertEqual([line.closed for line in lines], [e["closed"] for e in wanted])
        for line, entity in zip(lines, wanted):
            self.assertEqual([list(p) for p in line.get_points("xy")], entity["vertices"])

    def test_alignments_are_one_polyline_with_their_arcs(self):
        for version in ("2000", "2018"):
            lines = [line for line in self.dxf(version).modelspace().query("LWPOLYLINE") if line.dxf.layer == "線形"]
            self.assertEqual(len(lines), len(self.alignments))
            for line, alignment in zip(lines, self.alignments):
                arcs = [e for e in alignment["elements"] if e["type"] == "R"]
                points = line.get_points("xyb")
                bulged = [(a, b) for a, b in zip(points, points[1:]) if a[2] != 0]
                self.assertEqual(len(bulged), len(arcs))
                for (start, end), arc in zip(bulged, arcs):
                    self.assertLess(math.dist(bulge_center(start[:2], end[:2], start[2]), arc["center"]), 1e-6)
                    self.assertAlmostEqual(abs(bulge_radius(start[:2], end[:2], start[2])), arc["radius"], delta=1e-6)
                    self.assertEqual(start[2] < 0, arc["clockwise"])
                self.assertLess(math.dist(points[0][:2], alignment["elements"][0]["start"]), METRES)
                self.assertLess(math.dist(points[-1][:2], alignment["elements"][-1]["end"]), METRES)

    def test_an_entity_an_element(self):
        space = self.dxf("2000", "--elements").modelspace()
        elements = [e for a in self.alignments for e in a["elements"]]
        count = {kind: sum(e["type"] == kind for e in elements) for kind in "SRA"}
        self.assertEqual(len(space.query("LINE")), count["S"])
        self.assertEqual(len(space.query("ARC")), count["R"])
        self.assertEqual(sum(line.dxf.layer == "線形" for line in space.query("LWPOLYLINE")), count["A"])

    def test_the_first_view_holds_the_drawing(self):
        for version in VERSIONS:
            view = self.dxf(version).viewports.get("*ACTIVE")[0].dxf
            for point in self.points():
                self.assertLess(abs(point["position"][0] - view.center[0]), view.height * view.aspect_ratio / 2)
                self.assertLess(abs(point["position"][1] - view.center[1]), view.height / 2)

    def test_the_text_style_shows_kanji(self):
        style = self.dxf("2000").styles.get("kst32b")
        self.assertEqual(style.dxf.font, "msgothic.ttc")
        self.assertEqual(list(style.get_xdata("ACAD"))[0].value, "MS Gothic")

    def test_degrees_are_those_of_another_library(self):
        if not shutil.which("gdaltransform") or not shutil.which("ogr2ogr"):
            self.skipTest("no GDAL")
        metres = "".join("%r %r\n" % tuple(p["position"][:2]) for p in self.points())
        ran = subprocess.run(["gdaltransform", "-s_srs", "EPSG:6677", "-t_srs", "EPSG:6668", "-output_xy"],
                             input=metres, capture_output=True, text=True, check=True)
        wanted = [tuple(map(float, line.split()[:2])) for line in ran.stdout.splitlines()]
        for name in ("road.geojson", "road.kml"):
            self.fenmark("export", "road.gpkg", name, "--only", "points,longitudinal,cross-sections")
            found = []
            layers = subprocess.run(["ogrinfo", "-q", name], cwd=self.folder, capture_output=True, text=True, check=True)
            for line in layers.stdout.splitlines():
                layer = line.split(": ", 1)[1].split(" (")[0]
                csv = subprocess.run(["ogr2ogr", "-f", "CSV", "/vsistdout/", name, layer, "-lco", "GEOMETRY=AS_XY",
                                      "-select", "FileName"], cwd=self.folder, capture_output=True, text=True, check=True)
                found += [tuple(map(float, row.split(",")[:2])) for row in csv.stdout.splitlines()[1:]]
            self.assertEqual(len(found), len(wanted), name)
            for a, b in zip(sorted(found), sorted(wanted)):
                self.assertLess(max(abs(a[0] - b[0]), abs(a[1] - b[1])), DEGREES, name)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
