"""Holds the stakes that the example prints against an integration of the curve's curvature.

Nothing of the library is used here. The curve is fixed by the corner BP, IP, EP and the sizes A1, R, A2: tangent
lengths follow from the shift relations of the clothoid, whose coordinates are integrated here by Simpson's rule, and
every stake from an integration of the azimuth along the way.

check_stakes.py STAKE_CURVE
"""

import math
import re
import subprocess
import sys

BP, IP, EP = (-36000.0, 12000.0), (-35820.0, 12140.0), (-35800.0, 12400.0)
A1, R, A2 = 80.0, 150.0, 90.0
PITCH = 20.0
POINT_TOLERANCE = 1.5e-4  # metres: half a digit of the print, and the joints' rounding to 1e-5
STATION_TOLERANCE = 6e-4  # metres, printed to 1e-3
AZIMUTH_TOLERANCE = 1.0  # seconds of arc, printed to 1; stored tangents are rounded to 0.29


def integrate(f, a, b, steps=2000):
    """Simpson's rule."""
    h = (b - a) / steps
    inner = sum((4 if i % 2 else 2) * f(a + i * h) for i in range(1, steps))
    return (f(a) + inner + f(b)) * h / 3.0


def clothoid(A):
    """Length, tangent angle, shift and abscissa of the circle's centre of a clothoid that ends at R."""
    length = A * A / R
    tau = length / (2.0 * R)
    x = integrate(lambda s: math.cos(s * s / (2.0 * A * A)), 0.0, length)
    y = integrate(lambda s: math.sin(s * s / (2.0 * A * A)), 0.0, length)
    return length, tau, y + R * math.cos(tau) - R, x - R * math.sin(tau)


def azimuth(p, q):
    return math.atan2(q[1] - p[1], q[0] - p[0])


def main():
    first, last = azimuth(BP, IP), azimuth(IP, EP)
    theta = last - first  # to the right, which is clockwise on the map
    assert 0.0 < theta < math.pi
    l1, tau1, shift1, xm1 = clothoid(A1)
    l2, tau2, shift2, xm2 = clothoid(A2)
    # The centre lies R + shift1 right of the first leg and R + shift2 right of the second.
    t1 = xm1 + ((R + shift2) - (R + shift1) * math.cos(theta)) / math.sin(theta)
    t2 = xm2 + ((R + shift1) - (R + shift2) * math.cos(theta)) / math.sin(theta)
    arc = R * (theta - tau1 - tau2)
    lengths = [math.dist(BP, IP) - t1, l1, arc, l2, math.dist(IP, EP) - t2]
    joints = [sum(lengths[:i]) for i in range(6)]

    def turned(s):
        """Azimuth at the distance s from BP."""
        a = first
        u = min(max(s - joints[1], 0.0), l1)
        a += u * u / (2.0 * A1 * A1)
        a += min(max(s - joints[2], 0.0), arc) / R
        u = min(max(s - joints[3], 0.0), l2)
        return a + u / R - u * u / (2.0 * A2 * A2)

    def point(s):
        """Integrated piece by piece, so that no joint lies within a piece."""
        x, y = BP
        for i in range(5):
            a, b = joints[i], min(joints[i + 1], s)
            if b > a:
                x += integrate(lambda t: math.cos(turned(t)), a, b, 400)
                y += integrate(lambda t: math.sin(turned(t)), a, b, 400)
        return x, y

    assert math.dist(point(joints[5]), EP) < 1e-6, "the curve laid here does not reach EP"

    expected = [(joints[i], name) for i, name in enumerate(["BP", "KA1", "KE1", "KE2", "KA2", "EP"])]
    expected += [(i * PITCH, "") for i in range(1, math.floor(joints[5] / PITCH) + 1)]
    expected.sort()

    lines = subprocess.run([sys.argv[1]], capture_output=True, text=True, check=True).stdout.splitlines()[1:]
    assert len(lines) == len(expected), f"{len(lines)} stakes, expected {len(expected)}"
    form = re.compile(r"No\.(\d+)(?:\+(\d+\.\d{3}))?\s+([A-Z]+\d?)?\s+(-?\d+\.\d{4})\s+(-?\d+\.\d{4})\s+(\d+)-(\d\d)-(\d\d)$")
    for line, (s, name) in zip(lines, expected):
        found = form.match(line)
        assert found, f"not a stake: {line}"
        number, plus, mark, x, y, degrees, minutes, seconds = found.groups()
        assert (mark or "") == name, f"{line}: expected the mark {name!r}"
        assert abs(int(number) * PITCH + float(plus or 0.0) - s) < STATION_TOLERANCE, f"{line}: expected station {s:.4f}"
        p = point(s)
        assert math.dist((float(x), float(y)), p) < POINT_TOLERANCE, f"{line}: expected {p[0]:.5f} {p[1]:.5f}"
        a = math.degrees(turned(s)) * 3600.0
        assert abs(int(degrees) * 3600 + int(minutes) * 60 + int(seconds) - a) < AZIMUTH_TOLERANCE, f"{line}: {a:.2f} s"
    print(f"{len(lines)} stakes agree with the integration")


if __name__ == "__main__":
    main()
