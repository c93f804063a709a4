// CTreeListTipCtrl: shows the whole text of a cell that is too narrow for it.
#pragma once

#include <QBasicTimer>
#include <QPoint>
#include <QRect>
#include <QString>
#include <QWidget>

namespace fenmark::ui::treelist {

class CTreeListCtrl;

// Appears over the cell when the pointer rests on it, and fades in and out in steps.
class CTreeListTipCtrl : public QWidget {
    Q_OBJECT
  public:
    static constexpr const char* kWindowClass = "Tresslib.TreeListTipCtrl";
    explicit CTreeListTipCtrl(CTreeListCtrl& control);

    // The pointer is on a cell whose text is cut. `cell` is the text's rectangle in the view.
    void offer(const QString& text, const QRect& cell, const QPoint& point);
    void leave();
    [[nodiscard]] const QString& text() const { return text_; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

  private:
    void appear();

    CTreeListCtrl& control_;
    QString text_;
    QRect cell_;
    QPoint point_;
    QBasicTimer restTimer_; // the pointer rests
    QBasicTimer fadeTimer_;
    int step_ = 0;      // of kFadeSteps
    int direction_ = 0; // 1 fades in, -1 out
};

} // namespace fenmark::ui::treelist
