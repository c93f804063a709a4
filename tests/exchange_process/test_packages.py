#!/usr/bin/env python3
"""Exports GeoPackages that another program made: points and polygons become a SIMA file, the rest is refused or reported.

usage: test_packages.py PROGRAM        with ogr2ogr, which makes the packages; exit code 77 without it
"""
import json
import os
import pathlib
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import unittest

PROGRAM = os.path.abspath(sys.argv[1])
POINTS = """点名,No,x,y,z
K1,1,12000.0,-36000.5,12.5
"髙,2",2,12010.25,-36000.125,
K3,x,12010,-36020,3
"""
RING = [[12000, -36000.5], [12010.25, -36000.125], [12010, -36020], [12000, -36000.5]]
HOLE = [[12004, -36002], [12005, -36002], [12005, -36003], [12004, -36002]]
AWAY = [[x + 100, y] for x, y in RING]


def ogr2ogr(*arguments, cwd):
    subprocess.run(["ogr2ogr", "-f", "GPKG", *arguments], cwd=cwd, check=True, capture_output=True)


class Packages(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="fenmark-"))
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)
        (self.folder / "points.csv").write_text(POINTS, encoding="utf-8")

    def points(self, name, *options):
        ogr2ogr(*options, name, "points.csv", "-nln", "基準点", "-oo", "X_POSSIBLE_NAMES=x", "-oo",
                "Y_POSSIBLE_NAMES=y", "-oo", "Z_POSSIBLE_NAMES=z", "-oo", "KEEP_GEOM_COLUMNS=NO", cwd=self.folder)

    def features(self, name, table, *features, options=("-a_srs", "EPSG:6677")):
        found = [{"type": "Feature", "properties": properties, "geometry": {"type": kind, "coordinates": coordinates}}
                 for properties, kind, coordinates in features]
        (self.folder / "features.geojson").write_text(json.dumps({"type": "FeatureCollection", "features": found}))
        update = ("-update",) if (self.folder / name).exists() else ()
        ogr2ogr(*update, *options, name, "features.geojson", "-nln", table, "-nlt", "GEOMETRY", cwd=self.folder)

    def export(self, package, target="out.sim", *options):
        ran = subprocess.run([PROGRAM, "export", package, target, *options], cwd=self.folder, capture_output=True,
                             check=False, env=dict(os.environ, LC_ALL="C.UTF-8"))
        return ran.returncode, ran.stderr.decode()

    def imported(self, name="out.sim"):
        subprocess.run([PROGRAM, "import", "-q", "--drawing", "again.gpkg", name], cwd=self.folder, check=True,
                       stdout=subprocess.DEVNULL)
        info = subprocess.run([PROGRAM, "info", "again.gpkg", "--json"], cwd=self.folder, check=True, capture_output=True)
        return json.loads(info.stdout)["entities"]

    def test_points_and_polygons_come_through(self):
        self.points("a.gpkg", "-a_srs", "EPSG:6677")
        self.features("a.gpkg", "lots", ({"地番": "12-3"}, "Polygon", [RING]),
                      ({"地番": "12-4"}, "MultiPolygon", [[RING], [AWAY]]))
        code, reported = self.export("a.gpkg")
        self.assertEqual(code, 0, reported)
        self.assertIn("'基準点': names from '点名', numbers from 'No'", reported)
        entities = self.imported()
        named = [e for e in entities if e["type"] == "point" and e["data"]["Name"]]
        self.assertEqual([(e["data"]["No"], e["data"]["Name"], e["position"]) for e in named],
                         [(1, "K1", [12000.0, -36000.5, 12.5]), (2, '髙,2', [12010.25, -36000.125, 0.0]),
                          (3, "K3", [12010.0, -36020.0, 3.0])])
        lots = [(e["data"]["Name"], e["closed"], e["vertices"]) for e in entities if e["type"] == "polyline"]
        self.assertEqual(lots, [("12-3", True, RING[:3]), ("12-4", True, RING[:3]), ("12-4", True, AWAY[:3])])

    def test_what_sima_does_not_have_is_told_with_its_first_feature(self):
        self.features("a.gpkg", "mixed", ({"name": "a"}, "Point", [1, 2]), ({"name": "b"}, "LineString", [[0, 0], [1, 0]]),
                      ({"name": "c"}, "Polygon", [RING, HOLE]), ({"name": "d"}, "MultiPoint", [[3, 4, 5], [6, 7, 8]]))
        code, reported = self.export("a.gpkg")
        self.assertEqual(code, 0, reported)
        self.assertIn("1 feature left out: LINESTRING in 'mixed' (first fid 2)", reported)
        self.assertIn("1 feature left out: polygons with holes in 'mixed' (first fid 3)", reported)
        self.assertEqual([e["position"] for e in self.imported()], [[1, 2, 0], [3, 4, 5], [6, 7, 8]])

    def test_a_package_without_names_takes_its_numbers(self):
        self.features("a.gpkg", "p", ({"other": "x"}, "Point", [1, 2]), ({"other": "y"}, "Point", [3, 4]))
        self.assertEqual(self.export("a.gpkg")[0], 0)
        self.assertEqual([(e["data"]["No"], e["data"]["Name"]) for e in self.imported()], [(1, "1"), (2, "2")])

    def test_the_zone_is_taken_and_degrees_follow_from_it(self):
        self.points("a.gpkg", "-a_srs", "EPSG:6677")
        self.assertEqual(self.export("a.gpkg", "out.geojson")[0], 0)
        first = json.loads((self.folder / "out.geojson").read_text(encoding="utf-8"))["features"][0]
        self.assertAlmostEqual(first["geometry"]["coordinates"][0], 139.9658, places=3)
        self.assertAlmostEqual(first["geometry"]["coordinates"][1], 35.6754, places=3)

    def test_older_datums_are_taken_as_they_stand_and_told(self):
        for code, datum in (("EPSG:2451", "JGD2000"), ("EPSG:30169", "the Tokyo datum")):
            name = code[5:] + ".gpkg"
            self.points(name, "-a_srs", code)
            done, reported = self.export(name)
            self.assertEqual(done, 0, reported)
            self.assertIn(f"coordinates of zone 9 of {datum}, taken as they stand", reported)
            self.assertEqual(self.export(name, "out.geojson")[0], 1)  # no longitude without a shift of datum

    def refused(self, package, reason, *options):
        (self.folder / "out.sim").write_text("as it was")
        code, reported = self.export(package, "out.sim", *options)
        self.assertEqual(code, 1)
        self.assertIn(reason, reported)
        self.assertEqual((self.folder / "out.sim").read_text(), "as it was")

    def test_other_planes_are_refused_with_a_remedy(self):
        self.points("plane.gpkg", "-a_srs", "EPSG:6677")
        for code in ("EPSG:6668", "EPSG:4326", "EPSG:32654", "EPSG:3857"):
            name = code[5:] + ".gpkg"
            ogr2ogr("-t_srs", code, name, "plane.gpkg", cwd=self.folder)
            self.refused(name, "ogr2ogr -t_srs EPSG:6677")
        self.features("plane.gpkg", "other", ({}, "Point", [1, 2]), options=("-a_srs", "EPSG:6678"))
        self.refused("plane.gpkg", "several reference systems")

    def test_an_untold_plane_needs_the_zone(self):
        self.points("a.gpkg")
        self.refused("a.gpkg", "--zone 1..19")
        self.assertEqual(self.export("a.gpkg", "out.sim", "--zone", "9")[0], 0)

    def test_a_package_without_points_and_polygons_is_refused(self):
        self.features("lines.gpkg", "l", ({}, "LineString", [[0, 0], [1, 0]]))
        self.refused("lines.gpkg", "no table holds points or polygons: 1 LINESTRING in 'l'")
        with sqlite3.connect(self.folder / "other.gpkg") as other:
            other.execute("CREATE TABLE t (a)")
        self.refused("other.gpkg", "is a database, but not a drawing of this program")

    def test_nothing_of_the_file_is_run_and_damage_is_told(self):
        self.features("a.gpkg", "p", ({"name": "a"}, "Point", [1, 2]), ({"name": "b"}, "Point", [3, 4]))
        with sqlite3.connect(self.folder / "a.gpkg") as package:
            for (trigger,) in package.execute("SELECT name FROM sqlite_master WHERE type = 'trigger'").fetchall():
                package.execute(f'DROP TRIGGER "{trigger}"')
            package.execute("UPDATE p SET geom = x'4750000011' WHERE fid = 2")
            package.execute("CREATE VIEW v AS SELECT fid, geom, abs(-9223372036854775808) AS name FROM p")
            package.execute("INSERT INTO gpkg_contents (table_name, data_type, srs_id) VALUES ('v', 'features', 6677)")
            package.execute("INSERT INTO gpkg_geometry_columns VALUES ('v', 'geom', 'POINT', 6677, 0, 0)")
        code, reported = self.export("a.gpkg")
        self.assertEqual(code, 0, reported)
        self.assertIn("'v' is no table of its own: left out", reported)
        self.assertIn("1 feature left out: damaged geometry in 'p' (first fid 2)", reported)
        self.assertEqual([e["position"] for e in self.imported()], [[1, 2, 0]])


if __name__ == "__main__":
    if not shutil.which("ogr2ogr"):
        print("no ogr2ogr: no package of another program")
        sys.exit(77)
    unittest.main(argv=sys.argv[:1])
