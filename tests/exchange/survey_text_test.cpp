// Numbers as survey documents print them, and the exact decimals behind areas.
#include "exchange/decimal.h"
#include "exchange/survey_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

namespace fenmark::exchange {
namespace {

constexpr double kSecond = std::numbers::pi / (180.0 * 3600.0);
constexpr double kInfinity = std::numeric_limits<double>::infinity();

Decimal decimal(double metres) {
    return Decimal::of(metres).value();
}

TEST(Metres, RoundTheDecimalNumberHalfAwayFromZero) {
    EXPECT_EQ(metresText(1.0005), "1.001") << "the 64-bit real lies below it";
    EXPECT_EQ(metresText(-1.0005), "-1.001");
    EXPECT_EQ(metresText(2.6745), "2.675");
    EXPECT_EQ(metresText(0.0004999), "0.000");
    EXPECT_EQ(metresText(-36210.0), "-36210.000");
}

TEST(Metres, NeverShowAZeroWithASign) {
    EXPECT_EQ(metresText(-0.0004), "0.000");
    EXPECT_EQ(metresText(-0.0), "0.000");
    EXPECT_EQ(metresText(kInfinity), "");
    EXPECT_EQ(metresText(1e12), "1000000000000.000") << "beyond the reach of exact decimals";
}

TEST(Angles, AreRoundedBeforeTheyAreTakenApart) {
    EXPECT_EQ(degreesText(azimuthDegrees((86 * 3600 + 10 * 60 + 10.0) * kSecond)), "86°10′10″");
    EXPECT_EQ(degreesText(azimuthDegrees((86 * 3600 + 9 * 60 + 39.6) * kSecond)), "86°09′40″");
    EXPECT_EQ(degreesText(azimuthDegrees((86 * 3600 + 59 * 60 + 59.6) * kSecond)), "87°00′00″");
    EXPECT_EQ(degreesText(azimuthDegrees((86 * 3600 + 59 * 60 + 59.4) * kSecond)), "86°59′59″");
    EXPECT_EQ(degreesText(azimuthDegrees((359 * 3600 + 59 * 60 + 59.7) * kSecond)), "0°00′00″") << "wraps";
    EXPECT_EQ(degreesText(angleDegrees(-(12 * 3600 + 5.0) * kSecond)), "12°00′05″");
    EXPECT_EQ(packedDegrees(azimuthDegrees((30 * 3600 + 20 * 60 + 45.36) * kSecond)), "30.2045");
    EXPECT_EQ(packedDegrees(azimuthDegrees((5 * 60 + 7.0) * kSecond)), "0.0507");
}

TEST(Angles, AzimuthsRunClockwiseFromNorth) {
    constexpr double kAngle = 1e-12; // radians
    EXPECT_NEAR(azimuthOf(0.0), std::numbers::pi / 2.0, kAngle);
    EXPECT_NEAR(azimuthOf(std::numbers::pi / 2.0), 0.0, kAngle);
    EXPECT_NEAR(azimuthOf(std::numbers::pi), 1.5 * std::numbers::pi, kAngle);
    EXPECT_EQ(azimuthOf(std::nextafter(std::numbers::pi / 2.0, 2.0)), 0.0) << "a whole turn but for the last bit";
}

TEST(StationNamesOf, CountStakesOnAPitch) {
    const StationNames names;
    EXPECT_EQ(names(345.0), "No.17+5.000");
    EXPECT_EQ(names(340.0), "No.17");
    EXPECT_EQ(names(339.9996), "No.17") << "less than half a millimetre short";
    EXPECT_EQ(names(339.9994), "No.16+19.999");
    EXPECT_EQ(names(-5.0), "No.-1+15.000");
    EXPECT_EQ((StationNames{StationNames::Style::Stake, 100.0}(345.0)), "No.3+45.000");
    EXPECT_EQ((StationNames{StationNames::Style::Kilometre, 20.0}(1234.5)), "1k234.500");
    EXPECT_EQ((StationNames{StationNames::Style::Kilometre, 20.0}(7.0)), "0k007.000");
    EXPECT_EQ((StationNames{StationNames::Style::Kilometre, 20.0}(-946.947)), "-0k946.947");
    EXPECT_EQ((StationNames{StationNames::Style::Kilometre, 20.0}(-1000.25)), "-1k000.250");
    EXPECT_EQ(names(1e300).substr(0, 4), "1000") << "no stake has such a number";
}

TEST(Names, LoseTheBlanksAtTheirEnds) {
    EXPECT_EQ(trimmedName(" \u3000中心 線\t "), "中心 線");
    EXPECT_EQ(trimmedName("\u3000 "), "");
    for (const std::string blank : {" ", "\t", "\n", "\v", "\f", "\r", "\u3000"}) {
        EXPECT_EQ(trimmedName(blank + "点" + blank), "点") << static_cast<int>(blank[0]);
    }
    for (const std::string sign : {"\b", "\x0E", "\x1F", "!", "\u3001"}) {
        EXPECT_EQ(trimmedName(sign + "点" + sign), sign + "点" + sign) << static_cast<int>(sign[0]);
    }
}

TEST(DecimalOf, IsTheShortestDecimalOfTheReal) {
    EXPECT_EQ(decimal(0.1).micrometres(), 100000);
    EXPECT_EQ(decimal(-36183.6977).micrometres(), -36183697700);
    EXPECT_EQ(decimal(0.0000005).micrometres(), 1);
    EXPECT_EQ(decimal(0.00000049).micrometres(), 0);
    EXPECT_EQ(decimal(12).text(0), "12");
    EXPECT_EQ(decimal(-0.0004).text(3), "0.000");
    EXPECT_EQ(decimal(9.9995).text(3), "10.000") << "carries";
    EXPECT_FALSE(Decimal::of(1e7));
    EXPECT_FALSE(Decimal::of(kInfinity));
    EXPECT_FALSE(Decimal::of(std::numeric_limits<double>::quiet_NaN()));
}

TEST(DecimalAreaOf, KeepsEveryDigitOfASum) {
    // 0.001 m2 in ten million: a sum of reals loses it.
    DecimalArea sum = product(decimal(9999999.999), decimal(9999999.999));
    EXPECT_EQ(sum.text(), "99999999980000.000001");
    sum.units -= product(decimal(9999999.999), decimal(9999999.998)).units;
    EXPECT_EQ(sum.text(), "9999.999999");
    EXPECT_EQ(halfOf(DecimalArea{1'000'000}).text(), "0.000001") << "half a millionth is rounded up once";
    EXPECT_EQ(halfOf(DecimalArea{999'999}).text(), "0.000000");
    EXPECT_EQ((DecimalArea{-499'999}.text()), "0.000000");
}

TEST(RegisteredArea, IsCutAndDependsOnTheLand) {
    EXPECT_EQ(registeredArea("100.053245", false), "100");
    EXPECT_EQ(registeredArea("100.053245", true), "100.05");
    EXPECT_EQ(registeredArea("9.053245", false), "9.05");
    EXPECT_EQ(registeredArea("12.340000", true), "12.34");
    EXPECT_EQ(registeredArea("99.999999", true), "99.99");
    EXPECT_EQ(registeredArea("10.000000", false), "10.00") << "not over 10";
    EXPECT_EQ(registeredArea("10.000001", false), "10");
}

TEST(Sides, AreCutOrRoundedFromTheExactRoot) {
    EXPECT_EQ(sideText(decimal(3), decimal(4), SideRule::Cut), "5.000");
    EXPECT_EQ(sideText(decimal(1), decimal(1), SideRule::Cut), "1.414");
    EXPECT_EQ(sideText(decimal(1.2345), decimal(0), SideRule::Cut), "1.234");
    EXPECT_EQ(sideText(decimal(1.2345), decimal(0), SideRule::Round), "1.235");
    EXPECT_EQ(sideText(decimal(-1.2344), decimal(0), SideRule::Round), "1.234");
    // To the micrometre.
    EXPECT_EQ(sideText(decimal(1.234499), decimal(0), SideRule::Round), "1.234");
    EXPECT_EQ(sideText(decimal(1.233999), decimal(0), SideRule::Cut), "1.233");
    EXPECT_EQ(sideText(decimal(1.234), decimal(0), SideRule::Cut), "1.234");
}

} // namespace
} // namespace fenmark::exchange
