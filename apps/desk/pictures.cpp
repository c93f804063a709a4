// Draws the pictures of the documentation: every dialog and the desktop program with the examples. Not installed.
//
// Usage: fenmark_pictures EXAMPLES OUTPUT [desk|desk2], two folders. The dialogs are the real ones, met on the way through
// an import. "desk" makes the views of the desk on a small screen, in both languages, light and dark; "desk2" the same at
// twice the scale.
#include "desk/window/desk.h"
#include "desk/window/find_panel.h"
#include "desk/window/keys_dialog.h"
#include "desk/window/main_window.h"
#include "desk/window/workbench.h"
#include "ui/dialogs/progress_wnd.h"
#include "ui/dialogs/select_alignment_form.h"
#include "ui/treelist/tree_list_ctrl.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLineEdit>
#include <QPalette>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using namespace fenmark;

const QString kFindDock = QStringLiteral("dock3");
const QString kCommandDock = QStringLiteral("dock5");
QDir output;
bool failed = false;

void keep(QWidget& widget, const QString& name) {
    for (int round = 0; round < 3; ++round) {
        QApplication::processEvents();
    }
    const QString path = output.filePath(name + QStringLiteral(".png"));
    if (widget.grab().toImage().save(path, "PNG")) {
        return;
    }
    std::fprintf(stderr, "fenmark_pictures: %s: cannot be written\n", qPrintable(path));
    failed = true;
}

// Acts on modal windows as they come, one act each.
class Script {
  public:
    using Act = std::function<void(QWidget& dialog)>;

    explicit Script(std::vector<Act> acts) : acts_(std::move(acts)) {
        QObject::connect(&timer_, &QTimer::timeout, [this] {
            QWidget* dialog = QApplication::activeModalWidget();
            if (dialog == nullptr || next_ >= acts_.size()) {
                return;
            }
            acts_[next_++](*dialog);
        });
        timer_.start(20);
    }

  private:
    QTimer timer_;
    std::vector<Act> acts_;
    std::size_t next_ = 0;
};

void click(QWidget& dialog, const char* button) {
    if (auto* found = dialog.findChild<QPushButton*>(QLatin1String(button))) {
        found->click();
    }
}

void clickSoon(QWidget& dialog, const char* button) {
    QTimer::singleShot(0, &dialog, [&dialog, button] { click(dialog, button); });
}

void importRoad(desk::MainWindow& window, const QString& file) {
    const Script script({
        [](QWidget& dialog) {
            // The folder is a temporary one, and none of the picture.
            dialog.findChild<QLineEdit*>(QStringLiteral("id210"))->setText(QStringLiteral("road.sim"));
            keep(dialog, QStringLiteral("import"));
            clickSoon(dialog, "id209");
        },
        [](QWidget& dialog) {
            keep(dialog, QStringLiteral("settings"));
            click(dialog, "id2");
        },
        [](QWidget& dialog) { click(dialog, "id1"); },
        [](QWidget& dialog) {
            keep(dialog, QStringLiteral("result"));
            click(dialog, "id1");
        },
    });
    window.openFile(file);
}

void selectNamed(desk::MainWindow& window, const char* name) {
    const drawing::Drawing& drawing = window.session().drawing();
    for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
        if (drawing.entity(i).row &&
            QByteArray(drawing.entity(i).row->name.data(), static_cast<qsizetype>(drawing.entity(i).row->name.size()))
                    .trimmed() == name) {
            window.plan().select(desk::PlanObject{desk::PlanObject::Kind::Entity, i, {}});
        }
    }
}

void showAlignmentSelection() {
    std::map<std::string, host::MdDbObjectId> names;
    names["中心線"] = host::MdDbObjectId(1);
    names["旧道"] = host::MdDbObjectId(2);
    names["護岸"] = host::MdDbObjectId(3);
    ui::SelectAlignmentForm form(nullptr, names);
    form.show();
    keep(form, QStringLiteral("select"));
}

void showProgress() {
    ui::CProgressWnd progress(nullptr, QStringLiteral("SIMAファイル読み込み"), true);
    progress.setRange(0, 100, 1);
    progress.setText(QStringLiteral("SIMAファイル読み込み中...\n\n"));
    progress.show();
    progress.setPosition(62);
    keep(progress, QStringLiteral("progress"));
    progress.DestroyWindow();
}

