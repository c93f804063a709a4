// Layers that are renamed, coloured and removed, in memory and in the file.
#include "drawing/geopackage/sqlite_handles.h"
#include "support/drawing_support.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace fenmark::drawing {
namespace {

constexpr Colour kGreen{0x2a, 0x74, 0x2e};

class Layers : public ::testing::Test {
  protected:
    TemporaryFolder folder;
    std::string path = folder.at("図面.gpkg");
    Drawing drawing;
    DrawingStore store;

    // Layers "0" with an import, "境界" with a point and a line, "空" with nothing.
    void SetUp() override {
        addSmallImport(drawing);
        const std::size_t border = *drawing.findLayer(drawing.addLayer("境界"));
        drawing.addLayer("空");
        drawing.addPoint({5, 6, 0}, border);
        const std::vector<MdGePoint3d> line = {{0, 0, 0}, {5, 0, 0}, {5, 7, 0}};
        drawing.addPolyline(line, border, EntityKind::Polyline, true);
    }
    void save() {
        const Outcome saved = store.save(path, drawing);
        ASSERT_TRUE(saved) << saved.message.english;
    }
    std::string inFile() {
        Drawing read;
        DrawingStore other;
        const Outcome result = other.open(path, read);
        EXPECT_TRUE(result) << result.message.english;
        EXPECT_TRUE(other.notes().empty());
        return describe(read);
    }
    void asAnotherProgram(const char* sql) {
        sqlite3* database = nullptr;
        ASSERT_EQ(sqlite3_open(path.c_str(), &database), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(database, sql, nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(database);
    }
    std::vector<Layer> changed(std::size_t layer, const std::string& name) {
        std::vector<Layer> layers = drawing.layers();
        layers[layer].name = name;
        return layers;
    }
    std::size_t rowsOn(const char* table, const std::string& layer) {
        Connection connection(path, Connection::Mode::Read);
        const std::string text = std::string("SELECT count(*) FROM ") + table + " WHERE layer = ?1";
        Statement rows(connection, text.c_str());
        return rows.bind(1, std::string_view(layer)).step() ? static_cast<std::size_t>(rows.integer(0)) : 0;
    }
};

TEST(ColourText, GoesThereAndBack) {
    EXPECT_EQ(textOf(kGreen), "#2a742e");
    EXPECT_EQ(colourOfText("#2A742e"), kGreen);
    EXPECT_EQ(colourOfText("#000000"), Colour{});
    for (const char* text : {"", "#", "#12345", "#1234567", "123456#", "#12345g", "#-12345", "# 12345", "#+12345"}) {
        EXPECT_FALSE(colourOfText(text)) << text;
    }
}

TEST_F(Layers, AreCountedWithAlignments) {
    const std::vector<std::size_t> expected = {drawing.entityCount() - 2 + drawing.alignmentCount(), 2, 0};
    EXPECT_EQ(drawing.layerCounts(), expected);
}

TEST_F(Layers, ObjectsFollowANewNameAlsoInTheFile) {
    save();
    ASSERT_TRUE(drawing.setLayers(changed(1, "筆界")));
    EXPECT_EQ(drawing.entity(drawing.entityCount() - 1).layer, "筆界");
    ASSERT_TRUE(drawing.setLayers(changed(0, "路線")));
    EXPECT_EQ(drawing.alignment(0).layer, "路線");
    EXPECT_TRUE(store.hasChanges(drawing));
    save();
    EXPECT_FALSE(store.hasChanges(drawing));
    EXPECT_EQ(inFile(), describe(drawing));
    for (const char* table : {"points", "polylines", "lots"}) {
        EXPECT_EQ(rowsOn(table, "筆界"), 1U) << table;
        EXPECT_EQ(rowsOn(table, "境界"), 0U) << table;
    }
    EXPECT_EQ(rowsOn("alignments", "路線"), drawing.alignmentCount());
}

TEST_F(Layers, TwoExchangeTheirNames) {
    save();
    std::vector<Layer> layers = drawing.layers();
    std::swap(layers[0].name, layers[1].name);
    ASSERT_TRUE(drawing.setLayers(layers));
    save();
    EXPECT_EQ(inFile(), describe(drawing));
    EXPECT_EQ(rowsOn("points", "0"), 1U);
}

TEST_F(Layers, AColourIsKeptAndTakenAway) {
    std::vector<Layer> layers = drawing.layers();
    layers[1].colour = kGreen;
    ASSERT_TRUE(drawing.setLayers(layers));
    save(); // a new file
    EXPECT_EQ(inFile(), describe(drawing));
    layers[1].colour.reset();
    layers[2].colour = Colour{1, 2, 3};
    ASSERT_TRUE(drawing.setLayers(layers));
    save(); // a file that is there
    EXPECT_EQ(inFile(), describe(drawing));
}

TEST_F(Layers, AFileOfAnEarlierVersionGetsTheColumnOfColours) {
    save();
    asAnotherProgram("ALTER TABLE layers DROP COLUMN colour");
    Drawing read;
    DrawingStore other;
    ASSERT_TRUE(other.open(path, read));
    std::vector<Layer> layers = read.layers();
    layers[0].colour = kGreen;
    ASSERT_TRUE(read.setLayers(layers));
    const Outcome saved = other.save(path, read);
    ASSERT_TRUE(saved) << saved.message.english;
    EXPECT_EQ(inFile(), describe(read));
}

TEST_F(Layers, AColourThatIsNoneIsPassedOver) {
    save();
    asAnotherProgram("UPDATE layers SET colour = 'red'");
    Drawing read;
    DrawingStore other;
    ASSERT_TRUE(other.open(path, read));
    EXPECT_FALSE(read.layers()[0].colour);
}

TEST_F(Layers, AnEmptyOneGoesAndComesBack) {
    const std::size_t last = *drawing.findLayer(drawing.addLayer("後"));
    drawing.addPoint({1, 1, 0}, last);
    drawing.setCurrentLayer(last);
    save();
    const std::string before = describe(drawing);
    const std::vector<Layer> all = drawing.layers();
    std::vector<Layer> fewer = all;
    fewer.erase(fewer.begin() + 2);
    ASSERT_TRUE(drawing.setLayers(fewer));
    EXPECT_EQ(drawing.entity(drawing.entityCount() - 1).layer, "後");
    EXPECT_EQ(drawing.layers()[drawing.currentLayer()].name, "後");
    save();
    EXPECT_EQ(inFile(), describe(drawing));
    ASSERT_TRUE(drawing.setLayers(all));
    EXPECT_EQ(describe(drawing), before);
    save();
    EXPECT_EQ(inFile(), before);
}

TEST_F(Layers, WhatCannotBeLeavesAllAsItWas) {
    const std::string before = describe(drawing);
    const std::vector<Layer> all = drawing.layers();
    std::vector<Layer> used = all;
    used.erase(used.begin() + 1);
    std::vector<Layer> backwards = all;
    std::reverse(backwards.begin(), backwards.end());
    std::vector<Layer> unknown = all;
    unknown.push_back({MdDbObjectId(drawing.lastId() + 1), "未来"});
    std::vector<Layer> twice = all;
    twice.push_back({all.back().id, "二度"});
    const std::vector<Layer> withoutFirst(all.begin() + 1, all.end());
    for (const std::vector<Layer>& layers :
         {changed(1, ""), changed(1, "0"), used, backwards, unknown, twice, std::vector<Layer>()}) {
        EXPECT_FALSE(drawing.setLayers(layers));
    }
    drawing.setCurrentLayer(2);
    EXPECT_FALSE(drawing.setLayers({all[0], all[1]})) << "the current one";
    EXPECT_FALSE(drawing.setLayers(withoutFirst)) << "one with objects";
    drawing.setCurrentLayer(0);
    EXPECT_EQ(describe(drawing), before);
}

TEST_F(Layers, OneThatMayHoldWhatWasNotReadStays) {
    save();
    Drawing read;
    DrawingStore other;
    ASSERT_TRUE(other.open(path, read, Load::WithoutEntities));
    EXPECT_FALSE(read.setLayers({read.layers()[0], read.layers()[1]}));
    std::vector<Layer> renamed = read.layers();
    renamed[1].name = "筆界";
    ASSERT_TRUE(read.setLayers(renamed));
    ASSERT_TRUE(other.save(path, read));
    EXPECT_EQ(rowsOn("polylines", "筆界"), 1U);
}

TEST_F(Layers, EveryObjectStaysOnItsLayerWhenOneBeforeItGoes) {
    Drawing objects;
    for (const char* name : {"空", "境界", "道路"}) {
        objects.addLayer(name);
    }
    const std::vector<std::size_t> placed = {2, 3, 0, 2, 3};
    for (const std::size_t layer : placed) {
        objects.addPoint({1, 2, 0}, layer);
    }
    const std::vector<Layer> before = objects.layers();
    ASSERT_TRUE(objects.setLayers({before[0], before[2], before[3]}));
    for (std::size_t i = 0; i < placed.size(); ++i) {
        EXPECT_EQ(objects.entity(i).layer, before[placed[i]].name) << i;
    }
}

} // namespace
} // namespace fenmark::drawing
