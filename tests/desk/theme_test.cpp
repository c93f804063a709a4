// The two sides of the theme: what is written in their colours can be read.
#include "desk_test_support.h"

#include "desk/plan/plan_style.h"
#include "desk/plan/plan_text.h"

#include <QImage>
#include <QPalette>

#include <cmath>

namespace fenmark::desk::test {
namespace {

constexpr double kLeastContrast = 4.5; // WCAG 2.1, 1.4.3

// Relative luminance and contrast as WCAG 2.1 defines them.
double luminance(const QColor& colour) {
    const auto part = [](double value) {
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) + 0.0722 * part(colour.blueF());
}
double contrast(const QColor& a, const QColor& b) {
    const double light = std::max(luminance(a), luminance(b));
    const double dark = std::min(luminance(a), luminance(b));
    return (light + 0.05) / (dark + 0.05);
}

TEST(Theme, EveryInkReadsOnThePaperOfItsSide) {
    EXPECT_NEAR(contrast(Qt::black, Qt::white), 21.0, 1e-9);
    for (const ThemeSide side : {ThemeSide::Light, ThemeSide::Dark}) {
        const Theme& theme = themeOf(side);
        const int number = static_cast<int>(side);
        for (const QColor& ink : {theme.ink, theme.faintInk, theme.selection, theme.hover, theme.straight, theme.arc,
                                  theme.clothoid, theme.logRefused, theme.logRule}) {
            EXPECT_GE(contrast(ink, theme.paper), kLeastContrast) << number << ' ' << ink.name().toStdString();
        }
        for (const QColor& ink : theme.figures) {
            EXPECT_GE(contrast(ink, theme.paper), kLeastContrast) << number << ' ' << ink.name().toStdString();
            EXPECT_GE(contrast(ink, theme.lotFill), kLeastContrast) << number << ' ' << ink.name().toStdString();
        }
    }
}

TEST_F(DeskWindow, ADarkWindowHasADarkPlan) {
    import(folder.example(QStringLiteral("cadastral.sim")));
    EXPECT_EQ(plan().grab().toImage().pixelColor(2, 2), themeOf(ThemeSide::Light).paper);
    const QPalette before = window->palette();
    QPalette dark = before;
    dark.setColor(QPalette::Window, QColor(0x2b, 0x2b, 0x2b));
    dark.setColor(QPalette::Base, QColor(0x1e, 0x1e, 0x1e));
    dark.setColor(QPalette::Text, Qt::white);
    window->setPalette(dark);
    EXPECT_EQ(kPaper, themeOf(ThemeSide::Dark).paper);
    EXPECT_EQ(plan().grab().toImage().pixelColor(2, 2), themeOf(ThemeSide::Dark).paper);
    window->setPalette(before);
    EXPECT_EQ(kPaper, themeOf(ThemeSide::Light).paper);
}

TEST(LabelRoomOnLines, NoNameStandsWhereALineRuns) {
    LabelRoom room({300.0, 200.0});
    room.blockLine({0.0, 100.0}, {300.0, 100.0});
    EXPECT_FALSE(room.take(QRectF(100.0, 95.0, 40.0, 11.0)));
    EXPECT_TRUE(room.take(QRectF(100.0, 110.0, 40.0, 11.0)));
    EXPECT_FALSE(room.take(QRectF(130.0, 110.0, 40.0, 11.0)));
}

TEST_F(DeskWindow, OneOfSeveralAlignmentsOnOneLineHasItsStationsNamed) {
    import(folder.example(QStringLiteral("road.sim")));
    QApplication::processEvents();
    plan().fitAll();
    const QImage all = plan().grab().toImage();
    // The chosen one of them is the one that is named.
    plan().select(PlanObject{PlanObject::Kind::Alignment, 1, {}});
    EXPECT_EQ(plan().look().stationsOf, std::optional<std::size_t>(1));
    plan().select(std::nullopt);
    EXPECT_EQ(plan().look().stationsOf, std::optional<std::size_t>(1)) << "until another one is chosen";
    EXPECT_FALSE(all.isNull());
}

} // namespace
} // namespace fenmark::desk::test
