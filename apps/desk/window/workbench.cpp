// What a day's work needs beside the plan: the parts, and measuring.
#include "desk/window/workbench.h"

#include "desk/measure/lot_sheet.h"
#include "desk/window/main_window.h"

#include <QActionGroup>
#include <QMenuBar>
#include <QTimer>
#include <QToolButton>

#include <array>

namespace fenmark::desk {

namespace {

struct ModeTexts {
    MeasureMode mode;
    Text text;
    Text shortText;
    int key;
};
constexpr std::array kModes{ModeTexts{MeasureMode::Distance, Text::MeasureDistance, Text::MeasureShort, Qt::Key_1},
                            ModeTexts{MeasureMode::Area, Text::MeasureArea, Text::MeasureAreaShort, Qt::Key_2},
                            ModeTexts{MeasureMode::Place, Text::MeasurePlace, Text::MeasurePlaceShort, Qt::Key_3}};

constexpr std::array kSnaps{
    std::pair(Text::SnapPoint, &SnapChoice::points), std::pair(Text::SnapEnd, &SnapChoice::ends),
    std::pair(Text::SnapVertex, &SnapChoice::vertices), std::pair(Text::SnapCrossing, &SnapChoice::crossings),
    std::pair(Text::SnapFoot, &SnapChoice::feet)};

} // namespace

Workbench::Workbench(MainWindow& window)
    : QObject(&window), window_(window),
      measure_(
          [this]() -> std::optional<SnapScene> {
              PlanView& plan = window_.plan();
              return SnapScene{window_.session().drawing(), plan.index(), plan.view(), plan.look()};
          },
          window.texts()) {
    measure_.onChange([this](bool taken) {
        if (taken) {
            showMeasurement();
        }
    });
    measure_.onEnd([this] { endMeasuring(); });
}

Workbench::~Workbench() = default;

void Workbench::growWhenShown(QDockWidget& dock, double part) {
    connect(&dock, &QDockWidget::visibilityChanged, this, [this, &dock, part](bool visible) {
        if (!visible || dock.property("grown").toBool()) {
            return;
        }
        dock.setProperty("grown", true);
        const int height = static_cast<int>(part * window_.height());
        if (!dock.isFloating() && dock.height() < height) {
            // Once the layout has made room for the panel itself.
            QTimer::singleShot(0, &dock,
                               [this, &dock, height] { window_.resizeDocks({&dock}, {height}, Qt::Vertical); });
        }
    });
}

QDockWidget* Workbench::addDock(Text text, QWidget* widget, Qt::DockWidgetArea area, const char* name) {
    auto* dock = new QDockWidget(&window_);
    dock->setObjectName(QLatin1String(name));
    dock->setWidget(widget);
    window_.addDockWidget(area, dock);
    window_.docks_.emplace_back(dock, text);
    return dock;
}

void Workbench::makeDocks(QDockWidget* beside) {
    measurePanel_ = new SheetPanel(window_.texts());
    lotPanel_ = new SheetPanel(window_.texts());
    for (const auto& [text, panel, name] : {std::tuple(Text::MeasurePanel, measurePanel_, "measureDock"),
                                            std::tuple(Text::LotPanel, lotPanel_, "lotDock")}) {
        QDockWidget* dock = addDock(text, panel, Qt::BottomDockWidgetArea, name);
        window_.tabifyDockWidget(beside, dock);
        dock->hide(); // until it is asked for
        connect(dock, &QDockWidget::visibilityChanged, this, [this](bool shown) {
            if (shown) {
                selectionChanged();
            }
        });
    }
    growWhenShown(window_.dock(QStringLiteral("measureDock")), 0.35);
    growWhenShown(window_.dock(QStringLiteral("lotDock")), 0.4);
    makeSectionDocks();
}

QAction* Workbench::action(WorkText text) const {
    for (const auto& [action, own] : actions_) {
        if (own == text) {
            return action;
        }
    }
    return nullptr;
}

QAction* Workbench::addAction(QMenu* menu, WorkText text, const QKeySequence& keys, std::function<void()> act) {
    auto* action = new QAction(&window_);
    action->setShortcut(keys);
    menu->addAction(action);
    connect(action, &QAction::triggered, this, [this, act = std::move(act)] { window_.guarded(act); });
    actions_.emplace_back(action, text);
    return action;
}

QMenu* Workbench::addMenu(QMenu* into, WorkText text) {
    QMenu* menu = into != nullptr ? into->addMenu(QString()) : window_.menuBar()->addMenu(QString());
    menus_.emplace_back(menu, text);
    return menu;
}

void Workbench::makeMenus() {
    makeMeasureMenu();
    makeMeasureTools();
    makeSectionMenu();
    makePaperMenu();
    makeBackgroundMenu();
}

void Workbench::makeMeasureMenu() {
    QMenu* menu = window_.menuBar()->addMenu(QString());
    window_.menus_.emplace_back(menu, Text::MeasureMenu);
    for (const ModeTexts& mode : kModes) {
        QAction* action = window_.addAction(menu, mode.text, QKeySequence(Qt::CTRL | Qt::Key(mode.key)), [this, mode] {
            if (window_.action(mode.text)->isChecked()) {
                startMeasuring(mode.mode);
            } else {
                endMeasuring();
            }
        });
        action->setCheckable(true);
    }
    window_.addAction(menu, Text::MeasureEnd, {}, [this] { endMeasuring(); })->setEnabled(false);
    menu->addSeparator();
    QMenu* snaps = menu->addMenu(QString());
    window_.menus_.emplace_back(snaps, Text::SnapMenu);
    for (const auto& [text, member] : kSnaps) {
        QAction* action = window_.addAction(snaps, text, {}, [this] { applySnaps(); });
        action->setCheckable(true);
        action->setChecked(true);
    }
}

void Workbench::makeMeasureTools() {
    QToolBar& tools = measurePanel_->tools();
    QAction* copy = &measurePanel_->copyAction();
    for (const ModeTexts& mode : kModes) {
        tools.insertAction(copy, window_.action(mode.text));
    }
    tools.insertSeparator(copy);
    for (const auto& [text, member] : kSnaps) {
        tools.insertAction(copy, window_.action(text));
    }
    tools.insertSeparator(copy);
}

void Workbench::applySnaps() {
    SnapChoice choice;
    for (const auto& [text, member] : kSnaps) {
        choice.*member = window_.action(text)->isChecked();
    }
    measure_.setChoice(choice);
}

bool Workbench::isMeasuring() const {
    return window_.plan().tool() == &measure_;
}

void Workbench::startMeasuring(MeasureMode mode) {
    measure_.setMode(mode);
    window_.plan().setTool(&measure_);
    for (const ModeTexts& other : kModes) {
        window_.action(other.text)->setChecked(other.mode == mode);
    }
    window_.action(Text::MeasureEnd)->setEnabled(true);
    QDockWidget* dock = window_.dock(Text::MeasurePanel);
    dock->show();
    dock->raise();
    showMeasurement();
    window_.plan().setFocus();
}

void Workbench::endMeasuring() {
    window_.plan().setTool(nullptr);
    for (const ModeTexts& mode : kModes) {
        window_.action(mode.text)->setChecked(false);
    }
    window_.action(Text::MeasureEnd)->setEnabled(false);
}

void Workbench::showMeasurement() {
    if (measurePanel_ == nullptr) {
        return;
    }
    if (measure_.taken().empty()) {
        measurePanel_->showHint(window_.texts()(Text::MeasureHint));
    } else {
        measurePanel_->show(measure_.sheet(window_.session().drawing()));
    }
    window_.plan().update();
}

void Workbench::showLot() {
    const auto& selected = window_.plan().selected();
    const auto sheet = selected && selected->kind == PlanObject::Kind::Entity
                           ? lotSheet(window_.session().drawing(), window_.plan().index(), selected->index)
                           : std::nullopt;
    if (sheet) {
        lotPanel_->show(*sheet);
    } else {
        lotPanel_->showHint(window_.texts()(Text::LotHint));
    }
}

void Workbench::drawingChanged() {
    measure_.clear(); // its places may be gone
    sections_.setDrawing(&window_.session().drawing());
    if (zone_ != window_.session().drawing().zone()) {
        readBackgrounds();
    }
    selectionChanged();
}

void Workbench::selectionChanged() {
    const auto& selected = window_.plan().selected();
    const bool alignment = selected && selected->kind == PlanObject::Kind::Alignment;
    measure_.setAlignment(alignment ? std::optional(selected->index) : std::nullopt);
    if (lotPanel_->isVisible()) {
        showLot();
    }
    showSections();
}

void Workbench::retranslate() {
    for (const ModeTexts& mode : kModes) {
        window_.action(mode.text)->setIconText(window_.texts()(mode.shortText));
    }
    measurePanel_->retranslate();
    lotPanel_->retranslate();
    measurePanel_->setAccessibleName(window_.texts()(Text::MeasurePanel));
    lotPanel_->setAccessibleName(window_.texts()(Text::LotPanel));
    for (const auto& [action, text] : actions_) {
        action->setText(workText(window_.texts(), text));
        action->setIconText(withoutMnemonic(action->text()));
    }
    for (QAction* strength : strengths_) {
        strength->setText(workText(window_.texts(), WorkText::BackgroundStrength).arg(strength->data().toInt()));
    }
    for (const auto& [menu, text] : menus_) {
        menu->setTitle(workText(window_.texts(), text));
    }
    for (const auto& [dock, text] : sectionDocks_) {
        dock->setWindowTitle(workText(window_.texts(), text));
    }
    profilePanel_->retranslate();
    crossPanel_->retranslate();
    showMeasurement();
    showLot();
}

std::vector<QWidget*> Workbench::panes() const {
    return {&measurePanel_->table(), &lotPanel_->table(), profile_, crossSections_};
}

} // namespace fenmark::desk
