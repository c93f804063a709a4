// The header of the tree list.
#include "ui/treelist/tree_list_header_ctrl.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include <QApplication>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QScrollBar>
#include <QToolTip>

#include "ui/treelist/tree_list_ctrl.h"
#include "ui/treelist/tree_list_dc.h"
#include "ui/treelist/tree_list_drag_windows.h"
#include "ui/treelist/tree_list_resource.h"
#include "ui/treelist/tree_list_text.h"

namespace fenmark::ui::treelist {

namespace {

constexpr int kHeight = 20;   // least height, pixels at 96 dots an inch
constexpr int kGrasp = 4;     // how far from an edge it is grasped
constexpr int kMargin = 4;    // of the text in a cell
constexpr int kSortMark = 12; // width of the sort mark
constexpr int kOff = 24;      // this far below or above the header a column is dragged off

} // namespace

CTreeListHeaderCtrl::CTreeListHeaderCtrl(CTreeListCtrl& control) : QWidget(&control), control_(control) {
    setObjectName(QString::fromLatin1(kWindowClass));
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::NoFocus);
}

CTreeListHeaderCtrl::~CTreeListHeaderCtrl() = default;

int CTreeListHeaderCtrl::preferredHeight() const {
    const RowMetrics sizes = control_.metrics();
    return std::max(sizes.px(kHeight), control_.fontMetrics().height() + sizes.px(6));
}

QRect CTreeListHeaderCtrl::cellRect(int column) const {
    const int left = control_.columns_.left(column);
    if (left < 0) {
        return {};
    }
    return QRect(left - control_.horizontalScrollBar()->value(), 0, control_.columns_.at(column).width, height());
}

int CTreeListHeaderCtrl::columnAt(int x) const {
    return control_.columns_.columnAt(x + control_.horizontalScrollBar()->value());
}

int CTreeListHeaderCtrl::edgeAt(int x) const {
    x += control_.horizontalScrollBar()->value();
    // Of edges at one place, the last is grasped, so that a column of no width can be widened again.
    int edge = 0;
    int found = -1;
    for (const int column : control_.columns_.shown()) {
        edge += control_.columns_.at(column).width;
        if (std::abs(x - edge) <= kGrasp) {
            found = column;
        }
    }
    return found;
}

void CTreeListHeaderCtrl::paintEvent(QPaintEvent*) {
    CTreeListDC surface;
    QPainter& painter = surface.begin(rect(), devicePixelRatioF());
    painter.setFont(control_.font());
    painter.fillRect(rect(), colorOf(TreeListColor::HeaderFace));
    for (const int column : control_.columns_.shown()) {
        const QRect cell = cellRect(column);
        if (cell.intersects(rect())) {
            paintCell(painter, column, cell);
        }
    }
    painter.fillRect(QRect(0, height() - 1, width(), 1), colorOf(TreeListColor::HeaderEdge));
    QPainter window(this);
    surface.copyTo(window);
}

void CTreeListHeaderCtrl::paintCell(QPainter& painter, int column, const QRect& rect) const {
    const CTreeListColumnInfo& info = control_.columns_.at(column);
    if (column == pressColumn_) {
        painter.fillRect(rect, colorOf(TreeListColor::HeaderPressed));
    } else if (column == hotColumn_ && isEnabled()) {
        painter.fillRect(rect, colorOf(TreeListColor::SelectedRow));
    }
    painter.fillRect(QRect(rect.right(), 3, 1, rect.height() - 6), colorOf(TreeListColor::HeaderEdge));
    QRect inner = rect.adjusted(kMargin, 1, -kMargin, -2);
    if (info.isSorted()) {
        const QRect mark(inner.right() - kSortMark + 1, inner.y(), kSortMark, inner.height());
        CTreeListResource::drawSortMark(painter, mark, (info.format & kColumnSortedUp) != 0);
        inner.setRight(mark.left() - 1);
    }
    if (info.image >= 0 && info.image < control_.images_.size()) {
        const int side = std::min(control_.metrics().cell(), inner.height());
        control_.images_.at(info.image)
            .paint(&painter, QRect(inner.x(), inner.y() + (inner.height() - side) / 2, side, side));
        inner.setLeft(inner.left() + side + 2);
    }
    int flags = Qt::TextSingleLine;
    switch (info.headAlign()) {
    case HorizontalAlign::Left:
        flags |= Qt::AlignLeft;
        break;
    case HorizontalAlign::Right:
        flags |= Qt::AlignRight;
        break;
    case HorizontalAlign::Center:
        flags |= Qt::AlignHCenter;
        break;
    }
    switch (info.headVerticalAlign()) {
    case VerticalAlign::Top:
        flags |= Qt::AlignTop;
        break;
    case VerticalAlign::Bottom:
        flags |= Qt::AlignBottom;
        break;
    case VerticalAlign::Center:
        flags |= Qt::AlignVCenter;
        break;
    }
    if (inner.width() > 0) {
        const QFontMetrics metrics(control_.font());
        painter.setPen(isEnabled() ? QColor(Qt::black) : colorOf(TreeListColor::Line));
        painter.drawText(inner, flags,
                         metrics.elidedText(control_.GetColumnText(column), Qt::ElideRight, inner.width()));
    }
}

