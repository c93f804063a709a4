// What a drawing holds: a summary for people, and the whole of it as JSON.
#include "exchange/info.h"

#include "exchange/text.h"

#include <array>
#include <map>
#include <string>
#include <utility>

namespace fenmark::exchange {

using drawing::Alignment;
using drawing::Drawing;
using drawing::Element;
using drawing::ElementType;
using drawing::EntityView;
using drawing::Extent;

namespace {

void writePoint(std::ostream& out, const host::PlanPoint& point) {
    out << '[' << JsonReal{point.x} << ',' << JsonReal{point.y} << ']';
}

void writeElement(std::ostream& out, const Element& element) {
    out << "{\"id\":" << element.id << ",\"type\":\"" << static_cast<char>(element.type) << "\",\"start\":";
    writePoint(out, element.start);
    out << ",\"end\":";
    writePoint(out, element.end);
    out << ",\"length\":" << JsonReal{element.length};
    const char* clockwise = element.clockwise ? "true" : "false";
    if (element.type == ElementType::Arc) {
        out << ",\"radius\":" << JsonReal{element.startRadius} << ",\"clockwise\":" << clockwise << ",\"center\":";
        writePoint(out, element.centre());
    } else if (element.type == ElementType::Clothoid) {
        out << ",\"start_radius\":" << JsonReal{element.startRadius}
            << ",\"end_radius\":" << JsonReal{element.endRadius} << ",\"clockwise\":" << clockwise << ",\"pi\":";
        if (const auto pi = element.pi()) {
            writePoint(out, *pi);
        } else {
            out << "null";
        }
    }
    out << '}';
}

void writeAlignment(std::ostream& out, const Alignment& alignment) {
    out << "{\"id\":" << alignment.id.asUint64() << ",\"name\":" << JsonText{alignment.name}
        << ",\"description\":" << JsonText{alignment.description} << ",\"layer\":" << JsonText{alignment.layer}
        << ",\"start_station\":" << JsonReal{alignment.startStation} << ",\"length\":" << JsonReal{alignment.length()}
        << ",\"elements\":[";
    const char* separator = "";
    for (const Element& element : alignment.elements) {
        out << std::exchange(separator, ",");
        writeElement(out, element);
    }
    out << "]}";
}

void writeEntity(std::ostream& out, const EntityView& entity) {
    out << "{\"id\":" << entity.id.asUint64();
    if (entity.isPoint()) {
        const host::MdGePoint3d& at = entity.position();
        out << ",\"type\":\"point\",\"layer\":" << JsonText{entity.layer} << ",\"position\":[" << JsonReal{at.x} << ','
            << JsonReal{at.y} << ',' << JsonReal{at.z} << ']';
    } else {
        out << ",\"type\":\"polyline\",\"layer\":" << JsonText{entity.layer}
            << ",\"closed\":" << (entity.closed ? "true" : "false") << ",\"vertices\":[";
        const char* separator = "";
        for (const host::MdGePoint3d& vertex : entity.vertices) {
            out << std::exchange(separator, ",") << '[' << JsonReal{vertex.x} << ',' << JsonReal{vertex.y} << ']';
        }
        out << ']';
    }
    out << ",\"data\":";
    if (entity.row) {
        out << "{\"table\":" << JsonText{entity.row->table} << ",\"No\":" << entity.row->no
            << ",\"Name\":" << JsonText{entity.row->name} << ",\"Type\":" << JsonText{entity.row->type}
            << ",\"FileName\":" << JsonText{entity.row->fileName} << '}';
    } else {
        out << "null";
    }
    out << '}';
}

// How many objects came from each kind of source, by the "Type" of their rows, in the order of first appearance.
class CountByType {
  public:
    void add(const EntityView& entity) {
        const std::string type = entity.row && !entity.row->type.empty() ? std::string(entity.row->type) : "-";
        if (count_[type]++ == 0) {
            order_.push_back(type);
        }
        ++total_;
    }
    void write(std::ostream& out, const char* title) const {
        out << title << total_;
        const char* separator = "  (";
        for (const std::string& type : order_) {
            out << std::exchange(separator, ", ") << type << ' ' << count_.at(type);
        }
        out << (order_.empty() ? "\n" : ")\n");
    }

  private:
    std::map<std::string, std::size_t> count_;
    std::vector<std::string> order_;
    std::size_t total_ = 0;
};

void summariseAlignment(std::ostream& out, const Alignment& alignment) {
    std::array<int, 3> kinds{};
    for (const Element& element : alignment.elements) {
        ++kinds[element.type == ElementType::Straight ? 0 : element.type == ElementType::Arc ? 1 : 2];
    }
    out << "  " << alignment.name << "  " << fixedReal(alignment.startStation, 3) << " to "
        << fixedReal(alignment.startStation + alignment.length(), 3) << " m, length "
        << fixedReal(alignment.length(), 3) << " m, " << kinds[0] << " straight, " << kinds[1] << " arc, " << kinds[2]
        << " clothoid\n";
}

} // namespace

void writeInfoJson(const Drawing& drawing, std::ostream& out) {
    const char* separator = "";
    out << "{\"layers\":[";
    for (const auto& layer : drawing.layers()) {
        out << std::exchange(separator, ",") << "{\"name\":" << JsonText{layer.name};
        if (layer.colour) {
            out << ",\"colour\":" << JsonText{drawing::textOf(*layer.colour)};
        }
        out << '}';
    }
    out << "],\"sites\":[";
    separator = "";
    for (const auto& site : drawing.sites()) {
        out << std::exchange(separator, ",") << "{\"name\":" << JsonText{site.name} << ",\"alignments\":[";
        const char* inner = "";
        for (std::size_t i = 0; i < drawing.alignmentCount(); ++i) {
            if (drawing.alignment(i).site != site.id) {
                continue;
            }
            out << std::exchange(inner, ",");
            writeAlignment(out, drawing.alignment(i));
        }
        out << "]}";
    }
    out << "],\"entities\":[";
    separator = "";
    for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
        out << std::exchange(separator, ",");
        writeEntity(out, drawing.entity(i));
    }
    out << "]}\n";
}

void writeSummary(const Drawing& drawing, std::ostream& out) {
    CountByType points;
    CountByType polylines;
    for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
        const EntityView entity = drawing.entity(i);
        (entity.isPoint() ? points : polylines).add(entity);
    }
    out << "layers     ";
    const char* separator = "";
    for (const auto& layer : drawing.layers()) {
        out << std::exchange(separator, ", ") << layer.name;
    }
    out << '\n';
    points.write(out, "points     ");
    polylines.write(out, "polylines  ");
    out << "alignments " << drawing.alignmentCount() << '\n';
    if (drawing.zone() != 0) {
        out << "zone       " << drawing.zone() << " (EPSG:" << 6668 + drawing.zone() << ")\n";
    }
    const Extent& extent = drawing.extent();
    if (!extent.empty()) {
        out << "extent     x (east) " << fixedReal(extent.minX, 3) << " to " << fixedReal(extent.maxX, 3)
            << ", y (north) " << fixedReal(extent.minY, 3) << " to " << fixedReal(extent.maxY, 3) << '\n';
    }
    for (const auto& site : drawing.sites()) {
        out << "site " << site.name << '\n';
        for (std::size_t i = 0; i < drawing.alignmentCount(); ++i) {
            if (drawing.alignment(i).site == site.id) {
                summariseAlignment(out, drawing.alignment(i));
            }
        }
    }
}

} // namespace fenmark::exchange
