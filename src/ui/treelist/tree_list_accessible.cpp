// The control is a tree whose children are the header cells, if the header is shown, and then all cells of the rows
// shown, row by row. Interfaces of cells are made when they are asked for and end when rows or columns go.
#include "ui/treelist/tree_list_accessible.h"

#include <map>
#include <unordered_map>
#include <utility>

#include <QAccessible>
#include <QAccessibleWidget>
#include <QComboBox>
#include <QLineEdit>
#include <QPointer>

#include "ui/treelist/tree_list_ctrl.h"
#include "ui/treelist/tree_list_header_ctrl.h"
#include "ui/treelist/tree_list_text.h"

namespace fenmark::ui::treelist {

namespace {

// Cells by row and column; header cells have no row.
using CellKey = std::pair<const CTreeListItem*, int>;
using CellIds = std::map<CellKey, QAccessible::Id>;

std::unordered_map<const CTreeListCtrl*, CellIds>& handedOut() {
    static std::unordered_map<const CTreeListCtrl*, CellIds> ids;
    return ids;
}

bool headShown(const CTreeListCtrl& control) {
    return (control.GetStyle() & kStyleHeader) != 0;
}
int columnsShown(const CTreeListCtrl& control) {
    return static_cast<int>(control.Columns().shown().size());
}

class CellAccessible : public QAccessibleInterface,
                       public QAccessibleTableCellInterface,
                       public QAccessibleActionInterface {
  public:
    CellAccessible(CTreeListCtrl* control, CTreeListItem* item, int column)
        : control_(control), item_(item), column_(column) {}

    [[nodiscard]] bool isValid() const override { return !control_.isNull(); }
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* parent() const override {
        return control_ ? QAccessible::queryAccessibleInterface(control_) : nullptr;
    }
    [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface*) const override { return -1; }

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        if (!control_) {
            return {};
        }
        switch (kind) {
        case QAccessible::Name:
            return item_ ? control_->GetItemText(item_, column_) : control_->GetColumnText(column_);
        case QAccessible::Description:
            return item_ && isTreeCell() ? lockText() : QString();
        default:
            return {};
        }
    }
    void setText(QAccessible::Text kind, const QString& text) override {
        if (!control_ || !item_ || kind != QAccessible::Name || control_->GetColumnModify(column_) == 0) {
            return;
        }
        // As if typed in: the parent is notified and may refuse. This interface may end meanwhile.
        const QPointer<CTreeListCtrl> control = control_;
        if (!control->BeginModify(item_, column_) || !control) {
            return;
        }
        if (auto* edit = qobject_cast<QLineEdit*>(control->GetControl())) {
            edit->setText(text);
        } else if (auto* combo = qobject_cast<QComboBox*>(control->GetControl())) {
            combo->setEditText(text);
        }
        control->UpdateModify();
    }
    [[nodiscard]] QRect rect() const override {
        if (!control_) {
            return {};
        }
        if (!item_) {
            const QRect cell = control_->GetHeaderCtrl()->cellRect(column_);
            return QRect(control_->GetHeaderCtrl()->mapToGlobal(cell.topLeft()), cell.size());
        }
        const QRect cell = control_->GetItemRect(item_, column_);
        return QRect(control_->viewport()->mapToGlobal(cell.topLeft()), cell.size());
    }
    [[nodiscard]] QAccessible::Role role() const override {
        return !item_ ? QAccessible::ColumnHeader : (isTreeCell() ? QAccessible::TreeItem : QAccessible::Cell);
    }
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state;
        if (!control_) {
            state.invalid = true;
            return state;
        }
        state.disabled = !control_->isEnabled();
        if (!item_) {
            return state;
        }
        state.selectable = true;
        state.focusable = true;
        state.multiSelectable = (control_->GetStyle() & kStyleMultiSelect) != 0;
        state.selected = (item_->state & kItemSelected) != 0;
        state.focused =
            control_->hasFocus() && control_->GetFocusItem() == item_ && control_->GetSelectColumn() == column_;
        state.editable = control_->GetColumnModify(column_) != 0 && !(control_->GetStyle() & kStyleNoEdit);
        const QRect cell = control_->GetItemRect(item_, column_);
        state.offscreen = !control_->viewport()->rect().intersects(cell);
        state.invisible = cell.isEmpty();
        if (isTreeCell()) {
            state.expandable = item_->hasChildren();
            state.expanded = state.expandable && item_->isExpanded();
            state.collapsed = state.expandable && !item_->isExpanded();
            if (hasCheckBox()) {
                const int check = control_->GetCheck(item_);
                state.checkable = true;
                state.checked = check == 1;
                state.checkStateMixed = check == 2;
            }
        }
        return state;
    }
    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::TableCellInterface) {
            return static_cast<QAccessibleTableCellInterface*>(this);
        }
        if (type == QAccessible::ActionInterface) {
            return static_cast<QAccessibleActionInterface*>(this);
        }
        return nullptr;
    }

    // Place in the table.
    [[nodiscard]] bool isSelected() const override { return item_ && (item_->state & kItemSelected); }
    [[nodiscard]] QList<QAccessibleInterface*> columnHeaderCells() const override;
    [[nodiscard]] QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
    [[nodiscard]] int columnIndex() const override { return control_ ? control_->Columns().placeOf(column_) : -1; }
    [[nodiscard]] int rowIndex() const override { return control_ && item_ ? control_->GetItemIndex(item_) : -1; }
    [[nodiscard]] int columnExtent() const override { return 1; }
    [[nodiscard]] int rowExtent() const override { return 1; }
    [[nodiscard]] QAccessibleInterface* table() const override { return parent(); }

    // Actions: what a click does.
    [[nodiscard]] QStringList actionNames() const override {
        QStringList names;
        if (!item_ || !control_) {
            return names;
        }
        names << setFocusAction() << pressAction();
        if (isTreeCell() && hasCheckBox()) {
            names << toggleAction();
        }
        if (isTreeCell() && item_->canHaveButton() && (control_->GetStyle() & kStyleTree)) {
            names << showMenuAction();
        }
        return names;
    }
    void doAction(const QString& name) override {
        if (!item_ || !control_) {
            return;
        }
        if (name == setFocusAction()) {
            control_->setFocus();
            control_->ActiveItem(item_, column_);
        } else if (name == pressAction()) {
            control_->SelectItem(item_, column_);
        } else if (name == toggleAction() && hasCheckBox()) {
            control_->SetItemCheck(item_, column_);
        } else if (name == showMenuAction()) {
            control_->Expand(item_, ExpandCode::Toggle);
        }
    }
    [[nodiscard]] QStringList keyBindingsForAction(const QString& name) const override {
        return name == toggleAction() ? QStringList{QStringLiteral("Ctrl+Space")} : QStringList();
    }
    [[nodiscard]] QString localizedActionDescription(const QString& name) const override {
        return name == showMenuAction() ? treeListText("Expands or collapses the row", "行を展開または折りたたみます")
                                        : QAccessibleActionInterface::localizedActionDescription(name);
    }

  private:
    [[nodiscard]] bool isTreeCell() const { return column_ == control_->Columns().treeColumn(); }
    [[nodiscard]] bool hasCheckBox() const {
        return (control_->GetStyle() & kStyleCheckBoxes) && (item_->state & kItemCheckBox);
    }
    [[nodiscard]] QString lockText() const {
        if (!(control_->GetStyle() & kStyleLockBoxes) || !(item_->state & kItemLockBox)) {
            return {};
        }
        switch (control_->GetLock(item_)) {
        case 0:
            return treeListText("Unlocked", "ロックなし");
        case 1:
            return treeListText("Locked", "ロック");
        default:
            return treeListText("Partly locked", "一部ロック");
        }
    }

    QPointer<CTreeListCtrl> control_;
    CTreeListItem* item_;
    int column_;
};

