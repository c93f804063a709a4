#!/usr/bin/env python3
"""Compares poses of the alignment library with 50 digits on seeded curves of every kind.

check_curve_digits.py LIBRARY [CASES]

The reference is the closed form by the error function of a complex argument with at least 50 digits, which shares nothing
with the library; tools/make_curve_reference.py integrates instead. Needs python3-mpmath; 100,000 cases take some minutes,
so that no test runs it. Fails where a point is farther off than 1e-9 m at coordinates up to 1e6 m, or 3e-9 m, one and a half
times their last bit, at 1e7 m.
"""
import ctypes
import random
import sys

from mpmath import erf, expj, log10, mp, mpc, mpf, pi, sqrt

SEED = 20260615


class Curve(ctypes.Structure):
    _fields_ = [(name, ctypes.c_double) for name in ("x", "y", "azimuth", "length", "k0", "k1")]


class Pose(ctypes.Structure):
    _fields_ = [(name, ctypes.c_double) for name in ("x", "y", "azimuth")]


def reference(c, along):
    """The point with 50 digits; the arguments are doubles."""
    mp.dps = 50
    s = mpf(along)
    a = mpf(c.k0) * s
    b = (mpf(c.k1) - mpf(c.k0)) / mpf(c.length) * s * s / 2
    if b == 0:
        chord = (expj(a) - 1) / mpc(0, a) if a != 0 else mpc(1)
    else:
        # What the closed form loses: the phase at the inflection point, twice.
        mp.dps = 55 + 2 * int(max(0, log10(1 + a * a / abs(b) + 1 / abs(b))))
        root = sqrt(mpc(0, -b))
        h = mpc(0, a) / (2 * root)
        chord = sqrt(pi) / (2 * root) * mp.exp(h * h) * (erf(root - h) + erf(h))
    way = expj(mpf(c.azimuth)) * chord * s
    return mpf(c.x) + way.real, mpf(c.y) + way.imag


def seeded_curve(seeded, kind):
    side = lambda: seeded.choice((-1.0, 1.0))
    log = lambda low, high: 10.0 ** seeded.uniform(low, high)
    extent = 1e7 if kind == "far" else 1e6
    c = Curve(seeded.uniform(-extent, extent), seeded.uniform(-extent, extent), seeded.uniform(-10.0, 10.0), log(0.5, 3.0))
    if kind == "flat":
        c.k0, c.k1 = side() * log(-9.0, -5.0), side() * log(-9.0, -5.0)
    elif kind == "sharp":
        c.length, c.k0, c.k1 = log(0.0, 1.5), 0.0, side() * log(-2.0, 0.3)
    elif kind == "egg-shaped":
        c.k0 = side() * log(-3.5, -1.5)
        c.k1 = c.k0 * seeded.uniform(0.2, 3.0)
    elif kind == "reversed":
        c.k0, c.k1 = side() * log(-3.5, -1.5), 0.0
    elif kind == "spiralling":
        c.k0, c.k1 = side() * log(-3.0, -1.0), side() * log(-1.0, 0.5)
    elif kind == "nearly an arc":
        c.k0 = side() * log(-3.5, -1.5)
        c.k1 = c.k0 * (1.0 + side() * log(-12.0, -3.0))
    else:
        c.k1 = side() * log(-3.5, -1.5)
    return c


def main():
    library = ctypes.CDLL(sys.argv[1])
    cases = int(sys.argv[2]) if len(sys.argv) > 2 else 2000
    kinds = ("flat", "sharp", "egg-shaped", "reversed", "spiralling", "nearly an arc", "far")
    seeded = random.Random(SEED)
    largest = dict.fromkeys(kinds, 0.0)
    shares = dict.fromkeys(kinds, 0.0)
    for i in range(cases):
        kind = kinds[i % len(kinds)]
        c = seeded_curve(seeded, kind)
        along = c.length * seeded.choice((1.0, seeded.random()))
        pose = Pose()
        if library.fmk_curvePose(ctypes.byref(c), ctypes.c_double(along), ctypes.byref(pose)) != 0:
            sys.exit(f"case {i} of seed {SEED}: no pose")
        x, y = reference(c, along)
        off = float(mp.hypot(mpf(pose.x) - x, mpf(pose.y) - y))
        largest[kind] = max(largest[kind], off)
        # The same from the origin, where the coordinates' last bits hide nothing.
        c.x = c.y = 0.0
        library.fmk_curvePose(ctypes.byref(c), ctypes.c_double(along), ctypes.byref(pose))
        x, y = reference(c, along)
        shares[kind] = max(shares[kind], float(mp.hypot(mpf(pose.x) - x, mpf(pose.y) - y) / mpf(c.length)))
        if off > (3e-9 if kind == "far" else 1e-9) or shares[kind] > 1e-13:
            sys.exit(f"case {i} of seed {SEED}, {kind}: {off} m off, {shares[kind]} of the length")
    for kind in kinds:
        print(f"{kind:14s} largest error {largest[kind]:.1e} m, from the origin {shares[kind]:.1e} of the length")
    print(f"{cases} cases of seed {SEED}")


if __name__ == "__main__":
    main()
