/**
 * Longitudinal profile and crossfall of a chain, and points in space.
 *
 * Stations here are distances along the chain counted from its start station without equations, metres. Profiles and
 * crossfalls are made once, never change, and may be asked by any number of threads.
 */
#ifndef FENMARK_CURVE_PROFILE_H
#define FENMARK_CURVE_PROFILE_H

#include "fenmark/curve/chain.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct FmkProfile FmkProfile;
typedef struct FmkCrossfall FmkCrossfall;

/** The form of a vertical curve. */
enum { FMK_VERTICAL_NONE = 0, FMK_VERTICAL_PARABOLA = 1, FMK_VERTICAL_CIRCLE = 2 };

/** A point of vertical intersection, where two grades meet. */
typedef struct FmkVerticalPoint {
    double station;
    double height;
    double length; /**< of the curve along the station axis, metres; 0: the radius gives it */
    double radius; /**< metres, positive for crests and sags alike */
    int form;
} FmkVerticalPoint;

/** A place without a grade. */
typedef struct FmkProfileExtreme {
    double station;
    double height;
    double levelFor; /**< metres for which the profile stays level there; 0 but on a level grade */
    int high;        /**< 1 a highest place, 0 a lowest one */
} FmkProfileExtreme;

/** Slopes outwards on both sides: the rise for each metre away from the axis; -0.02 both ways is a crowned road. */
typedef struct FmkCrossfallStation {
    double station;
    double left;
    double right;
} FmkCrossfallStation;

typedef struct FmkSpacePoint {
    double x; /**< north */
    double y; /**< east */
    double z; /**< height */
} FmkSpacePoint;

/**
 * A profile of at least two points with rising stations. FMK_OVERLAP where curves lie over each other or reach beyond the
 * ends, FMK_OUT_OF_ORDER, FMK_BAD_VALUE for negative lengths and radii or a form that is none.
 */
FENMARK_ALIGNMENT_API int fmk_profileMake(const FmkVerticalPoint* points, size_t count, FmkProfile** profile);
/** Gives the profile back; null is allowed. */
FENMARK_ALIGNMENT_API void fmk_profileFree(FmkProfile* profile);

/** Height (m), grade (m a metre) and its change for each metre (1/m, positive in a sag) at a station; any may be null. */
FENMARK_ALIGNMENT_API int fmk_profileAt(const FmkProfile* profile, double station, double* height, double* grade,
                                        double* curvature);

/** The heights of many stations, fastest where they rise. NaN where there is none, which FMK_OUTSIDE reports. */
FENMARK_ALIGNMENT_API int fmk_profileHeights(const FmkProfile* profile, const double* stations, size_t count,
                                             double* heights);

/** The low and high points between the ends, by station. */
FENMARK_ALIGNMENT_API int fmk_profileExtremes(const FmkProfile* profile, FmkProfileExtreme* extremes, size_t room,
                                              size_t* count);

/** A crossfall diagram of stations that do not fall; between two of them slopes run straight, two at one are a step. */
FENMARK_ALIGNMENT_API int fmk_crossfallMake(const FmkCrossfallStation* stations, size_t count,
                                            FmkCrossfall** crossfall);
/** Gives the diagram back; null is allowed. */
FENMARK_ALIGNMENT_API void fmk_crossfallFree(FmkCrossfall* crossfall);

/** Both slopes at a station. */
FENMARK_ALIGNMENT_API int fmk_crossfallAt(const FmkCrossfall* crossfall, double station, double* left, double* right);

/**
 * Points in space at distances and offsets, as fmk_chainPoints takes them, with the profile's height and the crossfall's
 * rise (null for none). What has no point or height is NaN, which FMK_OUTSIDE reports.
 */
FENMARK_ALIGNMENT_API int fmk_chainSpacePoints(const FmkChain* chain, const FmkProfile* profile,
                                               const FmkCrossfall* crossfall, const double* distances, size_t count,
                                               const double* offsets, size_t offsetCount, FmkSpacePoint* points);

#ifdef __cplusplus
}
#endif

#endif
