// Highways whose senses a file does not always prove: kinks at every joint, coordinates in decimetres, few curves, heights.
// How many of their curves are taken as they truly turn is recorded, so that a change of the judgement shows.
#include "embedded/highways.h"
#include "host/adapter/host_adapter.h"
#include "host/embedded/embedded_host.h"
#include "output/drawing_output.h"
#include "sima/reader/sima_reader.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <fstream>
#include <ostream>
#include <random>
#include <vector>

namespace fenmark::host::embedded {
namespace {

constexpr unsigned kSettlingSeed = 77;
constexpr int kHighways = 120; // of each kind

struct Judged {
    int curves = 0;
    int right = 0;   // of these
    int broken = 0;  // joints that are reported
    int other = 0;   // elements that are reported as taken with the other sense
    int refused = 0; // alignments

    friend bool operator==(const Judged&, const Judged&) = default;
    friend std::ostream& operator<<(std::ostream& out, const Judged& judged) {
        return out << judged.curves << ", " << judged.right << ", " << judged.broken << ", " << judged.other << ", "
                   << judged.refused;
    }
};

class Settling : public ::testing::Test {
  protected:
    test::TemporaryFolder folder_;

    void judge(const Highway& highway, Judged& judged) {
        const std::string path = folder_.at("a.sim");
        std::ofstream(path, std::ios::binary) << highway.file;
        EmbeddedHost host;
        host.drawing().addSite("サイト");
        HostAdapter adapter;
        output::DrawingOutput output(adapter);
        sima::SimaReader reader;
        reader.siteName = "サイト";
        reader.options.flags.fill(true);
        reader.fullRead(path, {&output, nullptr, &adapter, sima::Encoding::Cp932});
        if (reader.alignmentsCreated != 1) {
            ++judged.refused;
            return;
        }
        const std::vector<Element>& laid = host.drawing().alignment(0).elements;
        ASSERT_EQ(laid.size(), highway.chain.size());
        for (std::size_t i = 0; i < laid.size(); ++i) {
            if (laid[i].type != ElementType::Straight) {
                ++judged.curves;
                judged.right += laid[i].clockwise == highway.chain[i].clockwise ? 1 : 0;
            }
        }
        judged.broken += static_cast<int>(host.layoutNotes().brokenJoints.size());
        judged.other += static_cast<int>(host.layoutNotes().otherSense);
    }

    void expectJudged(const char* name, const HighwayKind& kind, const Judged& expected) {
        std::mt19937 random(kSettlingSeed);
        Judged judged;
        for (int i = 0; i < kHighways; ++i) {
            judge(Highway(random, kind), judged);
        }
        // A joint at the limit of what is reported falls to either side with the digits of a compiler.
        EXPECT_NEAR(judged.broken, expected.broken, 1) << name;
        judged.broken = expected.broken;
        EXPECT_EQ(judged, expected) << name;
    }
};

TEST_F(Settling, OfFewCurvesWithKinks) {
    expectJudged("own habit", {.kinkShare = 1.0, .kinksWithin = true, .curves = 1}, {498, 494, 504, 4});
    expectJudged("other habit", {.signs = Signs::PositiveRight, .kinkShare = 1.0, .kinksWithin = true, .curves = 1},
                 {498, 297, 498, 297});
    expectJudged("random", {.signs = Signs::Random, .kinkShare = 0.6, .kinksWithin = true, .curves = 2},
                 {1002, 778, 730, 488});
    expectJudged("slips, shallow",
                 {.signs = Signs::Slips, .kinkShare = 0.6, .kinksWithin = true, .shallow = true, .curves = 2},
                 {588, 539, 508, 41});
    expectJudged("random, shallow, leading arc",
                 {.signs = Signs::Random, .kinkShare = 0.3, .shallow = true, .arcFirst = true, .curves = 1},
                 {422, 388, 99, 242});
    expectJudged("other habit, shallow, leading arc",
                 {.signs = Signs::PositiveRight, .kinkShare = 0.5, .shallow = true, .arcFirst = true, .curves = 1},
                 {429, 423, 125, 423});
}

TEST_F(Settling, OfRoughCoordinates) {
    expectJudged("own habit, decimetres", {.curves = 2, .decimals = 1}, {1003, 1003, 0, 0});
    expectJudged("other habit, decimetres, kinks",
                 {.signs = Signs::PositiveRight, .kinkShare = 0.3, .curves = 2, .decimals = 1},
                 {1023, 1023, 136, 1023});
    expectJudged("random, decimetres", {.signs = Signs::Random, .curves = 2, .decimals = 1}, {1055, 979, 137, 541});
    expectJudged("random, metres", {.signs = Signs::Random, .curves = 2, .decimals = 0}, {1055, 910, 275, 546});
    expectJudged("slips, centimetres, shallow", {.signs = Signs::Slips, .shallow = true, .curves = 3, .decimals = 2},
                 {915, 906, 14, 72});
}

TEST_F(Settling, OfSpiralsThatOnlyContinue) {
    expectJudged("own habit", {.rise = 0.35, .curves = 3}, {1549, 1549, 0, 0});
    expectJudged("other habit, kinks", {.signs = Signs::PositiveRight, .kinkShare = 0.3, .rise = 0.35, .curves = 2},
                 {1023, 747, 286, 747});
    expectJudged("random", {.signs = Signs::Random, .rise = 0.35, .curves = 2}, {1055, 939, 106, 477});
    expectJudged("slips, kinks within curves",
                 {.signs = Signs::Slips, .kinkShare = 0.5, .kinksWithin = true, .rise = 0.35, .curves = 3},
                 {1466, 1322, 811, 30, 1});
    expectJudged("slips, centimetres", {.signs = Signs::Slips, .rise = 0.35, .curves = 3, .decimals = 2},
                 {1516, 1474, 79, 136});
}

} // namespace
} // namespace fenmark::host::embedded
