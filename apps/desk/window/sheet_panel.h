// A panel with one table and its totals, to read and to copy to a spreadsheet.
#pragma once

#include "desk/language/texts.h"
#include "desk/measure/measurement.h"

#include <QAction>
#include <QLabel>
#include <QTableWidget>
#include <QToolBar>
#include <QWidget>

namespace fenmark::desk {

class SheetPanel : public QWidget {
    Q_OBJECT

  public:
    explicit SheetPanel(const Texts& texts, QWidget* parent = nullptr);

    void show(const Sheet& sheet);
    // Shows no table, and a hint in its place.
    void showHint(const QString& hint);
    const Sheet& sheet() const { return sheet_; }
    QTableWidget& table() { return *table_; }
    QToolBar& tools() { return *tools_; }
    QString totals() const { return totals_->text(); }
    QAction& copyAction() { return *copy_; }
    void retranslate();

  private:
    void copy();

    const Texts& texts_;
    Sheet sheet_;
    QToolBar* tools_;
    QTableWidget* table_;
    QLabel* totals_;
    QAction* copy_;
};

} // namespace fenmark::desk
