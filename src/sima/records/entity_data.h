// One element of a route: a straight, an arc or a clothoid between two consecutive route points.
#pragma once

#include "sima/text/shared_text.h"
#include "values/drawing_values.h"
#include "values/sparse.h"

#include <cstdint>

namespace fenmark::sima {

// What a straight leaves empty.
struct CurveData {
    SharedText length;      // "A" only: parameterA^2 / |endRadius - startRadius|; no consumer reads it
    SharedText radius;      // arc: field 2 of C01, signed as in the file
    SharedText endRadius;   // clothoid: field 3 of C02
    SharedText startRadius; // clothoid: field 2 of C02
    SharedText spareText1;
    SharedText spareText2;
    SharedText spareText3;
    SharedText parameterA; // clothoid: field 1 of C02
    double spareReal1 = 0.0;
    double spareReal2 = 0.0;
    host::MdGePoint3d sparePoint1; // x, y: the two further values that the automation reports for a new arc
    host::MdGePoint3d sparePoint2; // clothoid: the PI, meeting point of its end tangents
};

// Numbers are held as text: what came from the file stays the file's own text, and what the reader computed is
// formatted with "%0.12f". Consumers convert when they need a number (see text/number.h).
class EntityData {
  public:
    virtual ~EntityData() = default;
    EntityData() = default;
    EntityData(const EntityData&) = default;
    EntityData(EntityData&&) = default;
    EntityData& operator=(const EntityData&) = default;
    EntityData& operator=(EntityData&&) = default;

    SharedText type;   // "S" straight, "R" arc, "A" clothoid
    SharedText startX; // drawing axes, metres, "%0.12f"
    SharedText startY;
    SharedText endX; // empty until the next B01 closes the element
    SharedText endY;
    SharedText direction;      // "L" or "R"; empty for a straight
    double nominalValue = 0.0; // 100.0 on every element that a B01 creates
    double startZ = 0.0;       // metres
    double endZ = 0.0;         // metres
    std::int32_t spareInt = 0; // the identifier that the automation gave to this element

    // A route may have a million straights, so that what only curves have stands apart.
    const CurveData& curve() const { return curve_.get(); }
    CurveData& editCurve() { return curve_.edit(); }

    host::MdGePoint3d startPoint() const;
    host::MdGePoint3d endPoint() const;
    // |A^2/|Re| - A^2/|Rs||, metres; a term with a radius of 0 counts 0.
    double clothoidLength() const;
    double absStartRadius() const;
    double absEndRadius() const;
    double absRadius() const;
    // As the absolute radii, but infinity for 0.
    double curvatureStartRadius() const;
    double curvatureEndRadius() const;
    // 1.0 for "L", otherwise -1.0.
    double directionSign() const;
    // -1 for "L", otherwise 0.
    std::int16_t directionFlag() const;

  private:
    Sparse<CurveData> curve_;
};

} // namespace fenmark::sima
