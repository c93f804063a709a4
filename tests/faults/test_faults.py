#!/usr/bin/env python3
"""Imports with one system call, or one allocation, failing: each in turn.

After each run the drawing and the log are both what they were, byte for byte, or both the new ones whole; a failure is
reported and has an exit status; nothing else is left in the folder. Without --all only some of the places are tried.

usage: test_faults.py PROGRAM SHIM [--all]
"""

import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

os.environ["LC_ALL"] = "C.UTF-8"  # fenmark speaks the language of the locale

PROGRAM, SHIM = sys.argv[1], sys.argv[2]
ALL = "--all" in sys.argv[3:]

SURVEY = ("A00,\r\n" + "".join(f"A01,{i},P{i},{i * 3}.5,{i * 7}.25,{i},\r\n" for i in range(1, 40)) + "A99,\r\n"
          "D00,1,L,1,\r\nB01,1,P1,\r\nB01,2,P2,\r\nB01,5,P5,\r\nD99,\r\n"
          "F00,1,1,CL,3,\r\nB01,1,P1,\r\nB01,9,P9,\r\nF99,\r\n"
          "H00,1,CL,\r\nH01,No.1,10.0,5.5,6.0,1,\r\nH99,\r\n"
          "F00,2,1,IP,1,\r\nB01,x,P1,\r\nB01,1,P1,\r\nB01,9,P9,\r\nF99,\r\n").encode("cp932")

# How far the places that are tried lie apart. Memory: the first places are those of the command line.
STRIDE = {"EIO": 1, "ENOSPC": 1, "EINTR": 1, "SHORT": 1, "ENOMEM": 1} if ALL else \
         {"EIO": 4, "ENOSPC": 13, "EINTR": 13, "SHORT": 7, "ENOMEM": 211}


# Commands that write a file from a drawing.
WRITERS = (("export", ".dxf"), ("export", ".xml"), ("export", ".geojson"), ("export", ".csv"), ("export", ".sim"),
           ("export", ".kml"), ("plot", ".svg"), ("report", ".html"), ("report", ".csv"),
           ("stakes", ".csv", "CL", "--format", "csv"))
WRITER_STRIDE = {"EIO": 1, "ENOSPC": 1, "EINTR": 1, "SHORT": 1, "ENOMEM": 5} if ALL else \
                {"EIO": 5, "ENOSPC": 17, "EINTR": 17, "SHORT": 17, "ENOMEM": 997}

# What a read or write error is not.
WRONG_FOR_EIO = (b"the disk is full", b"there is no such drawing", b"must end in .sim", b"is damaged")


