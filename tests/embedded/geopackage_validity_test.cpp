// The drawing is a GeoPackage in the eyes of another program. Skipped where that program is not installed.
#include "embedded/support.h"

#include <array>
#include <cstdio>

namespace fenmark::host::embedded {
namespace {

struct Ran {
    int code = -1;
    std::string output;
};

Ran run(const std::string& command) {
    Ran ran;
    FILE* pipe = popen((command + " 2>&1").c_str(), "r");
    if (pipe == nullptr)
        return ran;
    std::array<char, 4096> text{};
    std::size_t count = 0;
    while ((count = fread(text.data(), 1, text.size(), pipe)) > 0)
        ran.output.append(text.data(), count);
    ran.code = pclose(pipe);
    return ran;
}

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

class GeoPackageValidity : public ::testing::TestWithParam<int> {
  protected:
    TemporaryFolder folder_;
    std::string path_ = folder_.file("d.gpkg");

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
        if (python.empty() && run(std::string(candidate) + " -c 'import osgeo_utils.samples.validate_gpkg'").code == 0)
            python = candidate;
    }
    if (python.empty())
        GTEST_SKIP() << "the validator is not installed";
    const Ran ran = run(python + " -m osgeo_utils.samples.validate_gpkg --extra '" + path_ + "'");
    EXPECT_EQ(ran.code, 0) << ran.output;
}

TEST_P(GeoPackageValidity, AGisSeesPointsPolylinesLotsAndAlignments) {
    if (run("ogrinfo --version").code != 0)
        GTEST_SKIP() << "ogrinfo is not installed";
    const Ran layers = run("ogrinfo -ro '" + path_ + "'");
    EXPECT_EQ(layers.code, 0);
    for (const char* layer : {"points (3D Point)", "polylines (Line String)", "lots (Polygon)",
                              "alignments (Line String)", "alignment_elements (None)", "layers (None)", "sites (None)"})
        EXPECT_TRUE(contains(layers.output, layer)) << layer << " in " << layers.output;
    EXPECT_FALSE(contains(layers.output, "Warning")) << layers.output;

    const Ran points = run("ogrinfo -ro -al -fid 4 '" + path_ + "' points");
    for (const char* part : {"Feature Count: 10", "Name (String)", "No (Integer", "座標", "測量0.sim"})
        EXPECT_TRUE(contains(points.output, part)) << part << " in " << points.output;
    EXPECT_FALSE(contains(points.output, "ERROR")) << points.output;
    const Ran lots = run("ogrinfo -ro -al '" + path_ + "' lots");
    EXPECT_TRUE(contains(lots.output, "POLYGON ((0 0,10.1 0.0,10.0 10.3,0 10,0 0))")) << lots.output;
    const std::string system = GetParam() == 0 ? "Undefined Cartesian" : "6677";
    EXPECT_TRUE(contains(lots.output, system)) << lots.output;
}

INSTANTIATE_TEST_SUITE_P(WithoutAndWithAZone, GeoPackageValidity, ::testing::Values(0, 9));

} // namespace
} // namespace fenmark::host::embedded
