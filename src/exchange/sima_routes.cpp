// An alignment as the points and element records of a route.
//
// A reader lays straights and arcs between the points of the file, each from the end of the one before. Of a clothoid
// it takes the direction from both points, and radii and parameter give its end: some tenths of a millimetre off
// the file's point, where the points are rounded. So a joint behind a clothoid keeps the point that was there, as long
// as that gives the clothoid the same direction again; otherwise a point is added at the joint.
//
// Symbols: A parameter of a clothoid, L its length, R radius; A^2 = L / |1/R2 - 1/R1|.
#include "exchange/sima_routes.h"

#include "exchange/element_shape.h"
#include "exchange/sima_lines.h"
#include "output/alignment_passes.h"
#include "sima/text/number.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace fenmark::exchange {

using drawing::Element;
using drawing::ElementType;
using host::PlanPoint;
using Index = SimaPointTable::Index;

namespace {

constexpr double kExact = 1e-7;   // metres that a joint and its point may differ by
constexpr double kRounded = 0.5;  // metres that a point may lie from the end of a clothoid laid from it
constexpr double kSameEnd = 5e-7; // metres that a clothoid's end may move
constexpr double kEndGap = 1e-6;  // metres between elements that follow each other
constexpr double kMerging = std::numbers::pi / 180.0;  // radians between straights that become one
constexpr double kWidestArc = 0.95 * std::numbers::pi; // radians that an arc between two points may turn
constexpr double kParameterRounding = 1e-9;            // of the parameter

double wrapped(double angle) {
    return std::remainder(angle, 2.0 * std::numbers::pi);
}

// Brought into [0, 2 pi).
double fullTurn(double angle) {
    const double rest = std::fmod(angle, 2.0 * std::numbers::pi);
    return rest < 0.0 ? rest + 2.0 * std::numbers::pi : rest;
}

// Positive where the curve turns left on the map; 0 where it is straight.
std::string signedRadius(const Element& element, double radius) {
    return std::isfinite(radius) ? exactMetres(element.clockwise ? -radius : radius) : "0";
}

std::string arcRecord(const Element& element) {
    return std::string(element.clockwise ? "C01,1," : "C01,0,") + signedRadius(element, element.startRadius) + ",";
}

std::string parameterOf(const Element& element) {
    const double change = std::abs(1.0 / element.endRadius - 1.0 / element.startRadius);
    double parameter = std::sqrt(element.length / change);
    const double rounded = std::round(parameter * 1000.0) / 1000.0;
    if (std::abs(rounded - parameter) <= kParameterRounding * parameter) {
        parameter = rounded;
    }
    return exactMetres(parameter);
}

std::string clothoidRecord(const Element& element) {
    return "C02," + parameterOf(element) + "," + signedRadius(element, element.startRadius) + "," +
           signedRadius(element, element.endRadius) + ",";
}

// A clothoid of one radius is an arc, and of none a straight; an arc without a radius is what it looks like.
ElementType typeOf(const Element& element) {
    if (element.type == ElementType::Arc && !std::isfinite(element.startRadius)) {
        return shapeOf(element);
    }
    if (element.type != ElementType::Clothoid || element.startRadius != element.endRadius) {
        return element.type;
    }
    return std::isfinite(element.startRadius) ? ElementType::Arc : ElementType::Straight;
}

class RouteMaker {
  public:
    RouteMaker(const drawing::Alignment& alignment, SimaPointTable& points) : alignment_(alignment), points_(points) {}

    std::optional<SimaRoute> make() {
        for (const Element& element : alignment_.elements) {
            if (!(element.length > 0.0)) {
                continue;
            }
            if (route_.steps.empty()) {
                if (typeOf(element) == ElementType::Clothoid) {
                    return std::nullopt;
                }
                go(exactly(element.start));
            } else if (std::hypot(end_.x - element.start.x, end_.y - element.start.y) > kEndGap) {
                append(straightTo(element.start)); // as a reader fills the gap
            }
            append(element);
        }
        return std::move(route_);
    }

  private:
    Index last() const { return route_.steps.back().point; }
    void go(Index point) { route_.steps.push_back({point, {}}); }

