// The C interface of chains.
#include "curve/chain_c.h"

#include "curve/chain_records.h"
#include "curve/stakes.h"

#include <limits>
#include <memory>
#include <type_traits>
#include <utility>

using namespace fenmark::curve;

namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

// The functions' arrays are passed to the library as they are.
static_assert(sizeof(FmkPoint) == sizeof(Point) && std::is_standard_layout_v<Point>);
static_assert(sizeof(FmkStationEquation) == sizeof(StationEquation));

int makeChain(const std::vector<Curve>& curves, double startStation, const FmkStationEquation* equations,
              size_t equationCount, FmkChain** out) {
    if (equationCount > 0 && equations == nullptr) {
        return FMK_NO_POINTER;
    }
    std::vector<StationEquation> all;
    for (size_t i = 0; i < equationCount; ++i) {
        all.push_back({equations[i].distance, equations[i].ahead});
    }
    auto made = std::make_unique<FmkChain>();
    const int status = statusOf(made->chain.set(curves, startStation, all));
    if (status == FMK_OK) {
        *out = made.release();
    }
    return status;
}

FmkChainPlace recordOf(const ChainPlace& place) {
    FmkChainPlace record = zeroRecord<FmkChainPlace>();
    record.point = fenmark::curve::recordOf(place.point);
    record.azimuth = place.azimuth;
    record.curvature = place.curvature;
    record.curve = place.curve;
    return record;
}

FmkChainFoot recordOf(const Chain& chain, const ChainFoot& foot) {
    FmkChainFoot record = zeroRecord<FmkChainFoot>();
    const std::optional<Point> point = chain.pointAt(foot.distance);
    record.distance = foot.distance;
    record.station = chain.stationAt(foot.distance).station;
    record.offset = foot.offset;
    record.point = point ? fenmark::curve::recordOf(*point) : FmkPoint{kNone, kNone};
    record.curve = foot.curve;
    record.perpendicular = foot.perpendicular ? 1 : 0;
    record.atJoint = foot.atJoint ? 1 : 0;
    return record;
}

int placeAt(const FmkChain* chain, double distance, double offset, FmkChainPlace* place) {
    const std::optional<ChainPlace> found = chain->chain.placeAt(distance, offset);
    if (!found) {
        const bool on = distance >= -kStationTolerance && distance <= chain->chain.length() + kStationTolerance;
        return on && !chain->chain.empty() ? FMK_TOO_LARGE : kOutside;
    }
    *place = recordOf(*found);
    return FMK_OK;
}

} // namespace

