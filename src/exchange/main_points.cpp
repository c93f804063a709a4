// The main points of an alignment and the IPs of its curves.
#include "exchange/main_points.h"

#include "exchange/element_shape.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace fenmark::exchange {

using drawing::Alignment;
using drawing::Element;
using drawing::ElementType;
using drawing::PlanPoint;
using drawing::Pose;

namespace {

constexpr double kKink = 1e-4;     // radians: two straights that differ by less are one line
constexpr double kParallel = 1e-9; // of two tangents that do not meet

// Elements [first, end) that turn the same way.
struct Curve {
    std::size_t first = 0;
    std::size_t end = 0;

    std::size_t size() const { return end - first; }
};

std::vector<Curve> curvesOf(const std::vector<Element>& elements) {
    std::vector<Curve> curves;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        if (shapeOf(elements[i]) == ElementType::Straight) {
            continue;
        }
        const bool goesOn = !curves.empty() && curves.back().end == i &&
                            elements[i].clockwise == elements[i - 1].clockwise &&
                            std::isfinite(elements[i - 1].endRadius) && std::isfinite(elements[i].startRadius);
        if (goesOn) {
            curves.back().end = i + 1;
        } else {
            curves.push_back({i, i + 1});
        }
    }
    return curves;
}

bool isClothoid(const Element& element) {
    return shapeOf(element) == ElementType::Clothoid;
}

bool hasClothoid(const std::vector<Element>& elements, const Curve& curve) {
    return std::any_of(elements.begin() + static_cast<std::ptrdiff_t>(curve.first),
                       elements.begin() + static_cast<std::ptrdiff_t>(curve.end), isClothoid);
}

bool isEgg(const Element& element) {
    return isClothoid(element) && std::isfinite(element.startRadius) && std::isfinite(element.endRadius);
}

// The names of the joints of one curve, its two ends included.
std::vector<std::string> namesOfCurve(const std::vector<Element>& elements, const Curve& curve, std::size_t number,
                                      MainPointNames habit) {
    const std::string n = std::to_string(number);
    std::vector<std::string> names(curve.size() + 1);
    const auto at = [&](std::size_t i) -> const Element& { return elements[curve.first + i]; };
    if (habit == MainPointNames::Ka && hasClothoid(elements, curve)) {
        // A clothoid that leaves a straight has one number at both ends, and so has one that leads to a straight; the
        // two ends of an egg-shaped one count on.
        int count = 0;
        const auto numbered = [&](const char* kind) { return kind + n + "-" + std::to_string(count); };
        for (std::size_t i = 0; i < curve.size(); ++i) {
            const Element& element = at(i);
            if (!isClothoid(element)) {
                continue;
            }
            if (isEgg(element)) {
                ++count;
                names[i] = numbered("KEE");
                ++count;
                names[i + 1] = numbered("KEE");
                continue;
            }
            ++count;
            const bool leaves = !std::isfinite(element.startRadius);
            names[i] = names[i].empty() ? numbered(leaves ? "KA" : "KE") : names[i];
            names[i + 1] = numbered(leaves ? "KE" : "KA");
        }
    } else {
        const std::size_t last = curve.size();
        std::size_t firstArc = 0;
        std::size_t behindArcs = last;
        while (firstArc < last && isClothoid(at(firstArc))) {
            ++firstArc;
        }
        while (behindArcs > firstArc && isClothoid(at(behindArcs - 1))) {
            --behindArcs;
        }
        names[firstArc] = "BC" + n;
        names[behindArcs] = firstArc < behindArcs ? "EC" + n : "BC" + n;
        if (firstArc > 0) {
            names[0] = "BTC" + n;
        }
        if (behindArcs < last) {
            names[last] = "ETC" + n;
        }
        if (firstArc == last) { // clothoids alone, such as two that meet in one point
            names[last] = "ETC" + n;
        }
    }
    // What lies between has no name of its own in the habit: compound arcs and eggs.
    int between = 0;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (!names[i].empty()) {
            continue;
        }
        if (i == 0) {
            names[i] = "BC" + n;
        } else if (i + 1 == names.size()) {
            names[i] = "EC" + n;
        } else {
            names[i] = "PCC" + n + "-" + std::to_string(++between);
        }
    }
    return names;
}

double endStationOf(const Alignment& alignment) {
    double station = alignment.startStation;
    for (const Element& element : alignment.elements) {
        station += element.length;
    }
    return station;
}

double turnAt(const std::vector<Element>& elements, std::size_t joint) {
    return std::remainder(elements[joint].direction - elements[joint - 1].endDirection(), 2.0 * std::numbers::pi);
}

// Where the line from a along its direction meets the line that arrives at b along its own, ahead of a and before b.
std::optional<PlanPoint> meetingPoint(const Pose& a, const Pose& b) {
    const double sine = std::sin(b.direction - a.direction);
    if (std::abs(sine) < kParallel) {
        return std::nullopt;
    }
    const double dx = b.point.x - a.point.x;
    const double dy = b.point.y - a.point.y;
    const double ahead = (dx * std::sin(b.direction) - dy * std::cos(b.direction)) / sine;
    const double before = (dx * std::sin(a.direction) - dy * std::cos(a.direction)) / -sine;
    if (!(ahead > 0.0) || !(before > 0.0)) {
        return std::nullopt;
    }
    return PlanPoint{a.point.x + ahead * std::cos(a.direction), a.point.y + ahead * std::sin(a.direction)};
}

double distance(const PlanPoint& a, const PlanPoint& b) {
    return std::hypot(b.x - a.x, b.y - a.y);
}

