// The rows of the selected objects as a table that sorts, filters, and copies to a spreadsheet.
#pragma once

#include "desk/language/texts.h"
#include "desk/plan/plan_object.h"
#include "drawing/drawing.h"

#include <QAbstractTableModel>
#include <QLabel>
#include <QLineEdit>
#include <QSortFilterProxyModel>
#include <QTableView>

#include <cstddef>
#include <functional>
#include <vector>

namespace fenmark::desk {

// A row an object. Cells are made when they are asked for.
class SelectionModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    enum Column { Kind, No, Name, X, Y, Height, Size, Layer, File, Columns };

    explicit SelectionModel(const Texts& texts, QObject* parent = nullptr);

    void show(const drawing::Drawing& drawing, std::vector<PlanObject> objects);
    const PlanObject& object(int row) const { return objects_[static_cast<std::size_t>(row)]; }
    void retranslate();
    // Rows go before the act and come back behind it, each time all at once.
    void emptyWhile(const std::function<void()>& act);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    // Qt::DisplayRole is what is read, Qt::UserRole what is sorted: numbers as numbers.
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    QVariant entityCell(const drawing::EntityView& entity, int column) const;
    QVariant alignmentCell(const PlanObject& object, int column) const;

    const Texts& texts_;
    const drawing::Drawing* drawing_ = nullptr;
    std::vector<PlanObject> objects_;
};

class SelectionTable : public QWidget {
    Q_OBJECT

  public:
    explicit SelectionTable(const Texts& texts, QWidget* parent = nullptr);

    void show(const drawing::Drawing& drawing, const std::vector<PlanObject>& objects);
    using QWidget::show;
    std::size_t size() const { return size_; }
    void retranslate();

    QTableView& view() { return *view_; }
    QLineEdit& filter() { return *filter_; }
    // The chosen rows, or all of them, as lines with tabs, the titles first.
    QString copied() const;

  signals:
    void objectChosen(const fenmark::desk::PlanObject& object);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void showCount();

    const Texts& texts_;
    SelectionModel* model_;
    QSortFilterProxyModel* sorted_;
    QTableView* view_;
    QLineEdit* filter_;
    QLabel* count_;
    std::size_t size_ = 0;
};

} // namespace fenmark::desk
