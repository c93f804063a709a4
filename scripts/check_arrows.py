#!/usr/bin/env python3
"""Compares what each folder includes with the arrows that docs/architecture.md draws.

The page holds one line for each folder: "    folder -> what it may include". A folder that the page does not name, an
arrow that it does not draw, one that it draws and no include needs, and a circle among them are errors, so that the
map cannot drift from the house. So are headers of one system, and questions which system it is, outside src/platform.

check_arrows.py        run at the root of the repository
"""
import re
import subprocess
import sys
from collections import defaultdict

PAGE = "docs/architecture.md"
ARROW = re.compile(r"^    ([\w/]+) ->((?: [\w/]+)*)$")
# What POSIX and Windows have and the standard library has not.
SYSTEM_HEADER = re.compile(
    r"\s*#\s*include <((arpa|net|netinet|sys)/\w+|aio|dirent|dlfcn|fcntl|fnmatch|glob|grp|iconv|io|direct|langinfo|libgen"
    r"|mqueue|netdb|nl_types|poll|process|pthread|pwd|regex|sched|semaphore|shellapi|spawn|strings|syslog|termios|unistd"
    r"|utime|windows|winsock2|wordexp)(\.h)?>|\s*#\s*include <c?signal(\.h)?>")
SYSTEM_QUESTION = re.compile(
    r"\s*#\s*(if|ifdef|ifndef|elif)\b.*\b(_WIN32|_WIN64|WIN32|__MINGW\w+|_MSC_VER|__CYGWIN__|__linux\w*|__unix\w*|__APPLE__"
    r"|__FreeBSD__|_POSIX\w+|__EMSCRIPTEN__)\b")
EXPORT_MACROS = {"include/fenmark/alignment/record.h"}  # which symbols leave the library
INCLUDE = re.compile(r'^#include "([^"]+)"', re.MULTILINE)


def drawn():
    """The arrows of the page: folder -> set of folders."""
    with open(PAGE, encoding="utf-8") as page:
        rows = (ARROW.match(line.rstrip("\n")) for line in page)
        return {row[1]: set(row[2].split()) for row in rows if row}


def folder_of(path, folders):
    """The longest folder of the page that holds the path; None if there is none."""
    holding = [folder for folder in folders if path.startswith(folder + "/")]
    return max(holding, key=len, default=None)


def found(folders):
    """What the sources include: folder -> {folder: one file and include that shows it}, and files in no folder."""
    arrows, strangers = defaultdict(dict), []
    files = subprocess.run(["git", "ls-files", "src", "apps", "include"], capture_output=True, text=True, check=True)
    sources = [name for name in files.stdout.split() if name.endswith((".h", ".cpp", ".c"))]
    places = {re.sub(r"^(src|include|apps/fenmark|apps)/", "", name): name for name in sources}
    for place, name in places.items():
        here = folder_of(place, folders)
        if here is None and place == "main.cpp":
            here = "cli"  # the thin main of the command line
        if here is None:
            strangers.append(name)
            continue
        with open(name, encoding="utf-8") as source:
            for include in INCLUDE.findall(source.read()):
                there = folder_of(include, folders)
                if there is None and "/" in include:
                    strangers.append(f"{name}: {include}")
                elif there is not None and there != here:
                    arrows[here].setdefault(there, f"{name} includes {include}")
    return arrows, strangers


def of_one_system():
    """Sources outside src/platform that include a header of one system, or ask which system they are built for."""
    errors = []
    files = subprocess.run(["git", "ls-files", "src", "apps", "include"], capture_output=True, text=True, check=True)
    for name in files.stdout.split():
        if not name.endswith((".h", ".cpp", ".c")) or name.startswith("src/platform/") or name in EXPORT_MACROS:
            continue
        with open(name, encoding="utf-8") as source:
            for number, line in enumerate(source, 1):
                if SYSTEM_HEADER.match(line) or SYSTEM_QUESTION.match(line):
                    errors.append(f"{name}:{number}: belongs into src/platform: {line.strip()}")
    return errors


def circle(arrows):
    """A list of folders that lead back to the first of them; None if all arrows run down."""
    done = set()

    def walk(folder, way):
        if folder in way:
            return way[way.index(folder):] + [folder]
        if folder in done:
            return None
        for below in sorted(arrows.get(folder, ())):
            back = walk(below, way + [folder])
            if back:
                return back
        done.add(folder)
        return None

    return next((way for way in (walk(folder, []) for folder in sorted(arrows)) if way), None)


def main():
    page = drawn()
    arrows, strangers = found(page)
    errors = [f"{name}: in no folder of {PAGE}" for name in strangers]
    for folder in sorted(page):
        extra = set(arrows[folder]) - page[folder]
        errors += [f"{folder} -> {below}: not drawn ({arrows[folder][below]})" for below in sorted(extra)]
        errors += [f"{folder} -> {below}: drawn, and nothing needs it" for below in sorted(page[folder] - set(arrows[folder]))]
    way = circle(page)
    if way:
        errors.append("circle: " + " -> ".join(way))
    errors += of_one_system()
    for error in errors:
        print(f"check_arrows: {error}", file=sys.stderr)
    print(f"{len(page)} folders, {sum(len(below) for below in page.values())} arrows" + ("" if errors else ", as drawn"))
    return 1 if errors or not page else 0


if __name__ == "__main__":
    sys.exit(main())
