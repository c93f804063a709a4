// What there is to say of an object of the drawing, line by line.
#include "desk/window/properties.h"

#include "desk/plan/plan_text.h"
#include "exchange/plan/plan_geometry.h"

#include <array>
#include <cmath>
#include <map>

namespace fenmark::desk {

using drawing::Alignment;
using drawing::Drawing;
using drawing::Element;
using drawing::ElementType;
using drawing::EntityView;
using drawing::Extent;

namespace {

constexpr double kPi = 3.141592653589793;

class Sheet {
  public:
    Sheet(const Texts& texts, std::vector<Property>& lines) : texts_(texts), lines_(lines) {}

    void heading(const QString& text) { lines_.push_back({text, {}, true}); }
    void add(Text name, const QString& value) { lines_.push_back({texts_(name), value, false}); }
    void add(const QString& name, const QString& value) { lines_.push_back({name, value, false}); }
    // Breaks between the coordinates in a narrow panel, not within them.
    void place(Text name, double x, double y) {
        add(name, QStringLiteral("X\u00A0%1 Y\u00A0%2").arg(metres(y), metres(x)));
    }
    QString text(Text text) const { return texts_(text); }
    const Texts& texts() const { return texts_; }

  private:
    const Texts& texts_;
    std::vector<Property>& lines_;
};

double lengthOf(const EntityView& entity) {
    double length = 0.0;
    const std::size_t count = entity.vertices.size();
    for (std::size_t i = 0; i + 1 < count + (entity.closed && count > 2 ? 1 : 0); ++i) {
        const host::MdGePoint3d& a = entity.vertices[i];
        const host::MdGePoint3d& b = entity.vertices[(i + 1) % count];
        length += std::hypot(b.x - a.x, b.y - a.y);
    }
    return length;
}

void addEntity(Sheet& sheet, const Drawing& drawing, std::size_t index) {
    const EntityView entity = drawing.entity(index);
    sheet.heading(sheet.text(entity.isPoint() ? Text::Point : entity.closed ? Text::ClosedPolyline : Text::Polyline));
    sheet.add(Text::Identifier, QString::number(entity.id.asUint64()));
    sheet.add(Text::Layer, shownName(entity.layer));
    if (entity.isPoint()) {
        sheet.add(Text::CoordinateX, metres(entity.position().y));
        sheet.add(Text::CoordinateY, metres(entity.position().x));
        sheet.add(Text::Height, metres(entity.position().z));
    } else {
        sheet.add(Text::Vertices, QString::number(entity.vertices.size()));
        sheet.add(entity.closed ? Text::Perimeter : Text::Length, metres(lengthOf(entity)) + QStringLiteral(" m"));
        if (entity.closed) {
            sheet.add(Text::Area, metres(std::abs(exchange::signedArea(entity.vertices))) + QStringLiteral(" m²"));
        }
    }
    if (!entity.row) {
        sheet.heading(sheet.text(Text::Table) + QLatin1Char(' ') + sheet.text(Text::NoRow));
        return;
    }
    sheet.heading(sheet.text(Text::Table) + QStringLiteral(": ") + shownName(entity.row->table));
    sheet.add(Text::RowNo, QString::number(entity.row->no));
    sheet.add(Text::RowName, shownName(entity.row->name));
    sheet.add(Text::RowType, shownName(entity.row->type));
    sheet.add(Text::RowFile, shownName(entity.row->fileName));
}

void addAlignment(Sheet& sheet, const Drawing& drawing, const Alignment& alignment) {
    sheet.heading(sheet.text(Text::Alignment));
    sheet.add(Text::ColumnName, shownName(alignment.name));
    sheet.add(Text::Identifier, QString::number(alignment.id.asUint64()));
    if (const auto site = drawing.findSite(alignment.site)) {
        sheet.add(Text::Site, shownName(drawing.sites()[*site].name));
    }
    sheet.add(Text::Layer, shownName(alignment.layer));
    if (!alignment.description.empty()) {
        sheet.add(Text::Description, shownName(alignment.description));
    }
    sheet.add(Text::Length, metres(alignment.length()) + QStringLiteral(" m"));
    sheet.add(Text::StartStation, metres(alignment.startStation));
    sheet.add(Text::EndStation, metres(alignment.startStation + alignment.length()));
    sheet.add(Text::Elements, QString::number(alignment.elements.size()));
}

void addElement(Sheet& sheet, const Alignment& alignment, std::size_t index) {
    const Element& element = alignment.elements[index];
    double station = alignment.startStation;
    for (std::size_t i = 0; i < index; ++i) {
        station += alignment.elements[i].length;
    }
    auto radius = [&](double value) {
        return std::isinf(value) ? sheet.text(Text::Infinite) : metres(value) + QStringLiteral(" m");
    };
    sheet.heading(QStringLiteral("%1 %2: %3")
                      .arg(sheet.text(Text::Element))
                      .arg(index + 1)
                      .arg(elementName(element, sheet.texts())));
    sheet.add(Text::ColumnStation, QStringLiteral("%1 (%2)").arg(metres(station), stakeName(station)));
    sheet.add(Text::Length, metres(element.length) + QStringLiteral(" m"));
    if (element.type == ElementType::Arc) {
        sheet.add(Text::Radius, radius(element.startRadius));
    } else if (element.type == ElementType::Clothoid) {
        sheet.add(Text::Parameter, radiusText(element, sheet.texts()).mid(2));
        sheet.add(Text::StartRadius, radius(element.startRadius));
        sheet.add(Text::EndRadius, radius(element.endRadius));
    }
    if (element.type != ElementType::Straight) {
        sheet.add(Text::Turns, sheet.text(element.clockwise ? Text::Right : Text::Left));
    }
    sheet.place(Text::StartPoint, element.start.x, element.start.y);
    sheet.place(Text::EndPoint, element.end.x, element.end.y);
    sheet.add(Text::StartDirection, azimuthText(element.direction));
    if (element.type == ElementType::Arc) {
        sheet.place(Text::Centre, element.centre().x, element.centre().y);
    }
    if (element.type != ElementType::Straight) {
        if (const auto pi = element.pi()) {
            sheet.place(Text::PointOfIntersection, pi->x, pi->y);
        }
    }
}

void addDrawing(Sheet& sheet, const Drawing& drawing) {
    std::size_t points = 0;
    for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
        points += drawing.entity(i).isPoint() ? 1 : 0;
    }
    sheet.heading(sheet.text(Text::Drawing));
    sheet.add(Text::Points, QString::number(points));
    sheet.add(Text::Polylines, QString::number(drawing.entityCount() - points));
    sheet.add(Text::Alignments, QString::number(drawing.alignmentCount()));
    sheet.add(Text::Sites, QString::number(drawing.sites().size()));
    sheet.add(Text::Layers, QString::number(drawing.layers().size()));
    sheet.add(Text::ZoneShort,
              drawing.zone() == 0 ? sheet.text(Text::NoZone) : sheet.text(Text::ZoneNumber).arg(drawing.zone()));
    const Extent& extent = drawing.extent();
    if (extent.empty()) {
        return;
    }
    sheet.add(Text::ExtentNorth, QStringLiteral("%1 … %2").arg(metres(extent.minY), metres(extent.maxY)));
    sheet.add(Text::ExtentEast, QStringLiteral("%1 … %2").arg(metres(extent.minX), metres(extent.maxX)));
}

} // namespace

