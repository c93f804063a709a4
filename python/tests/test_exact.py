"""Chains of exact curves: arrays, files, intersection points, crossings, lines, profiles; with numpy and without."""

import ctypes
import importlib.util
import json
import math
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

from fenmark_alignment import RIGHT, AlignmentError, Chain, Crossfall, Profile, curves

ROOT = pathlib.Path(__file__).resolve().parents[2]
POINT = 1e-9  # metres
IPS = [(0.0, 0.0), (200.0, 40.0, 150.0, 80.0, 80.0), (260.0, 300.0, 120.0), (500.0, 350.0)]

LANDXML = """<LandXML xmlns="http://www.landxml.org/schema/LandXML-1.2"><Alignments><Alignment name="A" staStart="100"
 length="0"><CoordGeom>
<Line length="100"><Start>0 0</Start><End>100 0</End></Line>
<Spiral length="54" radiusStart="INF" radiusEnd="150" rot="cw" spiType="clothoid"><Start>100 0</Start>
 <PI>136.0 0</PI><End>153.8 3.2</End></Spiral>
<Curve rot="cw"><Start>200 0</Start><Center>200 100</Center><End>300 100</End></Curve></CoordGeom>
<StaEquation staInternal="150" staBack="150" staAhead="1000"/></Alignment></Alignments></LandXML>"""


def integrated(piece, s, steps=4000):
    """A curve's point by Simpson's rule on its azimuth."""
    def azimuth(t):
        rise = (piece.end_curvature - piece.start_curvature) / piece.length
        return piece.azimuth + t * (piece.start_curvature + 0.5 * t * rise)
    h = s / steps
    weights = [1 if i in (0, steps) else 4 if i % 2 else 2 for i in range(steps + 1)]
    x = math.fsum(w * math.cos(azimuth(i * h)) for i, w in enumerate(weights)) * h / 3.0
    y = math.fsum(w * math.sin(azimuth(i * h)) for i, w in enumerate(weights)) * h / 3.0
    return piece.x + x, piece.y + y


