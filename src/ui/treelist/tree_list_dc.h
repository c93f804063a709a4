// CTreeListDC: the off-screen surface that all painting of the tree list goes through.
#pragma once

#include <memory>

#include <QImage>
#include <QPainter>
#include <QRect>

namespace fenmark::ui::treelist {

// A surface of the size to be painted. It is kept from one painting to the next and grows when it must.
class CTreeListDC {
  public:
    // Makes the surface ready for the area, in device-independent pixels of the window, and returns its painter, whose
    // coordinates are those of the window.
    QPainter& begin(const QRect& area, qreal devicePixelRatio);
    // Ends the painting and copies the surface to the window.
    void copyTo(QPainter& window);

  private:
    QImage image_;
    QRect area_;
    std::unique_ptr<QPainter> painter_;
};

} // namespace fenmark::ui::treelist
