// One cross-section of an alignment beside the plan, with the offsets and heights of its points.
#include "desk/plan/plan_text.h"
#include "desk/sections/section_view.h"
#include "desk/window/properties.h"

#include <QPolygonF>

#include <algorithm>
#include <cmath>

namespace fenmark::desk {

using exchange::CrossSection;
using exchange::SectionPoint;

WorkText CrossSectionView::emptyText() const {
    return alignment_ ? WorkText::NoSections : WorkText::ChooseAlignment;
}

const CrossSection* CrossSectionView::section() const {
    if (!alignment_) {
        return nullptr;
    }
    const auto& sections = model_.resultsOf(*alignment_).sections;
    return current_ < sections.size() && !sections[current_].points.empty() ? &sections[current_] : nullptr;
}

std::size_t CrossSectionView::count() const {
    return alignment_ ? model_.resultsOf(*alignment_).sections.size() : 0;
}

QStringList CrossSectionView::names() const {
    QStringList names;
    for (std::size_t i = 0; i < count(); ++i) {
        const CrossSection& other = model_.resultsOf(*alignment_).sections[i];
        names << (other.name.empty() ? stakeName(other.station) : shownName(other.name));
    }
    return names;
}

QString CrossSectionView::title() const {
    const CrossSection* shown = section();
    if (shown == nullptr) {
        return {};
    }
    return shown->name.empty() ? stakeName(shown->station) : shownName(shown->name);
}

void CrossSectionView::show(std::optional<std::size_t> alignment, const std::optional<PlanObject>& selected) {
    const bool other = alignment != alignment_;
    alignment_ = alignment;
    selected_ = selected;
    if (other || current_ >= count()) {
        current_ = 0;
    }
    if (const auto station = alignment ? model_.stationOf(*alignment, selected) : std::nullopt;
        station && count() > 0) {
        const auto& sections = model_.resultsOf(*alignment).sections;
        const auto nearest = std::min_element(sections.begin(), sections.end(), [&](const auto& a, const auto& b) {
            return std::abs(a.station - *station) < std::abs(b.station - *station);
        });
        current_ = static_cast<std::size_t>(nearest - sections.begin());
    }
    fitAll();
    emit sectionShown();
}

void CrossSectionView::showSection(std::size_t index) {
    if (index < count() && index != current_) {
        current_ = index;
        fitAll();
        emit sectionShown();
    }
}

SectionView::Range CrossSectionView::range() const {
    const CrossSection& shown = *section();
    Range all{0.0, 0.0, shown.points.front().height, shown.points.front().height};
    for (const SectionPoint& point : shown.points) {
        all.from = std::min(all.from, point.offset);
        all.to = std::max(all.to, point.offset);
        all.low = std::min(all.low, point.height);
        all.high = std::max(all.high, point.height);
    }
    return all;
}

void CrossSectionView::paintSection(QPainter& painter) {
    const Inks colours = inks();
    const CrossSection& shown = *section();
    paintHeights(painter, colours);
    painter.setPen(colours.ink);
    QFont bold = font();
    bold.setBold(true);
    painter.setFont(bold);
    const auto centre = std::min_element(shown.points.begin(), shown.points.end(), [](const auto& a, const auto& b) {
        return std::abs(a.offset) < std::abs(b.offset);
    });
    painter.drawText(QPointF(8.0, 18.0), title() + QStringLiteral("   ") +
                                             workText(texts_, WorkText::CentreHeight).arg(metres(centre->height)));
    painter.setFont(font());
    const double rowHeight = bandRowHeight(0);
    for (int row = 0; row < 2; ++row) {
        const double y = frame_.bottom + row * rowHeight;
        painter.drawLine(QPointF(4.0, y + rowHeight), QPointF(frame_.right, y + rowHeight));
        painter.drawText(QRectF(4.0, y, frame_.left - 10.0, rowHeight), static_cast<int>(Qt::AlignCenter),
                         row == 0 ? texts_(Text::Height) : texts_(Text::MeasureOffset));
    }
    painter.save();
    painter.setClipRect(QRectF(frame_.left, frame_.top, frame_.right - frame_.left, height() - frame_.top));
    painter.setPen(QPen(colours.curve, 1.0, Qt::DashDotLine));
    painter.drawLine(QPointF(frame_.x(0.0), frame_.top), QPointF(frame_.x(0.0), frame_.bottom));
    QPolygonF line;
    const double column = painter.fontMetrics().height();
    double before = -column;
    for (const SectionPoint& point : shown.points) {
        const QPointF at(frame_.x(point.offset), frame_.y(point.height));
        line.append(at);
        painter.setPen(QPen(colours.faint, 1.0));
        painter.drawLine(at, QPointF(at.x(), frame_.bottom));
        if (at.x() - before < column) {
            continue; // no room for its figures at this scale
        }
        before = at.x();
        painter.setPen(colours.ink);
        paintUpright(painter, {at.x(), frame_.bottom + rowHeight - 4.0}, metres(point.height));
        paintUpright(painter, {at.x(), frame_.bottom + 2.0 * rowHeight - 4.0}, metres(point.offset));
    }
    painter.setPen(QPen(colours.ground, 2.0));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(line);
    painter.setBrush(colours.ground);
    for (const QPointF& at : line) {
        painter.drawEllipse(at, 2.5, 2.5);
    }
    // The point that is selected in the plan.
    if (selected_ && selected_->kind == PlanObject::Kind::Entity && model_.drawing()->isPoint(selected_->index)) {
        const host::MdGePoint3d& at = model_.drawing()->entity(selected_->index).position();
        const auto foot = model_.drawing()->geometry(*alignment_).locate({at.x, at.y});
        constexpr double kInSection = 0.01; // metres
        if (foot && std::abs(foot->station - shown.station) <= kInSection) {
            painter.setBrush(Qt::NoBrush);
            painter.setPen(QPen(colours.marked, 2.0));
            painter.drawEllipse(QPointF(frame_.x(foot->offset), frame_.y(at.z)), 6.0, 6.0);
        }
    }
    painter.restore();
}

std::optional<std::size_t> CrossSectionView::nearest(const QPointF& pixel) const {
    const CrossSection* shown = section();
    if (shown == nullptr) {
        return std::nullopt;
    }
    const auto away = [&](const SectionPoint& point) {
        return std::hypot(frame_.x(point.offset) - pixel.x(),
                          // Below the graph only the column counts.
                          pixel.y() > frame_.bottom ? 0.0 : frame_.y(point.height) - pixel.y());
    };
    const auto found = std::min_element(shown->points.begin(), shown->points.end(),
                                        [&](const auto& a, const auto& b) { return away(a) < away(b); });
    return static_cast<std::size_t>(found - shown->points.begin());
}

QString CrossSectionView::describe(std::size_t result) const {
    const SectionPoint& point = section()->points[result];
    const QString text = workText(texts_, WorkText::PointedSection).arg(metres(point.offset), metres(point.height));
    return point.name.empty() ? text : shownName(point.name) + QStringLiteral("  ") + text;
}

void CrossSectionView::choose(std::size_t result) {
    const CrossSection& shown = *section();
    emit placeChosen(static_cast<qulonglong>(*alignment_), shown.station, shown.points[result].offset,
                     shown.points[result].height);
}

QPointF CrossSectionView::pixelOf(std::size_t result) const {
    const SectionPoint& point = section()->points[result];
    return {frame_.x(point.offset), frame_.y(point.height)};
}

void CrossSectionView::step(int by) {
    if (count() == 0) {
        return;
    }
    const auto last = static_cast<std::ptrdiff_t>(count()) - 1;
    showSection(
        static_cast<std::size_t>(std::clamp(static_cast<std::ptrdiff_t>(current_) + by, std::ptrdiff_t{0}, last)));
}

} // namespace fenmark::desk
