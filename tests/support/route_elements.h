// Short ways to write route elements in tests.
#pragma once

#include "sima/records/entity_data.h"
#include "sima/text/number.h"
#include "values/array.h"

#include <string>

namespace fenmark::test {

inline sima::EntityData straight(double x0, double y0, double x1, double y1) {
    sima::EntityData element;
    element.type = "S";
    element.startX = sima::formatReal(x0);
    element.startY = sima::formatReal(y0);
    element.endX = sima::formatReal(x1);
    element.endY = sima::formatReal(y1);
    element.nominalValue = 100.0;
    return element;
}

inline sima::EntityData arc(double x0, double y0, double x1, double y1, const std::string& radius,
                            const std::string& direction) {
    sima::EntityData element = straight(x0, y0, x1, y1);
    element.type = "R";
    element.editCurve().radius = radius;
    element.direction = direction;
    return element;
}

inline sima::EntityData clothoid(double x0, double y0, double x1, double y1, const std::string& parameter,
                                 const std::string& startRadius, const std::string& endRadius,
                                 const std::string& direction) {
    sima::EntityData element = straight(x0, y0, x1, y1);
    element.type = "A";
    element.editCurve().parameterA = parameter;
    element.editCurve().startRadius = startRadius;
    element.editCurve().endRadius = endRadius;
    element.direction = direction;
    return element;
}

} // namespace fenmark::test
