"""The exact curves of the C interface fenmark/curve.h: its structures, its functions, and arrays over them.

Arrays cross the interface in one call. With numpy they are numpy arrays; without it, lists.
"""

import ctypes
import math
from ctypes import POINTER, byref, c_double, c_int, c_size_t, c_void_p

try:
    import numpy
except ImportError:
    numpy = None

from .library import AlignmentError, library
from .records import Element

OK, COARSER, INCOMPLETE, NOT_FINITE, OUTSIDE = 0, 1, 2, -2, -103


class Point(ctypes.Structure):
    """FmkPoint: x north, y east, metres."""

    _fields_ = [("x", c_double), ("y", c_double)]


class Curve(ctypes.Structure):
    """FmkCurve: start point and azimuth, length, curvature at both ends (1/m, positive to the right)."""

    _fields_ = [(n, c_double) for n in "x y azimuth length start_curvature end_curvature".split()]


class StationEquation(ctypes.Structure):
    """FmkStationEquation: at a distance from the start the station goes on from `ahead`."""

    _fields_ = [("distance", c_double), ("ahead", c_double)]


class Ip(ctypes.Structure):
    """FmkIp: an intersection point with the radius and the parameters of the clothoids on either side."""

    _fields_ = [(n, c_double) for n in "x y radius enter_a leave_a".split()]


class Place(ctypes.Structure):
    """FmkChainPlace."""

    _fields_ = [("x", c_double), ("y", c_double), ("azimuth", c_double), ("curvature", c_double), ("curve", c_size_t)]


class ChainFoot(ctypes.Structure):
    """FmkChainFoot."""

    _fields_ = [
        ("distance", c_double), ("station", c_double), ("offset", c_double), ("x", c_double), ("y", c_double),
        ("curve", c_size_t), ("perpendicular", c_int), ("at_joint", c_int),
    ]  # fmt: skip


class ChainJoint(ctypes.Structure):
    """FmkChainJoint."""

    _fields_ = [(n, c_double) for n in "distance gap turn curvature_step".split()] + [("curve", c_size_t)]


class ChainCrossing(ctypes.Structure):
    """FmkChainCrossing."""

    _fields_ = [(n, c_double) for n in "distance other_distance x y angle".split()] + [("tangent", c_int)]


class ChainStake(ctypes.Structure):
    """FmkStake."""

    _fields_ = [(n, c_double) for n in "distance station offset x y azimuth".split()] + [("kind", c_int)]


class StakeOptions(ctypes.Structure):
    """FmkStakeOptions."""

    _fields_ = [
        ("every", c_double), ("stations", POINTER(c_double)), ("station_count", c_size_t),
        ("offsets", POINTER(c_double)), ("offset_count", c_size_t), ("main_points", c_int),
    ]  # fmt: skip


class VerticalPoint(ctypes.Structure):
    """FmkVerticalPoint."""

    _fields_ = [(n, c_double) for n in "station height length radius".split()] + [("form", c_int)]


class ProfileExtreme(ctypes.Structure):
    """FmkProfileExtreme."""

    _fields_ = [("station", c_double), ("height", c_double), ("level_for", c_double), ("high", c_int)]


class CrossfallStation(ctypes.Structure):
    """FmkCrossfallStation."""

    _fields_ = [(n, c_double) for n in "station left right".split()]


class SpacePoint(ctypes.Structure):
    """FmkSpacePoint."""

    _fields_ = [("x", c_double), ("y", c_double), ("z", c_double)]


_handle, _reals, _count = c_void_p, POINTER(c_double), POINTER(c_size_t)
_made = POINTER(c_void_p)
_equations = (c_double, POINTER(StationEquation), c_size_t, _made)
_ARGUMENTS = {
    "chainFromCurves": (POINTER(Curve), c_size_t, *_equations),
    "chainFromRecords": (POINTER(Element), c_size_t, *_equations),
    "chainFromIps": (POINTER(Ip), c_size_t, *_equations),
    "chainReversed": (_handle, c_double, _made),
    "chainSize": (_handle, _reals, _count),
    "chainCurve": (_handle, c_size_t, POINTER(Curve), _reals),
    "chainStation": (_handle, c_double, _reals, _count),
    "chainDistances": (_handle, c_double, _reals, c_size_t, _count),
    "chainPlaces": (_handle, _reals, c_size_t, _reals, c_size_t, POINTER(Place)),
    "chainLocateAll": (_handle, POINTER(Point), c_size_t, POINTER(ChainFoot)),
    "chainFeet": (_handle, POINTER(Point), POINTER(ChainFoot), c_size_t, _count),
    "chainJoints": (_handle, POINTER(ChainJoint), c_size_t, _count),
    "chainLine": (_handle, c_double, POINTER(Point), c_size_t, _count, _reals),
    "chainCrossings": (_handle, _handle, POINTER(ChainCrossing), c_size_t, _count),
    "chainStakes": (_handle, POINTER(StakeOptions), POINTER(ChainStake), c_size_t, _count),
    "profileMake": (POINTER(VerticalPoint), c_size_t, _made),
    "profileAt": (_handle, c_double, _reals, _reals, _reals),
    "profileHeights": (_handle, _reals, c_size_t, _reals),
    "profileExtremes": (_handle, POINTER(ProfileExtreme), c_size_t, _count),
    "crossfallMake": (POINTER(CrossfallStation), c_size_t, _made),
    "crossfallAt": (_handle, c_double, _reals, _reals),
    "chainSpacePoints": (_handle, _handle, _handle, _reals, c_size_t, _reals, c_size_t, POINTER(SpacePoint)),
}
for _name, _types in _ARGUMENTS.items():
    _function = getattr(library, f"fmk_{_name}")
    _function.restype, _function.argtypes = c_int, _types
