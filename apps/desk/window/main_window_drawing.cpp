// The drawing and what shows it: commands, undo, selection, the line of the pointer.
#include "desk/window/main_window.h"

#include "desk/plan/plan_text.h"
#include "desk/window/properties.h"
#include "desk/window/workbench.h"
#include "sima/text/encoding.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <exception>
#include <numeric>

namespace fenmark::desk {

using drawing::Drawing;

namespace {

constexpr double kStationReach = 500.0; // metres: an alignment this near has a station to tell, in view or not

// Commands of the program itself, beside those of the module.
constexpr const char* kOwnCommands[] = {"New",  "Open", "Save", "SaveAs", "Export", "Undo",
                                        "Redo", "Find", "Fit",  "Layer",  "Help"};

// What may mend a broken joint, behind the note of it; empty where nothing is known to.
QString remedyText(host::embedded::Remedy remedy, const Texts& texts) {
    using host::embedded::Remedy;
    switch (remedy) {
    case Remedy::PositiveRadiusAuto:
        return QStringLiteral("; ") + texts(Text::TryRadiusAuto);
    case Remedy::PositiveRadiusLeft:
        return QStringLiteral("; ") + texts(Text::TryRadiusLeft);
    case Remedy::PositiveRadiusRight:
        return QStringLiteral("; ") + texts(Text::TryRadiusRight);
    case Remedy::PlanTangents:
        return QStringLiteral("; ") + texts(Text::TryPlanTangents);
    case Remedy::None:
        break;
    }
    return {};
}

bool holds(const drawing::Extent& outer, const drawing::Extent& inner) {
    return inner.empty() || (outer.minX <= inner.minX && outer.minY <= inner.minY && outer.maxX >= inner.maxX &&
                             outer.maxY >= inner.maxY);
}

// The box of what the drawing got beyond so many entities and alignments.
drawing::Extent extentSince(const Drawing& drawing, std::size_t entities, std::size_t alignments) {
    drawing::Extent extent;
    for (std::size_t i = entities; i < drawing.entityCount(); ++i) {
        extent.add(drawing.entityExtent(i));
    }
    for (std::size_t i = alignments; i < drawing.alignmentCount(); ++i) {
        for (const drawing::Element& element : drawing.alignment(i).elements) {
            extent.add(element.start.x, element.start.y);
            extent.add(element.end.x, element.end.y);
        }
    }
    return extent;
}

} // namespace

void MainWindow::guarded(const std::function<void()>& act) {
    try {
        act();
    } catch (const std::exception& error) {
        plan_->setFrozen(false);
        command_->say(QString::fromUtf8(error.what()));
        tell(QString::fromUtf8(error.what()));
    }
}

bool MainWindow::loadModule(const std::vector<std::string>& paths) {
    const Outcome result = session_.loadModule(paths);
    if (!result) {
        command_->say(texts_(Text::CannotLoadModule).arg(QString::fromStdString(result.in(texts_.language()))));
    }
    QStringList names;
    for (const host::embedded::RegisteredCommand& command : session_.modules().commands()) {
        names << QString::fromStdString(command.globalName);
    }
    for (const char* name : kOwnCommands) {
        names << QLatin1String(name);
    }
    command_->setCommands(names);
    updateActions();
    return static_cast<bool>(result);
}

void MainWindow::runCommand(const QString& command) {
    guarded([&] {
        const QString name = command.trimmed();
        auto is = [&](const char* own) { return name.compare(QLatin1String(own), Qt::CaseInsensitive) == 0; };
        if (session_.isRunning()) {
            command_->say(texts_(Text::CommandRunning));
        } else if (is("New")) {
            newDrawing();
        } else if (is("Open")) {
            chooseDrawing();
        } else if (is("Save")) {
            saveDrawing();
        } else if (is("SaveAs")) {
            saveDrawingAs();
        } else if (is("Export")) {
            exportDrawing();
        } else if (is("Undo")) {
            undo();
        } else if (is("Redo")) {
            redo();
        } else if (is("Find")) {
            startFind();
        } else if (is("Fit")) {
            plan_->fitAll();
        } else if (is("Layer")) {
            addLayer();
        } else if (is("Help") || name == QStringLiteral("?")) {
            command_->say(texts_(Text::CommandHelp)
                              .arg(QStringLiteral("Fenmark, Fenmarks, Fenmark2, New, Open, Save, "
                                                  "SaveAs, Export, Undo, Redo, Find, Fit, Layer, Help")));
        } else {
            runModuleCommand(name);
        }
    });
}

void MainWindow::importFile() {
    if (!session_.isRunning()) {
        startImport({});
    }
}

void MainWindow::startImport(const QString& pendingFile) {
    command_->say(QStringLiteral("> Fenmark"));
    runModuleCommand(QStringLiteral("Fenmark"), pendingFile);
}

void MainWindow::runModuleCommand(const QString& command, const QString& pendingFile) {
    bool known = false;
    for (const host::embedded::RegisteredCommand& registered : session_.modules().commands()) {
        known = known || command.compare(QString::fromStdString(registered.globalName), Qt::CaseInsensitive) == 0;
    }
    if (!known) {
        command_->say(texts_(Text::CommandUnknown).arg(command));
        return;
    }
    plan_->setFrozen(true);
    updateActions();
    const std::size_t entities = session_.drawing().entityCount();
    const std::size_t alignments = session_.drawing().alignmentCount();
    const bool sawEverything = holds(plan_->view().visible(), session_.drawing().extent());
    const CommandRun run = session_.run(command.toStdString(), pendingFile.toStdString());
    plan_->setFrozen(false);
    if (closingAtOnce_) {
        closeAtOnce(); // while the command ran no copy could be kept
        return;
    }
    if (run.changed) {
        drawingChanged();
        showNewObjects(extentSince(session_.drawing(), entities, alignments), sawEverything);
    }
    if (run.changed || !run.logPath.empty()) {
        showLastLog();
    }
    dock(Text::PreviewPanel)->hide();
    if (!run.readIn.empty() && run.readIn != sima::encodingTitle(sima::Encoding::Cp932)) {
        command_->say(texts_(Text::ReadIn).arg(QString::fromStdString(run.readIn)));
    }
    sayPassedOver(run.passedOver);
    sayDoubts(run.doubts);
    sayNotes(run.notes);
    if (session_.drawing().entityCount() > entities || session_.drawing().alignmentCount() > alignments) {
        command_->say(texts_(Text::Added)
                          .arg(session_.drawing().entityCount() - entities)
                          .arg(session_.drawing().alignmentCount() - alignments));
    }
    if (const std::size_t placed = plan_->index().size(); placed < session_.drawing().entityCount()) {
        command_->say(texts_(Text::NotPlaced).arg(session_.drawing().entityCount() - placed));
    }
    updateTitle();
    updateActions();
    if (!run.file.empty()) {
        rememberFile(QString::fromStdString(run.file));
    }
    if (!run.outcome) {
        tellBrokenOff(run.outcome.in(texts_.language()),
                      session_.drawing().entityCount() - entities + session_.drawing().alignmentCount() - alignments);
    } else {
        settleAgain(run);
    }
}

void MainWindow::showNewObjects(const drawing::Extent& added, bool sawEverything) {
    if (added.empty() || holds(plan_->view().visible(), added)) {
        return;
    }
    if (sawEverything) {
        plan_->fitAll();
        return;
    }
    viewHint_->setText(texts_(Text::NewOutOfView));
    viewHint_->adjustSize();
    viewHint_->move((plan_->width() - viewHint_->width()) / 2, viewHint_->height() / 2);
    viewHint_->show();
    viewHint_->raise();
}

void MainWindow::tellBrokenOff(const std::string& reason, std::size_t added) {
    QMessageBox box(QMessageBox::Warning, QStringLiteral("Fenmark Desk"), texts_(Text::BrokenOff),
                    QMessageBox::NoButton, this);
    box.setInformativeText(
        asWritten(QString::fromStdString(reason) + QLatin1Char('\n') +
                  (added > 0 ? texts_(Text::BrokenOffKept).arg(added) : texts_(Text::BrokenOffNothing))));
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    QPushButton* keep = box.addButton(texts_(added > 0 ? Text::KeepButton : Text::OkButton), QMessageBox::AcceptRole);
    keep->setObjectName(QStringLiteral("keep"));
    QPushButton* takeBack = nullptr;
    if (added > 0) {
        takeBack = box.addButton(texts_(Text::TakeBackButton), QMessageBox::DestructiveRole);
        takeBack->setObjectName(QStringLiteral("takeBack"));
    }
    box.setEscapeButton(keep);
    box.exec();
    if (takeBack != nullptr && box.clickedButton() == static_cast<QAbstractButton*>(takeBack)) {
        undo();
    }
}

void MainWindow::sayNotes(const host::embedded::LayoutNotes& notes) {
    const auto remedy = [this](host::embedded::Remedy remedy, Language) {
        return remedyText(remedy, texts_).toStdString();
    };
    for (const auto& [code, text] : host::embedded::noteLines(notes, texts_.language(), remedy)) {
        command_->say(QString::fromStdString(text));
    }
}

void MainWindow::undo() {
    if (session_.steps().empty()) {
        command_->say(texts_(Text::NothingToUndo));
        return;
    }
    const StepKind kind = session_.steps().back().kind;
    if (!session_.undo()) {
        return;
    }
    drawingChanged();
    if (kind == StepKind::Import) {
        showLastLog();
    }
    command_->say(texts_(Text::Undone).arg(stepName(kind)));
}

void MainWindow::redo() {
    if (!session_.redo()) {
        command_->say(texts_(Text::NothingToRedo));
        updateActions();
        return;
    }
    const StepKind kind = session_.steps().back().kind;
    drawingChanged();
    if (kind == StepKind::Import) {
        showLastLog();
    }
    command_->say(texts_(Text::Redone).arg(stepName(kind)));
}

void MainWindow::showError(int step) {
    dock(Text::LogPanel)->show();
    if (!log_->goToError(step)) {
        command_->say(texts_(Text::NoMoreErrors));
    }
}

void MainWindow::startFind() {
    dock(Text::FindPanel)->show();
    find_->startTyping();
}

void MainWindow::showObject(const PlanObject& object) {
    const Drawing& drawing = session_.drawing();
    if (session_.isRunning() || !exists(drawing, object)) {
        return;
    }
    if (desk::isHidden(plan_->look(), drawing, object)) {
        const std::string_view layer = object.kind == PlanObject::Kind::Entity ? drawing.entity(object.index).layer
                                                                               : drawing.alignment(object.index).layer;
        layers_->showLayer(drawing.findLayer(layer).value_or(0));
        if (object.kind == PlanObject::Kind::Entity) {
            legend_->showKind(styleOf(drawing.entity(object.index)));
        } else {
            legend_->showElements();
        }
    }
    plan_->select(object);
    plan_->fitSelected();
}

void MainWindow::addLayer() {
    if (session_.isRunning()) {
        return;
    }
    const QString name =
        questions_.name(this, withoutMnemonic(texts_(Text::AddLayer)), texts_(Text::LayerName)).trimmed();
    if (name.isEmpty()) {
        return;
    }
    if (session_.addLayer(name.toStdString())) {
        drawingChanged();
    } else {
        tell(texts_(Text::LayerTaken).arg(name));
    }
}

void MainWindow::renameLayer(std::size_t layer) {
    if (session_.isRunning() || layer >= session_.drawing().layers().size()) {
        return;
    }
    const QString now = fromUtf8(session_.drawing().layers()[layer].name);
    if (!session_.mayRename(layer)) {
        tell(texts_(Text::LayerStays).arg(now));
        return;
    }
    const QString name =
        questions_.newName(this, withoutMnemonic(texts_(Text::RenameLayer)), texts_(Text::LayerName), now).trimmed();
    if (name.isEmpty() || name == now) {
        return;
    }
    if (session_.renameLayer(layer, name.toStdString())) {
        drawingChanged();
    } else {
        tell(texts_(Text::LayerTaken).arg(name));
    }
}

void MainWindow::colourLayer(std::size_t layer) {
    if (session_.isRunning() || layer >= session_.drawing().layers().size()) {
        return;
    }
    const auto now = session_.drawing().layers()[layer].colour;
    const QColor chosen = questions_.colour(this, withoutMnemonic(texts_(Text::LayerColour)),
                                            now ? QColor(now->red, now->green, now->blue) : kInk);
    if (!chosen.isValid()) {
        return;
    }
    const drawing::Colour colour{static_cast<std::uint8_t>(chosen.red()), static_cast<std::uint8_t>(chosen.green()),
                                 static_cast<std::uint8_t>(chosen.blue())};
    if (session_.setLayerColour(layer, colour)) {
        drawingChanged();
    }
}

void MainWindow::removeLayer(std::size_t layer) {
    const Drawing& drawing = session_.drawing();
    if (session_.isRunning() || layer >= drawing.layers().size()) {
        return;
    }
    const QString name = shownName(drawing.layers()[layer].name);
    if (session_.removeLayer(layer)) {
        drawingChanged();
        return;
    }
    const std::size_t count = drawing.layerCounts()[layer];
    tell(count > 0 ? texts_(Text::LayerHolds).arg(name, QString::number(count)) : texts_(Text::LayerStays).arg(name));
}

void MainWindow::setZone(int zone) {
    if (!session_.isRunning()) {
        session_.setZone(zone);
    }
    drawingChanged();
}

QString MainWindow::stepName(StepKind kind) const {
    switch (kind) {
    case StepKind::Layer:
        return texts_(Text::StepLayer);
    case StepKind::LayerName:
        return texts_(Text::StepLayerName);
    case StepKind::LayerColour:
        return texts_(Text::StepLayerColour);
    case StepKind::LayerGone:
        return texts_(Text::StepLayerGone);
    case StepKind::Zone:
        return texts_(Text::StepZone);
    case StepKind::Import:
        break;
    }
    return texts_(Text::StepImport);
}

void MainWindow::releaseDrawing() {
    plan_->setDrawing(nullptr);
    find_->setDrawing(nullptr);
}

// Another drawing is open: everything is shown, from its whole extent.
void MainWindow::drawingReplaced() {
    plan_->setDrawing(&session_.drawing());
    workbench_->drawingReplaced();
    layers_->fill(session_.drawing(), true);
    showLastLog();
    drawingChanged();
}

// With the texts that belong to it: its file may be gone, or hold others.
void MainWindow::drawingStays() {
    plan_->setDrawing(&session_.drawing());
    drawingChanged();
}

void MainWindow::drawingChanged() {
    const Drawing& drawing = session_.drawing();
    plan_->drawingChanged();
    layers_->fill(drawing, false);
    sites_->fill(drawing);
    applyLook();
    selectionChanged();
    workbench_->drawingChanged();
    find_->setDrawing(&drawing);
    StyleCounts counts{};
    plan_->index().query(plan_->index().extent(), [&](const PlanFigure& figure) {
        ++counts[figure.style];
        return true;
    });
    legend_->fill(counts, drawing);
    const std::size_t points = std::accumulate(counts.begin(), counts.begin() + kPointStyles, std::size_t{0});
    counts_->setText(
        texts_(Text::StatusCounts).arg(points).arg(plan_->index().size() - points).arg(drawing.alignmentCount()));
    for (const auto& [choice, number] : zones_) {
        choice->setChecked(number == drawing.zone());
    }
    updateTitle();
    updateActions();
}

void MainWindow::applyLook() {
    PlanLook look;
    look.hiddenLayers = layers_->hidden();
    look.hiddenStyles = legend_->hiddenStyles();
    look.hiddenElements = legend_->hiddenElements();
    if (plan_->selected() && plan_->selected()->kind == PlanObject::Kind::Alignment) {
        look.stationsOf = plan_->selected()->index;
    } else {
        look.stationsOf = plan_->look().stationsOf; // that of the last one chosen
    }
    look.labels = action(Text::ShowLabels)->isChecked();
    look.stations = action(Text::ShowStations)->isChecked();
    look.grid = action(Text::ShowGrid)->isChecked();
    plan_->setLook(look);
}

void MainWindow::selectionChanged() {
    const std::vector<PlanObject>& objects = plan_->selection();
    if (objects.size() > 1) {
        properties_->show(session_.drawing(), objects);
        if (table_->size() < 2) {
            dock(Text::TablePanel)->show();
            dock(Text::TablePanel)->raise();
        }
    } else {
        properties_->show(session_.drawing(), plan_->selected());
    }
    table_->show(session_.drawing(), objects);
    QString spoken = texts_(Text::PlanDescription);
    if (objects.size() > 1) {
        spoken = texts_(Text::SeveralSelected).arg(objects.size());
    } else if (plan_->selected()) {
        spoken = spokenText(session_.drawing(), *plan_->selected(), texts_);
    }
    plan_->setAccessibleDescription(spoken);
    const auto alignment = plan_->selected() && plan_->selected()->kind == PlanObject::Kind::Alignment
                               ? std::optional(plan_->selected()->index)
                               : std::nullopt;
    if (alignment && plan_->look().stationsOf != alignment) {
        applyLook(); // its stations are the ones to name
    }
    sites_->mark(plan_->selected());
    workbench_->selectionChanged();
    updateActions();
}

void MainWindow::pointerMoved(double x, double y) {
    position_->setText(texts_(Text::StatusPosition).arg(metres(y), metres(x)));
    const drawing::Extent seen = plan_->view().visible();
    const double reach = std::max(kStationReach, std::hypot(seen.maxX - seen.minX, seen.maxY - seen.minY));
    const std::optional<NearestStation> nearest =
        nearestStation(session_.drawing(), plan_->index(), plan_->look(), x, y, reach);
    if (!nearest) {
        station_->clear();
        return;
    }
    const double offset = nearest->at.offset;
    station_->setText(
        texts_(Text::StatusStation)
            .arg(shownName(session_.drawing().alignment(nearest->alignment).name), stakeName(nearest->at.station),
                 metres(nearest->at.station),
                 texts_(offset < 0.0 ? Text::OffsetLeft : Text::OffsetRight).arg(metres(std::abs(offset)))));
}

void MainWindow::updateTitle() {
    setWindowTitle(fileName() + QStringLiteral("[*] - Fenmark Desk"));
    setWindowModified(hasChanges());
}

void MainWindow::updateActions() {
    const bool idle = !session_.isRunning();
    for (const auto& [action, text] : actions_) {
        if (text != Text::About && text != Text::Keys) {
            action->setEnabled(idle);
        }
    }
    QAction* undoAction = action(Text::Undo);
    undoAction->setEnabled(idle && !session_.steps().empty());
    undoAction->setText(session_.steps().empty() ? texts_(Text::Undo)
                                                 : texts_(Text::UndoStep).arg(stepName(session_.steps().back().kind)));
    undoAction->setIconText(withoutMnemonic(texts_(Text::Undo)));
    QAction* redoAction = action(Text::Redo);
    redoAction->setEnabled(idle && !session_.undoneSteps().empty());
    redoAction->setText(session_.undoneSteps().empty()
                            ? texts_(Text::Redo)
                            : texts_(Text::RedoStep).arg(stepName(session_.undoneSteps().back().step.kind)));
    redoAction->setIconText(withoutMnemonic(texts_(Text::Redo)));
    action(Text::MeasureEnd)->setEnabled(idle && workbench_->isMeasuring());
    action(Text::ClearSelection)->setEnabled(idle && plan_->selected().has_value());
    action(Text::FitSelection)->setEnabled(idle && plan_->selected().has_value());
    action(Text::Import)->setEnabled(idle && !session_.modules().commands().empty());
}

void MainWindow::focusNextPane(int step) {
    std::vector<QWidget*> panes{plan_, sites_,  layers_,       legend_,    command_->edit(),
                                log_,  source_, find_->edit(), properties_};
    for (QWidget* pane : workbench_->panes()) {
        panes.push_back(pane);
    }
    const QWidget* focus = focusWidget(); // also while another window is in use
    std::size_t at = 0;
    for (std::size_t i = 0; i < panes.size(); ++i) {
        if (panes[i] == focus || panes[i]->isAncestorOf(focus)) {
            at = i;
        }
    }
    for (std::size_t tried = 0; tried < panes.size(); ++tried) {
        at = (at + panes.size() + static_cast<std::size_t>(step + static_cast<int>(panes.size()))) % panes.size();
        if (panes[at]->isVisible()) {
            panes[at]->setFocus(Qt::ShortcutFocusReason);
            return;
        }
    }
}

} // namespace fenmark::desk
