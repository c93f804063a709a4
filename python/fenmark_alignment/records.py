"""The records that cross the C interface, field for field."""

import ctypes
from typing import TYPE_CHECKING


class Element(ctypes.Structure):
    """One element as the library keeps it: fifteen values, points x north and y east, angles azimuths in radians.

    `type` is 1 for a straight, 2 for an arc, 3 for a clothoid. `dir` is +1 for a left curve and -1 for a right one,
    `par` the radius of an arc or the parameter A of a clothoid, `r1` and `r2` the radii at a clothoid's ends with 0 for
    an infinite one, `len` the length, `sang` and `eang` the tangents at the ends. `Straight`, `Arc` and `Clothoid` build
    such records and add what is handy; they can be passed wherever an Element is asked for.
    """

    _fields_ = [("type", ctypes.c_int16)] + [
        (name, ctypes.c_double)
        for name in "sx sy ex ey dir par r1 r2 len sang eang k1 k2 k3".split()
    ]

    if TYPE_CHECKING:
        type: int
        sx: float
        sy: float
        ex: float
        ey: float
        dir: float
        par: float
        r1: float
        r2: float
        len: float
        sang: float
        eang: float
        k1: float
        k2: float
        k3: float


class MoniEntry(ctypes.Structure):
    """One entry of a monitoring list: a point, and the distance that Calc_moni writes."""

    _fields_ = [(name, ctypes.c_double) for name in "slot1 x y distance slot5".split()]


class MoniList(ctypes.Structure):
    """Head of a monitoring list with its first entry. `moni_list_of(n)` makes the type with n entries."""

    _fields_ = [("count", ctypes.c_int16), ("reserved", ctypes.c_int16 * 3), ("entries", MoniEntry * 1)]


class IpEntry(ctypes.Structure):
    """One entry of a list of intersection points, of which chk_tangent reads x and y."""

    _fields_ = [(name, ctypes.c_double) for name in "slot1 x y slot4 slot5 slot6 slot7".split()]


class IpCurve(ctypes.Structure):
    """An intersection point with the sizes of its curve, and what the ali_IPset functions write about it."""

    _fields_ = [
        ("slot1", ctypes.c_double),
        ("x", ctypes.c_double),
        ("y", ctypes.c_double),
        ("kind", ctypes.c_int16),
        ("reserved", ctypes.c_int16 * 3),
    ] + [
        (name, ctypes.c_double)
        for name in "size1 size2 size3 size4 size5 azimuth_in azimuth_out angle tangent1 tangent2".split()
    ]

    if TYPE_CHECKING:
        x: float
        y: float
        kind: int
        azimuth_in: float
        azimuth_out: float
        angle: float
        tangent1: float
        tangent2: float