// The IP of the elements, or nothing if their end tangents do not meet.
std::optional<Ip> ipOf(const std::vector<Element>& elements, const Curve& curve) {
    const Element& first = elements[curve.first];
    const Element& last = elements[curve.end - 1];
    double turn = 0.0;
    Ip ip;
    for (std::size_t i = curve.first; i < curve.end; ++i) {
        turn += elements[i].turn();
        const double radius = std::min(elements[i].startRadius, elements[i].endRadius);
        if (std::isfinite(radius) && (ip.radius == 0.0 || radius < ip.radius)) {
            ip.radius = radius;
        }
    }
    if (std::abs(turn) >= std::numbers::pi) {
        return std::nullopt;
    }
    const auto point = meetingPoint({first.start, first.direction}, {last.end, last.endDirection()});
    if (!point) {
        return std::nullopt;
    }
    ip.point = *point;
    ip.turn = turn;
    ip.tangentBefore = distance(first.start, *point);
    ip.tangentBehind = distance(*point, last.end);
    ip.a1 = isClothoid(first) && !std::isfinite(first.startRadius) ? parameterOf(first) : 0.0;
    ip.a2 = isClothoid(last) && !std::isfinite(last.endRadius) ? parameterOf(last) : 0.0;
    ip.firstElement = curve.first;
    ip.elements = curve.size();
    return ip;
}

// A place without a curve.
Ip endPoint(const char* name, const PlanPoint& point) {
    Ip ip;
    ip.name = name;
    ip.point = point;
    return ip;
}

} // namespace

double parameterOf(const Element& clothoid) {
    const double growth = std::abs(clothoid.endCurvature() - clothoid.startCurvature());
    return growth > 0.0 ? std::sqrt(clothoid.length / growth) : 0.0;
}

std::vector<MainPoint> mainPointsOf(const Alignment& alignment, MainPointNames names) {
    const std::vector<Element>& elements = alignment.elements;
    std::vector<MainPoint> points;
    if (elements.empty()) {
        return points;
    }
    std::vector<std::string> jointNames(elements.size() + 1);
    const std::vector<Curve> curves = curvesOf(elements);
    // Where two curves meet in a point of inflection, the first one names it.
    for (std::size_t c = 0; c < curves.size(); ++c) {
        const std::vector<std::string> own = namesOfCurve(elements, curves[c], c + 1, names);
        for (std::size_t i = 0; i < own.size(); ++i) {
            std::string& name = jointNames[curves[c].first + i];
            name = name.empty() ? own[i] : name;
        }
    }
    jointNames.front() = "BP";
    jointNames.back() = "EP";
    std::size_t kinks = curves.size(); // IPs without a curve are numbered behind those with one
    std::size_t others = 0;
    double station = alignment.startStation;
    std::size_t curve = 0;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const Element& element = elements[i];
        if (jointNames[i].empty()) {
            jointNames[i] =
                std::abs(turnAt(elements, i)) > kKink ? "IP" + std::to_string(++kinks) : "P" + std::to_string(++others);
        }
        points.push_back({jointNames[i], station, {element.start, element.direction}, i, true});
        while (curve < curves.size() && curves[curve].end <= i) {
            ++curve;
        }
        if (curve < curves.size() && curves[curve].first == i && curves[curve].size() == 1 &&
            shapeOf(element) == ElementType::Arc) {
            const double half = element.length / 2.0;
            points.push_back(
                {"SP" + std::to_string(curve + 1), station + half, drawing::poseOnElement(element, half), i, false});
        }
        station += element.length;
    }
    const Element& last = elements.back();
    points.push_back({"EP", endStationOf(alignment), {last.end, last.endDirection()}, elements.size() - 1, true});
    return points;
}

std::vector<Ip> ipsOf(const Alignment& alignment, MainPointNames names, std::size_t& withoutIp) {
    const std::vector<Element>& elements = alignment.elements;
    std::vector<Ip> ips;
    if (elements.empty()) {
        return ips;
    }
    std::vector<std::string> joints;
    for (MainPoint& point : mainPointsOf(alignment, names)) {
        if (point.joint) {
            joints.push_back(std::move(point.name));
        }
    }
    const auto add = [&](Ip ip) {
        ip.from = joints[ip.firstElement];
        ip.to = joints[ip.firstElement + ip.elements];
        ips.push_back(std::move(ip));
    };
    ips.push_back(endPoint("BP", elements.front().start));
    const std::vector<Curve> curves = curvesOf(elements);
    std::size_t curve = 0;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        if (i > 0 && shapeOf(elements[i]) == ElementType::Straight &&
            shapeOf(elements[i - 1]) == ElementType::Straight && std::abs(turnAt(elements, i)) > kKink) {
            ips.push_back(endPoint("", elements[i].start));
            ips.back().turn = turnAt(elements, i);
        }
        if (curve == curves.size() || curves[curve].first != i) {
            continue;
        }
        if (auto ip = ipOf(elements, curves[curve])) {
            add(std::move(*ip));
        } else {
            for (std::size_t part = i; part < curves[curve].end; ++part) {
                if (auto own = ipOf(elements, {part, part + 1})) {
                    add(std::move(*own));
                } else {
                    ++withoutIp;
                }
            }
        }
        ++curve;
    }
    std::size_t number = 0;
    for (std::size_t i = 1; i < ips.size(); ++i) {
        ips[i].name = "IP-" + std::to_string(++number);
    }
    ips.push_back(endPoint("EP", elements.back().end));
    return ips;
}

} // namespace fenmark::exchange
