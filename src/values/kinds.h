// The kinds of objects that an import makes, and what each is called: the one table that rows, formats, plans, the
// command line and the desktop program take them from.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace fenmark {

enum class Kind : std::uint8_t {
    Points,
    Lots,
    Alignments,
    IpLines,
    LeftStakes,
    RightStakes,
    Continuous,
    Longitudinal,
    CrossSections,
    Others, // without a row, or with a row of another type
};
inline constexpr std::size_t kKinds = static_cast<std::size_t>(Kind::Others) + 1;

enum class KindShape : std::uint8_t { Point, Line, Alignment, Any };

struct KindEntry {
    Kind kind;
    KindShape shape;
    std::int32_t routeType;     // of the route that a line is made of, 1 to 7; 0 for all others
    std::string_view option;    // on the command line
    std::string_view type;      // the row's column "Type"; empty where there is none
    std::string_view layer;     // in a drawing for CAD
    std::string_view nameLayer; // of the names beside the objects
    int colour;                 // of both layers, as DXF numbers it
};

inline constexpr std::array<KindEntry, kKinds> kKindTable = {{
    {Kind::Points, KindShape::Point, 0, "points", "座標", "座標点", "点名", 7},
    {Kind::Lots, KindShape::Line, 0, "lots", "画地", "画地", "画地名", 3},
    {Kind::Alignments, KindShape::Alignment, 0, "alignments", "", "線形", "線形名", 1},
    {Kind::IpLines, KindShape::Line, 1, "ip", "IP線", "IP線", "路線名", 30},
    {Kind::LeftStakes, KindShape::Line, 4, "left-stake", "幅杭線左", "幅杭", "路線名", 4},
    {Kind::RightStakes, KindShape::Line, 5, "right-stake", "幅杭線右", "幅杭", "路線名", 4},
    {Kind::Continuous, KindShape::Line, 6, "continuous", "連続線", "連続線", "路線名", 6},
    {Kind::Longitudinal, KindShape::Point, 0, "longitudinal", "縦断成果", "縦断", "縦断点名", 2},
    {Kind::CrossSections, KindShape::Point, 0, "cross-sections", "横断成果", "横断", "横断点名", 140},
    {Kind::Others, KindShape::Any, 0, "others", "", "その他", "その他名", 7},
}};

// What files call the type of an alignment, which has no row.
inline constexpr std::string_view kAlignmentType = "平面線形";

constexpr const KindEntry& entryOf(Kind kind) {
    return kKindTable[static_cast<std::size_t>(kind)];
}

// What stands in the row's column "Type".
constexpr std::string_view typeOf(Kind kind) {
    return entryOf(kind).type;
}

// The kind of a row's "Type".
constexpr Kind kindOfType(std::string_view type) {
    for (const KindEntry& entry : kKindTable) {
        if (!entry.type.empty() && entry.type == type) {
            return entry.kind;
        }
    }
    return Kind::Others;
}

// How an object with that "Type" is drawn: a point with the type of a line is one of the others, and the other way round.
constexpr Kind drawnKind(std::string_view type, bool isPoint) {
    const Kind kind = kindOfType(type);
    return entryOf(kind).shape == (isPoint ? KindShape::Point : KindShape::Line) ? kind : Kind::Others;
}

// The results of sections, which lie on an alignment.
constexpr bool isResult(Kind kind) {
    return kind == Kind::Longitudinal || kind == Kind::CrossSections;
}

// The lines of width stakes on both sides.
constexpr bool isStakeLine(Kind kind) {
    return kind == Kind::LeftStakes || kind == Kind::RightStakes;
}

// Whether a table that stands beside this one, of styles for example, has a row for each kind of a shape, by the rows'
// member `kind`: for a static_assert that a new kind fails until it has its row.
template <typename Table>
constexpr bool hasEveryKind(const Table& table, KindShape shape) {
    for (const KindEntry& entry : kKindTable) {
        if (entry.shape == shape &&
            std::none_of(std::begin(table), std::end(table), [&](const auto& row) { return row.kind == entry.kind; })) {
            return false;
        }
    }
    return true;
}

// The same for a table with a row for every kind in the order of the enumeration.
template <typename Table>
constexpr bool inOrderOfKinds(const Table& table) {
    for (std::size_t i = 0; i < std::size(table); ++i) {
        if (static_cast<std::size_t>(table[i].kind) != i) {
            return false;
        }
    }
    return std::size(table) == kKinds;
}
static_assert(inOrderOfKinds(kKindTable));

} // namespace fenmark
