// Sums up a finished import, and appends that sum to the log beside the file.
#include "ui/dialogs/sima_result_form.h"

#include "sima/log/sima_log.h"

#include <system_error>
#include <utility>

namespace fenmark::ui {

SimaResultForm::SimaResultForm(QWidget* parent, const command::ImportResult& result, LogOpener openLog)
    : Form(parent, QStringLiteral("SIMA読み込み結果"), 286, 169), openLog_(std::move(openLog)) {
    addLabel(QStringLiteral("読み込み結果:"), 6, 6, 150, 8);
    list_ = new CHScrollListBox(this);
    place(list_, units(), 6, 18, 276, 113);
    setControlId(list_, 213);
    list_->setAccessibleName(QStringLiteral("読み込み結果"));
    addLabel(QStringLiteral("SIMAファイル"), 6, 132, 60, 8)->hide();
    QPushButton* close = addButton(QStringLiteral("閉じる"), 56, 144, 75, 18, 1);
    QPushButton* show = addButton(QStringLiteral("ログを表示"), 154, 144, 75, 18, 214);
    close->setDefault(true);
    connect(close, &QPushButton::clicked, this, &SimaResultForm::accept);
    connect(show, &QPushButton::clicked, this, &SimaResultForm::showLog);

    const std::vector<std::string> lines = command::resultLines(result);
    for (const std::string& line : lines) {
        list_->addLine(QString::fromStdString(line));
    }
    show->setEnabled(result.errorCount >= 1);

    sima::SimaLog log;
    log.setFileName(result.filePath);
    logPath_ = log.fileName();
    try {
        log.appendLines(lines);
    } catch (const std::system_error&) {
        // Nothing is shown to the user: the import is done, and its result stands in the list.
    }
    close->setFocus();
}

void SimaResultForm::showLog() {
    openLog_(QString::fromStdString(logPath_));
}

} // namespace fenmark::ui
