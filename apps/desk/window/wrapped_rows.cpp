// Rows of two columns whose second one wraps.
#include "desk/window/wrapped_rows.h"

#include <QFontMetrics>

#include <algorithm>

namespace fenmark::desk {

void fitRows(QTreeWidget& tree) {
    constexpr int kMargins = 8; // of a cell, left and right
    constexpr int kHighest = 1000;
    const int width = std::max(1, tree.columnWidth(1) - kMargins);
    const QFontMetrics metrics(tree.font());
    for (int i = 0; i < tree.topLevelItemCount(); ++i) {
        QTreeWidgetItem& row = *tree.topLevelItem(i);
        const int height =
            metrics.boundingRect(QRect(0, 0, width, kHighest), static_cast<int>(Qt::TextWordWrap), row.text(1))
                .height();
        row.setSizeHint(1, QSize(0, std::max(height, metrics.height())));
    }
}

} // namespace fenmark::desk
