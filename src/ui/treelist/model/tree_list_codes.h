// Codes and bits that callers of the tree list exchange with it: notifications, styles, hit flags, expand codes.
#pragma once

#include <cstdint>

namespace fenmark::ui::treelist {

// Notification codes. Where the comment says so, the parent's answer counts.
enum NotifyCode : int {
    kNotifyCellChanged = -420,       // a cell's text was changed; an answer below 0 restores the text
    kNotifyModifyEnded = -422,       // a modification ended; the column field is 1 if it was cancelled, else 0
    kNotifyDragEnter = -423,         // a drag enters this control
    kNotifyDragLeave = -424,         // a drag leaves this control
    kNotifyDragOver = -425,          // may this be dropped here? below 0 refuses
    kNotifyDrop = -426,              // dropped; source control and target row are given, the parent moves the rows
    kNotifyCheckChanged = -427,      // the user changed a check
    kNotifyLockChanging = -428,      // a lock is about to change; -1 vetoes
    kNotifySelectionChanging = -450, // the selection is about to change; -1 vetoes
    kNotifySelectionChanged = -451,  // the selection changed
    kNotifyExpanding = -454,         // a row is about to expand or collapse; -1 vetoes
    kNotifyExpanded = -455,          // a row expanded or collapsed
    kNotifyDragStarting = -456,      // a drag of rows is about to be armed; below 0 vetoes
    kNotifyEditorOpening = -459,     // an in-place editor is about to open
    kNotifyEditorClosed = -460,      // an in-place editor was closed
};

// Style bits of the control.
enum StyleBit : std::uint32_t {
    kStyleTree = 0x1,             // the first shown column shows the tree
    kStyleMultiSelect = 0x10,     // several rows can be selected
    kStyleHeader = 0x100,         // the header is shown
    kStyleHorizontalGrid = 0x200, // horizontal grid lines
    kStyleVerticalGrid = 0x400,   // vertical grid lines
    kStyleNoEdit = 0x8000,        // in-place editing is off
    kStyleTreeLines = 0x10000,    // dotted tree lines
    kStyleRootLines = 0x20000,    // tree lines at the first level too
    kStyleButtons = 0x40000,      // expand buttons
    kStyleCheckBoxes = 0x80000,
    kStyleLockBoxes = 0x100000,
    kStyleImages = 0x200000,
    kStyleDragRows = 0x1000000,      // rows can be dragged
    kStyleDropForeign = 0x2000000,   // drops from another control are accepted
    kStyleDropOwn = 0x4000000,       // with kStyleDropForeign: drops within this control are accepted
    kStyleDropEmpty = 0x8000000,     // drops on the empty area are accepted
    kStyleDragColumns = 0x10000000,  // columns can be dragged to other places in the header
    kStyleHideColumns = 0x20000000,  // and off it, into the list of hidden columns
    kStyleCheckRowOnly = 0x40000000, // a click on a check box changes its row only: no cascade, repaint, notification
    kStyleLockRowOnly = 0x80000000,  // the same for lock boxes, whose notification comes first all the same
};

// What depends on the header; a style without it loses these bits.
inline constexpr std::uint32_t kStyleHeaderDependent = kStyleDragColumns | kStyleHideColumns;

// The style as the control takes it: bits that make no sense without another bit are dropped, in this order.
[[nodiscard]] constexpr std::uint32_t effectiveStyle(std::uint32_t style) {
    if (!(style & kStyleTree)) {
        style &= ~std::uint32_t{0x70000};
    }
    if (!(style & kStyleHorizontalGrid)) {
        style &= ~std::uint32_t{0x5800};
    }
    if (!(style & kStyleVerticalGrid)) {
        style &= ~std::uint32_t{0x2000};
    }
    if (!(style & kStyleHeader)) {
        style &= ~kStyleHeaderDependent;
    }
    return style;
}

// Run-time state of the control.
enum ControlState : std::uint32_t {
    kControlCreated = 0x1,
    kControlEnabled = 0x2,
    kControlCaptured = 0x8,   // the mouse is captured for a drag
    kControlModifying = 0x10, // a row is being modified
    kControlWriting = 0x20,   // a modification is being written back
    kControlDragArmed = 0x40, // a press armed a drag of rows
};

// What a point of a row lies on.
enum HitFlag : int {
    kHitNowhere = 0, // no row there
    kHitRow = 1,     // in the row, but on nothing
    kHitButton = 2,
    kHitCheck = 4,
    kHitLock = 8,
    kHitImage = 16,
    kHitText = 32,
};

enum class ExpandCode : int { Expand = 0, Collapse = 1, Toggle = 2, CollapseReset = 3 };

// In-place editor of a column.
enum class ModifyKind : int { Static = 0, Edit = 1, Combo = 2 };

// Special widths for SetColumnWidth and InsertColumn.
inline constexpr int kWidthMinimum = -1;      // the minimum argument is the width
inline constexpr int kWidthTexts = -3;        // the widest text of the rows shown, at least the minimum
inline constexpr int kWidthTextsAndHead = -4; // the same, beginning with the header's text plus 4

// Answers of DragOver.
enum class DropResult : int { Refused = 0, NotHere = 1, OnRow = 2, OnEmpty = 3 };

} // namespace fenmark::ui::treelist
