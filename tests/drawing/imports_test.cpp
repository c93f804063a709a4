// The imports that a drawing knows: kept, found by file, removed with what they made. And drawings of the first format.
#include "drawing/file_digest.h"
#include "drawing/index_check.h"
#include "support/drawing_support.h"

#include <cstdint>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

namespace fenmark::drawing {
namespace {

Import importRecord(const std::string& fileName, std::uint64_t firstId, std::uint64_t lastId) {
    Import import;
    import.fileName = fileName;
    import.path = "/測量/" + fileName;
    import.fileSize = 1234;
    import.digest = digestOf(fileName);
    import.time = "2026-01-31T09:15:00Z";
    import.counts = {5, 1, 2, 3, 4, 6, 7};
    import.firstId = firstId;
    import.lastId = lastId;
    return import;
}

MdDbObjectId importSmall(Drawing& drawing, const std::string& fileName, int seed) {
    const std::uint64_t before = drawing.lastId();
    addSmallImport(drawing, seed);
    return drawing.addImport(importRecord(fileName, before + 1, drawing.lastId()));
}

class Imports : public ::testing::Test {
  protected:
    TemporaryFolder folder_;
    std::string path_ = folder_.at("図面.gpkg");
    Drawing drawing_;
    DrawingStore store_;

    std::string one(const std::string& sql) const { return OtherProgram(path_).one(sql); }
    void save() {
        const Outcome saved = store_.save(path_, drawing_);
        ASSERT_TRUE(saved) << saved.message.english;
        for (const char* layer : kIndexedLayers) {
            EXPECT_EQ(indexFault(path_, layer), "") << layer;
        }
    }
};

TEST_F(Imports, ComeBackAndAreKnownByFileAndObject) {
    const MdDbObjectId a = importSmall(drawing_, "a.sim", 0);
    const MdDbObjectId drawn = drawing_.addPoint({}, 0);
    const MdDbObjectId b = importSmall(drawing_, "b.sim", 1);
    save();
    const MdDbObjectId again = importSmall(drawing_, "a.sim", 2);
    save();
    for (const Load load : {Load::Everything, Load::WithoutEntities}) {
        Drawing read;
        DrawingStore store;
        ASSERT_TRUE(store.open(path_, read, load));
        EXPECT_EQ(read.imports(), drawing_.imports());
        EXPECT_EQ(read.importsOf("a.sim"), (std::vector<std::size_t>{0, 2}));
        EXPECT_TRUE(read.importsOf("A.sim").empty());
        EXPECT_EQ(read.importOf(drawn), MdDbObjectId());
        EXPECT_EQ(read.importOf(MdDbObjectId(drawn.asUint64() - 2)), a);
        EXPECT_EQ(read.importOf(MdDbObjectId(b.asUint64() - 1)), b);
        EXPECT_GE(read.lastId(), again.asUint64());
    }
    EXPECT_EQ(one("SELECT count(*) FROM points WHERE import_id = " + std::to_string(a.asUint64())), "5");
    EXPECT_EQ(one("SELECT count(*) FROM points WHERE import_id IS NULL"), "1");
    for (const char* table : {"polylines", "lots", "alignments"}) {
        EXPECT_EQ(one(std::string("SELECT count(*) FROM ") + table + " WHERE import_id IS NULL"), "0") << table;
    }
}

TEST_F(Imports, GoWithWhatTheyMadeInOneSave) {
    const MdDbObjectId a = importSmall(drawing_, "a.sim", 0);
    importSmall(drawing_, "b.sim", 1);
    const MdDbObjectId drawn = drawing_.addPoint({7, 8, 9}, 0);
    save();
    for (const Load load : {Load::WithoutEntities, Load::Everything}) {
        const std::string copy = folder_.at(load == Load::Everything ? "all.gpkg" : "lean.gpkg");
        std::filesystem::copy_file(path_, copy);
        Drawing read;
        DrawingStore store;
        ASSERT_TRUE(store.open(copy, read, load));
        const std::uint64_t last = read.lastId();
        ASSERT_TRUE(read.removeImport(a));
        EXPECT_FALSE(read.removeImport(a));
        EXPECT_TRUE(store.hasChanges(read));
        const MdDbObjectId next = importSmall(read, "a.sim", 5);
        EXPECT_GT(next.asUint64(), last) << "identifiers are not given again";
        const Outcome saved = store.save(copy, read);
        ASSERT_TRUE(saved) << saved.message.english;
        EXPECT_FALSE(store.hasChanges(read));
        for (const char* layer : kIndexedLayers) {
            EXPECT_EQ(indexFault(copy, layer), "") << layer;
        }
        Drawing found;
        ASSERT_TRUE(DrawingStore().open(copy, found));
        EXPECT_EQ(found.importsOf("a.sim").size(), 1U);
        EXPECT_EQ(found.imports().size(), 2U);
        EXPECT_EQ(found.entityCount(), drawing_.entityCount());
        EXPECT_EQ(found.alignmentCount(), drawing_.alignmentCount());
        EXPECT_TRUE(found.findEntity(drawn));
        EXPECT_EQ(OtherProgram(copy).one("SELECT count(*) FROM alignment_elements"), "6");
        EXPECT_EQ(OtherProgram(copy).one("SELECT count(*) FROM lots"), "2");
        if (load == Load::Everything) {
            EXPECT_EQ(describe(found), describe(read));
        }
    }
    EXPECT_EQ(one("SELECT count(*) FROM fenmark_imports"), "2") << "the drawing itself is as it was";
}

TEST_F(Imports, AreTakenBackWithTheirObjects) {
    importSmall(drawing_, "a.sim", 0);
    const Drawing::Mark mark = drawing_.mark();
    importSmall(drawing_, "b.sim", 1);
    save();
    Drawing::Removed removed = drawing_.takeBack(mark);
    EXPECT_EQ(drawing_.imports().size(), 1U);
    save();
    EXPECT_EQ(one("SELECT count(*) FROM fenmark_imports"), "1");
    ASSERT_TRUE(drawing_.putBack(std::move(removed)));
    save();
    EXPECT_EQ(one("SELECT group_concat(\"FileName\") FROM fenmark_imports"), "a.sim,b.sim");
}

// --- areas and styles ---

TEST_F(Imports, EveryObjectNamesTheOneThatMadeIt) {
    for (const char* name : {"a.sim", "b.sim"}) {
        const std::uint64_t before = drawing_.lastId();
        drawing_.addPoint({1, 2, 0}, 0);
        drawing_.addPolyline({}, 0, EntityKind::Polyline, false);
        drawing_.addPoint({3, 4, 0}, 0); // the last one, whose identifier stands before the import's
        const std::uint64_t last = drawing_.lastId();
        const MdDbObjectId import = drawing_.addImport(importRecord(name, before + 1, last));
        for (std::uint64_t id = before + 1; id <= last; ++id) {
            EXPECT_EQ(drawing_.importOf(MdDbObjectId(id)), import) << id;
        }
        EXPECT_TRUE(drawing_.importOf(MdDbObjectId(last + 2)).isNull());
        drawing_.addPoint({5, 6, 0}, 0);
        EXPECT_TRUE(drawing_.importOf(MdDbObjectId(drawing_.lastId())).isNull());
    }
    save();
    const std::string a = std::to_string(drawing_.imports()[0].id.asUint64());
    const std::string b = std::to_string(drawing_.imports()[1].id.asUint64());
    EXPECT_EQ(OtherProgram(path_).ask("SELECT import_id FROM points ORDER BY fid"),
              (std::vector<std::string>{a, a, "NULL", b, b, "NULL"}));
    EXPECT_EQ(OtherProgram(path_).ask("SELECT import_id FROM polylines ORDER BY fid"),
              (std::vector<std::string>{a, b}));
}

TEST_F(Imports, LotsHaveTheirAreasAlsoWhereTheyAreNotClosed) {
    drawing_.addTable("JSIMA_V3_Pline");
    // Ten by twenty metres, far from the origin.
    const std::vector<MdGePoint3d> lot = {
        {60295.5, -36012.25, 0}, {60305.5, -36012.25, 0}, {60305.5, -35992.25, 0}, {60295.5, -35992.25, 0}};
    drawing_.addPolyline(lot, 0, EntityKind::Polyline, true);
    drawing_.addPolyline(lot, 0, EntityKind::Polyline, false);
    drawing_.setRow(1, 0, 1, "", "画地", "a.sim");
    drawing_.addPolyline(std::span(lot).first(3), 0, EntityKind::Polyline, false);
    drawing_.setRow(2, 0, 1, "", "連続線", "a.sim");
    save();
    EXPECT_EQ(OtherProgram(path_).ask("SELECT closed, area FROM lots ORDER BY fid"),
              (std::vector<std::string>{"1|200.0", "0|200.0"}));
    Drawing read;
    ASSERT_TRUE(DrawingStore().open(path_, read));
    EXPECT_FALSE(read.entity(1).closed) << "the polyline stays open";
}

TEST_F(Imports, EveryLayerHasADefaultStyleThatAnotherProgramMayReplace) {
    save();
    EXPECT_EQ(OtherProgram(path_).ask("SELECT f_table_name FROM layer_styles WHERE useAsDefault = 1 AND"
                                      " f_table_schema = '' AND f_table_catalog = '' AND f_geometry_column = 'geom'"
                                      " AND styleQML LIKE '%<renderer-v2%' AND styleQML LIKE '%field=\"import_id\"%'"
                                      " ORDER BY 1"),
              (std::vector<std::string>{"alignments", "lots", "points", "polylines"}));
    EXPECT_EQ(one("SELECT data_type FROM gpkg_contents WHERE table_name = 'layer_styles'"), "attributes");
    OtherProgram(path_).ask("DELETE FROM layer_styles WHERE f_table_name = 'lots';"
                            "UPDATE layer_styles SET styleQML = 'mine' WHERE f_table_name = 'points'");
    addSmallImport(drawing_);
    save();
    EXPECT_EQ(one("SELECT styleQML FROM layer_styles WHERE f_table_name = 'points'"), "mine");
    EXPECT_EQ(one("SELECT count(*) FROM layer_styles"), "4");
}

// --- a drawing of the first format ---

// What that version made: no imports, areas, styles, stamps, sequences and triggers that follow.
void makeFirstFormat(const std::string& path) {
    const OtherProgram old(path);
    const std::vector<std::string> triggers = old.ask("SELECT sql FROM sqlite_master WHERE type = 'trigger' AND name"
                                                      " LIKE 'rtree%'");
    for (const std::string& name : old.ask("SELECT name FROM sqlite_master WHERE type = 'trigger'")) {
        old.ask("DROP TRIGGER " + name);
    }
    for (const char* sql :
         {"ALTER TABLE points DROP COLUMN import_id", "ALTER TABLE polylines DROP COLUMN import_id",
          "ALTER TABLE lots DROP COLUMN import_id", "ALTER TABLE lots DROP COLUMN closed",
          "ALTER TABLE lots DROP COLUMN area", "ALTER TABLE alignments DROP COLUMN import_id",
          "ALTER TABLE fenmark_drawing DROP COLUMN stamp", "DROP TABLE fenmark_imports", "DROP TABLE layer_styles",
          "DELETE FROM gpkg_contents WHERE table_name IN ('fenmark_imports', 'layer_styles')",
          "UPDATE fenmark_drawing SET format = 1", "DELETE FROM sqlite_sequence"}) {
        EXPECT_TRUE(old.ask(sql).empty()) << sql;
    }
    old.ask("PRAGMA writable_schema = ON;"
            "UPDATE sqlite_master SET sql = replace(sql, ' AUTOINCREMENT', '') WHERE type = 'table'");
    for (const std::string& sql : triggers) {
        EXPECT_TRUE(old.ask(sql).empty()) << sql;
    }
    EXPECT_TRUE(OtherProgram(path).ask("VACUUM").empty()); // which leaves the empty table of sequences out
    EXPECT_TRUE(OtherProgram(path).ask("SELECT 1 FROM sqlite_master WHERE name = 'sqlite_sequence'").empty());
}

TEST_F(Imports, ADrawingOfTheFirstFormatIsReadAndAppendedTo) {
    addSmallImport(drawing_, 0);
    save();
    makeFirstFormat(path_);
    // An area whose polyline was deleted lived on.
    OtherProgram(path_).ask("INSERT INTO polylines (fid, layer) VALUES (500, '0')");
    OtherProgram(path_).ask("PRAGMA writable_schema = ON; DROP TRIGGER rtree_lots_geom_insert;"
                            "INSERT INTO lots (fid, geom) SELECT 501, geom FROM lots LIMIT 1;"
                            "INSERT INTO rtree_lots_geom VALUES (501, 0, 1, 0, 1)");
    OtherProgram(path_).ask("DELETE FROM polylines WHERE fid = 500");
    Drawing read;
    DrawingStore store;
    const Outcome opened = store.open(path_, read);
    ASSERT_TRUE(opened) << opened.message.english;
    EXPECT_TRUE(store.notes().empty());
    EXPECT_EQ(describe(read), describe(drawing_));

    Drawing lean;
    ASSERT_TRUE(store.open(path_, lean, Load::WithoutEntities));
    const MdDbObjectId made = importSmall(lean, "b.sim", 1);
    const Outcome saved = store.save(path_, lean);
    ASSERT_TRUE(saved) << saved.message.english;
    EXPECT_EQ(one("SELECT format FROM fenmark_drawing"), "2");
    EXPECT_EQ(OtherProgram(path_).ask("SELECT closed, round(area, 6), import_id FROM lots ORDER BY fid"),
              OtherProgram(path_).ask("SELECT 1, 102.015, NULL UNION ALL SELECT 1, round(area, 6), " +
                                      std::to_string(made.asUint64()) + " FROM lots WHERE import_id NOT NULL"));
    EXPECT_EQ(one("SELECT count(*) FROM layer_styles"), "4");
    EXPECT_EQ(indexFault(path_, "points"), "");
    EXPECT_EQ(indexFault(path_, "lots"), "");
    Drawing all;
    ASSERT_TRUE(DrawingStore().open(path_, all));
    EXPECT_EQ(all.entityCount(), 2 * drawing_.entityCount());
    EXPECT_EQ(all.imports().size(), 1U);
    ASSERT_TRUE(all.removeImport(made));
    EXPECT_EQ(describe(all).substr(0, 20), describe(drawing_).substr(0, 20));
    EXPECT_EQ(all.entityCount(), drawing_.entityCount());
}

// --- the digest ---

TEST(FileDigest, IsThatOfTheStandard) {
    // FIPS 180-4's examples and RFC 6234's million of "a".
    EXPECT_EQ(digestOf("abc"), "sha256:ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(digestOf(""), "sha256:e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(digestOf("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
              "sha256:248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
    const std::string million(1'000'000, 'a');
    constexpr const char* kMillion = "sha256:cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0";
    EXPECT_EQ(digestOf(million), kMillion);
    const TemporaryFolder folder;
    std::ofstream(folder.at("a"), std::ios::binary) << million;
    EXPECT_EQ(digestFile(folder.at("a"))->digest, kMillion);
    EXPECT_EQ(digestFile(folder.at("a"))->size, million.size());
    std::ofstream(folder.at("b"), std::ios::binary) << std::string(1 << 20, 'b');
    EXPECT_EQ(digestFile(folder.at("b"))->digest, digestOf(std::string(1 << 20, 'b'))) << "one piece, no rest";
    EXPECT_FALSE(digestFile(folder.at("none")));
}

TEST_F(Imports, AnImportThatMadeNothingGoesAlone) {
    importSmall(drawing_, "a.sim", 0);
    const MdDbObjectId empty = drawing_.addImport(importRecord("b.sim", drawing_.lastId() + 1, drawing_.lastId()));
    const std::string before = describe(drawing_);
    save();
    ASSERT_TRUE(drawing_.removeImport(empty));
    EXPECT_FALSE(drawing_.removeImport(empty)) << "it is gone";
    EXPECT_EQ(describe(drawing_), before);
    save();
    Drawing read;
    ASSERT_TRUE(DrawingStore().open(path_, read));
    ASSERT_EQ(read.imports().size(), 1U);
    EXPECT_EQ(read.imports()[0].fileName, "a.sim");
    EXPECT_EQ(describe(read), before);
}

TEST_F(Imports, AreTheSameOnlyWhereEveryMemberIs) {
    const Import import = importRecord("a.sim", 1, 9);
    const std::function<void(Import&)> changes[] = {
        [](Import& other) { other.id = MdDbObjectId(77); },
        [](Import& other) { other.fileName = "b.sim"; },
        [](Import& other) { other.path = "b.sim"; },
        [](Import& other) { ++other.fileSize; },
        [](Import& other) { other.digest = digestOf("b"); },
        [](Import& other) { other.time = "2026-02-01T00:00:00Z"; },
        [](Import& other) { ++other.counts.points; },
        [](Import& other) { ++other.counts.lots; },
        [](Import& other) { ++other.counts.routes; },
        [](Import& other) { ++other.counts.alignments; },
        [](Import& other) { ++other.counts.longitudinal; },
        [](Import& other) { ++other.counts.crossSections; },
        [](Import& other) { ++other.counts.errors; },
        [](Import& other) { ++other.firstId; },
        [](Import& other) { ++other.lastId; },
    };
    for (const auto& change : changes) {
        Import other = import;
        EXPECT_EQ(other, import);
        change(other);
        EXPECT_NE(other, import);
    }
}

TEST_F(Imports, OfWhatIsNoFileHaveNoDigest) {
    EXPECT_FALSE(digestFile(folder_.path())) << "a folder";
    EXPECT_FALSE(digestFile(folder_.at("none.sim")));
}

// Its boxes go one by one where many others stay.
TEST_F(Imports, ASmallOneGoesOutOfALargeDrawing) {
    for (int i = 0; i < 400; ++i) {
        addSmallImport(drawing_, i);
    }
    const std::string before = describe(drawing_);
    const MdDbObjectId small = importSmall(drawing_, "a.sim", 1);
    save();
    ASSERT_TRUE(drawing_.removeImport(small));
    save();
    Drawing read;
    ASSERT_TRUE(DrawingStore().open(path_, read));
    EXPECT_EQ(read.entityCount(), drawing_.entityCount());
    EXPECT_EQ(describe(read).substr(0, before.find("entity")), describe(drawing_).substr(0, before.find("entity")));
}

// A feature that another program added under the identifier of an imported object gets its own, of either kind.
TEST_F(Imports, KeepTheirIdentifiersBesideAddedFeatures) {
    importSmall(drawing_, "a.sim", 0);
    save();
    const OtherProgram gis(path_);
    const std::string imported = gis.one("SELECT min(fid) FROM polylines");
    EXPECT_TRUE(gis.ask("DROP TRIGGER rtree_points_geom_insert; INSERT INTO points (fid, geom, layer) SELECT " +
                        imported + ", geom, '0' FROM points LIMIT 1")
                    .empty());
    Drawing read;
    DrawingStore store;
    ASSERT_TRUE(store.open(path_, read));
    EXPECT_EQ(read.entityCount(), drawing_.entityCount() + 1);
    const std::optional<std::size_t> kept = read.findEntity(MdDbObjectId(std::stoull(imported)));
    ASSERT_TRUE(kept);
    EXPECT_FALSE(read.isPoint(*kept)) << "the one that was imported";
    ASSERT_EQ(store.notes().size(), 1U);
    EXPECT_EQ(store.notes()[0].code, StoreNoteCode::TakenIdentifier);
    EXPECT_EQ(store.notes()[0].table, "points");
}

} // namespace
} // namespace fenmark::drawing
