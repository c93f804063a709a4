// Stakes along a chain.
#include "curve/stakes.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace fenmark::curve {

namespace {

enum class Shape { Straight, Arc, Clothoid };

Shape shapeOf(const Curve& curve) {
    if (curve.startCurvature != curve.endCurvature) {
        return Shape::Clothoid;
    }
    return curve.startCurvature == 0.0 ? Shape::Straight : Shape::Arc;
}

StakeKind kindOfJoint(Shape before, Shape behind) {
    const auto between = [&](Shape a, Shape b) { return (before == a && behind == b) || (before == b && behind == a); };
    if (before == Shape::Straight && behind == Shape::Arc) {
        return StakeKind::ArcStart;
    }
    if (before == Shape::Arc && behind == Shape::Straight) {
        return StakeKind::ArcEnd;
    }
    if (between(Shape::Straight, Shape::Clothoid)) {
        return StakeKind::ClothoidFlat;
    }
    if (between(Shape::Arc, Shape::Clothoid)) {
        return StakeKind::ClothoidArc;
    }
    return StakeKind::Joint;
}

struct Wanted {
    double distance;
    StakeKind kind;
    int rank; // the lower one stands where two fall together
};

} // namespace

ChainStatus stakesOf(const Chain& chain, const StakeOptions& options, std::vector<Stake>& stakes) {
    stakes.clear();
    const auto finite = [](double value) { return std::isfinite(value); };
    if (!finite(options.every) || !std::all_of(options.stations.begin(), options.stations.end(), finite) ||
        !std::all_of(options.offsets.begin(), options.offsets.end(), finite)) {
        return ChainStatus::NotFinite;
    }
    if (options.every < 0.0) {
        return ChainStatus::NoCurve;
    }
    if (chain.empty()) {
        return ChainStatus::Empty;
    }
    const double length = chain.length();
    const StationEquations& stations = chain.stations();
    const std::size_t each = std::max<std::size_t>(options.offsets.size(), 1);
    const double room = static_cast<double>(options.most / each);
    std::vector<Wanted> wanted;
    if (options.mainPoints) {
        wanted.push_back({0.0, StakeKind::Start, 0});
        for (const ChainJoint& joint : chain.joints()) {
            const std::size_t before = chain.curveAt(joint.distance, Side::Before).value_or(joint.curve);
            wanted.push_back({joint.distance,
                              kindOfJoint(shapeOf(chain.curves()[before]), shapeOf(chain.curves()[joint.curve])), 0});
        }
        wanted.push_back({length, StakeKind::End, 0});
    }
    for (const double station : options.stations) {
        const std::vector<double> distances = stations.distancesAt(station, length);
        if (distances.empty()) {
            return ChainStatus::Outside;
        }
        for (const double distance : distances) {
            wanted.push_back({distance, StakeKind::Given, 1});
        }
        if (static_cast<double>(wanted.size()) > room) {
            return ChainStatus::TooMany;
        }
    }
    if (options.every > 0.0) {
        if (!(length / options.every + static_cast<double>(wanted.size()) < room)) {
            return ChainStatus::TooMany;
        }
        for (std::size_t zone = 0; zone < stations.zoneCount(); ++zone) {
            const double from = stations.distanceIn(zone, 0.0); // the distance at which the zone's station would be 0
            const double begin = zone == 0 ? 0.0 : stations.equations()[zone - 1].distance;
            const double end =
                zone + 1 < stations.zoneCount() ? std::min(stations.equations()[zone].distance, length) : length;
            const double first = std::ceil((begin - from - kStationTolerance) / options.every);
            const double last = std::floor((end - from + kStationTolerance) / options.every);
            // Multiples between which no double lies are no round stations.
            if (std::max(std::abs(first), std::abs(last)) > 0x1.0p52) {
                return ChainStatus::TooMany;
            }
            for (double i = first; i <= last; i += 1.0) {
                wanted.push_back({std::clamp(from + i * options.every, begin, end), StakeKind::Interval, 2});
            }
        }
    }
    std::stable_sort(wanted.begin(), wanted.end(),
                     [](const Wanted& a, const Wanted& b) { return a.distance < b.distance; });
    std::vector<Wanted> once;
    for (const Wanted& one : wanted) {
        if (!once.empty() && one.distance - once.back().distance <= kStationTolerance) {
            if (one.rank < once.back().rank) {
                once.back() = one;
            }
            continue;
        }
        once.push_back(one);
    }
    if (static_cast<double>(once.size()) > room) {
        return ChainStatus::TooMany;
    }
    stakes.reserve(once.size() * each);
    for (const Wanted& one : once) {
        const ZonedStation station = chain.stationAt(one.distance);
        for (std::size_t i = 0; i < each; ++i) {
            const double offset = options.offsets.empty() ? 0.0 : options.offsets[i];
            const std::optional<ChainPlace> place = chain.placeAt(one.distance, offset);
            if (!place) {
                stakes.clear();
                return ChainStatus::NotFinite;
            }
            stakes.push_back({one.distance, station.station, station.zone, offset, place->point, place->azimuth,
                              place->curvature, one.kind});
        }
    }
    return ChainStatus::Ok;
}

} // namespace fenmark::curve
