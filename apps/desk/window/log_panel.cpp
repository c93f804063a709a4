// The log of the last import, read from the file that the import wrote, and the lines of the SIMA file it speaks of.
#include "desk/window/log_panel.h"

#include "desk/plan/plan_style.h"
#include <QFile>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QSyntaxHighlighter>
#include <QTextBlock>

namespace fenmark::desk {

namespace {

constexpr qint64 kBytesShown = 8 << 20;
constexpr int kErrorTitleLines = 2; // of an error, before the line with its number
constexpr int kMostLinesBelow = 8;  // that belong to the record above them

bool opensError(const QString& line) {
    return line.startsWith(QStringLiteral("ERROR ---"));
}

// The line of the text that the marks of the panel lie on.
void markBlock(QPlainTextEdit& panel, const QTextCursor& at) {
    QColor mark = panel.palette().color(QPalette::Highlight);
    mark.setAlphaF(0.25F);
    QTextEdit::ExtraSelection line;
    line.cursor = at;
    line.cursor.clearSelection();
    line.format.setBackground(mark);
    line.format.setProperty(QTextFormat::FullWidthSelection, true);
    panel.setExtraSelections({line});
}

// Lines about something refused stand out.
class ErrorLines : public QSyntaxHighlighter {
  public:
    explicit ErrorLines(const QPlainTextEdit& panel) : QSyntaxHighlighter(panel.document()), panel_(panel) {}

  protected:
    void highlightBlock(const QString& line) override {
        const LogColours colours = logColours(panel_.palette().color(QPalette::Base));
        const bool refused = line.contains(QStringLiteral("ERROR")) || line.contains(QStringLiteral("エラー")) ||
                             line.contains(QStringLiteral("できません"));
        if (refused && !line.contains(QStringLiteral("エラー無し"))) {
            setFormat(0, static_cast<int>(line.size()), colours.refused);
        } else if (line.startsWith(QStringLiteral("-----"))) {
            setFormat(0, static_cast<int>(line.size()), colours.rule);
        }
    }

  private:
    const QPlainTextEdit& panel_;
};

} // namespace

LogColours logColours(const QColor& background) {
    const Theme& theme = themeOf(sideFor(background));
    return {theme.logRefused, theme.logRule};
}

LogPanel::LogPanel(QWidget* parent) : QPlainTextEdit(parent) {
    setObjectName(QStringLiteral("log"));
    setReadOnly(true);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setTabChangesFocus(true);
    // A cursor, so that keys reach every line.
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    viewport()->setMouseTracking(true);
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, &LogPanel::markLine);
    lines_ = new ErrorLines(*this);
}

std::optional<std::int64_t> LogPanel::recordAt(int line) const {
    auto textAt = [this](int number) { return document()->findBlockByNumber(number).text(); };
    auto numberAt = [&](int number) { return recordNumberIn(textAt(number).toStdString()); };
    if (line < 0 || line >= document()->blockCount() || textAt(line).trimmed().isEmpty()) {
        return std::nullopt;
    }
    if (const auto number = numberAt(line)) {
        return number;
    }
    // Head and title of an error stand above its number, its foot below.
    for (int below = 1; below <= kErrorTitleLines; ++below) {
        if (opensError(textAt(line)) || opensError(textAt(line - 1))) {
            if (const auto number = numberAt(line + below)) {
                return number;
            }
        }
    }
    if (textAt(line).startsWith(QStringLiteral("------"))) {
        return numberAt(line - 1);
    }
    // What an import made of a section stands below the section's end.
    for (int above = 1; above <= kMostLinesBelow; ++above) {
        const QString text = textAt(line - above);
        if (text.isEmpty() ||
            !(textAt(line).startsWith(QLatin1Char(' ')) || textAt(line).startsWith(QStringLiteral("ERROR  ")))) {
            return std::nullopt;
        }
        if (const auto number = numberAt(line - above)) {
            return number;
        }
    }
    return std::nullopt;
}

