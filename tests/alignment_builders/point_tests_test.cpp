// The small tests and constructions of points, lines and angles.
#include <fenmark/alignment/chains.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace {

constexpr double kCoordinateTolerance = 1e-9; // metres
constexpr double kOneSecond = 4.84813681109536e-6;

std::vector<AliIpEntry> polygon() {
    std::vector<AliIpEntry> list(3);
    list[0].x = -36000.0;
    list[0].y = 12000.0;
    list[1].x = -36100.0;
    list[1].y = 12000.0;
    list[2].x = -36100.0;
    list[2].y = 12200.0;
    return list;
}

TEST(ChkCSameAng, AnglesWithinOneSecondAreTheSameAndAreNotWrapped) {
    EXPECT_EQ(chk_CSameAng(1.0, 1.0 + 0.99 * kOneSecond), 0);
    EXPECT_EQ(chk_CSameAng(1.0, 1.0 - 0.99 * kOneSecond), 0);
    EXPECT_EQ(chk_CSameAng(1.0, 1.0 + 1.01 * kOneSecond), -1);
    EXPECT_EQ(chk_CSameAng(0.0, 6.283185307179586), -1);
    EXPECT_EQ(chk_CSameAng(0.0, std::numeric_limits<double>::quiet_NaN()), -1);
}

static_assert(sizeof(AliIpEntry) == 7 * 8, "an entry is seven slots of 64 bits");

TEST(ChkTangent, TellsTheFirstAndTheLastEntryALineBetweenAndFarOff) {
    const auto list = polygon();
    int index = -5;
    const double at_first[2] = {-36000.0, 12000.0};
    EXPECT_EQ(chk_tangent(3, list.data(), at_first, &index, 0.001), 1);
    EXPECT_EQ(index, 0);
    const double at_last[2] = {-36100.0, 12200.0};
    EXPECT_EQ(chk_tangent(3, list.data(), at_last, &index, 0.001), 2);
    EXPECT_EQ(index, 2);
    const double on_second[2] = {-36100.0005, 12100.0};
    EXPECT_EQ(chk_tangent(3, list.data(), on_second, &index, 0.001), 3);
    EXPECT_EQ(index, 1);
    index = -5;
    const double far_off[2] = {-36050.0, 12050.0};
    EXPECT_EQ(chk_tangent(3, list.data(), far_off, &index, 0.001), 0);
    EXPECT_EQ(index, -5);
}

TEST(ChkTangent, ReachesTheEndsWithinSixTolerancesInEachCoordinate) {
    const auto list = polygon();
    int index = -5;
    const double inside[2] = {-36000.0 + 0.0059, 12000.0 - 0.0059};
    EXPECT_EQ(chk_tangent(3, list.data(), inside, &index, 0.001), 1);
    const double outside[2] = {-36000.0 + 0.0061, 12000.0 - 0.0061};
    EXPECT_EQ(chk_tangent(3, list.data(), outside, &index, 0.001), 0);
}

TEST(ChkTangent, TheLastEntryGoesBeforeTheFirstWhereTheyAreOne) {
    auto list = polygon();
    list[2] = list[0];
    int index = -5;
    const double p[2] = {-36000.0, 12000.0};
    EXPECT_EQ(chk_tangent(3, list.data(), p, &index, 0.001), 2);
    EXPECT_EQ(index, 2);
}

TEST(ChkTangent, AnEmptyListAnswersFarOff) {
    int index = -5;
    const double p[2] = {0.0, 0.0};
    EXPECT_EQ(chk_tangent(0, nullptr, p, &index, 0.001), 0);
    EXPECT_EQ(index, -5);
}

TEST(ChkOnTangent, NeedsTwoEntries) {
    const auto list = polygon();
    int index = -5;
    const double p[2] = {-36000.0, 12000.0};
    EXPECT_EQ(chk_on_tangent(1, list.data(), p, &index, 1.0), -1);
    EXPECT_EQ(chk_on_tangent(0, nullptr, p, &index, 1.0), -1);
    EXPECT_EQ(index, -5);
}

TEST(ChkOnTangent, PassesAPointOnTheLinesContinuation) {
    const auto list = polygon();
    int index = -5;
    const double beyond[2] = {-35000.0, 12000.0};
    EXPECT_EQ(chk_on_tangent(3, list.data(), beyond, &index, 0.001), 0);
    EXPECT_EQ(index, 0);
}

