// A drawing as LandXML 1.2.
#include "exchange/landxml.h"

#include "exchange/placed.h"
#include "exchange/plan_geometry.h"

#include <array>
#include <cmath>
#include <ctime>

namespace fenmark::exchange {

using drawing::Drawing;
using drawing::Element;
using drawing::ElementType;
using drawing::EntityView;
using host::PlanPoint;

namespace {

// North, then east.
void writePoint(std::ostream& out, const char* element, double x, double y) {
    out << '<' << element << '>' << PlainReal{y} << ' ' << PlainReal{x} << "</" << element << '>';
}

void writePoint(std::ostream& out, const char* element, const PlanPoint& point) {
    writePoint(out, element, point.x, point.y);
}

void writeRadius(std::ostream& out, double radius) {
    if (std::isfinite(radius)) {
        out << PlainReal{radius};
    } else {
        out << "INF";
    }
}

// The format wants a PI for every spiral. One that turns by half a circle has none; its middle stands there instead.
PlanPoint piOf(const Element& element) {
    if (const auto pi = element.pi()) {
        return *pi;
    }
    return {(element.start.x + element.end.x) / 2.0, (element.start.y + element.end.y) / 2.0};
}

void writeElement(std::ostream& out, const Element& element, double station) {
    const char* rotation = element.clockwise ? "cw" : "ccw";
    const char* closing = "Line";
    switch (element.type) {
    case ElementType::Straight:
        out << "        <Line";
        break;
    case ElementType::Arc:
        closing = "Curve";
        out << "        <Curve rot=\"" << rotation << "\" crvType=\"arc\" radius=\"" << PlainReal{element.startRadius}
            << '"';
        break;
    case ElementType::Clothoid:
        closing = "Spiral";
        out << "        <Spiral rot=\"" << rotation << "\" spiType=\"clothoid\" radiusStart=\"";
        writeRadius(out, element.startRadius);
        out << "\" radiusEnd=\"";
        writeRadius(out, element.endRadius);
        out << "\" constant=\""
            << PlainReal{std::sqrt(element.length / std::abs(element.endCurvature() - element.startCurvature()))}
            << '"';
        break;
    }
    out << " length=\"" << PlainReal{element.length} << "\" staStart=\"" << PlainReal{station} << "\">";
    writePoint(out, "Start", element.start);
    if (element.type == ElementType::Arc) {
        writePoint(out, "Center", element.centre());
    }
    if (element.type == ElementType::Clothoid) {
        writePoint(out, "PI", piOf(element));
    }
    writePoint(out, "End", element.end);
    out << "</" << closing << ">\n";
}

void writeAlignments(std::ostream& out, const Drawing& drawing, Unplaced& unplaced) {
    UniqueNames names;
    bool open = false;
    for (std::size_t i = 0; i < drawing.alignmentCount(); ++i) {
        const drawing::Alignment& alignment = drawing.alignment(i);
        if (alignment.elements.empty() || !unplaced.look(alignment)) {
            continue;
        }
        if (!open) {
            out << "  <Alignments>\n";
        }
        open = true;
        out << "    <Alignment name=\"" << xmlText(names.take(alignment.name)) << "\" desc=\""
            << xmlText(alignment.description) << "\" length=\"" << PlainReal{alignment.length()} << "\" staStart=\""
            << PlainReal{alignment.startStation} << "\">\n      <CoordGeom>\n";
        double station = alignment.startStation;
        for (const Element& element : alignment.elements) {
            writeElement(out, element, station);
            station += element.length;
        }
        out << "      </CoordGeom>\n    </Alignment>\n";
    }
    if (open) {
        out << "  </Alignments>\n";
    }
}

std::string nameOf(const EntityView& entity) {
    if (entity.row && !entity.row->name.empty()) {
        return std::string(entity.row->name);
    }
    return std::to_string(entity.id.asUint64());
}

void writeAttributes(std::ostream& out, UniqueNames& names, const EntityView& entity) {
    out << " name=\"" << xmlText(names.take(nameOf(entity))) << '"';
    if (entity.row) {
        out << " desc=\"" << xmlText(entity.row->type) << '"';
    }
}

void writeRing(std::ostream& out, const EntityView& entity) {
    const auto& vertices = entity.vertices;
    const std::size_t sides = entity.closed ? vertices.size() : vertices.size() - 1;
    out << "      <CoordGeom>\n";
    for (std::size_t i = 0; i < sides; ++i) {
        const auto& end = vertices[(i + 1) % vertices.size()];
        out << "        <Line>";
        writePoint(out, "Start", vertices[i].x, vertices[i].y);
        writePoint(out, "End", end.x, end.y);
        out << "</Line>\n";
    }
    out << "      </CoordGeom>\n";
}

bool isParcel(const EntityView& entity) {
    return !entity.isPoint() && entity.closed && entity.vertices.size() >= 3;
}

bool isPlanFeature(const EntityView& entity) {
    return !entity.isPoint() && !isParcel(entity) && entity.vertices.size() >= 2;
}

// One group of the format: an opening tag before the first of the entities that are wanted, a closing one at the end.
template <typename Wanted, typename Write>
void writeGroup(std::ostream& out, const Drawing& drawing, const char* group, Wanted wanted, Write write) {
    bool open = false;
    UniqueNames names;
    for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
        const EntityView entity = drawing.entity(i);
        if (!wanted(entity) || !hasPlace(entity)) {
            continue;
        }
        if (!open) {
            out << "  <" << group << ">\n";
        }
        open = true;
        write(entity, names);
    }
    if (open) {
        out << "  </" << group << ">\n";
    }
}

void writeHead(std::ostream& out, const Drawing& drawing) {
    std::array<char, 16> date{};
    std::array<char, 16> time{};
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    ::gmtime_r(&now, &parts);
    std::strftime(date.data(), date.size(), "%Y-%m-%d", &parts);
    std::strftime(time.data(), time.size(), "%H:%M:%S", &parts);
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<LandXML xmlns=\"http://www.landxml.org/schema/LandXML-1.2\" version=\"1.2\" date=\""
        << date.data() << "\" time=\"" << time.data()
        << "\" language=\"Japanese\">\n"
           "  <Units><Metric areaUnit=\"squareMeter\" linearUnit=\"meter\" volumeUnit=\"cubicMeter\" "
           "temperatureUnit=\"celsius\" pressureUnit=\"HPA\"/></Units>\n";
    if (drawing.zone() != 0) {
        out << "  <CoordinateSystem name=\"JGD2011 / Japan Plane Rectangular CS zone " << drawing.zone()
            << "\" epsgCode=\"" << 6668 + drawing.zone() << "\" horizontalDatum=\"JGD2011\"/>\n";
    }
    out << "  <Application name=\"fenmark\"/>\n";
}

} // namespace

