// Texts of the status codes: one table, by function where a status has a meaning of its own.
#include "fenmark/alignment/conventions.h"

#include <cstring>

namespace {

struct Text {
    const char* function; // null: any function
    int status;
    const char* text;
};

constexpr Text kTexts[] = {
    {"ali_mak", -1, "unknown element type or mode, or the sizes given make no element"},
    {"ali_mak", 2, "the element is complete, but its point at the sharper end was moved to where the radii put it"},
    {"ali_makS", -1, "the end points agree within 1e-5 m"},
    {"ali_makR", -1,
     "the end points agree within 1e-5 m, the radius is 0 or less than half the chord, or dir is not +1 or -1"},
    {"ali_makA", -1, "A is 0, a radius is at or below 0.56 A, or both radii give the same length"},
    {"ali_makA", 2,
     "the clothoid is complete, but its point at the sharper end was moved to where A and the radii put it"},
    {"ali_makangS", -1, "the length is not above 0, or the end is neither 1 nor 2"},
    {"ali_makangR", -1, "the end is neither 1 nor 2, dir is not +1 or -1, or the radius or the length is 0"},
    {"ali_makangA", -1, "the end is neither 1 nor 2, A is 0, or a radius is at or below 0.56 A"},
    {"ali_onl", -1, "unknown element type, or the station lies off the element"},
    {"ali_onlS", -1, "the station lies off the straight, or the straight has no length"},
    {"ali_onlR", -1, "the station lies beyond the arc, or its radius is not above 0"},
    {"ali_onlA", -1, "the station lies beyond the clothoid, or the clothoid has no length"},
    {"ali_oflS", -1, "the station lies off the straight, or the straight has no length"},
    {"ali_oflR", -1, "the station lies beyond the arc, or its radius is not above 0"},
    {"ali_oflA", -1, "the station lies beyond the clothoid, or the clothoid has no length"},
    {"ali_proj", -1, "unknown element type, or no foot lies on the element"},
    {"ali_projS", -1, "no foot lies on the straight"},
    {"ali_projR", -1, "no foot lies on the arc, or the point is the centre or an end of the arc"},
    {"ali_projA", -1, "no foot lies on the clothoid"},
    {"ali_getl", -1, "unknown element type, or an element without length"},
    {"ali_getl", 1, "a whole circle; the length is given as 0"},
    {"ali_getlS", -1, "the end points agree within 1e-5 m"},
    {"ali_getlR", -1, "the radius is 0, or dir is not +1 or -1"},
    {"ali_getlR", 1, "a whole circle"},
    {"chk_ang", 0, "the point at this station is the foot"},
    {"chk_ang", 1, "the foot lies before this station"},
    {"chk_ang", -1, "the foot lies after this station"},
    {"chk_ang", 2, "the point lies on the curve at this station"},
    {"Calc_moni", 1, "the monitoring pass ran"},
    {"get_moniDist", 1, "the distance was found"},
    {"get_moniDist", -1, "no element has a foot for the point"},
    {"CDsameA", 0, "the two do not lie on one clothoid"},
    {"CDsameA", -1, "the two lie on one clothoid"},
    {"CDsameA", -2, "the two lie on one clothoid, or one flattens while the other sharpens"},
    {"jointCheck", -1, "the elements do not meet, or they break by 0.5 rad or more"},
    {"ali_intp", 0, "one point"},
    {"ali_intp", 1, "two points"},
    {"ali_intp", -1, "the elements do not meet, or their types are unknown"},
    {"ali_intp", -2, "arcs of one circle, or a line or circle that meets the other outside the elements"},
    {"ali_intp", -3, "concentric arcs"},
    {"ali_intpSS", 0, "the crossing lies on both straights"},
    {"ali_intpSS", 1, "the crossing does not lie on the second straight"},
    {"ali_intpSS", 2, "the crossing does not lie on the first straight"},
    {"ali_intpSS", 3, "the crossing lies on neither straight"},
    {"ali_intpSS", -1, "both straights lie on one line"},
    {"ali_intpSS", -2, "the straights are parallel"},
    {"ali_intpSS", -3, "a straight has no length"},
    {"ali_intpSR", -1, "the line misses the circle"},
    {"ali_intpSR", -2, "the line meets the circle outside the straight or the arc"},
    {"ali_intpRR", -1, "the circles do not meet"},
    {"ali_intpRR", -2, "the arcs lie on one circle, or their circles meet outside them"},
    {"ali_intpRR", -3, "the arcs are concentric"},
    {"ali_intpRA", -1, "the arc and the clothoid do not meet, or one of them is no element"},
    {"ali_intpSA", -1, "the straight and the clothoid do not meet, or one of them is no element"},
    {"ali_intpAA", -1, "the clothoids do not meet, or one of them is no element"},
    {"CDchkAR", -1, "A is 0, or the radius is at or below 0.56 A"},
    {"clothoidElements", -1, "A is not above 0, or tau is negative or too large"},
    {"CDAcrosS", -1, "the walk moves away from the line"},
    {"CDAcrosS", -2, "the walk passed the other end of the clothoid"},
    {"CDlinstd", 1, "the points are less than 1e-7 m apart"},
    {"CDlincros", 1, "the lines are parallel"},
    {"CDvalidArc", -1, "the arc is not strictly between empty and a half circle"},
    {"CDOODistForRAR", -1, "arcs of different dir have no clothoid between finite radii"},
    {"CDsetAToRAR", -1, "the first arc is not strictly between empty and a half circle"},
    {"CDsetAToRAR", 1, "the centres are too near one another for a common tangent"},
    {nullptr, 0, "success"},
    {nullptr, 1, "done, with a second result or a special case"},
    {nullptr, 2, "two points, or done with a point moved"},
    {nullptr, -1, "no result: bad input or no solution"},
    {nullptr, -2, "no result"},
    {nullptr, -3, "no result"},
};

// The family functions of the intersections share the meaning of their positive results.
constexpr Text kIntersectionTexts[] = {
    {nullptr, 0, "one point"},
    {nullptr, 1, "a touch, or two points that coincide"},
    {nullptr, 2, "two points"},
};

} // namespace

extern "C" const char* ali_statusText(const char* function, int status_given) {
    const int status = static_cast<int16_t>(static_cast<uint16_t>(status_given));
    if (function != nullptr) {
        for (const Text& entry : kTexts) {
            if (entry.function != nullptr && entry.status == status && std::strcmp(entry.function, function) == 0) {
                return entry.text;
            }
        }
        if (std::strncmp(function, "ali_intp", 8) == 0) {
            for (const Text& entry : kIntersectionTexts) {
                if (entry.status == status) {
                    return entry.text;
                }
            }
        }
    }
    for (const Text& entry : kTexts) {
        if (entry.function == nullptr && entry.status == status) {
            return entry.text;
        }
    }
    return "unknown status";
}
