// The C interface: hostile values for every function, statuses, and the header in C.
#include "c_program.h"
#include "support_curve.h"

#include "fenmark/curve.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <limits>
#include <utility>

namespace fenmark::curve_test {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

const std::array<double, 24> kHostile = {0.0,    -0.0,  1.0,    -1.0,   1e-300, -1e-300,   5e-324,     1e300,
                                         -1e300, 1e308, -1e308, 1e154,  -1e154, 1e-154,    1e15,       -1e15,
                                         1e-15,  3.14,  100.0,  -250.0, 1e9,    kInfinity, -kInfinity, kNan};

class Hostile {
  public:
    explicit Hostile(unsigned seed) : random_(seed) {}
    double value() {
        // Mostly ordinary values, so that the strange ones are met one or two at a time.
        return random_.pick(3) == 0
                   ? kHostile[static_cast<std::size_t>(random_.pick(static_cast<int>(kHostile.size())))]
                   : random_.uniform(-200.0, 200.0);
    }
    FmkPoint point() { return {value(), value()}; }
    FmkPose pose() { return {point(), value()}; }
    FmkCurve curve() {
        return {pose(), std::abs(value()), value() * (random_.pick(2) == 0 ? 1.0 : 1e-3), value() * 1e-2};
    }
    int below(int count) { return random_.pick(count); }

  private:
    RandomCurves random_;
};

// Every double of a result is finite.
template <typename Record>
void expectFinite(const Record& record, const char* what, int i) {
    static_assert(sizeof(Record) % sizeof(double) == 0);
    std::array<double, sizeof(Record) / sizeof(double)> values;
    std::memcpy(values.data(), &record, sizeof record);
    for (const double value : values) {
        ASSERT_TRUE(std::isfinite(value)) << what << " case " << i;
    }
}

} // namespace

