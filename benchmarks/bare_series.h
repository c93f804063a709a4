// The floor for points of clothoids: the bare series, without a question whether it serves.
#pragma once

namespace fenmark::bench {

struct BarePoint {
    double x = 0.0;
    double y = 0.0;
};

// From the inflection point, along and beside its tangent: six terms of each coordinate, A and L given.
inline BarePoint bareSeries(double a, double length) {
    const double tau = length * length / (2.0 * a * a);
    const double t = tau * tau;
    const double x =
        1.0 - t * (1.0 / 10.0 - t * (1.0 / 216.0 - t * (1.0 / 9360.0 - t * (1.0 / 685440.0 - t * (1.0 / 76204800.0)))));
    const double y =
        1.0 / 3.0 -
        t * (1.0 / 42.0 - t * (1.0 / 1320.0 - t * (1.0 / 75600.0 - t * (1.0 / 6894720.0 - t * (1.0 / 918086400.0)))));
    return {length * x, length * tau * y};
}

} // namespace fenmark::bench
