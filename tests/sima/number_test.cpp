// Text to numbers and back.
#include "sima/text/number.h"
#include "sima/validators/field_tests.h"
#include "values/real_text.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::sima {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::string printed(double value) {
    char buffer[400];
    std::snprintf(buffer, sizeof buffer, "%0.12f", value);
    return buffer;
}

} // namespace

TEST(ToReal, ReadsTheLongestPrefixThatFits) {
    EXPECT_EQ(toReal("12.5"), 12.5);
    EXPECT_EQ(toReal("  12.5abc"), 12.5);
    EXPECT_EQ(toReal("\t\n\v\f\r 7"), 7.0);
    EXPECT_EQ(toReal("+3.25"), 3.25);
    EXPECT_EQ(toReal("-1-2"), -1.0);
    EXPECT_EQ(toReal(".5"), 0.5);
    EXPECT_EQ(toReal("5."), 5.0);
    EXPECT_EQ(toReal("1.5.2"), 1.5);
    EXPECT_EQ(toReal("1,5"), 1.0);
}

TEST(ToReal, IsZeroIfNothingFits) {
    for (const char* text : {"", " ", "-", "+", ".", "-.", "- 5", "--5", "+-5", "abc", "e5", ".e5", "　1"}) {
        EXPECT_EQ(toReal(text), 0.0) << text;
    }
}

TEST(ToReal, ConvertsExponentsThatAreWhole) {
    EXPECT_EQ(toReal("1e2"), 100.0);
    EXPECT_EQ(toReal("1E+2"), 100.0);
    EXPECT_EQ(toReal("1.5e-3"), 0.0015);
    EXPECT_EQ(toReal("1e"), 1.0);
    EXPECT_EQ(toReal("2e+"), 2.0);
    EXPECT_EQ(toReal("3ex"), 3.0);
}

TEST(ToReal, KnowsNeitherHexadecimalNorInfinityNorNotANumber) {
    EXPECT_EQ(toReal("0x10"), 0.0);
    EXPECT_EQ(toReal("inf"), 0.0);
    EXPECT_EQ(toReal("-infinity"), 0.0);
    EXPECT_EQ(toReal("nan"), 0.0);
}

TEST(ToReal, OverflowsToInfinityAndUnderflowsToZero) {
    EXPECT_EQ(toReal("1e400"), kInfinity);
    EXPECT_EQ(toReal("-1e400"), -kInfinity);
    EXPECT_EQ(toReal("0.0000001e400"), kInfinity);
    EXPECT_EQ(toReal("1e-400"), 0.0);
    EXPECT_EQ(toReal("1000e-500"), 0.0);
    EXPECT_EQ(toReal("1e99999999999999999999"), kInfinity);
    EXPECT_EQ(toReal("1e-99999999999999999999"), 0.0);
    EXPECT_EQ(toReal("0e99999999999999999999"), 0.0);
    EXPECT_EQ(toReal(std::string(400, '9')), kInfinity);
    EXPECT_EQ(toReal("0." + std::string(400, '0') + "1"), 0.0);
    EXPECT_EQ(toReal("0." + std::string(400, '0') + "1e10"), 0.0);
    EXPECT_EQ(toReal("1." + std::string(400, '0') + "e350"), kInfinity);
    EXPECT_EQ(toReal("4.9e-324"), std::numeric_limits<double>::denorm_min());
}

TEST(ToReal, KeepsTheSignOfZero) {
    EXPECT_TRUE(std::signbit(toReal("-0.0")));
    EXPECT_FALSE(std::signbit(toReal("0.0")));
    for (const char* signAlone : {"-", "-.", "- 5", "--5", "-e3"}) {
        EXPECT_FALSE(std::signbit(toReal(signAlone))) << signAlone;
        double value = 1.0;
        EXPECT_TRUE(!toPlainReal(signAlone, value) || !std::signbit(value)) << signAlone;
    }
}

