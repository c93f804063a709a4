// What the tests of drawings share: a folder of their own, and drawings to fill it with.
#pragma once

#include "drawing/drawing.h"
#include "drawing/geopackage/drawing_store.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace fenmark::drawing {

using test::TemporaryFolder;

// Everything that a drawing keeps, as text: two drawings are equal if their descriptions are.
inline std::string describe(const Drawing& drawing) {
    std::string out;
    char number[64];
    const auto real = [&](double value) {
        std::snprintf(number, sizeof number, "%a ", value);
        out += number;
    };
    const auto id = [&](MdDbObjectId value) { out += std::to_string(value.asUint64()) + " "; };
    for (const Layer& layer : drawing.layers()) {
        id(layer.id);
        out += "layer " + layer.name + (layer.colour ? " " + textOf(*layer.colour) : std::string()) + "\n";
    }
    out += "current " + std::to_string(drawing.currentLayer()) + " zone " + std::to_string(drawing.zone()) + "\n";
    for (const Site& site : drawing.sites()) {
        id(site.id);
        out += "site " + site.name + "\n";
    }
    for (const ObjectDataTable& table : drawing.tables()) {
        id(table.id);
        out += "table " + table.name + "\n";
    }
    for (std::size_t i = 0; i < drawing.alignmentCount(); ++i) {
        const Alignment& alignment = drawing.alignment(i);
        id(alignment.id);
        id(alignment.site);
        out += "alignment " + alignment.name + "|" + alignment.description + "|" + alignment.layer + "|" +
               alignment.firstStyle + "|" + alignment.secondStyle + " ";
        real(alignment.startStation);
        for (const Element& element : alignment.elements) {
            out += "\n  " + std::to_string(element.id) + static_cast<char>(element.type) +
                   (element.clockwise ? " cw " : " ccw ");
            for (const double value : {element.start.x, element.start.y, element.end.x, element.end.y,
                                       element.direction, element.length, element.startRadius, element.endRadius}) {
                real(value);
            }
        }
        out += "\n";
    }
    for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
        const EntityView entity = drawing.entity(i);
        id(entity.id);
        out += "entity " + std::to_string(static_cast<int>(entity.kind)) + (entity.closed ? " closed " : " open ") +
               std::string(entity.layer) + " ";
        for (const MdGePoint3d& vertex : entity.vertices) {
            real(vertex.x);
            real(vertex.y);
            real(vertex.z);
        }
        if (entity.row) {
            out += std::string(entity.row->table) + "|" + std::to_string(entity.row->no) + "|" +
                   std::string(entity.row->name) + "|" + std::string(entity.row->type) + "|" +
                   std::string(entity.row->fileName);
        }
        out += "\n";
    }
    return out;
}

// A few objects of every kind, as an import makes them.
inline void addSmallImport(Drawing& drawing, int seed = 0) {
    const std::size_t layer = drawing.currentLayer();
    drawing.addTable("JSIMA_V3_Point");
    drawing.addTable("JSIMA_V3_Pline");
    const double at = 100.0 * seed;
    for (int i = 0; i < 5; ++i) {
        drawing.addPoint({-36012.345 + at + i, 60295.494 + 0.1 * i, i == 2 ? 12.5 : 0.0}, layer);
        drawing.setRow(drawing.entityCount() - 1, *drawing.findTable("JSIMA_V3_Point"), i + 1, "点" + std::to_string(i),
                       "座標", "測量" + std::to_string(seed) + ".sim");
    }
    const std::vector<MdGePoint3d> lot = {{at, 0, 1}, {at + 10.1, 0, 2}, {at + 10, 10.3, 3}, {at, 10, 4}};
    drawing.addPolyline(lot, layer, EntityKind::Polyline, true);
    drawing.setRow(drawing.entityCount() - 1, *drawing.findTable("JSIMA_V3_Pline"), 7, "", "画地", "測量.sim");
    drawing.addPolyline(std::span(lot).first(3), layer, EntityKind::Polyline, false);
    drawing.addPolyline(std::span(lot).first(1), layer, EntityKind::Polyline, false);
    drawing.addPolyline(std::span(lot).first(2), layer, EntityKind::Polyline, true);
    drawing.addPolyline({}, layer, EntityKind::Polyline, false);
    if (!drawing.findSite("サイト")) {
        drawing.addSite("サイト");
    }
    const std::size_t alignment = drawing.addAlignment(drawing.sites().front().id, "路線" + std::to_string(seed), "0",
                                                       kStandardStyle, kStandardStyle);
    drawing.setDescription(alignment, "測量-路線");
    drawing.setStartStation(alignment, 123.456);
    Element line;
    line.start = {at, 0};
    line.end = {at + 30, 40};
    line.direction = std::atan2(40.0, 30.0);
    line.length = 50;
    drawing.addElement(alignment, line);
    Element spiral;
    spiral.type = ElementType::Clothoid;
    spiral.start = line.end;
    spiral.direction = line.direction;
    spiral.length = 60;
    spiral.endRadius = 200;
    spiral.clockwise = seed % 2 == 0;
    spiral.end = poseOnElement(spiral, spiral.length).point;
    drawing.addElement(alignment, spiral);
    Element arc;
    arc.type = ElementType::Arc;
    arc.start = spiral.end;
    arc.direction = spiral.endDirection();
    arc.length = 80;
    arc.startRadius = arc.endRadius = 200;
    arc.clockwise = spiral.clockwise;
    arc.end = poseOnElement(arc, arc.length).point;
    drawing.addElement(alignment, arc);
    drawing.addAlignment(drawing.sites().front().id, "", "0", kStandardStyle, kStandardStyle); // without elements
}

// A small drawing with a file.
class SavedDrawing : public ::testing::Test {
  protected:
    explicit SavedDrawing(const char* name = "図面.gpkg") : path_(folder_.at(name)) {}

    TemporaryFolder folder_;
    std::string path_;
    Drawing drawing_;
    DrawingStore store_;

    void SetUp() override {
        addSmallImport(drawing_);
        const Outcome result = store_.save(path_, drawing_);
        ASSERT_TRUE(result) << result.message.english;
    }
};

} // namespace fenmark::drawing
