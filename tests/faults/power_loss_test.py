#!/usr/bin/env python3
"""What is left of an import that a kill, or the power, cuts off at any of its calls.

A run of the program is recorded, call by call. From the record each state of the disk is made again that a cut could
leave: after a kill all that was written is there; after a power loss only what was synced is certain, and of the rest
nothing, all, or any part of it down to the sector, and of the names any beginning of what was done to them. In each
state the drawing must be the old one or the new one, whole; the log too; and a new log never stands beside an old
drawing. A following import must succeed and leave no other file. Without --all only some of the cuts are tried.

usage: power_loss_test.py PROGRAM TRACE [--all] [--seed=N]
"""

import copy
import os
import pathlib
import random
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

os.environ["LC_ALL"] = "C.UTF-8"  # fenmark speaks the language of the locale

PROGRAM, TRACE = sys.argv[1], sys.argv[2]
ALL = "--all" in sys.argv[3:]
SEED = next((int(a[7:]) for a in sys.argv[3:] if a.startswith("--seed=")), 20260131)

SECTOR = 512
TRIES = 6 if ALL else 1  # random states for each cut, beside the two extremes
MOMENTS = 200 if ALL else 10  # kills at random moments
STRIDE = 1 if ALL else 7  # of cuts
FOLLOWING = 5 if ALL else 3  # every so many states an import follows

SURVEY = ("A00,\r\n" + "".join(f"A01,{i},P{i},{i * 3}.5,{i * 7}.25,{i},\r\n" for i in range(1, 400)) + "A99,\r\n"
          "D00,1,L,1,\r\nB01,1,P1,\r\nB01,2,P2,\r\nB01,5,P5,\r\nD99,\r\n"
          "F00,1,1,CL,3,\r\nB01,1,P1,\r\nB01,9,P9,\r\nF99,\r\n"
          "H00,1,CL,\r\nH01,No.1,10.0,5.5,6.0,1,\r\nH99,\r\n").encode("cp932")


