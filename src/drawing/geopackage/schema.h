// The drawing as tables, and every statement that reads or writes it.
//
// Statements name their columns: other programs may add some of their own. A GeoPackage 1.3. Feature tables for people who open the drawing in a GIS: points, polylines, lots (the closed
// polylines and every lot again, as polygons with their areas), alignments (a line within 1 mm of the true curve). Attribute tables beside them: the
// exact elements of the alignments, layers, sites, object-data tables, and one row that says whose drawing this is.
// The fid of a feature and the id of a layer, site or table are the object's identifier. A radius of NULL is infinite;
// directions are radians anticlockwise from east, positive radii, lengths and stations in metres.
#pragma once

namespace fenmark::drawing::sql {

inline constexpr int kApplicationId = 0x47504B47; // "GPKG"
inline constexpr int kFormat = 2;                 // of our tables; 1 knew no imports, areas and styles

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
    fid INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL,
    geom POINT,
    layer TEXT,
    data_table TEXT,
    "No" INTEGER,
    "Name" TEXT,
    "Type" TEXT,
    "FileName" TEXT,
    import_id INTEGER
);
CREATE TABLE polylines (
    fid INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL,
    geom LINESTRING,
    layer TEXT,
    closed BOOLEAN,
    vertices INTEGER,
    lightweight BOOLEAN,
    data_table TEXT,
    "No" INTEGER,
    "Name" TEXT,
    "Type" TEXT,
    "FileName" TEXT,
    import_id INTEGER
);
CREATE TABLE lots (
    fid INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL,
    geom POLYGON,
    layer TEXT,
    "No" INTEGER,
    "Name" TEXT,
    "Type" TEXT,
    "FileName" TEXT,
    closed BOOLEAN,
    area DOUBLE,
    import_id INTEGER
);
CREATE TABLE alignments (
    fid INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL,
    geom LINESTRING,
    name TEXT,
    description TEXT,
    site_id INTEGER,
    site TEXT,
    layer TEXT,
    start_station DOUBLE,
    length DOUBLE,
    first_style TEXT,
    second_style TEXT,
    import_id INTEGER
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
    name TEXT,
    colour TEXT
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
    zone INTEGER,
    stamp TEXT
);

INSERT INTO gpkg_contents (table_name, data_type, identifier, description, srs_id) VALUES
    ('points', 'features', 'points', 'Points with their source', -1),
    ('polylines', 'features', 'polylines', 'Polylines with their source', -1),
    ('lots', 'features', 'lots', 'Lots and closed polylines as areas', -1),
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
INSERT INTO fenmark_drawing VALUES (1, 2, 0, 0, 0, '');
)sql";

// What a drawing of an earlier format lacks. A new file gets it by the same statements.
inline constexpr const char* kCreateImports = R"sql(
CREATE TABLE fenmark_imports (
    id INTEGER PRIMARY KEY NOT NULL,
    "FileName" TEXT,
    path TEXT,
    size INTEGER,
    digest TEXT,
    time TEXT,
    points INTEGER,
    lots INTEGER,
    routes INTEGER,
    alignments INTEGER,
    longitudinal INTEGER,
    cross_sections INTEGER,
    errors INTEGER,
    first_id INTEGER,
    last_id INTEGER
);
INSERT OR IGNORE INTO gpkg_contents (table_name, data_type, identifier, description) VALUES
    ('fenmark_imports', 'attributes', 'fenmark_imports', 'Imports: which file, when, and what came of it');
)sql";
struct LaterColumn {
    const char* table;
    const char* column;
    const char* add;
};
inline constexpr LaterColumn kLaterColumns[] = {
    {"points", "import_id", "ALTER TABLE points ADD COLUMN import_id INTEGER"},
    {"polylines", "import_id", "ALTER TABLE polylines ADD COLUMN import_id INTEGER"},
    {"lots", "import_id", "ALTER TABLE lots ADD COLUMN import_id INTEGER"},
    {"lots", "closed", "ALTER TABLE lots ADD COLUMN closed BOOLEAN"},
    {"lots", "area", "ALTER TABLE lots ADD COLUMN area DOUBLE"},
    {"alignments", "import_id", "ALTER TABLE alignments ADD COLUMN import_id INTEGER"},
    {"fenmark_drawing", "stamp", "ALTER TABLE fenmark_drawing ADD COLUMN stamp TEXT"},
    {"layers", "colour", "ALTER TABLE layers ADD COLUMN colour TEXT"},
};
// Areas that outlived their polylines, and the areas in square metres of those that were closed polylines always.
inline constexpr const char* kDropLotsWithoutLine = "DELETE FROM lots WHERE fid NOT IN (SELECT fid FROM polylines)";
inline constexpr const char* kReadLotsWithoutLine = "SELECT fid FROM lots WHERE fid NOT IN (SELECT fid FROM polylines)";
inline constexpr const char* kMeasureLots =
    "UPDATE lots SET closed = 1, area = ring_area((SELECT geom FROM polylines WHERE polylines.fid = lots.fid))"
    " WHERE area IS NULL";
