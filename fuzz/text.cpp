// Any bytes as lines, numbers and texts: the reader's tools against reference code that follows the rules word by word.
#include "bytes.h"
#include "require.h"
#include "sima/plain_splitter.h"
#include "sima/text/cp932.h"
#include "sima/text/encoding_choice.h"
#include "sima/text/number.h"
#include "sima/text/path.h"
#include "sima/text/record_code.h"
#include "sima/text/splitter.h"
#include "sima/text/utf8.h"

#include <iconv.h>
#include <locale.h>
#include <vector>

namespace {

using namespace fenmark;
using namespace fenmark::sima;
using fenmark::sima_test::splitPlainly;
using fuzz::require;
using Texts = std::vector<std::string>;

// --- lines ---

void compare(const Fields& fields, const Texts& expected) {
    require(fields.size() == expected.size(), "the number of fields");
    for (std::size_t i = 0; i < expected.size() && i < Fields::kKept; ++i) {
        require(fields[i] == expected[i], "field " + std::to_string(i));
    }
}

void tryLine(const std::string& line) {
    const Texts expected = splitPlainly(line);
    Fields fields;
    require(splitLine(line, ",", fields) == static_cast<std::int32_t>(expected.size()), "the number returned");
    compare(fields, expected);
    if (splitAsciiLine(line, fields)) {
        require(isAscii(line), "only lines of ASCII are split so");
        compare(fields, expected);
    }
    const std::string text = line + "\r\nA99,\r\nmore than sixteen bytes\n";
    if (const std::size_t taken = splitPlainLine(text, fields); taken != 0) {
        const std::size_t end = text.find('\n');
        require(taken == end + 1, "the line ends at its line feed");
        std::string whole = text.substr(0, end);
        if (whole.ends_with('\r')) {
            whole.pop_back();
        }
        compare(fields, splitPlainly(whole));
    }
    Array<std::string> pieces;
    ExtendedCString::Splitter(pieces, line, ",");
    std::string joined;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        joined += (i == 0 ? "" : ",") + pieces[i];
    }
    require(joined == line || joined + "," == line, "the pieces make the line");
    require(recordCode(line) == recordCode(std::string(line)), "a code depends on its text alone");
}

// --- numbers ---

// What of a text the C conversion would take for a decimal number.
std::string numberIn(std::string_view text) {
    std::string taken;
    std::size_t i = 0;
    while (i < text.size() && isBlank(text[i])) {
        ++i;
    }
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) {
        taken += text[i++];
    }
    bool digits = false;
    while (i < text.size() && isDigit(text[i])) {
        taken += text[i++];
        digits = true;
    }
    if (i < text.size() && text[i] == '.') {
        taken += text[i++];
        while (i < text.size() && isDigit(text[i])) {
            taken += text[i++];
            digits = true;
        }
    }
    if (!digits) {
        return "0";
    }
    if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
        std::size_t j = i + 1;
        if (j < text.size() && (text[j] == '-' || text[j] == '+')) {
            ++j;
        }
        if (j < text.size() && isDigit(text[j])) {
            while (j < text.size() && isDigit(text[j])) {
                ++j;
            }
            taken += text.substr(i, j - i);
        }
    }
    return taken;
}

