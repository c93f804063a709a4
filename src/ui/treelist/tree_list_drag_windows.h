// The floating windows of drags: the picture that follows the cursor, and the mark on the target, for rows and columns.
#pragma once

#include <QPixmap>
#include <QPoint>
#include <QWidget>

namespace fenmark::ui::treelist {

// A picture that follows the cursor, translucent where the system can show it so. It takes no mouse and no focus.
class DragPicture : public QWidget {
    Q_OBJECT
  public:
    DragPicture(const QPixmap& picture, const QPoint& offset);
    void follow(const QPoint& globalCursor);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QPixmap picture_;
    QPoint offset_; // from the cursor to the picture
};

// The picture of the rows that are dragged.
class CTLCDragWnd : public DragPicture {
    Q_OBJECT
  public:
    static constexpr const char* kWindowClass = "Tresslib.TLCDragWnd";
    CTLCDragWnd(const QPixmap& picture, const QPoint& offset);
};

// The picture of the column that is dragged.
class CTLHDragWnd : public DragPicture {
    Q_OBJECT
  public:
    static constexpr const char* kWindowClass = "Tresslib.TLHDragWnd";
    CTLHDragWnd(const QPixmap& picture, const QPoint& offset);
};

// A frame around the row that a drop would go to.
class CTLCDropWnd : public QWidget {
    Q_OBJECT
  public:
    static constexpr const char* kWindowClass = "Tresslib.TLCDropWnd";
    explicit CTLCDropWnd(QWidget* view);

  protected:
    void paintEvent(QPaintEvent* event) override;
};

// A bar between two header cells, where a column would go to.
class CTLHDropWnd : public QWidget {
    Q_OBJECT
  public:
    static constexpr const char* kWindowClass = "Tresslib.TLHDropWnd";
    explicit CTLHDropWnd(QWidget* header);
    void showAt(int x, int height);

  protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace fenmark::ui::treelist
