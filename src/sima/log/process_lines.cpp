// The process lines of the log.
#include "sima/log/process_lines.h"

#include "sima/text/cp932.h"
#include "values/code_table.h"

#include <array>

namespace fenmark::sima {

namespace {

// A text with places for a number and a name: head, number, middle, name, tail.
struct Pattern {
    LineKind kind;
    int digits; // of the number at least; 0 for a text without a number
    bool hasName;
    std::string_view head;
    std::string_view middle;
    std::string_view tail;
};

constexpr int kLineDigits = 5;

// A text that ends in a line feed leaves a blank line behind it in the file.
constexpr std::array kPatterns{
    Pattern{LineKind::CoordinateBegin, kLineDigits, false, "", " A00 座標データの読み込み開始", ""},
    Pattern{LineKind::LotBegin, kLineDigits, false, "", " D00 画地データの読み込み開始", ""},
    Pattern{LineKind::LotEnd, kLineDigits, false, "", " D99 画地データの読み込み終了", ""},
    Pattern{LineKind::LotPoints, 1, false, "          ", "点の構成点\n", ""},
    Pattern{LineKind::LotPointsWithTriangles, 1, false, "          ", "点の構成点", ""},
    Pattern{LineKind::LotTriangles, 0, false, "          三斜データは読み込みません\n", "", ""},
    Pattern{LineKind::LotFailed, 0, false, "ERROR     画地を作成できませんでした\n", "", ""},
    Pattern{LineKind::RouteBegin, kLineDigits, false, "", " F00 路線データの読み込み開始", ""},
    Pattern{LineKind::RouteEnd, kLineDigits, false, "", " F99 路線データの読み込み終了", ""},
    Pattern{LineKind::RouteAlignment, 0, true, "          平面線形”", "", "”"},
    Pattern{LineKind::RouteElements, 1, false, "          ", "個の線形要素\n", ""},
    Pattern{LineKind::RoutePoints, 1, false, "          ", "点の構成点\n", ""},
    Pattern{LineKind::RouteAlignmentFailed, 0, false, "ERROR     平面線形を作成できませんでした\n", "", ""},
    Pattern{LineKind::RoutePolylineFailed, 0, false, "ERROR     ポリラインを作成できませんでした\n", "", ""},
    // The line says G01 although the record is G00, on purpose.
    Pattern{LineKind::Version, kLineDigits, true, "", " G01 SIMAのバージョン： ", "\n"},
    Pattern{LineKind::LongitudinalBegin, kLineDigits, false, "", " H00 縦断成果データの読み込み開始", ""},
    Pattern{LineKind::LongitudinalAlignment, 0, true, "          中心線”", "", "”の縦断成果データ"},
    Pattern{LineKind::NoAlignment, 0, false, "ERROR     中心線が指定されませんでした", "", ""},
    Pattern{LineKind::LongitudinalEnd, kLineDigits, false, "", " H99 縦断成果データの読み込み終了", ""},
    Pattern{LineKind::ResultPoints, 1, false, "          ", "点のポイント\n", ""},
    Pattern{LineKind::ResultPointsFailed, 1, false, "          ", "点のポイント", ""},
    Pattern{LineKind::LongitudinalFailed, 0, false, "ERROR     縦断成果をポイントに変換できませんでした\n", "", ""},
    Pattern{LineKind::CrossSectionBegin, kLineDigits, false, "", " I00 横断成果データの読み込み開始", ""},
    Pattern{LineKind::CrossSectionAlignment, 0, true, "          中心線”", "", "”の横断成果データ"},
    Pattern{LineKind::CrossSectionItem, kLineDigits, true, "", " I01 断面 ", " データを処理"},
    Pattern{LineKind::CrossSectionPoints, 1, false, "          ", "個のポイント", ""},
    Pattern{LineKind::CrossSectionEnd, kLineDigits, false, "", " I99 横断成果データの読み込み終了", ""},
    Pattern{LineKind::CrossSectionFailed, 0, false, "ERROR     横断成果をポイントに変換できませんでした\n", "", ""},
    Pattern{LineKind::Finished, kLineDigits, false, "", "     読み込み終了", ""},
};

static_assert(inCodeOrder(kPatterns, &Pattern::kind), "a pattern stands at the place of its kind");

// As printf's "%.5d" and "%d".
void appendNumber(std::string& out, std::int32_t value, int digits) {
    std::array<char, 16> buffer;
    char* const end = buffer.data() + buffer.size();
    char* start = end;
    std::uint32_t rest = value < 0 ? 0U - static_cast<std::uint32_t>(value) : static_cast<std::uint32_t>(value);
    for (; rest != 0 || digits > 0; --digits, rest /= 10) {
        *--start = static_cast<char>('0' + rest % 10);
    }
    if (value < 0) {
        *--start = '-';
    }
    out.append(start, end);
}

// The pieces of a pattern as they stand in the file: the tail with the line's end, or the middle with all that if there
// is no name between them.
struct EncodedPattern {
    std::string head;
    std::string middle;
    std::string tail;
};

std::array<EncodedPattern, kPatterns.size()> encodePatterns() {
    std::array<EncodedPattern, kPatterns.size()> encoded;
    for (std::size_t i = 0; i < kPatterns.size(); ++i) {
        encodeCp932Lines(encoded[i].head, kPatterns[i].head);
        encodeCp932Lines(encoded[i].middle, kPatterns[i].middle);
        std::string& end = kPatterns[i].hasName ? encoded[i].tail : encoded[i].middle;
        encodeCp932Lines(end, kPatterns[i].tail);
        end += "\r\n";
    }
    return encoded;
}

} // namespace

std::string ProcessLines::operator[](std::size_t index) const {
    const Entry& entry = entries_[index];
    const Pattern& pattern = kPatterns[static_cast<std::size_t>(entry.kind)];
    std::string text(pattern.head);
    if (pattern.digits > 0) {
        appendNumber(text, entry.number, pattern.digits);
    }
    text += pattern.middle;
    if (pattern.hasName) {
        text += names_[entry.name];
    }
    text += pattern.tail;
    return text;
}

void ProcessLines::append(LineKind kind, std::int32_t number, std::string_view name) {
    Entry entry;
    entry.kind = kind;
    entry.number = number;
    if (kPatterns[static_cast<std::size_t>(kind)].hasName) {
        entry.name = static_cast<std::uint32_t>(names_.size());
        names_.append(name);
    }
    entries_.push_back(entry);
}

void ProcessLines::clear() {
    entries_.clear();
    names_.clear();
}

void ProcessLines::encodeLine(std::string& buffer, std::size_t index) const {
    static const auto encoded = encodePatterns();
    const Entry& entry = entries_[index];
    const Pattern& pattern = kPatterns[static_cast<std::size_t>(entry.kind)];
    const EncodedPattern& bytes = encoded[static_cast<std::size_t>(entry.kind)];
    buffer += bytes.head;
    if (pattern.digits > 0) {
        appendNumber(buffer, entry.number, pattern.digits);
    }
    buffer += bytes.middle;
    if (pattern.hasName) {
        encodeCp932Lines(buffer, names_[entry.name]);
        buffer += bytes.tail;
    }
}

} // namespace fenmark::sima
