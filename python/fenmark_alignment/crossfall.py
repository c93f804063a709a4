"""The crossfall (superelevation) of a road: slopes of its two sides by station."""

from collections.abc import Iterable, Sequence
from ctypes import byref, c_double
from typing import NamedTuple

from . import curves


class Slopes(NamedTuple):
    """The rise for each metre away from the axis on either side, metres a metre; -0.02 both ways is a crowned road."""

    left: float
    right: float


class Crossfall:
    """A diagram of (station, left slope, right slope), straight between two stations; two at one station are a step.

    Stations are counted from the chain's start station in metres along it, without station equations. Raises
    AlignmentError where stations fall or a value is not finite.
    """

    def __init__(self, stations: Iterable[Sequence[float]]) -> None:
        self.stations = tuple((float(s), float(left), float(right)) for s, left, right in stations)
        array = (curves.CrossfallStation * max(len(self.stations), 1))(*self.stations)
        self._handle = curves.make("crossfallMake", array, len(self.stations), free="crossfallFree")

    def at(self, station: float) -> Slopes:
        """Both slopes at a station. Raises AlignmentError beyond the ends of the diagram."""
        left, right = c_double(), c_double()
        curves.call("crossfallAt", self._handle.value, station, byref(left), byref(right))
        return Slopes(left.value, right.value)
