// The groups of a DXF file.
#include "exchange/dxf_writer.h"

#include "sima/text/cp932.h"
#include "sima/text/utf8.h"

#include <array>
#include <cstdio>

namespace fenmark::exchange {

namespace {

// The code point that begins at the position, which moves behind it. Of bytes that are no UTF-8 it is any.
char32_t nextCharacter(std::string_view text, std::size_t& at) {
    const auto first = static_cast<unsigned char>(text[at]);
    const int length = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    char32_t c = length == 1 ? first : first & (0x7FU >> length);
    for (int i = 1; i < length && at + static_cast<std::size_t>(i) < text.size(); ++i) {
        c = (c << 6) | (static_cast<unsigned char>(text[at + static_cast<std::size_t>(i)]) & 0x3FU);
    }
    at += static_cast<std::size_t>(length);
    return c;
}

std::string escaped(char32_t c) {
    std::array<char, 16> text;
    std::snprintf(text.data(), text.size(), "\\U+%04X", static_cast<unsigned>(c < 0x10000 ? c : 0xFFFD));
    return text.data();
}

bool isNoncharacter(char32_t c) {
    return (c & 0xFFFE) == 0xFFFE || (c >= 0xFDD0 && c <= 0xFDEF);
}

// A backslash that would begin a code point or a byte pair with what follows it.
bool beginsEscape(std::string_view rest) {
    return rest.size() > 2 && rest[0] == '\\' && rest[2] == '+' &&
           (rest[1] == 'U' || rest[1] == 'u' || rest[1] == 'M' || rest[1] == 'm');
}

bool isPlain(std::string_view text) {
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte >= 0x7F || c == '\\' || c == '^') {
            return false;
        }
    }
    return true;
}

} // namespace

std::string dxfText(std::string_view text, DxfVersion version, std::size_t limit) {
    if (text.size() <= limit && isPlain(text)) {
        return std::string(text);
    }
    std::string bytes;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t from = at;
        const std::size_t before = bytes.size();
        const char32_t c = nextCharacter(text, at);
        if (c < 0x20 || c == 0x7F) {
            bytes += ' ';
        } else if (c == U'^') {
            bytes += "^ "; // a caret alone would begin a control character
        } else if (c == U'\\' && beginsEscape(text.substr(from))) {
            bytes += escaped(c);
        } else if (c < 0x80) {
            bytes += static_cast<char>(c);
        } else if (version == DxfVersion::R2018) {
            const std::string_view character = text.substr(from, at - from);
            if (isNoncharacter(c) || !sima::isValidUtf8(character)) {
                bytes += "\uFFFD"; // a drawing that another program changed may hold any bytes
            } else {
                bytes.append(character);
            }
        } else {
            std::string one;
            sima::encodeCp932(one, text.substr(from, at - from));
            bytes += one == "?" ? escaped(c) : one;
        }
        if (bytes.size() > limit) {
            bytes.resize(before);
            break;
        }
    }
    return bytes;
}

std::string dxfLayer(std::string_view name, DxfVersion version) {
    std::string allowed(name);
    for (char& c : allowed) {
        if (std::string_view("<>/\\\":;?*|=',`^").find(c) != std::string_view::npos ||
            static_cast<unsigned char>(c) < 0x20 || c == 0x7F) {
            c = '_';
        }
    }
    return dxfText(allowed.empty() ? "0" : allowed, version);
}

void DxfWriter::handle(int code, Handle value) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::array<char, 16> buffer;
    std::size_t first = buffer.size();
    do {
        buffer[--first] = kDigits[value & 15];
        value >>= 4;
    } while (value != 0);
    group(code, std::string_view(buffer.data() + first, buffer.size() - first));
}

void DxfWriter::beginTable(std::string_view name, int records) {
    group(0, "TABLE");
    group(2, name);
    if (!isOld()) {
        table_ = newHandle();
        handle(5, table_);
        handle(330, 0);
        group(100, "AcDbSymbolTable");
    }
    integer(70, records);
    if (!isOld() && name == "DIMSTYLE") {
        group(100, "AcDbDimStyleTable");
        integer(71, 0);
    }
}

DxfWriter::Handle DxfWriter::record(std::string_view type, std::string_view subclassName, std::string_view name,
                                    Handle given) {
    const Handle own = given != 0 ? given : newHandle();
    group(0, type);
    if (!isOld()) {
        handle(type == "DIMSTYLE" ? 105 : 5, own); // 5 is a block's name in a dimension style
        handle(330, table_);
        group(100, "AcDbSymbolTableRecord");
        group(100, subclassName);
    }
    group(2, name);
    if (type != "BLOCK_RECORD") {
        integer(70, 0);
    }
    return own;
}

void DxfWriter::entity(std::string_view type, std::string_view layer, std::string_view subclassName) {
    group(0, type);
    if (!isOld()) {
        handle(5, newHandle());
        handle(330, owners_.modelSpace);
        group(100, "AcDbEntity");
    }
    group(8, layer);
    subclass(subclassName);
}

} // namespace fenmark::exchange
