"""Processor time and bytes of a run of examples/archive: the whole, the program alone, the database.

measure_archive.py FENMARK SOURCE_FOLDER DSN POSTMASTER [FILES]     run by scripts/check_archive.sh --measure
"""
import contextlib
import os
import pathlib
import resource
import subprocess
import sys
import tempfile

import psycopg2

FENMARK, SOURCE, DSN, POSTMASTER = os.path.abspath(sys.argv[1]), pathlib.Path(sys.argv[2]), sys.argv[3], int(sys.argv[4])
FILES = int(sys.argv[5]) if len(sys.argv) > 5 else 2000
sys.path.insert(0, str(SOURCE / "tests" / "archive"))
from make_archive import archive, write  # noqa: E402


def children():
    used = resource.getrusage(resource.RUSAGE_CHILDREN)
    return used.ru_utime + used.ru_stime


def server():
    """Of the sessions that have ended, since the server counts them in."""
    fields = pathlib.Path(f"/proc/{POSTMASTER}/stat").read_text().rsplit(")", 1)[1].split()
    return sum(map(int, fields[11:15])) / os.sysconf("SC_CLK_TCK")


def ask(query):
    with contextlib.closing(psycopg2.connect(DSN + " dbname=measured")) as database, database.cursor() as cursor:
        cursor.execute(query)
        return cursor.fetchone()[0]


def run(tree, *options):
    before, before_server = children(), server()
    subprocess.run([sys.executable, "-B", str(SOURCE / "examples/archive/archive.py"), str(tree), DSN + " dbname=measured",
                    "--workers", "1", "--fenmark", FENMARK, "--summary", str(tree) + ".html", *options],
                   check=False, stderr=subprocess.DEVNULL, stdout=subprocess.DEVNULL)
    return children() - before, server() - before_server


def main():
    with contextlib.closing(psycopg2.connect(DSN + " dbname=postgres")) as database:
        database.autocommit = True
        database.cursor().execute("CREATE DATABASE measured")
    with tempfile.TemporaryDirectory() as folder:
        tree, empty, copy = pathlib.Path(folder, "tree"), pathlib.Path(folder, "empty"), pathlib.Path(folder, "copy.sim")
        empty.mkdir()
        files = archive(FILES, 1)
        write(tree, files)
        bytes_in = sum(len(made.content or b"") for made in files.values())
        start, start_server = run(empty)
        size = ask("SELECT pg_database_size('measured')")
        whole, whole_server = run(tree)
        grown = ask("SELECT pg_database_size('measured')") - size
        again, again_server = run(tree)
        before = children()
        for made in files.values():
            if made.content is not None:
                copy.write_bytes(made.content)
                subprocess.run([FENMARK, "import", "--json", "--drawing", str(copy) + ".gpkg", str(copy)], check=False,
                               stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
                copy.with_name("copy.sim.gpkg").unlink(missing_ok=True)
        alone = children() - before
        rows = ask("SELECT (SELECT count(*) FROM points) + (SELECT count(*) FROM lots) + (SELECT count(*) FROM polylines)"
                   " + (SELECT count(*) FROM alignments) + (SELECT count(*) FROM alignment_elements)")
    milliseconds = lambda seconds: f"{1000 * seconds / FILES:8.2f} ms a file"
    print(f"{FILES} files of {bytes_in / FILES:.0f} bytes, {rows / FILES:.1f} rows a file")
    print(f"start and end of a run       {start + start_server:8.2f} s")
    print(f"fenmark alone               {milliseconds(alone)}")
    print(f"workers with fenmark        {milliseconds(whole - start)}")
    print(f"PostgreSQL                  {milliseconds(whole_server - start_server)}")
    print(f"passed over at a second run {milliseconds(again + again_server - start - start_server)}")
    print(f"database                    {grown / FILES:8.0f} bytes a file, {grown / max(rows, 1):.0f} a row")


main()
