// Cross lines: a straight through the point at a station, at a given angle to the tangent there.
//
// Symbols: P point and t tangent at the station, a the angle, h the half length. Survey plane throughout; the line runs
// from P - h (cos(t - a), sin(t - a)) to P + h (cos(t - a), sin(t - a)).
#include "fenmark/alignment/tangent.h"

#include "fenmark/alignment/construction.h"
#include "fenmark/alignment/walking.h"

#include "alignment/calelm/answer.h"
#include "alignment/tangent/solver_tools.h"

namespace fenmark::alignment {

namespace {

using OnElement = int (*)(const Calelm*, double, double*, double*);

int crossLine(OnElement on, const Calelm& element, double station, double angle, double halfLength, Calelm& s) {
    double point[2];
    double tangent = 0.0;
    const int status = signed16(on(&element, station, point, &tangent));
    if (status != 0) {
        return status;
    }
    const Vec half = halfLength * plane::unit(tangent - angle);
    const Vec p{point[0], point[1]};
    Calelm line{};
    line.type = element::kStraight;
    line.sx = p.x - half.x;
    line.sy = p.y - half.y;
    line.ex = p.x + half.x;
    line.ey = p.y + half.y;
    // A line that runs off into values that are not finite has no ends.
    if (!std::isfinite(line.sx + line.sy + line.ex + line.ey)) {
        return -1;
    }
    const int built = signed16(ali_makS(&line));
    if (built == 0) {
        s = line;
    }
    return built;
}

} // namespace

} // namespace fenmark::alignment

extern "C" {

int ali_SmakS(const Calelm* element, double station, double angle, double halfLength, Calelm* s) {
    return fenmark::alignment::answerInPlace({s}, [&]() -> int {
        return fenmark::alignment::crossLine(ali_onlS, *element, station, angle, halfLength, *s);
    });
}

int ali_SmakR(const Calelm* element, double station, double angle, double halfLength, Calelm* s) {
    return fenmark::alignment::answerInPlace({s}, [&]() -> int {
        return fenmark::alignment::crossLine(ali_onlR, *element, station, angle, halfLength, *s);
    });
}

int ali_SmakA(const Calelm* element, double station, double angle, double halfLength, Calelm* s) {
    return fenmark::alignment::answerInPlace({s}, [&]() -> int {
        return fenmark::alignment::crossLine(ali_onlA, *element, station, angle, halfLength, *s);
    });
}

int ali_Smak(const Calelm* element, double station, double angle, double halfLength, Calelm* s) {
    namespace element_type = fenmark::alignment::element;
    switch (element->type) {
    case element_type::kStraight:
        return ali_SmakS(element, station, angle, halfLength, s);
    case element_type::kArc:
        return ali_SmakR(element, station, angle, halfLength, s);
    case element_type::kClothoid:
        return ali_SmakA(element, station, angle, halfLength, s);
    default:
        return -1;
    }
}

} // extern "C"
