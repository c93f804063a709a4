// What the command asks of its user. Implemented by the real dialogs and by the command line.
#pragma once

#include "command/last_run.h"
#include "sima/reader/progress.h"
#include "values/drawing_values.h"

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace fenmark::command {

// What goes into the import dialog and, after acceptance, comes back.
struct ImportDialogState : LastRun {
    std::vector<std::string> siteNames;
    std::vector<std::string> layerNames;
    bool mustChooseAlignment = false; // out only
};

struct ImportResult {
    std::int32_t errorCount = 0;
    std::int32_t coordinatePoints = 0;
    std::string filePath;
    std::int32_t lots = 0; // stays 0 unless the flag of lots is on
    std::int32_t alignments = 0;
    std::vector<std::string> alignmentNames;
    std::int32_t polylines = 0;
    std::array<std::int32_t, 7> routesCreated{}; // by route type 1 to 7
    std::int32_t longitudinalPoints = 0;
    std::int32_t crossSectionPoints = 0;
};

// The lines of the result dialog, in order, each under its condition. Shared by the dialog and the command line.
std::vector<std::string> resultLines(const ImportResult& result);
// One of its lines, or the end of one: by it a log is known.
inline constexpr const char* kNoErrors = "エラー無し";
inline constexpr const char* kErrorsCounted = "個のエラー";

class Dialogs {
  public:
    virtual ~Dialogs() = default;
    // True for acceptance.
    virtual bool showImport(ImportDialogState& state) = 0;
    // True for acceptance, with id and name set; on cancel they stay as they were.
    virtual bool selectAlignment(const std::map<std::string, host::MdDbObjectId>& alignments, host::MdDbObjectId& id,
                                 std::string& name) = 0;
    // Also appends the result lines to the log beside the file.
    virtual void showResult(const ImportResult& result) = 0;
    virtual sima::ProgressFactory* progress() = 0;
};

} // namespace fenmark::command
