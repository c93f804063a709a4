// A drawing on disk: what goes in comes out, and every way in which it can fail ends in a clear result.
#include "drawing/index_check.h"
#include "support/drawing_support.h"
#include "support/ordinary_user.h"

#include <sqlite3.h>

#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <sstream>

namespace fenmark::drawing {

using test::asOrdinaryUser;

namespace {

std::string contents(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

void write(const std::string& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

Drawing opened(const std::string& path) {
    Drawing drawing;
    DrawingStore store;
    const Outcome result = store.open(path, drawing);
    EXPECT_TRUE(result) << result.message.english;
    return drawing;
}

class DrawingStoreTest : public ::testing::Test {
  protected:
    TemporaryFolder folder_;
    std::string path_ = folder_.at("図面.gpkg");
    Drawing drawing_;
    DrawingStore store_;

    void saveSmall() {
        addSmallImport(drawing_);
        const Outcome result = store_.save(path_, drawing_);
        ASSERT_TRUE(result) << result.message.english;
    }
};

TEST_F(DrawingStoreTest, ANewDrawingComesBackAsItWas) {
    ASSERT_TRUE(store_.save(path_, drawing_));
    EXPECT_EQ(describe(opened(path_)), describe(drawing_));
    EXPECT_EQ(opened(path_).layers().size(), 1U);
    EXPECT_EQ(opened(path_).layers()[0].name, "0");
}

TEST_F(DrawingStoreTest, EverythingComesBackBitForBit) {
    saveSmall();
    EXPECT_EQ(describe(opened(path_)), describe(drawing_));
}

TEST_F(DrawingStoreTest, ACopyIsAFileOfItsOwn) {
    saveSmall();
    const std::string before = contents(path_);
    addSmallImport(drawing_);
    const std::string copy = folder_.at("控え.gpkg");
    const Outcome written = DrawingStore::writeCopy(copy, drawing_);
    ASSERT_TRUE(written) << written.message.english;
    EXPECT_EQ(describe(opened(copy)), describe(drawing_));
    EXPECT_EQ(contents(path_), before) << "the drawing's own file is as it was";
    EXPECT_EQ(store_.path(), path_);
    ASSERT_TRUE(store_.save(path_, drawing_));
    EXPECT_EQ(describe(opened(path_)), describe(drawing_)) << "what was not saved is saved all the same";
    const Outcome nowhere = DrawingStore::writeCopy(folder_.at("none/控え.gpkg"), drawing_);
    EXPECT_FALSE(nowhere);
    EXPECT_NE(nowhere.message.english.find("none"), std::string::npos) << nowhere.message.english;
}

TEST_F(DrawingStoreTest, TheFileTellsTheFormatOfItsTables) {
    saveSmall();
    addSmallImport(drawing_, 1);
    ASSERT_TRUE(store_.save(path_, drawing_)); // appended
    sqlite3* connection = nullptr;
    ASSERT_EQ(sqlite3_open(path_.c_str(), &connection), SQLITE_OK);
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(connection, "SELECT format, id FROM fenmark_drawing", -1, &statement, nullptr);
    ASSERT_EQ(sqlite3_step(statement), SQLITE_ROW);
    EXPECT_EQ(sqlite3_column_int(statement, 0), 2);
    EXPECT_EQ(sqlite3_column_int(statement, 1), 1);
    EXPECT_EQ(sqlite3_step(statement), SQLITE_DONE) << "one row";
    sqlite3_finalize(statement);
    sqlite3_close(connection);
}

TEST_F(DrawingStoreTest, SavingLeavesOneFile) {
    saveSmall();
    addSmallImport(drawing_, 1);
    ASSERT_TRUE(store_.save(path_, drawing_));
    EXPECT_EQ(folder_.names(), std::vector<std::string>{"図面.gpkg"});
}

TEST_F(DrawingStoreTest, AnImportIsAppended) {
    saveSmall();
    addSmallImport(drawing_, 1);
    ASSERT_TRUE(store_.hasChanges(drawing_));
    ASSERT_TRUE(store_.save(path_, drawing_));
    EXPECT_FALSE(store_.hasChanges(drawing_));
    EXPECT_EQ(describe(opened(path_)), describe(drawing_));
}

TEST_F(DrawingStoreTest, AnImportIsAppendedToADrawingWhosePointsWereNotRead) {
    saveSmall();
    Drawing lean;
    DrawingStore store;
    ASSERT_TRUE(store.open(path_, lean, Load::WithoutEntities));
    EXPECT_EQ(lean.entityCount(), 0U);
    EXPECT_FALSE(lean.entitiesLoaded());
    EXPECT_FALSE(lean.extent().empty());
    addSmallImport(lean, 1);
    ASSERT_TRUE(store.save(path_, lean));

    addSmallImport(drawing_, 1);
    EXPECT_EQ(describe(opened(path_)), describe(drawing_));
}

TEST_F(DrawingStoreTest, AppendingDoesNotTouchWhatIsThere) {
    for (int i = 0; i < 2000; ++i) {
        addSmallImport(drawing_, i);
    }
    ASSERT_TRUE(store_.save(path_, drawing_));
    const std::string before = contents(path_);
    addSmallImport(drawing_, 9);
    ASSERT_TRUE(store_.save(path_, drawing_));
    const std::string after = contents(path_);
    constexpr std::size_t kPage = 8192;
    std::size_t changed = 0;
    for (std::size_t page = 0; page * kPage < before.size(); ++page) {
        if (before.compare(page * kPage, kPage, after, page * kPage, kPage) != 0) {
            ++changed;
        }
    }
    EXPECT_LT(changed, before.size() / kPage / 10); // the last page of each table and the ways to it
}

TEST_F(DrawingStoreTest, WhatWasUndoneGoesFromTheDisk) {
    saveSmall();
    const std::string small = describe(drawing_);
    const Drawing::Mark mark = drawing_.mark();
    addSmallImport(drawing_, 1);
    ASSERT_TRUE(store_.save(path_, drawing_));
    const std::uint64_t undoneTo = drawing_.lastId();
    drawing_.rollback(mark);
    ASSERT_TRUE(store_.hasChanges(drawing_));
    ASSERT_TRUE(store_.save(path_, drawing_));
    EXPECT_EQ(describe(opened(path_)), small);
    const MdDbObjectId next = drawing_.addPoint({}, 0);
    EXPECT_EQ(next.asUint64(), undoneTo + 1) << "identifiers are not given twice";
}

TEST_F(DrawingStoreTest, WhatWasTakenBackAndPutBackIsOnTheDiskAgain) {
    saveSmall();
    const Drawing::Mark mark = drawing_.mark();
    addSmallImport(drawing_, 1);
    drawing_.setZone(7);
    ASSERT_TRUE(store_.save(path_, drawing_));
    const std::string full = describe(drawing_);
    // Without a save in between, the file holds it still.
    Drawing::Removed removed = drawing_.takeBack(mark);
    EXPECT_TRUE(store_.hasChanges(drawing_));
    ASSERT_TRUE(drawing_.putBack(std::move(removed)));
    EXPECT_FALSE(store_.hasChanges(drawing_));
    EXPECT_EQ(describe(opened(path_)), full);
    // With one, it is written again.
    removed = drawing_.takeBack(mark);
    ASSERT_TRUE(store_.save(path_, drawing_));
    ASSERT_TRUE(drawing_.putBack(std::move(removed)));
    EXPECT_TRUE(store_.hasChanges(drawing_));
    ASSERT_TRUE(store_.save(path_, drawing_));
    EXPECT_EQ(describe(opened(path_)), full);
}

// Where nothing but a setting was changed, it alone must bring about the save.
TEST_F(DrawingStoreTest, SettingsThatWereTakenBackAndPutBackAloneAreOnTheDiskAgain) {
    drawing_.addLayer("別");
    saveSmall();
    const std::string before = describe(drawing_);
    const std::function<void(Drawing&)> changes[] = {
        [](Drawing& drawing) { drawing.setZone(7); },
        [](Drawing& drawing) { drawing.setCurrentLayer(1); },
    };
    for (const auto& change : changes) {
        const Drawing::Mark mark = drawing_.mark();
        change(drawing_);
        EXPECT_TRUE(store_.hasChanges(drawing_));
        ASSERT_TRUE(store_.save(path_, drawing_));
        const std::string changed = describe(drawing_);
        EXPECT_NE(changed, before);
        EXPECT_EQ(describe(opened(path_)), changed);
        Drawing::Removed removed = drawing_.takeBack(mark);
        EXPECT_TRUE(store_.hasChanges(drawing_));
        ASSERT_TRUE(store_.save(path_, drawing_));
        EXPECT_EQ(describe(opened(path_)), before);
        ASSERT_TRUE(drawing_.putBack(std::move(removed)));
        EXPECT_TRUE(store_.hasChanges(drawing_));
        ASSERT_TRUE(store_.save(path_, drawing_));
        EXPECT_EQ(describe(opened(path_)), changed);
        (void)drawing_.takeBack(mark);
        ASSERT_TRUE(store_.save(path_, drawing_));
    }
}

TEST_F(DrawingStoreTest, IdentifiersAreNotGivenAgainAfterReopening) {
    saveSmall();
    const Drawing::Mark mark = drawing_.mark();
    const MdDbObjectId undone = drawing_.addPoint({}, 0);
    drawing_.rollback(mark);
    ASSERT_TRUE(store_.save(path_, drawing_));
    Drawing again = opened(path_);
    EXPECT_GT(again.addPoint({}, 0), undone);
}

TEST_F(DrawingStoreTest, AChangedObjectIsWrittenAgain) {
    saveSmall();
    const std::size_t other = *drawing_.findLayer(drawing_.addLayer("別"));
    drawing_.setEntityLayer(5, other);
    drawing_.setDescription(0, "changed");
    drawing_.setCurrentLayer(other);
    ASSERT_TRUE(store_.save(path_, drawing_));
    EXPECT_EQ(describe(opened(path_)), describe(drawing_));
}

TEST_F(DrawingStoreTest, AZoneReachesEveryGeometryThatIsThere) {
    saveSmall();
    drawing_.setZone(9);
    ASSERT_TRUE(store_.save(path_, drawing_));
    EXPECT_EQ(describe(opened(path_)), describe(drawing_));
    EXPECT_EQ(opened(path_).zone(), 9);
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open_v2(path_.c_str(), &database, SQLITE_OPEN_READONLY, nullptr), SQLITE_OK);
    for (const char* table : {"points", "polylines", "lots", "alignments"}) {
        sqlite3_stmt* rows = nullptr;
        const std::string text =
            std::string("SELECT count(geom), sum(hex(substr(geom, 5, 4)) = '151A0000') FROM ") + table;
        ASSERT_EQ(sqlite3_prepare_v2(database, text.c_str(), -1, &rows, nullptr), SQLITE_OK);
        ASSERT_EQ(sqlite3_step(rows), SQLITE_ROW);
        EXPECT_GT(sqlite3_column_int(rows, 0), 0);
        EXPECT_EQ(sqlite3_column_int(rows, 0), sqlite3_column_int(rows, 1)) << table; // 0x1A15 is 6677
        sqlite3_finalize(rows);
    }
    sqlite3_close(database);
}

TEST_F(DrawingStoreTest, TheContentsTellTheBoxOfEachLayer) {
    Element line;
    line.start = {10, -20};
    line.end = {40, 20};
    line.direction = std::atan2(40.0, 30.0);
    line.length = 50;
    const std::size_t road = drawing_.addAlignment(drawing_.addSite("s"), "a", "0", kStandardStyle, kStandardStyle);
    drawing_.addElement(road, line);
    ASSERT_TRUE(store_.save(path_, drawing_));
    EXPECT_EQ(
        OtherProgram(path_).one("SELECT min_x, min_y, max_x, max_y FROM gpkg_contents WHERE table_name = 'alignments'"),
        "10.0|-20.0|40.0|20.0");
}

TEST_F(DrawingStoreTest, EndlessCoordinatesComeBackAndLeaveEveryBoxFinite) {
    constexpr double kEndless = std::numeric_limits<double>::infinity();
    drawing_.addPoint({1, 2, kEndless}, 0);
    drawing_.addPoint({kEndless, 2, 3}, 0);
    const std::vector<MdGePoint3d> wide = {{5, 6, 0}, {5, -kEndless, 0}, {8, 7, 0}};
    drawing_.addPolyline(wide, 0, EntityKind::Polyline, true);
    const std::vector<MdGePoint3d> nowhere = {{kEndless, 0, 0}, {0, kEndless, 0}};
    drawing_.addPolyline(nowhere, 0, EntityKind::Polyline, false);
    Element line;
    line.start = {-1.7e308, 0};
    line.end = {1.7e308, 0};
    line.length = kEndless;
    drawing_.addElement(drawing_.addAlignment(drawing_.addSite("s"), "far", "0", kStandardStyle, kStandardStyle), line);
    ASSERT_TRUE(store_.save(path_, drawing_));
    EXPECT_EQ(describe(opened(path_)), describe(drawing_));
    const OtherProgram other(path_);
    EXPECT_EQ(other.one("SELECT min_x, min_y, max_x, max_y FROM gpkg_contents WHERE table_name = 'points'"),
              "1.0|2.0|1.0|2.0");
    EXPECT_EQ(other.one("SELECT min_x, min_y, max_x, max_y FROM gpkg_contents WHERE table_name = 'lots'"),
              "5.0|6.0|8.0|7.0");
    EXPECT_EQ(other.one("SELECT id, minx, maxx, miny, maxy FROM rtree_lots_geom"),
              other.one("SELECT fid, 5.0, 8.0, 6.0, 7.0 FROM lots"));
    EXPECT_EQ(other.one("SELECT count(*) FROM rtree_points_geom"), "1") << "what lies nowhere is in no window";
    // The flags of the header: a box of the finite vertices, or none.
    EXPECT_EQ(other.ask("SELECT hex(substr(geom, 4, 1)) FROM polylines"), (std::vector<std::string>{"03", "01"}));
}

TEST_F(DrawingStoreTest, TextThatIsNoTextIsMadeReadable) {
    drawing_.addTable("JSIMA_V3_Point");
    drawing_.addPoint({}, 0);
    drawing_.setRow(0, 0, 1, std::string_view("a\0b\xFFzz", 6), "\xE3\x81", "");
    EXPECT_EQ(drawing_.entity(0).row->name, std::string_view("a\0b\uFFFDzz", 8)) << "NUL is a character";
    EXPECT_EQ(drawing_.entity(0).row->type, "\uFFFD\uFFFD");
    drawing_.addSite(std::string_view("s\0", 2));
    ASSERT_TRUE(store_.save(path_, drawing_));
    EXPECT_EQ(describe(opened(path_)), describe(drawing_));
}

TEST_F(DrawingStoreTest, OpeningChangesNothing) {
    saveSmall();
    const std::string before = contents(path_);
    const auto time = std::filesystem::last_write_time(path_);
    opened(path_);
    EXPECT_EQ(contents(path_), before);
    EXPECT_EQ(std::filesystem::last_write_time(path_), time);
    EXPECT_EQ(folder_.names(), std::vector<std::string>{"図面.gpkg"});
}

TEST_F(DrawingStoreTest, OpeningWorksInAFolderThatCannotBeWritten) {
    saveSmall();
    const std::string expected = describe(drawing_);
    chmod(path_.c_str(), 0444);
    chmod(folder_.path().c_str(), 0555);
    EXPECT_EQ(asOrdinaryUser([&] { return describe(opened(path_)) == expected; }), 0);
}

TEST_F(DrawingStoreTest, ADrawingThatAGisLeftInWriteAheadModeOpensInAFolderThatCannotBeWritten) {
    saveSmall();
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(path_.c_str(), &database), SQLITE_OK);
    sqlite3_exec(database, "PRAGMA journal_mode = WAL; CREATE TABLE other (a);", nullptr, nullptr, nullptr);
    sqlite3_close(database);
    chmod(path_.c_str(), 0444);
    chmod(folder_.path().c_str(), 0555);
    EXPECT_EQ(asOrdinaryUser([&] { return describe(opened(path_)) == describe(drawing_); }), 0);
    EXPECT_EQ(folder_.names(), std::vector<std::string>{"図面.gpkg"});
    chmod(folder_.path().c_str(), 0755);
    chmod(path_.c_str(), 0644);
    addSmallImport(drawing_, 1);
    ASSERT_TRUE(store_.save(path_, drawing_));
    EXPECT_EQ(folder_.names(), std::vector<std::string>{"図面.gpkg"});
}

TEST_F(DrawingStoreTest, AChangedLayerAndANewOneAreSavedTogether) {
    saveSmall();
    std::vector<Layer> layers = drawing_.layers();
    layers[0].colour = Colour{0x8e, 0x24, 0xaa};
    ASSERT_TRUE(drawing_.setLayers(layers));
    drawing_.addLayer("新");
    ASSERT_TRUE(store_.save(path_, drawing_));
    EXPECT_EQ(opened(path_).layers(), drawing_.layers());
    EXPECT_EQ(describe(opened(path_)), describe(drawing_));
}

// The log of another program that has the drawing open holds what the file does not yet.
TEST_F(DrawingStoreTest, WhatAnotherProgramWroteAheadIsRead) {
    saveSmall();
    {
        const OtherProgram gis(path_);
        ASSERT_EQ(gis.ask("PRAGMA journal_mode = WAL; UPDATE fenmark_drawing SET zone = 9").front(), "wal");
        ASSERT_EQ(folder_.names().size(), 3U);
        EXPECT_EQ(opened(path_).zone(), 9);
    }
    EXPECT_EQ(opened(path_).zone(), 9);
}

// --- what can fail ---

TEST_F(DrawingStoreTest, WhatIsNoDrawingIsTold) {
    const auto errorOf = [&](const std::string& path) {
        Drawing drawing;
        DrawingStore store;
        const std::string before = describe(drawing);
        const Outcome result = store.open(path, drawing);
        EXPECT_NE(result.message.english.find(path), std::string::npos) << result.message.english;
        EXPECT_EQ(describe(drawing), before);
        return result.failure;
    };
    EXPECT_EQ(errorOf(folder_.at("none.gpkg")), Failure::NotFound);
    EXPECT_EQ(errorOf(folder_.path()), Failure::NotAFile);
    write(folder_.at("empty.gpkg"), "");
    EXPECT_EQ(errorOf(folder_.at("empty.gpkg")), Failure::NotADrawing);
    write(folder_.at("text.gpkg"), "A01,1,P,1,2,3,\r\n");
    EXPECT_EQ(errorOf(folder_.at("text.gpkg")), Failure::NotADrawing);
    write(folder_.at("nulls.gpkg"), std::string(100000, '\0'));
    EXPECT_EQ(errorOf(folder_.at("nulls.gpkg")), Failure::NotADrawing);
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(folder_.at("other.gpkg").c_str(), &database), SQLITE_OK);
    sqlite3_exec(database, "CREATE TABLE a (b);", nullptr, nullptr, nullptr);
    EXPECT_EQ(errorOf(folder_.at("other.gpkg")), Failure::NotOurs);
    sqlite3_exec(database, "PRAGMA application_id = 0x47504B47;", nullptr, nullptr, nullptr);
    EXPECT_EQ(errorOf(folder_.at("other.gpkg")), Failure::NotOurs);
    sqlite3_close(database);
}

TEST_F(DrawingStoreTest, ALaterFormatIsTold) {
    saveSmall();
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(path_.c_str(), &database), SQLITE_OK);
    sqlite3_exec(database, "UPDATE fenmark_drawing SET format = 3", nullptr, nullptr, nullptr);
    sqlite3_close(database);
    Drawing drawing;
    const Outcome result = DrawingStore().open(path_, drawing);
    EXPECT_EQ(result.failure, Failure::LaterFormat);
    EXPECT_EQ(result.message.english, path_ + ": was made by a later version of this program");
}