bool CTreeListHeaderCtrl::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const int column = columnAt(help->pos().x());
        if (column >= 0) {
            const QString text = control_.GetColumnText(column);
            const bool cut = control_.fontMetrics().horizontalAdvance(text) > cellRect(column).width() - 2 * kMargin;
            QToolTip::showText(help->globalPos(), cut ? text : QString(), this);
            return true;
        }
    }
    return QWidget::event(event);
}

void CTreeListHeaderCtrl::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    const QPointer<CTreeListHeaderCtrl> self(this);
    control_.FinishModify();
    if (!self) {
        return; // the parent deleted the control
    }
    pressPoint_ = event->position().toPoint();
    trackColumn_ = edgeAt(pressPoint_.x());
    if (trackColumn_ >= 0) {
        control_.setFocus(Qt::MouseFocusReason); // which takes the Escape that breaks the drag off
        CTreeListColumnInfo& info = control_.columns_.at(trackColumn_);
        info.trackStartWidth = info.width;
        info.trackStartPosition = pressPoint_.x();
        return;
    }
    pressColumn_ = columnAt(pressPoint_.x());
    update();
}

void CTreeListHeaderCtrl::mouseMoveEvent(QMouseEvent* event) {
    const QPoint point = event->position().toPoint();
    if (trackColumn_ >= 0) {
        const CTreeListColumnInfo& info = control_.columns_.at(trackColumn_);
        const int wanted = info.trackStartWidth + point.x() - info.trackStartPosition;
        control_.SetColumnWidth(trackColumn_, std::max(0, wanted));
        return;
    }
    if (dragWindow_) {
        moveColumnDrag(point);
        return;
    }
    if (pressColumn_ >= 0 && (event->buttons() & Qt::LeftButton)) {
        if ((control_.GetStyle() & (kStyleDragColumns | kStyleHideColumns)) &&
            (point - pressPoint_).manhattanLength() >= QApplication::startDragDistance()) {
            startColumnDrag(point);
        }
        return;
    }
    if (edgeAt(point.x()) >= 0) {
        setCursor(CTreeListResource::widthCursor());
    } else {
        unsetCursor();
    }
    const int hot = columnAt(point.x());
    if (hot != hotColumn_) {
        hotColumn_ = hot;
        update();
    }
}

void CTreeListHeaderCtrl::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    const QPoint point = event->position().toPoint();
    if (dragWindow_) {
        endColumnDrag(true, point);
    }
    trackColumn_ = -1;
    const int column = std::exchange(pressColumn_, -1);
    update();
    if (column >= 0 && column == columnAt(point.x()) && rect().contains(point)) {
        emit control_.headerClicked(column);
    }
}

void CTreeListHeaderCtrl::cancelDrag() {
    if (trackColumn_ >= 0) {
        const int column = std::exchange(trackColumn_, -1);
        control_.SetColumnWidth(column, control_.columns_.at(column).trackStartWidth);
    }
    if (dragWindow_) {
        endColumnDrag(false, {});
    }
    pressColumn_ = -1;
    hotColumn_ = -1;
    update();
}

void CTreeListHeaderCtrl::mouseDoubleClickEvent(QMouseEvent* event) {
    const int column = event->button() == Qt::LeftButton ? edgeAt(event->position().toPoint().x()) : -1;
    if (column >= 0) {
        control_.SetColumnWidth(column, kWidthTextsAndHead);
    } else {
        mousePressEvent(event);
    }
}

void CTreeListHeaderCtrl::leaveEvent(QEvent*) {
    hotColumn_ = -1;
    update();
}

void CTreeListHeaderCtrl::hideEvent(QHideEvent*) {
    cancelDrag();
}

bool CTreeListHeaderCtrl::moveColumn(int column, int place) {
    const int count = static_cast<int>(control_.columns_.shown().size());
    if (!(control_.GetStyle() & kStyleDragColumns) || !control_.columns_.contains(column) || place < 0 ||
        place >= count) {
        return false;
    }
    control_.columns_.place(column, place);
    control_.columnsChanged();
    return true;
}

bool CTreeListHeaderCtrl::hideColumn(int column) {
    // The last shown column stays, or there would be no header left to bring columns back with.
    if (!(control_.GetStyle() & kStyleHideColumns) || control_.columns_.shown().size() < 2 ||
        control_.columns_.placeOf(column) < 0) {
        return false;
    }
    control_.columns_.place(column, -1);
    control_.columnsChanged();
    return true;
}

