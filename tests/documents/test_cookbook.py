"""Runs every command of docs/cookbook.md and docs/cookbook.ja.md, and compares what the pages show with what is printed.

test_cookbook.py FENMARK SOURCE_FOLDER
"""
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys
import tempfile
import unittest

BLOCKS = re.compile(r"^```sh\n(.*?)^```\n(?:```text\n(.*?)^```$)?", re.MULTILINE | re.DOTALL)
FENMARK, FOLDER = os.path.abspath(sys.argv[1]), pathlib.Path(sys.argv[2])
PAGES = ("cookbook.md", "cookbook.ja.md")
TARGET = re.compile(r"\S+\.(?:gpkg|dxf|xml|geojson|kml|sim|csv|html|pdf)$")


def blocks_of(page):
    text = (FOLDER / "docs" / page).read_text(encoding="utf-8")
    found = BLOCKS.findall(text)
    assert len(found) == text.count("```sh") and sum(bool(shown) for _, shown in found) == text.count("```text")
    return found


class Cookbook(unittest.TestCase):
    def test_both_languages_have_the_same_commands(self):
        first, second = map(blocks_of, PAGES)
        self.assertEqual(first, second)
        self.assertGreaterEqual(sum(len(commands.splitlines()) for commands, _ in first), 20)

    def test_every_command_does_what_the_page_shows(self):
        with tempfile.TemporaryDirectory() as folder:
            shutil.copy(FOLDER / "examples" / "road.sim", folder)
            for commands, shown in blocks_of(PAGES[0]):
                for command in commands.splitlines():
                    with self.subTest(command=command):
                        self.run_one(command, shown, pathlib.Path(folder))

    def run_one(self, command, shown, folder):
        words = shlex.split(command)
        if words[0] == "fenmark":
            words[0] = FENMARK
        elif not shutil.which(words[0]):
            self.skipTest(f"no {words[0]}")
        if words[0] == FENMARK and not (folder / "gis.gpkg").exists() and "gis.gpkg" in words:
            self.skipTest("made by ogr2ogr")
        before = {path.name: path.stat().st_mtime_ns for path in folder.iterdir()}
        ran = subprocess.run(words, cwd=folder, capture_output=True, check=False,
                             env=dict(os.environ, LC_ALL="C.UTF-8"))
        printed = ran.stdout.decode("utf-8")
        if ran.returncode != 0 and "writes no PDF" in ran.stderr.decode():
            self.skipTest("a build without PDF")
        self.assertEqual(ran.returncode, 0, ran.stderr.decode())
        if shown:
            self.assertTrue(printed.startswith(shown), f"{printed}\nis not\n{shown}")
        if words[1] in ("export", "plot", "report", "import") or "--out" in words:
            name = words[words.index("--out") + 1] if "--out" in words else words[3] if words[1] != "import" else None
            if name:
                self.assertRegex(name, TARGET)
                self.assertGreater((folder / name).stat().st_size, 200)
            self.assertNotEqual({path.name: path.stat().st_mtime_ns for path in folder.iterdir()}, before)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
