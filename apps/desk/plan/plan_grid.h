// The coordinate grid of the plan, and the coordinates at its edges.
#pragma once

#include "desk/plan/view_transform.h"

#include <QPainter>
#include <QPointF>
#include <QString>

#include <utility>
#include <vector>

namespace fenmark::desk {

// Lines of the coordinate grid: pixel and coordinate.
struct Grid {
    double step = 0.0;
    std::vector<std::pair<double, double>> vertical;
    std::vector<std::pair<double, double>> horizontal;
};

struct GridName {
    QPointF at; // left end of its base line
    QString text;
};

// Lines at round coordinates; none where the view lies too far out for them to differ.
Grid gridOf(const ViewTransform& view);
// Coordinates along the left and lower edges, as surveyors name the axes: X north, Y east.
std::vector<GridName> gridNames(const Grid& grid, const ViewTransform& view);
void paintGrid(QPainter& painter, const Grid& grid, const ViewTransform& view);

} // namespace fenmark::desk
