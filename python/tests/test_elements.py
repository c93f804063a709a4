"""Straight, Arc and Clothoid: construction, walking, intersection, movement, refusals."""

import ctypes
import math
import unittest

from fenmark_alignment import LEFT, RIGHT, AlignmentError, Arc, Clothoid, Element, Straight, raw, status, wrap
from fenmark_alignment.records import MoniEntry

POINT = 2e-5  # metres, coordinates rounded to 1e-5
ANGLE = 1.5e-6  # radians, tangents rounded to 1.389e-6
SERIES = 1e-5  # metres, the clothoid's series
FOOT = 1e-3  # metres, foot on a clothoid


class Construction(unittest.TestCase):
    def test_a_straight_has_length_and_azimuth(self):
        s = Straight((10.0, 20.0), (10.0, 50.0))
        self.assertAlmostEqual(s.length, 30.0, delta=POINT)
        self.assertAlmostEqual(s.start_azimuth, math.pi / 2, delta=ANGLE)  # east

    def test_a_straight_without_length_is_refused_with_its_status_and_text(self):
        with self.assertRaises(AlignmentError) as caught:
            Straight((1.0, 1.0), (1.0, 1.0))
        self.assertEqual(caught.exception.status, -1)
        self.assertEqual(caught.exception.function, "ali_makS")
        self.assertIn("end points agree", caught.exception.text)

    def test_a_right_arc_from_north_has_its_centre_in_the_east(self):
        r = Arc.from_start((0.0, 0.0), 0.0, 100.0, 50.0, RIGHT)
        self.assertAlmostEqual(r.center[0], 0.0, delta=POINT)
        self.assertAlmostEqual(r.center[1], 100.0, delta=1e-4)  # the radius is rounded to 1.389e-6
        self.assertAlmostEqual(r.end_azimuth, 0.5, delta=ANGLE)
        self.assertEqual(r.turn, RIGHT)

    def test_an_arc_between_points_is_the_one_laid_from_its_end(self):
        r = Arc.from_end((300.0, -20.0), 1.0, 80.0, 100.0, LEFT)
        again = Arc(r.start, r.end, 80.0, LEFT)
        self.assertAlmostEqual(again.start_azimuth, r.start_azimuth, delta=1e-6)
        self.assertAlmostEqual(again.length, 100.0, delta=1e-4)
        self.assertAlmostEqual(again.sweep, 100.0 / 80.0, delta=1e-6)

    def test_a_clothoid_ends_where_its_series_says(self):
        a = Clothoid.from_start((0.0, 0.0), 0.0, 100.0, LEFT, math.inf, 100.0)
        self.assertAlmostEqual(a.length, 100.0, delta=SERIES)
        self.assertAlmostEqual(a.ex, 97.52877, delta=SERIES)
        self.assertAlmostEqual(a.ey, -16.37140, delta=SERIES)  # left of north is west
        self.assertEqual(a.start_radius, math.inf)
        self.assertEqual(a.end_radius, 100.0)

    def test_a_clothoid_given_by_points_tells_when_its_end_was_moved(self):
        a = Clothoid.from_start((0.0, 0.0), 0.3, 100.0, RIGHT, math.inf, 150.0)
        self.assertFalse(Clothoid(a.start, a.end, 100.0, RIGHT, math.inf, 150.0).end_moved)
        farther = (a.ex + 1.0 * math.cos(0.4), a.ey + 1.0 * math.sin(0.4))
        self.assertTrue(Clothoid(a.start, farther, 100.0, RIGHT, math.inf, 150.0).end_moved)

    def test_a_radius_below_the_limit_is_refused(self):
        with self.assertRaises(AlignmentError):
            Clothoid.from_start((0.0, 0.0), 0.0, 100.0, LEFT, math.inf, 56.0)

    def test_wrap_refuses_an_empty_record(self):
        with self.assertRaises(ValueError):
            wrap(Element())


