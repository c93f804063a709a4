"""Straight, Arc and Clothoid: elements with constructors, walking and movement.

Everything is in the survey plane: x north, y east, metres; azimuths in radians, clockwise from north. A turn is LEFT
(+1) or RIGHT (-1) of travel. An infinite radius is `math.inf`.
"""

from __future__ import annotations

import ctypes
import math
from collections.abc import Sequence
from typing import TYPE_CHECKING, Any, NamedTuple, TypeVar

from .library import AlignmentError, call, raw, status
from .records import Element

if TYPE_CHECKING:
    from typing_extensions import Self

LEFT, RIGHT = 1, -1
STRAIGHT, ARC, CLOTHOID = 1, 2, 3


class Position(NamedTuple):
    """A point on or beside an element or a chain, with the azimuth of the tangent, radians."""

    x: float
    y: float
    azimuth: float


class Foot(NamedTuple):
    """Foot of a perpendicular: its station on the element, the point, and the distance, metres."""

    station: float
    x: float
    y: float
    distance: float


class Intersection(NamedTuple):
    """A point where two elements meet, with its station on each."""

    x: float
    y: float
    station1: float
    station2: float


def point(values: Sequence[float] = (0.0, 0.0)) -> Any:
    """A C array of two reals."""
    return (ctypes.c_double * 2)(*values)


class _Built(Element):
    """What straights, arcs and clothoids share."""

    @property
    def start(self) -> tuple[float, float]:
        """Start point (x, y)."""
        return (self.sx, self.sy)

    @property
    def end(self) -> tuple[float, float]:
        """End point (x, y)."""
        return (self.ex, self.ey)

    @property
    def length(self) -> float:
        """Length in metres."""
        return self.len

    @property
    def start_azimuth(self) -> float:
        """Tangent at the start, radians."""
        return self.sang

    @property
    def end_azimuth(self) -> float:
        """Tangent at the end, radians."""
        return self.eang

    def copy(self) -> Self:
        """An element of its own with the same values."""
        return _same(type(self), self)

    def point_at(self, station: float) -> Position:
        """Point and tangent at a station, metres from the start. Raises AlignmentError off the element."""
        if station < 0.0:
            raise AlignmentError("ali_onl", -1, "the station lies before the start")
        out, azimuth = point(), ctypes.c_double()
        call("ali_onl", self, station, out, ctypes.byref(azimuth))
        return Position(out[0], out[1], azimuth.value)

    def offset_at(self, station: float, offset: float) -> Position:
        """The point `offset` metres square to the element at a station: right of travel if positive."""
        x, y, azimuth = self.point_at(station)
        return Position(x - offset * math.sin(azimuth), y + offset * math.cos(azimuth), azimuth)

    def project(self, p: Sequence[float]) -> Foot:
        """Foot of the perpendicular from the point p. Raises AlignmentError when it lies off the element."""
        if self.type == ARC:
            # ali_projR answers for every point of an arc but its own ends.
            for at, s in ((self.start, 0.0), (self.end, self.len)):
                if status(raw.ali_CSamePoint(p, at)) == 0:
                    return Foot(s, at[0], at[1], math.dist(p, at))
        station, foot = ctypes.c_double(), point()
        call("ali_proj", self, p, ctypes.byref(station), foot)
        return Foot(station.value, foot[0], foot[1], math.dist(p, (foot[0], foot[1])))

    def intersect(self, other: Element) -> list[Intersection]:
        """The points where this element and another meet, at most two."""
        p1, p2 = point(), point()
        a, b, c, d = (ctypes.c_double() for _ in range(4))
        refs = [ctypes.byref(v) for v in (a, b, c, d)]
        found = status(raw.ali_intp(self, other, p1, refs[0], refs[1], p2, refs[2], refs[3]))
        if found < 0:
            return []
        if self.type == CLOTHOID and other.type == CLOTHOID:
            b, c = c, b  # two clothoids give their stations in another order
        points = [Intersection(p1[0], p1[1], a.value, b.value)]
        if found == 1:
            points.append(Intersection(p2[0], p2[1], c.value, d.value))
        return points

    def moved(self, distance: float, azimuth: float) -> Self:
        """A copy moved by a distance along an azimuth."""
        out = self.copy()
        call("ali_pmov", self, distance, azimuth, out)
        return out

    def turned(self, center: Sequence[float], angle: float) -> Self:
        """A copy turned about a point, clockwise on the map, radians."""
        out = self.copy()
        call("ali_tmov", self, center, angle, out)
        return out

    def reversed(self) -> Self:
        """A copy that is travelled the other way. It is built anew from the same sizes."""
        out = self.copy()
        raw.CDreverA(out, 1)
        if self.type == STRAIGHT:
            out.dir = 1.0
            raw.ali_makS(out)
        elif self.type == ARC:
            # Reversed are the ends, the tangents and the turn; centre and sweep are the same.
            out.r1 = out.r2 = 0.0
        return out

    def _repr(self, text: str) -> str:
        return f"{type(self).__name__}(({self.sx:.4f}, {self.sy:.4f}) to ({self.ex:.4f}, {self.ey:.4f}), {text})"


