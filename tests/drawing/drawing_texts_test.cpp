// Texts kept with a drawing: its title block, backgrounds.
#include "drawing/geopackage/drawing_texts.h"
#include "support/drawing_support.h"
#include "support/drawing_texts_support.h"

#include <sqlite3.h>

#include <string>
#include <vector>

namespace fenmark::drawing {
namespace {

class DrawingTextsTest : public ::testing::Test {
  protected:
    DrawingTextsTest() {
        Drawing drawing;
        drawing.addPoint({1.0, 2.0, 3.0}, 0);
        DrawingStore store;
        const Outcome saved = store.save(path, drawing);
        EXPECT_TRUE(saved) << saved.message.english;
    }

    // The first value of the first row.
    std::string value(const char* sql) const {
        sqlite3* file = nullptr;
        sqlite3_stmt* statement = nullptr;
        EXPECT_EQ(sqlite3_open_v2(path.c_str(), &file, SQLITE_OPEN_READONLY, nullptr), SQLITE_OK);
        EXPECT_EQ(sqlite3_prepare_v2(file, sql, -1, &statement, nullptr), SQLITE_OK) << sqlite3_errmsg(file);
        EXPECT_EQ(sqlite3_step(statement), SQLITE_ROW);
        const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
        const std::string found = text == nullptr ? "" : text;
        sqlite3_finalize(statement);
        sqlite3_close(file);
        return found;
    }

