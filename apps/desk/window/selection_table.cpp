// The rows of the selected objects as a table.
#include "desk/window/selection_table.h"

#include "desk/plan/plan_text.h"
#include "desk/window/properties.h"
#include "exchange/plan/plan_geometry.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace fenmark::desk {

using drawing::Alignment;
using drawing::Drawing;
using drawing::EntityView;

namespace {

constexpr std::size_t kRowsThatComeAndGo = 2000;
constexpr std::array kTitles{Text::ColumnKind,   Text::ColumnNo,   Text::ColumnName,  Text::ColumnX,   Text::ColumnY,
                             Text::ColumnHeight, Text::ColumnSize, Text::ColumnLayer, Text::ColumnFile};
static_assert(kTitles.size() == SelectionModel::Columns);

bool isNumber(int column) {
    return column == SelectionModel::No || (column >= SelectionModel::X && column <= SelectionModel::Size);
}

// The area of what is closed, otherwise the length: m² or m.
double sizeOf(const EntityView& entity) {
    if (entity.closed) {
        return std::abs(exchange::signedArea(entity.vertices));
    }
    double length = 0.0;
    for (std::size_t i = 1; i < entity.vertices.size(); ++i) {
        length += std::hypot(entity.vertices[i].x - entity.vertices[i - 1].x,
                             entity.vertices[i].y - entity.vertices[i - 1].y);
    }
    return length;
}

} // namespace

SelectionModel::SelectionModel(const Texts& texts, QObject* parent) : QAbstractTableModel(parent), texts_(texts) {}

void SelectionModel::show(const Drawing& drawing, std::vector<PlanObject> objects) {
    beginResetModel();
    drawing_ = &drawing;
    objects_ = std::move(objects);
    endResetModel();
}

void SelectionModel::retranslate() {
    beginResetModel();
    endResetModel();
}

void SelectionModel::emptyWhile(const std::function<void()>& act) {
    std::vector<PlanObject> objects;
    const auto exchange = [&] {
        beginResetModel();
        objects_.swap(objects);
        endResetModel();
    };
    exchange();
    act();
    exchange();
}

int SelectionModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(objects_.size());
}

int SelectionModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Columns;
}

QVariant SelectionModel::entityCell(const EntityView& entity, int column) const {
    switch (column) {
    case No:
        return entity.row ? QVariant(entity.row->no) : QVariant();
    case Name:
        return entity.row ? fromUtf8(entity.row->name).trimmed() : QString();
    case X:
        return entity.isPoint() ? QVariant(entity.position().y) : QVariant();
    case Y:
        return entity.isPoint() ? QVariant(entity.position().x) : QVariant();
    case Height:
        return entity.isPoint() ? QVariant(entity.position().z) : QVariant();
    case Size:
        return entity.isPoint() ? QVariant() : QVariant(sizeOf(entity));
    case Layer:
        return fromUtf8(entity.layer);
    case File:
        return entity.row ? fromUtf8(entity.row->fileName) : QString();
    default:
        return {};
    }
}

QVariant SelectionModel::alignmentCell(const PlanObject& object, int column) const {
    const Alignment& alignment = drawing_->alignment(object.index);
    switch (column) {
    case No:
        return object.element ? QVariant(static_cast<qulonglong>(*object.element + 1)) : QVariant();
    case Name:
        return fromUtf8(alignment.name).trimmed();
    case Size:
        return object.element ? alignment.elements[*object.element].length : alignment.length();
    case Layer:
        return fromUtf8(alignment.layer);
    default:
        return {};
    }
}

QVariant SelectionModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {}; // as of a table without a current row
    }
    if (role == Qt::TextAlignmentRole) {
        return QVariant(Qt::AlignVCenter | (isNumber(index.column()) ? Qt::AlignRight : Qt::AlignLeft));
    }
    const PlanObject& wanted = object(index.row());
    if ((role != Qt::DisplayRole && role != Qt::UserRole) || drawing_ == nullptr || !exists(*drawing_, wanted)) {
        return {};
    }
    if (index.column() == Kind) {
        return kindName(*drawing_, wanted, texts_);
    }
    const QVariant value = wanted.kind == PlanObject::Kind::Entity
                               ? entityCell(drawing_->entity(wanted.index), index.column())
                               : alignmentCell(wanted, index.column());
    if (role != Qt::DisplayRole || !value.isValid()) {
        return value;
    }
    if (index.column() >= X && index.column() <= Size) {
        return metres(value.toDouble());
    }
    return isNumber(index.column()) ? value : QVariant(shownName(value.toString().toStdString()));
}

