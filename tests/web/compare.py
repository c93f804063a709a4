#!/usr/bin/env python3
# Compares two files, one written in the browser and one by the native program: equal bytes, or else texts and drawings
# whose numbers differ by the last digits alone, which the mathematics library decides. Prints what it found; ends with 1
# where the files differ.
import re
import sqlite3
import struct
import sys

TOLERANCE = 1e-12  # of a number, or of 1 where it is smaller
NUMBER = re.compile(rb"[-+]?\d+(?:\.\d+)?(?:[eE][-+]?\d+)?")


# Two programs write at two times; a stamp is a new number in each run.
MOMENT = re.compile(rb'\b(date|time)="[-0-9:]*"')
OF_THE_RUN = {"last_change", "time", "update_time", "stamp"}  # columns of drawings


def close(a, b):
    return abs(a - b) <= TOLERANCE * max(1.0, abs(a), abs(b))


def texts_agree(a, b):
    """Nothing but numbers differs, and those little. Returns how many differ, or None."""
    if NUMBER.split(a) != NUMBER.split(b):
        return None
    differing = [(x, y) for x, y in zip(NUMBER.findall(a), NUMBER.findall(b)) if x != y]
    return len(differing) if all(close(float(x), float(y)) for x, y in differing) else None


def geometries_agree(a, b):
    """Blobs of one length that differ in 64-bit reals alone, wherever these begin."""
    if len(a) != len(b):
        return False
    at = 0
    while at < len(a):
        if a[at] == b[at]:
            at += 1
            continue
        # The byte belongs to a real that began up to seven bytes before.
        for start in range(max(0, at - 7), at + 1):
            if start + 8 <= len(a) and close(struct.unpack_from("<d", a, start)[0], struct.unpack_from("<d", b, start)[0]):
                at = start + 8
                break
        else:
            return False
    return True


def rows(path):
    # The nodes of the index hold rounded boxes.
    connection = sqlite3.connect(f"file:{path}?mode=ro", uri=True)
    content = {}
    for name, sql in connection.execute("SELECT name, sql FROM sqlite_master ORDER BY name").fetchall():
        content["definition of " + name] = [(sql,)]
    tables = connection.execute("SELECT name FROM sqlite_master WHERE type = 'table' AND sql NOT LIKE 'CREATE VIRTUAL%'")
    for (name,) in tables.fetchall():
        columns = [c[1] for c in connection.execute(f'PRAGMA table_info("{name}")') if c[1] not in OF_THE_RUN]
        listed = ", ".join(f'"{c}"' for c in columns)
        if name == "fenmark_imports":
            # The folder of the file is that of the browser's memory; its name is the same.
            listed = listed.replace('"path"', "replace(path, rtrim(path, replace(path, '/', '')), '')")
        content[name] = connection.execute(f'SELECT {listed} FROM "{name}"').fetchall()
    return content


def drawings_agree(a, b):
    first, second = rows(a), rows(b)
    if first.keys() != second.keys():
        return None
    differing = 0
    for table, lines in first.items():
        if len(lines) != len(second[table]):
            print(f"{table}: {len(lines)} and {len(second[table])} rows")
            return None
        for one, other in zip(lines, second[table]):
            for x, y in zip(one, other):
                if x == y:
                    continue
                differing += 1
                alike = (
                    isinstance(x, float) and isinstance(y, float) and close(x, y)
                    or isinstance(x, bytes) and isinstance(y, bytes) and (table.startswith("rtree") or geometries_agree(x, y))
                )
                if not alike:
                    print(f"{table}: {x!r} and {y!r}")
                    return None
    return differing


def main():
    a, b = sys.argv[1:]
    with open(a, "rb") as file:
        first = file.read()
    with open(b, "rb") as file:
        second = file.read()
    if not first.startswith(b"SQLite format 3"):
        first, second = MOMENT.sub(rb'\1=""', first), MOMENT.sub(rb'\1=""', second)
    if first == second:
        print("equal bytes")
        return 0
    differing = drawings_agree(a, b) if first.startswith(b"SQLite format 3") else texts_agree(first, second)
    if differing is None:
        at = next((i for i, (x, y) in enumerate(zip(first, second)) if x != y), min(len(first), len(second)))
        print(f"{a} and {b} differ from byte {at}: {first[at - 60:at + 60]!r} and {second[at - 60:at + 60]!r}")
        return 1
    print(f"{differing} values differ by the last digits")
    return 0


sys.exit(main())
