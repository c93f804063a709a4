// The hand that measures in the plan.
#include "desk/measure/measure_tool.h"

#include "desk/plan/plan_furniture.h"
#include "desk/plan/plan_style.h"
#include "desk/plan/plan_text.h"
#include "desk/window/properties.h"
#include "exchange/survey_text.h"

#include <QFontMetricsF>
#include <QPolygonF>

#include <array>
#include <cmath>
#include <limits>
#include <vector>

namespace fenmark::desk {

using host::PlanPoint;

namespace {

constexpr double kReachPixels = 10.0;
constexpr double kMark = 5.0; // half a mark, pixels
constexpr double kLeastSideForText = 40.0;
constexpr double kFromSide = 9.0; // pixels between a side and its length: beyond the cells that the side takes

// Reads on the plan's paper, light or dark.
QColor measureInk() {
    constexpr int kDarkBelow = 128;
    return kPaper.lightness() < kDarkBelow ? QColor(0xf4, 0x8f, 0xb1) : QColor(0xad, 0x14, 0x57);
}

Text nameOf(SnapKind kind) {
    switch (kind) {
    case SnapKind::Point:
        return Text::SnapPoint;
    case SnapKind::End:
        return Text::SnapEnd;
    case SnapKind::Vertex:
        return Text::SnapVertex;
    case SnapKind::Crossing:
        return Text::SnapCrossing;
    case SnapKind::Foot:
        return Text::SnapFoot;
    case SnapKind::OnLine:
    case SnapKind::Free:
        break;
    }
    return Text::SnapOnLine;
}

// A shape for each kind, so that they differ without colour.
void paintMark(QPainter& painter, SnapKind kind, const QPointF& at) {
    switch (kind) {
    case SnapKind::Point:
        painter.drawEllipse(at, kMark, kMark);
        break;
    case SnapKind::End:
    case SnapKind::Vertex:
        painter.drawRect(QRectF(at.x() - kMark, at.y() - kMark, 2.0 * kMark, 2.0 * kMark));
        break;
    case SnapKind::Crossing:
        painter.drawLine(at + QPointF(-kMark, -kMark), at + QPointF(kMark, kMark));
        painter.drawLine(at + QPointF(-kMark, kMark), at + QPointF(kMark, -kMark));
        break;
    case SnapKind::Foot:
        painter.drawPolyline(
            QPolygonF{at + QPointF(-kMark, -kMark), at + QPointF(-kMark, kMark), at + QPointF(kMark, kMark)});
        painter.drawRect(QRectF(at.x() - kMark, at.y(), kMark, kMark));
        break;
    case SnapKind::OnLine:
        painter.drawPolygon(
            QPolygonF{at + QPointF(0, -kMark), at + QPointF(kMark, kMark), at + QPointF(-kMark, kMark)});
        break;
    case SnapKind::Free:
        break;
    }
}

QSizeF sizeOf(const QPainter& painter, const QString& text) {
    const QFontMetricsF metrics(painter.font());
    return {metrics.horizontalAdvance(text), metrics.height()};
}

void paintText(QPainter& painter, const QRectF& place, const QString& text) {
    drawText(painter, place.topLeft() + QPointF(0.0, QFontMetricsF(painter.font()).ascent()), text, measureInk());
}

// The length of each side beside its middle, on its upper hand where that is free. The last point of a ring is the first.
void paintLengths(QPainter& painter, const QPolygonF& line, const Measured& measured, LabelRoom& room) {
    for (std::size_t i = 0; i < measured.sides.size(); ++i) {
        const QPointF a = line[static_cast<qsizetype>(i)];
        const QPointF b = line[static_cast<qsizetype>(i) + 1];
        const double length = std::hypot(b.x() - a.x(), b.y() - a.y());
        if (length < kLeastSideForText) {
            continue;
        }
        const QString text = metres(measured.sides[i].length);
        const QSizeF size = sizeOf(painter, text);
        const QPointF way = (b - a) / length;
        const QPointF up = way.x() > 0.0 ? QPointF(way.y(), -way.x()) : QPointF(-way.y(), way.x());
        const double away = kFromSide + 0.5 * (std::abs(up.x()) * size.width() + std::abs(up.y()) * size.height());
        std::vector<QRectF> places;
        for (const double share : {0.5, 0.25, 0.75}) {
            for (const double hand : {1.0, -1.0}) {
                const QPointF middle = a + share * (b - a) + hand * away * up;
                places.emplace_back(middle - QPointF(0.5 * size.width(), 0.5 * size.height()), size);
            }
        }
        paintText(painter, room.takeFirst(places), text);
    }
}

} // namespace

void MeasureTool::setMode(MeasureMode mode) {
    mode_ = mode;
    clear();
}

void MeasureTool::clear() {
    taken_.clear();
    alignments_.clear();
    finished_ = false;
    meant_.reset();
    tell(true);
}

void MeasureTool::tell(bool taken) const {
    if (changed_) {
        changed_(taken);
    }
}

std::optional<Snap> MeasureTool::snap(const QPointF& pixel) const {
    const auto scene = scene_();
    if (!scene) {
        return std::nullopt;
    }
    const bool goesOn = mode_ != MeasureMode::Place && !taken_.empty() && !finished_;
    return snapAt(*scene, pixel, kReachPixels, choice_,
                  goesOn ? std::optional(taken_.back().at) : std::optional<PlanPoint>());
}

Sheet MeasureTool::sheet(const drawing::Drawing& drawing) const {
    if (mode_ != MeasureMode::Place) {
        return lineSheet(taken_, mode_ == MeasureMode::Area, texts_);
    }
    std::vector<PickedPlace> places;
    for (std::size_t i = 0; i < taken_.size(); ++i) {
        places.push_back({taken_[i], alignments_[i]});
    }
    return placeSheet(drawing, places, texts_);
}

void MeasureTool::press(const QPointF& pixel) {
    const auto place = snap(pixel);
    const auto scene = scene_();
    if (!place || !scene) {
        return;
    }
    if (finished_) {
        taken_.clear();
        alignments_.clear();
        finished_ = false;
    }
    // A second click on the same place, as a double click makes it, adds nothing.
    if (!taken_.empty() && taken_.back().at == place->at) {
        return;
    }
    // A click on the first point closes an area.
    if (mode_ == MeasureMode::Area && taken_.size() > 2 && taken_.front().at == place->at) {
        finish();
        return;
    }
    std::optional<std::size_t> alignment = alignment_;
    if (!alignment && mode_ == MeasureMode::Place) {
        const auto nearest = nearestStation(scene->drawing, scene->index, scene->look, place->at.x, place->at.y,
                                            std::numeric_limits<double>::infinity());
        alignment = nearest ? std::optional(nearest->alignment) : std::nullopt;
    }
    taken_.push_back(*place);
    alignments_.push_back(alignment);
    meant_ = place;
    tell(true);
}

void MeasureTool::move(const QPointF& pixel) {
    meant_ = snap(pixel);
    tell(false);
}

void MeasureTool::leave() {
    meant_.reset();
    tell(false);
}

void MeasureTool::finish() {
    finished_ = mode_ != MeasureMode::Place && taken_.size() > 1;
    tell(true);
}

void MeasureTool::doublePress() {
    finish();
}

bool MeasureTool::key(int qtKey) {
    switch (qtKey) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        finish();
        return true;
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
        if (!taken_.empty()) {
            taken_.pop_back();
            alignments_.pop_back();
            finished_ = false;
            tell(true);
        }
        return true;
    case Qt::Key_Escape:
        if (!taken_.empty()) {
            clear();
        } else if (end_) {
            end_();
        }
        return true;
    default:
        return false;
    }
}

