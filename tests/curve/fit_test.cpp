// Fitting: through two poses, at intersection points, through a point.
#include "support_curve.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <span>
#include <vector>

namespace fenmark::curve_test {

namespace {

constexpr double kShare = 1e-13; // of the length: where an end may lie
constexpr double kAzimuth = 1e-13;

double poseError(const Pose& a, const Pose& b, double length) {
    return std::max(distance(a.point, b.point) / length, std::abs(wrappedTurn(a.azimuth - b.azimuth)));
}

Pose anyPose(RandomCurves& random) {
    // Also azimuths that hit each other's directions exactly.
    Pose pose = random.pose(100.0);
    pose.azimuth = random.pick(4) == 0 ? 0.25 * kPi * random.pick(9) : random.uniform(-kPi, kPi);
    return pose;
}

} // namespace

TEST(FitG1, EndsInTheGivenPoseForAnyAngles) {
    RandomCurves random(1);
    double worst = 0.0;
    for (int i = 0; i < std::max(cases(0), 50000); ++i) {
        const Pose from = anyPose(random);
        const Pose to = anyPose(random);
        const auto fitted = fitG1(from, to);
        ASSERT_TRUE(fitted) << "case " << i << " of seed 1: " << testing::PrintToString(from.point) << from.azimuth
                            << " " << testing::PrintToString(to.point) << to.azimuth;
        ASSERT_EQ(fitted->start, from);
        const double error = poseError(endPose(*fitted), to, fitted->length + 200.0);
        ASSERT_LE(error, kShare) << i;
        worst = std::max(worst, error);
    }
    RecordProperty("worst", inShort(worst));
}

TEST(FitG1, GivesBackClothoidsOfSurveySize) {
    RandomCurves random(2);
    for (int i = 0; i < 5000; ++i) {
        const Curve curve = random.curve(1e3);
        // Beyond these the same poses have a shorter clothoid.
        if (turnOf(curve) > 1.5 || curve.length < 1.0) {
            continue;
        }
        const auto fitted = fitG1(curve.start, endPose(curve));
        ASSERT_TRUE(fitted);
        EXPECT_NEAR(fitted->length, curve.length, 1e-10 * (1e3 + curve.length)) << testing::PrintToString(curve);
        EXPECT_NEAR(fitted->startCurvature * curve.length, curve.startCurvature * curve.length, 1e-8) << i;
        EXPECT_NEAR(fitted->endCurvature * curve.length, curve.endCurvature * curve.length, 1e-8) << i;
    }
}

TEST(FitG1, IsTheShortest) {
    // All curves between two poses a metre apart: the turn is known up to full circles, and the rest is one number, which
    // is walked through.
    RandomCurves random(3);
    for (int i = 0; i < 60; ++i) {
        const Pose from{{0.0, 0.0}, random.uniform(-kPi, kPi)};
        const Pose to{{1.0, 0.0}, random.uniform(-kPi, kPi)};
        const auto fitted = fitG1(from, to);
        ASSERT_TRUE(fitted);
        for (const double round : {-kTwoPi, 0.0, kTwoPi}) {
            const double turn = to.azimuth - from.azimuth + round;
            Point before;
            for (double a = -40.0; a <= 40.0; a += 0.05) {
                const Point end = pointAt({{{0.0, 0.0}, from.azimuth}, 1.0, turn - a, turn + a}, 1.0);
                if (a > -40.0 && (end.y > 0.0) != (before.y > 0.0) && std::min(end.x, before.x) > 0.05) {
                    // The length is 1 / x; x changes by less than a hundredth between two looks.
                    EXPECT_LE(fitted->length, 1.0 / (std::min(end.x, before.x) - 0.01))
                        << from.azimuth << " " << to.azimuth;
                }
                before = end;
            }
        }
    }
}

TEST(FitG1, HasNoAnswerForOnePoint) {
    EXPECT_FALSE(fitG1({{1.0, 2.0}, 0.3}, {{1.0, 2.0}, 1.3}));
    const auto line = fitG1({{1.0, 2.0}, 0.0}, {{5.0, 2.0}, 0.0});
    ASSERT_TRUE(line);
    EXPECT_EQ(line->length, 4.0);
    EXPECT_NEAR(line->startCurvature, 0.0, 1e-15);
}

TEST(FitG2, KeepsPosesAndCurvatures) {
    RandomCurves random(4);
    for (int i = 0; i < std::max(cases(0) / 10, 2000); ++i) {
        const Pose from = random.pose(100.0);
        const Pose to = random.pose(100.0);
        const double reach = distance(from.point, to.point);
        const double k0 = random.uniform(-4.0, 4.0) / reach;
        const double k1 = random.uniform(-4.0, 4.0) / reach;
        const auto fitted = fitG2(from, k0, to, k1);
        ASSERT_TRUE(fitted) << i << " " << testing::PrintToString(from.point) << from.azimuth << " "
                            << testing::PrintToString(to.point) << to.azimuth << " " << k0 << " " << k1;
        const auto& [a, b, c] = *fitted;
        const double length = a.length + b.length + c.length;
        // The first and the last are alike, of a share that bends no more suddenly than it must.
        EXPECT_EQ(a.length, c.length);
        const double made = a.length / length;
        const double shares[] = {0.3, 0.25, 0.2, 0.15, 0.1, 0.07, 0.05, 0.03, 0.02, 0.01, 3e-3, 1e-3, 1e-4, 1e-5};
        EXPECT_TRUE(std::any_of(std::begin(shares), std::end(shares),
                                [&](double share) { return std::abs(made - share) < 1e-9; }))
            << i << ' ' << made;
        EXPECT_EQ(a.start, from);
        EXPECT_EQ(a.startCurvature, k0);
        EXPECT_EQ(c.endCurvature, k1);
        EXPECT_EQ(a.endCurvature, b.startCurvature);
        EXPECT_EQ(b.endCurvature, c.startCurvature);
        EXPECT_LE(poseError(endPose(a), b.start, length + 200.0), kShare) << i;
        EXPECT_LE(poseError(endPose(b), c.start, length + 200.0), kShare) << i;
        EXPECT_LE(poseError(endPose(c), to, length + 200.0), 10.0 * kShare) << i;
    }
}

TEST(CurveAtIp, RunsFromTangentToTangent) {
    RandomCurves random(5);
    int laid = 0;
    for (int i = 0; i < 5000; ++i) {
        const Point before{0.0, 0.0};
        const IpValues ip{{random.uniform(200.0, 900.0), random.uniform(-500.0, 500.0)},
                          random.scaled(20.0, 800.0),
                          random.pick(3) == 0 ? 0.0 : random.scaled(10.0, 300.0),
                          random.pick(3) == 0 ? 0.0 : random.scaled(10.0, 300.0)};
        const Point after{random.uniform(-500.0, 2000.0), random.uniform(-2000.0, 2000.0)};
        const IpCurve curve = curveAtIp(before, ip, after);
        if (curve.status == FitStatus::TooShort) {
            continue;
        }
        ASSERT_FALSE(curve.curves.empty()) << i;
        const double in = std::atan2(ip.point.y - before.y, ip.point.x - before.x);
        const double out = std::atan2(after.y - ip.point.y, after.x - ip.point.x);
        const Pose last = endPose(curve.curves.back());
        ASSERT_NEAR(wrappedTurn(last.azimuth - out), 0.0, kAzimuth) << i;
        const Point leave{ip.point.x + curve.leaveTangent * std::cos(out),
                          ip.point.y + curve.leaveTangent * std::sin(out)};
        ASSERT_LE(distance(last.point, leave),
                  1e-12 * (1e4 + std::abs(curve.leaveTangent)) / std::sin(std::abs(curve.turn)))
            << i;
        ASSERT_NEAR(curve.curves.front().start.azimuth, in, kAzimuth);
        for (std::size_t k = 1; k < curve.curves.size(); ++k) {
            ASSERT_EQ(curve.curves[k].start, endPose(curve.curves[k - 1]));
            ASSERT_EQ(curve.curves[k].startCurvature, curve.curves[k - 1].endCurvature);
        }
        ++laid;
    }
    EXPECT_GT(laid, 2000);
}

TEST(AlignmentByIps, JoinsStraightsAndCurves) {
    const std::vector<IpValues> points = {
        {{0.0, 0.0}}, {{300.0, 20.0}, 100.0, 60.0, 50.0}, {{500.0, 300.0}, 150.0}, {{900.0, 350.0}}, {{1000.0, 500.0}}};
    const IpAlignment alignment = alignmentByIps(points);
    ASSERT_TRUE(alignment.done);
    ASSERT_EQ(alignment.ips.size(), 3u);
    EXPECT_EQ(alignment.ips[0].curves.size(), 3u);
    EXPECT_EQ(alignment.ips[1].curves.size(), 1u);
    EXPECT_TRUE(alignment.ips[2].curves.empty());
    for (std::size_t i = 1; i < alignment.curves.size(); ++i) {
        EXPECT_LE(distance(endPose(alignment.curves[i - 1]).point, alignment.curves[i].start.point), 1e-9) << i;
    }
    EXPECT_EQ(alignment.curves.front().start.point, (Point{0.0, 0.0}));
    EXPECT_LE(distance(endPose(alignment.curves.back()).point, {1000.0, 500.0}), 1e-9);
}

TEST(AlignmentByIps, OfTwoPointsIsAStraightAndOfOneNothing) {
    const std::vector<IpValues> points = {{{10.0, 20.0}}, {{40.0, 60.0}}};
    const IpAlignment alignment = alignmentByIps(points);
    ASSERT_TRUE(alignment.done);
    EXPECT_TRUE(alignment.ips.empty());
    ASSERT_EQ(alignment.curves.size(), 1u);
    EXPECT_EQ(alignment.curves[0].start.point, (Point{10.0, 20.0}));
    EXPECT_EQ(alignment.curves[0].length, 50.0);
    EXPECT_FALSE(alignmentByIps(std::span(points).first(1)).done);
    EXPECT_FALSE(alignmentByIps({}).done);
}

// Two right angles, whose tangents are as long as their radii, on sides of 100 m.
TEST(AlignmentByIps, TangentsMayBeAsLongAsTheirSides) {
    const struct {
        double first;
        double second;
        bool fits;
    } cases[] = {{100.0, 0.0, true},    {50.0, 50.0, true},        {60.0, 40.0, true},    {100.001, 0.0, false},
                 {0.0, 100.001, false}, {50.001, 50.0, false},     {50.0, 50.001, false}, {99.999, 0.0, true},
                 {50.0, 49.999, true},  {50.0 + 1e-8, 50.0, true}, {50.4, 50.0, false}};
    for (const auto& [first, second, fits] : cases) {
        std::vector<IpValues> points = {{{0.0, 0.0}}, {{100.0, 0.0}, first}};
        if (second > 0.0) {
            points.push_back({{100.0, 100.0}, second});
            points.push_back({{200.0, 100.0}});
        } else {
            points.push_back({{100.0, 100.0}});
        }
        if (first == 0.0) {
            points.erase(points.begin());
        }
        const IpAlignment alignment = alignmentByIps(points);
        EXPECT_EQ(alignment.done, fits) << first << ' ' << second;
        for (const IpCurve& ip : alignment.ips) {
            EXPECT_EQ(ip.status, fits ? FitStatus::Done : FitStatus::Overlap) << first << ' ' << second;
        }
    }
}

TEST(AlignmentByIps, SaysWhichTangentsOverlap) {
    std::vector<IpValues> points = {
        {{0.0, 0.0}}, {{300.0, 0.0}, 200.0}, {{400.0, 200.0}, 250.0}, {{900.0, 200.0}, 50.0}, {{900.0, 600.0}}};
    const IpAlignment alignment = alignmentByIps(points);
    EXPECT_FALSE(alignment.done);
    EXPECT_EQ(alignment.ips[0].status, FitStatus::Overlap);
    EXPECT_EQ(alignment.ips[1].status, FitStatus::Overlap);
    EXPECT_EQ(alignment.ips[2].status, FitStatus::Done);
    EXPECT_TRUE(alignment.curves.empty());
    points[1].radius = -1.0;
    EXPECT_EQ(alignmentByIps(points).ips[0].status, FitStatus::BadValue);
    points[1].radius = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(alignmentByIps(points).ips[0].status, FitStatus::NotFinite);
    EXPECT_EQ(curveAtIp({0.0, 0.0}, {{10.0, 0.0}, 5.0}, {20.0, 0.0}).status, FitStatus::NoTurn);
    EXPECT_EQ(curveAtIp({0.0, 0.0}, {{100.0, 0.0}, 5.0, 50.0, 50.0}, {200.0, 10.0}).status, FitStatus::TooShort);
}

TEST(CurveThrough, GoesThroughThePoint) {
    RandomCurves random(6);
    int laid = 0;
    for (int i = 0; i < 1000; ++i) {
        const Point before{-1000.0, 0.0};
        const double turn = random.sign() * random.uniform(0.2, 2.5);
        const Point after{1000.0 * std::cos(turn), 1000.0 * std::sin(turn)};
        const double a1 = random.pick(3) == 0 ? 0.0 : random.scaled(10.0, 80.0);
        const double a2 = random.pick(3) == 0 ? 0.0 : random.scaled(10.0, 80.0);
        // Through a point of a known curve.
        const IpCurve known = curveAtIp(before, {{0.0, 0.0}, random.scaled(60.0, 400.0), a1, a2}, after);
        if (known.status != FitStatus::Done) {
            continue;
        }
        const Curve& middle = known.curves[known.curves.size() / 2];
        const Point through = pointAt(middle, random.uniform(0.1, 0.9) * middle.length);
        const IpCurve found = curveThrough(before, {0.0, 0.0}, after, through, a1, a2);
        ASSERT_EQ(found.status, FitStatus::Done) << i << " turn " << turn;
        double nearest = 1e300;
        for (const Curve& curve : found.curves) {
            nearest = std::min(nearest, std::abs(nearestFoot(curve, through).offset));
        }
        ASSERT_LE(nearest, 1e-8) << i;
        ++laid;
    }
    EXPECT_GT(laid, 300);
    EXPECT_EQ(curveThrough({-100.0, 0.0}, {0.0, 0.0}, {0.0, 100.0}, {50.0, -50.0}).status, FitStatus::NoSolution);
    for (const Point& after : {Point{100.0, 0.0}, Point{-50.0, 0.0}}) { // straight on, and back
        EXPECT_EQ(curveThrough({-100.0, 0.0}, {0.0, 0.0}, after, {0.0, 1.0}).status, FitStatus::NoTurn) << after.x;
    }
    for (const double side : {100.0, 0.5, 0.05}) {
        const IpCurve small = curveAtIp({-side, 0.0}, {{0.0, 0.0}, 0.5 * side, 0.0, 0.0}, {0.0, side});
        ASSERT_EQ(small.status, FitStatus::Done) << side;
        EXPECT_NEAR(small.enterTangent, 0.5 * side, 1e-12);
    }
}

// With clothoids of 100 m the sharpest arc at a right angle has nothing left of it, and lies some metres off the corner.
TEST(CurveThrough, HasNoSolutionNearerToTheCornerThanItsSharpestCurve) {
    const double sharpest = 100.0 / std::sqrt(0.5 * kPi);
    for (const double side : {1.0, -1.0}) {
        const Point after{0.0, side * 1000.0};
        for (const double off : {0.01, 5.0, 24.0, 28.0, 31.0}) {
            const IpCurve found = curveThrough({-1000.0, 0.0}, {0.0, 0.0}, after, {-off, side * off}, 100.0, 100.0);
            EXPECT_EQ(found.status, FitStatus::NoSolution) << side << ' ' << off;
            EXPECT_TRUE(found.curves.empty());
        }
        EXPECT_EQ(curveAtIp({-1000.0, 0.0}, {{0.0, 0.0}, 0.999 * sharpest, 100.0, 100.0}, after).status,
                  FitStatus::TooShort);
        const IpCurve last = curveAtIp({-1000.0, 0.0}, {{0.0, 0.0}, 1.001 * sharpest, 100.0, 100.0}, after);
        ASSERT_EQ(last.status, FitStatus::Done);
        const Curve& arc = last.curves[1];
        const IpCurve again =
            curveThrough({-1000.0, 0.0}, {0.0, 0.0}, after, pointAt(arc, 0.5 * arc.length), 100.0, 100.0);
        ASSERT_EQ(again.status, FitStatus::Done);
        EXPECT_NEAR(1.0 / again.curves[1].startCurvature, side * 1.001 * sharpest, 1e-6);
    }
}

} // namespace fenmark::curve_test
