// Draws what is in view of a drawing, and no more.
#include "desk/plan/plan_painter.h"

#include "desk/plan/alignment_marks.h"
#include "desk/plan/plan_furniture.h"
#include "desk/plan/plan_grid.h"
#include "desk/plan/plan_shapes.h"
#include "desk/plan/plan_style.h"
#include "desk/plan/plan_text.h"

#include <QLineF>
#include <QPen>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <unordered_set>
#include <utility>

namespace fenmark::desk {

using drawing::Alignment;
using drawing::Element;
using drawing::ElementType;
using drawing::EntityView;
using drawing::Extent;

namespace {

constexpr double kSmallPixels = 2.5;                 // a figure smaller than this is one dot
constexpr std::size_t kMarkersInView = 40000;        // beyond so many objects each point is one dot
constexpr std::size_t kLabelsInView = 2000;          // beyond so many objects names wait until the view rests
constexpr std::size_t kNamesAtRest = kMarkersInView; // and beyond so many they are left out
constexpr double kMostPainted = 40.0;                // times the view that lines and areas are painted over one another
constexpr double kPenCost = 8.0;                     // pixels of an area that take as long as one of a line
constexpr double kMostFinePixels = 2e6; // under the lines of alignments in a picture; beyond, they are thin
constexpr double kLineDistance = 1.2;   // of two lines of text, in heights of letters
constexpr double kSelectedWidth = 3.0;  // pixels
constexpr double kHoveredWidth = 2.0;

bool meet(const Extent& a, const Extent& b) {
    return a.minX <= b.maxX && b.minX <= a.maxX && a.minY <= b.maxY && b.minY <= a.maxY;
}

// Draws lines with smooth edges while a picture has time for that, and thousands that lie over each other thin.
class AlignmentPen {
  public:
    explicit AlignmentPen(QPainter& painter) : painter_(painter) { painter_.setRenderHint(QPainter::Antialiasing); }

    void draw(const QPolygonF& line, const QPen& pen) {
        for (qsizetype i = 0; i + 1 < line.size(); ++i) {
            left_ -= QLineF(line[i], line[i + 1]).length() * pen.widthF();
        }
        const bool fine = left_ >= 0.0;
        thin_ += fine ? 0 : 1;
        painter_.setRenderHint(QPainter::Antialiasing, fine);
        painter_.setPen(fine ? pen : QPen(pen.color(), 0.0));
        painter_.drawPolyline(line);
    }
    // For what is drawn behind the lines.
    std::size_t finish() {
        painter_.setRenderHint(QPainter::Antialiasing);
        return thin_;
    }

  private:
    QPainter& painter_;
    double left_ = kMostFinePixels;
    std::size_t thin_ = 0;
};

// Sets device pixels where they lie in the picture.
class Dots {
  public:
    Dots(QImage& image, const ViewTransform& view)
        : bits_(image.bits()), stride_(image.bytesPerLine()), width_(image.width()), height_(image.height()),
          view_(view), ratio_(image.devicePixelRatio()) {}

    void dot(double x, double y, QRgb colour) {
        const QPointF pixel = view_.toPixel(x, y) * ratio_;
        if (pixel.x() >= 0.0 && pixel.x() < width_ && pixel.y() >= 0.0 && pixel.y() < height_) {
            line(static_cast<int>(pixel.y()))[static_cast<int>(pixel.x())] = colour;
        }
    }
    // A small square with paper in its middle.
    void marker(double x, double y, QRgb colour) {
        const QPointF pixel = view_.toPixel(x, y) * ratio_;
        const int reach = std::max(1, static_cast<int>(std::lround(1.5 * ratio_)));
        if (!(pixel.x() > -reach && pixel.x() < width_ + reach && pixel.y() > -reach && pixel.y() < height_ + reach)) {
            return;
        }
        const int column = static_cast<int>(std::floor(pixel.x()));
        const int row = static_cast<int>(std::floor(pixel.y()));
        for (int y1 = std::max(0, row - reach); y1 <= std::min(height_ - 1, row + reach); ++y1) {
            for (int x1 = std::max(0, column - reach); x1 <= std::min(width_ - 1, column + reach); ++x1) {
                const bool edge = std::max(std::abs(y1 - row), std::abs(x1 - column)) == reach;
                line(y1)[x1] = edge ? colour : kPaper.rgb();
            }
        }
    }

