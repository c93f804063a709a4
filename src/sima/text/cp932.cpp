// Code page 932 to UTF-8 and back.
#include "sima/text/cp932.h"

#include "sima/text/utf8.h"

#include <array>
#include <cstdint>
#include <memory>

namespace fenmark::sima {

namespace {

constexpr unsigned kFirstTrail = 0x40;
constexpr unsigned kLastTrail = 0xFC;
constexpr std::size_t kTrails = kLastTrail - kFirstTrail + 1;
constexpr std::size_t kRows = 31 + 16 + 3; // leads 81 to 9F, E0 to EF, FA to FC

constexpr std::array<std::array<std::uint16_t, kTrails>, kRows> kDoubleBytes{{
#include "sima/text/cp932_table.inc"
}};

constexpr unsigned kFirstPrivateLead = 0xF0;
constexpr unsigned kLastPrivateLead = 0xF9;
constexpr unsigned kPrivateUse = 0xE000;
constexpr unsigned kPrivateCells = 188; // trail bytes 40 to 7E and 80 to FC

constexpr unsigned kHalfWidthKana = 0xFF61; // of the single byte A1

bool isLead(unsigned byte) {
    return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

std::size_t rowOf(unsigned lead) {
    if (lead <= 0x9F) {
        return lead - 0x81;
    }
    if (lead <= 0xEF) {
        return lead - 0xE0 + 31;
    }
    return lead - 0xFA + 47;
}

// The length of the ASCII text at the front.
std::size_t asciiRun(std::string_view text) {
    std::size_t length = 0;
    while (length < text.size() && static_cast<unsigned char>(text[length]) < 0x80) {
        ++length;
    }
    return length;
}

// 0 if the pair is not defined.
char32_t pairCharacter(unsigned lead, unsigned trail) {
    if (trail < kFirstTrail || trail > kLastTrail || trail == 0x7F) {
        return 0;
    }
    if (lead >= kFirstPrivateLead && lead <= kLastPrivateLead) {
        return kPrivateUse + (lead - kFirstPrivateLead) * kPrivateCells + trail - (trail < 0x7F ? 0x40 : 0x41);
    }
    return kDoubleBytes[rowOf(lead)][trail - kFirstTrail];
}

// The double-byte code of each character of the basic plane; 0 where there is none.
using ReverseTable = std::array<std::uint16_t, 0x10000>;

std::unique_ptr<const ReverseTable> makeReverseTable() {
    auto table = std::make_unique<ReverseTable>();
    table->fill(0);
    const auto addRows = [&table](unsigned first, unsigned last) {
        for (unsigned lead = first; lead <= last; ++lead) {
            for (unsigned trail = kFirstTrail; trail <= kLastTrail; ++trail) {
                const char32_t character = pairCharacter(lead, trail);
                if (character != 0 && (*table)[character] == 0) {
                    (*table)[character] = static_cast<std::uint16_t>(lead << 8 | trail);
                }
            }
        }
    };
    // The first code of a character wins. Windows prefers the standard's own rows, then the maker's row 13, then the
    // extension rows FA to FC, and writes the older copies of those in ED and EE for nothing.
    addRows(0x81, 0x86);
    addRows(0x88, 0x9F);
    addRows(0xE0, 0xEC);
    addRows(0x87, 0x87);
    addRows(0xFA, 0xFC);
    addRows(0xED, 0xEF);
    addRows(kFirstPrivateLead, kLastPrivateLead);
    return table;
}

const ReverseTable& reverseTable() {
    static const std::unique_ptr<const ReverseTable> table = makeReverseTable();
    return *table;
}

} // namespace

void decodeCp932(std::string& out, std::string_view bytes) {
    for (std::size_t i = 0; i < bytes.size();) {
        const std::size_t run = asciiRun(bytes.substr(i));
        out.append(bytes, i, run);
        i += run;
        if (i == bytes.size()) {
            return;
        }
        const auto byte = static_cast<unsigned char>(bytes[i++]);
        if (byte >= 0xA1 && byte <= 0xDF) {
            appendUtf8(out, kHalfWidthKana + byte - 0xA1);
            continue;
        }
        char32_t character = 0;
        if (isLead(byte) && i < bytes.size()) {
            character = pairCharacter(byte, static_cast<unsigned char>(bytes[i]));
        }
        if (character == 0) {
            out += kReplacementCharacter;
        } else {
            appendUtf8(out, character);
            ++i;
        }
    }
}

void encodeCp932(std::string& out, std::string_view text) {
    const ReverseTable& table = reverseTable();
    while (!text.empty()) {
        const std::size_t run = asciiRun(text);
        out += text.substr(0, run);
        text.remove_prefix(run);
        if (text.empty()) {
            return;
        }
        const char32_t character = takeCharacter(text);
        if (character >= kHalfWidthKana && character < kHalfWidthKana + 63) {
            out += static_cast<char>(character - kHalfWidthKana + 0xA1);
            continue;
        }
        const std::uint16_t code = character < table.size() ? table[character] : std::uint16_t{0};
        if (code == 0) {
            out += '?';
        } else {
            out += static_cast<char>(code >> 8);
            out += static_cast<char>(code & 0xFF);
        }
    }
}

void encodeCp932Lines(std::string& out, std::string_view text) {
    for (std::size_t at = text.find('\n'); at != std::string_view::npos; at = text.find('\n')) {
        encodeCp932(out, text.substr(0, at));
        out += "\r\n";
        text.remove_prefix(at + 1);
    }
    encodeCp932(out, text);
}

} // namespace fenmark::sima
