// The longitudinal profile of a chain.
//
// A circle in the vertical plane with curvature k (positive in a sag) and the slope angle t: sin t grows by k for each
// metre of station, and the height over d metres is d (sin t0 + sin t) / (cos t0 + cos t), which does not cancel for
// any radius.
#include "curve/profile.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace fenmark::curve {

namespace {

double sineOfGrade(double grade) {
    return grade / std::hypot(1.0, grade);
}

double cosineOf(double sine) {
    return std::sqrt(std::max((1.0 - sine) * (1.0 + sine), 0.0));
}

HeightGrade on(const ProfilePart& part, double station) {
    const double d = station - part.start;
    switch (part.form) {
    case VerticalForm::None:
        break;
    case VerticalForm::Parabola:
        return {part.startHeight + d * (part.startGrade + 0.5 * part.curvature * d),
                part.startGrade + part.curvature * d, part.curvature};
    case VerticalForm::Circle: {
        const double first = sineOfGrade(part.startGrade);
        const double sine = std::clamp(first + part.curvature * d, -1.0, 1.0);
        const double cosine = cosineOf(sine);
        const double grade = sine / cosine;
        return {part.startHeight + d * (first + sine) / (cosineOf(first) + cosine), grade,
                part.curvature / (cosine * cosine * cosine)};
    }
    }
    return {part.startHeight + d * part.startGrade, part.startGrade, 0.0};
}

// A curve as it lies about its vertical point.
struct Laid {
    double before = 0.0; // metres of station to its start and to its end
    double behind = 0.0;
    double curvature = 0.0;
};

Laid layCurve(const VerticalPoint& point, double gradeBefore, double gradeBehind) {
    const double change = gradeBehind - gradeBefore;
    if (point.form == VerticalForm::None || change == 0.0 || (point.length == 0.0 && point.radius == 0.0)) {
        return {};
    }
    if (point.form == VerticalForm::Parabola) {
        const double length = point.length > 0.0 ? point.length : point.radius * std::abs(change);
        return {0.5 * length, 0.5 * length, change / length};
    }
    const double first = sineOfGrade(gradeBefore);
    const double last = sineOfGrade(gradeBehind);
    const double radius = point.radius > 0.0 ? point.radius : point.length / std::abs(last - first);
    // The tangent is R tan(half the turn) long, along either grade; half the turn from the slope angles' difference.
    const double turn = std::atan(change / (1.0 + gradeBefore * gradeBehind)) +
                        (1.0 + gradeBefore * gradeBehind < 0.0 ? std::copysign(3.141592653589793, change) : 0.0);
    const double tangent = radius * std::abs(std::tan(0.5 * turn));
    return {tangent * cosineOf(first), tangent * cosineOf(last), std::copysign(1.0 / radius, change)};
}

} // namespace

ChainStatus Profile::set(std::span<const VerticalPoint> points) {
    if (points.size() < 2) {
        return ChainStatus::Empty;
    }
    for (const VerticalPoint& point : points) {
        if (!std::isfinite(point.station) || !std::isfinite(point.height) || !std::isfinite(point.length) ||
            !std::isfinite(point.radius)) {
            return ChainStatus::NotFinite;
        }
        if (point.length < 0.0 || point.radius < 0.0) {
            return ChainStatus::NoCurve;
        }
    }
    std::vector<double> grades;
    grades.reserve(points.size() - 1);
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
        const double run = points[i + 1].station - points[i].station;
        if (!(run > 0.0)) {
            return ChainStatus::OutOfOrder;
        }
        grades.push_back((points[i + 1].height - points[i].height) / run);
        if (!std::isfinite(grades.back()) || !std::isfinite(run)) {
            return ChainStatus::NotFinite;
        }
    }
    std::vector<ProfilePart> parts;
    parts.reserve(2 * points.size());
    double from = points.front().station; // the end of what stands already
    double height = points.front().height;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const VerticalPoint& point = points[i];
        const double grade = grades[i - 1];
        const Laid curve = i + 1 < points.size() ? layCurve(point, grade, grades[i]) : Laid{};
        if (!std::isfinite(curve.before) || !std::isfinite(curve.behind) || !std::isfinite(curve.curvature)) {
            return ChainStatus::NotFinite;
        }
        const double begin = std::max(point.station - curve.before, from);
        if (point.station - curve.before < from - kStationTolerance) {
            return ChainStatus::Overlap;
        }
        if (begin > from) {
            parts.push_back({VerticalForm::None, from, begin, height, grade, grade, 0.0, i - 1});
        }
        from = begin;
        height = point.height - (point.station - begin) * grade;
        if (curve.curvature != 0.0) {
            const double end = point.station + curve.behind;
            parts.push_back({point.form, begin, end, height, grade, grades[i], curve.curvature, i});
            from = end;
            height = point.height + curve.behind * grades[i];
        } else {
            height = point.height;
        }
    }
    if (from > points.back().station + kStationTolerance) {
        return ChainStatus::Overlap;
    }
    parts_ = std::move(parts);
    return ChainStatus::Ok;
}

std::size_t Profile::partAt(double station) const {
    const auto begins = [](double value, const ProfilePart& part) { return value < part.start; };
    const auto after = std::upper_bound(parts_.begin(), parts_.end(), station, begins);
    return after == parts_.begin() ? 0 : static_cast<std::size_t>(after - parts_.begin()) - 1;
}

