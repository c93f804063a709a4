/**
 * The last step of every tangent solver: the chain is built in the survey plane and checked in place.
 *
 * A solver passes its candidate in the calculation plane, in the order of travel. Only a chain that passes here is
 * a success; everything before is a way to find one.
 */
#pragma once

#include "fenmark/alignment/record.h"

#include "alignment/tangent/calc_record.h"

#include <array>
#include <cstddef>
#include <optional>
#include <span>

namespace fenmark::alignment {

/** Ends that are one point, metres. Seen in 10,000 seeded chains: 1.5e-11. */
inline constexpr double kJointTolerance = 1e-5;
/** The same where both neighbours carry coordinates or radii rounded to 1e-5, metres. Seen in
 * 860,000 joints of seeded chains: 9.3e-5, and 1.05e-4 of those refused. */
inline constexpr double kRoundedJointTolerance = 1e-4;
/** Tangents that are one direction, radians. Seen in the solvers' chains: 9.98e-6, and 2e-5 of those refused. */
inline constexpr double kTangentTolerance = 1e-5;

/**
 * Whether the end of a clothoid at a radius is lost: the series takes every point of a tangent angle below the angle
 * step for the clothoid's origin. The end of a finite radius, some 600 times the parameter, that lies there would be off
 * by its distance from the origin, which counts beyond kJointTolerance.
 */
bool endIsLost(double parameter, double radius);

/**
 * Whether complete records of the survey plane form a tangent chain in the order of travel.
 *
 * Every value is finite; every arc has its ends on its circle and turns from its start to its end tangent through its
 * sweep in the sense of dir, and every clothoid through the difference of its two tau, neither end being lost at the
 * origin of the series, where a tangent that fell to an axis may be 1e-5 off; every joint coincides and is tangent. The
 * first record keeps the start point, start tangent, size and sense of firstBefore, the last record the end of
 * lastBefore: a given element that would have to turn round shows there.
 */
bool isTangentChain(std::span<const Calelm> chain, const Calelm& firstBefore, const Calelm& lastBefore,
                    double jointTolerance = kJointTolerance);

/**
 * Whether the given elements at the two ends of a chain are only cut: neither is longer than it was. Of several tangent
 * chains one that lengthens nothing is what the caller means.
 */
bool onlyCuts(std::span<const Calelm> chain, const Calelm& firstBefore, const Calelm& lastBefore);

/**
 * Whether a given arc that keeps more than a half circle is only cut: the tangent is not led round a whole loop that the
 * arc never had.
 */
bool keepsLongArcs(std::span<const Calelm> chain, const Calelm& firstBefore, const Calelm& lastBefore);

/** Which chains are taken. */
enum class Given {
    Cut,      ///< those that only cut the given elements
    Anywhere, ///< those that lengthen them, too; no arc keeps more than a half circle
    CutLong,  ///< those that only cut the given elements, of which an arc may keep more than a half circle
};

/**
 * Completes a clothoid of the survey plane between two points that its sizes fit, by ali_makA; both points stay as they
 * are, where ali_makA may take a chord for turned by up to 1.389e-6 and carry the sharp end as far away (its status 2).
 * @return 0; -1, record untouched, for sizes that no clothoid has and for points further apart or nearer than that
 */
int completeClothoid(Calelm& clothoid);

/**
 * Completes an arc of the survey plane about its centre k1, k2: tangents, length rounded to 1e-5, and the sweep from its
 * start to its end in the sense of dir, which may exceed a half circle. Neither the ends nor the centre change.
 */
void completeAboutCentre(Calelm& arc);

/** Completes a record of the survey plane that has its points and sizes; the points stay. Returns 0, or -1. */
int completeElement(Calelm& e);

/**
 * Levels the azimuths of complete records that fell to 0 at one side of a joint only, and checks the chain. Returns
 * whether it is a tangent chain as isTangentChain has it.
 */
bool finishChain(std::span<Calelm> chain, const Calelm& firstBefore, const Calelm& lastBefore);

/**
 * Completes every record of a chain by its construction function and checks the whole. The chain is in the survey plane
 * and has its points and sizes. firstBefore and lastBefore are the given records before the call.
 * Returns 0, or -1 with the chain in no defined state.
 */
int completeSurveyChain(std::span<Calelm> chain, const Calelm& firstBefore, const Calelm& lastBefore, Given given);

/** The same for a candidate of the calculation plane: the finished chain in the survey plane, or nothing. */
template <std::size_t N>
std::optional<std::array<Calelm, N>> completeChain(const std::array<CalcRecord, N>& candidate,
                                                   const Calelm& firstBefore, const Calelm& lastBefore,
                                                   Given given = Given::Anywhere) {
    std::array<Calelm, N> chain;
    for (std::size_t i = 0; i < N; ++i) {
        chain[i] = toSurvey(candidate[i]);
    }
    if (completeSurveyChain(chain, firstBefore, lastBefore, given) != 0) {
        return std::nullopt;
    }
    return chain;
}

/** The same for the only chain that a solver has: at first without, then with given arcs of more than a half circle. */
template <std::size_t N>
std::optional<std::array<Calelm, N>> completeOnlyChain(const std::array<CalcRecord, N>& candidate,
                                                       const Calelm& firstBefore, const Calelm& lastBefore) {
    const auto chain = completeChain(candidate, firstBefore, lastBefore, Given::Anywhere);
    return chain ? chain : completeChain(candidate, firstBefore, lastBefore, Given::CutLong);
}

} // namespace fenmark::alignment
