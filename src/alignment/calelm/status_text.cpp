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
    {"initCalelm", -1, "the pointer is null"},
    {"ali_CSamePoint", 0, "both coordinates agree within 1e-5 m"},
    {"ali_CSamePoint", 1, "a coordinate differs by 1e-5 m or more"},
    {"gc_samePoint", 0, "both coordinates agree within the tolerance"},
    {"gc_samePoint", -1, "a coordinate differs by the tolerance or more"},
    {"ali_KCalCst", -1, "the points are too near one another for a line, or a value is not finite"},
    {"ali_KGetPnt", -1,
     "the points agree within 1e-5 m, or the distance is negative or, with the limit set, beyond the second point"},
    {"ali_KEnCen", -1, "a value is not finite"},
    {"ali_mak", -1, "unknown element type or mode, or the sizes given make no element"},
    {"ali_mak", 2, "the element is complete, but its point at the sharper end was moved to where the radii put it"},
    {"ali_makS", -1, "the end points agree within 1e-5 m"},
    {"ali_makR", -1,
     "the end points agree within 1e-5 m, the radius is 0 or less than half the chord, or dir is not +1 or -1"},
    {"ali_makA", -1, "A is 0, a radius is at or below 0.56 A, or both radii give the same length"},
    {"ali_makA", 2,
     "the clothoid is complete, but its point at the sharper end was moved to where A and the radii put it"},
    {"ali_makangS", -1, "the length is not above 0, or the end is neither 1 nor 2"},
    {"ali_makangR", -1, "the end is neither 1 nor 2, dir is not +1 or -1, or the radius or the length is not above 0"},
    {"ali_makangA", -1,
     "the end is neither 1 nor 2, dir is not +1 or -1, A is not above 0, or a radius is at or below 0.56 A"},
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
    {"ali_getl", -1,
     "unknown element type, equal ends of a straight, or an arc with the radius 0 or a dir not +1 or -1"},
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
    {"CDsameA", -1, "the two lie on one clothoid, and the second's flatter end is no further from the origin"},
    {"CDsameA", -2,
     "the two lie on one clothoid, and the second's flatter end is further from the origin; or one flattens while the "
     "other sharpens"},
    {"jointCheck", 0, "the second element goes on where the first ends"},
    {"jointCheck", -1, "the elements do not meet, or they break by 0.5 rad or more"},
    {"ali_pmov", -1, "unknown element type"},
    {"ali_tmov", -1, "unknown element type"},
    {"many_ali_pmov", 1, "every record of a known type was moved"},
    {"many_ali_tmov", 1, "every record of a known type was turned"},
    {"ali_intp", 0, "one point, or a touch"},
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
    {"ali_intpSR", -1, "the line misses the circle, or the straight has no length or the arc no radius"},
    {"ali_intpSR", -2, "the line meets the circle outside the straight or the arc"},
    {"ali_intpRR", -1, "the circles lie apart or one inside the other, or an arc has no radius"},
    {"ali_intpRR", -2, "the arcs lie on one circle, or their circles meet outside them"},
    {"ali_intpRR", -3, "the arcs are concentric"},
    {"ali_intpRA", 1, "a touch, one point"},
    {"ali_intpRA", -1, "the arc and the clothoid do not meet, or one of them is no element"},
    {"ali_intpSA", 1, "a touch, one point: the line passes within 1 m of where the clothoid runs parallel to it"},
    {"ali_intpSA", -1, "the straight and the clothoid do not meet, or one of them is no element"},
    {"ali_intpAA", 1, "a touch, one point"},
    {"ali_intpAA", -1, "the clothoids do not meet, or one of them is no element"},
    {"CDchkAR", 0, "the radius is infinite or above 0.56 A"},
    {"CDchkAR", -1, "A is 0, or the radius is at or below 0.56 A"},
    {"clothoidElements", -1, "A is not above 0, tau is negative or above 30, or one of them is not finite"},
    {"CDAcrosS", -1, "the walk moves away from the line"},
    {"CDAcrosS", -2, "the walk passed the other end of the clothoid"},
    {"CDlinstd", 1, "the points are less than 1e-7 m apart"},
    {"CDlincros", 1, "the lines are parallel"},
    {"CDpoiinseg", 0, "the point lies inside the segment"},
    {"CDpoiinseg", 1, "the point is the segment's first end"},
    {"CDpoiinseg", 2, "the point is the segment's second end"},
    {"CDpoiinseg", -1, "the point lies off the segment"},
    {"CDpoionls", 0, "the point lies near the line"},
    {"CDpoionls", 1, "the point is the line's first end"},
    {"CDpoionls", 2, "the point is the line's second end"},
    {"CDpoionls", -1, "the point lies off the line"},
    {"CDsegcros", 0, "the segments cross inside both"},
    {"CDsegcros", 1, "the segments are parallel, or one is shorter than 1e-7 m"},
    {"CDsegcros", 11, "the segments meet at the first end of the first"},
    {"CDsegcros", 12, "the segments meet at the second end of the first"},
    {"CDsegcros", 21, "the lines meet at the first end of the second segment"},
    {"CDsegcros", 22, "the lines meet at the second end of the second segment"},
    {"CDsegcros", -1, "the segments do not meet"},
    {"CDreverA", 0, "the record was left as it is"},
    {"CDreverA", 1, "the record was reversed"},
    {"CDvalidArc", 0, "the arc is strictly between empty and a half circle"},
    {"CDvalidArc", -1, "the arc is not strictly between empty and a half circle"},
    {"CDOODistForRAR", -1, "arcs of different dir have no clothoid between finite radii"},
    {"CDsetAToRAR", -1, "the first arc is not strictly between empty and a half circle"},
    {"CDsetAToRAR", 1, "the centres are too near one another for a common tangent"},
    {"ali_RmakSS", -1, "the lines are parallel, the IP lies off them, or a tangent length is longer than a straight"},
    {"ali_AAmakSS", -1, "the lines are parallel, the IP lies off them, or a tangent length is longer than a straight"},
    {"ali_ARAmakSS", -1,
     "the lines are parallel, the IP lies off them, a tangent length is longer than a straight, or the clothoids "
     "leave no room for the arc"},
    {"ali_RmakSR", -1, "the side is not +1 or -1, or no arc of this radius touches both within them"},
    {"ali_RmakRR", -1, "a radius is 0, or no arc of this radius and turn touches both arcs within them"},
    {"ali_SmakRR", -1, "a radius is 0, the circles leave no common tangent, or it touches outside the arcs"},
    {"ali_RAmakSR", -1, "the side or the mode is not one of its values, or these sizes leave no chain within both"},
    {"ali_ARmakRR", -1, "the mode is 0, the turns differ, or the arcs are too far apart or too close for these sizes"},
    {"ali_ARAmakRR", -1, "two radii are alike, or the arcs are too far apart or too close for these sizes"},
    {"ali_SAmakRR", -1, "the circles leave no common tangent, or the clothoid finds no room on it"},
    {"ali_ASAmakRR", -1, "the circles leave no common tangent, or the clothoids find no room on it"},
    {"ali_ARAAmakSR", -1, "no chain of these sizes leads from the straight to the arc"},
    {"chainWorker", -1, "no chain of these sizes leads from the straight to the arc"},
    {"ali_Smak", -1, "unknown element type, the station lies off the element, or the half length is 0"},
    {"ali_SmakS", -1, "the station lies off the straight, or the half length is 0"},
    {"ali_SmakR", -1, "the station lies beyond the arc, or the half length is 0"},
    {"ali_SmakA", -1, "the station lies beyond the clothoid, or the half length is 0"},
    {"ali_makRAR", -1, "radii or centres too much alike, unlike dir, no common tangent, or R / A at or below 0.56"},
    {"ali_makRAR", 1, "the smaller circle is out of the clothoid's reach along the common tangent"},
    {"ali_makRAAR", -1, "equal dir, circles or offset circles that do not lie apart, or R / A at or below 0.56"},
    {"ali_makSAR", -1, "not a straight and an arc, the arc's centre on the wrong side, or R / A at or below 0.56"},
    {"ali_mak3R4A", -1, "the turns do not alternate, or no place of the middle arc gives a tangent chain"},
    {"ali_makAOR_P", -1, "no place of the new arc passes the point and gives a tangent chain"},
    {"setAOR_P", -1, "no place of the new arc passes the point and gives a tangent chain"},
    {"alimake_rfAArf", -1, "the clothoids do not fit between the arcs, or an arc cannot be fitted to them"},
    {"alimake_rfArf", -1, "an arc can be neither cut at the clothoid nor built from it"},
    {"alimake_rfAsf", -1, "the straight or the arc cannot be built to the clothoid"},
    {"alimake_rfAsf", -2, "fitted; the arc's direction had to change, so it was built again from the clothoid on"},
    {"alimake_rfAsf", -3, "fitted; the straight's direction had to change, so it was built again from the clothoid on"},
    {"moveR_dl0_rfAArf", -1, "the record to be moved is no arc, or the gap is not a number"},
    {"moveR_dl0_rfArf", -1, "the clothoid or the arc cannot be built"},
    {"moveR_dl0_rfAsf", -1, "there is no gap to close, it is not that of this chain, or an element cannot be built"},
    {"moveR_dl0_rfAsf", -2, "closed; the arc's direction had to change, so it was built again from the clothoid on"},
    {"moveR_dl0_rfAsf", -3,
     "closed; the straight's direction had to change, so it was built again from the clothoid on"},
    {"ARmakRR", -1, "no place of the arc inside the other gives a chain"},
    {"ARmakRR", 1, "the centres are too near one another for a common tangent"},
    {"chk_CSameAng", 0, "the angles agree within one second of arc"},
    {"chk_CSameAng", -1, "the angles differ by one second of arc or more"},
    {"chk_on_tangent", 0, "the point lies on a line of the list"},
    {"chk_on_tangent", -1, "the point lies on no line of the list"},
    {"chk_tangent", 0, "the point lies on no line of the list"},
    {"chk_tangent", 1, "the point is the first of the list"},
    {"chk_tangent", 2, "the point is the last of the list"},
    {"chk_tangent", 3, "the point lies on a line of the list"},
    {"cplnrm", 1, "the foot lies on the segment"},
    {"cplnrm", -1, "the foot lies off the segment"},
    {"gc_intpSS", 1, "the lines are parallel"},
    {"gc_poionl", 0, "the point lies on the line"},
    {"gc_poionl", -1, "the point lies off the line"},
    {"ali_IPsetR", -1, "two points of a leg are equal, the radius is not above 0, or the legs turn back"},
    {"ali_IPsetAA", -1, "two points of a leg are equal, the legs are in line, or the clothoids do not meet"},
    {"ali_IPsetARA", -1,
     "R / A is at or below 0.56, two points of a leg are equal, or the clothoids alone turn too far"},
    {"ali_IPsetARARA", -1,
     "no such curve: check the tangent length, the order of the radii and the points of the legs"},
    {"ali_makrS_P", -1,
     "the point lies inside the circle, the length is not above 0, or more than a half circle is left"},
    {"ali_makrR_P", -1, "the point is out of the arc's reach, R1 is 2 R2 or more, or an arc exceeds a half circle"},
    {"ali_makrR_P_S", -1, "the point is out of the arc's reach, or the arc exceeds a half circle"},
    {"ali_makrAS_P", -1, "the point lies within the offset circle, or the length does not lead it to the clothoid"},
    {"ali_makrAR_P", -1, "no arc of this radius reaches the point through the clothoid"},
    {"ali_makrAAR_P", -1, "no arc of this radius reaches the point through the clothoids"},
    {"ali_maksR_P", -1,
     "the point lies more than 2 R from the line or on its other side, or the contact misses the straight"},
    {"ali_maksAR_P", -1, "the point is out of the arc's reach, or the clothoid would begin off the straight"},
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

extern "C" const char* ali_statusText(const char* function, int statusGiven) {
    const int status = static_cast<int16_t>(static_cast<uint16_t>(statusGiven));
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
