// The drawing as tables, and every statement that reads or writes it.
//
// A GeoPackage 1.3. Feature tables for people who open the drawing in a GIS: points, polylines, lots (the closed
// polylines again, as polygons), alignments (a line within 1 mm of the true curve). Attribute tables beside them: the
// exact elements of the alignments, layers, sites, object-data tables, and one row that says whose drawing this is.
// The fid of a feature and the id of a layer, site or table are the object's identifier. A radius of NULL is infinite;
// directions are radians anticlockwise from east, positive radii, lengths and stations in metres.
#pragma once

namespace fenmark::drawing::sql {

inline constexpr int kApplicationId = 0x47504B47; // "GPKG"
inline constexpr int kFormat = 1;                 // of our tables

// Large pages and no journal: the file is made under another name and takes its own name when it is complete.
inline constexpr const char* kPrepareNewFile = R"sql(
PRAGMA page_size = 8192;
PRAGMA journal_mode = OFF;
PRAGMA synchronous = OFF;
PRAGMA locking_mode = EXCLUSIVE;
PRAGMA cache_size = -65536;
PRAGMA temp_store = MEMORY;
PRAGMA application_id = 0x47504B47;
PRAGMA user_version = 10300;
)sql";

// A file that is there keeps a rollback journal until its transaction is on the disk.
inline constexpr const char* kPrepareOldFile = R"sql(
PRAGMA journal_mode = DELETE;
PRAGMA synchronous = FULL;
PRAGMA cache_size = -65536;
PRAGMA temp_store = MEMORY;
)sql";

inline constexpr const char* kSchema = R"sql(
CREATE TABLE gpkg_spatial_ref_sys (
    srs_name TEXT NOT NULL,
    srs_id INTEGER NOT NULL PRIMARY KEY,
    organization TEXT NOT NULL,
    organization_coordsys_id INTEGER NOT NULL,
    definition TEXT NOT NULL,
    description TEXT
);
INSERT INTO gpkg_spatial_ref_sys VALUES
    ('Undefined cartesian SRS', -1, 'NONE', -1, 'undefined', 'undefined cartesian coordinate reference system'),
    ('Undefined geographic SRS', 0, 'NONE', 0, 'undefined', 'undefined geographic coordinate reference system'),
    ('WGS 84 geodetic', 4326, 'EPSG', 4326,
     'GEOGCS["WGS 84",DATUM["WGS_1984",SPHEROID["WGS 84",6378137,298.257223563,AUTHORITY["EPSG","7030"]],AUTHORITY["EPSG","6326"]],PRIMEM["Greenwich",0,AUTHORITY["EPSG","8901"]],UNIT["degree",0.0174532925199433,AUTHORITY["EPSG","9122"]],AXIS["Latitude",NORTH],AXIS["Longitude",EAST],AUTHORITY["EPSG","4326"]]',
     'longitude/latitude coordinates in decimal degrees on the WGS 84 spheroid');

CREATE TABLE gpkg_contents (
    table_name TEXT NOT NULL PRIMARY KEY,
    data_type TEXT NOT NULL,
    identifier TEXT UNIQUE,
    description TEXT DEFAULT '',
    last_change DATETIME NOT NULL DEFAULT (strftime('%Y-%m-%dT%H:%M:%fZ','now')),
    min_x DOUBLE,
    min_y DOUBLE,
    max_x DOUBLE,
    max_y DOUBLE,
    srs_id INTEGER,
    CONSTRAINT fk_gc_r_srs_id FOREIGN KEY (srs_id) REFERENCES gpkg_spatial_ref_sys(srs_id)
);
CREATE TABLE gpkg_geometry_columns (
    table_name TEXT NOT NULL,
    column_name TEXT NOT NULL,
    geometry_type_name TEXT NOT NULL,
    srs_id INTEGER NOT NULL,
    z TINYINT NOT NULL,
    m TINYINT NOT NULL,
    CONSTRAINT pk_geom_cols PRIMARY KEY (table_name, column_name),
    CONSTRAINT uk_gc_table_name UNIQUE (table_name),
    CONSTRAINT fk_gc_tn FOREIGN KEY (table_name) REFERENCES gpkg_contents(table_name),
    CONSTRAINT fk_gc_srs FOREIGN KEY (srs_id) REFERENCES gpkg_spatial_ref_sys(srs_id)
);

CREATE TABLE gpkg_extensions (
    table_name TEXT,
    column_name TEXT,
    extension_name TEXT NOT NULL,
    definition TEXT NOT NULL,
    scope TEXT NOT NULL,
    CONSTRAINT ge_tce UNIQUE (table_name, column_name, extension_name)
);

