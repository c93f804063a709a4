// The window's parts and their words.
#include "desk/window/main_window.h"

#include "desk/window/keys_dialog.h"

#include "desk/window/icons.h"
#include "desk/window/properties.h"
#include "desk/window/workbench.h"

#include <QActionGroup>
#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QFontDatabase>
#include <QInputDialog>
#include <QLibraryInfo>
#include <QLocale>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QSplitter>
#include <QStatusBar>
#include <QTabBar>

namespace fenmark::desk {

using host::embedded::PositiveRadius;

namespace {

constexpr int kZones = 19;

FileQuestions realQuestions() {
    return {[](QWidget* parent, const QString& title, const QString& folder, const QString& filter) {
                return QFileDialog::getOpenFileName(parent, title, folder, filter);
            },
            [](QWidget* parent, const QString& title, const QString& proposal, const QString& filter) {
                return QFileDialog::getSaveFileName(parent, title, proposal, filter);
            },
            [](QWidget* parent, const QString& title, const QString& label) {
                return QInputDialog::getText(parent, title, label);
            },
            nullptr,
            [](QWidget* parent, const QString& title, const QString& label, const QString& now) {
                return QInputDialog::getText(parent, title, label, QLineEdit::Normal, now);
            },
            [](QWidget* parent, const QString& title, const QColor& now) {
                // The toolkit's own dialog speaks the language of the window.
                return QColorDialog::getColor(now, parent, title, QColorDialog::DontUseNativeDialog);
            }};
}

// Tabs of panels have their whole names, with arrows where these are too many.
class WholeTabs : public QObject {
  public:
    using QObject::QObject;
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::ChildPolished) {
            if (auto* tabs = qobject_cast<QTabBar*>(static_cast<QChildEvent*>(event)->child())) {
                tabs->setElideMode(Qt::ElideNone);
                tabs->setUsesScrollButtons(true);
            }
        }
        return QObject::eventFilter(watched, event);
    }
};

} // namespace

QSize firstWindowSize(const QSize& screen) {
    constexpr QSize kComfortable(1400, 900);
    constexpr QSize kFrame(8, 40); // of the window: borders and title bar
    return kComfortable.boundedTo(screen - kFrame);
}

MainWindow::MainWindow(const WindowOptions& options, QWidget* parent)
    : QMainWindow(parent), texts_(options.language), options_(options), questions_(realQuestions()),
      plan_(new PlanView(this)) {
    setObjectName(QStringLiteral("desk"));
    setProperty("messageCaption", QStringLiteral("Fenmark Desk")); // for boxes of modules that have none
    desk::useTheme(sideFor(palette().color(QPalette::Base)));
    setCentralWidget(plan_);
    setAcceptDrops(true);
    setDockNestingEnabled(true);
    installEventFilter(new WholeTabs(this));
    resize(firstWindowSize(screen()->availableSize()));
    makePanels();
    makeMenus();
    makeToolBar();
    makeStatusBar();
    makeViewHint();
    readSettings();
    useLanguage();
    paintIcons();

    session_.host().setMainWindow(static_cast<QWidget*>(this));
    session_.host().onMessageBox([this](const host::embedded::MessageBox& message) {
        QMessageBox box(QMessageBox::Warning, QString::fromStdString(message.caption),
                        QString::fromStdString(message.text), QMessageBox::NoButton, this);
        box.setTextFormat(Qt::PlainText);
        box.addButton(texts_(Text::OkButton), QMessageBox::AcceptRole);
        box.exec();
    });
    session_.modules().onLine(
        [this](const Worded& line) { command_->say(QString::fromStdString(line.in(texts_.language()))); });

    connect(plan_, &PlanView::selectionChanged, this, [this] { guarded([this] { selectionChanged(); }); });
    connect(plan_, &PlanView::pointerMoved, this, &MainWindow::pointerMoved);
    connect(plan_, &PlanView::pointerLeft, this, [this] {
        position_->clear();
        station_->clear();
    });
    connect(plan_, &PlanView::activated, this, [this] {
        dock(Text::PropertiesPanel)->show();
        properties_->setFocus();
    });
    plan_->setDescriber([this](const PlanObject& object) { return objectTitle(session_.drawing(), object, texts_); });
    drawingReplaced();
    recovery_.onKeep([this] { return workbench_->textChanges(); });
    recovery_.onFailure([this](const Outcome& why) {
        command_->say(texts_(Text::RecoverNotKept).arg(QString::fromStdString(why.in(texts_.language()))));
    });
    recovery_.start(session_, options_.keepSettings);
    plan_->setFocus();
}

