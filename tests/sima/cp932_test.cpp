// Code page 932 to UTF-8 and back. The byte values are those of the code page's published table.
#include "sima/text/cp932.h"

#include <gtest/gtest.h>

#include <string>

namespace fenmark::sima {

namespace {

std::string decoded(std::string_view bytes) {
    std::string text;
    decodeCp932(text, bytes);
    return text;
}

std::string encoded(std::string_view text) {
    std::string bytes;
    encodeCp932(bytes, text);
    return bytes;
}

} // namespace

TEST(Cp932, ReadsKanjiHalfWidthKanaAndAscii) {
    EXPECT_EQ(decoded("\x8D\xC0\x95\x57\x41"), "座標A");
    EXPECT_EQ(decoded("\xB1\xDF"), "ｱﾟ");
    EXPECT_EQ(decoded("\x81\x40"), "　");
    EXPECT_EQ(decoded("\x5C\x7E"), "\\~");
    EXPECT_EQ(decoded("\x81\x60"), "～"); // U+FF5E
    EXPECT_EQ(decoded("\x87\x40"), "①");
    EXPECT_EQ(decoded("\xFA\xB1"), "﨑");
}

TEST(Cp932, HasSixtyThreeHalfWidthKanaFromA1ToDF) {
    EXPECT_EQ(decoded("\xA1\xA2\xDE\xDF"), "｡｢ﾞﾟ");
    EXPECT_EQ(encoded("｡｢ﾞﾟ"), "\xA1\xA2\xDE\xDF");
    for (unsigned byte = 0xA1; byte <= 0xDF; ++byte) {
        const std::string one(1, static_cast<char>(byte));
        EXPECT_EQ(encoded(decoded(one)), one) << byte;
        EXPECT_EQ(decoded(one).size(), 3U) << byte;
    }
    EXPECT_EQ(decoded("\xA0\xE0"), "\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(Cp932, TakesOneByteOfAPairThatIsNotDefined) {
    EXPECT_EQ(decoded("\x81\x20"), "\xEF\xBF\xBD ");
    EXPECT_EQ(decoded("\x85\x41"), "\xEF\xBF\xBD"
                                   "A");
    EXPECT_EQ(decoded("\x82\x7F"), "\xEF\xBF\xBD\x7F");
    EXPECT_EQ(decoded("\x8D"), "\xEF\xBF\xBD");
}

TEST(Cp932, TakesSingleBytesOutsideTheTableForReplacementCharacters) {
    for (const char byte : {'\x80', '\xA0', '\xFD', '\xFE', '\xFF'}) {
        EXPECT_EQ(decoded(std::string(1, byte) + "x"), "\xEF\xBF\xBDx");
    }
}

TEST(Cp932, TakesControlCharactersForOrdinaryOnes) {
    const std::string_view bytes("a\0b\x1A"
                                 "c",
                                 5);
    EXPECT_EQ(decoded(bytes), bytes);
    EXPECT_EQ(encoded(bytes), bytes);
}

TEST(Cp932, MapsThePrivateUseAreaBothWays) {
    EXPECT_EQ(decoded("\xF0\x40"), "\xEE\x80\x80"); // U+E000
    EXPECT_EQ(decoded("\xF9\xFC"), "\xEE\x9D\x97"); // U+E757
    for (int lead = 0xF0; lead <= 0xF9; ++lead) {
        for (int trail = 0x40; trail <= 0xFC; ++trail) {
            if (trail == 0x7F) {
                continue;
            }
            const std::string pair{static_cast<char>(lead), static_cast<char>(trail)};
            EXPECT_EQ(encoded(decoded(pair)), pair);
        }
    }
}

TEST(Cp932, WritesTheCodeThatWindowsWritesWhereThereAreSeveral) {
    EXPECT_EQ(encoded("纊"), "\xFA\x5C"); // U+7E8A, also ED40
    EXPECT_EQ(encoded("≒"), "\x81\xE0");  // U+2252, also 8790
    EXPECT_EQ(encoded("Ⅰ"), "\x87\x54");  // U+2160, also FA4A
    EXPECT_EQ(encoded("ⅰ"), "\xFA\x40");  // U+2170, also EEEF
    EXPECT_EQ(encoded("㈱"), "\x87\x8A"); // U+3231, also FA58
    EXPECT_EQ(encoded("￢"), "\x81\xCA"); // U+FFE2, also EEF9 and FA54
    EXPECT_EQ(encoded("∵"), "\x81\xE6");  // U+2235, also 879A and FA5B
    EXPECT_EQ(encoded("№"), "\x87\x82");  // U+2116, also FA59
    EXPECT_EQ(encoded("℡"), "\x87\x84");  // U+2121, also FA5A
}

TEST(Cp932, WritesAQuestionMarkForWhatItCannotHold) {
    EXPECT_EQ(encoded("a\xEF\xBF\xBDé😀〜b"), "a????b"); // U+FFFD, U+00E9, U+1F600, U+301C
    EXPECT_EQ(encoded("\xFF"), "?");
    // Around the half-width katakana, and at the end of the basic plane.
    for (const char* character : {"\xEF\xBD\xA0", "\xEF\xBE\xA0", "\xEF\xBF\xBF", "\xF0\x90\x80\x80"}) {
        EXPECT_EQ(encoded(character), "?");
    }
}

TEST(Cp932, ComesBackFromEveryDefinedPairAsTheSameText) {
    int defined = 0;
    for (int lead = 0x81; lead <= 0xFC; ++lead) {
        for (int trail = 0x40; trail <= 0xFC; ++trail) {
            const std::string pair{static_cast<char>(lead), static_cast<char>(trail)};
            const std::string text = decoded(pair);
            if (text.starts_with("\xEF\xBF\xBD") || (lead >= 0xA0 && lead <= 0xDF) || trail == 0x7F) {
                continue;
            }
            ++defined;
            EXPECT_EQ(decoded(encoded(text)), text) << std::hex << lead << trail;
        }
    }
    // 6879 of the standard, 83 of row 13, 374 and 388 extensions, 1880 private ones.
    EXPECT_EQ(defined, 6879 + 83 + 374 + 388 + 1880);
}

} // namespace fenmark::sima
