/** The worker behind ali_ARAAmakSR. */
#ifndef FENMARK_ALIGNMENT_TANGENT_CHAIN_WORKER_H
#define FENMARK_ALIGNMENT_TANGENT_CHAIN_WORKER_H

#include "fenmark/alignment/record.h"

namespace fenmark::alignment {

/**
 * Fits the chain straight S, clothoid A1, arc R1, clothoid A2, clothoid A3, arc R in that order of travel. S and R are
 * given, of the others the par. A1 leaves S at infinite radius, A2 and A3 meet at infinite radius, A3 ends on R. R may
 * turn either way; A1, A2 and R1 turn one way, as S and R's start lie to one another.
 * Survey plane. Returns 0 with all six records completed and checked; else -1 with all six unchanged.
 */
int chainWorker(Calelm& s, Calelm& r, Calelm& a1, Calelm& r1, Calelm& a2, Calelm& a3);

} // namespace fenmark::alignment

#endif
