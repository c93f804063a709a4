#!/usr/bin/env python3
"""Draws the pictures of docs/python.md with the code that the page shows, and checks that code.

make_python_pictures.py [--check]    --check draws into a temporary folder: the page's code has to run

The blocks of the page run one after another as one program, in a folder that has examples/road.sim. A block that ends in
`savefig` names its picture. Needs matplotlib, the library (FENMARK_ALIGNMENT_LIBRARY) and the program (FENMARK_PROGRAM).
"""

import os
import pathlib
import re
import shutil
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[1]
PAGE = ROOT / "docs/python.md"
PICTURES = ROOT / "docs/pictures/python"


def main():
    check = sys.argv[1:] == ["--check"]
    sys.path.insert(0, str(ROOT / "python"))
    import matplotlib

    matplotlib.use("Agg")
    # The same picture from the same numbers, whenever it is drawn.
    matplotlib.rcParams.update({"svg.hashsalt": "fenmark", "figure.figsize": (7.0, 4.0), "font.size": 8})
    text = PAGE.read_text(encoding="utf-8")
    blocks = re.findall(r"```python\n(.*?)```", text, flags=re.S)
    wanted = set(re.findall(r"pictures/python/(\w+\.svg)", text))
    names = {}
    with tempfile.TemporaryDirectory() as folder:
        shutil.copyfile(ROOT / "examples/road.sim", pathlib.Path(folder) / "road.sim")
        os.chdir(folder)
        for block in blocks:
            exec(compile(block, str(PAGE), "exec"), names)
        drawn = {p.name for p in pathlib.Path(folder).glob("*.svg")}
        os.chdir(ROOT)
        if drawn != wanted:
            print(f"docs/python.md shows {sorted(wanted)}, and its code draws {sorted(drawn)}", file=sys.stderr)
            return 1
        if not check:
            PICTURES.mkdir(parents=True, exist_ok=True)
            for name in drawn:
                shutil.copyfile(pathlib.Path(folder) / name, PICTURES / name)
    missing = [name for name in wanted if not (PICTURES / name).exists()]
    if missing:
        print(f"not drawn yet: {missing}", file=sys.stderr)
        return 1
    print(f"{len(blocks)} blocks run, {len(drawn)} pictures drawn")
    return 0


if __name__ == "__main__":
    sys.exit(main())
