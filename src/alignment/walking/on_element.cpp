// From a station to the point and tangent there, and to a point off the element.
//
// Symbols: s station from the element's start, T total, R radius, theta the angle run on an arc. Records, points and
// tangents are in the survey plane, values named ...Calc in the calculation plane (y negated). For clothoids see
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
double lastStation(double betweenEnds, double stored) {
    return stored > betweenEnds && stored <= betweenEnds + kStoredLengthSlack ? stored : betweenEnds;
}

// Gives out a rounded point with its tangent; -1 when the coordinates are beyond what can be rounded.
int writeRounded(Point onSurvey, double tangentCalc, double point[2], double* tangent) {
    if (!std::isfinite(onSurvey.x) || !std::isfinite(onSurvey.y)) {
        return -1;
    }
    point[0] = onSurvey.x;
    point[1] = onSurvey.y;
    *tangent = otherPlaneAngle(roundAngle(tangentCalc));
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
    const double pCalc[2] = {rec->sx, -rec->sy};
    const double qCalc[2] = {rec->ex, -rec->ey};
    const double chord = ali_CDist2P(pCalc, qCalc);
    const int limit = s <= lastStation(chord, rec->len) ? 0 : 1;
    double onCalc[2];
    double angleCalc = 0.0;
    const int status = ali_KGetPnt(pCalc, qCalc, s, limit, onCalc, &angleCalc);
    if (status != 0) {
        return status;
    }
    return writeRounded({roundLength(onCalc[0]), roundedSurveyY(onCalc[1])}, angleCalc, point, tangent);
}

int ali_onlR(const Calelm* rec, double s, double point[2], double* tangent) {
    const double R = rec->par;
    if (!(roundLength(R) > 0.0) || !std::isfinite(R) || !std::isfinite(s)) {
        return -1;
    }
    // Relative to the centre.
    const double origin[2] = {0.0, 0.0};
    const double startCalc[2] = {rec->sx - rec->k1, -rec->sy + rec->k2};
    const double endCalc[2] = {rec->ex - rec->k1, -rec->ey + rec->k2};
    double total = 0.0;
    ali_KEnPncl(rec->dir, R, origin, startCalc, endCalc, &total);
    const double theta = s / R;
    const double last = lastStation(total, rec->len);
    if (roundAngle(theta) > roundAngle(kTwoPi) || !(roundLength(s) <= roundLength(last))) {
        return -1;
    }
    double onCalc[2];
    ali_KEnPntb(rec->dir, origin, startCalc, theta, onCalc);
    double sangCalc = 0.0;
    double tangentCalc = 0.0;
    double sweep = 0.0;
    double length = 0.0;
    ali_KEnAng(startCalc, onCalc, rec->dir, R, 0.0, 0.0, &sangCalc, &tangentCalc, &sweep, &length);
    return writeRounded({roundLength(onCalc[0] + rec->k1), roundedSurveyY(onCalc[1] - rec->k2)}, tangentCalc, point,
                        tangent);
}

int ali_onlA(const Calelm* rec, double s, double point[2], double* tangent) {
    const LaidClothoid laid(*rec);
    if (!laid.valid()) {
        return -1;
    }
    const double L = laid.standardStationOf(s);
    const Point onCalc = laid.toCalc(standardPointAt(laid.parameter(), L));
    const double at = laid.surveyTangent(L);
    if (!std::isfinite(s) || !std::isfinite(onCalc.x) || !std::isfinite(onCalc.y) || !std::isfinite(at)) {
        return -1;
    }
    point[0] = onCalc.x;
    point[1] = -onCalc.y;
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
