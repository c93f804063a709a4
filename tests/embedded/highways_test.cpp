// Highways of every habit come through the whole import within 2 mm of their true chains. The seeded numbers of each
// kind are those of FENMARK_HIGHWAYS, 200 without it.
#include "embedded/highways.h"
#include "host/adapter/host_adapter.h"
#include "host/embedded/embedded_host.h"
#include "output/drawing_output.h"
#include "sima/reader/sima_reader.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>

namespace fenmark::host::embedded {
namespace {

constexpr unsigned kSeed = 20;
constexpr double kMostOff = 0.002; // metres

int highwaysOfEachKind() {
    const char* count = std::getenv("FENMARK_HIGHWAYS");
    return count == nullptr ? 200 : std::atoi(count);
}

class Highways : public ::testing::Test {
  protected:
    test::TemporaryFolder folder_;

    // Reads the file into a drawing of its own and gives how far its alignment lies off the true chain, metres.
    double off(const Highway& highway, bool planTangents = false) {
        const std::string path = folder_.at("a.sim");
        std::ofstream(path, std::ios::binary) << highway.file;
        EmbeddedHost host;
        host.drawing().addSite("サイト");
        HostAdapter adapter;
        output::DrawingOutput output(adapter, {.planTangents = planTangents, .alignmentMade = {}});
        sima::SimaReader reader;
        reader.siteName = "サイト";
        reader.options.flags.fill(true);
        reader.fullRead(path, {&output, nullptr, &adapter, sima::Encoding::Cp932});
        EXPECT_EQ(reader.alignmentsCreated, 1);
        const std::vector<Element>& laid = host.drawing().alignment(0).elements;
        EXPECT_EQ(laid.size(), highway.chain.size());
        const AlignmentGeometry truth(highway.chain, 0.0);
        double most = 0.0;
        for (const Element& element : laid) {
            constexpr int kParts = 8;
            for (int part = 0; part <= kParts; ++part) {
                const PlanPoint point = poseOnElement(element, element.length * part / kParts).point;
                most = std::max(most, std::abs(truth.locate(point)->offset));
            }
        }
        return most;
    }

    void expectAllNear(const char* name, const HighwayKind& kind, bool planTangents = false) {
        std::mt19937 random(kSeed);
        std::vector<double> all;
        const int count = highwaysOfEachKind();
        for (int i = 0; i < count; ++i) {
            const Highway highway(random, kind);
            all.push_back(off(highway, planTangents));
            EXPECT_LE(all.back(), kMostOff) << name << ", seed " << kSeed << ", highway " << i;
        }
        std::sort(all.begin(), all.end());
        std::cout << name << ": " << count << " highways, median " << decimals(all[all.size() / 2] * 1000, 2)
                  << " mm, worst " << decimals(all.back() * 1000, 2) << " mm off\n";
    }
};

TEST_F(Highways, OfTheOwnHabit) {
    expectAllNear("own habit", {});
    expectAllNear("own habit, kinks", {.kinkShare = 0.3});
    expectAllNear("own habit, shallow arcs", {.shallow = true});
    expectAllNear("own habit, shallow arcs, kinks", {.kinkShare = 0.3, .shallow = true});
    expectAllNear("own habit, kinks within curves", {.kinkShare = 0.3, .kinksWithin = true, .arcFirst = true});
    expectAllNear("own habit, leading arc", {.arcFirst = true});
    expectAllNear("own habit, leading arc, kinks at every straight", {.kinkShare = 1.0, .arcFirst = true});
}

TEST_F(Highways, OfTheOtherHabit) {
    expectAllNear("other habit", {.signs = Signs::PositiveRight});
    expectAllNear("other habit, kinks", {.signs = Signs::PositiveRight, .kinkShare = 0.3});
    expectAllNear("other habit, shallow arcs", {.signs = Signs::PositiveRight, .shallow = true});
    expectAllNear("other habit, shallow arcs, kinks",
                  {.signs = Signs::PositiveRight, .kinkShare = 0.3, .shallow = true});
    expectAllNear("other habit, kinks within curves",
                  {.signs = Signs::PositiveRight, .kinkShare = 0.3, .kinksWithin = true, .arcFirst = true});
    expectAllNear("other habit, leading arc", {.signs = Signs::PositiveRight, .arcFirst = true});
    expectAllNear("other habit, leading arc, kinks at every straight",
                  {.signs = Signs::PositiveRight, .kinkShare = 1.0, .arcFirst = true});
}

TEST_F(Highways, OfMixedSigns) {
    expectAllNear("slips", {.signs = Signs::Slips, .arcFirst = true});
    expectAllNear("slips, kinks", {.signs = Signs::Slips, .kinkShare = 0.3});
    expectAllNear("slips, shallow arcs", {.signs = Signs::Slips, .shallow = true});
    expectAllNear("random signs", {.signs = Signs::Random});
    expectAllNear("random signs, kinks", {.signs = Signs::Random, .kinkShare = 0.3});
    expectAllNear("random signs, shallow arcs", {.signs = Signs::Random, .shallow = true});
}

TEST_F(Highways, WithHeightsWhereTheTangentsAreTakenInPlan) {
    expectAllNear("own habit, heights", {.rise = 0.35}, true);
    expectAllNear("other habit, heights", {.signs = Signs::PositiveRight, .rise = 0.35}, true);
}

} // namespace
} // namespace fenmark::host::embedded