TEST_F(DrawingStoreTest, ADamagedDrawingIsToldAndNeverCrashes) {
    for (int i = 0; i < 20; ++i) {
        addSmallImport(drawing_, i);
    }
    ASSERT_TRUE(store_.save(path_, drawing_));
    const std::string good = contents(path_);
    constexpr unsigned kSeed = 20240411;
    std::mt19937 random(kSeed);
    int reported = 0;
    for (int round = 0; round < 200; ++round) {
        std::string bad = good;
        for (int i = 0; i < 40; ++i) {
            bad[100 + random() % (bad.size() - 100)] = static_cast<char>(random());
        }
        if (round % 4 == 0) {
            bad.resize(random() % bad.size());
        }
        write(path_, bad);
        Drawing drawing;
        const Outcome result = DrawingStore().open(path_, drawing);
        reported += result ? 0 : 1;
        EXPECT_EQ(result.message.empty(), static_cast<bool>(result));
    }
    EXPECT_GT(reported, 50) << "seed " << kSeed;
}

TEST_F(DrawingStoreTest, AnotherProgramThatHoldsTheDrawingIsTold) {
    saveSmall();
    const std::string saved = describe(drawing_);
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open(path_.c_str(), &other), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
    Drawing reader;
    EXPECT_EQ(DrawingStore().open(path_, reader).failure, Failure::Locked);
    addSmallImport(drawing_, 1);
    EXPECT_EQ(store_.save(path_, drawing_).failure, Failure::Locked);
    sqlite3_exec(other, "ROLLBACK", nullptr, nullptr, nullptr);
    sqlite3_close(other);
    EXPECT_EQ(describe(opened(path_)), saved);
    ASSERT_TRUE(store_.save(path_, drawing_)) << "what was refused can be saved later";
    EXPECT_EQ(describe(opened(path_)), describe(drawing_));
}

