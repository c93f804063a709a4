"""Imports random files and compares each log with that of the model, byte for byte.

usage: test_model.py FENMARK [FILES [SEED]]
"""
import os
import pathlib
import random
import re
import subprocess
import sys
import tempfile

from generated_files import make_file
from sima_model import BrokenOff, Unmodelled, log_of

os.environ["LC_ALL"] = "C.UTF-8"  # fenmark speaks the language of the locale

BATCH = 50
ALIGNMENT_KINDS = ["main", "centre", "continuous-curves"]


def difference(expected, got):
    pairs = zip(expected.split(b"\r\n") + [b"<end>"], got.split(b"\r\n") + [b"<end>"])
    for number, (wanted, had) in enumerate(pairs, 1):
        if wanted != had:
            return "log line %d\n  model  %s\n  import %s" % (number, wanted.decode("cp932", "replace"),
                                                              had.decode("cp932", "replace"))
    return "the line ends"


def check(folder, skipped, files, program):
    """Runs one import over the files. Returns a text for each that is not as the model has it."""
    wanted = {}
    for path in files:
        try:
            wanted[path] = log_of(path.read_bytes(), skipped)
        except BrokenOff as broken:
            wanted[path] = broken.args[0]
        except Unmodelled:
            pass
    if not wanted:
        return 0, []
    options = ["--skip", ",".join(skipped)] if skipped else []
    run = subprocess.run([program, "import", "-q", *options, *wanted], cwd=folder, capture_output=True, check=False)
    faults = []
    broken = any(isinstance(log, int) for log in wanted.values())
    if run.returncode != (1 if broken else 0):
        faults.append("exit code %d\n%s" % (run.returncode, run.stderr.decode()[-2000:]))
    reported = set(re.findall(r"error: (\S+\.sim):(\d+): import broken off", run.stderr.decode()))
    for path, log in wanted.items():
        place = path.with_name(path.stem + "_Input.log")
        got = place.read_bytes() if place.exists() else None
        if isinstance(log, int):
            if got is not None or path.with_suffix(".gpkg").exists():
                faults.append("%s: broken off at line %d in the model, and left files" % (path, log))
            elif (str(path), str(log)) not in reported:
                faults.append("%s: broken off at line %d in the model, and not so reported" % (path, log))
        elif got is None:
            faults.append("%s: no log" % path)
        elif got != log:
            faults.append("%s: %s" % (path, difference(log, got)))
    return len(wanted), faults


def main(program, count, seed):
    rng = random.Random(seed)
    compared = 0
    faults = []
    kept = pathlib.Path(tempfile.mkdtemp(prefix="fenmark-model-"))
    for first in range(0, count, BATCH):
        curves = (first // BATCH) % 2 == 1
        skipped = ALIGNMENT_KINDS + rng.sample(["points", "lots", "ip", "longitudinal"], rng.randrange(2)) if curves else []
        with tempfile.TemporaryDirectory() as folder:
            files = []
            for number in range(first, min(first + BATCH, count)):
                files.append(pathlib.Path(folder) / ("f%d.sim" % number))
                files[-1].write_bytes(make_file(rng, curves))
            done, wrong = check(folder, skipped, files, program)
            compared += done
            faults += wrong
            for path in files:
                if any(str(path) in fault for fault in wrong):
                    (kept / path.name).write_bytes(path.read_bytes())
    for fault in faults[:10]:
        print(fault)
    print("seed %d: %d of %d files compared, %d faults" % (seed, compared, count, len(faults)))
    if faults:
        print("the files are kept in %s" % kept)
    else:
        kept.rmdir()
    return 0 if compared > count // 2 and not faults else 1


if __name__ == "__main__":
    arguments = sys.argv[2:]
    sys.exit(main(sys.argv[1], int(arguments[0]) if arguments else 400, int(arguments[1]) if len(arguments) > 1 else 1))
