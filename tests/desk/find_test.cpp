// Objects found by name or number.
#include "desk_test_support.h"

#include "desk/plan/name_search.h"
#include "desk/plan/plan_text.h"

#include <QLineEdit>
#include <QTableView>

namespace fenmark::desk::test {
namespace {

using drawing::Drawing;

constexpr std::size_t kMany = 100;

// Points and a lot with the names that surveyors give, and an alignment.
struct Names : ::testing::Test {
    Drawing drawing;

    void SetUp() override {
        const std::size_t points = addTable("JSIMA_V3_Point");
        const std::size_t lines = addTable("JSIMA_V3_Pline");
        point(points, 1, "12", "座標");
        point(points, 12, "ＩＰ.1              ", "座標");
        point(points, 12, "No.5", "縦断成果");
        point(points, 7, "ｺﾝ杭12", "座標");
        point(points, 8, "tp-112", "座標");
        const host::MdGePoint3d corners[] = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}};
        drawing.addPolyline(corners, 0, drawing::EntityKind::Polyline, true);
        drawing.setRow(5, lines, 12, "川端1", "画地", "a.sim");
        drawing.addPoint({9, 9, 0}, 0); // without a row
        drawing.addAlignment(drawing.addSite("サイト"), "中心線12", "0", "", "");
    }
    std::size_t addTable(const char* name) {
        drawing.addTable(name);
        return *drawing.findTable(name);
    }
    void point(std::size_t table, std::int32_t no, const char* name, const char* type) {
        drawing.addPoint({static_cast<double>(no), 0, 0}, 0);
        drawing.setRow(drawing.entityCount() - 1, table, no, name, type, "a.sim");
    }
    // Indexes of entities, and -1 - index for alignments.
    std::vector<int> found(const char* text, std::size_t most = kMany) {
        std::vector<int> indexes;
        const NameSearch::Result result = NameSearch(drawing).find(QString::fromUtf8(text), most);
        for (const PlanObject& object : result.objects) {
            indexes.push_back(object.kind == PlanObject::Kind::Entity ? static_cast<int>(object.index)
                                                                      : -1 - static_cast<int>(object.index));
        }
        EXPECT_GE(result.total, indexes.size());
        return indexes;
    }
};

TEST_F(Names, EqualOnesComeFirstThenNumbersThenBeginningsThenTheRest) {
    EXPECT_EQ(found("12"), (std::vector<int>{0, 1, 5, -1, 3, 4}));
    EXPECT_EQ(found("1"), (std::vector<int>{0, -1, 1, 3, 4, 5})) << "point 1 counts once";
}

TEST_F(Names, AreTheSameInSmallAndLargeHalfAndFullWidth) {
    for (const char* text : {"ip.1", "IP.1", "ＩＰ．１", " ip.1 "}) {
        EXPECT_EQ(found(text), std::vector<int>{1}) << text;
    }
    EXPECT_EQ(found("コン杭"), std::vector<int>{3});
    EXPECT_EQ(found("TP"), std::vector<int>{4});
}

TEST_F(Names, OfAlignmentsAndLotsAreFoundToo) {
    EXPECT_EQ(found("中心"), std::vector<int>{-1});
    EXPECT_EQ(found("川"), std::vector<int>{5});
}

TEST_F(Names, NothingIsFoundForNothing) {
    EXPECT_TRUE(found("").empty());
    EXPECT_TRUE(found("  ").empty());
    EXPECT_TRUE(found("無い").empty());
    EXPECT_TRUE(NameSearch(Drawing()).find(QStringLiteral("a"), kMany).objects.empty());
}

TEST_F(Names, ManyAreCountedAndTheBestOnesKept) {
    for (int i = 0; i < 1000; ++i) {
        point(0, 1000 + i, i == 999 ? "杭" : "杭あと", "座標");
    }
    const NameSearch::Result result = NameSearch(drawing).find(QStringLiteral("杭"), 10);
    EXPECT_EQ(result.total, 1001U);
    ASSERT_EQ(result.objects.size(), 10U);
    EXPECT_EQ(drawing.entity(result.objects[0].index).row->name, "杭");
    EXPECT_EQ(result.objects[1].index, 7U);
}

