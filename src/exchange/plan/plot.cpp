// Plans on paper: one sheet, or sheets along an alignment.
#include "exchange/plan/plot.h"

#include "exchange/placed.h"
#include "exchange/plan/plan.h"
#include "exchange/survey_text.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <set>
#include <sstream>

namespace fenmark::exchange {

using drawing::AlignmentGeometry;
using drawing::Drawing;
using drawing::Pose;

namespace {

constexpr int kScaleAlong = 500;
constexpr double kEdgeRoom = 12.0; // millimetres of the map left free around the part of an alignment
constexpr double kOverlap = 6.0;   // millimetres of the alignment that both neighbours show
constexpr std::size_t kMostSheets = 500;
constexpr int kSamples = 24; // places of a part that must lie on its sheet

struct Paper {
    std::string name;
    bool upright = false;
};

struct Part {
    double from; // stations
    double to;
    PlanSheet sheet;
};

// The sheet for a part of the alignment: its chord runs to the right.
PlanSheet sheetFor(const AlignmentGeometry& geometry, double from, double to, int scale, const Paper& paper) {
    const Pose begin = geometry.poseAt(from).value_or(Pose{});
    const Pose end = geometry.poseAt(to).value_or(begin);
    const double dx = end.point.x - begin.point.x;
    const double dy = end.point.y - begin.point.y;
    const double direction = dx == 0.0 && dy == 0.0 ? begin.direction : std::atan2(dy, dx);
    // The middle of what the part covers, seen along the chord.
    drawing::Extent seen;
    for (int i = 0; i <= kSamples; ++i) {
        if (const auto pose = geometry.poseAt(from + (to - from) * i / kSamples)) {
            const double x = pose->point.x - begin.point.x;
            const double y = pose->point.y - begin.point.y;
            seen.add(x * std::cos(direction) + y * std::sin(direction),
                     y * std::cos(direction) - x * std::sin(direction));
        }
    }
    const double along = (seen.minX + seen.maxX) / 2.0;
    const double across = (seen.minY + seen.maxY) / 2.0;
    const host::PlanPoint middle{begin.point.x + along * std::cos(direction) - across * std::sin(direction),
                                 begin.point.y + along * std::sin(direction) + across * std::cos(direction)};
    return {middle, direction, scale, paper.name, paper.upright};
}

bool holds(const PlanSheet& sheet, const AlignmentGeometry& geometry, double from, double to) {
    const Rect& map = sheet.map();
    for (int i = 0; i <= kSamples; ++i) {
        const auto pose = geometry.poseAt(from + (to - from) * i / kSamples);
        if (!pose) {
            continue;
        }
        const PaperPoint at = sheet.at(pose->point.x, pose->point.y);
        if (at.x < map.x + kEdgeRoom || at.x > map.right() - kEdgeRoom || at.y < map.y + kEdgeRoom ||
            at.y > map.bottom() - kEdgeRoom) {
            return false;
        }
    }
    return true;
}

// As long as fits on one sheet, by halving.
double longestPart(const AlignmentGeometry& geometry, double from, int scale, const Paper& paper) {
    const PlanSheet any({}, 0.0, scale, paper.name, paper.upright);
    double fits = 0.0;
    double tooLong = std::min(geometry.endStation() - from, 4.0 * any.groundLength(any.map().width));
    if (holds(sheetFor(geometry, from, from + tooLong, scale, paper), geometry, from, from + tooLong)) {
        return tooLong;
    }
    constexpr int kHalvings = 20;
    for (int i = 0; i < kHalvings; ++i) {
        const double tried = (fits + tooLong) / 2.0;
        (holds(sheetFor(geometry, from, from + tried, scale, paper), geometry, from, from + tried) ? fits : tooLong) =
            tried;
    }
    return fits;
}

std::string page(Plan& plan) {
    std::ostringstream out;
    writePlan(plan, out);
    return std::move(out).str();
}

void takeTitles(Plan& plan, const PlotOptions& options) {
    if (!options.heading.empty()) {
        plan.heading = options.heading;
    }
    plan.titles.insert(plan.titles.begin(), options.titles.begin(), options.titles.end());
}

// The notes of sheets that overlap: a text is told for each sheet that has no room for it, an object once.
class SheetNotes {
  public:
    void add(const Plan& plan) {
        points_.insert(plan.unnamedPoints.begin(), plan.unnamedPoints.end());
        lots_.insert(plan.unnamedLots.begin(), plan.unnamedLots.end());
        texts_ += plan.withoutRoom;
        for (const Note& note : plan.notes) {
            const bool isCounted = countOf(note.code).has_value();
            const auto isKnown = [&](const Note& other) { return isCounted ? other.code == note.code : other == note; };
            if (std::none_of(notes_.begin(), notes_.end(), isKnown)) {
                notes_.push_back(note);
            }
        }
    }
    // Of all sheets that were added.
    Notes notes() const {
        Notes notes = notes_;
        for (Note& note : notes) {
            note.count = countOf(note.code).value_or(note.count);
        }
        return notes;
    }

