"""Every exported symbol is documented: a comment in its header, and a row with its arguments on its family's page.

The exact curves have one page, docs/curve.md, which also holds the program of their header as it is.

Also: the program in docs/alignment.md is the example, its CMake lines are the example's, and no link or picture is dead.

With a C compiler given, every short example of the pages must compile; with the library given too, the program printed in
the public headers is built and run.

check_documentation.py SOURCE_TREE [C_COMPILER [LIBRARY]]
"""

import math
import pathlib
import re
import subprocess
import sys
import tempfile

root = pathlib.Path(sys.argv[1])
errors = []


def read(path):
    return (root / path).read_text(encoding="utf-8")


def declarations(text):
    """Name, argument names, and whether a comment stands directly above, of every function of a header."""
    for found in re.finditer(r"^FENMARK_ALIGNMENT_API\s+([^;(]*?)(\w+)\(([^;]*)\);", text, flags=re.M):
        _, name, arguments = found.groups()
        names = [re.sub(r"\[\d+\]$", "", a.strip()).split()[-1].lstrip("*") for a in arguments.split(",")]
        yield name, names, text[: found.start()].rstrip().endswith("*/")


exported = {line for line in read("docs/exports.txt").split("\n") if line and not line.startswith("#")}
declared = set()
families = [(h, f"docs/alignment/{'conventions' if h.stem == 'record' else h.stem}.md")
            for h in sorted((root / "include/fenmark/alignment").glob("*.h"))]  # fmt: skip
for h in sorted((root / "include/fenmark/curve").glob("*.h")):
    own = f"docs/curve/{h.stem}.md"
    families.append((h, own if (root / own).exists() else "docs/curve.md"))
for header, family in families:
    page = read(family)
    rows = dict(re.findall(r"^\| `(\w+)\((.*?)\)` \| \S.* \| \S.* \|$", page, flags=re.M))
    for name, arguments, commented in declarations(header.read_text(encoding="utf-8")):
        declared.add(name)
        if not commented:
            errors.append(f"{header.name}: no comment above {name}")
        if name not in rows:
            errors.append(f"{family}: no row for {name}")
            continue
        documented = [re.sub(r"^out (?=\w)|\[\d+\]$", "", a.strip()) for a in rows[name].split(",")]
        if documented != arguments:
            errors.append(f"{family}: {name} has the arguments {arguments}, documented are {documented}")
if declared != exported or len(declared) < 150:
    errors.append(f"headers and docs/exports.txt differ: {sorted(declared ^ exported)}")

# Only names that exist are written.
pages = [root / "docs/alignment.md", root / "docs/curve.md", *sorted((root / "docs/alignment").glob("*.md"))]
for page in [*pages, root / "python/README.md", root / "examples/alignment/README.md"]:
    text = page.read_text(encoding="utf-8")
    for name in re.findall(r"\b((?:ali_|alimake_|moveR_|CD|fmk_)\w+)\b(?!\*)", text):
        family = any(e.startswith(name) for e in exported) and name.endswith("_")
        if name not in exported and not family:
            errors.append(f"{page.name}: no function named {name}")
    for target in re.findall(r"\]\(([^)#:]+)\)", text):
        if not (page.parent / target).exists():
            errors.append(f"{page.name}: dead link {target}")

overview = read("docs/alignment.md")
for language, path in (("c", "examples/alignment/stake_curve.c"), ("cmake", "examples/alignment/CMakeLists.txt")):
    if f"```{language}\n{read(path)}```\n" not in overview:
        errors.append(f"docs/alignment.md does not hold {path} as it is")
linked = "\n".join(page.read_text(encoding="utf-8") for page in pages)
for picture in sorted((root / "docs/pictures/alignment").glob("*.svg")):
    if f"alignment/{picture.name})" not in linked:
        errors.append(f"no page shows {picture.name}")

# The short examples are fragments: each is compiled as the body of a function, where it may declare the given
# records anew.
GIVEN = "Calelm element, clothoid, arc, line, road, river, s1, s2, r1, r2;"
if len(sys.argv) > 2:
    for page in pages[2:]:
        for body in re.findall(r"```c\n(.*?)```", page.read_text(encoding="utf-8"), flags=re.S):
            program = (
                "#include <fenmark/alignment.h>\n#include <stdio.h>\n#ifndef M_PI\n#define M_PI 3.14159265358979323846\n#endif\n"
                f"extern {GIVEN}\nvoid example(void);\nvoid example(void) {{\n{body}}}\n"
            )
            command = [sys.argv[2], "-std=c99", "-fsyntax-only", "-Wall", "-Werror", "-Wno-unused", f"-I{root}/include", "-xc", "-"]
            done = subprocess.run(command, input=program, capture_output=True, text=True)
            if done.returncode != 0:
                errors.append(f"{page.name}: an example does not compile\n{done.stderr}")