class Walking(unittest.TestCase):
    def elements(self):
        yield Straight((5.0, 7.0), (50.0, -80.0))
        for turn in (LEFT, RIGHT):
            yield Arc.from_start((-36000.0, 12000.0), 4.0, 150.0, 120.0, turn)
            yield Clothoid.from_start((-36000.0, 12000.0), 2.0, 90.0, turn, math.inf, 120.0)
            yield Clothoid.from_start((10.0, 10.0), 5.0, 90.0, turn, 100.0, 300.0)

    def test_the_ends_of_every_element_have_its_end_stations(self):
        for e in self.elements():
            for at, s in ((e.start, 0.0), (e.end, e.length)):
                foot = e.project(at)
                self.assertAlmostEqual(foot.station, s, delta=POINT)
                self.assertAlmostEqual(foot.distance, 0.0, delta=POINT)

    def test_the_length_is_a_station_of_every_element_moved_or_not(self):
        for e in self.elements():
            for element in (e, e.moved(123.456, 1.0), e.turned((3.0, 4.0), 2.0)):
                at = element.point_at(element.length)
                self.assertLess(math.dist(at[:2], element.end), 5 * POINT)
                with self.assertRaises(AlignmentError):
                    element.point_at(element.length + 1e-3)

    def test_a_point_beside_an_element_is_found_again(self):
        for e in self.elements():
            for part in (0.2, 0.5, 0.9):
                for offset in (-8.0, 0.0, 12.0):
                    p = e.offset_at(part * e.length, offset)
                    foot = e.project(p[:2])
                    self.assertAlmostEqual(foot.station, part * e.length, delta=2 * FOOT)
                    self.assertAlmostEqual(foot.distance, abs(offset), delta=FOOT)

    def test_a_positive_offset_lies_right_of_travel(self):
        p = Straight((0.0, 0.0), (100.0, 0.0)).offset_at(10.0, 5.0)  # north
        self.assertAlmostEqual(p.x, 10.0, delta=POINT)
        self.assertAlmostEqual(p.y, 5.0, delta=POINT)  # east

    def test_stations_off_the_element_are_refused(self):
        for e in self.elements():
            for station in (-0.5, e.length + 0.5):
                with self.assertRaises(AlignmentError):
                    e.point_at(station)

    def test_the_end_is_on_the_element_whatever_was_rounded(self):
        for i in range(50):
            r = Arc.from_start((0.0, 0.0), 0.1 * i, 200.0 + i, 100.0 + 3.7 * i, LEFT if i % 2 else RIGHT)
            self.assertLess(math.dist(r.point_at(r.length)[:2], r.end), 2 * POINT)

    def test_the_reversed_element_passes_the_same_points(self):
        for e in self.elements():
            r = e.reversed()
            p, q = e.point_at(0.3 * e.length), r.point_at(0.7 * e.length)
            self.assertAlmostEqual(p.x, q.x, delta=2 * POINT)
            self.assertAlmostEqual(p.y, q.y, delta=2 * POINT)
            self.assertAlmostEqual(abs(math.remainder(p.azimuth - q.azimuth, 2 * math.pi)), math.pi, delta=2 * ANGLE)

    def test_moved_and_turned_there_and_back_is_the_same(self):
        for e in self.elements():
            back = e.moved(30.0, 1.0).moved(30.0, 1.0 + math.pi).turned((0.0, 0.0), 0.5).turned((0.0, 0.0), -0.5)
            self.assertLess(math.dist(back.start, e.start), 3 * POINT)
            self.assertLess(math.dist(back.end, e.end), 3 * POINT)

    def test_a_parallel_lies_to_the_left(self):
        self.assertAlmostEqual(Straight((0.0, 0.0), (100.0, 0.0)).parallel(5.0).sy, -5.0, delta=POINT)


class Meeting(unittest.TestCase):
    def test_a_straight_and_an_arc_meet_twice(self):
        r = Arc.from_start((0.0, 0.0), 0.0, 100.0, 280.0, RIGHT)
        found = Straight((20.0, -50.0), (80.0, 250.0)).intersect(r)
        self.assertEqual(len(found), 2)
        for point in found:
            self.assertAlmostEqual(math.dist((point.x, point.y), r.center), 100.0, delta=1e-4)
            at = r.point_at(point.station2)
            self.assertLess(math.dist(at[:2], (point.x, point.y)), 1e-4)

    def test_stations_of_two_clothoids_stay_with_their_elements(self):
        a = Clothoid.from_start((0.0, 0.0), 0.0, 100.0, RIGHT, math.inf, 80.0)
        b = Clothoid.from_start((80.0, -25.0), 1.4, 120.0, LEFT, math.inf, 100.0)
        found = a.intersect(b)
        self.assertEqual(len(found), 1)
        for element, station in ((a, found[0].station1), (b, found[0].station2)):
            self.assertLess(math.dist(element.point_at(station)[:2], found[0][:2]), 1e-3)

    def test_elements_apart_do_not_meet(self):
        self.assertEqual(Straight((0.0, 0.0), (1.0, 0.0)).intersect(Straight((0.0, 5.0), (1.0, 5.0))), [])


class RawFunctions(unittest.TestCase):
    def test_points_are_taken_as_pairs(self):
        self.assertEqual(raw.ali_CDist2P((0.0, 0.0), (3.0, 4.0)), 5.0)
        with self.assertRaises((TypeError, ctypes.ArgumentError)):
            raw.ali_CDist2P((0.0,), (3.0, 4.0))

    def test_the_status_is_the_low_half(self):
        self.assertEqual(status(0xFFFF), -1)
        self.assertEqual(status(-1), -1)
        self.assertEqual(status(2), 2)

    def test_a_monitoring_pass_writes_its_distances(self):
        class Three(ctypes.Structure):
            _fields_ = [("count", ctypes.c_int16), ("reserved", ctypes.c_int16 * 3), ("entries", MoniEntry * 3)]

        entries = Three(count=3)
        for entry, (x, y) in zip(entries.entries, ((10.0, 3.0), (50.0, -4.0), (-5.0, 0.0))):
            entry.x, entry.y = x, y
        line = Straight((0.0, 0.0), (100.0, 0.0))
        list_type = raw.Calc_moni.argtypes[0]
        self.assertEqual(raw.Calc_moni(ctypes.cast(ctypes.byref(entries), list_type), 1, line), 1)
        self.assertEqual([round(e.distance, 5) for e in entries.entries], [3.0, 4.0, -1.0])


if __name__ == "__main__":
    unittest.main()