CREATE TABLE points (
    fid INTEGER PRIMARY KEY NOT NULL,
    geom POINT,
    layer TEXT,
    data_table TEXT,
    "No" INTEGER,
    "Name" TEXT,
    "Type" TEXT,
    "FileName" TEXT
);
CREATE TABLE polylines (
    fid INTEGER PRIMARY KEY NOT NULL,
    geom LINESTRING,
    layer TEXT,
    closed BOOLEAN,
    vertices INTEGER,
    lightweight BOOLEAN,
    data_table TEXT,
    "No" INTEGER,
    "Name" TEXT,
    "Type" TEXT,
    "FileName" TEXT
);
CREATE TABLE lots (
    fid INTEGER PRIMARY KEY NOT NULL,
    geom POLYGON,
    layer TEXT,
    "No" INTEGER,
    "Name" TEXT,
    "Type" TEXT,
    "FileName" TEXT
);
CREATE TABLE alignments (
    fid INTEGER PRIMARY KEY NOT NULL,
    geom LINESTRING,
    name TEXT,
    description TEXT,
    site_id INTEGER,
    site TEXT,
    layer TEXT,
    start_station DOUBLE,
    length DOUBLE,
    first_style TEXT,
    second_style TEXT
);
CREATE TABLE alignment_elements (
    id INTEGER PRIMARY KEY NOT NULL,
    alignment_id INTEGER,
    place INTEGER,
    element_id INTEGER,
    type TEXT,
    start_x DOUBLE,
    start_y DOUBLE,
    end_x DOUBLE,
    end_y DOUBLE,
    direction DOUBLE,
    length DOUBLE,
    start_radius DOUBLE,
    end_radius DOUBLE,
    clockwise BOOLEAN,
    centre_x DOUBLE,
    centre_y DOUBLE,
    pi_x DOUBLE,
    pi_y DOUBLE
);
CREATE INDEX alignment_elements_order ON alignment_elements (alignment_id, place);
CREATE TABLE layers (
    id INTEGER PRIMARY KEY NOT NULL,
    name TEXT
);
CREATE TABLE sites (
    id INTEGER PRIMARY KEY NOT NULL,
    name TEXT
);
CREATE TABLE object_data_tables (
    id INTEGER PRIMARY KEY NOT NULL,
    name TEXT
);
CREATE TABLE fenmark_drawing (
    id INTEGER PRIMARY KEY NOT NULL,
    format INTEGER,
    last_id INTEGER,
    current_layer INTEGER,
    zone INTEGER
);

INSERT INTO gpkg_contents (table_name, data_type, identifier, description, srs_id) VALUES
    ('points', 'features', 'points', 'Points with their source', -1),
    ('polylines', 'features', 'polylines', 'Polylines with their source', -1),
    ('lots', 'features', 'lots', 'Closed polylines as areas', -1),
    ('alignments', 'features', 'alignments', 'Alignments as lines within 1 mm of the curve', -1);
INSERT INTO gpkg_contents (table_name, data_type, identifier, description) VALUES
    ('alignment_elements', 'attributes', 'alignment_elements', 'Exact elements: S straight, R arc, A clothoid'),
    ('layers', 'attributes', 'layers', 'Layers of the drawing'),
    ('sites', 'attributes', 'sites', 'Sites of the drawing'),
    ('object_data_tables', 'attributes', 'object_data_tables', 'Tables of object data'),
    ('fenmark_drawing', 'attributes', 'fenmark_drawing', 'Settings of the drawing');
INSERT INTO gpkg_geometry_columns VALUES
    ('points', 'geom', 'POINT', -1, 1, 0),
    ('polylines', 'geom', 'LINESTRING', -1, 0, 0),
    ('lots', 'geom', 'POLYGON', -1, 0, 0),
    ('alignments', 'geom', 'LINESTRING', -1, 0, 0);
INSERT INTO fenmark_drawing VALUES (1, 1, 0, 0, 0);
)sql";

// --- whose file it is ---
inline constexpr const char* kReadApplicationId = "PRAGMA application_id";
inline constexpr const char* kHasDrawing =
    "SELECT count(*) FROM sqlite_master WHERE type = 'table' AND name = 'fenmark_drawing'";
inline constexpr const char* kReadDrawing =
    "SELECT format, last_id, current_layer, zone FROM fenmark_drawing WHERE id = 1";
inline constexpr const char* kReadSchemaVersion =
    "PRAGMA schema_version"; // touches the file: a journal left by a crash shows

// --- reading ---
inline constexpr const char* kReadLayers = "SELECT id, name FROM layers ORDER BY id";
inline constexpr const char* kReadSites = "SELECT id, name FROM sites ORDER BY id";
inline constexpr const char* kReadTables = "SELECT id, name FROM object_data_tables ORDER BY id";
inline constexpr const char* kReadAlignments =
    "SELECT fid, site_id, name, description, layer, start_station, first_style, second_style FROM alignments"
    " ORDER BY fid";
inline constexpr const char* kReadElements =
    "SELECT element_id, type, start_x, start_y, end_x, end_y, direction, length, start_radius, end_radius, clockwise"
    " FROM alignment_elements WHERE alignment_id = ?1 ORDER BY place";