TEST(ChkOnTangent, TheHeightMayBeTheToleranceItself) {
    std::vector<AliIpEntry> list(2);
    list[1].x = 8.0;
    int index = -5;
    const double p[2] = {4.0, 0.5};
    EXPECT_EQ(chk_on_tangent(2, list.data(), p, &index, 0.5), 0);
    EXPECT_EQ(chk_on_tangent(2, list.data(), p, &index, 0.4999999), -1);
}

TEST(ChkOnTangent, EntriesAtOnePointMakeNoLine) {
    std::vector<AliIpEntry> list(3);
    list[2].x = 10.0;
    int index = -5;
    const double p[2] = {5.0, 0.0};
    EXPECT_EQ(chk_on_tangent(3, list.data(), p, &index, 0.001), 0);
    EXPECT_EQ(index, 1);
}

TEST(Cplnrm, ASegmentAlongXGivesTheMeanYHoweverFarThePointIs) {
    const double segment[4] = {0.0, 10.0, 100.0, 10.02};
    double out[2];
    int flag = 0;
    for (const double y : {10.0, 50.0, -5000.0}) {
        const double p[2] = {40.0, y};
        cplnrm(out, p, segment, &flag);
        EXPECT_EQ(out[0], 40.0);
        EXPECT_NEAR(out[1], 10.01, kCoordinateTolerance);
    }
    // Off the ends of the segment the point is written all the same.
    const double beyond[2] = {140.0, 0.0};
    EXPECT_EQ(cplnrm(out, beyond, segment, &flag), -1);
    EXPECT_EQ(flag, -1);
    EXPECT_EQ(out[0], 140.0);
}

TEST(Cplnrm, ASegmentAlongYGivesTheMeanX) {
    const double segment[4] = {10.0, 0.0, 10.0, 100.0};
    double out[2];
    int flag = 0;
    const double p[2] = {-300.0, 40.0};
    EXPECT_EQ(cplnrm(out, p, segment, &flag), 1);
    EXPECT_EQ(flag, 1);
    EXPECT_EQ(out[0], 10.0);
    EXPECT_EQ(out[1], 40.0);
}

TEST(Cplnrm, ASlopingSegmentGivesTheFootOfThePerpendicular) {
    const double segment[4] = {0.0, 0.0, 30.0, 40.0};
    double out[2];
    int flag = 0;
    // 25 along, 10 to the side.
    const double p[2] = {15.0 - 8.0, 20.0 + 6.0};
    EXPECT_EQ(cplnrm(out, p, segment, &flag), 1);
    EXPECT_NEAR(out[0], 15.0, kCoordinateTolerance);
    EXPECT_NEAR(out[1], 20.0, kCoordinateTolerance);
    const double behind[2] = {-3.0, -4.0};
    EXPECT_EQ(cplnrm(out, behind, segment, &flag), -1);
}

TEST(GcIntpSS, CrossesUnboundedLinesAndTellsParallelOnes) {
    const double a[2] = {0.0, 0.0};
    const double b[2] = {1.0, 1.0};
    const double c[2] = {10.0, 0.0};
    const double d[2] = {9.0, 1.0};
    double out[2] = {7.0, 7.0};
    ASSERT_EQ(gc_intpSS(a, b, c, d, out), 0);
    EXPECT_NEAR(out[0], 5.0, kCoordinateTolerance);
    EXPECT_NEAR(out[1], 5.0, kCoordinateTolerance);
    const double parallel[2] = {11.0, 1.0};
    double untouched[2] = {7.0, 7.0};
    EXPECT_EQ(gc_intpSS(a, b, c, parallel, untouched), 1);
    EXPECT_EQ(untouched[0], 7.0);
    // The determinant is that of the spans as they are: below 1e-7 they count as parallel.
    const double hardly[2] = {11.0, 1.0 + 0.9e-7};
    EXPECT_EQ(gc_intpSS(a, b, c, hardly, untouched), 1);
    const double just[2] = {11.0, 1.0 + 1.2e-7};
    EXPECT_EQ(gc_intpSS(a, b, c, just, untouched), 0);
}

TEST(GcPoionl, TestsTheHeightOverTheUnboundedLine) {
    EXPECT_EQ(gc_poionl(50.0, 0.001, 0.0, 0.0, 10.0, 0.0, 0.001), 0);
    EXPECT_EQ(gc_poionl(50.0, 0.0011, 0.0, 0.0, 10.0, 0.0, 0.001), -1);
    EXPECT_EQ(gc_poionl(5.0, 0.0, 5.0, 0.0, 5.0, 0.0, 0.001), -1) << "no line";
}

} // namespace