TEST_F(DeskWindow, FindingByKeysSelectsAndShowsTheObject) {
    import(folder.example(QStringLiteral("road.sim")));
    press(Qt::Key_F, Qt::ControlModifier);
    QLineEdit* edit = window->find().edit();
    ASSERT_EQ(window->focusWidget(), edit);
    edit->setText(QStringLiteral("金属標")); // as an input method commits it
    EXPECT_EQ(window->find().list()->count(), 6);
    EXPECT_EQ(window->find().countText(), QStringLiteral("6件"));
    QTest::keyClick(edit, Qt::Key_Down);
    QTest::keyClick(edit, Qt::Key_Return);
    ASSERT_TRUE(plan().selected());
    const std::size_t entity = plan().selected()->index;
    EXPECT_EQ(drawing().entity(entity).row->name, "金属標2");
    // In the middle of the plan, which shows little else.
    const QPoint middle = plan().rect().center();
    EXPECT_NEAR(pixelOf(entity).x(), middle.x(), 2);
    EXPECT_NEAR(pixelOf(entity).y(), middle.y(), 2);
    EXPECT_EQ(property(QStringLiteral("Name")), QStringLiteral("金属標2"));
    QTest::keyClick(edit, Qt::Key_Escape);
    EXPECT_FALSE(window->find().isVisible());
    EXPECT_EQ(window->focusWidget(), &plan());
}

TEST_F(DeskWindow, WhatIsFoundOnAHiddenLayerIsShown) {
    import(folder.example(QStringLiteral("cadastral.sim")));
    window->layers().setAllShown(false);
    type(QStringLiteral("find"));
    window->find().edit()->setText(QStringLiteral("田中403"));
    QTest::keyClick(window->find().edit(), Qt::Key_Return);
    ASSERT_TRUE(plan().selected());
    EXPECT_FALSE(window->layers().hidden()[0]);
    window->find().edit()->setText(QStringLiteral("無い"));
    EXPECT_EQ(window->find().countText(), QStringLiteral("見つかりません"));
}

TEST_F(DeskWindow, FindingFollowsTheDrawing) {
    import(folder.example(QStringLiteral("cadastral.sim")));
    window->startFind();
    window->find().edit()->setText(QStringLiteral("田中403"));
    EXPECT_EQ(window->find().list()->count(), 1);
    window->undo();
    EXPECT_EQ(window->find().list()->count(), 0);
    window->redo();
    EXPECT_EQ(window->find().list()->count(), 1);
    window->undo();
    window->undo();
    window->newDrawing();
    EXPECT_EQ(window->find().list()->count(), 0);
}

// Setting them takes a time that grows with the square of the accents in a row: 45,000 would hold the window for minutes.
TEST_F(DeskWindow, AnEndlessNameIsShownInPartFoundInAllOfItAndCopiedWhole) {
    constexpr int kLongest = 501; // with the dots
    QString name = QStringLiteral("杭");
    for (int i = 0; i < 45000; ++i) {
        name += QChar(i % 2 == 0 ? 0x0301 : 0x0316);
    }
    name += QStringLiteral("ＩＰ");
    import(folder.write(QStringLiteral("a.sim"), "\xEF\xBB\xBF"
                                                 "A00,\r\nA01,1," +
                                                     name.toUtf8() + ",100.0,200.0,3.0,\r\nA99,\r\n"));
    ASSERT_EQ(drawing().entityCount(), 1U);
    EXPECT_EQ(NameSearch(drawing()).find(QStringLiteral("ip"), kMany).total, 1U);
    plan().fitAll();
    plan().placeNames();
    plan().select(PlanObject{PlanObject::Kind::Entity, 0, {}});
    QApplication::processEvents();
    for (int i = 0; i < window->properties().topLevelItemCount(); ++i) {
        EXPECT_LE(window->properties().topLevelItem(i)->text(1).size(), kLongest);
    }
    const auto* view = window->table().findChild<QTableView*>();
    ASSERT_NE(view, nullptr);
    for (int column = 0; column < view->model()->columnCount(); ++column) {
        EXPECT_LE(view->model()->index(0, column).data().toString().size(), kLongest) << column;
    }
    EXPECT_TRUE(window->table().copied().contains(name));
    EXPECT_TRUE(shownName(name.toStdString()).endsWith(QChar(0x2026)));
    EXPECT_EQ(shownName("KP1"), QStringLiteral("KP1"));
}

} // namespace
} // namespace fenmark::desk::test
