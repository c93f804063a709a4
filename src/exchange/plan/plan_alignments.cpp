// Alignments on a plan: elements by kind, element ends, stations, curve data.
#include "exchange/element_shape.h"
#include "exchange/plan/near_stretches.h"
#include "exchange/plan/path_writer.h"
#include "exchange/plan/plan.h"
#include "exchange/round_stations.h"
#include "exchange/text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace fenmark::exchange {

using drawing::Alignment;
using drawing::AlignmentGeometry;
using drawing::Element;
using drawing::ElementType;
using drawing::EntityView;
using host::PlanPoint;

namespace {

constexpr double kLineTolerance = 0.01;  // millimetres of paper between a clothoid and its line
constexpr double kEndTick = 2.2;         // half the tick of an element's end, millimetres
constexpr double kStakeTick = 0.8;       // half the tick of a station
constexpr double kMajorTick = 1.3;       // half the tick of every fifth station
constexpr double kLeastStakeSpace = 5.0; // millimetres between two stations; a longer step is taken below that
constexpr double kKeySize = 2.0;         // millimetres of type
constexpr double kStakeSize = 1.8;
constexpr double kCurveSize = 1.8;
constexpr double kFarthestName = 14.0; // millimetres from the end of an element
constexpr double kFarthestCurveName = 13.5;
constexpr double kFarthestAlignmentName = 16.0;
// Of all alignments' lines on a sheet; beyond, curves that wind up are drawn with kFewestElementPoints each.
constexpr std::size_t kMostCurvePoints = 200'000;
constexpr double kLargestPaperRadius = 1e9;  // millimetres; beyond, an arc is drawn as its chords
constexpr std::size_t kMostStations = 20000; // ticks on one sheet
// Stations and parts of elements that are looked at for them; a clothoid may wind round a sheet millions of times.
constexpr std::size_t kMostStationLooks = 500'000;
constexpr double kStretchInSteps = 4.0;   // of stations that are walked through one by one
constexpr double kStationRounding = 1e-6; // metres by which a station may be said to lie beside its stretch

const char* styleOf(ElementType type) {
    return type == ElementType::Straight ? "straight" : type == ElementType::Arc ? "arc" : "clothoid";
}

PlanItem itemOf(ElementType type) {
    return type == ElementType::Straight ? PlanItem::Straight
           : type == ElementType::Arc    ? PlanItem::Arc
                                         : PlanItem::Clothoid;
}

// Coordinate points with names that may stand at an element's end, by their place.
class NamedPlaces {
  public:
    NamedPlaces(const Plan& plan) : cell_(plan.elementEndSnap) {
        std::unordered_set<std::uint64_t> wanted;
        for (std::size_t i = 0; i < plan.drawing.alignmentCount(); ++i) {
            if (plan.isLeftOut(plan.drawing.alignment(i))) {
                continue;
            }
            for (const Element& element : plan.drawing.alignment(i).elements) {
                for (const PlanPoint& end : {element.start, element.end}) {
                    eachCellAround(end, [&](std::uint64_t cell) { wanted.insert(cell); });
                }
            }
        }
        for (std::size_t i = 0; !wanted.empty() && i < plan.drawing.entityCount(); ++i) {
            if (plan.kinds.of(i) != PlanItem::CoordinatePoint) {
                continue;
            }
            const EntityView entity = plan.drawing.entity(i);
            if (!entity.row->name.empty() && !plan.isLeftOut(entity)) {
                const std::uint64_t cell = key(entity.position().x, entity.position().y);
                if (wanted.contains(cell)) {
                    indexes_.emplace(cell, i);
                }
            }
        }
    }
    std::optional<std::size_t> at(const PlanPoint& point) const {
        std::optional<std::size_t> nearest;
        eachCellAround(point, [&](std::uint64_t cell) {
            const auto found = indexes_.find(cell);
            if (!nearest && found != indexes_.end()) {
                nearest = found->second;
            }
        });
        return nearest;
    }

