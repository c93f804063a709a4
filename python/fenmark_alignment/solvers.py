"""Solvers under readable names. Each takes elements, leaves them as they are, and returns new ones in travel order.

The docstring of each names the C function. Sizes are metres, turns LEFT (+1) or RIGHT (-1). `AlignmentError` is raised
when there is no such chain.
"""

from __future__ import annotations

import ctypes
import math
from collections.abc import Sequence
from typing import NamedTuple, Union

from .elements import ARC, CLOTHOID, STRAIGHT, Arc, Clothoid, Straight, _blank, wrap
from .library import call
from .records import Element, IpCurve


AnyElement = Union[Straight, Arc, Clothoid]


def _straight(length: float = 0.0) -> Straight:
    return _blank(Straight, STRAIGHT, len=length)


def _arc(radius: float = 0.0, turn: float = 0.0, length: float = 0.0) -> Arc:
    return _blank(Arc, ARC, par=radius, dir=turn, len=length)


def _clothoid(parameter: float = 0.0) -> Clothoid:
    return _blank(Clothoid, CLOTHOID, par=parameter)


# ---- between two straights


def arc_between_straights(s1: Element, s2: Element, radius: float) -> list[AnyElement]:
    """Arc between two straights (ali_RmakSS). Returns [straight, arc, straight]."""
    s1, s2, r = wrap(s1), wrap(s2), _arc(radius)
    call("ali_RmakSS", s1, s2, r)
    return [s1, r, s2]


def clothoids_between_straights(s1: Element, s2: Element, a1: float, a2: float) -> list[AnyElement]:
    """Two clothoids that meet at a common radius (ali_AAmakSS). Returns [straight, clothoid, clothoid, straight]."""
    s1, s2, c1, c2 = wrap(s1), wrap(s2), _clothoid(a1), _clothoid(a2)
    call("ali_AAmakSS", s1, s2, c1, c2)
    return [s1, c1, c2, s2]


def eased_arc_between_straights(s1: Element, s2: Element, a1: float, radius: float, a2: float) -> list[AnyElement]:
    """Clothoid, arc, clothoid between two straights (ali_ARAmakSS). Returns all five elements."""
    s1, s2, c1, r, c2 = wrap(s1), wrap(s2), _clothoid(a1), _arc(radius), _clothoid(a2)
    call("ali_ARAmakSS", s1, s2, c1, r, c2)
    return [s1, c1, r, c2, s2]


# ---- between a straight and an arc


def arc_between_straight_and_arc(s: Element, r: Element, radius: float, straight_first: bool = True) -> list[AnyElement]:
    """Arc between a straight and an arc (ali_RmakSR). Returns the three elements in travel order."""
    s, r, made = wrap(s), wrap(r), _arc(radius)
    call("ali_RmakSR", -1 if straight_first else 1, s, r, made)
    return [s, made, r] if straight_first else [r, made, s]


def arc_and_clothoid_between_straight_and_arc(
    s: Element, r: Element, radius: float, a: float, straight_first: bool = True, from_infinite: bool = True
) -> list[AnyElement]:
    """Arc and clothoid between a straight and an arc (ali_RAmakSR): straight, new arc, clothoid, arc, or reversed.

    With from_infinite the clothoid runs from infinite radius to the sharper arc, otherwise from radius to radius.
    """
    s, r, made, c = wrap(s), wrap(r), _arc(radius), _clothoid(a)
    call("ali_RAmakSR", -1 if straight_first else 1, 0 if from_infinite else -1, s, r, made, c)
    return [s, made, c, r] if straight_first else [r, c, made, s]


def reverse_curve_between_straight_and_arc(
    s: Element, r: Element, a1: float, radius: float, a2: float, a3: float, straight_first: bool = True
) -> list[AnyElement]:
    """Clothoid, arc, and an S of two clothoids between a straight and an arc (ali_ARAAmakSR). Returns six elements."""
    s, r, c1, made, c2, c3 = wrap(s), wrap(r), _clothoid(a1), _arc(radius), _clothoid(a2), _clothoid(a3)
    call("ali_ARAAmakSR", 1 if straight_first else -1, s, r, c1, made, c2, c3)
    chain = [s, c1, made, c2, c3, r]
    return chain if straight_first else chain[::-1]


# ---- between two arcs


def arc_between_arcs(r1: Element, r2: Element, radius: float, turn: float) -> list[AnyElement]:
    """Arc of given turn between two arcs (ali_RmakRR). Returns [arc, arc, arc]."""
    r1, r2, made = wrap(r1), wrap(r2), _arc(radius, turn)
    call("ali_RmakRR", r1, r2, made)
    return [r1, made, r2]


