#!/usr/bin/env python3
"""Brings a tree of SIMA files into PostGIS, on the cores of this machine or on a Dask cluster.

A file is one task and one transaction: its rows are all there or not at all, whoever is killed and whenever. A file
that did not change since is passed over, so that a run that was broken off is taken up by starting it again.
"""
import argparse
import contextlib
import html
import itertools
import json
import os
import pathlib
import re
import shutil
import sqlite3
import struct
import subprocess
import sys
import tempfile
import time

import psycopg2
from distributed import Client, LocalCluster, as_completed, get_worker

COLUMNS = {
    "points": 'fid, geom, layer, "No", "Name", "Type"',
    "polylines": 'fid, geom, layer, "No", "Name", "Type", closed',
    "lots": 'fid, geom, layer, "No", "Name", "Type", area',
    "alignments": "fid, geom, name, layer, start_station, length",
    "alignment_elements": "alignment_id, place, type, start_x, start_y, direction, length, start_radius, end_radius,"
                          " clockwise"}
BLOCK = re.compile(r"^(?!fenmark: )[^\n]*?\.sim:(\d+): (?!note: )(?:(Err[A-Z]\d+(?:-\d+)?|error): )?(.*)$")
TEXT = str.maketrans({"\\": "\\\\", "\t": "\\t", "\n": "\\n", "\r": "\\r", "\0": "\ufffd"})
BATCH = 5000  # rows sent at once


def ewkb(blob, srid):
    """Hexadecimal EWKB of a geometry as a GeoPackage holds it: 8 bytes, a box, little-endian WKB."""
    if blob is None:
        return None
    begin = 8 + (0, 32, 48, 48, 64)[blob[3] >> 1 & 7]
    kind = struct.unpack_from("<I", blob, begin + 1)[0]
    return (struct.pack("<BII", 1, kind | 0x20000000, srid) + blob[begin + 5:]).hex()


def copy_rows(cursor, table, columns, rows):
    """Appends rows by COPY, in batches."""
    class Stream:
        pending, done = "", False

        def read(self, size):
            while not self.done and len(self.pending) < size:
                lines = ["\t".join("\\N" if value is None else str(value).translate(TEXT) for value in row) + "\n"
                         for row in itertools.islice(rows, BATCH)]
                self.pending += "".join(lines)
                self.done = len(lines) < BATCH
            taken, self.pending = self.pending[:size], self.pending[size:]
            return taken
    cursor.copy_expert(f"COPY {table} ({columns}) FROM STDIN", Stream())


def import_file(source, folder, settings):
    """Runs the program on a copy, since an archive is not to be written to. Returns counts, errors, the drawing."""
    copy, drawing = os.path.join(folder, "file.sim"), os.path.join(folder, "file.gpkg")
    zone = ["--zone", str(settings["zone"])] if settings["zone"] else []
    command = [settings["fenmark"], "import", "--json", "--drawing", drawing, *zone, copy]
    try:
        shutil.copyfile(source, copy)
        ran = subprocess.run(command, capture_output=True, timeout=settings["limit"], check=False,
                             env=dict(os.environ, LC_ALL="C.UTF-8"))
    except OSError as error:
        return None, [(None, None, f"cannot be read: {error.strerror}")], None
    except subprocess.TimeoutExpired:
        return None, [(None, None, f"not imported within {settings['limit']:g} s")], None
    said = ran.stderr.decode("utf-8", "replace").splitlines()
    errors = [(int(block[1]), block[2], block[3]) for block in map(BLOCK.match, said) if block]
    if ran.returncode != 0:
        reason = (said or [f"exit code {ran.returncode}"])[-1].replace(folder + os.sep, "")
        return None, errors + [(None, None, reason.removeprefix("fenmark: error: "))], None
    return json.loads(ran.stdout.decode("utf-8", "replace"))[0], errors, drawing


