// The encodings that a SIMA file is read in.
#include "sima/text/encoding.h"

#include "values/ascii_case.h"

#include <array>
#include <string>

namespace fenmark::sima {

namespace {

struct Spelling {
    std::string_view name; // in lower case, letters and digits alone
    Encoding encoding;
};

constexpr std::array kSpellings{
    Spelling{"cp932", Encoding::Cp932},     Spelling{"932", Encoding::Cp932},
    Spelling{"ms932", Encoding::Cp932},     Spelling{"windows31j", Encoding::Cp932},
    Spelling{"sjis", Encoding::Cp932},      Spelling{"xsjis", Encoding::Cp932},
    Spelling{"shiftjis", Encoding::Cp932},  Spelling{"mskanji", Encoding::Cp932},
    Spelling{"sjiswin", Encoding::Cp932},   Spelling{"utf8", Encoding::Utf8},
    Spelling{"utf8bom", Encoding::Utf8},    Spelling{"utf8sig", Encoding::Utf8},
    Spelling{"cp65001", Encoding::Utf8},    Spelling{"utf16", Encoding::Utf16Le},
    Spelling{"utf16le", Encoding::Utf16Le}, Spelling{"unicode", Encoding::Utf16Le},
    Spelling{"utf16be", Encoding::Utf16Be},
};

} // namespace

std::optional<Encoding> encodingNamed(std::string_view name) {
    std::string plain;
    for (const char c : name) {
        const char lower = asciiLower(c);
        if ((lower >= 'a' && lower <= 'z') || (c >= '0' && c <= '9')) {
            plain += lower;
        } else if (c != '-' && c != '_' && c != ' ') {
            return std::nullopt;
        }
    }
    for (const Spelling& spelling : kSpellings) {
        if (spelling.name == plain) {
            return spelling.encoding;
        }
    }
    return std::nullopt;
}

std::string_view encodingTitle(Encoding encoding) {
    switch (encoding) {
    case Encoding::Cp932:
        return "code page 932";
    case Encoding::Utf8:
        return "UTF-8";
    case Encoding::Utf16Le:
    case Encoding::Utf16Be:
        break;
    }
    return "UTF-16";
}

} // namespace fenmark::sima
