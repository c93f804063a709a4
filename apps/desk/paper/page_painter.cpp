// Pages of a plot as pictures.
#include "desk/paper/page_painter.h"

#include "exchange/plan/page_image.h"

#include <algorithm>
#include <cmath>

namespace fenmark::desk {

namespace {

constexpr int kLargestSide = 20000; // pixels
constexpr int kBand = 512;          // rows of a printer's page drawn at a time

} // namespace

QSizeF pageSize(const std::string& svg) {
    const auto size = exchange::sizeOfPage(svg);
    return size ? QSizeF(size->width, size->height) : QSizeF();
}

QImage pageImage(const std::string& svg, double pixelsPerMillimetre, Outcome& outcome) {
    const QSizeF paper = pageSize(svg);
    const QSize size =
        (paper * pixelsPerMillimetre).toSize().boundedTo({kLargestSide, kLargestSide}).expandedTo({1, 1});
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    outcome = exchange::drawPage(svg, {image.bits(), image.width(), image.height(),
                                       static_cast<int>(image.bytesPerLine()), pixelsPerMillimetre, 0.0, 0.0});
    return outcome ? image : QImage();
}

Outcome paintPage(const std::string& svg, QPainter& painter, const QRectF& to) {
    const QSizeF paper = pageSize(svg);
    if (paper.isEmpty() || to.isEmpty()) {
        return failed({"no page", "ページがありません"});
    }
    const double scale = std::min(to.width() / paper.width(), to.height() / paper.height());
    const int width = std::max(1, static_cast<int>(std::ceil(paper.width() * scale)));
    const int height = std::max(1, static_cast<int>(std::ceil(paper.height() * scale)));
    for (int top = 0; top < height; top += kBand) {
        QImage band(width, std::min(kBand, height - top), QImage::Format_ARGB32_Premultiplied);
        band.fill(Qt::white);
        Outcome drawn =
            exchange::drawPage(svg, {band.bits(), band.width(), band.height(), static_cast<int>(band.bytesPerLine()),
                                     scale, 0.0, static_cast<double>(top)});
        if (!drawn) {
            return drawn;
        }
        painter.drawImage(QPointF(to.left(), to.top() + top), band);
    }
    return {};
}

} // namespace fenmark::desk
