// The kinds of records that are taken without an error, but otherwise than somebody who reads the file would expect.
#pragma once

#include "values/language.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace fenmark::sima {

enum class Doubt : std::uint8_t {
    UnreadableCharacter,
    LostCharacters,
    EmptyCoordinate,
    NumberInPart,
    NumberTooLarge,
    PointNumberAgain,
    LotWithoutPoint,
    RouteWithoutLine,
    CurveUnused,
    RouteNumberAgain,
    EmptyPlace,
    EmptyHeight,
    HeightsMixed,
};
inline constexpr Doubt kLastDoubt = Doubt::HeightsMixed;
inline constexpr std::size_t kDoubts = static_cast<std::size_t>(kLastDoubt) + 1;

// The doubt as programs read it: "empty-coordinate".
[[nodiscard]] std::string_view doubtName(Doubt doubt);
// The doubt of that name; nothing if there is none.
[[nodiscard]] std::optional<Doubt> doubtNamed(std::string_view name);
// What became of such a record.
[[nodiscard]] std::string_view doubtText(Doubt doubt, Language language);

// The doubtful records of a file, by kind.
struct DoubtfulRecords {
    std::int64_t count = 0;
    std::int32_t firstLine = 0;
};

class Doubts {
  public:
    void add(Doubt doubt, std::int32_t line) {
        DoubtfulRecords& records = records_[static_cast<std::size_t>(doubt)];
        if (records.count++ == 0) {
            records.firstLine = line;
        }
    }
    [[nodiscard]] const DoubtfulRecords& of(Doubt doubt) const { return records_[static_cast<std::size_t>(doubt)]; }

  private:
    std::array<DoubtfulRecords, kDoubts> records_{};
};

} // namespace fenmark::sima
