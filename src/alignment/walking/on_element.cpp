// From a station to the point and tangent there, and to a point off the element.
//
// Symbols: s station from the element's start, T total, R radius, theta the angle run on an arc. Records, points and
// tangents are in the survey plane, values named _calc in the calculation plane (y negated). For clothoids see
// laid_clothoid.h.
#include "alignment/calelm/answer.h"
#include "alignment/calelm/planes.h"
#include "alignment/calelm/rounding.h"
#include "alignment/walking/laid_clothoid.h"
#include "fenmark/alignment/clothoid.h"
#include "fenmark/alignment/conventions.h"
#include "fenmark/alignment/walking.h"

using namespace fenmark::alignment;

namespace {

// Where stations end: at the length between the ends, or at the stored one where rounding alone made it longer.
double lastStation(double between_ends, double stored) {
    return stored > between_ends && stored <= between_ends + kStoredLengthSlack ? stored : between_ends;
}

// Gives out a rounded point with its tangent; -1 when the coordinates are beyond what can be rounded.
int writeRounded(Point on_survey, double tangent_calc, double point[2], double* tangent) {
    if (!std::isfinite(on_survey.x) || !std::isfinite(on_survey.y)) {
        return -1;
    }
    point[0] = on_survey.x;
    point[1] = on_survey.y;
    *tangent = otherPlaneAngle(roundAngle(tangent_calc));
    return 0;
}

// Point off an element, from the point and tangent on it. In the survey plane the left of a tangent is at -pi / 2.
int offElement(decltype(ali_onl) onElement, const Calelm* rec, double s, double angle, double d, double point[2]) {
    double on[2] = {0.0, 0.0};
    double tangent = 0.0;
    const int status = onElement(rec, s, on, &tangent);
    if (status != 0) {
        return status;
    }
    const double direction = tangent - angle;
    return giveOutReals<2>({on[0] + d * std::cos(direction), on[1] + d * std::sin(direction)}, point);
}

} // namespace

extern "C" {

int ali_onl(const Calelm* rec, double s, double point[2], double* tangent) {
    switch (rec->type) {
    case ALI_STRAIGHT:
        return ali_onlS(rec, s, point, tangent);
    case ALI_ARC:
        return ali_onlR(rec, s, point, tangent);
    case ALI_CLOTHOID:
        return ali_onlA(rec, s, point, tangent);
    default:
        return -1;
    }
}

int ali_onlS(const Calelm* rec, double s, double point[2], double* tangent) {
    const double p_calc[2] = {rec->sx, -rec->sy};
    const double q_calc[2] = {rec->ex, -rec->ey};
    const double chord = ali_CDist2P(p_calc, q_calc);
    const int limit = s <= lastStation(chord, rec->len) ? 0 : 1;
    double on_calc[2];
    double angle_calc = 0.0;
    const int status = ali_KGetPnt(p_calc, q_calc, s, limit, on_calc, &angle_calc);
    if (status != 0) {
        return status;
    }
    return writeRounded({roundLength(on_calc[0]), roundedSurveyY(on_calc[1])}, angle_calc, point, tangent);
}

int ali_onlR(const Calelm* rec, double s, double point[2], double* tangent) {
    const double R = rec->par;
    if (!(roundLength(R) > 0.0) || !std::isfinite(R) || !std::isfinite(s)) {
        return -1;
    }
    // Relative to the centre.
    const double origin[2] = {0.0, 0.0};
    const double start_calc[2] = {rec->sx - rec->k1, -rec->sy + rec->k2};
    const double end_calc[2] = {rec->ex - rec->k1, -rec->ey + rec->k2};
    double total = 0.0;
    ali_KEnPncl(rec->dir, R, origin, start_calc, end_calc, &total);
    const double theta = s / R;
    const double last = lastStation(total, rec->len);
    if (roundAngle(theta) > roundAngle(kTwoPi) || !(roundLength(s) <= roundLength(last))) {
        return -1;
    }
    double on_calc[2];
    ali_KEnPntb(rec->dir, origin, start_calc, theta, on_calc);
    double sang_calc = 0.0;
    double tangent_calc = 0.0;
    double sweep = 0.0;
    double length = 0.0;
    ali_KEnAng(start_calc, on_calc, rec->dir, R, 0.0, 0.0, &sang_calc, &tangent_calc, &sweep, &length);
    return writeRounded({roundLength(on_calc[0] + rec->k1), roundedSurveyY(on_calc[1] - rec->k2)}, tangent_calc, point,
                        tangent);
}

int ali_onlA(const Calelm* rec, double s, double point[2], double* tangent) {
    const LaidClothoid laid(*rec);
    if (!laid.valid()) {
        return -1;
    }
    const double L = laid.standardStationOf(s);
    const Point on_calc = laid.toCalc(standardPointAt(laid.parameter(), L));
    const double at = laid.surveyTangent(L);
    if (!std::isfinite(s) || !std::isfinite(on_calc.x) || !std::isfinite(on_calc.y) || !std::isfinite(at)) {
        return -1;
    }
    point[0] = on_calc.x;
    point[1] = -on_calc.y;
    *tangent = at;
    return s > laid.length() ? -1 : 0;
}

int ali_oflS(const Calelm* rec, double s, double angle, double d, double point[2]) {
    return offElement(ali_onlS, rec, s, angle, d, point);
}

int ali_oflR(const Calelm* rec, double s, double angle, double d, double point[2]) {
    return offElement(ali_onlR, rec, s, angle, d, point);
}

int ali_oflA(const Calelm* rec, double s, double angle, double d, double point[2]) {
    return offElement(ali_onlA, rec, s, angle, d, point);
}

} // extern "C"
