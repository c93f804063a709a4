// What screen readers learn.
#include <algorithm>
#include <utility>

#include <QAccessible>

#include "ui/treelist/tree_list_accessible.h"
#include "ui_treelist/tree_list_fixture.h"

namespace fenmark::ui::treelist {
namespace {

class AccessibleTest : public TreeListTest {
  protected:
    [[nodiscard]] QAccessibleInterface* control() const { return QAccessible::queryAccessibleInterface(list_); }
    [[nodiscard]] QAccessibleInterface* cell(int row, int column) const {
        return control()->tableInterface()->cellAt(row, column);
    }
};

TEST_F(AccessibleTest, TheControlIsATreeWithATableOfTheRowsShown) {
    ASSERT_NE(control(), nullptr);
    EXPECT_EQ(control()->role(), QAccessible::Tree);
    ASSERT_NE(control()->tableInterface(), nullptr);
    EXPECT_EQ(control()->tableInterface()->rowCount(), 5);
    EXPECT_EQ(control()->tableInterface()->columnCount(), 3);
    EXPECT_EQ(control()->childCount(), 3 + 15);
    EXPECT_EQ(control()->child(0)->role(), QAccessible::ColumnHeader);
    EXPECT_EQ(control()->child(0)->text(QAccessible::Name), "Name");
    EXPECT_EQ(control()->child(3 + 3)->text(QAccessible::Name), "a1");
    EXPECT_EQ(control()->indexOfChild(cell(1, 0)), 6);
    EXPECT_EQ(control()->indexOfChild(control()->child(2)), 2);
    EXPECT_EQ(control()->child(99), nullptr);
}

TEST_F(AccessibleTest, CellsHaveNamesRolesPlacesAndRectangles) {
    list_->SetItemText(b_, 1, "値");
    QAccessibleInterface* name = cell(3, 0);
    EXPECT_EQ(name->role(), QAccessible::TreeItem);
    EXPECT_EQ(name->text(QAccessible::Name), "b");
    QAccessibleInterface* value = cell(3, 1);
    EXPECT_EQ(value->role(), QAccessible::Cell);
    EXPECT_EQ(value->text(QAccessible::Name), "値");
    EXPECT_EQ(value->tableCellInterface()->rowIndex(), 3);
    EXPECT_EQ(value->tableCellInterface()->columnIndex(), 1);
    ASSERT_EQ(value->tableCellInterface()->columnHeaderCells().size(), 1);
    EXPECT_EQ(value->tableCellInterface()->columnHeaderCells()[0]->text(QAccessible::Name), "Value");
    const QRect rect = list_->GetItemRect(b_, 1);
    EXPECT_EQ(value->rect(), QRect(list_->viewport()->mapToGlobal(rect.topLeft()), rect.size()));
    EXPECT_EQ(control()->childAt(value->rect().center().x(), value->rect().center().y()), value);
    EXPECT_EQ(value->parent(), control());
}

TEST_F(AccessibleTest, StatesSayCheckedMixedExpandedSelectedAndFocused) {
    list_->SetCheck(a2_, 1);
    list_->SelectItem(b_, 0);
    EXPECT_TRUE(cell(0, 0)->state().checkable);
    EXPECT_TRUE(cell(0, 0)->state().checkStateMixed);
    EXPECT_TRUE(cell(0, 0)->state().expanded);
    EXPECT_FALSE(cell(0, 0)->state().collapsed);
    EXPECT_TRUE(cell(1, 0)->state().collapsed);
    EXPECT_TRUE(cell(2, 0)->state().checked);
    EXPECT_FALSE(cell(2, 0)->state().expandable);
    EXPECT_TRUE(cell(3, 0)->state().selected);
    EXPECT_TRUE(cell(3, 0)->state().focused);
    EXPECT_FALSE(cell(3, 1)->state().focused);
    EXPECT_EQ(control()->focusChild(), cell(3, 0));
    list_->SetItemState(b_, 0, kItemCheckBox);
    EXPECT_FALSE(cell(3, 0)->state().checkable);
}

TEST_F(AccessibleTest, LocksAreDescribed) {
    const QString open = cell(0, 0)->text(QAccessible::Description);
    list_->SetLock(a2_, 1);
    const QString mixed = cell(0, 0)->text(QAccessible::Description);
    list_->SetLock(a_, 1);
    const QString locked = cell(0, 0)->text(QAccessible::Description);
    EXPECT_FALSE(open.isEmpty());
    EXPECT_NE(open, locked);
    EXPECT_NE(mixed, locked);
    EXPECT_NE(mixed, open);
}

TEST_F(AccessibleTest, ActionsDoWhatClicksDo) {
    QAccessibleActionInterface* actions = cell(0, 0)->actionInterface();
    ASSERT_NE(actions, nullptr);
    EXPECT_TRUE(actions->actionNames().contains(QAccessibleActionInterface::toggleAction()));
    actions->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(list_->GetCheck(a_), 1);
    EXPECT_EQ(window_.countOf(-427), 1);
    actions->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(list_->GetSelectedItem(), a_);
    actions->doAction(QAccessibleActionInterface::showMenuAction());
    EXPECT_FALSE(a_->isExpanded());
    EXPECT_EQ(control()->tableInterface()->rowCount(), 3);
}

TEST_F(AccessibleTest, CellsOfDeletedRowsEnd) {
    const QAccessible::Id id = QAccessible::uniqueId(cell(3, 0));
    list_->DeleteItem(b_);
    EXPECT_EQ(QAccessible::accessibleInterface(id), nullptr);
    EXPECT_EQ(cell(3, 0)->text(QAccessible::Name), "c");
}

// What was announced, as (event, name of the cell).
std::vector<std::pair<QAccessible::Event, QString>> announced;

void announce(QAccessibleEvent* event) {
    QAccessibleInterface* from = event->accessibleInterface();
    announced.emplace_back(event->type(), from ? from->text(QAccessible::Name) : QString());
}

TEST_F(AccessibleTest, MovesOfTheFocusAndChangesOfStateAreAnnounced) {
    hearTreeListEvents(announce);
    list_->SelectItem(a_, 0);
    announced.clear();
    press(Qt::Key_Down);
    const auto heard = [](QAccessible::Event type, const QString& name) {
        return std::count(announced.begin(), announced.end(), std::pair(type, name)) > 0;
    };
    EXPECT_TRUE(heard(QAccessible::Focus, "a1"));
    announced.clear();
    press(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_TRUE(heard(QAccessible::StateChanged, "a1"));
    announced.clear();
    list_->SetItemText(a1_, 0, "renamed");
    EXPECT_TRUE(heard(QAccessible::NameChanged, "renamed"));
    announced.clear();
    list_->Expand(a1_, ExpandCode::Expand);
    QApplication::processEvents();
    EXPECT_TRUE(std::any_of(announced.begin(), announced.end(),
                            [](const auto& heardEvent) { return heardEvent.first == QAccessible::TableModelChanged; }));
    hearTreeListEvents(nullptr);
    announced.clear();
    press(Qt::Key_Down);
    EXPECT_TRUE(announced.empty());
}

TEST_F(AccessibleTest, SelectionIsReadAndMadeByRow) {
    setStyle(kStyleMultiSelect);
    QAccessibleTableInterface* table = control()->tableInterface();
    EXPECT_TRUE(table->selectRow(3));
    EXPECT_EQ(list_->GetSelectedItem(), b_);
    EXPECT_EQ(table->selectedRows(), QList<int>{3});
    EXPECT_EQ(table->selectedCellCount(), 3);
    EXPECT_TRUE(table->isRowSelected(3));
    EXPECT_TRUE(table->unselectRow(3));
    EXPECT_EQ(table->selectedRowCount(), 0);
    EXPECT_FALSE(table->selectRow(99));
}

TEST_F(AccessibleTest, ATextThatIsSetIsToldToTheParentWhoMayRefuse) {
    list_->SetColumnModify(1, 1);
    cell(3, 1)->setText(QAccessible::Name, "typed");
    EXPECT_EQ(list_->GetItemText(b_, 1), "typed");
    EXPECT_EQ(window_.countOf(-420), 1);
    window_.answers[-420] = -1;
    cell(3, 1)->setText(QAccessible::Name, "refused");
    EXPECT_EQ(list_->GetItemText(b_, 1), "typed");
    EXPECT_EQ(list_->GetControl(), nullptr);
    window_.answers.clear();
    setStyle(kStyleNoEdit);
    cell(3, 1)->setText(QAccessible::Name, "not allowed");
    cell(3, 0)->setText(QAccessible::Name, "no editor");
    EXPECT_EQ(list_->GetItemText(b_, 1), "typed");
    EXPECT_EQ(list_->GetItemText(b_, 0), "b");
}

} // namespace
} // namespace fenmark::ui::treelist
