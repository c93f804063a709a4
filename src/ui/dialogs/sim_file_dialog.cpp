// The file-open dialog for SIMA files.
#include "ui/dialogs/sim_file_dialog.h"

#include <QFileInfo>
#include <QStringList>

namespace fenmark::ui {

void prepareSimFileDialog(QFileDialog& dialog, const QString& current) {
    dialog.setWindowTitle(QStringLiteral("SIMAファイルを選択"));
    // Shown as "(*.sim)". The second pattern is for desktops whose own file dialogs distinguish upper from lower case.
    dialog.setNameFilters({QStringLiteral("(*.sim) (*.sim *.SIM)")});
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    dialog.setDefaultSuffix(QStringLiteral("sim"));
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFile);
    if (!current.isEmpty()) {
        dialog.setDirectory(QFileInfo(current).absolutePath());
    }
}

std::optional<QString> browseForSimFile(QWidget* parent, const QString& current) {
    QFileDialog dialog(parent);
    prepareSimFileDialog(dialog, current);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return std::nullopt;
    }
    return dialog.selectedFiles().first();
}

} // namespace fenmark::ui
