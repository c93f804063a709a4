// What the colours of the plan mean.
#include "desk/window/legend_panel.h"

#include <QPainter>
#include <QPixmap>

#include <utility>

namespace fenmark::desk {

using drawing::ElementType;

namespace {

constexpr QSize kSampleSize{32, 16};
constexpr int kElementRole = Qt::UserRole; // whether the kind is one of elements
constexpr int kKindRole = Qt::UserRole + 1;
constexpr double kSampleRatio = 3.0; // drawn this much finer, for screens of any scale

// A sample on paper, whatever the colours of the window are.
template <typename Draw>
QIcon sample(Draw&& draw) {
    QPixmap pixmap(kSampleSize * kSampleRatio);
    pixmap.setDevicePixelRatio(kSampleRatio);
    pixmap.fill(kPaper);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    draw(painter);
    painter.end();
    QIcon icon;
    icon.addPixmap(pixmap);
    icon.addPixmap(pixmap, QIcon::Selected); // not tinted
    return icon;
}

QIcon lineSample(const QColor& colour, double width, Qt::PenStyle pen = Qt::SolidLine) {
    return sample([&](QPainter& painter) {
        painter.setPen(QPen(colour, width, pen));
        painter.drawLine(QPointF(2.0, kSampleSize.height() / 2.0),
                         QPointF(kSampleSize.width() - 2.0, kSampleSize.height() / 2.0));
    });
}

QIcon styleSample(FigureStyle style) {
    const QColor& colour = colourOf(style);
    if (style <= FigureStyle::OtherPoint) {
        return sample([&](QPainter& painter) {
            painter.setPen(QPen(colour, 1.2));
            painter.setBrush(kPaper);
            painter.drawRect(QRectF(kSampleSize.width() / 2.0 - 2.5, kSampleSize.height() / 2.0 - 2.5, 5.0, 5.0));
        });
    }
    if (style == FigureStyle::Lot) {
        return sample([&](QPainter& painter) {
            painter.setPen(QPen(colour, 1.0));
            painter.setBrush(kLotFill);
            painter.drawRect(QRectF(4.5, 3.5, kSampleSize.width() - 9.0, kSampleSize.height() - 7.0));
        });
    }
    return lineSample(colour, 1.4, style == FigureStyle::IpLine ? Qt::DashDotLine : Qt::SolidLine);
}

constexpr std::pair<ElementType, Text> kElements[] = {
    {ElementType::Straight, Text::Straight}, {ElementType::Arc, Text::Arc}, {ElementType::Clothoid, Text::Clothoid}};

} // namespace

LegendPanel::LegendPanel(const Texts& texts, QWidget* parent) : QListWidget(parent), texts_(texts) {
    setObjectName(QStringLiteral("legend"));
    setIconSize(kSampleSize);
    setWordWrap(true); // in a narrow panel
    setResizeMode(QListView::Adjust);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(this, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
        if (!filling_) {
            hiddenOf(*item) = item->checkState() == Qt::Unchecked;
            emit shownChanged();
        }
    });
}

void LegendPanel::addKind(const QIcon& icon, Text name, std::size_t count, bool element, std::size_t kind) {
    if (count == 0) {
        return;
    }
    auto* item = new QListWidgetItem(icon, texts_(Text::KindCount).arg(texts_(name)).arg(count));
    item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
    item->setData(kElementRole, element);
    item->setData(kKindRole, static_cast<qulonglong>(kind));
    item->setCheckState(hiddenOf(*item) ? Qt::Unchecked : Qt::Checked);
    addItem(item);
}

bool& LegendPanel::hiddenOf(const QListWidgetItem& item) {
    const std::size_t kind = item.data(kKindRole).toULongLong();
    return item.data(kElementRole).toBool() ? hiddenElements_[kind] : hiddenStyles_[kind];
}

void LegendPanel::ticksToRows() {
    filling_ = true;
    for (int i = 0; i < count(); ++i) {
        item(i)->setCheckState(hiddenOf(*item(i)) ? Qt::Unchecked : Qt::Checked);
    }
    filling_ = false;
    emit shownChanged();
}

void LegendPanel::showAll() {
    hiddenStyles_.fill(false);
    hiddenElements_.fill(false);
    ticksToRows();
}

void LegendPanel::showOnly(int row) {
    if (row < 0 || row >= count()) {
        return;
    }
    hiddenStyles_.fill(true);
    hiddenElements_.fill(true);
    hiddenOf(*item(row)) = false;
    ticksToRows();
}

void LegendPanel::showOnly(FigureStyle style) {
    hiddenStyles_.fill(true);
    hiddenElements_.fill(true);
    showKind(style);
}

void LegendPanel::showKind(FigureStyle style) {
    hiddenStyles_[static_cast<std::size_t>(style)] = false;
    ticksToRows();
}

void LegendPanel::showElements() {
    hiddenElements_.fill(false);
    ticksToRows();
}

void LegendPanel::fill(const StyleCounts& entities, const drawing::Drawing& drawing) {
    filling_ = true;
    clear();
    for (const auto& [type, name] : kElements) {
        std::size_t count = 0;
        for (std::size_t a = 0; a < drawing.alignmentCount(); ++a) {
            for (const drawing::Element& element : drawing.alignment(a).elements) {
                count += element.type == type ? 1 : 0;
            }
        }
        addKind(lineSample(colourOf(type), 2.0), name, count, true, elementTypeIndex(type));
    }
    for (std::size_t kind = 0; kind < kFigureStyles; ++kind) {
        const auto style = static_cast<FigureStyle>(kind);
        addKind(styleSample(style), nameOf(style), entities[kind], false, kind);
    }
    filling_ = false;
}

} // namespace fenmark::desk
