// The three in-place editors of the tree list: a viewer, a one-line edit and a combo.
#pragma once

#include <QComboBox>
#include <QLineEdit>

namespace fenmark::ui::treelist {

class CTreeListCtrl;

// Shows a cell that cannot be changed; its text can be marked and copied.
class CTreeListStaticCtrl : public QLineEdit {
    Q_OBJECT
  public:
    explicit CTreeListStaticCtrl(CTreeListCtrl& control);

  protected:
    bool event(QEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    CTreeListCtrl& control_;
};

class CTreeListEditCtrl : public QLineEdit {
    Q_OBJECT
  public:
    explicit CTreeListEditCtrl(CTreeListCtrl& control);

  protected:
    bool event(QEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    CTreeListCtrl& control_;
};

// Takes a text of its own beside the choices of its column.
class CTreeListComboCtrl : public QComboBox {
    Q_OBJECT
  public:
    explicit CTreeListComboCtrl(CTreeListCtrl& control);

  protected:
    bool event(QEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    CTreeListCtrl& control_;
};

} // namespace fenmark::ui::treelist
