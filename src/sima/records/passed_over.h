// The kinds of lines that the reader passes over in silence, with their texts.
#pragma once

#include "values/language.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace fenmark::sima {

enum class PassedKind : std::uint8_t {
    Comment,
    OutsideAnySection,
    UnknownCode,
    PointWithoutNumber,
    InLotWithMissingPoint,
    InTriangleData,
    NotUsedInLot,
    BeforeFirstPointOfRoute,
    InElementData,
    NotUsedInRoute,
    BeforeFirstCrossSection,
    ResultWithoutEnd,
};
inline constexpr PassedKind kLastPassedKind = PassedKind::ResultWithoutEnd;

[[nodiscard]] std::string_view passedKindText(PassedKind kind, Language language);

// Lines of one kind; the code is empty where lines of many codes are counted together.
struct PassedLines {
    PassedKind kind = PassedKind::UnknownCode;
    std::string_view code; // of the record: "X01"
};

// "unknown code at top level: X01", by which the reader counts.
[[nodiscard]] std::string passedLinesKey(const PassedLines& lines);
// The lines that a key stands for; nothing for any other text. The code holds as long as the key.
[[nodiscard]] std::optional<PassedLines> passedLinesOf(std::string_view key);

} // namespace fenmark::sima
