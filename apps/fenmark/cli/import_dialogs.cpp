// The dialogs of the command answered from the options of fenmark import.
#include "cli/import_dialogs.h"

#include "cli/drawings.h"

#include "command/dialog_rules.h"
#include "sima/log/sima_log.h"

#include <algorithm>
#include <utility>

namespace fenmark::cli {

ImportDialogs::ImportDialogs(const ImportArguments& arguments, const std::string& file, sima::Encoding encoding,
                             std::string logFile, const drawing::Drawing& drawing, const Streams& streams)
    : arguments_(arguments), file_(file), encoding_(encoding), logFile_(std::move(logFile)), drawing_(drawing),
      streams_(streams), bars_(streams) {}

bool ImportDialogs::showImport(command::ImportDialogState& state) {
    state.filePath = file_;
    sima::ReadContext context;
    context.progress = progress();
    context.encoding = encoding_;
    context.longestLine = kLongestLine;
    bool whole = true;
    try {
        previewFile(state.reader, file_, context, streams_.language);
    } catch (const PreviewBrokenOff&) {
        if (!arguments_.keepPartial) {
            throw;
        }
        whole = false; // the import breaks off too, at the latest there, and keeps what it made before
    }
    command::countFromPreview(state.reader, state.options);
    for (std::size_t kind = 0; kind < sima::kImportKinds; ++kind) {
        state.options.flags[kind] = arguments_.wanted[kind] && (state.options.counts[kind] >= 1 || !whole);
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
    if (!arguments_.alignment) {
        if (firstTime) {
            std::vector<std::string> names;
            names.reserve(alignments.size());
            for (const auto& [alignment, unused] : alignments) {
                names.push_back(alignment);
            }
            tellFileNote(streams_, arguments_.quiet, file_, "no-alignment",
                         inLanguage(streams_,
                                    "成果の線形がこの読み込みにありません。--alignment NAME "
                                    "で図面の線形を指定できます: " +
                                        joined(names, streams_.language),
                                    "results have no alignment in this import; --alignment NAME puts them on one of "
                                    "the drawing, which has: " +
                                        joined(names, streams_.language)));
        }
        return false;
    }
    const drawing::Alignment& chosen =
        drawing_.alignment(alignmentNamed(drawing_, file_, *arguments_.alignment, streams_.language));
    id = chosen.id;
    name = chosen.name;
    return true;
}

void ImportDialogs::showResult(const command::ImportResult& result) {
    if (!logFile_.empty()) {
        sima::SimaLog log;
        log.setFile(logFile_);
        log.appendLines(command::resultLines(result));
    }
    result_ = result;
}

sima::ProgressFactory* ImportDialogs::progress() {
    return streams_.errIsTerminal && !arguments_.quiet ? &bars_ : nullptr;
}

} // namespace fenmark::cli
