// CTreeListColumnInfo: one column of the tree list, and the bits of its format.
#pragma once

#include <cstdint>
#include <string>

namespace fenmark::ui::treelist {

// Format bits. Cell text: none of left, right and centre means left; neither top nor bottom means centred.
enum ColumnFormat : std::uint32_t {
    kHeadLeft = 0x1,
    kHeadRight = 0x2,
    kHeadCenter = 0x4,
    kHeadTop = 0x10,
    kHeadBottom = 0x20,
    kHeadMiddle = 0x40,
    kCellLeft = 0x100, // with word ellipsis
    kCellRight = 0x200,
    kCellCenter = 0x400,
    kCellTop = 0x1000,
    kCellBottom = 0x2000,
    kCellMiddle = 0x4000,
    kColumnCanSort = 0x200000,
    kColumnSortedUp = 0x1000000,
    kColumnSortedDown = 0x2000000,
    kColumnHidden = 0x10000000, // not in the shown order
};

inline constexpr std::uint32_t kColumnSortedMask = kColumnSortedUp | kColumnSortedDown;
inline constexpr std::uint32_t kColumnInitialFormat = 0x104144;

enum class HorizontalAlign { Left, Right, Center };
enum class VerticalAlign { Top, Bottom, Center };

struct CTreeListColumnInfo {
    std::uint32_t format = kColumnInitialFormat;
    int modify = 0;       // in-place editor: 0 static, 1 edit, 2 combo
    int minimumWidth = 0; // pixels
    int maximumWidth = 0; // pixels; 0 means none
    int width = 30;       // pixels
    std::string text;     // header text, UTF-8
    int image = -1;       // header image
    std::string defaultText;
    int trackStartWidth = 0;    // while the user drags the width
    int trackStartPosition = 0; // pointer position at the start of that drag

    [[nodiscard]] bool isHidden() const { return (format & kColumnHidden) != 0; }
    [[nodiscard]] bool isSorted() const { return (format & kColumnCanSort) && (format & kColumnSortedMask); }
    [[nodiscard]] HorizontalAlign cellAlign() const {
        return (format & kCellLeft)     ? HorizontalAlign::Left
               : (format & kCellRight)  ? HorizontalAlign::Right
               : (format & kCellCenter) ? HorizontalAlign::Center
                                        : HorizontalAlign::Left;
    }
    [[nodiscard]] VerticalAlign cellVerticalAlign() const {
        return (format & kCellTop)      ? VerticalAlign::Top
               : (format & kCellBottom) ? VerticalAlign::Bottom
                                        : VerticalAlign::Center;
    }
    [[nodiscard]] HorizontalAlign headAlign() const {
        return (format & kHeadLeft)    ? HorizontalAlign::Left
               : (format & kHeadRight) ? HorizontalAlign::Right
                                       : HorizontalAlign::Center;
    }
    [[nodiscard]] VerticalAlign headVerticalAlign() const {
        return (format & kHeadTop)      ? VerticalAlign::Top
               : (format & kHeadBottom) ? VerticalAlign::Bottom
                                        : VerticalAlign::Center;
    }
    // The width kept between the limits; a maximum of 0 means none.
    [[nodiscard]] int clampWidth(int wanted) const {
        if (maximumWidth > 0 && wanted > maximumWidth) {
            wanted = maximumWidth;
        }
        return wanted < minimumWidth ? minimumWidth : (wanted < 0 ? 0 : wanted);
    }
};

} // namespace fenmark::ui::treelist
