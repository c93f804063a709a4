"""Every solver finds again a chain that was built exactly, leaves its records alone, and refuses what cannot be.

A chain is built from given sizes. Its outer elements are lengthened or cut at the joints, given to the solver with the
sizes, and the chain must come again.
"""

import ctypes
import math
import unittest

import fenmark_alignment as fa
from fenmark_alignment import LEFT, RIGHT, AlignmentError, Arc, Chain, Straight, raw

POINT = 1e-4  # metres, joints of rounded elements
PLACE = 1e-3  # metres, where a chain lies whose elements are rounded one by one
FIXED = 5e-4  # metres, joints with fixed elements that were rounded
ANGLE = 1e-5  # radians
GAP = 5e-4  # metres, what is left at a joint that closes
INF = math.inf
START, AZIMUTH = (-36000.0, 12000.0), 0.7


def lay(*pieces):
    return Chain.lay(START, AZIMUTH, pieces)


def cut_end(element, length):
    """The element with another length, its start kept."""
    if isinstance(element, Straight):
        return Straight.from_start(element.start, element.sang, element.length + length)
    return Arc.from_start(element.start, element.sang, element.radius, element.length + length, element.turn)


def cut_start(element, length):
    """The element with another length, its end kept."""
    if isinstance(element, Straight):
        return Straight.from_end(element.end, element.eang, element.length + length)
    return Arc.from_end(element.end, element.eang, element.radius, element.length + length, element.turn)


def crossing(a, b):
    """Where the lines of two straights cross."""
    out = (ctypes.c_double * 2)()
    raw.gc_intpSS(a.start, a.end, b.start, b.end, out)
    return tuple(out)