    // A point at the place, within what a file may differ by.
    Index exactly(const PlanPoint& at) {
        const std::vector<Index> near = points_.within(at.x, at.y, kExact);
        return near.empty() ? added(at) : near.front();
    }

    // Of the height of the point before, so that both tangents of a clothoid meet.
    Index added(const PlanPoint& at) {
        const bool first = route_.steps.empty();
        const double height = first ? 0.0 : points_[last()].z;
        const bool known = !first && points_[last()].hasHeight;
        return points_.add(at.x, at.y, height, known, alignment_.name + "-" + std::to_string(route_.steps.size() + 1));
    }

    Element straightTo(const PlanPoint& end) const {
        Element straight;
        straight.start = end_;
        straight.end = end;
        straight.direction = std::atan2(end.y - end_.y, end.x - end_.x);
        straight.length = std::hypot(end.x - end_.x, end.y - end_.y);
        return straight;
    }

    void append(const Element& element) {
        add(element);
        end_ = element.end;
        tangent_ = element.endDirection();
    }

    void add(const Element& element) {
        const ElementType type = typeOf(element);
        if (type == ElementType::Straight) {
            route_.mergedStraights =
                route_.mergedStraights ||
                (afterStraight_ && tangent_ &&
                 std::abs(fullTurn(element.direction) - fullTurn(*tangent_)) <= kMerging); // without the seam, as read
            go(exactly(element.end));
        } else if (type == ElementType::Arc) {
            const int parts = static_cast<int>(std::ceil(std::abs(element.turn()) / kWidestArc));
            for (int i = 1; i <= std::max(parts, 1); ++i) {
                route_.steps.back().record = arcRecord(element);
                go(exactly(i >= parts ? element.end
                                      : drawing::poseOnElement(element, element.length * i / parts).point));
            }
        } else {
            route_.steps.back().record = clothoidRecord(element);
            go(endOfClothoid(element));
        }
        afterStraight_ = type == ElementType::Straight;
    }

    Index endOfClothoid(const Element& element) {
        for (const Index near : points_.within(element.end.x, element.end.y, kRounded)) {
            const double given = directionFrom(element, points_[last()].z, points_[near]);
            if (std::abs(wrapped(given - element.direction)) * element.length <= kSameEnd) {
                return near;
            }
        }
        return added(element.end);
    }

    // The direction in which an import lays the clothoid: towards the PI that it finds from both points. Where it finds
    // none, as for points of different heights, the clothoid continues what is before it.
    double directionFrom(const Element& element, double startHeight, const SimaPointTable::Point& end) const {
        sima::EntityData record;
        record.type = "A";
        record.startX = sima::formatReal(element.start.x);
        record.startY = sima::formatReal(element.start.y);
        record.startZ = startHeight;
        record.endX = sima::formatReal(end.x);
        record.endY = sima::formatReal(end.y);
        record.endZ = end.z;
        record.editCurve().parameterA = parameterOf(element);
        record.editCurve().startRadius = signedRadius(element, element.startRadius);
        record.editCurve().endRadius = signedRadius(element, element.endRadius);
        record.direction = element.clockwise ? "L" : "R";
        output::computeSpiralPi(record);
        const host::MdGePoint3d& pi = record.curve().sparePoint2;
        const auto own = element.pi();
        if ((pi.x == 0.0 && pi.y == 0.0) || !own) {
            return tangent_.value_or(element.direction);
        }
        const double towards = std::atan2(pi.y - element.start.y, pi.x - element.start.x);
        // A clothoid that turns by more than half a turn has its PI behind it.
        const double ahead = (own->x - element.start.x) * std::cos(element.direction) +
                             (own->y - element.start.y) * std::sin(element.direction);
        return ahead < 0.0 ? towards + std::numbers::pi : towards;
    }

    const drawing::Alignment& alignment_;
    SimaPointTable& points_;
    SimaRoute route_;
    PlanPoint end_;
    std::optional<double> tangent_;
    bool afterStraight_ = false;
};

} // namespace

std::optional<SimaRoute> simaRouteOf(const drawing::Alignment& alignment, SimaPointTable& points) {
    return RouteMaker(alignment, points).make();
}

} // namespace fenmark::exchange
