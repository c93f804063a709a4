// The index gives what a walk over all objects gives.
#include "desk/plan/plan_index.h"

#include "host/boundary/object_data_writer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <set>
#include <vector>

namespace fenmark::desk {
namespace {

using drawing::Drawing;
using drawing::EntityKind;
using drawing::Extent;
using host::MdGePoint3d;

constexpr std::uint32_t kSeed = 20240611;

bool meet(const Extent& a, const Extent& b) {
    return a.minX <= b.maxX && b.minX <= a.maxX && a.minY <= b.maxY && b.minY <= a.maxY;
}

struct Scene {
    double centre; // metres from the origin
    double spread; // metres
    double figure; // size of the largest figure, metres
    const char* name;
};

// Points in clumps, figures whose sizes differ by five powers of ten, and a few outliers.
Drawing randomDrawing(const Scene& scene, std::size_t count, std::mt19937& random) {
    Drawing drawing;
    std::normal_distribution<double> place(scene.centre, scene.spread);
    std::uniform_real_distribution<double> power(-5.0, 0.0);
    std::uniform_int_distribution<int> kind(0, 3);
    for (std::size_t i = 0; i < count; ++i) {
        const double x = place(random);
        const double y = place(random);
        if (kind(random) > 0) {
            drawing.addPoint({x, y, 1.0}, 0);
            continue;
        }
        const double size = scene.figure * std::pow(10.0, power(random));
        const std::vector<MdGePoint3d> ring{{x, y, 0}, {x + size, y, 0}, {x + size, y + size, 0}, {x, y + size, 0}};
        drawing.addPolyline(ring, 0, EntityKind::Polyline2d, true);
    }
    drawing.addPoint({0.0, 0.0, 0.0}, 0); // the outlier that files with empty coordinates have
    return drawing;
}

std::set<std::size_t> asked(const PlanIndex& index, const Extent& box) {
    std::set<std::size_t> found;
    index.query(box, [&](const PlanFigure& figure) {
        EXPECT_TRUE(found.insert(figure.entity).second) << "found twice: " << figure.entity;
        return true;
    });
    return found;
}

class IndexOf : public ::testing::TestWithParam<Scene> {};

TEST_P(IndexOf, GivesEveryObjectThatAWalkGivesAndNoneThatIsFarOff) {
    const Scene& scene = GetParam();
    std::mt19937 random(kSeed);
    SCOPED_TRACE("seed " + std::to_string(kSeed));
    const Drawing drawing = randomDrawing(scene, 3000, random);
    const PlanIndex index(drawing);
    ASSERT_EQ(index.size(), drawing.entityCount());
    std::normal_distribution<double> place(scene.centre, scene.spread);
    std::uniform_real_distribution<double> power(-6.0, 1.0);
    for (int i = 0; i < 200; ++i) {
        const double size = scene.spread * std::pow(10.0, power(random));
        Extent box;
        const double x = place(random);
        const double y = place(random);
        box.add(x - size, y - size);
        box.add(x + size, y + size);
        const std::set<std::size_t> found = asked(index, box);
        // Boxes are kept in single precision and rounded outwards: what lies that close may be found as well.
        Extent wider;
        const double slack = 4.0 * index.roundingMetres();
        wider.add(box.minX - slack, box.minY - slack);
        wider.add(box.maxX + slack, box.maxY + slack);
        for (std::size_t entity = 0; entity < drawing.entityCount(); ++entity) {
            const Extent own = drawing.entityExtent(entity);
            EXPECT_TRUE(!meet(own, box) || found.contains(entity)) << entity;
            EXPECT_TRUE(!found.contains(entity) || meet(own, wider)) << entity;
        }
        EXPECT_EQ(index.count(box, 1U << 30), found.size());
        EXPECT_EQ(index.count(box, 10), std::min<std::size_t>(10, found.size()));
    }
    EXPECT_EQ(asked(index, index.extent()).size(), drawing.entityCount());
}

INSTANTIATE_TEST_SUITE_P(Drawings, IndexOf,
                         ::testing::Values(Scene{0.0, 100.0, 50.0, "AroundTheOrigin"},
                                           Scene{-36000.0, 300.0, 20.0, "InAPlaneZone"},
                                           Scene{1e7, 1000.0, 1e5, "FarAwayWithHugeFigures"},
                                           Scene{5e5, 1e-3, 1e-4, "AMillimetreWide"}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(PlanIndex, OfAnEmptyDrawingAnswersNothing) {
    const Drawing drawing;
    const PlanIndex index(drawing);
    Extent box;
    box.add(-1e9, -1e9);
    box.add(1e9, 1e9);
    EXPECT_EQ(index.size(), 0U);
    EXPECT_TRUE(index.extent().empty());
    EXPECT_TRUE(asked(index, box).empty());
    EXPECT_EQ(index.count(box, 10), 0U);
}

TEST(PlanIndex, AThousandPointsAtOnePlaceAreAllThere) {
    Drawing drawing;
    for (int i = 0; i < 1000; ++i) {
        drawing.addPoint({5.0, 5.0, 0.0}, 0);
    }
    const PlanIndex index(drawing);
    Extent box;
    box.add(5.0, 5.0);
    EXPECT_EQ(asked(index, box).size(), 1000U);
}

TEST(PlanIndex, LeavesOutWhatHasNoPlace) {
    Drawing drawing;
    drawing.addPoint({std::numeric_limits<double>::infinity(), 0.0, 0.0}, 0);
    drawing.addPolyline({}, 0, EntityKind::Polyline2d, false);
    drawing.addPoint({1.0, 2.0, 0.0}, 0);
    const PlanIndex index(drawing);
    EXPECT_EQ(asked(index, index.extent()), std::set<std::size_t>{2});
}

TEST(PlanIndex, AVisitorThatHasEnoughIsAskedNoMore) {
    Drawing drawing;
    for (int i = 0; i < 100; ++i) {
        drawing.addPoint({i * 1.0, 0.0, 0.0}, 0);
    }
    const PlanIndex index(drawing);
    int visits = 0;
    index.query(index.extent(), [&](const PlanFigure&) { return ++visits < 7; });
    EXPECT_EQ(visits, 7);
}

TEST(PlanIndex, KnowsLayerAndStyleOfEachObject) {
    Drawing drawing;
    drawing.addLayer("杭");
    drawing.addTable(host::kPointTable);
    drawing.addPoint({0, 0, 0}, 0);
    drawing.addPoint({1, 0, 0}, 1);
    drawing.setRow(1, 0, 1, "P1", host::kCrossSectionType, "a.sim");
    const PlanIndex index(drawing);
    index.query(index.extent(), [&](const PlanFigure& figure) {
        EXPECT_EQ(figure.layer, figure.entity);
        EXPECT_TRUE(figure.isPoint());
        EXPECT_EQ(figure.figureStyle(), figure.entity == 0 ? FigureStyle::OtherPoint : FigureStyle::CrossSection);
        return true;
    });
}

} // namespace
} // namespace fenmark::desk
