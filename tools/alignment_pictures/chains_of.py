"""Chains laid from sizes, and given elements as a user has them: too long or too short where a solver will cut them."""

import math

from fenmark_alignment import LEFT, RIGHT, Arc, Chain, Straight

from .drawing import BEFORE, GIVEN, INK, POINT, Panel

EAST = math.pi / 2
INF = math.inf
L, R = LEFT, RIGHT


def lay(*pieces, azimuth=EAST - 0.5, start=(0.0, 0.0)):
    """Elements laid one after another."""
    return list(Chain.lay(start, azimuth, pieces))


def longer_end(e, more):
    """The element with its start kept."""
    if isinstance(e, Straight):
        return Straight.from_start(e.start, e.sang, e.length + more)
    return Arc.from_start(e.start, e.sang, e.radius, e.length + more, e.turn)


def longer_start(e, more):
    """The element with its end kept."""
    if isinstance(e, Straight):
        return Straight.from_end(e.end, e.eang, e.length + more)
    return Arc.from_end(e.end, e.eang, e.radius, e.length + more, e.turn)


def sized(e, label):
    """The label with the radius or parameter."""
    return f"{label} = {round(e.par, 1):g}" if e.type != 1 else label


def solved(title, caption, before, chain, made, labels, points=(), side=0):
    """Panel of a solver: what was given dashed beneath, the given elements of the result grey, the made ones coloured."""
    panel = Panel(title, caption)
    for e in before:
        panel.element(e, BEFORE, width=2.0, dash="6 4", arrow=False)
    for i, e in enumerate(chain):
        if i in made:
            panel.element(e, label=sized(e, labels[i]), side=side if e.type == 2 else 0)
        else:
            panel.element(e, GIVEN, label=labels[i])
    for a in chain[1:]:
        panel.point(a.start, hollow=True, size=3)
    for p, label, direction in points:
        panel.point(p, label, direction, POINT, 4)
    return panel
