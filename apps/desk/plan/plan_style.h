// Colours and kinds of what the plan shows. One look for all of it, readable on white.
#pragma once

#include "drawing/drawing.h"

#include <QColor>

#include <array>
#include <cstddef>
#include <cstdint>

namespace fenmark::desk {

inline const QColor kPaper(0xff, 0xff, 0xff);
inline const QColor kInk(0x20, 0x24, 0x28);
inline const QColor kFaintInk(0x9a, 0xa3, 0xab);
inline const QColor kGrid(0xec, 0xef, 0xf2);
inline const QColor kSelection(0xff, 0x8c, 0x00);
inline const QColor kHover(0x2f, 0x9e, 0xff);
inline const QColor kStraight(0x1d, 0x1f, 0x22);
inline const QColor kArc(0xd1, 0x22, 0x22);
inline const QColor kClothoid(0x1f, 0x6f, 0xd6);
inline const QColor kLotFill(0xf7, 0xf3, 0xe7);
inline const QColor kMeasure(0xad, 0x14, 0x57);

// How an entity is drawn: told by the "Type" of its row.
enum class FigureStyle : std::uint8_t {
    Coordinate,
    Longitudinal,
    CrossSection,
    OtherPoint,
    Lot,
    IpLine,
    Stakes,
    Continuous,
    OtherLine,
};

inline constexpr std::size_t kFigureStyles = 9;
inline constexpr std::size_t kPointStyles = 4; // the first ones

inline const std::array<QColor, kFigureStyles> kFigureColours{
    QColor(0x3a, 0x46, 0x52), // Coordinate
    QColor(0xd9, 0x6b, 0x0b), // Longitudinal
    QColor(0x0d, 0x8a, 0x8a), // CrossSection
    QColor(0x20, 0x24, 0x28), // OtherPoint
    QColor(0xa4, 0x85, 0x4f), // Lot
    QColor(0x6c, 0x75, 0x7d), // IpLine
    QColor(0x2e, 0x7d, 0x32), // Stakes
    QColor(0x7b, 0x1f, 0xa2), // Continuous
    QColor(0x20, 0x24, 0x28), // OtherLine
};

inline const QColor& colourOf(FigureStyle style) {
    return kFigureColours[static_cast<std::size_t>(style)];
}

// Numbers of figures of each style.
using StyleCounts = std::array<std::size_t, kFigureStyles>;

FigureStyle styleOf(const drawing::EntityView& entity);
QColor colourOf(drawing::ElementType type);

} // namespace fenmark::desk