def straight_between_arcs(r1: Element, r2: Element) -> list[AnyElement]:
    """Common tangent of two arcs (ali_SmakRR). Returns [arc, straight, arc]."""
    r1, r2, s = wrap(r1), wrap(r2), _straight()
    call("ali_SmakRR", r1, r2, s)
    return [r1, s, r2]


def clothoid_and_arc_between_arcs(
    r1: Element, r2: Element, radius: float, a: float, clothoid_first: bool = True
) -> list[AnyElement]:
    """Clothoid and arc between two arcs of one sense (ali_ARmakRR): r1, clothoid, arc, r2, or r1, arc, clothoid, r2."""
    r1, r2, made, c = wrap(r1), wrap(r2), _arc(radius), _clothoid(a)
    call("ali_ARmakRR", -1 if clothoid_first else 1, -1, r1, r2, made, c)
    return [r1, c, made, r2] if clothoid_first else [r1, made, c, r2]


def eased_arc_between_arcs(
    r1: Element, r2: Element, a1: float, radius: float, a2: float, turn: float = 0, from_infinite1: bool = True,
    from_infinite2: bool = True
) -> list[AnyElement]:
    """Clothoid, arc, clothoid between two arcs (ali_ARAmakRR). Returns five elements.

    The turn is that of the new arc; it counts when both clothoids run from infinite radius.
    """
    r1, r2, c1, made, c2 = wrap(r1), wrap(r2), _clothoid(a1), _arc(radius, turn), _clothoid(a2)
    call("ali_ARAmakRR", 0 if from_infinite1 else -1, 0 if from_infinite2 else -1, r1, r2, c1, made, c2)
    return [r1, c1, made, c2, r2]


def straight_and_clothoid_between_arcs(r1: Element, r2: Element, a: float, r1_first: bool = True) -> list[AnyElement]:
    """Straight and clothoid between two arcs (ali_SAmakRR): r1, straight, clothoid, r2, or r2, clothoid, straight, r1."""
    r1, r2, s, c = wrap(r1), wrap(r2), _straight(), _clothoid(a)
    call("ali_SAmakRR", 1 if r1_first else -1, r1, r2, s, c)
    return [r1, s, c, r2] if r1_first else [r2, c, s, r1]


def eased_straight_between_arcs(r1: Element, r2: Element, a1: float, a2: float) -> list[AnyElement]:
    """Clothoid, straight, clothoid between two arcs (ali_ASAmakRR). Returns five elements."""
    r1, r2, c1, s, c2 = wrap(r1), wrap(r2), _clothoid(a1), _straight(), _clothoid(a2)
    call("ali_ASAmakRR", r1, r2, c1, s, c2)
    return [r1, c1, s, c2, r2]


def cross_line(element: Element, station: float, half_length: float, angle: float = math.pi / 2.0) -> Straight:
    """Straight across an element at a station, by default square to it, from right to left (ali_Smak)."""
    s = _straight()
    call("ali_Smak", element, station, angle, half_length, s)
    return s


# ---- compound curves


class Laid(NamedTuple):
    """What was built between fixed elements, and the gap that is left, metres."""

    elements: list[AnyElement]
    gap: float


def clothoid_between_arcs(r1: Element, r2: Element, a: float) -> Laid:
    """Egg-shaped clothoid between two arcs of equal turn (ali_makRAR). The arcs are left where they are."""
    c, gap, azimuth = _clothoid(a), ctypes.c_double(), ctypes.c_double()
    call("ali_makRAR", r1, c, r2, ctypes.byref(gap), ctypes.byref(azimuth))
    return Laid([c], gap.value)


def clothoids_between_arcs(r1: Element, r2: Element, a1: float, a2: float) -> Laid:
    """The S of two clothoids between two arcs of opposite turn (ali_makRAAR). The arcs are left where they are."""
    c1, c2, gap = _clothoid(a1), _clothoid(a2), ctypes.c_double()
    call("ali_makRAAR", r1, c1, c2, r2, ctypes.byref(gap))
    return Laid([c1, c2], gap.value)


def clothoid_between_straight_and_arc(s: Element, r: Element, a: float, straight_first: bool = True) -> Laid:
    """Clothoid between a straight and an arc (ali_makSAR), which are left where they are."""
    c, gap = _clothoid(a), ctypes.c_double()
    call("ali_makSAR", 1 if straight_first else -1, s, c, r, ctypes.byref(gap))
    return Laid([c], gap.value)