TEST(ToReal, RoundsAsTheCConversionDoes) {
    constexpr unsigned kSeed = 20240607;
    SCOPED_TRACE("seed " + std::to_string(kSeed));
    std::mt19937 random(kSeed);
    for (int i = 0; i < 20000; ++i) {
        std::string text = random() % 2 == 0 ? "-" : "";
        const auto digits = 1 + random() % 20;
        const auto point = random() % (digits + 1);
        for (std::size_t d = 0; d < digits; ++d) {
            if (d == point) {
                text += '.';
            }
            text += static_cast<char>('0' + random() % 10);
        }
        EXPECT_EQ(toReal(text), std::strtod(text.c_str(), nullptr)) << text;
    }
}

TEST(ToReal, KnowsEveryNumberOfDecimalsOnTheShortWayAndBeyondIt) {
    for (std::size_t digits = 1; digits <= 18; ++digits) {
        const std::string number = std::string("123456789123456789").substr(0, digits);
        for (std::size_t decimals = 0; decimals <= digits; ++decimals) {
            const std::string text = number.substr(0, digits - decimals) + "." + number.substr(digits - decimals);
            const double expected = std::strtod(text.c_str(), nullptr);
            EXPECT_EQ(toReal(text), expected) << text;
            double value = 0.0;
            EXPECT_EQ(toPlainReal(text, value), digits <= 15) << text;
            EXPECT_EQ(value, digits <= 15 ? expected : 0.0) << text;
        }
    }
}

TEST(ToReal, DoesNotLookAtTheProcessLocale) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    if (std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr) {
        std::setlocale(LC_ALL, "");
    }
    EXPECT_EQ(toReal("1.5"), 1.5);
    EXPECT_EQ(toReal("1,5"), 1.0);
    EXPECT_EQ(formatReal(1.5), "1.500000000000");
    std::setlocale(LC_ALL, before.c_str());
}

TEST(ToPlainReal, GivesWhatTheFullConversionGivesAndTakesNoTextThatTheTestRefuses) {
    // Every text of up to six of these characters.
    const std::string alphabet = "-.05 +e";
    int taken = 0;
    for (std::size_t length = 0; length <= 6; ++length) {
        std::size_t texts = 1;
        for (std::size_t i = 0; i < length; ++i) {
            texts *= alphabet.size();
        }
        for (std::size_t n = 0; n < texts; ++n) {
            std::string text;
            for (std::size_t i = 0, rest = n; i < length; ++i, rest /= alphabet.size()) {
                text += alphabet[rest % alphabet.size()];
            }
            double value = 7.0;
            if (!toPlainReal(text, value)) {
                continue;
            }
            ++taken;
            ASSERT_TRUE(isNumber(text)) << "[" << text << "]";
            ASSERT_EQ(value, toReal(text)) << "[" << text << "]";
        }
    }
    EXPECT_GT(taken, 1000);
}

TEST(ToPlainReal, LeavesLongNumbersToTheFullConversion) {
    double value = 0.0;
    EXPECT_TRUE(toPlainReal("-12345678.1234567", value));
    EXPECT_EQ(value, -12345678.1234567);
    EXPECT_TRUE(toPlainReal("123456789012345", value));
    EXPECT_FALSE(toPlainReal("1234567890123456", value));
    EXPECT_FALSE(toPlainReal("0.1234567890123456", value));
}

TEST(ToInteger, ReadsTheLongestPrefixThatFits) {
    EXPECT_EQ(toInteger("12"), 12);
    EXPECT_EQ(toInteger(" 00012x"), 12);
    EXPECT_EQ(toInteger("-7"), -7);
    EXPECT_EQ(toInteger("+7"), 7);
    EXPECT_EQ(toInteger("3x"), 3);
    EXPECT_EQ(toInteger("1.9"), 1);
    EXPECT_EQ(toInteger(""), 0);
    EXPECT_EQ(toInteger("-"), 0);
    EXPECT_EQ(toInteger("abc"), 0);
}