bool sameBits(double a, double b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

void tryNumber(const std::string& text) {
    static const locale_t kC = newlocale(LC_ALL_MASK, "C", nullptr);
    const double expected = strtod_l(numberIn(text).c_str(), nullptr, kC);
    // Numbers too small for a normal double may come out as 0 or as the nearest small one.
    const double value = toReal(text);
    require(sameBits(value, expected) || (value == 0.0 && expected < 1e-307 && expected > -1e-307), "a real");
    if (double plain = 0.0; toPlainReal(text, plain)) {
        require(sameBits(plain, value), "the short way to a real");
    }
    long long whole = 0;
    const std::string number = numberIn(text);
    bool full = false;
    for (const char c : number.substr(number.front() == '-' || number.front() == '+' ? 1 : 0)) {
        if (!isDigit(c)) {
            break;
        }
        whole = whole * 10 + (c - '0');
        full = full || whole > 0x80000000LL;
        whole = full ? 0x80000000LL : whole;
    }
    whole = number.front() == '-' ? -whole : whole > 0x7fffffffLL ? 0x7fffffffLL : whole;
    require(toInteger(text) == whole, "an integer");
    if (std::int32_t plain = 0; toPlainInteger(text, plain)) {
        require(plain == whole, "the short way to an integer");
    }
    if (expected == expected && expected > -1e308 && expected < 1e308) {
        char printed[400];
        std::snprintf(printed, sizeof printed, "%0.12f", value);
        require(formatReal(value) == printed, "a real as text");
    }
}

// --- characters ---

std::string converted(const char* to, const char* from, std::string_view text, bool& whole) {
    const iconv_t converter = iconv_open(to, from);
    require(converter != reinterpret_cast<iconv_t>(-1), "the system converts");
    std::string input(text);
    std::string out(text.size() * 4 + 16, '\0');
    char* in = input.data();
    std::size_t inLeft = input.size();
    char* target = out.data();
    std::size_t outLeft = out.size();
    whole = iconv(converter, &in, &inLeft, &target, &outLeft) != static_cast<std::size_t>(-1) && inLeft == 0;
    iconv_close(converter);
    out.resize(out.size() - outLeft);
    return out;
}

void tryCharacters(const std::string& bytes) {
    std::string text;
    decodeCp932(text, bytes);
    require(isValidUtf8(text), "decoded text is UTF-8");
    bool whole = false;
    const std::string expected = converted("UTF-8", "CP932", bytes, whole);
    // The system's converter refuses what the code page leaves open, and differs in the lead bytes F0 to F9.
    if (whole && text.find(kReplacementCharacter) == std::string::npos) {
        bool privateUse = false;
        for (std::string_view rest = text; !rest.empty();) {
            const char32_t c = takeCharacter(rest);
            privateUse = privateUse || (c >= 0xE000 && c <= 0xF8FF);
        }
        require(privateUse || text == expected, "code page 932 as the system reads it");
    }
    std::string back;
    encodeCp932(back, text);
    std::string again;
    decodeCp932(again, back);
    if (text.find(kReplacementCharacter) == std::string::npos) {
        require(again == text, "encoded and decoded again");
    }
    std::string lines;
    encodeCp932Lines(lines, text);
    std::string valid;
    appendValidUtf8(valid, bytes);
    require(isValidUtf8(valid), "made valid");
    require(!isValidUtf8(bytes) || valid == bytes, "what is valid stays");
    whole = false;
    converted("UTF-32LE", "UTF-8", bytes, whole);
    require(isValidUtf8(bytes) == whole, "valid as the system says it");
    for (const bool high : {false, true}) {
        std::string utf16;
        require(appendUtf16(utf16, bytes, high, true) == bytes.size(), "all of it is taken");
        require(isValidUtf8(utf16), "from UTF-16");
        const std::string reference = converted("UTF-8", high ? "UTF-16BE" : "UTF-16LE", bytes, whole);
        require(!whole || utf16 == reference, "UTF-16 as the system reads it");
        std::string pieces; // in two pieces, cut anywhere
        const std::size_t cut = bytes.size() / 3;
        const std::size_t first = appendUtf16(pieces, std::string_view(bytes).substr(0, cut), high, false);
        appendUtf16(pieces, std::string_view(bytes).substr(first), high, true);
        require(pieces == utf16, "UTF-16 in pieces");
    }
    EncodingGuess once;
    once.look(bytes);
    EncodingGuess piece;
    for (const char c : bytes) {
        piece.look(std::string_view(&c, 1));
    }
    require(once.choice().kind == piece.choice().kind, "the choice does not depend on the pieces");
    textOfPath(bytes);
    replaceIdeographicSpaces(text);
    withoutLastCharacters(text, static_cast<int>(bytes.size() % 5));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    tryLine(text);
    tryNumber(text);
    tryCharacters(text);
    return 0;
}