TEST(CInterface, HostileValuesEndInAStatusOrAFiniteAnswer) {
    Hostile hostile(31);
    int answered = 0;
    for (int i = 0; i < cases(2000); ++i) {
        const FmkCurve curve = hostile.curve();
        const FmkCurve second = hostile.curve();
        const double a = hostile.value();
        const double b = hostile.value();
        const FmkPoint point = hostile.point();
        FmkPose pose{};
        if (fmk_curvePose(&curve, a, &pose) == FMK_OK) {
            expectFinite(pose, "pose", i);
            ++answered;
        }
        const double along[2] = {a, b};
        FmkPose poses[2] = {};
        if (fmk_curvePoses(&curve, along, 2, poses) == FMK_OK) {
            expectFinite(poses[1], "poses", i);
        }
        double number = 0.0;
        if (fmk_curveCurvature(&curve, a, &number) == FMK_OK) {
            ASSERT_TRUE(std::isfinite(number));
        }
        if (fmk_curveParallelPose(&curve, a, b, &pose) == FMK_OK) {
            expectFinite(pose, "parallel pose", i);
        }
        if (fmk_wrapAzimuth(a, &number) == FMK_OK) {
            ASSERT_GE(number, 0.0);
            ASSERT_LT(number, kTwoPi);
        }
        FmkCurve out{};
        FmkCurve other{};
        const FmkPose axis = hostile.pose();
        for (const int status :
             {fmk_curvePart(&curve, a, b, &out), fmk_curveReversed(&curve, &out),
              fmk_curveMirroredAboutChord(&curve, &out), fmk_curveMirroredAboutAxis(&curve, &axis, &out),
              fmk_curveMoved(&curve, &point, a, &axis.point, &out), fmk_curveParallel(&curve, a, &out),
              fmk_curveSplit(&curve, a, &out, &other)}) {
            ASSERT_LE(status, FMK_OK);
            expectFinite(out, "copy", i);
            expectFinite(other, "copy", i);
        }
        FmkBox box{};
        if (fmk_curveBox(&curve, &box) == FMK_OK) {
            expectFinite(box, "box", i);
            ASSERT_LE(box.minX, box.maxX);
        }
        FmkPoint line[50];
        double lengths[50];
        std::size_t count = 0;
        double error = 0.0;
        if (fmk_curveLine(&curve, std::abs(a), i % 2 == 0 ? 0.0 : b, line, lengths, 50, &count, &error) >= FMK_OK) {
            ASSERT_GE(count, 2u);
            for (std::size_t k = 0; k < count; ++k) {
                expectFinite(line[k], "line", i);
            }
        }
        FmkFoot foot{};
        if (fmk_curveNearest(&curve, &point, &foot) == FMK_OK) {
            ASSERT_TRUE(std::isfinite(foot.along) && std::isfinite(foot.offset) && std::isfinite(foot.point.x)) << i;
        }
        FmkFoot feet[10];
        if (fmk_curveFeet(&curve, &point, feet, 10, &count) >= FMK_OK) {
            ASSERT_LE(count, 10u);
            for (std::size_t k = 0; k < count; ++k) {
                ASSERT_TRUE(std::isfinite(feet[k].along) && std::isfinite(feet[k].offset));
            }
        }
        if (i % 10 == 0) {
            FmkCrossing found[10];
            int overlap = 0;
            if (fmk_curveCrossings(&curve, &second, 1e-9, found, 10, &count, &overlap) >= FMK_OK) {
                ASSERT_LE(count, 10u);
                for (std::size_t k = 0; k < count; ++k) {
                    ASSERT_TRUE(std::isfinite(found[k].point.x) && std::isfinite(found[k].angle));
                }
            }
        }
        const FmkPose to = hostile.pose();
        if (fmk_fitG1(&axis, &to, &out) == FMK_OK) {
            expectFinite(out, "G1", i);
        }
        FmkCurve three[3] = {};
        if (i % 10 == 0 && fmk_fitG2(&axis, a, &to, b, three) == FMK_OK) {
            expectFinite(three[0], "G2", i);
            expectFinite(three[2], "G2", i);
        }
        const FmkIp ip{point, std::abs(a), std::abs(b), std::abs(hostile.value())};
        FmkIpCurve laid{};
        fmk_curveAtIp(&axis.point, &ip, &to.point, &laid);
        ASSERT_LE(laid.count, 3u);
        for (std::size_t k = 0; k < laid.count; ++k) {
            expectFinite(laid.curves[k], "IP", i);
        }
        if (i % 10 == 0) {
            fmk_curveThrough(&axis.point, &point, &to.point, &second.start.point, std::abs(a), 0.0, &laid);
            for (std::size_t k = 0; k < laid.count; ++k) {
                expectFinite(laid.curves[k], "through", i);
            }
        }
        const FmkIp points[3] = {{axis.point, 0.0, 0.0, 0.0}, ip, {to.point, 0.0, 0.0, 0.0}};
        FmkCurve curves[12] = {};
        FmkIpCurve one[1];
        if (fmk_curvesByIps(points, 3, one, curves, 12, &count) == FMK_OK) {
            for (std::size_t k = 0; k < count; ++k) {
                expectFinite(curves[k], "IPs", i);
            }
        }
    }
    EXPECT_GT(answered, cases(2000) / 20);
}

