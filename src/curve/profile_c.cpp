// The C interface of profiles and crossfalls.
#include "curve/chain_c.h"
#include "curve/chain_records.h"

#include <memory>

using namespace fenmark::curve;

extern "C" {

int fmk_profileMake(const FmkVerticalPoint* points, size_t count, FmkProfile** profile) {
    if (profile == nullptr || (points == nullptr && count > 0)) {
        return FMK_NO_POINTER;
    }
    return guarded([&] {
        std::vector<VerticalPoint> all;
        for (size_t i = 0; i < count; ++i) {
            const FmkVerticalPoint& point = points[i];
            if (point.form < FMK_VERTICAL_NONE || point.form > FMK_VERTICAL_CIRCLE) {
                return static_cast<int>(FMK_BAD_VALUE);
            }
            all.push_back(
                {point.station, point.height, static_cast<VerticalForm>(point.form), point.length, point.radius});
        }
        auto made = std::make_unique<FmkProfile>();
        const int status = statusOf(made->profile.set(all));
        if (status == FMK_OK) {
            *profile = made.release();
        }
        return status;
    });
}

void fmk_profileFree(FmkProfile* profile) {
    delete profile;
}

int fmk_profileAt(const FmkProfile* profile, double station, double* height, double* grade, double* curvature) {
    if (profile == nullptr) {
        return FMK_NO_POINTER;
    }
    if (!std::isfinite(station)) {
        return FMK_NOT_FINITE;
    }
    const std::optional<HeightGrade> found = profile->profile.at(station);
    if (!found) {
        return kOutside;
    }
    if (!std::isfinite(found->height) || !std::isfinite(found->grade) || !std::isfinite(found->curvature)) {
        return FMK_TOO_LARGE;
    }
    if (height != nullptr) {
        *height = found->height;
    }
    if (grade != nullptr) {
        *grade = found->grade;
    }
    if (curvature != nullptr) {
        *curvature = found->curvature;
    }
    return FMK_OK;
}

int fmk_profileHeights(const FmkProfile* profile, const double* stations, size_t count, double* heights) {
    if (profile == nullptr || (count > 0 && (stations == nullptr || heights == nullptr))) {
        return FMK_NO_POINTER;
    }
    return profile->profile.heights({stations, count}, {heights, count}) == count ? FMK_OK : kOutside;
}

int fmk_profileExtremes(const FmkProfile* profile, FmkProfileExtreme* extremes, size_t room, size_t* count) {
    if (profile == nullptr || count == nullptr || (extremes == nullptr && room > 0)) {
        return FMK_NO_POINTER;
    }
    return guarded([&] {
        return giveAll(profile->profile.extremes(), extremes, room, count, [](const ProfileExtreme& found) {
            FmkProfileExtreme record = zeroRecord<FmkProfileExtreme>();
            record.station = found.station;
            record.height = found.height;
            record.levelFor = found.levelFor;
            record.high = found.high ? 1 : 0;
            return record;
        });
    });
}

int fmk_crossfallMake(const FmkCrossfallStation* stations, size_t count, FmkCrossfall** crossfall) {
    if (crossfall == nullptr || (stations == nullptr && count > 0)) {
        return FMK_NO_POINTER;
    }
    return guarded([&] {
        std::vector<CrossfallStation> all;
        for (size_t i = 0; i < count; ++i) {
            all.push_back({stations[i].station, stations[i].left, stations[i].right});
        }
        auto made = std::make_unique<FmkCrossfall>();
        const int status = statusOf(made->crossfall.set(all));
        if (status == FMK_OK) {
            *crossfall = made.release();
        }
        return status;
    });
}

void fmk_crossfallFree(FmkCrossfall* crossfall) {
    delete crossfall;
}

int fmk_crossfallAt(const FmkCrossfall* crossfall, double station, double* left, double* right) {
    if (crossfall == nullptr || left == nullptr || right == nullptr) {
        return FMK_NO_POINTER;
    }
    if (!std::isfinite(station)) {
        return FMK_NOT_FINITE;
    }
    const std::optional<Slopes> found = crossfall->crossfall.at(station);
    if (!found) {
        return kOutside;
    }
    *left = found->left;
    *right = found->right;
    return FMK_OK;
}

int fmk_chainSpacePoints(const FmkChain* chain, const FmkProfile* profile, const FmkCrossfall* crossfall,
                         const double* distances, size_t count, const double* offsets, size_t offsetCount,
                         FmkSpacePoint* points) {
    if (chain == nullptr || profile == nullptr || (count > 0 && (distances == nullptr || points == nullptr))) {
        return FMK_NO_POINTER;
    }
    if (const int status = checkOffsets(offsets, offsetCount, count); status != FMK_OK) {
        return status;
    }
    size_t found = 0;
    for (size_t i = 0; i < count; ++i) {
        const double offset = offsetCount == 0 ? 0.0 : offsets[offsetCount == 1 ? 0 : i];
        SpacePoint point;
        found += spacePoints(chain->chain, profile->profile, crossfall == nullptr ? nullptr : &crossfall->crossfall,
                             {distances + i, 1}, {&offset, 1}, {&point, 1});
        points[i] = {point.x, point.y, point.z};
    }
    return found == count ? FMK_OK : kOutside;
}

} // extern "C"
