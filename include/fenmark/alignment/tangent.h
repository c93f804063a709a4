/**
 * Tangent solvers: elements fitted between two given ones, so that every joint of the chain coincides and is tangent.
 *
 * The capitals before "mak" name what is made, those behind it the given elements, in the order of travel: S a
 * straight, R an arc, A a clothoid. All records are in the survey plane (x north, y east, metres; tangents are
 * azimuths, radians) and complete, as the construction functions leave them. Of a record to be made only the size is
 * read: `par`, the radius of an arc or the parameter of a clothoid, and `dir` where told.
 *
 * On success the given elements are cut: the end of the first and the start of the second move to the tangent points,
 * and the whole chain is checked in place before it is handed out: joints within 1e-5 m (1e-4 m where both sides carry
 * rounded lengths or radii), tangents within 1e-5 rad. A chain that is not tangent is never a success.
 * All return 0, or a status below 0 read from the low 16 bits (1 or 2 where a construction function gave it). After a
 * failure every record is as it was before the call.
 */
#ifndef FENMARK_ALIGNMENT_TANGENT_H
#define FENMARK_ALIGNMENT_TANGENT_H

#include "fenmark/alignment/record.h"

#ifdef __cplusplus
extern "C" {
#endif

FENMARK_ALIGNMENT_API int ali_RmakSS(Calelm* s1, Calelm* s2, Calelm* r);
FENMARK_ALIGNMENT_API int ali_AAmakSS(Calelm* s1, Calelm* s2, Calelm* a1, Calelm* a2);
FENMARK_ALIGNMENT_API int ali_ARAmakSS(Calelm* s1, Calelm* s2, Calelm* a1, Calelm* r, Calelm* a2);
FENMARK_ALIGNMENT_API int ali_RmakSR(int side, Calelm* s, Calelm* r1, Calelm* r2);
FENMARK_ALIGNMENT_API int ali_RmakRR(Calelm* r1, Calelm* r2, Calelm* r3);
FENMARK_ALIGNMENT_API int ali_SmakRR(Calelm* r1, Calelm* r2, Calelm* s);
FENMARK_ALIGNMENT_API int ali_RAmakSR(int side, int mode, Calelm* s, Calelm* r, Calelm* r1, Calelm* a);
FENMARK_ALIGNMENT_API int ali_ARmakRR(int side, int mode, Calelm* r1, Calelm* r2, Calelm* r3, Calelm* a);
FENMARK_ALIGNMENT_API int ali_ARAmakRR(int mode1, int mode2, Calelm* r1, Calelm* r2, Calelm* a1, Calelm* r3,
                                       Calelm* a2);
FENMARK_ALIGNMENT_API int ali_SAmakRR(int side, Calelm* r1, Calelm* r2, Calelm* s, Calelm* a);
FENMARK_ALIGNMENT_API int ali_ASAmakRR(Calelm* r1, Calelm* r2, Calelm* a1, Calelm* s, Calelm* a2);
FENMARK_ALIGNMENT_API int ali_ARAAmakSR(int side, Calelm* s, Calelm* r, Calelm* a1, Calelm* r1, Calelm* a2, Calelm* a3);
FENMARK_ALIGNMENT_API int ali_Smak(const Calelm* element, double station, double angle, double half_length, Calelm* s);
FENMARK_ALIGNMENT_API int ali_SmakS(const Calelm* element, double station, double angle, double half_length, Calelm* s);
FENMARK_ALIGNMENT_API int ali_SmakR(const Calelm* element, double station, double angle, double half_length, Calelm* s);
FENMARK_ALIGNMENT_API int ali_SmakA(const Calelm* element, double station, double angle, double half_length, Calelm* s);

#ifdef __cplusplus
}
#endif

#endif
