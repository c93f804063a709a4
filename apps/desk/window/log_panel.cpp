#include "desk/window/log_panel.h"

#include "sima/text/cp932.h"

#include <QFile>
#include <QSyntaxHighlighter>

namespace fenmark::desk {

namespace {

constexpr qint64 kBytesShown = 8 << 20;

// Lines that tell of something refused stand out.
class ErrorLines : public QSyntaxHighlighter {
  public:
    using QSyntaxHighlighter::QSyntaxHighlighter;

  protected:
    void highlightBlock(const QString& line) override {
        if (line.contains(QStringLiteral("ERROR")) || line.contains(QStringLiteral("エラー")) ||
            line.contains(QStringLiteral("できません")))
            setFormat(0, static_cast<int>(line.size()), QColor(0xb3, 0x1b, 0x1b));
        else if (line.startsWith(QStringLiteral("-----")))
            setFormat(0, static_cast<int>(line.size()), QColor(0x1f, 0x6f, 0xd6));
    }
};

} // namespace

LogPanel::LogPanel(QWidget* parent) : QPlainTextEdit(parent) {
    setObjectName(QStringLiteral("log"));
    setReadOnly(true);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setTabChangesFocus(true);
    new ErrorLines(document());
}

void LogPanel::showLog(const std::string& path, const Texts& texts) {
    path_ = path;
    setPlaceholderText(texts(Text::NoLog));
    QFile file(QString::fromStdString(path));
    if (path.empty() || !file.open(QIODevice::ReadOnly)) {
        path_.clear();
        clear();
        return;
    }
    const QByteArray bytes = file.read(kBytesShown);
    std::string text;
    sima::decodeCp932(text, {bytes.constData(), static_cast<std::size_t>(bytes.size())});
    QString shown = QString::fromStdString(text);
    shown.remove(QLatin1Char('\r'));
    if (!file.atEnd())
        shown += QLatin1Char('\n') + texts(Text::LogTooLong).arg(QString::fromStdString(path));
    setPlainText(shown);
}

} // namespace fenmark::desk
