"""A chain of exact curves: stations along the whole of it, points by station and offset, and back.

Everything is in the survey plane: x north, y east, metres; azimuths in radians, clockwise from north; curvatures in 1/m,
positive where the chain turns right; offsets in metres, positive to the right of travel. A chain is evaluated exactly,
also at the flat end of a clothoid, and never changes.

Functions that take one station or point answer with one named tuple. Given an array or a sequence they answer for all of
them in one call, with a named tuple of arrays (lists without numpy), as `pandas.DataFrame(answer._asdict())` takes them.
"""

from __future__ import annotations

import ctypes
import math
import os
from collections.abc import Callable, Iterable, Iterator, Sequence
from ctypes import byref, c_double, c_size_t
from typing import TYPE_CHECKING, Any, NamedTuple, overload

from . import curves
from .elements import Arc, Clothoid, Position, Straight, wrap
from .library import AlignmentError
from .profile import Profile
from .records import Element

if TYPE_CHECKING:
    from typing_extensions import Self

JOINT_TOLERANCE = 1e-4  # metres between two elements that meet; both may have rounded ends
TANGENT_TOLERANCE = 1e-5  # radians between their tangents
END_TOLERANCE = 1e-5  # metres that a station may lie beyond an end of the chain, which then counts
ALONG_TOLERANCE = 1e-4  # metres along the tangent at which a point still counts as square to an end of the chain
LINE_TOLERANCE = 1e-3  # metres between a drawn line and the chain
_ROUNDED_TURN = 1e-3  # radians: a smaller break at a joint comes from rounded elements, and the joint has no outside
_MOST_LINE_POINTS = 10_000  # for each curve
_STAKE_KINDS = ("interval", "given", "BP", "EP", "BC", "EC", "KA", "KE", "joint")


class Location(NamedTuple):
    """Where a point stands to a chain: station, offset (right of travel is positive), index of the element."""

    station: float
    offset: float
    index: int  # type: ignore[assignment]  # the tuple's own method of that name


class Locations(NamedTuple):
    """Where many points stand to a chain, nearest places; `perpendicular` is false beyond an end and outside a kink."""

    station: Any
    offset: Any
    index: Any
    perpendicular: Any


class Joint(NamedTuple):
    """A joint of two elements: its station, the gap in metres, and the break of the tangent in radians."""

    station: float
    gap: float
    turn: float


class Crossing(NamedTuple):
    """Where two chains meet: point, station on each, angle from the first to the other (radians, right positive)."""

    x: float
    y: float
    station: float
    other_station: float
    angle: float
    tangent: bool


class Stake(NamedTuple):
    """A stake: station, offset, point, azimuth of travel, and what it stands for (interval, given, BP, EP, BC, EC, KA,
    KE or joint)."""

    station: float
    offset: float
    x: float
    y: float
    azimuth: float
    kind: str


class CurvePiece(NamedTuple):
    """One curve of a chain: start point and azimuth, length, and the curvature at both ends."""

    x: float
    y: float
    azimuth: float
    length: float
    start_curvature: float
    end_curvature: float


