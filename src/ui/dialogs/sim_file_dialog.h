// The file-open dialog for SIMA files.
#pragma once

#include <QFileDialog>
#include <QString>

#include <optional>

namespace fenmark::ui {

// Title, filter and rules: an existing file, "sim" behind a name without extension, begun in the folder of the current
// file.
void prepareSimFileDialog(QFileDialog& dialog, const QString& current);

// The path that the user chose, nothing if cancelled.
std::optional<QString> browseForSimFile(QWidget* parent, const QString& current);

} // namespace fenmark::ui
