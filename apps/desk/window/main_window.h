// The main window: the embedded host with a face.
#pragma once

#include "desk/language/texts.h"
#include "desk/plan/plan_view.h"
#include "desk/session/desk_session.h"
#include "desk/window/command_panel.h"
#include "desk/window/find_panel.h"
#include "desk/window/imports_box.h"
#include "desk/window/legend_panel.h"
#include "desk/window/log_panel.h"
#include "desk/window/panels.h"
#include "desk/window/preview_panel.h"
#include "desk/window/recovery.h"
#include "desk/window/selection_table.h"

#include <QAction>
#include <QDockWidget>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QPushButton>
#include <QToolBar>
#include <QTranslator>

#include <functional>
#include <utility>
#include <vector>

namespace fenmark::desk {

inline constexpr qsizetype kRecentFiles = 10; // in the menu

// What a first window takes of a screen that offers so many pixels: comfortable, and never more than there is.
QSize firstWindowSize(const QSize& screen);

struct WindowOptions {
    Language language = Language::Japanese;
    bool keepSettings = true; // place of the window, recent files; false leaves no trace of this run
};

// The questions that other windows answer; tests answer by themselves.
// What to do with a file of which the drawing has objects already.
enum class Again { Replace, Add, Cancel };

struct FileQuestions {
    // Paths, empty if cancelled.
    std::function<QString(QWidget* parent, const QString& title, const QString& folder, const QString& filter)> open;
    std::function<QString(QWidget* parent, const QString& title, const QString& proposal, const QString& filter)> save;
    std::function<QString(QWidget* parent, const QString& title, const QString& label)> name;
    // Empty for the window's own question.
    std::function<Again(QWidget* parent)> again = nullptr;
    // A name in the place of another one; empty if cancelled.
    std::function<QString(QWidget* parent, const QString& title, const QString& label, const QString& now)> newName;
    // No valid colour if cancelled.
    std::function<QColor(QWidget* parent, const QString& title, const QColor& now)> colour;
};

class Workbench;

class MainWindow : public QMainWindow {
    Q_OBJECT

  public:
    explicit MainWindow(const WindowOptions& options, QWidget* parent = nullptr);
    ~MainWindow() override;

    DeskSession& session() { return session_; }
    PlanView& plan() { return *plan_; }
    CommandPanel& command() { return *command_; }
    SitesPanel& sites() { return *sites_; }
    LayersPanel& layers() { return *layers_; }
    PropertiesPanel& properties() { return *properties_; }
    LogPanel& log() { return *log_; }
    ImportsBox& imports() { return *imports_; }
    SourcePanel& source() { return *source_; }
    LegendPanel& legend() { return *legend_; }
    SelectionTable& table() { return *table_; }
    PreviewPanel& preview() { return *preview_; }
    Recovery& recovery() { return recovery_; }
    // Asks about drawings that a run before this one left unsaved.
    void offerRecovery();
    // What a run begins with once its window is there: that question, and only behind its answer the file, if one is
    // named. The answer would otherwise replace what the file brought.
    void begin(const QString& file);
    // Keeps a copy of what is not saved, and closes without a question, as when the system ends the program.
    void closeAtOnce();
    FindPanel& find() { return *find_; }
    Workbench& workbench() { return *workbench_; }
    const Texts& texts() const { return texts_; }
    FileQuestions& questions() { return questions_; }
    QAction* action(Text text) const;
    QDockWidget& dock(const QString& objectName) { return *findChild<QDockWidget*>(objectName); }

    // False if the module could not be loaded; the command line says why.
    bool loadModule(const std::vector<std::string>& paths);
    void setLanguage(Language language);

    // Opens a drawing, or starts the command with a SIMA file. False if the file is neither or cannot be opened, which
    // the user was told.
    bool openFile(const QString& path);
    // Shows a drawing without asking or telling anybody.
    Outcome showDrawing(const std::string& path);

    QString positionText() const { return position_->text(); }
    QString stationText() const { return station_->text(); }
    // Names of files in the menu of recent ones, the last used first.
    QStringList recentFiles() const { return recentFiles_; }

  public slots:
    void runCommand(const QString& command);
    void newDrawing();
    void chooseDrawing();
    bool saveDrawing();
    bool saveDrawingAs();
    void exportDrawing();
    void importFile();
    void undo();
    void redo();
    void addLayer();
    void renameLayer(std::size_t layer);
    void colourLayer(std::size_t layer);
    void removeLayer(std::size_t layer); // or says why it stays
    void startFind();
    // Shows what an import made of a record of its file, and the line of the file.
    void showRecord(qint64 number);

  protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    friend class Workbench; // the parts of a day's work, with panels and menus of their own

