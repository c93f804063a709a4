// Colours and kinds of what the plan shows.
#include "desk/plan/plan_style.h"

#include "exchange/kinds.h"

#include <algorithm>
#include <cmath>

namespace fenmark::desk {

using drawing::ElementType;

namespace {

struct KindStyle {
    Kind kind;
    FigureStyle style;
};
constexpr std::array<KindStyle, kKinds> kKindStyles = {{
    {Kind::Points, FigureStyle::Coordinate},
    {Kind::Lots, FigureStyle::Lot},
    {Kind::Alignments, FigureStyle::OtherLine}, // no entity is of this kind
    {Kind::IpLines, FigureStyle::IpLine},
    {Kind::LeftStakes, FigureStyle::Stakes},
    {Kind::RightStakes, FigureStyle::Stakes},
    {Kind::Continuous, FigureStyle::Continuous},
    {Kind::Longitudinal, FigureStyle::Longitudinal},
    {Kind::CrossSections, FigureStyle::CrossSection},
    {Kind::Others, FigureStyle::OtherLine},
}};
static_assert(inOrderOfKinds(kKindStyles));

} // namespace

FigureStyle styleOf(const drawing::EntityView& entity) {
    const Kind kind = exchange::drawnKindOf(entity);
    if (kind == Kind::Others && entity.isPoint()) {
        return FigureStyle::OtherPoint;
    }
    return kKindStyles[static_cast<std::size_t>(kind)].style;
}

Text nameOf(FigureStyle style) {
    switch (style) {
    case FigureStyle::Coordinate:
        return Text::KindCoordinate;
    case FigureStyle::Longitudinal:
        return Text::KindLongitudinal;
    case FigureStyle::CrossSection:
        return Text::KindCrossSection;
    case FigureStyle::OtherPoint:
        return Text::KindOtherPoint;
    case FigureStyle::Lot:
        return Text::KindLot;
    case FigureStyle::IpLine:
        return Text::KindIpLine;
    case FigureStyle::Stakes:
        return Text::KindStakes;
    case FigureStyle::Continuous:
        return Text::KindContinuous;
    case FigureStyle::OtherLine:
        break;
    }
    return Text::KindOtherLine;
}

// Coordinate, longitudinal, cross-section, other point, lot, IP line, stakes, continuous, other line.
const Theme& themeOf(ThemeSide side) {
    static const Theme light{
        .paper = QColor(0xff, 0xff, 0xff),
        .ink = QColor(0x20, 0x24, 0x28),
        .faintInk = QColor(0x64, 0x6d, 0x75),
        .grid = QColor(0xec, 0xef, 0xf2),
        .selection = QColor(0xb8, 0x55, 0x00),
        .hover = QColor(0x0b, 0x6f, 0xc4),
        .straight = QColor(0x1d, 0x1f, 0x22),
        .arc = QColor(0xc8, 0x1e, 0x1e),
        .clothoid = QColor(0x1b, 0x64, 0xc4),
        .lotFill = QColor(0xf9, 0xf6, 0xed),
        .figures = {QColor(0x3a, 0x46, 0x52), QColor(0xae, 0x50, 0x00), QColor(0x0a, 0x73, 0x73),
                    QColor(0x20, 0x24, 0x28), QColor(0x7d, 0x62, 0x30), QColor(0x5e, 0x66, 0x6e),
                    QColor(0x2a, 0x74, 0x2e), QColor(0x7b, 0x1f, 0xa2), QColor(0x20, 0x24, 0x28)},
        .logRefused = QColor(0xb3, 0x1b, 0x1b),
        .logRule = QColor(0x1a, 0x5f, 0xb8),
    };
    static const Theme dark{
        .paper = QColor(0x1b, 0x1e, 0x22),
        .ink = QColor(0xe8, 0xea, 0xed),
        .faintInk = QColor(0x9a, 0xa3, 0xab),
        .grid = QColor(0x2a, 0x2e, 0x33),
        .selection = QColor(0xff, 0xa9, 0x3d),
        .hover = QColor(0x5c, 0xb8, 0xff),
        .straight = QColor(0xe8, 0xea, 0xed),
        .arc = QColor(0xff, 0x7a, 0x70),
        .clothoid = QColor(0x77, 0xb0, 0xff),
        .lotFill = QColor(0x26, 0x26, 0x22),
        .figures = {QColor(0xc4, 0xce, 0xd8), QColor(0xff, 0xa0, 0x4d), QColor(0x4f, 0xd0, 0xd0),
                    QColor(0xe8, 0xea, 0xed), QColor(0xd8, 0xb8, 0x78), QColor(0xa8, 0xb0, 0xb8),
                    QColor(0x7c, 0xd0, 0x80), QColor(0xd8, 0x96, 0xf0), QColor(0xe8, 0xea, 0xed)},
        .logRefused = QColor(0xff, 0x9a, 0x8f),
        .logRule = QColor(0x8a, 0xbd, 0xff),
    };
    return side == ThemeSide::Dark ? dark : light;
}

ThemeSide sideFor(const QColor& background) {
    constexpr int kDark = 128; // lightness below which light inks are read
    return background.lightness() < kDark ? ThemeSide::Dark : ThemeSide::Light;
}

void useTheme(ThemeSide side) {
    activeTheme = themeOf(side);
}

double contrastOf(const QColor& a, const QColor& b) {
    const auto luminance = [](const QColor& colour) {
        const auto part = [](double value) {
            return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) + 0.0722 * part(colour.blueF());
    };
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor inkOf(const drawing::Colour& chosen) {
    constexpr double kReadable = 4.5;
    constexpr float kLightnessStep = 0.01F;
    QColor ink(chosen.red, chosen.green, chosen.blue);
    const bool onDark = sideFor(kPaper) == ThemeSide::Dark;
    while (contrastOf(ink, kPaper) < kReadable) {
        const float lightness = ink.lightnessF() + (onDark ? kLightnessStep : -kLightnessStep);
        if (lightness < 0.0F || lightness > 1.0F) {
            break;
        }
        ink = QColor::fromHslF(std::max(ink.hslHueF(), 0.0F), ink.hslSaturationF(), lightness);
    }
    return ink.toRgb();
}

QColor colourOf(ElementType type) {
    if (type == ElementType::Arc) {
        return kArc;
    }
    return type == ElementType::Clothoid ? kClothoid : kStraight;
}

} // namespace fenmark::desk
