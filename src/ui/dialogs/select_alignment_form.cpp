// Asks for an alignment of the drawing, when results need one and the import creates none.
#include "ui/dialogs/select_alignment_form.h"

#include <utility>
#include <vector>

namespace fenmark::ui {

SelectAlignmentForm::SelectAlignmentForm(QWidget* parent, std::map<std::string, host::MdDbObjectId> alignments)
    : Form(parent, QStringLiteral("平面線形選択"), 184, 54), alignments_(std::move(alignments)) {
    QLabel* label = addLabel(QStringLiteral("平面線形:"), 6, 6, 126, 12);
    list_ = addSortedList(6, 18, 174, 215);
    label->setBuddy(list_);
    QPushButton* select = addButton(QStringLiteral("選択"), 36, 36, 50, 14, 1);
    QPushButton* cancel = addButton(QStringLiteral("キャンセル"), 96, 36, 50, 14, 2);
    select->setDefault(true);
    connect(select, &QPushButton::clicked, this, &SelectAlignmentForm::accept);
    connect(cancel, &QPushButton::clicked, this, &SelectAlignmentForm::reject);

    if (alignments_.empty()) {
        list_->addItem(QString());
        list_->setCurrentIndex(0);
        select->setEnabled(false);
        return;
    }
    std::vector<std::string> names;
    names.reserve(alignments_.size());
    for (const auto& [name, id] : alignments_) {
        names.push_back(name);
    }
    fillSorted(list_, names);
    list_->setCurrentIndex(0);
    select->setEnabled(list_->count() > 0);
}

void SelectAlignmentForm::accept() {
    // A name that is not in the map is entered with the null identifier, and that is then the choice.
    chosenName_ = list_->currentText().toStdString();
    chosenId_ = alignments_[chosenName_];
    Form::accept();
}

} // namespace fenmark::ui
