// A small drawing for the exchange formats: one alignment with every element, points, lots, lines.
#pragma once

#include "drawing/drawing.h"

#include <cmath>
#include <numbers>
#include <vector>

namespace fenmark::exchange {

using drawing::Drawing;
using drawing::Element;
using drawing::ElementType;
using drawing::EntityKind;
using host::MdGePoint3d;
using host::PlanPoint;

// The element of that shape that begins at the end of the one before.
inline Element following(const Element& before, ElementType type, double length, double startRadius, double endRadius,
                         bool clockwise) {
    Element element;
    element.type = type;
    element.clockwise = clockwise;
    element.start = before.end;
    element.direction = before.endDirection();
    element.length = length;
    element.startRadius = startRadius;
    element.endRadius = endRadius;
    element.end = drawing::poseOnElement(element, length).point;
    return element;
}

// Straight, clothoid, arc, clothoid, straight from the origin given, eastwards, with R = 100 and A = 60.
inline std::size_t addRoad(Drawing& drawing, const PlanPoint& origin, bool clockwise, const char* name = "中心線") {
    constexpr double kInfinite = drawing::kInfiniteRadius;
    const auto site =
        drawing.findSite("サイト") ? drawing.sites()[*drawing.findSite("サイト")].id : drawing.addSite("サイト");
    const std::size_t road = drawing.addAlignment(site, name, "0", "Standard", "Standard");
    drawing.setDescription(road, std::string("a-") + name);
    drawing.setStartStation(road, 100.0);
    Element straight;
    straight.start = origin;
    straight.end = {origin.x + 50.0, origin.y};
    straight.length = 50.0;
    const Element in = following(straight, ElementType::Clothoid, 36.0, kInfinite, 100.0, clockwise);
    const Element arc = following(in, ElementType::Arc, 40.0, 100.0, 100.0, clockwise);
    const Element out = following(arc, ElementType::Clothoid, 36.0, 100.0, kInfinite, clockwise);
    const Element last = following(out, ElementType::Straight, 30.0, kInfinite, kInfinite, false);
    for (const Element& element : {straight, in, arc, out, last}) {
        drawing.addElement(road, element);
    }
    return road;
}

// A chain of elements from the origin eastwards: type, length, radii, sense.
struct Piece {
    ElementType type;
    double length;
    double startRadius;
    double endRadius;
    bool clockwise;
};
inline constexpr double kStraight = drawing::kInfiniteRadius;

inline void addChain(Drawing& drawing, const std::vector<Piece>& pieces) {
    const std::size_t road = drawing.addAlignment(drawing.addSite("サイト"), "線", "0", "", "");
    Element before;
    for (const Piece& piece : pieces) {
        before = following(before, piece.type, piece.length, piece.startRadius, piece.endRadius, piece.clockwise);
        drawing.addElement(road, before);
    }
}

inline std::size_t tableNamed(Drawing& drawing, const char* name) {
    if (!drawing.findTable(name)) {
        drawing.addTable(name);
    }
    return *drawing.findTable(name);
}

inline void addPoint(Drawing& drawing, const MdGePoint3d& at, const char* name, const char* type = "座標",
                     std::size_t layer = 0) {
    drawing.addPoint(at, layer);
    drawing.setRow(drawing.entityCount() - 1, tableNamed(drawing, "JSIMA_V3_Point"), 1, name, type, "a.sim");
}

inline void addPolyline(Drawing& drawing, const std::vector<MdGePoint3d>& vertices, bool closed, const char* name,
                        const char* type = "画地") {
    drawing.addPolyline(vertices, 0, EntityKind::Polyline, closed);
    drawing.setRow(drawing.entityCount() - 1, tableNamed(drawing, "JSIMA_V3_Pline"), 1, name, type, "a.sim");
}

inline void fillSample(Drawing& drawing) {
    addRoad(drawing, {12000.0, -36000.0}, false);
    addPoint(drawing, {12000.0, -36000.0, 12.5}, "BP");
    addPoint(drawing, {12050.0, -36000.0, 0.0}, "点,\"2\"");
    addPolyline(drawing, {{12010, -36010, 0}, {12010, -36030, 0}, {12030, -36030, 0}, {12030, -36010, 0}}, true,
                "12-3");
    addPolyline(drawing, {{12010, -36040, 0}, {12030, -36045, 0}}, false, "左", "幅杭線左");
}

} // namespace fenmark::exchange
