// Notes on a SIMA file that was likely not written as it was read.
#include "cli/file_hints.h"

#include "cli/error_blocks.h"
#include "cli/messages.h"
#include "cli/printable.h"
#include "sima/records/sections.h"
#include "sima/text/field_counts.h"
#include "sima/text/path.h"
#include "sima/text/splitter.h"
#include "sima/text/string_table.h"
#include "sima/text/utf8.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <optional>
#include <ostream>
#include <string_view>

namespace fenmark::cli {

namespace {

// The first lines of the file, whole: a character would be cut at the end of what is read. A file without any line feed
// is one line.
std::string headOf(const std::string& path) {
    constexpr std::size_t kLookedAt = std::size_t{64} << 10;
    std::string head(kLookedAt, '\0');
    std::ifstream file(sima::pathOf(path), std::ios::binary);
    file.read(head.data(), static_cast<std::streamsize>(head.size()));
    head.resize(static_cast<std::size_t>(std::max<std::streamsize>(file.gcount(), 0)));
    if (const std::size_t end = head.rfind('\n'); end != std::string::npos) {
        head.resize(end + 1);
    }
    return head;
}

// Whether an error is one of the number of fields. Results outside their alignment bear the same code.
bool isOfFieldCount(const ErrorBlock& block) {
    return block.code == "ErrX001" && block.text != sima::resourceText(sima::kMessageLongitudinalOutside) &&
           block.text != sima::resourceText(sima::kMessageCrossSectionOutside);
}

// Whether the record would do without its last comma.
bool hasOneCommaTooMany(std::string_view record) {
    sima::Fields fields;
    const std::int32_t count = sima::splitLine(record, ",", fields);
    const std::optional<std::size_t> known = sima::fieldCountOf(fields[0]);
    return known && static_cast<std::size_t>(count) == *known + 1 && record.ends_with(",,");
}

// The letter of the section that refused a record which opens a section; 0 for every other error.
char unclosedSection(const ErrorBlock& block) {
    const std::string_view recordCode = block.record.substr(0, block.record.find(','));
    if (sima::sectionOpenedBy(sima::recordCode(recordCode)) == nullptr) {
        return '\0';
    }
    for (const sima::SectionEntry& section : sima::kSections) {
        const char letter = section.opening.front();
        if (block.code == std::string("Err") + letter + "001") {
            return letter;
        }
    }
    return '\0';
}

} // namespace

FileEncoding encodingOf(const std::string& file, std::optional<sima::Encoding> asked) {
    const sima::EncodingChoice choice = sima::chooseEncoding(file);
    if (asked == sima::Encoding::Utf16Le && choice.kind == sima::TextKind::Utf16) {
        asked = choice.encoding; // the order of the bytes is the file's
    }
    return {asked.value_or(choice.encoding), asked.has_value(), choice.kind};
}

void tellLikelyMisreading(const Streams& streams, bool quiet, const std::string& file, const FileEncoding& encoding) {
    using sima::Encoding;
    using sima::TextKind;
    if (quiet && streams.report == nullptr) {
        return;
    }
    const auto tell = [&](std::string_view code, std::string japanese, std::string english) {
        tellFileNote(streams, quiet, file, code, inLanguage(streams, std::move(japanese), std::move(english)));
    };
    const std::string title(sima::encodingTitle(encoding.encoding));
    const std::string japaneseTitle = encoding.encoding == Encoding::Cp932 ? "コードページ932" : title;
    const std::string head = headOf(file);
    const bool isUtf8 = encoding.looksLike == TextKind::Utf8 || encoding.looksLike == TextKind::Utf8Mark;
    if (encoding.looksLike == TextKind::EucJp || encoding.looksLike == TextKind::Iso2022Jp) {
        const std::string looks = encoding.looksLike == TextKind::EucJp ? "EUC-JP" : "ISO-2022-JP (JIS)";
        tell("unread-encoding",
             looks + "のようですが、この文字コードは読めないため名称が正しくありません。コードページ932かUTF-"
                     "8で保存してください",
             "looks like " + looks +
                 ", which is not read: its names come out wrong; save it in code page 932 or UTF-8");
    } else if (!encoding.asked) {
        if (encoding.looksLike == TextKind::Utf8Mark) {
            tell("read-in", "先頭のバイト順マークにより、UTF-8で読みました",
                 "read in UTF-8, as the byte order mark at its start says");
        } else if (encoding.looksLike != TextKind::Cp932) {
            tell("read-in", "ファイルの内容から、" + title + "で読みました",
                 "read in " + title + ", as its bytes show");
        }
    } else if (encoding.looksLike == TextKind::Utf16 && encoding.encoding != Encoding::Utf16Le &&
               encoding.encoding != Encoding::Utf16Be) {
        tell("likely-misread",
             "UTF-16のようですが、" + japaneseTitle + "で読みました。--encoding を付けなければUTF-16で読みます",
             "looks like UTF-16 and is read in " + title + "; without --encoding it is read as such");
    } else if (encoding.encoding == Encoding::Cp932 && isUtf8) {
        tell("likely-misread",
             "UTF-8のようですが、コードページ932で読みました。--encoding utf-8 を付けるとUTF-8で読みます",
             "looks like UTF-8 and is read in code page 932; --encoding utf-8 reads it as such");
    } else if (encoding.encoding == Encoding::Utf8 && !sima::isValidUtf8(head)) {
        tell("likely-misread", "UTF-8ではありません。--encoding utf-8 を付けなければコードページ932で読みます",
             "is no UTF-8; without --encoding utf-8 it is read in code page 932");
    }
    const bool isUtf16 = encoding.looksLike == TextKind::Utf16;
    if (!isUtf16 && head.find('\n') == std::string::npos && head.find('\r') != std::string::npos) {
        tell("carriage-returns",
             "行末が復帰コード(CR)だけのため、全体が1行になります。改行コード(LF)を付けて保存してください",
             "its lines end in a carriage return alone, so all of it is one line; save it with line feeds");
    }
}

void tellNothingFound(const Streams& streams, bool quiet, const std::string& file) {
    tellFileNote(
        streams, quiet, file, "nothing-found",
        inLanguage(streams, "点、画地、路線、成果が1つもありません", "no point, lot, route or result was found in it"));
}

void tellUnclosedSection(const Streams& streams, bool quiet, const std::string& file, const sima::SimaLog& log) {
    if (quiet && streams.report == nullptr) {
        return;
    }
    for (std::size_t i = 0; i < errorBlockCount(log); ++i) {
        const ErrorBlock block = errorBlock(log, i);
        const char section = unclosedSection(block);
        if (section == '\0') {
            continue;
        }
        const std::string end = std::string(1, section) + "99";
        const std::string code(block.record.substr(0, 3));
        tellLineNote(streams, quiet, file, block.line, "unclosed-section",
                     inLanguage(streams,
                                section + ("区分の中に" + code) + "があります。その前に" + end +
                                    "がないようです。次の" + end + "までを" + section + "区分として読みます",
                                code + " inside section " + section + "; " + end +
                                    " seems to be missing before it, and all up to the next " + end +
                                    " is taken for section " + section));
        return;
    }
}

void tellCommas(const Streams& streams, bool quiet, const std::string& file, const sima::SimaLog& log) {
    if (quiet && streams.report == nullptr) {
        return;
    }
    std::size_t lacking = 0;
    std::size_t oneTooMany = 0;
    for (std::size_t i = 0; i < errorBlockCount(log); ++i) {
        const ErrorBlock block = errorBlock(log, i);
        if (isOfFieldCount(block)) {
            lacking += block.record.ends_with(',') ? 0U : 1U;
            oneTooMany += hasOneCommaTooMany(block.record) ? 1U : 0U;
        }
    }
    if (lacking > 0) {
        const std::string number = std::to_string(lacking);
        tellFileNote(streams, quiet, file, "lacking-comma",
                     inLanguage(streams, "行末のコンマがないレコードが" + number + "行あります",
                                number + (lacking == 1 ? " record lacks" : " records lack") +
                                    " the comma that every record of the format ends in"));
    }
    if (oneTooMany > 0) {
        const std::string number = std::to_string(oneTooMany);
        tellFileNote(streams, quiet, file, "comma-too-many",
                     inLanguage(streams, "行末のコンマが1つ多いレコードが" + number + "行あります。取り除いてください",
                                "one comma too many at the end of " + number +
                                    (oneTooMany == 1 ? " record" : " records") +
                                    ", which the format refuses; take it away"));
    }
}

void tellPointNumbers(const Streams& streams, bool quiet, const std::string& file, const sima::SimaLog& log) {
    if (quiet && streams.report == nullptr) {
        return;
    }
    std::size_t count = 0;
    std::string first;
    sima::Fields fields;
    for (std::size_t i = 0; i < errorBlockCount(log); ++i) {
        const ErrorBlock block = errorBlock(log, i);
        if (block.code != "ErrA01-1" && block.code != "ErrB01-1") {
            continue;
        }
        if (count == 0 && sima::splitLine(block.record, ",", fields) > 1) {
            first = fields[1];
        }
        ++count;
    }
    if (count > 0) {
        const std::string number = std::to_string(count);
        tellFileNote(streams, quiet, file, "point-number",
                     inLanguage(streams,
                                "点番号が「" + first + "」のようなレコードが" + number +
                                    "行あります。点番号は5桁以内の整数とし、点名はその次の項目に入れてください",
                                number + (count == 1 ? " record has" : " records have") + " a point number such as '" +
                                    first +
                                    "'; the format wants a whole number of at most five digits there, and "
                                    "the point's name in the field behind it"));
    }
}

} // namespace fenmark::cli
