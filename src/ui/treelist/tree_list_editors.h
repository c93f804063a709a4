// The three in-place editors of the tree list: a viewer, a one-line edit and a combo.
#pragma once

#include <QComboBox>
#include <QEvent>
#include <QFocusEvent>
#include <QLineEdit>

namespace fenmark::ui::treelist {

class CTreeListCtrl;

// What the editors have in common: keys that end or move a modification, and the loss of the focus, go to the control.
template <class Widget>
class InPlaceEditor : public Widget {
  public:
    explicit InPlaceEditor(CTreeListCtrl& control);

  protected:
    bool event(QEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    CTreeListCtrl& control_;
};

// Shows a cell that cannot be changed; its text can be marked and copied.
class CTreeListStaticCtrl : public InPlaceEditor<QLineEdit> {
    Q_OBJECT
  public:
    explicit CTreeListStaticCtrl(CTreeListCtrl& control);
};

class CTreeListEditCtrl : public InPlaceEditor<QLineEdit> {
    Q_OBJECT
  public:
    explicit CTreeListEditCtrl(CTreeListCtrl& control);
};

// Takes a text of its own beside the choices of its column.
class CTreeListComboCtrl : public InPlaceEditor<QComboBox> {
    Q_OBJECT
  public:
    explicit CTreeListComboCtrl(CTreeListCtrl& control);
};

} // namespace fenmark::ui::treelist