  private:
    QRgb* line(int row) { return reinterpret_cast<QRgb*>(bits_ + row * stride_); }

    uchar* bits_;
    qsizetype stride_;
    int width_;
    int height_;
    const ViewTransform& view_;
    double ratio_;
};

std::vector<std::array<QRgb, kFigureStyles>> inksByLayer(const std::vector<drawing::Layer>& layers) {
    std::array<QRgb, kFigureStyles> kinds{};
    for (std::size_t i = 0; i < kFigureStyles; ++i) {
        kinds[i] = kFigureColours[i].rgb();
    }
    std::vector<std::array<QRgb, kFigureStyles>> inks(layers.size(), kinds);
    for (std::size_t i = 0; i < layers.size(); ++i) {
        if (layers[i].colour) {
            inks[i].fill(inkOf(*layers[i].colour).rgb());
        }
    }
    return inks;
}

QString nameOf(const EntityView& entity) {
    return entity.row ? shownName(entity.row->name).trimmed() : QString();
}

} // namespace

void PlanPainter::paint(QImage& image, const ViewTransform& view, const PlanLook& look, double ratio,
                        const QFont& font) {
    const QSize size = (view.size() * ratio).toSize().expandedTo({1, 1});
    if (image.size() != size || image.format() != QImage::Format_RGB32) {
        image = QImage(size, QImage::Format_RGB32);
    }
    image.setDevicePixelRatio(ratio);
    image.fill(kPaper);
    drawn_ = 0;
    inks_ = inksByLayer(drawing_.layers());
    if (underlay_) {
        QPainter painter(&image);
        underlay_(painter, view);
    }
    namesLeftOut_ = 0;
    look_ = look;
    LabelRoom& room = room_.emplace(view.size());
    for (const QRectF& place : furniturePlaces(view, font)) {
        room.block(place);
    }
    QFont gridFont = font;
    gridFont.setPointSizeF(std::max(6.0, font.pointSizeF() - 2.0));
    std::vector<GridName> named;
    if (look.grid) {
        const Grid grid = gridOf(view);
        named = gridNames(grid, view);
        QPainter painter(&image);
        paintGrid(painter, grid, view);
        for (const GridName& name : named) {
            const QFontMetricsF metrics(gridFont);
            room.block(QRectF(name.at.x(), name.at.y() - metrics.ascent(), metrics.horizontalAdvance(name.text),
                              metrics.height()));
        }
    }
    collect(view, look, image);
    thinLines(view);
    {
        QPainter painter(&image);
        paintLines(painter, view);
    }
    paintMarkers(image, view);
    QPainter painter(&image);
    QFont small = font;
    small.setPointSizeF(std::max(6.0, font.pointSizeF() - 1.0));
    painter.setFont(small);
    const std::size_t objects = lines_.size() + markers_.size();
    const bool names = look.labels && objects <= kLabelsInView;
    leftManyNames_ = look.labels && !names && objects <= kNamesAtRest;
    if (names) {
        keepFree(view, look, room);
    }
    paintAlignments(painter, view, look, room);
    if (names) {
        labelEntities(painter, view, room);
    }
    painter.setFont(gridFont);
    for (const GridName& name : named) { // over what runs through them
        drawText(painter, name.at, name.text, kFaintInk);
    }
}

QImage PlanPainter::paintManyNames(const ViewTransform& view, double ratio, const QFont& font) {
    QImage names((view.size() * ratio).toSize().expandedTo({1, 1}), QImage::Format_ARGB32_Premultiplied);
    names.setDevicePixelRatio(ratio);
    names.fill(Qt::transparent);
    if (!leftManyNames_ || !room_) {
        return names;
    }
    LabelRoom room = *room_; // so that names placed anew find the same room
    namesLeftOut_ = 0;
    keepFree(view, look_, room);
    QPainter painter(&names);
    QFont small = font;
    small.setPointSizeF(std::max(6.0, font.pointSizeF() - 1.0));
    painter.setFont(small);
    labelEntities(painter, view, room);
    return names;
}

// Sorts what is in view into lines and markers, and draws at once what is no larger than a dot.
void PlanPainter::collect(const ViewTransform& view, const PlanLook& look, QImage& image) {
    lines_.clear();
    markers_.clear();
    const Extent visible = view.visible(4.0);
    const bool markers = index_.count(visible, kMarkersInView + 1) <= kMarkersInView;
    // The index's rounded boxes place a dot well enough where their rounding is below a pixel.
    const bool exact = index_.roundingMetres() > 0.25 * view.metresPerPixel();
    const auto small = static_cast<float>(kSmallPixels * view.metresPerPixel());
    Dots dots(image, view);
    index_.query(visible, [&](const PlanFigure& figure) {
        if (look.hides(figure) || figure.entity >= drawing_.entityCount() || figure.layer >= inks_.size()) {
            return true;
        }
        ++drawn_;
        if (figure.isPoint() && markers) {
            markers_.push_back(figure);
        } else if (figure.isPoint() && exact) {
            const host::MdGePoint3d& at = drawing_.entity(figure.entity).position();
            dots.dot(at.x, at.y, inkOf(figure));
        } else if (figure.isPoint() ||
                   (figure.box.maxX - figure.box.minX < small && figure.box.maxY - figure.box.minY < small)) {
            dots.dot(index_.middleX(figure), index_.middleY(figure), inkOf(figure));
        } else {
            lines_.push_back(figure);
        }
        return true;
    });
    auto older = [](const PlanFigure& a, const PlanFigure& b) { return a.entity < b.entity; };
    std::sort(lines_.begin(), lines_.end(), older);
    std::sort(markers_.begin(), markers_.end(), older);
}

// Of lines and areas that lie over one another in heaps those go that a picture has no time for: the oldest, which the
// newer ones hide for the most part, and those that cover the same pixels as a newer one.
void PlanPainter::thinLines(const ViewTransform& view) {
    linesLeftOut_ = 0;
    const double width = view.size().width();
    const double height = view.size().height();
    const auto cost = [&](const PlanFigure& figure) {
        const double across =
            std::min(width, static_cast<double>(figure.box.maxX - figure.box.minX) * view.pixelsPerMetre());
        const double up =
            std::min(height, static_cast<double>(figure.box.maxY - figure.box.minY) * view.pixelsPerMetre());
        return (figure.figureStyle() == FigureStyle::Lot ? across * up : 0.0) + kPenCost * (across + up);
    };
    double left = kMostPainted * width * height;
    double whole = 0.0;
    for (const PlanFigure& figure : lines_) {
        whole += cost(figure);
    }
    if (whole <= left) {
        return;
    }
    std::unordered_set<std::uint64_t> seen;
    std::vector<PlanFigure> kept;
    for (auto figure = lines_.rbegin(); figure != lines_.rend(); ++figure) {
        const double needs = cost(*figure);
        if (needs > left) {
            ++linesLeftOut_;
            continue;
        }
        std::uint64_t outline = inkOf(*figure) * 16U + figure->style;
        for (const QPointF& pixel : pixelsOf(drawing_.entity(figure->entity).vertices, view)) {
            for (const double part : {pixel.x(), pixel.y()}) {
                outline = (outline ^ static_cast<std::uint64_t>(
                                         static_cast<std::int64_t>(std::clamp(std::round(part), -1e15, 1e15)))) *
                          0x100000001B3U; // FNV-1a
            }
        }
        if (seen.insert(outline).second) {
            left -= needs;
            kept.push_back(*figure);
        }
    }
    std::reverse(kept.begin(), kept.end());
    lines_ = std::move(kept);
}

void PlanPainter::paintLines(QPainter& painter, const ViewTransform& view) const {
    const QRectF clip = clipOf(view);
    auto stroke = [&](const EntityView& entity, const QPolygonF& pixels, bool inside) {
        if (inside) {
            if (entity.closed) {
                painter.drawPolygon(pixels);
            } else {
                painter.drawPolyline(pixels);
            }
            return;
        }
        for (const QPolygonF& part : clippedLine(pixels, entity.closed, clip)) {
            painter.drawPolyline(part);
        }
    };
    FigureStyle last = FigureStyle::Coordinate; // none of the lines
    QRgb lastInk = 0;
    for (const PlanFigure& figure : lines_) {
        const EntityView entity = drawing_.entity(figure.entity);
        const FigureStyle style = figure.figureStyle();
        const QRgb ink = inkOf(figure);
        if (style != last || ink != lastInk) {
            last = style;
            lastInk = ink;
            painter.setPen(QPen(QColor(ink), 0.0, style == FigureStyle::IpLine ? Qt::DashDotLine : Qt::SolidLine));
        }
        const QPolygonF pixels = pixelsOf(entity.vertices, view);
        const QRectF around = pixels.boundingRect();
        const bool inside = clip.contains(around);
        if (style == FigureStyle::Lot && entity.closed) {
            painter.setBrush(kLotFill);
            if (inside) {
                painter.drawPolygon(pixels);
                continue;
            }
            const QPen pen = painter.pen();
            painter.setPen(Qt::NoPen);
            painter.drawPolygon(clippedArea(pixels, clip));
            painter.setPen(pen);
        }
        painter.setBrush(Qt::NoBrush);
        stroke(entity, pixels, inside);
    }
}

QColor PlanPainter::inkOf(const Alignment& alignment, ElementType type) const {
    const std::optional<std::size_t> layer = drawing_.findLayer(alignment.layer);
    const bool coloured = layer && drawing_.layers()[*layer].colour;
    return coloured ? QColor(inks_[*layer].front()) : colourOf(type);
}

void PlanPainter::paintMarkers(QImage& image, const ViewTransform& view) const {
    Dots dots(image, view);
    for (const PlanFigure& figure : markers_) {
        const host::MdGePoint3d& at = drawing_.entity(figure.entity).position();
        dots.marker(at.x, at.y, inkOf(figure));
    }
}

void PlanPainter::paintAlignments(QPainter& painter, const ViewTransform& view, const PlanLook& look, LabelRoom& room) {
    const Extent visible = view.visible(kLabelMarginPixels);
    const QRectF clip = clipOf(view);
    std::vector<std::size_t> seen;
    CurveBudget budget;
    AlignmentPen alignmentPen(painter);
    for (std::size_t a = 0; a < std::min(index_.alignmentCount(), drawing_.alignmentCount()); ++a) {
        const Alignment& alignment = drawing_.alignment(a);
        if (!meet(index_.alignmentExtent(a), visible) || isHidden(look, drawing_, alignment.layer)) {
            continue;
        }
        seen.push_back(a);
        for (std::size_t e = 0; e < std::min(index_.elementCount(a), alignment.elements.size()); ++e) {
            const Element& element = alignment.elements[e];
            if (!meet(index_.elementExtent(a, e), visible) || look.hides(element.type)) {
                continue;
            }
            ++drawn_;
            const QPen pen(inkOf(alignment, element.type), 2.0, Qt::SolidLine, Qt::FlatCap);
            for (const QPolygonF& part : elementPixels(element, view, clip, budget)) {
                alignmentPen.draw(part, pen);
            }
        }
    }
    linesDrawnThin_ = alignmentPen.finish();
    int ends = kMostEndsOfAPicture;
    for (const std::size_t a : seen) {
        drawElementEnds(painter, view, drawing_.alignment(a), ends);
        if (look.labels) {
            nameAlignment(painter, view, drawing_.alignment(a), room);
            labelElements(painter, view, drawing_.alignment(a), room,
                          [&](ElementType type) { return inkOf(drawing_.alignment(a), type); });
        }
    }
    if (look.stations) {
        int stations = kMostStationsOfAPicture;
        for (const std::size_t a : alignmentsToName(seen, look)) {
            paintStations(painter, view, drawing_.geometry(a), room, look.labels, stations);
        }
    }
    painter.setRenderHint(QPainter::Antialiasing, false);
}

// Names stand beside symbols and lines, not on them.
void PlanPainter::keepFree(const ViewTransform& view, const PlanLook& look, LabelRoom& room) const {
    constexpr double kSymbol = 2.0; // pixels around a point
    const QRectF clip = clipOf(view);
    const auto block = [&](const QPolygonF& line) {
        for (qsizetype i = 0; i + 1 < line.size(); ++i) {
            room.blockLine(line[i], line[i + 1]);
        }
    };
    for (const PlanFigure& figure : markers_) {
        const host::MdGePoint3d& at = drawing_.entity(figure.entity).position();
        const QPointF pixel = view.toPixel(at.x, at.y);
        room.block(QRectF(pixel.x() - kSymbol, pixel.y() - kSymbol, 2.0 * kSymbol, 2.0 * kSymbol));
    }
    for (const PlanFigure& figure : lines_) {
        const EntityView entity = drawing_.entity(figure.entity);
        for (const QPolygonF& part : clippedLine(pixelsOf(entity.vertices, view), entity.closed, clip)) {
            block(part);
        }
    }
    const Extent visible = view.visible(kLabelMarginPixels);
    CurveBudget budget; // as where they are painted, so that the lines are the same
    for (std::size_t a = 0; a < std::min(index_.alignmentCount(), drawing_.alignmentCount()); ++a) {
        const Alignment& alignment = drawing_.alignment(a);
        if (!meet(index_.alignmentExtent(a), visible) || isHidden(look, drawing_, alignment.layer)) {
            continue;
        }
        for (std::size_t e = 0; e < std::min(index_.elementCount(a), alignment.elements.size()); ++e) {
            if (meet(index_.elementExtent(a, e), visible) && !look.hides(alignment.elements[e].type)) {
                for (const QPolygonF& part : elementPixels(alignment.elements[e], view, clip, budget)) {
                    block(part);
                }
            }
        }
    }
}

std::vector<std::size_t> PlanPainter::alignmentsToName(const std::vector<std::size_t>& seen,
                                                       const PlanLook& look) const {
    constexpr double kOneLine = 1.0;       // metres: alignments nearer than that are one line on the plan
    constexpr std::size_t kMostTried = 64; // more are all named
    std::vector<std::size_t> named;
    const auto runsOn = [&](std::size_t a, std::size_t other) {
        const drawing::AlignmentGeometry& geometry = drawing_.geometry(a);
        const double length = geometry.endStation() - geometry.startStation();
        for (const double part : {0.25, 0.5, 0.75}) {
            const auto pose = geometry.poseAt(geometry.startStation() + part * length);
            if (!pose || !drawing_.geometry(other).locateWithin(pose->point, kOneLine)) {
                return false;
            }
        }
        return true;
    };
    // The chosen one goes first, so that it is the one that is named.
    std::vector<std::size_t> order = seen;
    if (look.stationsOf) {
        std::stable_partition(order.begin(), order.end(), [&](std::size_t a) { return a == *look.stationsOf; });
    }
    for (const std::size_t a : order) {
        if (drawing_.alignment(a).elements.empty()) {
            continue;
        }
        const bool covered = order.size() <= kMostTried &&
                             std::any_of(named.begin(), named.end(), [&](std::size_t b) { return runsOn(a, b); });
        if (!covered) {
            named.push_back(a);
        }
    }
    return named;
}

void PlanPainter::labelLots(QPainter& painter, const ViewTransform& view, LabelRoom& room) {
    const QFontMetricsF metrics(painter.font());
    const double height = metrics.ascent();
    for (const PlanFigure& figure : lines_) {
        if (figure.figureStyle() != FigureStyle::Lot) {
            continue;
        }
        const EntityView entity = drawing_.entity(figure.entity);
        const QString text = nameOf(entity);
        const QRectF around = text.isEmpty() ? QRectF() : pixelsOf(entity.vertices, view).boundingRect();
        // A letter is at least a third as wide as it is high: most of many lots are too small, and need no measuring.
        if (text.isEmpty() || static_cast<double>(text.size()) * height / 3.0 >= around.width()) {
            continue;
        }
        const double width = metrics.horizontalAdvance(text);
        if (width >= around.width()) {
            continue;
        }
        ++namesLeftOut_; // until there is a place
        // Names of lots side by side may need to stand on different lines.
        for (const double lines : {0.0, -1.0, 1.0}) {
            const double shift = lines * kLineDistance * height;
            const QPointF at = around.center() + QPointF(-width / 2.0, height / 2.0 + shift);
            if (2.0 * std::abs(shift) + height >= around.height() ||
                !room.take(QRectF(at.x(), at.y() - height, width, height))) {
                continue;
            }
            drawText(painter, at, text, QColor(inkOf(figure)));
            --namesLeftOut_;
            break;
        }
    }
}

void PlanPainter::labelEntities(QPainter& painter, const ViewTransform& view, LabelRoom& room) {
    labelLots(painter, view, room);
    const QFontMetricsF metrics(painter.font());
    const double height = metrics.ascent();
    const QRectF seen(QPointF(0.0, 0.0), view.size());
    // Where a name of that width may stand around its point, the best place first.
    const auto placesFor = [height](const QPointF& pixel, double width) {
        const double half = 0.5 * height;
        std::array<QRectF, 12> places;
        std::size_t count = 0;
        for (const QPointF& shift :
             {QPointF(6.0, -4.0), QPointF(6.0, height + 3.0), QPointF(-6.0 - width, -4.0),
              QPointF(-6.0 - width, height + 3.0), QPointF(8.0, half - 1.0), QPointF(-8.0 - width, half - 1.0),
              QPointF(-0.5 * width, -8.0), QPointF(-0.5 * width, height + 8.0), QPointF(12.0, -height - 6.0),
              QPointF(12.0, 2.0 * height + 8.0), QPointF(-12.0 - width, -height - 6.0),
              QPointF(-12.0 - width, 2.0 * height + 8.0)}) {
            const QPointF at = pixel + shift;
            places[count++] = QRectF(at.x(), at.y() - height, width, height);
        }
        return places;
    };
    for (const PlanFigure& figure : markers_) {
        const EntityView entity = drawing_.entity(figure.entity);
        const QPointF pixel = view.toPixel(entity.position().x, entity.position().y);
        if (!entity.row || !seen.contains(pixel)) {
            continue;
        }
        const QString text = nameOf(entity);
        if (text.isEmpty()) {
            continue;
        }
        ++namesLeftOut_;
        // Where not even a narrow name has room, this one has none, and need not be measured.
        const auto narrow = placesFor(pixel, 1.0);
        if (std::none_of(narrow.begin(), narrow.end(), [&](const QRectF& place) { return room.isFree(place); })) {
            continue;
        }
        for (const QRectF& place : placesFor(pixel, metrics.horizontalAdvance(text))) {
            if (room.take(place)) {
                drawText(painter, place.bottomLeft(), text, QColor(inkOf(figure)));
                --namesLeftOut_;
                break;
            }
        }
    }
}

void PlanPainter::paintSelected(QPainter& painter, const ViewTransform& view, const PlanObject& object) const {
    paintMarked(painter, view, object, kSelection, kSelectedWidth);
}

void PlanPainter::paintHovered(QPainter& painter, const ViewTransform& view, const PlanObject& object) const {
    paintMarked(painter, view, object, kHover, kHoveredWidth);
}

void PlanPainter::paintMarked(QPainter& painter, const ViewTransform& view, const PlanObject& object,
                              const QColor& mark, double width) const {
    if (!exists(drawing_, object)) {
        return;
    }
    const QRectF clip = clipOf(view);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    if (object.kind == PlanObject::Kind::Entity) {
        const EntityView entity = drawing_.entity(object.index);
        painter.setPen(QPen(mark, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        if (entity.isPoint()) {
            painter.drawEllipse(view.toPixel(entity.position().x, entity.position().y), 7.0, 7.0);
            return;
        }
        const QPolygonF pixels = pixelsOf(entity.vertices, view);
        if (entity.closed) {
            QColor fill = mark;
            fill.setAlphaF(0.15F);
            painter.setBrush(fill);
            painter.setPen(Qt::NoPen);
            painter.drawPolygon(clippedArea(pixels, clip));
            painter.setPen(QPen(mark, width));
        }
        for (const QPolygonF& part : clippedLine(pixels, entity.closed, clip)) {
            painter.drawPolyline(part);
        }
        return;
    }
    const Alignment& alignment = drawing_.alignment(object.index);
    CurveBudget budget;
    AlignmentPen alignmentPen(painter);
    for (std::size_t i = 0; i < alignment.elements.size(); ++i) {
        const bool chosen = !object.element || *object.element == i;
        QColor colour = mark;
        colour.setAlphaF(chosen ? 0.9F : 0.35F);
        const QPen pen(colour, chosen ? width + 2.0 : width, Qt::SolidLine, Qt::FlatCap);
        for (const QPolygonF& part : elementPixels(alignment.elements[i], view, clip, budget)) {
            alignmentPen.draw(part, pen);
        }
    }
    alignmentPen.finish();
}

} // namespace fenmark::desk