TEST_F(DrawingStoreTest, ADrawingThatAnotherRunAppendedToIsNotOverwritten) {
    saveSmall();
    Drawing other;
    DrawingStore otherStore;
    ASSERT_TRUE(otherStore.open(path_, other));
    addSmallImport(other, 1);
    ASSERT_TRUE(otherStore.save(path_, other));
    addSmallImport(drawing_, 2);
    EXPECT_EQ(store_.save(path_, drawing_).failure, Failure::ChangedOutside);
    EXPECT_EQ(describe(opened(path_)), describe(other));
}

TEST_F(DrawingStoreTest, AFeatureThatAGisAddedMeanwhileIsNotOverwritten) {
    saveSmall();
    const std::uint64_t next = drawing_.lastId() + 1;
    sqlite3* gis = nullptr;
    ASSERT_EQ(sqlite3_open(path_.c_str(), &gis), SQLITE_OK);
    const std::string add = "DROP TRIGGER rtree_points_geom_insert; INSERT INTO points (fid, geom, layer, data_table, "
                            "\"No\", \"Name\", \"Type\","
                            " \"FileName\") SELECT " +
                            std::to_string(next) +
                            ", geom, layer, data_table, 99, \"Name\", \"Type\", \"FileName\" FROM points LIMIT 1";
    ASSERT_EQ(sqlite3_exec(gis, add.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(gis);
    addSmallImport(drawing_, 1);
    EXPECT_EQ(store_.save(path_, drawing_).failure, Failure::ChangedOutside);
    Drawing again = opened(path_);
    EXPECT_EQ(again.entity(again.entityCount() - 1).row->no, 99);
    DrawingStore store;
    ASSERT_TRUE(store.open(path_, again));
    addSmallImport(again, 1);
    ASSERT_TRUE(store.save(path_, again)) << "opened anew, it is appended to";
}

TEST_F(DrawingStoreTest, AFolderOrFileThatCannotBeWrittenIsTold) {
    saveSmall();
    const std::string before = contents(path_);
    addSmallImport(drawing_, 1);
    chmod(path_.c_str(), 0444);
    chmod(folder_.path().c_str(), 0555);
    EXPECT_EQ(asOrdinaryUser([&] {
                  DrawingStore fresh;
                  return store_.save(path_, drawing_).failure == Failure::NotWritable &&
                         fresh.save(folder_.at("new.gpkg"), drawing_).failure == Failure::NotWritable;
              }),
              0);
    EXPECT_EQ(contents(path_), before);
    EXPECT_EQ(store_.save(folder_.at("none/new.gpkg"), drawing_).failure, Failure::NoFolder);
    EXPECT_EQ(store_.save(folder_.path(), drawing_).failure, Failure::NotAFile);
}

TEST_F(DrawingStoreTest, AFullDiskLeavesTheDrawingAsItWas) {
    saveSmall();
    const std::string before = describe(drawing_);
    for (int i = 1; i < 3000; ++i) {
        addSmallImport(drawing_, i);
    }
    // A limit on the size of files stands for the disk.
    rlimit usual{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &usual), 0);
    const rlimit limit{400000, usual.rlim_max};
    const auto handler = signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    const Outcome appended = store_.save(path_, drawing_);
    const Outcome made = DrawingStore().save(folder_.at("new.gpkg"), drawing_);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &usual), 0);
    signal(SIGXFSZ, handler);
    EXPECT_EQ(appended.failure, Failure::DiskFull);
    EXPECT_EQ(made.failure, Failure::DiskFull);
    EXPECT_EQ(describe(opened(path_)), before);
    EXPECT_EQ(folder_.names(), std::vector<std::string>{"図面.gpkg"});
}