std::optional<HeightGrade> Profile::at(double station) const {
    if (parts_.empty() || !(station >= startStation() - kStationTolerance) ||
        !(station <= endStation() + kStationTolerance)) {
        return std::nullopt;
    }
    station = std::clamp(station, startStation(), endStation());
    return on(parts_[partAt(station)], station);
}

std::size_t Profile::heights(std::span<const double> stations, std::span<double> heights) const {
    std::size_t known = 0;
    std::size_t part = 0;
    const std::size_t count = std::min(stations.size(), heights.size());
    for (std::size_t i = 0; i < count; ++i) {
        double station = stations[i];
        if (parts_.empty() || !(station >= startStation() - kStationTolerance) ||
            !(station <= endStation() + kStationTolerance)) {
            heights[i] = std::numeric_limits<double>::quiet_NaN();
            continue;
        }
        station = std::clamp(station, startStation(), endStation());
        if (station < parts_[part].start || (part + 1 < parts_.size() && station >= parts_[part + 1].start)) {
            const bool next = part + 1 < parts_.size() && station >= parts_[part + 1].start &&
                              (part + 2 == parts_.size() || station < parts_[part + 2].start);
            part = next ? part + 1 : partAt(station);
        }
        heights[i] = on(parts_[part], station).height;
        ++known;
    }
    return known;
}

std::vector<ProfileExtreme> Profile::extremes() const {
    std::vector<ProfileExtreme> all;
    // The last slope that was not level, and where the profile became level.
    double before = 0.0;
    double levelFrom = 0.0;
    double levelHeight = 0.0;
    bool level = false;
    const auto meet = [&](double slope, double station, double height) {
        if (slope == 0.0) {
            if (!level) {
                level = true;
                levelFrom = station;
                levelHeight = height;
            }
            return;
        }
        if (before != 0.0 && (before > 0.0) != (slope > 0.0)) {
            all.push_back({level ? levelFrom : station, level ? levelHeight : height, before > 0.0,
                           level ? station - levelFrom : 0.0});
        }
        level = false;
        before = slope;
    };
    for (const ProfilePart& part : parts_) {
        meet(part.startGrade, part.start, part.startHeight);
        if (part.form == VerticalForm::None) {
            continue;
        }
        const double across = (part.form == VerticalForm::Parabola ? -part.startGrade : -sineOfGrade(part.startGrade)) /
                              part.curvature; // metres to the place without a slope
        if (across > 0.0 && across < part.end - part.start) {
            const double station = part.start + across;
            meet(part.endGrade, station, on(part, station).height);
        } else {
            meet(part.endGrade, part.end, on(part, part.end).height);
        }
    }
    return all;
}

namespace {

std::optional<ProfileExtreme> outermost(const Profile& profile, bool high) {
    if (profile.empty()) {
        return std::nullopt;
    }
    const auto beyond = [&](double a, double b) { return high ? a > b : a < b; };
    const std::optional<HeightGrade> first = profile.at(profile.startStation());
    const std::optional<HeightGrade> last = profile.at(profile.endStation());
    ProfileExtreme best{profile.startStation(), first->height, high, 0.0};
    for (const ProfileExtreme& extreme : profile.extremes()) {
        if (extreme.high == high && beyond(extreme.height, best.height)) {
            best = extreme;
        }
    }
    if (beyond(last->height, best.height)) {
        best = {profile.endStation(), last->height, high, 0.0};
    }
    return best;
}

} // namespace

std::optional<ProfileExtreme> Profile::highest() const {
    return outermost(*this, true);
}

std::optional<ProfileExtreme> Profile::lowest() const {
    return outermost(*this, false);
}

std::vector<double> Profile::stationsOfHeight(double height) const {
    std::vector<double> stations;
    if (!std::isfinite(height)) {
        return stations;
    }
    const auto take = [&](double station) {
        if (stations.empty() || station - stations.back() > kStationTolerance) {
            stations.push_back(station);
        }
    };
    // On a monotonous stretch of a part the place is enclosed, and the secant's neighbour by halves finds it.
    const auto search = [&](const ProfilePart& part, double low, double high) {
        double below = on(part, low).height - height;
        const double above = on(part, high).height - height;
        if (below == 0.0) {
            take(low);
            return;
        }
        if (above == 0.0) {
            take(high);
            return;
        }
        if ((below > 0.0) == (above > 0.0)) {
            return;
        }
        for (int step = 0; step < 200; ++step) {
            const double middle = 0.5 * (low + high);
            if (middle <= low || middle >= high) {
                break;
            }
            const double there = on(part, middle).height - height;
            if ((there > 0.0) == (below > 0.0)) {
                low = middle;
                below = there;
            } else {
                high = middle;
            }
        }
        take(0.5 * (low + high));
    };
    for (const ProfilePart& part : parts_) {
        if (part.form == VerticalForm::None) {
            if (part.startGrade == 0.0) {
                if (part.startHeight == height) {
                    take(part.start);
                }
                continue;
            }
            search(part, part.start, part.end);
            continue;
        }
        const double across =
            (part.form == VerticalForm::Parabola ? -part.startGrade : -sineOfGrade(part.startGrade)) / part.curvature;
        if (across > 0.0 && across < part.end - part.start) {
            search(part, part.start, part.start + across);
            search(part, part.start + across, part.end);
        } else {
            search(part, part.start, part.end);
        }
    }
    return stations;
}

} // namespace fenmark::curve
