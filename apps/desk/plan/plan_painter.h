// Draws what is in view of a drawing, and no more.
#pragma once

#include "desk/plan/plan_index.h"
#include "desk/plan/view_transform.h"
#include "host/embedded/drawing.h"

#include <QImage>
#include <QPainter>

#include <cstddef>
#include <optional>
#include <vector>

namespace fenmark::desk {

// An object of the plan: an entity, or an alignment and one of its elements.
struct PlanObject {
    enum class Kind { Entity, Alignment };
    Kind kind = Kind::Entity;
    std::size_t index = 0;
    std::optional<std::size_t> element; // of an alignment

    friend bool operator==(const PlanObject&, const PlanObject&) = default;
};

struct PlanLook {
    std::vector<bool> hiddenLayers; // by index of the layer; missing ones are shown
    bool labels = true;
    bool stations = true; // every 20 m
};

class PlanPainter {
  public:
    PlanPainter(const host::embedded::Drawing& drawing, const PlanIndex& index) : drawing_(drawing), index_(index) {}

    // The whole view as a picture of its size in device pixels.
    QImage paint(const ViewTransform& view, const PlanLook& look, double devicePixelRatio, const QFont& font) const;
    // Marks one object on top of a painted view.
    void paintSelected(QPainter& painter, const ViewTransform& view, const PlanObject& object) const;

    // Objects that the last paint drew, for those who measure.
    std::size_t drawn() const { return drawn_; }

  private:
    void paintEntities(QImage& image, QPainter& painter, const ViewTransform& view, const PlanLook& look) const;
    void paintAlignments(QPainter& painter, const ViewTransform& view, const PlanLook& look) const;
    void paintAlignmentLabels(QPainter& painter, const ViewTransform& view, std::size_t alignment) const;
    void paintStations(QPainter& painter, const ViewTransform& view, std::size_t alignment) const;

    const host::embedded::Drawing& drawing_;
    const PlanIndex& index_;
    mutable std::size_t drawn_ = 0;
};

// The object nearest to the pixel within the reach (pixels); a point wins over a line that is as near, and a closed lot
// around the pixel is taken where nothing is within reach.
std::optional<PlanObject> objectAt(const host::embedded::Drawing& drawing, const PlanIndex& index,
                                   const ViewTransform& view, const PlanLook& look, const QPointF& pixel,
                                   double reachPixels);

// Box of an object in the drawing.
host::embedded::Extent extentOf(const host::embedded::Drawing& drawing, const PlanObject& object);

} // namespace fenmark::desk
