// Colours and kinds of what the plan shows: one theme with a light and a dark side.
#pragma once

#include "desk/language/texts.h"
#include "drawing/drawing.h"

#include <QColor>

#include <array>
#include <cstddef>
#include <cstdint>

namespace fenmark::desk {

// How an entity is drawn: by the "Type" of its row.
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
inline constexpr std::size_t kElementTypes = 3;
constexpr std::size_t elementTypeIndex(drawing::ElementType type) {
    return type == drawing::ElementType::Straight ? 0 : type == drawing::ElementType::Arc ? 1 : 2;
}

// Every ink reads on the paper with a contrast of 4.5 to 1 or more (WCAG 2.1, 1.4.3). Grid and lot fill are no inks: the
// inks lie on them.
struct Theme {
    QColor paper;
    QColor ink;
    QColor faintInk;
    QColor grid;
    QColor selection;
    QColor hover;
    QColor straight;
    QColor arc;
    QColor clothoid;
    QColor lotFill;
    std::array<QColor, kFigureStyles> figures;
    QColor logRefused; // lines of a log about something refused
    QColor logRule;    // lines that part it
};

enum class ThemeSide : std::uint8_t { Light, Dark };
const Theme& themeOf(ThemeSide side);
// The side that suits windows with that background.
ThemeSide sideFor(const QColor& background);
// What is painted from now on has the colours of that side.
void useTheme(ThemeSide side);

// The side in use, and its colours by name.
inline Theme activeTheme = themeOf(ThemeSide::Light);
inline const QColor& kPaper = activeTheme.paper;
inline const QColor& kInk = activeTheme.ink;
inline const QColor& kFaintInk = activeTheme.faintInk;
inline const QColor& kGrid = activeTheme.grid;
inline const QColor& kSelection = activeTheme.selection;
inline const QColor& kHover = activeTheme.hover;
inline const QColor& kStraight = activeTheme.straight;
inline const QColor& kArc = activeTheme.arc;
inline const QColor& kClothoid = activeTheme.clothoid;
inline const QColor& kLotFill = activeTheme.lotFill;
inline const std::array<QColor, kFigureStyles>& kFigureColours = activeTheme.figures;

inline const QColor& colourOf(FigureStyle style) {
    return kFigureColours[static_cast<std::size_t>(style)];
}

// Contrast of two colours, 1 to 21 (WCAG 2.1, 1.4.3).
double contrastOf(const QColor& a, const QColor& b);
// A colour that a user chose, as it is read on the paper in use: darker, or lighter on dark paper, where it would not be.
QColor inkOf(const drawing::Colour& chosen);

// Numbers of figures of each style.
using StyleCounts = std::array<std::size_t, kFigureStyles>;

FigureStyle styleOf(const drawing::EntityView& entity);
// What the legend and the tables call it.
Text nameOf(FigureStyle style);
QColor colourOf(drawing::ElementType type);

} // namespace fenmark::desk