MainWindow::~MainWindow() {
    releaseDrawing();
    session_.host().onMessageBox(nullptr);
    session_.host().setMainWindow(nullptr);
}

QAction* MainWindow::action(Text text) const {
    for (const auto& [action, own] : actions_) {
        if (own == text) {
            return action;
        }
    }
    return nullptr;
}

QDockWidget* MainWindow::dock(Text text) const {
    for (const auto& [dock, own] : docks_) {
        if (own == text) {
            return dock;
        }
    }
    return nullptr;
}

QAction* MainWindow::addAction(QMenu* menu, Text text, const QKeySequence& keys, std::function<void()> act) {
    auto* action = new QAction(this);
    action->setShortcut(keys);
    if (menu != nullptr) {
        menu->addAction(action);
    }
    if (act) {
        connect(action, &QAction::triggered, this, [this, act = std::move(act)] { guarded(act); });
    }
    actions_.emplace_back(action, text);
    return action;
}

void MainWindow::makeMenus() {
    auto addMenu = [this](Text text) {
        QMenu* menu = menuBar()->addMenu(QString());
        menus_.emplace_back(menu, text);
        return menu;
    };
    QMenu* file = addMenu(Text::FileMenu);
    addAction(file, Text::New, QKeySequence::New, [this] { newDrawing(); });
    addAction(file, Text::Open, QKeySequence::Open, [this] { chooseDrawing(); });
    recentMenu_ = file->addMenu(QString());
    menus_.emplace_back(recentMenu_, Text::OpenRecent);
    file->addSeparator();
    addAction(file, Text::Import, QKeySequence(Qt::CTRL | Qt::Key_I), [this] { importFile(); });
    file->addSeparator();
    addAction(file, Text::Save, QKeySequence::Save, [this] { saveDrawing(); });
    addAction(file, Text::SaveAs, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S), [this] { saveDrawingAs(); });
    addAction(file, Text::Export, QKeySequence(Qt::CTRL | Qt::Key_E), [this] { exportDrawing(); });
    file->addSeparator();
    addAction(file, Text::Quit, QKeySequence(Qt::CTRL | Qt::Key_Q), [this] { close(); });

    QMenu* edit = addMenu(Text::EditMenu);
    addAction(edit, Text::Undo, QKeySequence::Undo, [this] { undo(); });
    addAction(edit, Text::Redo, {}, [this] {
        redo();
    })->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_Y), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)});
    edit->addSeparator();
    addAction(edit, Text::Find, QKeySequence(Qt::CTRL | Qt::Key_F), [this] { startFind(); });
    addAction(edit, Text::NextError, QKeySequence(Qt::Key_F8), [this] { showError(1); });
    addAction(edit, Text::PreviousError, QKeySequence(Qt::SHIFT | Qt::Key_F8), [this] { showError(-1); });
    edit->addSeparator();
    addAction(edit, Text::AddLayer, QKeySequence(Qt::CTRL | Qt::Key_L), [this] { addLayer(); });
    addAction(edit, Text::SelectAll, {}, [this] { plan_->selectAllShown(); });
    addAction(edit, Text::ClearSelection, QKeySequence(Qt::CTRL | Qt::Key_D), [this] { plan_->select(std::nullopt); });

    QMenu* view = addMenu(Text::ViewMenu);
    addAction(view, Text::Fit, QKeySequence(Qt::CTRL | Qt::Key_0), [this] { plan_->fitAll(); });
    addAction(view, Text::FitSelection, QKeySequence(Qt::CTRL | Qt::Key_9), [this] { plan_->fitSelected(); });
    addAction(view, Text::ZoomIn, QKeySequence(Qt::CTRL | Qt::Key_Plus), [this] { plan_->zoomIn(); });
    addAction(view, Text::ZoomOut, QKeySequence(Qt::CTRL | Qt::Key_Minus), [this] { plan_->zoomOut(); });
    addAction(view, Text::ZoomWindow, QKeySequence(Qt::CTRL | Qt::Key_W), [this] { plan_->startZoomWindow(); });
    view->addSeparator();
    for (const Text text : {Text::ShowLabels, Text::ShowStations, Text::ShowGrid}) {
        QAction* shown = addAction(view, text, {}, [this] { applyLook(); });
        shown->setCheckable(true);
        shown->setChecked(true);
    }
    view->addSeparator();
    addAction(view, Text::ShowAll, {}, [this] { layers_->setAllShown(true); });
    addAction(view, Text::HideAll, {}, [this] { layers_->setAllShown(false); });
    view->addSeparator();
    for (const auto& [dock, text] : docks_) {
        view->addAction(dock->toggleViewAction());
    }
    view->addSeparator();
    addAction(view, Text::NextPane, QKeySequence(Qt::Key_F6), [this] { focusNextPane(1); });
    addAction(view, Text::PreviousPane, QKeySequence(Qt::SHIFT | Qt::Key_F6), [this] { focusNextPane(-1); });
    // Ctrl+Space switches input methods.
    addAction(view, Text::ToCommandLine, QKeySequence(Qt::CTRL | Qt::Key_K), [this] { command_->edit()->setFocus(); });

    workbench_->makeMenus();
    makeSettingsMenu();
    QMenu* help = addMenu(Text::HelpMenu);
    addAction(help, Text::Keys, QKeySequence(Qt::Key_F1), [this] { showKeys(*this); });
    addAction(help, Text::About, {},
              [this] { tell(QStringLiteral("Fenmark Desk " FENMARK_VERSION "\n\n") + texts_(Text::AboutText)); });
}

