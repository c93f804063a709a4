"""The table of functions is what the C headers declare and what the list of exports names."""

import ctypes
import pathlib
import re
import unittest

from fenmark_alignment import functions, raw, records

ROOT = pathlib.Path(__file__).resolve().parents[2]


def declared(family):
    """Prototypes of one header, in the table's notation."""
    header = (ROOT / "include/fenmark/alignment" / f"{family}.h").read_text(encoding="utf-8")
    header = re.sub(r"/\*.*?\*/", "", header, flags=re.S)
    found = re.findall(r"^FENMARK_ALIGNMENT_API\s+(.*?);", header, flags=re.S | re.M)
    return [re.sub(r"\s+", " ", text).strip() for text in found]


class Table(unittest.TestCase):
    def test_it_is_what_the_headers_declare(self):
        families = {}
        for line in functions.TABLE.strip().splitlines():
            if line.startswith("#"):
                family = line[1:].split(":")[0].strip()
                families[family] = []
            else:
                families[family].append(line)
        headers = {p.stem for p in (ROOT / "include/fenmark/alignment").glob("*.h")}
        self.assertEqual(set(families), headers)
        for family, lines in families.items():
            self.assertEqual(lines, declared(family), family)

    def test_it_names_every_exported_symbol(self):
        lines = (ROOT / "docs/exports.txt").read_text(encoding="utf-8").split("\n")
        exported = {line for line in lines if line and not line.startswith(("#", "fmk_"))}
        names = [p.name for p in functions.prototypes()]
        self.assertEqual(set(names), exported)
        self.assertEqual(len(names), len(set(names)))
        self.assertGreater(len(names), 150)

    def test_every_function_has_its_argument_types(self):
        for prototype in functions.prototypes():
            function = getattr(raw, prototype.name)
            self.assertEqual(len(function.argtypes), len(prototype.arguments), prototype.name)
            self.assertNotIn(None, function.argtypes, prototype.name)

    def test_records_have_the_layout_of_the_c_structs(self):
        self.assertEqual(ctypes.sizeof(records.Element), 15 * 8)
        self.assertEqual(records.Element.sx.offset, 8)
        self.assertEqual(records.Element.k3.offset, 14 * 8)
        self.assertEqual(ctypes.sizeof(records.MoniEntry), 5 * 8)
        self.assertEqual(records.MoniList.entries.offset, 8)
        self.assertEqual(ctypes.sizeof(records.IpEntry), 7 * 8)
        self.assertEqual(ctypes.sizeof(records.IpCurve), 14 * 8)

    def test_fields_are_named_as_in_the_header(self):
        header = (ROOT / "include/fenmark/alignment/record.h").read_text(encoding="utf-8")
        body = re.search(r"typedef struct Calelm \{(.*?)\} Calelm;", header, flags=re.S).group(1)
        names = re.findall(r"^\s*(?:int16_t|double) (\w+);", body, flags=re.M)
        self.assertEqual(names, [name for name, _ in records.Element._fields_])

    def test_curve_entry_is_named_as_in_the_header(self):
        header = (ROOT / "include/fenmark/alignment/ip.h").read_text(encoding="utf-8")
        body = re.search(r"typedef struct AliIpCurve \{(.*?)\} AliIpCurve;", header, flags=re.S).group(1)
        names = re.findall(r"^\s*(?:int16_t|double) (\w+)(?:\[3\])?;", body, flags=re.M)
        self.assertEqual(names, [name for name, _ in records.IpCurve._fields_])


if __name__ == "__main__":
    unittest.main()
