// The words of the notes on an opened drawing or package, and of what can fail, in both languages.
#include "drawing/geopackage/drawing_store.h"
#include "drawing/geopackage/store_notes.h"

#include <gtest/gtest.h>

#include <string>

namespace fenmark::drawing {
namespace {

struct Wording {
    StoreNote note;
    std::string_view name;
    std::string english;
    std::string japanese;
};

TEST(StoreNotes, SayWhatWasFoundInBothLanguages) {
    const Wording table[] = {
        {{StoreNoteCode::OtherGeometry, "points", "LINESTRING", 1, 7},
         "other-geometry",
         "1 feature of the layer 'points' (first fid 7) left out: a LINESTRING is no object of a drawing",
         "レイヤ「points」のLINESTRING 1個(最初のfid 7)は図面の図形ではないため、読み込んでいません"},
        {{StoreNoteCode::NoPlace, "points", {}, 2, 7},
         "feature-without-place",
         "2 features of the layer 'points' (first fid 7) left out: without a place",
         "レイヤ「points」の位置のない地物2個(最初のfid 7)は読み込んでいません"},
        {{StoreNoteCode::AlignmentElementless, "alignments", {}, 1, 7},
         "alignment-without-elements",
         "1 line of the layer 'alignments' (first fid 7) left out: without alignment elements",
         "レイヤ「alignments」の線形要素のない線1本(最初のfid 7)は読み込んでいません"},
        {{StoreNoteCode::ElementsOutOfOrder, "alignments", {}, 2, 7},
         "elements-out-of-order",
         "2 alignments (first fid 7) whose elements are not numbered one by one: some were removed or changed",
         "線形2本(最初のfid 7)の要素が順に並んでいません。削除または変更された要素があります"},
        {{StoreNoteCode::NoNumber, "points", "No", 1, 7},
         "no-number",
         "1 feature of the layer 'points' (first fid 7) whose 'No' is no number that can be used, taken as 0",
         "レイヤ「points」の地物1個(最初のfid 7)の列「No」の値は使える数値ではないため、0としました"},
        {{StoreNoteCode::TakenIdentifier, "points", {}, 3, 7},
         "taken-identifier",
         "3 features of the layer 'points' (first fid 7) had the identifier of another object; "
         "the next save gives a new one",
         "レイヤ「points」の地物3個(最初のfid 7)の識別子は他の図形と同じです。次の保存で新しい識別子が付きます"},
        {{StoreNoteCode::LotsDiffer, "lots", {}, 2, 7},
         "lots-differ",
         "2 features differ between the layers 'lots' and 'polylines' (first fid 7): the polylines are taken, so lots "
         "are to be changed there",
         "レイヤ「lots」と「polylines」で異なる地物が2個あります(最初のfid 7)。「polylines」の内容を使います。"
         "画地の変更は「polylines」で行ってください"},
        {{StoreNoteCode::OtherSystem, "points", {}, 2, 7},
         "other-reference-system",
         "2 features name another reference system than the table 'points' (first fid 7), taken as coordinates in the "
         "table's",
         "表「points」の地物2個(最初のfid "
         "7)の図形は表と異なる座標系を示していますが、表の座標系の座標として読みました"},
        {{StoreNoteCode::LinesDiffer, "alignments", {}, 2, 7},
         "lines-differ",
         "2 alignments have a line (first fid 7) that does not run along the elements: the elements are taken",
         "線形2本(最初のfid 7)の線が、その線形要素と異なります。線形要素の内容を使います"},
        {{StoreNoteCode::MissingColumn, "points", "Name"},
         "missing-column",
         "the table 'points' has no column 'Name': it is taken as empty, and the drawing cannot be saved "
         "until the column is there again",
         "表「points」に列「Name」がないため、空として読みました。その列が戻るまで図面を保存できません"},
        {{StoreNoteCode::OtherDatum, {}, "JGD2000", 9},
         "other-datum",
         "coordinates of zone 9 of JGD2000, taken as they stand",
         "JGD2000の9系の座標を、そのまま使いました"},
        {{StoreNoteCode::NoPlainTable, "v", {}},
         "no-plain-table",
         "'v' is no table of its own: left out",
         "「v」は実体のある表ではないため、読み込んでいません"},
        {{StoreNoteCode::NotListed, "p", {}},
         "not-listed",
         "the table 'p' is not listed as features in gpkg_contents: left out",
         "表「p」は地物の表としてgpkg_contentsに登録されていないため、読み込んでいません"},
        {{StoreNoteCode::FeatureDamaged, "p", {}, 1, 7},
         "damaged-geometry",
         "1 feature left out: damaged geometry in 'p' (first fid 7)",
         "「p」の図形が壊れている地物1個(最初のfid 7)は読み込んでいません"},
        {{StoreNoteCode::FeatureWithHoles, "p", {}, 2, 7},
         "polygon-with-holes",
         "2 features left out: polygons with holes in 'p' (first fid 7)",
         "「p」の穴のある面2個(最初のfid 7)は読み込んでいません"},
        {{StoreNoteCode::NumberOfFeature, "p", "番号", 2, 7},
         "number-of-feature",
         "2 features without a whole number in the column '番号' of 'p' (first fid 7): the fid is taken",
         "「p」の列「番号」が0以上の整数でない地物2個(最初のfid 7)は、fidを番号としました"},
        {{StoreNoteCode::NamesFrom, "p", "地番", 0, 0, "番号"},
         "names-from",
         "'p': names from '地番', numbers from '番号'",
         "「p」: 名称は列「地番」、番号は列「番号」から取りました"},
        {{StoreNoteCode::NamesFrom, "p", {}},
         "names-from",
         "'p': names from the numbers, numbers from the features",
         "「p」: 名称は番号、番号は地物の番号から取りました"},
    };
    for (const Wording& wanted : table) {
        EXPECT_EQ(noteName(wanted.note.code), wanted.name);
        EXPECT_EQ(noteText(wanted.note), wanted.english);
        EXPECT_EQ(noteText(wanted.note, Language::Japanese), wanted.japanese);
    }
}

TEST(StoreMessages, TellTheDetailWhereItHelps) {
    const Worded detail{"the reason", "理由"};
    const struct {
        Failure failure;
        std::string english;
        std::string japanese;
    } table[] = {
        {Failure::None, "", ""},
        {Failure::Locked, "a.gpkg: is held by another program", "a.gpkg: 他のプログラムが使用しています"},
        {Failure::NotReadable, "a.gpkg: cannot be read (the reason)", "a.gpkg: 読めません (理由)"},
        {Failure::DiskFull, "a.gpkg: the disk is full; the drawing on disk is as it was",
         "a.gpkg: ディスクの空きがありません。図面ファイルは元のままです"},
    };
    for (const auto& wanted : table) {
        const Worded said = storeMessage(wanted.failure, "a.gpkg", detail);
        EXPECT_EQ(said.english, wanted.english);
        EXPECT_EQ(said.japanese, wanted.japanese);
    }
    EXPECT_EQ(storeMessage(Failure::NotReadable, "a.gpkg").english, "a.gpkg: cannot be read");
}

} // namespace
} // namespace fenmark::drawing
