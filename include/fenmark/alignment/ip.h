/**
 * Curves at an intersection point (IP): arc, two clothoids, clothoid-arc-clothoid, or two arcs with three clothoids.
 *
 * Given are the previous point, the IP with the sizes of its curve, and the next point, all in the survey plane
 * (x north, y east, metres). The functions fill the records of the curve whole, in the order of travel, and write the
 * azimuths of the legs, the intersection angle and the tangent lengths into the IP entry. They do not change the
 * polygon and do not test whether the curve fits between its neighbours.
 *
 * Method: the centre of the arc lies where the parallels of the legs at the distances R + dR cross (dR the shift of the
 * clothoid on that leg); the clothoids begin Xm before the feet of the centre on the legs. [Kasper 1968].
 *
 * Returned is 0, or -1 in the low 16 bits. Unless stated otherwise nothing is written on failure: two equal points in a
 * leg (nearer than 1e-7 m), values that are not numbers, or sizes for which no tangent curve exists.
 */
#ifndef FENMARK_ALIGNMENT_IP_H
#define FENMARK_ALIGNMENT_IP_H

#include "fenmark/alignment/record.h"

#ifdef __cplusplus
extern "C" {
#endif

/** An intersection point with the sizes of its curve: fourteen slots of 64 bits. */
typedef struct AliIpCurve {
    double slot1;        /**< not used by the library */
    double x;            /**< the IP, survey plane, metres */
    double y;            /**< the IP, survey plane, metres */
    int16_t kind;        /**< curve kind; read by ali_IPsetARARA alone: 8 asks for the reversed form */
    int16_t reserved[3]; /**< fills up the slot */
    double size1;        /**< R (ali_IPsetR), A1 (all others), metres */
    double size2;        /**< A2 (ali_IPsetAA), R (ali_IPsetARA), R1 (ali_IPsetARARA) */
    double size3;        /**< A2 (ali_IPsetARA, ali_IPsetARARA) */
    double size4;        /**< R2 (ali_IPsetARARA) */
    double size5;        /**< A3 (ali_IPsetARARA) */
    double azimuth_in;   /**< out: azimuth of the leg coming in, radians */
    double azimuth_out;  /**< out: azimuth of the leg going out, radians */
    double angle;        /**< out: intersection angle, at most pi; of ali_IPsetARARA the turn clockwise, below 2 pi */
    double tangent1;     /**< out: tangent length before the IP, metres; given to ali_IPsetARARA */
    double tangent2;     /**< out: tangent length after the IP, metres; given to ali_IPsetARARA with kind 8 */
} AliIpCurve;

/**
 * A plain arc of radius size1. Legs in line give an empty arc at the IP.
 * @return 0; -1 also for a radius that is not positive, or legs that turn back
 */
FENMARK_ALIGNMENT_API int ali_IPsetR(const double previous[2], AliIpCurve* ip, const double next[2], Calelm* r);

/**
 * Two clothoids, A1 = size1 and A2 = size2, that meet at the common radius R = sqrt((A1^2 + A2^2) / (2 IA)).
 * @return 0; -1 also for legs in line, and when the clothoids do not meet within 1e-5 m in x and in y: the records and
 *         the entry are written in the latter case
 */
FENMARK_ALIGNMENT_API int ali_IPsetAA(const double previous[2], AliIpCurve* ip, const double next[2], Calelm* a1,
                                      Calelm* a2);

/**
 * Clothoid, arc, clothoid: A1 = size1, R = size2, A2 = size3; R / A must be above 0.56. A sweep of the arc below 1e-5
 * rad makes it empty: it ends where it begins and has no length. Its r1 and r2 are -1.
 * @return 0; -1 also when the clothoids alone turn by more than IA: the records and the entry are written then
 */
FENMARK_ALIGNMENT_API int ali_IPsetARA(const double previous[2], AliIpCurve* ip, const double next[2], Calelm* a1,
                                       Calelm* r, Calelm* a2);

/**
 * Clothoid, arc, egg-shaped clothoid, arc, clothoid: A1, R1, A2, R2, A3 = size1 to size5. The curve begins tangent1
 * before the IP, which is given; tangent2 comes out. With kind 8 the curve ends tangent2 behind the IP, which is given,
 * and tangent1 comes out; sizes and records are in the order of travel in both forms.
 * @return 0; -1 when the second leg is out of reach of the middle clothoid, when R1 = R2 and A2 has nothing to join, or
 *         when the chain is not tangent with arcs of at most a half circle; or the code of a construction function
 */
FENMARK_ALIGNMENT_API int ali_IPsetARARA(const double previous[2], AliIpCurve* ip, const double next[2], Calelm* a1,
                                         Calelm* r1, Calelm* a2, Calelm* r2, Calelm* a3);

#ifdef __cplusplus
}
#endif

#endif
