// Which encoding a text is taken for, and what the reader makes of UTF-16.
#include "sima/text/encoding_choice.h"

#include "sima/reader/line_source.h"
#include "sima/text/utf8.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace fenmark::sima {
namespace {

using namespace std::string_view_literals;

// The choice, which must not depend on the pieces in which the text comes.
TextKind kindOf(std::string_view text) {
    EncodingGuess whole;
    whole.look(text);
    for (const std::size_t piece : {1UL, 2UL, 7UL}) {
        EncodingGuess guess;
        for (std::size_t at = 0; at < text.size() && guess.look(text.substr(at, piece)); at += piece) {
        }
        EXPECT_EQ(guess.choice().kind, whole.choice().kind) << "in pieces of " << piece;
    }
    return whole.choice().kind;
}

std::string utf16(std::string_view text, bool highByteFirst) {
    std::string bytes;
    for (const char c : text) {
        bytes += highByteFirst ? '\0' : c;
        bytes += highByteFirst ? c : '\0';
    }
    return bytes;
}

std::vector<std::string> linesOf(std::string_view content, Encoding encoding) {
    const test::TemporaryFolder folder;
    LineSource source(encoding);
    EXPECT_TRUE(source.open(folder.write("a.sim", content)));
    std::vector<std::string> lines;
    for (std::string_view line; source.next(line);) {
        lines.emplace_back(line);
    }
    return lines;
}

TEST(EncodingChoice, PlainTextIsCodePage932) {
    EXPECT_EQ(kindOf(""), TextKind::Cp932);
    EXPECT_EQ(kindOf("A00,\r\n"), TextKind::Cp932);
    EXPECT_EQ(kindOf("A00,\r\nA01,1,P,0.000,0.000,,\r\n"), TextKind::Cp932);
    EXPECT_EQ(kindOf(std::string(100, '\0')), TextKind::Cp932);
}

TEST(EncodingChoice, CharactersOfFourBytesAreUtf8ToTheirLast) {
    for (const char* character : {"\xF0\x90\x80\x80", "\xF0\x9F\x98\x80", "\xF4\x8F\xBF\xBF"}) {
        EXPECT_EQ(kindOf("測" + std::string(character) + "点"), TextKind::Utf8);
    }
    for (const char* bytes : {"\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80"}) {
        EXPECT_NE(kindOf("測" + std::string(bytes) + "点"), TextKind::Utf8);
    }
}

TEST(EncodingChoice, AByteOrderMarkSaysUtf8WhateverFollows) {
    EXPECT_EQ(kindOf("\xEF\xBB\xBF"), TextKind::Utf8Mark);
    EXPECT_EQ(kindOf("\xEF\xBB\xBFZ00,abc,\r\nA00,\r\n"), TextKind::Utf8Mark);
    EXPECT_EQ(kindOf("\xEF\xBB\xBFZ00,\x95\x5C,\r\nA00,\r\n"), TextKind::Utf8Mark);
}

TEST(EncodingChoice, TwoCharactersOfThreeBytesInValidUtf8SayUtf8) {
    EXPECT_EQ(kindOf("A01,1,基準,1,2,,\n"), TextKind::Utf8);
    EXPECT_EQ(kindOf("A01,1,基,1,2,,\n"), TextKind::Cp932) << "one may be chance";
    EXPECT_EQ(kindOf("A01,1,éàü,1,2,,\n"), TextKind::Cp932) << "two bytes each may be half-width katakana";
    EXPECT_EQ(kindOf("A01,1,基準,1,2,,\nA01,2,\x95\x5C,0,0,,\n"), TextKind::Cp932);
    EXPECT_EQ(kindOf("A01,1,基準\xE5\x9F"), TextKind::Cp932) << "cut within a character";
    EXPECT_EQ(kindOf("A01,1,基準\xE5"
                     "A\x9F\xBA,1,2,,\n"),
              TextKind::Cp932)
        << "a letter within a character";
    EXPECT_EQ(kindOf("A01,1,基準\xE5\x9F"
                     "A\xBA,1,2,,\n"),
              TextKind::Cp932);
    EXPECT_EQ(kindOf("\xED\xA0\x80\xED\xA0\x80 a surrogate is no character"), TextKind::Cp932);
    EXPECT_EQ(kindOf("\xE0\x80\x80\xE0\x80\x80 nor is a form that is too long"), TextKind::Cp932);
}

TEST(EncodingChoice, CodePage932IsKnownByItsPairs) {
    EXPECT_EQ(kindOf("A01,1,\x95\x5C\x83\x5C,0,0,,\r\n"), TextKind::Cp932);
    EXPECT_EQ(kindOf("A01,1,\xB6\xC5\xB6\xC5\xB6\xDE,0,0,,\r\n"), TextKind::Cp932) << "half-width katakana";
}

TEST(EncodingChoice, EucJpAndIso2022JpAreRecognised) {
    EXPECT_EQ(kindOf("A01,1,\xB6\xAD\xB3\xA6\xC5\xC0,0,0,,\r\nZ00,\xA4\xB3\xA4\xEC,\r\n"), TextKind::EucJp);
    EXPECT_EQ(kindOf("A01,1,\xC2\xAC\xCE\xCC\xE5\xBB,0,0,,\r\n"), TextKind::EucJp)
        << "a byte beyond half-width katakana";
    EXPECT_EQ(kindOf("A01,1,\x1B$B6-3&E@\x1B(B,0,0,,\r\n"), TextKind::Iso2022Jp);
    EXPECT_EQ(kindOf("A01,1,\x1B$@6-3&\x1B(J,0,0,,\r\n"), TextKind::Iso2022Jp);
    EXPECT_EQ(kindOf("A01,1,\x1B[31m,0,0,,\r\n"), TextKind::Cp932) << "another escape sequence";
    EXPECT_EQ(kindOf("A01,1,\x1B[31m$B6-,0,0,,\r\n"), TextKind::Cp932) << "the escape is over";
    EXPECT_EQ(kindOf("A01,1,\x1B$B6-\x1B(B\x95\x5C,0,0,,\r\n"), TextKind::Cp932) << "all of ISO-2022-JP is ASCII";
    EXPECT_EQ(kindOf("A01,1,\xA4\xB3\xA4\xEC\xB3,\xB3,\r\n"), TextKind::Cp932) << "a comma within a pair";
}

TEST(EncodingChoice, EveryByteOfAPairCountsInEucJp) {
    const std::string hiragana = "A01,1,\xA4\xB3\xA4\xEC";
    for (unsigned byte = 0; byte <= 0xFF; ++byte) {
        const auto isEuc = [&](const std::string& bytes) {
            return kindOf(hiragana + bytes + ",\r\n") == TextKind::EucJp;
        };
        const std::string one(1, static_cast<char>(byte));
        const bool inPair = byte >= 0xA1 && byte <= 0xFE;
        EXPECT_EQ(isEuc(one), byte < 0x80) << byte << " alone";
        EXPECT_EQ(isEuc(one + "\xB3"), inPair || byte == 0x8E) << byte << " as the first of two";
        EXPECT_EQ(isEuc(one + "\xB3\xB3"), byte < 0x80 || byte == 0x8F) << byte << " before two";
        EXPECT_EQ(isEuc("\xB3" + one), inPair) << byte << " as the second of two";
        EXPECT_EQ(isEuc("\x8E" + one), inPair) << byte << " as half-width katakana";
        EXPECT_EQ(isEuc("\x8F\xB3" + one), inPair) << byte << " as the third";
    }
}

TEST(EncodingChoice, EucJpNeedsTwoPairsThatAreNoHalfWidthKatakana) {
    EXPECT_EQ(kindOf("A01,1,\xA4\xB3,\r\n"), TextKind::Cp932) << "one may be chance";
    EXPECT_EQ(kindOf("A01,1,\xE5\xBB,\r\n"), TextKind::Cp932);
    EXPECT_EQ(kindOf("A01,1,\xA4\xB3\xB6\xAD,\r\n"), TextKind::Cp932) << "one of kana";
    EXPECT_EQ(kindOf("A01,1,\xA5\xB3\xA4\xAD,\r\n"), TextKind::EucJp) << "two of kana";
    EXPECT_EQ(kindOf("A01,1,\xA3\xB3\xA6\xAD,\r\n"), TextKind::Cp932) << "rows beside kana";
    EXPECT_EQ(kindOf("A01,1,\xB6\xAD\xB6\xDF,\r\n"), TextKind::Cp932);
    EXPECT_EQ(kindOf("A01,1,\xB6\xAD\xB6\xE0,\r\n"), TextKind::EucJp);
}

TEST(EncodingChoice, Utf8IsWhatTheStandardAllows) {
    // Every first byte with every second, and two that would do for a third and a fourth.
    for (unsigned first = 0x80; first <= 0xFF; ++first) {
        const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
        for (unsigned second = 0x80; second <= 0xFF; ++second) {
            for (const char last : {'\x80', '\xBF'}) {
                const std::string bytes =
                    std::string{static_cast<char>(first), static_cast<char>(second)} + std::string(length - 2, last);
                unsigned code = first & (length == 2 ? 0x1FU : 0x0FU);
                code = code << 6 | (second & 0x3F);
                for (std::size_t i = 2; i < length; ++i) {
                    code = code << 6 | (static_cast<unsigned char>(last) & 0x3F);
                }
                const unsigned least = length == 2 ? 0x80 : length == 3 ? 0x800 : 0x10000;
                const bool valid = first >= 0xC0 && second <= 0xBF && code >= least && code <= 0x10FFFF &&
                                   (code < 0xD800 || code > 0xDFFF);
                EncodingGuess guess;
                guess.look("A01,1,測点" + bytes + ",\r\n");
                ASSERT_EQ(guess.choice().kind == TextKind::Utf8, valid) << std::hex << first << second;
            }
        }
    }
}

TEST(EncodingChoice, Utf16IsKnownByItsMarkOrItsNuls) {
    EXPECT_EQ(kindOf("\xFF\xFE"), TextKind::Utf16);
    EXPECT_EQ(kindOf("\xFE\xFF\0A"sv), TextKind::Utf16);
    for (const bool highByteFirst : {false, true}) {
        const std::string text = utf16("A00,\r\nA01,1,P,1,2,,\r\n", highByteFirst);
        EncodingGuess guess;
        EXPECT_FALSE(guess.look(text)) << "no more is needed";
        EXPECT_EQ(guess.choice().kind, TextKind::Utf16);
        EXPECT_EQ(guess.choice().encoding, highByteFirst ? Encoding::Utf16Be : Encoding::Utf16Le);
    }
}

TEST(EncodingChoice, Utf16WithoutAMarkTakesEightBytesOfTextAndNuls) {
    for (const bool highByteFirst : {false, true}) {
        const std::string text = utf16("A00,\r\nA0", highByteFirst);
        for (std::size_t size = 0; size <= text.size(); ++size) {
            EXPECT_EQ(kindOf(text.substr(0, size)), size < 8 ? TextKind::Cp932 : TextKind::Utf16) << size;
        }
        for (std::size_t at = 0; at < text.size(); ++at) {
            std::string changed = text;
            changed[at] = '\x01';
            EXPECT_EQ(kindOf(changed), TextKind::Cp932) << at;
        }
    }
}

TEST(EncodingChoice, AFileIsLookedAtToItsLastByte) {
    constexpr std::size_t kBlock = 65536; // bytes that are read together
    const test::TemporaryFolder folder;
    const std::string name = "基準";
    for (const std::size_t size : {kBlock - 1, kBlock, kBlock + 1, kBlock + 2, 2 * kBlock + 1}) {
        const std::string text = std::string(size - name.size(), 'x') + name;
        EXPECT_EQ(chooseEncoding(folder.write("whole.sim", text)).kind, TextKind::Utf8) << size;
        EXPECT_EQ(chooseEncoding(folder.write("cut.sim", text.substr(0, size - 1))).kind, TextKind::Cp932) << size;
    }
}

TEST(EncodingChoice, UsualSpellingsAreKnown) {
    for (const char* name : {"cp932", "CP932", "sjis", "SJIS", "Shift_JIS", "shift-jis", "MS932", "Windows-31J"}) {
        EXPECT_EQ(encodingNamed(name), Encoding::Cp932) << name;
    }
    for (const char* name : {"utf-8", "UTF8", "Utf_8", "utf-8-sig"}) {
        EXPECT_EQ(encodingNamed(name), Encoding::Utf8) << name;
    }
    EXPECT_EQ(encodingNamed("UTF-16"), Encoding::Utf16Le);
    EXPECT_EQ(encodingNamed("utf16be"), Encoding::Utf16Be);
    for (const char* name : {"", "auto", "latin1", "utf-7", "sjis!"}) {
        EXPECT_EQ(encodingNamed(name), std::nullopt) << name;
    }
}

TEST(LineSourceUtf16, GivesOutUtf8WithoutTheMark) {
    const std::vector<std::string> expected{"A00,", "A01,1,P,"};
    for (const bool highByteFirst : {false, true}) {
        const Encoding encoding = highByteFirst ? Encoding::Utf16Be : Encoding::Utf16Le;
        const std::string text = utf16("A00,\r\nA01,1,P,\r\n", highByteFirst);
        EXPECT_EQ(linesOf(text, encoding), expected);
        EXPECT_EQ(linesOf((highByteFirst ? "\xFE\xFF" : "\xFF\xFE") + text, encoding), expected);
    }
    EXPECT_EQ(linesOf("\xFF\xFE\xFA\x57\x3D\xD8\x00\xDE"sv, Encoding::Utf16Le), (std::vector<std::string>{"基😀"}))
        << "two units for one character";
    EXPECT_EQ(linesOf("A\0\x3D\xD8"sv, Encoding::Utf16Le), (std::vector<std::string>{"A\uFFFD"})) << "half of one";
    EXPECT_EQ(linesOf("A\0B"sv, Encoding::Utf16Le), (std::vector<std::string>{"A\uFFFD"})) << "half a unit";
}

TEST(LineSourceUtf16, StandsBehindWhatWasReadOfTheFile) {
    const test::TemporaryFolder folder;
    LineSource source(Encoding::Utf16Le);
    std::string text;
    for (int i = 0; i < 100000; ++i) {
        text += "B01,1,,\n";
    }
    ASSERT_TRUE(source.open(folder.write("a.sim", utf16(text, false))));
    EXPECT_EQ(source.length(), 1600000);
    std::int64_t before = source.position();
    EXPECT_GT(before, 0) << "the first block is read when the file is opened";
    EXPECT_LT(before, source.length());
    std::int64_t read = 0;
    for (std::string_view line; source.next(line); before = source.position()) {
        read += 2 * static_cast<std::int64_t>(line.size() + 1);
        EXPECT_GE(source.position(), std::max(before, read));
    }
    EXPECT_EQ(source.position(), source.length());
}

TEST(LineSourceUtf16, LongFilesComeWhole) {
    // Characters of two, three and four bytes of UTF-8, so that every block is cut within one somewhere.
    std::string utf8;
    std::string bytes = "\xFF\xFE";
    for (int i = 0; i < 100000; ++i) {
        utf8 += "éx基😀";
        bytes += "\xE9\0x\0\xFA\x57\x3D\xD8\x00\xDE"sv;
        if (i % 1000 == 999) {
            utf8 += '\n';
            bytes += "\n\0"sv;
        }
    }
    std::string joined;
    for (const std::string& line : linesOf(bytes, Encoding::Utf16Le)) {
        joined += line + "\n";
    }
    EXPECT_EQ(joined, utf8);
}

// A mark is one at the very beginning alone, also where a block begins with one.
TEST(LineSourceUtf16, MarksBehindTheFirstAreText) {
    for (const std::size_t place : {0U, 1U, 65534U, 65535U, 65536U, 131071U}) { // of units behind the first mark
        std::string bytes = "\xFF\xFE";
        std::string utf8;
        for (std::size_t i = 0; i < 140000; ++i) {
            bytes += i == place ? "\xFF\xFE"sv : "x\0"sv;
            utf8 += i == place ? "\xEF\xBB\xBF" : "x";
        }
        EXPECT_TRUE(linesOf(bytes, Encoding::Utf16Le) == std::vector<std::string>{utf8}) << place;
    }
}

TEST(LineSource, WaitsForNoDeviceOrPipe) {
    if (!std::filesystem::exists("/dev/zero")) {
        GTEST_SKIP() << "no such device here";
    }
    LineSource source(Encoding::Cp932);
    EXPECT_FALSE(source.open("/dev/zero"));
    EXPECT_EQ(source.openError(), std::errc::invalid_argument);
    EXPECT_EQ(chooseEncoding("/dev/zero").encoding, Encoding::Cp932);
}

TEST(LineSourceLimit, ALineUpToTheLimitIsALineAndOneBeyondIsTold) {
    constexpr std::size_t kLimit = std::size_t{1} << 20;
    const test::TemporaryFolder folder;
    for (const std::string before : {"A00,\n", "\n", "\r\n"}) {
        for (const std::string end : {"\n", "\r\n", ""}) {
            LineSource source(Encoding::Cp932, kLimit);
            ASSERT_TRUE(source.open(folder.write("a.sim", before + std::string(kLimit, 'x') + end)));
            std::string_view line;
            ASSERT_TRUE(source.next(line));
            ASSERT_TRUE(source.next(line));
            EXPECT_EQ(line.size(), kLimit);
            EXPECT_FALSE(source.next(line));
        }
    }
    LineSource source(Encoding::Cp932, kLimit);
    ASSERT_TRUE(source.open(folder.write("a.sim", "A00,\n" + std::string(kLimit + 3, 'x') + "\n")));
    std::string_view line;
    ASSERT_TRUE(source.next(line));
    EXPECT_THROW((void)source.next(line), LineTooLong);
}

} // namespace
} // namespace fenmark::sima
