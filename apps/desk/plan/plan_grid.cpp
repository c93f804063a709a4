// The coordinate grid of the plan.
#include "desk/plan/plan_grid.h"

#include "desk/plan/plan_style.h"
#include "exchange/plan/plan_geometry.h"

#include <algorithm>
#include <cmath>

namespace fenmark::desk {

using drawing::Extent;

namespace {

constexpr double kGridPixels = 110.0; // least distance of grid lines

} // namespace

Grid gridOf(const ViewTransform& view) {
    const Extent visible = view.visible();
    Grid grid;
    const double step = exchange::roundStep(kGridPixels * view.metresPerPixel());
    // Beyond this neighbouring lines have one coordinate, and counting on would never end.
    constexpr double kMostSteps = 1e15;
    const auto countable = [&](double low, double high) {
        return step > 0.0 && std::abs(low / step) < kMostSteps && std::abs(high / step) < kMostSteps;
    };
    if (!countable(visible.minX, visible.maxX) || !countable(visible.minY, visible.maxY)) {
        return grid;
    }
    grid.step = step;
    for (double x = std::ceil(visible.minX / step); x <= visible.maxX / step; x += 1.0) {
        grid.vertical.emplace_back(std::floor(view.toPixel(x * step, 0.0).x()) + 0.5, x * step);
    }
    for (double y = std::ceil(visible.minY / step); y <= visible.maxY / step; y += 1.0) {
        grid.horizontal.emplace_back(std::floor(view.toPixel(0.0, y * step).y()) + 0.5, y * step);
    }
    return grid;
}

std::vector<GridName> gridNames(const Grid& grid, const ViewTransform& view) {
    std::vector<GridName> names;
    const double width = view.size().width();
    const double height = view.size().height();
    const int decimals = grid.step > 0.0 ? std::clamp(static_cast<int>(-std::floor(std::log10(grid.step))), 0, 3) : 0;
    for (const auto& [pixel, y] : grid.horizontal) {
        if (pixel > 20.0 && pixel < height - 30.0) {
            names.push_back({QPointF(4.0, pixel - 3.0), QStringLiteral("X=%1").arg(y, 0, 'f', decimals)});
        }
    }
    for (const auto& [pixel, x] : grid.vertical) {
        if (pixel > 60.0 && pixel < width - 220.0) {
            names.push_back({QPointF(pixel + 3.0, height - 5.0), QStringLiteral("Y=%1").arg(x, 0, 'f', decimals)});
        }
    }
    return names;
}

void paintGrid(QPainter& painter, const Grid& grid, const ViewTransform& view) {
    painter.setPen(kGrid);
    for (const auto& [pixel, x] : grid.vertical) {
        painter.drawLine(QPointF(pixel, 0.0), QPointF(pixel, view.size().height()));
    }
    for (const auto& [pixel, y] : grid.horizontal) {
        painter.drawLine(QPointF(0.0, pixel), QPointF(view.size().width(), pixel));
    }
}

} // namespace fenmark::desk