void MainWindow::makeSettingsMenu() {
    QMenu* settings = menuBar()->addMenu(QString());
    menus_.emplace_back(settings, Text::SettingsMenu);
    auto addChoices = [&](Text text) {
        QMenu* menu = settings->addMenu(QString());
        menus_.emplace_back(menu, text);
        return menu;
    };
    QMenu* zone = addChoices(Text::Zone);
    auto* zoneGroup = new QActionGroup(this);
    for (int number = 0; number <= kZones; ++number) {
        QAction* choice = zoneGroup->addAction(zone->addAction(QString()));
        choice->setCheckable(true);
        connect(choice, &QAction::triggered, this, [this, number] { guarded([this, number] { setZone(number); }); });
        zones_.emplace_back(choice, number);
    }
    QMenu* radius = addChoices(Text::PositiveRadius);
    auto* radiusGroup = new QActionGroup(this);
    for (const auto& [text, sense] :
         {std::pair(Text::RadiusAuto, PositiveRadius::Auto), std::pair(Text::RadiusLeft, PositiveRadius::Left),
          std::pair(Text::RadiusRight, PositiveRadius::Right)}) {
        QAction* choice =
            addAction(radius, text, {}, [this, sense = sense] { session_.host().setPositiveRadius(sense); });
        choice->setCheckable(true);
        choice->setChecked(sense == PositiveRadius::Auto);
        radiusGroup->addAction(choice);
    }
    addAction(settings, Text::PlanTangents, {}, [this] {
        session_.host().setPlanTangents(action(Text::PlanTangents)->isChecked());
    })->setCheckable(true);
    QMenu* encoding = addChoices(Text::EncodingMenu);
    auto* encodingGroup = new QActionGroup(this);
    for (const auto& [text, name] : {std::pair(Text::EncodingAuto, "auto"), std::pair(Text::EncodingCp932, "cp932"),
                                     std::pair(Text::EncodingUtf8, "utf-8")}) {
        QAction* choice = addAction(encoding, text, {}, [this, name = name] { setEncoding(QLatin1String(name)); });
        choice->setCheckable(true);
        choice->setData(QLatin1String(name));
        choice->setChecked(session_.encoding() == name);
        encodingGroup->addAction(choice);
    }
    QMenu* language = addChoices(Text::LanguageMenu);
    auto* languageGroup = new QActionGroup(this);
    for (const auto& [name, value] : {std::pair(QStringLiteral("日本語"), Language::Japanese),
                                      std::pair(QStringLiteral("English"), Language::English)}) {
        QAction* choice = languageGroup->addAction(language->addAction(name));
        choice->setCheckable(true);
        choice->setChecked(value == texts_.language());
        connect(choice, &QAction::triggered, this,
                [this, value = value] { guarded([this, value] { setLanguage(value); }); });
    }
}

