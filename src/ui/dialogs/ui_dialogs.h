// The command's questions, asked with the real dialogs.
#pragma once

#include "command/dialogs.h"
#include "ui/dialogs/fenmark_form.h"
#include "ui/dialogs/progress_wnd.h"

#include <QPointer>
#include <QWidget>

#include <functional>
#include <string>

namespace fenmark::ui {

class UiDialogs : public command::Dialogs {
  public:
    using EncodingOf = std::function<sima::Encoding(const std::string& path)>;

    // The parent is the host's main window; it may be null. Previews read in code page 932 without encodingOf.
    explicit UiDialogs(QWidget* parent, LogOpener openLog = openWithDesktop, EncodingOf encodingOf = nullptr);

    bool showImport(command::ImportDialogState& state) override;
    bool selectAlignment(const std::map<std::string, host::MdDbObjectId>& alignments, host::MdDbObjectId& id,
                         std::string& name) override;
    void showResult(const command::ImportResult& result) override;
    sima::ProgressFactory* progress() override { return &progress_; }

  private:
    QPointer<QWidget> parent_;
    LogOpener openLog_;
    EncodingOf encodingOf_;
    ProgressWindows progress_;
};

} // namespace fenmark::ui
