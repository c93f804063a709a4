#ifndef FENMARK_ALIGNMENT_INTERSECTION_H
#define FENMARK_ALIGNMENT_INTERSECTION_H

#include "fenmark/alignment/record.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
