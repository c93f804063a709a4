// The command line.
#include "desk/window/command_panel.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QVBoxLayout>

namespace fenmark::desk {

namespace {

constexpr int kLinesKept = 2000;

} // namespace

CommandPanel::CommandPanel(QWidget* parent)
    : QWidget(parent), history_(new QPlainTextEdit(this)), prompt_(new QLabel(this)), edit_(new QLineEdit(this)),
      names_(new QStringListModel(this)) {
    history_->setReadOnly(true);
    history_->setMaximumBlockCount(kLinesKept);
    history_->setObjectName(QStringLiteral("commandHistory"));
    history_->setTabChangesFocus(true);
    edit_->setObjectName(QStringLiteral("commandLine"));
    prompt_->setBuddy(edit_);
    auto* completer = new QCompleter(names_, this);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    edit_->setCompleter(completer);
    edit_->installEventFilter(this);
    auto* row = new QHBoxLayout;
    row->addWidget(prompt_);
    row->addWidget(edit_);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(4, 4, 4, 4);
    column->setSpacing(4);
    column->addWidget(history_);
    column->addLayout(row);
    setFocusProxy(edit_);
    connect(edit_, &QLineEdit::returnPressed, this, &CommandPanel::enter);
}

void CommandPanel::setCommands(const QStringList& names) {
    names_->setStringList(names);
}

void CommandPanel::retranslate(const Texts& texts) {
    prompt_->setText(texts(Text::CommandPrompt));
    edit_->setPlaceholderText(texts(Text::CommandHint));
    edit_->setAccessibleName(texts(Text::CommandPrompt));
    history_->setAccessibleName(texts(Text::CommandPanel));
}

void CommandPanel::say(const QString& line) {
    history_->appendPlainText(line);
}

void CommandPanel::enter() {
    const QString command = edit_->text().trimmed();
    // A completion would otherwise be put into the line again after it was cleared.
    edit_->completer()->popup()->hide();
    edit_->clear();
    if (command.isEmpty()) {
        return;
    }
    if (typed_.isEmpty() || typed_.last() != command) {
        typed_.append(command);
    }
    at_ = typed_.size();
    say(QStringLiteral("> ") + command);
    emit entered(command);
}

void CommandPanel::recall(int step) {
    const qsizetype next = at_ + step;
    if (next < 0 || next > typed_.size()) {
        return;
    }
    if (at_ == typed_.size()) {
        unfinished_ = edit_->text();
    }
    at_ = next;
    edit_->setText(at_ == typed_.size() ? unfinished_ : typed_[at_]);
}

bool CommandPanel::eventFilter(QObject* watched, QEvent* event) {
    if (watched == edit_ && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Up || key->key() == Qt::Key_Down) {
            recall(key->key() == Qt::Key_Up ? -1 : 1);
            return true;
        }
        if (key->key() == Qt::Key_Escape) {
            if (edit_->text().isEmpty()) {
                emit left();
            }
            edit_->clear();
            at_ = typed_.size();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace fenmark::desk