void MainWindow::makeToolBar() {
    toolBar_ = addToolBar(QString());
    toolBar_->setObjectName(QStringLiteral("toolBar"));
    toolBar_->setMovable(false);
    toolBar_->setIconSize({20, 20});
    toolBar_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    for (const Text text : {Text::New, Text::Open, Text::Save}) {
        toolBar_->addAction(action(text));
    }
    toolBar_->addSeparator();
    toolBar_->addAction(action(Text::Import));
    for (const Text text : {Text::Undo, Text::Redo, Text::Find}) {
        toolBar_->addAction(action(text));
    }
    toolBar_->addSeparator();
    for (const Text text : {Text::Fit, Text::ZoomIn, Text::ZoomOut, Text::ZoomWindow}) {
        toolBar_->addAction(action(text));
    }
}

void MainWindow::paintIcons() {
    const QColor ink = palette().color(QPalette::ButtonText);
    for (const auto& [text, picture] :
         {std::pair(Text::New, Picture::New), std::pair(Text::Open, Picture::Open),
          std::pair(Text::Save, Picture::Save), std::pair(Text::Import, Picture::Import),
          std::pair(Text::Undo, Picture::Undo), std::pair(Text::Redo, Picture::Redo),
          std::pair(Text::Find, Picture::Find), std::pair(Text::Fit, Picture::Fit),
          std::pair(Text::ZoomIn, Picture::ZoomIn), std::pair(Text::ZoomOut, Picture::ZoomOut),
          std::pair(Text::ZoomWindow, Picture::ZoomWindow)}) {
        action(text)->setIcon(icon(picture, ink));
    }
    setWindowIcon(icon(Picture::Program, ink));
}