class Exact(unittest.TestCase):
    def setUp(self):
        self.chain = Chain.from_ips(IPS, start_station=100.0)

    def test_points_are_those_of_the_integrated_curvature(self):
        station = self.chain.start_station
        for piece in self.chain.curves:
            for part in (1e-6, 0.3, 0.999):
                x, y, _ = self.chain.point_at(station + part * piece.length)
                self.assertLess(math.dist((x, y), integrated(piece, part * piece.length)), POINT)
            station += piece.length

    def test_beside_the_flat_end_of_a_clothoid_there_is_a_point(self):
        chain = Chain.lay((0.0, 0.0), 0.3, [("A", 400.0, RIGHT, math.inf, 500.0)])
        for s in (1e-6, 0.01, 0.1, 0.66):
            x, y, _ = chain.point_at(s)
            self.assertLess(abs(math.hypot(x, y) - s), 1e-6)
            self.assertAlmostEqual(chain.locate((x, y)).station, s, delta=1e-6)

    def test_arrays_give_what_single_questions_give(self):
        stations = [100.0 + 0.5 * i for i in range(1000)]
        stations = [s for s in stations if s <= self.chain.end_station]
        at = self.chain.point_at(stations, 2.5)
        self.assertEqual(len(at.x), len(stations))
        for i in range(0, len(stations), 37):
            self.assertLess(math.dist((at.x[i], at.y[i]), self.chain.point_at(stations[i], 2.5)[:2]), POINT)
        back = self.chain.locate(list(zip(at.x, at.y)))
        for i in range(len(stations)):
            self.assertAlmostEqual(back.station[i], stations[i], delta=1e-7)
            self.assertAlmostEqual(back.offset[i], 2.5, delta=1e-9)
        self.assertEqual(len(self.chain.curvature_at(stations)), len(stations))
        self.assertTrue(math.isnan(self.chain.point_at([50.0]).x[0]))

    def test_one_offset_for_each_station(self):
        at = self.chain.point_at([110.0, 120.0], [0.0, 5.0])
        self.assertLess(math.dist((at.x[1], at.y[1]), self.chain.point_at(120.0, 5.0)[:2]), POINT)

    def test_the_curvature_is_that_of_the_arc(self):
        middle = self.chain.curves[2]
        self.assertAlmostEqual(abs(middle.start_curvature), 1.0 / 150.0, delta=1e-12)
        station = 100.0 + self.chain.curves[0].length + self.chain.curves[1].length + 1.0
        self.assertAlmostEqual(self.chain.curvature_at(station), middle.start_curvature, delta=1e-12)

    def test_a_curve_that_does_not_fit_is_refused(self):
        with self.assertRaises(AlignmentError):
            Chain.from_ips([(0, 0), (10, 0, 500.0), (10, 10)])

    def test_reversed_has_the_same_points(self):
        back = self.chain.reversed()
        for s in (0.0, 33.3, back.length):
            ahead = self.chain.point_at(self.chain.end_station - s, -4.0)
            self.assertLess(math.dist(back.point_at(s, 4.0)[:2], ahead[:2]), POINT)

    def test_the_line_lies_on_the_chain_within_its_tolerance(self):
        line = self.chain.line(0.01)
        self.assertLess(len(line), len(self.chain.line(1e-5)))
        for (x0, y0), (x1, y1) in zip(line, line[1:]):
            self.assertLessEqual(abs(self.chain.locate(((x0 + x1) / 2, (y0 + y1) / 2)).offset), 0.01)

    def test_crossings_are_on_both(self):
        other = Chain.from_curves([(100.0, -100.0, math.pi / 2.0, 500.0, 0.0, 0.0)])
        found = self.chain.crossings(other)
        self.assertTrue(found)
        for c in found:
            self.assertLess(math.dist(self.chain.point_at(c.station)[:2], (c.x, c.y)), 1e-8)
            self.assertLess(math.dist(other.point_at(c.other_station)[:2], (c.x, c.y)), 1e-8)

    def test_stake_points_have_kinds_and_offsets(self):
        stakes = self.chain.stake_points(20.0, offsets=(-5.0, 0.0, 5.0), stations=(123.4,))
        self.assertEqual([s.kind for s in stakes[:3]], ["BP"] * 3)
        self.assertIn("given", {s.kind for s in stakes})
        self.assertTrue({"KA", "KE", "BC", "EC", "EP"} <= {s.kind for s in stakes})
        for s in stakes:
            self.assertLess(math.dist(self.chain.point_at(s.station, s.offset)[:2], (s.x, s.y)), POINT)

    def test_station_equations(self):
        chain = Chain(Chain.lay((0, 0), 0, [("S", 200.0)]), 0.0, equations=[(100.0, 500.0)])
        self.assertAlmostEqual(chain.end_station, 600.0)
        self.assertAlmostEqual(chain.point_at(550.0).x, 150.0)
        self.assertTrue(math.isnan(chain.point_at([50.0, 300.0]).x[1]))

    def test_a_profile(self):
        profile = self.chain.profile([(100.0, 10.0), (200.0, 14.0, 60.0), (400.0, 8.0)])
        self.assertAlmostEqual(profile.at(100.0).height, 10.0)
        self.assertAlmostEqual(profile.at(110.0).grade, 0.04)
        self.assertAlmostEqual(profile.at(200.0).height, 14.0 - 0.07 * 60.0 / 8.0)
        (top,) = profile.extremes()
        self.assertTrue(top.high)
        heights = profile.heights([100.0, 200.0, 1e6])
        self.assertAlmostEqual(heights[1], profile.at(200.0).height)
        self.assertTrue(math.isnan(heights[2]))
        at = profile.points_at([150.0], 3.0)
        self.assertLess(math.dist((at.x[0], at.y[0]), self.chain.point_at(150.0, 3.0)[:2]), POINT)
        self.assertAlmostEqual(at.z[0], 12.0)
        with self.assertRaises(AlignmentError):
            Profile([(0.0, 1.0), (-5.0, 1.0)])

    def test_a_crossfall(self):
        banked = Crossfall([(100.0, -0.02, -0.02), (200.0, 0.04, -0.04)])
        slopes = banked.at(150.0)
        self.assertAlmostEqual(slopes.left, 0.01)
        self.assertAlmostEqual(slopes.right, -0.03)
        profile = self.chain.profile([(100.0, 10.0), (400.0, 10.0)])
        self.assertAlmostEqual(profile.points_at([150.0], 3.0, banked).z[0], 10.0 - 0.09)
        self.assertAlmostEqual(profile.points_at([150.0], -3.0, banked).z[0], 10.0 + 0.03)
        with self.assertRaises(AlignmentError):
            banked.at(99.0)
        with self.assertRaises(AlignmentError):
            Crossfall([(100.0, 0.0, 0.0), (50.0, 0.0, 0.0)])

    def test_landxml(self):
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder) / "a.xml"
            path.write_text(LANDXML, encoding="utf-8")
            chain = Chain.from_landxml(path)
            with self.assertRaises(KeyError):
                Chain.from_landxml(path, "B")
        self.assertEqual(len(chain), 3)
        self.assertAlmostEqual(chain.curves[1].end_curvature, 1.0 / 150.0)
        self.assertAlmostEqual(chain.curves[2].length, 50.0 * math.pi)
        self.assertAlmostEqual(chain.curves[2].azimuth, 0.0)
        self.assertEqual(chain.equations, ((50.0, 1000.0),))
        self.assertAlmostEqual(chain.point_at(1010.0).x, 60.0)

    def test_structures_have_the_names_and_places_of_the_headers(self):
        text = "".join(p.read_text(encoding="utf-8") for p in (ROOT / "include/fenmark/curve").glob("*.h"))
        text = re.sub(r"/\*.*?\*/", "", text, flags=re.S)
        sizes = {"FmkPoint": curves.Point, "FmkCurve": curves.Curve, "FmkChainPlace": curves.Place,
                 "FmkChainFoot": curves.ChainFoot, "FmkChainJoint": curves.ChainJoint, "FmkIp": curves.Ip,
                 "FmkChainCrossing": curves.ChainCrossing, "FmkStake": curves.ChainStake,
                 "FmkStakeOptions": curves.StakeOptions, "FmkVerticalPoint": curves.VerticalPoint,
                 "FmkProfileExtreme": curves.ProfileExtreme, "FmkSpacePoint": curves.SpacePoint,
                 "FmkCrossfallStation": curves.CrossfallStation, "FmkStationEquation": curves.StationEquation}  # fmt: skip
        for name, structure in sizes.items():
            body = re.search(rf"typedef struct {name} \{{(.*?)\}} {name};", text, flags=re.S).group(1)
            units = {"double": 8, "size_t": 8, "int": 4, "FmkPoint": 16, "FmkPose": 24, "const double*": 8}
            kinds = re.findall(r"^\s*(const double\*|\w+) \w+;", body, flags=re.M)
            size = sum(units[k] for k in kinds)
            self.assertEqual(ctypes.sizeof(structure), size + (-size) % 8, name)

    def test_plot_draws_or_says_what_it_needs(self):
        try:
            import matplotlib
        except ImportError:  # of numpy, which WithoutNumpy hides
            with self.assertRaisesRegex(ImportError, "matplotlib"):
                self.chain.plot()
            return
        matplotlib.use("Agg")
        axes = self.chain.plot(pitch=50.0, color="black")
        self.assertEqual(len(axes.lines), 2)


