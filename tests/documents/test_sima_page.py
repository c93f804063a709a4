"""Imports every file that docs/sima.md shows and compares what it reports with what the page says.

test_sima_page.py FENMARK SOURCE_FOLDER
"""
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

os.environ["LC_ALL"] = "C.UTF-8"  # fenmark speaks the language of the locale

BLOCKS = re.compile(r"^```sima\n(.*?)^```\n```log\n(.*?)^```$", re.MULTILINE | re.DOTALL)
REPORTED = re.compile(r"^[^\n]*?\.sim:(\d+): ((?:Err[^:]+)?)", re.MULTILINE)
FENMARK, FOLDER = sys.argv[1], pathlib.Path(sys.argv[2])


def reported(text, folder):
    """Line and code of each error block of an import; a block without a code is that of a missing point."""
    path = pathlib.Path(folder) / "page.sim"
    path.write_bytes(text.replace("\n", "\r\n").encode("cp932"))
    run = subprocess.run([FENMARK, "import", "--quiet", "--json", str(path)], capture_output=True, check=False)
    if run.returncode != 0:
        raise AssertionError(run.stderr.decode())
    blocks = [(int(line), code.strip() or "missing point") for line, code in REPORTED.findall(run.stderr.decode())]
    result = json.loads(run.stdout)
    return blocks, result[0] if isinstance(result, list) else result


class SimaPage(unittest.TestCase):
    def test_every_file_on_the_page_reports_what_the_page_says(self):
        page = (FOLDER / "docs" / "sima.md").read_text(encoding="utf-8")
        found = BLOCKS.findall(page)
        self.assertEqual(len(found), page.count("```sima"))
        self.assertGreaterEqual(len(found), 5)
        for text, log in found:
            expected = [tuple(row.split(": ", 1)) for row in log.splitlines()]
            expected = [(int(line), code) for line, code in expected]
            with self.subTest(first=text.splitlines()[0]), tempfile.TemporaryDirectory() as folder:
                blocks, result = reported(text, folder)
                self.assertEqual(blocks, expected)
                errors = result["errors"]
                self.assertEqual(errors if isinstance(errors, int) else len(errors), len(expected))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