void MeasureTool::paint(QPainter& painter, const ViewTransform& view, const QFont& font) const {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(font);
    QPolygonF line;
    for (const Snap& place : taken_) {
        line.append(view.toPixel(place.at.x, place.at.y));
    }
    std::vector<PlanPoint> points;
    for (const Snap& place : taken_) {
        points.push_back(place.at);
    }
    const bool goesOn = meant_ && !finished_ && mode_ != MeasureMode::Place && !taken_.empty();
    if (goesOn) {
        line.append(view.toPixel(meant_->at.x, meant_->at.y));
        points.push_back(meant_->at);
    }
    const bool lined = mode_ != MeasureMode::Place && line.size() > 1;
    const bool ring = lined && mode_ == MeasureMode::Area && line.size() > 2;
    if (ring) {
        line.append(line.front());
    }
    LabelRoom room(view.size());
    for (const QRectF& place : furniturePlaces(view, font)) {
        room.block(place);
    }
    for (qsizetype i = 0; lined && i + 1 < line.size(); ++i) {
        room.blockLine(line[i], line[i + 1]);
    }
    if (lined) {
        QColor fill = measureInk();
        fill.setAlphaF(0.12F);
        painter.setBrush(ring ? QBrush(fill) : QBrush(Qt::NoBrush));
        painter.setPen(QPen(measureInk(), 2.0, goesOn ? Qt::DashLine : Qt::SolidLine));
        if (ring) {
            painter.drawPolygon(line);
        } else {
            painter.drawPolyline(line);
        }
        paintLengths(painter, line, measure(points, ring), room);
    }
    painter.setBrush(kPaper);
    painter.setPen(QPen(measureInk(), 1.5));
    for (qsizetype i = 0; i < static_cast<qsizetype>(taken_.size()); ++i) {
        painter.drawEllipse(line[i], 3.0, 3.0);
    }
    if (!meant_ || meant_->kind == SnapKind::Free) {
        return;
    }
    const QPointF at = view.toPixel(meant_->at.x, meant_->at.y);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(measureInk(), 2.0));
    paintMark(painter, meant_->kind, at);
    QString text = texts_(nameOf(meant_->kind));
    if (!meant_->name.empty()) {
        text += QLatin1Char(' ') + shownName(meant_->name);
    }
    const QSizeF size = sizeOf(painter, text);
    const QSizeF away(12.0, 10.0); // of the text's near corner from the middle of the mark
    const double right = at.x() + away.width();
    const double left = at.x() - away.width() - size.width();
    const double above = at.y() - away.height() - size.height();
    const double below = at.y() + away.height();
    const std::array<QRectF, 4> places = {QRectF(QPointF(right, above), size), QRectF(QPointF(right, below), size),
                                          QRectF(QPointF(left, above), size), QRectF(QPointF(left, below), size)};
    paintText(painter, room.takeFirst(places), text);
}

} // namespace fenmark::desk
