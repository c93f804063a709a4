// Drawings of which a part is gone or wrong, and packages without one: each is refused with what is wrong in it, and left as
// it was.
#include "drawing/geopackage/foreign_package.h"
#include "drawing/index_check.h"
#include "support/drawing_support.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <sys/stat.h>

namespace fenmark::drawing {
namespace {

// Foreign keys off: what is tried here, they would keep out. The functions that the triggers of the indexes ask for answer
// with 0, whatever the geometry.
void changeFile(const std::string& path, const std::string& sql) {
    const OtherProgram other(path);
    for (const char* function : {"ST_IsEmpty", "ST_MinX", "ST_MaxX", "ST_MinY", "ST_MaxY"}) {
        const auto zero = [](sqlite3_context* context, int, sqlite3_value**) { sqlite3_result_int(context, 0); };
        sqlite3_create_function(other.get(), function, 1, SQLITE_UTF8, nullptr, zero, nullptr, nullptr);
    }
    const std::vector<std::string> rows = other.ask("PRAGMA foreign_keys = OFF; " + sql);
    EXPECT_TRUE(rows.empty()) << rows.front();
}

class DamagedDrawing : public SavedDrawing {
  protected:
    DamagedDrawing() : SavedDrawing("図 面#1 50%?.gpkg") {} // signs that have a meaning in a URI