void showTreeList() {
    using namespace ui::treelist;
    QWidget frame;
    frame.resize(520, 300);
    CTreeListCtrl tree(&frame);
    tree.Create(kStyleTree | kStyleHeader | kStyleHorizontalGrid | kStyleVerticalGrid | kStyleTreeLines |
                    kStyleRootLines | kStyleButtons | kStyleCheckBoxes | kStyleLockBoxes | kStyleMultiSelect,
                QRect(8, 8, 504, 284), &frame);
    tree.InsertColumn(QStringLiteral("要素"), kColumnInitialFormat, 210);
    tree.InsertColumn(QStringLiteral("延長 (m)"), kHeadRight | kHeadMiddle | kCellRight | kCellMiddle, 110);
    tree.InsertColumn(QStringLiteral("半径 (m)"), kHeadRight | kHeadMiddle | kCellRight | kCellMiddle, 110);
    CTreeListItem* site = tree.InsertItem(QStringLiteral("サイト"));
    CTreeListItem* road = tree.InsertItem(QStringLiteral("中心線"), site);
    const std::vector<std::pair<QStringList, bool>> rows{
        {{QStringLiteral("直線"), QStringLiteral("60.000"), QString()}, true},
        {{QStringLiteral("クロソイド"), QStringLiteral("54.000"), QStringLiteral("∞ → 150.000")}, true},
        {{QStringLiteral("円弧"), QStringLiteral("85.000"), QStringLiteral("150.000")}, false},
        {{QStringLiteral("クロソイド"), QStringLiteral("54.000"), QStringLiteral("150.000 → ∞")}, true},
    };
    for (const auto& [texts, ticked] : rows) {
        CTreeListItem* row = tree.InsertItem(texts[0], road);
        tree.SetItemText(row, 1, texts[1]);
        tree.SetItemText(row, 2, texts[2]);
        tree.SetCheck(row, ticked ? 1 : 0);
    }
    CTreeListItem* bank = tree.InsertItem(QStringLiteral("護岸"), site);
    tree.InsertItem(QStringLiteral("直線"), bank);
    tree.SetLock(bank, 1);
    tree.Expand(site, ExpandCode::Expand);
    tree.Expand(road, ExpandCode::Expand);
    tree.SelectItem(road);
    frame.show();
    keep(frame, QStringLiteral("treelist"));
}

// How the views are shown: in which language, light or dark, at which scale.
struct Look {
    desk::Language language;
    bool dark;
    int scale;
};

// The picture with its most frequent colours alone; the others become the nearest of them.
QImage inFewColours(const QImage& picture) {
    constexpr qsizetype kColours = 250;
    std::map<QRgb, std::size_t> counts;
    for (int y = 0; y < picture.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        for (int x = 0; x < picture.width(); ++x) {
            ++counts[line[x]];
        }
    }
    std::vector<std::pair<std::size_t, QRgb>> byCount;
    for (const auto& [colour, count] : counts) {
        byCount.emplace_back(count, colour);
    }
    std::sort(byCount.rbegin(), byCount.rend());
    // Colours that are seen as others go, so that rare ones keep their place.
    constexpr int kAlike = 10; // of 255, of red, green or blue
    QList<QRgb> table;
    for (const auto& [count, colour] : byCount) {
        const bool alike = std::any_of(table.begin(), table.end(), [colour = colour](QRgb other) {
            return std::abs(qRed(colour) - qRed(other)) < kAlike && std::abs(qGreen(colour) - qGreen(other)) < kAlike &&
                   std::abs(qBlue(colour) - qBlue(other)) < kAlike;
        });
        if (!alike && table.size() < kColours) {
            table.append(colour);
        }
    }
    return picture.convertToFormat(QImage::Format_Indexed8, table, Qt::ThresholdDither | Qt::AvoidDither);
}