TEST(CInterface, SaysWhatIsWrong) {
    const FmkCurve good{{{0.0, 0.0}, 0.0}, 10.0, 0.0, 0.01};
    FmkCurve bad = good;
    FmkPose pose{};
    EXPECT_EQ(fmk_curvePose(nullptr, 1.0, &pose), FMK_NO_POINTER);
    EXPECT_EQ(fmk_curvePose(&good, 1.0, nullptr), FMK_NO_POINTER);
    EXPECT_EQ(fmk_curvePose(&good, kNan, &pose), FMK_NOT_FINITE);
    bad.startCurvature = kInfinity;
    EXPECT_EQ(fmk_curvePose(&bad, 1.0, &pose), FMK_NOT_FINITE);
    bad = good;
    bad.length = -1.0;
    EXPECT_EQ(fmk_curvePose(&bad, 1.0, &pose), FMK_BAD_VALUE);
    bad.length = 1e308;
    bad.endCurvature = 1e300;
    EXPECT_EQ(fmk_curvePose(&bad, 1.0, &pose), FMK_TOO_LARGE);
    EXPECT_EQ(fmk_curvePose(&good, 5.0, &pose), FMK_OK);
    FmkCurve curve{};
    const FmkPose here{{1.0, 1.0}, 0.0};
    EXPECT_EQ(fmk_fitG1(&here, &here, &curve), FMK_BAD_VALUE);
    FmkCrossing found[1];
    std::size_t count = 0;
    EXPECT_EQ(fmk_curveCrossings(&good, &good, 0.0, found, 1, &count, nullptr), FMK_BAD_VALUE);
    EXPECT_EQ(fmk_curveCrossings(&good, &good, 1e-9, found, 1, &count, nullptr), FMK_INCOMPLETE);
    FmkPoint line[2];
    EXPECT_EQ(fmk_curveLine(&good, 1e-9, 0.0, line, nullptr, 2, &count, nullptr), FMK_COARSER);
    for (int status = FMK_OUT_OF_MEMORY; status <= FMK_INCOMPLETE; ++status) {
        EXPECT_STRNE(fmk_statusText(status), "unknown status") << status;
    }
    EXPECT_STREQ(fmk_statusText(77), "unknown status");
}

TEST(CInterface, RecordsHaveTheSameLayoutInC) {
    EXPECT_EQ(c_size_of_curve(), sizeof(FmkCurve));
    EXPECT_EQ(c_size_of_ip_curve(), sizeof(FmkIpCurve));
    EXPECT_EQ(c_size_of_crossing(), sizeof(FmkCrossing));
    EXPECT_NEAR(c_end_of_quarter_circle(), 100.0, 1e-12);
}

TEST(CInterface, FlagsAreOneOrZero) {
    const FmkCurve straight{{{0.0, 0.0}, 0.0}, 100.0, 0.0, 0.0};
    const std::pair<FmkPoint, int> places[] = {{{50.0, 7.0}, 1}, {{-1.0, 7.0}, 0}, {{101.0, 7.0}, 0}};
    for (const auto& [point, perpendicular] : places) {
        FmkFoot foot{};
        foot.perpendicular = 7;
        ASSERT_EQ(fmk_curveNearest(&straight, &point, &foot), FMK_OK);
        EXPECT_EQ(foot.perpendicular, perpendicular) << point.x;
    }
    const std::pair<FmkCurve, int> others[] = {
        {{{{50.0, -20.0}, kTwoPi / 4}, 40.0, 0.0, 0.0}, 0},   // across
        {{{{40.0, 10.0}, -kTwoPi / 4}, 31.0, 0.1, 0.1}, 1},   // touches from the right
        {{{{40.0, -10.0}, kTwoPi / 4}, 31.0, -0.1, -0.1}, 1}, // from the left
    };
    for (const auto& [other, tangent] : others) {
        FmkCrossing found[4] = {};
        found[0].tangent = 7;
        std::size_t count = 0;
        int overlap = 7;
        ASSERT_EQ(fmk_curveCrossings(&straight, &other, 1e-9, found, 4, &count, &overlap), FMK_OK);
        ASSERT_EQ(count, 1U) << other.start.point.x;
        EXPECT_EQ(found[0].tangent, tangent) << other.start.point.x;
        EXPECT_EQ(overlap, 0);
    }
}

