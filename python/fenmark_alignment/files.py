"""Alignments out of files: drawings that fenmark saved (GeoPackage) and LandXML."""

from __future__ import annotations

import math
import os
import pathlib
import sqlite3
from collections.abc import Sequence
from typing import Any
from xml.etree import ElementTree

# x north, y east, azimuth, length, curvature at start and end: metres, radians, 1/m (right is positive).
CurveValues = tuple[float, float, float, float, float, float]


def _curvature(radius: float | None, clockwise: bool) -> float:
    """Of a radius that is None, 0 or infinite where straight; positive to the right."""
    if radius is None or radius == 0.0 or math.isinf(radius):
        return 0.0
    return (1.0 if clockwise else -1.0) / abs(radius)


def _chosen(found: Sequence[tuple[Any, ...]], name: str | None, what: str) -> tuple[Any, ...]:
    """The one of (identifier, name, ...) that the name, or "#" and the identifier, belongs to."""
    if name is not None and name.startswith("#") and name[1:].isdigit():
        matching = [row for row in found if row[0] == int(name[1:])]
    else:
        matching = [row for row in found if name is None or (row[1] or "").strip() == name.strip()]
    if len(matching) == 1:
        return matching[0]
    listing = ", ".join(f"#{row[0]} {(row[1] or '').strip()}" for row in (matching or found))
    if matching:
        raise ValueError(f"more than one {what} matches, name one by its number: {listing}")
    raise KeyError(f"no {what} named {name}; there are: {listing or 'none'}")


def geopackage_curves(path: str | os.PathLike[str], name: str | None) -> tuple[list[CurveValues], float]:
    """Curves and start station of an alignment in a drawing. The drawing has x east and y north."""
    with open(path, "rb"):  # a missing file is an error of its own, and no new database
        pass
    connection = sqlite3.connect(pathlib.Path(path).absolute().as_uri() + "?mode=ro", uri=True)
    try:
        found = connection.execute("SELECT fid, name, start_station FROM alignments ORDER BY fid").fetchall()
        fid, _, start_station = _chosen(found, name, "alignment")
        rows = connection.execute(
            "SELECT start_x, start_y, direction, length, start_radius, end_radius, clockwise, type"
            " FROM alignment_elements WHERE alignment_id = ? ORDER BY place",
            (fid,),
        ).fetchall()
    except sqlite3.DatabaseError as error:
        raise ValueError(f"{path} is no drawing of fenmark: {error}") from error
    finally:
        connection.close()
    pieces = []
    for x, y, direction, length, start_radius, end_radius, clockwise, kind in rows:
        if None in (x, y, direction, length):
            raise ValueError(f"{path}: an element of the alignment has no start, direction or length")
        straight = kind == "S"
        start = 0.0 if straight else _curvature(start_radius, clockwise)
        end = 0.0 if straight else _curvature(end_radius, clockwise)
        pieces.append((y, x, math.pi / 2.0 - direction, length, start, end))
    return pieces, start_station or 0.0


def _local(element: ElementTree.Element) -> str:
    return element.tag.rpartition("}")[2]


def _child(element: ElementTree.Element, name: str) -> ElementTree.Element | None:
    return next((c for c in element if _local(c) == name), None)


def _point(element: ElementTree.Element, name: str) -> tuple[float, float]:
    text = _child(element, name)
    if text is None or not text.text:
        raise ValueError(f"LandXML: an element without {name}")
    north, east, *_ = (float(v) for v in text.text.split())
    return north, east


def _azimuth(a: Sequence[float], b: Sequence[float]) -> float:
    return math.atan2(b[1] - a[1], b[0] - a[0])


def _radius(text: str | None) -> float:
    return math.inf if text is None or text.upper() == "INF" else float(text)


def _landxml_curve(element: ElementTree.Element) -> CurveValues:
    kind = _local(element)
    start, end = _point(element, "Start"), _point(element, "End")
    if kind == "Line":
        return (*start, _azimuth(start, end), math.dist(start, end), 0.0, 0.0)
    clockwise = element.get("rot") == "cw"
    side = 1.0 if clockwise else -1.0
    if kind == "Curve":
        centre = _point(element, "Center")
        radius = float(element.get("radius") or math.dist(centre, start))
        sweep = side * (_azimuth(centre, end) - _azimuth(centre, start)) % (2.0 * math.pi)
        azimuth = _azimuth(centre, start) + side * math.pi / 2.0
        return (*start, azimuth, radius * sweep, side / radius, side / radius)
    if kind == "Spiral":
        if element.get("spiType", "clothoid") != "clothoid":
            raise ValueError(f"LandXML: a spiral of the type {element.get('spiType')}, of which only clothoids are known")
        curvature1, curvature2 = (_curvature(_radius(element.get(n)), clockwise) for n in ("radiusStart", "radiusEnd"))
        length = element.get("length")
        if length is None:
            raise ValueError("LandXML: a spiral without length")
        return (*start, _azimuth(start, _point(element, "PI")), float(length), curvature1, curvature2)
    raise ValueError(f"LandXML: an element {kind} of an alignment, which is not known")


def landxml_curves(
    path: str | os.PathLike[str], name: str | None
) -> tuple[list[CurveValues], float, list[tuple[float, float]]]:
    """Curves, start station and station equations of an alignment in a LandXML file, in metres."""
    root = ElementTree.parse(path).getroot()
    found = [(i + 1, e.get("name"), e) for i, e in enumerate(e for e in root.iter() if _local(e) == "Alignment")]
    alignment = _chosen(found, name, "alignment")[2]
    geometry = _child(alignment, "CoordGeom")
    pieces = [_landxml_curve(e) for e in geometry if _local(e) in ("Line", "Curve", "Spiral")] if geometry is not None else []
    start_station = float(alignment.get("staStart") or 0.0)
    equations = [(float(e.get("staInternal")) - start_station, float(e.get("staAhead")))
                 for e in alignment if _local(e) == "StaEquation" and e.get("staInternal") is not None]  # fmt: skip
    return pieces, start_station, sorted(equations)
