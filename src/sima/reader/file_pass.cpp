// One pass over one file.
#include "sima/reader/file_pass.h"

#include "sima/text/cp932.h"
#include "sima/text/field_counts.h"
#include "sima/text/number.h"
#include "sima/text/utf8.h"

#include <algorithm>
#include <cstddef>
#include <optional>

namespace fenmark::sima {

namespace {

constexpr std::string_view kWindowTitle = "SIMAファイル読み込み中";
constexpr std::string_view kWindowText = "SIMAファイル読み込み中...\n\n";

// A file of garbage must not fill the list of kinds: beyond so many, codes are reported together.
constexpr std::size_t kMostKinds = 64;
constexpr std::size_t kLongestCode = 12; // bytes

// How many characters there are but quotes, blanks and commas, which splitting takes away in the ordinary course.
std::size_t countOrdinary(std::string_view text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return c != '"' && c != ',' && !isBlank(c); }));
}

// Whether a line with a quote was split into fields that hold fewer or more characters.
bool losesCharacters(std::string_view text, const Fields& fields) {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        kept += countOrdinary(fields[i]);
    }
    return kept != countOrdinary(text);
}

bool isPrintable(std::string_view code) {
    for (const char c : code) {
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) {
            return false;
        }
    }
    return code.size() <= kLongestCode;
}

} // namespace

bool FilePass::open(std::string_view path) {
    if (!source_.open(path)) {
        reader_.openError = source_.openError();
        return false;
    }
    if (context_.progress != nullptr) {
        progress_ = context_.progress->create(kWindowTitle, false);
    }
    if (progress_) {
        progress_->goModal("Progress", false);
        progress_->setRange(0, source_.length(), 1);
        progress_->setText(kWindowText);
    }
    return true;
}

void FilePass::close() {
    source_.close();
    progress_.reset();
}

bool FilePass::next() {
    const std::string_view ahead = source_.ahead();
    if (const std::size_t length = splitPlainLine(ahead, fields_); length != 0) {
        text_ = ahead.substr(0, length - (ahead[length - 2] == '\r' ? 2 : 1));
        source_.skip(length);
    } else if (!nextOutOfTheOrdinary()) {
        return false;
    }
    if (progress_) {
        progress_->setPosition(source_.position());
        progress_->pump();
    }
    ++reader_.lineNumber;
    code_ = recordCode(fields_[0]);
    return true;
}

// Reads and splits a line of any kind.
bool FilePass::nextOutOfTheOrdinary() {
    std::string_view raw;
    try {
        if (!source_.next(raw)) {
            return false;
        }
    } catch (const LineTooLong&) {
        ++reader_.lineNumber; // of the line at fault
        throw;
    }
    // Blanks are single bytes in both encodings and never the second byte of a pair, so trimming comes first.
    const std::string_view bytes = trim(raw);
    decodeAndSplit(bytes);
    doubtText(bytes);
    return true;
}

void FilePass::doubtText(std::string_view bytes) {
    constexpr std::string_view kReplacement = "\uFFFD";
    const std::optional<std::size_t> known = fieldCountOf(fields_[0]);
    if (!known) { // a comment, for instance
        return;
    }
    const std::int32_t line = reader_.lineNumber + 1; // which is counted only then
    const bool isReplaced = text_.find(kReplacement) != std::string_view::npos;
    if (isReplaced && (context_.encoding == Encoding::Cp932 || bytes.find(kReplacement) == std::string_view::npos)) {
        doubt(Doubt::UnreadableCharacter, line);
    }
    // One of another number of fields has its error, and not all fields of a long line are kept.
    const bool hasItsFields = fields_.size() == *known || fields_.size() + 1 == *known;
    if (hasItsFields && text_.find('"') != std::string_view::npos && losesCharacters(text_, fields_)) {
        doubt(Doubt::LostCharacters, line);
    }
}

void FilePass::decodeAndSplit(std::string_view bytes) {
    // Plain ASCII stays where it lies.
    text_ = bytes;
    if (splitAsciiLine(bytes, fields_)) {
        return;
    }
    decoded_.clear();
    if (context_.encoding == Encoding::Cp932) {
        decodeCp932(decoded_, bytes);
    } else {
        appendValidUtf8(decoded_, bytes);
    }
    text_ = decoded_;
    splitLine(text_, ",", fields_);
}

void FilePass::passOver(PassedKind kind) {
    PassedLines line{kind, {}};
    const std::string_view code = fields()[0];
    if (isPrintable(code) && reader_.passedOver.size() < kMostKinds) {
        line.code = code;
    }
    countPassedOver(line, 1);
}

void FilePass::countPassedOver(const PassedLines& kind, std::size_t lines) {
    reader_.passedOver[passedLinesKey(kind)] += static_cast<std::int64_t>(lines);
}

} // namespace fenmark::sima