// --- how far it has come ---

TEST_F(DrawingStoreTest, ProgressRisesToTheWholeOfALargeDrawing) {
    for (int i = 0; i < 3000; ++i) {
        addSmallImport(drawing_, i);
    }
    std::vector<std::uint64_t> parts;
    std::uint64_t whole = 0;
    const auto save = [&](const std::string& path) {
        parts.clear();
        return store_.save(path, drawing_, [&](std::uint64_t done, std::uint64_t total) {
            parts.push_back(done);
            EXPECT_LE(done, total);
            whole = total;
        });
    };
    ASSERT_TRUE(save(path_));
    EXPECT_GE(whole, 2U * 3000U * (5 + 5 + 1)) << "rows of points, polylines and lots, and their boxes";
    EXPECT_TRUE(std::is_sorted(parts.begin(), parts.end()));
    ASSERT_FALSE(parts.empty());
    EXPECT_GT(parts.back() * 10, whole * 8) << "the rest is reported by the end";
    for (int i = 0; i < 3000; ++i) {
        addSmallImport(drawing_, i);
    }
    ASSERT_TRUE(save(path_));
    EXPECT_FALSE(parts.empty()) << "also where it is appended";
    addSmallImport(drawing_);
    ASSERT_TRUE(save(path_));
    EXPECT_TRUE(parts.empty()) << "a small one is done at once";
}

