// The outputs of an intersection function, filled beforehand so that what is left unwritten shows.
#pragma once

#include "support_alignment.h"

namespace fenmark::alignment_test {

inline constexpr double kUntouched = 12345.0;

struct Result {
    int status = 0;
    double p1[2] = {kUntouched, kUntouched};
    double p2[2] = {kUntouched, kUntouched};
    double a = kUntouched;
    double b = kUntouched;
    double c = kUntouched;
    double d = kUntouched;
};

template <typename Function>
Result call(Function function, const Calelm& e1, const Calelm& e2) {
    Result r;
    r.status = function(&e1, &e2, r.p1, &r.a, &r.b, r.p2, &r.c, &r.d);
    return r;
}

} // namespace fenmark::alignment_test
