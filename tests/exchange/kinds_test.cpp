// The table of kinds, and what follows from it.
#include "exchange/kinds.h"
#include "sample_drawing.h"

#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <set>
#include <string>
#include <string_view>

namespace fenmark::exchange {
namespace {

struct Row {
    Kind kind;
};

TEST(Kinds, NamesAndTypesTellThemApart) {
    std::set<std::string_view> options;
    std::set<std::string_view> types;
    for (const KindEntry& entry : kKindTable) {
        EXPECT_TRUE(options.insert(entry.option).second) << entry.option;
        EXPECT_EQ(kindNamed(entry.option), entry.kind);
        EXPECT_FALSE(entry.layer.empty()) << entry.option;
        EXPECT_FALSE(entry.nameLayer.empty()) << entry.option;
        const bool hasRow = entry.shape == KindShape::Point || entry.shape == KindShape::Line;
        EXPECT_EQ(!entry.type.empty(), hasRow) << entry.option;
        if (hasRow) {
            EXPECT_TRUE(types.insert(entry.type).second) << entry.type;
            EXPECT_EQ(kindOfType(entry.type), entry.kind);
        }
    }
    EXPECT_EQ(kindNamed("points "), std::nullopt);
    EXPECT_EQ(kindOfType(""), Kind::Others);
    EXPECT_EQ(kindOfType("Type 2"), Kind::Others);
}

// apps/web/page/kinds.js has a line for each kind that the page treats in its own way: `  画地: {`.
TEST(Kinds, OfTheBrowserPageAreThoseOfTheTable) {
    std::ifstream page(FENMARK_SOURCE_DIR "/apps/web/page/kinds.js");
    std::size_t rows = 0;
    for (std::string line; std::getline(page, line);) {
        const std::size_t end = line.find(": {");
        if (!line.starts_with("  ") || end == std::string::npos) {
            continue;
        }
        const std::string type = line.substr(2, end - 2);
        EXPECT_TRUE(type == kAlignmentType || kindOfType(type) != Kind::Others) << type;
        ++rows;
    }
    EXPECT_GE(rows, 5U);
}

TEST(Kinds, APointWithTheTypeOfALineIsDrawnAsOneOfTheOthers) {
    for (const KindEntry& entry : kKindTable) {
        EXPECT_EQ(drawnKind(entry.type, true), entry.shape == KindShape::Point ? entry.kind : Kind::Others);
        EXPECT_EQ(drawnKind(entry.type, false), entry.shape == KindShape::Line ? entry.kind : Kind::Others);
    }
    Drawing drawing;
    drawing.addPoint({1.0, 2.0, 3.0}, 0);
    EXPECT_EQ(drawnKindOf(drawing.entity(0)), Kind::Others) << "without a row";
    drawing.setRow(0, tableNamed(drawing, "JSIMA_V3_Point"), 1, "P", "画地", "a.sim");
    EXPECT_EQ(drawnKindOf(drawing.entity(0)), Kind::Others);
    EXPECT_EQ(kindOf(drawing.entity(0)), Kind::Lots);
}

TEST(Kinds, ATableThatLacksAKindIsNoticed) {
    constexpr std::array<Row, 3> kPoints = {{{Kind::Points}, {Kind::Longitudinal}, {Kind::CrossSections}}};
    constexpr std::array<Row, 2> kTooFew = {{{Kind::Points}, {Kind::Longitudinal}}};
    EXPECT_TRUE(hasEveryKind(kPoints, KindShape::Point));
    EXPECT_FALSE(hasEveryKind(kTooFew, KindShape::Point));
    EXPECT_FALSE(hasEveryKind(kPoints, KindShape::Line));
    EXPECT_FALSE(inOrderOfKinds(kPoints)) << "it ends early";
    std::array<Row, kKinds> all{};
    for (std::size_t i = 0; i < kKinds; ++i) {
        all[i].kind = static_cast<Kind>(i);
    }
    EXPECT_TRUE(inOrderOfKinds(all));
    std::swap(all[1], all[2]);
    EXPECT_FALSE(inOrderOfKinds(all));
}

TEST(Kinds, RouteTypesBelongToLinesAndComeOnce) {
    std::set<std::int32_t> types;
    for (const KindEntry& entry : kKindTable) {
        if (entry.routeType != 0) {
            EXPECT_EQ(entry.shape, KindShape::Line) << entry.option;
            EXPECT_TRUE(types.insert(entry.routeType).second) << entry.option;
        }
    }
    EXPECT_EQ(types, (std::set<std::int32_t>{1, 4, 5, 6})) << "routes of the types 2, 3 and 7 are alignments";
}

} // namespace
} // namespace fenmark::exchange