def header_program(header):
    """The C program in the comment of a public header."""
    printed = re.search(r"^ \* @code\{\.c\}\n(.*?)^ \* @endcode", read(header), flags=re.S | re.M)
    return re.sub(r"^ \* ?", "", printed.group(1), flags=re.M)


def run_program(program, compiler, library):
    """Builds a C program strictly against the library and runs it; returns its lines, or what is wrong in their place."""
    with tempfile.TemporaryDirectory() as folder:
        built = f"{folder}/example"
        command = [compiler, "-std=c99", "-Wall", "-Wextra", "-Wpedantic", "-Werror", f"-I{root}/include", "-xc", "-",
                   "-xnone", str(library), f"-Wl,-rpath,{library.parent}", "-o", built]  # fmt: skip
        done = subprocess.run(command, input=program, capture_output=True, text=True)
        if done.returncode != 0:
            return None, f"does not build\n{done.stderr}"
        done = subprocess.run([built], capture_output=True, text=True)
    if done.returncode != 0 or not done.stdout:
        return None, f"prints\n{done.stdout}{done.stderr}"
    return done.stdout.splitlines(), ""


STAKE = r" *(\S+)  x (\S+)  y (\S+)  azimuth (\S+)"


def alignment_example(compiler, library):
    """Runs the program in fenmark/alignment.h; returns what is wrong with it."""
    lines, wrong = run_program(header_program("include/fenmark/alignment.h"), compiler, library)
    if lines is None:
        return [f"alignment.h: its example {wrong}"]
    # A stake every 10 m of the 64 m of A = 80 to R = 100, from the azimuth 0.5, and the measured point.
    stakes = [re.fullmatch(STAKE, line) for line in lines[:-1]]
    if len(stakes) != 7 or not all(stakes) or not re.match(r"station \S+, \S+ m off$", lines[-1]):
        return ["alignment.h: its example prints\n" + "\n".join(lines)]
    wrong = []
    for stake in stakes:
        s, x, y, azimuth = map(float, stake.groups())
        if abs(azimuth - (0.5 + s * s / (2.0 * 80.0**2))) > 1e-6:
            wrong.append(f"alignment.h: its example tells the azimuth {azimuth} at {s}")
    return wrong


def curve_example(compiler, library):
    """Runs the program in fenmark/curve.h; returns what is wrong with it."""
    lines, wrong = run_program(header_program("include/fenmark/curve.h"), compiler, library)
    if lines is None:
        return [f"curve.h: its example {wrong}"]
    # From the first pose on, 10 m apart, and the measured point, which lies to the left of the chord and near it.
    points = [re.fullmatch(STAKE, line) for line in lines[:-1]]
    last = re.fullmatch(r"at (\S+), (\S+) m to the right", lines[-1])
    if len(points) != 8 or not all(points) or not last:
        return ["curve.h: its example prints\n" + "\n".join(lines)]
    found = [tuple(map(float, point.groups())) for point in points]
    if found[0] != (0.0, -36000.0, 12000.0, 0.5):
        return [f"curve.h: its example begins at {found[0]}"]
    for (_, x0, y0, _), (_, x1, y1, _) in zip(found, found[1:]):
        if not 9.98 < math.hypot(x1 - x0, y1 - y0) < 10.001:
            return ["curve.h: the points of its example are not 10 m apart"]
    station, offset = float(last.group(1)), float(last.group(2))
    # Distances are kept: the measured point is as far from the start as its station and offset say, but for the bend.
    if abs(math.hypot(station, offset) - math.hypot(30.0, 20.0)) > 1.0:
        return [f"curve.h: its example finds the point at {station}, {offset}"]
    return []


if f"```c\n{header_program('include/fenmark/curve.h')}```\n" not in read("docs/curve.md"):
    errors.append("docs/curve.md does not hold the program of fenmark/curve.h as it is")
if len(sys.argv) > 3:
    for example in (alignment_example, curve_example):
        errors += example(sys.argv[2], pathlib.Path(sys.argv[3]))

print("\n".join(errors) or f"{len(declared)} functions documented on {len(pages)} pages")
sys.exit(1 if errors else 0)