class Straight(_Built):
    """A straight from a start to an end point."""

    def __init__(self, start: Sequence[float], end: Sequence[float]) -> None:
        super().__init__(type=STRAIGHT, sx=start[0], sy=start[1], ex=end[0], ey=end[1])
        call("ali_makS", self)

    @classmethod
    def from_start(cls, start: Sequence[float], azimuth: float, length: float) -> Self:
        """From the start point, the azimuth and the length."""
        end = (start[0] + length * math.cos(azimuth), start[1] + length * math.sin(azimuth))
        return cls(start, end)

    @classmethod
    def from_end(cls, end: Sequence[float], azimuth: float, length: float) -> Self:
        """From the end point, the azimuth and the length."""
        start = (end[0] - length * math.cos(azimuth), end[1] - length * math.sin(azimuth))
        return cls(start, end)

    def parallel(self, distance: float) -> Self:
        """A copy `distance` metres to the left, to the right if negative."""
        out = self.copy()
        call("ali_paraS", self, distance, out)
        return out

    def __repr__(self) -> str:
        return self._repr(f"length {self.len:.5f}")


class Arc(_Built):
    """A circular arc of at most a half circle between two points; `from_start` and `from_end` lay longer ones."""

    def __init__(self, start: Sequence[float], end: Sequence[float], radius: float, turn: int) -> None:
        super().__init__(type=ARC, sx=start[0], sy=start[1], ex=end[0], ey=end[1], par=radius, dir=turn)
        call("ali_makR", self)

    @classmethod
    def from_start(cls, start: Sequence[float], azimuth: float, radius: float, length: float, turn: int) -> Self:
        """From the start point, the tangent there, the radius, the length along the arc, and the turn."""
        rec = _blank(cls, ARC, sx=start[0], sy=start[1], sang=azimuth, par=radius, len=length, dir=turn)
        call("ali_makangR", rec, 1)
        return rec

    @classmethod
    def from_end(cls, end: Sequence[float], azimuth: float, radius: float, length: float, turn: int) -> Self:
        """From the end point, the tangent there, the radius, the length along the arc, and the turn."""
        rec = _blank(cls, ARC, ex=end[0], ey=end[1], eang=azimuth, par=radius, len=length, dir=turn)
        call("ali_makangR", rec, 2)
        return rec

    @property
    def radius(self) -> float:
        """Radius in metres."""
        return self.par

    @property
    def turn(self) -> int:
        """LEFT or RIGHT."""
        return int(self.dir)

    @property
    def center(self) -> tuple[float, float]:
        """Centre (x, y)."""
        return (self.k1, self.k2)

    @property
    def sweep(self) -> float:
        """Central angle in radians."""
        return self.k3

    def __repr__(self) -> str:
        return self._repr(f"{'left' if self.dir > 0 else 'right'}, R {self.par:.5f}, length {self.len:.5f}")


