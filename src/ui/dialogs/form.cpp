// What the four dialogs have in common.
#include "ui/dialogs/form.h"

#include <QCollator>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLocale>
#include <QScreen>

#include <algorithm>

namespace fenmark::ui {

Form::Form(QWidget* parent, const QString& title, int width, int height)
    : QDialog(parent, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint),
      units_(dialogFont()) {
    setFont(dialogFont());
    setWindowTitle(title);
    setFixedSize(units_.x(width), units_.y(height));
    const QScreen* screen = parent != nullptr ? parent->screen() : QGuiApplication::primaryScreen();
    if (screen != nullptr) {
        const QRect area = screen->availableGeometry();
        move(area.center() - QPoint(this->width() / 2, this->height() / 2));
    }
}

QLabel* Form::addLabel(const QString& text, int x, int y, int width, int height, int id) {
    auto* label = new QLabel(text, this);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    place(label, units_, x, y, width, height);
    if (id != 0) {
        setControlId(label, id);
    }
    return label;
}

QPushButton* Form::addButton(const QString& text, int x, int y, int width, int height, int id) {
    auto* button = new QPushButton(text, this);
    // Enter presses the button that has the focus, and the default button where no button has it.
    button->setAutoDefault(true);
    place(button, units_, x, y, width, height);
    setControlId(button, id);
    return button;
}

QComboBox* Form::addSortedList(int x, int y, int width, int id) {
    auto* list = new QComboBox(this);
    place(list, units_, x, y, width, 12);
    setControlId(list, id);
    return list;
}

// Help requests are swallowed.
bool Form::event(QEvent* event) {
    if (event->type() == QEvent::WhatsThis || event->type() == QEvent::EnterWhatsThisMode) {
        event->accept();
        return true;
    }
    return QDialog::event(event);
}

void Form::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F1 || event->key() == Qt::Key_Help) {
        event->accept();
        return;
    }
    QDialog::keyPressEvent(event);
}

void fillSorted(QComboBox* list, const std::vector<std::string>& names) {
    QStringList texts;
    texts.reserve(static_cast<qsizetype>(names.size()));
    for (const std::string& name : names) {
        texts.append(QString::fromStdString(name));
    }
    QCollator collator{QLocale(QLocale::Japanese, QLocale::Japan)};
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::stable_sort(texts.begin(), texts.end(),
                     [&](const QString& a, const QString& b) { return collator.compare(a, b) < 0; });
    list->clear();
    list->addItems(texts);
}

void selectExact(QComboBox* list, const std::string& name) {
    const int index = list->findText(QString::fromStdString(name), Qt::MatchExactly | Qt::MatchCaseSensitive);
    list->setCurrentIndex(index >= 0 ? index : (list->count() > 0 ? 0 : -1));
}

} // namespace fenmark::ui
