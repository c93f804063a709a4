// The texts of the notes on a drawing or a package that was opened.
#include "drawing/geopackage/store_notes.h"

#include "values/code_table.h"
#include "values/filled_text.h"

#include <array>

namespace fenmark::drawing {

namespace {

struct StoreNoteText {
    StoreNoteCode code;
    std::string_view name;
    std::string_view japanese;
    std::string_view english;
};

constexpr std::array<StoreNoteText, static_cast<std::size_t>(kLastStoreNoteCode) + 1> kTexts = {{
    {StoreNoteCode::OtherGeometry, "other-geometry",
     "レイヤ「{table}」の{name} {count}個(最初のfid {first})は図面の図形ではないため、読み込んでいません",
     "{count} {count:feature|features} of the layer '{table}' (first fid {first}) left out: a {name} is no object of a "
     "drawing"},
    {StoreNoteCode::NoPlace, "feature-without-place",
     "レイヤ「{table}」の位置のない地物{count}個(最初のfid {first})は読み込んでいません",
     "{count} {count:feature|features} of the layer '{table}' (first fid {first}) left out: without a place"},
    {StoreNoteCode::AlignmentElementless, "alignment-without-elements",
     "レイヤ「{table}」の線形要素のない線{count}本(最初のfid {first})は読み込んでいません",
     "{count} {count:line|lines} of the layer '{table}' (first fid {first}) left out: without alignment elements"},
    {StoreNoteCode::ElementsOutOfOrder, "elements-out-of-order",
     "線形{count}本(最初のfid {first})の要素が順に並んでいません。削除または変更された要素があります",
     "{count} {count:alignment|alignments} (first fid {first}) whose elements are not numbered one by one: some were "
     "removed or changed"},
    {StoreNoteCode::NoNumber, "no-number",
     "レイヤ「{table}」の地物{count}個(最初のfid {first})の列「{name}」の値は使える数値ではないため、0としました",
     "{count} {count:feature|features} of the layer '{table}' (first fid {first}) whose '{name}' is no number that can "
     "be used, taken as 0"},
    {StoreNoteCode::LotsDiffer, "lots-differ",
     "レイヤ「{table}」と「polylines」で異なる地物が{count}個あります(最初のfid "
     "{first})。「polylines」の内容を使います。"
     "画地の変更は「polylines」で行ってください",
     "{count} {count:feature differs|features differ} between the layers '{table}' and 'polylines' (first fid "
     "{first}): "
     "the polylines are taken, so lots are to be changed there"},
    {StoreNoteCode::OtherSystem, "other-reference-system",
     "表「{table}」の地物{count}個(最初のfid "
     "{first})の図形は表と異なる座標系を示していますが、表の座標系の座標として読みました",
     "{count} {count:feature names|features name} another reference system than the table '{table}' (first fid "
     "{first}), "
     "taken as coordinates in the table's"},
    {StoreNoteCode::LinesDiffer, "lines-differ",
     "線形{count}本(最初のfid {first})の線が、その線形要素と異なります。線形要素の内容を使います",
     "{count} {count:alignment has|alignments have} a line (first fid {first}) that does not run along the elements: "
     "the "
     "elements are taken"},
    {StoreNoteCode::TakenIdentifier, "taken-identifier",
     "レイヤ「{table}」の地物{count}個(最初のfid {first})の識別子は他の図形と同じです。"
     "次の保存で新しい識別子が付きます",
     "{count} {count:feature|features} of the layer '{table}' (first fid {first}) had the identifier of another "
     "object; the next save gives a new one"},
    {StoreNoteCode::MissingColumn, "missing-column",
     "表「{table}」に列「{name}」がないため、空として読みました。その列が戻るまで図面を保存できません",
     "the table '{table}' has no column '{name}': it is taken as empty, and the drawing cannot be saved "
     "until the column is there again"},
    {StoreNoteCode::MissingTable, "missing-table", "表「{table}」がないため、その内容は保存されません",
     "the table '{table}' is missing: it is not written"},
    {StoreNoteCode::OtherDatum, "other-datum", "{name}の{count}系の座標を、そのまま使いました",
     "coordinates of zone {count} of {name}, taken as they stand"},
    {StoreNoteCode::NoPlainTable, "no-plain-table", "「{table}」は実体のある表ではないため、読み込んでいません",
     "'{table}' is no table of its own: left out"},
    {StoreNoteCode::NotListed, "not-listed",
     "表「{table}」は地物の表としてgpkg_contentsに登録されていないため、読み込んでいません",
     "the table '{table}' is not listed as features in gpkg_contents: left out"},
    {StoreNoteCode::NoGeometryColumn, "no-geometry-column",
     "表「{table}」には保存された図形の列がないため、読み込んでいません",
     "the table '{table}' has no column of geometry that is stored: left out"},
    {StoreNoteCode::FeatureNoPlace, "feature-without-place",
     "「{table}」の位置のない地物{count}個(最初のfid {first})は読み込んでいません",
     "{count} {count:feature|features} left out: without a place in '{table}' (first fid {first})"},
    {StoreNoteCode::FeatureDamaged, "damaged-geometry",
     "「{table}」の図形が壊れている地物{count}個(最初のfid {first})は読み込んでいません",
     "{count} {count:feature|features} left out: damaged geometry in '{table}' (first fid {first})"},
    {StoreNoteCode::FeatureGeometry, "other-geometry",
     "「{table}」の{name} {count}個(最初のfid {first})は読み込んでいません",
     "{count} {count:feature|features} left out: {name} in '{table}' (first fid {first})"},
    {StoreNoteCode::FeatureWithHoles, "polygon-with-holes",
     "「{table}」の穴のある面{count}個(最初のfid {first})は読み込んでいません",
     "{count} {count:feature|features} left out: polygons with holes in '{table}' (first fid {first})"},
    {StoreNoteCode::NumberOfFeature, "number-of-feature",
     "「{table}」の列「{name}」が0以上の整数でない地物{count}個(最初のfid {first})は、fidを番号としました",
     "{count} {count:feature|features} without a whole number in the column '{name}' of '{table}' (first fid {first}): "
     "the fid is taken"},
    {StoreNoteCode::NamesFrom, "names-from", "「{table}」: 名称は{names}、番号は{numbers}から取りました",
     "'{table}': names from {names}, numbers from {numbers}"},
}};

static_assert(inCodeOrder(kTexts, &StoreNoteText::code) && allNamed(kTexts) && inBothLanguages(kTexts),
              "every code has its texts, in the order of the enumeration");

// A column, or what takes its place.
std::string column(const std::string& name, Language language, std::string_view japanese, std::string_view english) {
    if (language == Language::Japanese) {
        return name.empty() ? std::string(japanese) : "列「" + name + "」";
    }
    return name.empty() ? std::string(english) : "'" + name + "'";
}

} // namespace

void count(std::vector<StoreNote>& notes, StoreNoteCode code, std::string_view table, std::string_view name,
           std::int64_t fid) {
    for (StoreNote& known : notes) {
        if (known.code == code && known.table == table && known.name == name) {
            ++known.count;
            return;
        }
    }
    notes.push_back({code, std::string(table), std::string(name), 1, fid});
}

std::string_view noteName(StoreNoteCode code) {
    return kTexts[static_cast<std::size_t>(code)].name;
}

std::string noteText(const StoreNote& note, Language language) {
    const StoreNoteText& texts = kTexts[static_cast<std::size_t>(note.code)];
    return filledText(language == Language::Japanese ? texts.japanese : texts.english,
                      [&](std::string_view name) -> std::string {
                          if (name == "table") {
                              return note.table;
                          }
                          if (name == "name") {
                              return note.name;
                          }
                          if (name == "first") {
                              return std::to_string(note.firstId);
                          }
                          if (name == "names") {
                              return column(note.name, language, "番号", "the numbers");
                          }
                          if (name == "numbers") {
                              return column(note.numbers, language, "地物の番号", "the features");
                          }
                          return std::to_string(note.count);
                      });
}

} // namespace fenmark::drawing