Notes writeLandXml(const Drawing& drawing, std::ostream& out) {
    writeHead(out, drawing);
    Unplaced unplaced;
    writeAlignments(out, drawing, unplaced);
    for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
        unplaced.look(drawing.entity(i));
    }
    writeGroup(
        out, drawing, "CgPoints", [](const EntityView& entity) { return entity.isPoint(); },
        [&out](const EntityView& entity, UniqueNames& names) {
            const host::MdGePoint3d& at = entity.position();
            out << "    <CgPoint";
            writeAttributes(out, names, entity);
            out << '>' << PlainReal{at.y} << ' ' << PlainReal{at.x} << ' ' << PlainReal{heightOf(entity)}
                << "</CgPoint>\n";
        });
    writeGroup(out, drawing, "Parcels", isParcel, [&out](const EntityView& entity, UniqueNames& names) {
        const PlanPoint centre = labelPoint(entity.vertices);
        out << "    <Parcel";
        writeAttributes(out, names, entity);
        out << " area=\"" << PlainReal{std::abs(signedArea(entity.vertices))} << "\">\n      ";
        writePoint(out, "Center", centre);
        out << '\n';
        writeRing(out, entity);
        out << "    </Parcel>\n";
    });
    writeGroup(out, drawing, "PlanFeatures", isPlanFeature, [&out](const EntityView& entity, UniqueNames& names) {
        out << "    <PlanFeature";
        writeAttributes(out, names, entity);
        out << ">\n";
        writeRing(out, entity);
        out << "    </PlanFeature>\n";
    });
    out << "</LandXML>\n";
    return unplaced.notes("left out");
}

} // namespace fenmark::exchange