TEST(CInterface, ManyPosesAreThoseOfEach) {
    const FmkCurve curve{{{5.0, 7.0}, 0.4}, 80.0, 0.0, 0.01};
    const double along[] = {0.0, 13.0, 79.0, 90.0};
    FmkPose poses[4] = {};
    ASSERT_EQ(fmk_curvePoses(&curve, along, 4, poses), FMK_OK);
    for (std::size_t i = 0; i < 4; ++i) {
        FmkPose one{};
        ASSERT_EQ(fmk_curvePose(&curve, along[i], &one), FMK_OK);
        EXPECT_NEAR(poses[i].point.x, one.point.x, 1e-9) << i;
        EXPECT_NEAR(poses[i].point.y, one.point.y, 1e-9) << i;
        EXPECT_NEAR(poses[i].azimuth, one.azimuth, 1e-12) << i;
    }
}

TEST(CInterface, CrossingsComeInTheOrderOfTheFirstCurve) {
    const FmkCurve straight{{{-20.0, 3.0}, 0.0}, 40.0, 0.0, 0.0};
    for (const double turn : {1.0, -1.0}) { // a circle round the origin, run through either way
        const FmkCurve circle{{{0.0, -10.0 * turn}, 0.0}, 62.0, 0.1 * turn, 0.1 * turn};
        FmkCrossing found[4] = {};
        std::size_t count = 0;
        ASSERT_EQ(fmk_curveCrossings(&straight, &circle, 1e-9, found, 4, &count, nullptr), FMK_OK);
        ASSERT_EQ(count, 2U);
        EXPECT_LT(found[0].alongFirst, found[1].alongFirst) << turn;
        ASSERT_EQ(fmk_curveCrossings(&circle, &straight, 1e-9, found, 4, &count, nullptr), FMK_OK);
        ASSERT_EQ(count, 2U);
        EXPECT_LT(found[0].alongFirst, found[1].alongFirst) << turn;
    }
}

TEST(CInterface, ACurveIsSplitAnywhere) {
    const FmkCurve curve{{{5.0, 7.0}, 0.4}, 80.0, 0.0, 0.01};
    for (const double along : {0.0, 0.001, 0.05, 0.5, 40.0, 79.999, 80.0}) {
        FmkCurve first{};
        FmkCurve second{};
        ASSERT_EQ(fmk_curveSplit(&curve, along, &first, &second), FMK_OK) << along;
        EXPECT_NEAR(first.length, along, 1e-12);
        EXPECT_NEAR(second.length, 80.0 - along, 1e-12);
    }
}

TEST(CInterface, OfMoreFeetThanThereIsRoomForThoseAboutTheNearestAreWritten) {
    const FmkCurve curves[] = {{{{0.0, 0.0}, 0.0}, 600.0, -0.03, 0.03}, {{{0.0, 0.0}, 0.0}, 1600.0, 0.02, 0.03}};
    for (const FmkCurve& curve : curves) {
        FmkFoot all[32] = {};
        std::size_t whole = 0;
        const FmkPoint point{2.0, 70.0};
        ASSERT_EQ(fmk_curveFeet(&curve, &point, all, 32, &whole), FMK_OK);
        ASSERT_GE(whole, 4u);
        FmkFoot nearest{};
        ASSERT_EQ(fmk_curveNearest(&curve, &point, &nearest), FMK_OK);
        for (std::size_t room = 0; room <= whole + 1; ++room) {
            FmkFoot feet[33] = {};
            feet[room].along = -7.0;
            std::size_t count = 77;
            EXPECT_EQ(fmk_curveFeet(&curve, &point, feet, room, &count), room < whole ? FMK_INCOMPLETE : FMK_OK)
                << room;
            ASSERT_EQ(count, std::min(room, whole));
            EXPECT_EQ(feet[room].along, -7.0) << "nothing is written behind the room";
            EXPECT_TRUE(count == 0 ||
                        std::any_of(feet, feet + count,
                                    [&](const FmkFoot& foot) { return std::abs(foot.along - nearest.along) < 1e-6; }))
                << room;
        }
    }
}

