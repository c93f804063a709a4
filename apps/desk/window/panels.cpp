// The panels around the plan.
#include "desk/window/panels.h"

#include "desk/plan/plan_text.h"
#include "desk/window/properties.h"
#include "desk/window/wrapped_rows.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QIcon>
#include <QKeyEvent>
#include <QPainter>
#include <QPixmap>
#include <QSignalBlocker>

#include <algorithm>
#include <set>

namespace fenmark::desk {

using drawing::Alignment;
using drawing::Drawing;

namespace {

constexpr int kAlignmentRole = Qt::UserRole;
constexpr int kElementRole = Qt::UserRole + 1;
constexpr QSize kColourSize{16, 12};
constexpr double kColourRatio = 3.0; // drawn this much finer, for screens of any scale

// A patch of the colour; an empty one where each kind has its own.
QIcon colourIcon(const std::optional<QColor>& colour) {
    QPixmap pixmap(kColourSize * kColourRatio);
    pixmap.setDevicePixelRatio(kColourRatio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    if (colour) {
        painter.fillRect(QRectF(1.0, 1.0, kColourSize.width() - 2.0, kColourSize.height() - 2.0), *colour);
    }
    painter.setPen(QPen(kFaintInk, 0.7));
    painter.drawRect(QRectF(1.0, 1.0, kColourSize.width() - 2.0, kColourSize.height() - 2.0));
    painter.end();
    QIcon icon;
    icon.addPixmap(pixmap);
    icon.addPixmap(pixmap, QIcon::Selected); // not tinted
    return icon;
}

void alignNumbers(QTreeWidgetItem* item) {
    for (int column = 1; column < 4; ++column) {
        item->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
    }
}

QTreeWidgetItem* alignmentItem(const Alignment& alignment, std::size_t index, const Texts& texts) {
    auto* item = new QTreeWidgetItem(
        {shownName(alignment.name), metres(alignment.length()), QString(), metres(alignment.startStation)});
    item->setData(0, kAlignmentRole, static_cast<qulonglong>(index));
    alignNumbers(item);
    QList<QTreeWidgetItem*> elements;
    double station = alignment.startStation;
    for (std::size_t e = 0; e < alignment.elements.size(); ++e) {
        const drawing::Element& element = alignment.elements[e];
        auto* row = new QTreeWidgetItem(
            {elementName(element, texts), metres(element.length), radiusText(element, texts), metres(station)});
        row->setData(0, kAlignmentRole, static_cast<qulonglong>(index));
        row->setData(0, kElementRole, static_cast<qulonglong>(e));
        row->setForeground(0, colourOf(element.type));
        alignNumbers(row);
        elements.append(row);
        station += element.length;
    }
    item->addChildren(elements);
    return item;
}

} // namespace

SitesPanel::SitesPanel(const Texts& texts, QWidget* parent) : QTreeWidget(parent), texts_(texts) {
    setObjectName(QStringLiteral("sites"));
    setColumnCount(4);
    setUniformRowHeights(true);
    setAlternatingRowColors(true);
    setIndentation(10);
    header()->setStretchLastSection(true);
    connect(this, &QTreeWidget::currentItemChanged, this, [this](const QTreeWidgetItem* item) {
        if (marking_) {
            return;
        }
        if (const std::optional<PlanObject> object = objectOf(item)) {
            emit chosen(*object);
        }
    });
    connect(this, &QTreeWidget::itemActivated, this, [this](const QTreeWidgetItem* item) {
        if (const std::optional<PlanObject> object = objectOf(item)) {
            emit activatedObject(*object);
        }
    });
}

std::optional<PlanObject> SitesPanel::objectOf(const QTreeWidgetItem* item) const {
    if (item == nullptr || !item->data(0, kAlignmentRole).isValid()) {
        return std::nullopt;
    }
    PlanObject object{PlanObject::Kind::Alignment, item->data(0, kAlignmentRole).toULongLong(), {}};
    if (item->data(0, kElementRole).isValid()) {
        object.element = item->data(0, kElementRole).toULongLong();
    }
    return object;
}

void SitesPanel::fill(const Drawing& drawing) {
    marking_ = true;
    clear();
    setHeaderLabels({texts_(Text::ColumnName), texts_(Text::ColumnLength), texts_(Text::ColumnRadius),
                     texts_(Text::ColumnStation)});
    alignments_.assign(drawing.alignmentCount(), nullptr);
    std::vector<QList<QTreeWidgetItem*>> below(drawing.sites().size());
    QList<QTreeWidgetItem*> rootless;
    for (std::size_t a = 0; a < drawing.alignmentCount(); ++a) {
        alignments_[a] = alignmentItem(drawing.alignment(a), a, texts_);
        const auto site = drawing.findSite(drawing.alignment(a).site);
        (site ? below[*site] : rootless).append(alignments_[a]);
    }
    for (std::size_t s = 0; s < below.size(); ++s) {
        auto* item = new QTreeWidgetItem({shownName(drawing.sites()[s].name)});
        QFont bold = font();
        bold.setBold(true);
        item->setFont(0, bold);
        item->addChildren(below[s]);
        addTopLevelItem(item);
        item->setExpanded(true);
    }
    addTopLevelItems(rootless);
    if (drawing.alignmentCount() <= 8) {
        for (QTreeWidgetItem* item : alignments_) {
            item->setExpanded(true);
        }
    }
    int width = 2 * frameWidth() + style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
    for (int column = 0; column < columnCount(); ++column) {
        resizeColumnToContents(column);
        width += columnWidth(column);
    }
    // Lengths, radii and stations are seen whole on a small screen too; long names leave room for the plan.
    setMinimumWidth(std::clamp(width, kLeastSideWidth, kLeastSideWidth * 3 / 2));
    marking_ = false;
}

void SitesPanel::mark(const std::optional<PlanObject>& object) {
    marking_ = true;
    QTreeWidgetItem* item = nullptr;
    if (object && object->kind == PlanObject::Kind::Alignment && object->index < alignments_.size()) {
        item = alignments_[object->index];
        if (object->element && static_cast<int>(*object->element) < item->childCount()) {
            item = item->child(static_cast<int>(*object->element));
        }
    }
    if (item != currentItem()) {
        setCurrentItem(item);
        if (item == nullptr) {
            clearSelection();
        } else {
            scrollToItem(item);
        }
    }
    marking_ = false;
}

LayersPanel::LayersPanel(const Texts& texts, QWidget* parent) : QListWidget(parent), texts_(texts) {
    setObjectName(QStringLiteral("layers"));
    setIconSize(kColourSize);
    connect(this, &QListWidget::itemChanged, this, [this] {
        if (!filling_) {
            emit shownChanged();
        }
    });
}

void LayersPanel::fill(const Drawing& drawing, bool showAll) {
    filling_ = true;
    const std::vector<bool> ticks = hidden();
    std::set<std::uint64_t> before;
    for (std::size_t i = 0; i < ticks.size() && !showAll; ++i) {
        if (ticks[i]) {
            before.insert(ids_[i]);
        }
    }
    const int chosen = currentRow();
    clear();
    ids_.clear();
    const std::vector<std::size_t> counts = drawing.layerCounts();
    for (std::size_t i = 0; i < drawing.layers().size(); ++i) {
        const drawing::Layer& layer = drawing.layers()[i];
        ids_.push_back(layer.id.asUint64());
        auto* item = new QListWidgetItem(shownName(layer.name), this);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(before.contains(ids_.back()) ? Qt::Unchecked : Qt::Checked);
        item->setToolTip(texts_(Text::LayerObjects).arg(counts[i]));
        item->setIcon(colourIcon(layer.colour ? std::optional(inkOf(*layer.colour)) : std::nullopt));
    }
    setCurrentRow(std::min(chosen, count() - 1));
    filling_ = false;
}

void LayersPanel::keyPressEvent(QKeyEvent* event) {
    const int row = currentRow();
    if (row >= 0 && event->key() == Qt::Key_F2) {
        emit renameAsked(static_cast<std::size_t>(row));
    } else if (row >= 0 && event->key() == Qt::Key_Delete) {
        emit removalAsked(static_cast<std::size_t>(row));
    } else {
        QListWidget::keyPressEvent(event);
    }
}

std::vector<bool> LayersPanel::hidden() const {
    std::vector<bool> hidden(static_cast<std::size_t>(count()));
    for (int i = 0; i < count(); ++i) {
        hidden[static_cast<std::size_t>(i)] = item(i)->checkState() == Qt::Unchecked;
    }
    return hidden;
}

void LayersPanel::setAllShown(bool shown) {
    filling_ = true;
    for (int i = 0; i < count(); ++i) {
        item(i)->setCheckState(shown ? Qt::Checked : Qt::Unchecked);
    }
    filling_ = false;
    emit shownChanged();
}

void LayersPanel::showOnly(std::size_t layer) {
    filling_ = true;
    for (int i = 0; i < count(); ++i) {
        item(i)->setCheckState(static_cast<std::size_t>(i) == layer ? Qt::Checked : Qt::Unchecked);
    }
    filling_ = false;
    emit shownChanged();
}

void LayersPanel::hideLayer(std::size_t layer) {
    if (QListWidgetItem* found = item(static_cast<int>(layer))) {
        found->setCheckState(Qt::Unchecked);
    }
}

void LayersPanel::showLayer(std::size_t layer) {
    if (QListWidgetItem* found = item(static_cast<int>(layer))) {
        found->setCheckState(Qt::Checked);
    }
}

PropertiesPanel::PropertiesPanel(const Texts& texts, QWidget* parent) : QTreeWidget(parent), texts_(texts) {
    setObjectName(QStringLiteral("properties"));
    setColumnCount(2);
    setRootIsDecorated(false);
    setAlternatingRowColors(true);
    setIndentation(0);
    setWordWrap(true);
    connect(header(), &QHeaderView::sectionResized, this, [this](int column) {
        if (column == 1) {
            fitRows(*this);
        }
    });
}

void PropertiesPanel::show(const Drawing& drawing, const std::optional<PlanObject>& object) {
    showLines(propertiesOf(drawing, object, texts_));
}

void PropertiesPanel::show(const Drawing& drawing, const std::vector<PlanObject>& several) {
    showLines(propertiesOf(drawing, several, texts_));
}

void PropertiesPanel::showLines(const std::vector<Property>& lines) {
    clear();
    setHeaderLabels({texts_(Text::ColumnProperty), texts_(Text::ColumnValue)});
    QFont bold = font();
    bold.setBold(true);
    QList<QTreeWidgetItem*> items;
    for (const Property& property : lines) {
        auto* item = new QTreeWidgetItem({property.name, property.value});
        item->setToolTip(1, asWritten(property.value));
        if (property.heading) {
            item->setFont(0, bold);
            item->setBackground(0, palette().button());
            item->setBackground(1, palette().button());
        }
        items.append(item);
    }
    addTopLevelItems(items);
    for (int i = 0; i < topLevelItemCount(); ++i) {
        if (topLevelItem(i)->font(0).bold()) {
            topLevelItem(i)->setFirstColumnSpanned(true);
        }
    }
    resizeColumnToContents(0);
    fitRows(*this);
}

void PropertiesPanel::keyPressEvent(QKeyEvent* event) {
    if (!event->matches(QKeySequence::Copy)) {
        QTreeWidget::keyPressEvent(event);
        return;
    }
    QString text;
    for (int i = 0; i < topLevelItemCount(); ++i) {
        text += topLevelItem(i)->text(0) + QLatin1Char('\t') + topLevelItem(i)->text(1) + QLatin1Char('\n');
    }
    text.replace(QChar(QChar::Nbsp), QLatin1Char(' '));
    QGuiApplication::clipboard()->setText(text);
}

} // namespace fenmark::desk
