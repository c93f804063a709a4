// What reaches a terminal: every control character as JSON spells it, all else as it is, however it comes in pieces.
#include "cli/printable.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <ios>
#include <ostream>
#include <sstream>
#include <streambuf>
#include <string>
#include <string_view>

namespace fenmark::cli {
namespace {

std::string printed(std::string_view text, std::size_t piece) {
    std::ostringstream target;
    PrintableStream stream(target);
    for (std::size_t at = 0; at < text.size(); at += piece) {
        stream << text.substr(at, piece);
    }
    EXPECT_TRUE(stream.good());
    return target.str();
}

std::string asJson(unsigned character) {
    char text[8];
    std::snprintf(text, sizeof text, "\\u%04x", character);
    return text;
}

TEST(PrintableText, SpellsEveryControlCharacterAndNoOther) {
    for (unsigned character = 0; character < 0x800; ++character) {
        std::string text(1, static_cast<char>(character));
        if (character >= 0x80) {
            text = {static_cast<char>(0xC0 | character >> 6), static_cast<char>(0x80 | (character & 0x3F))};
        }
        const bool control = character < 0x20 || (character >= 0x7F && character <= 0x9F);
        const bool spelt = control && character != '\n' && character != '\t';
        const std::string one = spelt ? asJson(character) : text;
        for (const std::size_t piece : {1U, 2U, 3U, 100U}) {
            EXPECT_EQ(printed("a" + text + text + "b" + text, piece), "a" + one + one + "b" + one) << character;
        }
    }
    for (const char* text : {"", "測点", "😀",
                             "\xC2\xA0"
                             "\xC3\x80"
                             "\xE3\x82\xA2"}) {
        EXPECT_EQ(printed(text, 1), text);
        EXPECT_EQ(printed(text, 100), text);
    }
    EXPECT_EQ(printed("\xC2"
                      "a\xC2\xC2\x9B",
                      1),
              "\xC2"
              "a\xC2\\u009b")
        << "bytes that are no UTF-8";
}

TEST(PrintableText, OneCharacterIsPrintedLikeAText) {
    std::ostringstream target;
    PrintableStream stream(target);
    stream.put('a').put('\x1B').put('\xC2').put('\x9B').put('\n');
    EXPECT_EQ(target.str(), "a\\u001b\\u009b\n");
    EXPECT_EQ(oneLine("a\nb\n\tc"), "a\\u000ab\\u000a\tc");
    EXPECT_EQ(oneLine(""), "");
}

// As a disk that is full.
class TakesNothing : public std::streambuf {
  protected:
    int_type overflow(int_type) override { return traits_type::eof(); }
    std::streamsize xsputn(const char*, std::streamsize) override { return 0; }
};

TEST(PrintableText, ATargetThatTakesNothingIsTold) {
    for (const std::string text : {"a", "ab", "\x1B", "a\xC2\x9B"}) {
        TakesNothing nothing;
        std::ostream target(&nothing);
        PrintableStream whole(target);
        EXPECT_FALSE(whole << text) << text;
        PrintableStream first(target);
        EXPECT_FALSE(first.put(text[0])) << text;
    }
}

TEST(PrintableText, AStreamIsLikeTheOneBeneath) {
    for (const bool atOnce : {false, true}) {
        std::ostringstream target;
        if (atOnce) {
            target << std::unitbuf;
        }
        const PrintableStream stream(target);
        EXPECT_EQ((stream.flags() & std::ios::unitbuf) != 0, atOnce);
        EXPECT_TRUE(stream.good());
    }
    std::ostringstream broken;
    broken.setstate(std::ios::badbit);
    EXPECT_TRUE(PrintableStream(broken).bad());
    std::ostringstream failing;
    {
        PrintableStream stream(failing);
        stream.setstate(std::ios::failbit);
    }
    EXPECT_TRUE(failing.good());
    {
        PrintableStream stream(failing);
        stream.setstate(std::ios::badbit);
    }
    EXPECT_TRUE(failing.bad());
}

} // namespace
} // namespace fenmark::cli
