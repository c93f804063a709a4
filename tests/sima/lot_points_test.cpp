// Outlines of lots refer to the points of their file, and are values all the same.
#include "support.h"

#include "sima/records/lot_data.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <utility>
#include <vector>

namespace fenmark::sima {

namespace {

SimaPoint pointOf(std::int32_t number) {
    SimaPoint point;
    point.number = number;
    return point;
}

std::vector<std::int32_t> numbersOf(const LotPoints& points) {
    std::vector<std::int32_t> numbers;
    for (const SimaPoint& point : points) {
        numbers.push_back(point.number);
    }
    return numbers;
}

using Numbers = std::vector<std::int32_t>;

} // namespace

TEST(LotPoints, IsAValue) {
    const LotPoints first{pointOf(1), pointOf(2)};
    LotPoints second = first;
    second[0].number = 7;
    second.push_back(pointOf(3));
    EXPECT_EQ(numbersOf(first), (Numbers{1, 2}));
    EXPECT_EQ(numbersOf(second), (Numbers{7, 2, 3}));
    second.resize(1);
    EXPECT_EQ(numbersOf(second), (Numbers{7}));
    second.clear();
    EXPECT_TRUE(second.empty());
    second.push_back(pointOf(9));
    EXPECT_EQ(numbersOf(second), (Numbers{9}));
    EXPECT_EQ(first.size(), 2U);
}

TEST(LotPoints, RefusesAnIndexOutsideIt) {
    LotPoints points{pointOf(1)};
    EXPECT_THROW(points[1], std::invalid_argument);
    EXPECT_THROW((void)std::as_const(points)[1], std::invalid_argument);
    EXPECT_THROW((void)LotPoints()[0], std::invalid_argument);
}

TEST(LotPoints, OfAFileStayWhileItGoesOn) {
    const test::Pass pass = test::readAfterPoints({"D00,1,L,1,", "B01,3,,", "B01,1,,", "D99,", "A00,", "A01,40,P,1,2,,",
                                                   "A99,", "D00,2,L,1,", "B01,40,,", "D99,", "D00,3,L,1,", "D99,"});
    const auto& lots = pass.reader.lots;
    ASSERT_EQ(lots.size(), 3U);
    EXPECT_EQ(numbersOf(lots[0].points), (Numbers{3, 1}));
    EXPECT_EQ(&lots[0].points[0], &pass.reader.points[2]) << "no copy of the point";
    EXPECT_EQ(numbersOf(lots[1].points), (Numbers{40}));
    EXPECT_TRUE(lots[2].points.empty());
}

TEST(LotPoints, ChangeInOneLotAlone) {
    const test::Pass pass = test::readAfterPoints({"D00,1,L,1,", "B01,1,,", "B01,2,,", "D99,"});
    LotData lot = pass.reader.lots[0];
    lot.points[1].number = 50;
    EXPECT_EQ(numbersOf(lot.points), (Numbers{1, 50}));
    EXPECT_EQ(numbersOf(pass.reader.lots[0].points), (Numbers{1, 2}));
    EXPECT_EQ(pass.reader.points[1].number, 2);
}

TEST(LotPoints, OutliveTheReader) {
    LotData lot;
    {
        const test::Pass pass = test::readAfterPoints({"D00,1,L,1,", "B01,2,,", "D99,"});
        lot = pass.reader.lots[0];
    }
    EXPECT_EQ(numbersOf(lot.points), (Numbers{2}));
}

// An abandoned lot leaves nothing to the next one.
TEST(LotPoints, BeginAnewWithEachLot) {
    const test::Pass pass =
        test::readAfterPoints({"D00,1,L,1,", "B01,1,,", "B01,99,,", "D99,", "D00,2,L,1,", "B01,2,,", "D99,"});
    ASSERT_EQ(pass.reader.lots.size(), 1U);
    EXPECT_EQ(numbersOf(pass.reader.lots[0].points), (Numbers{2}));
}

TEST(LargeAllocator, GivesMemoryOfAnySize) {
    for (const std::size_t count : {std::size_t{0}, std::size_t{1}, kLargePage / 8, kLargePage / 8 + 1, kLargePage}) {
        std::vector<double, LargeAllocator<double>> values(count, 1.5);
        values.push_back(2.5);
        EXPECT_EQ(values.front(), count > 0 ? 1.5 : 2.5);
        EXPECT_EQ(values.back(), 2.5);
    }
    for (const std::size_t tooMany : {SIZE_MAX / 4, SIZE_MAX / sizeof(double)}) {
        EXPECT_THROW((void)LargeAllocator<double>().allocate(tooMany), std::bad_alloc);
    }
}

} // namespace fenmark::sima
