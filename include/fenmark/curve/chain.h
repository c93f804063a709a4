/**
 * Chains of exact curves: alignments by distance and station, located points, joints, lines, crossings, stakes.
 *
 * A chain is made once, never changes, and may be asked by any number of threads. It is kept behind a pointer and freed by
 * fmk_chainFree.
 *
 * A distance runs along the chain from 0 at its start to its length. A station is what stands on the pegs: it counts from
 * the start station, and at a station equation goes on from another value, so that it may occur several times or not at
 * all. Without equations a station is the start station plus the distance. A distance that is exactly on a joint belongs
 * to the curve that begins there, the last one to the last curve. Distances and stations within 1e-6 m of an end are taken
 * for the end.
 *
 * Functions that fill an array of the caller's take its room and give the count; where there is more than there is room
 * for they return FMK_INCOMPLETE, and `count` is what there is in all. `room` may then be 0 and the array null.
 */
#ifndef FENMARK_CURVE_CHAIN_H
#define FENMARK_CURVE_CHAIN_H

#include "fenmark/curve/element.h"
#include "fenmark/curve/fit.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Further statuses of chains, profiles and crossfalls; fmk_statusText has their texts. */
enum {
    FMK_EMPTY = -102,          /**< there is nothing to work on */
    FMK_OUTSIDE = -103,        /**< a station or distance lies beyond the ends, or does not occur */
    FMK_OUT_OF_ORDER = -104,   /**< stations that have to rise do not */
    FMK_NOT_AN_ELEMENT = -107, /**< a record is no straight, arc or clothoid, or contradicts itself by more than 2 mm */
    FMK_TOO_MANY = -108        /**< more stakes than the limit */
};

typedef struct FmkChain FmkChain;

/** At `distance` metres from the chain's start the station goes on from `ahead`. */
typedef struct FmkStationEquation {
    double distance;
    double ahead;
} FmkStationEquation;

/** A place on the chain. */
typedef struct FmkChainPlace {
    FmkPoint point;
    double azimuth;   /**< of travel, radians; not wrapped */
    double curvature; /**< of the chain, 1/m, positive to the right */
    size_t curve;     /**< index of the curve */
} FmkChainPlace;

/** Where a point lies beside the chain. */
typedef struct FmkChainFoot {
    double distance;
    double station;
    double offset;  /**< distance of the point, metres, positive to the right of travel */
    FmkPoint point; /**< of the chain */
    size_t curve;   /**< index of the curve */
    int perpendicular; /**< 1; 0 at an end of the chain and at a broken joint, whose offset has the side outside the kink */
    int atJoint;       /**< 1 on a joint between two curves */
} FmkChainFoot;

/** The joint between two neighbouring curves that have a length. */
typedef struct FmkChainJoint {
    double distance;
    double gap;           /**< metres between the end before and the start behind */
    double turn;          /**< azimuth behind less the azimuth before, radians, -pi to pi */
    double curvatureStep; /**< curvature behind less the curvature before, 1/m */
    size_t curve;         /**< index of the curve that begins there */
} FmkChainJoint;

/** Where two chains meet. */
typedef struct FmkChainCrossing {
    double distance;      /**< along the first */
    double otherDistance; /**< along the other */
    FmkPoint point;
    double angle; /**< azimuth of the other less that of the first, radians, -pi to pi */
    int tangent;  /**< 1 where they touch */
} FmkChainCrossing;

/** What a stake stands for. */
enum {
    FMK_STAKE_INTERVAL = 0,      /**< a round station */
    FMK_STAKE_GIVEN = 1,         /**< a station that was asked for */
    FMK_STAKE_START = 2,         /**< BP */
    FMK_STAKE_END = 3,           /**< EP */
    FMK_STAKE_ARC_START = 4,     /**< BC: straight to arc */
    FMK_STAKE_ARC_END = 5,       /**< EC: arc to straight */
    FMK_STAKE_CLOTHOID_FLAT = 6, /**< KA: between straight and clothoid */
    FMK_STAKE_CLOTHOID_ARC = 7,  /**< KE: between clothoid and arc */
    FMK_STAKE_JOINT = 8          /**< any other joint */
};

typedef struct FmkStake {
    double distance;
    double station;
    double offset;
    FmkPoint point;
    double azimuth; /**< of travel, radians */
    int kind;
} FmkStake;

/** What stakes are wanted. */
typedef struct FmkStakeOptions {
    double every;           /**< round stations, multiples of it, metres; 0 for none */
    const double* stations; /**< given stations, or null */
    size_t stationCount;
    const double* offsets; /**< of each stake, or null for the axis alone */
    size_t offsetCount;
    int mainPoints; /**< 1: start, end and all joints */
} FmkStakeOptions;

/**
 * A chain of curves, which need not meet. `equations` may be null where `equationCount` is 0; their distances rise.
 * The chain is written for FMK_OK alone.
 */
FENMARK_ALIGNMENT_API int fmk_chainFromCurves(const FmkCurve* curves, size_t count, double startStation,
                                              const FmkStationEquation* equations, size_t equationCount,
                                              FmkChain** chain);

/**
 * A chain of the alignment library's records, constructed or with their sizes alone. FMK_NOT_AN_ELEMENT where one of them
 * is none, or ends more than 2 mm from where its own curvature leads.
 */
