// What stands on an alignment in the plan.
#include "desk/plan/alignment_marks.h"

#include "desk/plan/plan_shapes.h"
#include "desk/plan/plan_style.h"
#include "exchange/round_stations.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>

namespace fenmark::desk {

using drawing::Alignment;
using drawing::Element;
using drawing::ElementType;
using drawing::Extent;
using drawing::Pose;
using host::PlanPoint;

namespace {

constexpr double kStationStep = 20.0;        // metres
constexpr int kMostStations = 20'000;        // of one alignment in one picture
constexpr double kStationPixels = 5.0;       // closer marks are left out
constexpr double kElementLabelPixels = 8.0;  // from a line to the foot of its label
constexpr double kStationLabelPixels = 60.0; // room that a station label needs
constexpr double kDegrees = 180.0 / 3.141592653589793;

QString elementLabel(const Element& element) {
    const QString length = QStringLiteral("L=%1").arg(element.length, 0, 'f', 3);
    if (element.type == ElementType::Arc) {
        return QStringLiteral("R=%1 %2").arg(element.startRadius, 0, 'f', 3).arg(length);
    }
    if (element.type == ElementType::Clothoid) {
        const double growth = std::abs(element.endCurvature() - element.startCurvature()) / element.length;
        return QStringLiteral("A=%1 %2").arg(std::sqrt(1.0 / growth), 0, 'f', 3).arg(length);
    }
    return length;
}

} // namespace

void drawElementEnds(QPainter& painter, const ViewTransform& view, const Alignment& alignment, int& left) {
    painter.setPen(QPen(kInk, 1.0));
    painter.setBrush(kPaper);
    const QRectF seen = clipOf(view);
    for (const Element& element : alignment.elements) {
        if (element.length * view.pixelsPerMetre() < 6.0) {
            continue;
        }
        for (const PlanPoint& end : {element.start, element.end}) {
            if (left > 0 && seen.contains(view.toPixel(end.x, end.y))) {
                --left;
                painter.drawEllipse(view.toPixel(end.x, end.y), 2.5, 2.5);
            }
        }
    }
}

void labelElements(QPainter& painter, const ViewTransform& view, const Alignment& alignment, LabelRoom& room,
                   const std::function<QColor(ElementType)>& inkOfType) {
    const QRectF seen = clipOf(view);
    for (const Element& element : alignment.elements) {
        constexpr double kBesideLabel = 12.0; // pixels
        const double length = element.length * view.pixelsPerMetre();
        if (length < kBesideLabel) {
            continue;
        }
        const Pose middle = drawing::poseOnElement(element, 0.5 * element.length);
        const QPointF at = view.toPixel(middle.point.x, middle.point.y);
        if (!seen.contains(at)) {
            continue;
        }
        const QString label = elementLabel(element);
        const double width = painter.fontMetrics().horizontalAdvance(label);
        if (length < width + kBesideLabel) {
            continue;
        }
        double degrees = std::remainder(-middle.direction * kDegrees, 360.0);
        if (degrees > 90.0 || degrees < -90.0) {
            degrees += 180.0; // never upside down
        }
        const QPointF up(std::sin(degrees / kDegrees), -std::cos(degrees / kDegrees));
        if (!room.takeTurned(at + (kElementLabelPixels + 4.5) * up, width, 11.0, degrees)) {
            continue;
        }
        painter.save();
        painter.translate(at);
        painter.rotate(degrees);
        drawText(painter, {-width / 2.0, -kElementLabelPixels}, label, inkOfType(element.type));
        painter.restore();
    }
}

void nameAlignment(QPainter& painter, const ViewTransform& view, const Alignment& alignment, LabelRoom& room) {
    if (alignment.elements.empty() || alignment.name.empty()) {
        return;
    }
    painter.save();
    QFont bold = painter.font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() + 1.0);
    painter.setFont(bold);
    const QString name = shownName(alignment.name).trimmed();
    const PlanPoint& start = alignment.elements.front().start;
    const double width = painter.fontMetrics().horizontalAdvance(name);
    for (const QPointF& shift : {QPointF(8.0, 18.0), QPointF(8.0, -8.0), QPointF(-8.0 - width, 18.0)}) {
        const QPointF at = view.toPixel(start.x, start.y) + shift;
        if (!room.take(QRectF(at.x(), at.y() - 11.0, width, 13.0))) {
            continue;
        }
        drawText(painter, at, name, kInk);
        break;
    }
    painter.restore();
}

void paintStations(QPainter& painter, const ViewTransform& view, const drawing::AlignmentGeometry& geometry,
                   LabelRoom& room, bool names, int& left) {
    if (kStationStep * view.pixelsPerMetre() < kStationPixels) {
        return;
    }
    const Extent visible = view.visible(kLabelMarginPixels);
    // What is in view may be a small part of a long alignment: only stations near it are asked for.
    const double middleX = 0.5 * (visible.minX + visible.maxX);
    const double middleY = 0.5 * (visible.minY + visible.maxY);
    const double reach = std::hypot(visible.maxX - middleX, visible.maxY - middleY);
    const double labelEvery =
        kStationStep * std::max(1.0, std::ceil(kStationLabelPixels / (kStationStep * view.pixelsPerMetre())));
    // Beyond that, stations next to each other are one real.
    if (!(std::max(std::abs(geometry.startStation()), std::abs(geometry.endStation())) < exchange::kLargestStation)) {
        return;
    }
    auto number = static_cast<std::int64_t>(std::ceil(geometry.startStation() / kStationStep));
    const auto last =
        static_cast<std::int64_t>(std::floor((geometry.endStation() + drawing::kStationTolerance) / kStationStep));
    for (int asked = 0; number <= last && asked < kMostStations && left > 0; ++asked, --left) {
        const double station = static_cast<double>(number) * kStationStep;
        ++number;
        const std::optional<Pose> pose = geometry.poseAt(station);
        if (!pose) {
            continue;
        }
        const double beyond = std::hypot(pose->point.x - middleX, pose->point.y - middleY) - reach;
        if (beyond > 0.0) {
            // A station so far outside cannot come into view before the alignment has run that far.
            number += static_cast<std::int64_t>(std::min(beyond / kStationStep, 1e9));
            continue;
        }
        const QPointF at = view.toPixel(pose->point.x, pose->point.y);
        const QPointF square(-std::sin(pose->direction), -std::cos(pose->direction)); // pixels run downwards
        painter.setPen(QPen(kInk, 1.0));
        painter.drawLine(at - 4.0 * square, at + 4.0 * square);
        if (!names || std::abs(std::remainder(station, labelEvery)) > 1e-6) {
            continue;
        }
        const QString name = stakeName(station);
        const double width = painter.fontMetrics().horizontalAdvance(name);
        // Right of the travel first, and farther out where something stands beside the line.
        const double half = 0.5 * width * std::abs(square.x());
        for (const double distance : {-10.0, 10.0, -26.0, 26.0, -42.0, 42.0}) {
            const QPointF middle = at + (distance + (distance < 0.0 ? -half : half)) * square;
            if (room.take(QRectF(middle.x() - width / 2.0, middle.y() - 6.0, width, 11.0))) {
                drawText(painter, middle + QPointF(-width / 2.0, 4.0), name, kFaintInk);
                break;
            }
        }
    }
}

} // namespace fenmark::desk
