// Draws the pictures of the documentation: every dialog and the desktop program with the examples. Not installed.
//
// Usage: fenmark_pictures EXAMPLES OUTPUT, two folders. The dialogs are the real ones, met on the way through an import.
#include "desk/window/desk.h"
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

#include <cstdio>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace fenmark;

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

// Keeps a picture in few bytes: the desk has few colours.
void keepSmall(QWidget& widget, const QString& name) {
    for (int round = 0; round < 5; ++round) {
        QApplication::processEvents();
    }
    const QString path = output.filePath(name + QStringLiteral(".png"));
    const QImage image = widget.grab().toImage().convertToFormat(QImage::Format_Indexed8, Qt::AvoidDither);
    if (!image.save(path, "PNG", 0)) {
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

// The desk on a small screen, light and dark, in both languages: a selected alignment, and several selected lots.
void showDesks(const std::vector<std::string>& module, const QTemporaryDir& folder) {
    const QPalette light = QApplication::palette();
    QDir().mkpath(output.filePath(QStringLiteral("desk")));
    for (const bool dark : {false, true}) {
        QApplication::setPalette(dark ? darkPalette() : light);
        for (const auto& [language, name] :
             {std::pair(desk::Language::Japanese, "ja"), std::pair(desk::Language::English, "en")}) {
            desk::MainWindow window({language, false});
            window.loadModule(module);
            window.questions().again = [](QWidget*) { return desk::Again::Add; };
            window.resize(1024, 768);
            window.show();
            QApplication::processEvents();
            const Script script(
                {[](QWidget& dialog) { click(dialog, "id1"); }, [](QWidget& dialog) { click(dialog, "id1"); }});
            const bool lots = language == desk::Language::English;
            window.openFile(folder.filePath(lots ? QStringLiteral("cadastral.sim") : QStringLiteral("road.sim")));
            window.plan().fitAll();
            if (lots) {
                window.legend().showOnly(desk::FigureStyle::Lot);
                window.plan().selectAllShown();
                window.legend().showAll();
            } else {
                window.plan().select(desk::PlanObject{desk::PlanObject::Kind::Alignment, 0, 2});
            }
            keepSmall(window, QStringLiteral("desk/%1_%2")
                                  .arg(QLatin1String(name), dark ? QStringLiteral("dark") : QStringLiteral("light")));
        }
    }
    QApplication::setPalette(light);
}

// A lot measured corner by corner, with its area table, as the mouse would do it.
void measureLot(desk::MainWindow& window) {
    const drawing::Drawing& drawing = window.session().drawing();
    selectNamed(window, "田中403");
    window.plan().fitSelected();
    const std::size_t lot = window.plan().selected()->index;
    window.plan().select(std::nullopt);
    window.workbench().startMeasuring(desk::MeasureMode::Area);
    for (int round = 0; round < 3; ++round) {
        QApplication::processEvents();
    }
    for (const host::MdGePoint3d& corner : drawing.entity(lot).vertices) {
        window.workbench().measuring().press(window.plan().view().toPixel(corner.x, corner.y));
    }
    window.workbench().measuring().key(Qt::Key_Return);
}

// The views of a day's work, at the size of a small screen.
void showDay(const QDir& examples, const std::vector<std::string>& module, desk::Language language,
             const QString& suffix) {
    const auto open = [&](const char* file) {
        auto window = std::make_unique<desk::MainWindow>(desk::WindowOptions{language, false});
        window->loadModule(module);
        window->resize(1024, 740); // 768 without the frame
        window->show();
        const QTemporaryDir folder;
        const QString copy = folder.filePath(QLatin1String(file));
        QFile::copy(examples.filePath(QLatin1String(file)), copy);
        const Script script(
            {[](QWidget& dialog) { click(dialog, "id1"); }, [](QWidget& dialog) { click(dialog, "id1"); }});
        window->openFile(copy);
        return window;
    };
    const auto name = [&suffix](const char* view) { return QStringLiteral("desk/") + QLatin1String(view) + suffix; };
    {
        const auto window = open("cadastral.sim");
        measureLot(*window);
        keepSmall(*window, name("measure"));
        window->workbench().endMeasuring();
        selectNamed(*window, "田中403");
        window->dock(QStringLiteral("lotDock")).show();
        window->dock(QStringLiteral("lotDock")).raise();
        keepSmall(*window, name("lot"));
    }
    const auto window = open("road.sim");
    window->plan().select(desk::PlanObject{desk::PlanObject::Kind::Alignment, 0, 2});
    for (const char* view : {"profile", "crossSection"}) {
        QDockWidget& dock = window->dock(QLatin1String(view) + QStringLiteral("Dock"));
        dock.show();
        dock.raise();
        window->resizeDocks({&dock}, {380}, Qt::Vertical);
        keepSmall(*window, name(view));
    }
    window->workbench().beforePaper = [&](desk::PaperDialog& dialog) {
        dialog.show();
        keepSmall(dialog, name("paper"));
        return false;
    };
    window->workbench().showPaper(desk::PaperKind::Along);
}

int run(const QDir& examples) {
    const QTemporaryDir folder; // the imports write their logs beside their files
    for (const char* name : {"road.sim", "cadastral.sim"}) {
        QFile::copy(examples.filePath(QLatin1String(name)), folder.filePath(QLatin1String(name)));
    }
    const std::vector<std::string> module = desk::modulePaths(QApplication::applicationDirPath().toStdString());
    {
        desk::MainWindow window({desk::Language::Japanese, false});
        if (!window.loadModule(module)) {
            std::fputs("fenmark_pictures: the module cannot be loaded\n", stderr);
            return 1;
        }
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
        window.show();
        const Script script(
            {[](QWidget& dialog) { click(dialog, "id1"); }, [](QWidget& dialog) { click(dialog, "id1"); }});
        window.openFile(folder.filePath(QStringLiteral("cadastral.sim")));
        selectNamed(window, "田中403");
        window.plan().fitAll();
        keep(window, QStringLiteral("desk_en"));
    }
    showDesks(module, folder);
    const QPalette light = QApplication::palette();
    for (const bool dark : {false, true}) {
        QApplication::setPalette(dark ? darkPalette() : light);
        const QString shade = dark ? QStringLiteral("_dark") : QString();
        showDay(examples, module, desk::Language::Japanese, QStringLiteral("_ja") + shade);
        showDay(examples, module, desk::Language::English, QStringLiteral("_en") + shade);
    }
    QApplication::setPalette(light);
    showAlignmentSelection();
    showProgress();
    showTreeList();
    return failed ? 1 : 0;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: fenmark_pictures EXAMPLES OUTPUT\n", stderr);
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    int toolkitArgc = 1;
    QApplication application(toolkitArgc, argv);
    QApplication::setApplicationName(QStringLiteral("fenmark-pictures"));
    desk::useJapaneseFonts();
    output = QDir(QString::fromLocal8Bit(argv[2]));
    return run(QDir(QString::fromLocal8Bit(argv[1])));
}