class Faults(unittest.TestCase):
    def setUp(self):
        self.top = pathlib.Path(tempfile.mkdtemp(prefix="fenmark-"))
        self.addCleanup(shutil.rmtree, self.top, ignore_errors=True)
        self.report = self.top / "report"
        self.folder = self.top / "survey"

    def fenmark(self, *arguments, **variables):
        return subprocess.run([PROGRAM, *map(str, arguments)], capture_output=True, timeout=120,
                              env={**os.environ, **{k: str(v) for k, v in variables.items()}})

    def files(self):
        return {path.name: path.read_bytes() for path in self.folder.iterdir()}

    def contents(self, drawing):
        """What the drawing holds, less the identifiers, which count the imports that were tried."""
        ran = self.fenmark("info", drawing, "--json")
        self.assertEqual(ran.returncode, 0, ran.stderr)
        return ran.stdout

    def lay(self, files):
        shutil.rmtree(self.folder, ignore_errors=True)
        self.folder.mkdir()
        for name, content in files.items():
            (self.folder / name).write_bytes(content)

    def run_with_fault(self, kind, place, arguments=()):
        """The run (an import unless another is given), and the call that failed; an empty name if the program made fewer."""
        self.report.unlink(missing_ok=True)
        ran = self.fenmark(*(arguments or ("import", self.folder / "a.sim")), LD_PRELOAD=SHIM, FAULT_FOLDER=self.folder,
                           FAULT_KIND=kind, FAULT_AT=place, FAULT_REPORT=self.report)
        return ran, self.report.read_text().strip() if self.report.exists() else ""

    def try_every_place(self, before):
        self.lay(before)
        self.assertEqual(self.fenmark("import", self.folder / "a.sim").returncode, 0)
        after = self.files()
        self.assertEqual(set(after), {"a.sim", "a.gpkg", "a_Input.log"})
        whole = self.contents(self.folder / "a.gpkg")
        tried = failed = 0
        for kind, stride in STRIDE.items():
            place = 1
            while True:
                self.lay(before)
                ran, call = self.run_with_fault(kind, place)
                if not call:
                    break
                tried += 1
                failed += ran.returncode != 0
                with self.subTest(kind=kind, place=place, call=call, code=ran.returncode,
                                  reported=ran.stderr.decode(errors="replace")[-300:]):
                    self.check(kind, ran, before, after, whole)
                place += stride
        self.assertGreater(tried, 20)
        self.assertGreater(failed, 10)
        print(f"{tried} faults, {failed} of them ended the import", file=sys.stderr)

    def check(self, kind, ran, before, after, whole):
        now = self.files()
        self.assertIn(ran.returncode, (0, 1))
        if ran.returncode == 1:
            self.assertIn(b"fenmark: error: ", ran.stderr)
        if kind == "EIO":
            for wrong in WRONG_FOR_EIO:
                self.assertNotIn(wrong, ran.stderr, "a disk that fails is reported as such")
        if ran.returncode == 1 and now.get("a_Input.log") == before.get("a_Input.log"):
            self.assertEqual(now.keys(), before.keys(), "nothing is left behind")
            self.assertEqual(now, before, "all is as it was")
            return
        self.assertEqual(now.keys(), after.keys(), "nothing is left behind")
        self.assertEqual(now["a.sim"], before["a.sim"])
        self.assertEqual(now["a_Input.log"], after["a_Input.log"], "the new log is whole")
        self.assertEqual(self.contents(self.folder / "a.gpkg"), whole, "the new drawing is whole")

    def test_into_a_new_drawing(self):
        self.try_every_place({"a.sim": SURVEY})

    def test_into_a_drawing_that_is_there(self):
        self.lay({"a.sim": SURVEY})
        self.assertEqual(self.fenmark("import", self.folder / "a.sim").returncode, 0)
        before = self.files()
        before["a_Input.log"] = b"the log of another day\r\n"
        self.try_every_place(before)

    def test_what_is_written_from_a_drawing(self):
        """A target that is there stays as it was, or is the new one whole; the drawing is never touched."""
        self.lay({"a.sim": SURVEY})
        drawing = self.folder / "a.gpkg"
        self.assertEqual(self.fenmark("import", self.folder / "a.sim", "--zone", "9").returncode, 0)
        base = {name: content for name, content in self.files().items() if name != "a_Input.log"}
        tried = failed = 0
        for number, (command, extension, *rest) in enumerate(WRITERS):
            target = self.folder / ("out" + extension)
            arguments = (command, drawing, *rest, "--out", target) if command == "stakes" else \
                        (command, drawing, target, *rest)
            self.lay(base)
            self.assertEqual(self.fenmark(*arguments).returncode, 0)
            new = target.read_bytes()
            before = {**base, target.name: b"of another day"}
            for kind, stride in WRITER_STRIDE.items():
                place = 1 + number % stride
                while True:
                    self.lay(before)
                    ran, call = self.run_with_fault(kind, place, arguments)
                    if not call:
                        break
                    tried += 1
                    failed += ran.returncode != 0
                    with self.subTest(writer=extension, kind=kind, place=place, call=call, code=ran.returncode,
                                      reported=ran.stderr.decode(errors="replace")[-300:]):
                        self.assertIn(ran.returncode, (0, 1))
                        now = self.files()
                        self.assertEqual(now.keys(), before.keys(), "nothing is left behind")
                        self.assertEqual(now["a.gpkg"], before["a.gpkg"], "the drawing is only read")
                        if ran.returncode == 1:
                            self.assertIn(b"fenmark: error: ", ran.stderr)
                            self.assertEqual(now[target.name], before[target.name], "the target is as it was")
                        else:
                            self.assertEqual(self.plain(now[target.name]), self.plain(new), "the target is whole")
                    place += stride
        self.assertGreater(failed, 10)
        print(f"{tried} faults, {failed} of them ended the command", file=sys.stderr)

    @staticmethod
    def plain(content):
        """Less the times that some formats hold."""
        return re.sub(rb"\d{4}[-/]\d\d[-/]\d\d|\d\d:\d\d(:\d\d)?Z?", b"", content)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
