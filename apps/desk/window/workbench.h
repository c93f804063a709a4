// What a day's work needs beside the plan: measuring, area tables, sections, paper, backgrounds. The main window makes
// it, and informs it of the drawing and the selection.
#pragma once

#include "desk/background/background.h"
#include "desk/language/work_texts.h"
#include "desk/measure/measure_tool.h"
#include "desk/paper/paper_dialog.h"
#include "desk/sections/section_model.h"
#include "desk/sections/section_view.h"
#include "desk/window/section_panel.h"
#include "desk/window/sheet_panel.h"

#include <QAction>
#include <QDockWidget>
#include <QMenu>
#include <QObject>

#include <functional>
#include <set>
#include <utility>
#include <vector>

namespace fenmark::desk {

class MainWindow;

class Workbench : public QObject {
    Q_OBJECT

  public:
    explicit Workbench(MainWindow& window);
    ~Workbench() override;

    void makeDocks(QDockWidget* beside); // in tabs with that one
    void makeMenus();

    void drawingReplaced(); // another one: with its texts and backgrounds
    void drawingChanged();
    void selectionChanged();
    void retranslate();
    // Panes that take the focus in turn.
    std::vector<QWidget*> panes() const;

    MeasureTool& measuring() { return measure_; }
    bool isMeasuring() const;
    void startMeasuring(MeasureMode mode);
    void endMeasuring();
    SheetPanel& measurePanel() { return *measurePanel_; }
    SheetPanel& lotPanel() { return *lotPanel_; }
    ProfileView& profile() { return *profile_; }
    CrossSectionView& crossSections() { return *crossSections_; }
    SectionPanel& profilePanel() { return *profilePanel_; }

    // The texts that the drawing keeps: title block and backgrounds.
    const drawing::DrawingTexts& texts() const { return keptTexts_; }
    bool hasChanges() const { return keptTexts_ != savedTexts_; }
    // What was changed here since they were read or saved; to be saved with the drawing.
    drawing::TextChanges textChanges() const { return {savedTexts_, keptTexts_}; }
    void noteSaved() { savedTexts_ = keptTexts_; }
    // Takes them from a copy of the drawing.
    void recoverTexts(const std::string& copy);

    // Called with the dialog before it is shown; tests act on it and answer false, and it is not shown.
    std::function<bool(PaperDialog& dialog)> beforePaper;
    void showPaper(PaperKind kind);

    const Background& background() const { return background_; }
    // Adds a file or a folder of tiles; says what came of it. False if it cannot be shown.
    bool addBackground(const QString& path);
    void removeBackgrounds();
    // A folder, for tests to answer by themselves.
    std::function<QString(QWidget* parent, const QString& title, const QString& folder)> askFolder;
    QAction* action(WorkText text) const;

  private:
    QAction* addAction(QMenu* menu, WorkText text, const QKeySequence& keys, std::function<void()> act);
    QMenu* addMenu(QMenu* into, WorkText text); // into the menu bar for null
    void makePaperMenu();
    void makeBackgroundMenu();
    void readBackgrounds();
    void showBackground();
    QString reasonOf(const BackgroundRead& read) const;
    void makeSectionDocks();
    void makeSectionMenu();
    void showSections();
    // Selects what stands at a place of a section.
    void choosePlace(std::size_t alignment, double station, double offset, double height, FigureStyle style);
    // A panel that is shown for the first time gets that part of the window's height, so that its contents can be read.
    void growWhenShown(QDockWidget& dock, double part);
    QDockWidget* addDock(Text text, QWidget* widget, Qt::DockWidgetArea area, const char* name);
    void makeMeasureMenu();
    void makeMeasureTools();
    void showMeasurement();
    void showLot();
    void applySnaps();

    MainWindow& window_;
    MeasureTool measure_;
    SheetPanel* measurePanel_ = nullptr;
    SheetPanel* lotPanel_ = nullptr;
    SectionModel sections_;
    drawing::DrawingTexts keptTexts_;
    drawing::DrawingTexts savedTexts_;
    Background background_;
    bool backgroundShown_ = true;
    int backgroundStrength_ = 50; // percent
    int zone_ = -1;               // that the backgrounds were read for
    std::set<QString> chosen_;    // backgrounds that were added by hand to this drawing
    ProfileView* profile_ = nullptr;
    CrossSectionView* crossSections_ = nullptr;
    SectionPanel* profilePanel_ = nullptr;
    SectionPanel* crossPanel_ = nullptr;
    std::vector<std::pair<QAction*, WorkText>> actions_;
    std::vector<std::pair<QMenu*, WorkText>> menus_;
    std::vector<QAction*> strengths_;
    std::vector<std::pair<QDockWidget*, WorkText>> sectionDocks_;
};

} // namespace fenmark::desk