    void change(const std::string& sql) const { changeFile(path_, sql); }
    // What opening says after the change; the file stays as the change left it.
    std::string refusal() const {
        const std::string before = test::readFile(path_);
        Drawing drawing;
        DrawingStore store;
        const Outcome opened = store.open(path_, drawing);
        EXPECT_FALSE(opened);
        EXPECT_FALSE(opened.message.japanese.empty());
        EXPECT_EQ(test::readFile(path_), before);
        return opened.message.english;
    }
};

TEST_F(DamagedDrawing, SignsOfAUriInItsNameChangeNothing) {
    Drawing drawing;
    ASSERT_TRUE(DrawingStore().open(path_, drawing));
    EXPECT_EQ(describe(drawing), describe(drawing_));
    EXPECT_EQ(folder_.names().size(), 1U);
}

TEST_F(DamagedDrawing, WithoutItsSettings) {
    change("DELETE FROM fenmark_drawing");
    EXPECT_NE(refusal().find("its settings are missing"), std::string::npos);
}

TEST_F(DamagedDrawing, WithoutALayer) {
    change("DELETE FROM layers");
    EXPECT_NE(refusal().find("it has no layer"), std::string::npos);
}

TEST_F(DamagedDrawing, WithAnElementThatIsNone) {
    ASSERT_GT(drawing_.alignmentCount(), 0U);
    for (const char* set :
         {"type = 'X'", "length = -1.0", "start_radius = -5.0", "start_radius = 0.0", "end_radius = 0.0",
          "element_id = NULL", "element_id = 'first'", "element_id = 4294967297", "start_x = ''", "start_y = '12 m'",
          "end_x = x'00'", "end_y = '1,5'", "direction = 'north'", "length = 'long'", "start_radius = ' 12xyz'",
          "end_radius = x''", "clockwise = NULL", "clockwise = 'true'"}) {
        change("CREATE TABLE kept AS SELECT * FROM alignment_elements");
        change(std::string("UPDATE alignment_elements SET ") + set + " WHERE rowid = 1");
        EXPECT_NE(refusal().find("an element of alignment"), std::string::npos) << set;
        change("DELETE FROM alignment_elements; INSERT INTO alignment_elements SELECT * FROM kept; DROP TABLE kept");
    }
    Drawing drawing;
    EXPECT_TRUE(DrawingStore().open(path_, drawing)) << "put right again";
}

// NULL is how a length without end is kept.
// What follows can be read, and what is imported into it later.
TEST_F(DamagedDrawing, AFeatureWhoseGeometryIsBrokenIsLeftOutAndToldOf) {
    const std::size_t before = drawing_.entityCount();
    change("UPDATE points SET geom = x'00112233' WHERE fid = (SELECT min(fid) FROM points)");
    for (const bool added : {false, true}) {
        Drawing drawing;
        DrawingStore store;
        ASSERT_TRUE(store.open(path_, drawing));
        EXPECT_EQ(drawing.entityCount(), before - (added ? 0U : 1U));
        ASSERT_EQ(store.notes().size(), 1U);
        EXPECT_EQ(store.notes()[0].code, StoreNoteCode::FeatureDamaged);
        EXPECT_EQ(store.notes()[0].table, "points");
        EXPECT_EQ(store.notes()[0].count, 1U);
        if (!added) {
            drawing.addPoint({1, 2, 3}, 0);
            ASSERT_TRUE(store.save(path_, drawing));
        }
    }
    EXPECT_EQ(OtherProgram(path_).ask("SELECT count(*) FROM points WHERE geom = x'00112233'"),
              std::vector<std::string>{"1"})
        << "the row stays as it is";
}

// A page of one b-tree that names its children by their number.
std::string innerPage(std::size_t pageSize, std::size_t child, std::size_t count) {
    const auto number = [](std::size_t value, std::size_t bytes) {
        std::string text;
        for (std::size_t i = bytes; i > 0; --i) {
            text += static_cast<char>((value >> (8 * (i - 1))) & 0xFFU);
        }
        return text;
    };
    const std::string cell = number(child, 4) + '\x7F'; // the child, and the highest row in it
    std::string pointers;
    for (std::size_t i = 1; i <= count; ++i) {
        pointers += number(pageSize - i * cell.size(), 2);
    }
    std::string page = '\x05' + number(0, 2) + number(count, 2) + number(pageSize - count * cell.size(), 2) + '\0' +
                       number(child, 4) + pointers;
    page.resize(pageSize - count * cell.size());
    for (std::size_t i = 0; i < count; ++i) {
        page += cell;
    }
    return page;
}

// Of a table with one page the page stays as it is, and is named so often by each of so many others.
void nameOnePageOften(const std::string& path, const std::string& table, std::size_t times) {
    const OtherProgram other(path);
    const std::size_t pageSize = std::stoul(other.one("PRAGMA page_size"));
    const std::size_t root =
        (std::stoul(other.one("SELECT rootpage FROM sqlite_master WHERE name = '" + table + "'")) - 1) * pageSize;
    std::string bytes = test::readFile(path);
    ASSERT_EQ(bytes[root], '\x0D') << "a leaf";
    const std::size_t pages = bytes.size() / pageSize;
    bytes += bytes.substr(root, pageSize) + innerPage(pageSize, pages + 1, times);
    bytes.replace(root, pageSize, innerPage(pageSize, pages + 2, times));
    for (std::size_t i = 0; i < 4; ++i) { // the count of pages in the head of the file
        bytes[28 + i] = static_cast<char>(((pages + 2) >> (8 * (3 - i))) & 0xFFU);
    }
    std::ofstream(path, std::ios::binary) << bytes;
}

// A few pages can stand for more rows than fit into any memory.
TEST_F(DamagedDrawing, WithPagesThatStandForMoreRowsThanTheFileHasBytes) {
    for (const char* table : {"points", "alignments", "layers", "sites", "object_data_tables", "fenmark_imports"}) {
        const std::string path = folder_.at(std::string(table) + ".gpkg");
        std::filesystem::copy_file(path_, path);
        changeFile(path, "INSERT OR IGNORE INTO fenmark_imports (id, FileName) VALUES (900, 'a.sim')");
        nameOnePageOften(path, table, 600);
        Drawing drawing;
        const Outcome opened = DrawingStore().open(path, drawing);
        EXPECT_NE(opened.message.english.find("it gives more than it can hold"), std::string::npos)
            << table << ": " << opened.message.english;
    }
}

TEST_F(DamagedDrawing, WithATextThatStandsForMoreBytesThanTheFileHas) {
    change("UPDATE layers SET name = name || printf('%.*c', 100000, 'x') WHERE id = (SELECT min(id) FROM layers)");
    nameOnePageOften(path_, "layers", 20);
    EXPECT_NE(refusal().find("it gives more than it can hold"), std::string::npos);
}

// A program that has the drawing open may keep what it wrote last in its log.
TEST_F(DamagedDrawing, AValueLongerThanTheFileIsReadFromTheLogOfAnotherProgram) {
    const OtherProgram other(path_);
    const std::vector<std::string> rows = other.ask(
        "PRAGMA journal_mode = WAL; INSERT INTO layers (id, name) VALUES (9000, printf('%.*c', 2000000, 'x'))");
    ASSERT_EQ(rows, std::vector<std::string>{"wal"});
    Drawing drawing;
    const Outcome opened = DrawingStore().open(path_, drawing);
    ASSERT_TRUE(opened) << opened.message.english;
    EXPECT_EQ(drawing.layers().back().name.size(), 2'000'000U);
}

// SQLite would wait at a pipe for ever.
TEST_F(DamagedDrawing, WhatIsNoFileBesideItIsToldAndNotOpened) {
    for (const char* ending : {"-journal", "-wal", "-shm"}) {
        const std::string beside = path_ + ending;
        for (const bool isPipe : {true, false}) {
            if (isPipe) {
                ASSERT_EQ(::mkfifo(beside.c_str(), 0600), 0);
            } else {
                std::filesystem::create_symlink("nothing", beside);
            }
            EXPECT_NE(refusal().find("cannot be read ('" + beside + "' is not a file)"), std::string::npos)
                << refusal();
            EXPECT_TRUE(store_.save(folder_.at("other.gpkg"), drawing_));
            const Outcome saved = store_.save(path_, drawing_);
            EXPECT_EQ(saved.failure, Failure::NotReadable) << ending;
            std::filesystem::remove(beside);
            EXPECT_TRUE(store_.save(path_, drawing_));
        }
    }
}

// SQLite's identifiers end at 2^63, and ours are counted on from the highest one.
TEST_F(DamagedDrawing, OneWithoutIdentifiersThatAreLeftCanBeReadAndNotAddedTo) {
    for (const char* sql : {"UPDATE points SET fid = 9223372036854775807 WHERE fid = (SELECT max(fid) FROM points)",
                            "UPDATE points SET fid = 4611686018427387904 WHERE fid = (SELECT max(fid) FROM points)",
                            "UPDATE layers SET id = 9223372036854775807 WHERE id = (SELECT max(id) FROM layers)",
                            "UPDATE fenmark_drawing SET last_id = 9223372036854775807"}) {
        change(sql);
        const std::string before = test::readFile(path_);
        for (const Load load : {Load::Everything, Load::WithoutEntities}) {
            Drawing drawing;
            DrawingStore store;
            ASSERT_TRUE(store.open(path_, drawing, load)) << sql;
            drawing.addPoint({1, 2, 3}, 0);
            const Outcome saved = store.save(path_, drawing);
            EXPECT_EQ(saved.failure, Failure::Damaged) << sql;
            EXPECT_NE(saved.message.english.find("so large an identifier"), std::string::npos) << saved.message.english;
            EXPECT_FALSE(saved.message.japanese.empty());
            if (load == Load::Everything) {
                EXPECT_FALSE(store.save(folder_.at("copy.gpkg"), drawing)) << sql;
                EXPECT_FALSE(store.writeCopy(folder_.at("copy.gpkg"), drawing)) << sql;
            }
        }
        EXPECT_EQ(test::readFile(path_), before) << sql;
        EXPECT_EQ(folder_.names().size(), 1U) << sql;
    }
}

// A save would take rows under them for new ones, or for all that was undone.
TEST_F(DamagedDrawing, IdentifiersBelowOneAreToldAndNothingIsWrittenOverThem) {
    struct Change {
        const char* sql;
        const char* refusal;
    };
    const Change changes[] = {
        {"UPDATE layers SET id = -5 WHERE id = (SELECT max(id) FROM layers)", "a layer has the identifier -5"},
        {"UPDATE layers SET id = 0 WHERE id = (SELECT max(id) FROM layers)", "a layer has the identifier 0"},
        {"UPDATE sites SET id = -9223372036854775808 WHERE id = (SELECT max(id) FROM sites)",
         "a site has the identifier -9223372036854775808"},
        {"UPDATE object_data_tables SET id = 0 WHERE id = (SELECT max(id) FROM object_data_tables)",
         "a table of object data has the identifier 0"},
        {"INSERT INTO fenmark_imports (id, FileName) VALUES (-2, 'a.sim')", "an import has the identifier -2"},
        {"INSERT INTO alignments (fid, name) VALUES (-7, 'a')", "an alignment has the identifier -7"},
    };
    const std::string whole = folder_.at("whole.gpkg");
    std::filesystem::copy_file(path_, whole);
    for (const auto& [sql, refusal] : changes) {
        std::filesystem::copy_file(whole, path_, std::filesystem::copy_options::overwrite_existing);
        change(sql);
        const std::string before = test::readFile(path_);
        for (const Load load : {Load::Everything, Load::WithoutEntities}) {
            Drawing drawing;
            DrawingStore store;
            ASSERT_TRUE(store.open(path_, drawing, load)) << sql;
            for (int i = 0; i < 9; ++i) {
                drawing.addPoint({1, 2, 3}, 0);
            }
            for (const Import& import : std::vector<Import>(drawing.imports())) {
                drawing.removeImport(import.id); // as --replace does
            }
            const Outcome saved = store.save(path_, drawing);
            EXPECT_EQ(saved.failure, Failure::Damaged) << sql;
            EXPECT_NE(saved.message.english.find(refusal), std::string::npos) << saved.message.english;
            EXPECT_NE(saved.message.japanese.find("の識別子が "), std::string::npos) << saved.message.japanese;
        }
        EXPECT_EQ(test::readFile(path_), before) << sql;
    }
    for (const char* table : {"points", "polylines"}) {
        std::filesystem::copy_file(whole, path_, std::filesystem::copy_options::overwrite_existing);
        change("UPDATE " + std::string(table) + " SET fid = 0 WHERE fid = (SELECT max(fid) FROM " + table + ")");
        for (const Load load : {Load::Everything, Load::WithoutEntities}) {
            Drawing drawing;
            EXPECT_EQ(DrawingStore().open(path_, drawing, load).failure, Failure::Damaged)
                << table << ": nothing is added to what cannot be read afterwards";
        }
    }
}

TEST_F(DamagedDrawing, AnElementWithoutALengthHasNoEnd) {
    change("UPDATE alignment_elements SET length = NULL WHERE rowid = 1");
    Drawing drawing;
    ASSERT_TRUE(DrawingStore().open(path_, drawing));
    EXPECT_TRUE(std::isinf(drawing.alignment(0).elements.at(0).length));
}

TEST_F(DamagedDrawing, AnElementMayHaveEveryLengthFromZeroOnAndEveryRadiusAboveIt) {
    for (const std::string column : {"length", "start_radius", "end_radius"}) {
        for (const auto& [value, isSound] : {std::pair("-0.001", false),
                                             {"0", column == "length"},
                                             {"1e-300", true},
                                             {"0.001", true},
                                             {"0.999", true},
                                             {"1e300", true}}) {
            change("UPDATE alignment_elements SET " + column + " = " + value + " WHERE place = 1");
            Drawing drawing;
            const Outcome opened = DrawingStore().open(path_, drawing);
            EXPECT_EQ(opened.failure, isSound ? Failure::None : Failure::Damaged) << column << ' ' << value;
        }
        change("UPDATE alignment_elements SET " + column + " = 60 WHERE place = 1");
    }
}

TEST_F(DamagedDrawing, ADrawingOpenedWithoutItsPointsIsNoWholeOne) {
    Drawing head;
    DrawingStore store;
    ASSERT_TRUE(store.open(path_, head, Load::WithoutEntities));
    const Outcome other = store.save(folder_.at("other.gpkg"), head);
    EXPECT_FALSE(other);
    EXPECT_NE(other.message.english.find("without its points"), std::string::npos) << other.message.english;
    EXPECT_EQ(folder_.names().size(), 1U);
}

TEST_F(DamagedDrawing, OneThatWasTakenAwayIsMadeAnew) {
    std::filesystem::remove(path_);
    const Outcome saved = store_.save(path_, drawing_);
    ASSERT_TRUE(saved) << saved.message.english;
    Drawing drawing;
    ASSERT_TRUE(DrawingStore().open(path_, drawing));
    EXPECT_EQ(describe(drawing), describe(drawing_));
}

class PackageOfOthers : public ::testing::Test {
  protected:
    TemporaryFolder folder_;
    std::string path_ = folder_.at("a.gpkg");