class Chain:
    """Straights, arcs and clothoids in the order of travel; see the module for planes and units.

    `equations` are station equations (distance from the start in metres, station ahead), which rise. The elements are
    copied, so the chain does not change with them.
    """

    def __init__(
        self, elements: Iterable[Element], start_station: float = 0.0, equations: Iterable[tuple[float, float]] = ()
    ) -> None:
        self.elements: tuple[Any, ...] = tuple(wrap(e) for e in elements)
        if not self.elements:
            raise ValueError("a chain needs an element")
        records = (Element * len(self.elements))()
        for i, element in enumerate(self.elements):
            ctypes.memmove(byref(records, i * ctypes.sizeof(Element)), byref(element), ctypes.sizeof(Element))
        self._take("chainFromRecords", records, len(records), start_station, equations)

    def _take(
        self, maker: str, array: Any, count: int, start_station: float, equations: Iterable[tuple[float, float]]
    ) -> None:
        equations = tuple((float(d), float(a)) for d, a in equations)
        given = (curves.StationEquation * max(len(equations), 1))(*(curves.StationEquation(*e) for e in equations))
        self._set(curves.make(maker, array, count, start_station, given, len(equations), free="chainFree"),
                  start_station, equations)  # fmt: skip

    def _set(self, handle: curves.Handle, start_station: float, equations: Iterable[tuple[float, float]]) -> None:
        self._handle = handle
        self.start_station = start_station
        self.equations = equations
        length, count = c_double(), c_size_t()
        curves.call("chainSize", handle.value, byref(length), byref(count))
        self.length = length.value
        made: list[CurvePiece] = []
        distances: list[float] = []
        for i in range(count.value):
            curve, distance = curves.Curve(), c_double()
            curves.call("chainCurve", handle.value, i, byref(curve), byref(distance))
            made.append(CurvePiece(*(getattr(curve, name) for name, _ in curve._fields_)))
            distances.append(distance.value)
        self.curves = tuple(made)
        self._starts = (*distances, self.length)
        joints = curves.listed("chainJoints", curves.ChainJoint, handle.value)
        self._tangent_joints = tuple(j.distance for j in joints if abs(j.turn) < _ROUNDED_TURN)

    @classmethod
    def _from(
        cls, maker: str, array: Any, count: int, start_station: float, equations: Iterable[tuple[float, float]] = ()
    ) -> Self:
        chain = cls.__new__(cls)
        chain.elements = ()
        chain._take(maker, array, count, start_station, equations)
        chain.elements = chain.curves
        return chain

    @classmethod
    def lay(
        cls, start: Sequence[float], azimuth: float, pieces: Iterable[Sequence[Any]], start_station: float = 0.0
    ) -> Self:
        """Lays elements one after the other from a start point and an azimuth.

        A piece is ("S", length), ("R", radius, turn, length) or ("A", parameter, turn, start radius, end radius).
        """
        elements: list[Straight | Arc | Clothoid] = []
        for kind, *sizes in pieces:
            if kind == "S":
                elements.append(Straight.from_start(start, azimuth, sizes[0]))
            elif kind == "R":
                radius, turn, length = sizes
                elements.append(Arc.from_start(start, azimuth, radius, length, turn))
            elif kind == "A":
                elements.append(Clothoid.from_start(start, azimuth, *sizes))
            else:
                raise ValueError(f"a piece of kind {kind!r}: give S, R or A")
            start, azimuth = elements[-1].end, elements[-1].eang
        return cls(elements, start_station)

    @classmethod
    def from_elements(
        cls, elements: Iterable[Element], start_station: float = 0.0, equations: Iterable[tuple[float, float]] = ()
    ) -> Self:
        """The same as Chain(...): straights, arcs and clothoids, or records of the C interface."""
        return cls(elements, start_station, equations)

    @classmethod
    def from_curves(
        cls, pieces: Iterable[Sequence[Any]], start_station: float = 0.0, equations: Iterable[tuple[float, float]] = ()
    ) -> Self:
        """From exact curves: (x, y, azimuth, length, start curvature, end curvature) each, as CurvePiece has them."""
        pieces = [tuple(p) for p in pieces]
        array = (curves.Curve * max(len(pieces), 1))(*(curves.Curve(*p) for p in pieces))
        return cls._from("chainFromCurves", array, len(pieces), start_station, equations)

    @classmethod
    def from_ips(cls, points: Iterable[Sequence[float]], start_station: float = 0.0) -> Self:
        """From the beginning, the intersection points and the end.

        A point is (x, y), and an intersection point (x, y, radius) or (x, y, radius, A before, A behind), metres; an A of
        0 leaves that clothoid out. Raises AlignmentError where a curve does not fit.
        """
        given = [(*p, *(0.0,) * (5 - len(p))) for p in points]
        array = (curves.Ip * max(len(given), 1))(*(curves.Ip(*p) for p in given))
        return cls._from("chainFromIps", array, len(given), start_station)

    @classmethod
    def from_geopackage(cls, path: str | os.PathLike[str], name: str) -> Self:
        """The alignment of that name (or "#12" by its number) in a drawing that fenmark saved."""
        from .files import geopackage_curves

        pieces, start_station = geopackage_curves(path, name)
        return cls.from_curves(pieces, start_station)

    @classmethod
    def from_landxml(cls, path: str | os.PathLike[str], name: str | None = None) -> Self:
        """The alignment of that name in a LandXML file, or its only one. Station equations are taken over."""
        from .files import landxml_curves

        pieces, start_station, equations = landxml_curves(path, name)
        return cls.from_curves(pieces, start_station, equations)

    def __len__(self) -> int:
        return len(self.elements)

    def __iter__(self) -> Iterator[Any]:
        return iter(self.elements)

    def __getitem__(self, index: Any) -> Any:
        return self.elements[index]

    @property
    def end_station(self) -> float:
        """Station of the chain's end."""
        return self._station(self.length)

    @property
    def joint_stations(self) -> tuple[float, ...]:
        """Stations of the start, of every joint, and of the end."""
        return tuple(self._station(d) for d in self._starts)

    def _station(self, distance: float) -> float:
        if not self.equations:
            return self.start_station + distance
        station = c_double()
        curves.call("chainStation", self._handle.value, distance, byref(station), None)
        return station.value

    def _distance(self, station: float) -> float:
        """The first distance that has a station; nan where none has."""
        found, count = c_double(), c_size_t()
        accept = (curves.OK, curves.INCOMPLETE, curves.OUTSIDE, curves.NOT_FINITE)
        status = curves.call("chainDistances", self._handle.value, station, byref(found), 1, byref(count), accept=accept)
        return math.nan if status < 0 else found.value

    def _distances(self, stations: Any) -> Any:
        if not self.equations:
            if curves.numpy is not None:
                return curves.numpy.asarray(stations, dtype=float) - self.start_station
            return [s - self.start_station for s in stations]
        return [self._distance(s) for s in stations]

    def _places(self, stations: Any, offset: Any) -> Callable[[str], Any]:
        keep, pointer, count = curves.reals(self._distances(stations))
        given, offsets, offset_count = curves.reals(offset if curves.is_many(offset) else [offset])
        column, out = curves.structures(curves.Place, count)
        curves.call("chainPlaces", self._handle.value, pointer, count, offsets, offset_count, out,
                    accept=(curves.OK, curves.OUTSIDE))  # fmt: skip
        del keep, given
        return column

    def _one(self, station: float) -> float:
        """The distance of one station, and the end for one that lies a hair beyond it."""
        distance = self._distance(station)
        if math.isnan(distance):
            for end in (0.0, self.length):
                if abs(station - self._station(end)) <= END_TOLERANCE:
                    return end
            raise AlignmentError("Chain.point_at", -1, f"station {station} lies off the chain")
        return distance

    def _beside_joint(self, distance: float, p: Sequence[float], offset: float) -> tuple[float, float, int, int]:
        """Station, offset, curve and 1 of the foot for a point whose nearest place is a joint with a hair's gap.

        Rounded elements meet within some 1e-5 m, and the end of one may then be nearer than the foot on the other.
        """
        feet = curves.listed("chainFeet", curves.ChainFoot, self._handle.value, byref(curves.Point(p[0], p[1])))
        near = [f for f in feet if f.perpendicular and abs(f.offset) <= abs(offset) + END_TOLERANCE]
        if near:
            foot = min(near, key=lambda f: abs(float(f.offset)))
            return foot.station, foot.offset, foot.curve, 1
        place = curves.Place()
        curves.call("chainPlaces", self._handle.value, byref(c_double(distance)), 1, None, 0, byref(place))
        across = (p[1] - place.y) * math.cos(place.azimuth) - (p[0] - place.x) * math.sin(place.azimuth)
        return self._station(distance), math.copysign(offset, across), place.curve, 0

    def joints(self) -> list[Joint]:
        """Gap and break of the tangent at every joint."""
        found = curves.listed("chainJoints", curves.ChainJoint, self._handle.value)
        return [Joint(self._station(j.distance), j.gap, abs(j.turn)) for j in found]

    def is_tangent(self, gap: float = JOINT_TOLERANCE, turn: float = TANGENT_TOLERANCE) -> bool:
        """Whether every joint coincides and is tangent within the tolerances, metres and radians."""
        return all(j.gap <= gap and j.turn <= turn for j in self.joints())

    def point_at(self, station: Any, offset: Any = 0.0) -> Position:
        """Point `offset` metres square to the chain at a station, right of travel if positive, with the tangent.

        A station on a joint belongs to the element that begins there. One station off the chain raises AlignmentError.
        Of an array of stations, which takes one offset or as many, those off the chain give nan.
        """
        if curves.is_many(station):
            column = self._places(station, offset)
            azimuth = column("azimuth")
            folded = azimuth % (2.0 * math.pi) if curves.numpy is not None else [curves.folded(a) for a in azimuth]
            return Position(column("x"), column("y"), folded)
        place, distance = curves.Place(), c_double(self._one(station))
        curves.call("chainPlaces", self._handle.value, byref(distance), 1, byref(c_double(offset)), 1, byref(place))
        return Position(place.x, place.y, curves.folded(place.azimuth))

    @overload
    def curvature_at(self, station: float) -> float: ...

    @overload
    def curvature_at(self, station: Any) -> Any: ...

    def curvature_at(self, station: Any) -> Any:
        """Curvature at a station or many, 1/m, positive where the chain turns right."""
        if curves.is_many(station):
            return self._places(station, 0.0)("curvature")
        place, distance = curves.Place(), c_double(self._one(station))
        curves.call("chainPlaces", self._handle.value, byref(distance), 1, None, 0, byref(place))
        return place.curvature

    @overload
    def locate(self, p: tuple[float, float]) -> Location: ...

    @overload
    def locate(self, p: Any) -> Any: ...

    def locate(self, p: Any) -> Any:
        """Station and offset of a point, from the nearest foot on the chain.

        One point without a foot raises AlignmentError. Of many, an n by 2 array or a sequence of pairs, all have their
        nearest place, with nan for points that are not finite.
        """
        many = curves.is_many(p[0]) if len(p) else True
        keep, pointer, count = curves.points(p if many else [p])
        column, out = curves.structures(curves.ChainFoot, count)
        curves.call("chainLocateAll", self._handle.value, pointer, count, out,
                    accept=(curves.OK, curves.NOT_FINITE))  # fmt: skip
        del keep
        names = ("station", "offset", "curve", "perpendicular", "distance")
        stations, offsets, indexes, perpendicular, distances = (column(name) for name in names)
        for i in curves.zeros(perpendicular):
            if any(abs(distances[i] - d) < END_TOLERANCE for d in self._tangent_joints):
                foot = self._beside_joint(distances[i], p[i] if many else p, offsets[i])
                stations[i], offsets[i], indexes[i], perpendicular[i] = foot
        if many:
            flags = perpendicular != 0 if curves.numpy is not None else [v != 0 for v in perpendicular]
            return Locations(stations, offsets, indexes, flags)
        station, offset = float(stations[0]), float(offsets[0])
        if math.isnan(station):
            raise AlignmentError("Chain.locate", -1, "the point is not finite")
        if not perpendicular[0] and distances[0] in (0.0, self.length):
            x, y, azimuth = self.point_at(station)
            ahead = (p[0] - x) * math.cos(azimuth) + (p[1] - y) * math.sin(azimuth)
            if abs(ahead) > ALONG_TOLERANCE:
                raise AlignmentError("Chain.locate", -1, "the point has no foot on the chain")
        return Location(station, offset, int(indexes[0]))

    def stakes(self, pitch: float = 20.0, joints: bool = True) -> list[float]:
        """Stations of the stakes in order: every multiple of the pitch, both ends, and the joints if wanted."""
        if not pitch > 0.0:
            raise ValueError("the pitch must be above 0")
        if not self.curves:
            return []
        if self.equations:
            return [s.station for s in self.stake_points(pitch) if joints or s.kind in ("interval", "BP", "EP")]
        ends = self.joint_stations if joints else (self.start_station, self.end_station)
        first = math.ceil(self.start_station / pitch)
        last = math.floor(self.end_station / pitch)
        round_ones = [i * pitch for i in range(first, last + 1)]
        found = sorted([*ends, *round_ones])
        return [s for i, s in enumerate(found) if i == 0 or s - found[i - 1] > END_TOLERANCE]

    def stake_points(
        self, every: float = 20.0, offsets: Sequence[float] = (0.0,), stations: Sequence[float] = (), main_points: bool
        = True
    ) -> list[Stake]:
        """The stakes with their points, by station and offset: round stations, given ones, and the main points.

        `every` of 0 leaves the round stations out. Raises AlignmentError for a given station off the chain. A chain
        without curves, as a drawing may have, has no stakes.
        """
        if not self.curves and not len(stations):
            return []
        keep, given, count = curves.reals(stations)
        held, offset, offset_count = curves.reals(offsets)
        options = curves.StakeOptions(every, given, count, offset, offset_count, 1 if main_points else 0)
        found = curves.listed("chainStakes", curves.ChainStake, self._handle.value, byref(options))
        del keep, held
        return [Stake(s.station, s.offset, s.x, s.y, curves.folded(s.azimuth), _STAKE_KINDS[s.kind]) for s in found]

    def line(self, tolerance: float = LINE_TOLERANCE) -> Any:
        """Points of a line within a tolerance of the chain, metres: an n by 2 array, a list of pairs without numpy."""
        most = _MOST_LINE_POINTS * max(len(self.curves), 1)
        room = min(64 * max(len(self.curves), 1), most)
        while True:
            column, out = curves.structures(curves.Point, room)
            count = c_size_t()
            status = curves.call("chainLine", self._handle.value, tolerance, out, room, byref(count), None,
                                 accept=(curves.OK, curves.COARSER))  # fmt: skip
            if status == curves.OK or room == most:
                break
            room = min(8 * room, most)
        x, y = column("x")[: count.value], column("y")[: count.value]
        return curves.numpy.column_stack((x, y)) if curves.numpy is not None else list(zip(x, y))

    def crossings(self, other: Chain) -> list[Crossing]:
        """Where the chain and another meet, by station: a list of Crossing."""
        found = curves.listed("chainCrossings", curves.ChainCrossing, self._handle.value, other._handle.value)
        return [Crossing(c.x, c.y, self._station(c.distance), other._station(c.other_distance), c.angle, bool(c.tangent))
                for c in found]  # fmt: skip

    def reversed(self, start_station: float = 0.0) -> Self:
        """The chain travelled from its end, with stations from `start_station`."""
        chain = type(self).__new__(type(self))
        handle = curves.make("chainReversed", self._handle.value, start_station, free="chainFree")
        chain._set(handle, start_station, ())
        chain.elements = chain.curves
        return chain

    def profile(self, points: Iterable[Sequence[float]], circular: bool = False) -> Profile:
        """A longitudinal profile of points (station, height) or (station, height, curve length): see Profile."""
        return Profile(points, circular, self)

    def plot(
        self, axes: Any = None, tolerance: float = LINE_TOLERANCE, pitch: float | None = None, **style: Any
    ) -> Any:
        """Draws the chain with matplotlib, east to the right and north up, and gives the axes back.

        `pitch` adds stakes with their stations; further arguments are those of matplotlib's `plot`.
        """
        try:
            from matplotlib import pyplot
        except ImportError as error:
            raise ImportError("Chain.plot needs matplotlib (Debian: python3-matplotlib)") from error
        axes = pyplot.subplots()[1] if axes is None else axes
        line = [(y, x) for x, y in self.line(tolerance)]
        axes.plot([y for y, _ in line], [x for _, x in line], **style)
        if pitch and line:
            stations = self.stakes(pitch)
            at: Any = self.point_at(stations)
            axes.plot(at.y, at.x, linestyle="none", marker=".", color="black")
            for station, north, east in zip(stations, at.x, at.y):
                axes.annotate(f"{station:.0f}", (east, north), textcoords="offset points", xytext=(4, 4), fontsize=7)
        axes.set_aspect("equal", adjustable="datalim")
        axes.set_xlabel("y, east (m)")
        axes.set_ylabel("x, north (m)")
        return axes

    def __repr__(self) -> str:
        inside = ", ".join(type(e).__name__ for e in self.elements)
        return f"Chain({inside}; length {self.length:.5f})"