// --- killed at any moment ---

TEST_F(DrawingStoreTest, AnUnchangedDrawingIsSavedBehindAnotherProgramThatWasKilledAsItWrote) {
    saveSmall();
    const pid_t child = fork();
    if (child == 0) {
        sqlite3* database = nullptr;
        sqlite3_open(path_.c_str(), &database);
        const int written = sqlite3_exec(database,
                                         "PRAGMA cache_size = 5; BEGIN; CREATE TABLE other (a); INSERT INTO other WITH "
                                         "RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 5000) "
                                         "SELECT hex(randomblob(100)) FROM n",
                                         nullptr, nullptr, nullptr);
        _exit(written);
    }
    int status = -1;
    waitpid(child, &status, 0);
    ASSERT_EQ(status, 0);
    ASSERT_EQ(folder_.names(), (std::vector<std::string>{"図面.gpkg", "図面.gpkg-journal"}));
    ASSERT_FALSE(store_.hasChanges(drawing_));
    const Outcome saved = store_.save(path_, drawing_);
    EXPECT_TRUE(saved) << saved.message.english;
    EXPECT_EQ(folder_.names(), std::vector<std::string>{"図面.gpkg"});
    EXPECT_EQ(describe(opened(path_)), describe(drawing_));
}

// Kills a child that saves after a random time; what is on disk is the drawing before or after.
void killWhileSaving(const std::string& path, const std::string& before, const std::string& after,
                     const std::function<void()>& save, std::mt19937& random, std::chrono::microseconds longest,
                     int& unfinished, int& finished) {
    const pid_t child = fork();
    if (child == 0) {
        save();
        _exit(0);
    }
    usleep(static_cast<useconds_t>(random() % static_cast<unsigned>(longest.count())));
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    if (before.empty() && !std::filesystem::exists(path)) {
        ++unfinished;
        return;
    }
    const std::string found = describe(opened(path));
    ASSERT_TRUE(found == before || found == after);
    for (const char* layer : kIndexedLayers) {
        ASSERT_EQ(indexFault(path, layer), "") << layer;
    }
    ++(found == before ? unfinished : finished);
}

