// What a drawing's file consists of, to the letter: its tables, and what it says to programs that know the format.
#include "drawing/index_check.h"
#include "support/drawing_support.h"
#include "support/sample_file.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace fenmark::drawing {
namespace {

class Schema : public SavedDrawing {
  protected:
    std::string rows(const std::string& sql) const {
        std::string text;
        for (const std::string& row : OtherProgram(path_).ask(sql)) {
            text += row + "\n";
        }
        return text;
    }
};

TEST_F(Schema, IsAsWrittenDown) {
    drawing_.setZone(9);
    ASSERT_TRUE(store_.save(path_, drawing_));
    // But for the tables in which SQLite keeps an R-tree, which are its own.
    std::string text = rows("SELECT sql || ';' FROM sqlite_master WHERE sql NOT NULL AND name NOT LIKE 'sqlite_%'"
                            " AND name NOT GLOB 'rtree_*_geom_node' AND name NOT GLOB 'rtree_*_geom_parent'"
                            " AND name NOT GLOB 'rtree_*_geom_rowid' ORDER BY type, name");
    for (const std::string table : {"gpkg_spatial_ref_sys", "gpkg_geometry_columns", "gpkg_extensions",
                                    "object_data_tables", "layers", "sites"}) {
        text += "-- " + table + "\n" + rows("SELECT * FROM " + table + " ORDER BY 1, 2");
    }
    text += "-- gpkg_contents\n";
    text +=
        rows("SELECT table_name, data_type, identifier, description, srs_id FROM gpkg_contents ORDER BY table_name");
    text += "-- pragmas\n" + rows("PRAGMA application_id; PRAGMA user_version; PRAGMA encoding");
    test::expectSampleOf("drawing", "schema.sql", text);
}

// What other programs read of the objects, column by column; geometries have tests of their own.
TEST_F(Schema, RowsAreAsWrittenDown) {
    drawing_.addLayer("境界");
    std::vector<Layer> layers = drawing_.layers();
    layers[1].colour = Colour{255, 128, 0};
    ASSERT_TRUE(drawing_.setLayers(std::move(layers)));
    drawing_.setCurrentLayer(1);
    drawing_.setZone(9);
    const std::uint64_t before = drawing_.lastId();
    const MdDbObjectId site = drawing_.addSite("第二現場");
    addSmallImport(drawing_, 1);
    const std::size_t road = drawing_.addAlignment(site, "支線", "境界", "First", "Second");
    Element straight;
    straight.start = {1.5, 2.5};
    straight.end = {4.5, 6.5};
    straight.direction = std::atan2(4.0, 3.0);
    straight.length = 5.0;
    drawing_.addElement(road, straight);
    Import import;
    import.fileName = "測量1.sim";
    import.path = "/測量/測量1.sim";
    import.fileSize = 1234;
    import.digest = "sha256:00";
    import.time = "2026-01-31T09:15:00Z";
    import.counts = {11, 12, 13, 14, 15, 16, 17};
    import.firstId = before + 1;
    import.lastId = drawing_.lastId();
    drawing_.addImport(import);
    ASSERT_TRUE(store_.save(path_, drawing_));
    std::string text;
    for (const std::string table : {"layers", "sites", "object_data_tables", "fenmark_imports"}) {
        text += "-- " + table + "\n" + rows("SELECT * FROM " + table + " ORDER BY 1");
    }
    text += "-- fenmark_drawing\n" + rows("SELECT id, format, last_id, current_layer, zone FROM fenmark_drawing");
    const std::string object = "\"No\", \"Name\", \"Type\", \"FileName\", ";
    text += "-- points\n" + rows("SELECT fid, layer, data_table, " + object + "import_id FROM points ORDER BY fid");
    text += "-- polylines\n" + rows("SELECT fid, layer, closed, vertices, lightweight, data_table, " + object +
                                    "import_id FROM polylines ORDER BY fid");
    text +=
        "-- lots\n" + rows("SELECT fid, layer, " + object + "closed, round(area, 6), import_id FROM lots ORDER BY fid");
    text += "-- alignments\n" +
            rows("SELECT fid, name, description, site_id, site, layer, start_station, round(length, 6), first_style,"
                 " second_style, import_id FROM alignments ORDER BY fid");
    // Digits behind the sixth are those of a compiler.
    const auto rounded = [](const char* column) { return ", round(" + std::string(column) + ", 6) + 0.0"; };
    std::string elements = "SELECT id, alignment_id, place, element_id, type, clockwise";
    for (const char* column : {"start_x", "start_y", "end_x", "end_y", "direction", "length", "start_radius",
                               "end_radius", "centre_x", "centre_y", "pi_x", "pi_y"}) {
        elements += rounded(column);
    }
    text += "-- alignment_elements\n" + rows(elements + " FROM alignment_elements ORDER BY alignment_id, place");
    test::expectSampleOf("drawing", "rows.txt", text);
}

// The line of an alignment has each joint once, also where one goes before it.
TEST_F(Schema, AlignmentsHaveALineForEachOfTheirCourses) {
    const std::size_t first = drawing_.addAlignment(drawing_.sites().front().id, "折線", "0", "", "");
    const std::size_t second = drawing_.addAlignment(drawing_.sites().front().id, "間", "0", "", "");
    PlanPoint from{1000.0, 2000.0};
    for (const PlanPoint& to : {PlanPoint{1003.0, 2004.0}, PlanPoint{1003.0, 2014.0}, PlanPoint{1003.5, 2014.0}}) {
        Element straight;
        straight.start = from;
        straight.end = to;
        straight.direction = std::atan2(to.y - from.y, to.x - from.x);
        straight.length = std::hypot(to.x - from.x, to.y - from.y);
        drawing_.addElement(first, straight);
        straight.start.x -= 0.25; // which joins nothing
        drawing_.addElement(second, straight);
        from = to;
    }
    ASSERT_TRUE(store_.save(path_, drawing_));
    // The count of vertices stands behind the header with its box, the order and the type.
    EXPECT_EQ(rows("SELECT name, hex(substr(geom, 46, 4)) FROM alignments WHERE name IN ('折線', '間') ORDER BY fid"),
              "折線|04000000\n間|06000000\n");
}

// What the lines before it took of the points for one alignment is not missing in the next.
TEST_F(Schema, EveryAlignmentHasTheSameRoomForItsLine) {
    Element winding; // turns 28,648 times, which no line has the points for
    winding.type = ElementType::Clothoid;
    winding.length = 5.4e7;
    winding.endRadius = 150.0;
    for (const std::size_t elements : {kMostAlignmentPoints / kMostElementPoints + 1, std::size_t{1}, std::size_t{1}}) {
        const std::size_t road = drawing_.addAlignment(drawing_.sites().front().id, "渦", "0", "", "");
        for (std::size_t i = 0; i < elements; ++i) {
            winding.start.x = -1e6 * static_cast<double>(i);
            drawing_.addElement(road, winding);
        }
    }
    ASSERT_TRUE(store_.save(path_, drawing_));
    // Of 16 bytes each.
    EXPECT_EQ(rows("SELECT length(geom) / 160000 FROM alignments WHERE name = '渦' ORDER BY fid"), "100\n1\n1\n");
}

TEST_F(Schema, StylesAreAsWrittenDown) {
    test::expectSampleOf("drawing", "layer_styles.txt",
                         rows("SELECT f_table_catalog, f_table_schema, f_table_name, f_geometry_column, styleName,"
                              " styleSLD, useAsDefault, description, owner, ui, styleQML FROM layer_styles"
                              " ORDER BY f_table_name"));
}

} // namespace
} // namespace fenmark::drawing
