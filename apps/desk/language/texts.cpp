// What the desktop program says, in Japanese and English.
#include "desk/language/texts.h"

#include <QLocale>
#include <QRegularExpression>

#include <array>
#include <cstddef>

namespace fenmark::desk {

namespace {

struct Entry {
    Text text;
    const char* japanese;
    const char* english;
};

constexpr std::array kEntries{
    Entry{Text::FileMenu, "ファイル(&F)", "&File"},
    Entry{Text::EditMenu, "編集(&E)", "&Edit"},
    Entry{Text::ViewMenu, "表示(&V)", "&View"},
    Entry{Text::SettingsMenu, "設定(&S)", "&Settings"},
    Entry{Text::HelpMenu, "ヘルプ(&H)", "&Help"},
    Entry{Text::New, "新規(&N)", "&New"},
    Entry{Text::Open, "開く(&O)...", "&Open..."},
    Entry{Text::OpenRecent, "最近使ったファイル(&R)", "Open &Recent"},
    Entry{Text::ClearRecent, "一覧を消去", "Clear List"},
    Entry{Text::Save, "上書き保存(&S)", "&Save"},
    Entry{Text::SaveAs, "名前を付けて保存(&A)...", "Save &As..."},
    Entry{Text::Export, "書き出し(&E)...", "&Export..."},
    Entry{Text::Quit, "終了(&X)", "&Quit"},
    Entry{Text::Undo, "元に戻す(&U)", "&Undo"},
    Entry{Text::UndoStep, "元に戻す(&U): %1", "&Undo %1"},
    Entry{Text::ClearSelection, "選択を解除(&D)", "&Deselect"},
    Entry{Text::AddLayer, "画層を追加(&L)...", "Add &Layer..."},
    Entry{Text::Import, "SIMAファイル読み込み(&I)...", "&Import SIMA File..."},
    Entry{Text::Fit, "全体表示(&F)", "&Fit All"},
    Entry{Text::FitSelection, "選択を表示(&S)", "Fit &Selection"},
    Entry{Text::ZoomIn, "拡大(&I)", "Zoom &In"},
    Entry{Text::ZoomOut, "縮小(&O)", "Zoom &Out"},
    Entry{Text::ZoomWindow, "窓ズーム(&W)", "Zoom &Window"},
    Entry{Text::ShowLabels, "名称・要素値(&L)", "&Labels"},
    Entry{Text::ShowStations, "測点(&T)", "&Stations"},
    Entry{Text::ShowGrid, "格子(&G)", "&Grid"},
    Entry{Text::NextPane, "次の区画へ(&P)", "Next &Pane"},
    Entry{Text::Zone, "平面直角座標系(&Z)", "Plane Rectangular &Zone"},
    Entry{Text::NoZone, "指定なし", "Not Set"},
    Entry{Text::ZoneNumber, "%1系", "Zone %1"},
    Entry{Text::PositiveRadius, "正の半径の向き(&R)", "Positive &Radius"},
    Entry{Text::RadiusAuto, "自動", "Automatic"},
    Entry{Text::RadiusLeft, "左曲がり", "Turns Left"},
    Entry{Text::RadiusRight, "右曲がり", "Turns Right"},
    Entry{Text::LanguageMenu, "言語(&L)", "&Language"},
    Entry{Text::About, "Fenmark Deskについて(&A)", "&About Fenmark Desk"},
    Entry{Text::AboutText, "SIMAファイルを読み込み、図面に表示します。", "Brings SIMA survey files into drawings."},
    Entry{Text::Keys, "キー操作(&K)", "&Keyboard"},
    Entry{Text::KeysText,
          "矢印: 画面移動\n+ / -: 拡大・縮小\nF: 全体表示\nTab / Shift+Tab: 次・前の図形を選択\nEnter: "
          "選択した図形のプロパティへ\nEsc: 選択を解除\nCtrl+F: 名称・番号で検索\nF8 / Shift+F8: "
          "次・前のエラー\nログの行でEnter: "
          "その行の図形とSIMAファイルの行を表示\nF6 / Shift+F6: 区画の移動\nCtrl+K: コマンド行へ",
          "Arrows: pan\n+ / -: zoom\nF: fit all\nTab / Shift+Tab: next / previous object\nEnter: go to the properties "
          "of the object\nEsc: deselect\nCtrl+F: find by name or number\nF8 / Shift+F8: next / previous error\nEnter "
          "on a line of the log: show its object and "
          "its line of the SIMA file\nF6 / Shift+F6: next / previous pane\nCtrl+K: command line"},
    Entry{Text::SitesPanel, "線形", "Alignments"},
    Entry{Text::LayersPanel, "画層", "Layers"},
    Entry{Text::PropertiesPanel, "プロパティ", "Properties"},
    Entry{Text::CommandPanel, "コマンド", "Command"},
    Entry{Text::LogPanel, "読み込みログ", "Import Log"},
    Entry{Text::Untitled, "無題", "Untitled"},
    Entry{Text::CommandPrompt, "コマンド:", "Command:"},
    Entry{Text::CommandHint, "Fenmark と入力してEnter", "Type Fenmark and press Enter"},
    Entry{Text::ColumnName, "名称", "Name"},
    Entry{Text::ColumnLength, "延長", "Length"},
    Entry{Text::ColumnRadius, "半径/A", "Radius/A"},
    Entry{Text::ColumnStation, "追加距離", "Station"},
    Entry{Text::ColumnProperty, "項目", "Property"},
    Entry{Text::ColumnValue, "値", "Value"},
    Entry{Text::Site, "サイト", "Site"},
    Entry{Text::Alignment, "線形", "Alignment"},
    Entry{Text::Straight, "直線", "Straight"},
    Entry{Text::Arc, "円弧", "Arc"},
    Entry{Text::Clothoid, "クロソイド", "Clothoid"},
    Entry{Text::Point, "点", "Point"},
    Entry{Text::Polyline, "ポリライン", "Polyline"},
    Entry{Text::ClosedPolyline, "閉じたポリライン", "Closed Polyline"},
    Entry{Text::Identifier, "図形番号", "Object ID"},
    Entry{Text::Layer, "画層", "Layer"},
    Entry{Text::CoordinateX, "X (北)", "X (north)"},
    Entry{Text::CoordinateY, "Y (東)", "Y (east)"},
    Entry{Text::Height, "標高", "Height"},
    Entry{Text::Vertices, "頂点数", "Vertices"},
    Entry{Text::Length, "延長", "Length"},
    Entry{Text::Perimeter, "周長", "Perimeter"},
    Entry{Text::Area, "面積", "Area"},
    Entry{Text::Table, "オブジェクトデータ", "Object Data"},
    Entry{Text::RowNo, "No", "No"},
    Entry{Text::RowName, "Name", "Name"},
    Entry{Text::RowType, "Type", "Type"},
    Entry{Text::RowFile, "FileName", "FileName"},
    Entry{Text::NoRow, "(なし)", "(none)"},
    Entry{Text::Description, "説明", "Description"},
    Entry{Text::StartStation, "始点追加距離", "Start Station"},
    Entry{Text::EndStation, "終点追加距離", "End Station"},
    Entry{Text::Elements, "要素数", "Elements"},
    Entry{Text::Element, "要素", "Element"},
    Entry{Text::Radius, "半径", "Radius"},
    Entry{Text::StartRadius, "始点半径", "Start Radius"},
    Entry{Text::EndRadius, "終点半径", "End Radius"},
    Entry{Text::Infinite, "∞", "∞"},
    Entry{Text::Parameter, "パラメータ A", "Parameter A"},
    Entry{Text::Turns, "曲がり", "Turns"},
    Entry{Text::Left, "左", "Left"},
    Entry{Text::Right, "右", "Right"},
    Entry{Text::StartPoint, "始点", "Start"},
    Entry{Text::EndPoint, "終点", "End"},
    Entry{Text::Centre, "中心", "Centre"},
    Entry{Text::PointOfIntersection, "交点", "PI"},
    Entry{Text::StartDirection, "始点方向角", "Start Azimuth"},
    Entry{Text::Drawing, "図面", "Drawing"},
    Entry{Text::Points, "点の数", "Points"},
    Entry{Text::Polylines, "ポリライン数", "Polylines"},
    Entry{Text::Alignments, "線形数", "Alignments"},
    Entry{Text::Layers, "画層数", "Layers"},
    Entry{Text::Sites, "サイト数", "Sites"},
    Entry{Text::ZoneShort, "座標系", "Zone"},
    Entry{Text::ExtentNorth, "範囲 X (北)", "Extent X (north)"},
    Entry{Text::ExtentEast, "範囲 Y (東)", "Extent Y (east)"},
    Entry{Text::DropHint, "SIMAファイル (.sim) または図面 (.gpkg) を\nここへドラッグしてください",
          "Drag a SIMA file (.sim) or\na drawing (.gpkg) here"},
    Entry{Text::DropHintKeys, "Ctrl+I: SIMAファイル読み込み   Ctrl+O: 図面を開く",
          "Ctrl+I: import a SIMA file   Ctrl+O: open a drawing"},
    Entry{Text::SaveChanges, "「%1」への変更を保存しますか?", "Save the changes to “%1”?"},
    Entry{Text::SaveButton, "保存(&S)", "&Save"},
    Entry{Text::DiscardButton, "保存しない(&D)", "&Do Not Save"},
    Entry{Text::CancelButton, "キャンセル", "Cancel"},
    Entry{Text::OkButton, "OK", "OK"},
    Entry{Text::OpenTitle, "図面を開く", "Open Drawing"},
    Entry{Text::SaveTitle, "図面の保存", "Save Drawing"},
    Entry{Text::ExportTitle, "図面の書き出し", "Export Drawing"},
    Entry{Text::DrawingFilter, "図面 (*.gpkg)", "Drawings (*.gpkg)"},
    Entry{Text::UnknownExport, "%1: 拡張子は %2 のいずれかにしてください", "%1: the extension must be one of %2"},
    Entry{Text::ExportNeedsZone,
          "%1: 経緯度で書き出すには平面直角座標系の系番号が必要です。［設定］メニューで系を選んでください",
          "%1: longitude and latitude need the plane rectangular zone; choose it in the menu Settings"},
    Entry{Text::Exported, "%1 に書き出しました", "Exported to %1"},
    Entry{Text::Opened, "%1 を開きました", "Opened %1"},
    Entry{Text::Saved, "%1 に保存しました", "Saved %1"},
    Entry{Text::Undone, "元に戻しました: %1", "Undone: %1"},
    Entry{Text::Added, "図形%1個、線形%2本を追加しました", "Added %1 entities and %2 alignments"},
    Entry{Text::NothingToUndo, "元に戻す操作がありません", "Nothing to undo"},
    Entry{Text::StepImport, "読み込み", "Import"},
    Entry{Text::StepLayer, "画層の追加", "Add Layer"},
    Entry{Text::StepZone, "座標系の変更", "Change of Zone"},
    Entry{Text::LayerName, "画層名:", "Layer name:"},
    Entry{Text::LayerTaken, "画層「%1」は既にあります", "There is a layer named “%1” already"},
    Entry{Text::NoLog, "ログはありません", "No log"},
    Entry{Text::LogTooLong, "(以下省略: 全文は %1)", "(cut here; all of it is in %1)"},
    Entry{Text::CommandUnknown, "%1: コマンドがありません", "%1: no such command"},
    Entry{Text::CommandRunning, "コマンドの実行中です", "A command is running"},
    Entry{Text::CommandHelp, "使えるコマンド: %1", "Commands: %1"},
    Entry{Text::CannotLoadModule, "モジュールを読み込めません: %1", "The module cannot be loaded: %1"},
    Entry{Text::OtherSense, "%1個の要素を逆の曲がりとして配置しました",
          "%1 elements were taken with the other turning sense"},
    Entry{Text::BreaksOff, "線形「%1」は %2 m で途切れています: %3", "alignment %1 breaks off after %2 m: %3"},
    Entry{Text::ArcWithoutRadius, "円弧の半径がありません", "an arc has no radius"},
    Entry{Text::ChordBeyondDiameter, "半径 %1 m の円弧は弦長 %2 m に届きません",
          "an arc of radius %1 m does not reach over its chord of %2 m"},
    Entry{Text::ClothoidWithoutRadius, "クロソイドの半径がありません", "a clothoid has no radius"},
    Entry{Text::ClothoidWithoutLength, "クロソイドの長さがありません", "a clothoid has no length"},
    Entry{Text::ClothoidWithoutElementBefore, "クロソイドの前に要素がありません",
          "a clothoid has no element before it"},
    Entry{Text::BrokenJoint, "線形「%1」: 追加距離 %2 の接続が %3° 折れています",
          "alignment %1: the joint at station %2 is broken by %3°"},
    Entry{Text::WoundElement, "線形「%1」: 追加距離 %2 の曲線（長さ %3 m、半径 %4 ～ %5 m）は %6 回転しています",
          "alignment %1: the curve at station %2 (%3 m long, radii %4 and %5 m) turns %6 times"},
    Entry{Text::CoarseElement,
          "線形「%1」: 追加距離 %2 の曲線（長さ %3 m、半径 %4 ～ %5 m）は誤差 %6 m で図示しています",
          "alignment %1: the curve at station %2 (%3 m long, radii %4 and %5 m) is drawn within %6 m"},
    Entry{Text::UnknownFile, "%1: .sim または .gpkg のファイルではありません", "%1: neither a .sim nor a .gpkg file"},
    Entry{Text::StatusPosition, "X %1   Y %2", "X %1   Y %2"},
    Entry{Text::StatusStation, "%1  %2 (%3)  %4", "%1  %2 (%3)  %4"},
    Entry{Text::OffsetLeft, "左 %1", "left %1"},
    Entry{Text::OffsetRight, "右 %1", "right %1"},
    Entry{Text::StatusCounts, "点 %1  ポリライン %2  線形 %3", "%1 points  %2 polylines  %3 alignments"},
    Entry{Text::PlanName, "平面図", "Plan"},
    Entry{Text::FitShort, "全体表示", "Fit"},
    Entry{Text::WindowShort, "窓ズーム", "Window"},
    Entry{Text::ImportShort, "読み込み", "Import"},
    Entry{Text::Toolbar, "ツールバー", "Toolbar"},
    Entry{Text::ShowAll, "画層をすべて表示", "Show All La&yers"},
    Entry{Text::HideAll, "画層をすべて隠す", "&Hide All Layers"},
    Entry{Text::Redo, "やり直し(&R)", "&Redo"},
    Entry{Text::RedoStep, "やり直し(&R): %1", "&Redo %1"},
    Entry{Text::Redone, "やり直しました: %1", "Redone: %1"},
    Entry{Text::NothingToRedo, "やり直す操作がありません", "Nothing to redo"},
    Entry{Text::LegendPanel, "凡例", "Legend"},
    Entry{Text::SourcePanel, "SIMAファイルの行", "Line of the SIMA File"},
    Entry{Text::SourceMissing, "%1行目のSIMAファイルが見つかりません", "The SIMA file with line %1 cannot be found"},
    Entry{Text::KindCoordinate, "座標点", "Coordinate point"},
    Entry{Text::KindLongitudinal, "縦断成果の点", "Longitudinal result"},
    Entry{Text::KindCrossSection, "横断成果の点", "Cross-section result"},
    Entry{Text::KindOtherPoint, "その他の点", "Other point"},
    Entry{Text::KindLot, "画地", "Lot"},
    Entry{Text::KindIpLine, "IP線", "IP line"},
    Entry{Text::KindStakes, "幅杭線", "Width-stake line"},
    Entry{Text::KindContinuous, "連続線", "Continuous line"},
    Entry{Text::KindOtherLine, "その他の線", "Other line"},
    Entry{Text::KindCount, "%1 (%2)", "%1 (%2)"},
    Entry{Text::Find, "検索(&F)...", "&Find..."},
    Entry{Text::FindPanel, "検索", "Find"},
    Entry{Text::FindHint, "点・画地・線形の名称または番号", "Name or number of a point, lot or alignment"},
    Entry{Text::FindCount, "%1件", "%1 found"},
    Entry{Text::FindCountCut, "%1件中 %2件を表示", "%1 found, %2 shown"},
    Entry{Text::FindNothing, "見つかりません", "Nothing found"},
    Entry{Text::NextError, "次のエラー(&N)", "&Next Error"},
    Entry{Text::PreviousError, "前のエラー(&P)", "&Previous Error"},
    Entry{Text::NoMoreErrors, "この先にエラーはありません", "No further error"},
    Entry{Text::NewOutOfView, "読み込んだ図形は画面の外にもあります。全体を表示",
          "The import lies partly out of view: fit all"},
    Entry{Text::BrokenOff, "読み込みが途中で終わりました。", "The import was broken off."},
    Entry{Text::BrokenOffKept, "そこまでに作成した %1 個の図形は図面に残っています。",
          "What was made until then, %1 objects, is in the drawing."},
    Entry{Text::BrokenOffNothing, "図形は作成されていません。", "No object was made."},
    Entry{Text::KeepButton, "残す", "Keep"},
    Entry{Text::TakeBackButton, "取り消す", "Take Back"},
    Entry{Text::EncodingMenu, "SIMAファイルの文字コード(&E)", "&Encoding of SIMA Files"},
    Entry{Text::EncodingAuto, "自動判別", "Automatic"},
    Entry{Text::EncodingCp932, "シフトJIS (コードページ932)", "Code Page 932 (Shift_JIS)"},
    Entry{Text::EncodingUtf8, "UTF-8", "UTF-8"},
    Entry{Text::ReadIn, "文字コードを %1 として読み込みました", "The file was read in %1"},
    Entry{Text::PlanTangents, "クロソイドの接線交点を平面で求める(&C)", "Tangents of &Clothoids in Plan"},
    Entry{Text::TryRadiusAuto, "設定の「正の半径の向き」を「自動」にして読み込み直すと直ることがあります",
          "importing again with Positive Radius set to Automatic may mend it"},
    Entry{Text::TryRadiusLeft, "設定の「正の半径の向き」を「左曲がり」にして読み込み直すと直ることがあります",
          "importing again with Positive Radius set to Turns Left may mend it"},
    Entry{Text::TryRadiusRight, "設定の「正の半径の向き」を「右曲がり」にして読み込み直すと直ることがあります",
          "importing again with Positive Radius set to Turns Right may mend it"},
    Entry{Text::TryPlanTangents, "設定の「クロソイドの接線交点を平面で求める」を選んで読み込み直すと直ることがあります",
          "importing again with Tangents of Clothoids in Plan may mend it"},
};

constexpr bool inOrder() {
    for (std::size_t i = 0; i < kEntries.size(); ++i) {
        if (static_cast<std::size_t>(kEntries[i].text) != i) {
            return false;
        }
    }
    return true;
}
static_assert(inOrder());

} // namespace

QString Texts::operator()(Text text) const {
    const Entry& entry = kEntries[static_cast<std::size_t>(text)];
    return QString::fromUtf8(language_ == Language::Japanese ? entry.japanese : entry.english);
}

QString withoutMnemonic(QString text) {
    static const QRegularExpression japanese(QStringLiteral("\\(&.\\)"));
    text.remove(japanese);
    text.remove(QLatin1Char('&'));
    return text.remove(QStringLiteral("..."));
}

Language languageOfLocale() {
    return QLocale::system().language() == QLocale::Japanese ? Language::Japanese : Language::English;
}

} // namespace fenmark::desk