// When another program deletes a polyline or an alignment, what was derived from it goes too.
struct FollowTrigger {
    const char* name;
    const char* needs; // the table that follows
    const char* create;
};
inline constexpr FollowTrigger kFollowTriggers[] = {
    {"fenmark_lots_follow", "lots",
     "CREATE TRIGGER fenmark_lots_follow AFTER DELETE ON polylines BEGIN DELETE FROM lots WHERE fid = OLD.fid; END"},
    {"fenmark_elements_follow", "alignment_elements",
     "CREATE TRIGGER fenmark_elements_follow AFTER DELETE ON alignments"
     " BEGIN DELETE FROM alignment_elements WHERE alignment_id = OLD.fid; END"},
};
inline constexpr const char* kHasSchemaItem = "SELECT count(*) FROM sqlite_master WHERE name = ?1 COLLATE NOCASE";

// --- what the file really has ---
inline constexpr const char* kHasPragma =
    "SELECT count(*) FROM sqlite_master WHERE substr(name, 1, 7) = 'pragma_' COLLATE NOCASE";
inline constexpr const char* kReadSchemaItem =
    "SELECT type, sql FROM sqlite_master WHERE name = ?1 COLLATE NOCASE AND type IN ('table', 'view')";
inline constexpr const char* kReadTableNames =

    "SELECT name FROM sqlite_master WHERE type = 'table' AND substr(sql, 1, 13) = 'CREATE TABLE ' ORDER BY name";
inline constexpr const char* kReadColumns =
    "SELECT name, hidden, \"notnull\", dflt_value, type, pk FROM pragma_table_xinfo(?1)";
inline constexpr const char* kReadIndexes =
    "SELECT name, partial, \"unique\" AND origin = 'c' FROM pragma_index_list(?1)";
inline constexpr const char* kReadColumnsSrs = "SELECT table_name, srs_id FROM gpkg_geometry_columns"
                                               " WHERE table_name IN ('points', 'polylines', 'lots', 'alignments')";
inline constexpr const char* kReadIndexColumns = "SELECT cid, name FROM pragma_index_xinfo(?1)";

// --- whose file it is ---
inline constexpr const char* kReadApplicationId = "PRAGMA application_id";
inline constexpr const char* kHasDrawing =
    "SELECT count(*) FROM sqlite_master WHERE type = 'table' AND name = 'fenmark_drawing'"
    " AND substr(sql, 1, 13) = 'CREATE TABLE '";
inline constexpr const char* kReadDrawing =
    "SELECT format, last_id, current_layer, zone FROM fenmark_drawing WHERE id = 1";
inline constexpr const char* kReadStamp = "SELECT stamp FROM fenmark_drawing WHERE id = 1";

// --- reading ---
inline constexpr const char* kReadSites = "SELECT id, name FROM sites ORDER BY id";
inline constexpr const char* kReadTables = "SELECT id, name FROM object_data_tables ORDER BY id";
inline constexpr const char* kReadElements =
    "SELECT element_id, type, start_x, start_y, end_x, end_y, direction, length, start_radius, end_radius, clockwise,"
    " place"
    " FROM alignment_elements WHERE alignment_id = ?1 ORDER BY place";
inline constexpr const char* kReadAlignmentLines = "SELECT fid, geom FROM alignments ORDER BY fid";
// Features that another program added since, whose identifiers another object has.
inline constexpr const char* kReadTakenPoints =
    "SELECT fid FROM points WHERE fid > ?1 AND fid IN (SELECT fid FROM alignments UNION ALL SELECT id FROM layers"
    " UNION ALL SELECT id FROM sites UNION ALL SELECT id FROM object_data_tables) ORDER BY fid";
inline constexpr const char* kReadTakenPolylines =
    "SELECT fid FROM polylines WHERE fid > ?1 AND (fid IN (SELECT fid FROM alignments UNION ALL SELECT id FROM layers"
    " UNION ALL SELECT id FROM sites UNION ALL SELECT id FROM object_data_tables)"
    " OR EXISTS (SELECT 1 FROM points WHERE points.fid = polylines.fid)) ORDER BY fid";
inline constexpr const char* kReadHighestId =
    "SELECT max(ifnull((SELECT max(fid) FROM points), 0), ifnull((SELECT max(fid) FROM polylines), 0),"
    " ifnull((SELECT max(fid) FROM alignments), 0), ifnull((SELECT max(id) FROM layers), 0),"
    " ifnull((SELECT max(id) FROM sites), 0), ifnull((SELECT max(id) FROM object_data_tables), 0))";