QAccessibleInterface* cellOf(CTreeListCtrl* control, CTreeListItem* item, int column) {
    CellIds& ids = handedOut()[control];
    const CellKey key{item, column};
    const auto found = ids.find(key);
    if (found != ids.end()) {
        if (QAccessibleInterface* known = QAccessible::accessibleInterface(found->second)) {
            return known;
        }
    }
    auto* cell = new CellAccessible(control, item, column);
    ids[key] = QAccessible::registerAccessibleInterface(cell); // which owns it
    return cell;
}

QList<QAccessibleInterface*> CellAccessible::columnHeaderCells() const {
    if (!control_ || !headShown(*control_)) {
        return {};
    }
    return {cellOf(control_, nullptr, column_)};
}

class ControlAccessible : public QAccessibleWidget, public QAccessibleTableInterface {
  public:
    explicit ControlAccessible(CTreeListCtrl* control) : QAccessibleWidget(control, QAccessible::Tree) {}

    [[nodiscard]] CTreeListCtrl* control() const { return static_cast<CTreeListCtrl*>(widget()); }

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::TableInterface) {
            return static_cast<QAccessibleTableInterface*>(this);
        }
        return QAccessibleWidget::interface_cast(type);
    }
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.multiSelectable = (control()->GetStyle() & kStyleMultiSelect) != 0;
        return state;
    }

    // Children.
    [[nodiscard]] int headCount() const { return headShown(*control()) ? columnsShown(*control()) : 0; }
    [[nodiscard]] int childCount() const override {
        return headCount() + control()->GetVisibleCount() * columnsShown(*control());
    }
    [[nodiscard]] QAccessibleInterface* child(int index) const override {
        const int columns = columnsShown(*control());
        if (index < 0 || columns == 0 || index >= childCount()) {
            return nullptr;
        }
        if (index < headCount()) {
            return cellOf(control(), nullptr, columnAtPlace(index));
        }
        index -= headCount();
        return cellAt(index / columns, index % columns);
    }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override {
        auto* cell = dynamic_cast<const CellAccessible*>(child);
        if (!cell) {
            return -1;
        }
        const int place = cell->columnIndex();
        const int row = cell->rowIndex();
        return cell->role() == QAccessible::ColumnHeader ? place : headCount() + row * columnsShown(*control()) + place;
    }
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override {
        const QPoint global(x, y);
        if (headShown(*control())) {
            CTreeListHeaderCtrl* header = control()->GetHeaderCtrl();
            const QPoint point = header->mapFromGlobal(global);
            if (header->rect().contains(point)) {
                const int column = header->columnAt(point.x());
                return column < 0 ? nullptr : cellOf(control(), nullptr, column);
            }
        }
        int column = -1;
        CTreeListItem* item = control()->HitTest(control()->viewport()->mapFromGlobal(global), nullptr, &column);
        return item && column >= 0 ? cellOf(control(), item, column) : nullptr;
    }
    [[nodiscard]] QAccessibleInterface* focusChild() const override {
        CTreeListItem* item = control()->GetFocusItem();
        return item && control()->Tree().isShown(item) &&
                       control()->Columns().placeOf(control()->GetSelectColumn()) >= 0
                   ? cellOf(control(), item, control()->GetSelectColumn())
                   : nullptr;
    }

    // Table.
    [[nodiscard]] QAccessibleInterface* caption() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* summary() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* cellAt(int row, int place) const override {
        if (row < 0 || place < 0 || place >= columnsShown(*control())) {
            return nullptr;
        }
        CTreeListItem* item = control()->Tree().itemAt(static_cast<std::uint32_t>(row));
        return item ? cellOf(control(), item, columnAtPlace(place)) : nullptr;
    }
    [[nodiscard]] int selectedCellCount() const override {
        return control()->GetSelectedCount() * columnsShown(*control());
    }
    [[nodiscard]] QList<QAccessibleInterface*> selectedCells() const override {
        QList<QAccessibleInterface*> cells;
        for (int position = control()->GetFirstSelectedItemPosition(); position >= 0;) {
            CTreeListItem* item = control()->GetNextSelectedItem(position);
            for (const int column : control()->Columns().shown()) {
                cells << cellOf(control(), item, column);
            }
        }
        return cells;
    }
    [[nodiscard]] QString columnDescription(int place) const override {
        return place < 0 || place >= columnsShown(*control()) ? QString()
                                                              : control()->GetColumnText(columnAtPlace(place));
    }
    [[nodiscard]] QString rowDescription(int) const override { return {}; }
    [[nodiscard]] int selectedColumnCount() const override { return 0; }
    [[nodiscard]] int selectedRowCount() const override { return control()->GetSelectedCount(); }
    [[nodiscard]] int columnCount() const override { return columnsShown(*control()); }
    [[nodiscard]] int rowCount() const override { return control()->GetVisibleCount(); }
    [[nodiscard]] QList<int> selectedColumns() const override { return {}; }
    [[nodiscard]] QList<int> selectedRows() const override {
        QList<int> rows;
        for (int position = control()->GetFirstSelectedItemPosition(); position >= 0;) {
            const int row = control()->GetItemIndex(control()->GetNextSelectedItem(position));
            if (row >= 0) {
                rows << row;
            }
        }
        return rows;
    }
    [[nodiscard]] bool isColumnSelected(int) const override { return false; }
    [[nodiscard]] bool isRowSelected(int row) const override {
        const CTreeListItem* item = row < 0 ? nullptr : control()->Tree().itemAt(static_cast<std::uint32_t>(row));
        return item && (item->state & kItemSelected);
    }
    bool selectRow(int row) override {
        return row >= 0 && row < control()->GetVisibleCount() && control()->Select(row);
    }
    bool selectColumn(int) override { return false; }
    bool unselectRow(int row) override {
        return isRowSelected(row) && (control()->GetStyle() & kStyleMultiSelect) && control()->Select(row, -1, 0);
    }
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent*) override {} // cells go by row, not by place

  private:
    [[nodiscard]] int columnAtPlace(int place) const {
        return control()->Columns().shown()[static_cast<std::size_t>(place)];
    }
};

