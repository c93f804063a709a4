// The dialogs of the command answered from the options of fenmark import.
#include "cli/import_dialogs.h"

#include "command/dialog_rules.h"
#include "sima/log/sima_log.h"

#include <algorithm>
#include <system_error>

namespace fenmark::cli {

ImportDialogs::ImportDialogs(const ImportArguments& arguments, const std::string& file, const Streams& streams)
    : arguments_(arguments), file_(file), streams_(streams), bars_(streams.err) {}

bool ImportDialogs::showImport(command::ImportDialogState& state) {
    state.filePath = file_;
    sima::ReadContext context;
    context.progress = progress();
    context.encoding = arguments_.encoding;
    state.reader = sima::SimaReader();
    previewFile(state.reader, file_, context);
    command::countFromPreview(state.reader, state.options);
    for (std::size_t kind = 0; kind < sima::kImportKinds; ++kind) {
        state.options.flags[kind] = arguments_.wanted[kind] && state.options.counts[kind] >= 1;
    }
    // No dialog will open again on this preview, and its points would stand beside those of the import.
    state.reader.points.clear();
    state.reader.lots = {};
    state.reader.verticals = {};

    // The dialog selects the first of its sorted list.
    if (arguments_.site) {
        state.siteName = *arguments_.site;
    } else if (!state.siteNames.empty()) {
        state.siteName = *std::min_element(state.siteNames.begin(), state.siteNames.end());
    }

    state.pointLayer = arguments_.pointLayer.value_or(state.pointLayer);
    state.ipLayer = arguments_.ipLayer.value_or(state.ipLayer);
    state.lotLayer = arguments_.lotLayer.value_or(state.lotLayer);
    state.wideStakeLayer = arguments_.stakeLayer.value_or(state.wideStakeLayer);
    state.continuousLayer = arguments_.continuousLayer.value_or(state.continuousLayer);
    state.shiftDistance = arguments_.shift.value_or(state.shiftDistance);
    state.fileTime = command::modificationTime(file_).value_or(0);
    state.mustChooseAlignment =
        arguments_.forceAlignment || command::mustChooseAlignment(state.reader, state.options, false);
    return true;
}

bool ImportDialogs::selectAlignment(const std::map<std::string, host::MdDbObjectId>& alignments, host::MdDbObjectId& id,
                                    std::string& name) {
    const bool firstTime = !askedForAlignment_;
    askedForAlignment_ = true;
    std::vector<std::string> names;
    names.reserve(alignments.size());
    for (const auto& [alignment, unused] : alignments) {
        names.push_back(alignment);
    }
    if (!arguments_.alignment) {
        if (firstTime) {
            tellFileNote(streams_, arguments_.quiet, file_,
                         "results have no alignment in this import; --alignment NAME puts them on one of the "
                         "drawing, which has: " +
                             joined(names));
        }
        return false;
    }
    const auto found = alignments.find(*arguments_.alignment);
    if (found == alignments.end()) {
        throw Stop(kNotDone, file_ + ": the drawing has no alignment named '" + *arguments_.alignment +
                                 "'; its alignments: " + joined(names));
    }
    id = found->second;
    name = found->first;
    return true;
}

void ImportDialogs::showResult(const command::ImportResult& result) {
    sima::SimaLog log;
    log.setFileName(result.filePath);
    try {
        log.appendLines(command::resultLines(result));
    } catch (const std::system_error& error) {
        // The import is done and its result is told; only the log lacks it.
        tellNote(streams_, arguments_.quiet, std::string("the log lacks its last lines: ") + error.what());
    }
    result_ = result;
}

sima::ProgressFactory* ImportDialogs::progress() {
    return streams_.errIsTerminal && !arguments_.quiet ? &bars_ : nullptr;
}

} // namespace fenmark::cli
