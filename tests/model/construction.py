"""How the alignment library constructs a clothoid between two given points: the tangents at its ends.

The steps are taken one by one, with every snap of an angle, and not as a formula: a tangent close to an axis comes out
exactly on it. Angles are those of the library's own plane, x as given and y negated, until the last line.
"""
import math

ANGLE_STEP = 1.389e-6   # radians
LENGTH_STEP = 1e-5      # metres, and where a tangent falls onto an axis, radians
SHARPEST = 0.56         # least radius, in parameters
SERIES_STEP = 1e-4      # metres
FAILED = math.pi        # both tangents after a refusal
FULL = 2.0 * math.pi


def local_point(parameter, radius):
    """The point of the standard clothoid at a radius; 0 stands for the origin."""
    tau = parameter ** 2 / (2.0 * radius ** 2) if radius else 0.0
    if tau < ANGLE_STEP:
        return 0.0, 0.0
    scale = parameter / math.sqrt(2.0)
    sum_x = sum_y = x = y = 0.0
    n = 0
    while True:
        n += 1
        term = (-1.0) ** n * tau ** (2 * n)
        sum_x += term / ((4 * n + 1) * float(math.factorial(2 * n)))
        sum_y += term / ((4 * n + 3) * float(math.factorial(2 * n + 1)))
        last_x, last_y = x, y
        x = (sum_x + 1.0) * scale * 2.0 * math.sqrt(tau)
        y = (sum_y + 1.0 / 3.0) * scale * 2.0 * tau ** 1.5
        if abs(x - last_x) < SERIES_STEP and abs(y - last_y) < SERIES_STEP:
            return x, y


def in_turn(angle):
    return angle + FULL if angle < 0.0 else angle


def between(first, second):
    """Angle from one chord to another, in one turn; a difference below the step is none."""
    difference = in_turn(math.atan2(second[1], second[0])) - in_turn(math.atan2(first[1], first[0]))
    if abs(difference) < ANGLE_STEP:
        return 0.0
    difference = in_turn(difference)
    return 0.0 if abs(difference) < ANGLE_STEP else difference


def to_survey_plane(angle):
    if abs(angle) < LENGTH_STEP:
        return 0.0
    return FULL - angle if angle > 0.0 else -angle


def clothoid_tangents(start, end, left, parameter, start_radius, end_radius):
    """Directions of travel at both ends, from +x towards +y. Radii are positive, 0 is infinite."""
    chord = (end[0] - start[0], start[1] - end[1])
    turn = 1.0 if left else -1.0
    flat, sharp = start_radius, end_radius
    reverse = end_radius == 0.0 or (start_radius > 0.0 and end_radius > start_radius)
    if reverse:
        chord, turn, flat, sharp = (-chord[0], -chord[1]), -turn, end_radius, start_radius
    if parameter == 0.0 or any(radius and radius / parameter <= SHARPEST for radius in (flat, sharp)):
        return FAILED, FAILED
    lengths = [parameter ** 2 / radius if radius else 0.0 for radius in (flat, sharp)]
    if abs(lengths[1] - lengths[0]) < LENGTH_STEP:
        return FAILED, FAILED
    if turn < 0.0:
        chord = (-chord[0], chord[1])
    first, last = local_point(parameter, flat), local_point(parameter, sharp)
    turned = between((last[0] - first[0], last[1] - first[1]), chord)
    tangents = []
    for radius in (flat, sharp):
        angle = (parameter ** 2 / (2.0 * radius ** 2) if radius else 0.0) + turned
        if angle >= FULL:
            angle -= FULL
        if abs(angle - FULL) < LENGTH_STEP:
            angle = 0.0
        tangents.append(angle if turn > 0.0 else in_turn(math.pi - angle))
    if reverse:
        tangents = [angle - math.pi if angle >= math.pi else angle + math.pi for angle in reversed(tangents)]
    return tuple(to_survey_plane(angle) for angle in tangents)
