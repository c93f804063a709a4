// Asks for an alignment of the drawing, when results need one and the import creates none.
#pragma once

#include "ui/dialogs/form.h"
#include "values/drawing_values.h"

#include <map>
#include <string>

namespace fenmark::ui {

class SelectAlignmentForm : public Form {
    Q_OBJECT

  public:
    SelectAlignmentForm(QWidget* parent, std::map<std::string, host::MdDbObjectId> alignments);

    host::MdDbObjectId chosenId() const { return chosenId_; }
    const std::string& chosenName() const { return chosenName_; }

  public slots:
    void accept() override;

  private:
    std::map<std::string, host::MdDbObjectId> alignments_;
    host::MdDbObjectId chosenId_;
    std::string chosenName_;
    QComboBox* list_ = nullptr;
};

} // namespace fenmark::ui
