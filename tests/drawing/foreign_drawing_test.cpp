// Drawings that other programs changed, or made to do harm: what is ours is read and kept, nothing of theirs is run.
#include "drawing/index_check.h"
#include "support/drawing_support.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

namespace fenmark::drawing {
namespace {

class ForeignDrawing : public SavedDrawing {
  protected:
    // As a GIS does it, with its functions for the index left out.
    void gis(const std::string& sql) const {
        const OtherProgram other(path_);
        const std::vector<std::string> rows = other.ask("BEGIN; " + sql + "; COMMIT");
        EXPECT_TRUE(rows.empty()) << rows.front();
    }
    std::string one(const std::string& sql) const { return OtherProgram(path_).one(sql); }
    Outcome importInto(std::size_t& count) const {
        Drawing again;
        DrawingStore store;
        const Outcome opened = store.open(path_, again, Load::WithoutEntities);
        if (!opened) {
            return opened;
        }
        addSmallImport(again, 3);
        const Outcome saved = store.save(path_, again);
        Drawing all;
        if (saved) {
            EXPECT_TRUE(DrawingStore().open(path_, all));
        }
        count = all.entityCount();
        return saved;
    }
};

const StoreNote* find(const DrawingStore& store, StoreNoteCode code) {
    for (const StoreNote& note : store.notes()) {
        if (note.code == code) {
            return &note;
        }
    }
    return nullptr;
}

// --- edited in a GIS ---

TEST_F(ForeignDrawing, AnAddedColumnDoesNotKeepAnImportOut) {
    for (const char* table : {"points", "polylines", "lots", "alignments", "alignment_elements", "layers", "sites"}) {
        gis(std::string("ALTER TABLE ") + table + " ADD COLUMN memo TEXT");
    }
    gis("UPDATE layers SET memo = 'kept'");
    std::size_t count = 0;
    const Outcome saved = importInto(count);
    EXPECT_TRUE(saved) << saved.message.english;
    EXPECT_EQ(count, 2 * drawing_.entityCount());
    EXPECT_EQ(one("SELECT memo FROM layers"), "kept");
}

TEST_F(ForeignDrawing, AFeatureMayHaveEveryIdentifierFromOneOn) {
    for (const std::string layer : {"points", "polylines"}) {
        ASSERT_EQ(one("SELECT count(*) FROM " + layer + " WHERE fid = 1"), "0");
        for (const char* trigger :
             {"update1", "update2", "update3", "update4", "update5", "update6", "update7", "delete"}) {
            gis("DROP TRIGGER IF EXISTS rtree_" + layer + "_geom_" + trigger);
        }
        gis("UPDATE " + layer + " SET fid = 1 WHERE fid = (SELECT min(fid) FROM " + layer + ")");
        Drawing again;
        EXPECT_TRUE(DrawingStore().open(path_, again)) << layer;
        EXPECT_EQ(again.entityCount(), drawing_.entityCount()) << layer;
        gis("UPDATE " + layer + " SET fid = 0 WHERE fid = 1");
        EXPECT_EQ(DrawingStore().open(path_, again).failure, Failure::Damaged) << layer;
        gis("UPDATE " + layer + " SET fid = 100000 WHERE fid = 0");
    }
}

TEST_F(ForeignDrawing, ARenamedColumnIsToldByNameAndNeverReadAsItsOwnName) {
    gis("ALTER TABLE points RENAME COLUMN \"Name\" TO 点名");
    Drawing again;
    DrawingStore store;
    ASSERT_TRUE(store.open(path_, again));
    EXPECT_EQ(again.entity(0).row->name, "");
    EXPECT_EQ(again.entity(0).row->no, 1);
    const StoreNote* note = find(store, StoreNoteCode::MissingColumn);
    ASSERT_NE(note, nullptr);
    EXPECT_EQ(note->table + "." + note->name, "points.Name");
    EXPECT_NE(noteText(*note).find("'Name'"), std::string::npos);
    std::size_t count = 0;
    const Outcome saved = importInto(count);
    EXPECT_EQ(saved.failure, Failure::Reshaped);
    EXPECT_NE(saved.message.english.find("'points' has no column 'Name'"), std::string::npos) << saved.message.english;
    EXPECT_EQ(one("SELECT count(*) FROM points"), "5") << "and nothing of it was kept";
}

TEST_F(ForeignDrawing, ARowOfATableThatIsNotListedKeepsItsTable) {
    for (const std::string layer : {"points", "polylines"}) {
        gis("DROP TRIGGER rtree_" + layer + "_geom_update3; DROP TRIGGER rtree_" + layer + "_geom_update4");
    }
    gis("UPDATE points SET data_table = 'Theirs' WHERE fid = (SELECT min(fid) FROM points);"
        "UPDATE polylines SET data_table = 'Theirs too'");
    Drawing again;
    ASSERT_TRUE(DrawingStore().open(path_, again));
    EXPECT_EQ(again.entity(0).row->table, "Theirs");
    EXPECT_EQ(again.entity(0).row->name, "点0");
    EXPECT_EQ(again.entity(1).row->table, "JSIMA_V3_Point");
    EXPECT_EQ(again.entity(5).row->table, "Theirs too");
    ASSERT_EQ(again.tables().size(), 4U);
    EXPECT_EQ(again.tables()[2].name, "Theirs");
    EXPECT_EQ(again.tables()[3].name, "Theirs too");
    EXPECT_EQ(again.tables()[2].id.asUint64(), drawing_.lastId() + 1) << "the first that nothing has";
    EXPECT_EQ(again.tables()[3].id.asUint64(), drawing_.lastId() + 2);
}

TEST_F(ForeignDrawing, ARenamedLayerIsToldByName) {
    gis("ALTER TABLE points RENAME TO \"測 点\"");
    Drawing again;
    const Outcome opened = DrawingStore().open(path_, again);
    EXPECT_EQ(opened.failure, Failure::Reshaped);
    EXPECT_NE(opened.message.english.find("'points' is missing; it seems to be named '測 点' now"), std::string::npos)
        << opened.message.english;
}

TEST_F(ForeignDrawing, EmptyPointsAndOtherKindsAreLeftOutAndTold) {
    const std::string nan = "000000000000F87F";
    const std::string head = "4750000100000000"; // without a box
    gis("DROP TRIGGER rtree_points_geom_insert; DROP TRIGGER rtree_polylines_geom_insert;"
        "INSERT INTO points (fid, geom) VALUES (1000, x'" +
        head + "0101000000" + nan + nan + "'), (1001, NULL);" +
        "INSERT INTO polylines (fid, geom) VALUES"
        " (1002, x'" +
        head + "010500000001000000010200000000000000" + "'), (1003, x'" + head + "010700000000000000" + "')");
    Drawing again;
    DrawingStore store;
    const Outcome opened = store.open(path_, again);
    ASSERT_TRUE(opened) << opened.message.english;
    EXPECT_EQ(describe(again), describe(drawing_)) << "all that is ours";
    const StoreNote* empty = find(store, StoreNoteCode::NoPlace);
    ASSERT_NE(empty, nullptr);
    EXPECT_EQ(empty->count, 2U);
    EXPECT_EQ(empty->firstId, 1000);
    const StoreNote* other = find(store, StoreNoteCode::OtherGeometry);
    ASSERT_NE(other, nullptr);
    EXPECT_EQ(other->name, "MULTILINESTRING");
    std::size_t count = 0;
    EXPECT_TRUE(importInto(count));
    EXPECT_EQ(one("SELECT count(*) FROM polylines WHERE fid IN (1002, 1003)"), "2") << "they stay in the file";
}

TEST_F(ForeignDrawing, BytesThatAreNoTextAreReplacedWhenTheyAreRead) {
    gis("DROP TRIGGER rtree_points_geom_update3; DROP TRIGGER rtree_points_geom_update4;"
        "UPDATE points SET Name = CAST(x'41E697' AS TEXT); UPDATE layers SET name = CAST(x'FF30' AS TEXT)");
    Drawing again;
    ASSERT_TRUE(store_.open(path_, again));
    EXPECT_EQ(describe(again).find("A\xE6"), std::string::npos);
    EXPECT_NE(describe(again).find("A\uFFFD"), std::string::npos);
    EXPECT_TRUE(std::any_of(again.layers().begin(), again.layers().end(),
                            [](const auto& layer) { return layer.name == "\uFFFD0"; }));
}

TEST_F(ForeignDrawing, AnAddedFeatureNeverGetsTheIdentifierOfAnotherObject) {
    gis("DROP TRIGGER rtree_points_geom_insert; DROP TRIGGER rtree_polylines_geom_insert;"
        "INSERT INTO polylines (geom, layer) SELECT geom, '0' FROM polylines LIMIT 1;"
        "INSERT INTO points (geom, layer) SELECT geom, '0' FROM points LIMIT 1");
    const std::string next = std::to_string(drawing_.lastId() + 1);
    EXPECT_EQ(one("SELECT max(fid) FROM polylines"), next) << "beyond all of ours";
    EXPECT_EQ(one("SELECT max(fid) FROM points"), next) << "but each table counts for itself";
    Drawing again;
    DrawingStore store;
    ASSERT_TRUE(store.open(path_, again));
    const StoreNote* note = find(store, StoreNoteCode::TakenIdentifier);
    ASSERT_NE(note, nullptr);
    EXPECT_EQ(note->table, "polylines");
    EXPECT_EQ(again.entityCount(), drawing_.entityCount() + 2);
    const MdDbObjectId moved = again.entity(again.entityCount() - 1).id;
    EXPECT_EQ(moved.asUint64(), drawing_.lastId() + 2);
    std::size_t count = 0;
    ASSERT_TRUE(importInto(count));
    EXPECT_EQ(one("SELECT count(*) FROM polylines WHERE fid = " + std::to_string(moved.asUint64())), "1")
        << "and keeps it from the next save on";
    Drawing later;
    DrawingStore laterStore;
    ASSERT_TRUE(laterStore.open(path_, later));
    EXPECT_TRUE(laterStore.notes().empty());
}

TEST_F(ForeignDrawing, APolylineUnderTheIdentifierOfAnAlignmentGetsItsOwn) {
    const std::uint64_t id = drawing_.alignment(0).id.asUint64();
    gis("DROP TRIGGER rtree_polylines_geom_insert; INSERT INTO polylines (fid, geom, layer) SELECT " +
        std::to_string(id) +
        ", geom, '0' FROM polylines ORDER BY fid LIMIT 1; INSERT INTO rtree_polylines_geom SELECT " +
        std::to_string(id) + ", minx, maxx, miny, maxy FROM rtree_polylines_geom ORDER BY id LIMIT 1");
    Drawing again;
    DrawingStore store;
    ASSERT_TRUE(store.open(path_, again));
    EXPECT_FALSE(again.findEntity(MdDbObjectId(id)));
    EXPECT_EQ(again.alignment(0).id.asUint64(), id);
    EXPECT_EQ(again.entityCount(), drawing_.entityCount() + 1);
    again.setZone(9);
    ASSERT_TRUE(store.save(path_, again));
    EXPECT_EQ(one("SELECT count(*) FROM polylines WHERE fid = " + std::to_string(id)), "0");
    EXPECT_EQ(indexFault(path_, "polylines"), "") << "its box goes with it";
}

// A line has neither the vertices' count nor the rest of ours.
TEST_F(ForeignDrawing, ALineWithoutAnyOfOurValuesIsAPolylineOnItsLayer) {
    gis("DROP TRIGGER rtree_polylines_geom_insert");
    const std::string fid = std::to_string(drawing_.lastId());
    for (const char* values : {"'畑', NULL, NULL, NULL", "'田', 0, NULL, NULL", "'畑', 0, 2, 0", "'道', 1, 2, 1"}) {
        gis("INSERT INTO polylines (geom, layer, closed, vertices, lightweight) SELECT geom, " + std::string(values) +
            " FROM polylines WHERE vertices = 3 LIMIT 1");
    }
    Drawing again;
    DrawingStore store;
    ASSERT_TRUE(store.open(path_, again));
    ASSERT_EQ(again.entityCount(), drawing_.entityCount() + 4);
    const std::size_t first = drawing_.entityCount();
    const char* const layers[] = {"畑", "田", "畑", "道"};
    for (std::size_t i = 0; i < 4; ++i) {
        const EntityView line = again.entity(first + i);
        EXPECT_EQ(line.layer, layers[i]);
        EXPECT_EQ(line.kind, i == 2 ? EntityKind::Polyline2d : EntityKind::Polyline) << i;
        EXPECT_EQ(line.closed, i == 3);
        EXPECT_EQ(line.vertices.size(), i == 3 ? 2U : 3U) << i;
    }
    for (const Layer& layer : again.layers()) {
        EXPECT_EQ(again.findLayer(layer.name).value(), static_cast<std::size_t>(&layer - again.layers().data()));
        EXPECT_FALSE(layer.id.isNull()) << layer.name;
    }
}

// A line of one vertex has it twice, and that of a closed polyline ends with its first: which of both it is, is told by
// columns that may be empty.
TEST_F(ForeignDrawing, ALineHasAsManyVerticesAsItsColumnsTell) {
    gis("DROP TRIGGER rtree_polylines_geom_insert");
    const struct {
        const char* of; // the polyline whose line is taken
        const char* values;
        std::size_t vertices;
    } kLines[] = {
        {"vertices = 1", "0, 1, 1", 1U},
        {"vertices = 1", "0, 1, NULL", 1U},
        {"vertices = 1", "NULL, 1, NULL", 1U},
        {"vertices = 1", "0, 0, 1", 2U},
        {"vertices = 1", "0, NULL, 1", 2U},
        {"vertices = 1", "0, 2, 1", 2U},
        {"vertices = 1", "1, 1, 1", 1U},
        {"vertices = 1", "1, 2, 1", 1U},
        {"vertices = 1", "1, NULL, NULL", 1U},
        {"vertices = 2 AND closed", "1, NULL, NULL", 2U},
        {"vertices = 2 AND closed", "0, 1, 1", 3U},
        {"vertices = 2 AND closed", "0, NULL, 1", 3U},
    };
    for (const auto& line : kLines) {
        gis("INSERT INTO polylines (geom, closed, vertices, lightweight) SELECT geom, " + std::string(line.values) +
            " FROM polylines WHERE " + line.of + " ORDER BY fid LIMIT 1");
    }
    Drawing again;
    ASSERT_TRUE(DrawingStore().open(path_, again));
    ASSERT_EQ(again.entityCount(), drawing_.entityCount() + std::size(kLines));
    for (std::size_t i = 0; i < std::size(kLines); ++i) {
        EXPECT_EQ(again.entity(drawing_.entityCount() + i).vertices.size(), kLines[i].vertices)
            << kLines[i].of << ": " << kLines[i].values;
    }
}

TEST_F(ForeignDrawing, EveryKindOfNoteIsCountedForItsOwnTable) {
    for (const std::string table : {"points", "polylines", "lots", "alignments"}) {
        for (const std::string trigger : {"update3", "update4"}) {
            gis("DROP TRIGGER IF EXISTS rtree_" + table + "_geom_" + trigger);
        }
    }
    gis("UPDATE points SET \"No\" = 'seven' WHERE fid IN (SELECT fid FROM points ORDER BY fid LIMIT 2);"
        "UPDATE polylines SET \"No\" = 'eight' WHERE \"No\" = 7; UPDATE lots SET \"No\" = 'eight';"
        "UPDATE alignments SET start_station = 'ten'");
    Drawing again;
    DrawingStore store;
    ASSERT_TRUE(store.open(path_, again));
    std::vector<std::string> counts;
    for (const StoreNote& note : store.notes()) {
        EXPECT_EQ(note.code, StoreNoteCode::NoNumber);
        counts.push_back(note.table + " " + std::to_string(note.count));
    }
    std::sort(counts.begin(), counts.end());
    EXPECT_EQ(counts, (std::vector<std::string>{"alignments 2", "points 2", "polylines 1"}));
}

TEST_F(ForeignDrawing, AnAreaGoesWithItsPolylineAndElementsWithTheirAlignment) {
    EXPECT_EQ(one("SELECT count(*) FROM lots"), "1");
    gis("DELETE FROM polylines WHERE closed = 1; DELETE FROM alignments");
    EXPECT_EQ(one("SELECT count(*) FROM lots"), "0");
    EXPECT_EQ(one("SELECT count(*) FROM rtree_lots_geom"), "0");
    EXPECT_EQ(one("SELECT count(*) FROM alignment_elements"), "0");
}

TEST_F(ForeignDrawing, WhatLetsThemGoComesBackWithTheNextSaveUnlessItsNameIsTaken) {
    const std::string lots = one("SELECT sql FROM sqlite_master WHERE name = 'fenmark_lots_follow'");
    const std::string theirs = "CREATE TRIGGER Fenmark_Elements_Follow AFTER DELETE ON sites BEGIN SELECT 1; END";
    gis("DROP TRIGGER fenmark_lots_follow; DROP TRIGGER fenmark_elements_follow; " + theirs);
    std::size_t count = 0;
    const Outcome saved = importInto(count);
    ASSERT_TRUE(saved) << saved.message.english;
    EXPECT_EQ(OtherProgram(path_).ask("SELECT sql FROM sqlite_master WHERE name LIKE 'fenmark_%_follow' ORDER BY "
                                      "name COLLATE NOCASE"),
              (std::vector<std::string>{theirs, lots}));
}

TEST_F(ForeignDrawing, AnAreaDrawnAmongTheLotsIsToldAndOutlivesAnImport) {
    gis("DROP TRIGGER rtree_lots_geom_insert; INSERT INTO lots (geom, \"Name\") SELECT geom, 'drawn' FROM lots LIMIT "
        "1");
    EXPECT_EQ(one("SELECT max(fid) FROM lots"), std::to_string(drawing_.lastId() + 1));
    Drawing open;
    DrawingStore store;
    ASSERT_TRUE(store.open(path_, open));
    EXPECT_EQ(describe(open), describe(drawing_));
    ASSERT_EQ(store.notes().size(), 1U);
    EXPECT_EQ(noteText(store.notes().front()), "1 feature of the layer 'lots' (first fid " +
                                                   std::to_string(drawing_.lastId() + 1) +
                                                   ") left out: a POLYGON is no object of a drawing");
    // A copy has nothing that was left out.
    ASSERT_TRUE(store.save(folder_.at("copy.gpkg"), open));
    EXPECT_TRUE(store.notes().empty());
    // One who opened the drawing before learns of it.
    addSmallImport(drawing_, 1);
    EXPECT_EQ(store_.save(path_, drawing_).failure, Failure::ChangedOutside);
    std::size_t count = 0;
    const Outcome saved = importInto(count);
    ASSERT_TRUE(saved) << saved.message.english;
    EXPECT_EQ(one("SELECT count(*) FROM lots WHERE \"Name\" = 'drawn'"), "1");
}

// The layer that a GIS shows as areas is made of the polylines: what is changed there alone is not in the drawing.
TEST_F(ForeignDrawing, LotsThatDifferFromTheirPolylinesAreTold) {
    const std::string lot = one("SELECT fid FROM lots");
    for (const std::string& trigger :
         OtherProgram(path_).ask("SELECT name FROM sqlite_master WHERE type = 'trigger' AND name LIKE 'rtree%'")) {
        gis("DROP TRIGGER " + trigger);
    }
    gis("UPDATE polylines SET import_id = 1");
    const auto told = [&] {
        Drawing read;
        DrawingStore store;
        EXPECT_TRUE(store.open(path_, read));
        const StoreNote* const note = find(store, StoreNoteCode::LotsDiffer);
        return note == nullptr ? std::string() : noteText(*note);
    };
    EXPECT_EQ(told(), "");
    const std::string wanted = "1 feature differs between the layers 'lots' and 'polylines' (first fid " + lot +
                               "): the polylines are taken, so lots are to be changed there";
    for (const char* change : {"\"Name\" = 'other'", "\"Name\" = '', \"No\" = NULL"}) {
        gis(std::string("UPDATE lots SET ") + change);
        EXPECT_EQ(told(), wanted) << change;
    }
    gis("UPDATE lots SET \"No\" = 7");
    EXPECT_EQ(told(), "");
    gis("CREATE TABLE kept AS SELECT fid, geom FROM polylines;"
        "UPDATE polylines SET geom = (SELECT geom FROM kept WHERE fid = " +
        lot + " + 1) WHERE fid = " + lot);
    EXPECT_EQ(told(), wanted) << "another outline";
    gis("UPDATE polylines SET geom = (SELECT geom FROM kept WHERE kept.fid = polylines.fid)");
    EXPECT_EQ(told(), "");
    gis("UPDATE lots SET geom = NULL");
    EXPECT_EQ(told(), wanted) << "none";
    gis("DELETE FROM lots");
    EXPECT_EQ(told(), wanted) << "no lot";
    gis("UPDATE polylines SET \"Type\" = 'other', closed = 'true'");
    EXPECT_EQ(told(), "") << "a mark that is no number is read as one of an open line";
    gis("UPDATE polylines SET closed = 1");
    EXPECT_EQ(told(), wanted) << "no area";
    gis("UPDATE polylines SET import_id = NULL");
    EXPECT_EQ(told(), "") << "a polyline that a GIS drew has no area yet";
}

// SQLite keeps a text in a column of numbers, and the field of a GIS takes more digits than a number of a record.
TEST_F(ForeignDrawing, AValueThatIsNoNumberIsToldAndTakenAsNone) {
    struct Value {
        const char* table;
        const char* value;
        std::optional<double> read; // 0 with a note where there is none
    };
    const Value values[] = {
        {"points", "'seven'", {}},        {"points", "x'37'", {}},
        {"points", "5000000000", {}},     {"points", "7.5", {}},
        {"points", "-2147483649", {}},    {"points", "2147483647", 2147483647.0},
        {"points", "NULL", 0.0},          {"points", "-2147483648", -2147483648.0},
        {"polylines", "4294967303", {}},  {"polylines", "8", 8.0},
        {"alignments", "'100 m'", {}},    {"alignments", "NULL", {}},
        {"alignments", "'100.5'", 100.5}, {"alignments", "-3", -3.0},
    };
    for (const auto& [table, value, read] : values) {
        const std::string name = table;
        const std::string column = name == "alignments" ? "start_station" : "No";
        gis("DROP TRIGGER IF EXISTS rtree_" + name + "_geom_update3; DROP TRIGGER IF EXISTS rtree_" + name +
            "_geom_update4; UPDATE " + name + " SET \"" + column + "\" = " + value +
            " WHERE fid IN (SELECT min(fid) FROM " + name + ")");
        Drawing again;
        DrawingStore store;
        ASSERT_TRUE(store.open(path_, again)) << name << " " << value;
        const StoreNote* const note = find(store, StoreNoteCode::NoNumber);
        ASSERT_EQ(note != nullptr, !read) << name << " " << value;
        if (note != nullptr) {
            EXPECT_EQ(*note, (StoreNote{StoreNoteCode::NoNumber, name, column, 1, note->firstId})) << value;
        }
        const std::size_t firstLine = 5; // behind the points
        EXPECT_EQ(name == "alignments" ? again.alignment(0).startStation
                                       : again.entity(name == "points" ? 0 : firstLine).row->no,
                  read.value_or(0.0))
            << name << " " << value;
    }
}

TEST_F(ForeignDrawing, ElementsThatAreNotNumberedOneByOneAreTold) {
    const char* const changes[] = {
        "DELETE FROM alignment_elements WHERE place = 1",
        "DELETE FROM alignment_elements WHERE place = 0",
        "UPDATE alignment_elements SET place = 7 WHERE place = 0",
        "UPDATE alignment_elements SET place = 1 WHERE place = 2",
        "UPDATE alignment_elements SET place = NULL WHERE place = 0",
        "UPDATE alignment_elements SET place = 'last' WHERE place = 2",
        "UPDATE alignment_elements SET alignment_id = 'none' WHERE place = 1",
    };
    const std::string whole = folder_.at("whole.gpkg");
    std::filesystem::copy_file(path_, whole);
    for (const char* change : changes) {
        std::filesystem::copy_file(whole, path_, std::filesystem::copy_options::overwrite_existing);
        gis(change);
        const std::string rows = one("SELECT count(*) FROM alignment_elements");
        Drawing again;
        DrawingStore store;
        ASSERT_TRUE(store.open(path_, again)) << change;
        const StoreNote* const note = find(store, StoreNoteCode::ElementsOutOfOrder);
        ASSERT_NE(note, nullptr) << change;
        EXPECT_EQ(note->count, 1U) << change;
        EXPECT_EQ(static_cast<std::uint64_t>(note->firstId), again.alignment(0).id.asUint64()) << change;
        addSmallImport(again, 3);
        ASSERT_TRUE(store.save(path_, again)) << change;
        EXPECT_EQ(one("SELECT count(*) - 3 FROM alignment_elements"), rows) << change << ": none is lost";
    }
}

TEST_F(ForeignDrawing, ALineDrawnAmongTheAlignmentsIsLeftOutAndTold) {
    gis("DROP TRIGGER rtree_alignments_geom_insert;"
        "INSERT INTO alignments (geom, name) SELECT geom, 'drawn' FROM alignments WHERE geom NOT NULL LIMIT 1");
    Drawing again;
    DrawingStore store;
    ASSERT_TRUE(store.open(path_, again));
    EXPECT_EQ(again.alignmentCount(), drawing_.alignmentCount());
    EXPECT_NE(find(store, StoreNoteCode::AlignmentElementless), nullptr);
}

TEST_F(ForeignDrawing, WithoutTheLayerOfAreasTheRestIsKept) {
    gis("DROP TABLE lots");
    std::size_t count = 0;
    const Outcome saved = importInto(count);
    EXPECT_TRUE(saved) << saved.message.english;
    EXPECT_EQ(count, 2 * drawing_.entityCount());
}

TEST_F(ForeignDrawing, AZoneLeavesLayersOfOthersAlone) {
    gis("INSERT INTO gpkg_contents (table_name, data_type, srs_id) VALUES ('mine', 'features', 4326);"
        "INSERT INTO gpkg_geometry_columns VALUES ('mine', 'geom', 'POINT', 4326, 0, 0)");
    drawing_.setZone(9);
    ASSERT_TRUE(store_.save(path_, drawing_));
    EXPECT_EQ(one("SELECT srs_id FROM gpkg_contents WHERE table_name = 'mine'"), "4326");
    EXPECT_EQ(one("SELECT srs_id FROM gpkg_geometry_columns WHERE table_name = 'mine'"), "4326");
}

// --- made to do harm ---

TEST_F(ForeignDrawing, ATriggerNameIsNeverSql) {
    const std::string victim = folder_.at("victim.gpkg");
    std::filesystem::copy_file(path_, victim);
    const std::string name = "rtree_points_geom_x\"\"; ATTACH '" + victim + "' AS v; DELETE FROM v.points; ATTACH '" +
                             folder_.at("written") + "' AS w; CREATE TABLE w.t (a); --";
    const std::string sql = "CREATE TRIGGER \"" + name + "\" AFTER INSERT ON points BEGIN SELECT 1; END";
    gis(sql);
    std::size_t count = 0;
    const Outcome saved = importInto(count);
    EXPECT_TRUE(saved) << saved.message.english;
    EXPECT_EQ(OtherProgram(victim).one("SELECT count(*) FROM points"), "5");
    EXPECT_FALSE(std::filesystem::exists(folder_.at("written")));
}

TEST_F(ForeignDrawing, TriggersOnOurTablesNeverRun) {
    gis("CREATE TABLE loot (a)");
    for (const char* table : {"points", "polylines", "lots", "alignments", "alignment_elements", "layers", "sites",
                              "object_data_tables", "fenmark_drawing", "fenmark_imports", "gpkg_contents"}) {
        for (const char* event : {"INSERT", "UPDATE", "DELETE"}) {
            gis(std::string("CREATE TRIGGER t_") + table + event + " AFTER " + event + " ON " + table +
                " BEGIN INSERT INTO loot VALUES ('" + table + "'); END");
        }
    }
    Drawing again;
    DrawingStore store;
    ASSERT_TRUE(store.open(path_, again));
    const Drawing::Mark mark = again.mark();
    addSmallImport(again, 1);
    again.setZone(3);
    ASSERT_TRUE(store.save(path_, again));
    again.rollback(mark);
    ASSERT_TRUE(store.save(path_, again));
    EXPECT_EQ(one("SELECT count(*) FROM loot"), "0");
}

TEST_F(ForeignDrawing, AViewInThePlaceOfATableIsRefusedByName) {
    for (const std::string table : {"points", "layers", "fenmark_imports", "alignment_elements"}) {
        const std::string copy = folder_.at(table + ".gpkg");
        std::filesystem::copy_file(path_, copy);
        EXPECT_TRUE(
            OtherProgram(copy)
                .ask("ALTER TABLE " + table + " RENAME TO hidden; CREATE VIEW " + table + " AS SELECT * FROM hidden")
                .empty());
        Drawing again;
        const Outcome opened = DrawingStore().open(copy, again);
        EXPECT_EQ(opened.failure, Failure::Reshaped);
        EXPECT_NE(opened.message.english.find("'" + table + "'"), std::string::npos) << opened.message.english;
    }
}

TEST_F(ForeignDrawing, AViewWithoutEndIsNotTouched) {
    gis("CREATE VIEW endless AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) SELECT i FROM n;"
        "CREATE VIEW endless2 AS SELECT a.i FROM endless a, endless b");
    std::size_t count = 0;
    EXPECT_TRUE(importInto(count));
    EXPECT_EQ(count, 2 * drawing_.entityCount());
}

TEST_F(ForeignDrawing, AGeneratedColumnInThePlaceOfOursIsRefusedByName) {
    gis("ALTER TABLE points RENAME COLUMN \"Name\" TO other;"
        "ALTER TABLE points ADD COLUMN \"Name\" TEXT GENERATED ALWAYS AS (hex(zeroblob(100000))) VIRTUAL");
    Drawing again;
    const Outcome opened = DrawingStore().open(path_, again);
    EXPECT_EQ(opened.failure, Failure::Reshaped);
    EXPECT_NE(opened.message.english.find("points.Name"), std::string::npos) << opened.message.english;
}

TEST_F(ForeignDrawing, AGeneratedColumnBesideOursIsNeverComputed) {
    gis("ALTER TABLE points ADD COLUMN big TEXT GENERATED ALWAYS AS (hex(zeroblob(400000000))) VIRTUAL");
    std::size_t count = 0;
    const Outcome saved = importInto(count);
    EXPECT_TRUE(saved) << saved.message.english;
    EXPECT_EQ(count, 2 * drawing_.entityCount());
}

TEST_F(ForeignDrawing, WhatWouldHaveToBeComputedToWriteARowIsRefused) {
    gis("CREATE INDEX computed ON points (hex(\"Name\"))");
    std::size_t count = 0;
    const Outcome saved = importInto(count);
    EXPECT_EQ(saved.failure, Failure::Reshaped) << saved.message.english;
    EXPECT_EQ(one("SELECT count(*) FROM points"), "5");
}

} // namespace
} // namespace fenmark::drawing
