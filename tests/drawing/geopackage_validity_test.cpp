// The drawing is a GeoPackage in the eyes of another program. Skipped where that program is not installed.
#include "drawing/index_check.h"
#include "support/drawing_support.h"

#include <array>
#include <cstdio>
#include <fstream>
#include <random>

namespace fenmark::drawing {
namespace {

struct Ran {
    int code = -1;
    std::string output;
};

Ran run(const std::string& command) {
    Ran ran;
    FILE* pipe = popen((command + " 2>&1").c_str(), "r");
    if (pipe == nullptr) {
        return ran;
    }
    std::array<char, 4096> text{};
    std::size_t count = 0;
    while ((count = fread(text.data(), 1, text.size(), pipe)) > 0) {
        ran.output.append(text.data(), count);
    }
    ran.code = pclose(pipe);
    return ran;
}

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

class GeoPackageValidity : public ::testing::TestWithParam<int> {
  protected:
    TemporaryFolder folder_;
    std::string path_ = folder_.at("d.gpkg");

    void SetUp() override {
        Drawing drawing;
        drawing.setZone(GetParam());
        DrawingStore store;
        addSmallImport(drawing, 0);
        ASSERT_TRUE(store.save(path_, drawing));
        addSmallImport(drawing, 1); // appended
        ASSERT_TRUE(store.save(path_, drawing));
    }
};

TEST_P(GeoPackageValidity, TheValidatorFindsNothing) {
    // Distributions install the validator for the system's own interpreter, which need not be the first on the path.
    std::string python;
    for (const char* candidate : {"/usr/bin/python3", "python3"}) {
        if (python.empty() &&
            run(std::string(candidate) + " -c 'import osgeo_utils.samples.validate_gpkg'").code == 0) {
            python = candidate;
        }
    }
    if (python.empty()) {
        GTEST_SKIP() << "the validator is not installed";
    }
    const Ran ran = run(python + " -m osgeo_utils.samples.validate_gpkg --extra '" + path_ + "'");
    EXPECT_EQ(ran.code, 0) << ran.output;
}

TEST_P(GeoPackageValidity, AGisSeesPointsPolylinesLotsAndAlignments) {
    if (run("ogrinfo --version").code != 0) {
        GTEST_SKIP() << "ogrinfo is not installed";
    }
    const Ran layers = run("ogrinfo -ro '" + path_ + "'");
    EXPECT_EQ(layers.code, 0);
    for (const char* layer :
         {"points (3D Point)", "polylines (Line String)", "lots (Polygon)", "alignments (Line String)",
          "alignment_elements (None)", "layers (None)", "sites (None)"}) {
        EXPECT_TRUE(contains(layers.output, layer)) << layer << " in " << layers.output;
    }
    EXPECT_FALSE(contains(layers.output, "Warning")) << layers.output;

    const Ran points = run("ogrinfo -ro -al -fid 4 '" + path_ + "' points");
    for (const char* part : {"Feature Count: 10", "Name (String)", "No (Integer", "座標", "測量0.sim"}) {
        EXPECT_TRUE(contains(points.output, part)) << part << " in " << points.output;
    }
    EXPECT_FALSE(contains(points.output, "ERROR")) << points.output;
    const Ran lots = run("ogrinfo -ro -al '" + path_ + "' lots");
    EXPECT_TRUE(contains(lots.output, "POLYGON ((0 0,10.1 0.0,10.0 10.3,0 10,0 0))")) << lots.output;
    const std::string system = GetParam() == 0 ? "Undefined Cartesian" : "6677";
    EXPECT_TRUE(contains(lots.output, system)) << lots.output;
}

// --- the spatial index as that program uses and keeps it ---

class GisAndIndex : public ::testing::Test {
  protected:
    static constexpr unsigned kSeed = 19640401;
    static constexpr double kSize = 1000.0; // metres
    TemporaryFolder folder_;
    std::string path_ = folder_.at("d.gpkg");
    Drawing drawing_;
    DrawingStore store_;

