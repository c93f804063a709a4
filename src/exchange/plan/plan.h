// A plan in the making: the sheet, what is drawn on it, and the names that found room.
#pragma once

#include "drawing/drawing.h"
#include "exchange/notes.h"
#include "exchange/plan/plan_labels.h"
#include "exchange/plan/plan_sheet.h"
#include "exchange/text.h"

#include <array>
#include <cstdint>
#include <ostream>
#include <set>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
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

// Where two sheets along an alignment meet.
struct MatchLine {
    host::PlanPoint point;
    double direction = 0.0; // of the alignment
    std::string text;
};

// What an entity is on a plan, found once for all passes over the drawing and for all sheets.
class PlanKinds {
  public:
    void add(const drawing::EntityView& entity); // in the order of the drawing
    PlanItem of(std::size_t entity) const { return static_cast<PlanItem>(kinds_[entity]); }
    bool isPoint(std::size_t entity) const { return of(entity) >= PlanItem::CoordinatePoint; }
    std::size_t count(PlanItem item) const { return counts_[static_cast<std::size_t>(item)]; }
    std::size_t polylines() const { return polylines_; }

  private:
    std::vector<std::uint8_t> kinds_;
    std::array<std::size_t, static_cast<std::size_t>(PlanItem::OtherPoint) + 1> counts_{};
    std::size_t polylines_ = 0; // of two vertices or more
};

inline constexpr std::size_t kMostFiles = 4; // that a plan looks for: three names, and whether there are more

// Whether a plan can show the alignment to scale: no coordinate and no station is larger than any survey's.
[[nodiscard]] bool inReach(const drawing::Alignment& alignment);

// What of a drawing a plan can show.
struct Shown {
    explicit Shown(const drawing::Drawing& drawing);

    drawing::Extent extent;
    std::size_t leftOut = 0;         // entities at the origin, far from all others
    std::size_t beyondReach = 0;     // entities and alignments with coordinates that no survey has
    std::size_t singleVertices = 0;  // polylines of one vertex that are neither
    std::size_t withoutElements = 0; // alignments
    PlanKinds kinds;
    std::vector<std::string> files; // the first of those that the rows name, each once
};

struct Plan {
    // The values shown outlive the plan.
    Plan(const drawing::Drawing& drawing, const Shown& shown, const SheetChoice& choice)
        : Plan(drawing, shown, PlanSheet(shown.extent, choice)) {}
    Plan(const drawing::Drawing& drawing, const Shown& shown, const PlanSheet& sheet);

    const drawing::Drawing& drawing;
    const PlanKinds& kinds;
    const std::vector<std::string>& files;
    std::size_t leftOut = 0;
    std::size_t beyondReach = 0;
    bool partial = false; // shows a part of the drawing; what lies beside the sheet is passed over
    std::vector<MatchLine> matchLines;
    std::string heading = "平　面　図";
    std::vector<std::pair<std::string, std::string>> titles; // more lines of the title: name and value
    PlanSheet sheet;
    LabelSpace space;
    std::vector<Label> labels;
    std::set<PlanItem> items;
    std::vector<std::string> layerColours;       // by layer; empty if none has one
    std::set<std::size_t> colouredLayers;        // that the sheet shows
    std::unordered_set<std::size_t> namedAtEnds; // points whose names stand at the ends of elements
    std::set<std::size_t> unnamedPoints;         // entities whose names have no room
    std::set<std::size_t> unnamedLots;
    std::size_t withoutRoom = 0;   // texts of alignments
    Notes notes;                   // for the user and for the sheet
    double stationStep = 20.0;     // metres
    double elementEndSnap = 0.005; // metres: a coordinate point this close to an element's end gives it its name

    // The colour of what lies on that layer, "#1a2b3c"; empty where each kind has its own. Notes for the legend that it
    // is there.
    std::string_view colourOn(std::string_view layer);
    bool isLeftOut(const drawing::EntityView& entity) const;
    bool isLeftOut(const drawing::Alignment& alignment) const;
    // Whether the sheet has no part of it.
    bool isBeside(const drawing::Extent& extent) const { return partial && !sheet.shows(extent); }
    // A direction of the ground as it runs on the paper.
    double turned(double direction) const { return direction + sheet.rotation(); }
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
void nameLots(Plan& plan);
void drawPoints(Plan& plan, std::ostream& out);

// The whole sheet as an SVG document.
void writePlan(Plan& plan, std::ostream& out);

// Frame, grid, legend, title, north arrow and scale bar.
void drawGrid(Plan& plan, std::ostream& out);
// The names of a turned grid, which stand where there is room.
void nameGrid(Plan& plan);
void drawMatchLines(Plan& plan, std::ostream& out);
void drawPanel(const Plan& plan, std::ostream& out);

} // namespace fenmark::exchange
