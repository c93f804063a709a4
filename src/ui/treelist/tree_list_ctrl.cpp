// The tree list control: set-up, layout, painting and the notifications to its parent.
#include "ui/treelist/tree_list_ctrl.h"

#include <algorithm>

#include <QAccessible>
#include <QApplication>
#include <QCoreApplication>
#include <QEvent>
#include <QHelpEvent>
#include <QPaintEvent>
#include <QScrollBar>

#include "ui/treelist/tree_list_accessible.h"
#include "ui/treelist/tree_list_dc.h"
#include "ui/treelist/tree_list_drag_windows.h"
#include "ui/treelist/tree_list_editors.h"
#include "ui/treelist/tree_list_header_ctrl.h"
#include "ui/treelist/tree_list_painter.h"
#include "ui/treelist/tree_list_resource.h"
#include "ui/treelist/tree_list_row_guard.h"
#include "ui/treelist/tree_list_tip_ctrl.h"

namespace fenmark::ui::treelist {

namespace {

constexpr int kRowHeight = 18;      // least height of a row that follows the font, pixels at 96 dots an inch
constexpr int kRowMargin = 4;       // above and below the text together
constexpr double kDotsPerInch = 96; // at which sizes are given
constexpr int kTextMargin = 3;      // left and right of a cell's text
constexpr int kHintWidth = 320;
constexpr int kHintRows = 10;

} // namespace

CTreeListCtrl::CTreeListCtrl(QWidget* parent)
    : QAbstractScrollArea(parent), backColor_(colorOf(TreeListColor::RowBackground)), textColor_(Qt::black),
      surface_(std::make_unique<CTreeListDC>()) {
    installTreeListAccessibility();
    setFocusPolicy(Qt::StrongFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    viewport()->setMouseTracking(true);
    verticalScrollBar()->setSingleStep(1);
    horizontalScrollBar()->setLayoutDirection(Qt::LeftToRight); // columns stand from left to right in every language
}

CTreeListCtrl::~CTreeListCtrl() {
    for (RowGuard* guard : guards_) {
        guard->control_ = nullptr;
        guard->item_ = nullptr;
    }
    forgetAccessibleRows(this);
    if (state_ & kControlCaptured) {
        QApplication::restoreOverrideCursor();
    }
    if (dragTarget_ && dragTarget_ != this) {
        dragTarget_->DragLeave(this);
    }
    // Now, since they call back when they lose the focus or are hidden.
    delete header_;
    delete tip_;
    delete staticEditor_;
    delete editEditor_;
    delete comboEditor_;
}

bool CTreeListCtrl::Create(std::uint32_t style, const QRect& place, QWidget* parent) {
    if (state_ & kControlCreated) {
        return false;
    }
    if (parent && parent != parentWidget()) {
        setParent(parent);
    }
    if (place.isValid()) {
        setGeometry(place);
    }
    SetStyle(style);
    setUp();
    return true;
}

bool CTreeListCtrl::AttachTo(QWidget* placeholder) {
    if ((state_ & kControlCreated) || !placeholder) {
        return false;
    }
    setParent(placeholder->parentWidget());
    setGeometry(placeholder->geometry());
    setObjectName(placeholder->objectName());
    setEnabled(placeholder->isEnabled());
    QWidget::setTabOrder(placeholder, this);
    const bool shown = !placeholder->isHidden();
    delete placeholder;
    setUp();
    setVisible(shown);
    return true;
}

void CTreeListCtrl::setUp() {
    if (state_ & kControlCreated) {
        return;
    }
    if (objectName().isEmpty()) {
        // Taken by value: a reference would make a shared symbol of the constant where nothing is optimised, and the loader
        // keeps a module that has one.
        setObjectName(QString::fromLatin1(kWindowClass, -1));
    }
    // Running out of memory here raises std::bad_alloc, and the control stays as it was.
    header_ = new CTreeListHeaderCtrl(*this);
    tip_ = new CTreeListTipCtrl(*this);
    staticEditor_ = new CTreeListStaticCtrl(*this);
    editEditor_ = new CTreeListEditCtrl(*this);
    comboEditor_ = new CTreeListComboCtrl(*this);
    verticalScrollBar()->installEventFilter(this);
    horizontalScrollBar()->installEventFilter(this);
    state_ |= kControlCreated;
    layoutDirty_ = true;
    layoutNow();
}

void CTreeListCtrl::setState(std::uint32_t bits, bool on) {
    if (on) {
        state_ |= bits;
    } else {
        state_ &= ~bits;
    }
}

void CTreeListCtrl::SetState(std::uint32_t state, std::uint32_t mask) {
    mask &= ~std::uint32_t{kControlCreated}; // set-up happens once
    state_ = (state_ & ~mask) | (state & mask);
    if (mask & kControlEnabled) {
        setEnabled((state & kControlEnabled) != 0);
    }
}

void CTreeListCtrl::SetStyle(std::uint32_t style) {
    style_ = effectiveStyle(style);
    if (!(style_ & kStyleMultiSelect) && selection_.size() > 1) {
        CTreeListItem* kept = selection_.front();
        clearSelection();
        kept->state |= kItemSelected;
        selection_.push_front(kept);
    }
    scheduleLayout();
    repaintRows();
}

void CTreeListCtrl::SetBkColor(const QColor& color) {
    backColor_ = color;
    repaintRows();
}

void CTreeListCtrl::SetTextColor(const QColor& color) {
    textColor_ = color;
    repaintRows();
}

void CTreeListCtrl::SetImageList(const QList<QIcon>& images) {
    images_ = images;
    repaintRows();
    if (header_) {
        header_->update();
    }
}

RowMetrics CTreeListCtrl::metrics() const {
    return RowMetrics{logicalDpiX() / kDotsPerInch};
}

int CTreeListCtrl::GetItemHeight() const {
    if (itemHeight_ > 0) {
        return itemHeight_;
    }
    const RowMetrics sizes = metrics();
    return std::max(sizes.px(kRowHeight), fontMetrics().height() + sizes.px(kRowMargin));
}

void CTreeListCtrl::SetItemHeight(int height) {
    itemHeight_ = std::max(0, height);
    scheduleLayout();
    repaintRows();
}

int CTreeListCtrl::GetStringWidth(const QString& text) const {
    return fontMetrics().horizontalAdvance(text) + 2 * kTextMargin;
}

int CTreeListCtrl::textMargin(int width) {
    return width > 4 * kTextMargin ? kTextMargin : 0;
}

void CTreeListCtrl::SetRedraw(bool redraw) {
    if (redraw_ == redraw) {
        return;
    }
    redraw_ = redraw;
    if (redraw) {
        layoutNow();
        repaintRows();
    }
}

void CTreeListCtrl::repaintRows() const {
    if (redraw_) {
        viewport()->update();
    }
}

void CTreeListCtrl::repaintItem(const CTreeListItem* item) const {
    if (!redraw_ || layoutDirty_) {
        return; // all will be painted
    }
    const QRect rect = GetItemRect(item);
    if (!rect.isEmpty() && rect.bottom() >= 0 && rect.top() < viewport()->height()) {
        viewport()->update(QRect(0, rect.y(), viewport()->width(), rect.height()));
    }
}

void CTreeListCtrl::scheduleLayout() {
    if (!layoutDirty_) {
        layoutDirty_ = true;
        QCoreApplication::postEvent(this, new QEvent(QEvent::LayoutRequest));
        repaintRows();
    }
}

void CTreeListCtrl::layoutNow() const {
    if (!layoutDirty_ || laying_ || !redraw_) {
        return;
    }
    laying_ = true;
    layoutDirty_ = false;
    const_cast<CTreeListCtrl*>(this)->layoutChanged();
    laying_ = false;
}

void CTreeListCtrl::layoutChanged() {
    const bool headed = header_ && (style_ & kStyleHeader);
    const int headHeight = headed ? header_->preferredHeight() : 0;
    if (viewportMargins().top() != headHeight) {
        setViewportMargins(0, headHeight, 0, 0);
    }
    QScrollBar* vertical = verticalScrollBar();
    QScrollBar* horizontal = horizontalScrollBar();
    // Showing one scroll bar may make the other necessary, so the view is looked at twice.
    for (int round = 0; round < 2; ++round) {
        const int page = GetCountPerPage();
        vertical->setPageStep(page);
        vertical->setRange(0, std::max(0, GetVisibleCount() - page));
        horizontal->setPageStep(viewport()->width());
        horizontal->setSingleStep(metrics().indent());
        horizontal->setRange(0, std::max(0, columns_.totalWidth() - viewport()->width()));
    }
    if (header_) {
        header_->setVisible(headed);
        const QRect view = viewport()->geometry();
        header_->setGeometry(view.x(), view.y() - headHeight, view.width(), headHeight);
        header_->update();
    }
    placeEditor();
    repaintRows();
    if (treeListIsHeard()) {
        announceTreeListReset(this);
    }
}

int CTreeListCtrl::notify(int code, CTreeListItem* item, int column, CTreeListCtrl* source, CTreeListItem* target) {
    const TreeListNotification notification{this, code, item, column, source, target};
    int answer = 0;
    TreeListParent* asked = notifyTarget_;
    for (QWidget* window = parentWidget(); !asked && window; window = window->parentWidget()) {
        asked = dynamic_cast<TreeListParent*>(window);
    }
    const RowGuard guard(*this);
    if (asked) {
        answer = asked->treeListNotify(notification);
    }
    if (guard.controlLives()) {
        emit notified(notification, &answer);
    }
    return answer;
}

QPoint CTreeListCtrl::GetOrigin() const {
    return QPoint(horizontalScrollBar()->value(), GetTopIndex() * GetItemHeight());
}

QRect CTreeListCtrl::GetViewRect() const {
    layoutNow();
    return viewport()->rect();
}

QSize CTreeListCtrl::sizeHint() const {
    return QSize(kHintWidth, GetItemHeight() * kHintRows + 2 * frameWidth());
}

RowParts CTreeListCtrl::partsOf(const CTreeListItem* item, int column) const {
    const int left = columns_.left(column);
    const auto index = tree_.indexOf(item);
    if (left < 0 || !index) {
        return {};
    }
    const int height = GetItemHeight();
    const PixelRect cell{left - horizontalScrollBar()->value(), (static_cast<int>(*index) - GetTopIndex()) * height,
                         columns_.at(column).width, height};
    return column == columns_.treeColumn() ? treeCellParts(*item, style_, cell, metrics()) : plainCellParts(cell);
}

QRect CTreeListCtrl::GetItemRect(const CTreeListItem* item, int column) const {
    const auto index = item ? tree_.indexOf(item) : std::nullopt;
    if (!index) {
        return {};
    }
    if (column >= 0) {
        static_cast<void>(columns_.at(column));
        return toRect(partsOf(item, column).cell);
    }
    const int height = GetItemHeight();
    return QRect(-horizontalScrollBar()->value(), (static_cast<int>(*index) - GetTopIndex()) * height,
                 columns_.totalWidth(), height);
}

CTreeListItem* CTreeListCtrl::HitTest(const QPoint& point, int* flags, int* column, QRect* rect) const {
    layoutNow();
    int hitFlags = kHitNowhere;
    int hitColumn = -1;
    QRect hitRect;
    CTreeListItem* item = nullptr;
    if (viewport()->rect().contains(point)) {
        const int index = GetTopIndex() + point.y() / GetItemHeight();
        item = tree_.itemAt(static_cast<std::uint32_t>(index));
    }
    if (item) {
        hitColumn = columns_.columnAt(point.x() + horizontalScrollBar()->value());
        hitFlags = kHitRow;
        if (hitColumn >= 0) {
            const RowHit hit = hitTestCell(*item, style_, partsOf(item, hitColumn), point.x(), point.y());
            hitFlags = hit.flags;
            hitRect = toRect(hit.rect);
        } else {
            hitRect = GetItemRect(item);
        }
    }
    if (flags) {
        *flags = hitFlags;
    }
    if (column) {
        *column = hitColumn;
    }
    if (rect) {
        *rect = hitRect;
    }
    return item;
}

bool CTreeListCtrl::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::LayoutRequest:
        layoutNow();
        return true;
    case QEvent::MouseButtonPress: {
        // The frame and the corner: outside of the view.
        const RowGuard guard(*this);
        CancelModify();
        if (!guard.controlLives()) {
            return true;
        }
        break;
    }
    case QEvent::Polish:
        setUp();
        break;
    default:
        break;
    }
    return QAbstractScrollArea::event(event);
}

