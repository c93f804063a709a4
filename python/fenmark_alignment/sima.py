"""SIMA files into drawings, over the program fenmark, and what came of it: points, lots, alignments, errors.

The program is taken from the environment variable FENMARK_PROGRAM (its path), else from the PATH. Coordinates here are
those of the survey plane, x north and y east, metres.
"""

from __future__ import annotations

import json
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
from collections.abc import Iterator
from typing import Any, NamedTuple

from .chain import Chain


_LOT = "画地"  # as the row of a lot names its kind


class SurveyPoint(NamedTuple):
    """A coordinate point with its row."""

    number: int | None
    name: str
    x: float
    y: float
    z: float
    kind: str | None
    layer: str


class Lot(NamedTuple):
    """A lot: its row and its vertices (x, y) in order, the first not again at the end. One of few points is open."""

    number: int | None
    name: str
    vertices: tuple[tuple[float, float], ...]
    closed: bool
    layer: str


class LogError(NamedTuple):
    """An error block of the import: line of the file, code of the rule, text of the log."""

    line: int
    code: str
    text: str


class Import(NamedTuple):
    """What an import made. `drawing` and `log` are the paths of the files, None where they were temporary."""

    points: list[SurveyPoint]
    lots: list[Lot]
    alignments: dict[str, Chain]
    errors: list[LogError]
    drawing: pathlib.Path | None
    log: str | None

    def to_geodataframes(self, crs: Any = None) -> dict[str, Any]:
        """Points, lots and alignments as GeoDataFrames by these names, x east and y north as in a GIS.

        `crs` is that of the plane, as "EPSG:6677". Needs geopandas (Debian: python3-geopandas).
        """
        try:
            import geopandas
            from shapely import geometry
        except ImportError as error:
            raise ImportError("to_geodataframes needs geopandas (Debian: python3-geopandas)") from error

        def frame(rows: list[dict[str, Any]], shapes: list[Any]) -> Any:
            columns = {name: [row[name] for row in rows] for name in rows[0]} if rows else {}
            return geopandas.GeoDataFrame(columns, geometry=shapes, crs=crs)

        def shape(lot: Lot) -> Any:
            kind = geometry.Polygon if lot.closed and len(lot.vertices) > 2 else geometry.LineString
            return kind([(y, x) for x, y in lot.vertices])

        points = [p._asdict() for p in self.points]
        lots = [{"number": lot.number, "name": lot.name, "layer": lot.layer} for lot in self.lots]
        chains = [{"name": n, "start_station": c.start_station, "length": c.length} for n, c in self.alignments.items()]
        return {
            "points": frame(points, [geometry.Point(p.y, p.x, p.z) for p in self.points]),
            "lots": frame(lots, [shape(lot) for lot in self.lots]),
            "alignments": frame(
                chains, [geometry.LineString([(y, x) for x, y in c.line()]) for c in self.alignments.values()]
            ),
        }


class ImportFailed(RuntimeError):
    """The program could not do the import; the message is its own."""


def _program() -> str:
    found = os.environ.get("FENMARK_PROGRAM") or shutil.which("fenmark")
    if not found:
        raise FileNotFoundError("the program fenmark was not found: install it, or set FENMARK_PROGRAM to its path")
    return found


def _options(options: dict[str, Any]) -> Iterator[str]:
    for name, value in options.items():
        option = "--" + name.replace("_", "-")
        if value is True:
            yield option
        elif value is not None and value is not False:
            yield option
            yield ",".join(value) if isinstance(value, (list, tuple)) else str(value)


def _run(arguments: list[str]) -> subprocess.CompletedProcess[str]:
    done = subprocess.run(
        [_program(), *arguments], stdout=subprocess.PIPE, stderr=subprocess.PIPE, encoding="utf-8", errors="replace"
    )
    if done.returncode not in (0, 3):
        raise ImportFailed(done.stderr.strip() or f"fenmark {arguments[0]} ended with {done.returncode}")
    return done


def _read(drawing: str | os.PathLike[str]) -> tuple[list[SurveyPoint], list[Lot], dict[str, Chain]]:
    content = json.loads(_run(["info", str(drawing), "--json"]).stdout)
    points, lots = [], []
    for entity in content["entities"]:
        row = entity["data"] or {}
        name = (row.get("Name") or "").strip()
        if entity["type"] == "point":
            y, x, z = entity["position"]
            points.append(SurveyPoint(row.get("No"), name, x, y, z, row.get("Type"), entity["layer"]))
        elif row.get("Type") == _LOT:
            vertices = tuple((v[1], v[0]) for v in entity["vertices"])
            lots.append(Lot(row.get("No"), name, vertices, entity["closed"], entity["layer"]))
    alignments = {}
    for site in content["sites"]:
        for alignment in site["alignments"]:
            name = alignment["name"].strip()
            key = name if name not in alignments else f"{name} #{alignment['id']}"
            alignments[key] = Chain.from_geopackage(drawing, f"#{alignment['id']}")
    return points, lots, alignments


def import_sima(path: str | os.PathLike[str], drawing: str | os.PathLike[str] | None = None, **options: Any) -> Import:
    """Reads a SIMA file into a drawing and gives what the drawing then has, with the errors of the import.

    `drawing` is the GeoPackage to write, appended to where it is there; without one the drawing is temporary, and so is
    the log. Options are those of `fenmark import`, as positive_radius="left", skip=["lots"], create_layers=True.
    Raises ImportFailed with the program's message where the import cannot be done.
    """
    path = pathlib.Path(path)
    with tempfile.TemporaryDirectory() as folder:
        source = path
        if drawing is None:
            # The program writes the log beside the file that it reads.
            source = pathlib.Path(folder) / path.name
            shutil.copyfile(path, source)
        target = pathlib.Path(drawing) if drawing is not None else pathlib.Path(folder) / "drawing.gpkg"
        done = _run(["import", str(source), "--drawing", str(target), "--json", *_options(options)])
        block = re.compile(rf"^{re.escape(str(source))}:(\d+): ([A-Za-z]+[A-Za-z0-9-]*): (.*)$", flags=re.M)
        errors = [LogError(int(line), code, text) for line, code, text in block.findall(done.stderr)]
        points, lots, alignments = _read(target)
        log = json.loads(done.stdout)[0]["log"] if drawing is not None else None
    return Import(points, lots, alignments, errors, target if drawing is not None else None, log)
