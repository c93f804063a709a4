// Results of longitudinal and cross sections on an alignment.
//
// A reader moves equal offsets that follow one another apart, as those of a vertical wall; ours are apart already, by
// what the import that made them took, so equal texts never follow one another: the second gets 1e-7 m more.
#include "exchange/sima_results.h"

#include "exchange/sima_lines.h"
#include "exchange/text.h"
#include "sima/text/number.h"

#include <cmath>

namespace fenmark::exchange {

using drawing::AlignmentGeometry;
using drawing::Pose;
using host::MdGePoint3d;
using host::PlanPoint;

namespace {

constexpr double kOnSection = 5e-7; // metres beside an alignment, or a section, that a point may lie and count as on it
constexpr double kSame = 9e-7;      // metres between a point and where its station and offset lead
constexpr double kApart = 1e-7;     // metres
constexpr int kApartDecimals = 7;

bool leadsTo(const AlignmentGeometry& geometry, double station, double offset, const MdGePoint3d& point) {
    const auto at = geometry.pointAt(station, offset);
    return at && std::hypot(at->x - point.x, at->y - point.y) <= kSame;
}

// The text of an offset or a station that is not the text before.
std::string apartFrom(const std::string& before, double value) {
    std::string text = roundedMetres(value);
    if (sima::toReal(text) == sima::toReal(before)) {
        text = fixedReal(value + kApart, kApartDecimals);
    }
    return text;
}

// Where a point lies seen from a pose: along its direction, and to the right of it.
struct Beside {
    double along = 0.0;
    double right = 0.0;
};

Beside beside(const Pose& pose, const MdGePoint3d& point) {
    const double dx = point.x - pose.point.x;
    const double dy = point.y - pose.point.y;
    const double c = std::cos(pose.direction);
    const double s = std::sin(pose.direction);
    return {dx * c + dy * s, dx * s - dy * c};
}

} // namespace

std::optional<std::string> stationOnAlignment(const AlignmentGeometry& geometry, const MdGePoint3d& point) {
    const auto foot = geometry.locateWithin({point.x, point.y}, kOnSection);
    if (!foot) {
        return std::nullopt;
    }
    std::string text = roundedMetres(foot->station);
    if (!leadsTo(geometry, sima::toReal(text), 0.0, point)) {
        text = fixedReal(foot->station, 9);
        if (!leadsTo(geometry, sima::toReal(text), 0.0, point)) {
            return std::nullopt;
        }
    }
    return text;
}

std::vector<SimaCrossSection> crossSectionsOf(const AlignmentGeometry& geometry, std::span<const MdGePoint3d> points) {
    std::vector<SimaCrossSection> sections;
    std::size_t centre = 0; // the next point on the line, at or behind the first of a section
    std::optional<drawing::StationOffset> centreFoot;
    for (std::size_t first = 0; first < points.size();) {
        while (centre < points.size() && (centre < first || !centreFoot)) {
            centre = std::max(centre, first);
            centreFoot = geometry.locateWithin({points[centre].x, points[centre].y}, kOnSection);
            centre += centreFoot ? 0 : 1;
        }
        SimaCrossSection section;
        section.first = first;
        std::optional<Pose> pose;
        const auto takeStation = [&](double station) {
            section.station = roundedMetres(station);
            pose = geometry.poseAt(sima::toReal(section.station));
            return pose && std::abs(beside(*pose, points[first]).along) <= kOnSection;
        };
        bool found = centreFoot && takeStation(centreFoot->station);
        if (!found) {
            const auto foot = geometry.locate({points[first].x, points[first].y});
            found = foot && takeStation(foot->station);
        }
        std::size_t next = first;
        const double station = sima::toReal(section.station);
        while (found && next < points.size()) {
            const Beside at = beside(*pose, points[next]);
            if (std::abs(at.along) > kOnSection) {
                break;
            }
            std::string offset =
                section.offsets.empty() ? roundedMetres(at.right) : apartFrom(section.offsets.back(), at.right);
            if (!leadsTo(geometry, station, sima::toReal(offset), points[next])) {
                break;
            }
            if (!section.centre && sima::toReal(offset) == 0.0) {
                section.centre = next - first;
            }
            section.offsets.push_back(std::move(offset));
            ++next;
        }
        first = section.offsets.empty() ? first + 1 : next;
        if (centre < first) {
            centreFoot.reset();
        }
        sections.push_back(std::move(section));
    }
    return sections;
}

} // namespace fenmark::exchange
