#!/usr/bin/env python3
"""Uses the zip and the installer for Windows as people do: a program of one's own over the DLL, an import from the
installed folder, and the way back.

usage: test_products.py DIST NATIVE SOURCE_DIR     DIST holds the zip and the installer; NATIVE is a native fenmark in the
                                                   build folder that it was made in
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
import zipfile

DIST, NATIVE, SOURCE = (pathlib.Path(a).resolve() for a in sys.argv[1:4])
WINE = os.environ.get("FENMARK_WINE", "/usr/lib/wine/wine64")
POINTS = b"A00,\r\nA01,1,BP,0.000,0.000,,\r\nA01,2,EP,0.000,100.000,,\r\nA99,\r\n"
ENTRY = "HKCU\\Software\\Classes\\SystemFileAssociations\\.sim\\shell\\Fenmark"


def run(*command, **options):
    return subprocess.run([str(part) for part in command], capture_output=True, timeout=300, stdin=subprocess.DEVNULL, **options)


class Products(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="fenmark-"))
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)

    def unpacked(self):
        archive = next(DIST.glob("fenmark-*-windows.zip"))
        with zipfile.ZipFile(archive) as content:
            content.extractall(self.folder)
            names = content.namelist()
        roots = {name.split("/")[0] for name in names}
        self.assertEqual(roots, {archive.name.replace("-windows.zip", "")}, "all of it lies in one folder")
        return self.folder / roots.pop()

    def done(self, *command, **options):
        ran = run(*command, **options)
        self.assertEqual(ran.returncode, 0, ran.stdout.decode(errors="replace") + ran.stderr.decode(errors="replace"))
        return ran.stdout

    def query(self, *words):
        return run(WINE, "reg", "query", *words)

    def test_zip_holds_what_people_start_with(self):
        top = self.unpacked()
        for name in ("fenmark.exe", "fenmark-import.cmd", "LICENSE.txt", "examples/road.sim", "alignment/bin/fenmark-alignment.dll",
                     "alignment/lib/fenmark-alignment.lib", "alignment/lib/fenmark-alignment.def",
                     "alignment/include/fenmark/alignment.h", "alignment/lib/cmake/Fenmark/FenmarkConfig.cmake"):
            self.assertTrue((top / name).is_file(), name)
        text = (top / "はじめに.txt").read_bytes()
        self.assertTrue(text.startswith(b"\xef\xbb\xbf"), "old editors know UTF-8 by the mark alone")
        self.assertEqual(text.count(b"\n"), text.count(b"\r\n"))
        self.assertIn("fenmark-import.cmd", text.decode("utf-8-sig"))

    def test_program_over_the_dll_prints_what_the_native_one_prints(self):
        top = self.unpacked()
        example = SOURCE / "examples/alignment"
        self.done("cmake", "-G", "Ninja", "-S", example, "-B", "made", f"-DFenmark_DIR={top}/alignment/lib/cmake/Fenmark",
                  f"-DCMAKE_TOOLCHAIN_FILE={SOURCE}/cmake/WindowsToolchain.cmake", cwd=self.folder)
        self.done("cmake", "--build", "made", cwd=self.folder)
        shutil.copy(top / "alignment/bin/fenmark-alignment.dll", self.folder / "made")
        ours = self.done(WINE, "made/stake_curve.exe", cwd=self.folder)
        static = NATIVE.parents[2] / "src/alignment/libfenmark_alignment_static.a"
        self.assertTrue(static.exists(), f"{static} is built with the native program")
        self.done("gcc", "-std=c99", f"-I{SOURCE}/include", "-c", example / "stake_curve.c", "-o", self.folder / "stake.o")
        self.done("g++", self.folder / "stake.o", static, "-o", self.folder / "stake_curve")
        theirs = self.done(self.folder / "stake_curve")
        self.assertEqual(ours.replace(b"\r\n", b"\n"), theirs)
        self.assertGreater(theirs.count(b"\n"), 10)
        # The program takes the functions from the DLL, as dllimport says.
        needed = self.done("x86_64-w64-mingw32-objdump", "-p", self.folder / "made/stake_curve.exe").decode()
        self.assertIn("DLL Name: fenmark-alignment.dll", needed)

    def test_header_says_where_symbols_come_from(self):
        source = '#include <fenmark/alignment.h>\n#include <fenmark/curve.h>\n'
        for definition, expected in ((None, "dllimport"), ("FENMARK_ALIGNMENT_BUILD", "dllexport"), ("FENMARK_ALIGNMENT_STATIC", None)):
            output = subprocess.run(["x86_64-w64-mingw32-gcc-posix", "-E", f"-I{SOURCE}/include", *([f"-D{definition}"] if definition else []), "-"],
                                  input=source, capture_output=True, text=True, check=True).stdout
            marked = set(re.findall(r"__declspec\s*\(\s*(dll\w+)\s*\)|__attribute__\s*\(\(\s*(dll\w+)\s*\)\)", output))
            names = {a or b for a, b in marked}
            self.assertEqual(names, {expected} if expected else set(), definition)

    def test_installer_puts_everything_in_place_and_takes_it_away(self):
        target = "C:\\Fenmark試し"
        there = pathlib.Path(os.environ["WINEPREFIX"]) / "drive_c/Fenmark試し"
        path_before = self.query("HKCU\\Environment", "/v", "Path")
        kept = "C:\\kept;" + ";".join(f"C:\\a folder of others\\number {i}" for i in range(60))  # beyond 1024 characters
        self.done(WINE, "reg", "add", "HKCU\\Environment", "/v", "Path", "/t", "REG_EXPAND_SZ", "/d", kept, "/f")
        self.done(WINE, next(DIST.glob("fenmark-*-setup.exe")), "/S", f"/D={target}")
        try:
            self.assertTrue((there / "fenmark.exe").is_file())
            path = self.query("HKCU\\Environment", "/v", "Path").stdout.decode("cp932", errors="replace")
            self.assertIn(kept + ";" + target, path)
            self.assertIn("REG_EXPAND_SZ", path)
            entry = self.query(ENTRY, "/ve").stdout.decode("cp932", errors="replace")
            self.assertIn("Fenmarkで読み込む", entry)
            command = self.query(ENTRY + "\\command", "/ve").stdout.decode("cp932", errors="replace")
            self.assertIn(f'cmd.exe /c ""{target}\\fenmark-import.cmd" "%1""', command)
            # What the entry runs.
            (self.folder / "測 量.sim").write_bytes(POINTS)
            file = "Z:" + str(self.folder).replace("/", "\\") + "\\測 量.sim"
            ran = run(WINE, "cmd", "/c", str(target) + "\\fenmark-import.cmd", file, env={**os.environ, "FENMARK_NO_PLAN": "1"})
            self.assertEqual(sorted(p.name for p in self.folder.iterdir()),
                             ["測 量.gpkg", "測 量.sim", "測 量_Input.log", "測 量_Plan.svg"], ran.stdout + ran.stderr)
            (there / "mine.txt").write_bytes(b"of the user")
        finally:
            # _?= keeps the uninstaller where it is, so that its end can be waited for.
            self.done(WINE, there / "uninstall.exe", "/S", f"_?={target}")
        self.assertEqual([p.name for p in there.iterdir() if p.name != "uninstall.exe"], ["mine.txt"], "the user's file stays")
        self.assertNotEqual(self.query(ENTRY).returncode, 0)
        self.assertIn(kept, self.query("HKCU\\Environment", "/v", "Path").stdout.decode("cp932", errors="replace"))
        self.assertNotIn("試し", self.query("HKCU\\Environment", "/v", "Path").stdout.decode("cp932", errors="replace"))
        shutil.rmtree(there)
        if path_before.returncode != 0:
            self.done(WINE, "reg", "delete", "HKCU\\Environment", "/v", "Path", "/f")


if __name__ == "__main__":
    os.environ.setdefault("WINEDEBUG", "-all")
    unittest.main(argv=[sys.argv[0], *sys.argv[4:]])
