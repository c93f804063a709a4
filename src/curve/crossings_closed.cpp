// Where straights and circles meet: closed forms.
#include "curve/crossing_search.h"

#include <algorithm>
#include <cmath>

namespace fenmark::curve::crossing {

namespace {

constexpr double kLargestClosedRadius = 1e5; // metres; the closed forms with circles keep 1e-11 of the radius

Point centreOf(const PreparedCurve& circle) {
    const Frame start = circle.frameAt(0.0);
    const Point right = rightOf(start.tangent);
    const double radius = 1.0 / circle.curve().startCurvature;
    return {start.point.x + radius * right.x, start.point.y + radius * right.y};
}

} // namespace

void Search::lineAndLine() {
    const Frame a = first_.frameAt(0.0);
    const Frame b = second_.frameAt(0.0);
    const double sine = cross(a.tangent, b.tangent);
    const Point way = b.point - a.point;
    if (std::abs(sine) * (first().length + second().length) <= tolerance_) {
        if (std::abs(cross(a.tangent, way)) > same_) {
            return;
        }
        const double sense = dot(a.tangent, b.tangent) < 0.0 ? -1.0 : 1.0;
        const double start = dot(a.tangent, way);
        const double end = start + sense * second().length;
        const double from = std::max(0.0, std::min(start, end));
        const double to = std::min(first().length, std::max(start, end));
        if (to < from - same_) {
            return;
        }
        record(std::min(from, first().length), std::clamp(sense * (from - start), 0.0, second().length), true);
        if (to - from > same_) {
            record(to, std::clamp(sense * (to - start), 0.0, second().length), true);
            result_.overlap = true;
        }
        return;
    }
    const double s = cross(way, b.tangent) / sine;
    const double t = cross(way, a.tangent) / sine;
    if (s >= -same_ && s <= first().length + same_ && t >= -same_ && t <= second().length + same_) {
        record(std::clamp(s, 0.0, first().length), std::clamp(t, 0.0, second().length), false);
    }
}

// Where an arc passes a point of its circle, each time round.
std::vector<double> Search::alongCircle(const PreparedCurve& circle, const Point& point) const {
    const Curve& plain = circle.curve();
    const double bend = std::abs(plain.startCurvature);
    const Frame start = circle.frameAt(0.0);
    const Point way = point - start.point;
    const double ahead = dot(start.tangent, way);
    const double aside = cross(start.tangent, way) * (plain.startCurvature < 0.0 ? -1.0 : 1.0);
    double angle = std::atan2(bend * ahead, 1.0 - bend * aside);
    if (angle < -same_ * bend) {
        angle += kTwoPi;
    }
    std::vector<double> found;
    for (double along = angle / bend; along <= plain.length + same_ && found.size() <= most_; along += kTwoPi / bend) {
        found.push_back(std::clamp(along, 0.0, plain.length));
    }
    return found;
}

void Search::meetAt(const Point& point, bool touch) {
    const auto along = [&](const PreparedCurve& curve) {
        if (curve.curve().startCurvature != 0.0) {
            return alongCircle(curve, point);
        }
        const Frame start = curve.frameAt(0.0);
        const double ahead = dot(start.tangent, point - start.point);
        std::vector<double> found;
        if (ahead >= -same_ && ahead <= curve.curve().length + same_) {
            found.push_back(std::clamp(ahead, 0.0, curve.curve().length));
        }
        return found;
    };
    const std::vector<double> onSecond = along(second_);
    for (const double s : along(first_)) {
        for (const double t : onSecond) {
            record(s, t, touch);
        }
    }
}

void Search::lineAndCircle(bool lineFirst) {
    const PreparedCurve& line = lineFirst ? first_ : second_;
    const PreparedCurve& circle = lineFirst ? second_ : first_;
    const double radius = 1.0 / std::abs(circle.curve().startCurvature);
    const Frame start = line.frameAt(0.0);
    const Point way = centreOf(circle) - start.point;
    const double ahead = dot(start.tangent, way);
    const double aside = std::abs(cross(start.tangent, way));
    const auto at = [&](double s) {
        return Point{start.point.x + s * start.tangent.x, start.point.y + s * start.tangent.y};
    };
    if (std::abs(aside - radius) <= tolerance_) {
        meetAt(at(ahead), true);
    } else if (aside < radius) {
        const double half = std::sqrt((radius - aside) * (radius + aside));
        meetAt(at(ahead - half), false);
        meetAt(at(ahead + half), false);
    }
}

void Search::circleAndCircle() {
    const Point a = centreOf(first_);
    const Point b = centreOf(second_);
    const double r1 = 1.0 / std::abs(first().startCurvature);
    const double r2 = 1.0 / std::abs(second().startCurvature);
    const Point way = b - a;
    const double apart = norm(way);
    if (apart <= same_ && std::abs(r1 - r2) <= same_) {
        // One circle: the ends of each that lie on the other.
        const double before = static_cast<double>(result_.found.size());
        for (const double s : {0.0, first().length}) {
            for (const double t : alongCircle(second_, first_.pointAt(s))) {
                record(s, t, true);
            }
        }
        for (const double t : {0.0, second().length}) {
            for (const double s : alongCircle(first_, second_.pointAt(t))) {
                record(s, t, true);
            }
        }
        double low = first().length;
        double high = 0.0;
        for (const Crossing& found : result_.found) {
            low = std::min(low, found.alongFirst);
            high = std::max(high, found.alongFirst);
        }
        result_.overlap = static_cast<double>(result_.found.size()) > before && high - low > same_;
        return;
    }
    if (apart == 0.0) {
        return;
    }
    const Point along{way.x / apart, way.y / apart};
    const double outer = apart - (r1 + r2);
    const double inner = apart - std::abs(r1 - r2);
    if (std::abs(outer) <= tolerance_ || std::abs(inner) <= tolerance_) {
        const double side = std::abs(outer) <= tolerance_ || r1 >= r2 ? r1 : -r1;
        meetAt({a.x + side * along.x, a.y + side * along.y}, true);
    } else if (outer < 0.0 && inner > 0.0) {
        const double ahead = 0.5 * (apart + (r1 - r2) * ((r1 + r2) / apart));
        const double half = std::sqrt(std::max((r1 - ahead) * (r1 + ahead), 0.0));
        for (const double side : {-half, half}) {
            meetAt({a.x + ahead * along.x - side * along.y, a.y + ahead * along.y + side * along.x}, false);
        }
    }
}

bool Search::closedForms() {
    const auto even = [](const Curve& c) { return c.startCurvature == c.endCurvature; };
    if (!even(first()) || !even(second())) {
        return false;
    }
    const double k1 = std::abs(first().startCurvature);
    const double k2 = std::abs(second().startCurvature);
    const auto fits = [](double k) { return k * kLargestClosedRadius >= 1.0; };
    if (k1 == 0.0 && k2 == 0.0) {
        lineAndLine();
    } else if (k1 == 0.0 && fits(k2)) {
        lineAndCircle(true);
    } else if (k2 == 0.0 && fits(k1)) {
        lineAndCircle(false);
    } else if (k1 != 0.0 && k2 != 0.0 && fits(k1) && fits(k2)) {
        circleAndCircle();
    } else {
        return false;
    }
    return true;
}

} // namespace fenmark::curve::crossing
