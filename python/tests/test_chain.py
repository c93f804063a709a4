"""Chain: stations, offsets, the way back, stakes, joints."""

import math
import unittest

from fenmark_alignment import LEFT, RIGHT, AlignmentError, Chain

STATION = 1e-3  # metres, the foot on a clothoid
OFFSET = 1e-4  # metres
LENGTHS = 5e-5  # metres: lengths of straights and arcs are rounded to 1e-5, those of the chain are exact
JOINT_FOOT = 2e-4  # metres: a tangent rounded to 1.389e-6 swings a point 40 m away, and ends are rounded to 1e-5

PIECES = [
    ("S", 100.0), ("A", 80.0, RIGHT, math.inf, 120.0), ("R", 120.0, RIGHT, 90.0), ("A", 80.0, RIGHT, 120.0, math.inf),
    ("A", 70.0, LEFT, math.inf, 90.0), ("R", 90.0, LEFT, 60.0), ("A", 100.0, LEFT, 90.0, 200.0),
    ("R", 200.0, LEFT, 80.0), ("A", 90.0, LEFT, 200.0, math.inf), ("S", 50.0),
]  # fmt: skip


def long_chain():
    return Chain.lay((-36000.0, 12000.0), 0.7, PIECES, start_station=40.0)


class Chains(unittest.TestCase):
    def test_a_laid_chain_is_tangent(self):
        self.assertTrue(long_chain().is_tangent())

    def test_a_break_is_seen(self):
        chain = long_chain()
        broken = Chain([chain[0], chain[2]])
        self.assertFalse(broken.is_tangent())
        self.assertGreater(broken.joints()[0].gap, 1.0)

    def test_point_and_station_agree_both_ways(self):
        chain = long_chain()
        for station in chain.stakes(7.0):
            for offset in (-15.0, -0.5, 0.0, 4.0, 25.0):
                found = chain.locate(chain.point_at(station, offset)[:2])
                self.assertAlmostEqual(found.station, station, delta=STATION, msg=f"{station} {offset}")
                self.assertAlmostEqual(found.offset, offset, delta=OFFSET, msg=f"{station} {offset}")

    def test_millimetres_from_a_joint_the_foot_lies_on_its_own_element(self):
        # The search on a clothoid alone would answer for points that lie beside its neighbour.
        chain = long_chain()
        for joint in chain.joint_stations[1:-1]:
            for off in (-6.5e-3, -4e-3, -1.5e-3, 1.5e-3, 4e-3, 6.5e-3):
                for offset in (-40.0, -17.0, 17.0, 40.0):
                    p = chain.point_at(joint + off, offset)
                    found = chain.locate(p[:2])
                    back = chain.point_at(found.station, found.offset)
                    self.assertLess(math.dist(back[:2], p[:2]), JOINT_FOOT, msg=f"{joint + off} {offset}")
                    self.assertAlmostEqual(found.offset, offset, delta=OFFSET, msg=f"{joint + off} {offset}")

    def test_stations_begin_with_the_start_station(self):
        chain = long_chain()
        self.assertEqual(chain.start_station, 40.0)
        self.assertAlmostEqual(chain.end_station, 40.0 + sum(e.length for e in chain), delta=LENGTHS)
        self.assertLess(math.dist(chain.point_at(40.0)[:2], (-36000.0, 12000.0)), OFFSET)

    def test_a_station_on_a_joint_belongs_to_the_element_that_begins(self):
        chain = long_chain()
        self.assertEqual(chain.locate(chain.elements[3].start).index, 3)

    def test_stations_and_points_off_the_chain_are_refused(self):
        chain = long_chain()
        for station in (39.9, chain.end_station + 0.1, math.nan):
            with self.assertRaises(AlignmentError):
                chain.point_at(station)
        with self.assertRaises(AlignmentError):
            chain.locate((-36100.0, 11900.0))  # behind the start

    def test_both_ends_are_on_the_chain(self):
        chain = long_chain()
        self.assertAlmostEqual(chain.locate(chain[0].start).station, 40.0, delta=STATION)
        self.assertAlmostEqual(chain.locate(chain[-1].end).station, chain.end_station, delta=STATION)

    def test_stakes_are_the_multiples_the_ends_and_the_joints(self):
        chain = long_chain()
        plain = chain.stakes(20.0, joints=False)
        self.assertEqual(plain[:3], [40.0, 60.0, 80.0])
        self.assertEqual(plain[-1], chain.end_station)
        self.assertEqual(len(chain.stakes(20.0)), len(plain) + len(PIECES) - 2)  # the first joint lies at 140
        with self.assertRaises(ValueError):
            chain.stakes(0.0)

    def test_a_chain_does_not_change_with_its_elements(self):
        chain = long_chain()
        again = Chain(chain.elements)
        chain.elements[0].sx = 0.0
        self.assertEqual(again[0].sx, -36000.0)


if __name__ == "__main__":
    unittest.main()
