// Limits that the parts of a chain share.
#pragma once

#include <cstddef>

namespace fenmark::curve {

// A distance this near a joint (metres) is on it but for rounding: half a last bit of 1e7 m is 0.9e-9. Seen of others: 1.7e-5.
inline constexpr double kJointTolerance = 1e-9;
inline constexpr std::size_t kBucketsPerPiece = 4;
// Children of one box in the tree of boxes.
inline constexpr std::size_t kFanOut = 8;
// The square of anything larger might overflow, metres.
inline constexpr double kVast = 1e140;
// Two crossings nearer than this along both chains are one, metres. Seen in seeded chains of a joint: 0.
inline constexpr double kSamePlace = 1e-7;

} // namespace fenmark::curve