void LogPanel::markLine() {
    if (recordAt(textCursor().blockNumber())) {
        markBlock(*this, textCursor());
    } else {
        setExtraSelections({});
    }
}

void LogPanel::choose(int line) {
    if (const auto number = recordAt(line)) {
        emit recordChosen(*number);
    }
}

void LogPanel::changeEvent(QEvent* event) {
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && lines_ != nullptr) {
        lines_->rehighlight();
        markLine();
    }
}

void LogPanel::mouseMoveEvent(QMouseEvent* event) {
    QPlainTextEdit::mouseMoveEvent(event);
    const int line = cursorForPosition(event->position().toPoint()).blockNumber();
    viewport()->setCursor(recordAt(line) ? Qt::PointingHandCursor : Qt::IBeamCursor);
}

void LogPanel::mouseReleaseEvent(QMouseEvent* event) {
    QPlainTextEdit::mouseReleaseEvent(event);
    // Whoever drags wants to copy.
    if (event->button() == Qt::LeftButton && !textCursor().hasSelection()) {
        choose(cursorForPosition(event->position().toPoint()).blockNumber());
    }
}

void LogPanel::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        choose(textCursor().blockNumber());
    } else {
        QPlainTextEdit::keyPressEvent(event);
    }
}

bool LogPanel::goToError(int step) {
    int line = textCursor().blockNumber() + step;
    while (line >= 0 && line < document()->blockCount() && !opensError(document()->findBlockByNumber(line).text())) {
        line += step;
    }
    if (line < 0 || line >= document()->blockCount()) {
        return false;
    }
    setTextCursor(QTextCursor(document()->findBlockByNumber(line)));
    centerCursor();
    choose(line);
    return true;
}

void LogPanel::showLog(const std::string& path, const Texts& texts) {
    path_ = path;
    setPlaceholderText(texts(Text::NoLog));
    QFile file(QString::fromStdString(path));
    if (!isOrdinaryFile(path) || !file.open(QIODevice::ReadOnly)) {
        path_.clear();
        clear();
        return;
    }
    const QByteArray bytes = file.read(kBytesShown);
    const std::string text =
        decodedText({bytes.constData(), static_cast<std::size_t>(bytes.size())}, encodingOfFile(path, "auto"));
    QString shown = QString::fromStdString(text);
    shown.remove(QLatin1Char('\r'));
    if (!file.atEnd()) {
        shown += QLatin1Char('\n') + texts(Text::LogTooLong).arg(QString::fromStdString(path));
    }
    setPlainText(shown);
    // What was refused is what one opens a log for.
    for (QTextBlock line = document()->begin(); line.isValid(); line = line.next()) {
        if (opensError(line.text())) {
            setTextCursor(QTextCursor(line));
            verticalScrollBar()->setValue(line.blockNumber());
            break;
        }
    }
}

SourcePanel::SourcePanel(QWidget* parent) : QPlainTextEdit(parent) {
    setObjectName(QStringLiteral("source"));
    setReadOnly(true);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setTabChangesFocus(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
}

void SourcePanel::show(const SourceExcerpt& excerpt) {
    QString text;
    std::int64_t number = excerpt.first;
    for (const std::string& line : excerpt.lines) {
        text += QStringLiteral("%1  %2\n").arg(number++, 6).arg(QString::fromStdString(line));
    }
    text.chop(1);
    setPlainText(text);
    const auto at = static_cast<int>(excerpt.record.number - excerpt.first);
    const QTextCursor cursor(document()->findBlockByNumber(at));
    setTextCursor(cursor);
    markBlock(*this, cursor);
    setVisible(true);
    centerCursor();
}

// The chosen line stays in the middle when the panel gets its place.
void SourcePanel::resizeEvent(QResizeEvent* event) {
    QPlainTextEdit::resizeEvent(event);
    centerCursor();
}

} // namespace fenmark::desk
