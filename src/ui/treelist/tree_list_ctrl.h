// CTreeListCtrl: rows shown as a tree in the first shown column and as a list in the others, with check and lock boxes
// that cascade through the tree, images, in-place editors, and drag and drop of rows, also between two controls.
#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QAbstractScrollArea>
#include <QBasicTimer>
#include <QColor>
#include <QIcon>
#include <QList>
#include <QPointer>
#include <QString>
#include <QStringList>

#include "ui/treelist/model/column_set.h"
#include "ui/treelist/model/item_tree.h"
#include "ui/treelist/model/row_layout.h"
#include "ui/treelist/model/tree_list_codes.h"
#include "ui/treelist/model/tree_list_column_info.h"
#include "ui/treelist/model/tree_list_item.h"
#include "ui/treelist/tree_list_notification.h"

// The module exports the class.
#define FENMARK_TREELIST_API __attribute__((visibility("default")))

namespace fenmark::ui::treelist {

class CTLCDragWnd;
class CTLCDropWnd;
class CTreeListComboCtrl;
class CTreeListDC;
class CTreeListEditCtrl;
class CTreeListHeaderCtrl;
class CTreeListStaticCtrl;
class CTreeListTipCtrl;
class RowGuard;
class TreeListPainter;

// Stand-ins for a parent row and for an insert-after row. They are never dereferenced.
inline CTreeListItem* treeListHandle(std::uintptr_t value) {
    return reinterpret_cast<CTreeListItem*>(value);
}
inline CTreeListItem* const TLI_ROOT = treeListHandle(0xFFFF0001);  // the hidden root, as parent
inline CTreeListItem* const TLI_LAST = treeListHandle(0xFFFF0002);  // insert as last child
inline CTreeListItem* const TLI_FIRST = treeListHandle(0xFFFF0003); // insert as first child
inline CTreeListItem* const TLI_SORT = treeListHandle(0xFFFF0004);  // the same as last: rows aren't sorted

// The control. Its geometry is given in pixels at 96 dots an inch and scales with the screen; all rectangles and
// points are in the coordinates of viewport(). Used in the thread of the windows only.
//
// Rows are addressed by pointer; a pointer holds until its row is deleted. Indexes of rows count the flat list of rows
// that are shown (an expanded row is followed by its children). Indexes of rows and columns that are out of range raise
// std::invalid_argument, but for SetColumnWidth, which raises std::bad_alloc, and GetItemText, which gives a null text.
//
// Keys: Up, Down, Page Up, Page Down, Home and End select a row, and where several can be selected Shift selects up to
// it, Ctrl moves the focus alone, Shift+Space toggles the focus row in the selection and Ctrl+A selects all rows shown.
// Space, numpad + and - and Shift+Left and Right expand and collapse; Ctrl+Space and Ctrl+Shift+Space flip the check and
// the lock box. Left and Right move the focus column; with Alt they move the column itself, with Alt+Shift its edge, and
// Alt+Down opens the header's menu. Escape breaks a drag off. Keys without a use (Enter, F2, letters) go to the parent.
class FENMARK_TREELIST_API CTreeListCtrl : public QAbstractScrollArea {
    Q_OBJECT

  public:
    static constexpr const char* kWindowClass = "Tresslib.TreeListCtrl";

    // Makes the control without setting it up; Create or AttachTo does, and at the latest the first show.
    explicit CTreeListCtrl(QWidget* parent = nullptr);
    ~CTreeListCtrl() override;

    // Sets the control up in the parent: header, tip, the three editors. False if it was set up before.
    bool Create(std::uint32_t style, const QRect& place, QWidget* parent);
    // Sets the control up in the place of an existing child window: takes over its parent, place, object name and
    // tab order, and deletes it. False if it was set up before.
    bool AttachTo(QWidget* placeholder);

    // Who is notified; null means the nearest ancestor that implements TreeListParent.
    void SetNotifyTarget(TreeListParent* target) { notifyTarget_ = target; }