QAccessibleInterface* makeInterface(const QString&, QObject* object) {
    auto* control = qobject_cast<CTreeListCtrl*>(object);
    return control ? new ControlAccessible(control) : nullptr;
}

// Told by the toolkit when someone begins or ends to listen.
class Listener : public QAccessible::ActivationObserver {
  public:
    Listener() { QAccessible::installActivationObserver(this); }
    void accessibilityActiveChanged(bool active) override { heard = active; }
    bool heard = QAccessible::isActive();
};

Listener& listener() {
    static auto* const only = new Listener; // lives as long as the toolkit may call it
    return *only;
}

void (*hearer)(QAccessibleEvent*) = nullptr;

void send(QAccessibleEvent& event) {
    if (hearer) {
        hearer(&event);
    } else {
        QAccessible::updateAccessibility(&event);
    }
}

} // namespace

bool treeListIsHeard() {
    return hearer || listener().heard;
}

void hearTreeListEvents(void (*hear)(QAccessibleEvent* event)) {
    hearer = hear;
}

void announceTreeListReset(const CTreeListCtrl* control) {
    QAccessibleTableModelChangeEvent event(const_cast<CTreeListCtrl*>(control),
                                           QAccessibleTableModelChangeEvent::ModelReset);
    send(event);
}

namespace {

// What the toolkit was given. Withdrawn when the library that holds this code is unloaded, since the toolkit would
// call into what is no longer there.
struct Installed {
    Installed() {
        QAccessible::installFactory(makeInterface);
        listener(); // installs itself
    }
    ~Installed() {
        QAccessible::removeActivationObserver(&listener());
        QAccessible::removeFactory(makeInterface);
    }
    Installed(const Installed&) = delete;
    Installed& operator=(const Installed&) = delete;
};

} // namespace