class WithoutNumpy(unittest.TestCase):
    def test_the_same_tests_hold_with_lists(self):
        if curves.numpy is None:
            self.assertIsInstance(Chain.from_ips(IPS).point_at([0.0, 1.0]).x, list)
            return
        hide = "import sys; sys.modules['numpy'] = None; import unittest; unittest.main(module=None, argv=['t', 'tests.test_exact.Exact', 'tests.test_chain'])"
        done = subprocess.run([sys.executable, "-B", "-c", hide], cwd=ROOT / "python", capture_output=True, text=True)
        self.assertEqual(done.returncode, 0, done.stderr)


class Imports(unittest.TestCase):
    """Over the program, which a build without it does not have: FENMARK_PROGRAM is then empty."""

    def test_an_import_gives_points_lots_alignments_and_errors(self):
        program = os.environ.get("FENMARK_PROGRAM", "")
        if not program:
            print("fenmark_alignment: FENMARK_PROGRAM is not set, so import_sima was not tried", file=sys.stderr)
            self.skipTest("FENMARK_PROGRAM is not set")
        from fenmark_alignment import ImportFailed, import_sima

        work = tempfile.TemporaryDirectory()  # the log goes beside the file
        self.addCleanup(work.cleanup)
        samples = pathlib.Path(work.name)
        for name in ("road.sim", "dirty.sim", "cadastral.sim"):
            shutil.copy(ROOT / "examples" / name, samples)
        road = import_sima(samples / "road.sim")
        self.assertEqual(len(road.lots), 5)
        self.assertEqual(road.errors, [])
        self.assertIn("BP", {p.name for p in road.points})
        centre = road.alignments["中心線"]
        bp = next(p for p in road.points if p.name == "BP")
        self.assertLess(math.dist((centre.curves[0].x, centre.curves[0].y), (bp.x, bp.y)), 1e-3)
        self.assertTrue(centre.is_tangent(gap=2e-3, turn=1e-2))
        dirty = import_sima(samples / "dirty.sim")
        self.assertEqual(dirty.errors[0].line, 2)
        self.assertEqual(dirty.errors[0].code, "ErrG00-1")
        with self.assertRaises(ImportFailed):
            import_sima(ROOT / "README.md")
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder) / "road.gpkg"
            import_sima(samples / "cadastral.sim", drawing=path, only=["points"])
            self.assertTrue(path.exists())
            with self.assertRaises(KeyError):
                Chain.from_geopackage(path, "中心線")
            self.assertTrue((samples / "cadastral_Input.log").exists())
        if importlib.util.find_spec("geopandas") is None:
            with self.assertRaisesRegex(ImportError, "geopandas"):
                road.to_geodataframes()
            return
        frames = road.to_geodataframes("EPSG:6677")
        self.assertEqual(len(frames["lots"]), 5)
        self.assertAlmostEqual(frames["alignments"].length.iloc[0], centre.length, delta=0.05)

    def test_every_road_of_a_drawing_has_the_digits_that_the_program_prints(self):
        program = os.environ.get("FENMARK_PROGRAM", "")
        if not program:
            self.skipTest("FENMARK_PROGRAM is not set")
        from fenmark_alignment import import_sima

        def ask(*arguments):
            done = subprocess.run([program, *map(str, arguments)], capture_output=True, encoding="utf-8-sig", check=True)
            return done.stdout

        samples = [ROOT / "examples" / n for n in ("road.sim", "dirty.sim")]
        samples += [ROOT / "fuzz/seeds/import/clothoid.sim", ROOT / "tests/exchange/samples/columns.sim"]
        roads = empty = 0
        with tempfile.TemporaryDirectory() as folder:
            for source in samples:
                # A name that is no plain address of a file.
                path = pathlib.Path(folder) / f"{source.stem} 100%25 #1?.gpkg"
                shutil.copy(source, folder)
                drawn = import_sima(pathlib.Path(folder) / source.name, drawing=path)
                for name, road in drawn.alignments.items():
                    road = Chain.from_geopackage(path, name)
                    stakes = road.stake_points(20.0, offsets=(-4.0, 0.0, 4.0))
                    if not road.curves:
                        self.assertEqual((stakes, road.stakes(20.0), list(road.line())), ([], [], []))
                        empty += 1
                        continue
                    roads += 1
                    text = ask("stakes", path, name, "--every", 20, "--offset=-4,0,4", "--main-points", "--format", "csv")
                    # The program adds the middle of a lone arc, SP. It lists one of two stakes nearer than half a
                    # millimetre, and rounds halves upwards.
                    rows = [row.split(",") for row in text.splitlines()[1:]]
                    printed = [[float(v) for v in row[1:5]] for row in rows if not row[0].startswith("SP")]
                    own = [s for i, s in enumerate(stakes) if i < 3 or s.station - stakes[i - 3].station > 5e-4]
                    self.assertEqual(len(own), len(printed))
                    for stake, row in zip(own, printed):
                        for value, digits in zip((stake.station, stake.offset, stake.x, stake.y), row):
                            self.assertLessEqual(abs(value - digits), 5e-4 + 1e-9)
                    for stake in stakes[:: max(len(stakes) // 5, 1)]:
                        at = json.loads(ask("locate", "--json", path, name, "--", repr(stake.y), repr(stake.x)))
                        where = road.locate((stake.x, stake.y))
                        self.assertAlmostEqual(where.station, at["station"], delta=1e-9)
                        self.assertAlmostEqual(where.offset, at["offset"], delta=1e-9)
        self.assertGreaterEqual(roads, 6)
        self.assertGreaterEqual(empty, 1)


if __name__ == "__main__":
    unittest.main()