inline constexpr const char* kReadHighestLot = "SELECT max(fid) FROM lots";
inline constexpr const char* kReadLowestPoint = "SELECT min(fid) FROM points";
inline constexpr const char* kReadLowestPolyline = "SELECT min(fid) FROM polylines";
inline constexpr const char* kReadExtent = "SELECT min(min_x), min(min_y), max(max_x), max(max_y) FROM gpkg_contents"
                                           " WHERE table_name IN ('points', 'polylines', 'lots', 'alignments')";

// --- removing what was undone or changed ---
inline constexpr const char* kDeletePoints = "DELETE FROM points WHERE fid > ?1";
inline constexpr const char* kDeletePolylines = "DELETE FROM polylines WHERE fid > ?1";
inline constexpr const char* kDeleteLots = "DELETE FROM lots WHERE fid > ?1";
inline constexpr const char* kDeleteAlignments = "DELETE FROM alignments WHERE fid > ?1";
// A text, which another program put there, is greater than any number.
inline constexpr const char* kDeleteElements =
    "DELETE FROM alignment_elements WHERE alignment_id BETWEEN ?1 + 1 AND 9223372036854775807";
inline constexpr const char* kDeleteLayers = "DELETE FROM layers WHERE id > ?1";
inline constexpr const char* kDeleteSites = "DELETE FROM sites WHERE id > ?1";
inline constexpr const char* kDeleteTables = "DELETE FROM object_data_tables WHERE id > ?1";
inline constexpr const char* kDeleteImports = "DELETE FROM fenmark_imports WHERE id > ?1";

// --- layers that were renamed, coloured or removed ---
// Names change all at once, so that two layers can exchange theirs.
inline constexpr const char* kReadLayerNames = "SELECT id, name FROM layers ORDER BY id";
inline constexpr const char* kUpdateLayer =
    "UPDATE layers SET name = ?2, colour = CASE ?3 WHEN '' THEN NULL ELSE ?3 END WHERE id = ?1";
inline constexpr const char* kDeleteLayer = "DELETE FROM layers WHERE id = ?1";
// new_name(layer) is ours: the new name of a layer that was renamed, otherwise nothing.
struct RenameLayers {
    const char* table;
    const char* sql;
};
inline constexpr RenameLayers kRenameLayers[] = {
    {"points", "UPDATE points SET layer = new_name(layer) WHERE new_name(layer) IS NOT NULL"},
    {"polylines", "UPDATE polylines SET layer = new_name(layer) WHERE new_name(layer) IS NOT NULL"},
    {"lots", "UPDATE lots SET layer = new_name(layer) WHERE new_name(layer) IS NOT NULL"},
    {"alignments", "UPDATE alignments SET layer = new_name(layer) WHERE new_name(layer) IS NOT NULL"},
};

// --- a feature that another program added under a taken identifier ---
struct MoveFeature {
    const char* table;
    const char* sql;
};
inline constexpr MoveFeature kMoveFeatures[] = {
    {"points", "UPDATE points SET fid = ?2 WHERE fid = ?1"},
    {"polylines", "UPDATE polylines SET fid = ?2 WHERE fid = ?1"},
};

// --- removing an import: its identifier is ?3, and its objects lie from ?1 to ?2 ---
inline constexpr const char* kRemoveElements =
    "DELETE FROM alignment_elements WHERE alignment_id IN (SELECT fid FROM alignments"
    " WHERE fid BETWEEN ?1 AND ?2 AND (import_id = ?3 OR import_id IS NULL))";
inline constexpr const char* kRemoveFeatures[] = {
    "DELETE FROM points WHERE fid BETWEEN ?1 AND ?2 AND (import_id = ?3 OR import_id IS NULL)",
    "DELETE FROM polylines WHERE fid BETWEEN ?1 AND ?2 AND (import_id = ?3 OR import_id IS NULL)",
    "DELETE FROM alignments WHERE fid BETWEEN ?1 AND ?2 AND (import_id = ?3 OR import_id IS NULL)",
};
inline constexpr const char* kRemoveLots =
    "DELETE FROM lots WHERE fid BETWEEN ?1 AND ?2 AND (import_id = ?3 OR import_id IS NULL)";
inline constexpr const char* kRemoveImport = "DELETE FROM fenmark_imports WHERE id = ?1";

// --- writing ---
// Entities come out of memory as the rows of a table of these columns.
inline constexpr const char* kEntityColumns =
    "fid, geom, layer, closed, vertices, lightweight, data_table, no, name, type, file_name, area, import_id";
