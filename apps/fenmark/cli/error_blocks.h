// The error blocks of the log, taken apart again.
#pragma once

#include "sima/log/sima_log.h"

#include <cstddef>
#include <string_view>

namespace fenmark::cli {

// "ErrA01-1 text" over "00012行目 A01,...". The views hold as long as the log.
struct ErrorBlock {
    std::string_view code; // "ErrA01-1"; empty for a block without one
    std::string_view text;
    std::string_view line; // its number, without zeros in front
    std::string_view record;
};

std::size_t errorBlockCount(const sima::SimaLog& log);
ErrorBlock errorBlock(const sima::SimaLog& log, std::size_t index);

} // namespace fenmark::cli
