// Columns, their orders, and the texts of rows.
#include <stdexcept>

#include <gtest/gtest.h>

#include "ui/treelist/model/block_pool.h"
#include "ui/treelist/model/column_set.h"
#include "ui/treelist/model/row_texts.h"

namespace fenmark::ui::treelist {
namespace {

CTreeListColumnInfo column(int width, std::uint32_t format = kColumnInitialFormat) {
    CTreeListColumnInfo info;
    info.width = width;
    info.format = format;
    return info;
}

TEST(ColumnInfo, DefaultsAreThoseOfANewColumn) {
    const CTreeListColumnInfo info;
    EXPECT_EQ(info.format, 0x104144U);
    EXPECT_EQ(info.modify, 0);
    EXPECT_EQ(info.minimumWidth, 0);
    EXPECT_EQ(info.maximumWidth, 0);
    EXPECT_EQ(info.width, 30);
    EXPECT_EQ(info.image, -1);
    EXPECT_EQ(info.cellAlign(), HorizontalAlign::Left);
    EXPECT_EQ(info.cellVerticalAlign(), VerticalAlign::Center);
    EXPECT_EQ(info.headAlign(), HorizontalAlign::Center);
    EXPECT_EQ(info.headVerticalAlign(), VerticalAlign::Center);
}

TEST(ColumnInfo, FormatBitsGiveTheAlignments) {
    EXPECT_EQ(column(1, 0).cellAlign(), HorizontalAlign::Left);
    EXPECT_EQ(column(1, 0x200).cellAlign(), HorizontalAlign::Right);
    EXPECT_EQ(column(1, 0x400).cellAlign(), HorizontalAlign::Center);
    EXPECT_EQ(column(1, 0x1000).cellVerticalAlign(), VerticalAlign::Top);
    EXPECT_EQ(column(1, 0x2000).cellVerticalAlign(), VerticalAlign::Bottom);
    EXPECT_EQ(column(1, 0).cellVerticalAlign(), VerticalAlign::Center);
    EXPECT_EQ(column(1, 1).headAlign(), HorizontalAlign::Left);
    EXPECT_EQ(column(1, 2).headAlign(), HorizontalAlign::Right);
    EXPECT_EQ(column(1, 0).headAlign(), HorizontalAlign::Center);
    EXPECT_EQ(column(1, 16).headVerticalAlign(), VerticalAlign::Top);
    EXPECT_EQ(column(1, 32).headVerticalAlign(), VerticalAlign::Bottom);
}

TEST(ColumnInfo, WidthsAreKeptBetweenTheLimitsAndAMaximumOfZeroMeansNone) {
    CTreeListColumnInfo info;
    info.minimumWidth = 20;
    EXPECT_EQ(info.clampWidth(5), 20);
    EXPECT_EQ(info.clampWidth(100000), 100000);
    info.maximumWidth = 80;
    EXPECT_EQ(info.clampWidth(100), 80);
    info.minimumWidth = 0;
    EXPECT_EQ(info.clampWidth(-7), 0);
}

TEST(ColumnSet, HiddenColumnsAreInNoShownOrder) {
    ColumnSet columns;
    columns.append(column(10));
    columns.append(column(20, kColumnInitialFormat | kColumnHidden));
    columns.append(column(30));
    EXPECT_EQ(columns.shown(), (std::vector<int>{0, 2}));
    EXPECT_EQ(columns.hidden(), std::vector<int>{1});
    EXPECT_EQ(columns.totalWidth(), 40);
    EXPECT_EQ(columns.left(2), 10);
    EXPECT_EQ(columns.left(1), -1);
    columns.setFormat(0, kColumnInitialFormat | kColumnHidden);
    columns.setFormat(1, kColumnInitialFormat);
    EXPECT_EQ(columns.shown(), (std::vector<int>{2, 1}));
    EXPECT_EQ(columns.treeColumn(), 2);
}

TEST(ColumnSet, ColumnsThatCanSortAndHaveADirectionEnterTheSortedOrder) {
    ColumnSet columns;
    columns.append(column(10, kColumnInitialFormat | kColumnCanSort));
    columns.append(column(10, kColumnInitialFormat | kColumnSortedUp));
    columns.append(column(10, kColumnInitialFormat | kColumnCanSort | kColumnSortedDown));
    EXPECT_EQ(columns.sorted(), std::vector<int>{2});
    columns.setFormat(0, kColumnInitialFormat | kColumnCanSort | kColumnSortedUp);
    EXPECT_EQ(columns.sorted(), (std::vector<int>{2, 0}));
    columns.setFormat(2, kColumnInitialFormat);
    EXPECT_EQ(columns.sorted(), std::vector<int>{0});
}

TEST(ColumnSet, AGivenOrderIsShownAndHidesTheOthers) {
    ColumnSet columns;
    for (int i = 0; i < 3; ++i) {
        columns.append(column(10 * (i + 1)));
    }
    EXPECT_TRUE(columns.setShown({2, 0}));
    EXPECT_TRUE(columns.at(1).isHidden());
    EXPECT_EQ(columns.columnAt(0), 2);
    EXPECT_EQ(columns.columnAt(29), 2);
    EXPECT_EQ(columns.columnAt(30), 0);
    EXPECT_EQ(columns.columnAt(40), -1);
    EXPECT_EQ(columns.columnAt(-1), -1);
    EXPECT_FALSE(columns.setShown({1, 1}));
    EXPECT_EQ(columns.shown(), (std::vector<int>{2, 0}));
    EXPECT_THROW(columns.setShown({0, 3}), std::invalid_argument);
    EXPECT_EQ(columns.shown(), (std::vector<int>{2, 0}));
}

TEST(ColumnSet, RemovingAColumnRenumbersTheOrders) {
    ColumnSet columns;
    for (int i = 0; i < 4; ++i) {
        columns.append(column(10));
    }
    columns.setShown({3, 1, 0, 2});
    columns.remove(1);
    EXPECT_EQ(columns.shown(), (std::vector<int>{2, 0, 1}));
    EXPECT_THROW(columns.remove(3), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(columns.at(-1)), std::invalid_argument);
}

TEST(ColumnSet, PlacingMovesHidesAndBringsBack) {
    ColumnSet columns;
    for (int i = 0; i < 3; ++i) {
        columns.append(column(10));
    }
    columns.place(0, 2);
    EXPECT_EQ(columns.shown(), (std::vector<int>{1, 2, 0}));
    columns.place(1, -1);
    EXPECT_EQ(columns.shown(), (std::vector<int>{2, 0}));
    columns.place(1, 1);
    EXPECT_EQ(columns.shown(), (std::vector<int>{2, 1, 0}));
    EXPECT_FALSE(columns.at(1).isHidden());
}

TEST(RowTexts, CellsAreSetInAnyOrderAndEmptyOnesBehindTheLastTakeNothing) {
    BlockPool pool;
    RowTexts texts;
    EXPECT_EQ(texts.size(), 0U);
    texts.set(pool, 2, "三");
    EXPECT_EQ(texts.size(), 3U);
    texts.set(pool, 0, "one");
    EXPECT_EQ(texts.at(0), "one");
    EXPECT_EQ(texts.at(1), "");
    EXPECT_EQ(texts.at(2), "三");
    texts.set(pool, 2, "");
    EXPECT_EQ(texts.size(), 1U);
    texts.set(pool, 9, "");
    EXPECT_EQ(texts.size(), 1U);
}

TEST(RowTexts, ACellCanTakeThePartOfAnotherCellOfTheSameRow) {
    BlockPool pool;
    RowTexts texts;
    texts.set(pool, 0, "abcdef");
    texts.set(pool, 1, texts.at(0).substr(2, 3));
    EXPECT_EQ(texts.at(0), "abcdef");
    EXPECT_EQ(texts.at(1), "cde");
}

TEST(RowTexts, LongTextsManyColumnsAndNulCharactersAreKept) {
    BlockPool pool;
    RowTexts texts;
    const std::string large(300000, 'x');
    texts.set(pool, 0, large);
    texts.set(pool, 40, std::string_view("a\0b", 3));
    EXPECT_EQ(texts.at(0), large);
    EXPECT_EQ(texts.at(40), std::string_view("a\0b", 3));
    texts.removeColumn(pool, 0);
    EXPECT_EQ(texts.at(39), std::string_view("a\0b", 3));
    const std::vector<std::string> copy = texts.copy();
    texts.clear(pool);
    texts.assign(pool, copy);
    EXPECT_EQ(texts.copy(), copy);
}

TEST(BlockPool, ABlockGivenBackIsTakenAgain) {
    BlockPool pool;
    void* first = pool.take(24);
    pool.give(first, 24);
    EXPECT_EQ(pool.take(20), first) << "both are blocks of 24 bytes";
    EXPECT_EQ(BlockPool::roundUp(1), 8U);
    EXPECT_EQ(BlockPool::roundUp(256), 256U);
    EXPECT_EQ(BlockPool::roundUp(257), 512U);
}

} // namespace
} // namespace fenmark::ui::treelist
