// The texts of what becomes of doubtful records.
#include "sima/records/doubts.h"

#include "values/code_table.h"

#include <algorithm>

namespace fenmark::sima {

namespace {

struct DoubtText {
    Doubt doubt;
    std::string_view name;
    std::string_view japanese;
    std::string_view english;
};

constexpr std::array<DoubtText, kDoubts> kDoubtTexts = {{
    {Doubt::UnreadableCharacter, "unreadable-character", "文字コードにない文字をU+FFFDで読みました",
     "a character that the encoding does not have, read as U+FFFD"},
    {Doubt::LostCharacters, "lost-characters", "項目を囲んでいない引用符(\")のため、項目の文字が欠けるか重なります",
     "a quote (\") that does not enclose its field, which loses characters or has them twice"},
    {Doubt::EmptyCoordinate, "empty-coordinate", "XまたはYが空欄のため、0で読みました", "an empty X or Y, read as 0"},
    {Doubt::NumberInPart, "number-in-part",
     "数値を、数値でない文字の前までで読みました。その文字が先頭にあれば0としました",
     "a number read up to a character that does not belong to one, and as 0 where that comes first"},
    {Doubt::NumberTooLarge, "number-too-large", "大きすぎる番号を2147483647で読みました",
     "a number that is too large, read as 2147483647"},
    {Doubt::PointNumberAgain, "point-number-again",
     "前の座標区分に、同じ番号で座標の異なる点があります。画地と路線は前の点を使います",
     "a number that another point of an earlier section has; lots and routes take the earlier point"},
    {Doubt::LotWithoutPoint, "lot-without-point", "点のない画地は、件数に数えますが作成しません",
     "a lot without a point, which is counted and not made"},
    {Doubt::RouteWithoutLine, "route-without-line",
     "点が2点に満たない路線は線になりません。要素のない線形、原点の1点となるか、何も作成しません",
     "a route of fewer than two points, which gives no line: an alignment without elements, a vertex at 0, 0, or "
     "nothing"},
    {Doubt::CurveUnused, "curve-unused",
     "次の点の前に別の曲線がある、次の点がない、または始点と終点が同じ曲線は使いません",
     "a curve that another one replaces, that no point follows, or that ends where it begins; it is not used"},
    {Doubt::RouteNumberAgain, "route-number-again",
     "成果の路線番号を持つ路線が複数あり、成果の路線名と異なる最初の路線の成果としました",
     "results of a number that several routes have, taken for those of the first one, which has another name"},
    {Doubt::EmptyPlace, "empty-place", "追加距離または離れが空欄のため、0で読みました",
     "an empty station or offset, read as 0"},
    {Doubt::EmptyHeight, "empty-height", "地盤高が空欄の成果を標高0としました",
     "a result without a height, taken at height 0"},
    {Doubt::HeightsMixed, "heights-mixed", "左側の同じ離れに4点以上あるため、一部の点が他の点の標高になりました",
     "more than three results at one offset on the left, of which some get the height of another"},
}};

static_assert(inCodeOrder(kDoubtTexts, &DoubtText::doubt) && inBothLanguages(kDoubtTexts) && allNamed(kDoubtTexts),
              "every doubt has its name and texts, in the order of the enumeration");

const DoubtText& entryOf(Doubt doubt) {
    return kDoubtTexts[static_cast<std::size_t>(doubt)];
}

} // namespace

std::string_view doubtName(Doubt doubt) {
    return entryOf(doubt).name;
}

std::optional<Doubt> doubtNamed(std::string_view name) {
    const auto found =
        std::find_if(kDoubtTexts.begin(), kDoubtTexts.end(), [&](const DoubtText& text) { return text.name == name; });
    return found != kDoubtTexts.end() ? std::optional(found->doubt) : std::nullopt;
}

std::string_view doubtText(Doubt doubt, Language language) {
    return language == Language::Japanese ? entryOf(doubt).japanese : entryOf(doubt).english;
}

} // namespace fenmark::sima
