#!/usr/bin/env python3
"""Changes one comparison, constant or statement of the sources at a time, and runs the tests that must notice.

A copy of the checkout is changed, not the checkout. Of each mutant only what hangs on its file is built; a mutant that
does not compile does not count, one that does not end counts as noticed. What no test noticed is printed: it needs a
test, or a word in docs/reliability.md on why nothing can notice it.

usage: scripts/mutate.py [--mutants N] [--seed N] [--folder FOLDER]... [--list] [--again FILE]
"""

import argparse
import collections
import hashlib
import os
import pathlib
import re
import shutil
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
COPY = ROOT / "build" / "mutate"
TREE = COPY / "tree"
BUILD = COPY / "build"

# Where mutants are made, and the test programs that must notice them, the likeliest first.
FOLDERS = {
    "src/sima/validators": ["sima"],
    "src/sima/reader": ["sima", "output"],
    "src/sima/text": ["sima", "cli"],
    "src/output": ["output"],
    "src/host/embedded": ["embedded", "cli"],
    "src/alignment/calelm": ["alignment", "alignment_builders", "alignment_solvers", "alignment_absurd"],
    "src/alignment/construction": ["alignment", "alignment_builders", "alignment_solvers", "alignment_absurd"],
    "src/exchange": ["exchange", "cli"],
    "src/drawing": ["drawing", "cli"],
    "apps/fenmark/cli": ["cli"],
}
LONGEST = 10  # times what a test program took without a mutant; what takes longer does not end

SWAPS = [
    (r" < ", " <= "), (r" <= ", " < "), (r" > ", " >= "), (r" >= ", " > "), (r" == ", " != "), (r" != ", " == "),
    (r" && ", " || "), (r" \|\| ", " && "), (r" \+ ", " - "), (r" - ", " + "), (r" \* ", " / "), (r" / ", " * "),
    (r"\btrue\b", "false"), (r"\bfalse\b", "true"), (r"\b0\.0\b", "1.0"), (r"\b1\b(?!\.)", "2"), (r"\b0\b(?!\.)", "1"),
    (r"\b([2-9]|[1-9]\d+)\b(?![.\d])", lambda m: str(int(m.group(0)) + 1)),
    (r"\b\d+\.\d+\b", lambda m: m.group(0) + "1"), (r"\b\d+e-?\d+\b", lambda m: "2." + m.group(0)),
]
STATEMENT = re.compile(r"^\s+(?!return\b|throw\b|using\b|case\b|break\b|continue\b|const\b|auto\b)"
                       r"(?:\+\+|--)?[\w.\->\[\]:*]+(?:\(.*\)| [-+|&*/]?= .*|\+\+|--)?;$")
ROOM = re.compile(r"\.(?:reserve|shrink_to_fit)\(")  # what only saves time or memory
ARRAY_ROOM = re.compile(r"\b(?:double|float|int|char) \w+(?:\[\d+\])+(?=[,)])")  # which the language does not look at
# What a buffer that is written before it is read has to spare.
BUFFER_ROOM = re.compile(r"^\s+(?:std::array<char, \d+> \w+|(?:double|float|int|char) \w+(?:\[\d+\])+)(?:\{\})?;")
DECLARATION = re.compile(r"^\s+[\w:<>,&* ]+ [\w]+(?:\(.*\)| = .*|\{.*\})?;$")
SURVIVED = re.compile(r"^survived : ([^:]+):\d+: (.*?)  ->  (.*)$", re.MULTILINE)
TEXT = re.compile(r'"(?:[^"\\]|\\.)+"')


def without_texts(line):
    """The line with texts and comments blanked out, as long as before."""
    line = re.sub(r"'(?:[^'\\]|\\.)'", lambda m: " " * len(m.group(0)), TEXT.sub(lambda m: " " * len(m.group(0)), line))
    for room in (ARRAY_ROOM, BUFFER_ROOM):
        line = room.sub(lambda m: " " * len(m.group(0)), line)
    return line.split("//")[0]


def changes_of(path):
    """(line, its text, start, end, what stands there then) of each change; a statement becomes ";"."""
    for number, line in enumerate((ROOT / path).read_text().split("\n")):
        code = without_texts(line)
        if code.lstrip().startswith(("#", "*", "/*", "template", "static_assert")):
            continue
        for pattern, by in SWAPS:
            for match in re.finditer(pattern, code):
                yield number, line, match.start(), match.end(), by(match) if callable(by) else by
        if STATEMENT.match(code) and not DECLARATION.match(code) and not ROOM.search(code):
            yield number, line, 0, len(line), ";"
        if path.startswith("src/exchange") and "include" not in line:
            for match in TEXT.finditer(line):
                yield number, line, match.start(), match.end(), '"~' + match.group(0)[1:]


def mutants_of(path):
    return [(path, number, line.strip(), line[:start] + new + line[end:])
            for number, line, start, end, new in changes_of(path)]


def candidates(folders):
    by_folder = {}
    for folder in folders:
        files = sorted(p.relative_to(ROOT).as_posix() for p in (ROOT / folder).rglob("*.cpp"))
        by_folder[folder] = [mutant for path in files for mutant in mutants_of(path)]
    return by_folder


