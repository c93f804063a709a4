"""Alignment geometry: straights, circular arcs and clothoids, over the library libfenmark-alignment.

    chain = Chain.from_ips([(0, 0), (200, 40, 150, 80, 80), (260, 300)])
    at = chain.point_at(chain.stakes(20.0), offset=3.5)          # arrays: at.x, at.y, at.azimuth
    where = chain.locate(points)                                 # n by 2: where.station, where.offset

    from fenmark_alignment import Straight, Chain, eased_arc_between_straights

    first = Straight((-36000.0, 12000.0), (-35820.0, 12140.0))   # x north, y east
    second = Straight((-35820.0, 12140.0), (-35800.0, 12400.0))
    chain = Chain(eased_arc_between_straights(first, second, a1=80.0, radius=150.0, a2=90.0))
    for station in chain.stakes(20.0):
        x, y, azimuth = chain.point_at(station)
    chain.locate((-35850.0, 12130.0))                            # station, offset (right positive), element

`raw` has every exported function of the C interface. A function that gives no result raises AlignmentError, which
has the function, its status and what that means. Records given to a solver are never changed: it works on copies.
"""

from .chain import Chain, Crossing, CurvePiece, Joint, Location, Locations, Stake
from .crossfall import Crossfall, Slopes
from .elements import LEFT, RIGHT, Arc, Clothoid, Foot, Intersection, Position, Straight, wrap
from .library import AlignmentError, raw, status, status_text
from .profile import Extreme, Height, Profile, SpacePoints
from .records import Element, IpCurve, IpEntry, MoniEntry, MoniList
from .sima import Import, ImportFailed, LogError, Lot, SurveyPoint, import_sima
from .solvers import *  # noqa: F403
from .solvers import __all__ as _solvers

__version__ = "1.1.0"
__all__ = [
    "AlignmentError", "Arc", "Chain", "Clothoid", "Crossfall", "Crossing", "CurvePiece", "Element", "Extreme", "Foot", "Height",
    "Import", "ImportFailed", "Intersection", "IpCurve", "IpEntry", "Joint", "LEFT", "Location", "Locations", "LogError",
    "Lot", "MoniEntry", "MoniList", "Position", "Profile", "RIGHT", "Slopes", "SpacePoints", "Stake", "Straight", "SurveyPoint",
    "import_sima", "raw", "status", "status_text", "wrap",
    *_solvers,
]  # fmt: skip
