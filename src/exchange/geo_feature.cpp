// The shape of an object as GIS formats have it.
#include "exchange/geo_feature.h"

#include "exchange/placed.h"
#include "exchange/plan/plan_geometry.h"

namespace fenmark::exchange {

using drawing::EntityView;

ShapeMaker::ShapeMaker(const drawing::Drawing& drawing, const ExportOptions& options) {
    if (!options.plane) {
        zone_.emplace(zoneOf(drawing, options));
    }
}

void ShapeMaker::begin(ShapeKind kind) {
    shape_.kind = kind;
    shape_.positions.clear();
    shape_.height.reset();
    far_ = false;
}

void ShapeMaker::add(double x, double y) {
    if (!zone_) {
        shape_.positions.push_back({x, y});
    } else if (const auto at = zone_->geographic(x, y)) {
        shape_.positions.push_back({at->longitude, at->latitude});
    } else {
        far_ = true;
    }
}

const Shape& ShapeMaker::finished() {
    if (far_) {
        begin(ShapeKind::None);
        ++tooFar_;
    }
    return shape_;
}

const Shape& ShapeMaker::of(const EntityView& entity) {
    const auto& vertices = entity.vertices;
    begin(ShapeKind::None);
    if (vertices.empty() || !hasPlace(entity)) {
        return shape_;
    }
    if (vertices.size() == 1) {
        begin(ShapeKind::Point);
        add(vertices[0].x, vertices[0].y);
        shape_.height = knownHeight(entity);
        return finished();
    }
    const bool polygon = entity.closed && vertices.size() >= 3;
    begin(polygon ? ShapeKind::Polygon : ShapeKind::Line);
    if (polygon && signedArea(vertices) < 0.0) {
        for (std::size_t i = vertices.size(); i-- > 0;) {
            add(vertices[i].x, vertices[i].y);
        }
    } else {
        for (const host::MdGePoint3d& vertex : vertices) {
            add(vertex.x, vertex.y);
        }
    }
    if (entity.closed && !shape_.positions.empty()) {
        shape_.positions.push_back(shape_.positions.front());
    }
    return finished();
}

const Shape& ShapeMaker::of(const drawing::Alignment& alignment) {
    begin(ShapeKind::None);
    if (!hasPlace(alignment)) {
        return shape_;
    }
    const std::vector<host::PlanPoint> line = lineOfAlignment(alignment, points_);
    if (line.size() < 2) {
        return shape_;
    }
    begin(ShapeKind::Line);
    for (const host::PlanPoint& point : line) {
        add(point.x, point.y);
    }
    return finished();
}

} // namespace fenmark::exchange
