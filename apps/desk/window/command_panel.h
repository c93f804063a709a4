// The command line: what was typed and answered, and a line to type in, with history and completion.
#pragma once

#include "desk/language/texts.h"

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QStringList>
#include <QStringListModel>
#include <QWidget>

namespace fenmark::desk {

class CommandPanel : public QWidget {
    Q_OBJECT

  public:
    explicit CommandPanel(QWidget* parent = nullptr);

    void setCommands(const QStringList& names);
    void retranslate(const Texts& texts);
    void say(const QString& line);
    QLineEdit* edit() const { return edit_; }
    QString said() const { return history_->toPlainText(); }

  signals:
    void entered(const QString& command);
    void left(); // Escape on an empty line

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void enter();
    void recall(int step);

    QPlainTextEdit* history_;
    QLabel* prompt_;
    QLineEdit* edit_;
    QStringListModel* names_;
    QStringList typed_;
    qsizetype at_ = 0; // in typed_; its size stands for the line being typed
    QString unfinished_;
};

} // namespace fenmark::desk
