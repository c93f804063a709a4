"""Whether two files, one of Windows and one of this system, are equal: byte by byte, or with numbers that differ by the
last digits alone, which the mathematics library decides."""

import re

TOLERANCE = 1e-12  # of a number, or of 1 where it is smaller
NUMBER = re.compile(rb"[-+]?\d+(?:\.\d+)?(?:[eE][-+]?\d+)?")
MOMENT = re.compile(rb'\b(?:date|time)="[-0-9:]*"|\d{4}-\d\d-\d\d[T ]\d\d:\d\d(?::\d\d)?Z?')  # two runs are at two times


def close(a, b):
    return abs(a - b) <= TOLERANCE * max(1.0, abs(a), abs(b))


def difference(a, b):
    """None if they agree, else what differs; and how many numbers differ in their last digits."""
    a, b = MOMENT.sub(b"(moment)", a), MOMENT.sub(b"(moment)", b)
    if a == b:
        return None, 0
    first, second = NUMBER.split(a), NUMBER.split(b)
    if first != second:
        place = next((i for i, (x, y) in enumerate(zip(a, b)) if x != y), min(len(a), len(b)))
        return f"at byte {place}: {a[max(0, place - 40):place + 40]!r} and {b[max(0, place - 40):place + 40]!r}", 0
    differing = [(x, y) for x, y in zip(NUMBER.findall(a), NUMBER.findall(b)) if x != y]
    far = [(x, y) for x, y in differing if not close(float(x), float(y))]
    return (f"numbers {far[:3]}" if far else None), len(differing)