for _name in ("chainFree", "profileFree", "crossfallFree"):
    _function = getattr(library, f"fmk_{_name}")
    _function.restype, _function.argtypes = None, (_handle,)
library.fmk_statusText.restype, library.fmk_statusText.argtypes = ctypes.c_char_p, (c_int,)


def status_text(status):
    """What a status of the exact curves means, in English."""
    return library.fmk_statusText(status).decode()


def call(name, *arguments, accept=(OK,)):
    """Calls a function by its name without fmk_; raises AlignmentError for a status that is not accepted."""
    status = getattr(library, f"fmk_{name}")(*arguments)
    if status not in accept:
        raise AlignmentError(f"fmk_{name}", status, status_text(status))
    return status


class Handle:
    """What the library made and has to free."""

    def __init__(self, value, free):
        self.value = value
        self._free = getattr(library, f"fmk_{free}")

    def __del__(self):
        self._free(self.value)


def make(name, *arguments, free):
    """Calls a function whose last argument receives a handle."""
    made = c_void_p()
    call(name, *arguments, byref(made))
    return Handle(made, free)


def is_many(values):
    """Whether the argument is an array or a sequence, and not one number."""
    return hasattr(values, "__len__") or hasattr(values, "__array__") and getattr(values, "ndim", 0) > 0


def reals(values):
    """A C array of reals (what keeps it alive, pointer, count) of a sequence or an array."""
    if numpy is not None:
        array = numpy.ascontiguousarray(values, dtype=numpy.float64)
        return array, array.ctypes.data_as(POINTER(c_double)), array.size
    values = [float(v) for v in values]
    array = (c_double * len(values))(*values)
    return array, ctypes.cast(array, POINTER(c_double)), len(values)


def structures(kind, count):
    """Room for `count` structures: (columns, pointer). `columns(name)` reads a field as an array or a list."""
    if numpy is not None:
        array = numpy.zeros(count, dtype=numpy.dtype(kind))
        pointer = array.ctypes.data_as(POINTER(kind))
        return lambda name: array[name].copy(), pointer
    array = (kind * max(count, 1))()
    return lambda name: [getattr(array[i], name) for i in range(count)], ctypes.cast(array, POINTER(kind))


def points(values):
    """A C array of points (what keeps it alive, pointer, count) of an n by 2 array or a sequence of pairs."""
    if numpy is not None:
        array = numpy.ascontiguousarray(values, dtype=numpy.float64)
        if array.ndim != 2 or array.shape[1] != 2:
            raise ValueError("points are an array of n by 2")
        return array, array.ctypes.data_as(POINTER(Point)), len(array)
    values = list(values)
    array = (Point * max(len(values), 1))(*((float(x), float(y)) for x, y in values))
    return array, ctypes.cast(array, POINTER(Point)), len(values)


def zeros(values):
    """The indexes of the zeros."""
    if numpy is not None:
        return numpy.flatnonzero(values == 0).tolist()
    return [i for i, v in enumerate(values) if v == 0]


def listed(name, kind, *arguments, accept=(OK,)):
    """The structures of a function that fills an array of the caller's and gives their count."""
    count = c_size_t()
    call(name, *arguments, None, 0, byref(count), accept=(*accept, INCOMPLETE))
    array = (kind * max(count.value, 1))()
    call(name, *arguments, array, count.value, byref(count), accept=accept)
    return list(array[: count.value])


def folded(angle):
    """An angle brought to 0 <= angle < 2 pi."""
    return angle % (2.0 * math.pi)
