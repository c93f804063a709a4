// Message boxes of the dialogs: programs show them, tests answer in their place.
#pragma once

#include <QString>
#include <QWidget>

#include <functional>

namespace fenmark::ui {

// Shows a message and waits for its acknowledgement: caption, text. An empty caption is the program's own.
using MessageBox = std::function<void(QWidget* parent, const QString& caption, const QString& text)>;
void showWarning(QWidget* parent, const QString& caption, const QString& text);
void showPlain(QWidget* parent, const QString& caption, const QString& text);

} // namespace fenmark::ui