void MainWindow::makePanels() {
    auto addDock = [this](Text text, QWidget* widget, Qt::DockWidgetArea area) {
        auto* dock = new QDockWidget(this);
        dock->setObjectName(QStringLiteral("dock%1").arg(static_cast<int>(docks_.size())));
        dock->setWidget(widget);
        addDockWidget(area, dock);
        docks_.emplace_back(dock, text);
        return dock;
    };
    sites_ = new SitesPanel(texts_);
    layers_ = new LayersPanel(texts_);
    properties_ = new PropertiesPanel(texts_);
    command_ = new CommandPanel;
    log_ = new LogPanel;
    source_ = new SourcePanel;
    legend_ = new LegendPanel(texts_);
    find_ = new FindPanel(texts_);
    table_ = new SelectionTable(texts_);
    preview_ = new PreviewPanel(texts_);
    for (QWidget* panel :
         {static_cast<QWidget*>(log_), static_cast<QWidget*>(source_), static_cast<QWidget*>(preview_)}) {
        panel->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    }
    auto* logAndSource = new QSplitter(Qt::Vertical);
    imports_ = new ImportsBox(texts_);
    logAndSource->addWidget(imports_);
    logAndSource->addWidget(log_);
    logAndSource->addWidget(source_);
    source_->hide(); // until a line is chosen
    QDockWidget* sites = addDock(Text::SitesPanel, sites_, Qt::LeftDockWidgetArea);
    QDockWidget* layers = addDock(Text::LayersPanel, layers_, Qt::LeftDockWidgetArea);
    QDockWidget* legend = addDock(Text::LegendPanel, legend_, Qt::LeftDockWidgetArea);
    QDockWidget* find = addDock(Text::FindPanel, find_, Qt::RightDockWidgetArea);
    QDockWidget* properties = addDock(Text::PropertiesPanel, properties_, Qt::RightDockWidgetArea);
    QDockWidget* command = addDock(Text::CommandPanel, command_, Qt::BottomDockWidgetArea);
    QDockWidget* log = addDock(Text::LogPanel, logAndSource, Qt::BottomDockWidgetArea);
    QDockWidget* table = addDock(Text::TablePanel, table_, Qt::BottomDockWidgetArea);
    tabifyDockWidget(log, table);
    log->raise();
    table->hide(); // until several objects are selected
    QDockWidget* preview = addDock(Text::PreviewPanel, preview_, Qt::RightDockWidgetArea);
    preview->hide(); // while no file is looked at
    for (QWidget* side : {static_cast<QWidget*>(sites_), static_cast<QWidget*>(properties_)}) {
        side->setMinimumWidth(kLeastSideWidth);
    }
    setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
    setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
    resizeDocks({sites, properties}, {330, 300}, Qt::Horizontal);
    resizeDocks({sites, layers, legend}, {420, 120, 200}, Qt::Vertical);
    resizeDocks({find, properties}, {220, 520}, Qt::Vertical);
    find->hide(); // until it is asked for
    workbench_ = new Workbench(*this);
    workbench_->makeDocks(log);
    resizeDocks({command}, {150}, Qt::Vertical);
    resizeDocks({command, log}, {460, 400}, Qt::Horizontal);

    connect(sites_, &SitesPanel::chosen, this, [this](const PlanObject& object) { plan_->select(object, true); });
    connect(sites_, &SitesPanel::activatedObject, this, [this](const PlanObject& object) {
        plan_->select(object, true);
        plan_->fitSelected();
    });
    connect(layers_, &LayersPanel::renameAsked, this,
            [this](std::size_t layer) { guarded([this, layer] { renameLayer(layer); }); });
    connect(layers_, &LayersPanel::removalAsked, this,
            [this](std::size_t layer) { guarded([this, layer] { removeLayer(layer); }); });
    connect(layers_, &LayersPanel::shownChanged, this, [this] { guarded([this] { applyLook(); }); });
    connect(legend_, &LegendPanel::shownChanged, this, [this] { guarded([this] { applyLook(); }); });
    connect(table_, &SelectionTable::objectChosen, plan_, &PlanView::lookAt);
    session_.onPreview([this, preview](const std::string& path) {
        preview_->showFile(path, session_.encoding());
        preview->show();
    });
    makeContextMenus();
    connect(command_, &CommandPanel::entered, this, &MainWindow::runCommand);
    connect(command_, &CommandPanel::left, this, [this] { plan_->setFocus(); });
    connect(log_, &LogPanel::recordChosen, this, [this](qint64 number) { guarded([&] { showRecord(number); }); });
    connect(imports_, &ImportsBox::chosen, this, [this] { guarded([this] { showLogOf(shownImport()); }); });
    connect(find_, &FindPanel::objectChosen, this, [this](const PlanObject& object) { showObject(object); });
    connect(find_, &FindPanel::left, this, [this] {
        dock(Text::FindPanel)->hide();
        plan_->setFocus();
    });
}

void MainWindow::makeStatusBar() {
    position_ = new QLabel(this);
    station_ = new QLabel(this);
    counts_ = new QLabel(this);
    station_->setTextFormat(Qt::PlainText);
    position_->setObjectName(QStringLiteral("position"));
    station_->setObjectName(QStringLiteral("station"));
    position_->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("X -123456.789   Y -123456.789")) + 12);
    statusBar()->addWidget(position_);
    statusBar()->addWidget(station_, 1);
    statusBar()->addPermanentWidget(counts_);
}

void MainWindow::setLanguage(Language language) {
    texts_.setLanguage(language);
    useLanguage();
    drawingChanged();
    if (options_.keepSettings) {
        QSettings().setValue(QStringLiteral("language"), language == Language::Japanese ? "ja" : "en");
    }
}

void MainWindow::setEncoding(const QString& setting) {
    session_.setEncoding(setting.toStdString());
    if (options_.keepSettings) {
        QSettings().setValue(QStringLiteral("encoding"), setting);
    }
}

