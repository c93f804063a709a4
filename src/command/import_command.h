// The command: one run from the site listing to the result dialog, and the values that are kept between runs.
#pragma once

#include "command/dialogs.h"
#include "command/last_run.h"
#include "host/boundary/host_boundary.h"
#include "output/drawing_output.h"
#include "sima/reader/read_context.h"

#include <cstddef>
#include <functional>
#include <limits>
#include <optional>
#include <string>

namespace fenmark::command {

inline constexpr const char* kDefaultSiteName = "サイト";

struct CommandSettings {
    sima::Encoding encoding = sima::Encoding::Cp932;
    output::OutputSettings output = {};
    std::size_t longestLine = std::numeric_limits<std::size_t>::max(); // bytes
    std::optional<std::string> logFile = std::nullopt; // none: beside the input; an empty name: no log is written
    std::function<sima::Encoding(const std::string& path)> encodingOf = nullptr; // of the file chosen, before encoding
};

// One run. Failures are silent or end in the dialogs; an exception that leaves the read leaves this too. The reader
// that did the full pass is given out for those who report on it (its counters, its passed-over lines).
void Fenmark(host::HostBoundary& host, Dialogs& dialogs, LastRun& lastRun, sima::SimaReader& reader,
             const CommandSettings& settings = {});

} // namespace fenmark::command