  private:
    // The point's own cell first.
    template <typename Function>
    void eachCellAround(const PlanPoint& point, Function function) const {
        for (const double dx : {0.0, -cell_, cell_}) {
            for (const double dy : {0.0, -cell_, cell_}) {
                function(key(point.x + dx, point.y + dy));
            }
        }
    }
    std::uint64_t key(double x, double y) const {
        return static_cast<std::uint64_t>(std::llround(x / cell_)) * 0x9E3779B97F4A7C15U +
               static_cast<std::uint64_t>(std::llround(y / cell_));
    }

    double cell_;
    std::unordered_map<std::uint64_t, std::size_t> indexes_;
};

// The usual name of a joint between two elements: BC and EC where a straight meets an arc, KA where a clothoid meets a
// straight, KE where it meets an arc.
const char* jointName(ElementType before, ElementType after) {
    const bool straight = before == ElementType::Straight || after == ElementType::Straight;
    const bool clothoid = before == ElementType::Clothoid || after == ElementType::Clothoid;
    const bool arc = before == ElementType::Arc || after == ElementType::Arc;
    if (clothoid) {
        return straight ? "KA" : arc ? "KE" : "KK";
    }
    if (before == ElementType::Straight) {
        return arc ? "BC" : "IP";
    }
    return straight ? "EC" : "PCC";
}

// Texts are read from below or, if they stand upright, from the right. Degrees clockwise in [-180, 180].
bool isUpsideDown(double degrees) {
    constexpr double kSlack = 0.1; // of an upright text
    return degrees > 90.0 - kSlack || degrees < -90.0 - kSlack;
}

// A label that runs across the line on one of its sides, turned so that it can be read from below or from the right.
Label across(const PaperPoint& at, double direction, bool left, double distance, double size, std::string text,
             const char* style) {
    const double angle = direction + (left ? 0.5 : -0.5) * std::numbers::pi; // on the ground, anticlockwise
    double degrees = -angle * 180.0 / std::numbers::pi;
    degrees = std::remainder(degrees, 360.0);
    Label label{{at.x + distance * std::cos(angle), at.y - distance * std::sin(angle)},
                size,
                degrees,
                Label::Anchor::Start,
                std::move(text),
                style};
    if (isUpsideDown(degrees)) {
        label.angle = degrees > 0.0 ? degrees - 180.0 : degrees + 180.0;
        label.anchor = Label::Anchor::End;
    }
    return label;
}

// A label along the line, beside it.
Label along(const PaperPoint& at, double direction, bool left, double distance, double size, std::string text,
            const char* style) {
    const double side = direction + (left ? 0.5 : -0.5) * std::numbers::pi;
    double degrees = std::remainder(-direction * 180.0 / std::numbers::pi, 360.0);
    if (isUpsideDown(degrees)) {
        degrees += degrees > 0.0 ? -180.0 : 180.0;
    }
    return {{at.x + distance * std::cos(side), at.y - distance * std::sin(side)},
            size,
            degrees,
            Label::Anchor::Middle,
            std::move(text),
            style};
}

// The direction is that on the paper.
void tick(const Plan& plan, PathWriter& path, const PlanPoint& point, double direction, double half) {
    const PaperPoint at = plan.at(point.x, point.y);
    const double dx = half * std::sin(direction);
    const double dy = half * std::cos(direction);
    path.moveTo({at.x - dx, at.y - dy});
    path.lineTo({at.x + dx, at.y + dy});
}

bool isBeside(const Plan& plan, const PlanPoint& point) {
    drawing::Extent extent;
    extent.add(point.x, point.y);
    return plan.isBeside(extent);
}

// Before its line is known: the box holds every point of it.
bool isBeside(const Plan& plan, const Element& element) {
    const auto box = plan.partial ? drawing::boxOfElement(element) : std::nullopt;
    return box && plan.isBeside({box->minX, box->minY, box->maxX, box->maxY});
}

// Counts the points drawn on the sheet.
void drawElement(Plan& plan, std::ostream& out, const Element& element, std::string_view colour, std::size_t& drawn) {
    if (isBeside(plan, element)) {
        return;
    }
    std::vector<PlanPoint> line;
    const double tolerance = std::max(drawing::kLineTolerance, plan.sheet.groundLength(kLineTolerance));
    drawing::appendElementLine(element, tolerance, line, kMostCurvePoints - std::min(kMostCurvePoints, drawn));
    drawn += line.size();
    drawing::Extent extent;
    for (const PlanPoint& point : line) {
        extent.add(point.x, point.y);
    }
    if (line.empty() || plan.isBeside(extent)) {
        return;
    }
    const ElementType shape = shapeOf(element);
    plan.items.insert(itemOf(shape));
    PaperPoint from = plan.at(line.front().x, line.front().y);
    std::string attributes = "class=\"l " + std::string(styleOf(shape));
    if (!colour.empty()) {
        attributes += "\" style=\"stroke:" + std::string(colour);
    }
    if (shape == ElementType::Arc && plan.sheet.paperLength(element.startRadius) <= kLargestPaperRadius) {
        const PaperPoint to = plan.at(element.end.x, element.end.y);
        const std::string radius = mm(plan.sheet.paperLength(element.startRadius));
        const bool large = std::abs(element.turn()) > std::numbers::pi;
        out << "<path " << attributes << "\" d=\"M" << mm(from.x) << ' ' << mm(from.y) << 'A' << radius << ' ' << radius
            << " 0 " << (large ? 1 : 0) << ' ' << (element.clockwise ? 1 : 0) << ' ' << mm(to.x) << ' ' << mm(to.y)
            << "\"/>\n";
    } else {
        PathWriter path(out, std::move(attributes));
        path.moveTo(from);
        for (std::size_t i = 1; i < line.size(); ++i) {
            path.lineTo(plan.at(line[i].x, line[i].y));
        }
        path.finish();
    }
    for (std::size_t i = 1; i < line.size(); ++i) {
        const PaperPoint to = plan.at(line[i].x, line[i].y);
        plan.space.takeLine(from, to);
        from = to;
    }
}

// The text of what lies at the place; counts it where the map shows the place but has no room for the text.
bool placeText(Plan& plan, const PaperPoint& at, const std::vector<Label>& candidates) {
    const bool placed = plan.place(candidates, false);
    plan.withoutRoom += placed || !plan.space.shows(at) ? 0 : 1;
    return placed;
}

void drawEnds(Plan& plan, std::ostream& out, const Alignment& alignment, const NamedPlaces& names) {
    const auto& elements = alignment.elements;
    double station = alignment.startStation;
    PathWriter ticks(out, "class=\"tick");
    for (std::size_t i = 0; i <= elements.size(); ++i) {
        const Element& element = elements[std::min(i, elements.size() - 1)];
        const bool last = i == elements.size();
        const PlanPoint point = last ? element.end : element.start;
        const double direction = plan.turned(last ? element.endDirection() : element.direction);
        tick(plan, ticks, point, direction, kEndTick);
        const PaperPoint at = plan.at(point.x, point.y);
        const double here = station;
        station += last ? 0.0 : element.length;
        if (!plan.space.mayHold(at, kFarthestName)) {
            continue;
        }
        const std::optional<std::size_t> named = names.at(point);
        std::string text = named    ? std::string(plan.drawing.entity(*named).row->name)
                           : i == 0 ? "BP"
                           : last   ? "EP"
                                    : jointName(shapeOf(elements[i - 1]), shapeOf(element));
        text += " " + stakeName(here);
        std::vector<Label> candidates;
        for (const double distance : {3.0, 8.0, kFarthestName}) {
            for (const bool left : {true, false}) {
                candidates.push_back(across(at, direction, left, distance, kKeySize, text, "key"));
            }
        }
        if (placeText(plan, at, candidates) && named) {
            plan.namedAtEnds.insert(*named);
        }
    }
    ticks.finish();
    plan.items.insert(PlanItem::ElementEnd);
}

// How many stations a sheet still takes, and how much is still looked at to find them.
struct StationsLeft {
    std::size_t drawn = kMostStations;
    std::size_t looks = kMostStationLooks;
};

// The stations that the sheet shows, by their numbers, with directions as on the paper. False if some may be missing.
bool findStations(const Plan& plan, const AlignmentGeometry& geometry, StationsLeft& rest,
                  std::vector<std::pair<long long, drawing::Pose>>& stations) {
    const double step = plan.stationStep;
    // Beyond that, stations next to each other are one real.
    if (std::max(std::abs(geometry.startStation()), std::abs(geometry.endStation())) >= kLargestStation) {
        return true;
    }
    auto next = static_cast<long long>(std::ceil(geometry.startStation() / step - 1e-9));
    const auto walk = [&](double from, double to) {
        next = std::max(next, static_cast<long long>(std::ceil((from - kStationRounding) / step - 1e-9)));
        const double last = std::min(to + kStationRounding, geometry.endStation());
        for (; static_cast<double>(next) * step <= last; ++next) {
            if (rest.drawn == 0 || rest.looks == 0) {
                return false;
            }
            --rest.looks;
            const auto pose = geometry.poseAt(static_cast<double>(next) * step);
            if (pose && !isBeside(plan, pose->point)) {
                --rest.drawn;
                stations.emplace_back(next, drawing::Pose{pose->point, plan.turned(pose->direction)});
            }
        }
        return true;
    };
    if (!plan.partial) {
        return walk(geometry.startStation(), geometry.endStation());
    }
    const NearStretches near{[&](const drawing::Extent& extent) { return plan.sheet.shows(extent); }, walk,
                             kStretchInSteps * step, &rest.looks};
    return near.find(geometry);
}

// False if some stations may be missing.
bool drawStations(Plan& plan, std::ostream& out, const AlignmentGeometry& geometry, StationsLeft& rest) {
    std::vector<std::pair<long long, drawing::Pose>> stations;
    const bool complete = findStations(plan, geometry, rest, stations);
    const auto isMajor = [](long long number) { return number % 5 == 0; };
    PathWriter ticks(out, "class=\"tick");
    for (const auto& [number, pose] : stations) {
        tick(plan, ticks, pose.point, pose.direction, isMajor(number) ? kMajorTick : kStakeTick);
    }
    ticks.finish();
    if (!stations.empty()) {
        plan.items.insert(PlanItem::Station);
    }
    // Every fifth station shows its distance too, and takes its place before the others.
    const auto place = [&](double station, const drawing::Pose& pose, bool major) {
        const PaperPoint at = plan.at(pose.point.x, pose.point.y);
        const std::string text = stakeName(station) + (major ? "  " + fixedReal(station, 1) : "");
        std::vector<Label> candidates;
        for (const double distance : {2.0, 6.5}) {
            for (const bool left : {false, true}) {
                candidates.push_back(across(at, pose.direction, left, distance, kStakeSize, text, "stake"));
            }
        }
        placeText(plan, at, candidates);
    };
    for (const bool major : {true, false}) {
        for (const auto& [number, pose] : stations) {
            if (isMajor(number) == major) {
                place(static_cast<double>(number) * plan.stationStep, pose, major);
            }
        }
    }
    return complete;
}

void nameCurves(Plan& plan, const Alignment& alignment) {
    for (const Element& element : alignment.elements) {
        const ElementType shape = shapeOf(element);
        if (shape == ElementType::Straight) {
            continue;
        }
        const drawing::Pose middle = drawing::poseOnElement(element, element.length / 2.0);
        const PaperPoint at = plan.at(middle.point.x, middle.point.y);
        if (!plan.space.mayHold(at, kFarthestCurveName)) {
            continue;
        }
        std::string text;
        const double growth = std::abs(element.endCurvature() - element.startCurvature());
        if (shape == ElementType::Arc || growth == 0.0) {
            text = "R=" + fixedReal(element.startRadius, 3);
        } else {
            text = "A=" + fixedReal(std::sqrt(element.length / growth), 3);
        }
        text += " L=" + fixedReal(element.length, 3);
        const char* style = shape == ElementType::Arc ? "curve" : "spiral";
        std::vector<Label> candidates;
        for (const double distance : {3.5, 6.5, 10.0, kFarthestCurveName}) {
            for (const bool left : {!element.clockwise, element.clockwise}) {
                candidates.push_back(along(at, plan.turned(middle.direction), left, distance, kCurveSize, text, style));
            }
        }
        placeText(plan, at, candidates);
    }
}

void nameAlignment(Plan& plan, const Alignment& alignment, const AlignmentGeometry& geometry) {
    if (alignment.name.empty()) {
        return;
    }
    std::vector<Label> candidates;
    std::optional<PaperPoint> onMap;
    for (const double part : {0.08, 0.25, 0.5, 0.75, 0.92}) {
        const auto pose = geometry.poseAt(geometry.startStation() + part * geometry.length());
        if (!pose) {
            continue;
        }
        const PaperPoint at = plan.at(pose->point.x, pose->point.y);
        if (!plan.space.mayHold(at, kFarthestAlignmentName)) {
            continue;
        }
        if (!onMap || plan.space.shows(at)) {
            onMap = at;
        }
        for (const double distance : {5.0, 10.0, kFarthestAlignmentName}) {
            for (const bool left : {true, false}) {
                candidates.push_back(
                    along(at, plan.turned(pose->direction), left, distance, 2.6, alignment.name, "key"));
            }
        }
    }
    if (onMap) {
        placeText(plan, *onMap, candidates);
    }
}

} // namespace