// The toolkit's own dialogs and buttons speak the window's language too.
void MainWindow::useLanguage() {
    QCoreApplication::removeTranslator(&toolkitTexts_);
    const QLocale locale(texts_.language() == Language::Japanese ? QLocale::Japanese : QLocale::English);
    if (toolkitTexts_.load(locale, QStringLiteral("qtbase"), QStringLiteral("_"),
                           QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(&toolkitTexts_);
    }
    retranslate();
}

// A button over the plan that leads to what an import made out of sight.
void MainWindow::makeViewHint() {
    viewHint_ = new QPushButton(plan_);
    viewHint_->setObjectName(QStringLiteral("viewHint"));
    viewHint_->hide();
    connect(viewHint_, &QPushButton::clicked, this, [this] {
        viewHint_->hide();
        plan_->fitAll();
        plan_->setFocus();
    });
    connect(plan_, &PlanView::viewChanged, viewHint_, &QWidget::hide);
}

void MainWindow::retranslate() {
    for (const auto& [action, text] : actions_) {
        action->setText(texts_(text));
        action->setIconText(withoutMnemonic(texts_(text)));
        action->setToolTip(action->shortcut().isEmpty()
                               ? action->iconText()
                               : QStringLiteral("%1 (%2)").arg(action->iconText(),
                                                               action->shortcut().toString(QKeySequence::NativeText)));
    }
    for (const auto& [text, shortText] :
         {std::pair(Text::Fit, Text::FitShort), std::pair(Text::Import, Text::ImportShort),
          std::pair(Text::ZoomWindow, Text::WindowShort)}) {
        action(text)->setIconText(texts_(shortText));
    }
    for (const auto& [menu, text] : menus_) {
        menu->setTitle(texts_(text));
    }
    for (const auto& [dock, text] : docks_) {
        dock->setWindowTitle(texts_(text));
    }
    for (const auto& [choice, number] : zones_) {
        choice->setText(number == 0 ? texts_(Text::NoZone) : texts_(Text::ZoneNumber).arg(number));
    }
    toolBar_->setWindowTitle(texts_(Text::Toolbar));
    command_->retranslate(texts_);
    plan_->setAccessibleName(texts_(Text::PlanName));
    plan_->setHint(texts_(Text::DropHint), texts_(Text::DropHintKeys));
    plan_->setLeftOutTexts(texts_(Text::NamesLeftOut), texts_(Text::LinesLeftOut));
    table_->retranslate();
    preview_->setAccessibleName(texts_(Text::PreviewPanel));
    sites_->setAccessibleName(texts_(Text::SitesPanel));
    layers_->setAccessibleName(texts_(Text::LayersPanel));
    properties_->setAccessibleName(texts_(Text::PropertiesPanel));
    legend_->setAccessibleName(texts_(Text::LegendPanel));
    log_->setAccessibleName(texts_(Text::LogPanel));
    imports_->setAccessibleName(texts_(Text::ImportsBox));
    source_->setAccessibleName(texts_(Text::SourcePanel));
    find_->retranslate();
    workbench_->retranslate();
    log_->setPlaceholderText(texts_(Text::NoLog));
    fillRecentMenu();
}

void MainWindow::readSettings() {
    if (!options_.keepSettings) {
        return;
    }
    const QSettings settings;
    recentFiles_ = settings.value(QStringLiteral("recentFiles")).toStringList().mid(0, kRecentFiles);
    lastFolder_ = settings.value(QStringLiteral("folder")).toString();
    for (const Text text : {Text::EncodingAuto, Text::EncodingCp932, Text::EncodingUtf8}) {
        if (action(text)->data() == settings.value(QStringLiteral("encoding"))) {
            action(text)->setChecked(true);
            session_.setEncoding(action(text)->data().toString().toStdString());
        }
    }
    restoreGeometry(settings.value(QStringLiteral("geometry")).toByteArray());
    restoreState(settings.value(QStringLiteral("panels")).toByteArray());
}

void MainWindow::writeSettings() const {
    if (!options_.keepSettings) {
        return;
    }
    QSettings settings;
    settings.setValue(QStringLiteral("geometry"), saveGeometry());
    settings.setValue(QStringLiteral("panels"), saveState());
}

void MainWindow::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange && toolBar_ != nullptr) {
        desk::useTheme(sideFor(palette().color(QPalette::Base)));
        paintIcons();
        if (!session_.isRunning()) {
            drawingChanged(); // samples and rows have colours of the theme
        }
    }
    QMainWindow::changeEvent(event);
}

} // namespace fenmark::desk