    // --- Rows ---
    CTreeListItem* InsertItem(const QString& text, CTreeListItem* parent = TLI_ROOT, CTreeListItem* after = TLI_LAST);
    // Inserts so that the new row has this index in the flat list, as sibling of the row that has it now; the number
    // of rows shown appends at the top level.
    CTreeListItem* InsertItem(int index, const QString& text);
    void DeleteItem(CTreeListItem* item);
    void DeleteItem(int index);
    void DeleteAllItems();
    // Moves the row with its subtree behind `after` (a child of the parent, TLI_FIRST or TLI_LAST). False if the parent
    // lies in that subtree.
    bool MoveAfterItem(CTreeListItem* item, CTreeListItem* parent, CTreeListItem* after);
    // The two rows change places, with their subtrees. False if one lies below the other.
    bool ExchangeItem(CTreeListItem* one, CTreeListItem* other);
    [[nodiscard]] QString GetItemText(const CTreeListItem* item, int column = 0) const;
    void SetItemText(CTreeListItem* item, int column, const QString& text);
    [[nodiscard]] std::uint32_t GetItemData(const CTreeListItem* item) const;
    void SetItemData(CTreeListItem* item, std::uint32_t data);
    [[nodiscard]] int GetItemImage(const CTreeListItem* item, ItemImage which = ItemImage::Normal) const;
    void SetItemImage(CTreeListItem* item, int normal, int expanded, int selected, int expandedSelected);
    [[nodiscard]] std::uint32_t GetItemState(const CTreeListItem* item) const;
    // Sets the state bits within the mask. Setting 0x2 sets 0x4, clearing 0x4 clears 0x2; counters follow. No
    // notification.
    void SetItemState(CTreeListItem* item, std::uint32_t state, std::uint32_t mask = 0xffffffff);
    // The row's rectangle, or that of one of its cells. Empty if the row is not shown (a parent is collapsed).
    [[nodiscard]] QRect GetItemRect(const CTreeListItem* item, int column = -1) const;
    [[nodiscard]] int GetItemCount() const; // all rows
    [[nodiscard]] int GetCount() const;     // all rows: the name that trees use
    [[nodiscard]] bool ItemHasChildren(const CTreeListItem* item) const;
    // False if vetoed, or for the hidden root. A row that was expanded once and has no children, and one that is in the
    // new state already, are left as they are without a notification.
    bool Expand(CTreeListItem* item, ExpandCode code);
    void EnsureVisible(CTreeListItem* item, int column = -1); // expands parents as needed, without notifications

    // --- Navigation ---
    [[nodiscard]] CTreeListItem* GetRootItem() const; // the hidden root
    [[nodiscard]] CTreeListItem* GetParentItem(const CTreeListItem* item) const;
    [[nodiscard]] CTreeListItem* GetChildItem(const CTreeListItem* item) const;       // first child; takes TLI_ROOT too
    [[nodiscard]] CTreeListItem* GetSortChildItem(const CTreeListItem* parent) const; // the sorted position: last child
    [[nodiscard]] CTreeListItem* GetNextSiblingItem(const CTreeListItem* item) const;
    [[nodiscard]] CTreeListItem* GetPrevSiblingItem(const CTreeListItem* item) const;
    [[nodiscard]] CTreeListItem* GetNextItem(const CTreeListItem* item) const;        // in the whole tree
    [[nodiscard]] CTreeListItem* GetNextVisibleItem(const CTreeListItem* item) const; // in the flat list
    [[nodiscard]] CTreeListItem* GetPrevVisibleItem(const CTreeListItem* item) const;
    [[nodiscard]] CTreeListItem* GetFirstVisibleItem() const; // the first in view
    [[nodiscard]] int GetTopIndex() const;                    // its index
    void SetTopIndex(int index);
    [[nodiscard]] int GetVisibleCount() const; // rows of the flat list
    [[nodiscard]] int GetCountPerPage() const; // whole rows that fit into the view, at least 1
    [[nodiscard]] CTreeListItem* GetItemAtIndex(int index) const;
    [[nodiscard]] int GetItemIndex(const CTreeListItem* item) const; // -1 if not shown or null

    // --- Check and lock ---
    [[nodiscard]] int GetCheck(const CTreeListItem* item) const; // 0, 1, 2 mixed
    void SetCheck(CTreeListItem* item, int check);               // cascades, without notification
    [[nodiscard]] int GetLock(const CTreeListItem* item) const;
    void SetLock(CTreeListItem* item, int lock);
    // As a click on the box does; the column goes into the notification.
    void SetItemCheck(CTreeListItem* item, int column = -1);
    void SetItemLock(CTreeListItem* item, int column = -1);

