"""Runs examples/archive over a tree of 300 files, some of them broken, while workers and the program itself are killed.

test_archive.py FENMARK SOURCE_FOLDER DSN     DSN: a server on which databases may be made, without dbname

Nothing here waits for a time: a program that stands in for `fenmark` kills its worker, or the whole run, from within a
file that holds a mark.
"""
import contextlib
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import unittest

import psycopg2

from make_archive import archive, encoded, write

FENMARK, SOURCE, DSN = os.path.abspath(sys.argv[1]), pathlib.Path(sys.argv[2]), sys.argv[3]
FILES, SEED = 300, 20240607
LONGEST = 300  # seconds that a run may take before it counts as hung
TABLES = {"files": "status, points, lots, alignments, refused, bytes",
          "errors": "line, code, message",
          "points": 'fid, ST_AsEWKB(geom), layer, "No", "Name", "Type"',
          "polylines": 'fid, ST_AsEWKB(geom), layer, "No", "Name", "Type", closed',
          "lots": 'fid, ST_AsEWKB(geom), layer, "No", "Name", "Type", area',
          "alignments": "fid, ST_AsEWKB(geom), name, layer, start_station, length",
          "alignment_elements": "alignment_id, place, type, start_x, start_y, direction, length, start_radius, end_radius"}
# Runs fenmark; before, it fells what the file asks for, once, and hangs where the file asks for that.
STAND_IN = """#!/bin/sh
for last; do :; done
if grep -qs '^Z00,FELL WORKER' -- "$last" && mkdir "$TRIAL/worker" 2>/dev/null; then kill -9 $PPID; fi
if grep -qs '^Z00,FELL RUN' -- "$last" && mkdir "$TRIAL/run" 2>/dev/null; then kill -9 "$(cat "$TRIAL/pid")"; fi
if grep -qs '^Z00,HANG' -- "$last"; then exec sleep 600; fi
exec "$FENMARK" "$@"
"""


