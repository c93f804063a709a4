// The kinds of things that a drawing holds, as the exchange formats name, colour and select them.
#pragma once

#include "drawing/drawing.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace fenmark::exchange {

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
inline constexpr std::size_t kKinds = 10;

struct KindEntry {
    Kind kind;
    std::string_view option;    // on the command line
    std::string_view type;      // the row's column "Type"; empty where there is none
    std::string_view layer;     // in a drawing for CAD
    std::string_view nameLayer; // of the names beside the objects
    int colour;                 // AutoCAD Color Index of both layers
};

inline constexpr std::array<KindEntry, kKinds> kKindTable = {{
    {Kind::Points, "points", "座標", "座標点", "点名", 7},
    {Kind::Lots, "lots", "画地", "画地", "画地名", 3},
    {Kind::Alignments, "alignments", "", "線形", "線形名", 1},
    {Kind::IpLines, "ip", "IP線", "IP線", "路線名", 30},
    {Kind::LeftStakes, "left-stake", "幅杭線左", "幅杭", "路線名", 4},
    {Kind::RightStakes, "right-stake", "幅杭線右", "幅杭", "路線名", 4},
    {Kind::Continuous, "continuous", "連続線", "連続線", "路線名", 6},
    {Kind::Longitudinal, "longitudinal", "縦断成果", "縦断", "縦断点名", 2},
    {Kind::CrossSections, "cross-sections", "横断成果", "横断", "横断点名", 140},
    {Kind::Others, "others", "", "その他", "その他名", 7},
}};

constexpr const KindEntry& entryOf(Kind kind) {
    return kKindTable[static_cast<std::size_t>(kind)];
}

Kind kindOf(const drawing::EntityView& entity);
std::optional<Kind> kindNamed(std::string_view option);

} // namespace fenmark::exchange
