// The model's records as values.
#include "support.h"

#include "sima/records/shared_array.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace fenmark::sima {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

SimaPoint pointOf(std::int32_t number, std::string name) {
    SimaPoint point;
    point.number = number;
    point.name = std::move(name);
    return point;
}

} // namespace

TEST(EntityData, ConvertsItsTexts) {
    EntityData element;
    element.startX = "1.500000000000";
    element.startY = "-2";
    element.startZ = 3.0;
    element.endX = "";
    element.endY = "x";
    element.editCurve().radius = "-140.5";
    EXPECT_EQ(element.startPoint(), (host::MdGePoint3d{1.5, -2.0, 3.0}));
    EXPECT_EQ(element.endPoint(), (host::MdGePoint3d{0.0, 0.0, 0.0}));
    EXPECT_EQ(element.absRadius(), 140.5);
}

TEST(EntityData, HasNoClothoidLengthWithoutRadii) {
    EntityData element;
    element.editCurve().parameterA = "100";
    EXPECT_EQ(element.clothoidLength(), 0.0);
    element.editCurve().startRadius = "0";
    element.editCurve().endRadius = "0";
    EXPECT_EQ(element.clothoidLength(), 0.0);
}

TEST(EntityData, TakesClothoidLengthsFromBothRadiiWithoutTheirSigns) {
    EntityData element;
    element.editCurve().parameterA = "-60";
    element.editCurve().startRadius = "0";
    element.editCurve().endRadius = "-200";
    EXPECT_EQ(element.clothoidLength(), 18.0);
    element.editCurve().startRadius = "-100";
    EXPECT_EQ(element.clothoidLength(), 18.0);
    std::swap(element.editCurve().startRadius, element.editCurve().endRadius);
    EXPECT_EQ(element.clothoidLength(), 18.0);
}

TEST(EntityData, TellsInfiniteRadiiFromAbsoluteOnes) {
    EntityData element;
    element.editCurve().startRadius = "0";
    element.editCurve().endRadius = "-50";
    EXPECT_EQ(element.absStartRadius(), 0.0);
    EXPECT_EQ(element.curvatureStartRadius(), kInfinity);
    EXPECT_EQ(element.absEndRadius(), 50.0);
    EXPECT_EQ(element.curvatureEndRadius(), 50.0);
}

TEST(EntityData, TurnsRightUnlessItsDirectionIsL) {
    EntityData element;
    EXPECT_EQ(element.directionSign(), -1.0);
    EXPECT_EQ(element.directionFlag(), 0);
    element.direction = "R";
    EXPECT_EQ(element.directionSign(), -1.0);
    EXPECT_EQ(element.directionFlag(), 0);
    element.direction = "L";
    EXPECT_EQ(element.directionSign(), 1.0);
    EXPECT_EQ(element.directionFlag(), -1);
}

TEST(ImportOptions, BeginWithAllOffAndTheirLabels) {
    const SimaImportOptions options;
    EXPECT_FALSE(options.anySelected());
    EXPECT_EQ(options.totalCount(), 0);
    EXPECT_EQ(options.labels, (std::array<std::string, kImportLabels>{
                                  "座標データ ", "画地データ ", "縦断成果データ ", "横断成果データ ", "路線成果-IP線 ",
                                  "路線成果-主要線  ", "路線成果-中心線 ", "路線成果-幅杭線左 ", "路線成果-幅杭線右 ",
                                  "路線成果-連続線(直線のみ)　", "路線成果-連続線(曲線含み) ", "全て "}));
}

TEST(ImportOptions, AddUpTheFirstElevenCounts) {
    SimaImportOptions options;
    for (std::int32_t i = 0; i < 12; ++i) {
        options.counts[static_cast<std::size_t>(i)] = 1 << i;
    }
    EXPECT_EQ(options.totalCount(), (1 << 11) - 1);
    options.flags[10] = true;
    EXPECT_TRUE(options.anySelected());
    EXPECT_TRUE(options.flag(ImportKind::ContinuousCurves));
    EXPECT_FALSE(options.flag(ImportKind::Coordinates));
}

TEST(Array, RefusesAnIndexOutsideIt) {
    Array<int> array{1, 2};
    EXPECT_EQ(array[1], 2);
    EXPECT_THROW(array[2], std::invalid_argument);
    EXPECT_THROW((void)std::as_const(array)[2], std::invalid_argument);
    const SharedArray<int> none;
    EXPECT_THROW((void)none[0], std::invalid_argument);
    EXPECT_THROW((void)none.back(), std::invalid_argument);
    EXPECT_THROW((void)PointTable()[0], std::invalid_argument);
}

TEST(SharedArray, IsAValue) {
    SharedArray<std::string> first{"a", "b"};
    SharedArray<std::string> second = first;
    EXPECT_EQ(&first[0], &second[0]) << "copies share their elements";
    second.edit(0) = "x";
    second.push_back("c");
    EXPECT_EQ(first.all(), (Array<std::string>{"a", "b"}));
    EXPECT_EQ(second.all(), (Array<std::string>{"x", "b", "c"}));
    first.clear();
    EXPECT_TRUE(first.empty());
    EXPECT_EQ(second.size(), 3U);
}

