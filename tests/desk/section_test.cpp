// The sections beside the plan: what they show, how they follow the selection and lead it.
#include "desk_test_support.h"

#include "desk/sections/section_model.h"
#include "desk/window/workbench.h"
#include "exchange/plan/plan_geometry.h"

#include <cmath>

namespace fenmark::desk::test {
namespace {

TEST(SectionFrame, TakesHeightsAsTheyFitOrAtAScale) {
    SectionFrame frame;
    frame.left = 100.0;
    frame.right = 500.0;
    frame.top = 20.0;
    frame.bottom = 220.0;
    frame.scale = 2.0;
    fitHeights(frame, 103.0, 113.0, 0.0);
    EXPECT_LE(frame.base, 103.0);
    EXPECT_GE(frame.y(113.0), frame.top);
    EXPECT_LE(frame.y(103.0), frame.bottom);
    EXPECT_GT(frame.exaggeration(), 5.0);
    fitHeights(frame, 103.0, 113.0, 5.0);
    EXPECT_DOUBLE_EQ(frame.exaggeration(), 5.0);
    EXPECT_DOUBLE_EQ(frame.alongAt(frame.x(42.0)), 42.0);
    EXPECT_DOUBLE_EQ(frame.heightAt(frame.y(107.0)), 107.0);
    fitHeights(frame, 50.0, 50.0, 0.0); // a level road
    EXPECT_TRUE(std::isfinite(frame.rise));
    EXPECT_DOUBLE_EQ(exchange::roundStep(3.0), 5.0);
    EXPECT_DOUBLE_EQ(exchange::roundStep(0.2), 0.2);
}

struct Sections : DeskWindow {
    void showDock(const char* name) {
        window->dock(QLatin1String(name)).show();
        window->dock(QLatin1String(name)).raise();
        QApplication::processEvents();
    }
    // The first point of that type.
    std::size_t firstOf(const char* type, std::size_t skip = 0) {
        for (std::size_t i = 0; i < drawing().entityCount(); ++i) {
            if (drawing().isPoint(i) && drawing().entity(i).row && drawing().entity(i).row->type == type &&
                skip-- == 0) {
                return i;
            }
        }
        ADD_FAILURE() << "no point " << type;
        return 0;
    }
};

// Whatever is told on the way is told of the drawing that came, as the one that went is no more.
TEST_F(Sections, FollowADrawingThatTakesThePlaceOfAnother) {
    import(folder.example(QStringLiteral("road.sim")));
    showDock("profileDock");
    plan().select(PlanObject{PlanObject::Kind::Alignment, 0, 1});
    const QString path = folder.path(QStringLiteral("road.gpkg"));
    window->questions().save = [&](QWidget*, const QString&, const QString&, const QString&) { return path; };
    ASSERT_TRUE(window->saveDrawing());
    bool asked = false;
    QObject::connect(&window->log(), &QPlainTextEdit::textChanged, window.get(), [&] {
        asked = true;
        window->workbench().selectionChanged();
        EXPECT_TRUE(drawing().alignmentCount() > 0 || window->workbench().profile().ground().empty());
    });
    window->newDrawing();
    EXPECT_TRUE(asked);
    EXPECT_TRUE(window->workbench().profile().ground().empty());
    ASSERT_TRUE(window->openFile(path));
    plan().select(PlanObject{PlanObject::Kind::Alignment, 0, 1});
    EXPECT_GT(window->workbench().profile().ground().size(), 2U);
}

TEST_F(Sections, TheLongitudinalSectionFollowsTheSelectionAndLeadsIt) {
    import(folder.example(QStringLiteral("road.sim")));
    showDock("profileDock");
    ProfileView& profile = window->workbench().profile();
    plan().select(PlanObject{PlanObject::Kind::Alignment, 0, 1});
    ASSERT_EQ(profile.alignment(), std::optional<std::size_t>(0));
    ASSERT_GT(profile.ground().size(), 2U);
    EXPECT_NEAR(profile.markedStation().value_or(-1.0),
                drawing().alignment(0).startStation + drawing().alignment(0).elements[0].length, 1e-9);
    // A result selected in the plan is marked in the section.
    const std::size_t result = firstOf("縦断成果", 3);
    plan().select(PlanObject{PlanObject::Kind::Entity, result, {}});
    const auto& ground = profile.ground();
    const auto marked = profile.markedStation();
    ASSERT_TRUE(marked);
    EXPECT_TRUE(std::any_of(ground.begin(), ground.end(),
                            [&](const auto& point) { return std::abs(point.station - *marked) < 1e-6; }));
    // A click on another point selects its result in the plan.
    const auto& wanted = ground[1];
    QTest::mouseClick(&profile, Qt::LeftButton, {},
                      QPointF(profile.frame().x(wanted.station), profile.frame().y(wanted.height)).toPoint());
    ASSERT_TRUE(plan().selected());
    ASSERT_EQ(plan().selected()->kind, PlanObject::Kind::Entity);
    EXPECT_DOUBLE_EQ(drawing().entity(plan().selected()->index).position().z, wanted.height);
    EXPECT_NEAR(profile.markedStation().value_or(-1.0), wanted.station, 1e-6);
    QTest::keyClick(&profile, Qt::Key_N);
    EXPECT_NEAR(profile.markedStation().value_or(-1.0), ground[2].station, 1e-6);
}

TEST_F(Sections, TheHeightScaleIsChosen) {
    import(folder.example(QStringLiteral("road.sim")));
    showDock("profileDock");
    ProfileView& profile = window->workbench().profile();
    plan().select(PlanObject{PlanObject::Kind::Alignment, 0, {}});
    QComboBox& choice = window->workbench().profilePanel().exaggeration();
    choice.setCurrentIndex(choice.findData(10.0));
    EXPECT_NEAR(profile.frame().exaggeration(), 10.0, 1e-9);
    const double scale = profile.frame().scale;
    QTest::keyClick(&profile, Qt::Key_Plus);
    EXPECT_GT(profile.frame().scale, scale);
    EXPECT_NEAR(profile.frame().exaggeration(), 10.0, 1e-9) << "the heights keep their scale";
    QTest::keyClick(&profile, Qt::Key_F);
    EXPECT_NEAR(profile.frame().scale, scale, 1e-12);
}

// Heights of which adding the step of a grid is lost: drawing the grid went on for ever.
TEST_F(Sections, HeightsBeyondAllSurveysAreShownWithoutTheirGrid) {
    QFile file(folder.example(QStringLiteral("road.sim")));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QByteArrayList lines = file.readAll().split('\n');
    int changed = 0;
    for (QByteArray& line : lines) {
        QByteArrayList fields = line.split(',');
        if (fields.size() > 4 && (fields[0] == "H01" || fields[0] == "I01" || fields[0] == "I02")) {
            fields[3] = "100000000000000000.000"; // the ground's height
            line = fields.join(',');
            ++changed;
        }
    }
    ASSERT_GT(changed, 10);
    import(folder.write(QStringLiteral("high.sim"), lines.join('\n')));
    showDock("profileDock");
    plan().select(PlanObject{PlanObject::Kind::Alignment, 0, {}});
    ProfileView& profile = window->workbench().profile();
    ASSERT_GT(profile.ground().size(), 2U);
    EXPECT_EQ(profile.ground()[1].height, 1e17);
    EXPECT_FALSE(profile.grab().isNull());
    showDock("crossSectionDock");
    plan().select(PlanObject{PlanObject::Kind::Entity, firstOf("横断成果"), {}});
    EXPECT_FALSE(window->grab().isNull());
}

TEST_F(Sections, TheCrossSectionOfASelectedPointIsShown) {
    import(folder.example(QStringLiteral("road.sim")));
    showDock("crossSectionDock");
    CrossSectionView& view = window->workbench().crossSections();
    plan().select(PlanObject{PlanObject::Kind::Alignment, 0, {}});
    ASSERT_GT(view.count(), 2U);
    EXPECT_EQ(view.current(), 0U);
    view.showSection(2);
    EXPECT_EQ(view.title(), view.names()[2]);
    // The leftmost point of the third section, chosen in the section, is selected in the plan.
    const exchange::Results results = exchange::resultsOf(drawing());
    const auto& section = results.alignments[0].sections[2];
    const auto& point = section.points.front();
    QTest::mouseClick(&view, Qt::LeftButton, {},
                      QPointF(view.frame().x(point.offset), view.frame().y(point.height)).toPoint());
    ASSERT_TRUE(plan().selected());
    EXPECT_DOUBLE_EQ(drawing().entity(plan().selected()->index).position().z, point.height);
    EXPECT_EQ(view.current(), 2U);
    QTest::keyClick(&view, Qt::Key_P);
    EXPECT_EQ(view.current(), 1U);
}

TEST_F(Sections, SaysWhatIsMissing) {
    showDock("profileDock");
    EXPECT_FALSE(window->workbench().profile().alignment());
    import(folder.example(QStringLiteral("cadastral.sim")));
    EXPECT_FALSE(window->workbench().profile().alignment());
    const QImage picture = window->workbench().profile().grab().toImage();
    EXPECT_FALSE(picture.isNull());
    import(folder.example(QStringLiteral("road.sim")));
    EXPECT_TRUE(window->workbench().profile().alignment()) << "the only alignment with results needs no selection";
    window->undo();
    EXPECT_FALSE(window->workbench().profile().alignment());
}

} // namespace
} // namespace fenmark::desk::test
