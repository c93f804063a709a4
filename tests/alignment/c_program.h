/* What the C part of the tests gives to the C++ part. */
#ifndef FENMARK_TESTS_C_PROGRAM_H
#define FENMARK_TESTS_C_PROGRAM_H

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct CExample {
    int stakes;
    double station;
    double distance;
    double length;
} CExample;

int run_c_example(CExample* result);
size_t c_size_of_record(void);
size_t c_offset_of_last_field(void);

#ifdef __cplusplus
}
#endif

#endif