QString metres(double value) {
    const QString text = QString::number(value, 'f', 3);
    return text == QStringLiteral("-0.000") ? QStringLiteral("0.000") : text;
}

QString azimuthText(double direction) {
    double degrees = std::fmod(90.0 - direction * 180.0 / kPi, 360.0);
    if (degrees < 0.0) {
        degrees += 360.0;
    }
    auto hundredths = std::llround(degrees * 360000.0) % (360LL * 360000LL);
    const long long whole = hundredths / 360000;
    hundredths %= 360000;
    return QStringLiteral("%1°%2'%3.%4\"")
        .arg(whole)
        .arg(hundredths / 6000, 2, 10, QLatin1Char('0'))
        .arg(hundredths % 6000 / 100, 2, 10, QLatin1Char('0'))
        .arg(hundredths % 100, 2, 10, QLatin1Char('0'));
}

QString elementName(const Element& element, const Texts& texts) {
    if (element.type == ElementType::Arc) {
        return texts(Text::Arc);
    }
    return texts(element.type == ElementType::Clothoid ? Text::Clothoid : Text::Straight);
}

QString radiusText(const Element& element, const Texts& texts) {
    if (element.type == ElementType::Arc) {
        return QStringLiteral("R ") + metres(element.startRadius);
    }
    if (element.type == ElementType::Clothoid) {
        const double growth = std::abs(element.endCurvature() - element.startCurvature()) / element.length;
        return QStringLiteral("A ") + metres(std::sqrt(1.0 / growth));
    }
    return texts(Text::Infinite);
}

