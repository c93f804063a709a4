// The longitudinal and cross-section results of a drawing, by the alignments that they lie on.
#include "exchange/results.h"

#include "exchange/kinds.h"
#include "exchange/placed.h"
#include "exchange/survey_text.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <string_view>
#include <utility>

namespace fenmark::exchange {

using drawing::AlignmentGeometry;
using drawing::Drawing;
using drawing::EntityView;
using drawing::Pose;

namespace {

constexpr double kResultOnLine = 1e-4;    // metres: a result this close to an alignment lies on it
constexpr double kInSection = 1e-4;       // metres along the road between points of one cross section
constexpr double kSameResult = 1e-6;      // metres: the same result imported twice
constexpr double kWhole = 1e6;            // stations and offsets are compared in micrometres
constexpr std::size_t kJudgedPoints = 64; // of one route, when its alignment is looked for

// Results of one section kind of one route of one file: they lie on one alignment.
struct Group {
    std::vector<std::size_t> entities; // in the order of creation
};

struct Groups {
    std::map<std::pair<std::string, std::int32_t>, Group> longitudinal;
    std::map<std::pair<std::string, std::int32_t>, Group> sections;
};

Groups groupsOf(const Drawing& drawing, std::size_t& unplaced) {
    Groups groups;
    for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
        if (!drawing.isPoint(i)) {
            continue;
        }
        const EntityView entity = drawing.entity(i);
        const Kind kind = kindOf(entity);
        if (!isResult(kind)) {
            continue;
        }
        if (!hasPlace(entity) || !std::isfinite(entity.position().z)) {
            ++unplaced;
            continue;
        }
        (kind == Kind::CrossSections ? groups.sections
                                     : groups.longitudinal)[{std::string(entity.row->fileName), entity.row->no}]
            .entities.push_back(i);
    }
    return groups;
}

std::optional<double> stationOnLine(const AlignmentGeometry& geometry, const EntityView& point) {
    const auto located = geometry.locateWithin({point.position().x, point.position().y}, kResultOnLine);
    return located ? std::optional(located->station) : std::nullopt;
}

// The alignment that most of the judged points lie on; the first of those with as many.
std::optional<std::size_t> alignmentOf(const Drawing& drawing, const Group& group) {
    const std::size_t step = std::max<std::size_t>(1, group.entities.size() / kJudgedPoints);
    std::optional<std::size_t> best;
    std::size_t most = 0;
    for (std::size_t a = 0; a < drawing.alignmentCount(); ++a) {
        if (!hasPlace(drawing.alignment(a)) || drawing.geometry(a).empty()) {
            continue;
        }
        // Neighbours are judged together: of a cross section only the centre lies on the line.
        std::size_t count = 0;
        std::size_t judged = 0;
        const std::size_t run = std::min<std::size_t>(group.entities.size(), 2 * kJudgedPoints);
        for (std::size_t i = 0; i < run; ++i, ++judged) {
            count += stationOnLine(drawing.geometry(a), drawing.entity(group.entities[i])) ? 1 : 0;
        }
        for (std::size_t i = run; i < group.entities.size(); i += step, ++judged) {
            count += stationOnLine(drawing.geometry(a), drawing.entity(group.entities[i])) ? 1 : 0;
        }
        if (count > most) {
            most = count;
            best = a;
        }
        if (count == judged) {
            break; // none has more
        }
    }
    return best;
}

// The offset of a point in the cross section at the pose, positive to the right; nothing if it lies beside the section.
std::optional<double> offsetIn(const Pose& pose, const EntityView& point) {
    const double dx = point.position().x - pose.point.x;
    const double dy = point.position().y - pose.point.y;
    const double along = dx * std::cos(pose.direction) + dy * std::sin(pose.direction);
    if (std::abs(along) > kInSection) {
        return std::nullopt;
    }
    return dx * std::sin(pose.direction) - dy * std::cos(pose.direction);
}

void addLongitudinal(const Drawing& drawing, const AlignmentGeometry& geometry, const Group& group,
                     AlignmentResults& results, std::size_t& unplaced) {
    for (const std::size_t index : group.entities) {
        const EntityView entity = drawing.entity(index);
        if (const auto station = stationOnLine(geometry, entity)) {
            results.longitudinal.push_back(
                {withoutNoise(*station), entity.position().z, std::string(trimmedName(entity.row->name))});
        } else {
            ++unplaced;
        }
    }
}

struct Centre {
    std::size_t place; // in the group
    double station;
    Pose pose;
};

// A section's points stand together in the drawing, its centre among them or behind them. Each point belongs to the centre
// before it or to the one behind it, whichever has it in its cross section.
void addSections(const Drawing& drawing, const AlignmentGeometry& geometry, const Group& group,
                 AlignmentResults& results, std::size_t& unplaced) {
    std::vector<Centre> centres;
    for (std::size_t i = 0; i < group.entities.size(); ++i) {
        if (const auto station = stationOnLine(geometry, drawing.entity(group.entities[i]))) {
            if (const auto pose = geometry.poseAt(*station)) {
                centres.push_back({i, *station, *pose});
            }
        }
    }
    std::vector<CrossSection> sections(centres.size());
    for (std::size_t c = 0; c < centres.size(); ++c) {
        sections[c].station = withoutNoise(centres[c].station);
        sections[c].name = trimmedName(drawing.entity(group.entities[centres[c].place]).row->name);
    }
    std::size_t next = 0; // the first centre at or behind the point
    for (std::size_t i = 0; i < group.entities.size(); ++i) {
        const EntityView entity = drawing.entity(group.entities[i]);
        while (next < centres.size() && centres[next].place < i) {
            ++next;
        }
        std::optional<double> offset;
        std::size_t section = 0;
        if (next < centres.size() && centres[next].place == i) {
            section = next;
            offset = 0.0;
        } else {
            if (next > 0) {
                section = next - 1;
                offset = offsetIn(centres[section].pose, entity);
            }
            if (!offset && next < centres.size()) {
                section = next;
                offset = offsetIn(centres[section].pose, entity);
            }
        }
        if (!offset) {
            ++unplaced;
            continue;
        }
        sections[section].points.push_back(
            {withoutNoise(*offset), entity.position().z, std::string(trimmedName(entity.row->name))});
    }
    std::move(sections.begin(), sections.end(), std::back_inserter(results.sections));
}

// Sections at one station become one, and what was imported twice stands once.
void putInOrder(AlignmentResults& results) {
    const auto same = [](double a, double b) { return std::abs(a - b) <= kSameResult; };
    auto& line = results.longitudinal;
    std::stable_sort(line.begin(), line.end(), [](const auto& a, const auto& b) { return a.station < b.station; });
    line.erase(std::unique(line.begin(), line.end(),
                           [&](const auto& a, const auto& b) {
                               return same(a.station, b.station) && same(a.height, b.height);
                           }),
               line.end());

    auto& sections = results.sections;
    std::stable_sort(sections.begin(), sections.end(),
                     [](const auto& a, const auto& b) { return a.station < b.station; });
    std::vector<CrossSection> joined;
    for (CrossSection& section : sections) {
        if (!joined.empty() && same(joined.back().station, section.station)) {
            std::move(section.points.begin(), section.points.end(), std::back_inserter(joined.back().points));
        } else {
            joined.push_back(std::move(section));
        }
    }
    for (CrossSection& section : joined) {
        auto& points = section.points;
        std::stable_sort(points.begin(), points.end(),
                         [](const auto& a, const auto& b) { return a.offset < b.offset; });
        points.erase(std::unique(points.begin(), points.end(),
                                 [&](const auto& a, const auto& b) {
                                     return same(a.offset, b.offset) && same(a.height, b.height);
                                 }),
                     points.end());
    }
    sections = std::move(joined);
}

} // namespace

double withoutNoise(double metres) {
    return std::round(metres * kWhole) / kWhole + 0.0;
}

Results resultsOf(const Drawing& drawing) {
    Results results;
    results.alignments.resize(drawing.alignmentCount());
    const Groups groups = groupsOf(drawing, results.unplaced);
    for (const auto& [key, group] : groups.longitudinal) {
        if (const auto alignment = alignmentOf(drawing, group)) {
            addLongitudinal(drawing, drawing.geometry(*alignment), group, results.alignments[*alignment],
                            results.unplaced);
        } else {
            results.unplaced += group.entities.size();
        }
    }
    for (const auto& [key, group] : groups.sections) {
        if (const auto alignment = alignmentOf(drawing, group)) {
            addSections(drawing, drawing.geometry(*alignment), group, results.alignments[*alignment], results.unplaced);
        } else {
            results.unplaced += group.entities.size();
        }
    }
    for (AlignmentResults& alignment : results.alignments) {
        putInOrder(alignment);
    }
    return results;
}

} // namespace fenmark::exchange
