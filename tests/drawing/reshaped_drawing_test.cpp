// What other programs may do to the tables of a drawing: what only lies beside ours is kept and written past, what would
// have to be run keeps every save out, and what is ours and is missing is told by name.
#include "drawing/index_check.h"
#include "support/drawing_support.h"

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace fenmark::drawing {
namespace {

struct Change {
    const char* sql;
    const char* refusal; // part of what the save says; empty where it succeeds
};

class ReshapedDrawing : public SavedDrawing {
  protected:
    // A copy of the drawing after the change.
    std::string changed(const std::string& sql) {
        std::string copy = folder_.at("copy" + std::to_string(++copies_) + ".gpkg");
        std::filesystem::copy_file(path_, copy);
        const std::vector<std::string> said = OtherProgram(copy).ask("PRAGMA foreign_keys = OFF; " + sql);
        EXPECT_TRUE(said.empty()) << sql << ": " << said.front();
        return copy;
    }

  private:
    int copies_ = 0;
};

TEST_F(ReshapedDrawing, WhatWouldBeComputedForARowKeepsEverySaveOut) {
    const Change changes[] = {
        {"ALTER TABLE points ADD COLUMN memo TEXT CHECK (length(memo) < 9)", "a CHECK of the table 'points'"},
        {"ALTER TABLE sites ADD COLUMN memo TEXT check/* why */(memo <> '')", "a CHECK of the table 'sites'"},
        {"ALTER TABLE sites ADD COLUMN memo TEXT CHECK-- why\n(memo <> '')", "a CHECK of the table 'sites'"},
        {"ALTER TABLE fenmark_imports ADD COLUMN memo TEXT DEFAULT (hex(7))",
         "the default of the column 'fenmark_imports.memo'"},
        {"ALTER TABLE fenmark_imports ADD COLUMN memo TEXT DEFAULT (strftime(hex(7), 'now'))",
         "the default of the column 'fenmark_imports.memo'"},
        {"ALTER TABLE points ADD COLUMN memo TEXT NOT NULL GENERATED ALWAYS AS (hex(fid)) VIRTUAL",
         "the generated column 'points.memo'"},
        {"DROP TABLE fenmark_imports; CREATE TABLE fenmark_imports (fid INTEGER PRIMARY KEY, memo TEXT GENERATED "
         "ALWAYS AS (hex(fid)) STORED)",
         "the generated column 'fenmark_imports.memo'"},
        {"ALTER TABLE points ADD COLUMN memo TEXT GENERATED ALWAYS AS (hex(fid)) VIRTUAL;"
         "CREATE INDEX further ON points (\"Name\", memo)",
         "the index 'further' of the table 'points'"},
        {"CREATE INDEX further ON points (\"Name\") WHERE fid > 1", "the index 'further' of the table 'points'"},
        {"ALTER TABLE sites ADD COLUMN \"check\" TEXT", ""},
        {"ALTER TABLE sites ADD COLUMN checked TEXT", ""},
        {"ALTER TABLE sites ADD COLUMN memo TEXT DEFAULT '(none)'", ""},
        {"ALTER TABLE fenmark_imports ADD COLUMN memo TEXT DEFAULT (strftime('%Y', 'now'))", ""},
        {"CREATE INDEX further ON points (\"Name\")", ""},
    };
    for (const auto& [sql, refusal] : changes) {
        const std::string path = changed(sql);
        Drawing drawing;
        DrawingStore store;
        const Outcome opened = store.open(path, drawing);
        ASSERT_TRUE(opened) << sql << ": " << opened.message.english;
        EXPECT_EQ(describe(drawing), describe(drawing_)) << sql;
        const std::string before = test::readFile(path);
        addSmallImport(drawing, 1);
        const Outcome saved = store.save(path, drawing);
        if (*refusal == '\0') {
            EXPECT_TRUE(saved) << sql << ": " << saved.message.english;
            continue;
        }
        EXPECT_EQ(saved.failure, Failure::Reshaped) << sql;
        EXPECT_NE(saved.message.english.find(refusal), std::string::npos) << sql << ": " << saved.message.english;
        EXPECT_NE(saved.message.japanese.find("計算させることになります"), std::string::npos) << saved.message.japanese;
        EXPECT_EQ(test::readFile(path), before) << sql;
        // Under another name it is a drawing as any other.
        ASSERT_TRUE(store.save(folder_.at("other.gpkg"), drawing)) << sql;
        Drawing other;
        ASSERT_TRUE(DrawingStore().open(folder_.at("other.gpkg"), other));
        EXPECT_EQ(describe(other), describe(drawing)) << sql;
    }
}

// Rows whose identifiers are texts, or occur twice, would be taken for new ones and go.
TEST_F(ReshapedDrawing, IdentifiersThatAreNoKeyKeepEverySaveOut) {
    for (const std::string table :
         {"points", "polylines", "lots", "alignments", "layers", "sites", "object_data_tables", "fenmark_imports"}) {
        const std::string path = changed("PRAGMA legacy_alter_table = ON; CREATE TABLE copy AS SELECT * FROM " + table +
                                         "; DROP TABLE " + table + "; ALTER TABLE copy RENAME TO " + table);
        const std::string before = test::readFile(path);
        Drawing drawing;
        DrawingStore store;
        ASSERT_TRUE(store.open(path, drawing)) << table;
        EXPECT_EQ(describe(drawing), describe(drawing_)) << table;
        addSmallImport(drawing, 1);
        const Outcome saved = store.save(path, drawing);
        EXPECT_EQ(saved.failure, Failure::Reshaped) << table;
        EXPECT_NE(saved.message.english.find("id' is no primary key of integers"), std::string::npos)
            << saved.message.english;
        EXPECT_NE(saved.message.japanese.find("整数の主キーではありません"), std::string::npos);
        EXPECT_TRUE(test::readFile(path) == before) << table;
    }
}

// Each row of one with each of the other would be more than any file holds.
TEST_F(ReshapedDrawing, ManyPolylinesAndLotsOfOneIdentifierAreReadOnceEach) {
    constexpr std::size_t kRows = 1000;
    std::string sql = "PRAGMA legacy_alter_table = ON;";
    for (const std::string table : {"polylines", "lots"}) {
        sql += "CREATE TABLE copy AS SELECT * FROM " + table + " WHERE fid = (SELECT min(fid) FROM lots); DROP TABLE " +
               table + "; ALTER TABLE copy RENAME TO " + table + "; INSERT INTO " + table +
               " WITH RECURSIVE n(i) AS (SELECT 2 UNION ALL SELECT i + 1 FROM n WHERE i < " + std::to_string(kRows) +
               ") SELECT " + table + ".* FROM " + table + ", n;";
    }
    const std::string path = changed(sql);
    Drawing drawing;
    const Outcome opened = DrawingStore().open(path, drawing);
    ASSERT_TRUE(opened) << opened.message.english;
    std::size_t polylines = 0;
    for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
        polylines += drawing.isPoint(i) ? 0 : 1;
    }
    EXPECT_EQ(polylines, kRows);
}

TEST_F(ReshapedDrawing, WhatTheRowsOfAnImportWouldNotReachKeepsItOut) {
    const std::string columns =
        "fid, geom, layer, closed, vertices, lightweight, data_table, no, name, type, file_name, "
        "area, import_id, id, node";
    const std::vector<std::pair<std::string, std::string>> changes = {
        {"CREATE TABLE fenmark_incoming (" + columns + ")", "a table named 'fenmark_incoming'"},
        {"ALTER TABLE fenmark_imports DROP COLUMN digest", "its table 'fenmark_imports' has no column 'digest'"},
        {"ALTER TABLE fenmark_imports DROP COLUMN last_id", "its table 'fenmark_imports' has no column 'last_id'"},
        {"CREATE TABLE incoming (" + columns + ")", ""}};
    for (const auto& [sql, refusal] : changes) {
        const std::string path = changed(sql);
        Drawing drawing;
        DrawingStore store;
        ASSERT_TRUE(store.open(path, drawing)) << sql;
        addSmallImport(drawing, 1);
        const Outcome saved = store.save(path, drawing);
        if (refusal.empty()) {
            ASSERT_TRUE(saved) << saved.message.english;
            Drawing again;
            ASSERT_TRUE(DrawingStore().open(path, again));
            EXPECT_EQ(describe(again), describe(drawing));
            continue;
        }
        EXPECT_EQ(saved.failure, Failure::Reshaped) << sql;
        EXPECT_NE(saved.message.english.find(refusal), std::string::npos) << saved.message.english;
    }
}

TEST_F(ReshapedDrawing, AnIndexThatLetsNoValueStandTwiceKeepsItOut) {
    const std::string path = changed("CREATE UNIQUE INDEX once ON layers (name)");
    Drawing drawing;
    DrawingStore store;
    ASSERT_TRUE(store.open(path, drawing));
    addSmallImport(drawing, 1);
    const Outcome saved = store.save(path, drawing);
    EXPECT_EQ(saved.failure, Failure::Reshaped);
    EXPECT_NE(saved.message.english.find("the index 'once' of the table 'layers' lets no value stand twice"),
              std::string::npos)
        << saved.message.english;
}

// Whatever else a table may have been given, its words alone would not say whose they are.
TEST_F(ReshapedDrawing, ARuleThatKeepsARowOutIsToldAsOneThatWasAdded) {
    const std::string renewed = "PRAGMA legacy_alter_table = ON; ALTER TABLE % RENAME TO former; CREATE TABLE % (";
    const std::pair<std::string, std::string> tables[] = {
        {"sites", "id INTEGER PRIMARY KEY NOT NULL, name TEXT UNIQUE ON CONFLICT ABORT, memo TEXT NOT NULL"},
        {"layers", "id INTEGER PRIMARY KEY NOT NULL, name TEXT, colour TEXT, memo INTEGER NOT NULL"},
        {"alignment_elements",
         "id INTEGER NOT NULL, alignment_id, place, element_id, type, start_x, start_y, end_x, "
         "end_y, direction, length, start_radius, end_radius, clockwise, centre_x, centre_y, pi_x, "
         "pi_y"}};
    for (const auto& [table, columns] : tables) {
        std::string sql = renewed + columns + ")";
        for (std::size_t at = sql.find('%'); at != std::string::npos; at = sql.find('%')) {
            sql.replace(at, 1, table);
        }
        const bool hasMemo = columns.find("memo") != std::string::npos;
        const std::string path = changed(sql + "; INSERT INTO " + table + " SELECT *" + (hasMemo ? ", 7" : "") +
                                         " FROM former; DROP TABLE former");
        const std::string before = test::readFile(path);
        Drawing drawing;
        DrawingStore store;
        const Outcome opened = store.open(path, drawing);
        ASSERT_TRUE(opened) << table << ": " << opened.message.english;
        drawing.addLayer("新");
        drawing.addSite("新");
        addSmallImport(drawing, 1);
        const Outcome saved = store.save(path, drawing);
        EXPECT_EQ(saved.failure, Failure::Reshaped) << table;
        EXPECT_NE(
            saved.message.english.find("a rule that was added keeps a row out: NOT NULL constraint failed: " + table),
            std::string::npos)
            << saved.message.english;
        EXPECT_NE(saved.message.japanese.find("追加された規則により行を書けません"), std::string::npos);
        EXPECT_TRUE(test::readFile(path) == before) << table;
    }
}

// The drawing has no zone: its coordinates may be said to be in any, but may be no degrees.
TEST_F(ReshapedDrawing, ATableInAnotherReferenceSystemIsRefused) {
    const std::string srs = "INSERT OR IGNORE INTO gpkg_spatial_ref_sys VALUES ('a', %, 'EPSG', %, 'b', 'c');"
                            "UPDATE gpkg_geometry_columns SET srs_id = % WHERE table_name = 'points'";
    const std::pair<const char*, bool> systems[] = {
        {"6669", true},  {"6687", true},  {"2443", true},   {"30179", true},  {"0", true},
        {"-1", true},    {"1", false},    {"4326", false},  {"6668", false},  {"6688", false},
        {"2442", false}, {"2462", false}, {"30160", false}, {"30180", false}, {"3857", false}};
    for (const auto& [system, sound] : systems) {
        std::string sql = srs;
        for (std::size_t at = sql.find('%'); at != std::string::npos; at = sql.find('%')) {
            sql.replace(at, 1, system);
        }
        Drawing drawing;
        const Outcome opened = DrawingStore().open(changed(sql), drawing);
        EXPECT_EQ(opened.failure, sound ? Failure::None : Failure::Reshaped) << system << opened.message.english;
        if (!sound) {
            EXPECT_NE(opened.message.english.find("its table 'points' was brought into the reference system " +
                                                  std::string(system)),
                      std::string::npos)
                << opened.message.english;
        }
    }
}

TEST_F(ReshapedDrawing, AColumnOfOursThatIsGeneratedIsRefused) {
    for (const auto& [table, column] : {std::pair("alignments", "description"), std::pair("points", "Name")}) {
        const std::string name = "\"" + std::string(column) + "\"";
        const std::string alter = "ALTER TABLE " + std::string(table);
        Drawing drawing;
        const Outcome opened =
            DrawingStore().open(changed(alter + " DROP COLUMN " + name + ";" + alter + " ADD COLUMN " + name +
                                        " TEXT GENERATED ALWAYS AS (hex(fid)) VIRTUAL"),
                                drawing);
        EXPECT_EQ(opened.failure, Failure::Reshaped) << table;
        EXPECT_NE(opened.message.english.find("its column '" + std::string(table) + "." + column +
                                              "' was replaced by a generated one"),
                  std::string::npos)
            << opened.message.english;
    }
}

// A zone has one system; a drawing of zone 9 is not read as one of zone 8, nor in another datum.
TEST_F(ReshapedDrawing, ATableOfAnotherZoneIsRefused) {
    for (const auto& [srs, failure] :
         {std::pair{"6677", Failure::None}, {"6676", Failure::Reshaped}, {"2451", Failure::Reshaped}}) {
        Drawing drawing;
        const std::string path =
            changed("UPDATE fenmark_drawing SET zone = 9; UPDATE gpkg_geometry_columns SET srs_id = 6677; "
                    "UPDATE gpkg_geometry_columns SET srs_id = " +
                    std::string(srs) + " WHERE table_name = 'alignments'");
        EXPECT_EQ(DrawingStore().open(path, drawing).failure, failure) << srs;
    }
}

TEST_F(ReshapedDrawing, WhatIsMissingIsToldByName) {
    const Change changes[] = {
        {"CREATE TABLE Pragma_table_xinfo (name)", "it has a table named 'pragma_...', as SQLite's own are"},
        {"CREATE VIEW pragma_index_list AS SELECT 1 AS name", "it has a table named 'pragma_...', as SQLite's own are"},
        {"ALTER TABLE sites RENAME COLUMN name TO n", "its table 'sites' has no column 'name'; was it renamed?"},
        {"ALTER TABLE fenmark_drawing RENAME COLUMN format TO f",
         "its table 'fenmark_drawing' has no column 'format'; was it renamed?"},
        {"ALTER TABLE sites RENAME TO a", "its table 'sites' is missing; it seems to be named 'a' now"},
        {"ALTER TABLE sites RENAME TO a; CREATE TABLE b AS SELECT * FROM a", "its table 'sites' is missing)"},
        {"DROP TABLE object_data_tables; CREATE VIRTUAL TABLE object_data_tables USING rtree(id, a, b)",
         "its table 'object_data_tables' was replaced by a view or a table of another kind"},
    };
    for (const auto& [sql, refusal] : changes) {
        const std::string path = changed(sql);
        const std::string before = test::readFile(path);
        Drawing drawing;
        addSmallImport(drawing, 5);
        const std::string own = describe(drawing);
        const Outcome opened = DrawingStore().open(path, drawing);
        EXPECT_EQ(opened.failure, Failure::Reshaped) << sql;
        EXPECT_NE(opened.message.english.find(refusal), std::string::npos) << opened.message.english;
        EXPECT_EQ(describe(drawing), own) << "a drawing that is not read leaves the one before";
        EXPECT_EQ(test::readFile(path), before);
    }
}

// Of each table: the columns without which it cannot be read, and those that are empty where they are missing.
TEST_F(ReshapedDrawing, EveryTableAndColumnThatIsReadIsToldOfWhereItIsMissing) {
    const struct {
        std::string table;
        std::vector<std::string> needed;
        std::vector<std::string> attributes;
    } kTables[] = {
        {"points", {"fid", "geom"}, {"layer", "data_table", "No", "Name", "Type", "FileName"}},
        {"polylines",
         {"fid", "geom"},
         {"layer", "closed", "vertices", "lightweight", "data_table", "No", "Name", "Type", "FileName"}},
        {"alignments",
         {"fid", "geom", "site_id"},
         {"name", "description", "site", "layer", "start_station", "length", "first_style", "second_style"}},
        {"alignment_elements",
         {"alignment_id", "place", "element_id", "type", "start_x", "start_y", "end_x", "end_y", "direction", "length",
          "start_radius", "end_radius", "clockwise"},
         {"centre_x", "centre_y", "pi_x", "pi_y"}},
        {"layers", {"id", "name"}, {}},
        {"sites", {"id", "name"}, {}},
        {"object_data_tables", {"id", "name"}, {}},
        {"lots", {"fid", "geom"}, {"layer", "No", "Name", "Type", "FileName"}},
        {"fenmark_drawing", {"id", "format", "last_id", "current_layer", "zone"}, {}},
        {"gpkg_contents", {"table_name", "data_type", "last_change", "min_x", "min_y", "max_x", "max_y"}, {}},
    };
    for (const auto& c : kTables) {
        for (const Load load : {Load::Everything, Load::WithoutEntities}) {
            if (c.table != "lots") {
                Drawing drawing;
                const Outcome opened = DrawingStore().open(changed("DROP TABLE " + c.table), drawing, load);
                EXPECT_EQ(opened.failure, c.table == "fenmark_drawing" ? Failure::NotOurs : Failure::Reshaped)
                    << c.table;
                EXPECT_EQ(opened.message.english.find("its table '" + c.table + "' is missing") != std::string::npos,
                          c.table != "fenmark_drawing")
                    << opened.message.english;
            }
            const auto without = [&](const std::string& column) {
                return changed("ALTER TABLE " + c.table + " RENAME COLUMN \"" + column + "\" TO another");
            };
            for (const std::string& column : c.needed) {
                Drawing drawing;
                const Outcome opened = DrawingStore().open(without(column), drawing, load);
                EXPECT_EQ(opened.failure, Failure::Reshaped) << c.table << '.' << column;
                const std::string told = "its table '" + c.table + "' has no column '" + column + "'; was it renamed?";
                EXPECT_NE(opened.message.english.find(told), std::string::npos) << opened.message.english;
            }
            for (const std::string& column : c.attributes) {
                Drawing drawing;
                DrawingStore store;
                ASSERT_TRUE(store.open(without(column), drawing, load)) << c.table << '.' << column;
                ASSERT_EQ(store.notes().size(), 1U) << c.table << '.' << column;
                EXPECT_EQ(store.notes()[0].code, StoreNoteCode::MissingColumn);
                EXPECT_EQ(store.notes()[0].table, c.table);
                EXPECT_EQ(store.notes()[0].name, column);
            }
        }
    }
}

TEST_F(ReshapedDrawing, WithoutItsStampItGetsOneWithTheNextSave) {
    const std::string path = changed("ALTER TABLE fenmark_drawing DROP COLUMN stamp");
    Drawing drawing;
    DrawingStore store;
    const Outcome opened = store.open(path, drawing);
    ASSERT_TRUE(opened) << opened.message.english;
    addSmallImport(drawing, 1);
    const Outcome saved = store.save(path, drawing);
    ASSERT_TRUE(saved) << saved.message.english;
    EXPECT_NE(OtherProgram(path).one("SELECT stamp FROM fenmark_drawing"), "");
}

TEST_F(ReshapedDrawing, WithoutItsAreasItSaysSoAndIsSaved) {
    const std::string path = changed("DROP TABLE lots");
    Drawing drawing;
    DrawingStore store;
    ASSERT_TRUE(store.open(path, drawing));
    ASSERT_FALSE(store.notes().empty());
    EXPECT_EQ(store.notes().front().code, StoreNoteCode::MissingTable);
    EXPECT_EQ(noteText(store.notes().front()), "the table 'lots' is missing: it is not written");
    addSmallImport(drawing, 1);
    ASSERT_TRUE(store.save(path, drawing));
    EXPECT_EQ(OtherProgram(path).one("SELECT count(*) FROM sqlite_master WHERE name = 'lots'"), "0");
}

// Values that a drawing never has are put right where that loses nothing, and are refused where it would.
TEST_F(ReshapedDrawing, ValuesThatADrawingNeverHasAreRefusedOrPutRight) {
    const Change refused[] = {
        {"PRAGMA application_id = 7", "is a database, but not a drawing"},
        {"DROP TRIGGER rtree_points_geom_insert; INSERT INTO points (fid, geom, layer) SELECT -3, geom, '0'"
         " FROM points LIMIT 1",
         "point"},
    };
    for (const auto& [sql, refusal] : refused) {
        Drawing drawing;
        const Outcome opened = DrawingStore().open(changed(sql), drawing);
        EXPECT_FALSE(opened) << sql;
        EXPECT_NE(opened.message.english.find(refusal), std::string::npos) << opened.message.english;
    }
    struct Right {
        const char* sql;
        int zone;
        std::uint64_t lastId; // at least
    };
    const std::uint64_t last = drawing_.lastId();
    const Right right[] = {{"UPDATE fenmark_drawing SET zone = 99", 19, last},
                           {"UPDATE fenmark_drawing SET zone = -1", 0, last},
                           {"UPDATE fenmark_drawing SET zone = 9", 9, last}};
    for (const auto& [sql, zone, lastId] : right) {
        Drawing drawing;
        const Outcome opened = DrawingStore().open(changed(sql), drawing);
        ASSERT_TRUE(opened) << opened.message.english;
        EXPECT_EQ(drawing.zone(), zone) << sql;
        EXPECT_GE(drawing.lastId(), lastId) << sql;
        EXPECT_EQ(drawing.entityCount(), drawing_.entityCount());
    }
}

TEST_F(ReshapedDrawing, AnObjectWithoutALayerGoesToTheCurrentOne) {
    const std::string path = changed("DROP TRIGGER rtree_points_geom_update3; DROP TRIGGER rtree_points_geom_update4;"
                                     "UPDATE points SET layer = '' WHERE fid = (SELECT min(fid) FROM points)");
    Drawing drawing;
    const Outcome opened = DrawingStore().open(path, drawing);
    ASSERT_TRUE(opened) << opened.message.english;
    EXPECT_EQ(drawing.layers().size(), drawing_.layers().size()) << "no layer without a name";
    EXPECT_EQ(drawing.entity(0).layer, drawing.layers()[drawing.currentLayer()].name);
}

} // namespace
} // namespace fenmark::drawing
