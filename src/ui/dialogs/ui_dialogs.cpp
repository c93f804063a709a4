// The command's questions, asked with the real dialogs.
#include "ui/dialogs/ui_dialogs.h"

#include "ui/dialogs/select_alignment_form.h"
#include "ui/dialogs/sima_result_form.h"

#include <utility>

namespace fenmark::ui {

UiDialogs::UiDialogs(QWidget* parent, LogOpener openLog, EncodingOf encodingOf)
    : parent_(parent), openLog_(std::move(openLog)), encodingOf_(std::move(encodingOf)), progress_(parent) {}

bool UiDialogs::showImport(command::ImportDialogState& state) {
    FenmarkFormServices services;
    services.openLog = openLog_;
    services.progress = &progress_;
    services.encodingOf = encodingOf_;
    FenmarkForm form(parent_, std::move(state), std::move(services));
    const bool accepted = form.exec() == QDialog::Accepted;
    if (form.failure()) {
        std::rethrow_exception(form.failure());
    }
    state = form.takeState();
    return accepted;
}

bool UiDialogs::selectAlignment(const std::map<std::string, host::MdDbObjectId>& alignments, host::MdDbObjectId& id,
                                std::string& name) {
    SelectAlignmentForm form(parent_, alignments);
    if (form.exec() != QDialog::Accepted) {
        return false;
    }
    id = form.chosenId();
    name = form.chosenName();
    return true;
}

void UiDialogs::showResult(const command::ImportResult& result) {
    SimaResultForm form(parent_, result, openLog_);
    form.exec();
}

} // namespace fenmark::ui
