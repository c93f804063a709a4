// CTreeListHeaderCtrl: the header of the tree list, with drags of widths and of columns.
#pragma once

#include <memory>

#include <QPoint>
#include <QWidget>

namespace fenmark::ui::treelist {

class CTLHDragWnd;
class CTLHDropWnd;
class CTreeListCtrl;

// A drag of the edge between two columns changes the width of the left one, a double click on it fits the width. With
// kStyleDragColumns a column is dragged to another place; with kStyleHideColumns it is dragged off the header into the
// list of hidden columns, from which the header's menu brings it back.
class CTreeListHeaderCtrl : public QWidget {
    Q_OBJECT
  public:
    static constexpr const char* kWindowClass = "Tresslib.TreeListHeaderCtrl";
    explicit CTreeListHeaderCtrl(CTreeListCtrl& control);
    ~CTreeListHeaderCtrl() override;

    [[nodiscard]] int preferredHeight() const;
    // The column whose right edge is grasped at x, or -1.
    [[nodiscard]] int edgeAt(int x) const;
    [[nodiscard]] int columnAt(int x) const;
    [[nodiscard]] QRect cellRect(int column) const;
    // Moves a column to a place in the shown order if the style allows it.
    bool moveColumn(int column, int place);
    bool hideColumn(int column);
    bool showColumn(int column);
    void showMenu(const QPoint& globalPoint, int column);
    // True while a width or a column is dragged.
    [[nodiscard]] bool isDragging() const { return trackColumn_ >= 0 || dragWindow_; }
    void cancelDrag(); // and everything is as it was before the press

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    void paintCell(QPainter& painter, int column, const QRect& rect) const;
    void startColumnDrag(const QPoint& point);
    void moveColumnDrag(const QPoint& point);
    void endColumnDrag(bool drop, const QPoint& point);
    [[nodiscard]] int placeAt(int x) const;
    [[nodiscard]] bool offHeader(const QPoint& point) const;

    CTreeListCtrl& control_;
    int trackColumn_ = -1; // whose width is dragged
    int pressColumn_ = -1;
    int hotColumn_ = -1;
    QPoint pressPoint_;
    std::unique_ptr<CTLHDragWnd> dragWindow_;
    std::unique_ptr<CTLHDropWnd> dropWindow_;
};

} // namespace fenmark::ui::treelist
