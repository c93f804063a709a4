// The beginning of a SIMA file that is about to be imported.
#include "desk/window/preview_panel.h"

#include "desk/session/source_record.h"
#include "sima/records/sections.h"

#include <QFileInfo>

namespace fenmark::desk {

namespace {

constexpr std::int64_t kLines = 2000; // of the file that are looked at
constexpr qsizetype kNames = 30;      // shown at most
constexpr qsizetype kNameField = 2;   // of points and lots
constexpr qsizetype kRouteField = 3;

// Whether a record opens a section of a file, or is a point.
bool isOfSima(const QString& record) {
    const sima::RecordCode code = sima::recordCode(record.section(QLatin1Char(','), 0, 0).trimmed().toStdString());
    return code == sima::recordCode("A01") || sima::sectionOpenedBy(code) != nullptr;
}

// The name in a record; empty if it has none.
QString nameIn(const QString& record) {
    const QStringList fields = record.split(QLatin1Char(','));
    const QString code = fields.front().trimmed();
    if (code == QLatin1String("A01") || code == QLatin1String("D00")) {
        return fields.value(kNameField).trimmed();
    }
    return code == QLatin1String("F00") ? fields.value(kRouteField).trimmed() : QString();
}

} // namespace

PreviewPanel::PreviewPanel(const Texts& texts, QWidget* parent) : QPlainTextEdit(parent), texts_(texts) {
    setObjectName(QStringLiteral("preview"));
    setReadOnly(true);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setTabChangesFocus(true);
}

void PreviewPanel::showFile(const std::string& path, std::string_view encoding) {
    const QFileInfo file(QString::fromStdString(path));
    const auto excerpt = readSource(path, 1, kLines, encoding);
    const std::string_view title = sima::encodingTitle(encodingOfFile(path, encoding));
    QStringList lines{
        file.fileName(),
        texts_(Text::PreviewReadIn).arg(QString::fromLatin1(title.data(), static_cast<qsizetype>(title.size()))),
        QString()};
    const qsizetype head = lines.size();
    bool hasRecords = false;
    if (excerpt) {
        for (const std::string& line : excerpt->lines) {
            const QString record = QString::fromStdString(line);
            hasRecords = hasRecords || isOfSima(record);
            const QString name = nameIn(record);
            if (!name.isEmpty()) {
                lines.append(name);
            }
            if (lines.size() == head + kNames) {
                break;
            }
        }
    }
    if (!file.isReadable()) {
        lines.append(texts_(Text::PreviewUnreadable));
    } else if (file.size() == 0) {
        lines.append(texts_(Text::PreviewEmpty));
    } else if (!hasRecords) {
        lines.append(texts_(Text::PreviewNoRecords).arg(kLines));
    }
    setPlainText(lines.join(QLatin1Char('\n')));
}

} // namespace fenmark::desk