// Keeps a picture in few bytes: the desk has few colours.
void keepSmall(QWidget& widget, const Look& look, const char* view) {
    for (int round = 0; round < 5; ++round) {
        QApplication::processEvents();
    }
    const QString name =
        QStringLiteral("desk/%1_%2_%3%4.png")
            .arg(QLatin1String(view),
                 look.language == desk::Language::Japanese ? QStringLiteral("ja") : QStringLiteral("en"),
                 look.dark ? QStringLiteral("dark") : QStringLiteral("light"),
                 look.scale == 2 ? QStringLiteral("_2x") : QString());
    const QString path = output.filePath(name);
    if (!inFewColours(widget.grab().toImage().convertToFormat(QImage::Format_RGB32)).save(path, "PNG", 0)) {
        std::fprintf(stderr, "fenmark_pictures: %s: cannot be written\n", qPrintable(path));
        failed = true;
    }
}

QPalette darkPalette() {
    QPalette dark(QColor(0x35, 0x38, 0x3c), QColor(0x2a, 0x2d, 0x31));
    dark.setColor(QPalette::Base, QColor(0x1e, 0x20, 0x23));
    dark.setColor(QPalette::AlternateBase, QColor(0x26, 0x29, 0x2d));
    dark.setColor(QPalette::Highlight, QColor(0x2f, 0x6f, 0xb5));
    dark.setColor(QPalette::HighlightedText, Qt::white);
    dark.setColor(QPalette::PlaceholderText, QColor(0x9a, 0xa3, 0xab));
    return dark;
}

// A lot measured corner by corner, with its area table, as the mouse would do it.
void measureLot(desk::MainWindow& window) {
    const drawing::Drawing& drawing = window.session().drawing();
    selectNamed(window, "田中403");
    const std::size_t lot = window.plan().selected()->index;
    window.dock(kCommandDock).hide();
    window.workbench().startMeasuring(desk::MeasureMode::Area);
    for (int round = 0; round < 5; ++round) { // until the panel has its height
        QApplication::processEvents();
    }
    window.plan().fitSelected();
    window.plan().select(std::nullopt);
    for (const host::MdGePoint3d& corner : drawing.entity(lot).vertices) {
        window.workbench().measuring().press(window.plan().view().toPixel(corner.x, corner.y));
    }
    window.workbench().measuring().key(Qt::Key_Return);
}

// The views of a day's work, at the size of a small screen.
void showDay(const QDir& examples, const std::vector<std::string>& module, const Look& look) {
    const auto open = [&](const char* file) {
        auto window = std::make_unique<desk::MainWindow>(desk::WindowOptions{look.language, false});
        window->loadModule(module);
        window->resize(1024, 740); // 768 without the frame
        window->show();
        const QTemporaryDir folder;
        const QString copy = folder.filePath(QLatin1String(file));
        QFile::copy(examples.filePath(QLatin1String(file)), copy);
        const Script script(
            {[](QWidget& dialog) { click(dialog, "id1"); }, [](QWidget& dialog) { click(dialog, "id1"); }});
        window->openFile(copy);
        window->plan().fitAll();
        return window;
    };
    {
        const auto window = open("cadastral.sim");
        window->legend().showOnly(desk::FigureStyle::Lot);
        window->plan().selectAllShown();
        window->legend().showAll();
        keepSmall(*window, look, "lots");
        measureLot(*window);
        keepSmall(*window, look, "measure");
        window->workbench().endMeasuring();
        selectNamed(*window, "田中403");
        window->dock(QStringLiteral("lotDock")).show();
        window->dock(QStringLiteral("lotDock")).raise();
        for (int round = 0; round < 5; ++round) { // until the panel has its height
            QApplication::processEvents();
        }
        window->plan().fitSelected();
        keepSmall(*window, look, "lot");
    }
    const auto window = open("road.sim");
    window->plan().select(desk::PlanObject{desk::PlanObject::Kind::Alignment, 0, 2});
    keepSmall(*window, look, "road");
    window->session().addLayer("境界");
    window->session().setLayerColour(0, drawing::Colour{0x8e, 0x24, 0xaa});
    window->session().setLayerColour(1, drawing::Colour{0x2e, 0x7d, 0x32});
    window->undo();
    window->redo(); // so that the panels show the layers
    window->plan().select(std::nullopt);
    keepSmall(*window, look, "layers");
    for (int step = 0; step < 3; ++step) {
        window->undo();
    }
    // The command line goes, so that the sections have the width of the plan.
    window->plan().select(desk::PlanObject{desk::PlanObject::Kind::Alignment, 0, 2});
    window->dock(kCommandDock).hide();
    for (const char* view : {"profile", "crossSection"}) {
        QDockWidget& dock = window->dock(QLatin1String(view) + QStringLiteral("Dock"));
        dock.show();
        dock.raise();
        keepSmall(*window, look, view);
        dock.hide();
    }
    window->workbench().beforePaper = [&](desk::PaperDialog& dialog) {
        dialog.show();
        keepSmall(dialog, look, "paper");
        return false;
    };
    window->workbench().showPaper(desk::PaperKind::Along);
    {
        const Script script({[&](QWidget& dialog) {
            keepSmall(dialog, look, "keys");
            dialog.close();
        }});
        desk::showKeys(*window);
    }
    window->dock(kCommandDock).show();
    auto& find = *window->findChild<desk::FindPanel*>();
    window->dock(kFindDock).show();
    find.edit()->setText(QStringLiteral("No.2"));
    keepSmall(*window, look, "find");
}

