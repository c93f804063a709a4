#!/usr/bin/env python3
"""Builds all mutants of scripts/mutate.py of one folder at once and lists those that its tests do not notice.

tools/survey_mutants.py FOLDER [--file TEXT]... [--test NAME]... [--mutants N] [--seed 1] [--slowest 2]
                        [--again FILE]

Each place asks a number that is chosen when a test program starts, so that a mutant costs a run and no build. Places
that must be known to the compiler have no mutant here. One run of each test records which places it comes by; a mutant
is given to these tests alone, the quick ones first, and tests that take longer than --slowest seconds are not asked.
"""
import argparse
import collections
import concurrent.futures
import os
import pathlib
import random
import re
import resource
import shutil
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "scripts"))
import mutate  # noqa: E402

BUILD = mutate.COPY / "survey"
RAW_TEXT = re.compile(r'R"(\w*)\(.*?\)\1"', re.DOTALL)
ARRAY_SIZE = re.compile(r"\s*(?:const |static |constexpr )*[\w:<>]+ \w+((?:\[\w+\])+)(?= ?[;={])")
SYNTAX = ("g++", "-std=c++20", "-fsyntax-only", "-w", "-Wno-narrowing", "-Isrc", "-Iinclude", "-Iapps/fenmark",
          "-DFENMARK_VERSION=\"\"")
PDF = ("pkg-config", "--cflags", "librsvg-2.0", "cairo-pdf", "fontconfig")  # where they are the build writes PDF
UNREACHED = "  (no test comes by)"
QUICK = 0.05  # seconds; tests of up to that come first
# Those of scripts/mutate.py, and larger ones that are only looked through here.
FOLDERS = mutate.FOLDERS | {
    "src/sima": ["sima", "output"],
    "src/command": ["command"],
    "src/host": ["embedded", "adapter", "output"],
    "src/alignment": ["alignment", "alignment_builders", "alignment_solvers", "alignment_absurd"],
    "src/curve": ["curve", "alignment", "alignment_solvers", "alignment_builders"],
}
OPERATORS = {"<": ("Less", "<="), "<=": ("LessEqual", "<"), ">": ("Greater", ">="), ">=": ("GreaterEqual", ">"),
             "==": ("Equal", "!="), "!=": ("NotEqual", "=="), "+": ("Plus", "-"), "-": ("Minus", "+"),
             "*": ("Times", "/"), "/": ("Over", "*")}
# An operator stands twice in the changed sources, with one of these between, so that what binds closer still does.
HEADER = """#pragma once
#include <bitset>
#include <cstdlib>
#include <cstdio>
namespace survey {
inline int numberOf(const char* name) { const char* text = std::getenv(name); return text ? std::atoi(text) : 0; }
inline const int chosen = numberOf("SURVEY_MUTANT");
inline const char* const record = std::getenv("SURVEY_RECORD");
struct Passed {
  std::bitset<65536> places;
  ~Passed() {
    std::FILE* file = record ? std::fopen(record, "a") : nullptr;
    for (int k = 0; file && k < 65536; ++k) if (places[k]) std::fprintf(file, "%d\\n", k);
    if (file) std::fclose(file);
  }
};
inline Passed passed;
inline bool is(int k) { if (record) passed.places[k] = true; return chosen == k; }
template <class T> bool flip(int k, const T& value) { return is(k) != static_cast<bool>(value); }
template <class L, class Operator> struct Left { const L& left; int k; };
""" + "".join(f"""struct {name} {{ int k; }};
template <class L> Left<L, {name}> operator{sign}(const L& l, {name} o) {{ return {{l, o.k}}; }}
template <class L, class R> auto operator{sign}(Left<L, {name}> l, const R& r) {{
  return is(l.k) ? l.left {other} r : l.left {sign} r;
}}
""" for sign, (name, other) in OPERATORS.items()) + "}\n"


def code_of(text):
    """The whole source with its texts and comments blanked out, as long as before."""
    code = "\n".join(mutate.without_texts(line).ljust(len(line)) for line in text.split("\n"))
    for match in RAW_TEXT.finditer(text):
        code = code[:match.start()] + re.sub(r"[^\n]", " ", match[0]) + code[match.end():]
    return code


def changes_of(path):
    """Those of scripts/mutate.py that are not in a text of several lines, nor the size of an array."""
    text = (ROOT / path).read_text()
    raw = {text.count("\n", 0, match.start()) + line for match in RAW_TEXT.finditer(text)
           for line in range(match[0].count("\n") + 1)}
    found = []
    for change in mutate.changes_of(path):
        number, line, start, *_ = change
        size = ARRAY_SIZE.match(line)
        if number not in raw and not (size and size.start(1) <= start < size.end(1)):
            found.append(change)
    return found


def operand(code, place, step, stops):
    """Where the operand ends that reaches from this place to the left (step -1) or to the right (1)."""
    depth = 0
    while 0 <= place < len(code):
        opens, closes = ("([{", ")]}") if step > 0 else (")]}", "([{")
        depth += (code[place] in opens) - (code[place] in closes)
        if depth < 0 or depth == 0 and (code[place] in ";," or re.compile(stops).match(code, place)):
            break
        place += step
    return place


