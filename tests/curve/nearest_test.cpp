// Nearest points and feet, against a look at every part of the curve.
#include "support_curve.h"

#include <algorithm>

namespace fenmark::curve_test {

namespace {

constexpr double kPlace = 1e-8; // metres; of distances from points at most 1e5 m away: the coordinates' last bits

// The least distance, from a fine walk and a search around its best place.
double leastDistance(const Curve& curve, const Point& point) {
    const int parts = static_cast<int>(std::min(20000.0, 200.0 + 40.0 * turnOf(curve)));
    double best = 1e300;
    int bestPart = 0;
    for (int i = 0; i <= parts; ++i) {
        const double d = distance(pointAt(curve, curve.length * i / parts), point);
        if (d < best) {
            best = d;
            bestPart = i;
        }
    }
    double low = curve.length * std::max(bestPart - 1, 0) / parts;
    double high = curve.length * std::min(bestPart + 1, parts) / parts;
    for (int i = 0; i < 100; ++i) {
        const double a = low + (high - low) / 3.0;
        const double b = high - (high - low) / 3.0;
        if (distance(pointAt(curve, a), point) < distance(pointAt(curve, b), point)) {
            high = b;
        } else {
            low = a;
        }
    }
    return std::min(best, distance(pointAt(curve, 0.5 * (low + high)), point));
}

} // namespace

TEST(NearestFoot, IsTheNearestOfAllPoints) {
    RandomCurves random(20240607);
    for (int i = 0; i < cases(2000); ++i) {
        const Curve curve = random.curve(1e3);
        const double at = random.uniform(-0.1, 1.1) * curve.length;
        const double aside = random.sign() * random.scaled(1e-3, 500.0);
        const Pose pose = poseAt(curve, std::clamp(at, 0.0, curve.length));
        const Point point{pose.point.x - aside * std::sin(pose.azimuth), pose.point.y + aside * std::cos(pose.azimuth)};
        const Foot foot = nearestFoot(curve, point);
        ASSERT_GE(foot.along, 0.0);
        ASSERT_LE(foot.along, curve.length);
        ASSERT_LE(distance(foot.point, pointAt(curve, foot.along)), kPlace) << i;
        ASSERT_NEAR(std::abs(foot.offset), distance(foot.point, point), kPlace) << i;
        ASSERT_LE(std::abs(foot.offset), leastDistance(curve, point) + kPlace)
            << "case " << i << " of seed 20240607: " << testing::PrintToString(curve) << " "
            << testing::PrintToString(point);
    }
}

TEST(NearestFoot, OffsetPointsComeBack) {
    RandomCurves random(71);
    double worst = 0.0;
    for (int i = 0; i < cases(2000); ++i) {
        const Curve curve = random.curve(0.0);
        const double sharpest = std::max(std::abs(curve.startCurvature), std::abs(curve.endCurvature));
        const double along = random.uniform(0.0, 1.0) * curve.length;
        const double offset = random.uniform(-0.9, 0.9) * std::min(1.0 / sharpest, 100.0);
        if (turnOf(curve) > 1.5) {
            continue;
        }
        const Foot foot = nearestFoot(curve, parallelPose(curve, along, offset).point);
        ASSERT_NEAR(foot.offset, offset, 1e-11) << i << testing::PrintToString(curve);
        ASSERT_NEAR(foot.along, along, 1e-11 * (curve.length + 100.0)) << i << testing::PrintToString(curve);
        worst = std::max(worst, std::abs(foot.along - along) / (curve.length + 100.0));
    }
    RecordProperty("worst", inShort(worst));
}

// There the terms that tell how good a step was all vanish.
TEST(NearestFoot, BesideAnInflectionIsAsExactAsElsewhere) {
    for (const double length : {0.2, 20.0, 1000.0, 5000.0}) {
        for (const double turn : {0.5, 1.5, -1.5}) {
            const double sharp = 2.0 * turn / length;
            for (const double unlike : {1.0, 0.98}) {
                const Curve curve{{{0.0, 0.0}, 0.4}, length, -unlike * sharp, sharp};
                for (double share = 0.4905; share < 0.51; share += 0.0013) {
                    for (const double offset : {0.0, 1e-4 * length}) {
                        const Point point = parallelPose(curve, share * length, offset).point;
                        const Foot foot = nearestFoot(curve, point);
                        EXPECT_NEAR(foot.along, share * length, 1e-13 * length + 1e-12) << length << turn << share;
                        EXPECT_NEAR(foot.offset, offset, 1e-13 * length + 1e-12) << length << turn << share;
                        EXPECT_LE(distance(foot.point, pointAt(curve, foot.along)), 1e-12 * length)
                            << length << ' ' << turn << ' ' << share;
                    }
                }
            }
        }
    }
}

TEST(FeetOf, AreAllPlacesWhereTheSideChanges) {
    RandomCurves random(99);
    for (int i = 0; i < cases(1000); ++i) {
        const Curve curve = random.curve(1e3);
        const Point point =
            parallelPose(curve, random.uniform(0.0, 1.0) * curve.length, random.uniform(-300.0, 300.0)).point;
        if (turnOf(curve) > 300.0) {
            continue;
        }
        const std::vector<Foot> feet = feetOf(curve, point).found;
        const auto ahead = [&](double along) {
            const Pose pose = poseAt(curve, along);
            return (point.x - pose.point.x) * std::cos(pose.azimuth) +
                   (point.y - pose.point.y) * std::sin(pose.azimuth);
        };
        for (const Foot& foot : feet) {
            ASSERT_NEAR(ahead(foot.along), 0.0, 1e-7);
        }
        // Each change of sign has its foot.
        const int parts = static_cast<int>(500.0 + 20.0 * turnOf(curve));
        std::size_t next = 0;
        for (int part = 0; part < parts; ++part) {
            const double a = curve.length * part / parts;
            const double b = curve.length * (part + 1) / parts;
            std::size_t inside = 0;
            while (next < feet.size() && feet[next].along < b) {
                ++inside;
                ++next;
            }
            const double ga = ahead(a);
            const double gb = ahead(b);
            if (std::abs(ga) > 1e-6 && std::abs(gb) > 1e-6 && (ga > 0.0) != (gb > 0.0)) {
                ASSERT_EQ(inside % 2, 1u)
                    << i << " " << testing::PrintToString(curve) << testing::PrintToString(point) << a;
            }
        }
    }
}

TEST(NearestFoot, OfACurveThatWindsAMillionTimes) {
    const Curve curve{{{0.0, 0.0}, 0.0}, 1e6, 1e-3, 20.0};
    for (const double along : {10.0, 1e3, 1e5, 5e5, 999e3}) {
        const Pose pose = poseAt(curve, along);
        const Foot foot = nearestFoot(curve, pose.point);
        EXPECT_NEAR(foot.along, along, 1e-6);
        EXPECT_NEAR(foot.offset, 0.0, 1e-6);
    }
    EXPECT_LE(feetOf(curve, {5.0, 5.0}).found.size(), kMostFeet);
    EXPECT_GE(feetOf(curve, {5.0, 5.0}).found.size(), 100u);
}

namespace {

double sharpestOf(const Curve& curve) {
    return std::max(std::abs(curve.startCurvature), std::abs(curve.endCurvature));
}

// Where a curve has turned by so much since its start; its end where it does not.
double alongAtTurn(const Curve& curve, double turn) {
    double low = 0.0;
    double high = curve.length;
    for (int i = 0; i < 60; ++i) {
        const double middle = 0.5 * (low + high);
        (std::abs(turnAt(curve, middle)) < turn ? low : high) = middle;
    }
    return high;
}

// A point from which feet are hard to tell: near the centre of curvature of some place, or on the normal of an end, also
// of a part of a sixteenth of a circle.
Point pointNearTheEvolute(RandomCurves& random, const Curve& curve) {
    double along = random.uniform(0.0, 1.0) * curve.length;
    switch (random.pick(4)) {
    case 0:
        along = random.pick(2) == 0 ? 0.0 : curve.length;
        break;
    case 1:
        along = alongAtTurn(curve, 0.125 * kPi * random.whole(1, 4));
        break;
    default:
        break;
    }
    const double k = curvatureAt(curve, along);
    const double radius = std::abs(k) > 1e-4 ? 1.0 / k : random.uniform(-300.0, 300.0);
    return parallelPose(curve, along, radius * (1.0 + random.sign() * random.scaled(1e-4, 0.3))).point;
}

// Without those that another one lies close to: two feet about to become one.
std::vector<double> clearFeet(const Curve& curve, const Point& point) {
    const std::vector<Foot> feet = feetOf(curve, point).found;
    const double near = 1e-5 * curve.length;
    std::vector<double> clear;
    for (std::size_t i = 0; i < feet.size(); ++i) {
        const bool alone = (i == 0 || feet[i].along - feet[i - 1].along > near) &&
                           (i + 1 == feet.size() || feet[i + 1].along - feet[i].along > near) && feet[i].along > near &&
                           feet[i].along < curve.length - near;
        if (alone) {
            clear.push_back(feet[i].along);
        }
    }
    return clear;
}

void expectSameFeet(const std::vector<double>& a, const std::vector<double>& b, double within,
                    const std::string& what) {
    ASSERT_EQ(a.size(), b.size()) << what;
    for (std::size_t i = 0; i < a.size(); ++i) {
        ASSERT_NEAR(a[i], b[i], within) << what;
    }
}

} // namespace

TEST(FeetOf, AreThoseOfTheCurveTheOtherWayOfItsPartsAndOfItsCopies) {
    RandomCurves random(177);
    for (int i = 0; i < cases(3000); ++i) {
        const Curve curve = random.clothoid(0.0);
        if (turnOf(curve) > 60.0 || curve.length * sharpestOf(curve) < 1e-3) {
            continue;
        }
        const Point point = pointNearTheEvolute(random, curve);
        const std::string what = std::to_string(i) + testing::PrintToString(curve) + testing::PrintToString(point);
        const std::vector<double> feet = clearFeet(curve, point);
        const double within = 1e-6 * curve.length;

        std::vector<double> back = clearFeet(reversed(curve), point);
        std::reverse(back.begin(), back.end());
        std::transform(back.begin(), back.end(), back.begin(), [&](double along) { return curve.length - along; });
        expectSameFeet(feet, back, within, what + " reversed");

        const Curve mirrored{{{curve.start.point.x, -curve.start.point.y}, -curve.start.azimuth},
                             curve.length,
                             -curve.startCurvature,
                             -curve.endCurvature};
        expectSameFeet(feet, clearFeet(mirrored, {point.x, -point.y}), within, what + " mirrored");

        for (const double scale : {0x1.0p-24, 0x1.0p-8, 0x1.0p16}) {
            const Curve other{{{0.0, 0.0}, curve.start.azimuth},
                              scale * curve.length,
                              curve.startCurvature / scale,
                              curve.endCurvature / scale};
            const Point from{curve.start.point};
            std::vector<double> small = clearFeet(other, {scale * (point.x - from.x), scale * (point.y - from.y)});
            std::transform(small.begin(), small.end(), small.begin(), [&](double along) { return along / scale; });
            expectSameFeet(feet, small, within, what + " scaled");
            const Foot nearest = nearestFoot(other, {scale * (point.x - from.x), scale * (point.y - from.y)});
            ASSERT_NEAR(std::abs(nearest.offset) / scale, std::abs(nearestFoot(curve, point).offset), within) << what;
        }

        const double cut = random.uniform(0.2, 0.8) * curve.length;
        const auto [first, second] = split(curve, cut);
        for (const double along : feet) {
            if (std::abs(along - cut) < 1e-4 * curve.length) {
                continue;
            }
            const std::vector<Foot> there = feetOf(along < cut ? first : second, point).found;
            ASSERT_TRUE(std::any_of(
                there.begin(), there.end(),
                [&](const Foot& foot) { return std::abs(foot.along + (along < cut ? 0.0 : cut) - along) < within; }))
                << what << " cut " << cut << " at " << along;
        }
    }
}

TEST(FeetOf, OfMoreThanThereIsRoomForThoseAroundTheNearestStand) {
    const Curve curves[] = {{{{0.0, 0.0}, 0.0}, 6.3 * kTwoPi / 0.025, 0.02, 0.03},
                            {{{0.0, 0.0}, 0.0}, 9.0 * kTwoPi / 0.025, 0.03, 0.02},
                            {{{0.0, 0.0}, 0.0}, 600.0, -0.03, 0.03},
                            arc({{0.0, 0.0}, 0.3}, 3.4 * kTwoPi * 50.0, 0.02),
                            straight({{0.0, 0.0}, 0.3}, 100.0)};
    for (const Curve& curve : curves) {
        for (const double share : {0.1, 0.5, 0.93}) {
            for (const double offset : {-0.1, 0.1, 30.0}) {
                const Point point = parallelPose(curve, share * curve.length, offset).point;
                const std::vector<Foot> all = feetOf(curve, point).found;
                double least = 1e300;
                for (const Foot& foot : all) {
                    least = std::min(least, std::abs(foot.offset));
                }
                for (std::size_t most = 0; most <= all.size() + 1; ++most) {
                    const std::vector<Foot> feet = feetOf(curve, point, most).found;
                    ASSERT_EQ(feet.size(), std::min(most, all.size())) << testing::PrintToString(curve) << share;
                    // A run of all of them, and the nearest among it.
                    const auto same = [](const Foot& a, const Foot& b) { return std::abs(a.along - b.along) < 1e-6; };
                    ASSERT_TRUE(feet.empty() ||
                                std::search(all.begin(), all.end(), feet.begin(), feet.end(), same) != all.end());
                    EXPECT_TRUE(most == 0 || all.empty() ||
                                std::any_of(feet.begin(), feet.end(),
                                            [&](const Foot& foot) { return std::abs(foot.offset) < least + 1e-6; }))
                        << testing::PrintToString(curve) << share << ' ' << offset << ' ' << most;
                }
            }
        }
    }
}

} // namespace fenmark::curve_test