bool CTreeListHeaderCtrl::showColumn(int column) {
    if (!(control_.GetStyle() & kStyleHideColumns) || !control_.columns_.contains(column) ||
        control_.columns_.placeOf(column) >= 0) {
        return false;
    }
    control_.columns_.place(column, static_cast<int>(control_.columns_.shown().size()));
    control_.columnsChanged();
    return true;
}

void CTreeListHeaderCtrl::contextMenuEvent(QContextMenuEvent* event) {
    showMenu(event->globalPos(), columnAt(event->pos().x()));
}

void CTreeListHeaderCtrl::showMenu(const QPoint& globalPoint, int column) {
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (column >= 0 && (control_.GetColumnFormat(column) & kColumnCanSort)) {
        // What a click on the cell does, for those who use no mouse.
        menu->addAction(treeListText("Sort", "並べ替え"), &control_, [this, column] {
            if (control_.columns_.contains(column)) {
                emit control_.headerClicked(column);
            }
        });
        menu->addSeparator();
    }
    if (column >= 0) {
        menu->addAction(treeListText("Fit Width", "幅を内容に合わせる"), this, [this, column] {
            if (control_.columns_.contains(column)) {
                control_.SetColumnWidth(column, kWidthTextsAndHead);
            }
        });
    }
    menu->addAction(treeListText("Fit All Widths", "すべての幅を内容に合わせる"), this, [this] {
        const std::vector<int> shown = control_.columns_.shown();
        for (const int each : shown) {
            control_.SetColumnWidth(each, kWidthTextsAndHead);
        }
    });
    if (control_.GetStyle() & kStyleHideColumns) {
        menu->addSeparator();
        for (int each = 0; each < control_.columns_.count(); ++each) {
            QAction* action = menu->addAction(control_.GetColumnText(each));
            action->setCheckable(true);
            const bool shown = control_.columns_.placeOf(each) >= 0;
            action->setChecked(shown);
            action->setEnabled(!shown || control_.columns_.shown().size() > 1);
            connect(action, &QAction::triggered, this,
                    [this, each](bool on) { on ? showColumn(each) : hideColumn(each); });
        }
    }
    menu->popup(globalPoint);
}

void CTreeListHeaderCtrl::startColumnDrag(const QPoint& point) {
    control_.setFocus(Qt::MouseFocusReason); // as for a drag of a width
    const QRect cell = cellRect(pressColumn_);
    QPixmap picture(cell.size() * devicePixelRatioF());
    picture.setDevicePixelRatio(devicePixelRatioF());
    picture.fill(colorOf(TreeListColor::HeaderFace));
    {
        QPainter painter(&picture);
        painter.setFont(control_.font());
        paintCell(painter, pressColumn_, QRect(QPoint(0, 0), cell.size()));
        painter.setPen(colorOf(TreeListColor::Line));
        painter.drawRect(QRect(QPoint(0, 0), cell.size()).adjusted(0, 0, -1, -1));
    }
    dragWindow_ = std::make_unique<CTLHDragWnd>(picture, cell.topLeft() - pressPoint_);
    dropWindow_ = std::make_unique<CTLHDropWnd>(this);
    moveColumnDrag(point);
}

int CTreeListHeaderCtrl::placeAt(int x) const {
    x += control_.horizontalScrollBar()->value();
    int place = 0;
    int left = 0;
    for (const int column : control_.columns_.shown()) {
        const int width = control_.columns_.at(column).width;
        if (x < left + width / 2) {
            break;
        }
        left += width;
        ++place;
    }
    return place;
}

bool CTreeListHeaderCtrl::offHeader(const QPoint& point) const {
    return point.y() < -kOff || point.y() > height() + kOff || point.x() < -kOff || point.x() > width() + kOff;
}

void CTreeListHeaderCtrl::moveColumnDrag(const QPoint& point) {
    dragWindow_->follow(mapToGlobal(point));
    if (offHeader(point)) {
        dropWindow_->hide();
        setCursor((control_.GetStyle() & kStyleHideColumns) ? Qt::DragMoveCursor : Qt::ForbiddenCursor);
        return;
    }
    unsetCursor();
    if (control_.GetStyle() & kStyleDragColumns) {
        const int place = placeAt(point.x());
        int x = -control_.horizontalScrollBar()->value();
        for (int i = 0; i < place; ++i) {
            x += control_.columns_.at(control_.columns_.shown()[static_cast<std::size_t>(i)]).width;
        }
        dropWindow_->showAt(x, height());
    }
}

void CTreeListHeaderCtrl::endColumnDrag(bool drop, const QPoint& point) {
    dragWindow_.reset();
    dropWindow_.reset();
    unsetCursor();
    const int column = std::exchange(pressColumn_, -1);
    if (!drop || column < 0) {
        return;
    }
    if (offHeader(point)) {
        hideColumn(column);
        return;
    }
    const int from = control_.columns_.placeOf(column);
    const int place = placeAt(point.x());
    moveColumn(column, place > from ? place - 1 : place);
}

} // namespace fenmark::ui::treelist
