// Why there can be no plan, no pages or no list of stakes: a code with its figures. The programs word it in the user's
// language, as they word notes.
#pragma once

#include "values/language.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace fenmark::exchange {

enum class ObstacleCode : std::uint8_t {
    // No room: another scale or larger paper may mend that
    PlanDoesNotFit,   // on paper at scale
    SectionsDoNotFit, // on paper at scale
    SheetsTooLarge,   // together larger than count MB
    TooManySheets,    // more than count
    // Others
    TooManyPages,      // more than count
    NothingToList,     // the drawing has nothing that the tables show
    NoAlignment,       // the drawing has none
    NoElementsToDraw,  // the alignment has none
    BeyondReach,       // the alignment has coordinates or stations that no survey has
    NoElementsToStake, // the alignment has none
    NoLongitudinal,    // the alignment has no longitudinal results
    NoCrossSections,   // the alignment has none
    TooManyStakes,     // more than count
    StationOutside,    // station lies outside the alignment, which runs from `from` to `to`
};
inline constexpr ObstacleCode kLastObstacleCode = ObstacleCode::StationOutside;

struct Obstacle {
    ObstacleCode code = ObstacleCode::NothingToList;
    std::size_t count = 0;
    std::string paper = {}; // "A3"
    int scale = 0;          // the N of 1:N
    double station = 0.0;   // stations, metres
    double from = 0.0;
    double to = 0.0;

    friend bool operator==(const Obstacle&, const Obstacle&) = default;
};

// The code as programs read it: "plan-does-not-fit".
[[nodiscard]] std::string_view obstacleName(ObstacleCode code);
// Whether another scale or larger paper may mend it.
[[nodiscard]] bool isWantOfRoom(const Obstacle& obstacle);
// One line, without a full stop.
[[nodiscard]] std::string wording(const Obstacle& obstacle, Language language);

} // namespace fenmark::exchange