class Archive(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(tempfile.mkdtemp(prefix="fenmark-archive-"))
        cls.addClassCleanup(shutil.rmtree, cls.folder, ignore_errors=True)
        cls.files = archive(FILES, SEED)
        good = [path for path, made in cls.files.items() if made.status == "done"]
        cls.fell(good[len(good) // 3], "WORKER")
        cls.fell(good[2 * len(good) // 3], "RUN")
        write(cls.folder / "tree", cls.files)
        cls.stand_in = cls.folder / "stand_in"
        cls.stand_in.write_text(STAND_IN, encoding="utf-8")
        cls.stand_in.chmod(0o755)
        cls.calm = cls.make_database("calm")
        cls.first = cls.run_archive("calm", cls.folder / "tree", FENMARK)

    @classmethod
    def fell(cls, path, what):
        made = cls.files[path]
        made.content = made.content + encoded([f"Z00,FELL {what},"])

    @classmethod
    def make_database(cls, name):
        with contextlib.closing(psycopg2.connect(DSN + " dbname=postgres")) as server:
            server.autocommit = True
            server.cursor().execute(f'CREATE DATABASE "{name}"')
        return name

    @classmethod
    def run_archive(cls, database, tree, program, *options):
        command = [sys.executable, "-B", str(SOURCE / "examples" / "archive" / "archive.py"), str(tree),
                   f"{DSN} dbname={database}", "--workers", "2", "--zone", "9", "--fenmark", str(program),
                   "--summary", str(cls.folder / "summary.html"), *options]
        trial = cls.folder / "trial"
        trial.mkdir(exist_ok=True)
        with subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, cwd=cls.folder,
                              env=dict(os.environ, TRIAL=str(trial), FENMARK=FENMARK)) as running:
            (trial / "pid").write_text(str(running.pid), encoding="utf-8")
            out, err = running.communicate(timeout=LONGEST)
        return subprocess.CompletedProcess(command, running.returncode, out.decode(), err.decode())

    @staticmethod
    def query(database, text):
        with contextlib.closing(psycopg2.connect(f"{DSN} dbname={database}")) as connection:
            with connection.cursor() as cursor:
                cursor.execute(text)
                return [tuple(bytes(v) if isinstance(v, memoryview) else v for v in row) for row in cursor]

    def rows(self, database):
        """Every row of every table, by the path of its file in place of its number."""
        found = {}
        for table, columns in TABLES.items():
            source = "files" if table == "files" else f"{table} JOIN files ON file_id = files.id"
            columns = columns if table == "files" else ", ".join(
                column if column.startswith("ST_") else f"{table}.{column}" for column in columns.split(", "))
            columns = columns.replace("geom", f"{table}.geom")
            found[table] = sorted(self.query(database, f"SELECT path, {columns} FROM {source}"), key=repr)
        return found

    @staticmethod
    def recipe(heading):
        """The commands that docs/archive.md shows below a heading."""
        page = (SOURCE / "docs" / "archive.md").read_text(encoding="utf-8")
        section = page.split(f"\n## {heading}\n")[1].split("\n## ")[0]
        return "\n".join(line[4:] for line in section.splitlines() if line.startswith("    "))

    def run_recipe(self, commands, folder):
        server = dict(part.split("=") for part in DSN.split())
        path = f"{pathlib.Path(FENMARK).parent}:{os.environ['PATH']}"
        ran = subprocess.run(["bash", "-euo", "pipefail", "-c", commands], cwd=folder, capture_output=True, text=True,
                             timeout=LONGEST, check=False,
                             env=dict(os.environ, PATH=path, PGHOST=server["host"], PGUSER=server["user"]))
        self.assertEqual(ran.returncode, 0, ran.stderr[-2000:])

    def test_the_recipe_for_gnu_parallel(self):
        folder = self.folder / "parallel"
        chosen = [made for made in self.files.values() if made.status == "done" and made.points][:4]
        for i, made in enumerate(chosen):
            path = folder / "surveys" / str(i) / f"{i}.sim"
            path.parent.mkdir(parents=True)
            path.write_bytes(made.content)
        self.make_database("archive")
        with contextlib.closing(psycopg2.connect(DSN + " dbname=archive")) as connection:
            connection.cursor().execute("CREATE EXTENSION postgis")
            connection.commit()
        self.run_recipe(self.recipe("Without a cluster: GNU parallel"), folder)
        self.assertEqual(self.query("archive", "SELECT count(*) FROM points"), [(sum(made.points for made in chosen),)])

    def test_the_recipe_for_flatgeobuf(self):
        folder = self.folder / "flatgeobuf"
        folder.mkdir()
        self.run_recipe(self.recipe("One file to hand on: FlatGeobuf").replace("dbname=archive", "dbname=calm"), folder)
        info = subprocess.run(["ogrinfo", "-so", "-al", folder / "points.fgb"], capture_output=True, text=True, check=True)
        held = self.query("calm", "SELECT count(*) FROM points WHERE ST_XMax(geom) < 1e9")[0][0]
        self.assertEqual(re.search(r"Feature Count: (\d+)", info.stdout)[1], str(held))

    def test_every_file_is_there_with_what_it_holds(self):
        self.assertEqual(self.first.returncode, 1, self.first.stderr[-2000:])  # some failed
        found = {row[0]: row[1:] for row in self.query("calm", "SELECT path, status, points, lots, alignments, refused"
                                                               " FROM files")}
        self.assertEqual(set(found), set(self.files))
        for path, made in self.files.items():
            counts = (None, None, None) if made.status == "failed" else (made.points, made.lots, made.alignments)
            self.assertEqual(found[path], (made.status, *counts, len(made.refused)), path)
        held = dict(self.query("calm", "SELECT path, count(*) FROM points JOIN files ON file_id = files.id GROUP BY 1"))
        self.assertEqual(held, {path: made.points for path, made in self.files.items() if made.points})
        self.assertEqual(self.query("calm", "SELECT count(*) FROM lots")[0][0], sum(f.lots for f in self.files.values()))
        self.assertEqual(self.query("calm", "SELECT DISTINCT ST_SRID(geom) FROM points"), [(6677,)])

    def test_a_point_stands_where_the_file_says(self):
        path, made = next((p, f) for p, f in self.files.items() if f.status == "done" and f.lots)
        fields = next(line for line in made.content.decode("cp932").splitlines() if line.startswith("A01,1,")).split(",")
        row = self.query("calm", 'SELECT ST_X(geom), ST_Y(geom), "Name" FROM points JOIN files ON file_id = files.id'
                                 f" WHERE path = '{path.replace(chr(39), chr(39) * 2)}' AND \"No\" = 1")
        self.assertEqual(row, [(float(fields[4]), float(fields[3]), fields[2])])

    def test_every_refused_record_and_every_failed_file_is_told(self):
        reported = sorted(self.query("calm", "SELECT path, line, code FROM errors JOIN files ON file_id = id"
                                         " WHERE line IS NOT NULL"))
        self.assertEqual(reported, sorted((p, line, code) for p, f in self.files.items() for line, code in f.refused))
        failed = self.query("calm", "SELECT path FROM errors JOIN files ON file_id = id WHERE line IS NULL")
        self.assertEqual(sorted(failed), sorted((p,) for p, f in self.files.items() if f.status == "failed"))

    def test_killed_workers_and_runs_change_no_row(self):
        database, tree = self.make_database("troubled"), self.folder / "tree"
        killed = self.run_archive(database, tree, self.stand_in)
        self.assertEqual(killed.returncode, -signal.SIGKILL, killed.stderr[-2000:])
        self.assertTrue((self.folder / "trial" / "worker").exists() and (self.folder / "trial" / "run").exists())
        before = self.query(database, "SELECT count(*) FROM files")[0][0]
        self.assertTrue(0 < before < FILES, before)
        resumed = self.run_archive(database, tree, self.stand_in)
        self.assertEqual(resumed.returncode, 1, resumed.stderr[-2000:])
        taken_up = int(re.search(r"^(\d+) files: ", resumed.stdout, re.MULTILINE)[1])
        self.assertLessEqual(taken_up, FILES - before)  # workers may have finished a file after the run was killed
        wanted = self.rows("calm")
        self.assertEqual(self.rows(database), wanted)
        nothing = self.run_archive(database, tree, self.stand_in)
        self.assertEqual((nothing.returncode, nothing.stdout.strip()),
                         (0, "0 files: 0 done, 0 empty, 0 failed, 0 not tried"))
        self.assertEqual(self.rows(database), wanted)
        again = self.run_archive(database, tree, self.stand_in, "--again")
        self.assertIn(f"{FILES} files: ", again.stdout)
        self.assertEqual(self.rows(database), wanted)

    def test_changed_and_hung_files(self):
        database, tree = self.make_database("small"), self.folder / "small"
        tree.mkdir()
        (tree / "a.sim").write_bytes(encoded(["A00,", "A01,1,a,1,2,3,", "A99,"]))
        (tree / "hung.sim").write_bytes(encoded(["Z00,HANG,"]))
        self.assertEqual(self.run_archive(database, tree, self.stand_in, "--limit", "2").returncode, 1)
        self.assertEqual(self.query(database, "SELECT path, message FROM errors JOIN files ON file_id = id"),
                         [("hung.sim", "not imported within 2 s")])
        (tree / "a.sim").write_bytes(encoded(["A00,", "A01,1,a,1,2,3,", "A01,2,b,5,2,3,", "A99,"]))
        changed = self.run_archive(database, tree, self.stand_in, "--limit", "2")
        self.assertIn("1 files: 1 done", changed.stdout)
        self.assertEqual(self.query(database, 'SELECT "Name" FROM points ORDER BY "No"'), [("a",), ("b",)])

    def test_the_summary_tells_every_failed_file(self):
        self.run_archive("calm", self.folder / "tree", FENMARK)  # nothing to do, but a page
        page = (self.folder / "summary.html").read_text(encoding="utf-8")
        for path, made in self.files.items():
            shown = path.replace("'", "&#x27;")
            self.assertEqual(f"<td>{shown}</td>" in page, made.status == "failed", path)
        self.assertIn("<td>ErrA01-2</td>", page)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