class Disk:
    """Files as the system shows them, and what of them is certain to outlive a power loss."""

    def __init__(self, files):
        self.names = {}
        self.contents = {}
        self.durable = {}
        self.pending = {}  # inode: calls since its last sync
        for inode, (name, content) in files.items():
            self.names[name] = inode
            self.contents[inode] = bytearray(content)
            self.durable[inode] = bytes(content)
            self.pending[inode] = []
        self.durable_names = dict(self.names)
        self.pending_names = []

    @staticmethod
    def change(content, call):
        kind, at, data = call
        if kind == "size":
            del content[at:]
            content.extend(bytes(at - len(content)))
        else:
            content.extend(bytes(max(0, at - len(content))))
            content[at:at + len(data)] = data

    @staticmethod
    def change_names(names, call):
        kind, name, other = call
        if kind == "create":
            names[name] = other
        elif kind == "unlink":
            names.pop(name, None)
        else:
            names[other] = names[name]
            if kind == "rename":
                del names[name]

    def apply(self, entry):
        kind = entry[0]
        if kind in ("write", "size"):
            _, inode, at, data = entry
            self.change(self.contents[inode], (kind, at, data))
            self.pending[inode].append((kind, at, data))
        elif kind == "sync":
            self.durable[entry[1]] = bytes(self.contents[entry[1]])
            self.pending[entry[1]] = []
        elif kind == "sync-folder":
            self.durable_names = dict(self.names)
            self.pending_names = []
        else:
            if kind == "create":
                inode = entry[2]
                self.contents[inode] = bytearray()
                self.durable[inode] = b""
                self.pending[inode] = []
            self.change_names(self.names, entry)
            self.pending_names.append(entry)

    def after_kill(self):
        return {name: bytes(self.contents[inode]) for name, inode in self.names.items()}

    def after_power_loss(self, choose):
        """choose is a random source; None keeps nothing that was not synced."""
        names = dict(self.durable_names)
        reached = choose.randint(0, len(self.pending_names)) if choose else 0
        for call in self.pending_names[:reached]:
            self.change_names(names, call)
        return {name: self.torn(inode, choose) for name, inode in names.items()}

    def torn(self, inode, choose):
        content = bytearray(self.durable[inode])
        for call in self.pending[inode] if choose else []:
            kind, at, data = call
            fate = choose.randrange(4)
            if fate == 0:
                continue
            if kind == "write" and fate == 1 and len(data) > SECTOR:
                self.change(content, (kind, at, data[:choose.randrange(len(data)) // SECTOR * SECTOR]))
            else:
                self.change(content, call)
        return bytes(content)


class PowerLoss(unittest.TestCase):
    def setUp(self):
        base = "/dev/shm" if os.path.isdir("/dev/shm") else None
        self.top = pathlib.Path(tempfile.mkdtemp(prefix="fenmark-", dir=base))
        self.addCleanup(shutil.rmtree, self.top, ignore_errors=True)
        self.folder = self.top / "survey"

    def fenmark(self, *arguments, **variables):
        return subprocess.run([PROGRAM, *map(str, arguments)], capture_output=True, timeout=120, check=False,
                              env={**os.environ, **{k: str(v) for k, v in variables.items()}})

    def lay(self, files):
        shutil.rmtree(self.folder, ignore_errors=True)
        self.folder.mkdir()
        for name, content in files.items():
            (self.folder / name).write_bytes(content)

    def files(self):
        return {path.name: path.read_bytes() for path in self.folder.iterdir()}

    def contents(self):
        if not (self.folder / "a.gpkg").exists():
            return None
        ran = self.fenmark("info", self.folder / "a.gpkg", "--json")
        self.assertEqual(ran.returncode, 0, ran.stderr)
        return ran.stdout

    def log(self):
        path = self.folder / "a_Input.log"
        return path.read_bytes() if path.exists() else None

    def recorded(self):
        """The calls of one import on what lies in the folder, and the disk before it."""
        disk = Disk({path.stat().st_ino: (path.name, path.read_bytes()) for path in self.folder.iterdir()})
        trace = self.top / "trace"
        trace.unlink(missing_ok=True)
        ran = self.fenmark("import", self.folder / "a.sim", LD_PRELOAD=TRACE, TRACE_FOLDER=self.folder,
                           TRACE_FILE=trace)
        self.assertEqual(ran.returncode, 0, ran.stderr)
        entries = []
        bytes_left = trace.read_bytes()
        while bytes_left:
            line, bytes_left = bytes_left.split(b"\n", 1)
            word, *rest = line.decode().split(" ")
            if word == "write":
                inode, at, size = map(int, rest)
                entries.append(("write", inode, at, bytes_left[:size]))
                bytes_left = bytes_left[size:]
            elif word == "size":
                entries.append(("size", int(rest[0]), int(rest[1]), b""))
            elif word == "sync":
                entries.append(("sync", int(rest[0])))
            elif word == "create":
                entries.append(("create", rest[1], int(rest[0])))
            elif word == "sync-folder":
                entries.append((word,))
            else:
                entries.append((word, rest[0], rest[1] if len(rest) > 1 else None))
        return disk, entries

    def check(self, state, old, new, follows):
        self.lay(state)
        drawing, log = self.contents(), self.log()
        self.assertIn(drawing, (old["drawing"], new["drawing"]), "the drawing is the old one or the new one")
        self.assertIn(log, (old["log"], new["log"]), "the log is the old one or the new one")
        if log != old["log"]:
            self.assertEqual(drawing, new["drawing"], "the log tells what the drawing holds")
        self.assertEqual((self.folder / "a.sim").read_bytes(), SURVEY)
        if follows:
            ran = self.fenmark("import", self.folder / "a.sim")
            self.assertEqual(ran.returncode, 0, ran.stderr)
            self.assertEqual(set(self.files()), {"a.sim", "a.gpkg", "a_Input.log"}, "nothing is left behind")

    def cut_everywhere(self, before):
        self.lay(before)
        old = {"drawing": self.contents(), "log": self.log()}
        disk, entries = self.recorded()
        new = {"drawing": self.contents(), "log": self.log()}
        self.assertNotEqual(old["drawing"], new["drawing"])
        self.assertGreater(len(entries), 20)
        end = copy.deepcopy(disk)
        for entry in entries:
            end.apply(entry)
        self.assertEqual(end.after_kill(), self.files(), "the record tells what happened")
        self.lay(end.after_power_loss(None))
        self.assertEqual((self.contents(), self.log()), (new["drawing"], new["log"]), "what is reported done is kept")
        choose = random.Random(SEED)
        states = 0
        for number, entry in enumerate(entries):
            disk.apply(entry)
            if number % STRIDE != 0 and entry[0] in ("write", "size"):
                continue
            tried = [("kill", disk.after_kill()), ("power", disk.after_power_loss(None))]
            tried += [("part", disk.after_power_loss(choose)) for _ in range(TRIES)]
            for kind, state in tried:
                states += 1
                with self.subTest(seed=SEED, cut=number, call=entry[:2], kind=kind):
                    self.check(state, old, new, states % FOLLOWING == 0)
        print(f"{len(entries)} calls, {states} states of the disk", file=sys.stderr)

    def there(self):
        self.lay({"a.sim": SURVEY})
        self.assertEqual(self.fenmark("import", self.folder / "a.sim").returncode, 0)
        before = self.files()
        before["a_Input.log"] = b"the log of another day\r\n"
        return before

    def test_into_a_new_drawing(self):
        self.cut_everywhere({"a.sim": SURVEY})

    def test_into_a_drawing_that_is_there(self):
        self.cut_everywhere(self.there())

    def test_killed_at_any_moment(self):
        before = self.there()
        old = {"drawing": self.contents(), "log": before["a_Input.log"]}
        self.lay(before)
        started = time.monotonic()
        self.assertEqual(self.fenmark("import", self.folder / "a.sim").returncode, 0)
        took = time.monotonic() - started
        new = {"drawing": self.contents(), "log": self.log()}
        choose = random.Random(SEED)
        killed = 0
        for moment in range(MOMENTS):
            self.lay(before)
            with subprocess.Popen([PROGRAM, "import", str(self.folder / "a.sim")], stdout=subprocess.DEVNULL,
                                  stderr=subprocess.DEVNULL) as run:
                time.sleep(choose.uniform(0.0, 1.2 * took))
                run.send_signal(signal.SIGKILL)
                killed += run.wait() == -signal.SIGKILL
            with self.subTest(seed=SEED, moment=moment):
                self.check(self.files(), old, new, moment % FOLLOWING == 0)
        print(f"{killed} of {MOMENTS} imports killed", file=sys.stderr)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
