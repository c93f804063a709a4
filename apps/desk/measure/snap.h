// The exact place that a pointer means: a point, a vertex, a crossing or a foot near it. No windows here.
#pragma once

#include "desk/plan/plan_index.h"
#include "desk/plan/plan_object.h"
#include "desk/plan/view_transform.h"
#include "drawing/drawing.h"

#include <QPointF>

#include <cstdint>
#include <optional>
#include <string>

namespace fenmark::desk {

// In the order of their rank: of several within reach the first kind wins, and of one kind the nearest.
enum class SnapKind : std::uint8_t {
    Point,    // a point of the drawing
    End,      // of a line, or of an element of an alignment
    Vertex,   // between the ends of a line, or of a lot
    Crossing, // of two lines, or elements
    Foot,     // of the perpendicular from the place before, on a line or element
    OnLine,   // the nearest place of a line or element
    Free,     // nothing within reach: the place under the pointer
};

// What is looked for.
struct SnapChoice {
    bool points = true;
    bool ends = true;
    bool vertices = true;
    bool crossings = true;
    bool feet = true; // and nearest places of lines

    friend bool operator==(const SnapChoice&, const SnapChoice&) = default;
};

struct Snap {
    SnapKind kind = SnapKind::Free;
    host::PlanPoint at;               // x east, y north, metres
    std::optional<PlanObject> object; // that the place belongs to; of a crossing the first
    std::string name;                 // of a point with a row
};

// What of a drawing is looked at.
struct SnapScene {
    const drawing::Drawing& drawing;
    const PlanIndex& index;
    const ViewTransform& view;
    const PlanLook& look; // what is hidden is passed over
};

// `before` is the place that a foot is dropped from; without one there are no feet but the nearest places. Where more
// lie within reach than can be told apart, the place under the pointer is taken.
Snap snapAt(const SnapScene& scene, const QPointF& pixel, double reachPixels, const SnapChoice& choice,
            const std::optional<host::PlanPoint>& before);

} // namespace fenmark::desk