def store(cursor, path, row, errors, drawing, srid):
    """Replaces all that the database has of a file. The row of the file is the lock of whoever does the same."""
    names = ", ".join(row)
    cursor.execute(f"INSERT INTO files (path, {names}) VALUES (%s{', %s' * len(row)}) ON CONFLICT (path) DO UPDATE SET"
                   f" ({names}) = ROW ({', '.join('EXCLUDED.' + name for name in row)}) RETURNING id",
                   [path, *row.values()])
    key = cursor.fetchone()[0]
    for table in ("errors", *COLUMNS):
        cursor.execute(f"DELETE FROM {table} WHERE file_id = %s", [key])
    copy_rows(cursor, "errors", "file_id, line, code, message", ((key, *error) for error in errors))
    if row["status"] == "done":
        with contextlib.closing(sqlite3.connect(f"file:{drawing}?mode=ro", uri=True)) as package:
            package.create_function("ewkb", 1, lambda blob: ewkb(blob, srid))
            for table, columns in COLUMNS.items():
                rows = package.execute(f"SELECT {key}, {columns.replace('geom', 'ewkb(geom)')} FROM {table}")
                copy_rows(cursor, table, "file_id, " + columns, rows)


def do_file(path, state, settings):
    """One file into the database in one transaction. A task may run twice, also at once. Returns the file's status."""
    begun = time.monotonic()
    source = os.path.join(os.fsencode(settings["root"]), os.fsencode(path))
    with tempfile.TemporaryDirectory(dir=get_worker().local_directory) as folder, \
            contextlib.closing(psycopg2.connect(settings["database"])) as database:
        result, errors, drawing = import_file(source, folder, settings)
        row = {"state": state, "status": "failed", "points": None, "lots": None, "alignments": None,
               "refused": sum(line is not None for line, _, _ in errors), "seconds": time.monotonic() - begun,
               "bytes": os.stat(source).st_size if os.path.exists(source) else 0}
        if result:
            row |= {"points": result["points"], "lots": result["lots"], "alignments": len(result["alignments"])}
            counts = [result[kind] for kind in ("points", "lots", "longitudinal", "cross_sections")]
            row["status"] = "done" if any(counts + result["routes"]) else "empty"
        try:
            with database, database.cursor() as cursor:
                store(cursor, shown(path), row, errors, drawing, settings["srid"])
        except psycopg2.DataError as error:  # what the database cannot hold fails for good
            row["status"] = "failed"
            with database, database.cursor() as cursor:
                store(cursor, shown(path), row, errors + [(None, None, str(error).strip())], None, settings["srid"])
    return row["status"]


def shown(path):
    """A path as text: bytes that are no UTF-8 as \\xNN."""
    return os.fsencode(path).decode("utf-8", "backslashreplace")


def wanted_files(arguments, database, settings):
    """Path and state of each file of the tree that is not in the database as it is now."""
    with database.cursor() as cursor:
        cursor.execute("SELECT path, state, status FROM files")
        known = {path: (state, status) for path, state, status in cursor}
    options = f"{settings['version']} zone {settings['zone']}"
    for folder, folders, names in os.walk(arguments.tree):
        folders.sort()
        for name in sorted(names):
            if not name.lower().endswith(".sim"):
                continue
            path = os.path.relpath(os.path.join(folder, name), arguments.tree)
            try:
                status = os.stat(os.path.join(folder, name))
                state = f"{status.st_size} {status.st_mtime_ns} {options}"
            except OSError:
                state = "unreadable " + options
            was, outcome = known.get(shown(path), (None, None))
            if was != state or arguments.again or (arguments.retry and outcome == "failed"):
                yield path, state


