// A real with a fixed number of decimals.
#pragma once

#include <string>

namespace fenmark {

// Plain, whatever the locale; rounded half to even of the exact value. Minus zero is written as zero.
[[nodiscard]] std::string fixedReal(double value, int decimals);

} // namespace fenmark
