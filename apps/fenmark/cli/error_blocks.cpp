// The error blocks of the log, taken apart again.
#include "cli/error_blocks.h"

namespace fenmark::cli {

namespace {

constexpr std::size_t kBlockLines = 4; // two rules around the error and its record

// The text up to the first blank, and what stands behind it.
struct Halves {
    std::string_view first;
    std::string_view rest;
};

Halves atFirstBlank(std::string_view text) {
    const std::size_t blank = text.find(' ');
    if (blank == std::string_view::npos) {
        return {text, {}};
    }
    return {text.substr(0, blank), text.substr(blank + 1)};
}

// The number that a text begins with, without the zeros in front.
std::string_view leadingNumber(std::string_view text) {
    std::string_view number = text.substr(0, text.find_first_not_of("0123456789"));
    while (number.size() > 1 && number.front() == '0') {
        number.remove_prefix(1);
    }
    return number;
}

} // namespace

std::size_t errorBlockCount(const sima::SimaLog& log) {
    return log.errors().size() / kBlockLines;
}

ErrorBlock errorBlock(const sima::SimaLog& log, std::size_t index) {
    const std::string_view title = log.errors()[kBlockLines * index + 1];
    const Halves detail = atFirstBlank(log.errors()[kBlockLines * index + 2]);
    ErrorBlock block{{}, title, leadingNumber(detail.first), detail.rest};
    if (const Halves halves = atFirstBlank(title); title.starts_with("Err") && !halves.rest.empty()) {
        block.code = halves.first;
        block.text = halves.rest;
    }
    return block;
}

} // namespace fenmark::cli
