/**
 * The element record, the lists with fixed slots, and the export macro of the alignment library.
 */
#ifndef FENMARK_ALIGNMENT_RECORD_H
#define FENMARK_ALIGNMENT_RECORD_H

#include <stdint.h>

/*
 * Which symbols leave the library. FENMARK_ALIGNMENT_BUILD is defined while the library itself is compiled. On Windows
 * FENMARK_ALIGNMENT_STATIC is for programs that link it as a static library; all others take it from its DLL.
 */
#if defined(_WIN32) && defined(FENMARK_ALIGNMENT_STATIC)
#define FENMARK_ALIGNMENT_API
#elif defined(_WIN32) && defined(FENMARK_ALIGNMENT_BUILD)
#define FENMARK_ALIGNMENT_API __declspec(dllexport)
#elif defined(_WIN32)
#define FENMARK_ALIGNMENT_API __declspec(dllimport)
#elif defined(FENMARK_ALIGNMENT_BUILD)
#define FENMARK_ALIGNMENT_API __attribute__((visibility("default")))
#else
#define FENMARK_ALIGNMENT_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** Values of Calelm::type. */
enum {
    ALI_EMPTY = 0,    /**< a record straight out of initCalelm; every dispatcher refuses it */
    ALI_STRAIGHT = 1, /**< straight line, S in the names of functions */
    ALI_ARC = 2,      /**< circular arc, R */
    ALI_CLOTHOID = 3  /**< clothoid, A */
};

/**
 * One horizontal alignment element: a straight (type 1), a circular arc (type 2) or a clothoid (type 3).
 *
 * Points are in the survey plane (x north, y east, metres), angles are azimuths in radians. An element is always
 * directed from its start to its end, and both tangents point forwards along it. Radii and parameters are positive;
 * a radius of 0 is infinite; the turning sense lies in dir alone.
 *
 * A caller supplies the end points, dir, par, r1 and r2; the construction functions compute the rest.
 * Re below is the radius at the sharper end of a clothoid, the end of smaller non-zero radius; (X, Y) is that end's
 * point on the standard clothoid.
 */
typedef struct Calelm {
    int16_t type; /**< 1 straight, 2 arc, 3 clothoid; 0 is an empty record */
    double sx;    /**< start point, x, metres */
    double sy;    /**< start point, y, metres */
    double ex;    /**< end point, x, metres */
    double ey;    /**< end point, y, metres */
    double dir;   /**< turning sense: +1 left, -1 right; 1 for a straight */
    double par;   /**< arc: radius R; clothoid: parameter A; straight: 0 (metres) */
    double r1;    /**< clothoid: radius at the start, 0 infinite; else 0 */
    double r2;    /**< clothoid: radius at the end, 0 infinite; else 0 */
    double len;   /**< length, metres */
    double sang;  /**< tangent at the start, azimuth, radians in [0, 2 pi) */
    double eang;  /**< tangent at the end, azimuth, radians in [0, 2 pi) */
    double k1;    /**< straight: coefficient a; arc: centre x; clothoid: tau of the sharper end, A^2 / (2 Re^2) */
    double k2; /**< straight: coefficient b; arc: centre y; clothoid: shift of the sharper end, Re cos tau + Y - Re */
    double k3; /**< straight: coefficient c; arc: sweep, radians; clothoid: Xm of the sharper end, X - Re sin tau */
} Calelm;

/** One entry of a monitoring list: five slots of 64 bits. */
typedef struct AliMoniEntry {
    double slot1;    /**< not used by the library */
    double x;        /**< point, survey plane, metres */
    double y;        /**< point, survey plane, metres */
    double distance; /**< written by Calc_moni: distance to the foot on the first element that answers, -1 if none */
    double slot5;    /**< not used by the library */
} AliMoniEntry;

/**
 * Monitoring list of Calc_moni: a count, and from byte 8 on that many entries.
 * The array is declared with one entry; a caller allocates as many as it needs.
 */
typedef struct AliMoniList {
    int16_t count;           /**< number of entries */
    int16_t reserved[3];     /**< fills up to byte 8; not used by the library */
    AliMoniEntry entries[1]; /**< the first of the entries */
} AliMoniList;

/** One entry of a list of intersection points (IP), as chk_tangent and chk_on_tangent take it: seven slots of 64 bits.
 */
typedef struct AliIpEntry {
    double slot1; /**< not used by the library */
    double x;     /**< point, survey plane, metres */
    double y;     /**< point, survey plane, metres */
    double slot4; /**< not used by the library, like all that follow */
    double slot5;
    double slot6;
    double slot7;
} AliIpEntry;

/** Sets every field of the record to zero. Returns 0; -1 for a null pointer. */
FENMARK_ALIGNMENT_API int initCalelm(Calelm* rec);

#ifdef __cplusplus
}
#endif

#endif
