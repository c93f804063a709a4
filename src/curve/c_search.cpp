// The C interface of the searches: nearest points and crossings.
#include "curve/c_interface.h"

#include <algorithm>
#include <cstring>

using namespace fenmark::curve;

namespace {

bool isFinite(const Foot& foot) {
    return std::isfinite(foot.along) && std::isfinite(foot.offset) && fenmark::curve::isFinite(foot.point);
}

// Equal results compare equal byte by byte: the padding behind the last field is 0.
template <typename Record>
Record blank() {
    Record record;
    std::memset(&record, 0, sizeof record);
    return record;
}

FmkFoot recordOf(const Foot& foot) {
    FmkFoot record = blank<FmkFoot>();
    record.along = foot.along;
    record.point = fenmark::curve::recordOf(foot.point);
    record.offset = foot.offset;
    record.perpendicular = foot.perpendicular ? 1 : 0;
    return record;
}

FmkCrossing recordOf(const Crossing& crossing) {
    FmkCrossing record = blank<FmkCrossing>();
    record.alongFirst = crossing.alongFirst;
    record.alongSecond = crossing.alongSecond;
    record.point = fenmark::curve::recordOf(crossing.point);
    record.angle = crossing.angle;
    record.tangent = crossing.tangent ? 1 : 0;
    return record;
}

} // namespace

extern "C" {

int fmk_curveNearest(const FmkCurve* curve, const FmkPoint* point, FmkFoot* foot) {
    if (curve == nullptr || point == nullptr || foot == nullptr) {
        return FMK_NO_POINTER;
    }
    return guarded([&] {
        const Curve value = valueOf(*curve);
        const int status = statusOf(value);
        if (status != FMK_OK) {
            return status;
        }
        if (!fenmark::curve::isFinite(valueOf(*point))) {
            return static_cast<int>(FMK_NOT_FINITE);
        }
        const Foot found = nearestFoot(value, valueOf(*point));
        if (!isFinite(found)) {
            return static_cast<int>(FMK_TOO_LARGE);
        }
        *foot = recordOf(found);
        return static_cast<int>(FMK_OK);
    });
}

int fmk_curveFeet(const FmkCurve* curve, const FmkPoint* point, FmkFoot* feet, size_t room, size_t* count) {
    if (curve == nullptr || point == nullptr || feet == nullptr || count == nullptr) {
        return FMK_NO_POINTER;
    }
    return guarded([&] {
        const Curve value = valueOf(*curve);
        const int status = statusOf(value);
        if (status != FMK_OK) {
            return status;
        }
        if (!fenmark::curve::isFinite(valueOf(*point))) {
            return static_cast<int>(FMK_NOT_FINITE);
        }
        const Feet feetFound = feetOf(value, valueOf(*point), std::min(room, kMostFeet));
        const std::vector<Foot>& found = feetFound.found;
        if (!std::all_of(found.begin(), found.end(), [](const Foot& foot) { return isFinite(foot); })) {
            return static_cast<int>(FMK_TOO_LARGE);
        }
        *count = found.size();
        std::transform(found.begin(), found.end(), feet, [](const Foot& foot) { return recordOf(foot); });
        return static_cast<int>(feetFound.complete ? FMK_OK : FMK_INCOMPLETE);
    });
}

int fmk_curveCrossings(const FmkCurve* first, const FmkCurve* second, double tolerance, FmkCrossing* found, size_t room,
                       size_t* count, int* overlap) {
    if (first == nullptr || second == nullptr || found == nullptr || count == nullptr) {
        return FMK_NO_POINTER;
    }
    return guarded([&] {
        const Curve a = valueOf(*first);
        const Curve b = valueOf(*second);
        for (const int status : {statusOf(a), statusOf(b)}) {
            if (status != FMK_OK) {
                return status;
            }
        }
        if (!std::isfinite(tolerance)) {
            return static_cast<int>(FMK_NOT_FINITE);
        }
        if (!(tolerance > 0.0)) {
            return static_cast<int>(FMK_BAD_VALUE);
        }
        const Crossings all = crossings(a, b, tolerance, std::min(std::max<std::size_t>(room, 1), kMostCrossings));
        for (const Crossing& crossing : all.found) {
            if (!fenmark::curve::isFinite(crossing.point) ||
                !std::isfinite(crossing.alongFirst + crossing.alongSecond)) {
                return static_cast<int>(FMK_TOO_LARGE);
            }
        }
        *count = std::min(room, all.found.size());
        for (std::size_t i = 0; i < *count; ++i) {
            found[i] = recordOf(all.found[i]);
        }
        if (overlap != nullptr) {
            *overlap = all.overlap ? 1 : 0;
        }
        return static_cast<int>(all.complete && all.found.size() <= room ? FMK_OK : FMK_INCOMPLETE);
    });
}

} // extern "C"