FENMARK_ALIGNMENT_API int fmk_chainFromRecords(const Calelm* records, size_t count, double startStation,
                                               const FmkStationEquation* equations, size_t equationCount,
                                               FmkChain** chain);

/** A chain by its beginning, intersection points and end, as fmk_curvesByIps lays it; the statuses are its. */
FENMARK_ALIGNMENT_API int fmk_chainFromIps(const FmkIp* points, size_t count, double startStation,
                                           const FmkStationEquation* equations, size_t equationCount, FmkChain** chain);

/** The chain travelled from its end, with stations from `startStation` and no equations. */
FENMARK_ALIGNMENT_API int fmk_chainReversed(const FmkChain* chain, double startStation, FmkChain** reversed);

/** Frees a chain; null is nothing. */
FENMARK_ALIGNMENT_API void fmk_chainFree(FmkChain* chain);

/** Length in metres, and how many curves it has; either may be null. */
FENMARK_ALIGNMENT_API int fmk_chainSize(const FmkChain* chain, double* length, size_t* curves);

/** One of its curves, and the distance at which it starts (may be null). FMK_OUTSIDE for an index that there is not. */
FENMARK_ALIGNMENT_API int fmk_chainCurve(const FmkChain* chain, size_t index, FmkCurve* curve, double* distance);

/** The station at a distance, and the zone of the equations that it lies in (may be null), counted from 0. */
FENMARK_ALIGNMENT_API int fmk_chainStation(const FmkChain* chain, double distance, double* station, size_t* zone);

/** All distances that have a station, rising. FMK_OUTSIDE where none has. */
FENMARK_ALIGNMENT_API int fmk_chainDistances(const FmkChain* chain, double station, double* distances, size_t room,
                                             size_t* count);

/** The place at a station (at its first distance) and an offset, metres, positive to the right. */
FENMARK_ALIGNMENT_API int fmk_chainAtStation(const FmkChain* chain, double station, double offset,
                                             FmkChainPlace* place);

/** The place at a distance and an offset. */
FENMARK_ALIGNMENT_API int fmk_chainAtDistance(const FmkChain* chain, double distance, double offset,
                                              FmkChainPlace* place);

/**
 * The points of many distances, fastest where they rise. `offsets` has `offsetCount` values: 0 (none), 1 (for all) or
 * `count`. What has no point becomes NaN; FMK_OUTSIDE says that there are such.
 */
FENMARK_ALIGNMENT_API int fmk_chainPoints(const FmkChain* chain, const double* distances, size_t count,
                                          const double* offsets, size_t offsetCount, FmkPoint* points);

/** The same with azimuth, curvature and curve. */
FENMARK_ALIGNMENT_API int fmk_chainPlaces(const FmkChain* chain, const double* distances, size_t count,
                                          const double* offsets, size_t offsetCount, FmkChainPlace* places);

/** The nearest place of the chain. FMK_EMPTY for a chain without curves. */
FENMARK_ALIGNMENT_API int fmk_chainLocate(const FmkChain* chain, const FmkPoint* point, FmkChainFoot* foot);

/** The same for many points; FMK_NOT_FINITE says that some are not finite, whose feet are NaN. */
FENMARK_ALIGNMENT_API int fmk_chainLocateAll(const FmkChain* chain, const FmkPoint* points, size_t count,
                                             FmkChainFoot* feet);

/** Every place from which the point is locally nearest, by distance: feet, ends, broken joints. */
FENMARK_ALIGNMENT_API int fmk_chainFeet(const FmkChain* chain, const FmkPoint* point, FmkChainFoot* feet, size_t room,
                                        size_t* count);

/** All joints, by distance. */
FENMARK_ALIGNMENT_API int fmk_chainJoints(const FmkChain* chain, FmkChainJoint* joints, size_t room, size_t* count);

/** The smallest box around the chain. */
FENMARK_ALIGNMENT_API int fmk_chainBox(const FmkChain* chain, FmkBox* box);

/**
 * The chain as a line: points on it whose chords lie within `tolerance` metres of it. Where `room` is too small for that
 * the points are spread evenly, FMK_COARSER is returned, and `error` says how far the line may lie from the chain.
 * `room` has to be at least two points for each curve: FMK_INCOMPLETE otherwise, with what is needed in `count`.
 */
FENMARK_ALIGNMENT_API int fmk_chainLine(const FmkChain* chain, double tolerance, FmkPoint* points, size_t room,
                                        size_t* count, double* error);

/** All crossings of two chains, by distance along the first. */
FENMARK_ALIGNMENT_API int fmk_chainCrossings(const FmkChain* chain, const FmkChain* other, FmkChainCrossing* crossings,
                                             size_t room, size_t* count);

/**
 * Stakes by distance, then in the order of the offsets; where two fall on one place the main point stands, then the given
 * station. FMK_OUTSIDE for a given station that does not occur, FMK_TOO_MANY beyond a million.
 */
FENMARK_ALIGNMENT_API int fmk_chainStakes(const FmkChain* chain, const FmkStakeOptions* options, FmkStake* stakes,
                                          size_t room, size_t* count);

#ifdef __cplusplus
}
#endif

#endif
