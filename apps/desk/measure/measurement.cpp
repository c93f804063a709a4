// What was measured, as numbers and as a table.
#include "desk/measure/measurement.h"

#include "desk/plan/plan_text.h"
#include "desk/window/properties.h"
#include "exchange/survey_text.h"

#include <cmath>
#include <numbers>

namespace fenmark::desk {

using drawing::Drawing;
using host::PlanPoint;

namespace {

constexpr double kFullCircle = 2.0 * std::numbers::pi;

double wrapped(double angle) {
    const double rest = std::fmod(angle, kFullCircle);
    return rest < 0.0 ? rest + kFullCircle : rest;
}

double cross(const PlanPoint& o, const PlanPoint& a, const PlanPoint& b) {
    return (a.x - o.x) * (b.y - o.y) - (a.y - o.y) * (b.x - o.x);
}

// Whether two sides cross within both of them; ends that only touch do not count.
bool cross(const PlanPoint& a, const PlanPoint& b, const PlanPoint& c, const PlanPoint& d) {
    return cross(a, b, c) * cross(a, b, d) < 0.0 && cross(c, d, a) * cross(c, d, b) < 0.0;
}

QString angleText(double azimuth) {
    return fromUtf8(exchange::degreesText(exchange::azimuthDegrees(azimuth)));
}

QString nameOf(std::span<const Snap> places, std::size_t index) {
    const std::string& name = places[index].name;
    return name.empty() ? QString::number(index + 1) : shownName(name);
}

} // namespace

Measured measure(std::span<const PlanPoint> points, bool closed) {
    Measured measured;
    const std::size_t count = points.size();
    const bool ring = closed && count > 2;
    const std::size_t sides = ring ? count : count - std::min<std::size_t>(count, 1);
    for (std::size_t i = 0; i < sides; ++i) {
        const PlanPoint& from = points[i];
        const PlanPoint& to = points[(i + 1) % count];
        MeasuredSide side;
        side.north = to.y - from.y;
        side.east = to.x - from.x;
        side.length = std::hypot(side.north, side.east);
        side.azimuth = wrapped(std::atan2(side.east, side.north));
        measured.length += side.length;
        side.along = measured.length;
        measured.sides.push_back(side);
    }
    for (std::size_t i = 0; i < sides; ++i) {
        if (i > 0 || ring) {
            const double back = measured.sides[(i + sides - 1) % sides].azimuth + std::numbers::pi;
            measured.sides[i].included = wrapped(measured.sides[i].azimuth - back);
        }
    }
    if (!ring) {
        return measured;
    }
    double twice = 0.0; // from the first point, so that large coordinates do not cancel
    for (std::size_t i = 1; i + 1 < count; ++i) {
        twice += cross(points[0], points[i], points[i + 1]);
    }
    measured.area = std::abs(twice) / 2.0;
    for (std::size_t i = 0; i < count && !measured.crossesItself; ++i) {
        for (std::size_t j = i + 2; j < count && !measured.crossesItself; ++j) {
            measured.crossesItself =
                (i > 0 || j + 1 < count) && cross(points[i], points[i + 1], points[j], points[(j + 1) % count]);
        }
    }
    return measured;
}

std::string quadrantBearing(double azimuth) {
    const double angle = wrapped(azimuth);
    const bool south = angle > kFullCircle / 4.0 && angle < kFullCircle * 3.0 / 4.0;
    const bool west = angle > kFullCircle / 2.0;
    const double fromMeridian = south ? std::abs(angle - std::numbers::pi) : west ? kFullCircle - angle : angle;
    return (south ? "S" : "N") + exchange::degreesText(exchange::angleDegrees(fromMeridian)) + (west ? "W" : "E");
}

std::optional<AlignmentPlace> placeOn(const Drawing& drawing, std::size_t alignment, const PlanPoint& point) {
    const drawing::AlignmentGeometry& geometry = drawing.geometry(alignment);
    const auto located = geometry.locate(point);
    if (!located) {
        return std::nullopt;
    }
    const auto pose = geometry.poseAt(located->station);
    const auto place = geometry.chain().placeAt(located->station - geometry.startStation());
    const auto element = geometry.elementAt(located->station);
    if (!pose || !place || !element) {
        return std::nullopt;
    }
    AlignmentPlace found;
    found.station = located->station;
    found.offset = located->offset;
    found.foot = pose->point;
    found.azimuth = exchange::azimuthOf(pose->direction);
    found.element = *element;
    // Seen in the drawing's plane a positive curvature turns left.
    found.radius = place->curvature == 0.0 ? drawing::kInfiniteRadius : 1.0 / std::abs(place->curvature);
    found.turnsRight = place->curvature < 0.0;
    return found;
}

QString Sheet::tabbed() const {
    QString text = columns.join(QLatin1Char('\t')) + QLatin1Char('\n');
    for (const QStringList& row : rows) {
        text += row.join(QLatin1Char('\t')) + QLatin1Char('\n');
    }
    for (const Total& total : totals) {
        text += total.name + QLatin1Char('\t') + total.value + QLatin1Char('\n');
    }
    return text;
}

Sheet lineSheet(std::span<const Snap> places, bool closed, const Texts& texts) {
    std::vector<PlanPoint> points;
    for (const Snap& place : places) {
        points.push_back(place.at);
    }
    const Measured measured = measure(points, closed);
    Sheet sheet;
    sheet.title = texts(closed ? Text::MeasureArea : Text::MeasureDistance);
    sheet.columns = {texts(Text::MeasurePointName), texts(Text::CoordinateX),       texts(Text::CoordinateY),
                     texts(Text::MeasureSide),      texts(Text::MeasureAzimuth),    texts(Text::MeasureBearing),
                     texts(Text::MeasureIncluded),  texts(Text::MeasureDifference), texts(Text::MeasureAlong)};
    for (std::size_t i = 0; i < places.size(); ++i) {
        QStringList row{nameOf(places, i), metres(points[i].y), metres(points[i].x)};
        if (i < measured.sides.size()) {
            const MeasuredSide& side = measured.sides[i];
            row << metres(side.length) << angleText(side.azimuth) << fromUtf8(quadrantBearing(side.azimuth))
                << (side.included ? angleText(*side.included) : QString())
                << QStringLiteral("%1, %2").arg(metres(side.north), metres(side.east)) << metres(side.along);
        } else {
            row << QString() << QString() << QString() << QString() << QString() << QString();
        }
        sheet.rows.push_back(row);
    }
    const bool ring = closed && places.size() > 2;
    if (!measured.sides.empty()) {
        sheet.totals.push_back(
            {texts(ring ? Text::Perimeter : Text::Length), metres(measured.length) + QStringLiteral(" m")});
    }
    if (!ring && measured.sides.size() > 1) {
        const MeasuredSide direct = measure(std::vector{points.front(), points.back()}, false).sides.front();
        sheet.totals.push_back({texts(Text::MeasureDirect),
                                QStringLiteral("%1 m  %2").arg(metres(direct.length), angleText(direct.azimuth))});
    }
    if (ring) {
        sheet.totals.push_back({texts(Text::Area), metres(measured.area) + QStringLiteral(" m²")});
    }
    if (measured.crossesItself) {
        sheet.totals.push_back({texts(Text::MeasureCrossed), QString()});
    }
    return sheet;
}

Sheet placeSheet(const Drawing& drawing, std::span<const PickedPlace> places, const Texts& texts) {
    Sheet sheet;
    sheet.title = texts(Text::MeasurePlace);
    sheet.columns = {texts(Text::MeasurePointName), texts(Text::CoordinateX),  texts(Text::CoordinateY),
                     texts(Text::Alignment),        texts(Text::MeasureStake), texts(Text::ColumnStation),
                     texts(Text::MeasureOffset),    texts(Text::Element),      texts(Text::Radius),
                     texts(Text::MeasureTangent)};
    std::vector<Snap> snaps;
    for (const PickedPlace& place : places) {
        snaps.push_back(place.snap);
    }
    for (std::size_t i = 0; i < places.size(); ++i) {
        const PlanPoint& at = snaps[i].at;
        QStringList row{nameOf(snaps, i), metres(at.y), metres(at.x)};
        const auto alignment = places[i].alignment;
        const auto on =
            alignment && *alignment < drawing.alignmentCount() ? placeOn(drawing, *alignment, at) : std::nullopt;
        if (!on) {
            row << texts(Text::MeasureNoAlignment) << QString() << QString() << QString() << QString() << QString()
                << QString();
            sheet.rows.push_back(row);
            continue;
        }
        const drawing::Alignment& line = drawing.alignment(*alignment);
        const QString side = texts(on->offset < 0.0 ? Text::OffsetLeft : Text::OffsetRight);
        const QString radius =
            std::isinf(on->radius)
                ? texts(Text::Infinite)
                : QStringLiteral("%1 (%2)").arg(metres(on->radius), texts(on->turnsRight ? Text::Right : Text::Left));
        row << shownName(exchange::trimmedName(line.name)) << stakeName(on->station) << metres(on->station)
            << (metres(on->offset) == QStringLiteral("0.000") ? metres(0.0) : side.arg(metres(std::abs(on->offset))))
            << elementName(line.elements[on->element], texts) << radius << angleText(on->azimuth);
        sheet.rows.push_back(row);
    }
    return sheet;
}

} // namespace fenmark::desk