    void run(const char* sql) const {
        sqlite3* file = nullptr;
        ASSERT_EQ(sqlite3_open(path.c_str(), &file), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(file, sql, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(file);
        sqlite3_close(file);
    }

    TemporaryFolder folder;
    std::string path = folder.at("a.gpkg");
};

TEST_F(DrawingTextsTest, ComeBackAndReplaceThoseBefore) {
    EXPECT_TRUE(readTexts(path).empty());
    const DrawingTexts first = {
        {"title", "平面図"}, {"scale", "1/500"}, {"empty", ""}, {"odd", std::string("a\nb'\";--")}};
    ASSERT_TRUE(writeTexts(path, first));
    EXPECT_EQ(readTexts(path), first);
    EXPECT_EQ(value("SELECT data_type FROM gpkg_contents WHERE table_name = 'fenmark_texts'"), "attributes");
    const DrawingTexts second = {{"title", "縦断図"}};
    ASSERT_TRUE(writeTexts(path, second));
    EXPECT_EQ(readTexts(path), second);
    ASSERT_TRUE(writeTexts(path, {}));
    EXPECT_TRUE(readTexts(path).empty());
    Drawing drawing;
    DrawingStore store;
    const Outcome opened = store.open(path, drawing);
    EXPECT_TRUE(opened) << opened.message.english;
    EXPECT_EQ(drawing.entityCount(), 1U);
}

TEST_F(DrawingTextsTest, NoTextsNeedNoTable) {
    ASSERT_TRUE(writeTexts(path, {}));
    EXPECT_EQ(value("SELECT count(*) FROM sqlite_master WHERE name = 'fenmark_texts'"), "0");
}

TEST_F(DrawingTextsTest, AreReadWithoutAFileBesideTheDrawing) {
    ASSERT_TRUE(writeTexts(path, {{"title", "図"}}));
    run("PRAGMA journal_mode = WAL");
    const std::vector<std::string> before = folder.names();
    EXPECT_EQ(readTexts(path), (DrawingTexts{{"title", "図"}}));
    EXPECT_EQ(folder.names(), before);
}

TEST_F(DrawingTextsTest, AFileThatCannotBeReadHasNone) {
    EXPECT_TRUE(readTexts(folder.at("none.gpkg")).empty());
    run("CREATE TABLE fenmark_texts (other INTEGER)");
    EXPECT_TRUE(readTexts(path).empty());
}

TEST_F(DrawingTextsTest, AFailureLeavesTheTextsBefore) {
    const Outcome missing = writeTexts(folder.at("none.gpkg"), {{"title", "a"}});
    EXPECT_FALSE(missing);
    EXPECT_FALSE(missing.message.english.empty());
    const DrawingTexts first = {{"title", "平面図"}};
    ASSERT_TRUE(writeTexts(path, first));
    run("CREATE UNIQUE INDEX one_value ON fenmark_texts (value)");
    EXPECT_FALSE(writeTexts(path, {{"a", "same"}, {"b", "same"}}));
    EXPECT_EQ(readTexts(path), first);
}

TEST_F(DrawingTextsTest, AChangeLeavesWhatAnotherProgramWroteMeanwhile) {
    const DrawingTexts before = {{"changed", "a"}, {"gone", "b"}, {"kept", "c"}};
    ASSERT_TRUE(changeTexts(path, {{}, before}));
    EXPECT_EQ(readTexts(path), before);
    ASSERT_TRUE(writeTexts(path, {{"changed", "a"}, {"gone", "b"}, {"kept", "theirs"}, {"new of theirs", "d"}}));
    const DrawingTexts wanted = {{"changed", "ours"}, {"kept", "c"}, {"new", "e"}};
    ASSERT_TRUE(changeTexts(path, {before, wanted}));
    EXPECT_EQ(readTexts(path),
              (DrawingTexts{{"changed", "ours"}, {"kept", "theirs"}, {"new", "e"}, {"new of theirs", "d"}}));
    EXPECT_FALSE(changeTexts(folder.at("none.gpkg"), {before, wanted}));
}

TEST_F(DrawingTextsTest, ATextThatBothChangedIsLeftToTheOther) {
    const DrawingTexts before = {{"a", "1"}, {"b", "2"}};
    const DrawingTexts changedByBoth = {{"a", "theirs"}, {"b", "2"}};
    const DrawingTexts goneThere = {{"b", "2"}};
    const DrawingTexts madeByBoth = {{"a", "1"}, {"b", "2"}, {"c", "theirs"}};
    const struct {
        DrawingTexts theirs;
        DrawingTexts wanted;
    } cases[] = {{changedByBoth, {{"a", "ours"}, {"b", "3"}}},
                 {changedByBoth, {{"b", "3"}}},
                 {goneThere, {{"a", "ours"}, {"b", "3"}}},
                 {madeByBoth, {{"a", "1"}, {"b", "3"}, {"c", "ours"}}}};
    for (const auto& [theirs, wanted] : cases) {
        ASSERT_TRUE(writeTexts(path, theirs));
        const Outcome result = changeTexts(path, {before, wanted});
        EXPECT_EQ(result.failure, Failure::ChangedOutside) << result.message.english;
        EXPECT_EQ(readTexts(path), theirs);
    }
    // A save of the drawing brings all or nothing.
    Drawing drawing;
    DrawingStore store;
    ASSERT_TRUE(store.open(path, drawing));
    drawing.addLayer("L");
    EXPECT_EQ(store.save(path, drawing, {}, {before, {{"a", "1"}, {"b", "3"}, {"c", "ours"}}}).failure,
              Failure::ChangedOutside);
    EXPECT_EQ(readTexts(path), madeByBoth);
    Drawing asItIs;
    ASSERT_TRUE(DrawingStore().open(path, asItIs));
    EXPECT_FALSE(asItIs.findLayer("L"));
    ASSERT_TRUE(writeTexts(path, goneThere));
    EXPECT_TRUE(changeTexts(path, {before, {{"b", "3"}}})) << "both took it away";
    EXPECT_EQ(readTexts(path), (DrawingTexts{{"b", "3"}}));
}

// A view of that name, of which reading could run anything.
TEST_F(DrawingTextsTest, AViewIsNoTableOfTexts) {
    run("CREATE VIEW fenmark_texts AS SELECT 'title' AS name, 'x' AS value");
    EXPECT_TRUE(readTexts(path).empty());
    EXPECT_FALSE(writeTexts(path, {{"title", "a"}}));
}

} // namespace
} // namespace fenmark::drawing
