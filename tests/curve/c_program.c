/* The public header in C99. */
#include "c_program.h"

#include <fenmark/curve.h>

size_t c_size_of_curve(void) {
    return sizeof(FmkCurve);
}
size_t c_size_of_ip_curve(void) {
    return sizeof(FmkIpCurve);
}
size_t c_size_of_crossing(void) {
    return sizeof(FmkCrossing);
}

/* A quarter of a circle of 100 m to the right, from the origin north: ends 100 m north and 100 m east. */
double c_end_of_quarter_circle(void) {
    FmkCurve arc = {{{0.0, 0.0}, 0.0}, 157.07963267948966, 0.01, 0.01};
    FmkPose end;
    if (fmk_curvePose(&arc, arc.length, &end) != FMK_OK || end.point.x < 99.0) {
        return 0.0;
    }
    return end.point.y;
}
