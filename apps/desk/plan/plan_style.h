// Colours and sizes of the plan. One look for all of it, readable on white.
#pragma once

#include <QColor>

#include <string_view>

namespace fenmark::desk {

inline const QColor kPaper(0xff, 0xff, 0xff);
inline const QColor kInk(0x20, 0x24, 0x28);
inline const QColor kFaintInk(0x9a, 0xa3, 0xab);
inline const QColor kSelection(0xff, 0x8c, 0x00);
inline const QColor kStraight(0x1d, 0x1f, 0x22);
inline const QColor kArc(0xd1, 0x22, 0x22);
inline const QColor kClothoid(0x1f, 0x6f, 0xd6);
inline const QColor kLotLine(0x8a, 0x6d, 0x3b);
inline const QColor kLotFill(0xf4, 0xee, 0xdd);

// Colour of a point or polyline by the "Type" of its row.
inline QColor colourOfType(std::string_view type) {
    if (type == "座標")
        return {0x30, 0x3a, 0x44};
    if (type == "縦断成果")
        return {0xd9, 0x6b, 0x0b};
    if (type == "横断成果")
        return {0x0d, 0x8a, 0x8a};
    if (type == "画地")
        return kLotLine;
    if (type == "IP線")
        return {0x6c, 0x75, 0x7d};
    if (type == "幅杭線左" || type == "幅杭線右")
        return {0x2e, 0x7d, 0x32};
    if (type == "連続線")
        return {0x7b, 0x1f, 0xa2};
    return kInk;
}

} // namespace fenmark::desk
