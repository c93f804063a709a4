// Notes on a SIMA file that was likely not written as it was read.
#include "cli/file_hints.h"

#include "cli/error_blocks.h"
#include "cli/messages.h"
#include "sima/text/path.h"
#include "sima/text/string_table.h"
#include "sima/text/utf8.h"

#include <algorithm>
#include <fstream>
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

bool looksLikeUtf16(std::string_view text) {
    return text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF");
}

// Whether an error is one of the number of fields. Results outside their alignment bear the same code.
bool isOfFieldCount(const ErrorBlock& block) {
    return block.code == "ErrX001" && block.text != sima::resourceText(sima::kMessageLongitudinalOutside) &&
           block.text != sima::resourceText(sima::kMessageCrossSectionOutside);
}

// The section letter that a text begins with, if it goes on as given; otherwise 0.
char sectionLetter(std::string_view text, std::string_view rest) {
    constexpr std::string_view kSections = "ADFHI";
    const bool isSection = !text.empty() && kSections.find(text.front()) != std::string_view::npos;
    return isSection && text.substr(1) == rest ? text.front() : '\0';
}

// The letter of the section that refused a record which opens a section; 0 for every other error.
char unclosedSection(const ErrorBlock& block) {
    const std::string_view recordCode = block.record.substr(0, block.record.find(','));
    if (!block.code.starts_with("Err") || sectionLetter(recordCode, "00") == '\0') {
        return '\0';
    }
    return sectionLetter(block.code.substr(3), "001");
}

} // namespace

void tellLikelyMisreading(const Streams& streams, bool quiet, const std::string& file, sima::Encoding encoding) {
    if (quiet) {
        return;
    }
    const auto tell = [&](std::string_view text) { tellFileNote(streams, false, file, text); };
    const std::string head = headOf(file);
    if (looksLikeUtf16(head)) {
        tell("looks like UTF-16, which is not read; save it in code page 932 or UTF-8");
    } else if (encoding == sima::Encoding::Cp932 && !sima::isAscii(head) && sima::isValidUtf8(head)) {
        tell("looks like UTF-8 and is read in code page 932; --encoding utf-8 reads it as such");
    } else if (encoding == sima::Encoding::Utf8 && !sima::isValidUtf8(head)) {
        tell("is no UTF-8; without --encoding utf-8 it is read in code page 932");
    }
    if (head.find('\n') == std::string::npos && head.find('\r') != std::string::npos) {
        tell("its lines end in a carriage return alone, so all of it is one line; save it with line feeds");
    }
}

void tellNothingFound(const Streams& streams, bool quiet, const std::string& file, const sima::SimaReader& reader) {
    if (reader.points.empty() && reader.lots.empty() && reader.alignments.empty() && reader.hSeries.empty() &&
        reader.intersections.empty()) {
        tellFileNote(streams, quiet, file, "no point, lot, route or result was found in it");
    }
}

void tellUnclosedSection(const Streams& streams, bool quiet, const std::string& file, const sima::SimaLog& log) {
    if (quiet) {
        return;
    }
    for (std::size_t i = 0; i < errorBlockCount(log); ++i) {
        const ErrorBlock block = errorBlock(log, i);
        const char section = unclosedSection(block);
        if (section == '\0') {
            continue;
        }
        streams.err << file << ':' << block.line << ": note: " << block.record.substr(0, 3) << " inside section "
                    << section << "; " << section << "99 seems to be missing before it, and all up to the next "
                    << section << "99 is taken for section " << section << '\n';
        return;
    }
}

void tellMissingCommas(const Streams& streams, bool quiet, const std::string& file, const sima::SimaLog& log) {
    std::size_t lacking = 0;
    for (std::size_t i = 0; i < errorBlockCount(log); ++i) {
        const ErrorBlock block = errorBlock(log, i);
        lacking += isOfFieldCount(block) && !block.record.ends_with(',') ? 1U : 0U;
    }
    if (lacking > 0) {
        tellFileNote(streams, quiet, file,
                     std::to_string(lacking) + (lacking == 1 ? " record lacks" : " records lack") +
                         " the comma that every record of the format ends in");
    }
}

} // namespace fenmark::cli