    // --- Selection ---
    // Mode 0 (several rows can be selected): takes the row out or adds it at the front; else it alone is selected.
    // A null row clears all. False if vetoed.
    bool SelectItem(CTreeListItem* item, int column = -1, int mode = 1);
    bool Select(int index, int column = -1, int mode = 1); // the same by index in the flat list
    // Makes the row the focus row without a change of the selection, and scrolls to it.
    void ActiveItem(CTreeListItem* item, int column = -1);
    [[nodiscard]] CTreeListItem* GetSelectedItem() const; // the first of the selection
    [[nodiscard]] int GetSelectedCount() const;
    // Walk over the selection: start with the first position; GetNextSelectedItem moves it on, to -1 at the end.
    [[nodiscard]] int GetFirstSelectedItemPosition() const;
    CTreeListItem* GetNextSelectedItem(int& position) const;
    [[nodiscard]] CTreeListItem* GetFocusItem() const { return focusItem_; }
    [[nodiscard]] int GetSelectColumn() const { return focusColumn_; } // the focus column
    [[nodiscard]] CTreeListItem* GetSelectionMark() const { return selectionMark_; }
    void SetSelectionMark(CTreeListItem* item) { selectionMark_ = item; }
    [[nodiscard]] bool IsInSelectsTree(const CTreeListItem* item) const; // in the subtree of a selected row

    // --- Columns ---
    // Appends a column; the width may be a special one (kWidthTexts, ...). Returns its index.
    int InsertColumn(const QString& text, std::uint32_t format = kColumnInitialFormat, int width = 30, int image = -1,
                     int minimum = 0, int maximum = 0);
    void DeleteColumn(int column);
    [[nodiscard]] int GetColumnCount() const;
    // Width in pixels or a special width. Limits that are given become those of the column, -1 keeps them.
    void SetColumnWidth(int column, int width, int minimum = -1, int maximum = -1);
    [[nodiscard]] int GetColumnWidth(int column) const;
    void SetColumnText(int column, const QString& text);
    [[nodiscard]] QString GetColumnText(int column) const;
    void SetColumnFormat(int column, std::uint32_t format);
    [[nodiscard]] std::uint32_t GetColumnFormat(int column) const;
    void SetColumnImage(int column, int image);
    [[nodiscard]] int GetColumnImage(int column) const;
    void SetColumnModify(int column, int modify);
    [[nodiscard]] int GetColumnModify(int column) const;
    void SetColumnDefaultText(int column, const QString& text); // the text of cells that new rows begin with
    [[nodiscard]] QString GetColumnDefaultText(int column) const;
    // The choices of a column whose editor is a combo.
    void SetColumnChoices(int column, const QStringList& choices);
    [[nodiscard]] QStringList GetColumnChoices(int column) const;
    [[nodiscard]] std::vector<int> GetColumnOrderArray() const; // columns as shown from left to right
    // Columns that are not named become hidden. False if a column is named twice.
    bool SetColumnOrderArray(const std::vector<int>& order);
    [[nodiscard]] std::vector<int> GetSortedColumnArray() const; // the order of the sorted columns

    // --- Look ---
    [[nodiscard]] std::uint32_t GetStyle() const { return style_; }
    void SetStyle(std::uint32_t style); // applies effectiveStyle
    [[nodiscard]] std::uint32_t GetState() const { return state_; }
    void SetState(std::uint32_t state, std::uint32_t mask = 0xffffffff);
    [[nodiscard]] QColor GetBkColor() const { return backColor_; }
    void SetBkColor(const QColor& color);
    [[nodiscard]] QColor GetTextColor() const { return textColor_; }
    void SetTextColor(const QColor& color);
    [[nodiscard]] QFont GetFont() const { return font(); }
    void SetFont(const QFont& font) { setFont(font); }
    [[nodiscard]] const QList<QIcon>& GetImageList() const { return images_; }
    void SetImageList(const QList<QIcon>& images);
    [[nodiscard]] int GetItemHeight() const;
    void SetItemHeight(int height); // 0 goes back to the height that follows the font
    [[nodiscard]] int GetStringWidth(const QString& text) const;
    [[nodiscard]] CTreeListHeaderCtrl* GetHeaderCtrl() const { return header_; }
    [[nodiscard]] CTreeListTipCtrl* GetTipCtrl() const { return tip_; }
    [[nodiscard]] QPoint GetOrigin() const; // pixels scrolled to the left and top
    [[nodiscard]] QRect GetViewRect() const;
    void SetRedraw(bool redraw); // false holds layout and painting back until true