extern "C" {

int fmk_chainFromCurves(const FmkCurve* curves, size_t count, double startStation, const FmkStationEquation* equations,
                        size_t equationCount, FmkChain** chain) {
    if (chain == nullptr || (curves == nullptr && count > 0)) {
        return FMK_NO_POINTER;
    }
    return guarded([&] {
        std::vector<Curve> all;
        all.reserve(count);
        for (size_t i = 0; i < count; ++i) {
            all.push_back(valueOf(curves[i]));
            if (const int status = fenmark::curve::statusOf(all.back()); status != FMK_OK) {
                return status;
            }
        }
        return makeChain(all, startStation, equations, equationCount, chain);
    });
}

int fmk_chainFromRecords(const Calelm* records, size_t count, double startStation, const FmkStationEquation* equations,
                         size_t equationCount, FmkChain** chain) {
    if (chain == nullptr || (records == nullptr && count > 0)) {
        return FMK_NO_POINTER;
    }
    return guarded([&] {
        std::vector<Curve> curves;
        if (const int status = statusOf(curvesOfRecords({records, count}, curves)); status != FMK_OK) {
            return status;
        }
        return makeChain(curves, startStation, equations, equationCount, chain);
    });
}

int fmk_chainFromIps(const FmkIp* points, size_t count, double startStation, const FmkStationEquation* equations,
                     size_t equationCount, FmkChain** chain) {
    if (chain == nullptr || (points == nullptr && count > 0)) {
        return FMK_NO_POINTER;
    }
    return guarded([&]() -> int {
        // Every intersection point gives four curves at most.
        std::vector<FmkCurve> curves(4 * count + 4);
        std::vector<FmkIpCurve> ips(count + 1);
        size_t written = 0;
        const int status = fmk_curvesByIps(points, count, ips.data(), curves.data(), curves.size(), &written);
        if (status != FMK_OK) {
            return status;
        }
        return fmk_chainFromCurves(curves.data(), written, startStation, equations, equationCount, chain);
    });
}

int fmk_chainReversed(const FmkChain* chain, double startStation, FmkChain** reversed) {
    if (chain == nullptr || reversed == nullptr) {
        return FMK_NO_POINTER;
    }
    if (!std::isfinite(startStation)) {
        return FMK_NOT_FINITE;
    }
    return guarded([&] {
        auto made = std::make_unique<FmkChain>();
        made->chain = chain->chain.reversed(startStation);
        if (made->chain.curves().size() != chain->chain.curves().size()) {
            return FMK_TOO_LARGE;
        }
        *reversed = made.release();
        return FMK_OK;
    });
}

void fmk_chainFree(FmkChain* chain) {
    delete chain;
}

int fmk_chainSize(const FmkChain* chain, double* length, size_t* curves) {
    if (chain == nullptr) {
        return FMK_NO_POINTER;
    }
    if (length != nullptr) {
        *length = chain->chain.length();
    }
    if (curves != nullptr) {
        *curves = chain->chain.curves().size();
    }
    return FMK_OK;
}

int fmk_chainCurve(const FmkChain* chain, size_t index, FmkCurve* curve, double* distance) {
    if (chain == nullptr || curve == nullptr) {
        return FMK_NO_POINTER;
    }
    if (index >= chain->chain.curves().size()) {
        return kOutside;
    }
    *curve = fenmark::curve::recordOf(chain->chain.curves()[index]);
    if (distance != nullptr) {
        *distance = chain->chain.distanceOf(index);
    }
    return FMK_OK;
}

int fmk_chainStation(const FmkChain* chain, double distance, double* station, size_t* zone) {
    if (chain == nullptr || station == nullptr) {
        return FMK_NO_POINTER;
    }
    if (!std::isfinite(distance)) {
        return FMK_NOT_FINITE;
    }
    if (distance < -kStationTolerance || distance > chain->chain.length() + kStationTolerance) {
        return kOutside;
    }
    const ZonedStation found = chain->chain.stationAt(std::clamp(distance, 0.0, chain->chain.length()));
    *station = found.station;
    if (zone != nullptr) {
        *zone = found.zone;
    }
    return FMK_OK;
}

int fmk_chainDistances(const FmkChain* chain, double station, double* distances, size_t room, size_t* count) {
    if (chain == nullptr || count == nullptr || (distances == nullptr && room > 0)) {
        return FMK_NO_POINTER;
    }
    if (!std::isfinite(station)) {
        return FMK_NOT_FINITE;
    }
    return guarded([&] {
        const std::vector<double> found = chain->chain.stations().distancesAt(station, chain->chain.length());
        const int status = giveAll(found, distances, room, count, [](double distance) { return distance; });
        return found.empty() ? kOutside : status;
    });
}

int fmk_chainAtStation(const FmkChain* chain, double station, double offset, FmkChainPlace* place) {
    if (chain == nullptr || place == nullptr) {
        return FMK_NO_POINTER;
    }
    if (!std::isfinite(station) || !std::isfinite(offset)) {
        return FMK_NOT_FINITE;
    }
    return guarded([&] {
        const double distance = chain->chain.distanceAt(station);
        return std::isnan(distance) ? kOutside : placeAt(chain, distance, offset, place);
    });
}

int fmk_chainAtDistance(const FmkChain* chain, double distance, double offset, FmkChainPlace* place) {
    if (chain == nullptr || place == nullptr) {
        return FMK_NO_POINTER;
    }
    if (!std::isfinite(distance) || !std::isfinite(offset)) {
        return FMK_NOT_FINITE;
    }
    return placeAt(chain, distance, offset, place);
}

int fmk_chainPoints(const FmkChain* chain, const double* distances, size_t count, const double* offsets,
                    size_t offsetCount, FmkPoint* points) {
    if (chain == nullptr || (count > 0 && (distances == nullptr || points == nullptr))) {
        return FMK_NO_POINTER;
    }
    if (const int status = checkOffsets(offsets, offsetCount, count); status != FMK_OK) {
        return status;
    }
    constexpr size_t kBlock = 1024;
    Point block[kBlock];
    size_t found = 0;
    for (size_t from = 0; from < count; from += kBlock) {
        const size_t size = std::min(kBlock, count - from);
        const std::span<const double> beside =
            offsetCount > 1 ? std::span(offsets + from, size) : std::span(offsets, offsetCount);
        found += chain->chain.points({distances + from, size}, beside, {block, size});
        for (size_t i = 0; i < size; ++i) {
            points[from + i] = fenmark::curve::recordOf(block[i]);
        }
    }
    return found == count ? FMK_OK : kOutside;
}

int fmk_chainPlaces(const FmkChain* chain, const double* distances, size_t count, const double* offsets,
                    size_t offsetCount, FmkChainPlace* places) {
    if (chain == nullptr || (count > 0 && (distances == nullptr || places == nullptr))) {
        return FMK_NO_POINTER;
    }
    if (const int status = checkOffsets(offsets, offsetCount, count); status != FMK_OK) {
        return status;
    }
    size_t found = 0;
    for (size_t i = 0; i < count; ++i) {
        ChainPlace place;
        const double offset = offsetCount == 0 ? 0.0 : offsets[offsetCount == 1 ? 0 : i];
        found += chain->chain.places({distances + i, 1}, {&offset, 1}, {&place, 1});
        places[i] = recordOf(place);
    }
    return found == count ? FMK_OK : kOutside;
}

int fmk_chainLocate(const FmkChain* chain, const FmkPoint* point, FmkChainFoot* foot) {
    if (chain == nullptr || point == nullptr || foot == nullptr) {
        return FMK_NO_POINTER;
    }
    if (!isFinite(valueOf(*point))) {
        return FMK_NOT_FINITE;
    }
    if (chain->chain.empty()) {
        return kEmpty;
    }
    return guarded([&] {
        const std::optional<ChainFoot> found = chain->chain.locate(valueOf(*point));
        if (!found || !std::isfinite(found->offset)) {
            return FMK_TOO_LARGE;
        }
        *foot = recordOf(chain->chain, *found);
        return FMK_OK;
    });
}

int fmk_chainLocateAll(const FmkChain* chain, const FmkPoint* points, size_t count, FmkChainFoot* feet) {
    if (chain == nullptr || (count > 0 && (points == nullptr || feet == nullptr))) {
        return FMK_NO_POINTER;
    }
    if (chain->chain.empty()) {
        return kEmpty;
    }
    return guarded([&] {
        constexpr size_t kBlock = 256;
        Point block[kBlock];
        ChainFoot found[kBlock];
        size_t located = 0;
        for (size_t from = 0; from < count; from += kBlock) {
            const size_t size = std::min(kBlock, count - from);
            std::transform(points + from, points + from + size, block, [](const FmkPoint& p) { return valueOf(p); });
            located += chain->chain.locate({block, size}, {found, size});
            for (size_t i = 0; i < size; ++i) {
                feet[from + i] = recordOf(chain->chain, found[i]);
            }
        }
        return located == count ? FMK_OK : FMK_NOT_FINITE;
    });
}

int fmk_chainFeet(const FmkChain* chain, const FmkPoint* point, FmkChainFoot* feet, size_t room, size_t* count) {
    if (chain == nullptr || point == nullptr || count == nullptr || (feet == nullptr && room > 0)) {
        return FMK_NO_POINTER;
    }
    if (!isFinite(valueOf(*point))) {
        return FMK_NOT_FINITE;
    }
    return guarded([&] {
        return giveAll(chain->chain.feet(valueOf(*point)), feet, room, count,
                       [&](const ChainFoot& foot) { return recordOf(chain->chain, foot); });
    });
}

int fmk_chainJoints(const FmkChain* chain, FmkChainJoint* joints, size_t room, size_t* count) {
    if (chain == nullptr || count == nullptr || (joints == nullptr && room > 0)) {
        return FMK_NO_POINTER;
    }
    return guarded([&] {
        return giveAll(chain->chain.joints(), joints, room, count, [](const ChainJoint& joint) {
            return FmkChainJoint{joint.distance, joint.gap, joint.turn, joint.curvatureStep, joint.curve};
        });
    });
}

int fmk_chainBox(const FmkChain* chain, FmkBox* box) {
    if (chain == nullptr || box == nullptr) {
        return FMK_NO_POINTER;
    }
    return guarded([&] {
        const std::optional<Box> found = chain->chain.box();
        if (!found) {
            return kEmpty;
        }
        *box = {found->minX, found->minY, found->maxX, found->maxY};
        return static_cast<int>(FMK_OK);
    });
}

int fmk_chainLine(const FmkChain* chain, double tolerance, FmkPoint* points, size_t room, size_t* count,
                  double* error) {
    if (chain == nullptr || count == nullptr || (points == nullptr && room > 0)) {
        return FMK_NO_POINTER;
    }
    if (!std::isfinite(tolerance)) {
        return FMK_NOT_FINITE;
    }
    if (!(tolerance > 0.0)) {
        return FMK_BAD_VALUE;
    }
    return guarded([&]() -> int {
        const ChainLine line = chain->chain.line(tolerance, room);
        const int status = giveAll(line.points, points, room, count,
                                   [](const Point& point) { return fenmark::curve::recordOf(point); });
        if (error != nullptr) {
            *error = line.tolerance;
        }
        return status == FMK_OK && line.tolerance > tolerance ? static_cast<int>(FMK_COARSER) : status;
    });
}

int fmk_chainCrossings(const FmkChain* chain, const FmkChain* other, FmkChainCrossing* crossings, size_t room,
                       size_t* count) {
    if (chain == nullptr || other == nullptr || count == nullptr || (crossings == nullptr && room > 0)) {
        return FMK_NO_POINTER;
    }
    return guarded([&] {
        return giveAll(chain->chain.crossings(other->chain), crossings, room, count, [](const ChainCrossing& found) {
            FmkChainCrossing record = zeroRecord<FmkChainCrossing>();
            record.distance = found.distance;
            record.otherDistance = found.otherDistance;
            record.point = fenmark::curve::recordOf(found.point);
            record.angle = found.angle;
            record.tangent = found.tangent ? 1 : 0;
            return record;
        });
    });
}

int fmk_chainStakes(const FmkChain* chain, const FmkStakeOptions* options, FmkStake* stakes, size_t room,
                    size_t* count) {
    if (chain == nullptr || options == nullptr || count == nullptr || (stakes == nullptr && room > 0) ||
        (options->stations == nullptr && options->stationCount > 0) ||
        (options->offsets == nullptr && options->offsetCount > 0)) {
        return FMK_NO_POINTER;
    }
    return guarded([&] {
        StakeOptions wanted;
        wanted.every = options->every;
        wanted.stations = {options->stations, options->stationCount};
        wanted.offsets = {options->offsets, options->offsetCount};
        wanted.mainPoints = options->mainPoints != 0;
        std::vector<Stake> found;
        if (const int status = statusOf(stakesOf(chain->chain, wanted, found)); status != FMK_OK) {
            return status;
        }
        return giveAll(found, stakes, room, count, [](const Stake& stake) {
            FmkStake record = zeroRecord<FmkStake>();
            record.distance = stake.distance;
            record.station = stake.station;
            record.offset = stake.offset;
            record.point = fenmark::curve::recordOf(stake.point);
            record.azimuth = stake.azimuth;
            record.kind = static_cast<int>(stake.kind);
            return record;
        });
    });
}

} // extern "C"
