// Names in any case.
#include "values/ascii_case.h"

#include <gtest/gtest.h>

namespace fenmark {

TEST(AsciiCase, LettersBecomeSmallAndAllElseStays) {
    for (int byte = 0; byte < 256; ++byte) {
        const char c = static_cast<char>(byte);
        const std::string_view capitals = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
        const std::size_t place = capitals.find(c);
        EXPECT_EQ(asciiLower(c), place == std::string_view::npos ? c : "abcdefghijklmnopqrstuvwxyz"[place]) << byte;
    }
    EXPECT_EQ(asciiLower("Fenmark.MDM ÄΩ測"), "fenmark.mdm ÄΩ測");
    EXPECT_EQ(asciiLower(""), "");
}

} // namespace fenmark
