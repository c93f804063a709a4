#!/usr/bin/env python3
"""Writes tests/curve/reference/poses.txt: poses on curves of linear curvature by integration with 50 digits.

The direction is integrated piece by piece (each turns by a radian at most) with mpmath's Gauss-Legendre quadrature, which
shares no formula with the library. Needs python3-mpmath; takes about a minute. The input of each case is the doubles as
they are printed.
"""
import pathlib
import random

from mpmath import cos, mp, mpf, nstr, quad, sin

mp.dps = 50
RANDOM_CASES = 60


def pose(x, y, azimuth, length, k0, k1, along):
    """The pose at `along` metres; all arguments doubles."""
    x, y, azimuth, length, k0, k1, along = (mpf(v) for v in (x, y, azimuth, length, k0, k1, along))
    growth = (k1 - k0) / length

    def direction(s):
        return azimuth + s * (k0 + growth * s / 2)

    sharpest = max(abs(k0), abs(k0 + growth * along))
    parts = int(sharpest * abs(along)) + 1
    ends = [along * i / parts for i in range(parts + 1)]
    return (x + quad(lambda s: cos(direction(s)), ends), y + quad(lambda s: sin(direction(s)), ends), direction(along))


def cases():
    straight, arc = ("straight", 10.0, 20.0, 0.7, 100.0, 0.0, 0.0), ("arc", 10.0, 20.0, 0.7, 100.0, 0.01, 0.01)
    for name, *curve in (straight, arc):
        yield (name, *curve, 60.0)
    survey = [
        ("into-an-arc-to-the-right", 0.0, 0.01, 64.0),
        ("out-of-an-arc-to-the-left", -0.0125, 0.0, 45.0),
        ("egg-shaped", 1.0 / 300.0, 1.0 / 120.0, 52.0),
        ("s-shaped", -1.0 / 150.0, 1.0 / 90.0, 110.0),
        ("flat", 1e-7, -2e-7, 900.0),
        ("nearly-an-arc", 0.01, 0.01 * (1.0 + 1e-13), 250.0),
        ("sharp", 0.0, 1.0, 12.0),
        ("spiralling", 0.001, 0.9, 300.0),
    ]
    for name, k0, k1, length in survey:
        for share in (0.25, 0.5, 1.0):
            yield (name, 1234.5, -987.25, 2.1, length, k0, k1, length * share)
    yield ("far-from-the-origin", 1e7, -1e7, 1.0, 80.0, 0.0, 0.01, 80.0)
    # Just below and above each switch between the formulas. On a curve of 1 m: turn from the inflection point 2 at the
    # end, and at the start; turn 0.25 with the inflection farther than 50 lengths, and that distance itself.
    for name, part in (("below", 1.0 - 1e-9), ("at", 1.0), ("above", 1.0 + 1e-9)):
        yield (f"turn-of-2-{name}", 0.0, 0.0, 0.3, 1.0, 0.0, 4.0 * part, 1.0)
        yield (f"turn-of-2-back-{name}", 0.0, 0.0, 0.3, 1.0, -4.0 * part, 0.0, 1.0)
        yield (f"turn-of-2-both-{name}", 0.0, 0.0, 0.3, 1.0, -8.0 * part, 8.0 * part, 1.0)
        yield (f"turn-of-2-start-{name}", 0.0, 0.0, 0.3, 1.0, 8.0 * part, 16.0 * part, 1.0)
        yield (f"quarter-{name}", 0.0, 0.0, 0.3, 1.0, 0.24 * part, 0.26 * part, 1.0)
        yield (f"far-inflection-{name}", 0.0, 0.0, 0.3, 1.0, 0.1 * part, 0.102, 1.0)
        # The pieces of the table meet where q = i / 128: curvatures k with growth / k^2 = q.
        for piece in (1, 5, 31):
            k = (4.0 / (piece / 128.0)) ** 0.5 * part
            yield (f"table-{piece}-{name}", 0.0, 0.0, 0.3, 1.0, k, k + 4.0, 1.0)
    yield ("series-turn-of-an-arc", 0.0, 0.0, 0.3, 1.0, 4.0, 4.0, 1.0)
    seeded = random.Random(20260101)
    for i in range(RANDOM_CASES):
        length = 10.0 ** seeded.uniform(0.0, 3.0)
        k0 = seeded.choice((0.0, seeded.choice((-1, 1)) * 10.0 ** seeded.uniform(-5.0, -0.5)))
        k1 = seeded.choice((-1, 1)) * 10.0 ** seeded.uniform(-5.0, -0.5)
        origin = [seeded.uniform(-1e6, 1e6) for _ in range(2)]
        yield (f"seeded-{i}", *origin, seeded.uniform(-3.0, 3.0), length, k0, k1, length * seeded.uniform(0.0, 1.0))


def main():
    lines = [
        "# Poses on curves of linear curvature, integrated with 50 digits by tools/make_curve_reference.py.",
        "# Metres, radians, 1/m. The tolerance is of the distance: 1e-13 of the length and two last bits of the coordinates.",
        "# element | x y azimuth length startCurvature endCurvature | along | expected x y azimuth | tolerance",
    ]
    for name, x, y, azimuth, length, k0, k1, along in cases():
        expected = " ".join(nstr(v, 25) for v in pose(x, y, azimuth, length, k0, k1, along))
        tolerance = 1e-13 * length + 2.0**-51 * (abs(x) + abs(y) + length)
        given = " ".join(repr(v) for v in (x, y, azimuth, length, k0, k1))
        lines.append(f"{name} | {given} | {along!r} | {expected} | {tolerance:.2e}")
    target = pathlib.Path(__file__).resolve().parent.parent / "tests" / "curve" / "reference" / "poses.txt"
    target.write_text("\n".join(lines) + "\n", encoding="ascii")
    print(f"{len(lines) - 3} cases")


if __name__ == "__main__":
    main()
