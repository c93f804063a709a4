// What a fuzz target demands: a condition that does not hold ends the process, which the fuzzer reports with its input.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

namespace fenmark::fuzz {

inline void require(bool holds, const std::string& what) {
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", what.c_str());
        std::abort();
    }
}

} // namespace fenmark::fuzz
