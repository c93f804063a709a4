// Paints the rows of a tree list.
#pragma once

#include <vector>

#include <QFontMetrics>
#include <QPainter>
#include <QPoint>
#include <QRect>

#include "ui/treelist/model/row_layout.h"

namespace fenmark::ui::treelist {

class CTreeListCtrl;

// Lives for one painting. Coordinates are those of the viewport.
class TreeListPainter {
  public:
    TreeListPainter(const CTreeListCtrl& control, QPainter& painter);

    void paint(const QRect& area);
    // One row in the whole width, without selection or focus: for the picture of a drag.
    void paintDragRow(const CTreeListItem& item, int y);

  private:
    void paintRow(const CTreeListItem& item, int y, const QRect& area);
    void paintTreeParts(const CTreeListItem& item, const RowParts& parts);
    void paintText(const CTreeListItem& item, int column, const PixelRect& rect, const QColor& ink);
    void paintGrid(const QRect& area, int rowsEnd);
    void paintTreeLines(const CTreeListItem& item, const RowParts& parts);
    void addVertical(int x, int from, int to);
    void addHorizontal(int y, int from, int to);

    const CTreeListCtrl& control_;
    QPainter& painter_;
    QFontMetrics font_;
    RowMetrics metrics_;
    int height_;   // of a row
    int baseline_; // of the text within its line
    bool enabled_;
    bool active_;              // the control or its editor has the focus
    std::vector<QPoint> dots_; // of the tree lines of one row
    QRect focusFrame_;         // null if it is out of the area
};

} // namespace fenmark::ui::treelist