    // Making (main_window.cpp).
    QAction* addAction(QMenu* menu, Text text, const QKeySequence& keys, std::function<void()> act);
    void makeMenus();
    void makeSettingsMenu();
    void makeToolBar();
    void makePanels();
    void makeStatusBar();
    void makeViewHint();
    void useLanguage();
    void retranslate();
    void paintIcons();
    void readSettings();
    void writeSettings() const;

    // Menus at the pointer (main_window_menus.cpp).
    void makeContextMenus();
    void showPlanMenu(const QPoint& at);
    void showSitesMenu(const QPoint& at);
    void showLayersMenu(const QPoint& at);
    void showLegendMenu(const QPoint& at);
    QMenu* newMenu(const char* name);
    QAction* addEntry(QMenu* menu, Text text, std::function<void()> act);
    void addObjectEntries(QMenu* menu, const PlanObject& object);
    void selectKindOf(const PlanObject& object);

    // Files (main_window_files.cpp).
    bool openDrawing(const QString& path);
    bool saveTo(const QString& chosen);
    QString askTarget(const QString& title, const QString& proposal, const QString& filter,
                      const std::function<QString(const QString& path)>& completed);
    bool mayLoseDrawing(); // asks if there is something to lose
    // False, which the user was told, for a file that was imported.
    bool mayReplace(const QString& path);
    void rememberFile(const QString& path);
    void fillRecentMenu();
    void openDropped(const QStringList& paths);
    void tell(const QString& message); // a message box with one button
    bool hasChanges() const;           // of the drawing, or of the texts kept with it
    QString fileName() const;

    // The drawing and its views (main_window_drawing.cpp).
    void runModuleCommand(const QString& command, const QString& pendingFile = {});
    void startImport(const QString& pendingFile);
    void releaseDrawing(); // before it goes
    void drawingReplaced();
    void drawingStays();                       // it was released for one that could not be opened
    void showObject(const PlanObject& object); // selected, in the middle, and its layer shown
    void showLastLog();
    // Which import the lines of the log belong to (main_window_imports.cpp).
    const drawing::Import* shownImport() const;
    void showLogOf(const drawing::Import* import);
    Again askAgain(const drawing::Import& earlier);
    void settleAgain(const CommandRun& run);
    void sayPassedOver(const std::string& passedOver);
    void sayDoubts(const std::string& doubts);
    bool hasChangedSince(const drawing::Import& import, const std::string& file);
    void showError(int step);
    // Shows what came since: at once where everything was in view, by a hint where something was being looked at.
    void showNewObjects(const drawing::Extent& added, bool sawEverything);
    void tellBrokenOff(const std::string& reason, std::size_t added);
    QDockWidget* dock(Text text) const;
    void drawingChanged();
    void selectionChanged();
    void pointerMoved(double x, double y);
    void applyLook();
    void updateTitle();
    void updateActions();
    void sayNotes(const host::embedded::LayoutNotes& notes);
    void sayDrawingNotes(); // on the one that was opened
    void focusNextPane(int step);
    void setZone(int zone);
    void setEncoding(const QString& setting);
    QString stepName(StepKind kind) const;
    // Nothing that a handler raises may pass through the event loop.
    void guarded(const std::function<void()>& act);

    Texts texts_;
    WindowOptions options_;
    DeskSession session_;
    FileQuestions questions_;
    PlanView* plan_;
    CommandPanel* command_ = nullptr;
    SitesPanel* sites_ = nullptr;
    LayersPanel* layers_ = nullptr;
    PropertiesPanel* properties_ = nullptr;
    LogPanel* log_ = nullptr;
    ImportsBox* imports_ = nullptr;
    SourcePanel* source_ = nullptr;
    LegendPanel* legend_ = nullptr;
    SelectionTable* table_ = nullptr;
    PreviewPanel* preview_ = nullptr;
    Recovery recovery_;
    bool closingAtOnce_ = false;
    FindPanel* find_ = nullptr;
    Workbench* workbench_ = nullptr;
    QPushButton* viewHint_ = nullptr;
    QTranslator toolkitTexts_;
    QLabel* position_ = nullptr;
    QLabel* station_ = nullptr;
    QLabel* counts_ = nullptr;
    QToolBar* toolBar_ = nullptr;
    QMenu* recentMenu_ = nullptr;
    std::vector<std::pair<QAction*, Text>> actions_;
    std::vector<std::pair<QMenu*, Text>> menus_;
    std::vector<std::pair<QDockWidget*, Text>> docks_;
    std::vector<std::pair<QAction*, int>> zones_;
    QStringList recentFiles_;
    QString lastFolder_;
};

} // namespace fenmark::desk