def show_progress(done, total, failed, begun):
    if done % max(total // 100, 1) and done != total:
        return
    rate = done / max(time.monotonic() - begun, 1e-9)
    bar = "#" * (30 * done // max(total, 1))
    left = (total - done) / max(rate, 1e-9)
    print(f"\r[{bar:30}] {done}/{total}, {failed} failed, {rate:.1f} files/s, {left:.0f} s left ", end="",
          file=sys.stderr, flush=True)


def write_summary(page, database):
    """One page for people: totals, the most frequent errors, every failed file."""
    tables = [("Files", "SELECT status, count(*) AS files, sum(points) AS points, sum(lots) AS lots,"
                        " sum(alignments) AS alignments, sum(refused) AS \"refused records\", sum(bytes) AS bytes,"
                        " round(sum(seconds)::numeric, 1) AS seconds FROM files GROUP BY status ORDER BY status"),
              ("Errors", "SELECT code, count(*) AS records, count(DISTINCT file_id) AS files, min(message) AS message"
                         " FROM errors WHERE line IS NOT NULL GROUP BY code ORDER BY 2 DESC, 1 LIMIT 30"),
              ("Failed files", "SELECT path, message FROM files JOIN errors ON file_id = id"
                               " WHERE status = 'failed' AND line IS NULL ORDER BY path")]
    with open(page, "w", encoding="utf-8") as out, database.cursor() as cursor:
        out.write('<!DOCTYPE html><html><head><meta charset="utf-8"><title>Archive</title><style>body{font-family:'
                  "sans-serif}td,th{padding:2px 8px;text-align:left;border-bottom:1px solid #ccc}</style></head><body>")
        for title, query in tables:
            cursor.execute(query)
            out.write(f"<h2>{title}</h2>\n<table><tr>")
            out.write("".join(f"<th>{html.escape(column.name)}</th>" for column in cursor.description) + "</tr>\n")
            for row in cursor:
                cells = "".join(f"<td>{'' if value is None else html.escape(str(value))}</td>" for value in row)
                out.write(f"<tr>{cells}</tr>\n")
            out.write("</table>\n")
        out.write("</body></html>\n")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("tree", help="folder with *.sim files, at any depth")
    parser.add_argument("database", help='PostGIS database, as in "dbname=archive host=db"; PG* variables hold')
    parser.add_argument("--workers", type=int, default=os.cpu_count(), help="processes on this machine [its cores]")
    parser.add_argument("--scheduler", help="address of a running Dask cluster, in place of this machine's cores")
    parser.add_argument("--zone", type=int, choices=range(1, 20), metavar="1..19", help="plane rectangular zone")
    parser.add_argument("--fenmark", default="fenmark", help="the program, as the workers find it")
    parser.add_argument("--limit", type=float, default=300.0, help="seconds that a file may take [300]")
    parser.add_argument("--retry", action="store_true", help="try files again that failed")
    parser.add_argument("--again", action="store_true", help="import every file again")
    parser.add_argument("--summary", default="archive.html", help="page to write [archive.html]")
    arguments = parser.parse_args()
    asked = subprocess.run([arguments.fenmark, "--version"], capture_output=True, text=True, check=True)
    settings = {"root": os.path.abspath(arguments.tree), "database": arguments.database, "fenmark": arguments.fenmark,
                "zone": arguments.zone, "srid": 6668 + arguments.zone if arguments.zone else 0,
                "limit": arguments.limit, "version": asked.stdout.strip()}
    with contextlib.ExitStack() as stack:
        database = stack.enter_context(contextlib.closing(psycopg2.connect(arguments.database)))
        database.autocommit = True
        database.cursor().execute(pathlib.Path(__file__).with_name("schema.sql").read_text(encoding="utf-8"))
        files = list(wanted_files(arguments, database, settings))
        cluster = arguments.scheduler or stack.enter_context(LocalCluster(
            n_workers=arguments.workers, threads_per_worker=1, processes=True, dashboard_address=None))
        client = stack.enter_context(Client(cluster))
        tasks = client.map(do_file, *zip(*files), settings=settings, pure=False, retries=2) if files else []
        outcomes, begun = {"done": 0, "empty": 0, "failed": 0, "not tried": 0}, time.monotonic()
        for done, task in enumerate(as_completed(tasks), 1):
            outcomes[task.result() if task.status == "finished" else "not tried"] += 1
            if task.status != "finished":
                print(f"\nfenmark archive: {task.exception()}", file=sys.stderr)
            show_progress(done, len(tasks), outcomes["failed"] + outcomes["not tried"], begun)
            task.release()
        for table in ("points", "polylines", "lots", "alignments"):  # last: a load fills them in one go
            database.cursor().execute(f"CREATE INDEX IF NOT EXISTS {table}_geom ON {table} USING gist (geom)")
        write_summary(arguments.summary, database)
    print(f"\n{len(files)} files: " + ", ".join(f"{count} {outcome}" for outcome, count in outcomes.items()))
    return 2 if outcomes["not tried"] else 1 if outcomes["failed"] else 0


if __name__ == "__main__":
    sys.exit(main())
