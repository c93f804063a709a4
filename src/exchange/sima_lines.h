// The lines of a SIMA file: names in code page 932, numbers as the format's readers want them.
#pragma once

#include "exchange/writer_buffer.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace fenmark::exchange {

// A plain decimal with at least three decimals, and as many more as the same 64-bit value needs.
std::string exactMetres(double value);
// A measured value with three to six decimals if it lies within 1e-7 of such a number, otherwise with nine.
std::string roundedMetres(double value);

class SimaLines {
  public:
    SimaLines(std::ostream& out, bool columns) : out_(out), columns_(columns) {}

    // A record from its fields, in this order: begin, fields, end.
    SimaLines& begin(std::string_view code) {
        out_ << code << ',';
        return *this;
    }
    SimaLines& text(std::string_view plain) { // a field that is ASCII and holds no separator
        out_ << plain << ',';
        return *this;
    }
    SimaLines& name(std::string_view utf8);
    SimaLines& number(std::int32_t value);
    SimaLines& metres(std::string_view value); // right-aligned
    void end() { out_ << "\r\n"; }
    void line(std::string_view plain) { out_ << plain << "\r\n"; }

    // What of the names the file cannot hold.
    std::size_t replacedCharacters() const { return replaced_; }
    std::size_t controlCharacters() const { return controls_; }

  private:
    WriterBuffer out_;
    bool columns_;
    std::string name_;
    std::string encoded_;
    std::size_t replaced_ = 0;
    std::size_t controls_ = 0;
};

} // namespace fenmark::exchange