    void SetUp() override {
        if (run("ogr2ogr --version").code != 0) {
            GTEST_SKIP() << "ogr2ogr is not installed";
        }
        std::mt19937 random(kSeed);
        std::uniform_real_distribution<double> place(-kSize, kSize);
        for (int i = 0; i < 2000; ++i) {
            const double x = place(random);
            const double y = place(random);
            const std::vector<MdGePoint3d> lot = {{x, y, 0}, {x + 7, y, 0}, {x + 7, y + 9, 0}};
            drawing_.addPoint({x, y, 1.0}, 0);
            drawing_.addPolyline(lot, 0, EntityKind::Polyline, true);
        }
        ASSERT_TRUE(store_.save(path_, drawing_));
    }
    void runs(const std::string& command) const {
        const Ran ran = run(command);
        EXPECT_EQ(ran.code, 0) << command << ran.output;
        EXPECT_FALSE(contains(ran.output, "ERROR")) << command << ran.output;
    }
    void expectTrue() const {
        for (const char* layer : kIndexedLayers) {
            EXPECT_EQ(indexFault(path_, layer), "") << layer;
        }
    }
};

TEST_F(GisAndIndex, AWindowShowsWhatLiesInIt) {
    const double windows[][4] = {{-100, -50, 120, 80}, {-1000, -1000, 1010, 1010}, {5000, 5000, 6000, 6000}};
    for (const auto& window : windows) {
        std::size_t expected = 0;
        for (std::size_t i = 0; i < drawing_.entityCount(); ++i) {
            const Extent extent = drawing_.entityExtent(i);
            expected += drawing_.isPoint(i) && extent.minX >= window[0] && extent.maxX <= window[2] &&
                                extent.minY >= window[1] && extent.maxY <= window[3]
                            ? 1
                            : 0;
        }
        std::string spat;
        for (const double bound : window) {
            spat += " " + std::to_string(bound);
        }
        const Ran ran = run("ogrinfo -ro -al -q -spat" + spat + " '" + path_ + "' points");
        std::size_t shown = 0;
        for (std::size_t at = 0; (at = ran.output.find("OGRFeature(points)", at)) != std::string::npos; ++at) {
            ++shown;
        }
        EXPECT_EQ(shown, expected) << spat;
    }
}

TEST_F(GisAndIndex, WhatItAddsChangesAndDeletesKeepsTheIndexTrue) {
    std::ofstream(folder_.at("more.csv")) << "Name,WKT\na,POINT (12345.678 -9876.543)\nb,POINT (1 2)\n";
    runs("ogr2ogr -append -nln points '" + path_ + "' '" + folder_.at("more.csv") + "'");
    EXPECT_EQ(OtherProgram(path_).one("SELECT count(*) FROM rtree_points_geom"), "2002");
    expectTrue();
    runs("ogrinfo '" + path_ + "' -sql 'DELETE FROM lots WHERE fid % 3 = 0'");
    runs("ogrinfo '" + path_ +
         "' -sql 'UPDATE points SET geom = (SELECT geom FROM points WHERE fid = 2) WHERE fid < 200'");
    runs("ogrinfo '" + path_ + "' -sql 'UPDATE points SET geom = NULL WHERE fid > 3000 AND fid < 3100'");
    runs("ogrinfo '" + path_ + "' -sql 'UPDATE polylines SET fid = fid + 100000 WHERE fid > 3500 AND fid < 3600'");
    EXPECT_EQ(OtherProgram(path_).one("SELECT count(*) FROM rtree_points_geom WHERE id BETWEEN 3001 AND 3099"), "0");
    expectTrue();

    // And then we write again.
    Drawing later;
    DrawingStore store;
    ASSERT_TRUE(store.open(path_, later, Load::WithoutEntities));
    addSmallImport(later);
    const Outcome saved = store.save(path_, later);
    ASSERT_TRUE(saved) << saved.message.english;
    expectTrue();
}

TEST_F(GisAndIndex, ItsOwnIndexTakesThePlaceOfOneThatWasDropped) {
    runs("ogrinfo '" + path_ + "' -sql \"SELECT DisableSpatialIndex('points', 'geom')\"");
    addSmallImport(drawing_, 1);
    ASSERT_TRUE(store_.save(path_, drawing_)) << "without an index";
    runs("ogrinfo '" + path_ + "' -sql \"SELECT CreateSpatialIndex('points', 'geom')\"");
    addSmallImport(drawing_, 2);
    ASSERT_TRUE(store_.save(path_, drawing_));
    expectTrue();
}

INSTANTIATE_TEST_SUITE_P(WithoutAndWithAZone, GeoPackageValidity, ::testing::Values(0, 9));

} // namespace
} // namespace fenmark::drawing
