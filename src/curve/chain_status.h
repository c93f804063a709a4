// What the chains, profiles and diagrams answer to what they cannot do. The values are those of the C interface
// (fenmark/curve/status.h and fenmark/curve/chain.h).
#pragma once

namespace fenmark::curve {

enum class ChainStatus : int {
    Ok = 0,
    NotFinite = -2,      // a value is NaN or infinite, or the result would be
    Empty = -102,        // nothing was given
    Outside = -103,      // beyond either end by more than kStationTolerance
    OutOfOrder = -104,   // stations that have to rise do not
    Overlap = -8,        // two vertical curves lie over each other
    NoCurve = -3,        // a length or a radius below 0, or a curve that its grades cannot hold
    NotAnElement = -107, // a record that is no straight, arc or clothoid, or that contradicts itself
    TooMany = -108,      // more results than the given room or the limit holds
    NoMemory = -9,
    NoObject = -1, // a null handle or a null array
};

// In one line of plain English; never null.
[[nodiscard]] const char* textOf(ChainStatus status);

// A station this close to either end of a chain or a diagram (metres) is taken for the end: one written with six decimals
// and read again. Seen: 9e-7 and 1.1e-6, which a test sets; of vertical curves that touch 0, that overlap 0.05.
inline constexpr double kStationTolerance = 1e-6;

} // namespace fenmark::curve