def edits_of(code, begin, line, start, end, new, k):
    """(place, order, length, text) of what asks for mutant k; begin is where the line begins."""
    at, old = begin + start, line[start:end]
    if new == ";":
        first, last = re.match(r"\s*", line).end(), len(code[begin:begin + len(line)].rstrip())
        return [(begin + first, -3, 0, f"if (!survey::is({k})) {{ "), (begin + last, 3, 0, " }")]
    if old.strip() in ("&&", "||"):
        stops = r" \? | : | [-+|&*/]?= |\breturn\b"
        left = operand(code, at - 1, -1, stops + (r"| \|\| " if "&&" in old else ""))
        left = re.compile(r"(?:return\b| \? | : | [-+|&*/]?= | \|\| |.)\s*", re.DOTALL).match(code, left).end()
        right = operand(code, end + begin, 1, r" \? | : | \|\| " + (r"| && " if "&&" in old else ""))
        flip = f"survey::flip({k}, "
        return [(left, 1 / (2 + at - left) - 2, 0, flip * 2),  # of several that begin here the longest comes first
                (at, 1, len(old), f") {old.strip()} {flip}"), (right, 0, 0, "))")]
    if old.strip() in OPERATORS:
        return [(at, 1, len(old), f"{old}survey::{OPERATORS[old.strip()][0]}{{{k}}}{old}")]
    whole = start, end
    if old[0] != '"':  # a number with its suffix and marks
        whole = next(m.span() for m in re.finditer(r"[\w.']+", line) if m.start() <= start < m.end())
    changed = line[whole[0]:start] + new + line[end:whole[1]]
    return [(begin + whole[0], 2, whole[1] - whole[0], f"(survey::is({k}) ? {changed} : {line[whole[0]:whole[1]]})")]


def rewritten(text, mutants, variable):
    """The source in which each of these mutants can be chosen; what the compiler would compute waits where variable."""
    code, begins, place = code_of(text), [], 0
    for line in text.split("\n"):
        begins.append(place)
        place += len(line) + 1
    edits = {}
    for k, (number, line, start, end, new) in mutants.items():
        for at, order, length, what in edits_of(code, begins[number], line, start, end, new, k):
            same = edits.get((at, 2)) if order == 2 else None
            if same:  # a number that may change in two ways
                what = what[:what.rindex(" : ")] + " : " + same[1] + ")"
            edits[(at, order) if order != 0 else (at, 0, k)] = (length, what)
    result, done = "", 0
    for (at, *_), (length, what) in sorted(edits.items(), key=lambda edit: edit[0][:2]):
        result += text[done:at] + what
        done = at + length
    result += text[done:]
    if variable:
        # Not those of a class, which would have no place of their own.
        result = re.sub(r"^( *)(inline )?constexpr (?=[^(=]*\w+(?: =|\{|\())", r"\1static const ", result,
                        flags=re.MULTILINE)
    return f'#include "{BUILD}/survey.h"\n#line 1\n{result}'


def syntax_of_build():
    """The compiler's call; with what is compiled only where PDF can be written, as the build has it."""
    found = subprocess.run(PDF, capture_output=True, text=True, check=False) if shutil.which(PDF[0]) else None
    return [*SYNTAX, *(["-DFENMARK_PDF", *found.stdout.split()] if found and found.returncode == 0 else [])]