constexpr unsigned kKillSeed = 19830226;
constexpr int kKills = 60;

// Later and earlier moments in turn: where the machine stood still while a save was timed, some kills still come in time.
std::chrono::microseconds latestKill(std::chrono::microseconds whole, int round) {
    constexpr int kHalvings = 6;
    return whole / (1 << (round % kHalvings)) + std::chrono::microseconds(1);
}

TEST_F(DrawingStoreTest, AKillWhileAnImportIsAppendedLeavesTheDrawingBeforeOrAfter) {
    for (int i = 0; i < 50; ++i) {
        addSmallImport(drawing_, i);
    }
    ASSERT_TRUE(store_.save(path_, drawing_));
    const std::string before = describe(drawing_);
    const std::string bytes = contents(path_);
    for (int i = 0; i < 500; ++i) {
        addSmallImport(drawing_, i);
    }
    const std::string after = describe(drawing_);
    std::mt19937 random(kKillSeed);
    int unfinished = 0;
    int finished = 0;
    const auto start = std::chrono::steady_clock::now();
    {
        const pid_t child = fork();
        if (child == 0) {
            (void)store_.save(path_, drawing_);
            _exit(0);
        }
        waitpid(child, nullptr, 0);
    }
    const auto whole = std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - start);
    for (int round = 0; round < kKills; ++round) {
        std::filesystem::remove(path_ + "-journal");
        write(path_, bytes);
        killWhileSaving(
            path_, before, after, [&] { (void)store_.save(path_, drawing_); }, random,
            latestKill(whole + whole / 4, round), unfinished, finished);
        EXPECT_EQ(folder_.names(), std::vector<std::string>{"図面.gpkg"}) << "opening restores and clears up";
    }
    EXPECT_GT(unfinished, 0) << "seed " << kKillSeed;
}

