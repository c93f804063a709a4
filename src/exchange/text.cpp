// Numbers and texts as the exchange formats want them.
#include "exchange/text.h"

#include "sima/text/number.h"
#include "values/real_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <sstream>

namespace fenmark::exchange {

std::ostream& operator<<(std::ostream& out, JsonReal real) {
    if (!std::isfinite(real.value)) {
        return out << "null";
    }
    std::array<char, 32> buffer;
    const auto [end, error] = writeReal(buffer.data(), buffer.data() + buffer.size(), real.value);
    const std::string_view text(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
    out << text;
    if (text.find_first_of(".e") == std::string_view::npos) {
        out << ".0";
    }
    return out;
}

std::ostream& operator<<(std::ostream& out, PlainReal real) {
    std::array<char, 400> buffer; // the longest plain decimal of a 64-bit real takes some 330 characters
    const auto [end, error] = writePlainReal(buffer.data(), buffer.data() + buffer.size(), real.value);
    return out << std::string_view(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
}

std::string shortReal(double value) {
    std::ostringstream text;
    text << PlainReal{value};
    return std::move(text).str();
}

std::ostream& operator<<(std::ostream& out, JsonText text) {
    constexpr char kDigits[] = "0123456789abcdef";
    out << '"';
    std::size_t plain = 0; // first character not yet written
    for (std::size_t i = 0; i < text.text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text.text[i]);
        if (c >= 0x20 && c != '"' && c != '\\') {
            continue;
        }
        out << text.text.substr(plain, i - plain);
        plain = i + 1;
        if (c == '"' || c == '\\') {
            out << '\\' << static_cast<char>(c);
        } else {
            out << "\\u00" << kDigits[c >> 4] << kDigits[c & 15];
        }
    }
    return out << text.text.substr(plain) << '"';
}

std::string xmlText(std::string_view text) {
    std::string escaped;
    escaped.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        const std::string_view character = text.substr(at, 3);
        if (character == "\xEF\xBF\xBE" || character == "\xEF\xBF\xBF") { // U+FFFE and U+FFFF
            escaped += "\uFFFD";
            at += 2;
            continue;
        }
        if (c == '\xC2' && character.size() > 1 &&
            static_cast<unsigned char>(character[1]) < 0xA0) { // U+0080 to U+009F
            escaped += "\uFFFD";
            ++at;
            continue;
        }
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        case '\t':
            escaped += "&#9;";
            break;
        case '\n':
            escaped += "&#10;";
            break;
        case '\r':
            escaped += "&#13;";
            break;
        default:
            if (static_cast<unsigned char>(c) < 0x20 || c == '\x7F') {
                escaped += "\uFFFD";
            } else {
                escaped += c;
            }
        }
    }
    return escaped;
}

std::string_view withoutOuterBlanks(std::string_view name) {
    constexpr std::string_view kIdeographic = "\u3000";
    while (true) {
        const std::string_view before = name;
        name = sima::trim(name);
        if (name.starts_with(kIdeographic)) {
            name.remove_prefix(kIdeographic.size());
        }
        if (name.ends_with(kIdeographic)) {
            name.remove_suffix(kIdeographic.size());
        }
        if (name.size() == before.size()) {
            return name;
        }
    }
}

std::string UniqueNames::take(std::string_view wanted) {
    std::string name(wanted);
    while (true) {
        int& times = taken_[name];
        ++times;
        if (times == 1) {
            renamed_ += name == wanted ? 0 : 1;
            return name;
        }
        name = std::string(wanted) + " (" + std::to_string(times) + ")";
    }
}

} // namespace fenmark::exchange