QString objectTitle(const Drawing& drawing, const PlanObject& object, const Texts& texts) {
    if (object.kind == PlanObject::Kind::Alignment) {
        const Alignment& alignment = drawing.alignment(object.index);
        const QString kind = object.element ? elementName(alignment.elements[*object.element], texts) +
                                                  QStringLiteral(" %1").arg(*object.element + 1)
                                            : texts(Text::Alignment);
        return QStringLiteral("%1 (%2)").arg(shownName(alignment.name).trimmed(), kind);
    }
    const EntityView entity = drawing.entity(object.index);
    if (!entity.row) {
        return texts(entity.isPoint() ? Text::Point : entity.closed ? Text::ClosedPolyline : Text::Polyline);
    }
    return QStringLiteral("%1 (%2)").arg(shownName(entity.row->name).trimmed(), shownName(entity.row->type));
}

QString kindName(const Drawing& drawing, const PlanObject& object, const Texts& texts) {
    if (object.kind == PlanObject::Kind::Alignment) {
        return object.element ? elementName(drawing.alignment(object.index).elements[*object.element], texts)
                              : texts(Text::Alignment);
    }
    return texts(nameOf(styleOf(drawing.entity(object.index))));
}

QString spokenText(const Drawing& drawing, const PlanObject& object, const Texts& texts) {
    double x = 0.0;
    double y = 0.0;
    if (object.kind == PlanObject::Kind::Entity) {
        const EntityView entity = drawing.entity(object.index);
        if (!entity.vertices.empty()) {
            x = entity.vertices.front().x;
            y = entity.vertices.front().y;
        }
    } else if (const Alignment& alignment = drawing.alignment(object.index); !alignment.elements.empty()) {
        const Element& element = alignment.elements[object.element.value_or(0)];
        x = element.start.x;
        y = element.start.y;
    }
    return QStringLiteral("%1, X %2, Y %3").arg(objectTitle(drawing, object, texts), metres(y), metres(x));
}

std::vector<Property> propertiesOf(const Drawing& drawing, const std::vector<PlanObject>& objects, const Texts& texts) {
    std::map<QString, std::size_t> counts;
    for (const PlanObject& object : objects) {
        ++counts[kindName(drawing, object, texts)];
    }
    std::vector<Property> lines;
    lines.push_back({texts(Text::SeveralSelected).arg(objects.size()), {}, true});
    for (const auto& [kind, count] : counts) {
        lines.push_back({kind, QString::number(count), false});
    }
    return lines;
}

std::vector<Property> propertiesOf(const Drawing& drawing, const std::optional<PlanObject>& object,
                                   const Texts& texts) {
    std::vector<Property> lines;
    Sheet sheet(texts, lines);
    if (!object || !exists(drawing, *object)) {
        addDrawing(sheet, drawing);
    } else if (object->kind == PlanObject::Kind::Entity) {
        addEntity(sheet, drawing, object->index);
    } else {
        const Alignment& alignment = drawing.alignment(object->index);
        if (object->element) {
            addElement(sheet, alignment, *object->element);
        }
        addAlignment(sheet, drawing, alignment);
    }
    return lines;
}

} // namespace fenmark::desk