TEST_F(DrawingStoreTest, AKillWhileADrawingIsMadeLeavesNoneOrAllOfIt) {
    for (int i = 0; i < 500; ++i) {
        addSmallImport(drawing_, i);
    }
    const std::string after = describe(drawing_);
    std::mt19937 random(kKillSeed);
    int unfinished = 0;
    int finished = 0;
    for (int round = 0; round < kKills; ++round) {
        std::filesystem::remove(path_);
        killWhileSaving(
            path_, "", after, [&] { (void)store_.save(path_, drawing_); }, random,
            latestKill(std::chrono::milliseconds(30), round), unfinished, finished);
    }
    EXPECT_GT(unfinished, 0) << "seed " << kKillSeed;
    // The next save clears up what the killed ones left.
    ASSERT_TRUE(store_.save(path_, drawing_));
    EXPECT_EQ(folder_.names(), std::vector<std::string>{"図面.gpkg"});
}

// Page 2 holds reference systems, which no reading of a drawing needs.
TEST_F(DrawingStoreTest, ADamagedPageThatReadingGoesRoundIsNotWrittenOver) {
    Drawing drawing;
    addSmallImport(drawing, 1);
    ASSERT_TRUE(DrawingStore().save(path_, drawing));
    std::string bytes = contents(path_);
    const std::size_t pageSize = static_cast<unsigned char>(bytes[16]) * 256U + static_cast<unsigned char>(bytes[17]);
    bytes.replace(pageSize, 5, ".00,a");
    write(path_, bytes);
    Drawing read;
    DrawingStore store;
    ASSERT_TRUE(store.open(path_, read));
    addSmallImport(read, 2);
    const Outcome saved = store.save(path_, read);
    EXPECT_EQ(saved.failure, Failure::Damaged);
    EXPECT_NE(saved.message.english.find("is damaged (Page 2"), std::string::npos) << saved.message.english;
    EXPECT_EQ(contents(path_), bytes);
    EXPECT_TRUE(store.hasChanges(read));
    EXPECT_TRUE(store.save(folder_.at("new.gpkg"), read)) << "what was read is saved elsewhere";
}

