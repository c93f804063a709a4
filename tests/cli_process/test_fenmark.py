#!/usr/bin/env python3
"""Runs the fenmark program as its users do: as a process, with pipes, limits, locks and full disks.

usage: test_fenmark.py PROGRAM SOURCE_DIR
"""

import json
import os
import pathlib
import pty
import resource
import shutil
import signal
import sqlite3
import subprocess
import sys
import tempfile
import unittest

os.environ["LC_ALL"] = "C.UTF-8"  # fenmark speaks the language of the locale

PROGRAM, SOURCE = sys.argv[1], pathlib.Path(sys.argv[2])

POINTS = b"A00,\r\nA01,1,BP,0.000,0.000,,\r\nA01,2,EP,0.000,100.000,,\r\nA99,\r\n"
ROUTE = b"F00,1,1,CL,3,\r\nB01,1,BP,\r\nB01,2,EP,\r\nF99,\r\n"


class Fenmark(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="fenmark-"))
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)

    def file(self, name, content):
        path = self.folder / name
        path.write_bytes(content)
        return path

    def run_fenmark(self, *arguments, **options):
        options.setdefault("cwd", self.folder)
        return subprocess.run([PROGRAM, *map(str, arguments)], capture_output=True, timeout=120, **options)

    def files(self):
        return sorted(path.name for path in self.folder.iterdir())

    def test_version(self):
        ran = self.run_fenmark("--version")
        self.assertEqual(ran.returncode, 0)
        self.assertRegex(ran.stdout, rb"^fenmark \d+\.\d+\.\d+\n$")
        self.assertEqual(ran.stderr, b"")

    def test_wrong_usage_is_2(self):
        self.assertEqual(self.run_fenmark().returncode, 2)
        self.assertEqual(self.run_fenmark("import").returncode, 2)
        self.assertEqual(self.run_fenmark("no-such-command").returncode, 2)

    def test_import_writes_drawing_and_log_and_no_side_file(self):
        self.file("a.sim", POINTS + ROUTE)
        ran = self.run_fenmark("import", "a.sim")
        self.assertEqual(ran.returncode, 0, ran.stderr)
        self.assertEqual(ran.stdout.decode(), "エラー無し\n座標データから2個のポイントを作成\n平面線形【CL】を作成\n")
        self.assertEqual(self.files(), ["a.gpkg", "a.sim", "a_Input.log"])
        self.assertNotIn(b"\r", ran.stderr)

    def test_imports_at_once_into_a_new_drawing_arrive_or_say_so(self):
        for attempt in range(3):
            names = [f"{attempt}{letter}.sim" for letter in "abcd"]
            for name in names:
                self.file(name, POINTS)
            drawing = f"both{attempt}.gpkg"
            runs = [subprocess.Popen([PROGRAM, "import", name, "--drawing", drawing], cwd=self.folder,
                                     stdout=subprocess.PIPE, stderr=subprocess.PIPE) for name in names]
            reported = [run.communicate(timeout=120) for run in runs]
            arrived = []
            for name, run, (_, err) in zip(names, runs, reported):
                if run.returncode == 0:
                    arrived.append(name)
                else:
                    self.assertEqual(run.returncode, 1, err)
                    self.assertIn(b"fenmark: error: ", err)
                self.assertEqual((self.folder / name.replace(".sim", "_Input.log")).exists(), run.returncode == 0)
            self.assertTrue(arrived)
            entities = json.loads(self.run_fenmark("info", drawing, "--json").stdout)["entities"]
            self.assertEqual(sorted(entity["data"]["FileName"] for entity in entities), sorted(2 * arrived))

    def test_results_do_not_depend_on_the_locale(self):
        self.file("a.sim", POINTS + ROUTE)
        self.run_fenmark("import", "a.sim")
        plain = self.run_fenmark("station", "a.gpkg", "CL", "20.5", "1.25", env={"LC_ALL": "C"})
        other = self.run_fenmark("station", "a.gpkg", "CL", "20.5", "1.25", env={"LC_ALL": "de_DE.UTF-8"})
        self.assertEqual(plain.stdout, b"20.5 -1.25\n")
        self.assertEqual(other.stdout, plain.stdout)

    def test_info_is_json_that_a_program_reads(self):
        shutil.copy(SOURCE / "examples" / "road.sim", self.folder)
        self.run_fenmark("import", "road.sim")
        drawing = json.loads(self.run_fenmark("info", "road.gpkg", "--json").stdout)
        self.assertEqual(list(drawing), ["layers", "sites", "entities"])
        self.assertEqual(len(drawing["sites"][0]["alignments"]), 3)

    def test_drawing_is_a_database_that_other_programs_open(self):
        self.file("a.sim", POINTS + ROUTE)
        self.run_fenmark("import", "a.sim")
        with sqlite3.connect(self.folder / "a.gpkg") as database:
            self.assertEqual(database.execute("PRAGMA integrity_check").fetchone()[0], "ok")
            self.assertGreater(database.execute("SELECT count(*) FROM gpkg_contents").fetchone()[0], 0)

    def test_reading_works_in_a_folder_that_cannot_be_written(self):
        self.file("a.sim", POINTS + ROUTE)
        self.run_fenmark("import", "a.sim")
        before = (self.folder / "a.gpkg").read_bytes()
        os.chmod(self.folder / "a.gpkg", 0o444)
        os.chmod(self.folder, 0o555)
        self.addCleanup(os.chmod, self.folder, 0o755)
        for line in (["info", "a.gpkg"], ["station", "a.gpkg", "CL", "10"]):
            ran = self.run_fenmark(*line)
            self.assertEqual(ran.returncode, 0, ran.stderr)
        self.assertEqual((self.folder / "a.gpkg").read_bytes(), before)
        self.assertEqual(self.files(), ["a.gpkg", "a.sim", "a_Input.log"])

    def test_drawing_held_by_another_program(self):
        self.file("a.sim", POINTS)
        self.run_fenmark("import", "a.sim")
        before = (self.folder / "a.gpkg").read_bytes()
        holder = sqlite3.connect(self.folder / "a.gpkg", isolation_level=None)
        holder.execute("BEGIN EXCLUSIVE")
        ran = self.run_fenmark("import", "a.sim", "--quiet")
        holder.execute("ROLLBACK")
        holder.close()
        self.assertEqual(ran.returncode, 1)
        self.assertEqual(ran.stderr.count(b"\n"), 1, ran.stderr)
        self.assertIn(b"a.gpkg", ran.stderr)
        self.assertEqual((self.folder / "a.gpkg").read_bytes(), before)

    def limited(self, size):
        """Files of the process may not grow beyond the size: a disk that fills up."""

        def limit():
            resource.setrlimit(resource.RLIMIT_FSIZE, (size, size))

        return limit

    def test_full_disk_leaves_no_new_drawing(self):
        self.file("a.sim", POINTS)
        ran = self.run_fenmark("import", "a.sim", "--quiet", preexec_fn=self.limited(20000))
        self.assertEqual(ran.returncode, 1, ran.stderr)
        self.assertIn(b"a.gpkg", ran.stderr)
        self.assertEqual(ran.stderr.count(b"\n"), 1, ran.stderr)
        self.assertFalse((self.folder / "a.gpkg").exists())
        self.assertEqual([name for name in self.files() if name.startswith("a.gpkg")], [])

    def test_full_disk_leaves_an_old_drawing_as_it_was(self):
        self.file("a.sim", POINTS)
        self.run_fenmark("import", "a.sim")
        before = (self.folder / "a.gpkg").read_bytes()
        many = b"".join(b"A01,%d,P%d,%d.5,%d.25,,\r\n" % (i, i, i, i) for i in range(3, 20000))
        self.file("b.sim", b"A00,\r\n" + many + b"A99,\r\n")
        ran = self.run_fenmark("import", "b.sim", "--drawing", "a.gpkg", "--quiet",
                               preexec_fn=self.limited(len(before) + 100000))
        self.assertEqual(ran.returncode, 1, ran.stderr)
        self.assertEqual(ran.stderr.count(b"\n"), 1, ran.stderr)
        drawing = json.loads(self.run_fenmark("info", "a.gpkg", "--json").stdout)
        self.assertEqual(len(drawing["entities"]), 2)
        self.assertEqual([name for name in self.files() if name.startswith("a.gpkg")], ["a.gpkg"])

    def test_killed_import_leaves_the_drawing_whole(self):
        self.file("a.sim", POINTS)
        self.run_fenmark("import", "a.sim")
        many = b"".join(b"A01,%d,P%d,%d.5,%d.25,,\r\n" % (i, i, i, i) for i in range(3, 150000))
        self.file("b.sim", b"A00,\r\n" + many + b"A99,\r\n")
        for milliseconds in (20, 60, 120, 200, 300):
            process = subprocess.Popen([PROGRAM, "import", "b.sim", "--drawing", "a.gpkg", "--quiet"],
                                       cwd=self.folder, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            try:
                process.wait(milliseconds / 1000.0)
            except subprocess.TimeoutExpired:
                process.send_signal(signal.SIGKILL)
                process.wait()
            ran = self.run_fenmark("info", "a.gpkg", "--json")
            self.assertEqual(ran.returncode, 0, ran.stderr)
            count = len(json.loads(ran.stdout)["entities"])
            self.assertEqual((count - 2) % (150000 - 3), 0, "an import is whole or not there")

    def test_output_that_cannot_be_written(self):
        self.file("a.sim", POINTS + ROUTE)
        self.run_fenmark("import", "a.sim")
        if not os.path.exists("/dev/full"):
            self.skipTest("no device that is always full")
        with open("/dev/full", "wb") as full:
            ran = subprocess.run([PROGRAM, "info", "a.gpkg"], cwd=self.folder, stdout=full, stderr=subprocess.PIPE)
        self.assertEqual(ran.returncode, 1)
        self.assertIn(b"standard output", ran.stderr)

    def test_progress_bar_on_a_terminal_only(self):
        # Lots are drawn while the file is read, so this takes longer than the bar waits.
        lots = b"".join(b"D00,%d,L%d,1,\r\nB01,1,A,\r\nB01,2,B,\r\nD99,\r\n" % (i, i) for i in range(1, 400000))
        self.file("b.sim", b"A00,\r\nA01,1,A,0,0,,\r\nA01,2,B,0,9,,\r\nA99,\r\n" + lots)
        self.assertNotIn(b"\r", self.run_fenmark("preview", "b.sim").stderr)
        parent, child = pty.openpty()
        # Read while the program runs, so that it never waits for the terminal.
        process = subprocess.Popen([PROGRAM, "import", "b.sim"], cwd=self.folder, stdout=subprocess.DEVNULL,
                                   stderr=child)
        os.close(child)
        shown = b""
        while True:
            try:
                part = os.read(parent, 4096)
            except OSError:
                break
            if not part:
                break
            shown += part
        os.close(parent)
        self.assertEqual(process.wait(), 0)
        self.assertIn(b"%", shown)
        self.assertIn(b"\x1b[K", shown)
        self.assertRegex(shown, rb"writing \[=+ *\] \d+ %")

    def test_plot_and_export_are_files_that_other_programs_read(self):
        shutil.copy(SOURCE / "examples" / "road.sim", self.folder)
        self.run_fenmark("import", "road.sim", "--zone", "9")
        (self.folder / "out").mkdir()
        for name in ("road.svg", "road.dxf", "road.xml", "road.geojson", "road.kml", "road.csv", "out/road.sim"):
            command = "plot" if name.endswith(".svg") else "export"
            ran = self.run_fenmark(command, "road.gpkg", name)
            self.assertEqual(ran.returncode, 0, ran.stderr)
            self.assertGreater((self.folder / name).stat().st_size, 1000)
        if shutil.which("ogrinfo"):
            for name in ("road.dxf", "road.geojson", "road.kml", "road.csv", "road.gpkg"):
                ran = subprocess.run(["ogrinfo", "-al", "-so", name], cwd=self.folder, capture_output=True)
                self.assertEqual(ran.returncode, 0, ran.stderr)
                self.assertIn(b"Feature Count", ran.stdout)
                self.assertNotRegex(ran.stdout + ran.stderr, b"ERROR|Warning")
        if shutil.which("xmllint"):
            for name in ("road.svg", "road.xml", "road.kml"):
                self.assertEqual(subprocess.run(["xmllint", "--noout", name], cwd=self.folder).returncode, 0)

    def complete(self, *words):
        """What the completion offers for the last word."""
        script = (f'source "{SOURCE}/apps/fenmark/completion/fenmark.bash"\n'
                  'COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _fenmark; printf "%s\\n" "${COMPREPLY[@]}"')
        ran = subprocess.run(["bash", "-O", "extglob", "-c", script, "bash", "fenmark", *words], cwd=self.folder,
                             capture_output=True, text=True, check=True)
        return ran.stdout.split()

    def test_completion_offers_commands_options_and_files(self):
        if not shutil.which("bash"):
            self.skipTest("no bash")
        self.file("a.sim", POINTS)
        self.file("B.SIM", POINTS)
        self.file("c.txt", b"")
        self.assertIn("preview", self.complete("p"))
        self.assertEqual(sorted(self.complete("import", "")), ["B.SIM", "a.sim"])
        self.assertEqual(self.complete("import", "a.sim", "--only", "points,ce"), ["points,centre"])
        for command in ("import", "preview", "info", "station", "locate", "export", "plot"):
            help_text = self.run_fenmark(command, "--help").stdout.decode()
            offered = self.complete(command, "--")
            self.assertIn("--help", offered)
            for option in offered:
                self.assertIn(option, help_text)
            for word in (piece.strip("[];.") for piece in help_text.replace(",", " ").split()):
                if word.startswith("--"):
                    self.assertIn(word, offered, command)

    def options_of_help(self, command):
        text = self.run_fenmark(command, "--help").stdout.decode()
        words = (piece.strip("[];.") for piece in text.replace(",", " ").split())
        return {word.split("=")[0] for word in words if word.startswith("--")}

    def test_completion_knows_the_alignments_of_the_drawing(self):
        if not shutil.which("bash"):
            self.skipTest("no bash")
        shutil.copy(SOURCE / "examples" / "road.sim", self.folder)
        self.run_fenmark("import", "road.sim")
        names = self.run_fenmark("info", "--alignments", "road.gpkg").stdout.decode().splitlines()
        self.assertEqual(names, ["中心線", "旧道", "護岸"])
        environment = {**os.environ, "LC_ALL": "C.UTF-8"}
        script = (f'source "{SOURCE}/apps/fenmark/completion/fenmark.bash"\n'
                  'COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _fenmark; printf "%s\\n" "${COMPREPLY[@]}"')
        for words, expected in ((["station", "road.gpkg", ""], names), (["stakes", "road.gpkg", "中"], names[:1]),
                                (["plot", "road.gpkg", "a.svg", "--along", "旧"], names[1:2]),
                                (["import", "--drawing", "road.gpkg", "--alignment", ""], names)):
            ran = subprocess.run(["bash", "-O", "extglob", "-c", script, "bash", PROGRAM, *words], cwd=self.folder,
                                 env=environment, capture_output=True, text=True, check=True)
            self.assertEqual(ran.stdout.split(), expected, ran.stderr)

    def test_completion_of_fish_offers_commands_options_and_files(self):
        if not shutil.which("fish"):
            self.skipTest("no fish")
        self.file("a.sim", POINTS)
        self.file("c.txt", b"")
        home = self.folder / "home"
        home.mkdir()

        def complete(line):
            ran = subprocess.run(["fish", "--no-config", "-c", 'source $argv[1]; complete -C "$argv[2]"',
                                  f"{SOURCE}/apps/fenmark/completion/fenmark.fish", line], cwd=self.folder,
                                 env={**os.environ, "HOME": str(home), "LC_ALL": "C.UTF-8"}, capture_output=True,
                                 text=True, check=True)
            self.assertEqual(ran.stderr, "")
            return [offered.split("\t")[0] for offered in ran.stdout.splitlines()]

        self.assertEqual(complete("fenmark prev"), ["preview"])
        self.assertIn("a.sim", complete("fenmark import "))
        self.assertNotIn("c.txt", complete("fenmark import "))
        self.assertEqual(complete("fenmark import --only points,ce"), ["points,centre"])
        self.assertEqual(complete("fenmark import --encoding utf-1"), ["utf-16"])
        for command in ("import", "export", "report"):
            self.assertEqual(set(complete(f"fenmark {command} --")), self.options_of_help(command), command)

    def test_completion_of_zsh_declares_the_options_of_each_command(self):
        if not shutil.which("zsh"):
            self.skipTest("no zsh")
        # The functions that zsh brings for completion are stood in for by such that print what they are given.
        script = ('function _arguments() { if [[ $1 == -C ]]; then state=rest; else print -rl -- "$@"; fi }\n'
                  'function _describe() { }\nwords=("$2")\nsource "$1"')
        for command in ("import", "preview", "info", "station", "locate", "stakes", "report", "export", "plot"):
            ran = subprocess.run(["zsh", "-f", "-c", script, "zsh", f"{SOURCE}/apps/fenmark/completion/fenmark.zsh",
                                  command], capture_output=True, text=True, check=True)
            self.assertEqual(ran.stderr, "")
            declared = [line.split("[")[0] for line in ran.stdout.splitlines() if "--" in line.split("[")[0]]
            self.assertFalse([line for line in declared if "{" in line])
            options = {word for line in declared for word in [line.lstrip("*").split(")")[-1]] if word.startswith("--")}
            self.assertEqual(options, self.options_of_help(command), command)

    def test_examples_are_what_their_script_writes(self):
        script = self.folder / "make_examples.py"
        shutil.copy(SOURCE / "examples" / "make_examples.py", script)
        subprocess.run([sys.executable, str(script)], check=True, timeout=60)
        for name in ("road.sim", "cadastral.sim", "dirty.sim"):
            self.assertEqual((self.folder / name).read_bytes(), (SOURCE / "examples" / name).read_bytes(), name)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