    // --- Editing ---
    bool BeginModify(CTreeListItem* item, int column);
    int UpdateModify(); // writes all columns back and ends; 1, or 0 if a text was refused (and restored)
    int FinishModify(); // the same, but a refusal opens the editor again
    void CancelModify();
    [[nodiscard]] QWidget* GetControl() const; // the open editor, or null
    void SetCtrlFocus();                       // gives it the focus
    [[nodiscard]] CTreeListItem* GetModifyItem() const { return modifyItem_; }
    [[nodiscard]] int GetModifyColumn() const { return modifyColumn_; }
    [[nodiscard]] int GetNextModifyCol(int column) const; // next editable column as shown, around the end; -1 if none
    [[nodiscard]] int GetPrevModifyCol(int column) const;
    [[nodiscard]] CTreeListStaticCtrl* GetStaticCtrl() const { return staticEditor_; }
    [[nodiscard]] CTreeListEditCtrl* GetEditCtrl() const { return editEditor_; }
    [[nodiscard]] CTreeListComboCtrl* GetComboCtrl() const { return comboEditor_; }

    // --- Drag and drop ---
    void DragEnter(CTreeListCtrl* source);
    DropResult DragOver(CTreeListCtrl* source, const QPoint& point);
    void DragLeave(CTreeListCtrl* source);
    bool Drop(CTreeListCtrl* source, const QPoint& point); // acts on DropResult OnRow and OnEmpty only
    // From the cursor to the picture of the rows, remembered for the drags to come; without a value (20, 4).
    void SetDragOffset(const std::optional<QPoint>& offset) { dragOffset_ = offset; }
    void SetHoverItem(CTreeListItem* item);  // the row under the cursor of a drag, or null
    void SetTargetItem(CTreeListItem* item); // the row that a drop would go to, or null
    [[nodiscard]] CTreeListItem* GetHoverItem() const { return hoverItem_; }
    [[nodiscard]] CTreeListItem* GetTargetItem() const { return targetItem_; }
    [[nodiscard]] bool IsDragging() const { return (state_ & kControlCaptured) != 0; }

    // The row at the point, or null. `rect` is the rectangle of what was hit.
    CTreeListItem* HitTest(const QPoint& point, int* flags = nullptr, int* column = nullptr,
                           QRect* rect = nullptr) const;

    [[nodiscard]] const ItemTree& Tree() const { return tree_; }
    [[nodiscard]] const ColumnSet& Columns() const { return columns_; }
    [[nodiscard]] QSize sizeHint() const override;

  signals:
    // A click on a header cell that did not drag anything.
    void headerClicked(int column);
    // Sent for every notification after the parent was asked. A slot may lower the answer.
    void notified(const fenmark::ui::treelist::TreeListNotification& notification, int* answer);
    void checkChanged(fenmark::ui::treelist::CTreeListItem* item);
    void selectionChanged();

  protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    bool focusNextPrevChild(bool next) override;

  private:
    friend class CTreeListHeaderCtrl;
    template <class Widget>
    friend class InPlaceEditor;
    friend class TreeListPainter;
    friend class RowGuard;

    // Set-up, layout, repaint (tree_list_ctrl.cpp).
    void setUp();
    void scheduleLayout();
    void layoutNow() const; // brings scroll bars and header up to date if rows or columns changed
    void layoutChanged();
    void repaintItem(const CTreeListItem* item) const;
    void repaintRows() const;
    int notify(int code, CTreeListItem* item, int column = -1, CTreeListCtrl* source = nullptr,
               CTreeListItem* target = nullptr);
    [[nodiscard]] RowMetrics metrics() const;
    [[nodiscard]] RowParts partsOf(const CTreeListItem* item, int column) const;
    [[nodiscard]] CTreeListItem* realParent(CTreeListItem* parent) const;
    [[nodiscard]] CTreeListItem* afterIn(CTreeListItem* parent, CTreeListItem* after) const;
    void leaveEditor(const CTreeListItem* above); // closes the editor of a row below or at `above`, which is to go
    void forget(CTreeListItem* subtree);          // before a subtree is deleted
    // Checks and locks of parents follow rows that go and come, unless a click changes its row only.
    void leaveUnions(CTreeListItem* item) const; // before it goes
    void joinUnions(CTreeListItem* item) const;  // after it came
    void announceRow(CTreeListItem* item, int accessibleEvent) const;
    void columnsChanged();
    [[nodiscard]] int widestText(int column, int start) const;
    void setState(std::uint32_t bits, bool on);
    [[nodiscard]] QString cellText(const CTreeListItem* item, int column) const;
    [[nodiscard]] int focusOrFirstColumn() const;   // -1 if no column is shown
    [[nodiscard]] static int textMargin(int width); // left and right of a text in a cell of this width
    [[nodiscard]] bool boxShown(const CTreeListItem* item, std::uint32_t box) const;

