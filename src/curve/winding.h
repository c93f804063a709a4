// How near a curve that winds up may come to a point at the least, known without following it.
//
// Such curves lie over each other by the thousand in one box, which then tells nothing of them. So the curve is cut into a
// few parts, each near the osculating circle at its middle.
//
// Symbols: k curvature, c its growth, l length of a part, r the radii at its ends. A part leaves the circle at its middle
//  - by c (l/2)^3 / 6 at most, as the direction leaves that of the circle by c s^2 / 2 at a length s from the middle;
//  - by twice the difference of both r where k keeps its sign: part and circle lie between the osculating circles at the
//    part's ends, which lie one inside the other, their centres no farther apart than the radii differ [Kneser 1912].
#pragma once

#include "curve/curve.h"

#include <cstddef>
#include <vector>

namespace fenmark::curve {

class WindingBound {
  public:
    WindingBound(const Curve& curve, std::size_t mostParts);

    // False only where no place of the curve is nearer to the point than the root of `squared`.
    [[nodiscard]] bool mayComeNearer(const Point& point, double squared) const;

  private:
    struct Part {
        Frame middle;
        double curvature = 0.0; // there
        double extent = 0.0;    // metres from the middle to the farthest place
        double leeway = 0.0;    // metres that the part may leave the circle
    };

    std::vector<Part> parts_; // empty where the values are beyond measure; then nothing is known
};

} // namespace fenmark::curve
