// Record codes as numbers, so that a line is dispatched by one comparison.
#pragma once

#include <cstdint>
#include <string_view>

namespace fenmark::sima {

using RecordCode = std::uint32_t;

constexpr RecordCode kNoCode = 0x0100'0000;    // the empty field of a blank line
constexpr RecordCode kOtherCode = 0x0200'0000; // not three characters long, so never a code of the format

// Codes compare exactly: capitals, three characters, no blanks.
constexpr RecordCode recordCode(std::string_view text) {
    if (text.empty()) {
        return kNoCode;
    }
    if (text.size() != 3) {
        return kOtherCode;
    }
    const auto byte = [text](std::size_t i) { return static_cast<RecordCode>(static_cast<unsigned char>(text[i])); };
    return byte(0) << 16 | byte(1) << 8 | byte(2);
}

} // namespace fenmark::sima
