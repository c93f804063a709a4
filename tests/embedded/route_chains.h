// Chains of elements laid exactly, and the route of a file that would hold them.
#pragma once

#include "host/embedded/drawing_names.h"
#include "sima/records/entity_data.h"
#include "values/array.h"

#include <cmath>
#include <cstdio>
#include <initializer_list>
#include <string>
#include <vector>

namespace fenmark::host::embedded {

inline constexpr double kPi = 3.141592653589793;
inline constexpr double kDegree = kPi / 180.0;

// What an element is, without where it lies. Positive radii turn left; 0 is infinite.
struct Shape {
    ElementType type = ElementType::Straight;
    double length = 0.0;
    double startRadius = 0.0;
    double endRadius = 0.0;
};

inline Shape straight(double length) {
    return {ElementType::Straight, length, 0, 0};
}
inline Shape arc(double radius, double length) {
    return {ElementType::Arc, length, radius, radius};
}
inline Shape clothoid(double startRadius, double endRadius, double length) {
    return {ElementType::Clothoid, length, startRadius, endRadius};
}

// Each element begins where the one before ends, with its tangent.
inline std::vector<Element> layChain(Pose pose, const std::vector<Shape>& shapes) {
    std::vector<Element> chain;
    for (const Shape& shape : shapes) {
        Element element;
        element.type = shape.type;
        element.clockwise = shape.startRadius < 0 || shape.endRadius < 0;
        element.start = pose.point;
        element.direction = pose.direction;
        element.length = shape.length;
        element.startRadius = shape.startRadius == 0 ? kInfiniteRadius : std::abs(shape.startRadius);
        element.endRadius = shape.endRadius == 0 ? kInfiniteRadius : std::abs(shape.endRadius);
        const Pose end = poseOnElement(element, shape.length);
        element.end = end.point;
        pose = end;
        chain.push_back(element);
    }
    return chain;
}

struct FileHabit {
    bool positiveIsLeft = true;
    int decimals = 12;         // of coordinates in the file
    double startHeight = 0.0;  // of the first point
    double heightOfEach = 0.0; // added from point to point
};

inline std::string decimals(double value, int count) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", count, value);
    return text;
}

// The route as the reader hands it over, with the open last element that the final point leaves.
inline sima::Array<sima::EntityData> routeOf(const std::vector<Element>& chain, const FileHabit& habit = {}) {
    sima::Array<sima::EntityData> route;
    double height = habit.startHeight;
    for (const Element& element : chain) {
        sima::EntityData data;
        data.type = std::string(1, static_cast<char>(element.type));
        data.startX = decimals(element.start.x, habit.decimals);
        data.startY = decimals(element.start.y, habit.decimals);
        data.endX = decimals(element.end.x, habit.decimals);
        data.endY = decimals(element.end.y, habit.decimals);
        data.startZ = height;
        height += habit.heightOfEach;
        data.endZ = height;
        const double sign = element.clockwise == habit.positiveIsLeft ? -1.0 : 1.0;
        const auto radius = [&](double value) {
            return std::isinf(value) ? std::string("0") : decimals(sign * value, 6);
        };
        if (element.type == ElementType::Arc) {
            data.editCurve().radius = radius(element.startRadius);
        }
        if (element.type == ElementType::Clothoid) {
            data.editCurve().startRadius = radius(element.startRadius);
            data.editCurve().endRadius = radius(element.endRadius);
            const double growth = std::abs(1 / element.startRadius - 1 / element.endRadius) / element.length;
            data.editCurve().parameterA = decimals(std::sqrt(1 / growth), 9);
        }
        if (element.type != ElementType::Straight) {
            data.direction = sign > 0 ? "R" : "L";
        }
        route.push_back(data);
    }
    return route;
}

} // namespace fenmark::host::embedded
