// The digits test and the number test.
#include "sima/validators/field_tests.h"

#include <gtest/gtest.h>

#include <string>

namespace fenmark::sima {

TEST(DigitsTest, PassesDigitsOfAnyLengthAndTheEmptyText) {
    for (const char* text : {"", "   ", "0", "12", " 00012 ", "123456789", "99999999999999999999"}) {
        EXPECT_TRUE(isDigits(text)) << text;
    }
}

TEST(DigitsTest, RefusesAllOtherCharacters) {
    for (const char* text : {"-1", "+1", "1.0", "1 2", "a", "　1", "１"}) {
        EXPECT_FALSE(isDigits(text)) << text;
    }
}

TEST(NumberTest, PassesPlainNumbers) {
    for (const char* text : {"", "  ", "0", "12", "-1.5", ".5", "5.", "-.5", " 140.0 ", "\t7\t"}) {
        EXPECT_TRUE(isNumber(text)) << text;
    }
}

TEST(NumberTest, RefusesSignsExponentsAndLetters) {
    for (const char* text : {"+1", "1e5", "-1e5", "12a", "a", "0x10", "1,5", "１"}) {
        EXPECT_FALSE(isNumber(text)) << text;
    }
}

TEST(NumberTest, TakesOutMinusSignsOnlyWhereTheTextConvertsToZeroOrBelow) {
    for (const char* text : {"-", "--5", "- 5", "-1-2", "-.", "0-5", "-0"}) {
        EXPECT_TRUE(isNumber(text)) << text;
    }
    for (const char* text : {"1-2", "5-", "0.1-", "0.0000001-", "1--"}) {
        EXPECT_FALSE(isNumber(text)) << text;
    }
}

TEST(NumberTest, TakesOnePointAtMost) {
    EXPECT_TRUE(isNumber("."));
    for (const char* text : {"1.5.2", "..", "1..", "-1.5.2", "-.."}) {
        EXPECT_FALSE(isNumber(text)) << text;
    }
}

TEST(NumberTest, AcceptsTheIdeographicSpaceOutsideTheDigits) {
    for (const char* text : {"　140.0", "140.0　", "　", "　 1", "1　 　", "-　5", "　-5"}) {
        EXPECT_TRUE(isNumber(text)) << text;
    }
    EXPECT_FALSE(isNumber("1　2"));
    EXPECT_FALSE(isNumber("1 2"));
}

TEST(NumberTest, LooksAtTheValueOfTheWholeText) {
    // Too small for a 64-bit real, so the value is 0.0 and the sign behind it is taken out.
    EXPECT_TRUE(isNumber("0." + std::string(400, '0') + "1-"));
}

} // namespace fenmark::sima
