// The texts of the notes. A figure of a note stands in braces, under the name of its member, and a word that goes with it
// as "{count:point|points}".
#include "exchange/notes.h"

#include "exchange/text.h"
#include "values/code_table.h"
#include "values/filled_text.h"

#include <array>

namespace fenmark::exchange {

namespace {

struct NoteText {
    NoteCode code;
    std::string_view name;
    std::string_view japanese;
    std::string_view english;
};

constexpr std::array<NoteText, kNoteCodes> kNoteTexts = {{
    {NoteCode::NothingSelected, "nothing-selected", "指定に当てはまる図形が図面にないため、ファイルに図形はありません",
     "the file holds no object: none of the drawing is what was asked for"},
    {NoteCode::NoPlace, "no-place", "座標が大きすぎる点{count}点、線{polylines}本、線形{alignments}本: {became}",
     "coordinates beyond all bounds; {became}: {count} {count:point|points}, {polylines} "
     "{polylines:polyline|polylines}, {alignments} {alignments:alignment|alignments}"},
    {NoteCode::NoHeight, "no-height", "標高が大きすぎる点{count}点: 他の形式のファイルでは標高を0または空欄とします",
     "heights beyond all bounds; in other files 0 or empty: {count} {count:point|points}"},
    {NoteCode::WithoutLine, "without-line",
     "点が2点に満たない線{polylines}本と、要素のない線形{alignments}本は出力していません",
     "left out for want of a line: {polylines} {polylines:polyline|polylines} of fewer than two points, {alignments} "
     "{alignments:alignment|alignments} without elements"},
    {NoteCode::RenamedObjects, "renamed-objects",
     "このファイルでは同じ名称を2度使えないため、{count}個の名称の後に「 (2)」のような番号を付けました",
     "names of the file must differ: {count} got a number behind {count:it|them}, as ' (2)'"},
    {NoteCode::BeyondProjection, "beyond-projection", "座標系の原点から遠く、経緯度にできない図形{count}個: {became}",
     "too far from the zone's origin for a longitude; {became}: {count} {count:object|objects}"},
    {NoteCode::UnplacedResults, "unplaced-results", "図面のどの線形にも属さない縦断・横断成果{count}点: {became}",
     "longitudinal and cross-section results that lie on no alignment of the drawing; {became}: {count}"},
    {NoteCode::PointsAlone, "points-alone",
     "CSVファイルは点だけを持ちます。線{polylines}本と線形{alignments}本は出力していません",
     "a CSV file holds points alone; left out: {polylines} {polylines:polyline|polylines}, {alignments} "
     "{alignments:alignment|alignments}"},
    {NoteCode::AlignmentsAlone, "alignments-alone",
     "J-LandXMLファイルは線形と線形上のものだけを持ちます。点{count}点と線{polylines}本は出力していません",
     "a J-LandXML file holds alignments and what lies on them; left out: {count} {count:point|points}, {polylines} "
     "{polylines:polyline|polylines}"},
    {NoteCode::NoZone, "no-zone",
     "図面に座標系の設定がないため、平面直角座標系の系番号を出力していません。--zone 1..19 を付けて読み込んでください",
     "the drawing has no zone, so the file does not tell its plane rectangular system; import with --zone 1..19"},
    {NoteCode::StationEquations, "station-equations",
     "縦断成果の測点名と追加距離のずれから、破鎖（ブレーキ）{count}箇所を出力しています",
     "station equations, where names and additional distances of longitudinal results part: {count}"},
    {NoteCode::CurveWithoutIp, "curve-without-ip", "半円以上曲がる曲線{count}本にはIPがありません",
     "curves that turn by half a circle or more have no IP: {count}"},
    {NoteCode::ClothoidWithoutPi, "clothoid-without-pi",
     "半円以上曲がるクロソイド{count}本にはPIがないため、始点の接線上の点を出力しています",
     "clothoids that turn by half a circle or more have no PI; a point on the first tangent stands there: {count}"},
    {NoteCode::IntermediateCut, "intermediate-cut", "中間点が多すぎるため、線形{count}本の中間点は出力していません",
     "too many intermediate points: those of {count} {count:alignment|alignments} left out"},
    {NoteCode::LeadingClothoid, "leading-clothoid",
     "クロソイドから始まる線形{count}本は、どの読み込みでも線形にならないため出力していません",
     "{count} {count:alignment that begins|alignments that begin} with a clothoid left out: no import takes "
     "{count:it|them}"},
    {NoteCode::JoinedStraights, "joined-straights",
     "線形{count}本には、方向の差が1度以下で、読み込むと1本につながる直線があります",
     "{count} {count:alignment|alignments} with straights that an import joins, since they differ by 1 degree at most"},
    {NoteCode::AddedPoints, "added-points", "画地や路線の頂点に点がないため、{count}点を追加しました",
     "{count} {count:point|points} added where lots or routes have none"},
    {NoteCode::RenumberedPoints, "renumbered-points", "点番号が他の点と同じため、{count}点に新しい番号を付けました",
     "{count} {count:point|points} with a new number, since another has {count:its old one|theirs}"},
    {NoteCode::WithoutRow, "without-row", "属性のない図形{count}個を点、画地または連続線として出力しました",
     "{count} {count:object|objects} without a row written as {count:a point, lot or continuous line|points, lots or "
     "continuous lines}"},
    {NoteCode::ResultsAsPoints, "results-as-points", "線形に属さない成果{count}点を座標点として出力しました",
     "{count} {count:result that lies|results that lie} on no alignment written as {count:a coordinate "
     "point|coordinate points}"},
    {NoteCode::AddedCentres, "added-centres",
     "中心線上に点のない横断{count}断面には、読み込み時に点が1点ずつ加わります",
     "{count} {count:cross-section|cross-sections} without a point on the centre line: an import adds one"},
    {NoteCode::ReplacedCharacters, "replaced-characters", "コードページ932にない文字{count}字を「?」で出力しました",
     "{count} {count:character|characters} that code page 932 does not have written as \"?\""},
    {NoteCode::ControlCharacters, "control-characters", "名称の中の制御文字{count}字を空白で出力しました",
     "{count} control {count:character|characters} in names written as {count:a blank|blanks}"},
    {NoteCode::RenumberedResults, "renumbered-results", "複数の線形の成果が同じ番号のため、一部に別の番号を付けました",
     "results of several alignments have one number; some got another"},
    {NoteCode::BeyondRelease, "beyond-release",
     "名称の中の、2018より前のDXFにない文字{count}字をU+FFFDで出力しました。--dxf-version 2018 を付けると出力できます",
     "{count} {count:character|characters} in names that no DXF release before 2018 has written as U+FFFD; "
     "--dxf-version 2018 has {count:it|them}"},
    {NoteCode::LotWithoutArea, "lot-without-area", "座標が大きすぎる画地{count}筆は出力していません",
     "lots with coordinates that no survey has; left out: {count}"},
    {NoteCode::LotWithoutRing, "lot-without-ring",
     "閉じていない画地、または点が3点に満たない画地{count}筆の面積は出力していません",
     "lots that are not closed or have fewer than three points; without an area table: {count}"},
    {NoteCode::NothingReported, "nothing-reported", "指定の表に載るものが図面にないため、ファイルに表はありません",
     "the file holds no table: the drawing has nothing for those that are asked for"},
    {NoteCode::AtOrigin, "at-origin", "原点(0, 0)にある{count}個の図形は図示していません",
     "{count} {count:object|objects} at the origin (0, 0), far from all others, {count:is|are} not drawn"},
    {NoteCode::OutOfReach, "out-of-reach", "座標が大きすぎる{count}個の図形は図示していません",
     "{count} {count:object|objects} with coordinates that no survey has {count:is|are} not drawn"},
    {NoteCode::SmallLines, "small-lines", "線が多いため、紙面で重なる小さい線{count}本は図示していません",
     "many lines: {count} small {count:one that meets|ones that meet} others on the paper {count:is|are} not drawn"},
    {NoteCode::DotsForMany, "dots-for-many", "点が多いため({count}点)、紙面で重なる点は1点で図示しています",
     "many points ({count}): those that meet on the paper are drawn as one dot"},
    {NoteCode::NamesOfMany, "names-of-many", "点が多いため({count}点)、点名は省略しています",
     "many points ({count}): their names are left out"},
    {NoteCode::NoRoomForNames, "no-room-for-names", "余白がないため、{count}点の点名は省略しています",
     "no room for the names of {count} {count:point|points}"},
    {NoteCode::NoRoomForLotNames, "no-room-for-lot-names", "余白がないため、{count}筆の画地名は省略しています",
     "no room for the names of {count} {count:lot|lots}"},
    {NoteCode::NoRoomAlongAlignments, "no-room-along-alignments",
     "余白がないため、線形の名称、要素の端点名、測点または曲線の値{count}件は省略しています",
     "no room for {count} {count:text|texts} of alignments: names, element ends, stations, values of curves"},
    {NoteCode::NoRoomForFigures, "no-room-for-figures", "余白がないため、{count}点の数値は省略しています",
     "no room for the figures of {count} {count:point|points}"},
    {NoteCode::StationsEvery, "stations-every", "測点は{metres} mごとに図示しています",
     "stations are drawn every {metres} m"},
    {NoteCode::StationsCut, "stations-cut", "測点が多いため、{count}点までを図示しています",
     "many stations: the first {count} {count:is|are} drawn"},
    {NoteCode::LettersWithoutFont, "letters-without-font",
     "フォントにない文字が{count}種あり({letters})、四角形で図示しています。日本語フォントをインストールしてください",
     "no font has {count} of the letters ({letters}), boxes are drawn for them; install a Japanese font"},
    {NoteCode::NoStakeWanted, "no-stake-wanted", "測設点がありません: 間隔も測点も指定されていません",
     "no stake: none was asked for"},
    {NoteCode::NoStakeInRange, "no-stake-in-range",
     "測設点がありません: {from}から{to}までに{metres} mの倍数の測点はありません",
     "no stake: no multiple of {metres} m lies from {from} to {to}"},
}};

struct FateText {
    Fate fate;
    std::string_view japanese;
    std::string_view english;
};

constexpr std::array<FateText, static_cast<std::size_t>(kLastFate) + 1> kFateTexts = {{
    {Fate::LeftOut, "出力していません", "left out"},
    {Fate::WithoutGeometry, "図形なしで出力しました", "written without geometry"},
    {Fate::LeftEmpty, "数値でない値を空欄としました", "numbers that are none left empty"},
    {Fate::PointsOnly, "点としてだけ出力しました", "written as points alone"},
    {Fate::KeptUnseen, "図面には残りますが、他のプログラムでは表示できません",
     "kept in the drawing, but no other program can show them"},
}};

static_assert(inCodeOrder(kNoteTexts, &NoteText::code) && allNamed(kNoteTexts) && inBothLanguages(kNoteTexts),
              "every code has its texts, in the order of the enumeration");
static_assert(inCodeOrder(kFateTexts, &FateText::fate) && inBothLanguages(kFateTexts),
              "every fate has its texts, in the order of the enumeration");

std::string figure(std::string_view name, const Note& note, Language language) {
    if (name == "polylines") {
        return std::to_string(note.polylines);
    }
    if (name == "alignments") {
        return std::to_string(note.alignments);
    }
    if (name == "became") {
        const FateText& text = kFateTexts[static_cast<std::size_t>(note.became)];
        return std::string(language == Language::Japanese ? text.japanese : text.english);
    }
    if (name == "metres") {
        return shortReal(note.metres);
    }
    if (name == "from") {
        return fixedReal(note.from, 3);
    }
    if (name == "to") {
        return fixedReal(note.to, 3);
    }
    if (name == "letters") {
        return note.letters;
    }
    return std::to_string(note.count);
}

} // namespace

std::string_view noteName(NoteCode code) {
    return kNoteTexts[static_cast<std::size_t>(code)].name;
}

std::string wording(const Note& note, Language language) {
    const NoteText& texts = kNoteTexts[static_cast<std::size_t>(note.code)];
    return filledText(language == Language::Japanese ? texts.japanese : texts.english,
                      [&](std::string_view name) { return figure(name, note, language); });
}

} // namespace fenmark::exchange
