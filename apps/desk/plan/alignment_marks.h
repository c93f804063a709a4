// What stands on an alignment in the plan: ends and labels of its elements, its name, its stations.
#pragma once

#include "desk/plan/plan_text.h"
#include "desk/plan/view_transform.h"
#include "drawing/alignment_geometry.h"

#include <QColor>
#include <QPainter>

#include <functional>

namespace fenmark::desk {

// Circles where elements meet.
void drawElementEnds(QPainter& painter, const ViewTransform& view, const drawing::Alignment& alignment);
// Length, radius and parameter along each element that is long enough, as far as there is room.
void labelElements(QPainter& painter, const ViewTransform& view, const drawing::Alignment& alignment, LabelRoom& room,
                   const std::function<QColor(drawing::ElementType)>& inkOfType);
// The name beside the start.
void nameAlignment(QPainter& painter, const ViewTransform& view, const drawing::Alignment& alignment, LabelRoom& room);
// Marks every 20 m, square to the alignment, and their names as far as there is room.
void paintStations(QPainter& painter, const ViewTransform& view, const drawing::AlignmentGeometry& geometry,
                   LabelRoom& room, bool names);

} // namespace fenmark::desk
