"""A made-up archive: a tree of SIMA files of which some are broken, the same for the same seed.

make_archive.py FOLDER [FILES [SEED]]
"""
import pathlib
import random
import sys

NAMES = ["KP", "境界", "髙﨑", "表示", 'a"b', "'x'", "<&>", "\\N", "ｶﾞｲﾄﾞ", "100%"]
HUGE = "9" * 400  # metres: no finite value


class File:
    """A file's bytes and what an archive must hold of it."""

    def __init__(self, content, points=0, lots=0, alignments=0, refused=(), status="done"):
        self.content, self.status = content, status
        self.points, self.lots, self.alignments, self.refused = points, lots, alignments, list(refused)


def encoded(lines):
    return "".join(line + "\r\n" for line in lines).encode("cp932")


def survey(rng, wrong=0, huge=False):
    """Points on a grid, lots of four of them, a centre line; `wrong` points have no number for X."""
    lines, refused = ["G00,4.00,archive,", "A00,"], []
    columns, rows = rng.randint(3, 8), rng.randint(3, 8)
    east, north = rng.randint(-50000, 50000), rng.randint(-90000, 90000)
    for place in range(columns * rows):
        x, y = north + 20 * (place // columns), east + 20 * (place % columns)
        height = "%.3f" % rng.uniform(0, 500) if rng.random() < 0.5 else ""
        lines.append("A01,%d,%s%d,%d.%03d,%d.000,%s," % (place + 1, rng.choice(NAMES), place, x, rng.randrange(1000), y, height))
    for number in range(wrong):
        lines.append("A01,%d,wrong,12a,0,," % (10000 + number))
        refused.append((len(lines), "ErrA01-2"))
    if huge:
        lines.append("A01,20000,huge,%s,0,," % HUGE)
    lines.append("A99,")
    lots = [place for place in range(columns * (rows - 1)) if place % columns < columns - 1][:rng.randint(1, 20)]
    for place in lots:
        corners = [place + 1, place + 2, place + 2 + columns, place + 1 + columns]
        lines += ["D00,%d,%d-%d,1," % (place + 1, place, rng.randint(1, 9)), *("B01,%d,," % corner for corner in corners), "D99,"]
    lines += ["F00,1,1,中心線,3,", *("B01,%d,," % (column + 1) for column in range(columns)), "F99,"]
    return File(encoded(lines), columns * rows + (1 if huge else 0), len(lots), 1, refused)


def cut_short(rng):
    """A file that ends within a point's record."""
    count = rng.randint(2, 30)
    lines = ["A00,", *("A01,%d,P,%d.5,%d.25,," % (i, i * 10, i * 7) for i in range(1, count + 1)), "A01,999,cut"]
    return File(encoded(lines), count, refused=[(count + 2, "ErrX001")])


def broken_off(rng):
    return File(encoded(["A00,", "A01,1,P,%d,0,," % rng.randint(1, 9), "A99,", "D00,"]), refused=[(4, "ErrX001")], status="failed")


def archive(count, seed):
    """The files by their paths; a content of None stands for a link that leads nowhere."""
    rng, files = random.Random(seed), {}
    for number in range(count):
        kind = rng.random()
        if kind < 0.70:
            made = survey(rng)
        elif kind < 0.80:
            made = survey(rng, wrong=rng.randint(1, 5))
        elif kind < 0.84:
            made = survey(rng, huge=True)
        elif kind < 0.88:
            made = cut_short(rng)
        elif kind < 0.92:
            made = broken_off(rng)
        elif kind < 0.95:
            made = File(b"", status="empty")
        elif kind < 0.98:
            made = File(b"\x00" + rng.randbytes(500).translate(None, b"\r\n"), status="empty")
        else:
            made = File(None, status="failed")
        files["%s/%d/%s %05d.%s" % (rng.choice(["北", "南", "east"]), number // 100, rng.choice(["現場", "site", "a'b"]),
                                    number, rng.choice(["sim", "SIM"]))] = made
    return files


def write(folder, files):
    for path, made in files.items():
        target = pathlib.Path(folder, path)
        target.parent.mkdir(parents=True, exist_ok=True)
        if made.content is None:
            target.symlink_to("nowhere.sim")
        else:
            target.write_bytes(made.content)


if __name__ == "__main__":
    write(sys.argv[1], archive(int(sys.argv[2]) if len(sys.argv) > 2 else 300, int(sys.argv[3]) if len(sys.argv) > 3 else 1))
