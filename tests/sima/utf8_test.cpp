// The tools on UTF-8, by every character and by every kind of bytes that are none.
#include "sima/text/utf8.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace fenmark::sima {
namespace {

using namespace std::string_view_literals;

constexpr char32_t kEnd = 0x110000;

bool isSurrogate(char32_t c) {
    return c >= 0xD800 && c <= 0xDFFF;
}

std::string utf8Of(char32_t c) {
    std::string text;
    appendUtf8(text, c);
    return text;
}

std::string utf16Of(char32_t c, bool highByteFirst) {
    std::string bytes;
    const auto add = [&](char32_t unit) {
        const auto high = static_cast<char>(unit >> 8U);
        const auto low = static_cast<char>(unit & 0xFFU);
        bytes += highByteFirst ? high : low;
        bytes += highByteFirst ? low : high;
    };
    if (c < 0x10000) {
        add(c);
    } else {
        add(0xD800 + ((c - 0x10000) >> 10U));
        add(0xDC00 + ((c - 0x10000) & 0x3FFU));
    }
    return bytes;
}

} // namespace

TEST(Utf8, EveryCharacterComesBack) {
    for (char32_t c = 0; c < kEnd; ++c) {
        if (isSurrogate(c)) {
            continue;
        }
        const std::string text = utf8Of(c);
        ASSERT_EQ(text.size(), c < 0x80 ? 1U : c < 0x800 ? 2U : c < 0x10000 ? 3U : 4U) << static_cast<unsigned>(c);
        ASSERT_EQ(characterLength(text + "aaaa", 0), text.size()) << static_cast<unsigned>(c);
        std::string_view rest = text;
        ASSERT_EQ(takeCharacter(rest), c);
        ASSERT_TRUE(rest.empty()) << static_cast<unsigned>(c);
        ASSERT_TRUE(isValidUtf8(text)) << static_cast<unsigned>(c);
        ASSERT_EQ(isAscii(text), c < 0x80) << static_cast<unsigned>(c);
        for (const bool highByteFirst : {false, true}) {
            std::string read;
            const std::string units = utf16Of(c, highByteFirst);
            ASSERT_EQ(appendUtf16(read, units, highByteFirst, true), units.size());
            ASSERT_EQ(read, text) << static_cast<unsigned>(c);
        }
    }
}

TEST(Utf8, WhatIsNoCharacterIsReplacedByTheLongestPartThatCouldHaveBecomeOne) {
    const std::vector<std::pair<std::string_view, std::size_t>> parts = {
        {"\x80", 1},         {"\xBF", 1},         {"\xC0\x80", 1},     {"\xC1\xBF", 1},     {"\xC2", 1},
        {"\xC2\x41", 1},     {"\xC2\xC2", 1},     {"\xDF\x7F", 1},     {"\xE0\x9F\xBF", 1}, {"\xE0\xA0", 2},
        {"\xE0\xA0\x41", 2}, {"\xE0\xC0", 1},     {"\xE3\x81", 2},     {"\xE3\x81\xC0", 2}, {"\xED\xA0\x80", 1},
        {"\xED\x9F", 2},     {"\xEF\xBF\x7F", 2}, {"\xF0\x8F\xBF", 1}, {"\xF0\x90\x80", 3}, {"\xF0\x90\x80\xC0", 3},
        {"\xF1\x80\x41", 2}, {"\xF4\x90\x80", 1}, {"\xF4\x8F", 2},     {"\xF5\x80", 1},     {"\xFF", 1},
    };
    for (const auto& [bytes, length] : parts) {
        std::string_view rest = bytes;
        EXPECT_EQ(takeCharacter(rest), U'\uFFFD') << ::testing::PrintToString(bytes);
        EXPECT_EQ(bytes.size() - rest.size(), length) << ::testing::PrintToString(bytes);
        EXPECT_FALSE(isValidUtf8(bytes));
        EXPECT_FALSE(isValidUtf8("A" + std::string(bytes)));
        std::string valid = "x";
        appendValidUtf8(valid, bytes.substr(0, length));
        EXPECT_EQ(valid, "x\uFFFD") << ::testing::PrintToString(bytes);
    }
    EXPECT_TRUE(isValidUtf8("\uFFFD")) << "the character itself is one";
}

TEST(Utf8, AsciiIsSeenAtEveryPlace) {
    for (std::size_t length = 0; length < 20; ++length) {
        const std::string text(length, '\x7F');
        EXPECT_TRUE(isAscii(text)) << length;
        for (std::size_t at = 0; at < length; ++at) {
            std::string changed = text;
            changed[at] = '\x80';
            EXPECT_FALSE(isAscii(changed)) << length << " " << at;
        }
    }
}

TEST(Utf8, TheLengthOfACharacterEndsWithTheText) {
    EXPECT_EQ(characterLength("\xE3\x81\x82", 0), 3U);
    EXPECT_EQ(characterLength("\xE3\x81", 0), 2U);
    EXPECT_EQ(characterLength("a\xF0\x90", 1), 2U);
    EXPECT_EQ(characterLength("\xBF\x80", 0), 1U);
}

TEST(Utf8, SurrogatesWithoutAPartnerAreReplaced) {
    const auto read = [](std::string_view bytes, bool isLast, std::size_t taken) {
        std::string out;
        EXPECT_EQ(appendUtf16(out, bytes, true, isLast), taken) << ::testing::PrintToString(bytes);
        return out;
    };
    EXPECT_EQ(read("\xD8\x00\xD8\x00\xDC\x00"sv, true, 6), "\uFFFD\U00010000");
    EXPECT_EQ(read("\xDC\x00\x00\x41"sv, true, 4), "\uFFFDA");
    EXPECT_EQ(read("\xDF\xFF\xE0\x00"sv, true, 4), "\uFFFD\uE000");
    EXPECT_EQ(read("\xDB\xFF\xDB\xFF"sv, false, 2), "\uFFFD") << "the second may have a partner to come";
    EXPECT_EQ(read("\xDB\xFF\xDB\xFF"sv, true, 4), "\uFFFD\uFFFD");
    EXPECT_EQ(read("\x00\x41\x00"sv, false, 2), "A");
    EXPECT_EQ(read("\x00\x41\x00"sv, true, 3), "A\uFFFD");
    EXPECT_EQ(read("\xD8\x00\xDB\xFF"sv, true, 4), "\uFFFD\uFFFD");
}

TEST(Utf8, CharactersAreTakenOffTheEnd) {
    EXPECT_EQ(withoutLastCharacters("aあ😀", 0), "aあ😀");
    EXPECT_EQ(withoutLastCharacters("aあ😀", 1), "aあ");
    EXPECT_EQ(withoutLastCharacters("aあ😀", 2), "a");
    EXPECT_EQ(withoutLastCharacters("aあ😀", 3), "");
    EXPECT_EQ(withoutLastCharacters("aあ😀", 9), "");
    EXPECT_EQ(withoutLastCharacters("\x80\x80", 1), "");
}

TEST(Utf8, IdeographicSpacesBecomeBlanks) {
    EXPECT_EQ(replaceIdeographicSpaces("　測　　点　"), " 測  点 ");
    EXPECT_EQ(replaceIdeographicSpaces("測 点"), "測 点");
    EXPECT_EQ(replaceIdeographicSpaces(""), "");
}

} // namespace fenmark::sima
