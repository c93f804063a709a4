CREATE INDEX alignment_elements_order ON alignment_elements (alignment_id, place);
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
CREATE TABLE fenmark_drawing (
    id INTEGER PRIMARY KEY NOT NULL,
    format INTEGER,
    last_id INTEGER,
    current_layer INTEGER,
    zone INTEGER,
    stamp TEXT
);
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
CREATE TABLE gpkg_extensions (
    table_name TEXT,
    column_name TEXT,
    extension_name TEXT NOT NULL,
    definition TEXT NOT NULL,
    scope TEXT NOT NULL,
    CONSTRAINT ge_tce UNIQUE (table_name, column_name, extension_name)
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
CREATE TABLE gpkg_spatial_ref_sys (
    srs_name TEXT NOT NULL,
    srs_id INTEGER NOT NULL PRIMARY KEY,
    organization TEXT NOT NULL,
    organization_coordsys_id INTEGER NOT NULL,
    definition TEXT NOT NULL,
    description TEXT
);
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
CREATE TABLE layers (
    id INTEGER PRIMARY KEY NOT NULL,
    name TEXT,
    colour TEXT
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
CREATE TABLE object_data_tables (
    id INTEGER PRIMARY KEY NOT NULL,
    name TEXT
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
CREATE VIRTUAL TABLE rtree_alignments_geom USING rtree(id, minx, maxx, miny, maxy);
CREATE VIRTUAL TABLE rtree_lots_geom USING rtree(id, minx, maxx, miny, maxy);
CREATE VIRTUAL TABLE rtree_points_geom USING rtree(id, minx, maxx, miny, maxy);
CREATE VIRTUAL TABLE rtree_polylines_geom USING rtree(id, minx, maxx, miny, maxy);
CREATE TABLE sites (
    id INTEGER PRIMARY KEY NOT NULL,
    name TEXT
);
CREATE TRIGGER fenmark_elements_follow AFTER DELETE ON alignments BEGIN DELETE FROM alignment_elements WHERE alignment_id = OLD.fid; END;
CREATE TRIGGER fenmark_lots_follow AFTER DELETE ON polylines BEGIN DELETE FROM lots WHERE fid = OLD.fid; END;
CREATE TRIGGER rtree_alignments_geom_delete AFTER DELETE ON alignments
  WHEN OLD.geom NOT NULL
BEGIN
  DELETE FROM rtree_alignments_geom WHERE id = OLD.fid;
END;
CREATE TRIGGER rtree_alignments_geom_insert AFTER INSERT ON alignments
  WHEN (NEW.geom NOT NULL AND NOT ST_IsEmpty(NEW.geom))
BEGIN
  INSERT OR REPLACE INTO rtree_alignments_geom VALUES
    (NEW.fid, ST_MinX(NEW.geom), ST_MaxX(NEW.geom), ST_MinY(NEW.geom), ST_MaxY(NEW.geom));
END;
CREATE TRIGGER rtree_alignments_geom_update1 AFTER UPDATE OF geom ON alignments
  WHEN OLD.fid = NEW.fid AND (NEW.geom NOTNULL AND NOT ST_IsEmpty(NEW.geom))
BEGIN
  INSERT OR REPLACE INTO rtree_alignments_geom VALUES
    (NEW.fid, ST_MinX(NEW.geom), ST_MaxX(NEW.geom), ST_MinY(NEW.geom), ST_MaxY(NEW.geom));
END;
CREATE TRIGGER rtree_alignments_geom_update2 AFTER UPDATE OF geom ON alignments
  WHEN OLD.fid = NEW.fid AND (NEW.geom ISNULL OR ST_IsEmpty(NEW.geom))
BEGIN
  DELETE FROM rtree_alignments_geom WHERE id = OLD.fid;
END;
CREATE TRIGGER rtree_alignments_geom_update3 AFTER UPDATE ON alignments
  WHEN OLD.fid != NEW.fid AND (NEW.geom NOTNULL AND NOT ST_IsEmpty(NEW.geom))
BEGIN
  DELETE FROM rtree_alignments_geom WHERE id = OLD.fid;
  INSERT OR REPLACE INTO rtree_alignments_geom VALUES
    (NEW.fid, ST_MinX(NEW.geom), ST_MaxX(NEW.geom), ST_MinY(NEW.geom), ST_MaxY(NEW.geom));
END;
CREATE TRIGGER rtree_alignments_geom_update4 AFTER UPDATE ON alignments
  WHEN OLD.fid != NEW.fid AND (NEW.geom ISNULL OR ST_IsEmpty(NEW.geom))
BEGIN
  DELETE FROM rtree_alignments_geom WHERE id IN (OLD.fid, NEW.fid);
END;
CREATE TRIGGER rtree_lots_geom_delete AFTER DELETE ON lots
  WHEN OLD.geom NOT NULL
BEGIN
  DELETE FROM rtree_lots_geom WHERE id = OLD.fid;
END;
CREATE TRIGGER rtree_lots_geom_insert AFTER INSERT ON lots
  WHEN (NEW.geom NOT NULL AND NOT ST_IsEmpty(NEW.geom))
BEGIN
  INSERT OR REPLACE INTO rtree_lots_geom VALUES
    (NEW.fid, ST_MinX(NEW.geom), ST_MaxX(NEW.geom), ST_MinY(NEW.geom), ST_MaxY(NEW.geom));
END;
CREATE TRIGGER rtree_lots_geom_update1 AFTER UPDATE OF geom ON lots
  WHEN OLD.fid = NEW.fid AND (NEW.geom NOTNULL AND NOT ST_IsEmpty(NEW.geom))
BEGIN
  INSERT OR REPLACE INTO rtree_lots_geom VALUES
    (NEW.fid, ST_MinX(NEW.geom), ST_MaxX(NEW.geom), ST_MinY(NEW.geom), ST_MaxY(NEW.geom));
END;
CREATE TRIGGER rtree_lots_geom_update2 AFTER UPDATE OF geom ON lots
  WHEN OLD.fid = NEW.fid AND (NEW.geom ISNULL OR ST_IsEmpty(NEW.geom))
BEGIN
  DELETE FROM rtree_lots_geom WHERE id = OLD.fid;
END;
CREATE TRIGGER rtree_lots_geom_update3 AFTER UPDATE ON lots
  WHEN OLD.fid != NEW.fid AND (NEW.geom NOTNULL AND NOT ST_IsEmpty(NEW.geom))
BEGIN
  DELETE FROM rtree_lots_geom WHERE id = OLD.fid;
  INSERT OR REPLACE INTO rtree_lots_geom VALUES
    (NEW.fid, ST_MinX(NEW.geom), ST_MaxX(NEW.geom), ST_MinY(NEW.geom), ST_MaxY(NEW.geom));
END;
CREATE TRIGGER rtree_lots_geom_update4 AFTER UPDATE ON lots
  WHEN OLD.fid != NEW.fid AND (NEW.geom ISNULL OR ST_IsEmpty(NEW.geom))
BEGIN
  DELETE FROM rtree_lots_geom WHERE id IN (OLD.fid, NEW.fid);
END;
CREATE TRIGGER rtree_points_geom_delete AFTER DELETE ON points
  WHEN OLD.geom NOT NULL
BEGIN
  DELETE FROM rtree_points_geom WHERE id = OLD.fid;
END;
CREATE TRIGGER rtree_points_geom_insert AFTER INSERT ON points
  WHEN (NEW.geom NOT NULL AND NOT ST_IsEmpty(NEW.geom))
BEGIN
  INSERT OR REPLACE INTO rtree_points_geom VALUES
    (NEW.fid, ST_MinX(NEW.geom), ST_MaxX(NEW.geom), ST_MinY(NEW.geom), ST_MaxY(NEW.geom));
END;
CREATE TRIGGER rtree_points_geom_update1 AFTER UPDATE OF geom ON points
  WHEN OLD.fid = NEW.fid AND (NEW.geom NOTNULL AND NOT ST_IsEmpty(NEW.geom))
BEGIN
  INSERT OR REPLACE INTO rtree_points_geom VALUES
    (NEW.fid, ST_MinX(NEW.geom), ST_MaxX(NEW.geom), ST_MinY(NEW.geom), ST_MaxY(NEW.geom));
END;
CREATE TRIGGER rtree_points_geom_update2 AFTER UPDATE OF geom ON points
  WHEN OLD.fid = NEW.fid AND (NEW.geom ISNULL OR ST_IsEmpty(NEW.geom))
BEGIN
  DELETE FROM rtree_points_geom WHERE id = OLD.fid;
END;
CREATE TRIGGER rtree_points_geom_update3 AFTER UPDATE ON points
  WHEN OLD.fid != NEW.fid AND (NEW.geom NOTNULL AND NOT ST_IsEmpty(NEW.geom))
BEGIN
  DELETE FROM rtree_points_geom WHERE id = OLD.fid;
  INSERT OR REPLACE INTO rtree_points_geom VALUES
    (NEW.fid, ST_MinX(NEW.geom), ST_MaxX(NEW.geom), ST_MinY(NEW.geom), ST_MaxY(NEW.geom));
END;
CREATE TRIGGER rtree_points_geom_update4 AFTER UPDATE ON points
  WHEN OLD.fid != NEW.fid AND (NEW.geom ISNULL OR ST_IsEmpty(NEW.geom))
BEGIN
  DELETE FROM rtree_points_geom WHERE id IN (OLD.fid, NEW.fid);
END;
CREATE TRIGGER rtree_polylines_geom_delete AFTER DELETE ON polylines
  WHEN OLD.geom NOT NULL
BEGIN
  DELETE FROM rtree_polylines_geom WHERE id = OLD.fid;
END;
CREATE TRIGGER rtree_polylines_geom_insert AFTER INSERT ON polylines
  WHEN (NEW.geom NOT NULL AND NOT ST_IsEmpty(NEW.geom))
BEGIN
  INSERT OR REPLACE INTO rtree_polylines_geom VALUES
    (NEW.fid, ST_MinX(NEW.geom), ST_MaxX(NEW.geom), ST_MinY(NEW.geom), ST_MaxY(NEW.geom));
END;
CREATE TRIGGER rtree_polylines_geom_update1 AFTER UPDATE OF geom ON polylines
  WHEN OLD.fid = NEW.fid AND (NEW.geom NOTNULL AND NOT ST_IsEmpty(NEW.geom))
BEGIN
  INSERT OR REPLACE INTO rtree_polylines_geom VALUES
    (NEW.fid, ST_MinX(NEW.geom), ST_MaxX(NEW.geom), ST_MinY(NEW.geom), ST_MaxY(NEW.geom));
END;
CREATE TRIGGER rtree_polylines_geom_update2 AFTER UPDATE OF geom ON polylines
  WHEN OLD.fid = NEW.fid AND (NEW.geom ISNULL OR ST_IsEmpty(NEW.geom))
BEGIN
  DELETE FROM rtree_polylines_geom WHERE id = OLD.fid;
END;
CREATE TRIGGER rtree_polylines_geom_update3 AFTER UPDATE ON polylines
  WHEN OLD.fid != NEW.fid AND (NEW.geom NOTNULL AND NOT ST_IsEmpty(NEW.geom))
BEGIN
  DELETE FROM rtree_polylines_geom WHERE id = OLD.fid;
  INSERT OR REPLACE INTO rtree_polylines_geom VALUES
    (NEW.fid, ST_MinX(NEW.geom), ST_MaxX(NEW.geom), ST_MinY(NEW.geom), ST_MaxY(NEW.geom));
END;
CREATE TRIGGER rtree_polylines_geom_update4 AFTER UPDATE ON polylines
  WHEN OLD.fid != NEW.fid AND (NEW.geom ISNULL OR ST_IsEmpty(NEW.geom))
BEGIN
  DELETE FROM rtree_polylines_geom WHERE id IN (OLD.fid, NEW.fid);
END;
-- gpkg_spatial_ref_sys
JGD2011 / Japan Plane Rectangular CS IX|6677|EPSG|6677|PROJCS["JGD2011 / Japan Plane Rectangular CS IX",GEOGCS["JGD2011",DATUM["Japanese_Geodetic_Datum_2011",SPHEROID["GRS 1980",6378137,298.257222101,AUTHORITY["EPSG","7019"]],AUTHORITY["EPSG","1128"]],PRIMEM["Greenwich",0,AUTHORITY["EPSG","8901"]],UNIT["degree",0.0174532925199433,AUTHORITY["EPSG","9122"]],AUTHORITY["EPSG","6668"]],PROJECTION["Transverse_Mercator"],PARAMETER["latitude_of_origin",36],PARAMETER["central_meridian",139.833333333333],PARAMETER["scale_factor",0.9999],PARAMETER["false_easting",0],PARAMETER["false_northing",0],UNIT["metre",1,AUTHORITY["EPSG","9001"]],AXIS["X",NORTH],AXIS["Y",EAST],AUTHORITY["EPSG","6677"]]|NULL
Undefined cartesian SRS|-1|NONE|-1|undefined|undefined cartesian coordinate reference system
Undefined geographic SRS|0|NONE|0|undefined|undefined geographic coordinate reference system
WGS 84 geodetic|4326|EPSG|4326|GEOGCS["WGS 84",DATUM["WGS_1984",SPHEROID["WGS 84",6378137,298.257223563,AUTHORITY["EPSG","7030"]],AUTHORITY["EPSG","6326"]],PRIMEM["Greenwich",0,AUTHORITY["EPSG","8901"]],UNIT["degree",0.0174532925199433,AUTHORITY["EPSG","9122"]],AXIS["Latitude",NORTH],AXIS["Longitude",EAST],AUTHORITY["EPSG","4326"]]|longitude/latitude coordinates in decimal degrees on the WGS 84 spheroid
-- gpkg_geometry_columns
alignments|geom|LINESTRING|6677|0|0
lots|geom|POLYGON|6677|0|0
points|geom|POINT|6677|1|0
polylines|geom|LINESTRING|6677|0|0
-- gpkg_extensions
alignments|geom|gpkg_rtree_index|http://www.geopackage.org/spec120/#extension_rtree|write-only
lots|geom|gpkg_rtree_index|http://www.geopackage.org/spec120/#extension_rtree|write-only
points|geom|gpkg_rtree_index|http://www.geopackage.org/spec120/#extension_rtree|write-only
polylines|geom|gpkg_rtree_index|http://www.geopackage.org/spec120/#extension_rtree|write-only
-- object_data_tables
2|JSIMA_V3_Point
3|JSIMA_V3_Pline
-- layers
1|0|NULL
-- sites
14|サイト
-- gpkg_contents
alignment_elements|attributes|alignment_elements|Exact elements: S straight, R arc, A clothoid|NULL
alignments|features|alignments|Alignments as lines within 1 mm of the curve|6677
fenmark_drawing|attributes|fenmark_drawing|Settings of the drawing|NULL
fenmark_imports|attributes|fenmark_imports|Imports: which file, when, and what came of it|NULL
layer_styles|attributes|layer_styles|Styles of the layers|NULL
layers|attributes|layers|Layers of the drawing|NULL
lots|features|lots|Lots and closed polylines as areas|6677
object_data_tables|attributes|object_data_tables|Tables of object data|NULL
points|features|points|Points with their source|6677
polylines|features|polylines|Polylines with their source|6677
sites|attributes|sites|Sites of the drawing|NULL
-- pragmas
1196444487
10300
UTF-8