TEST(CInterface, AFootHasThePlaceOnTheCurve) {
    for (const auto& [first, last] : {std::pair(0.0, 0.01), std::pair(0.0, 0.0), std::pair(0.01, 0.01)}) {
        const FmkCurve curve{{{5.0, 7.0}, 0.4}, 80.0, first, last};
        const FmkPoint point{60.0, 20.0};
        FmkFoot nearest{};
        FmkFoot feet[4] = {};
        std::size_t count = 0;
        ASSERT_EQ(fmk_curveNearest(&curve, &point, &nearest), FMK_OK);
        ASSERT_EQ(fmk_curveFeet(&curve, &point, feet, 1, &count), FMK_OK) << "that one is all";
        ASSERT_EQ(count, 1u);
        for (const FmkFoot& foot : {nearest, feet[0]}) {
            FmkPose there{};
            ASSERT_EQ(fmk_curvePose(&curve, foot.along, &there), FMK_OK);
            EXPECT_NEAR(foot.point.x, there.point.x, 1e-9);
            EXPECT_NEAR(foot.point.y, there.point.y, 1e-9);
            EXPECT_NEAR(std::hypot(point.x - foot.point.x, point.y - foot.point.y), std::abs(foot.offset), 1e-9);
        }
        EXPECT_EQ(fmk_curveFeet(&curve, &point, feet, 0, &count), FMK_INCOMPLETE);
        EXPECT_EQ(count, 0u);
    }
}

TEST(CInterface, EqualResultsAreEqualByteByByte) {
    const FmkCurve curve{{{5.0, 7.0}, 0.4}, 80.0, 0.0, 0.01};
    const FmkCurve line{{{42.0, 0.0}, 1.57}, 80.0, 0.0, 0.0};
    const FmkPoint point{30.0, 30.0};
    FmkFoot feet[2];
    FmkCrossing crossings[2];
    FmkIpCurve laid[2];
    std::memset(feet, 0x55, sizeof feet[0]);
    std::memset(&feet[1], 0xaa, sizeof feet[1]);
    std::memset(crossings, 0x55, sizeof crossings[0]);
    std::memset(&crossings[1], 0xaa, sizeof crossings[1]);
    std::memset(laid, 0x55, sizeof laid[0]);
    std::memset(&laid[1], 0xaa, sizeof laid[1]);
    for (int i = 0; i < 2; ++i) {
        std::size_t count = 0;
        const FmkIp ip{{100.0, 0.0}, 50.0, 30.0, 0.0};
        const FmkPoint before{0.0, 0.0};
        const FmkPoint after{150.0, 120.0};
        ASSERT_EQ(fmk_curveNearest(&curve, &point, &feet[i]), FMK_OK);
        ASSERT_EQ(fmk_curveCrossings(&curve, &line, 1e-9, &crossings[i], 1, &count, nullptr), FMK_OK);
        ASSERT_EQ(count, 1u);
        ASSERT_EQ(fmk_curveAtIp(&before, &ip, &after, &laid[i]), FMK_OK);
    }
    EXPECT_EQ(std::memcmp(&feet[0], &feet[1], sizeof feet[0]), 0);
    // A caller's own record, all bytes 0 but for the fields, is equal too.
    FmkFoot own;
    std::memset(&own, 0, sizeof own);
    own.along = feet[0].along;
    own.point.x = feet[0].point.x;
    own.point.y = feet[0].point.y;
    own.offset = feet[0].offset;
    own.perpendicular = feet[0].perpendicular;
    EXPECT_EQ(std::memcmp(&feet[0], &own, sizeof own), 0);
    EXPECT_EQ(std::memcmp(&crossings[0], &crossings[1], sizeof crossings[0]), 0);
    EXPECT_EQ(std::memcmp(&laid[0], &laid[1], sizeof laid[0]), 0);
}

} // namespace fenmark::curve_test