class Solvers(unittest.TestCase):
    def expect(self, found, chain, gap=POINT):
        found = Chain(found)
        self.assertEqual([e.type for e in found], [e.type for e in chain])
        self.assertTrue(found.is_tangent(gap, ANGLE), found.joints())
        for a, b in zip(found, chain):
            self.assertLess(math.dist(a.start, b.start), PLACE)
            self.assertLess(math.dist(a.end, b.end), PLACE)
            self.assertAlmostEqual(a.par, b.par, delta=2e-6)
            self.assertEqual(a.dir, b.dir)

    def around(self, chain, longer=20.0):
        """The outer elements, lengthened beyond the joints."""
        return cut_end(chain[0], longer), cut_start(chain[-1], longer)

    def check(self, chain, solve, *sizes, longer=20.0, **choices):
        first, last = self.around(chain, longer)
        before = bytes(first), bytes(last)
        self.expect(solve(first, last, *sizes, **choices), chain)
        self.assertEqual((bytes(first), bytes(last)), before)

    def test_between_two_straights(self):
        for turn in (LEFT, RIGHT):
            self.check(lay(("S", 90), ("R", 120, turn, 100), ("S", 80)), fa.arc_between_straights, 120, longer=120)
            # Where the clothoids meet the radius follows: R = sqrt((A1^2 + A2^2) / (2 theta)).
            radius = math.sqrt((80**2 + 90**2) / (2 * 0.6))
            chain = lay(("S", 90), ("A", 80, turn, INF, radius), ("A", 90, turn, radius, INF), ("S", 90))
            self.check(chain, fa.clothoids_between_straights, 80, 90, longer=120)
            chain = lay(("S", 90), ("A", 80, turn, INF, 150), ("R", 150, turn, 70), ("A", 90, turn, 150, INF), ("S", 90))
            self.check(chain, fa.eased_arc_between_straights, 80, 150, 90, longer=120)

    def test_between_a_straight_and_an_arc(self):
        for turn in (LEFT, RIGHT):
            chain = lay(("S", 90), ("R", 80, turn, 60), ("R", 200, turn, 120))
            self.check(chain, fa.arc_between_straight_and_arc, 80)
            chain = lay(("S", 90), ("R", 90, turn, 60), ("A", 100, turn, 90, 250), ("R", 250, turn, 120))
            self.check(chain, fa.arc_and_clothoid_between_straight_and_arc, 90, 100, from_infinite=False)
            chain = lay(("R", 250, turn, 120), ("A", 100, turn, 250, 90), ("R", 90, turn, 60), ("S", 90))
            last, first = self.around(chain)
            sizes = {"straight_first": False, "from_infinite": False}
            self.expect(fa.arc_and_clothoid_between_straight_and_arc(first, last, 90, 100, **sizes), chain)
            chain = lay(("S", 100), ("A", 70, turn, INF, 120), ("R", 120, turn, 60), ("A", 75, turn, 120, INF),
                        ("A", 85, -turn, INF, 160), ("R", 160, -turn, 100))  # fmt: skip
            self.check(chain, fa.reverse_curve_between_straight_and_arc, 70, 120, 75, 85)

    def test_between_two_arcs(self):
        for turn in (LEFT, RIGHT):
            chain = lay(("R", 150, turn, 80), ("R", 300, turn, 90), ("R", 120, turn, 80))
            self.check(chain, fa.arc_between_arcs, 300, turn)
            for other in (turn, -turn):
                chain = lay(("R", 150, turn, 80), ("S", 120), ("R", 120, other, 80))
                self.check(chain, fa.straight_between_arcs)
                chain = lay(("R", 150, turn, 80), ("S", 100), ("A", 70, other, INF, 120), ("R", 120, other, 80))
                self.check(chain, fa.straight_and_clothoid_between_arcs, 70)
                chain = lay(("R", 150, turn, 80), ("A", 80, turn, 150, INF), ("S", 60), ("A", 70, other, INF, 120),
                            ("R", 120, other, 80))  # fmt: skip
                self.check(chain, fa.eased_straight_between_arcs, 80, 70)
            chain = lay(("R", 300, turn, 80), ("A", 110, turn, 300, 100), ("R", 100, turn, 60), ("R", 250, turn, 80))
            self.check(chain, fa.clothoid_and_arc_between_arcs, 100, 110)
            chain = lay(("R", 300, turn, 80), ("A", 110, turn, 300, 100), ("R", 100, turn, 60),
                        ("A", 120, turn, 100, 250), ("R", 250, turn, 80))  # fmt: skip
            self.check(chain, fa.eased_arc_between_arcs, 110, 100, 120, from_infinite1=False, from_infinite2=False)

    def test_compound_curves_between_fixed_elements(self):
        for turn in (LEFT, RIGHT):
            chain = lay(("R", 150, turn, 80), ("A", 100, turn, 150, 80), ("R", 80, turn, 60))
            found = fa.clothoid_between_arcs(chain[0], chain[2], 100)
            self.expect([chain[0], *found.elements, chain[2]], chain, FIXED)
            self.assertLess(found.gap, GAP)
            chain = lay(("R", 150, turn, 80), ("A", 90, turn, 150, INF), ("A", 70, -turn, INF, 100), ("R", 100, -turn, 60))
            found = fa.clothoids_between_arcs(chain[0], chain[3], 90, 70)
            self.expect([chain[0], *found.elements, chain[3]], chain, FIXED)
            self.assertLess(found.gap, GAP)
            chain = lay(("S", 60), ("A", 90, turn, INF, 150), ("R", 150, turn, 80))
            found = fa.clothoid_between_straight_and_arc(chain[0], chain[2], 90)
            self.expect([chain[0], *found.elements, chain[2]], chain, FIXED)
            self.assertLess(found.gap, GAP)
            chain = lay(("R", 150, turn, 80), ("A", 80, turn, 150, INF), ("A", 70, -turn, INF, 100), ("R", 100, -turn, 60),
                        ("A", 75, -turn, 100, INF), ("A", 85, turn, INF, 140), ("R", 140, turn, 70))  # fmt: skip
            self.check(chain, fa.arc_between_arcs_with_clothoids, 80, 70, 100, 75, 85)

    def test_curves_at_an_intersection_point(self):
        for turn in (LEFT, RIGHT):
            previous, ip = (0.0, 0.0), (300.0, 50.0)
            azimuth = math.atan2(50.0, 300.0)
            bend = lay(("S", 60), ("A", 90, turn, INF, 200), ("R", 200, turn, 60), ("A", 110, turn, 200, 120),
                       ("R", 120, turn, 50), ("A", 80, turn, 120, INF), ("S", 70))  # fmt: skip
            corner = crossing(bend[0], bend[-1])
            found = fa.compound_curve_at_ip(bend[0].start, corner, bend[-1].end, 90, 200, 110, 120, 80,
                                            tangent1=math.dist(bend[1].start, corner))  # fmt: skip
            self.expect([bend[0], *found.elements, bend[-1]], bend, FIXED)
            found = fa.compound_curve_at_ip(bend[0].start, corner, bend[-1].end, 90, 200, 110, 120, 80,
                                            tangent2=math.dist(bend[-1].start, corner))  # fmt: skip
            self.expect([bend[0], *found.elements, bend[-1]], bend, FIXED)
            following = (ip[0] + 400.0 * math.cos(azimuth - turn * 0.9), ip[1] + 400.0 * math.sin(azimuth - turn * 0.9))
            for curve in (
                fa.arc_at_ip(previous, ip, following, 150.0),
                fa.clothoids_at_ip(previous, ip, following, 110.0, 120.0),
                fa.eased_arc_at_ip(previous, ip, following, 80.0, 150.0, 90.0),
            ):
                elements = curve.elements
                chain = Chain([Straight(previous, elements[0].start), *elements, Straight(elements[-1].end, following)])
                self.assertTrue(chain.is_tangent(), chain.joints())
                self.assertAlmostEqual(curve.azimuth_in, azimuth, delta=ANGLE)
                self.assertAlmostEqual(math.dist(elements[0].start, ip), curve.tangent1, delta=POINT)
                self.assertAlmostEqual(math.dist(elements[-1].end, ip), curve.tangent2, delta=POINT)
                self.assertTrue(all(e.dir == turn for e in elements))
        with self.assertRaises(ValueError):
            fa.compound_curve_at_ip(previous, ip, following, 90.0, 200.0, 110.0, 120.0, 80.0)

    def test_elements_from_an_arc_to_a_point(self):
        for turn in (LEFT, RIGHT):
            chain = lay(("R", 150, turn, 80), ("S", 120))
            self.expect(fa.straight_from_arc_towards_point(chain[1].end, cut_end(chain[0], 15), 120), chain)
            chain = lay(("R", 150, turn, 80), ("R", 220, turn, 120))
            self.expect(fa.arc_from_arc_to_point(chain[1].end, cut_end(chain[0], 15), 220, turn), chain)
            chain = lay(("R", 150, turn, 80), ("R", 220, -turn, 120))
            self.expect(fa.reverse_arc_from_arc_to_point(chain[1].end, cut_end(chain[0], 15), 220), chain)
            chain = lay(("S", 100), ("A", 80, turn, INF, 150), ("R", 150, turn, 90))
            # The length must lead to the clothoid: sqrt(D^2 - (R + dR)^2) - Xm, D the distance of point and centre.
            shift, abscissa = ctypes.c_double(), ctypes.c_double()
            raw.AelmAtri(80, 150, ctypes.c_double(), shift, abscissa)
            p, r = chain[0].start, cut_start(chain[2], 10)
            length = math.sqrt(math.dist(p, r.center) ** 2 - (150 + shift.value) ** 2) - abscissa.value
            self.expect(fa.straight_and_clothoid_from_point(p, r, 80, length), chain)
            chain = lay(("R", 150, turn, 80), ("A", 90, turn, 150, 80), ("R", 80, turn, 90))
            self.expect(fa.clothoid_and_arc_to_point(chain[2].end, cut_end(chain[0], 15), 90, 80), chain)
            chain = lay(("R", 150, turn, 80), ("A", 90, turn, 150, INF), ("A", 70, -turn, INF, 100), ("R", 100, -turn, 90))
            self.expect(fa.clothoids_and_arc_to_point(chain[3].end, cut_end(chain[0], 15), 90, 70, 100), chain)

    def test_arcs_from_a_straight_through_a_point(self):
        for turn in (LEFT, RIGHT):
            chain = lay(("S", 90), ("R", 120, turn, 100))
            found = fa.arc_from_straight_through_point(chain[1].end, cut_end(chain[0], 30), 120, turn)
            self.expect(found, chain)
            chain = lay(("S", 90), ("A", 80, turn, INF, 120), ("R", 120, turn, 100))
            found = fa.eased_arc_from_straight_through_point(chain[2].end, cut_end(chain[0], 30), 80, 120, turn)
            self.expect(found, chain)

    def test_an_arc_with_a_clothoid_from_infinite_radius_reaches_its_point(self):
        r1 = Arc.from_start(START, AZIMUTH, 400.0, 150.0, LEFT)
        p = (r1.ex + 120.0 * math.cos(r1.eang - 0.5), r1.ey + 120.0 * math.sin(r1.eang - 0.5))
        found = fa.clothoid_and_arc_through_point(p, r1, 80.0, 150.0, LEFT)
        self.assertTrue(Chain(found).is_tangent(POINT, ANGLE))
        self.assertLess(math.dist(found[2].end, p), POINT)

    def test_a_cross_line_runs_from_right_to_left(self):
        s = fa.cross_line(Straight((0.0, 0.0), (100.0, 0.0)), 40.0, 6.0)
        self.assertLess(math.dist(s.start, (40.0, 6.0)), POINT)
        self.assertLess(math.dist(s.end, (40.0, -6.0)), POINT)

    def test_what_cannot_be_raises_with_function_and_status(self):
        s1, s2 = Straight((0.0, 0.0), (100.0, 0.0)), Straight((110.0, 10.0), (110.0, 200.0))
        with self.assertRaises(AlignmentError) as caught:
            fa.arc_between_straights(s1, s2, 1e6)
        self.assertEqual((caught.exception.function, caught.exception.status), ("ali_RmakSS", -1))
        self.assertEqual(s1.end, (100.0, 0.0))

    def test_every_solver_in_the_list_exists_and_tells_its_c_function(self):
        from fenmark_alignment import solvers

        for name in solvers.__all__:
            doc = getattr(solvers, name).__doc__
            if name[0].islower():
                named = [n for n in raw.prototypes if f"({n})" in doc]
                self.assertEqual(len(named), 1, name)


if __name__ == "__main__":
    unittest.main()
