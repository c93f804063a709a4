// Curves at an intersection point, by the way back: an exact curve is laid, its legs are prolonged to the IP, and the
// curve is asked for again.
#include <fenmark/alignment/ip.h>

#include "support/sweep.h"

#include <cmath>
#include <cstddef>
#include <limits>

namespace {

using namespace fenmark::exact;

constexpr double kLengthTolerance = 1e-4; // tangent lengths, metres
constexpr double kAngleTolerance = 1e-9;  // azimuths of exactly given legs, radians
// Where a value below 1e-5 falls to 0 on its way to the other plane.
constexpr double kCollapsedAngle = 1e-5;

static_assert(sizeof(AliIpCurve) == 14 * 8, "an entry is fourteen slots of 64 bits");
static_assert(offsetof(AliIpCurve, x) == 8 && offsetof(AliIpCurve, kind) == 24 && offsetof(AliIpCurve, size1) == 32 &&
              offsetof(AliIpCurve, azimuth_in) == 72 && offsetof(AliIpCurve, tangent2) == 104);

// A curve with its IP: legs along the end tangents, with some straight before and behind.
struct Bend {
    std::vector<Calelm> curve;
    AliIpCurve ip{};
    double previous[2] = {0.0, 0.0};
    double next[2] = {0.0, 0.0};
    double azimuth_in = 0.0;
    double azimuth_out = 0.0;
    double tangent1 = 0.0;
    double tangent2 = 0.0;
};

// False where the curve turns too far or too little to have an IP.
bool bend(Random& random, std::initializer_list<Shape> shapes, Bend& b) {
    b.curve = lay_chain(random.pose(), shapes);
    const Pose begin = start_of(b.curve.front());
    const Pose end = end_of(b.curve.back());
    // begin + t1 (cos in, sin in) = end - t2 (cos out, sin out)
    const Real c1 = std::cos(begin.azimuth);
    const Real s1 = std::sin(begin.azimuth);
    const Real c2 = std::cos(end.azimuth);
    const Real s2 = std::sin(end.azimuth);
    const Real det = c1 * s2 - s1 * c2;
    const Real dx = end.x - begin.x;
    const Real dy = end.y - begin.y;
    const Real t1 = (dx * s2 - dy * c2) / det;
    const Real t2 = (c1 * dy - s1 * dx) / det;
    if (!(t1 > 1.0 && t2 > 1.0 && t1 < 20000 && t2 < 20000)) {
        return false;
    }
    b.ip.x = static_cast<double>(begin.x + t1 * c1);
    b.ip.y = static_cast<double>(begin.y + t1 * s1);
    const Real before = t1 * random.uniform(0.5, 3.0);
    const Real behind = t2 * random.uniform(0.5, 3.0);
    b.previous[0] = static_cast<double>(begin.x + (t1 - before) * c1);
    b.previous[1] = static_cast<double>(begin.y + (t1 - before) * s1);
    b.next[0] = static_cast<double>(end.x + (behind - t2) * c2);
    b.next[1] = static_cast<double>(end.y + (behind - t2) * s2);
    b.azimuth_in = static_cast<double>(begin.azimuth);
    b.azimuth_out = static_cast<double>(end.azimuth);
    b.tangent1 = static_cast<double>(t1);
    b.tangent2 = static_cast<double>(t2);
    return true;
}

double turned_by(const Bend& b) {
    return std::abs(angle_difference(b.azimuth_out, b.azimuth_in));
}

// The outputs of the entry.
Outcome judge_entry(const Bend& b, Outcome outcome, double angle) {
    const bool right = std::abs(angle_difference(b.ip.azimuth_in, b.azimuth_in)) < kCollapsedAngle &&
                       std::abs(angle_difference(b.ip.azimuth_out, b.azimuth_out)) < kCollapsedAngle &&
                       std::abs(b.ip.angle - angle) < kLengthTolerance &&
                       std::abs(b.ip.tangent1 - b.tangent1) < kLengthTolerance &&
                       std::abs(b.ip.tangent2 - b.tangent2) < kLengthTolerance;
    if (outcome.found == Found::expected && !right) {
        return {Found::failed, "entry: angle " + std::to_string(b.ip.angle) + " tangents " +
                                   std::to_string(b.ip.tangent1) + " " + std::to_string(b.ip.tangent2)};
    }
    return outcome;
}

// An arc between clothoids at an IP carries radii of -1, which the exact layer does not know.
Calelm without_marks(Calelm r) {
    r.r1 = r.r2 = 0.0;
    return r;
}

// ---- ali_IPsetR ----

TEST(IPsetR, FindsTheArcOfAnExactCurve) {
    sweep(5310, [](Random& random) {
        Bend b;
        double radius = 0.0;
        do {
            radius = random.radius();
        } while (!bend(random, {arc(random.sign(), radius, radius * random.uniform(0.05, 2.9))}, b));
        b.ip.size1 = radius;
        Calelm r{};
        const int status = ali_IPsetR(b.previous, &b.ip, b.next, &r);
        return judge_entry(b, judge(status, std::vector{r}, b.curve, kJointTolerance), turned_by(b));
    });
}

TEST(IPsetR, LegsInLineGiveAnEmptyArcAtTheIp) {
    const double previous[2] = {0.0, 0.0};
    const double next[2] = {30.0, 60.0};
    AliIpCurve ip{};
    ip.x = 10.0;
    ip.y = 20.0;
    ip.size1 = 100.0;
    Calelm r{};
    ASSERT_EQ(ali_IPsetR(previous, &ip, next, &r), 0);
    EXPECT_EQ(r.len, 0.0);
    EXPECT_NEAR(distance(r.sx, r.sy, 10.0, 20.0), 0.0, kJointTolerance);
    EXPECT_NEAR(distance(r.ex, r.ey, 10.0, 20.0), 0.0, kJointTolerance);
    EXPECT_NEAR(r.sang, std::atan2(2.0, 1.0), kTangentTolerance);
    EXPECT_EQ(r.sang, r.eang);
    EXPECT_EQ(ip.angle, 0.0);
    EXPECT_EQ(r.par, 100.0);
    EXPECT_EQ(r.r1, 0.0);
    EXPECT_EQ(r.r2, 0.0);
}

TEST(IPsetR, RefusesLegsThatTurnBackEqualPointsAndARadiusThatIsNotPositive) {
    const double origin[2] = {0.0, 0.0};
    const double far[2] = {30.0, 60.0};
    AliIpCurve ip{};
    ip.x = 10.0;
    ip.y = 20.0;
    ip.size1 = 100.0;
    const auto refused = [](const double* previous, AliIpCurve entry, const double* next) {
        Calelm r{};
        const Calelm before = r;
        const AliIpCurve before_entry = entry;
        const int status = static_cast<int16_t>(ali_IPsetR(previous, &entry, next, &r));
        return status == -1 && identical(r, before) && entry.angle == before_entry.angle &&
               entry.tangent1 == before_entry.tangent1 && entry.azimuth_in == before_entry.azimuth_in;
    };
    const double same[2] = {10.0, 20.0};
    EXPECT_TRUE(refused(origin, ip, origin)) << "turns back";
    EXPECT_TRUE(refused(same, ip, far)) << "no leg before";
    EXPECT_TRUE(refused(origin, ip, same)) << "no leg behind";
    const double aside[2] = {40.0, 20.0};
    for (const double radius :
         {0.0, -5.0, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        ip.size1 = radius;
        EXPECT_TRUE(refused(origin, ip, aside)) << radius;
    }
}

// ---- ali_IPsetAA ----

TEST(IPsetAA, FindsTheTwoClothoidsOfAnExactCurve) {
    sweep(5320, [](Random& random) {
        Bend b;
        double a1 = 0.0;
        double a2 = 0.0;
        double radius = 0.0;
        double dir = 0.0;
        do {
            radius = random.radius();
            dir = random.sign();
            a1 = radius / random.uniform(0.7, 3.0);
            a2 = radius / random.uniform(0.7, 3.0);
        } while (!bend(random, {clothoid(dir, a1, 0.0, radius), clothoid(dir, a2, radius, 0.0)}, b));
        b.ip.size1 = a1;
        b.ip.size2 = a2;
        Calelm made1{};
        Calelm made2{};
        const int status = ali_IPsetAA(b.previous, &b.ip, b.next, &made1, &made2);
        return judge_entry(b, judge(status, std::vector{made1, made2}, b.curve, 2.0 * kJointTolerance), turned_by(b));
    });
}

// Clothoids of 0.8 and 0.6 times the radius turn by half a radian together.
TEST(IPsetAA, TakesRadiiOfLessThanAMetre) {
    for (const double radius : {200.0, 2.0, 0.8, 0.4}) {
        const double previous[2] = {-10.0 * radius, 0.0};
        const double next[2] = {10.0 * radius * std::cos(0.5), 10.0 * radius * std::sin(0.5)};
        AliIpCurve ip{};
        ip.size1 = 0.8 * radius;
        ip.size2 = 0.6 * radius;
        Calelm a1{};
        Calelm a2{};
        ASSERT_EQ(ali_IPsetAA(previous, &ip, next, &a1, &a2), 0) << radius;
        EXPECT_NEAR(a1.r2, radius, kSizeTolerance);
        EXPECT_NEAR(a2.r1, radius, kSizeTolerance);
    }
}

TEST(IPsetAA, WritesTheCoefficientsOfBothClothoids) {
    Random random(5321);
    Bend b;
    while (!bend(random, {clothoid(1.0, 80.0, 0.0, 100.0), clothoid(1.0, 60.0, 100.0, 0.0)}, b)) {
    }
    b.ip.size1 = 80.0;
    b.ip.size2 = 60.0;
    Calelm a1{};
    Calelm a2{};
    ASSERT_EQ(ali_IPsetAA(b.previous, &b.ip, b.next, &a1, &a2), 0);
    EXPECT_EQ(a1.type, 3);
    EXPECT_EQ(a1.r1, 0.0);
    EXPECT_NEAR(a1.r2, 100.0, kSizeTolerance);
    EXPECT_NEAR(a2.r1, 100.0, kSizeTolerance);
    EXPECT_EQ(a2.r2, 0.0);
    EXPECT_EQ(a1.dir, 1.0);
    EXPECT_EQ(a2.dir, 1.0);
    for (std::size_t i = 0; i < 2; ++i) {
        const Calelm& made = i == 0 ? a1 : a2;
        EXPECT_NEAR(made.k1, b.curve[i].k1, kSizeTolerance);
        EXPECT_NEAR(made.k2, b.curve[i].k2, kSizeTolerance);
        EXPECT_NEAR(made.k3, b.curve[i].k3, kSizeTolerance);
        EXPECT_NEAR(made.len, b.curve[i].len, kSizeTolerance);
    }
}

TEST(IPsetAA, FailsForLegsInLineSinceNoRadiusExists) {
    const double previous[2] = {0.0, 0.0};
    const double next[2] = {30.0, 0.0};
    AliIpCurve ip{};
    ip.x = 10.0;
    ip.size1 = 50.0;
    ip.size2 = 60.0;
    Calelm a1{};
    Calelm a2{};
    EXPECT_EQ(static_cast<int16_t>(ali_IPsetAA(previous, &ip, next, &a1, &a2)), -1);
}

TEST(IPsetAA, RefusesEqualPointsAndWritesNothing) {
    const double previous[2] = {10.0, 0.0};
    const double next[2] = {30.0, 5.0};
    AliIpCurve ip{};
    ip.x = 10.0;
    ip.size1 = 50.0;
    ip.size2 = 60.0;
    Calelm a1{};
    Calelm a2{};
    const Calelm before{};
    EXPECT_EQ(static_cast<int16_t>(ali_IPsetAA(previous, &ip, next, &a1, &a2)), -1);
    EXPECT_TRUE(identical(a1, before) && identical(a2, before));
}

// ---- ali_IPsetARA ----

TEST(IPsetARA, FindsTheClothoidsAndTheArcOfAnExactCurve) {
    sweep(5330, [](Random& random) {
        Bend b;
        double a1 = 0.0;
        double a2 = 0.0;
        double radius = 0.0;
        double dir = 0.0;
        do {
            radius = random.radius();
            dir = random.sign();
            a1 = random.parameter(radius);
            a2 = random.parameter(radius);
        } while (!bend(random,
                       {clothoid(dir, a1, 0.0, radius), arc(dir, radius, radius * random.uniform(0.05, 1.5)),
                        clothoid(dir, a2, radius, 0.0)},
                       b));
        b.ip.size1 = a1;
        b.ip.size2 = radius;
        b.ip.size3 = a2;
        Calelm made1{};
        Calelm r{};
        Calelm made2{};
        const int status = ali_IPsetARA(b.previous, &b.ip, b.next, &made1, &r, &made2);
        if (status == 0 && (r.r1 != -1.0 || r.r2 != -1.0)) {
            return Outcome{Found::failed, "marks"};
        }
        return judge_entry(b, judge(status, std::vector{made1, without_marks(r), made2}, b.curve, kJointTolerance),
                           turned_by(b));
    });
}

// An IP that is turned by the given angle to the left.
struct Corner {
    double previous[2] = {-500.0, 0.0};
    double next[2] = {0.0, 0.0};
    AliIpCurve ip{};

    explicit Corner(double left) {
        next[0] = 500.0 * std::cos(left);
        next[1] = -500.0 * std::sin(left);
    }
};

TEST(IPsetARA, RefusesARadiusOfExactly056OfTheParameterAndAcceptsOneAbove) {
    const auto status_of = [](double radius, double a1, double a2) {
        Corner corner(2.5);
        corner.ip.size1 = a1;
        corner.ip.size2 = radius;
        corner.ip.size3 = a2;
        Calelm m1{};
        Calelm r{};
        Calelm m2{};
        const int status = static_cast<int16_t>(ali_IPsetARA(corner.previous, &corner.ip, corner.next, &m1, &r, &m2));
        if (status != 0) {
            const Calelm before{};
            EXPECT_TRUE(identical(m1, before) && identical(r, before) && identical(m2, before));
        }
        return status;
    };
    EXPECT_EQ(status_of(56.0, 100.0, 50.0), -1);
    EXPECT_EQ(status_of(56.0, 50.0, 100.0), -1);
    EXPECT_EQ(status_of(56.1, 100.0, 50.0), 0);
    EXPECT_EQ(status_of(100.0, 0.0, 50.0), -1);
    EXPECT_EQ(status_of(100.0, 50.0, 0.0), -1);
}

TEST(IPsetARA, ASweepBelow1e5GivesAnEmptyArcAndSuccess) {
    const double tau = 80.0 * 80.0 / (2.0 * 100.0 * 100.0);
    for (const double sweep_of_arc : {5e-6, 1e-7}) {
        Corner corner(2.0 * tau + sweep_of_arc);
        corner.ip.size1 = corner.ip.size3 = 80.0;
        corner.ip.size2 = 100.0;
        Calelm a1{};
        Calelm r{};
        Calelm a2{};
        ASSERT_EQ(ali_IPsetARA(corner.previous, &corner.ip, corner.next, &a1, &r, &a2), 0);
        EXPECT_EQ(r.len, 0.0);
        EXPECT_EQ(r.k3, 0.0);
        EXPECT_EQ(r.sx, r.ex);
        EXPECT_EQ(r.sy, r.ey);
        EXPECT_EQ(r.sang, r.eang);
        EXPECT_TRUE(joined(a1, r));
        // The arc that is left out turns by less than 1e-5, so its length is below 1e-5 R.
        EXPECT_TRUE(joined(r, a2, kJointTolerance * 100.0));
    }
    // Just above, it is an arc.
    Corner corner(2.0 * tau + 1.5e-5);
    corner.ip.size1 = corner.ip.size3 = 80.0;
    corner.ip.size2 = 100.0;
    Calelm a1{};
    Calelm r{};
    Calelm a2{};
    ASSERT_EQ(ali_IPsetARA(corner.previous, &corner.ip, corner.next, &a1, &r, &a2), 0);
    EXPECT_NEAR(r.len, 1.5e-3, kJointTolerance);
}

TEST(IPsetARA, ANegativeSweepFailsWithTheRecordsWritten) {
    Corner corner(0.3);
    corner.ip.size1 = corner.ip.size3 = 80.0;
    corner.ip.size2 = 100.0;
    Calelm a1{};
    Calelm r{};
    Calelm a2{};
    EXPECT_EQ(static_cast<int16_t>(ali_IPsetARA(corner.previous, &corner.ip, corner.next, &a1, &r, &a2)), -1);
    EXPECT_EQ(a1.type, 3);
    EXPECT_EQ(r.type, 2);
    EXPECT_EQ(r.len, 0.0);
    EXPECT_EQ(a2.type, 3);
    EXPECT_NEAR(corner.ip.angle, 0.3, kAngleTolerance);
}

TEST(IPsetARA, TestsTheSizesBeforeTheLegs) {
    Corner corner(0.3);
    corner.ip.x = corner.previous[0];
    corner.ip.size1 = corner.ip.size3 = 80.0;
    corner.ip.size2 = 100.0;
    Calelm a1{};
    Calelm r{};
    Calelm a2{};
    const Calelm before{};
    EXPECT_EQ(static_cast<int16_t>(ali_IPsetARA(corner.previous, &corner.ip, corner.next, &a1, &r, &a2)), -1);
    EXPECT_TRUE(identical(a1, before) && identical(r, before) && identical(a2, before));
}

TEST(IPsetARA, DoesNotMindACurveThatExceedsItsLegs) {
    Corner corner(1.2);
    corner.next[0] *= 0.01;
    corner.next[1] *= 0.01;
    corner.ip.size1 = corner.ip.size3 = 80.0;
    corner.ip.size2 = 100.0;
    Calelm a1{};
    Calelm r{};
    Calelm a2{};
    EXPECT_EQ(ali_IPsetARA(corner.previous, &corner.ip, corner.next, &a1, &r, &a2), 0);
    EXPECT_GT(corner.ip.tangent2, 5.0);
}

// ---- ali_IPsetARARA ----

bool two_arc_bend(Random& random, bool sharpens, Bend& b) {
    const double dir = random.sign();
    const double small = random.radius();
    const double large = small * random.uniform(1.2, 4.0);
    const double radius1 = sharpens ? large : small;
    const double radius2 = sharpens ? small : large;
    const double a1 = random.parameter(radius1);
    const double a2 = random.parameter(small);
    const double a3 = random.parameter(radius2);
    b.ip = AliIpCurve{};
    const bool found = bend(random,
                            {clothoid(dir, a1, 0.0, radius1), arc(dir, radius1, radius1 * random.uniform(0.05, 0.7)),
                             clothoid(dir, a2, radius1, radius2),
                             arc(dir, radius2, radius2 * random.uniform(0.05, 0.7)), clothoid(dir, a3, radius2, 0.0)},
                            b);
    b.ip.size1 = a1;
    b.ip.size2 = radius1;
    b.ip.size3 = a2;
    b.ip.size4 = radius2;
    b.ip.size5 = a3;
    return found && turned_by(b) < 2.9;
}

Outcome two_arcs(Random& random, bool sharpens, bool backwards) {
    Bend b;
    while (!two_arc_bend(random, sharpens, b)) {
    }
    b.ip.kind = backwards ? 8 : 7;
    (backwards ? b.ip.tangent2 : b.ip.tangent1) = backwards ? b.tangent2 : b.tangent1;
    std::vector<Calelm> made(5);
    const int status = ali_IPsetARARA(b.previous, &b.ip, b.next, &made[0], &made[1], &made[2], &made[3], &made[4]);
    // Azimuths run clockwise: a left curve turns by 2 pi less what it turns to the left.
    const double clockwise = b.curve[0].dir < 0.0 ? turned_by(b) : 2.0 * std::numbers::pi - turned_by(b);
    return judge_entry(b, judge(status, made, b.curve, kJointTolerance), clockwise);
}

TEST(IPsetARARA, FindsTheCurveOfTwoArcsFromTheTangentLengthBeforeTheIp) {
    sweep(5340, [](Random& random) { return two_arcs(random, true, false); });
    sweep(5341, [](Random& random) { return two_arcs(random, false, false); });
}

TEST(IPsetARARA, Kind8FindsItFromTheTangentLengthBehindTheIp) {
    sweep(5342, [](Random& random) { return two_arcs(random, true, true); });
    sweep(5343, [](Random& random) { return two_arcs(random, false, true); });
}

TEST(IPsetARARA, RefusesEqualRadiiSinceTheMiddleClothoidHasNothingToJoin) {
    Random random(5344);
    Bend b;
    while (!two_arc_bend(random, true, b)) {
    }
    b.ip.size4 = b.ip.size2;
    b.ip.tangent1 = b.tangent1;
    std::vector<Calelm> made(5);
    const Calelm before{};
    const AliIpCurve entry = b.ip;
    EXPECT_EQ(static_cast<int16_t>(
                  ali_IPsetARARA(b.previous, &b.ip, b.next, &made[0], &made[1], &made[2], &made[3], &made[4])),
              -1);
    for (const Calelm& e : made) {
        EXPECT_TRUE(identical(e, before));
    }
    EXPECT_EQ(b.ip.tangent2, entry.tangent2);
    EXPECT_EQ(b.ip.angle, entry.angle);
}

TEST(IPsetARARA, RefusesATangentLengthWithTheSecondLegOutOfReach) {
    Random random(5345);
    Bend b;
    while (!two_arc_bend(random, true, b)) {
    }
    std::vector<Calelm> made(5);
    for (const double share : {0.0, 5.0}) {
        b.ip.tangent1 = share * b.tangent1;
        EXPECT_NE(static_cast<int16_t>(
                      ali_IPsetARARA(b.previous, &b.ip, b.next, &made[0], &made[1], &made[2], &made[3], &made[4])),
                  0);
    }
}

} // namespace