    // Keys and mouse (tree_list_ctrl_input.cpp).
    void pressRow(CTreeListItem* item, int flags, int column, QMouseEvent* event);
    bool treeKey(QKeyEvent* event);
    bool editorKey(QKeyEvent* event); // from the open editor
    [[nodiscard]] int rowAfterKey(int key) const;
    bool headerMenuKey();
    void boxKey(bool lock);
    void spaceKey(Qt::KeyboardModifiers modifiers);
    bool sidewaysKey(bool right, Qt::KeyboardModifiers modifiers);
    void moveFocusRow(CTreeListItem* item, Qt::KeyboardModifiers modifiers);
    void moveFocusColumn(int step);
    void updateHover(const QPoint& point);
    void updateTip(const QPoint& point);

    // Selection (tree_list_ctrl_selection.cpp).
    bool selectRange(CTreeListItem* item, int column);
    void clearSelection();
    void unselect(CTreeListItem* item);
    void selectionMade(const RowGuard& row, int column);

    // Editing (tree_list_ctrl_edit.cpp).
    bool beginControl();
    void closeEditor();          // hides it, without writing or a notification
    void endControl(bool write); // closes the open editor and notifies the parent
    int updateModifyColumn(int column);
    int writeAllBack(bool reopen);
    void endModify();
    void placeEditor();
    [[nodiscard]] bool modifyCellShown() const;
    void editorLostFocus();

    // Drag and drop (tree_list_ctrl_drag.cpp).
    void armDrag(CTreeListItem* item);
    void startDrag(const QPoint& point);
    void moveDrag(const QPoint& globalPoint);
    void endDrag(bool drop, const QPoint& globalPoint);
    void stopDrags(); // of rows and columns: a control that is disabled or hidden drags nothing
    [[nodiscard]] DropResult askDrop(CTreeListCtrl* source, CTreeListItem* row);
    [[nodiscard]] QPixmap pictureOfSelection() const;
    void scrollAtEdge();

    ItemTree tree_;
    ColumnSet columns_;
    std::vector<QStringList> choices_;
    std::uint32_t style_ = 0;
    std::uint32_t state_ = kControlEnabled;
    QColor backColor_;
    QColor textColor_;
    QList<QIcon> images_;
    int itemHeight_ = 0; // 0: follows the font
    bool redraw_ = true;
    mutable bool layoutDirty_ = true;
    mutable bool laying_ = false;

    std::vector<RowGuard*> guards_;        // over notifications: learn when their row or the control is deleted
    std::deque<CTreeListItem*> selection_; // the last one added is the first
    CTreeListItem* focusItem_ = nullptr;
    int focusColumn_ = 0;
    CTreeListItem* selectionMark_ = nullptr;
    CTreeListItem* hotItem_ = nullptr; // the row whose box or button is under the pointer
    int hotFlag_ = 0;

    CTreeListItem* modifyItem_ = nullptr;
    int modifyColumn_ = -1;
    std::vector<std::string> modifyTexts_;
    ModifyKind openKind_ = ModifyKind::Static;
    bool editorOpen_ = false;

    QPoint pressPoint_;
    CTreeListItem* pressItem_ = nullptr; // what the last press hit, and the row at the top when it did
    int pressFlags_ = 0;
    int pressTop_ = 0;
    CTreeListItem* hoverItem_ = nullptr;
    CTreeListItem* targetItem_ = nullptr;
    CTreeListItem* timerItem_ = nullptr; // the row that timer 1 was started on
    QPointer<CTreeListCtrl> dragTarget_;
    QPointer<CTreeListCtrl> dragSource_;
    QBasicTimer expandTimer_; // timer 1
    QBasicTimer scrollTimer_; // timer 2
    QPoint lastDragPoint_;
    std::optional<QPoint> dragOffset_;

    TreeListParent* notifyTarget_ = nullptr;
    CTreeListStaticCtrl* staticEditor_ = nullptr;
    CTreeListEditCtrl* editEditor_ = nullptr;
    CTreeListComboCtrl* comboEditor_ = nullptr;
    CTreeListHeaderCtrl* header_ = nullptr;
    CTreeListTipCtrl* tip_ = nullptr;
    std::unique_ptr<CTLCDragWnd> dragWindow_;
    std::unique_ptr<CTLCDropWnd> dropWindow_;
    std::unique_ptr<CTreeListDC> surface_;
};

} // namespace fenmark::ui::treelist