void drawAlignments(Plan& plan, std::ostream& out) {
    for (const double step : {20.0, 100.0, 500.0, 1000.0, 5000.0, 10000.0, 100000.0}) {
        plan.stationStep = step;
        if (plan.sheet.paperLength(step) >= kLeastStakeSpace) {
            break;
        }
    }
    if (plan.stationStep > 20.0 && plan.drawing.alignmentCount() > 0) {
        Note& note = plan.notes.emplace_back();
        note.code = NoteCode::StationsEvery;
        note.metres = plan.stationStep;
    }
    const NamedPlaces names(plan);
    std::size_t drawn = 0;
    for (std::size_t i = 0; i < plan.drawing.alignmentCount(); ++i) {
        if (plan.isLeftOut(plan.drawing.alignment(i))) {
            continue;
        }
        const std::string_view colour = plan.colourOn(plan.drawing.alignment(i).layer);
        for (const Element& element : plan.drawing.alignment(i).elements) {
            drawElement(plan, out, element, colour, drawn);
        }
    }
    StationsLeft rest;
    bool complete = true;
    for (std::size_t i = 0; i < plan.drawing.alignmentCount(); ++i) {
        const Alignment& alignment = plan.drawing.alignment(i);
        if (alignment.elements.empty() || plan.isLeftOut(alignment)) {
            continue;
        }
        const AlignmentGeometry& geometry = plan.drawing.geometry(i);
        drawEnds(plan, out, alignment, names);
        nameAlignment(plan, alignment, geometry);
        complete = drawStations(plan, out, geometry, rest) && complete;
        nameCurves(plan, alignment);
    }
    if (!complete) {
        plan.notes.push_back({NoteCode::StationsCut, kMostStations - rest.drawn});
    }
    if (plan.withoutRoom > 0) {
        plan.notes.push_back({NoteCode::NoRoomAlongAlignments, plan.withoutRoom});
    }
}

} // namespace fenmark::exchange
