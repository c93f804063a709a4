// Chooses the intersection by the types of the two elements, and keeps the stations with their elements.
#include "fenmark/alignment/intersection.h"

namespace {

// Result of a family function in the dispatcher's scale: a touch is one point, two points are 1.
int mapped(int result) {
    if (result == 1) {
        return 0;
    }
    return result == 2 ? 1 : result;
}

} // namespace

extern "C" int ali_intp(const Calelm* e1, const Calelm* e2, double p1[2], double* a, double* b, double p2[2], double* c,
                        double* d) {
    if (e1->type < ALI_STRAIGHT || e1->type > ALI_CLOTHOID || e2->type < ALI_STRAIGHT || e2->type > ALI_CLOTHOID) {
        return -1;
    }
    switch (10 * e1->type + e2->type) {
    case 11: {
        // A crossing counts only where it lies on both.
        double crossing[2];
        double on1 = 0.0;
        double on2 = 0.0;
        if (ali_intpSS(e1, e2, crossing, &on1, &on2) != 0) {
            return -1;
        }
        p1[0] = crossing[0];
        p1[1] = crossing[1];
        *a = on1;
        *b = on2;
        return 0;
    }
    case 12:
        return mapped(ali_intpSR(e1, e2, p1, a, b, p2, c, d));
    case 21:
        return mapped(ali_intpSR(e2, e1, p1, b, a, p2, d, c));
    case 22:
        return mapped(ali_intpRR(e1, e2, p1, a, b, p2, c, d));
    case 23:
        return mapped(ali_intpRA(e1, e2, p1, a, b, p2, c, d));
    case 32:
        return mapped(ali_intpRA(e2, e1, p1, b, a, p2, d, c));
    case 13:
        return mapped(ali_intpSA(e1, e2, p1, a, b, p2, c, d));
    case 31:
        return mapped(ali_intpSA(e2, e1, p1, b, a, p2, d, c));
    case 33:
        // Two clothoids keep their own order of the stations, which is not that of the other pairs.
        return mapped(ali_intpAA(e1, e2, p1, a, b, p2, c, d));
    default:
        return -1;
    }
}
