"""Draws the pictures of the alignment library's documentation from the library itself.

make_alignment_pictures.py            writes docs/pictures/alignment/*.svg
make_alignment_pictures.py --check    only tells whether they are what would be written (exit code 1 if not)

The library is found as the Python module finds it, by FENMARK_ALIGNMENT_LIBRARY or the loader.
"""

import pathlib
import sys

ROOT = pathlib.Path(__file__).resolve().parents[1]
sys.path[:0] = [str(ROOT / "python"), str(ROOT / "tools")]

from alignment_pictures import basics, elements, solvers  # noqa: E402

PICTURES = {
    "planes": basics.planes, "element": basics.element, "signs": basics.signs, "clothoid": basics.clothoid,
    "primitives": elements.primitives, "construction": elements.construction, "walking": elements.walking,
    "movement": elements.movement, "intersection": elements.intersection, "tangent": solvers.tangent,
    "chains": solvers.chains, "compound": solvers.compound, "ip": solvers.ip, "point": solvers.point,
}  # fmt: skip


def main(arguments):
    check = "--check" in arguments
    only = [a for a in arguments if not a.startswith("-")]
    folder = ROOT / "docs/pictures/alignment"
    folder.mkdir(parents=True, exist_ok=True)
    stale = []
    for name, draw in PICTURES.items():
        if only and name not in only:
            continue
        path, text = folder / f"{name}.svg", draw()
        if check:
            if not path.exists() or path.read_text(encoding="utf-8") != text:
                stale.append(path.name)
        else:
            path.write_text(text, encoding="utf-8")
            print(path.relative_to(ROOT), f"{len(text) / 1024:.1f} KiB")
    known = {f"{name}.svg" for name in PICTURES}
    stale += sorted(p.name for p in folder.glob("*.svg") if p.name not in known)
    if stale:
        print("not what the library draws: " + ", ".join(stale), file=sys.stderr)
    return 1 if stale else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
