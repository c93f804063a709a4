// Exact curves from the records of the alignment library, and points in space on a chain.
#pragma once

#include "curve/chain.h"
#include "curve/crossfall.h"
#include "curve/profile.h"

#include <fenmark/alignment/record.h>

#include <cstddef>
#include <span>
#include <vector>

namespace fenmark::curve {

// How far the end of a record may lie from where its own curvature leads, metres. Records are rounded to 1e-5 m, and
// those of a file often to 1e-3 m: 7e-4 m for each end. Seen of records that the library built: 1.0e-8.
inline constexpr double kRecordTolerance = 2e-3;

// The curve of one record. What the record's rounding left is not used where it can be had exactly: a straight runs
// from end to end; an arc and a clothoid have their curvatures from the radii and the sense, and their length from
// radius and sweep, or from the parameter. A record that was constructed (len above 0) gives its start tangent; of one
// with sizes alone the chord gives it, an arc being the shorter one. Refused: NotFinite; NotAnElement for a type that is
// none, a radius or parameter that is not positive, a sense other than 1 and -1, or an end farther than kRecordTolerance
// from where the curve leads.
[[nodiscard]] ChainStatus curveOfRecord(const Calelm& record, Curve& curve);

// Of a list; `failed` gets the index of the first record that is refused.
[[nodiscard]] ChainStatus curvesOfRecords(std::span<const Calelm> records, std::vector<Curve>& curves,
                                          std::size_t* failed = nullptr);

struct SpacePoint {
    double x = 0.0; // north
    double y = 0.0; // east
    double z = 0.0; // height
};

// Points in space at distances and offsets (none, one, or one each): the profile's height, with the crossfall's rise
// where there is one. Profile and crossfall count from the chain's start station without equations. What has no point
// or no height becomes NaN. Returns how many are whole.
std::size_t spacePoints(const Chain& chain, const Profile& profile, const Crossfall* crossfall,
                        std::span<const double> distances, std::span<const double> offsets,
                        std::span<SpacePoint> points);

} // namespace fenmark::curve
