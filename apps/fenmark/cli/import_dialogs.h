// The dialogs of the command answered from the options of fenmark import.
#pragma once

#include "cli/messages.h"
#include "cli/options.h"
#include "cli/progress_bar.h"
#include "command/dialogs.h"
#include "drawing/drawing.h"

#include <optional>
#include <string>

namespace fenmark::cli {

class ImportDialogs : public command::Dialogs {
  public:
    ImportDialogs(const ImportArguments& arguments, const std::string& file, sima::Encoding encoding,
                  std::string logFile, const drawing::Drawing& drawing, const Streams& streams);

    bool showImport(command::ImportDialogState& state) override;
    bool selectAlignment(const std::map<std::string, host::MdDbObjectId>& alignments, host::MdDbObjectId& id,
                         std::string& name) override;
    void showResult(const command::ImportResult& result) override;
    sima::ProgressFactory* progress() override;

    // Set once the import has come to its end.
    const std::optional<command::ImportResult>& result() const { return result_; }
    bool askedForAlignment() const { return askedForAlignment_; }

  private:
    const ImportArguments& arguments_;
    const std::string& file_;
    sima::Encoding encoding_;
    std::string logFile_; // empty: none is written
    const drawing::Drawing& drawing_;
    const Streams& streams_;
    ProgressBars bars_;
    std::optional<command::ImportResult> result_;
    bool askedForAlignment_ = false;
};

} // namespace fenmark::cli
