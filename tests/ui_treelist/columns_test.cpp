// Columns: special widths, and the header.
#include <QMenu>
#include <QScrollBar>

#include "support/pointer.h"
#include "ui_treelist/tree_list_fixture.h"

namespace fenmark::ui::treelist {
namespace {

class HeaderTest : public TreeListTest {
  protected:
    HeaderTest() { QApplication::processEvents(); }
    [[nodiscard]] QWidget* header() const { return list_->GetHeaderCtrl(); }
    void drag(const QPoint& from, const QPoint& to) {
        QTest::mousePress(header(), Qt::LeftButton, Qt::NoModifier, from);
        for (int step = 1; step <= 4; ++step) {
            moveTo(from + (to - from) * step / 4);
        }
        QTest::mouseRelease(header(), Qt::LeftButton, Qt::NoModifier, to);
    }
    void moveTo(const QPoint& point) {
        QMouseEvent move(QEvent::MouseMove, point, header()->mapToGlobal(QPointF(point)), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(header(), &move);
    }
};

TEST_F(HeaderTest, AWidthOfMinusOneIsTheMinimum) {
    list_->SetColumnWidth(1, -1, 55);
    EXPECT_EQ(list_->GetColumnWidth(1), 55);
}

TEST_F(HeaderTest, AWidthOfMinusThreeIsTheWidestTextOfTheRowsShownAndAtLeastTheMinimum) {
    list_->SetItemText(a11_, 1, QString(80, 'w'));
    list_->SetItemText(b_, 1, "wide enough");
    list_->SetColumnWidth(1, -3, 10);
    EXPECT_EQ(list_->GetColumnWidth(1), list_->GetStringWidth("wide enough")) << "a11 is not shown";
    list_->SetColumnWidth(1, -3, 400);
    EXPECT_EQ(list_->GetColumnWidth(1), 400);
}

TEST_F(HeaderTest, InTheFirstColumnTheTreePartsAreAdded) {
    list_->SetItemText(a1_, 0, "a rather long name");
    list_->SetColumnWidth(0, -3);
    EXPECT_EQ(list_->GetColumnWidth(0), list_->GetStringWidth("a rather long name") + 2 + 16 + 16 + 16 + 8 + 2);
}

TEST_F(HeaderTest, AWidthOfMinusFourBeginsWithTheHeadersTextPlusFour) {
    list_->SetColumnText(1, "a header wider than its cells");
    list_->SetColumnWidth(1, -4);
    EXPECT_EQ(list_->GetColumnWidth(1), list_->GetStringWidth("a header wider than its cells") + 4);
    list_->SetColumnWidth(1, -3);
    EXPECT_EQ(list_->GetColumnWidth(1), list_->GetStringWidth(""));
}

TEST_F(HeaderTest, AFittedWidthHoldsTheWidestOfManyTextsOfEveryScript) {
    const QStringList texts{QStringLiteral("路線成果-連続線(曲線含み)"),
                            QStringLiteral("WWWWWWWWWW"),
                            QStringLiteral("iiiiiiiiiiiiiiiiiiiiiiiiiiiiii"),
                            QStringLiteral("ﾊﾝｶｸ ｶﾅ ﾉ ﾅﾏｴ"),
                            QStringLiteral("AVAVAVAVAVAV"),
                            QStringLiteral("𠮷野 測量")};
    for (const QString& widest : texts) {
        list_->DeleteAllItems();
        for (int i = 0; i < 200; ++i) {
            CTreeListItem* row = list_->InsertItem("r");
            list_->SetItemText(row, 1, i == 77 ? widest : QString(widest.size() / 2, QLatin1Char('i')));
        }
        list_->SetColumnWidth(1, -3, 0);
        EXPECT_EQ(list_->GetColumnWidth(1), list_->GetStringWidth(widest)) << widest.toStdString();
    }
}

TEST_F(HeaderTest, WithoutRowsAFittedWidthIsItsMinimum) {
    list_->DeleteAllItems();
    list_->SetColumnWidth(1, -3, 44);
    EXPECT_EQ(list_->GetColumnWidth(1), 44);
}

TEST_F(HeaderTest, WidthsOfAHundredThousandRowsAreFitted) {
    const CTreeListItem* widest = nullptr;
    for (int i = 0; i < 100000; ++i) {
        CTreeListItem* row = list_->InsertItem(QString::number(i) + QStringLiteral(" 測点"));
        widest = i == 88888 ? row : widest;
    }
    list_->SetColumnWidth(0, -4);
    EXPECT_EQ(list_->GetColumnWidth(0), list_->GetStringWidth(list_->GetItemText(widest)) + 2 + 16 + 16 + 8 + 2);
}

TEST_F(HeaderTest, AClickOnAColumnThatFillsTheViewDoesNotScrollSideways) {
    list_->SetColumnWidth(1, 2000);
    QApplication::processEvents();
    list_->horizontalScrollBar()->setValue(600);
    QTest::mouseClick(list_->viewport(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(50, list_->GetItemRect(b_).center().y()));
    EXPECT_EQ(list_->GetSelectColumn(), 1);
    EXPECT_EQ(list_->horizontalScrollBar()->value(), 600);
    // A column that is partly out of view comes into it, from its beginning.
    list_->horizontalScrollBar()->setValue(0);
    list_->ActiveItem(b_, 1);
    EXPECT_EQ(list_->horizontalScrollBar()->value(), 200);
}

TEST_F(HeaderTest, WidthsAreKeptBetweenTheLimits) {
    list_->SetColumnWidth(1, 500, 20, 100);
    EXPECT_EQ(list_->GetColumnWidth(1), 100);
    list_->SetColumnWidth(1, 5);
    EXPECT_EQ(list_->GetColumnWidth(1), 20) << "the limits stay those of the column";
    list_->SetColumnWidth(1, 5000, 20, 0);
    EXPECT_EQ(list_->GetColumnWidth(1), 5000) << "a maximum of 0 means none";
    EXPECT_EQ(list_->InsertColumn("x", kColumnInitialFormat, 5, -1, 30, 40), 3);
    EXPECT_EQ(list_->GetColumnWidth(3), 30);
}

TEST_F(HeaderTest, DraggingAnEdgeChangesTheWidthWithinItsLimits) {
    list_->SetColumnWidth(0, 200, 50, 260);
    drag(QPoint(200, 8), QPoint(230, 8));
    EXPECT_EQ(list_->GetColumnWidth(0), 230);
    drag(QPoint(230, 8), QPoint(400, 8));
    EXPECT_EQ(list_->GetColumnWidth(0), 260);
    drag(QPoint(260, 8), QPoint(2, 8));
    EXPECT_EQ(list_->GetColumnWidth(0), 50);
    EXPECT_EQ(list_->Columns().at(0).trackStartWidth, 260);
    EXPECT_EQ(list_->Columns().at(0).trackStartPosition, 260);
}

TEST_F(HeaderTest, ADoubleClickOnAnEdgeFitsTheWidth) {
    list_->SetItemText(b_, 1, "a text wider than the column was");
    QTest::mouseDClick(header(), Qt::LeftButton, Qt::NoModifier, QPoint(279, 8));
    EXPECT_EQ(list_->GetColumnWidth(1), list_->GetStringWidth("a text wider than the column was"));
}

TEST_F(HeaderTest, TheCursorShowsWhereAnEdgeCanBeGrasped) {
    test::hover(header(), QPoint(199, 8));
    EXPECT_EQ(header()->cursor().shape(), Qt::SplitHCursor);
    test::hover(header(), QPoint(100, 8));
    EXPECT_EQ(header()->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(HeaderTest, AColumnOfNoWidthCanBeWidenedAgain) {
    list_->SetColumnWidth(1, 0);
    drag(QPoint(201, 8), QPoint(241, 8));
    EXPECT_EQ(list_->GetColumnWidth(1), 40);
    EXPECT_EQ(list_->GetColumnWidth(0), 200);
}

TEST_F(HeaderTest, AColumnIsDraggedToAnotherPlaceIfTheStyleAllowsIt) {
    drag(QPoint(100, 8), QPoint(390, 8));
    EXPECT_EQ(list_->GetColumnOrderArray(), (std::vector<int>{0, 1, 2}));
    setStyle(kStyleDragColumns);
    drag(QPoint(100, 8), QPoint(390, 8));
    EXPECT_EQ(list_->GetColumnOrderArray(), (std::vector<int>{1, 2, 0}));
    drag(QPoint(300, 8), QPoint(5, 8));
    EXPECT_EQ(list_->GetColumnOrderArray(), (std::vector<int>{0, 1, 2}));
}

TEST_F(HeaderTest, AColumnDraggedOffTheHeaderGoesToTheHiddenListButNeverTheLastOne) {
    setStyle(kStyleHideColumns);
    drag(QPoint(240, 8), QPoint(240, 150));
    EXPECT_EQ(list_->GetColumnOrderArray(), (std::vector<int>{0, 2}));
    EXPECT_EQ(list_->GetColumnFormat(1) & kColumnHidden, std::uint32_t{kColumnHidden});
    drag(QPoint(240, 8), QPoint(240, 150));
    drag(QPoint(100, 8), QPoint(100, 150));
    EXPECT_EQ(list_->GetColumnOrderArray(), std::vector<int>{0});
    EXPECT_TRUE(list_->GetHeaderCtrl()->showColumn(1));
    EXPECT_EQ(list_->GetColumnOrderArray(), (std::vector<int>{0, 1}));
}

TEST_F(HeaderTest, TheHeadersMenuBringsHiddenColumnsBack) {
    setStyle(kStyleHideColumns);
    list_->GetHeaderCtrl()->hideColumn(1);
    list_->GetHeaderCtrl()->showMenu(QPoint(10, 10), 0);
    auto* menu = header()->findChild<QMenu*>();
    ASSERT_NE(menu, nullptr);
    QAction* found = nullptr;
    for (QAction* action : menu->actions()) {
        found = action->text() == "Value" ? action : found;
    }
    ASSERT_NE(found, nullptr);
    EXPECT_FALSE(found->isChecked());
    found->trigger();
    EXPECT_EQ(list_->GetColumnOrderArray(), (std::vector<int>{0, 2, 1}));
    menu->close();
}

TEST_F(HeaderTest, AltWithLeftAndRightMovesAColumnAndWithShiftItsWidth) {
    setStyle(kStyleDragColumns);
    list_->SelectItem(a_, 0);
    press(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(list_->GetColumnOrderArray(), (std::vector<int>{1, 0, 2}));
    press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(list_->GetColumnOrderArray(), (std::vector<int>{0, 1, 2}));
    press(Qt::Key_Right, Qt::AltModifier | Qt::ShiftModifier);
    EXPECT_EQ(list_->GetColumnWidth(0), 208);
}

TEST_F(HeaderTest, AltWithDownOpensTheHeadersMenu) {
    list_->SelectItem(a_, 0);
    press(Qt::Key_Down, Qt::AltModifier);
    auto* menu = header()->findChild<QMenu*>();
    ASSERT_NE(menu, nullptr);
    EXPECT_TRUE(menu->isVisible());
    EXPECT_EQ(list_->GetSelectedItem(), a_);
    menu->close();
}

TEST_F(HeaderTest, AClickOnAHeaderCellIsSignalled) {
    int clicked = -1;
    QObject::connect(list_, &CTreeListCtrl::headerClicked, list_, [&](int column) { clicked = column; });
    QTest::mouseClick(header(), Qt::LeftButton, Qt::NoModifier, QPoint(240, 8));
    EXPECT_EQ(clicked, 1);
}

TEST_F(HeaderTest, TheHeaderScrollsWithTheColumns) {
    list_->SetColumnWidth(0, 600);
    QApplication::processEvents();
    list_->EnsureVisible(a_, 2);
    const QPoint origin = list_->GetOrigin();
    EXPECT_GT(origin.x(), 0);
    EXPECT_EQ(list_->GetHeaderCtrl()->cellRect(2).x(), list_->GetItemRect(a_, 2).x());
    EXPECT_EQ(list_->GetHeaderCtrl()->columnAt(0), 0);
}

TEST_F(HeaderTest, WithoutItsStyleBitTheHeaderTakesNoRoom) {
    const int with = list_->GetViewRect().height();
    list_->SetStyle(list_->GetStyle() & ~std::uint32_t{kStyleHeader});
    EXPECT_GT(list_->GetViewRect().height(), with);
    EXPECT_FALSE(header()->isVisible());
}

TEST_F(HeaderTest, TheTreeStandsInTheFirstShownColumn) {
    list_->SetColumnOrderArray({1, 0});
    int flags = 0;
    int column = -1;
    list_->HitTest(QPoint(2 + 8, list_->GetItemRect(a_).center().y()), &flags, &column);
    EXPECT_EQ(flags, kHitButton);
    EXPECT_EQ(column, 1);
}

TEST_F(HeaderTest, EscapeTakesADragOfAWidthBack) {
    QTest::mousePress(header(), Qt::LeftButton, Qt::NoModifier, QPoint(200, 8));
    moveTo(QPoint(240, 8));
    EXPECT_EQ(list_->GetColumnWidth(0), 240);
    press(Qt::Key_Escape);
    EXPECT_EQ(list_->GetColumnWidth(0), 200);
    moveTo(QPoint(260, 8));
    QTest::mouseRelease(header(), Qt::LeftButton, Qt::NoModifier, QPoint(260, 8));
    EXPECT_EQ(list_->GetColumnWidth(0), 200);
}

TEST_F(HeaderTest, EscapeEndsADragOfAColumn) {
    setStyle(kStyleDragColumns);
    int clicked = -1;
    QObject::connect(list_, &CTreeListCtrl::headerClicked, list_, [&](int column) { clicked = column; });
    QTest::mousePress(header(), Qt::LeftButton, Qt::NoModifier, QPoint(100, 8));
    moveTo(QPoint(300, 8));
    EXPECT_TRUE(list_->GetHeaderCtrl()->isDragging());
    press(Qt::Key_Escape);
    EXPECT_FALSE(list_->GetHeaderCtrl()->isDragging());
    QTest::mouseRelease(header(), Qt::LeftButton, Qt::NoModifier, QPoint(300, 8));
    EXPECT_EQ(list_->GetColumnOrderArray(), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(clicked, -1);
}

TEST_F(HeaderTest, DeletingAColumnThatIsDraggedEndsTheDrag) {
    QTest::mousePress(header(), Qt::LeftButton, Qt::NoModifier, QPoint(399, 8));
    moveTo(QPoint(420, 8));
    list_->DeleteColumn(2);
    moveTo(QPoint(440, 8));
    QTest::mouseRelease(header(), Qt::LeftButton, Qt::NoModifier, QPoint(440, 8));
    EXPECT_EQ(list_->GetColumnCount(), 2);
    EXPECT_EQ(list_->GetColumnWidth(1), 80);
}

TEST_F(HeaderTest, TheHeadersMenuSortsColumnsThatCanSortAsAClickDoes) {
    int clicked = -1;
    QObject::connect(list_, &CTreeListCtrl::headerClicked, list_, [&](int column) { clicked = column; });
    list_->GetHeaderCtrl()->showMenu(QPoint(10, 10), 1);
    auto* plain = header()->findChild<QMenu*>();
    const auto count = plain->actions().size();
    delete plain;
    list_->SetColumnFormat(1, kColumnInitialFormat | kColumnCanSort);
    list_->GetHeaderCtrl()->showMenu(QPoint(10, 10), 1);
    auto* menu = header()->findChild<QMenu*>();
    ASSERT_GT(menu->actions().size(), count);
    menu->actions().front()->trigger();
    EXPECT_EQ(clicked, 1);
    menu->close();
}

} // namespace
} // namespace fenmark::ui::treelist
