// The objects behind the C interface of chains, profiles and crossfalls, and what its functions share.
#pragma once

#include "curve/c_interface.h"
#include "curve/chain.h"
#include "curve/crossfall.h"
#include "curve/profile.h"
#include "fenmark/curve/profile.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <span>
#include <vector>

struct FmkChain {
    fenmark::curve::Chain chain;
};

struct FmkProfile {
    fenmark::curve::Profile profile;
};

struct FmkCrossfall {
    fenmark::curve::Crossfall crossfall;
};

namespace fenmark::curve {

// The chains' own statuses as plain numbers, since two enumerations do not mix in an expression.
inline constexpr int kOutside = FMK_OUTSIDE;
inline constexpr int kEmpty = FMK_EMPTY;

inline int statusOf(ChainStatus status) {
    return static_cast<int>(status);
}

// A record of zero bytes, its padding too, so that equal results compare equal.
template <typename Record>
Record zeroRecord() {
    Record record;
    std::memset(&record, 0, sizeof record);
    return record;
}

// The first of the found values into the caller's array, and how many there are.
template <typename Record, typename Value, typename Convert>
int giveAll(const std::vector<Value>& found, Record* out, std::size_t room, std::size_t* count,
            const Convert& convert) {
    *count = found.size();
    for (std::size_t i = 0; i < std::min(room, found.size()); ++i) {
        out[i] = convert(found[i]);
    }
    return found.size() > room ? FMK_INCOMPLETE : FMK_OK;
}

// Whether a list of offsets fits a list of places: none, one for all, or one each.
inline int checkOffsets(const double* offsets, std::size_t offsetCount, std::size_t count) {
    if (offsetCount > 0 && offsets == nullptr) {
        return FMK_NO_POINTER;
    }
    return offsetCount > 1 && offsetCount != count ? FMK_BAD_VALUE : FMK_OK;
}

} // namespace fenmark::curve
