// The off-screen surface.
#include "ui/treelist/tree_list_dc.h"

#include <cmath>

namespace fenmark::ui::treelist {

QPainter& CTreeListDC::begin(const QRect& area, qreal devicePixelRatio) {
    area_ = area;
    const QSize needed(static_cast<int>(std::ceil(area.width() * devicePixelRatio)),
                       static_cast<int>(std::ceil(area.height() * devicePixelRatio)));
    if (image_.width() < needed.width() || image_.height() < needed.height() ||
        image_.devicePixelRatio() != devicePixelRatio) {
        image_ = QImage(needed.expandedTo(image_.size()), QImage::Format_RGB32);
        image_.setDevicePixelRatio(devicePixelRatio);
    }
    painter_ = std::make_unique<QPainter>(&image_);
    painter_->translate(-area.topLeft());
    painter_->setClipRect(area);
    return *painter_;
}

void CTreeListDC::copyTo(QPainter& window) {
    painter_.reset();
    const qreal ratio = image_.devicePixelRatio();
    window.setCompositionMode(QPainter::CompositionMode_Source);
    window.drawImage(QRectF(area_), image_, QRectF(0, 0, area_.width() * ratio, area_.height() * ratio));
}

} // namespace fenmark::ui::treelist