inline constexpr const char* kInsertPoints =
    "INSERT INTO points (fid, geom, layer, data_table, \"No\", \"Name\", \"Type\", \"FileName\", import_id)"
    " SELECT fid, geom, layer, data_table, no, name, type, file_name, import_id FROM fenmark_incoming";
inline constexpr const char* kInsertPolylines =
    "INSERT INTO polylines (fid, geom, layer, closed, vertices, lightweight, data_table, \"No\", \"Name\", \"Type\","
    " \"FileName\", import_id)"
    " SELECT fid, geom, layer, closed, vertices, lightweight, data_table, no, name, type, file_name, import_id"
    " FROM fenmark_incoming";
inline constexpr const char* kInsertLots =
    "INSERT INTO lots (fid, geom, layer, \"No\", \"Name\", \"Type\", \"FileName\", closed, area, import_id)"
    " SELECT fid, geom, layer, no, name, type, file_name, closed, area, import_id FROM fenmark_incoming";
inline constexpr const char* kInsertAlignment =
    "INSERT INTO alignments (fid, geom, name, description, site_id, site, layer, start_station, length, first_style,"
    " second_style, import_id) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12)";
inline constexpr const char* kInsertElement =
    "INSERT INTO alignment_elements (alignment_id, place, element_id, type, start_x, start_y, end_x, end_y, direction,"
    " length, start_radius, end_radius, clockwise, centre_x, centre_y, pi_x, pi_y) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, "
    "?8, ?9, ?10, ?11, ?12, ?13, ?14, ?15,"
    " ?16, ?17)";
// A colour is "#rrggbb", or nothing for a text of no length.
inline constexpr const char* kInsertLayer =
    "INSERT INTO layers (id, name, colour) VALUES (?1, ?2, CASE ?3 WHEN '' THEN NULL ELSE ?3 END)";
inline constexpr const char* kInsertSite = "INSERT INTO sites (id, name) VALUES (?1, ?2)";
inline constexpr const char* kInsertTable = "INSERT INTO object_data_tables (id, name) VALUES (?1, ?2)";
inline constexpr const char* kInsertImport =
    "INSERT INTO fenmark_imports (id, \"FileName\", path, size, digest, time, points, lots, routes, alignments,"
    " longitudinal, cross_sections, errors, first_id, last_id)"
    " VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12, ?13, ?14, ?15)";
inline constexpr const char* kWriteDrawing =
    "UPDATE fenmark_drawing SET format = ?1, last_id = ?2, current_layer = ?3, zone = ?4, stamp = ?5 WHERE id = 1";
// What another program adds gets an identifier beyond all of ours, whichever table it goes into.
inline constexpr const char* kWriteSequences =
    "UPDATE sqlite_sequence SET seq = ?1 WHERE seq < ?1 AND name IN ('points', 'polylines', 'lots', 'alignments')";
inline constexpr const char* kBeginSequences =
    "DELETE FROM sqlite_sequence; INSERT INTO sqlite_sequence (name, seq) VALUES"
    " ('points', 0), ('polylines', 0), ('lots', 0), ('alignments', 0)";
inline constexpr const char* kGrowContents =
    "UPDATE gpkg_contents SET last_change = strftime('%Y-%m-%dT%H:%M:%fZ','now'),"
    " min_x = min(ifnull(min_x, ?2), ?2), min_y = min(ifnull(min_y, ?3), ?3),"
    " max_x = max(ifnull(max_x, ?4), ?4), max_y = max(ifnull(max_y, ?5), ?5) WHERE table_name = ?1";

// --- the zone of the coordinates ---
inline constexpr const char* kInsertSrs =
    "INSERT OR IGNORE INTO gpkg_spatial_ref_sys VALUES (?1, ?2, 'EPSG', ?2, ?3, NULL)";
inline constexpr const char* kSetContentsSrs =
    "UPDATE gpkg_contents SET srs_id = ?1 WHERE table_name IN ('points', 'polylines', 'lots', 'alignments')";
inline constexpr const char* kSetColumnsSrs =
    "UPDATE gpkg_geometry_columns SET srs_id = ?1 WHERE table_name IN ('points', 'polylines', 'lots', 'alignments')";
// with_srs(blob, id) is ours: the same blob under another reference system.
struct SetBlobSrs {
    const char* table;
    const char* sql;
};
inline constexpr SetBlobSrs kSetBlobSrs[] = {
    {"points", "UPDATE points SET geom = with_srs(geom, ?1)"},
    {"polylines", "UPDATE polylines SET geom = with_srs(geom, ?1)"},
    {"lots", "UPDATE lots SET geom = with_srs(geom, ?1)"},
    {"alignments", "UPDATE alignments SET geom = with_srs(geom, ?1)"},
};

} // namespace fenmark::drawing::sql