  private:
    // Over all sheets; nothing for notes that are not counted so.
    std::optional<std::size_t> countOf(NoteCode code) const {
        switch (code) {
        case NoteCode::NoRoomForNames:
            return points_.size();
        case NoteCode::NoRoomForLotNames:
            return lots_.size();
        case NoteCode::NoRoomAlongAlignments:
            return texts_;
        default:
            return std::nullopt;
        }
    }

    Notes notes_;
    std::set<std::size_t> points_; // entities without their names
    std::set<std::size_t> lots_;
    std::size_t texts_ = 0; // of alignments
};

} // namespace

bool isPaper(const std::string& name) {
    return name.size() == 2 && name[0] == 'A' && name[1] >= '0' && name[1] <= '4';
}

Plot plotPlan(const Drawing& drawing, const PlotOptions& options) {
    Plot plot;
    Shown shown(drawing);
    const bool part = options.extent && !options.extent->empty();
    if (part) {
        shown.extent = *options.extent;
    }
    Plan plan(drawing, shown, SheetChoice{options.scale, options.paper, options.upright});
    plan.partial = part;
    takeTitles(plan, options);
    if (!part && !plan.sheet.fits()) {
        Obstacle& why = plot.failure.emplace();
        why.code = ObstacleCode::PlanDoesNotFit;
        why.paper = plan.sheet.format();
        why.scale = plan.sheet.scale();
        return plot;
    }
    plot.pages.push_back(page(plan));
    plot.notes = plan.notes;
    return plot;
}

Plot plotAlong(const Drawing& drawing, std::size_t alignment, const PlotOptions& options) {
    Plot plot;
    const AlignmentGeometry& geometry = drawing.geometry(alignment);
    const Shown shown(drawing);
    if (geometry.empty() || !hasPlace(drawing.alignment(alignment))) {
        plot.failure = {ObstacleCode::NoElementsToDraw};
        return plot;
    }
    // Stations so large that adding the length is lost would give no sheet at all.
    if (!inReach(drawing.alignment(alignment))) {
        plot.failure = {ObstacleCode::BeyondReach};
        return plot;
    }
    const int scale = options.scale.value_or(kScaleAlong);
    const Paper paper{options.paper.value_or("A3"), options.upright.value_or(false)};
    std::vector<Part> parts;
    for (double from = geometry.startStation(); from < geometry.endStation();) {
        const double length = longestPart(geometry, from, scale, paper);
        const double to = std::min(from + length, geometry.endStation());
        parts.push_back({from, to, sheetFor(geometry, from, to, scale, paper)});
        const double overlap = parts.back().sheet.groundLength(kOverlap);
        if (to >= geometry.endStation()) {
            break;
        }
        if (!(length > 2.0 * overlap) || parts.size() >= kMostSheets) {
            plot.failure = {ObstacleCode::TooManySheets, kMostSheets};
            return plot;
        }
        from = to - overlap;
    }
    if (parts.empty()) { // no length
        plot.failure = {ObstacleCode::NoElementsToDraw};
        return plot;
    }
    const StationNames names;
    SheetNotes notes;
    std::size_t bytes = 0;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        Plan plan(drawing, shown, parts[i].sheet);
        plan.partial = true;
        plan.titles = {{"路線名", std::string(trimmedName(drawing.alignment(alignment).name))},
                       {"図面番号", std::to_string(i + 1) + " / " + std::to_string(parts.size())}};
        takeTitles(plan, options);
        // Neighbours meet in the middle of what both show.
        const auto meet = [&](std::size_t before, std::size_t other) {
            const double station = (parts[before].to + parts[before + 1].from) / 2.0;
            if (const auto pose = geometry.poseAt(station)) {
                plan.matchLines.push_back({pose->point, pose->direction,
                                           "合致線 " + names(station) + "（図面" + std::to_string(other + 1) + "）"});
            }
        };
        if (i > 0) {
            meet(i - 1, i - 1);
        }
        if (i + 1 < parts.size()) {
            meet(i, i + 1);
        }
        plot.pages.push_back(page(plan));
        notes.add(plan);
        // Each sheet of an alignment that winds over itself shows all of it.
        bytes += plot.pages.back().size();
        if (bytes > options.mostSheetBytes) {
            constexpr std::size_t kMegabyte = 1'000'000;
            Plot refused;
            refused.failure = {ObstacleCode::SheetsTooLarge, options.mostSheetBytes / kMegabyte};
            return refused;
        }
    }
    plot.notes = notes.notes();
    return plot;
}

} // namespace fenmark::exchange