TEST(ToInteger, TakesTheNearestValueOf32Bits) {
    EXPECT_EQ(toInteger("2147483647"), 2147483647);
    EXPECT_EQ(toInteger("2147483648"), 2147483647);
    EXPECT_EQ(toInteger("-2147483648"), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(toInteger("-2147483649"), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(toInteger("99999999999999999999999999"), 2147483647);
    EXPECT_EQ(toInteger("-99999999999999999999999999"), std::numeric_limits<std::int32_t>::min());
}

TEST(FormatReal, WritesAsPrintfDoes) {
    for (const double value : {0.0, -0.0, 1.0, 100.5, -39525.623, 0.1, 1e-13, 5e-13, 1.5e-12, 123456789.123456789, 1e22,
                               1e300, 1.7976931348623157e308, 4.9e-324, 0.0000000000005, 2.5}) {
        EXPECT_EQ(formatReal(value), printed(value)) << value;
    }
    EXPECT_EQ(formatReal(kInfinity), "inf");
    EXPECT_EQ(formatReal(-kInfinity), "-inf");
    EXPECT_EQ(formatReal(std::numeric_limits<double>::quiet_NaN()), "nan");
    std::mt19937_64 random(7);
    for (int i = 0; i < 20000; ++i) {
        const double value = static_cast<double>(static_cast<std::int64_t>(random())) / 1e13;
        EXPECT_EQ(formatReal(value), printed(value));
    }
}

TEST(Trim, TakesTheAsciiBlanksOnly) {
    EXPECT_EQ(trim(" \t\n\v\f\ra b \t\n\v\f\r"), "a b");
    EXPECT_EQ(trim("   "), "");
    EXPECT_EQ(trim("　a　"), "　a　");
    EXPECT_EQ(trim(std::string_view("\0a\0", 3)), std::string_view("\0a\0", 3));
}

// Whole numbers stand in for the library's conversion where their product is clear of the middle between two texts.
TEST(FixedReal, IsTheExactValueRoundedToEven) {
    std::mt19937_64 random(20261122);
    std::vector<double> values = {0.0,    -0.0,   0.5,    1.5,  2.5,   0.125,  -0.0004, -0.0005, 0.9999996,
                                  999.95, 1e11,   1e12,   1e15, 1e300, 5e-324, 0.1,     -1e-9,   99999999.9995,
                                  1e9,    1.0005, 1.0015, 2e-3, 4e-10, 123e18, -0.05};
    for (int i = 0; i < 100'000; ++i) {
        const double spread = static_cast<double>(random() >> 11) * 0x1p-53 - 0.5;
        values.push_back(spread * 2e5);                      // coordinates
        values.push_back(std::round(spread * 4e8) / 2000.0); // millimetres and halves of them
        values.push_back(std::round(spread * 1e6) / 1024.0); // exactly between two texts, often
        values.push_back(std::ldexp(spread, i % 100 - 50));  // large and small
    }
    for (const double value : values) {
        for (const int decimals : {0, 1, 2, 3, 4, 6, 9, 12}) {
            char expected[400];
            char buffer[400];
            const int size = std::snprintf(expected, sizeof expected, "%.*f", decimals, value);
            const auto [end, error] = writeFixedReal(buffer, buffer + sizeof buffer, value, decimals);
            ASSERT_EQ(std::string_view(buffer, static_cast<std::size_t>(end - buffer)),
                      std::string_view(expected, static_cast<std::size_t>(size)));
        }
    }
}

TEST(FixedReal, NeedsNoMoreRoomThanItsCharacters) {
    char room[6];
    for (const double value : {12.345, 1e5, -1.0}) {
        const auto [end, error] = writeFixedReal(room, room + sizeof room, value, 3);
        EXPECT_EQ(error == std::errc{}, value != 1e5) << value;
    }
}

} // namespace fenmark::sima
