"""The longitudinal profile of a chain: grades, vertical curves, heights, points in space."""

from ctypes import byref, c_double
from typing import NamedTuple

from . import curves

PARABOLA, CIRCLE = 1, 2


class Height(NamedTuple):
    """Height in metres, grade in metres a metre, and its change for each metre (positive in a sag)."""

    height: float
    grade: float
    curvature: float


class Extreme(NamedTuple):
    """A low or high point of a profile: station, height, and whether it is a high one."""

    station: float
    height: float
    high: bool


class SpacePoints(NamedTuple):
    """Points in space: x north, y east, z up, metres; arrays with numpy, lists without."""

    x: object
    y: object
    z: object


class Profile:
    """A profile of points where grades meet: (station, height), or (station, height, length) with a vertical curve.

    Stations are counted from the chain's start station in metres along it, without station equations. A vertical curve
    is a parabola of that length along the station axis, or an arc where `circular`. Raises AlignmentError where stations
    do not rise or curves overlap.
    """

    def __init__(self, points, circular=False, chain=None):
        form = CIRCLE if circular else PARABOLA
        given = [curves.VerticalPoint(p[0], p[1], p[2] if len(p) > 2 else 0.0, 0.0, form if len(p) > 2 and p[2] else 0)
                 for p in points]  # fmt: skip
        self.points = tuple(tuple(p) for p in points)
        self.chain = chain
        array = (curves.VerticalPoint * max(len(given), 1))(*given)
        self._handle = curves.make("profileMake", array, len(given), free="profileFree")

    def at(self, station):
        """Height, grade and change of the grade at a station. Raises AlignmentError beyond the ends."""
        values = [c_double() for _ in range(3)]
        curves.call("profileAt", self._handle.value, station, *(byref(v) for v in values))
        return Height(*(v.value for v in values))

    def heights(self, stations):
        """Heights of many stations, metres; nan beyond the ends. An array with numpy, a list without."""
        keep, pointer, count = curves.reals(stations)
        room, out, _ = curves.reals([0.0] * count)
        curves.call("profileHeights", self._handle.value, pointer, count, out, accept=(curves.OK, curves.OUTSIDE))
        del keep
        return room if curves.numpy is not None else list(room)

    def extremes(self):
        """The low and high points between the ends, by station."""
        found = curves.listed("profileExtremes", curves.ProfileExtreme, self._handle.value)
        return [Extreme(e.station, e.height, bool(e.high)) for e in found]

    def points_at(self, stations, offset=0.0, crossfall=None):
        """Points in space of the profile's chain at stations and an offset (metres, right positive); nan off it.

        With a Crossfall the surface rises or falls from the axis to the offset.
        """
        if self.chain is None:
            raise ValueError("the profile belongs to no chain: make it by Chain.profile")
        shifted = [s - self.chain.start_station for s in stations]
        keep, pointer, count = curves.reals(shifted)
        column, out = curves.structures(curves.SpacePoint, count)
        slopes = None if crossfall is None else crossfall._handle.value
        curves.call("chainSpacePoints", self.chain._handle.value, self._handle.value, slopes, pointer, count,
                    byref(c_double(offset)), 1, out, accept=(curves.OK, curves.OUTSIDE))  # fmt: skip
        del keep
        return SpacePoints(column("x"), column("y"), column("z"))
