// Curves that wind up: the bound that tells how near they may come, and chains of many that lie over each other.
#include "curve/winding.h"

#include "curve/chain.h"
#include "support_curve.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <vector>

namespace fenmark::curve_test {

namespace {

constexpr double kPartTolerance = 1e-7; // metres; nearestFoot and a chain part by less

// Turns 3 radians to many turns: from the inflection, from one radius to another, through the inflection, as a flat ring.
Curve windingCurve(RandomCurves& random, const Pose& from) {
    const double length = random.scaled(20.0, 2000.0);
    const double sharpest = random.sign() * random.scaled(6.0, 3000.0) / length;
    const double shares[]{0.0, random.uniform(0.0, 1.0), -random.uniform(0.0, 1.0), 1.0 - random.scaled(1e-9, 1e-2)};
    const double other = sharpest * shares[random.pick(4)];
    return random.pick(2) == 0 ? Curve{from, length, other, sharpest} : Curve{from, length, sharpest, other};
}

} // namespace

TEST(WindingBound, NeverLeavesOutACurveThatIsNearerAndMostOftenTheOthers) {
    constexpr unsigned kSeed = 20261101;
    RandomCurves random(kSeed);
    int known = 0;
    int asked = 0;
    for (int i = 0; i < cases(1000); ++i) {
        const Curve curve = windingCurve(random, random.pose(random.pick(2) == 0 ? 0.0 : 1e6));
        const WindingBound fine(curve, 32);
        const WindingBound coarse(curve, 1);
        for (int j = 0; j < 5; ++j) {
            const double along = random.uniform(0.0, curve.length);
            const double aside = random.sign() * random.scaled(1e-6, 0.5 * curve.length);
            const Point point = parallelPose(curve, along, aside).point;
            const double away = std::abs(nearestFoot(curve, point).offset);
            const double wider = away * (1.0 + 1e-12) + 1e-9;
            ASSERT_TRUE(fine.mayComeNearer(point, wider * wider))
                << "seed " << kSeed << " " << testing::PrintToString(curve) << testing::PrintToString(point);
            ASSERT_TRUE(coarse.mayComeNearer(point, wider * wider))
                << "seed " << kSeed << " " << testing::PrintToString(curve) << testing::PrintToString(point);
            if (away > 0.05 * curve.length) {
                ++asked;
                known += fine.mayComeNearer(point, 0.25 * away * away) ? 0 : 1;
            }
        }
    }
    RecordProperty("known", known);
    RecordProperty("asked", asked);
    EXPECT_GT(asked, 200);
    EXPECT_GT(known, asked * 9 / 10) << "a bound that knows nothing spares nothing";
}

TEST(WindingBound, KnowsNothingOfCurvesBeyondMeasureAndSaysSo) {
    const Curve vast{{{0.0, 0.0}, 0.0}, 1e300, 0.0, 1.0};
    const Curve sharp{{{1e6, -1e6}, 1.0}, 1e-3, 0.0, 1e300};
    for (const Curve& curve : {vast, sharp}) {
        EXPECT_TRUE(WindingBound(curve, 32).mayComeNearer(curve.start.point, 1.0));
    }
}

TEST(WindingChain, IsLocatedAsEachOfItsCurvesByItself) {
    constexpr unsigned kSeed = 20261102;
    RandomCurves random(kSeed);
    std::vector<Curve> curves;
    std::vector<Chain> singles;
    for (int i = 0; i < 150; ++i) { // over each other about one place, with a curve that turns little now and then
        Curve curve = windingCurve(random, random.pose(20.0));
        if (i % 10 == 9) {
            curve.startCurvature = curve.endCurvature = 0.0;
        }
        curves.push_back(curve);
        ASSERT_EQ(singles.emplace_back().set({&curve, 1}), ChainStatus::Ok);
    }
    Chain chain;
    ASSERT_EQ(chain.set(curves), ChainStatus::Ok);
    std::vector<Point> points;
    for (int i = 0; i < cases(300); ++i) {
        points.push_back(i % 3 == 0 ? *chain.pointAt(random.uniform(0.0, chain.length()))
                                    : Point{random.uniform(-300.0, 300.0), random.uniform(-300.0, 300.0)});
    }
    std::vector<ChainFoot> feet(points.size());
    ASSERT_EQ(chain.locate(points, feet), points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        // A chain of one curve asks no bound before it looks.
        double least = 1e300;
        double slowly = 1e300;
        for (std::size_t c = 0; c < curves.size(); ++c) {
            least = std::min(least, std::abs(singles[c].locate(points[i])->offset));
            slowly = std::min(slowly, std::abs(nearestFoot(curves[c], points[i]).offset));
        }
        const ChainFoot foot = *chain.locate(points[i]);
        ASSERT_EQ(std::abs(foot.offset), least) << "seed " << kSeed << " " << testing::PrintToString(points[i]);
        ASSERT_EQ(std::abs(feet[i].offset), least) << "seed " << kSeed << " " << testing::PrintToString(points[i]);
        ASSERT_NEAR(least, slowly, kPartTolerance) << "seed " << kSeed << " " << testing::PrintToString(points[i]);

        // Within a distance the answer is the same, and beyond it there is none.
        const std::optional<ChainFoot> within = chain.locateWithin(points[i], least);
        ASSERT_TRUE(within) << "seed " << kSeed << " " << testing::PrintToString(points[i]);
        ASSERT_EQ(within->distance, foot.distance);
        ASSERT_EQ(within->offset, foot.offset);
        ASSERT_EQ(within->curve, foot.curve);
        ASSERT_EQ(within->perpendicular, foot.perpendicular);
        ASSERT_FALSE(least > 0.0 && chain.locateWithin(points[i], 0.5 * least));
    }
    EXPECT_FALSE(chain.locateWithin({std::nan(""), 0.0}, 1.0));
    EXPECT_FALSE(Chain().locateWithin({0.0, 0.0}, 1.0));
}

} // namespace fenmark::curve_test
