/* What a C program sees of the curves, for the C++ test beside it. */
#ifndef FENMARK_TESTS_CURVE_C_PROGRAM_H
#define FENMARK_TESTS_CURVE_C_PROGRAM_H

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

size_t c_size_of_curve(void);
size_t c_size_of_ip_curve(void);
size_t c_size_of_crossing(void);
double c_end_of_quarter_circle(void);

#ifdef __cplusplus
}
#endif

#endif