def arc_between_arcs_with_clothoids(
    r1: Element, r3: Element, a1: float, a2: float, radius: float, a3: float, a4: float
) -> list[AnyElement]:
    """Two S-shaped joints through a middle arc that turns against both (ali_mak3R4A). Returns seven elements."""
    r1, r3, middle, gap = wrap(r1), wrap(r3), _arc(radius), ctypes.c_double()
    c = [_clothoid(a) for a in (a1, a2, a3, a4)]
    call("ali_mak3R4A", ctypes.byref(gap), r1, c[0], c[1], middle, c[2], c[3], r3)
    return [r1, c[0], c[1], middle, c[2], c[3], r3]


def clothoid_and_arc_through_point(
    p: Sequence[float], r1: Element, a: float, radius: float, turn: float, length: float = 0.0, given_first: bool = True
) -> list[AnyElement]:
    """Clothoid from infinite radius and arc through a point (ali_makAOR_P). With length 0 the arc reaches the point."""
    r1, c, r2 = wrap(r1), _clothoid(a), _arc(radius, turn, length)
    call("ali_makAOR_P", p, 0 if given_first else -1, r1, c, r2)
    return [r1, c, r2] if given_first else [r2, c, r1]


# ---- curves at an intersection point


class CurveAtIp(NamedTuple):
    """A curve at an intersection point: its elements, the azimuths of the legs, the angle, the tangent lengths."""

    elements: list[AnyElement]
    azimuth_in: float
    azimuth_out: float
    angle: float
    tangent1: float
    tangent2: float


def _at_ip(
    function: str, previous: Sequence[float], ip: Sequence[float], following: Sequence[float], elements:
    list[AnyElement], sizes: Sequence[float], **given: float | None
) -> CurveAtIp:
    entry = IpCurve(x=ip[0], y=ip[1], **given)
    for i, size in enumerate(sizes):
        setattr(entry, f"size{i + 1}", size)
    call(function, previous, entry, following, *elements)
    return CurveAtIp(elements, entry.azimuth_in, entry.azimuth_out, entry.angle, entry.tangent1, entry.tangent2)


def arc_at_ip(previous: Sequence[float], ip: Sequence[float], following: Sequence[float], radius: float) -> CurveAtIp:
    """Arc at an intersection point (ali_IPsetR)."""
    return _at_ip("ali_IPsetR", previous, ip, following, [_arc()], (radius,))


def clothoids_at_ip(
    previous: Sequence[float], ip: Sequence[float], following: Sequence[float], a1: float, a2: float
) -> CurveAtIp:
    """Two clothoids at an intersection point (ali_IPsetAA)."""
    return _at_ip("ali_IPsetAA", previous, ip, following, [_clothoid(), _clothoid()], (a1, a2))


def eased_arc_at_ip(
    previous: Sequence[float], ip: Sequence[float], following: Sequence[float], a1: float, radius: float, a2: float
) -> CurveAtIp:
    """Clothoid, arc, clothoid at an intersection point (ali_IPsetARA)."""
    elements: list[AnyElement] = [_clothoid(), _arc(), _clothoid()]
    return _at_ip("ali_IPsetARA", previous, ip, following, elements, (a1, radius, a2))


def compound_curve_at_ip(
    previous: Sequence[float], ip: Sequence[float], following: Sequence[float], a1: float, radius1: float, a2: float,
    radius2: float, a3: float, tangent1: float | None = None, tangent2: float | None = None
) -> CurveAtIp:
    """Clothoid, arc, clothoid, arc, clothoid at an intersection point (ali_IPsetARARA). One tangent length is given."""
    if (tangent1 is None) == (tangent2 is None):
        raise ValueError("give either tangent1 or tangent2")
    elements: list[AnyElement] = [_clothoid(), _arc(), _clothoid(), _arc(), _clothoid()]
    given = {"tangent1": tangent1} if tangent2 is None else {"tangent2": tangent2, "kind": 8}
    sizes = (a1, radius1, a2, radius2, a3)
    return _at_ip("ali_IPsetARARA", previous, ip, following, elements, sizes, **given)


# ---- elements through a point. given_first: the given element comes first and the new ones follow it


def straight_from_arc_towards_point(
    p: Sequence[float], r: Element, length: float, given_first: bool = True
) -> list[AnyElement]:
    """Tangent of an arc on the line to a point, of a given length (ali_makrS_P)."""
    r, s = wrap(r), _straight(length)
    call("ali_makrS_P", p, 1 if given_first else 2, r, s)
    return [r, s] if given_first else [s, r]


