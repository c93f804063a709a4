// What there is to say of an object of the drawing, line by line.
#pragma once

#include "desk/language/texts.h"
#include "desk/plan/plan_object.h"
#include "drawing/drawing.h"

#include <QString>

#include <optional>
#include <vector>

namespace fenmark::desk {

struct Property {
    QString name;
    QString value;
    bool heading = false; // opens a group; the value is empty then
};

// Of the object, or of the whole drawing if there is none. Coordinates are written as surveyors do: X north, Y east.
std::vector<Property> propertiesOf(const drawing::Drawing& drawing, const std::optional<PlanObject>& object,
                                   const Texts& texts);

// What several objects are, by kind with their numbers.
std::vector<Property> propertiesOf(const drawing::Drawing& drawing, const std::vector<PlanObject>& objects,
                                   const Texts& texts);
// The kind of an object: "画地", "円弧".
QString kindName(const drawing::Drawing& drawing, const PlanObject& object, const Texts& texts);
// Name, kind and place of an object, for a screen reader.
QString spokenText(const drawing::Drawing& drawing, const PlanObject& object, const Texts& texts);

// "BP (座標)" for an object with a row, the name of an alignment and its element, or what kind of object it is.
QString objectTitle(const drawing::Drawing& drawing, const PlanObject& object, const Texts& texts);

// Three decimals, and never a minus zero.
QString metres(double value);
// An azimuth from north, clockwise, as degrees, minutes and seconds: "123°04'05.67"".
QString azimuthText(double direction);
QString elementName(const drawing::Element& element, const Texts& texts);
// "∞" for a straight, "R" and "A" values otherwise.
QString radiusText(const drawing::Element& element, const Texts& texts);

} // namespace fenmark::desk
