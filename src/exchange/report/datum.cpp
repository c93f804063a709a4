// The datum and zone of a drawing for the head of a report.
#include "exchange/report/datum.h"

#include "drawing/drawing.h"

namespace fenmark::exchange {

namespace {

constexpr const char* kZones[] = {"",  "I",  "II",  "III",  "IV",  "V",  "VI",  "VII",  "VIII",  "IX",
                                  "X", "XI", "XII", "XIII", "XIV", "XV", "XVI", "XVII", "XVIII", "XIX"};

} // namespace

std::string datumOf(const drawing::Drawing& drawing) {
    const int zone = drawing.zone();
    return zone >= 1 && zone <= 19 ? std::string("世界測地系（測地成果2011） 平面直角座標 第") + kZones[zone] + "系"
                                   : std::string("平面直角座標（系は不明）");
}

} // namespace fenmark::exchange