def arc_from_arc_to_point(
    p: Sequence[float], r1: Element, radius: float, turn: float, given_first: bool = True
) -> list[AnyElement]:
    """Arc tangent to an arc, from the joint to a point (ali_makrR_P)."""
    r1, r2 = wrap(r1), _arc(radius, turn)
    call("ali_makrR_P", p, 1 if given_first else 2, r1, r2)
    return [r1, r2] if given_first else [r2, r1]


def reverse_arc_from_arc_to_point(
    p: Sequence[float], r: Element, radius: float, given_first: bool = True
) -> list[AnyElement]:
    """Arc that turns against a given one, from the joint to a point (ali_makrR_P_S)."""
    made, r = _arc(radius), wrap(r)
    call("ali_makrR_P_S", p, 1 if given_first else 2, made, r)
    return [r, made] if given_first else [made, r]


def straight_and_clothoid_from_point(
    p: Sequence[float], r: Element, a: float, length: float = 0.0, straight_first: bool = True
) -> list[AnyElement]:
    """Straight through a point and clothoid onto an arc (ali_makrAS_P).

    The length must lead to the clothoid; 0 is as long as needed.
    """
    r, c, s = wrap(r), _clothoid(a), _straight(length)
    call("ali_makrAS_P", p, 1 if straight_first else 2, r, c, s)
    return [s, c, r] if straight_first else [r, c, s]


def clothoid_and_arc_to_point(
    p: Sequence[float], r1: Element, a: float, radius: float, given_first: bool = True
) -> list[AnyElement]:
    """Egg-shaped clothoid and arc of the same turn that reaches a point (ali_makrAR_P)."""
    r1, c, r2 = wrap(r1), _clothoid(a), _arc(radius)
    gap, azimuth = ctypes.c_double(), ctypes.c_double()
    call("ali_makrAR_P", p, 1 if given_first else 2, r1, c, r2, ctypes.byref(gap), ctypes.byref(azimuth))
    return [r1, c, r2] if given_first else [r2, c, r1]


def clothoids_and_arc_to_point(
    p: Sequence[float], r1: Element, a1: float, a2: float, radius: float, given_first: bool = True
) -> list[AnyElement]:
    """The S of two clothoids, and an arc of the other turn that reaches a point (ali_makrAAR_P)."""
    r1, c1, c2, r2, gap = wrap(r1), _clothoid(a1), _clothoid(a2), _arc(radius), ctypes.c_double()
    call("ali_makrAAR_P", p, 1 if given_first else 2, r1, c1, c2, r2, ctypes.byref(gap))
    return [r1, c1, c2, r2] if given_first else [r2, c2, c1, r1]


def arc_from_straight_through_point(
    p: Sequence[float], s: Element, radius: float, turn: float, length: float = 0.0, given_first: bool = True
) -> list[AnyElement]:
    """Arc tangent to a straight, its circle through a point (ali_maksR_P). With length 0 it reaches the point."""
    s, r = wrap(s), _arc(radius, turn, length)
    call("ali_maksR_P", p, 1 if given_first else 2, s, r)
    return [s, r] if given_first else [r, s]


def eased_arc_from_straight_through_point(
    p: Sequence[float], s: Element, a: float, radius: float, turn: float, length: float = 0.0, given_first: bool = True
) -> list[AnyElement]:
    """Clothoid and arc tangent to a straight, the circle through a point (ali_maksAR_P)."""
    s, c, r = wrap(s), _clothoid(a), _arc(radius, turn, length)
    call("ali_maksAR_P", p, 1 if given_first else 2, s, c, r)
    return [s, c, r] if given_first else [r, c, s]


__all__ = [
    "CurveAtIp", "Laid", "arc_and_clothoid_between_straight_and_arc", "arc_at_ip", "arc_between_arcs",
    "arc_between_arcs_with_clothoids", "arc_between_straight_and_arc", "arc_between_straights", "arc_from_arc_to_point",
    "arc_from_straight_through_point", "clothoid_and_arc_between_arcs", "clothoid_and_arc_through_point",
    "clothoid_and_arc_to_point", "clothoid_between_arcs", "clothoid_between_straight_and_arc", "clothoids_and_arc_to_point",
    "clothoids_at_ip", "clothoids_between_arcs", "clothoids_between_straights", "compound_curve_at_ip", "cross_line",
    "eased_arc_at_ip", "eased_arc_between_arcs", "eased_arc_between_straights", "eased_arc_from_straight_through_point",
    "eased_straight_between_arcs", "reverse_arc_from_arc_to_point", "reverse_curve_between_straight_and_arc",
    "straight_and_clothoid_between_arcs", "straight_and_clothoid_from_point", "straight_between_arcs",
    "straight_from_arc_towards_point",
]  # fmt: skip
