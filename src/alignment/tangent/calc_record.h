/**
 * A record in the calculation plane, (x, -y) of the survey plane, where the tangent solvers lay their chains.
 *
 * It has the fields of a Calelm and is none: a function of the survey plane does not take it, and none of this plane
 * takes a Calelm. toCalc and toSurvey are the only ways across.
 */
#pragma once

#include "fenmark/alignment/record.h"

#include "alignment/primitives/plane.h"

namespace fenmark::alignment {

using plane::Vec;

class CalcRecord : private Calelm {
  public:
    CalcRecord() : Calelm{} {}

    using Calelm::dir;
    using Calelm::ex;
    using Calelm::ey;
    using Calelm::k1;
    using Calelm::k2;
    using Calelm::par;
    using Calelm::r1;
    using Calelm::r2;
    using Calelm::sx;
    using Calelm::sy;
    using Calelm::type;

    /** For the functions of the C interface that hold in either plane. */
    Calelm* raw() { return this; }
    const Calelm* raw() const { return this; }
};

CalcRecord toCalc(const Calelm& e);
Calelm toSurvey(const CalcRecord& e);

/**
 * The same element travelled the other way: ends, radii and tangents exchanged, dir negated, k fields kept. Twice is the
 * same element.
 */
CalcRecord reversed(const CalcRecord& e);

inline Vec startOf(const CalcRecord& e) {
    return {e.sx, e.sy};
}
inline Vec endOf(const CalcRecord& e) {
    return {e.ex, e.ey};
}
inline Vec centreOf(const CalcRecord& arc) {
    return {arc.k1, arc.k2};
}

inline void setStart(CalcRecord& e, Vec p) {
    e.sx = p.x;
    e.sy = p.y;
}
inline void setEnd(CalcRecord& e, Vec p) {
    e.ex = p.x;
    e.ey = p.y;
}

} // namespace fenmark::alignment
