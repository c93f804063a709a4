#include "desk/plan/plan_painter.h"

#include "desk/plan/plan_style.h"
#include "host/embedded/alignment_geometry.h"

#include <QPolygonF>

#include <algorithm>
#include <cmath>
#include <string>

namespace fenmark::desk {

using host::PlanPoint;
using host::embedded::Alignment;
using host::embedded::Drawing;
using host::embedded::Element;
using host::embedded::ElementType;
using host::embedded::EntityView;
using host::embedded::Extent;

namespace {

constexpr double kSmallPixels = 2.5;          // a figure smaller than this is one dot
constexpr std::size_t kMarkersInView = 40000; // beyond so many points each is one dot
constexpr std::size_t kLabelsInView = 400;    // beyond so many objects names are left out
constexpr double kChordPixels = 0.25;         // how far a drawn curve may lie from the true one
constexpr double kStationStep = 20.0;         // metres
constexpr double kStationLabelPixels = 46.0;  // room that a station label needs
constexpr double kLabelMarginPixels = 60.0;   // names of objects just outside still reach into the view
constexpr double kPointReachBonus = 2.0;      // pixels: points lie on top of lines, and win where both are near

bool isHidden(const PlanLook& look, const Drawing& drawing, std::string_view layer) {
    if (look.hiddenLayers.empty())
        return false;
    const std::optional<std::size_t> index = drawing.findLayer(layer);
    return index && *index < look.hiddenLayers.size() && look.hiddenLayers[*index];
}

QColor colourOf(const EntityView& entity) {
    return entity.row ? colourOfType(entity.row->type) : kInk;
}

bool isLot(const EntityView& entity) {
    return entity.row && entity.row->type == "画地";
}

QString fromUtf8(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// Sets one device pixel, where it lies in the picture.
class Dots {
  public:
    Dots(QImage& image, const ViewTransform& view, double ratio)
        : bits_(image.bits()), stride_(image.bytesPerLine()), width_(image.width()), height_(image.height()),
          view_(view), ratio_(ratio) {}

    void set(double x, double y, QRgb colour) {
        const QPointF pixel = view_.toPixel(x, y) * ratio_;
        const int column = static_cast<int>(pixel.x());
        const int row = static_cast<int>(pixel.y());
        if (column >= 0 && column < width_ && row >= 0 && row < height_)
            reinterpret_cast<QRgb*>(bits_ + row * stride_)[column] = colour;
    }

  private:
    uchar* bits_;
    qsizetype stride_;
    int width_;
    int height_;
    const ViewTransform& view_;
    double ratio_;
};

QPolygonF pixelsOf(const EntityView& entity, const ViewTransform& view) {
    QPolygonF polygon;
    polygon.reserve(static_cast<qsizetype>(entity.vertices.size()));
    for (const host::MdGePoint3d& vertex : entity.vertices)
        polygon.append(view.toPixel(vertex.x, vertex.y));
    return polygon;
}

QPolygonF pixelsOf(const Element& element, const ViewTransform& view) {
    std::vector<PlanPoint> line;
    host::embedded::appendElementLine(element, kChordPixels * view.metresPerPixel(), line);
    QPolygonF polygon;
    polygon.reserve(static_cast<qsizetype>(line.size()));
    for (const PlanPoint& point : line)
        polygon.append(view.toPixel(point.x, point.y));
    return polygon;
}

QColor colourOf(ElementType type) {
    if (type == ElementType::Arc)
        return kArc;
    return type == ElementType::Clothoid ? kClothoid : kStraight;
}

Extent elementExtent(const Element& element) {
    std::vector<PlanPoint> line;
    host::embedded::appendElementLine(element, 0.05, line);
    Extent extent;
    for (const PlanPoint& point : line)
        extent.add(point.x, point.y);
    return extent;
}

bool meet(const Extent& a, const Extent& b) {
    return a.minX <= b.maxX && b.minX <= a.maxX && a.minY <= b.maxY && b.minY <= a.maxY;
}

// Text with a halo of paper around it, so that it reads on top of lines.
void drawText(QPainter& painter, const QPointF& at, const QString& text, const QColor& colour) {
    painter.setPen(kPaper);
    for (const QPointF& shift : {QPointF(-1, 0), QPointF(1, 0), QPointF(0, -1), QPointF(0, 1)})
        painter.drawText(at + shift, text);
    painter.setPen(colour);
    painter.drawText(at, text);
}

QString elementLabel(const Element& element) {
    const QString length = QStringLiteral("L=%1").arg(element.length, 0, 'f', 3);
    if (element.type == ElementType::Arc)
        return QStringLiteral("R=%1 %2").arg(element.startRadius, 0, 'f', 3).arg(length);
    if (element.type == ElementType::Clothoid) {
        const double growth = std::abs(element.endCurvature() - element.startCurvature()) / element.length;
        return QStringLiteral("A=%1 %2").arg(std::sqrt(1.0 / growth), 0, 'f', 3).arg(length);
    }
    return length;
}

double distanceToLine(const QPolygonF& line, const QPointF& p, bool closed) {
    double nearest = INFINITY;
    const qsizetype count = line.size();
    for (qsizetype i = 0; i < count; ++i) {
        const QPointF& a = line[i];
        if (count == 1 || (i + 1 == count && !closed)) {
            nearest = std::min(nearest, std::hypot(p.x() - a.x(), p.y() - a.y()));
            continue;
        }
        const QPointF& b = line[(i + 1) % count];
        const QPointF along = b - a;
        const double square = QPointF::dotProduct(along, along);
        const double t = square > 0.0 ? std::clamp(QPointF::dotProduct(p - a, along) / square, 0.0, 1.0) : 0.0;
        const QPointF foot = a + t * along;
        nearest = std::min(nearest, std::hypot(p.x() - foot.x(), p.y() - foot.y()));
    }
    return nearest;
}

} // namespace

QImage PlanPainter::paint(const ViewTransform& view, const PlanLook& look, double ratio, const QFont& font) const {
    QImage image((view.size() * ratio).toSize().expandedTo({1, 1}), QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(kPaper);
    QPainter painter(&image);
    painter.setFont(font);
    drawn_ = 0;
    paintEntities(image, painter, view, look);
    paintAlignments(painter, view, look);
    return image;
}

void PlanPainter::paintEntities(QImage& image, QPainter& painter, const ViewTransform& view,
                                const PlanLook& look) const {
    const Extent visible = view.visible(4.0);
    const bool markers = index_.estimate(visible, kMarkersInView + 1) <= kMarkersInView;
    Dots dots(image, view, image.devicePixelRatio());
    std::vector<std::size_t> points;
    std::vector<std::size_t> labelled;
    const double smallMetres = kSmallPixels * view.metresPerPixel();
    std::string_view lastLayer;
    bool lastHidden = false;

    // Lots and lines first, so that points lie on top.
    index_.query(visible, [&](std::size_t i) {
        const EntityView entity = drawing_.entity(i);
        if (entity.layer.data() != lastLayer.data() || entity.layer.size() != lastLayer.size()) {
            lastLayer = entity.layer;
            lastHidden = isHidden(look, drawing_, entity.layer);
        }
        if (lastHidden)
            return true;
        ++drawn_;
        if (entity.isPoint()) {
            if (markers)
                points.push_back(i);
            else
                dots.set(entity.position().x, entity.position().y, colourOf(entity).rgb());
        } else {
            const Extent box = index_.boxOf(i);
            if (box.maxX - box.minX < smallMetres && box.maxY - box.minY < smallMetres) {
                dots.set(box.minX, box.minY, colourOf(entity).rgb());
                return true;
            }
            const QPolygonF pixels = pixelsOf(entity, view);
            const QColor colour = colourOf(entity);
            if (isLot(entity)) {
                painter.setPen(kLotLine);
                if (entity.closed) {
                    painter.setBrush(kLotFill);
                    painter.drawPolygon(pixels);
                } else {
                    painter.drawPolyline(pixels);
                }
            } else {
                const bool ip = entity.row && entity.row->type == "IP線";
                painter.setPen(QPen(colour, 1.0, ip ? Qt::DashDotLine : Qt::SolidLine));
                painter.setBrush(Qt::NoBrush);
                if (entity.closed)
                    painter.drawPolygon(pixels);
                else
                    painter.drawPolyline(pixels);
            }
        }
        if (look.labels && labelled.size() <= kLabelsInView && entity.row && !entity.row->name.empty())
            labelled.push_back(i);
        return true;
    });
    painter.setBrush(kPaper);
    for (const std::size_t i : points) {
        const EntityView entity = drawing_.entity(i);
        painter.setPen(colourOf(entity));
        const QPointF at = view.toPixel(entity.position().x, entity.position().y);
        painter.drawRect(QRectF(std::floor(at.x()) - 1.0, std::floor(at.y()) - 1.0, 3.0, 3.0));
    }
    if (labelled.size() > kLabelsInView)
        return;
    for (const std::size_t i : labelled) {
        const EntityView entity = drawing_.entity(i);
        const QString name = fromUtf8(entity.row->name);
        if (entity.isPoint()) {
            drawText(painter, view.toPixel(entity.position().x, entity.position().y) + QPointF(5.0, -4.0), name,
                     colourOf(entity));
        } else if (isLot(entity)) {
            const QPointF middle = pixelsOf(entity, view).boundingRect().center();
            const double width = painter.fontMetrics().horizontalAdvance(name);
            drawText(painter, middle - QPointF(width / 2.0, 0.0), name, kLotLine.darker(120));
        }
    }
}

void PlanPainter::paintAlignments(QPainter& painter, const ViewTransform& view, const PlanLook& look) const {
    const Extent visible = view.visible(kLabelMarginPixels);
    painter.setRenderHint(QPainter::Antialiasing);
    for (std::size_t a = 0; a < drawing_.alignmentCount(); ++a) {
        const Alignment& alignment = drawing_.alignment(a);
        if (isHidden(look, drawing_, alignment.layer))
            continue;
        bool any = false;
        for (const Element& element : alignment.elements) {
            if (!meet(elementExtent(element), visible))
                continue;
            any = true;
            ++drawn_;
            painter.setPen(QPen(colourOf(element.type), 2.0, Qt::SolidLine, Qt::FlatCap));
            painter.setBrush(Qt::NoBrush);
            painter.drawPolyline(pixelsOf(element, view));
        }
        if (!any)
            continue;
        if (look.stations)
            paintStations(painter, view, a);
        if (look.labels)
            paintAlignmentLabels(painter, view, a);
    }
    painter.setRenderHint(QPainter::Antialiasing, false);
}

void PlanPainter::paintStations(QPainter& painter, const ViewTransform& view, std::size_t a) const {
    const host::embedded::AlignmentGeometry& geometry = drawing_.geometry(a);
    if (kStationStep * view.pixelsPerMetre() < 4.0)
        return;
    const Extent visible = view.visible(kLabelMarginPixels);
    const double labelEvery =
        kStationStep * std::max(1.0, std::ceil(kStationLabelPixels / (kStationStep * view.pixelsPerMetre())));
    const double first = std::ceil(geometry.startStation() / kStationStep) * kStationStep;
    for (double station = first; station <= geometry.endStation() + host::embedded::kStationTolerance;
         station += kStationStep) {
        const std::optional<host::embedded::Pose> pose = geometry.poseAt(station);
        if (!pose || pose->point.x < visible.minX || pose->point.x > visible.maxX || pose->point.y < visible.minY ||
            pose->point.y > visible.maxY)
            continue;
        const QPointF at = view.toPixel(pose->point.x, pose->point.y);
        // Square to the travel; pixels run downwards.
        const QPointF square(-std::sin(pose->direction), -std::cos(pose->direction));
        painter.setPen(QPen(kInk, 1.0));
        painter.drawLine(at - 4.0 * square, at + 4.0 * square);
        if (std::abs(std::remainder(station, labelEvery)) < 1e-6)
            drawText(painter, at + 9.0 * square, QStringLiteral("No.%1").arg(std::lround(station / kStationStep)),
                     kFaintInk.darker(160));
    }
}

void PlanPainter::paintAlignmentLabels(QPainter& painter, const ViewTransform& view, std::size_t a) const {
    const Alignment& alignment = drawing_.alignment(a);
    for (const Element& element : alignment.elements) {
        painter.setPen(QPen(kInk, 1.0));
        painter.setBrush(kPaper);
        painter.drawEllipse(view.toPixel(element.start.x, element.start.y), 3.0, 3.0);
        painter.drawEllipse(view.toPixel(element.end.x, element.end.y), 3.0, 3.0);
        const QString label = elementLabel(element);
        if (element.length * view.pixelsPerMetre() < painter.fontMetrics().horizontalAdvance(label))
            continue;
        const host::embedded::Pose middle = host::embedded::poseOnElement(element, 0.5 * element.length);
        double degrees = -middle.direction * 180.0 / 3.141592653589793;
        degrees = std::remainder(degrees, 360.0);
        if (degrees > 90.0 || degrees < -90.0)
            degrees += 180.0; // never upside down
        painter.save();
        painter.translate(view.toPixel(middle.point.x, middle.point.y));
        painter.rotate(degrees);
        drawText(painter, {-painter.fontMetrics().horizontalAdvance(label) / 2.0, -6.0}, label, colourOf(element.type));
        painter.restore();
    }
    if (!alignment.elements.empty()) {
        QFont bold = painter.font();
        bold.setBold(true);
        painter.save();
        painter.setFont(bold);
        const PlanPoint& start = alignment.elements.front().start;
        drawText(painter, view.toPixel(start.x, start.y) + QPointF(8.0, 16.0), fromUtf8(alignment.name), kInk);
        painter.restore();
    }
}

void PlanPainter::paintSelected(QPainter& painter, const ViewTransform& view, const PlanObject& object) const {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    if (object.kind == PlanObject::Kind::Entity) {
        if (object.index >= drawing_.entityCount())
            return;
        const EntityView entity = drawing_.entity(object.index);
        painter.setPen(QPen(kSelection, 3.0));
        if (entity.isPoint())
            painter.drawEllipse(view.toPixel(entity.position().x, entity.position().y), 7.0, 7.0);
        else if (entity.closed)
            painter.drawPolygon(pixelsOf(entity, view));
        else
            painter.drawPolyline(pixelsOf(entity, view));
        return;
    }
    if (object.index >= drawing_.alignmentCount())
        return;
    const Alignment& alignment = drawing_.alignment(object.index);
    for (std::size_t i = 0; i < alignment.elements.size(); ++i) {
        const bool chosen = !object.element || *object.element == i;
        QColor colour = kSelection;
        colour.setAlphaF(chosen ? 0.9F : 0.35F);
        painter.setPen(QPen(colour, chosen ? 5.0 : 3.0, Qt::SolidLine, Qt::FlatCap));
        painter.drawPolyline(pixelsOf(alignment.elements[i], view));
    }
}

std::optional<PlanObject> objectAt(const Drawing& drawing, const PlanIndex& index, const ViewTransform& view,
                                   const PlanLook& look, const QPointF& pixel, double reach) {
    std::optional<PlanObject> best;
    double nearest = reach;
    Extent around;
    around.add(view.toX(pixel.x() - reach), view.toY(pixel.y() - reach));
    around.add(view.toX(pixel.x() + reach), view.toY(pixel.y() + reach));

    for (std::size_t a = 0; a < drawing.alignmentCount(); ++a) {
        const Alignment& alignment = drawing.alignment(a);
        if (isHidden(look, drawing, alignment.layer))
            continue;
        for (std::size_t e = 0; e < alignment.elements.size(); ++e) {
            if (!meet(elementExtent(alignment.elements[e]), around))
                continue;
            const double distance = distanceToLine(pixelsOf(alignment.elements[e], view), pixel, false);
            if (distance <= nearest) {
                nearest = distance;
                best = PlanObject{PlanObject::Kind::Alignment, a, e};
            }
        }
    }
    std::optional<PlanObject> within; // the lot that the pixel lies in, if nothing is nearer
    index.query(around, [&](std::size_t i) {
        const EntityView entity = drawing.entity(i);
        if (isHidden(look, drawing, entity.layer))
            return true;
        double distance = 0.0;
        if (entity.isPoint()) {
            const QPointF at = view.toPixel(entity.position().x, entity.position().y);
            distance = std::max(0.0, std::hypot(at.x() - pixel.x(), at.y() - pixel.y()) - kPointReachBonus);
        } else {
            const QPolygonF pixels = pixelsOf(entity, view);
            distance = distanceToLine(pixels, pixel, entity.closed);
            if (entity.closed && pixels.containsPoint(pixel, Qt::OddEvenFill))
                within = PlanObject{PlanObject::Kind::Entity, i, {}};
        }
        if (distance < nearest || (entity.isPoint() && distance <= nearest)) {
            nearest = distance;
            best = PlanObject{PlanObject::Kind::Entity, i, {}};
        }
        return true;
    });
    return best ? best : within;
}

Extent extentOf(const Drawing& drawing, const PlanObject& object) {
    if (object.kind == PlanObject::Kind::Entity)
        return drawing.entityExtent(object.index);
    Extent extent;
    const Alignment& alignment = drawing.alignment(object.index);
    for (std::size_t i = 0; i < alignment.elements.size(); ++i)
        if (!object.element || *object.element == i)
            extent.add(elementExtent(alignment.elements[i]));
    return extent;
}

} // namespace fenmark::desk
