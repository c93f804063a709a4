// The tree list control: its columns.
#include <algorithm>
#include <new>

#include "ui/treelist/tree_list_accessible.h"
#include "ui/treelist/tree_list_ctrl.h"
#include "ui/treelist/tree_list_header_ctrl.h"
#include "ui/treelist/tree_list_row_guard.h"
#include "ui/treelist/tree_list_widest_text.h"

namespace fenmark::ui::treelist {

void CTreeListCtrl::columnsChanged() {
    forgetAccessibleRows(this);
    scheduleLayout();
    repaintRows();
    if (header_) {
        header_->update();
    }
}

int CTreeListCtrl::InsertColumn(const QString& text, std::uint32_t format, int width, int image, int minimum,
                                int maximum) {
    CTreeListColumnInfo info;
    info.format = format;
    info.text = text.toStdString();
    info.image = image;
    const int column = columns_.append(std::move(info));
    choices_.emplace_back();
    SetColumnWidth(column, width, minimum, maximum);
    columnsChanged();
    return column;
}

void CTreeListCtrl::DeleteColumn(int column) {
    static_cast<void>(columns_.at(column));
    const RowGuard guard(*this);
    CancelModify();
    if (!guard.controlLives() || !columns_.contains(column)) {
        return; // the parent was quicker
    }
    if (header_) {
        header_->cancelDrag();
    }
    columns_.remove(column);
    choices_.erase(choices_.begin() + column);
    tree_.removeColumn(static_cast<std::size_t>(column));
    if (focusColumn_ > column || focusColumn_ >= columns_.count()) {
        focusColumn_ = std::max(0, focusColumn_ - 1);
    }
    columnsChanged();
}

int CTreeListCtrl::GetColumnCount() const {
    return columns_.count();
}

int CTreeListCtrl::widestText(int column, int start) const {
    const bool treeColumn = column == columns_.treeColumn();
    const RowMetrics sizes = metrics();
    // All rows of the flat list count, in view or not: scrolling must not bring up texts that are cut.
    WidestText texts(font());
    for (const CTreeListItem* row = tree_.root()->firstChild(); row; row = tree_.nextShown(row)) {
        texts.offer(row->texts().at(static_cast<std::size_t>(column)),
                    treeColumn ? treePartsWidth(*row, style_, sizes) : 0);
    }
    const int margins = GetStringWidth(QString());
    return tree_.visibleCount() == 0 ? start : std::max(start, texts.widest() + margins);
}

void CTreeListCtrl::SetColumnWidth(int column, int width, int minimum, int maximum) {
    if (!columns_.contains(column)) {
        // Meant so: a width for a column that is not there fails as a child window that cannot be made does.
        throw std::bad_alloc();
    }
    CTreeListColumnInfo& info = columns_.at(column);
    if (minimum >= 0) {
        info.minimumWidth = minimum;
    }
    if (maximum >= 0) {
        info.maximumWidth = maximum;
    }
    switch (width) {
    case kWidthMinimum:
        width = info.minimumWidth;
        break;
    case kWidthTexts:
        width = widestText(column, info.minimumWidth);
        break;
    case kWidthTextsAndHead:
        width = widestText(column, std::max(info.minimumWidth, GetStringWidth(GetColumnText(column)) + 4));
        break;
    default:
        break;
    }
    const int clamped = info.clampWidth(width);
    if (info.width != clamped) {
        info.width = clamped;
        scheduleLayout();
        repaintRows();
        if (header_) {
            header_->update();
        }
    }
}

int CTreeListCtrl::GetColumnWidth(int column) const {
    return columns_.at(column).width;
}

void CTreeListCtrl::SetColumnText(int column, const QString& text) {
    columns_.at(column).text = text.toStdString();
    columnsChanged();
}

QString CTreeListCtrl::GetColumnText(int column) const {
    return QString::fromStdString(columns_.at(column).text);
}

void CTreeListCtrl::SetColumnFormat(int column, std::uint32_t format) {
    columns_.setFormat(column, format);
    columnsChanged();
}

std::uint32_t CTreeListCtrl::GetColumnFormat(int column) const {
    return columns_.at(column).format;
}

void CTreeListCtrl::SetColumnImage(int column, int image) {
    columns_.at(column).image = image;
    columnsChanged();
}

int CTreeListCtrl::GetColumnImage(int column) const {
    return columns_.at(column).image;
}
void CTreeListCtrl::SetColumnModify(int column, int modify) {
    columns_.at(column).modify = modify;
}
int CTreeListCtrl::GetColumnModify(int column) const {
    return columns_.at(column).modify;
}

void CTreeListCtrl::SetColumnDefaultText(int column, const QString& text) {
    columns_.at(column).defaultText = text.toStdString();
}

QString CTreeListCtrl::GetColumnDefaultText(int column) const {
    return QString::fromStdString(columns_.at(column).defaultText);
}

void CTreeListCtrl::SetColumnChoices(int column, const QStringList& choices) {
    static_cast<void>(columns_.at(column));
    choices_[static_cast<std::size_t>(column)] = choices;
}

QStringList CTreeListCtrl::GetColumnChoices(int column) const {
    static_cast<void>(columns_.at(column));
    return choices_[static_cast<std::size_t>(column)];
}

std::vector<int> CTreeListCtrl::GetColumnOrderArray() const {
    return columns_.shown();
}
std::vector<int> CTreeListCtrl::GetSortedColumnArray() const {
    return columns_.sorted();
}

bool CTreeListCtrl::SetColumnOrderArray(const std::vector<int>& order) {
    if (!columns_.setShown(order)) {
        return false;
    }
    columnsChanged();
    return true;
}

int CTreeListCtrl::focusOrFirstColumn() const {
    return columns_.placeOf(focusColumn_) >= 0 ? focusColumn_ : columns_.treeColumn();
}

} // namespace fenmark::ui::treelist
