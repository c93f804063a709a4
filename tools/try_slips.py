#!/usr/bin/env python3
"""Makes deliberate slips in the writers of src/exchange, one at a time, and prints which their tests do not notice.

tools/try_slips.py FOLDER [--seed 1] [--slips 4] [--writer NAME]

A slip is what a tired hand makes: a number off by one (a group code, a count of decimals), a bracket or a slash that is
missing in a text, east taken for north. The sources are copied into FOLDER and built there, which goes quicker in that
of an earlier run; this checkout is not touched. What does not compile is no slip, and another one is drawn. A slip that
nothing notices is printed as a line of difference, for a test to be written or for a person to see that it changes no
file.
"""
import argparse
import pathlib
import random
import re
import subprocess
import sys

SOURCE = pathlib.Path(__file__).resolve().parent.parent
WRITERS = {
    "csv": ["csv.cpp", "csv_field.cpp"],
    "dxf": ["dxf.cpp", "dxf_frame.cpp", "dxf_writer.cpp"],
    "geojson": ["geojson.cpp", "geo_feature.cpp", "geographic.cpp"],
    "kml": ["kml.cpp"],
    "landxml": ["landxml.cpp", "main_points.cpp"],
    "sima": ["sima_file.cpp", "sima_lines.cpp", "sima_points.cpp", "sima_results.cpp", "sima_routes.cpp"],
    "stakes": ["stakes.cpp", "survey_text.cpp"],
    "plan": sorted("plan/" + path.name for path in (SOURCE / "src/exchange/plan").glob("*.cpp")),
    "report": sorted("report/" + path.name for path in (SOURCE / "src/exchange/report").glob("*.cpp")),
}
TESTS = "^(exchange|exports_process|report_figures|sima_round_trip)$"
TEXT = re.compile(r'"(?:[^"\\]|\\.)*"|\'(?:[^\'\\]|\\.)\'')
NUMBER = re.compile(r"(?<![\w.'])(\d+)(?![\w.'])")


def slips(line):
    """(kind, line with the slip) for each slip that this line allows."""
    # The size of a buffer that is large enough changes nothing.
    code = line.split("//")[0] if '"' not in line else line
    if not code.strip() or code.lstrip().startswith(("#", "//", "using", "case", "static_assert", "std::array<")):
        return
    texts = [match.span() for match in TEXT.finditer(code)]
    inside = lambda place: any(begin < place < end for begin, end in texts)
    for begin, end in texts:
        for place in range(begin + 1, end - 1):
            if code[place] in "[]{}<>()/" and end - begin > 3:
                yield "bracket", line[:place] + line[place + 1:]
    for match in NUMBER.finditer(code):
        if not inside(match.start()) or re.match(r'"\s*\d+\s*"$', code[match.start() - 1:match.end() + 1]):
            value = int(match[1])
            if value > 1:
                yield "number", line[:match.start()] + str(value + 1) + line[match.end():]
    for match in re.finditer(r"\.(x|y)\b", code):
        if not inside(match.start()):
            yield "place", line[:match.start(1)] + ("y" if match[1] == "x" else "x") + line[match.end(1):]


def candidates(folder, names):
    found = []
    for name in names:
        path = folder / "src/exchange" / name
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines()):
            found += [(path, number, line, kind, slipped) for kind, slipped in slips(line)]
    return found


def draw(rng, found):
    """The kinds in turn as far as there are any, so that one of them does not crowd out the others."""
    by_kind = {}
    for candidate in found:
        by_kind.setdefault(candidate[3], []).append(candidate)
    for kind in by_kind.values():
        rng.shuffle(kind)
    while any(by_kind.values()):
        for kind in sorted(by_kind):
            if by_kind[kind]:
                yield by_kind[kind].pop()


def quiet(*command, cwd):
    return subprocess.run(command, cwd=cwd, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False).returncode


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--slips", type=int, default=4, help="for each writer [4]")
    parser.add_argument("--writer", choices=WRITERS, action="append", help="these alone")
    arguments = parser.parse_args()
    folder = arguments.folder.resolve()
    folder.mkdir(parents=True, exist_ok=True)
    files = subprocess.run(["git", "ls-files", "-z"], cwd=SOURCE, capture_output=True, check=True).stdout.split(b"\0")
    for name in filter(None, files):
        path = pathlib.Path(name.decode())
        (folder / path).parent.mkdir(parents=True, exist_ok=True)
        content = (SOURCE / path).read_bytes()
        if not (folder / path).exists() or (folder / path).read_bytes() != content:
            (folder / path).write_bytes(content)
            (folder / path).chmod((SOURCE / path).stat().st_mode)
    build = ("cmake", "--build", "--preset", "dev", "--target", "fenmark", "test_exchange")
    test = ("ctest", "--preset", "dev", "--stop-on-failure", "-R", TESTS)
    if quiet("cmake", "--preset", "dev", "-DFENMARK_WINDOWS=OFF", cwd=folder) or quiet(*build, cwd=folder):
        sys.exit("the sources do not build as they are")
    if quiet(*test, cwd=folder):
        sys.exit("the tests fail as the sources are")
    print(f"seed {arguments.seed}")
    made = noticed = 0
    for writer in arguments.writer or WRITERS:
        rng, tried, seen = random.Random(f"{arguments.seed} {writer}"), 0, 0
        for path, number, line, kind, slipped in draw(rng, candidates(folder, WRITERS[writer])):
            if tried == arguments.slips:
                break
            whole = path.read_text(encoding="utf-8")
            lines = whole.splitlines()
            lines[number] = slipped
            path.write_text("\n".join(lines) + "\n", encoding="utf-8")
            try:
                if quiet(*build, cwd=folder):
                    continue
                tried += 1
                found = quiet(*test, cwd=folder) != 0
            finally:
                path.write_text(whole, encoding="utf-8")
            seen += found
            if not found:
                print(f"not noticed ({kind}) {path.relative_to(folder)}:{number + 1}\n-{line}\n+{slipped}", flush=True)
        print(f"{writer}: {seen} of {tried} noticed", flush=True)
        made, noticed = made + tried, noticed + seen
    print(f"{noticed} of {made} noticed")
    return 0 if noticed == made else 1


if __name__ == "__main__":
    sys.exit(main())