bool CTreeListCtrl::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress &&
        (watched == verticalScrollBar() || watched == horizontalScrollBar())) {
        const RowGuard guard(*this);
        CancelModify();
        if (!guard.controlLives()) {
            return true;
        }
    }
    return QAbstractScrollArea::eventFilter(watched, event);
}

void CTreeListCtrl::paintEvent(QPaintEvent* event) {
    layoutNow();
    QRect area = event->rect() & viewport()->rect();
    const qreal ratio = viewport()->devicePixelRatioF();
    if (ratio != static_cast<int>(ratio)) {
        area = viewport()->rect(); // only the whole view begins on a whole device pixel
    }
    if (area.isEmpty()) {
        return;
    }
    TreeListPainter rows(*this, surface_->begin(area, ratio));
    rows.paint(area);
    QPainter window(viewport());
    surface_->copyTo(window);
}

void CTreeListCtrl::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    layoutDirty_ = true;
    layoutNow();
}

void CTreeListCtrl::showEvent(QShowEvent* event) {
    setUp();
    layoutDirty_ = true;
    layoutNow();
    QAbstractScrollArea::showEvent(event);
}

void CTreeListCtrl::hideEvent(QHideEvent* event) {
    QAbstractScrollArea::hideEvent(event);
    stopDrags();
}

void CTreeListCtrl::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    switch (event->type()) {
    case QEvent::EnabledChange:
        setState(kControlEnabled, isEnabled());
        repaintRows();
        if (!isEnabled()) {
            const RowGuard guard(*this);
            stopDrags();
            if (guard.controlLives()) {
                CancelModify();
            }
        }
        break;
    case QEvent::FontChange:
    case QEvent::StyleChange:
        scheduleLayout();
        repaintRows();
        break;
    default:
        break;
    }
}

void CTreeListCtrl::scrollContentsBy(int dx, int dy) {
    if (dx == 0 && dy == 0) {
        return;
    }
    if (tip_) {
        tip_->leave();
    }
    if (header_ && dx != 0) {
        header_->update();
    }
    placeEditor();
    repaintRows();
}

} // namespace fenmark::ui::treelist
