/* The public header read by a C99 compiler, and the example of the header run from C. */
#include "fenmark/alignment.h"

#include "c_program.h"

int run_c_example(CExample* result) {
    Calelm spiral;
    initCalelm(&spiral);
    spiral.type = ALI_CLOTHOID;
    spiral.sx = -36000.0;
    spiral.sy = 12000.0;
    spiral.sang = 0.5;
    spiral.dir = -1.0;
    spiral.par = 80.0;
    spiral.r1 = 0.0;
    spiral.r2 = 100.0;
    int status = ali_mak(&spiral, 1);
    if (status != 0) {
        return status;
    }
    result->stakes = 0;
    for (double s = 0.0; s <= spiral.len; s += 10.0) {
        double p[2], azimuth;
        if (ali_onl(&spiral, s, p, &azimuth) == 0) {
            ++result->stakes;
        }
    }
    const double measured[2] = {-35970.0, 12020.0};
    double foot[2];
    status = ali_proj(&spiral, measured, &result->station, foot);
    result->distance = ali_CDist2P(measured, foot);
    result->length = spiral.len;
    return status;
}

size_t c_size_of_record(void) {
    return sizeof(Calelm);
}

size_t c_offset_of_last_field(void) {
    return offsetof(Calelm, k3);
}
