// The kinds of lines that the reader passes over in silence, with their texts.
#include "sima/records/passed_over.h"

#include "values/code_table.h"

#include <array>
#include <cstddef>

namespace fenmark::sima {

namespace {

struct PassedText {
    PassedKind kind;
    std::string_view japanese;
    std::string_view english; // also in the keys of the counts
};

constexpr std::array<PassedText, static_cast<std::size_t>(kLastPassedKind) + 1> kPassedTexts = {{
    {PassedKind::Comment, "コメント行", "comment"},
    {PassedKind::OutsideAnySection, "区分の外の行", "outside any section"},
    {PassedKind::UnknownCode, "不明なレコード", "unknown code at top level"},
    {PassedKind::PointWithoutNumber, "番号のない点", "point without a number"},
    {PassedKind::InLotWithMissingPoint, "点が欠けた画地の行", "in a lot with a missing point"},
    {PassedKind::InTriangleData, "三角形データの中の行", "inside triangle data"},
    {PassedKind::NotUsedInLot, "画地で使用しないレコード", "not used in a lot"},
    {PassedKind::BeforeFirstPointOfRoute, "路線の最初の点より前の行", "before the first point of a route"},
    {PassedKind::InElementData, "要素データの中の行", "inside element data"},
    {PassedKind::NotUsedInRoute, "路線で使用しないレコード", "not used in a route"},
    {PassedKind::BeforeFirstCrossSection, "最初の横断より前の行", "before the first cross section"},
    {PassedKind::ResultWithoutEnd, "終了レコードのない区分の成果", "result of a section without its end record"},
}};

static_assert(inCodeOrder(kPassedTexts, &PassedText::kind) && inBothLanguages(kPassedTexts),
              "every kind has its texts, in the order of the enumeration");

constexpr std::string_view kBeforeCode = ": ";

} // namespace

std::string_view passedKindText(PassedKind kind, Language language) {
    const PassedText& text = kPassedTexts[static_cast<std::size_t>(kind)];
    return language == Language::Japanese ? text.japanese : text.english;
}

std::string passedLinesKey(const PassedLines& lines) {
    std::string key(passedKindText(lines.kind, Language::English));
    if (!lines.code.empty()) {
        key.append(kBeforeCode).append(lines.code);
    }
    return key;
}

std::optional<PassedLines> passedLinesOf(std::string_view key) {
    for (const PassedText& text : kPassedTexts) {
        if (!key.starts_with(text.english)) {
            continue;
        }
        const std::string_view rest = key.substr(text.english.size());
        if (rest.empty()) {
            return PassedLines{text.kind, {}};
        }
        if (rest.starts_with(kBeforeCode)) {
            return PassedLines{text.kind, rest.substr(kBeforeCode.size())};
        }
    }
    return std::nullopt;
}

} // namespace fenmark::sima
