// Dialogs that answer from a script and remember what they were shown.
#pragma once

#include "command/dialog_rules.h"
#include "command/dialogs.h"
#include "sima/log/sima_log.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace fenmark::command {

class ScriptedDialogs : public Dialogs {
  public:
    // What the user does in the import dialog; cancelling is the default.
    std::function<bool(ImportDialogState&)> import = [](ImportDialogState&) { return false; };
    // The name chosen at each alignment selection in turn; nothing cancels, as does a selection beyond the list.
    std::vector<std::optional<std::string>> selections;
    bool appendResult = true;

    std::vector<ImportDialogState> imports; // as each dialog was opened
    std::vector<std::map<std::string, host::MdDbObjectId>> offered;
    std::vector<ImportResult> results;

    bool showImport(ImportDialogState& state) override {
        imports.push_back(state);
        return import(state);
    }
    bool selectAlignment(const std::map<std::string, host::MdDbObjectId>& alignments, host::MdDbObjectId& id,
                         std::string& name) override {
        const std::size_t turn = offered.size();
        offered.push_back(alignments);
        if (turn >= selections.size() || !selections[turn]) {
            return false;
        }
        id = alignments.at(*selections[turn]);
        name = *selections[turn];
        return true;
    }
    void showResult(const ImportResult& result) override {
        results.push_back(result);
        if (!appendResult) {
            return;
        }
        sima::SimaLog log;
        log.setFileName(result.filePath);
        log.appendLines(resultLines(result));
    }
    sima::ProgressFactory* progress() override { return nullptr; }
};

// Browses to the file, leaves every tick as the dialog sets it, and accepts.
inline bool acceptFile(ImportDialogState& state, const std::string& path) {
    state.options = sima::SimaImportOptions();
    state.filePath = path;
    state.reader = sima::SimaReader();
    if (state.reader.previewScan(path, {}) != 0) {
        return false;
    }
    countFromPreview(state.reader, state.options);
    if (!state.siteNames.empty()) {
        state.siteName = state.siteNames.front();
    }
    state.fileTime = modificationTime(path).value_or(0);
    state.mustChooseAlignment = mustChooseAlignment(state.reader, state.options, state.mustChooseAlignment);
    return true;
}

} // namespace fenmark::command