def compilable(path, mutants):
    """Writes the file with those of its mutants that compile, and returns these."""
    variable = True
    syntax = syntax_of_build()
    for attempt in range(40):
        (mutate.TREE / path).write_text(rewritten((ROOT / path).read_text(), mutants, variable))
        tried = subprocess.run([*syntax, path], cwd=mutate.TREE, capture_output=True, text=True, check=False)
        if tried.returncode == 0:
            return mutants
        places = re.finditer(rf"^{re.escape(path)}:(\d+):(?:\d+:)? +(?!warning)", tried.stderr, re.MULTILINE)
        wrong = {int(place[1]) - 1 for place in places}
        near = {line + d for line in wrong for d in range(-(attempt // 3), attempt // 3 + 1)}
        left = {k: change for k, change in mutants.items() if change[0] not in near}
        variable = variable and len(left) < len(mutants)
        mutants = left
    sys.exit(f"survey: {path} does not compile")


def chosen(paths, earlier, count, seed):
    """By path and number: so many of all, or of those that survived earlier if there are any."""
    all_of = []
    for path in paths:
        for change in changes_of(path):
            _, line, start, end, new = change
            if earlier is None or (path, line.strip(), (line[:start] + new + line[end:]).strip()) in earlier:
                all_of.append((path, change))
    drawn = range(len(all_of))
    if count and count < len(all_of):
        drawn = sorted(random.Random(seed).sample(drawn, count))
    mutants = {path: {} for path in paths}
    for k in drawn:
        path, change = all_of[k]
        mutants[path][k + 1] = change
    return mutants


def compile_all(mutants, tests):
    """Builds with as many of the mutants as compile, and returns these."""
    paths = list(mutants)
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        left = dict(zip(paths, pool.map(lambda path: compilable(path, mutants[path]), paths)))
    built, wanted = (sum(map(len, some.values())) for some in (left, mutants))
    print(f"survey: {built} of {wanted} mutants can be built", flush=True)
    if mutate.run("cmake", "--build", str(BUILD), "--target", *[f"test_{test}" for test in tests]) != 0:
        sys.exit("survey: does not build")
    return {k: (path, *change) for path in paths for k, change in left[path].items()}


def run(test, names, seconds, **environment):
    with tempfile.TemporaryDirectory() as folder:
        limit = lambda: resource.setrlimit(resource.RLIMIT_AS, (6 << 30, 6 << 30))
        try:
            return subprocess.run([str(BUILD / "tests" / f"test_{test}"), "--gtest_fail_fast", "--gtest_brief=1",
                                   "--gtest_filter=" + ":".join(names)], cwd=folder, timeout=seconds, preexec_fn=limit,
                                  env=dict(os.environ, TMPDIR=folder, QT_QPA_PLATFORM="offscreen", **environment),
                                  capture_output=True, check=False).returncode
        except subprocess.TimeoutExpired:
            return -1


def passed_by(test, slowest):
    """Of each place the tests that come by it, with the seconds that they take."""
    program = str(BUILD / "tests" / f"test_{test}")
    listed = subprocess.run([program, "--gtest_list_tests"], capture_output=True, text=True, check=True).stdout
    suite, by_place = "", collections.defaultdict(list)
    for line in listed.splitlines()[1:]:
        if not line.startswith(" "):
            suite = line.split()[0]
            continue
        name = suite + line.split()[0]
        with tempfile.TemporaryDirectory() as folder:
            record, start = pathlib.Path(folder) / "places", time.monotonic()
            result = run(test, [name], slowest, SURVEY_RECORD=str(record))
            if result > 0:
                print(f"survey: {name} fails without a mutant and is not asked", flush=True)
            elif result == 0 and record.exists():
                for place in set(map(int, record.read_text().split())):
                    by_place[place].append((time.monotonic() - start, name))
    return by_place


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("folder", choices=sorted(FOLDERS))
    parser.add_argument("--file", action="append", default=[], help="only files that have this in their path")
    parser.add_argument("--test", action="append", help="only these test programs")
    parser.add_argument("--mutants", type=int, help="so many of all, drawn at random")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--slowest", type=float, default=2)
    parser.add_argument("--again", type=pathlib.Path, help="only what survived in what an earlier run printed")
    arguments = parser.parse_args()
    tests = arguments.test or FOLDERS[arguments.folder]
    paths = sorted(p.relative_to(ROOT).as_posix() for p in (ROOT / arguments.folder).rglob("*.cpp"))
    paths = [path for path in paths if not arguments.file or any(part in path for part in arguments.file)]
    mutate.copy_sources()
    BUILD.mkdir(parents=True, exist_ok=True)
    if not (BUILD / "survey.h").exists() or (BUILD / "survey.h").read_text() != HEADER:
        (BUILD / "survey.h").write_text(HEADER)
    mutate.run("cmake", "-S", str(mutate.TREE), "-B", str(BUILD), "-G", "Ninja", "-DCMAKE_BUILD_TYPE=None",
               "-DCMAKE_CXX_FLAGS=-O1 -w -Wno-narrowing", "-DFENMARK_WINDOWS=OFF", *mutate.linker())
    earlier = None
    if arguments.again:
        earlier = set(mutate.SURVIVED.findall(arguments.again.read_text().replace(UNREACHED, "")))
        paths = [path for path in paths if any(path == survivor[0] for survivor in earlier)]
    mutants = compile_all(chosen(paths, earlier, arguments.mutants, arguments.seed), tests)
    by_place = {test: passed_by(test, arguments.slowest) for test in tests}

    def survives(k):
        for test in tests:
            passing = sorted(by_place[test][k])
            for names in ([n for t, n in passing if t <= QUICK], [n for t, n in passing if t > QUICK]):
                if names and run(test, names, 10 + 4 * sum(t for t, _ in passing), SURVEY_MUTANT=str(k)) != 0:
                    return False
        return True

    print(f"survey: {len(mutants)} mutants", flush=True)
    survived = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for k, result in zip(mutants, pool.map(survives, mutants)):
            path, number, line, start, end, new = mutants[k]
            if result:
                unreached = "" if any(by_place[test][k] for test in tests) else UNREACHED
                changed = (line[:start] + new + line[end:]).strip()
                print(f"survived : {path}:{number + 1}: {line.strip()}  ->  {changed}{unreached}", flush=True)
            survived += result
    print(f"{len(mutants) - survived} of {len(mutants)} noticed")
    return 1 if survived else 0


if __name__ == "__main__":
    sys.exit(main())