int run(const QDir& examples, const std::vector<std::string>& module) {
    const QTemporaryDir folder; // the imports write their logs beside their files
    for (const char* name : {"road.sim", "cadastral.sim"}) {
        QFile::copy(examples.filePath(QLatin1String(name)), folder.filePath(QLatin1String(name)));
    }
    {
        desk::MainWindow window({desk::Language::Japanese, false});
        if (!window.loadModule(module)) {
            std::fputs("fenmark_pictures: the module cannot be loaded\n", stderr);
            return 1;
        }
        window.resize(1400, 900); // more than the screen without a display has
        window.show();
        importRoad(window, folder.filePath(QStringLiteral("road.sim")));
        window.plan().select(desk::PlanObject{desk::PlanObject::Kind::Alignment, 0, 2});
        window.plan().fitAll();
        keep(window, QStringLiteral("desk"));
        window.session().newDrawing();
    }
    {
        desk::MainWindow window({desk::Language::English, false});
        window.loadModule(module);
        window.resize(1400, 900); // more than the screen without a display has
        window.show();
        const Script script(
            {[](QWidget& dialog) { click(dialog, "id1"); }, [](QWidget& dialog) { click(dialog, "id1"); }});
        window.openFile(folder.filePath(QStringLiteral("cadastral.sim")));
        selectNamed(window, "田中403");
        window.plan().fitAll();
        keep(window, QStringLiteral("desk_en"));
    }
    showAlignmentSelection();
    showProgress();
    showTreeList();
    return failed ? 1 : 0;
}

int runDesk(const QDir& examples, const std::vector<std::string>& module, int scale) {
    const QPalette light = QApplication::palette();
    QDir().mkpath(output.filePath(QStringLiteral("desk")));
    for (const bool dark : {false, true}) {
        QApplication::setPalette(dark ? darkPalette() : light);
        for (const desk::Language language : {desk::Language::Japanese, desk::Language::English}) {
            showDay(examples, module, {language, dark, scale});
        }
    }
    return failed ? 1 : 0;
}

} // namespace

int main(int argc, char** argv) {
    const std::string_view what = argc > 3 ? argv[3] : "";
    const int scale = what.ends_with('2') ? 2 : 1;
    const bool desk = what == "desk" || what == "desk2";
    if (argc < 3 || argc > 4 || (argc == 4 && !desk)) {
        std::fputs("usage: fenmark_pictures EXAMPLES OUTPUT [desk|desk2]\n", stderr);
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_SCALE_FACTOR", scale == 2 ? "2" : "1");
    int toolkitArgc = 1;
    QApplication application(toolkitArgc, argv);
    QApplication::setApplicationName(QStringLiteral("fenmark-pictures"));
    fenmark::desk::useJapaneseFonts();
    output = QDir(QString::fromLocal8Bit(argv[2]));
    const QDir examples(QString::fromLocal8Bit(argv[1]));
    const std::vector<std::string> module =
        fenmark::desk::modulePaths(QApplication::applicationDirPath().toStdString());
    return desk ? runDesk(examples, module, scale) : run(examples, module);
}
