// The short way of splitting a line agrees with the long one wherever it is taken.
#include "sima/text/number.h"
#include "sima/text/splitter.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::sima {

namespace {

std::vector<std::string> listed(const Fields& fields) {
    std::vector<std::string> list;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        list.emplace_back(fields[i]);
    }
    return list;
}

// The length that the short way takes of the text, which is 0 or that of its first line; and then the same fields.
std::size_t checkedLength(const std::string& text) {
    Fields shortWay;
    const std::size_t length = splitPlainLine(text, shortWay);
    if (length == 0) {
        return 0;
    }
    EXPECT_EQ(length, text.find('\n') + 1) << text;
    std::string_view line = std::string_view(text).substr(0, length - 1);
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    Fields longWay;
    splitLine(trim(line), ",", longWay);
    EXPECT_EQ(listed(shortWay), listed(longWay)) << text;
    EXPECT_EQ(trim(line), line) << text;
    return length;
}

const std::string kRest(64, 'x'); // what follows in a file: the short way reads whole pieces of sixteen bytes

} // namespace

// Processors without this set of instructions always go the long way.
#ifdef __SSE2__
constexpr bool kTaken = true;
#else
constexpr bool kTaken = false;
#endif

TEST(PlainLine, IsTakenAtEveryLength) {
    for (std::size_t length = 1; length < 100; ++length) {
        for (const char* lineEnd : {"\n", "\r\n"}) {
            for (std::size_t comma = 0; comma < length; ++comma) {
                std::string line(length, 'a');
                line[comma] = ',';
                line += lineEnd;
                EXPECT_EQ(checkedLength(line + kRest), kTaken ? line.size() : 0U) << line;
            }
        }
    }
}

TEST(PlainLine, KeepsBlanksOfFieldsButEmptiesFieldsOfBlanks) {
    EXPECT_EQ(checkedLength("A01,    1,FK12863             , -39525.623,  60295.494,  ,\r\n" + kRest) > 0, kTaken);
}

TEST(PlainLine, LeavesTheExtraordinaryToTheLongWay) {
    for (const char* line :
         {"\n", "\r\n", " A01,1,\n", "A01,1, \n", "A01,1,\r\r\n", "A01,\"1\",\n", "A01,\x8B\xAB,\n"}) {
        EXPECT_EQ(checkedLength(line + kRest), 0U) << line;
    }
    EXPECT_EQ(checkedLength("A01,1,"), 0U);
    EXPECT_EQ(checkedLength("A01,1," + kRest), 0U) << "a line whose end is not at hand";
}

TEST(PlainLine, CountsFieldsBeyondThoseKept) {
    Fields fields;
    const std::string line = std::string(1000, ',') + "\n";
    EXPECT_EQ(splitPlainLine(line + kRest, fields) > 0, kTaken);
    EXPECT_EQ(fields.size(), kTaken ? 1001U : 0U);
}

TEST(PlainLine, IsNotJudgedByWhatStandsBehindIt) {
    EXPECT_EQ(checkedLength("A99,\n\"\x8B\xAB\"" + kRest), kTaken ? 5U : 0U);
}

TEST(PlainLine, AgreesWithTheLongWayOnRandomText) {
    constexpr unsigned kSeed = 5;
    SCOPED_TRACE("seed " + std::to_string(kSeed));
    constexpr std::string_view kCharacters = "aB1.-,,,, \t\"\r\n\n\x8B";
    std::mt19937 random(kSeed);
    std::size_t taken = 0;
    for (int i = 0; i < 100'000; ++i) {
        std::string text(40, ' ');
        for (char& c : text) {
            c = kCharacters[random() % kCharacters.size()];
        }
        taken += checkedLength(text) > 0 ? 1 : 0;
    }
    EXPECT_EQ(taken > 1000, kTaken);
}

TEST(PlainInteger, IsWhatTheFullConversionGives) {
    for (const char* text : {"0", "7", "007", " 12", "12 ", "123456789", "000000000"}) {
        std::int32_t value = -1;
        EXPECT_TRUE(toPlainInteger(text, value)) << text;
        EXPECT_EQ(value, toInteger(text)) << text;
    }
    for (const char* text : {"", " ", "-1", "+1", "1.0", "1 2", "1234567890", "4294967297", "a", "1a"}) {
        std::int32_t value = -1;
        EXPECT_FALSE(toPlainInteger(text, value)) << text;
    }
}

} // namespace fenmark::sima
