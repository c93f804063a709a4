// The default styles: kinds by colour and symbol, labels, and Japanese column titles.
#include "drawing/geopackage/default_styles.h"

#include "drawing/geopackage/style_text.h"

#include <string>
#include <string_view>
#include <vector>

namespace fenmark::drawing {

namespace {

constexpr const char* kCreateStyles = R"sql(
CREATE TABLE layer_styles (
    id INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL,
    f_table_catalog TEXT(256),
    f_table_schema TEXT(256),
    f_table_name TEXT(256),
    f_geometry_column TEXT(256),
    styleName TEXT(30),
    styleQML TEXT,
    styleSLD TEXT,
    useAsDefault BOOLEAN,
    description TEXT,
    owner TEXT(30),
    ui TEXT(30),
    update_time DATETIME DEFAULT (strftime('%Y-%m-%dT%H:%M:%fZ','now'))
);
INSERT OR IGNORE INTO gpkg_contents (table_name, data_type, identifier, description) VALUES
    ('layer_styles', 'attributes', 'layer_styles', 'Styles of the layers');
)sql";
constexpr const char* kHasStyle = "SELECT count(*) FROM layer_styles WHERE f_table_name = ?1";
// Empty catalogue and schema: NULL is not found.
constexpr const char* kInsertStyle =
    "INSERT INTO layer_styles (f_table_catalog, f_table_schema, f_table_name, f_geometry_column, styleName, styleQML,"
    " styleSLD, useAsDefault, description, owner, ui, update_time)"
    " VALUES ('', '', ?1, 'geom', 'Fenmark', ?2, '', 1, '', '', NULL, strftime('%Y-%m-%dT%H:%M:%fZ','now'))";
constexpr const char* kColumns[] = {"f_table_catalog", "f_table_schema", "f_table_name", "f_geometry_column",
                                    "styleName",       "styleQML",       "styleSLD",     "useAsDefault",
                                    "description",     "owner",          "ui",           "update_time"};
constexpr const char* kLayers[] = {"points", "polylines", "lots", "alignments"};

} // namespace

void writeDefaultStyles(Connection& connection, const DrawingShape* shape) {
    if (shape == nullptr || !shape->hasTable("layer_styles")) {
        connection.execute(kCreateStyles);
    } else {
        for (const char* column : kColumns) {
            if (!shape->hasColumn("layer_styles", column)) {
                return;
            }
        }
    }
    for (const char* layer : kLayers) {
        if (shape != nullptr) {
            Statement there(connection, kHasStyle);
            if (!shape->hasTable(layer) || (there.bind(1, std::string_view(layer)).step() && there.integer(0) > 0)) {
                continue;
            }
        }
        const std::string text = styleOf(layer);
        Statement(connection, kInsertStyle).bind(1, std::string_view(layer)).bind(2, std::string_view(text)).run();
    }
}

} // namespace fenmark::drawing
