#!/usr/bin/env python3
"""Names full of what formats treat as their own come back out of every format, as other programs read them.

usage: test_hostile_names.py PROGRAM     with ezdxf (of the system's Python), GDAL and xmllint as far as they are there
"""
import html.parser
import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as etree

os.environ["LC_ALL"] = "C.UTF-8"  # fenmark speaks the language of the locale

PROGRAM = os.path.abspath(sys.argv[1])
NAMES = ["<b>&amp;</b>", "]]>", "&quot;'`", "&#65;&lt;", "<!-- -->", "</name>", "<script>alert(1)</script>", "%%c%%d", "^J^ ^M",
         "\\U+0041\\P", "\\M+18140", "{\\fArial;x}", "$(PATH)", "=1+1", "髙﨑①", "${x}", "a;b|c", "\\\\", "\\n", "%s%n"]
EZDXF = """
import ezdxf, json, sys
document = ezdxf.readfile(sys.argv[1])
audit = document.audit()
print(json.dumps({"errors": [str(e.message) for e in audit.errors + audit.fixes],
                  "rows": [list(p.get_xdata("FENMARK"))[-3][1] for p in document.modelspace().query("POINT")]}))
"""


class Texts(html.parser.HTMLParser):
    def __init__(self):
        super().__init__()
        self.tags, self.texts = set(), set()

    def handle_starttag(self, tag, attrs):
        self.tags.add(tag)

    def handle_data(self, data):
        self.texts.add(data.strip())


class HostileNames(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(tempfile.mkdtemp(prefix="fenmark-"))
        cls.addClassCleanup(shutil.rmtree, cls.folder, ignore_errors=True)
        lines = ["A00,"]
        lines += ["A01,%d,%s,%d,%d,," % (i + 1, name, 100 + 20 * i, 50 * (i % 5)) for i, name in enumerate(NAMES)]
        lines += ["A99,", "D00,1,<&'>,1,", "B01,1,,", "B01,2,,", "B01,8,,", "D99,",
                  "F00,1,1,<road & 'x'>,3,", "B01,1,,", "B01,6,,", "F99,"]
        (cls.folder / "names.sim").write_bytes("".join(line + "\r\n" for line in lines).encode("cp932"))
        cls.fenmark("import", "names.sim", "--zone", "9", "-q")
        points = [e for e in json.loads(cls.fenmark("info", "names.gpkg", "--json"))["entities"] if e["type"] == "point"]
        names = [e["data"]["Name"] for e in points]
        assert names == NAMES, names

    @classmethod
    def fenmark(cls, *arguments):
        ran = subprocess.run([PROGRAM, *arguments], cwd=cls.folder, capture_output=True, check=False)
        if ran.returncode != 0:
            raise AssertionError(ran.stderr.decode())
        return ran.stdout

    def export(self, name, *options):
        self.fenmark("export", "names.gpkg", name, "-q", *options)
        return self.folder / name

    def lint(self, path):
        if shutil.which("xmllint"):
            ran = subprocess.run(["xmllint", "--noout", str(path)], capture_output=True, check=False)
            self.assertEqual((ran.returncode, ran.stderr), (0, b""))

    def test_dxf(self):
        python = next((p for p in (sys.executable, "/usr/bin/python3") if os.access(p, os.X_OK) and subprocess.run(
            [p, "-c", "import ezdxf"], capture_output=True, check=False).returncode == 0), None)
        if not python:
            self.skipTest("no ezdxf")
        for version in ("R12", "2000", "2018"):
            path = self.export(version + ".dxf", "--dxf-version", version)
            ran = subprocess.run([python, "-c", EZDXF, str(path)], capture_output=True, check=True)
            found = json.loads(ran.stdout)
            self.assertEqual(found["errors"], [], version)
            # As the format writes a caret, and a backslash that would begin a character's code.
            rows = [row.replace("\\U+005C", "\\").replace("^ ", "^") for row in found["rows"]]
            self.assertEqual(rows, NAMES, version)

    def test_geojson_and_kml(self):
        collection = json.loads(self.export("names.geojson").read_text(encoding="utf-8"))
        points = [f for f in collection["features"] if f["geometry"]["type"] == "Point"]
        self.assertEqual([f["properties"]["Name"] for f in points], NAMES)
        kml = self.export("names.kml")
        self.lint(kml)
        if not shutil.which("ogr2ogr"):
            self.skipTest("no GDAL")
        subprocess.run(["ogr2ogr", "-f", "GeoJSON", "read.geojson", "names.geojson"], cwd=self.folder, check=True)
        read = json.loads((self.folder / "read.geojson").read_text(encoding="utf-8"))
        self.assertEqual([f["properties"]["Name"] for f in read["features"] if f["geometry"]["type"] == "Point"], NAMES)
        texts = [node.text for node in etree.parse(kml).iter("{http://www.opengis.net/kml/2.2}name")]
        for name in NAMES:
            self.assertIn(name, texts)

    def test_landxml(self):
        for profile in ("landxml", "j-landxml"):
            path = self.export(profile + ".xml", "--profile", profile)
            self.lint(path)
            values = {v for node in etree.parse(path).iter() for v in node.attrib.values()}
            self.assertIn("<road & 'x'>", values)
            if profile == "landxml":
                self.assertTrue(set(NAMES) <= values, set(NAMES) - values)

    def test_svg_and_html(self):
        self.fenmark("plot", "names.gpkg", "names.svg", "-q", "--scale", "500", "--paper", "A1")
        self.lint(self.folder / "names.svg")
        tree = etree.parse(self.folder / "names.svg")
        self.assertFalse([node for node in tree.iter() if str(node.tag).endswith("script")])
        self.fenmark("report", "names.gpkg", "names.html", "-q")
        page = Texts()
        page.feed((self.folder / "names.html").read_text(encoding="utf-8"))
        self.assertFalse({"script", "b"} & page.tags)
        self.assertTrue(set(NAMES) <= page.texts, set(NAMES) - page.texts)

    def test_sima(self):
        self.export("again.sim")
        self.fenmark("import", "again.sim", "-q")
        entities = json.loads(self.fenmark("info", "again.gpkg", "--json"))["entities"]
        self.assertEqual([e["data"]["Name"] for e in entities if e["type"] == "point"], NAMES)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
