"""A chain of elements: stations along the whole of it, points by station and offset, and back."""

import bisect
import math
from typing import NamedTuple

from .elements import Arc, Clothoid, Position, Straight, wrap
from .library import AlignmentError

JOINT_TOLERANCE = 1e-4  # metres between two elements that meet; both may have rounded ends
TANGENT_TOLERANCE = 1e-5  # radians between their tangents
END_TOLERANCE = 1e-5  # metres that a station may lie beyond an end of the chain, which then counts
ALONG_TOLERANCE = 1e-4  # metres along the tangent at which a point still counts as square to a joint


class Location(NamedTuple):
    """Where a point stands to a chain: station, offset (right of travel is positive), index of the element."""

    station: float
    offset: float
    index: int


class Joint(NamedTuple):
    """A joint of two elements: its station, the gap in metres, and the break of the tangent in radians."""

    station: float
    gap: float
    turn: float


def _folded(angle):
    return math.remainder(angle, 2.0 * math.pi)


def _along(p, foot, azimuth):
    """How far p lies ahead of a foot, along the tangent there."""
    return (p[0] - foot[0]) * math.cos(azimuth) + (p[1] - foot[1]) * math.sin(azimuth)


def _refined(element, station, p):
    """Station, foot and azimuth. The library finds the foot on a clothoid to 1 mm; some steps along it sharpen that."""
    station = min(max(station, 0.0), element.len)
    x, y, azimuth = element.point_at(station)
    for _ in range(8):
        ahead = _along(p, (x, y), azimuth)
        other = min(max(station + ahead, 0.0), element.len)
        x1, y1, azimuth1 = element.point_at(other)
        if abs(_along(p, (x1, y1), azimuth1)) >= abs(ahead):
            break
        station, x, y, azimuth = other, x1, y1, azimuth1
    return station, (x, y), azimuth


class Chain:
    """Elements in the order of travel. They are copied, so the chain does not change with them."""

    def __init__(self, elements, start_station=0.0):
        self.elements = tuple(wrap(e) for e in elements)
        if not self.elements:
            raise ValueError("a chain needs an element")
        self.start_station = start_station
        self._starts = [start_station]
        for element in self.elements:
            self._starts.append(self._starts[-1] + element.len)

    @classmethod
    def lay(cls, start, azimuth, pieces, start_station=0.0):
        """Lays elements one after the other from a start point and an azimuth.

        A piece is ("S", length), ("R", radius, turn, length) or ("A", parameter, turn, start radius, end radius).
        """
        elements = []
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

    def __len__(self):
        return len(self.elements)

    def __iter__(self):
        return iter(self.elements)

    def __getitem__(self, index):
        return self.elements[index]

    @property
    def length(self):
        """Length of all elements, metres."""
        return self._starts[-1] - self._starts[0]

    @property
    def end_station(self):
        """Station of the chain's end."""
        return self._starts[-1]

    @property
    def joint_stations(self):
        """Stations of the start, of every joint, and of the end."""
        return tuple(self._starts)

    def joints(self):
        """Gap and break of the tangent at every joint."""
        pairs = zip(self._starts[1:], self.elements, self.elements[1:])
        return [Joint(s, math.dist(a.end, b.start), abs(_folded(b.sang - a.eang))) for s, a, b in pairs]

    def is_tangent(self, gap=JOINT_TOLERANCE, turn=TANGENT_TOLERANCE):
        """Whether every joint coincides and is tangent within the tolerances."""
        return all(j.gap <= gap and j.turn <= turn for j in self.joints())

    def point_at(self, station, offset=0.0):
        """Point `offset` metres square to the chain at a station, right of travel if positive, with the tangent.

        A station on a joint belongs to the element that begins there. Raises AlignmentError off the chain.
        """
        if not self.start_station - END_TOLERANCE <= station <= self.end_station + END_TOLERANCE:
            raise AlignmentError("Chain.point_at", -1, f"station {station} lies off the chain")
        index = bisect.bisect_right(self._starts, station, hi=len(self.elements)) - 1
        index = max(index, 0)
        element = self.elements[index]
        x, y, azimuth = element.point_at(min(max(station - self._starts[index], 0.0), element.len))
        return Position(x - offset * math.sin(azimuth), y + offset * math.cos(azimuth), azimuth)

    def locate(self, p):
        """Station and offset of a point, from the nearest foot on the chain. Raises AlignmentError when there is none."""
        best = None  # (cost, station, index, foot, azimuth)
        for index, element in enumerate(self.elements):
            try:
                foot = element.project(p)
            except AlignmentError:
                continue
            s, at, azimuth = _refined(element, foot.station, p)
            # The search on a clothoid lets a foot pass that lies millimetres beyond its end. The neighbour, hardly
            # farther off, has the true one, so what a foot lacks to the perpendicular counts too.
            cost = math.dist(p, at) + abs(_along(p, at, azimuth))
            if best is None or cost < best[0]:
                best = (cost, self._starts[index] + s, index, at, azimuth)
        # A point square to a joint may just miss both elements, and an arc refuses its own ends.
        for index, element in enumerate(self.elements):
            for at, azimuth, s in ((element.start, element.sang, 0.0), (element.end, element.eang, element.len)):
                distance = math.dist(p, at)
                square = abs(_along(p, at, azimuth)) <= ALONG_TOLERANCE
                if square and (best is None or distance <= best[0] + ALONG_TOLERANCE):
                    best = (distance, self._starts[index] + s, index, at, azimuth)
        if best is None:
            raise AlignmentError("Chain.locate", -1, "the point has no foot on the chain")
        _, station, index, foot, azimuth = best
        offset = (p[1] - foot[1]) * math.cos(azimuth) - (p[0] - foot[0]) * math.sin(azimuth)
        return Location(station, offset, index)

    def stakes(self, pitch=20.0, joints=True):
        """Stations of the stakes in order: every multiple of the pitch, both ends, and the joints if wanted."""
        if not pitch > 0.0:
            raise ValueError("the pitch must be above 0")
        ends = self._starts if joints else (self._starts[0], self._starts[-1])
        first = math.ceil(self.start_station / pitch)
        last = math.floor(self.end_station / pitch)
        round_ones = [i * pitch for i in range(first, last + 1)]
        found = sorted([*ends, *round_ones])
        return [s for i, s in enumerate(found) if i == 0 or s - found[i - 1] > END_TOLERANCE]

    def __repr__(self):
        inside = ", ".join(type(e).__name__ for e in self.elements)
        return f"Chain({inside}; length {self.length:.5f})"
