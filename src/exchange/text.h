// Numbers and texts as the exchange formats want them; no locale touches them.
#pragma once

#include "values/fixed_real.h"

#include <ostream>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace fenmark::exchange {

// The shortest decimal that reads back to the same 64-bit value, always with a point or an exponent, as JSON takes it;
// "null" if the value is not finite.
struct JsonReal {
    double value;
};
std::ostream& operator<<(std::ostream& out, JsonReal real);

// The shortest plain decimal, without exponent, that reads back to the same 64-bit value.
struct PlainReal {
    double value;
};
std::ostream& operator<<(std::ostream& out, PlainReal real);

// The same as text, a whole number without a point: "5", "2.5".
std::string shortReal(double value);

using fenmark::fixedReal;

// A quoted JSON string.
struct JsonText {
    std::string_view text;
};
std::ostream& operator<<(std::ostream& out, JsonText text);

// Text for element content and attributes. Characters that XML cannot hold, and the control characters that a page of HTML
// must not have, become U+FFFD.
std::string xmlText(std::string_view text);

// A name without the blanks at its ends, the ideographic space U+3000 among them.
std::string_view withoutOuterBlanks(std::string_view name);

// Gives names that nothing before bore: "a", then "a (2)".
class UniqueNames {
  public:
    std::string take(std::string_view wanted);
    // How many came back with a number behind them.
    [[nodiscard]] std::size_t renamed() const { return renamed_; }

  private:
    std::unordered_map<std::string, int> taken_;
    std::size_t renamed_ = 0;
};

} // namespace fenmark::exchange
