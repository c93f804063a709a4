#ifndef FENMARK_ALIGNMENT_WALKING_H
#define FENMARK_ALIGNMENT_WALKING_H

#include "fenmark/alignment/record.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
