// Menus at the pointer: of the plan, the alignments, the layers and the kinds.
#include "desk/window/main_window.h"

#include "desk/window/properties.h"

#include <QClipboard>
#include <QGuiApplication>

#include <algorithm>

namespace fenmark::desk {

using drawing::Drawing;

void MainWindow::makeContextMenus() {
    const auto connectMenu = [this](QWidget* widget, void (MainWindow::*show)(const QPoint&)) {
        widget->setContextMenuPolicy(Qt::CustomContextMenu);
        connect(widget, &QWidget::customContextMenuRequested, this, [this, show](const QPoint& at) {
            if (!session_.isRunning()) {
                guarded([&] { (this->*show)(at); });
            }
        });
    };
    connectMenu(plan_, &MainWindow::showPlanMenu);
    connectMenu(sites_, &MainWindow::showSitesMenu);
    connectMenu(layers_, &MainWindow::showLayersMenu);
    connectMenu(legend_, &MainWindow::showLegendMenu);
}

QMenu* MainWindow::newMenu(const char* name) {
    auto* menu = new QMenu(this);
    menu->setObjectName(QLatin1String(name));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    return menu;
}

QAction* MainWindow::addEntry(QMenu* menu, Text text, std::function<void()> act) {
    QAction* entry = menu->addAction(texts_(text));
    entry->setData(static_cast<int>(text));
    connect(entry, &QAction::triggered, this, [this, act = std::move(act)] { guarded(act); });
    return entry;
}

void MainWindow::selectKindOf(const PlanObject& object) {
    const Drawing& drawing = session_.drawing();
    if (object.kind == PlanObject::Kind::Alignment) {
        std::vector<PlanObject> alignments;
        for (std::size_t a = 0; a < drawing.alignmentCount(); ++a) {
            const PlanObject alignment{PlanObject::Kind::Alignment, a, {}};
            if (!desk::isHidden(plan_->look(), drawing, alignment)) {
                alignments.push_back(alignment);
            }
        }
        plan_->selectSeveral(std::move(alignments));
        return;
    }
    const FigureStyle style = styleOf(drawing.entity(object.index));
    std::vector<PlanObject> objects;
    plan_->index().query(plan_->index().extent(), [&](const PlanFigure& figure) {
        if (figure.figureStyle() == style && !plan_->look().hides(figure)) {
            objects.push_back({PlanObject::Kind::Entity, figure.entity, {}});
        }
        return true;
    });
    std::sort(objects.begin(), objects.end(),
              [](const PlanObject& a, const PlanObject& b) { return a.index < b.index; });
    plan_->selectSeveral(std::move(objects));
}

void MainWindow::addObjectEntries(QMenu* menu, const PlanObject& object) {
    const Drawing& drawing = session_.drawing();
    addEntry(menu, Text::ShowProperties, [this] {
        dock(Text::PropertiesPanel)->show();
        properties_->setFocus();
    });
    menu->addAction(action(Text::FitSelection));
    addEntry(menu, Text::CopyRow, [this] { QGuiApplication::clipboard()->setText(table_->copied()); });
    menu->addSeparator();
    addEntry(menu, Text::SelectKind, [this, object] { selectKindOf(object); });
    if (object.kind == PlanObject::Kind::Entity) {
        const FigureStyle style = styleOf(drawing.entity(object.index));
        addEntry(menu, Text::ShowOnlyKind, [this, style] { legend_->showOnly(style); });
    }
    const std::string_view layer = object.kind == PlanObject::Kind::Entity ? drawing.entity(object.index).layer
                                                                           : drawing.alignment(object.index).layer;
    if (const auto place = drawing.findLayer(layer)) {
        addEntry(menu, Text::ShowOnlyLayer, [this, place = *place] { layers_->showOnly(place); });
        addEntry(menu, Text::HideThisLayer, [this, place = *place] { layers_->hideLayer(place); });
    }
}

void MainWindow::showPlanMenu(const QPoint& at) {
    QMenu* menu = newMenu("planMenu");
    if (const auto object = plan_->objectAtPixel(at)) {
        const std::vector<PlanObject>& selected = plan_->selection();
        if (std::find(selected.begin(), selected.end(), *object) == selected.end()) {
            plan_->select(*object);
        }
        addObjectEntries(menu, *object);
        menu->addSeparator();
    }
    menu->addAction(action(Text::Fit));
    menu->addAction(action(Text::SelectAll));
    menu->addAction(action(Text::ClearSelection));
    menu->addSeparator();
    menu->addAction(action(Text::ShowAll));
    addEntry(menu, Text::ShowAllKinds, [this] { legend_->showAll(); });
    menu->popup(plan_->mapToGlobal(at));
}

void MainWindow::showSitesMenu(const QPoint& at) {
    QTreeWidgetItem* item = sites_->itemAt(at);
    if (item == nullptr) {
        return;
    }
    sites_->setCurrentItem(item);
    if (!plan_->selected() || plan_->selected()->kind != PlanObject::Kind::Alignment) {
        return; // a site
    }
    QMenu* menu = newMenu("sitesMenu");
    addObjectEntries(menu, *plan_->selected());
    menu->popup(sites_->viewport()->mapToGlobal(at));
}

void MainWindow::showLayersMenu(const QPoint& at) {
    QMenu* menu = newMenu("layersMenu");
    const int row = layers_->row(layers_->itemAt(at));
    if (row >= 0) {
        layers_->setCurrentRow(row);
        const auto layer = static_cast<std::size_t>(row);
        addEntry(menu, Text::ShowOnlyLayer, [this, layer] { layers_->showOnly(layer); });
        addEntry(menu, Text::HideThisLayer, [this, layer] { layers_->hideLayer(layer); });
        menu->addSeparator();
        addEntry(menu, Text::LayerColour, [this, layer] { colourLayer(layer); });
        addEntry(menu, Text::NoLayerColour, [this, layer] {
            if (session_.setLayerColour(layer, std::nullopt)) {
                drawingChanged();
            }
        })->setEnabled(session_.drawing().layers()[layer].colour.has_value());
        QAction* rename = addEntry(menu, Text::RenameLayer, [this, layer] { renameLayer(layer); });
        rename->setShortcut(Qt::Key_F2); // heard by the list itself
        rename->setEnabled(session_.mayRename(layer));
        QAction* remove = addEntry(menu, Text::RemoveLayer, [this, layer] { removeLayer(layer); });
        remove->setShortcut(Qt::Key_Delete);
        remove->setEnabled(session_.mayRemove(layer));
        menu->addSeparator();
    }
    for (const Text text : {Text::ShowAll, Text::HideAll, Text::AddLayer}) {
        menu->addAction(action(text));
    }
    menu->popup(layers_->viewport()->mapToGlobal(at));
}

void MainWindow::showLegendMenu(const QPoint& at) {
    QMenu* menu = newMenu("legendMenu");
    const int row = legend_->row(legend_->itemAt(at));
    if (row >= 0) {
        addEntry(menu, Text::ShowOnlyKind, [this, row] { legend_->showOnly(row); });
    }
    addEntry(menu, Text::ShowAllKinds, [this] { legend_->showAll(); });
    menu->popup(legend_->viewport()->mapToGlobal(at));
}

} // namespace fenmark::desk