TEST_F(DrawingStoreTest, RowsAgainstARuleOfAnotherProgramAreNoDamage) {
    Drawing drawing;
    addSmallImport(drawing, 1);
    ASSERT_TRUE(DrawingStore().save(path_, drawing));
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(path_.c_str(), &database), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(database,
                           "CREATE TABLE visits (tree INTEGER CHECK (tree > 1));"
                           "PRAGMA ignore_check_constraints = ON; INSERT INTO visits VALUES (0);"
                           "PRAGMA ignore_check_constraints = OFF;",
                           nullptr, nullptr, nullptr),
              SQLITE_OK)
        << sqlite3_errmsg(database);
    sqlite3_stmt* check = nullptr;
    ASSERT_EQ(sqlite3_prepare_v2(database, "PRAGMA quick_check", -1, &check, nullptr), SQLITE_OK);
    ASSERT_EQ(sqlite3_step(check), SQLITE_ROW);
    EXPECT_STREQ(reinterpret_cast<const char*>(sqlite3_column_text(check, 0)), "CHECK constraint failed in visits");
    sqlite3_finalize(check);
    sqlite3_close(database);
    Drawing read;
    DrawingStore store;
    ASSERT_TRUE(store.open(path_, read));
    read.addPoint({1, 2, 3}, 0);
    const Outcome saved = store.save(path_, read);
    EXPECT_TRUE(saved) << saved.message.english;
}

TEST_F(DrawingStoreTest, APlaceThatCannotHoldAFileIsTold) {
    saveSmall();
    write(folder_.at("file"), "text");
    symlink(folder_.at("none").c_str(), folder_.at("link").c_str());
    const std::string before = contents(path_);
    const struct {
        std::string path;
        Failure failure;
        const char* text;
    } table[] = {
        {folder_.at("file/a.gpkg"), Failure::NotWritable, "its folder: "},
        {folder_.at("none/a.gpkg"), Failure::NoFolder, "its folder does not exist"},
        {folder_.at("link/a.gpkg"), Failure::NoFolder, "its folder does not exist"},
        {folder_.at("link"), Failure::DanglingLink, "is a link that leads to nothing"},
        {folder_.path(), Failure::NotAFile, "is not a file"},
    };
    for (const auto& [path, failure, text] : table) {
        const Outcome saved = store_.save(path, drawing_);
        EXPECT_EQ(saved.failure, failure) << path;
        EXPECT_NE(saved.message.english.find(text), std::string::npos) << saved.message.english;
        EXPECT_FALSE(store_.writeCopy(path, drawing_)) << path;
    }
    EXPECT_EQ(contents(path_), before);
    EXPECT_EQ(folder_.names().size(), 3U) << "nothing is left behind";
}

TEST_F(DrawingStoreTest, AFolderInThePlaceOfTheDrawingIsLeftAlone) {
    saveSmall();
    std::filesystem::remove(path_);
    std::filesystem::create_directory(path_);
    addSmallImport(drawing_, 1);
    const Outcome saved = store_.save(path_, drawing_);
    EXPECT_EQ(saved.failure, Failure::NotAFile);
    EXPECT_TRUE(std::filesystem::is_directory(path_));
    EXPECT_TRUE(store_.hasChanges(drawing_));
}

TEST_F(DrawingStoreTest, WhatAUserMayNotDoIsTold) {
    saveSmall();
    const std::string before = contents(path_);
    addSmallImport(drawing_, 1);
    const auto saved = [&](Failure wanted) {
        return asOrdinaryUser([&] {
            const Outcome outcome = store_.save(path_, drawing_);
            return outcome.failure == wanted && outcome.message.english.find(path_) == 0;
        });
    };
    chmod(folder_.path().c_str(), 0777);
    chmod(path_.c_str(), 0444);
    EXPECT_EQ(saved(Failure::NotWritable), 0) << "the file";
    chmod(path_.c_str(), 0666);
    chmod(folder_.path().c_str(), 0555);
    EXPECT_EQ(saved(Failure::NotWritable), 0) << "its folder";
    chmod(path_.c_str(), 0);
    EXPECT_EQ(saved(Failure::NotReadable), 0);
    EXPECT_EQ(asOrdinaryUser([&] {
                  Drawing drawing;
                  return DrawingStore().open(path_, drawing).failure == Failure::NotReadable;
              }),
              0);
    chmod(folder_.path().c_str(), 0);
    EXPECT_EQ(asOrdinaryUser([&] {
                  Drawing drawing;
                  return DrawingStore().openOrBegin(path_, drawing).failure == Failure::Unreachable &&
                         DrawingStore().save(folder_.at("b.gpkg"), drawing).failure == Failure::Unreachable;
              }),
              0);
    chmod(folder_.path().c_str(), 0755);
    chmod(path_.c_str(), 0644);
    EXPECT_EQ(contents(path_), before);
    ASSERT_TRUE(store_.save(path_, drawing_)) << "and it can be done later";
    EXPECT_EQ(describe(opened(path_)), describe(drawing_));
}

} // namespace
} // namespace fenmark::drawing
