// Drag pictures and drop marks.
#include "ui/treelist/tree_list_drag_windows.h"

#include <QPainter>

#include "ui/treelist/tree_list_resource.h"

namespace fenmark::ui::treelist {

namespace {

constexpr double kPictureOpacity = 0.75;
constexpr int kBarWidth = 3; // of the mark between header cells

} // namespace

DragPicture::DragPicture(const QPixmap& picture, const QPoint& offset)
    : QWidget(nullptr, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowTransparentForInput |
                           Qt::WindowDoesNotAcceptFocus | Qt::BypassWindowManagerHint),
      picture_(picture), offset_(offset) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TranslucentBackground);
    setFocusPolicy(Qt::NoFocus);
    setWindowOpacity(kPictureOpacity);
    resize((QSizeF(picture_.size()) / picture_.devicePixelRatio()).toSize());
}

void DragPicture::follow(const QPoint& globalCursor) {
    move(globalCursor + offset_);
    if (!isVisible()) {
        show();
    }
}

void DragPicture::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.drawPixmap(0, 0, picture_);
}

CTLCDragWnd::CTLCDragWnd(const QPixmap& picture, const QPoint& offset) : DragPicture(picture, offset) {
    setObjectName(QString::fromLatin1(kWindowClass));
}

CTLHDragWnd::CTLHDragWnd(const QPixmap& picture, const QPoint& offset) : DragPicture(picture, offset) {
    setObjectName(QString::fromLatin1(kWindowClass));
}

CTLCDropWnd::CTLCDropWnd(QWidget* view) : QWidget(view) {
    setObjectName(QString::fromLatin1(kWindowClass));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    hide();
}

void CTLCDropWnd::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QColor mark = colorOf(TreeListColor::HotMark);
    QColor fill = mark;
    fill.setAlpha(24);
    painter.fillRect(rect(), fill);
    painter.setPen(QPen(mark, 2));
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
}

CTLHDropWnd::CTLHDropWnd(QWidget* header) : QWidget(header) {
    setObjectName(QString::fromLatin1(kWindowClass));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
}

void CTLHDropWnd::showAt(int x, int height) {
    setGeometry(x - kBarWidth / 2, 0, kBarWidth, height);
    show();
    raise();
}

void CTLHDropWnd::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), colorOf(TreeListColor::HotMark));
}

} // namespace fenmark::ui::treelist
