// What a drawing's file consists of, to the letter: its tables, and what it says to programs that know the format.
#include "drawing/index_check.h"
#include "support/drawing_support.h"
#include "support/sample_file.h"

#include <gtest/gtest.h>

#include <string>

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

TEST_F(Schema, StylesAreAsWrittenDown) {
    test::expectSampleOf("drawing", "layer_styles.txt",
                         rows("SELECT f_table_catalog, f_table_schema, f_table_name, f_geometry_column, styleName,"
                              " styleSLD, useAsDefault, description, owner, ui, styleQML FROM layer_styles"
                              " ORDER BY f_table_name"));
}

} // namespace
} // namespace fenmark::drawing
