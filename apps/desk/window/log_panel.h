// The log of the last import, read from the file that the import wrote, and the lines of the SIMA file it speaks of.
#pragma once

#include "desk/language/texts.h"
#include "desk/session/source_record.h"

#include <QColor>
#include <QPlainTextEdit>
#include <QString>
#include <QSyntaxHighlighter>

#include <cstdint>
#include <optional>
#include <string>

namespace fenmark::desk {

// Colours of the lines of a log on a background, readable on it.
struct LogColours {
    QColor refused; // lines about something refused
    QColor rule;    // lines that part the log
};
LogColours logColours(const QColor& background);

// A click on a line with the number of a record, or Enter with the cursor in it, chooses the record. The lines of
// an error, and those behind the beginning or end of a section, have the number of the line they belong to.
class LogPanel : public QPlainTextEdit {
    Q_OBJECT

  public:
    explicit LogPanel(QWidget* parent = nullptr);

    // Reads the log; an empty path or one that cannot be read shows that there is none.
    void showLog(const std::string& path, const Texts& texts);
    const std::string& path() const { return path_; }

    // Brings the next (+1) or previous (-1) error into view and chooses its record; false if there is none.
    bool goToError(int step);

    // The number of the record that the log's line (from 0) belongs to.
    std::optional<std::int64_t> recordAt(int line) const;

  signals:
    void recordChosen(qint64 number);

  protected:
    void changeEvent(QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void choose(int line);
    void markLine();

    std::string path_;
    QSyntaxHighlighter* lines_ = nullptr;
};

// Some lines of the SIMA file around the one that was chosen in the log, with their numbers.
class SourcePanel : public QPlainTextEdit {
    Q_OBJECT

  public:
    explicit SourcePanel(QWidget* parent = nullptr);

    void show(const SourceExcerpt& excerpt);

  protected:
    void resizeEvent(QResizeEvent* event) override;
};

} // namespace fenmark::desk
