// The element record: a caller starts with one whose fields are all zero.
#include "fenmark/alignment/record.h"

#include <cstddef>

static_assert(offsetof(Calelm, sx) == 8 && sizeof(Calelm) == 8 + 14 * 8, "fifteen values, the first in a slot of 8");
static_assert(sizeof(AliMoniEntry) == 40 && offsetof(AliMoniList, entries) == 8, "five slots, from byte 8 on");
static_assert(sizeof(AliIpEntry) == 56, "seven slots");

extern "C" int initCalelm(Calelm* rec) {
    if (rec == nullptr) {
        return -1;
    }
    *rec = Calelm{};
    return 0;
}