QVariant SelectionModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole) {
        return {};
    }
    return orientation == Qt::Horizontal ? QVariant(texts_(kTitles[static_cast<std::size_t>(section)]))
                                         : QVariant(section + 1);
}

SelectionTable::SelectionTable(const Texts& texts, QWidget* parent)
    : QWidget(parent), texts_(texts), model_(new SelectionModel(texts, this)), sorted_(new QSortFilterProxyModel(this)),
      view_(new QTableView), filter_(new QLineEdit), count_(new QLabel) {
    setObjectName(QStringLiteral("table"));
    sorted_->setSourceModel(model_);
    sorted_->setSortRole(Qt::UserRole);
    sorted_->setFilterKeyColumn(-1); // any
    sorted_->setFilterCaseSensitivity(Qt::CaseInsensitive);
    view_->setModel(sorted_);
    view_->setSortingEnabled(true);
    view_->sortByColumn(-1, Qt::AscendingOrder); // as selected
    view_->setSelectionBehavior(QAbstractItemView::SelectRows);
    view_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view_->setAlternatingRowColors(true);
    view_->setTabKeyNavigation(false);
    view_->verticalHeader()->hide();
    view_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    view_->installEventFilter(this);
    filter_->setClearButtonEnabled(true);
    auto* top = new QHBoxLayout;
    top->addWidget(filter_, 1);
    top->addWidget(count_);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->addLayout(top);
    all->addWidget(view_, 1);
    setFocusProxy(view_);
    connect(filter_, &QLineEdit::textChanged, this, [this](const QString& text) {
        // Many rows that come and go here and there cost the square of their number. A few keep what is chosen.
        const auto filter = [&] { sorted_->setFilterFixedString(text); };
        if (size_ > kRowsThatComeAndGo) {
            model_->emptyWhile(filter);
        } else {
            filter();
        }
        showCount();
    });
    connect(view_, &QTableView::clicked, this,
            [this](const QModelIndex& index) { emit objectChosen(model_->object(sorted_->mapToSource(index).row())); });
    connect(view_, &QTableView::activated, this,
            [this](const QModelIndex& index) { emit objectChosen(model_->object(sorted_->mapToSource(index).row())); });
}

void SelectionTable::show(const Drawing& drawing, const std::vector<PlanObject>& objects) {
    size_ = objects.size();
    model_->show(drawing, objects);
    showCount();
}

void SelectionTable::showCount() {
    count_->setText(texts_(Text::TableCount).arg(sorted_->rowCount()));
}

void SelectionTable::retranslate() {
    filter_->setPlaceholderText(texts_(Text::TableFilter));
    filter_->setAccessibleName(texts_(Text::TableFilter));
    view_->setAccessibleName(texts_(Text::TablePanel));
    model_->retranslate();
    showCount();
}

QString SelectionTable::copied() const {
    std::vector<int> rows;
    for (const QModelIndex& index : view_->selectionModel()->selectedRows()) {
        rows.push_back(index.row());
    }
    std::sort(rows.begin(), rows.end());
    if (rows.empty()) {
        for (int row = 0; row < sorted_->rowCount(); ++row) {
            rows.push_back(row);
        }
    }
    QStringList lines;
    QStringList cells;
    for (int column = 0; column < SelectionModel::Columns; ++column) {
        cells.append(model_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
    }
    lines.append(cells.join(QLatin1Char('\t')));
    for (const int row : rows) {
        cells.clear();
        for (int column = 0; column < SelectionModel::Columns; ++column) {
            // A tab or an end of line in a name would begin another cell.
            const int role = isNumber(column) ? Qt::DisplayRole : Qt::UserRole; // names whole
            cells.append(sorted_->index(row, column).data(role).toString().simplified());
        }
        lines.append(cells.join(QLatin1Char('\t')));
    }
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

bool SelectionTable::eventFilter(QObject* watched, QEvent* event) {
    if (watched == view_ && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy)) {
        QGuiApplication::clipboard()->setText(copied());
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace fenmark::desk
