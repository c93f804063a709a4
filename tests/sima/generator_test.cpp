// The generator's files hold what they are asked for, and nothing that is refused.
#include "support.h"

#include "sima/generator/sima_generator.h"
#include "sima/text/number.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <sstream>
#include <string>

namespace fenmark::sima {

namespace {

std::string generated(const GeneratorSizes& sizes) {
    std::ostringstream out;
    generateSima(out, sizes);
    return out.str();
}

SimaReader readBytes(const std::string& bytes) {
    const test::TemporaryFolder folder;
    SimaReader reader;
    EXPECT_EQ(reader.fullRead(folder.write("g.sim", bytes), {}), 0);
    return reader;
}

} // namespace

TEST(Generator, WritesWhatItIsAskedFor) {
    GeneratorSizes sizes;
    sizes.points = 500;
    sizes.lots = 90;
    sizes.routes = 21;
    sizes.longitudinal = 4;
    sizes.crossSections = 3;
    const SimaReader reader = readBytes(generated(sizes));
    EXPECT_EQ(reader.log.errorCount(), 0);
    EXPECT_EQ(reader.points.size(), 500U);
    EXPECT_EQ(reader.lotCount(), 90);
    for (std::int32_t type = 1; type <= 7; ++type) {
        EXPECT_EQ(reader.routesRead(type), 3);
    }
    EXPECT_EQ(reader.longitudinalPointCount(), 9 * 4);
    EXPECT_EQ(reader.crossSectionCount(), 9 * 3);
    EXPECT_TRUE(reader.allLongitudinalRoutesFound());
    EXPECT_EQ(reader.points[9].name, "境界10");
}

// To the byte, since a test of speed compares files that different compilers made.
TEST(Generator, GivesTheSameBytesWithEveryCompiler) {
    GeneratorSizes sizes;
    sizes.points = 12;
    sizes.lots = 8; // of which two begin again at the first cell
    sizes.routes = 7;
    sizes.longitudinal = 2;
    sizes.crossSections = 1;
    const std::string folder = FENMARK_SOURCE_DIR "/tests/sima/samples/";
    EXPECT_EQ(generated(sizes), test::readFile(folder + "generated.sim"));
    sizes.lots = sizes.routes = 1;
    sizes.padded = true;
    EXPECT_EQ(generated(sizes), test::readFile(folder + "generated_padded.sim"));
}

TEST(Generator, GivesTheSameBytesForTheSameSeed) {
    GeneratorSizes sizes;
    const std::string first = generated(sizes);
    EXPECT_EQ(generated(sizes), first);
    sizes.seed = 2;
    EXPECT_NE(generated(sizes), first);
}

TEST(Generator, PadsWithBlanksWhatThenMeansTheSame) {
    GeneratorSizes sizes;
    const SimaReader plain = readBytes(generated(sizes));
    sizes.padded = true;
    const std::string bytes = generated(sizes);
    const SimaReader padded = readBytes(bytes);
    EXPECT_NE(bytes.find("\r\nA01,    2,K2          , "), std::string::npos);
    EXPECT_NE(bytes.find("\r\nB01,    2,K2          ,\r\n"), std::string::npos);
    EXPECT_EQ(padded.log.errorCount(), 0);
    ASSERT_EQ(padded.points.size(), plain.points.size());
    for (std::size_t i = 0; i < plain.points.size(); ++i) {
        SimaPoint trimmed = padded.points[i];
        trimmed.name = trim(trimmed.name);
        EXPECT_EQ(trimmed, plain.points[i]);
    }
    EXPECT_EQ(padded.points[9].name, "境界10      ") << "a kanji is two columns wide";
    EXPECT_EQ(padded.lotCount(), plain.lotCount());
}

TEST(Generator, LeavesOutWhatHasNoPoints) {
    GeneratorSizes sizes;
    sizes.points = 0;
    sizes.routes = 7;
    const SimaReader reader = readBytes(generated(sizes));
    EXPECT_EQ(reader.log.errorCount(), 0);
    EXPECT_EQ(reader.lotCount(), 0);
    for (std::int32_t points = 1; points < 30; ++points) {
        sizes.points = points;
        const SimaReader some = readBytes(generated(sizes));
        EXPECT_EQ(some.log.errorCount(), 0) << points;
        const std::int32_t columns = std::max(2, static_cast<std::int32_t>(std::ceil(std::sqrt(points))));
        EXPECT_EQ(some.lotCount(), points / columns < 2 ? 0 : sizes.lots) << points;
    }
}

} // namespace fenmark::sima
