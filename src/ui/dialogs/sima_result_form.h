// Sums up a finished import, and appends that sum to the log beside the file.
#pragma once

#include "command/dialogs.h"
#include "ui/dialogs/form.h"
#include "ui/dialogs/h_scroll_list_box.h"
#include "ui/dialogs/log_opener.h"

namespace fenmark::ui {

class SimaResultForm : public Form {
    Q_OBJECT

  public:
    // Opening the dialog appends its lines to the log; a log that cannot be written is passed over in silence.
    SimaResultForm(QWidget* parent, const command::ImportResult& result, LogOpener openLog = openWithDesktop);

  private slots:
    void showLog();

  private:
    std::string logPath_;
    LogOpener openLog_;
    CHScrollListBox* list_ = nullptr;
};

} // namespace fenmark::ui
