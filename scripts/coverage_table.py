#!/usr/bin/env python3
"""Sums up what gcov counted: lines and branches by folder of src/ and apps/.

coverage_table.py BUILD [--missing]

A line or branch counts once, however many programs ran it, and however often a template or an inline function was made.
"""

import collections
import concurrent.futures
import gzip
import json
import pathlib
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent


def counts_of(data):
    """What gcov reports of one object file, less the files of others."""
    with tempfile.TemporaryDirectory() as folder:
        ran = subprocess.run(["gcov", "--json-format", "--branch-probabilities", "--stdout", str(data)], cwd=folder,
                             capture_output=True, check=False)
    text = gzip.decompress(ran.stdout) if ran.stdout[:2] == b"\x1f\x8b" else ran.stdout
    found = []
    for line in text.splitlines():
        if not line.strip():
            continue
        report = json.loads(line)
        for file in report["files"]:
            path = (pathlib.Path(report["current_working_directory"]) / file["file"]).resolve()
            if path.is_relative_to(ROOT / "src") or path.is_relative_to(ROOT / "apps"):
                found.append((str(path.relative_to(ROOT)), file["lines"]))
    return found


def folder_of(path):
    parts = path.split("/")
    return "/".join(parts[:3] if parts[1] in ("host", "fenmark") else parts[:2])


def main():
    build = pathlib.Path(sys.argv[1]).resolve()  # gcov runs in a folder of its own
    lines = collections.Counter()  # (file, line) -> times
    branches = collections.Counter()  # (file, line, place) -> times
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        for found in pool.map(counts_of, sorted(build.rglob("*.gcda"))):
            for path, counted in found:
                for line in counted:
                    at = (path, line["line_number"])
                    lines[at] += line["count"]
                    real = [b for b in line["branches"] if not b["throw"]]
                    for place, branch in enumerate(real):
                        branches[at + (place,)] += branch["count"]
    table = collections.defaultdict(lambda: [0, 0, 0, 0])
    for (path, _), times in lines.items():
        row = table[folder_of(path)]
        row[0] += times > 0
        row[1] += 1
    for (path, _, _), times in branches.items():
        row = table[folder_of(path)]
        row[2] += times > 0
        row[3] += 1
    print("| Folder | Lines | Branches |\n| --- | --- | --- |")
    for folder, (reached, of, taken, ways) in sorted(table.items()):
        print(f"| `{folder}` | {100 * reached / of:.1f} % of {of} | {100 * taken / max(ways, 1):.1f} % of {ways} |")
    if "--missing" in sys.argv[2:]:
        for (path, number), times in sorted(lines.items()):
            if times == 0:
                print(f"{path}:{number}")


if __name__ == "__main__":
    main()