inline constexpr const char* kReadPoints =
    "SELECT fid, geom, layer, data_table, \"No\", \"Name\", \"Type\", \"FileName\" FROM points ORDER BY fid";
inline constexpr const char* kReadPolylines =
    "SELECT fid, geom, layer, data_table, \"No\", \"Name\", \"Type\", \"FileName\", closed, vertices, lightweight"
    " FROM polylines ORDER BY fid";
inline constexpr const char* kReadHighestId =
    "SELECT max(ifnull((SELECT max(fid) FROM points), 0), ifnull((SELECT max(fid) FROM polylines), 0),"
    " ifnull((SELECT max(fid) FROM alignments), 0), ifnull((SELECT max(id) FROM layers), 0),"
    " ifnull((SELECT max(id) FROM sites), 0), ifnull((SELECT max(id) FROM object_data_tables), 0))";
inline constexpr const char* kReadExtent =
    "SELECT min(min_x), min(min_y), max(max_x), max(max_y) FROM gpkg_contents WHERE data_type = 'features'";

// --- removing what was undone or changed ---
inline constexpr const char* kDeletePoints = "DELETE FROM points WHERE fid > ?1";
inline constexpr const char* kDeletePolylines = "DELETE FROM polylines WHERE fid > ?1";
inline constexpr const char* kDeleteLots = "DELETE FROM lots WHERE fid > ?1";
inline constexpr const char* kDeleteAlignments = "DELETE FROM alignments WHERE fid > ?1";
inline constexpr const char* kDeleteElements = "DELETE FROM alignment_elements WHERE alignment_id > ?1";
inline constexpr const char* kDeleteLayers = "DELETE FROM layers WHERE id > ?1";
inline constexpr const char* kDeleteSites = "DELETE FROM sites WHERE id > ?1";
inline constexpr const char* kDeleteTables = "DELETE FROM object_data_tables WHERE id > ?1";

// --- writing ---
// Entities come out of memory as the rows of a table of these columns.
inline constexpr const char* kEntityColumns =
    "fid, geom, layer, closed, vertices, lightweight, data_table, no, name, type, file_name";
inline constexpr const char* kInsertPoints =
    "INSERT INTO points SELECT fid, geom, layer, data_table, no, name, type, file_name FROM incoming";
inline constexpr const char* kInsertPolylines = "INSERT INTO polylines SELECT fid, geom, layer, closed, vertices, "
                                                "lightweight, data_table, no, name, type, file_name"
                                                " FROM incoming";
inline constexpr const char* kInsertLots =
    "INSERT INTO lots SELECT fid, geom, layer, no, name, type, file_name FROM incoming";
inline constexpr const char* kInsertAlignment =
    "INSERT INTO alignments VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11)";
inline constexpr const char* kInsertElement =
    "INSERT INTO alignment_elements VALUES (NULL, ?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12, ?13, ?14, ?15,"
    " ?16, ?17)";
inline constexpr const char* kInsertLayer = "INSERT INTO layers VALUES (?1, ?2)";
inline constexpr const char* kInsertSite = "INSERT INTO sites VALUES (?1, ?2)";
inline constexpr const char* kInsertTable = "INSERT INTO object_data_tables VALUES (?1, ?2)";
inline constexpr const char* kWriteDrawing =
    "UPDATE fenmark_drawing SET format = ?1, last_id = ?2, current_layer = ?3, zone = ?4 WHERE id = 1";
inline constexpr const char* kGrowContents =
    "UPDATE gpkg_contents SET last_change = strftime('%Y-%m-%dT%H:%M:%fZ','now'),"
    " min_x = min(ifnull(min_x, ?2), ?2), min_y = min(ifnull(min_y, ?3), ?3),"
    " max_x = max(ifnull(max_x, ?4), ?4), max_y = max(ifnull(max_y, ?5), ?5) WHERE table_name = ?1";

// --- the zone of the coordinates ---
inline constexpr const char* kInsertSrs =
    "INSERT OR IGNORE INTO gpkg_spatial_ref_sys VALUES (?1, ?2, 'EPSG', ?2, ?3, NULL)";
inline constexpr const char* kSetContentsSrs = "UPDATE gpkg_contents SET srs_id = ?1 WHERE data_type = 'features'";
inline constexpr const char* kSetColumnsSrs = "UPDATE gpkg_geometry_columns SET srs_id = ?1";
// with_srs(blob, id) is ours: the same blob under another reference system.
inline constexpr const char* kSetBlobSrs[] = {
    "UPDATE points SET geom = with_srs(geom, ?1)",
    "UPDATE polylines SET geom = with_srs(geom, ?1)",
    "UPDATE lots SET geom = with_srs(geom, ?1)",
    "UPDATE alignments SET geom = with_srs(geom, ?1)",
};

} // namespace fenmark::drawing::sql
