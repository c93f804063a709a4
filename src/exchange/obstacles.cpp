// The texts of the obstacles. A figure stands in braces, under the name of its member.
#include "exchange/obstacles.h"

#include "exchange/text.h"
#include "values/code_table.h"
#include "values/filled_text.h"

#include <array>

namespace fenmark::exchange {

namespace {

struct ObstacleText {
    ObstacleCode code;
    std::string_view name;
    std::string_view japanese;
    std::string_view english;
};

constexpr std::array<ObstacleText, static_cast<std::size_t>(kLastObstacleCode) + 1> kObstacleTexts = {{
    {ObstacleCode::PlanDoesNotFit, "plan-does-not-fit",
     "1:{scale}では図面が{paper}用紙に入りません。縮尺を小さくするか、用紙を大きくするか、線形に沿った図面(--along)"
     "にしてください",
     "the drawing does not fit on {paper} at 1:{scale}; choose a smaller scale or larger paper, or sheets along an "
     "alignment (--along)"},
    {ObstacleCode::SectionsDoNotFit, "sections-do-not-fit",
     "1:{scale}では横断図が{paper}用紙に入りません。縮尺を小さくするか、用紙を大きくしてください",
     "the cross-sections do not fit on {paper} at 1:{scale}; choose a smaller scale or larger paper"},
    {ObstacleCode::SheetsTooLarge, "sheets-too-large",
     "図面の枚数と図形が多く、合計{count} MBを超えます。縮尺を小さくしてください",
     "too many sheets with too much on them, together more than {count} MB; choose a smaller scale"},
    {ObstacleCode::TooManySheets, "too-many-sheets", "{count}枚を超えます。縮尺を小さくしてください",
     "more than {count} sheets; choose a smaller scale"},
    {ObstacleCode::TooManyPages, "too-many-pages", "{count}ページを超えます", "more than {count} pages"},
    {ObstacleCode::NothingToList, "nothing-to-list", "図面に一覧にする内容がありません",
     "the drawing has nothing to list"},
    {ObstacleCode::NoAlignment, "no-alignment", "図面に線形がありません", "there is no alignment"},
    {ObstacleCode::NoElementsToDraw, "no-elements-to-draw", "線形に図示できる要素がありません",
     "the alignment has no elements to draw"},
    {ObstacleCode::BeyondReach, "beyond-reach", "線形の座標または追加距離が大きすぎるため、図示できません",
     "the alignment has coordinates or stations that no survey has, so it cannot be drawn"},
    {ObstacleCode::NoElementsToStake, "no-elements-to-stake", "線形に測設できる要素がありません",
     "the alignment has no elements that can be staked out"},
    {ObstacleCode::NoLongitudinal, "no-longitudinal", "線形に縦断図にする縦断成果がありません",
     "the alignment has no longitudinal results to draw a section of"},
    {ObstacleCode::NoCrossSections, "no-cross-sections", "線形に横断がありません",
     "the alignment has no cross-sections"},
    {ObstacleCode::TooManyStakes, "too-many-stakes", "測設点が{count}点を超えます。間隔を大きくしてください",
     "more than {count} stakes; choose a larger distance"},
    {ObstacleCode::StationOutside, "station-outside", "測点 {station} は線形の範囲外です: {from} から {to} まで",
     "station {station} lies outside the alignment: it runs from {from} to {to}"},
}};

static_assert(inCodeOrder(kObstacleTexts, &ObstacleText::code) && allNamed(kObstacleTexts) &&
                  inBothLanguages(kObstacleTexts),
              "every code has its texts, in the order of the enumeration");

std::string obstacleFigure(std::string_view name, const Obstacle& obstacle) {
    if (name == "paper") {
        return obstacle.paper;
    }
    if (name == "scale") {
        return std::to_string(obstacle.scale);
    }
    if (name == "station") {
        return fixedReal(obstacle.station, 3);
    }
    if (name == "from") {
        return fixedReal(obstacle.from, 3);
    }
    if (name == "to") {
        return fixedReal(obstacle.to, 3);
    }
    return std::to_string(obstacle.count);
}

} // namespace

std::string_view obstacleName(ObstacleCode code) {
    return kObstacleTexts[static_cast<std::size_t>(code)].name;
}

bool isWantOfRoom(const Obstacle& obstacle) {
    return obstacle.code <= ObstacleCode::TooManySheets;
}

std::string wording(const Obstacle& obstacle, Language language) {
    const ObstacleText& texts = kObstacleTexts[static_cast<std::size_t>(obstacle.code)];
    return filledText(language == Language::Japanese ? texts.japanese : texts.english,
                      [&](std::string_view name) { return obstacleFigure(name, obstacle); });
}

} // namespace fenmark::exchange
