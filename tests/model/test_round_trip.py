"""Writes random drawings as SIMA files, imports those, and compares both drawings.

usage: test_round_trip.py FENMARK [FILES [SEED]]

The files are roads in the own habit of signs (a positive radius turns left): in the other one an import moves clothoids
off the points of the file, so that an export must add points.
"""
import json
import os
import pathlib
import random
import subprocess
import sys
import tempfile

from road_files import RoadFile

os.environ["LC_ALL"] = "C.UTF-8"  # fenmark speaks the language of the locale

ROUTES = 10
PLACE = 1e-6  # metres


class OwnHabit(RoadFile):
    def __init__(self, rng):
        super().__init__(rng)
        self.left_is_positive = True

    def add_odd_route(self, number, kind, may_begin_with_clothoid=False):
        self.add_road(number)


def difference(was, now, where=""):
    """None, or the first place where two values of the JSON differ. Identifiers are not compared."""
    if isinstance(was, dict):
        if was.keys() != now.keys():
            return "%s: %s and %s" % (where, sorted(was), sorted(now))
        pairs = [(key, was[key], now[key]) for key in was if key != "id"]
    elif isinstance(was, list):
        if len(was) != len(now):
            return "%s: %d and %d" % (where, len(was), len(now))
        pairs = [(str(i), *pair) for i, pair in enumerate(zip(was, now))]
    elif isinstance(was, float) and isinstance(now, (int, float)):
        return None if abs(was - now) <= PLACE else "%s: %r and %r" % (where, was, now)
    else:
        return None if was == now else "%s: %r and %r" % (where, was, now)
    for key, a, b in pairs:
        found = difference(a, b, where + "/" + key)
        if found:
            return found
    return None


def run(program, *arguments):
    return subprocess.run([program, *map(str, arguments)], capture_output=True, check=True)


def check(program, folder, name, content):
    path = folder / name
    path.write_bytes(content)
    first, second = path.with_suffix(".gpkg"), folder / "again.gpkg"
    second.unlink(missing_ok=True)
    run(program, "import", "-q", path, "--drawing", first)
    written = folder / "again" / name
    written.parent.mkdir(exist_ok=True)
    written_first = run(program, "export", first, written)
    if written_first.stderr:
        return written_first.stderr.decode()
    run(program, "import", "-q", written, "--drawing", second)
    return difference(*(json.loads(run(program, "info", "--json", drawing).stdout) for drawing in (first, second)))


def main(program, count, seed):
    rng = random.Random(seed)
    faults = []
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        for number in range(count):
            file = "roads%d.sim" % number
            fault = check(program, folder, file, OwnHabit(rng).bytes(ROUTES))
            if fault:
                faults.append("%s: %s" % (file, fault))
    for fault in faults[:10]:
        print(fault)
    print("seed %d: %d files compared, %d faults" % (seed, count, len(faults)))
    return 1 if faults else 0


if __name__ == "__main__":
    arguments = sys.argv[2:]
    sys.exit(main(sys.argv[1], int(arguments[0]) if arguments else 20, int(arguments[1]) if len(arguments) > 1 else 1))
