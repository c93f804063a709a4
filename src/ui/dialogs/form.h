// What the four dialogs have in common: font, dialog units, fixed size, and no reaction to the help key.
#pragma once

#include "ui/dialogs/dialog_units.h"

#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QStringList>

#include <string>
#include <vector>

namespace fenmark::ui {

class Form : public QDialog {
    Q_OBJECT

  public:
    // Size in dialog units of the font.
    Form(QWidget* parent, const QString& title, int width, int height);

  protected:
    QLabel* addLabel(const QString& text, int x, int y, int width, int height, int id = 0);
    QPushButton* addButton(const QString& text, int x, int y, int width, int height, int id);
    // A sorted list that cannot be edited.
    QComboBox* addSortedList(int x, int y, int width, int id);
    const DialogUnits& units() const { return units_; }

    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    DialogUnits units_;
};

// Fills a list in the sort order of the Japanese locale.
void fillSorted(QComboBox* list, const std::vector<std::string>& names);
// Selects exactly that name; the first entry if it is not there.
void selectExact(QComboBox* list, const std::string& name);

} // namespace fenmark::ui