void installTreeListAccessibility() {
    static const Installed installed;
    static_cast<void>(installed);
}

void forgetAccessibleRows(const CTreeListCtrl* control) {
    const auto found = handedOut().find(control);
    if (found == handedOut().end()) {
        return;
    }
    const CellIds ids = std::move(found->second);
    handedOut().erase(found);
    for (const auto& [key, id] : ids) {
        QAccessible::deleteAccessibleInterface(id);
    }
}

void announceTreeListRow(const CTreeListCtrl* control, const CTreeListItem* item, int accessibleEvent) {
    const int column =
        accessibleEvent == QAccessible::Focus ? control->GetSelectColumn() : control->Columns().treeColumn();
    if (!control->Tree().isShown(item) || control->Columns().placeOf(column) < 0) {
        return;
    }
    QAccessibleInterface* cell = cellOf(const_cast<CTreeListCtrl*>(control), const_cast<CTreeListItem*>(item), column);
    if (accessibleEvent == QAccessible::StateChanged) {
        QAccessible::State changed;
        changed.checked = true;
        changed.expanded = true;
        QAccessibleStateChangeEvent event(cell, changed);
        send(event);
        return;
    }
    QAccessibleEvent event(cell, static_cast<QAccessible::Event>(accessibleEvent));
    send(event);
}

} // namespace fenmark::ui::treelist
