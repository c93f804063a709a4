// What stands on an alignment in the plan: ends and labels of its elements, its name, its stations.
#pragma once

#include "desk/plan/plan_text.h"
#include "desk/plan/view_transform.h"
#include "drawing/alignment_geometry.h"

#include <QColor>
#include <QPainter>

#include <functional>

namespace fenmark::desk {

inline constexpr int kMostStationsOfAPicture = 100'000;

inline constexpr int kMostEndsOfAPicture = 5'000;

// Circles where elements meet: `left` at most, which are taken off.
void drawElementEnds(QPainter& painter, const ViewTransform& view, const drawing::Alignment& alignment, int& left);
// Length, radius and parameter along each element that is long enough, as far as there is room.
void labelElements(QPainter& painter, const ViewTransform& view, const drawing::Alignment& alignment, LabelRoom& room,
                   const std::function<QColor(drawing::ElementType)>& inkOfType);
// The name beside the start.
void nameAlignment(QPainter& painter, const ViewTransform& view, const drawing::Alignment& alignment, LabelRoom& room);
// Marks every 20 m, square to the alignment, and their names as far as there is room. Asks for `left` stations
// at most, and takes them off.
void paintStations(QPainter& painter, const ViewTransform& view, const drawing::AlignmentGeometry& geometry,
                   LabelRoom& room, bool names, int& left);

} // namespace fenmark::desk