def sample(folders, count, seed):
    """As many of each folder as of any other; which ones hangs on what they say, so that a change elsewhere keeps them."""
    by_folder = candidates(folders)
    share = -(-count // len(folders))
    drawn = []
    for folder in folders:
        seen = collections.Counter()
        keyed = []
        for path, number, old, new in by_folder[folder]:
            what = f"{path}|{old}|{new.strip()}"
            seen[what] += 1
            key = hashlib.sha256(f"{seed}|{what}|{seen[what]}".encode()).hexdigest()
            keyed.append((key, folder, path, number, old, new))
        drawn += sorted(keyed)[:share]
    return [mutant for _, *mutant in sorted(drawn)][:count]


def environment():
    return dict(os.environ, QT_QPA_PLATFORM="offscreen", CCACHE_NOHASHDIR="1", CCACHE_BASEDIR=str(TREE),
                CCACHE_SLOPPINESS="pch_defines,time_macros", CXX="g++", CC="gcc")


def run(*command, seconds=None):
    try:
        return subprocess.run(command, cwd=TREE, env=environment(), capture_output=True, timeout=seconds,
                              check=False).returncode
    except subprocess.TimeoutExpired:
        return -1


def build(tests):
    return run("nice", "cmake", "--build", str(BUILD), "--target", *[f"test_{test}" for test in tests])


def notices(test, seconds=None):
    return run("nice", str(BUILD / "tests" / f"test_{test}"), "--gtest_fail_fast", "--gtest_brief=1",
               seconds=seconds) != 0


def copy_sources():
    files = subprocess.run(["git", "ls-files", "-z"], cwd=ROOT, capture_output=True, check=True).stdout.decode()
    names = {name for name in files.split("\0") if name and (ROOT / name).is_file()}
    for old in [p for p in TREE.rglob("*") if p.is_file() and p.relative_to(TREE).as_posix() not in names]:
        old.unlink()
    for name in names:
        # What stands there already keeps its time; what a run that was broken off left changed gets a new one.
        if not (TREE / name).is_file() or (TREE / name).read_bytes() != (ROOT / name).read_bytes():
            (TREE / name).parent.mkdir(parents=True, exist_ok=True)
            shutil.copyfile(ROOT / name, TREE / name)
            shutil.copymode(ROOT / name, TREE / name)


def linker():
    return ["-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=mold"] if shutil.which("mold") else []  # halves the time of a mutant


def prepare(folders):
    """Builds the copy as it stands; returns the seconds that a test program may take."""
    copy_sources()
    tests = sorted({test for folder in folders for test in FOLDERS[folder]})
    if run("cmake", "-S", str(TREE), "-B", str(BUILD), "-G", "Ninja", "-DCMAKE_BUILD_TYPE=None", "-DCMAKE_CXX_FLAGS=-O1",
           "-DFENMARK_WINDOWS=OFF", *linker()) != 0 or build(tests) != 0:
        sys.exit("mutate: the copy does not build")
    limits = {}
    for test in tests:
        start = time.monotonic()
        if notices(test):
            sys.exit(f"mutate: test_{test} fails without a mutant")
        limits[test] = LONGEST * (1 + time.monotonic() - start)
    return limits


def try_mutant(folder, path, number, new, limits):
    """killed, survived or does not compile; and by which test."""
    file = TREE / path
    before = file.read_text()
    lines = before.split("\n")
    lines[number] = new
    try:
        file.write_text("\n".join(lines))
        for test in FOLDERS[folder]:
            if build([test]) != 0:
                return "does not compile", ""
            if notices(test, limits[test]):
                return "killed", test
        return "survived", ""
    finally:
        file.write_text(before)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--mutants", type=int, default=300)
    parser.add_argument("--seed", type=int, default=20260131)
    parser.add_argument("--folder", action="append", choices=sorted(FOLDERS))
    parser.add_argument("--list", action="store_true", help="only list the mutants")
    parser.add_argument("--again", type=pathlib.Path, help="only those that survived in what an earlier run printed")
    arguments = parser.parse_args()
    folders = arguments.folder or list(FOLDERS)
    chosen = sample(folders, arguments.mutants, arguments.seed)
    if arguments.again:
        earlier = set(SURVIVED.findall(arguments.again.read_text()))
        chosen = [m for m in chosen if (m[1], m[3], m[4].strip()) in earlier]
    limits = {} if arguments.list else prepare(folders)
    results = collections.defaultdict(collections.Counter)
    for folder, path, number, old, new in chosen:
        how, by = ("listed", "") if arguments.list else try_mutant(folder, path, number, new, limits)
        results[folder][how] += 1
        print(f"{how} {by}: {path}:{number + 1}: {old}  ->  {new.strip()}", flush=True)
    print("\n| Folder | Mutants | Killed |\n| --- | --- | --- |")
    for folder, counts in sorted(results.items()):
        tried = counts["killed"] + counts["survived"]
        print(f"| `{folder}` | {tried} | {100 * counts['killed'] / max(tried, 1):.0f} % |")
    return 1 if any(counts["survived"] for counts in results.values()) else 0


if __name__ == "__main__":
    sys.exit(main())
