// Tables of alignments: main points, IPs, intermediate points, width stakes.
#include "exchange/report/tables.h"

#include "exchange/element_shape.h"
#include "exchange/kinds.h"
#include "exchange/placed.h"
#include "exchange/plan/plan_geometry.h"
#include "exchange/round_stations.h"
#include "exchange/stakes.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>

namespace fenmark::exchange::report {

using drawing::AlignmentGeometry;
using drawing::Drawing;
using drawing::Element;
using drawing::ElementType;
using drawing::EntityView;
using drawing::PlanPoint;
using drawing::Pose;

namespace {

constexpr double kSameStation = 0.005;    // metres between the two stakes of one station
constexpr double kWholeStation = 0.002;   // metres: coordinates are rounded, stations of stakes are whole
constexpr double kFarthestStake = 200.0;  // metres from the alignment that a width stake belongs to
constexpr std::size_t kJudgedStakes = 32; // of one line, when its alignment is looked for

std::string azimuthText(double azimuth) {
    return degreesText(azimuthDegrees(azimuth));
}

double azimuthFromTo(const PlanPoint& a, const PlanPoint& b) {
    return azimuthOf(std::atan2(b.y - a.y, b.x - a.x));
}

double distance(const PlanPoint& a, const PlanPoint& b) {
    return std::hypot(b.x - a.x, b.y - a.y);
}

std::string subjectOf(const drawing::Alignment& alignment) {
    return std::string(trimmedName(alignment.name));
}

std::string elementText(const Element& element) {
    switch (shapeOf(element)) {
    case ElementType::Straight:
        return "直線";
    case ElementType::Arc:
        return "R=" + metresText(element.startRadius);
    case ElementType::Clothoid:
        return "A=" + metresText(parameterOf(element));
    }
    return {};
}

void mainPointTable(const Drawing& drawing, std::size_t index, const ReportOptions& options, const TableSink& sink) {
    const drawing::Alignment& alignment = drawing.alignment(index);
    Table table;
    table.kind = "主要点計算書";
    table.subject = subjectOf(alignment);
    table.columns = {{"点名", Align::Left}, {"測点", Align::Left}, {"追加距離"},          {"単距離"}, {"X"}, {"Y"},
                     {"接線方向角"},        {"横断方向角"},        {"要素", Align::Left}, {"中心角"}};
    const std::vector<MainPoint> points = mainPointsOf(alignment, options.mainPointNames);
    for (std::size_t i = 0; i < points.size(); ++i) {
        const MainPoint& point = points[i];
        const bool begins = point.joint && i + 1 < points.size();
        const Element& element = alignment.elements[point.element];
        table.add(point.name, options.stationNames(point.station), metresText(point.station),
                  i == 0 ? "" : metresText(point.station - points[i - 1].station), metresText(point.pose.point.y),
                  metresText(point.pose.point.x), azimuthText(azimuthOf(point.pose.direction)),
                  azimuthText(azimuthOf(point.pose.direction - std::numbers::pi / 2.0)),
                  begins ? elementText(element) : "",
                  begins && shapeOf(element) != ElementType::Straight ? degreesText(angleDegrees(element.turn())) : "");
    }
    table.addTotal("路線長", metresText(alignment.length()), "m");
    sink(table);
}

// What the curve of an IP is made of.
std::string curveType(const drawing::Alignment& alignment, const Ip& ip) {
    std::size_t arcs = 0;
    std::size_t clothoids = 0;
    bool egg = false;
    for (std::size_t i = 0; i < ip.elements; ++i) {
        const Element& element = alignment.elements[ip.firstElement + i];
        if (shapeOf(element) == ElementType::Arc) {
            ++arcs;
            continue;
        }
        ++clothoids;
        egg = egg || (std::isfinite(element.startRadius) && std::isfinite(element.endRadius));
    }
    if (ip.elements == 0) {
        return ip.turn ? "折れ" : "";
    }
    if (egg) {
        return "卵形";
    }
    if (clothoids == 0) {
        return arcs > 1 ? "複合円" : "単円";
    }
    if (arcs == 0) {
        return clothoids == 2 ? "凸形" : "クロソイド";
    }
    if (ip.a1 > 0.0 && ip.a2 > 0.0) {
        constexpr double kSameParameter = 0.0005;
        return std::abs(ip.a1 - ip.a2) < kSameParameter ? "対称基本形" : "非対称基本形";
    }
    return "片クロソイド";
}

void ipTable(const Drawing& drawing, std::size_t index, const PointNames& names, const ReportOptions& options,
             const TableSink& sink) {
    const drawing::Alignment& alignment = drawing.alignment(index);
    std::size_t without = 0;
    const std::vector<Ip> ips = ipsOf(alignment, options.mainPointNames, without);
    Table table;
    table.kind = "IP計算書";
    table.subject = subjectOf(alignment);
    table.columns = {{"IP", Align::Left},
                     {"点名", Align::Left},
                     {"X"},
                     {"Y"},
                     {"距離"},
                     {"方向角"},
                     {"IA"},
                     {"形", Align::Left},
                     {"R"},
                     {"A1"},
                     {"A2"},
                     {"TL1"},
                     {"TL2"}};
    const auto orEmpty = [](double value) { return value > 0.0 ? metresText(value) : std::string(); };
    for (std::size_t i = 0; i < ips.size(); ++i) {
        const Ip& ip = ips[i];
        std::string ia;
        if (ip.turn) {
            ia = (*ip.turn > 0.0 ? "左 " : "右 ") + degreesText(angleDegrees(*ip.turn));
        }
        std::string name = names.at(ip.point.x, ip.point.y);
        if (name.empty() && !ip.from.empty()) {
            name = ip.from + "～" + ip.to;
        }
        table.add(ip.name, name, metresText(ip.point.y), metresText(ip.point.x),
                  i == 0 ? "" : metresText(distance(ips[i - 1].point, ip.point)),
                  i == 0 ? "" : azimuthText(azimuthFromTo(ips[i - 1].point, ip.point)), ia, curveType(alignment, ip),
                  orEmpty(ip.radius), orEmpty(ip.a1), orEmpty(ip.a2),
                  ip.tangentBefore ? metresText(*ip.tangentBefore) : "",
                  ip.tangentBehind ? metresText(*ip.tangentBehind) : "");
    }
    table.remarks.push_back("距離・方向角は前の点からのもの。IAは進行方向に対する左右とともに示す。");
    if (without > 0) {
        table.remarks.push_back("半円以上に回る" + std::to_string(without) + "個の要素にはIPがない。");
    }
    sink(table);
}

// Takes its points from those that the report may still show.
void intermediateTable(const Drawing& drawing, std::size_t index, const ReportOptions& options, double& left,
                       const TableSink& sink) {
    StakeOptions stakeOptions;
    stakeOptions.every = options.stationNames.pitch;
    stakeOptions.stationNames = options.stationNames;
    stakeOptions.mainPoints = true;
    stakeOptions.mainPointNames = options.mainPointNames;
    Table table;
    table.kind = "中間点計算書";
    table.subject = subjectOf(drawing.alignment(index));
    table.columns = {{"点名", Align::Left}, {"追加距離"},   {"単距離"},   {"X"},   {"Y"},
                     {"接線方向角"},        {"横断方向角"}, {"弦方向角"}, {"弦長"}};
    if (drawing.geometry(index).length() / stakeOptions.every > std::min(kMostIntermediatePoints, left)) {
        table.remarks.push_back("中間点が多すぎるため省略。");
        sink(table);
        return;
    }
    const Stakes stakes = stakesOf(drawing, index, stakeOptions);
    left -= static_cast<double>(stakes.stakes.size());
    for (std::size_t i = 0; i < stakes.stakes.size(); ++i) {
        const Stake& stake = stakes.stakes[i];
        const Stake* before = i == 0 ? nullptr : &stakes.stakes[i - 1];
        table.add(stake.name, metresText(stake.station),
                  before == nullptr ? "" : metresText(stake.station - before->station), metresText(stake.point.y),
                  metresText(stake.point.x), azimuthText(stake.tangent), azimuthText(stake.cross),
                  before == nullptr ? "" : azimuthText(azimuthFromTo(before->point, stake.point)),
                  before == nullptr ? "" : metresText(distance(before->point, stake.point)));
    }
    table.remarks.push_back("弦方向角・弦長は前の点からのもの。");
    sink(table);
}

struct WidthStake {
    double station;
    double width;
    PlanPoint point;
    std::string name;
};

struct StakeRow {
    double station = 0.0;
    const WidthStake* left = nullptr;
    const WidthStake* right = nullptr;
};

// The alignment beside which most stakes of a line stand square, the nearest of those with as many.
std::optional<std::size_t> alignmentOfStakes(const Drawing& drawing, const EntityView& line) {
    std::optional<std::size_t> best;
    std::size_t most = 0;
    double nearest = 0.0;
    const std::size_t step = std::max<std::size_t>(1, line.vertices.size() / kJudgedStakes);
    for (std::size_t a = 0; a < drawing.alignmentCount(); ++a) {
        if (!hasPlace(drawing.alignment(a)) || drawing.geometry(a).empty()) {
            continue;
        }
        std::size_t count = 0;
        double away = 0.0;
        for (std::size_t i = 0; i < line.vertices.size(); i += step) {
            const auto at = drawing.geometry(a).locateWithin({line.vertices[i].x, line.vertices[i].y}, kFarthestStake);
            if (at) {
                ++count;
                away += std::abs(at->offset);
            }
        }
        if (count > most || (count == most && count > 0 && away < nearest)) {
            best = a;
            most = count;
            nearest = away;
        }
    }
    return best;
}

using StakesByAlignment = std::map<std::size_t, std::vector<WidthStake>>;

StakesByAlignment widthStakesOf(const Drawing& drawing, const PointNames& names) {
    StakesByAlignment stakes;
    for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
        if (drawing.isPoint(i)) {
            continue;
        }
        const EntityView line = drawing.entity(i);
        if (!isStakeLine(kindOf(line)) || !hasPlace(line)) {
            continue;
        }
        const auto alignment = alignmentOfStakes(drawing, line);
        if (!alignment) {
            continue;
        }
        for (const host::MdGePoint3d& vertex : line.vertices) {
            if (const auto at = drawing.geometry(*alignment).locateWithin({vertex.x, vertex.y}, kFarthestStake)) {
                stakes[*alignment].push_back(
                    {at->station, at->offset, {vertex.x, vertex.y}, names.at(vertex.x, vertex.y)});
            }
        }
    }
    return stakes;
}

// Stakes of one station side by side; a second one on the same side has a row of its own.
std::vector<StakeRow> stakeRows(std::vector<WidthStake>& stakes) {
    std::stable_sort(stakes.begin(), stakes.end(),
                     [](const WidthStake& a, const WidthStake& b) { return a.station < b.station; });
    std::vector<StakeRow> rows;
    for (const WidthStake& stake : stakes) {
        const bool left = stake.width < 0.0;
        const bool fits = !rows.empty() && stake.station - rows.back().station <= kSameStation &&
                          (left ? rows.back().left : rows.back().right) == nullptr;
        if (!fits) {
            rows.push_back({stake.station, nullptr, nullptr});
        }
        (left ? rows.back().left : rows.back().right) = &stake;
    }
    return rows;
}

// The whole station or main point that a stake stands at but for the rounding of its coordinates.
struct NamedStation {
    double station;
    std::string name;
};

NamedStation namedStation(double station, const std::vector<MainPoint>& mainPoints, const StationNames& names) {
    for (const MainPoint& point : mainPoints) {
        if (std::abs(point.station - station) <= kWholeStation) {
            return {point.station, point.name};
        }
    }
    const double whole = std::round(station / names.pitch) * names.pitch;
    const double exact = std::abs(whole - station) <= kWholeStation ? whole : station;
    return {exact, names(exact)};
}

void widthTable(const Drawing& drawing, std::size_t index, std::vector<WidthStake>& stakes,
                const ReportOptions& options, const TableSink& sink) {
    const drawing::Alignment& alignment = drawing.alignment(index);
    const AlignmentGeometry& geometry = drawing.geometry(index);
    Table table;
    table.kind = "幅杭計算書";
    table.subject = subjectOf(alignment);
    table.columns = {{"点名", Align::Left}, {"追加距離"}, {"X"}, {"Y"}, {"接線方向角"}, {"左右", Align::Left}, {"巾"},
                     {"杭名", Align::Left}, {"X"},        {"Y"}};
    const std::vector<MainPoint> mainPoints = mainPointsOf(alignment, options.mainPointNames);
    for (const StakeRow& row : stakeRows(stakes)) {
        const NamedStation at = namedStation(row.station, mainPoints, options.stationNames);
        const auto pose = geometry.poseAt(at.station);
        if (!pose) {
            continue;
        }
        RowGroup group;
        for (const bool left : {true, false}) {
            const WidthStake* stake = left ? row.left : row.right;
            if (stake == nullptr) {
                continue;
            }
            std::vector<std::string> cells;
            if (group.empty()) {
                appendCells(cells, at.name, metresText(at.station), metresText(pose->point.y),
                            metresText(pose->point.x), azimuthText(azimuthOf(pose->direction)));
            } else {
                cells.resize(5);
            }
            appendCells(cells, left ? "左" : "右", metresText(std::abs(stake->width)), stake->name,
                        metresText(stake->point.y), metresText(stake->point.x));
            group.push_back(std::move(cells));
        }
        table.groups.push_back(std::move(group));
    }
    sink(table);
}

} // namespace

void alignmentTables(const Drawing& drawing, const PointNames& names, const ReportOptions& options,
                     const TableSink& sink) {
    StakesByAlignment stakes;
    if (options.has(ReportPart::Widths)) {
        stakes = widthStakesOf(drawing, names);
    }
    double intermediateLeft = kMostIntermediateOfFile;
    for (std::size_t i = 0; i < drawing.alignmentCount(); ++i) {
        if (drawing.geometry(i).empty() || !hasPlace(drawing.alignment(i))) {
            continue;
        }
        if (options.has(ReportPart::MainPoints)) {
            mainPointTable(drawing, i, options, sink);
        }
        if (options.has(ReportPart::Ips)) {
            ipTable(drawing, i, names, options, sink);
        }
        if (options.has(ReportPart::Intermediate)) {
            intermediateTable(drawing, i, options, intermediateLeft, sink);
        }
        if (const auto own = stakes.find(i); own != stakes.end()) {
            widthTable(drawing, i, own->second, options, sink);
        }
    }
}

} // namespace fenmark::exchange::report
