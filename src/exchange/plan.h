// A plan in the making: the sheet, what is drawn on it, and the names that found room.
#pragma once

#include "drawing/drawing.h"
#include "exchange/plan_labels.h"
#include "exchange/plan_sheet.h"
#include "exchange/text.h"

#include <ostream>
#include <set>
#include <string>
#include <unordered_set>
#include <vector>

namespace fenmark::exchange {

// What the legend explains, in its order.
enum class PlanItem {
    Straight,
    Arc,
    Clothoid,
    ElementEnd,
    Station,
    Lot,
    IpLine,
    LeftStakes,
    RightStakes,
    Continuous,
    OtherLine,
    CoordinatePoint,
    LongitudinalPoint,
    CrossSectionPoint,
    OtherPoint,
};

struct Plan {
    explicit Plan(const drawing::Drawing& shown);

    const drawing::Drawing& drawing;
    std::size_t leftOut = 0;     // entities at the origin, far from all others
    std::size_t beyondReach = 0; // entities and alignments with coordinates that no survey has
    PlanSheet sheet;
    LabelSpace space;
    std::vector<Label> labels;
    std::set<PlanItem> items;
    std::unordered_set<std::size_t> namedAtEnds; // points whose names stand at the ends of elements
    Notes notes;                                 // for the user and for the sheet, in Japanese
    double stationStep = 20.0;                   // metres
    double elementEndSnap = 0.005; // metres: a coordinate point this close to an element's end gives it its name

    bool isLeftOut(const drawing::EntityView& entity) const;
    bool isLeftOut(const drawing::Alignment& alignment) const;
    PaperPoint at(double x, double y) const { return sheet.at(x, y); }
    // Adds the first candidate that finds room; false if none does.
    bool place(const std::vector<Label>& candidates, bool offLinesOnly);
};

// A length on the paper with two decimals, without the zeros at the end.
std::string mm(double millimetres);

// How far the base line of a text lies below the middle of its letters, millimetres. Not every viewer knows how to
// place text by its middle.
constexpr double baseLineBelow(double textSize) {
    return 0.36 * textSize;
}

// "No.5" or "No.5+12.345" for stakes 20 m apart.
std::string stakeName(double station);

// Each draws its things and asks for its names. Alignments come before entities: their names matter more.
void drawPolylines(Plan& plan, std::ostream& out);
void drawAlignments(Plan& plan, std::ostream& out);
void namePolylines(Plan& plan);
void drawPoints(Plan& plan, std::ostream& out);

// Frame, grid, legend, title, north arrow and scale bar.
void drawGrid(const Plan& plan, std::ostream& out);
void drawPanel(const Plan& plan, std::ostream& out);

} // namespace fenmark::exchange
