// Paints rows from the row at the top of the area to the one at its bottom; what is out of view costs nothing.
#include "ui/treelist/tree_list_painter.h"

#include <algorithm>
#include <cstdlib>

#include "ui/treelist/model/tree_list_colors.h"
#include "ui/treelist/tree_list_ctrl.h"
#include "ui/treelist/tree_list_resource.h"

namespace fenmark::ui::treelist {

namespace {

// The ink itself, or black or white where it would be hard to read on the fill, as with a light ink on a selected row.
QColor readableOn(const QColor& fill, const QColor& ink) {
    constexpr int kApart = 96; // of 255 grey levels
    const int ground = qGray(fill.rgb());
    if (std::abs(ground - qGray(ink.rgb())) >= kApart) {
        return ink;
    }
    return ground < 128 ? Qt::white : Qt::black;
}

} // namespace

TreeListPainter::TreeListPainter(const CTreeListCtrl& control, QPainter& painter)
    : control_(control), painter_(painter), font_(control.font()), metrics_(control.metrics()),
      height_(control.GetItemHeight()), baseline_(font_.ascent()), enabled_(control.isEnabled()),
      active_(control.hasFocus() || control.editorOpen_) {
    painter_.setFont(control.font());
}

void TreeListPainter::paint(const QRect& area) {
    const ItemTree& tree = control_.Tree();
    const int top = control_.GetTopIndex();
    const int first = std::max(0, area.top() / height_);
    int y = first * height_;
    const auto startIndex = static_cast<std::uint32_t>(top + first);
    const CTreeListItem* item = tree.itemAt(startIndex);
    const QColor rows = enabled_ ? control_.GetBkColor() : colorOf(TreeListColor::DisabledBackground);
    painter_.fillRect(area, rows);
    for (; item && y <= area.bottom(); item = tree.nextShown(item), y += height_) {
        paintRow(*item, y, area);
    }
    if (enabled_ && control_.GetBkColor() == colorOf(TreeListColor::RowBackground)) {
        // Below the last row and right of the last column.
        const int right = std::max(area.left(), control_.columns_.totalWidth() - control_.GetOrigin().x());
        painter_.fillRect(QRect(QPoint(area.left(), y), area.bottomRight()), colorOf(TreeListColor::Background));
        painter_.fillRect(QRect(QPoint(right, area.top()), area.bottomRight()), colorOf(TreeListColor::Background));
    }
    paintGrid(area, y);
    if (!focusFrame_.isNull()) {
        // Over the grid, so that the keyboard's place shows on all four sides.
        painter_.setPen(colorOf(TreeListColor::FocusFrame).darker(130));
        painter_.setBrush(Qt::NoBrush);
        painter_.drawRect(focusFrame_.adjusted(0, 0, -1, -1));
    }
}

void TreeListPainter::paintDragRow(const CTreeListItem& item, int y) {
    for (const int column : control_.columns_.shown()) {
        PixelRect cell{control_.columns_.left(column), y, control_.columns_.at(column).width, height_};
        RowParts parts = plainCellParts(cell);
        if (column == control_.columns_.treeColumn()) {
            parts = treeCellParts(item, control_.style_, cell, metrics_);
            paintTreeParts(item, parts);
        }
        paintText(item, column, parts.text, readableOn(colorOf(TreeListColor::SelectedRow), control_.GetTextColor()));
    }
}

void TreeListPainter::paintRow(const CTreeListItem& item, int y, const QRect& area) {
    const ColumnSet& columns = control_.columns_;
    const QPoint origin = control_.GetOrigin();
    const int total = columns.totalWidth();
    const bool selected = (item.state & kItemSelected) != 0;
    const bool focusRow = &item == control_.focusItem_;
    const QRect row(-origin.x(), y, total, height_);
    QColor rowFill = control_.GetBkColor();
    if (selected) {
        rowFill = colorOf(enabled_ && active_ ? TreeListColor::SelectedRowActive : TreeListColor::SelectedRow);
        painter_.fillRect(row & area, rowFill);
    }
    int x = -origin.x();
    for (const int column : columns.shown()) {
        const CTreeListColumnInfo& info = columns.at(column);
        const PixelRect cell{x, y, info.width, height_};
        x += info.width;
        if (cell.right() <= area.left() || cell.x > area.right()) {
            continue;
        }
        const bool focusCell = focusRow && column == control_.focusColumn_;
        QColor fill = rowFill;
        if (focusCell && active_ && enabled_) {
            fill = colorOf(TreeListColor::FocusCell);
        } else if (!selected && info.isSorted() && enabled_) {
            fill = colorOf(TreeListColor::SortedColumn);
        }
        if (fill != rowFill) {
            painter_.fillRect(toRect(cell), fill);
        }
        RowParts parts = plainCellParts(cell);
        if (column == columns.treeColumn()) {
            parts = treeCellParts(item, control_.style_, cell, metrics_);
            paintTreeLines(item, parts);
            paintTreeParts(item, parts);
        }
        paintText(item, column, parts.text,
                  enabled_ ? readableOn(fill, control_.GetTextColor()) : colorOf(TreeListColor::Line).darker(125));
        if (focusCell && active_ && enabled_) {
            focusFrame_ = toRect(cell);
        }
    }
    if (focusRow && !active_ && enabled_ && selected) {
        painter_.setPen(colorOf(TreeListColor::SelectionFrame));
        painter_.setBrush(Qt::NoBrush);
        painter_.drawRect(row.adjusted(0, 0, -1, -1));
    }
}

void TreeListPainter::paintTreeParts(const CTreeListItem& item, const RowParts& parts) {
    const auto look = [&](int flag) {
        return CTreeListResource::Look{enabled_, enabled_ && control_.hotItem_ == &item && control_.hotFlag_ == flag};
    };
    const std::uint32_t style = control_.style_;
    if ((style & kStyleButtons) && !parts.button.isEmpty()) {
        const ButtonKind kind = buttonKind(item);
        const PixelRect square = buttonSquare(parts.button, metrics_);
        if (kind != ButtonKind::None && square.right() <= parts.cell.right()) {
            CTreeListResource::drawButton(painter_, toRect(square), kind, look(kHitButton));
        }
    }
    if (!parts.check.isEmpty()) {
        CTreeListResource::drawCheckBox(painter_, toRect(parts.check), ItemTree::pairValue(&item, kCheckPair),
                                        look(kHitCheck), metrics_);
    }
    if (!parts.lock.isEmpty()) {
        CTreeListResource::drawLockBox(painter_, toRect(parts.lock), ItemTree::pairValue(&item, kLockPair),
                                       look(kHitLock), metrics_);
    }
    if (!parts.image.isEmpty()) {
        const bool selected = (item.state & kItemSelected) != 0;
        const std::size_t which = (item.isExpanded() ? 1U : 0U) + (selected ? 2U : 0U);
        const int number = item.images[which];
        if (number >= 0 && number < control_.images_.size()) {
            const int side = std::min({metrics_.cell(), parts.image.width, parts.image.height});
            const QRect place(parts.image.x, parts.image.y + (parts.image.height - side) / 2, side, side);
            control_.images_.at(number).paint(&painter_, place, Qt::AlignCenter,
                                              enabled_ ? QIcon::Normal : QIcon::Disabled);
        }
    }
}

void TreeListPainter::paintText(const CTreeListItem& item, int column, const PixelRect& rect, const QColor& ink) {
    if (rect.isEmpty()) {
        return;
    }
    if (control_.editorOpen_ && control_.modifyItem_ == &item && control_.modifyColumn_ == column) {
        return; // the editor stands there
    }
    QString text = control_.cellText(&item, column);
    if (text.isEmpty()) {
        return;
    }
    const CTreeListColumnInfo& info = control_.columns_.at(column);
    const int margin = control_.textMargin(rect.width);
    int width = font_.horizontalAdvance(text);
    if (width > rect.width - 2 * margin) {
        text = font_.elidedText(text, Qt::ElideRight, rect.width - 2 * margin);
        width = font_.horizontalAdvance(text);
    }
    int x = rect.x + margin;
    switch (info.cellAlign()) {
    case HorizontalAlign::Left:
        break;
    case HorizontalAlign::Right:
        x = rect.right() - margin - width;
        break;
    case HorizontalAlign::Center:
        x = rect.x + (rect.width - width) / 2;
        break;
    }
    int y = rect.y + (rect.height - font_.height()) / 2;
    switch (info.cellVerticalAlign()) {
    case VerticalAlign::Top:
        y = rect.y;
        break;
    case VerticalAlign::Bottom:
        y = rect.bottom() - font_.height();
        break;
    case VerticalAlign::Center:
        break;
    }
    painter_.setPen(ink);
    painter_.drawText(QPoint(std::max(x, rect.x), y + baseline_), text);
}

void TreeListPainter::paintGrid(const QRect& area, int rowsEnd) {
    const std::uint32_t style = control_.style_;
    const ColumnSet& columns = control_.columns_;
    const int left = -control_.GetOrigin().x();
    const int bottom = std::min(rowsEnd, area.bottom() + 1);
    if (style & kStyleHorizontalGrid) {
        const int right = std::min(left + columns.totalWidth(), area.right() + 1);
        for (int y = (area.top() / height_ + 1) * height_ - 1; y < bottom; y += height_) {
            CTreeListResource::drawLine(painter_, QRect(left, y, right - left, 1),
                                        colorOf(TreeListColor::HorizontalGrid));
        }
    }
    if (style & kStyleVerticalGrid) {
        int x = left;
        for (const int column : columns.shown()) {
            x += columns.at(column).width;
            CTreeListResource::drawLine(painter_, QRect(x - 1, area.top(), 1, bottom - area.top()),
                                        colorOf(TreeListColor::VerticalGrid));
        }
    }
}

void TreeListPainter::addVertical(int x, int from, int to) {
    // One pixel in two, in step over all rows.
    for (int y = from + ((x + from) & 1); y < to; y += 2) {
        dots_.emplace_back(x, y);
    }
}

void TreeListPainter::addHorizontal(int y, int from, int to) {
    for (int x = from + ((y + from) & 1); x < to; x += 2) {
        dots_.emplace_back(x, y);
    }
}

void TreeListPainter::paintTreeLines(const CTreeListItem& item, const RowParts& parts) {
    const std::uint32_t style = control_.style_;
    if (!(style & kStyleTreeLines) || parts.button.isEmpty()) {
        return;
    }
    const bool rootLines = (style & kStyleRootLines) != 0;
    const int top = parts.cell.y;
    const int bottom = parts.cell.bottom();
    const int middle = parts.button.y + parts.button.height / 2;
    const int right = std::min(parts.cell.right(), parts.button.right());
    int x = parts.button.x + metrics_.cell() / 2;
    if ((item.level() > 1 || rootLines) && x < parts.cell.right()) {
        // The line stops at the button's frame.
        const bool button = (style & kStyleButtons) && item.canHaveButton();
        const int gap = button ? metrics_.button() / 2 : 0;
        if (item.level() > 1 || item.previousSibling()) {
            addVertical(x, top, middle - gap);
        }
        if (item.nextSibling()) {
            addVertical(x, middle + gap, bottom);
        }
        addHorizontal(middle, x + gap, right);
    }
    for (const CTreeListItem* row = item.parent(); row && row->level() >= 1; row = row->parent()) {
        x -= metrics_.indent();
        if (row->nextSibling() && (row->level() > 1 || rootLines) && x < parts.cell.right()) {
            addVertical(x, top, bottom);
        }
    }
    if (!dots_.empty()) {
        painter_.setPen(colorOf(TreeListColor::Line));
        painter_.drawPoints(dots_.data(), static_cast<int>(dots_.size()));
        dots_.clear();
    }
}

} // namespace fenmark::ui::treelist
