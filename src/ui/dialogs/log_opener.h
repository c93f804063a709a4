// Shows a log file: by the desktop's own opener, unless a program or a test sets another way.
#pragma once

#include <QString>

#include <functional>

namespace fenmark::ui {

using LogOpener = std::function<void(const QString& path)>;

// Asks the desktop to open the file with the program that its user has chosen for texts. Where that fails, a message box
// says so and names the file.
void openWithDesktop(const QString& path);

} // namespace fenmark::ui
