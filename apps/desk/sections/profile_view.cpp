// The longitudinal section beside the plan: ground, formation, and a band of heights, stations and curves.
#include "desk/plan/plan_text.h"
#include "desk/sections/section_view.h"
#include "desk/window/properties.h"
#include "exchange/main_points.h"

#include <QPolygonF>

#include <algorithm>
#include <cmath>

namespace fenmark::desk {

using drawing::Element;
using drawing::ElementType;
using exchange::LongitudinalPoint;

namespace {

constexpr double kValueRow = 62.0; // pixels of the band's rows
constexpr double kStakeRow = 84.0;
constexpr double kCurveRow = 44.0;
constexpr double kSameStation = 1e-3; // metres

} // namespace

WorkText ProfileView::emptyText() const {
    return alignment_ ? WorkText::NoProfile : WorkText::ChooseAlignment;
}

void ProfileView::show(std::optional<std::size_t> alignment, const std::optional<PlanObject>& selected) {
    const bool other = alignment != alignment_;
    alignment_ = alignment;
    ground_ = alignment ? model_.groundOf(*alignment) : std::vector<LongitudinalPoint>();
    planned_ = alignment ? model_.plannedOf(*alignment) : std::vector<LongitudinalPoint>();
    station_ = alignment ? model_.stationOf(*alignment, selected) : std::nullopt;
    element_ = selected && selected->kind == PlanObject::Kind::Alignment ? selected->element : std::nullopt;
    layOut(!other);
    // What is selected comes into view.
    if (station_ && !isEmpty() && (frame_.x(*station_) < frame_.left || frame_.x(*station_) > frame_.right)) {
        const Range all = range();
        if (*station_ >= all.from && *station_ <= all.to) {
            frame_.from = *station_ - (frame_.right - frame_.left) / 2.0 / frame_.scale;
        }
    }
    update();
}

SectionView::Range ProfileView::range() const {
    Range all{ground_.front().station, ground_.back().station, ground_.front().height, ground_.front().height};
    for (const std::vector<LongitudinalPoint>* line : {&ground_, &planned_}) {
        for (const LongitudinalPoint& point : *line) {
            if (point.station >= all.from && point.station <= all.to) {
                all.low = std::min(all.low, point.height);
                all.high = std::max(all.high, point.height);
            }
        }
    }
    return all;
}

int ProfileView::bandRows() const {
    return planned_.empty() ? 4 : 5;
}

double ProfileView::bandRowHeight(int row) const {
    return row == bandRows() - 1 ? kCurveRow : row == bandRows() - 2 ? kStakeRow : kValueRow;
}

void ProfileView::paintSection(QPainter& painter) {
    const Inks colours = inks();
    paintHeights(painter, colours);
    painter.save();
    painter.setClipRect(QRectF(frame_.left, 0.0, frame_.right - frame_.left, height()));
    if (element_ && alignment_) {
        const double from = *station_;
        const double to = from + model_.drawing()->alignment(*alignment_).elements[*element_].length;
        QColor fill = colours.marked;
        fill.setAlphaF(0.15F);
        painter.fillRect(QRectF(QPointF(frame_.x(from), frame_.top), QPointF(frame_.x(to), height())), fill);
    } else if (station_) {
        painter.setPen(QPen(colours.marked, 2.0));
        painter.drawLine(QPointF(frame_.x(*station_), frame_.top), QPointF(frame_.x(*station_), height()));
    }
    painter.setBrush(Qt::NoBrush);
    for (const auto& [points, colour, style] :
         {std::tuple(&ground_, colours.ground, Qt::SolidLine), std::tuple(&planned_, colours.planned, Qt::DashLine)}) {
        QPolygonF line;
        for (const LongitudinalPoint& point : *points) {
            line.append({frame_.x(point.station), frame_.y(point.height)});
        }
        painter.setPen(QPen(colour, 2.0, style));
        painter.drawPolyline(line);
    }
    painter.restore();
    paintBand(painter, colours);
}

void ProfileView::paintBand(QPainter& painter, const Inks& colours) {
    std::vector<WorkText> rows{WorkText::Ground, WorkText::Distance, WorkText::Stake, WorkText::Curve};
    if (!planned_.empty()) {
        rows.insert(rows.begin(), WorkText::Planned);
    }
    std::vector<double> tops;
    double y = frame_.bottom;
    painter.setPen(QPen(colours.ink, 1.0));
    for (std::size_t i = 0; i < rows.size(); ++i) {
        tops.push_back(y);
        const double height = bandRowHeight(static_cast<int>(i));
        painter.drawLine(QPointF(4.0, y), QPointF(frame_.right, y));
        painter.drawText(QRectF(4.0, y, frame_.left - 10.0, height), static_cast<int>(Qt::AlignCenter),
                         workText(texts_, rows[i]));
        y += height;
    }
    painter.drawLine(QPointF(4.0, y), QPointF(frame_.right, y));
    const std::size_t shift = planned_.empty() ? 0 : 1;
    painter.save();
    painter.setClipRect(QRectF(frame_.left, frame_.bottom, frame_.right - frame_.left, y - frame_.bottom));
    const double column = painter.fontMetrics().height();
    double before = -column;
    for (const LongitudinalPoint& point : ground_) {
        const double x = frame_.x(point.station);
        if (x < frame_.left - column || x > frame_.right + column) {
            continue;
        }
        painter.setPen(QPen(colours.ink, 1.0));
        painter.drawLine(QPointF(x, frame_.bottom), QPointF(x, frame_.bottom + 4.0));
        if (x - before < column) {
            continue; // no room for its figures at this scale
        }
        before = x;
        const auto upright = [&](std::size_t row, const QString& text) {
            paintUpright(painter, {x, tops[row] + bandRowHeight(static_cast<int>(row)) - 4.0}, text);
        };
        upright(shift, metres(point.height));
        upright(shift + 1, metres(point.station));
        upright(shift + 2, point.name.empty() ? stakeName(point.station) : shownName(point.name));
        const auto planned =
            std::lower_bound(planned_.begin(), planned_.end(), point.station - kSameStation,
                             [](const LongitudinalPoint& other, double station) { return other.station < station; });
        if (planned != planned_.end() && planned->station <= point.station + kSameStation) {
            painter.setPen(colours.planned);
            upright(0, metres(planned->height));
        }
    }
    paintCurves(painter, colours, tops.back(), kCurveRow);
    painter.restore();
}

// Right curves run below the middle of their row, left curves above it; clothoids lead there aslant.
void ProfileView::paintCurves(QPainter& painter, const Inks& colours, double top, double height) {
    const double middle = top + height / 2.0;
    const double full = height * 0.3;
    double station = model_.drawing()->alignment(*alignment_).startStation;
    for (const Element& element : model_.drawing()->alignment(*alignment_).elements) {
        const double x1 = frame_.x(station);
        const double x2 = frame_.x(station + element.length);
        station += element.length;
        if (x2 < frame_.left || x1 > frame_.right) {
            continue;
        }
        const double side = element.clockwise ? 1.0 : -1.0;
        painter.setPen(QPen(colours.curve, 1.5));
        QString label;
        double y = middle - side * height * 0.25;
        switch (element.type) {
        case ElementType::Straight:
            painter.drawLine(QPointF(x1, middle), QPointF(x2, middle));
            label = QStringLiteral("L=") + metres(element.length);
            y = middle - height * 0.25;
            break;
        case ElementType::Arc:
            painter.drawPolyline(
                QPolygonF{{x1, middle}, {x1, middle + side * full}, {x2, middle + side * full}, {x2, middle}});
            label = QStringLiteral("R=%1 L=%2").arg(metres(element.startRadius), metres(element.length));
            break;
        case ElementType::Clothoid:
            painter.drawLine(QPointF(x1, middle + (std::isfinite(element.startRadius) ? side * full : 0.0)),
                             QPointF(x2, middle + (std::isfinite(element.endRadius) ? side * full : 0.0)));
            label = QStringLiteral("A=%1 L=%2").arg(metres(exchange::parameterOf(element)), metres(element.length));
            break;
        }
        // In the middle of the part that is in view.
        const double seen1 = std::max(x1, frame_.left);
        const double seen2 = std::min(x2, frame_.right);
        painter.setPen(colours.ink);
        if (painter.fontMetrics().horizontalAdvance(label) + 4.0 < seen2 - seen1) {
            painter.drawText(QRectF(seen1, y - 10.0, seen2 - seen1, 20.0), static_cast<int>(Qt::AlignCenter), label);
        }
        painter.setPen(QPen(colours.faint, 1.0));
        painter.drawLine(QPointF(x2, top), QPointF(x2, top + height));
    }
}

std::optional<std::size_t> ProfileView::nearest(const QPointF& pixel) const {
    const double along = frame_.alongAt(pixel.x());
    const auto behind = std::lower_bound(ground_.begin(), ground_.end(), along,
                                         [](const LongitudinalPoint& point, double at) { return point.station < at; });
    if (ground_.empty()) {
        return std::nullopt;
    }
    auto found = behind == ground_.end() ? behind - 1 : behind;
    if (found != ground_.begin() && along - (found - 1)->station < found->station - along) {
        --found;
    }
    return static_cast<std::size_t>(found - ground_.begin());
}

QString ProfileView::describe(std::size_t result) const {
    const LongitudinalPoint& point = ground_[result];
    return workText(texts_, WorkText::PointedProfile)
        .arg(point.name.empty() ? stakeName(point.station) : shownName(point.name), metres(point.station),
             metres(point.height));
}

void ProfileView::choose(std::size_t result) {
    emit placeChosen(static_cast<qulonglong>(*alignment_), ground_[result].station, 0.0, ground_[result].height);
}

QPointF ProfileView::pixelOf(std::size_t result) const {
    return {frame_.x(ground_[result].station), frame_.y(ground_[result].height)};
}

void ProfileView::step(int by) {
    if (isEmpty()) {
        return;
    }
    const auto at = nearest({frame_.x(station_.value_or(ground_.front().station)), 0.0}).value_or(0);
    const auto last = static_cast<std::ptrdiff_t>(ground_.size()) - 1;
    choose(static_cast<std::size_t>(
        std::clamp(static_cast<std::ptrdiff_t>(at) + (station_ ? by : 0), std::ptrdiff_t{0}, last)));
}

} // namespace fenmark::desk
