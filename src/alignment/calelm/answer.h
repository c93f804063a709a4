// What holds of every answer: a status that says done comes with finite values, and equal records are equal in every
// byte, those between the fields too.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>

#include "fenmark/alignment/record.h"

namespace fenmark::alignment {

// The real fields of a record, in order.
inline constexpr std::array<double Calelm::*, 14> kRealFields = {
    &Calelm::sx, &Calelm::sy,  &Calelm::ex,   &Calelm::ey,   &Calelm::dir, &Calelm::par, &Calelm::r1,
    &Calelm::r2, &Calelm::len, &Calelm::sang, &Calelm::eang, &Calelm::k1,  &Calelm::k2,  &Calelm::k3};

template <class... Reals>
bool allFinite(Reals... values) {
    return (std::isfinite(values) && ...);
}

// The bytes between the type and the first real. An assignment may leave there what the stack held.
inline constexpr std::size_t kPaddingAt = sizeof(int16_t);
inline constexpr std::size_t kPaddingSize = offsetof(Calelm, sx) - kPaddingAt;

inline void clearPadding(Calelm& rec) {
    std::memset(reinterpret_cast<unsigned char*>(&rec) + kPaddingAt, 0, kPaddingSize);
}

// Gives a finished record out.
inline void giveOut(const Calelm& made, Calelm& out) {
    out = made;
    clearPadding(out);
}

// Gives finite reals out. Returns 0 or -1, nothing written.
inline int giveOutReal(double made, double* out) {
    if (!std::isfinite(made)) {
        return -1;
    }
    *out = made;
    return 0;
}
template <std::size_t N>
int giveOutReals(const std::array<double, N>& made, double* out) {
    for (const double value : made) {
        if (!std::isfinite(value)) {
            return -1;
        }
    }
    std::copy(made.begin(), made.end(), out);
    return 0;
}

// Gives a finished record out when every field is finite. Returns 0 or -1, nothing written. The k fields of an unknown
// type mean nothing.
inline int giveOutRecord(const Calelm& made, Calelm* out) {
    const bool known = made.type >= ALI_STRAIGHT && made.type <= ALI_CLOTHOID;
    if (!allFinite(made.sx, made.sy, made.ex, made.ey, made.dir, made.par, made.r1, made.r2, made.len, made.sang,
                   made.eang) ||
        (known && !allFinite(made.k1, made.k2, made.k3))) {
        return -1;
    }
    giveOut(made, *out);
    return 0;
}

// The value's 64 bits. (The standard library of the browser build has no std::bit_cast.)
inline std::uint64_t bitsOf(double value) {
    std::uint64_t bits = 0;
    static_assert(sizeof bits == sizeof value);
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

// Whether a calculation wrote a value that is not finite into the record.
inline bool wroteNonFinite(const Calelm& now, const Calelm& before) {
    for (const auto field : kRealFields) {
        // The bits are what counts: a NaN that was there before was not written.
        if (!std::isfinite(now.*field) && bitsOf(now.*field) != bitsOf(before.*field)) {
            return true;
        }
    }
    return false;
}

// Runs a calculation that changes records in place and returns a status. Where it says done with a value that is not
// finite, every record is as it was and the answer is -1.
template <class Body>
int answerInPlace(std::initializer_list<Calelm*> records, Body&& body) {
    constexpr std::size_t kMostRecords = 8;
    std::array<Calelm, kMostRecords> before;
    std::size_t n = 0;
    for (const Calelm* rec : records) {
        std::memcpy(static_cast<void*>(&before[n++]), rec, sizeof *rec);
    }
    const int status = body();
    const bool done = static_cast<int16_t>(status & 0xffff) >= 0;
    bool finite = true;
    n = 0;
    for (const Calelm* rec : records) {
        finite = finite && !(done && wroteNonFinite(*rec, before[n++]));
    }
    n = 0;
    for (Calelm* rec : records) {
        const Calelm& old = before[n++];
        if (!finite) {
            std::memcpy(static_cast<void*>(rec), &old, sizeof old);
        } else if (done) {
            clearPadding(*rec);
        } else {
            std::memcpy(reinterpret_cast<unsigned char*>(rec) + kPaddingAt,
                        reinterpret_cast<const unsigned char*>(&old) + kPaddingAt, kPaddingSize);
        }
    }
    return finite ? status : -1;
}

} // namespace fenmark::alignment
