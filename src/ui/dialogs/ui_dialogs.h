// The command's questions, asked with the real dialogs.
#pragma once

#include "command/dialogs.h"
#include "ui/dialogs/fenmark_form.h"
#include "ui/dialogs/progress_wnd.h"

#include <QPointer>
#include <QWidget>

namespace fenmark::ui {

class UiDialogs : public command::Dialogs {
  public:
    // The parent is the host's main window; it may be null.
    explicit UiDialogs(QWidget* parent, LogOpener openLog = openWithDesktop,
                       sima::Encoding encoding = sima::Encoding::Cp932);

    bool showImport(command::ImportDialogState& state) override;
    bool selectAlignment(const std::map<std::string, host::MdDbObjectId>& alignments, host::MdDbObjectId& id,
                         std::string& name) override;
    void showResult(const command::ImportResult& result) override;
    sima::ProgressFactory* progress() override { return &progress_; }

  private:
    QPointer<QWidget> parent_;
    LogOpener openLog_;
    sima::Encoding encoding_;
    ProgressWindows progress_;
};

} // namespace fenmark::ui