    void SetUp() override {
        // Our own file with our own tables gone is a package of another program.
        Drawing drawing;
        DrawingStore store;
        ASSERT_TRUE(store.save(path_, drawing));
        change(
            "DELETE FROM gpkg_contents; DELETE FROM gpkg_geometry_columns; DROP TABLE fenmark_drawing;"
            "CREATE TABLE p (fid INTEGER PRIMARY KEY, geom POINT, Name TEXT);"
            "INSERT INTO gpkg_contents (table_name, data_type, identifier, srs_id) VALUES ('p', 'features', 'p', -1);"
            "INSERT INTO gpkg_geometry_columns VALUES ('p', 'geom', 'POINT', -1, 0, 0)");
    }
    void change(const std::string& sql) const { changeFile(path_, sql); }
    std::string why() const {
        ForeignPackage package;
        const Outcome read = readForeignPackage(path_, 0, package);
        return read ? std::string() : read.message.english;
    }
};

TEST_F(PackageOfOthers, FeaturesWithoutAPlaceAreCounted) {
    change("INSERT INTO p VALUES (1, NULL, 'a'), (2, x'47500011' || x'ffffffff', 'b')");
    EXPECT_NE(why().find("1 without a place in 'p'"), std::string::npos) << why();
    EXPECT_NE(why().find("1 damaged geometry in 'p'"), std::string::npos) << why();
}

TEST_F(PackageOfOthers, WithoutATableOfFeaturesItIsRefused) {
    change("DELETE FROM gpkg_geometry_columns; DELETE FROM gpkg_contents");
    EXPECT_NE(why().find("no table of features"), std::string::npos) << why();
}

TEST_F(PackageOfOthers, ATableThatLacksItsGeometryIsPassedOver) {
    change("UPDATE gpkg_geometry_columns SET column_name = 'shape'");
    EXPECT_NE(why().find("no table of features"), std::string::npos) << why();
}

} // namespace
} // namespace fenmark::drawing
