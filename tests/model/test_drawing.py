"""Imports random files of roads and compares each drawing with that of the model.

usage: test_drawing.py FENMARK [FILES [SEED]]
"""
import json
import math
import os
import pathlib
import random
import subprocess
import sys
import tempfile

from drawing_model import Drawing
from road_files import RoadFile

os.environ["LC_ALL"] = "C.UTF-8"  # fenmark speaks the language of the locale

ROUTES = 10      # in each file
POSITION = 1e-6  # metres
ANGLE = 1e-6     # radians
SENSES = ["left", "right", "auto"]
SHIFTS = ["0.0001", "0.1", "0.5", "1", "2.5", "0.00000000000000001"]


def near(wanted, got, tolerance=POSITION):
    return len(wanted) == len(got) and all(abs(a - b) <= tolerance for a, b in zip(wanted, got))


def element_fault(wanted, got):
    if wanted.type != got["type"] or not near(wanted.start, got["start"]) or not near(wanted.end, got["end"]):
        return True
    if abs(wanted.length - got["length"]) > POSITION:
        return True
    if wanted.type == "S":
        return False
    radii = [got["radius"]] * 2 if wanted.type == "R" else [got["start_radius"], got["end_radius"]]
    if [radius if math.isfinite(radius) else None for radius in wanted.radii] != radii:
        return True
    return got["clockwise"] != (min(wanted.k0, wanted.k1) < 0.0)


def alignment_fault(wanted, got):
    for key, value in (("name", wanted.name), ("description", wanted.description), ("layer", "0"),
                       ("start_station", wanted.start_station)):
        if got[key] != value:
            return "%s is %r in the model and %r" % (key, value, got[key])
    if len(wanted.laid) != len(got["elements"]):
        return "%d elements in the model and %d" % (len(wanted.laid), len(got["elements"]))
    for i, (element, made) in enumerate(zip(wanted.laid, got["elements"])):
        if element_fault(element, made):
            return "element %d is %s in the model and %s" % (i, vars(element), made)
    return None


def entity_fault(wanted, got):
    kind, layer, closed, where, row = wanted
    places = [got["position"]] if got["type"] == "point" else got["vertices"]
    same = (got["type"], got["layer"], got.get("closed", False)) == (kind, layer, closed)
    same = same and len(where) == len(places) and all(near(a, b) for a, b in zip(where, places))
    if same and list(got["data"].values()) == row:
        return None
    return "%s in the model and %s" % (wanted, got)


def drawing_fault(model, got):
    alignments = [alignment for site in got["sites"] for alignment in site["alignments"]]
    for what, wanted, made, fault in (("alignment", model.alignments, alignments, alignment_fault),
                                      ("entity", model.entities, got["entities"], entity_fault)):
        for i, pair in enumerate(zip(wanted, made)):
            found = fault(*pair)
            if found:
                return "%s %d: %s" % (what, i, found)
        if len(wanted) != len(made):
            return "%d of kind %s in the model and %d" % (len(wanted), what, len(made))
    return None


def check(program, path, shift, sense):
    """None, or what is not as the model has it."""
    records = [line.split(",") for line in path.read_bytes().decode("cp932").split("\r\n")]
    model = Drawing([fields for fields in records if fields[0] not in ("", "Z00")], path.name, float(shift), sense)
    drawing = path.with_suffix(".gpkg")
    run = subprocess.run([program, "import", "-q", "--keep-partial", "--positive-radius", sense, "--shift", shift,
                          "--drawing", drawing, path], capture_output=True, check=False)
    if run.returncode != (1 if model.broken else 0):
        return "exit code %d: %s" % (run.returncode, run.stderr.decode())
    reported = subprocess.run([program, "info", "--json", drawing], capture_output=True, check=True)
    return drawing_fault(model, json.loads(reported.stdout))


def main(program, count, seed):
    rng = random.Random(seed)
    faults = []
    kept = pathlib.Path(tempfile.mkdtemp(prefix="fenmark-model-"))
    with tempfile.TemporaryDirectory() as folder:
        for number in range(count):
            path = pathlib.Path(folder) / ("roads%d.sim" % number)
            sense = SENSES[number % len(SENSES)]
            # What cannot be driven on proves no sense.
            path.write_bytes(RoadFile(rng, only_roads=sense == "auto").bytes(ROUTES))
            fault = check(program, path, rng.choice(SHIFTS), sense)
            if fault:
                faults.append("%s, %s: %s" % (path.name, sense, fault))
                (kept / path.name).write_bytes(path.read_bytes())
    for fault in faults[:10]:
        print(fault)
    print("seed %d: %d files compared, %d faults" % (seed, count, len(faults)))
    if faults:
        print("the files are kept in %s" % kept)
    else:
        kept.rmdir()
    return 1 if faults else 0


if __name__ == "__main__":
    arguments = sys.argv[2:]
    sys.exit(main(sys.argv[1], int(arguments[0]) if arguments else 40, int(arguments[1]) if len(arguments) > 1 else 1))