TEST(PointTable, FindsTheFirstPointOfANumber) {
    PointTable table;
    EXPECT_EQ(table.find(0), nullptr);
    table.append(pointOf(7, "a"));
    table.append(pointOf(-3, "b"));
    table.append(pointOf(7, "c"));
    EXPECT_EQ(table.find(7)->name, "a");
    EXPECT_EQ(table.find(-3)->name, "b");
    EXPECT_EQ(table.find(8), nullptr);
    EXPECT_TRUE(table.hasFrom(2, 7));
    EXPECT_FALSE(table.hasFrom(2, -3));
    EXPECT_FALSE(table.hasFrom(0, 8));
}

TEST(PointTable, KeepsACopyAsItStood) {
    PointTable table;
    table.append(pointOf(1, "a"));
    PointTable copy = table;
    table.append(pointOf(2, "b"));
    EXPECT_EQ(copy.size(), 1U);
    EXPECT_EQ(copy.all().size(), 1U);
    EXPECT_EQ(copy.find(2), nullptr);
    EXPECT_THROW((void)copy[1], std::invalid_argument);
    copy.append(pointOf(2, "c"));
    copy.append(pointOf(3, "d"));
    EXPECT_EQ(table.size(), 2U);
    EXPECT_EQ(table.find(2)->name, "b");
    EXPECT_EQ(table.find(3), nullptr);
    EXPECT_EQ(copy.find(2)->name, "c");
    EXPECT_EQ(copy.find(1)->name, "a");
    table.clear();
    EXPECT_TRUE(table.empty());
    EXPECT_EQ(table.find(1), nullptr);
    EXPECT_EQ(copy.size(), 3U);
}

TEST(PointTable, FindsEveryNumberAmongNumbersOfAnyPattern) {
    constexpr unsigned kSeed = 11;
    SCOPED_TRACE("seed " + std::to_string(kSeed));
    std::mt19937 random(kSeed);
    for (int pattern = 0; pattern < 5; ++pattern) {
        PointTable table;
        std::vector<std::int32_t> numbers;
        for (std::int32_t i = 0; i < 5000; ++i) {
            const std::int32_t patterns[] = {i, -i, i * 16, i * 65536, static_cast<std::int32_t>(random())};
            numbers.push_back(patterns[pattern]);
            table.append(pointOf(numbers.back(), std::to_string(i)));
        }
        for (const std::int32_t number : numbers) {
            ASSERT_NE(table.find(number), nullptr);
            EXPECT_EQ(table.find(number)->number, number);
        }
    }
}

// Numbers that first stand apart are found again among those that come to stand beside them.
TEST(PointTable, KeepsTheFirstPointOfANumberWhileItGrows) {
    constexpr std::int32_t kApart = 1100; // where the numbers that stand apart begin
    for (const std::int32_t apart : {1, 31, 32, 33, 200}) {
        PointTable table;
        std::vector<std::int32_t> numbers;
        for (std::int32_t i = 0; i < apart; ++i) {
            numbers.push_back(kApart + 7 * i);
            if (apart > 1) { // a single one is alone
                numbers.push_back(-1 - i);
                numbers.push_back(1000000000 + i);
            }
        }
        for (std::int32_t i = 0; i < 6000; ++i) {
            numbers.push_back(i);
        }
        for (const std::int32_t number : numbers) {
            table.append(pointOf(number, "first of " + std::to_string(number)));
        }
        for (const std::int32_t number : numbers) {
            table.append(pointOf(number, "again"));
        }
        for (std::int32_t i = 0; i < apart; ++i) {
            const std::int32_t beside = kApart + 7 * i; // of which the second stands among the rest, too
            ASSERT_NE(table.find(beside), nullptr) << apart;
            EXPECT_EQ(table.find(beside), &table[static_cast<std::size_t>(apart > 1 ? 3 * i : i)])
                << apart << ' ' << beside;
        }
        for (const std::int32_t number : numbers) {
            ASSERT_NE(table.find(number), nullptr) << apart;
            EXPECT_EQ(table.find(number)->name, "first of " + std::to_string(number)) << apart;
        }
        EXPECT_EQ(table.find(6000), nullptr);
        EXPECT_EQ(table.find(-1 - apart), nullptr);
    }
}

TEST(SimaReader, IsCopiedWithoutCopyingItsModel) {
    const test::Pass pass = test::readAfterPoints({"D00,1,L,1,", "B01,1,,", "D99,", "F00,1,1,R,3,", "B01,1,,", "F99,"});
    SimaReader copy = pass.reader;
    EXPECT_EQ(&copy.points[0], &pass.reader.points[0]);
    EXPECT_EQ(&copy.lots[0], &pass.reader.lots[0]);
    EXPECT_EQ(&copy.alignments[0], &pass.reader.alignments[0]);
    copy.reset();
    EXPECT_EQ(pass.reader.points.size(), 3U);
    EXPECT_EQ(pass.reader.lots.size(), 1U);
    EXPECT_EQ(pass.reader.log.lines().size(), 9U);
}

} // namespace fenmark::sima
