// Chooses the builder of an element by its type.
#include "fenmark/alignment/construction.h"

extern "C" int ali_mak(Calelm* rec, int modeGiven) {
    const auto mode = static_cast<int16_t>(modeGiven);
    if (mode < 0 || mode > 2) {
        return -1;
    }
    switch (rec->type) {
    case ALI_STRAIGHT:
        return mode == 0 ? ali_makS(rec) : ali_makangS(rec, mode);
    case ALI_ARC:
        return mode == 0 ? ali_makR(rec) : ali_makangR(rec, mode);
    case ALI_CLOTHOID:
        return mode == 0 ? ali_makA(rec) : ali_makangA(rec, mode);
    default:
        return -1;
    }
}
