// One line of the file as the validators see it.
#pragma once

#include "sima/text/splitter.h"

#include <cstdint>
#include <string_view>

namespace fenmark::sima {

struct Record {
    std::int32_t line; // number of the line, 1 for the first of the file
    const Fields& fields;
    std::string_view text; // the trimmed line
};

} // namespace fenmark::sima
