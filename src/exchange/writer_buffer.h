// A text that is put together in memory and goes to a stream in large pieces: millions of small fields cost less so.
#pragma once

#include "values/real_text.h"

#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>

namespace fenmark::exchange {

class WriterBuffer {
  public:
    explicit WriterBuffer(std::ostream& out) : out_(out) { text_.reserve(kPiece + kLongestNumber); }
    WriterBuffer(const WriterBuffer&) = delete;
    WriterBuffer& operator=(const WriterBuffer&) = delete;
    ~WriterBuffer() { flush(); }

    void flush() {
        out_.write(text_.data(), static_cast<std::streamsize>(text_.size()));
        text_.clear();
    }
    WriterBuffer& operator<<(std::string_view text) {
        text_.append(text);
        if (text_.size() >= kPiece) {
            flush();
        }
        return *this;
    }
    WriterBuffer& operator<<(char c) {
        text_.push_back(c);
        return *this;
    }
    template <typename Integer>
    void integer(Integer value, int base = 10) {
        char buffer[24];
        const auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, value, base);
        *this << std::string_view(buffer, static_cast<std::size_t>(end - buffer));
    }
    // The shortest plain decimal, without exponent, that reads back to the same 64-bit value.
    void real(double value) {
        char buffer[kLongestNumber];
        const auto [end, error] = writePlainReal(buffer, buffer + sizeof buffer, value);
        *this << std::string_view(buffer, static_cast<std::size_t>(end - buffer));
    }
    // A plain decimal with that many decimals, minus zero without its sign.
    void fixed(double value, int decimals) {
        char buffer[kLongestNumber];
        const auto [end, error] = writeFixedReal(buffer, buffer + sizeof buffer, value, decimals);
        std::string_view text(buffer, static_cast<std::size_t>(end - buffer));
        if (text.starts_with('-') && text.find_first_not_of("-0.") == std::string_view::npos) {
            text.remove_prefix(1);
        }
        *this << text;
    }

    // An angle in degrees, within a full turn, with nine decimals: a tenth of a millimetre on the ground.
    void degrees(double value) {
        constexpr std::int64_t kBillion = 1'000'000'000;
        const std::int64_t billionths = std::llround(value * 1e9);
        const std::int64_t size = billionths < 0 ? -billionths : billionths;
        if (billionths < 0) {
            text_.push_back('-');
        }
        integer(size / kBillion);
        char digits[10];
        std::int64_t rest = size % kBillion;
        for (int i = 9; i >= 1; --i) {
            digits[i] = static_cast<char>('0' + rest % 10);
            rest /= 10;
        }
        digits[0] = '.';
        *this << std::string_view(digits, sizeof digits);
    }

  private:
    static constexpr std::size_t kPiece = std::size_t{1} << 16;
    static constexpr std::size_t kLongestNumber = 400; // plain decimals of a 64-bit real take up to some 330 characters

    std::ostream& out_;
    std::string text_;
};

} // namespace fenmark::exchange
