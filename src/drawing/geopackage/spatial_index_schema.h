// The spatial index of a layer as statements: the R-tree extension of GeoPackage 1.3, one tree for each feature table.
//
// "@" stands for the name of the layer. Its geometry column is geom and its key fid.
#pragma once

namespace fenmark::drawing::sql {

// Not every build of SQLite has R-trees.
inline constexpr const char* kHasModule = "SELECT count(*) FROM pragma_module_list WHERE name = 'rtree'";
// As we make it, or the program that made it in our place, after blanks and quotation marks are gone.
inline constexpr const char* kReadIndexStatement =
    "SELECT sql FROM sqlite_master WHERE type = 'table' AND name = 'rtree_@_geom'";
inline constexpr const char* kIndexStatement = "CREATEVIRTUALTABLErtree_@_geomUSINGrtree(id,minx,maxx,miny,maxy)";
inline constexpr const char* kCreateIndex = "CREATE VIRTUAL TABLE rtree_@_geom USING rtree(id, minx, maxx, miny, maxy)";
inline constexpr const char* kDropIndex = "DROP TABLE rtree_@_geom";
inline constexpr const char* kDeclareIndex =
    "INSERT OR REPLACE INTO gpkg_extensions VALUES"
    " ('@', 'geom', 'gpkg_rtree_index', 'http://www.geopackage.org/spec120/#extension_rtree', 'write-only')";

// They keep the index true when another program writes; on our own connections no trigger runs. ST_IsEmpty, ST_MinX and so on are that program's to bring.
inline constexpr const char* kCreateIndexTriggers = R"sql(
CREATE TRIGGER rtree_@_geom_insert AFTER INSERT ON @
  WHEN (NEW.geom NOT NULL AND NOT ST_IsEmpty(NEW.geom))
BEGIN
  INSERT OR REPLACE INTO rtree_@_geom VALUES
    (NEW.fid, ST_MinX(NEW.geom), ST_MaxX(NEW.geom), ST_MinY(NEW.geom), ST_MaxY(NEW.geom));
END;
CREATE TRIGGER rtree_@_geom_update1 AFTER UPDATE OF geom ON @
  WHEN OLD.fid = NEW.fid AND (NEW.geom NOTNULL AND NOT ST_IsEmpty(NEW.geom))
BEGIN
  INSERT OR REPLACE INTO rtree_@_geom VALUES
    (NEW.fid, ST_MinX(NEW.geom), ST_MaxX(NEW.geom), ST_MinY(NEW.geom), ST_MaxY(NEW.geom));
END;
CREATE TRIGGER rtree_@_geom_update2 AFTER UPDATE OF geom ON @
  WHEN OLD.fid = NEW.fid AND (NEW.geom ISNULL OR ST_IsEmpty(NEW.geom))
BEGIN
  DELETE FROM rtree_@_geom WHERE id = OLD.fid;
END;
CREATE TRIGGER rtree_@_geom_update3 AFTER UPDATE ON @
  WHEN OLD.fid != NEW.fid AND (NEW.geom NOTNULL AND NOT ST_IsEmpty(NEW.geom))
BEGIN
  DELETE FROM rtree_@_geom WHERE id = OLD.fid;
  INSERT OR REPLACE INTO rtree_@_geom VALUES
    (NEW.fid, ST_MinX(NEW.geom), ST_MaxX(NEW.geom), ST_MinY(NEW.geom), ST_MaxY(NEW.geom));
END;
CREATE TRIGGER rtree_@_geom_update4 AFTER UPDATE ON @
  WHEN OLD.fid != NEW.fid AND (NEW.geom ISNULL OR ST_IsEmpty(NEW.geom))
BEGIN
  DELETE FROM rtree_@_geom WHERE id IN (OLD.fid, NEW.fid);
END;
CREATE TRIGGER rtree_@_geom_delete AFTER DELETE ON @
  WHEN OLD.geom NOT NULL
BEGIN
  DELETE FROM rtree_@_geom WHERE id = OLD.fid;
END;
)sql";

// Few changes go through the module, box by box.
inline constexpr const char* kCountStale = "SELECT count(*) FROM @ WHERE fid > ?1";
inline constexpr const char* kLastNode = "SELECT max(nodeno) FROM rtree_@_geom_node";
inline constexpr const char* kDeleteFromIndex =
    "DELETE FROM rtree_@_geom WHERE id IN (SELECT fid FROM @ WHERE fid > ?1)";
inline constexpr const char* kReadRemoved =
    "SELECT fid FROM @ WHERE fid BETWEEN ?1 AND ?2 AND (import_id = ?3 OR import_id IS NULL)";
inline constexpr const char* kDeleteOne = "DELETE FROM rtree_@_geom WHERE id = ?1";
inline constexpr const char* kMoveOne = "UPDATE rtree_@_geom SET id = ?2 WHERE id = ?1";
inline constexpr const char* kInsertIntoIndex = "INSERT OR REPLACE INTO rtree_@_geom VALUES (?1, ?2, ?3, ?4, ?5)";

// Many changes make the tree anew, packed, in the tables in which the module keeps it.
inline constexpr const char* kCountBoxes = "SELECT count(*) FROM rtree_@_geom_rowid";
inline constexpr const char* kReadIndex = "SELECT id, minx, maxx, miny, maxy FROM rtree_@_geom";
inline constexpr const char* kNodeSize = "SELECT length(data) FROM rtree_@_geom_node WHERE nodeno = 1";
inline constexpr const char* kInsertNode = "INSERT OR REPLACE INTO rtree_@_geom_node VALUES (?1, ?2)";
inline constexpr const char* kInsertParent = "INSERT INTO rtree_@_geom_parent VALUES (?1, ?2)";
inline constexpr const char* kLeafColumns = "id, node";
inline constexpr const char* kInsertLeaves = "INSERT INTO rtree_@_geom_rowid SELECT id, node FROM fenmark_incoming";

} // namespace fenmark::drawing::sql
