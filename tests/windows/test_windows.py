#!/usr/bin/env python3
"""Runs fenmark.exe under Wine as people on Windows do, and compares what it writes with the native program.

usage: test_windows.py FOLDER NATIVE SOURCE_DIR     FOLDER holds fenmark.exe and hold.exe

Wine's prefix is that of WINEPREFIX, set up for Japanese (code page 932); `scripts/check_windows.sh` makes it.
"""

import json
import os
import pathlib
import pty
import re
import select
import shutil
import subprocess
import sys
import tempfile
import time
import unittest

from compare import difference

BUILT, NATIVE, SOURCE = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]).resolve(), pathlib.Path(sys.argv[3]).resolve()
WINE = os.environ.get("FENMARK_WINE", "/usr/lib/wine/wine64")

POINTS = b"A00,\r\nA01,1,BP,0.000,0.000,,\r\nA01,2,EP,0.000,100.000,,\r\nA99,\r\n"
ROUTE = b"F00,1,1,CL,3,\r\nB01,1,BP,\r\nB01,2,EP,\r\nF99,\r\n"
BROKEN = b"A00,\r\nA01,1,BP,x,0.000,,\r\nA99,\r\n"


class Windows(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="fenmark-"))
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)

    def file(self, name, content):
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)
        return path

    def run_fenmark(self, *arguments, cwd=None, **options):
        ran = subprocess.run([WINE, str(BUILT / "fenmark.exe"), *map(str, arguments)], capture_output=True,
                             timeout=300, cwd=cwd or self.folder, stdin=subprocess.DEVNULL, **options)
        # Wine's helper processes write here too when they end badly. A program that ends so has no exit code of ours.
        ran.stderr = b"".join(line for line in ran.stderr.splitlines(keepends=True) if not line.startswith(b"wine: "))
        return ran

    def done(self, *arguments, **options):
        ran = self.run_fenmark(*arguments, **options)
        self.assertEqual(ran.returncode, 0, ran.stderr.decode(errors="replace"))
        return ran

    def native(self, *arguments, cwd=None):
        return subprocess.run([NATIVE, *map(str, arguments)], capture_output=True, timeout=300, cwd=cwd or self.folder)

    def hold(self, mode, path):
        """Another program that has the file open; it lets go when its input is closed."""
        holder = subprocess.Popen([WINE, str(BUILT / "hold.exe"), mode, str(path)], cwd=self.folder,
                                  stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.addCleanup(holder.wait)
        self.addCleanup(holder.stdin.close)
        self.addCleanup(holder.stdout.close)
        self.assertEqual(holder.stdout.readline().strip(), b"held")
        return holder

    def rows(self, drawing):
        return [e["data"] for e in json.loads(self.done("info", drawing, "--json").stdout)["entities"] if e["data"]]

    def files(self, folder=None):
        return sorted(path.name for path in (folder or self.folder).iterdir())

    # --- the same as the native program ---

    def test_outputs_are_those_of_the_native_program(self):
        numbers = files = 0
        for example in ("road", "cadastral", "dirty"):
            here, there = self.folder / example / "windows", self.folder / example / "native"
            for folder in (here, there):
                folder.mkdir(parents=True)
                shutil.copy(SOURCE / "examples" / f"{example}.sim", folder)
            lines = [["preview", f"{example}.sim", "--json"], ["import", f"{example}.sim", "--zone", "9"],
                     ["info", f"{example}.gpkg"], ["info", f"{example}.gpkg", "--json"],
                     ["export", f"{example}.gpkg", "out.dxf"], ["export", f"{example}.gpkg", "out.xml"],
                     ["export", f"{example}.gpkg", "out.csv"], ["export", f"{example}.gpkg", "out.sim"],
                     ["export", f"{example}.gpkg", "out.geojson"], ["export", f"{example}.gpkg", "out.kml"],
                     ["report", f"{example}.gpkg", "out.html"], ["plot", f"{example}.gpkg", "out.svg"]]
            if example == "road":
                lines += [["export", "road.gpkg", "j.xml", "--profile", "j-landxml"],
                          ["stakes", "road.gpkg", "中心線", "--offset=-5,0,5", "--main-points", "--out", "stakes.csv"],
                          ["station", "road.gpkg", "中心線", "No.6+0.5", "-3.5"],
                          ["plot", "road.gpkg", "along.svg", "--profile", "中心線"]]
            for line in lines:
                ours, theirs = self.run_fenmark(*line, cwd=here), self.native(*line, cwd=there)
                with self.subTest(line=" ".join(line)):
                    self.assertEqual(ours.returncode, theirs.returncode, ours.stderr.decode(errors="replace"))
                    for one, other in ((ours.stdout, theirs.stdout), (ours.stderr, theirs.stderr)):
                        what, count = difference(one, other)
                        self.assertIsNone(what)
                        numbers += count
            self.assertEqual(self.files(here), self.files(there))
            for name in self.files(here):
                if name.endswith(".gpkg"):
                    continue
                with self.subTest(file=f"{example}/{name}"):
                    what, count = difference((here / name).read_bytes(), (there / name).read_bytes())
                    self.assertIsNone(what)
                    numbers += count
                    files += 1
            # Either program reads what the other wrote.
            what, count = difference(self.native("info", here / f"{example}.gpkg", "--json").stdout,
                                     self.native("info", there / f"{example}.gpkg", "--json").stdout)
            self.assertIsNone(what)
            self.assertEqual((here / f"{example}_Input.log").read_bytes(), (there / f"{example}_Input.log").read_bytes())
        self.assertGreater(files, 30)
        print(f"{files} files compared, {numbers} numbers differ in their last digits", file=sys.stderr)

    def test_exit_codes(self):
        self.file("a.sim", POINTS + ROUTE)
        self.file("broken.sim", BROKEN)
        self.file("a.txt", POINTS)
        self.assertEqual(self.run_fenmark("import", "a.sim").returncode, 0)
        self.assertEqual(self.run_fenmark("import", "missing.sim").returncode, 1)
        self.assertEqual(self.run_fenmark("import", "a.txt").returncode, 1)
        self.assertEqual(self.run_fenmark("info", "missing.gpkg").returncode, 1)
        self.assertEqual(self.run_fenmark("import").returncode, 2)
        self.assertEqual(self.run_fenmark("import", "broken.sim", "--strict").returncode, 3)
        ran = self.run_fenmark("import", "no/such/folder/a.sim")
        self.assertEqual(ran.returncode, 1)
        self.assertIn(b"No such file or directory", ran.stderr)
        ran = self.run_fenmark("import", "a.sim", "--drawing", "a.txt\\b.gpkg")
        self.assertEqual(ran.returncode, 1)
        self.assertIn(b"Not a directory", ran.stderr)
        ran = self.run_fenmark("import", "a.sim", "--drawing", "nowhere\\b.gpkg")
        self.assertEqual(ran.returncode, 1)
        self.assertIn(b"its folder does not exist", ran.stderr)

    def test_output_has_the_line_ends_of_the_native_program(self):
        self.file("a.sim", POINTS + ROUTE)
        ran = self.done("import", "a.sim", "--json")
        self.assertNotIn(b"\r", ran.stdout + ran.stderr)
        self.assertEqual(json.loads(ran.stdout)[0]["points"], 2)
        self.assertEqual(self.files(), ["a.gpkg", "a.sim", "a_Input.log"])

    # --- names ---

    def test_japanese_names_and_folders(self):
        # 表 and ソ end in a backslash in code page 932.
        self.file("測量 2026/表ソ/道路①.sim", POINTS + ROUTE)
        ran = self.done("import", "測量 2026\\表ソ\\道路①.sim", "--json")
        reported = json.loads(ran.stdout)[0]
        self.assertEqual(reported["file"], "測量 2026\\表ソ\\道路①.sim")
        self.assertEqual(reported["drawing"], "測量 2026\\表ソ\\道路①.gpkg")
        self.assertEqual(self.files(self.folder / "測量 2026/表ソ"), ["道路①.gpkg", "道路①.sim", "道路①_Input.log"])
        self.assertEqual({row["FileName"] for row in self.rows("測量 2026\\表ソ\\道路①.gpkg")}, {"道路①.sim"})
        # Written over, appended to and exported by the same names.
        self.done("import", "測量 2026\\表ソ\\道路①.sim", "--replace")
        self.done("export", "測量 2026\\表ソ\\道路①.gpkg", "測量 2026\\図面.dxf")
        self.assertGreater((self.folder / "測量 2026/図面.dxf").stat().st_size, 1000)
        # A character that code page 932 does not have.
        self.file("𠮷田.sim", POINTS)
        self.done("import", "𠮷田.sim")
        self.assertEqual({row["FileName"] for row in self.rows("𠮷田.gpkg")}, {"𠮷田.sim"})

    def test_slashes_and_backslashes_name_the_same_file(self):
        self.file("sub/r.sim", POINTS)
        for typed in ("sub/r.sim", "sub\\r.sim", ".\\sub/r.sim"):
            with self.subTest(typed=typed):
                self.done("import", typed, "--drawing", "sub/r.gpkg", "--replace")
                self.assertEqual({row["FileName"] for row in self.rows("sub\\r.gpkg")}, {"r.sim"})
                self.assertEqual(len(self.rows("sub\\r.gpkg")), 2, "--replace knows the file by its name")

    def test_names_from_the_root_of_a_drive(self):
        self.file("r.sim", POINTS)
        whole = "Z:" + str(self.folder).replace("/", "\\") + "\\r.sim"
        self.done("import", whole)
        self.assertEqual({row["FileName"] for row in self.rows("r.gpkg")}, {"r.sim"})

    def test_wildcards_name_files(self):
        for name in ("b.sim", "a.sim", "c.txt"):
            self.file("in/" + name, POINTS)
        self.done("import", "in\\*.sim", "--drawing", "all.gpkg")
        self.assertEqual([row["FileName"] for row in self.rows("all.gpkg")], ["a.sim", "a.sim", "b.sim", "b.sim"])
        ran = self.run_fenmark("import", "none*.sim")
        self.assertEqual(ran.returncode, 1)
        self.assertIn(b"none*.sim", ran.stderr)

    def test_paths_beyond_260_characters(self):
        deep = "/".join(["長い名前のフォルダー" * 4] * 8)
        path = self.file(deep + "/r.sim", POINTS + ROUTE)
        self.assertGreater(len(str(path)), 320)
        self.done("import", deep + "/r.sim")
        self.done("import", deep + "/r.sim", "--replace")
        self.assertEqual(self.files(path.parent), ["r.gpkg", "r.sim", "r_Input.log"])
        self.assertEqual({row["FileName"] for row in self.rows(deep + "/r.gpkg")}, {"r.sim"})
        self.done("export", deep + "/r.gpkg", deep + "/r.dxf")
        self.assertTrue((path.parent / "r.dxf").exists())

    # --- what others have open, and what may not be written ---

    def test_drawing_that_another_program_has_open(self):
        self.file("a.sim", POINTS)
        self.done("import", "a.sim")
        before = (self.folder / "a.gpkg").read_bytes(), (self.folder / "a_Input.log").read_bytes()
        for mode in ("lock", "alone"):
            with self.subTest(mode=mode):
                holder = self.hold(mode, "a.gpkg")
                ran = self.run_fenmark("import", "a.sim", "--quiet")
                holder.stdin.close()
                holder.wait()
                self.assertEqual(ran.returncode, 1, ran.stdout)
                self.assertEqual(ran.stderr.count(b"\n"), 1, ran.stderr)
                self.assertRegex(ran.stderr, b"a.gpkg: .*another program")
                self.assertEqual(((self.folder / "a.gpkg").read_bytes(), (self.folder / "a_Input.log").read_bytes()), before)
                self.assertEqual(self.files(), ["a.gpkg", "a.sim", "a_Input.log"])
        self.done("import", "a.sim")

    def test_export_over_a_file_that_another_program_has_open(self):
        self.file("a.sim", POINTS)
        self.done("import", "a.sim")
        self.file("a.csv", b"old")
        for mode in ("reader", "alone"):
            with self.subTest(mode=mode):
                holder = self.hold(mode, "a.csv")
                ran = self.run_fenmark("export", "a.gpkg", "a.csv")
                holder.stdin.close()
                holder.wait()
                self.assertEqual(ran.returncode, 1)
                self.assertIn(b"it is open in another program", ran.stderr)
                self.assertEqual((self.folder / "a.csv").read_bytes(), b"old")
                self.assertEqual(self.files(), ["a.csv", "a.gpkg", "a.sim", "a_Input.log"])
        self.done("export", "a.gpkg", "a.csv")
        self.assertNotEqual((self.folder / "a.csv").read_bytes(), b"old")

    def test_files_that_may_only_be_read(self):
        self.file("a.sim", POINTS)
        self.done("import", "a.sim")
        before = (self.folder / "a.gpkg").read_bytes()
        (self.folder / "a.gpkg").chmod(0o444)
        ran = self.run_fenmark("import", "a.sim")
        self.assertEqual(ran.returncode, 1, ran.stderr)
        self.assertIn(b"a.gpkg: cannot be written", ran.stderr)
        self.assertEqual((self.folder / "a.gpkg").read_bytes(), before)
        self.done("info", "a.gpkg")
        self.file("a.csv", b"old").chmod(0o444)
        ran = self.run_fenmark("export", "a.gpkg", "a.csv")
        self.assertEqual(ran.returncode, 1)
        self.assertEqual((self.folder / "a.csv").read_bytes(), b"old")

    def test_what_a_killed_program_left_goes_and_what_another_holds_stays(self):
        self.file("a.sim", POINTS)
        self.done("import", "a.sim")
        self.file("a.csv.abc123.partial", b"left")
        self.file("a.csv.other.partial", b"a file of someone else")
        self.done("export", "a.gpkg", "a.csv")
        self.assertEqual(self.files(), ["a.csv", "a.csv.other.partial", "a.gpkg", "a.sim", "a_Input.log"])

    def test_devices_are_not_read(self):
        ran = self.run_fenmark("import", "NUL")
        self.assertEqual(ran.returncode, 1)
        self.assertIn(b"is not an ordinary file", ran.stderr)

    # --- consoles ---

    def on_console(self, *arguments):
        """What a console shows, less the sequences that move its cursor."""
        parent, child = pty.openpty()
        process = subprocess.Popen([WINE, str(BUILT / "fenmark.exe"), *arguments], cwd=self.folder, stdin=child,
                                   stdout=child, stderr=child, env={**os.environ, "TERM": "xterm"})
        os.close(child)
        shown = b""
        deadline = time.monotonic() + 120
        while time.monotonic() < deadline:
            if not select.select([parent], [], [], 1)[0]:
                if process.poll() is not None:
                    break
                continue
            try:
                part = os.read(parent, 4096)
            except OSError:
                break
            if not part:
                break
            shown += part
        os.close(parent)
        self.assertEqual(process.wait(10), 0)
        return re.sub(r"\x1b\[[0-9;?]*[A-Za-z]|\x1b\][^\x07]*\x07|\x1b.", "", shown.decode(errors="replace"))

    def test_console_of_code_page_932_shows_japanese(self):
        self.file("道路.sim", POINTS + ROUTE)
        shown = self.on_console("import", "道路.sim")
        self.assertIn("エラー無し", shown)
        self.assertIn("道路.gpkg", shown)
        self.assertNotIn("\ufffd", shown)

    def test_prefix_is_of_code_page_932(self):
        shown = subprocess.run([WINE, "reg", "query", "HKLM\\System\\CurrentControlSet\\Control\\Nls\\CodePage", "/v", "ACP"],
                               capture_output=True, timeout=120, stdin=subprocess.DEVNULL).stdout
        self.assertIn(b"932", shown)


if __name__ == "__main__":
    os.environ.setdefault("WINEDEBUG", "-all")
    unittest.main(argv=[sys.argv[0], *sys.argv[4:]])
