// What the drawing knows of its imports: logs, lines of the files, and a file that comes again.
#include "desk/window/main_window.h"

#include "desk/plan/plan_text.h"
#include "desk/plan/record_object.h"
#include "drawing/file_digest.h"
#include "drawing/imported_file.h"
#include "sima/records/doubts.h"
#include "sima/records/passed_over.h"

#include <QDateTime>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <sstream>

namespace fenmark::desk {

using drawing::Import;

namespace {

constexpr std::int64_t kSourceLines = 200; // of the SIMA file shown before and behind a record

// The file where it was imported from, or one of its name beside the drawing, for drawings that came from elsewhere.
std::string fileOf(const Import& import, const std::string& drawingPath) {
    const QString path = fromUtf8(import.path);
    if (QFileInfo::exists(path) || drawingPath.empty()) {
        return import.path;
    }
    const QFileInfo beside(QFileInfo(QString::fromStdString(drawingPath)).absolutePath() + QLatin1Char('/') +
                           fromUtf8(import.fileName));
    return beside.exists() ? beside.filePath().toStdString() : import.path;
}

} // namespace

const Import* MainWindow::shownImport() const {
    return imports_->import(session_.drawing());
}

// That of the last import that the drawing holds.
void MainWindow::showLastLog() {
    imports_->fill(session_.drawing());
    showLogOf(shownImport());
}

void MainWindow::showLogOf(const Import* import) {
    log_->showLog(import != nullptr ? drawing::logOf(fileOf(*import, session_.path())) : std::string(), texts_);
    source_->hide();
}

bool MainWindow::hasChangedSince(const Import& import, const std::string& file) {
    if (import.digest.empty() || !isOrdinaryFile(file)) {
        return false;
    }
    if (static_cast<std::uint64_t>(QFileInfo(fromUtf8(file)).size()) != import.fileSize) {
        return true;
    }
    const auto now = drawing::digestFile(file);
    return !now || now->digest != import.digest;
}

void MainWindow::showRecord(qint64 number) {
    const Import* import = shownImport();
    const std::string source = import != nullptr ? fileOf(*import, session_.path()) : sourceOfLog(log_->path());
    const auto excerpt = source.empty() ? std::nullopt : readSource(source, number, kSourceLines, session_.encoding());
    if (!excerpt) {
        command_->say(texts_(Text::SourceMissing).arg(number));
        return;
    }
    source_->show(*excerpt);
    if (import == nullptr) {
        return;
    }
    if (hasChangedSince(*import, source)) {
        command_->say(texts_(Text::FileChanged).arg(shownName(import->fileName)));
    }
    if (const auto object = objectOfRecord(session_.drawing(), madeBy(session_.drawing(), *import), excerpt->record)) {
        showObject(*object);
    }
}

Again MainWindow::askAgain(const Import& earlier) {
    if (questions_.again) {
        return questions_.again(this);
    }
    const QDateTime time = QDateTime::fromString(QString::fromStdString(earlier.time), Qt::ISODate).toLocalTime();
    QMessageBox box(
        QMessageBox::Question, QStringLiteral("Fenmark Desk"),
        texts_(Text::AgainQuestion).arg(shownName(earlier.fileName), time.toString(QStringLiteral("yyyy-MM-dd HH:mm"))),
        QMessageBox::NoButton, this);
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(texts_(Text::AgainInfo));
    QPushButton* replace = box.addButton(texts_(Text::ReplaceButton), QMessageBox::DestructiveRole);
    QPushButton* add = box.addButton(texts_(Text::AddButton), QMessageBox::AcceptRole);
    QPushButton* cancel = box.addButton(texts_(Text::CancelButton), QMessageBox::RejectRole);
    replace->setObjectName(QStringLiteral("replace"));
    add->setObjectName(QStringLiteral("add"));
    cancel->setObjectName(QStringLiteral("cancel"));
    box.setDefaultButton(add);
    box.setEscapeButton(cancel);
    box.exec();
    if (box.clickedButton() == static_cast<QAbstractButton*>(replace)) {
        return Again::Replace;
    }
    return box.clickedButton() == static_cast<QAbstractButton*>(add) ? Again::Add : Again::Cancel;
}

// The new objects are in the drawing when the question comes, so that nothing is lost before it is answered.
void MainWindow::settleAgain(const CommandRun& run) {
    if (run.earlier.empty() || !run.changed) {
        return;
    }
    const auto& imports = session_.drawing().imports();
    const auto earlier = std::find_if(imports.begin(), imports.end(),
                                      [&](const Import& import) { return import.id == run.earlier.back(); });
    if (earlier == imports.end()) {
        return;
    }
    const QString name = shownName(earlier->fileName);
    switch (askAgain(*earlier)) {
    case Again::Add:
        return;
    case Again::Cancel:
        undo();
        return;
    case Again::Replace:
        break;
    }
    plan_->select(std::nullopt);
    session_.removeImports(run.earlier);
    drawingChanged();
    showLastLog();
    command_->say(texts_(Text::Replaced).arg(name));
}

void MainWindow::sayPassedOver(const std::string& passedOver) {
    std::istringstream lines(passedOver);
    std::map<sima::PassedKind, std::int64_t> counts;
    std::map<sima::PassedKind, QStringList> codes;
    std::int64_t count = 0;
    for (std::string key; lines >> count && std::getline(lines >> std::ws, key);) {
        const sima::PassedLines passed = sima::passedLinesOf(key).value_or(sima::PassedLines{});
        counts[passed.kind] += count;
        if (!passed.code.empty()) {
            codes[passed.kind].append(fromUtf8(passed.code));
        }
    }
    for (const auto& [kind, number] : counts) {
        const QString text = fromUtf8(sima::passedKindText(kind, texts_.language()));
        const QString detail = codes[kind].join(QStringLiteral(", ")).trimmed();
        command_->say(texts_(Text::PassedOver)
                          .arg(number)
                          .arg(detail.isEmpty() || kind == sima::PassedKind::Comment
                                   ? text
                                   : QStringLiteral("%1 (%2)").arg(text, detail)));
    }
}

void MainWindow::sayDoubts(const std::string& doubts) {
    std::istringstream lines(doubts);
    std::int64_t count = 0;
    std::int64_t line = 0;
    for (std::string name; lines >> count >> line >> name;) {
        if (const std::optional<sima::Doubt> doubt = sima::doubtNamed(name)) {
            const QString text = fromUtf8(sima::doubtText(*doubt, texts_.language()));
            command_->say(count > 1 ? texts_(Text::DoubtfulRecords).arg(line).arg(text).arg(count - 1)
                                    : texts_(Text::DoubtfulRecord).arg(line).arg(text));
        }
    }
}

} // namespace fenmark::desk
