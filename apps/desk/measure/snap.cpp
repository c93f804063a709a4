// The exact place that a pointer means.
#include "desk/measure/snap.h"

#include "curve/curve.h"
#include "exchange/survey_text.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace fenmark::desk {

using drawing::Drawing;
using drawing::EntityView;
using drawing::Extent;
using host::PlanPoint;

namespace {

constexpr std::size_t kMostObjects = 1000; // more under the pointer are a blot in which none can be chosen
constexpr std::size_t kMostCurves = 48;    // whose crossings are looked for
constexpr std::size_t kMostFeet = 16;      // of one curve

// A side of a line, or an element, that comes near the pointer.
struct NearCurve {
    curve::Curve curve;
    PlanObject object;
    std::size_t place = 0; // of the side in its line
    std::size_t sides = 0; // of a closed line, whose first and last side meet; 0 otherwise
};

bool areNeighbours(const NearCurve& a, const NearCurve& b) {
    if (a.object.kind != b.object.kind || a.object.index != b.object.index) {
        return false;
    }
    const std::size_t gap = a.place > b.place ? a.place - b.place : b.place - a.place;
    return gap <= 1 || (a.sides > 0 && gap + 1 == a.sides);
}

bool meet(const Extent& a, const Extent& b) {
    return a.minX <= b.maxX && b.minX <= a.maxX && a.minY <= b.maxY && b.minY <= a.maxY;
}

class Search {
  public:
    Search(const SnapScene& scene, const QPointF& pixel, double reach, const SnapChoice& choice)
        : scene_(scene), choice_(choice), pointer_{scene.view.toX(pixel.x()), scene.view.toY(pixel.y())},
          reach_(reach * scene.view.metresPerPixel()) {
        best_.at = pointer_;
        box_.add(pointer_.x - reach_, pointer_.y - reach_);
        box_.add(pointer_.x + reach_, pointer_.y + reach_);
    }

    Snap find(const std::optional<PlanPoint>& before) {
        if (scene_.index.count(box_, kMostObjects) == kMostObjects) {
            return best_;
        }
        lookAtEntities();
        lookAtAlignments();
        if (choice_.crossings && best_.kind > SnapKind::Crossing) {
            lookAtCrossings();
        }
        if (choice_.feet && best_.kind > SnapKind::Foot) {
            lookAtFeet(before);
        }
        return best_;
    }

  private:
    void take(SnapKind kind, const PlanPoint& at, const PlanObject& object, std::string_view name = {}) {
        const double away = std::hypot(at.x - pointer_.x, at.y - pointer_.y);
        if (!(away <= reach_) || kind > best_.kind || (kind == best_.kind && away >= nearest_)) {
            return;
        }
        nearest_ = away;
        best_ = {kind, at, object, std::string(exchange::trimmedName(name))};
    }

    void lookAtEntities() {
        std::vector<std::size_t> found;
        scene_.index.query(box_, [&](const PlanFigure& figure) {
            if (!scene_.look.hides(figure)) {
                found.push_back(figure.entity);
            }
            return true;
        });
        std::sort(found.begin(), found.end()); // of equal places the first in the drawing
        for (const std::size_t index : found) {
            const EntityView entity = scene_.drawing.entity(index);
            const PlanObject object{PlanObject::Kind::Entity, index, {}};
            if (entity.isPoint()) {
                if (choice_.points) {
                    take(SnapKind::Point, {entity.position().x, entity.position().y}, object,
                         entity.row ? entity.row->name : std::string_view());
                }
                continue;
            }
            lookAtLine(entity, object);
        }
    }

    void lookAtLine(const EntityView& entity, const PlanObject& object) {
        const std::size_t count = entity.vertices.size();
        for (std::size_t i = 0; i < count; ++i) {
            const host::MdGePoint3d& vertex = entity.vertices[i];
            const bool end = !entity.closed && (i == 0 || i + 1 == count);
            if (end ? choice_.ends : choice_.vertices) {
                take(end ? SnapKind::End : SnapKind::Vertex, {vertex.x, vertex.y}, object);
            }
        }
        const std::size_t sides = entity.closed && count > 2 ? count : count - std::min<std::size_t>(count, 1);
        for (std::size_t i = 0; i < sides && curves_.size() < kMostCurves; ++i) {
            const host::MdGePoint3d& a = entity.vertices[i];
            const host::MdGePoint3d& b = entity.vertices[(i + 1) % count];
            Extent side;
            side.add(a.x, a.y);
            side.add(b.x, b.y);
            const double length = std::hypot(b.x - a.x, b.y - a.y);
            if (length > 0.0 && std::isfinite(length) && meet(side, box_)) {
                curves_.push_back({curve::straight({{a.x, a.y}, std::atan2(b.y - a.y, b.x - a.x)}, length), object, i,
                                   entity.closed ? sides : 0});
            }
        }
    }

    void lookAtAlignments() {
        const std::size_t alignments = std::min(scene_.index.alignmentCount(), scene_.drawing.alignmentCount());
        for (std::size_t a = 0; a < alignments; ++a) {
            if (!meet(scene_.index.alignmentExtent(a), box_) ||
                isHidden(scene_.look, scene_.drawing, scene_.drawing.alignment(a).layer)) {
                continue;
            }
            const auto& elements = scene_.drawing.alignment(a).elements;
            for (std::size_t i = 0; i < std::min(elements.size(), scene_.index.elementCount(a)); ++i) {
                if (!meet(scene_.index.elementExtent(a, i), box_) || scene_.look.hides(elements[i].type)) {
                    continue;
                }
                const PlanObject object{PlanObject::Kind::Alignment, a, i};
                if (choice_.ends) {
                    take(SnapKind::End, elements[i].start, object);
                    take(SnapKind::End, elements[i].end, object);
                }
                if (drawing::isUsable(elements[i]) && curves_.size() < kMostCurves) {
                    curves_.push_back({drawing::curveOf(elements[i]), object, i, 0});
                }
            }
        }
    }

    void lookAtCrossings() {
        for (std::size_t i = 0; i < curves_.size(); ++i) {
            for (std::size_t j = i + 1; j < curves_.size(); ++j) {
                if (areNeighbours(curves_[i], curves_[j])) {
                    continue; // they meet in a vertex or a joint
                }
                for (const curve::Crossing& crossing : curve::crossings(curves_[i].curve, curves_[j].curve).found) {
                    take(SnapKind::Crossing, drawing::planPoint(crossing.point), curves_[i].object);
                }
            }
        }
    }

    void lookAtFeet(const std::optional<PlanPoint>& before) {
        for (const NearCurve& near : curves_) {
            if (before) {
                for (const curve::Foot& foot :
                     curve::feetOf(near.curve, drawing::curvePoint(*before), kMostFeet).found) {
                    take(SnapKind::Foot, drawing::planPoint(foot.point), near.object);
                }
            }
            const curve::Foot nearest = curve::nearestFoot(near.curve, drawing::curvePoint(pointer_));
            take(SnapKind::OnLine, drawing::planPoint(nearest.point), near.object);
        }
    }

    const SnapScene& scene_;
    const SnapChoice& choice_;
    PlanPoint pointer_;
    double reach_; // metres
    Extent box_;
    Snap best_;
    double nearest_ = 0.0; // metres from the pointer to the best
    std::vector<NearCurve> curves_;
};

} // namespace

Snap snapAt(const SnapScene& scene, const QPointF& pixel, double reachPixels, const SnapChoice& choice,
            const std::optional<PlanPoint>& before) {
    return Search(scene, pixel, reachPixels, choice).find(before);
}

} // namespace fenmark::desk