class Clothoid(_Built):
    """A clothoid of the parameter A = sqrt(R L), from a start radius to an end radius.

    The flatter end is kept where it is given, and the two points give the chord's direction; the other end goes to
    where A and the radii put it. `end_moved` says whether it had to move by more than 1e-5 m.
    """

    end_moved = False

    def __init__(
        self, start: Sequence[float], end: Sequence[float], parameter: float, turn: int, start_radius: float = math.inf,
        end_radius: float = math.inf
    ) -> None:
        super().__init__(
            type=CLOTHOID, sx=start[0], sy=start[1], ex=end[0], ey=end[1], par=parameter, dir=turn,
            r1=_stored(start_radius), r2=_stored(end_radius),
        )  # fmt: skip
        self.end_moved = call("ali_makA", self, accept=(0, 2)) == 2

    @classmethod
    def from_start(
        cls, start: Sequence[float], azimuth: float, parameter: float, turn: int,
        start_radius: float = math.inf, end_radius: float = math.inf,
    ) -> Self:
        """From the start point, the tangent there, A, the turn and the two radii."""
        rec = _blank(cls, CLOTHOID, sx=start[0], sy=start[1], sang=azimuth, par=parameter, dir=turn,
                     r1=_stored(start_radius), r2=_stored(end_radius))  # fmt: skip
        call("ali_makangA", rec, 1)
        return rec

    @classmethod
    def from_end(
        cls, end: Sequence[float], azimuth: float, parameter: float, turn: int,
        start_radius: float = math.inf, end_radius: float = math.inf,
    ) -> Self:
        """From the end point, the tangent there, A, the turn and the two radii."""
        rec = _blank(cls, CLOTHOID, ex=end[0], ey=end[1], eang=azimuth, par=parameter, dir=turn,
                     r1=_stored(start_radius), r2=_stored(end_radius))  # fmt: skip
        call("ali_makangA", rec, 2)
        return rec

    @property
    def parameter(self) -> float:
        """The parameter A, metres."""
        return self.par

    @property
    def turn(self) -> int:
        """LEFT or RIGHT."""
        return int(self.dir)

    @property
    def start_radius(self) -> float:
        """Radius at the start, math.inf if infinite."""
        return self.r1 or math.inf

    @property
    def end_radius(self) -> float:
        """Radius at the end, math.inf if infinite."""
        return self.r2 or math.inf

    def __repr__(self) -> str:
        turn = "left" if self.dir > 0 else "right"
        return self._repr(
            f"{turn}, A {self.par:g}, R {self.start_radius:g} to {self.end_radius:g}, length {self.len:.5f}"
        )


_Kind = TypeVar("_Kind", bound=_Built)


def _stored(radius: float) -> float:
    """A radius as the record keeps it: 0 for an infinite one."""
    return 0.0 if math.isinf(radius) else radius


def _blank(cls: type[_Kind], kind: int, **fields: float) -> _Kind:
    """A record of a class without its constructor having run."""
    rec = cls.__new__(cls)
    rec.type = kind
    for name, value in fields.items():
        setattr(rec, name, value)
    return rec


def _same(cls: type[_Kind], record: Element) -> _Kind:
    """A copy of a record as an object of a class."""
    out = cls.__new__(cls)
    ctypes.memmove(ctypes.byref(out), ctypes.byref(record), ctypes.sizeof(Element))
    return out


def wrap(record: Element) -> Straight | Arc | Clothoid:
    """A copy of a record as Straight, Arc or Clothoid, by its type."""
    if record.type == STRAIGHT:
        return _same(Straight, record)
    if record.type == ARC:
        return _same(Arc, record)
    if record.type == CLOTHOID:
        return _same(Clothoid, record)
    raise ValueError(f"a record of type {record.type} is no element")
