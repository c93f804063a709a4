// What the sections, the paper and the backgrounds say.
#include "desk/language/work_texts.h"

#include <array>
#include <cstddef>

namespace fenmark::desk {

namespace {

struct Entry {
    WorkText text;
    const char* japanese;
    const char* english;
};

constexpr std::array kEntries{
    Entry{WorkText::SectionMenu, "縦横断(&C)", "Se&ctions"},
    Entry{WorkText::ProfilePanel, "縦断図", "Longitudinal Section"},
    Entry{WorkText::CrossPanel, "横断図", "Cross-Sections"},
    Entry{WorkText::Exaggeration, "高さの倍率", "Height Scale"},
    Entry{WorkText::ExaggerationFit, "自動", "Fit"},
    Entry{WorkText::ExaggerationTimes, "%1倍", "×%1"},
    Entry{WorkText::PrintShort, "印刷...", "Print..."},
    Entry{WorkText::PreviousSection, "前の断面", "Previous Section"},
    Entry{WorkText::NextSection, "次の断面", "Next Section"},
    Entry{WorkText::NoProfile, "この線形には縦断成果がありません", "This alignment has no longitudinal results"},
    Entry{WorkText::NoSections, "この線形には横断成果がありません", "This alignment has no cross-sections"},
    Entry{WorkText::ChooseAlignment, "線形または縦横断成果の点を選択してください",
          "Select an alignment, or a point of its sections"},
    Entry{WorkText::Ground, "地盤高", "Ground"},
    Entry{WorkText::Planned, "計画高", "Design"},
    Entry{WorkText::Distance, "追加距離", "Station"},
    Entry{WorkText::Stake, "測点", "Stake"},
    Entry{WorkText::Curve, "曲線", "Curves"},
    Entry{WorkText::CentreHeight, "中心高 %1", "Centre height %1"},
    Entry{WorkText::PointedProfile, "%1  追加距離 %2  地盤高 %3", "%1  station %2  ground %3"},
    Entry{WorkText::PointedSection, "幅 %1  標高 %2", "offset %1  height %2"},
    Entry{WorkText::PaperMenu, "印刷・PDF(&P)...", "&Print and PDF..."},
    Entry{WorkText::PaperTitle, "印刷・PDF", "Print and PDF"},
    Entry{WorkText::PaperKind, "種類", "Kind"},
    Entry{WorkText::PaperPlan, "平面図", "Plan"},
    Entry{WorkText::PaperAlong, "平面図（線形に沿った割付）", "Plan in sheets along an alignment"},
    Entry{WorkText::PaperProfile, "縦断図", "Longitudinal section"},
    Entry{WorkText::PaperCross, "横断図", "Cross-sections"},
    Entry{WorkText::PaperLots, "座標求積表", "Area tables of lots"},
    Entry{WorkText::PaperStakes, "測設（杭打ち）座標一覧", "Stake list"},
    Entry{WorkText::PaperPoints, "座標一覧", "Coordinate list"},
    Entry{WorkText::PaperAlignments, "線形計算書", "Tables of alignments"},
    Entry{WorkText::PaperOf, "線形", "Alignment"},
    Entry{WorkText::PaperSize, "用紙", "Paper"},
    Entry{WorkText::PaperOrientation, "向き", "Orientation"},
    Entry{WorkText::OrientationAuto, "自動", "Automatic"},
    Entry{WorkText::OrientationWide, "横", "Landscape"},
    Entry{WorkText::OrientationUpright, "縦", "Portrait"},
    Entry{WorkText::PaperScale, "縮尺", "Scale"},
    Entry{WorkText::ScaleAuto, "自動", "Automatic"},
    Entry{WorkText::PaperExtent, "範囲", "Extent"},
    Entry{WorkText::ExtentAll, "図面全体", "Whole drawing"},
    Entry{WorkText::ExtentView, "画面の範囲", "What the view shows"},
    Entry{WorkText::ExtentSelection, "選択した図形", "Selected object"},
    Entry{WorkText::PaperTexts, "表題欄（図面に保存）", "Title block (kept in the drawing)"},
    Entry{WorkText::TextHeading, "図面名", "Title"},
    Entry{WorkText::TextProject, "業務名", "Project"},
    Entry{WorkText::TextDate, "年月日", "Date"},
    Entry{WorkText::TextAuthor, "作成者", "Author"},
    Entry{WorkText::TextCompany, "会社名", "Company"},
    Entry{WorkText::TextSheet, "図面番号", "Sheet"},
    Entry{WorkText::TextRemark, "備考", "Remark"},
    Entry{WorkText::PagePrevious, "前のページ", "Previous Page"},
    Entry{WorkText::PageNext, "次のページ", "Next Page"},
    Entry{WorkText::PageOf, "%1 / %2", "%1 / %2"},
    Entry{WorkText::PaperSavePdf, "PDF保存(&S)...", "&Save PDF..."},
    Entry{WorkText::PaperSaveSvg, "SVG保存(&V)...", "Save S&VG..."},
    Entry{WorkText::PaperPrint, "印刷(&P)...", "&Print..."},
    Entry{WorkText::PaperClose, "閉じる", "Close"},
    Entry{WorkText::PaperSaved, "%1 に保存しました", "Saved %1"},
    Entry{WorkText::PaperTooLarge, "プリンターの用紙は %1 ですが、図面は %2 です。縮小して印刷しますか?",
          "The printer's paper is %1, the sheet is %2. Print it smaller?"},
    Entry{WorkText::StakePitch, "杭の間隔 (m)", "Stakes every (m)"},
    Entry{WorkText::StakeOffsets, "幅 (m)", "Offsets (m)"},
    Entry{WorkText::BackgroundMenu, "背景(&B)", "&Background"},
    Entry{WorkText::BackgroundAdd, "ファイルを追加(&A)...", "&Add File..."},
    Entry{WorkText::BackgroundAddFolder, "タイルのフォルダーを追加(&F)...", "Add &Folder of Tiles..."},
    Entry{WorkText::BackgroundRemoveAll, "すべて外す(&R)", "&Remove All"},
    Entry{WorkText::BackgroundShow, "背景を表示(&S)", "&Show Background"},
    Entry{WorkText::BackgroundStrength, "濃さ %1%", "Strength %1%"},
    Entry{WorkText::BackgroundFilter, "背景 (*.gpkg *.dxf *.geojson *.json *.mbtiles)",
          "Backgrounds (*.gpkg *.dxf *.geojson *.json *.mbtiles)"},
    Entry{WorkText::BackgroundAdded, "背景に %1 を追加しました（点 %2、線 %3）",
          "Background: added %1 (%2 points, %3 lines)"},
    Entry{WorkText::BackgroundFailed, "%1: 背景にできません（%2）", "%1: no background (%2)"},
    Entry{WorkText::BackgroundNeedsZone, "平面直角座標系の系番号が必要です。［設定］メニューで系を選んでください",
          "the plane rectangular zone is needed; choose it in the menu Settings"},
    Entry{WorkText::BackgroundMissing, "背景のファイルが見つかりません: %1", "A file of the background is missing: %1"},
};

constexpr bool inOrder() {
    for (std::size_t i = 0; i < kEntries.size(); ++i) {
        if (static_cast<std::size_t>(kEntries[i].text) != i) {
            return false;
        }
    }
    return kEntries.size() == static_cast<std::size_t>(kLastWorkText) + 1;
}
static_assert(inOrder());

} // namespace

QString workText(const Texts& texts, WorkText text) {
    const Entry& entry = kEntries[static_cast<std::size_t>(text)];
    return QString::fromUtf8(texts.language() == Language::Japanese ? entry.japanese : entry.english);
}

} // namespace fenmark::desk
