// Message boxes of the dialogs.
#include "ui/dialogs/message_boxes.h"

#include <QCoreApplication>
#include <QMessageBox>
#include <QVariant>

namespace fenmark::ui {

namespace {

// What the host's own boxes are called: a property of its window.
QString captionOfHost(const QWidget* widget) {
    while (widget != nullptr && !widget->property("messageCaption").isValid()) {
        widget = widget->parentWidget();
    }
    return widget != nullptr ? widget->property("messageCaption").toString() : QCoreApplication::applicationName();
}

} // namespace

void showWarning(QWidget* parent, const QString& caption, const QString& text) {
    QMessageBox box(QMessageBox::Warning, caption, text, QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText); // a name of a file in it is no mark-up
    box.exec();
}

void showPlain(QWidget* parent, const QString& caption, const QString& text) {
    QMessageBox box(parent);
    box.setWindowTitle(caption.isEmpty() ? captionOfHost(parent) : caption);
    box.setTextFormat(Qt::PlainText);
    box.setText(text);
    box.setStandardButtons(QMessageBox::Ok);
    box.exec();
}

} // namespace fenmark::ui
