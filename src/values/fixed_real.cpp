// A real with a fixed number of decimals.
#include "values/fixed_real.h"

#include "values/real_text.h"

#include <array>

namespace fenmark {

std::string fixedReal(double value, int decimals) {
    std::array<char, 400> buffer; // the longest double has 309 digits before the point
    const auto [end, error] = writeFixedReal(buffer.data(), buffer.data() + buffer.size(), value, decimals);
    std::string text(buffer.data(), end);
    if (text.starts_with('-') && text.find_first_not_of("-0.") == std::string::npos) {
        text.erase(0, 1);
    }
    return text;
}

} // namespace fenmark
