// Stations as surveyors write them.
#include "exchange/station_text.h"

#include <gtest/gtest.h>

#include <string>

namespace fenmark::exchange {
namespace {

struct StationCase {
    const char* text;
    double metres;
};

class StationText : public ::testing::TestWithParam<StationCase> {};

TEST_P(StationText, IsReadInMetres) {
    EXPECT_EQ(parseStation(GetParam().text), GetParam().metres) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(Metres, StationText,
                         ::testing::Values(StationCase{"0", 0.0}, StationCase{"120.5", 120.5},
                                           StationCase{"+120.5", 120.5}, StationCase{"-3.25", -3.25},
                                           StationCase{".5", 0.5}, StationCase{"1e2", 100.0}));
INSTANTIATE_TEST_SUITE_P(Stakes, StationText,
                         ::testing::Values(StationCase{"No.0", 0.0}, StationCase{"No.6", 120.0},
                                           StationCase{"No.6+0.5", 120.5}, StationCase{"no6+12.345", 132.345},
                                           StationCase{"NO.6-0.5", 119.5}, StationCase{"No.-1+16.000", -4.0}));
INSTANTIATE_TEST_SUITE_P(Kilometres, StationText,
                         ::testing::Values(StationCase{"1k", 1000.0}, StationCase{"1k234.5", 1234.5},
                                           StationCase{"1K+234.5", 1234.5}, StationCase{"0k040", 40.0},
                                           StationCase{"12k-0.5", 11999.5}, StationCase{"-0k946.947", -946.947},
                                           StationCase{"-1k", -1000.0}, StationCase{"-1k000.25", -1000.25}));

class NoStationText : public ::testing::TestWithParam<const char*> {};

TEST_P(NoStationText, IsNotGuessedAt) {
    EXPECT_FALSE(parseStation(GetParam())) << GetParam();
}

INSTANTIATE_TEST_SUITE_P(Texts, NoStationText,
                         ::testing::Values("", "+", "+-1", "20m", "nan", "inf", "0x10", " 1", "1 ", "N", "No", "No.",
                                           "No.x", "No.6+", "No.6+-1", "No.6.5", "No.6 1", "k", "k5", "1.5k", "-1k-5",
                                           "-1k+5", "--1k5", "-k5", "1k+", "1k++5", "1k5m", "1k2k3", "0+120"));

TEST(StationTexts, OnlyTheSignsOfStationsStandBetweenDigits) {
    for (int byte = 0; byte < 256; ++byte) {
        const char sign = static_cast<char>(byte);
        const bool isDigit = sign >= '0' && sign <= '9';
        const bool isKnown = isDigit || sign == '.' || sign == 'e' || sign == 'E' || sign == 'k' || sign == 'K';
        EXPECT_EQ(parseStation(std::string("1") + sign + "2").has_value(), isKnown) << byte;
        EXPECT_EQ(parseStation(std::string("No") + sign + "2").has_value(), isDigit || sign == '.' || sign == '-')
            << byte;
    }
}

} // namespace
} // namespace fenmark::exchange
