// The command: one run from the site listing to the result dialog, and the values that are kept between runs.
#pragma once

#include "command/dialogs.h"
#include "host/boundary/host_boundary.h"
#include "sima/reader/read_context.h"

#include <string>

namespace fenmark::command {

inline constexpr const char* kDefaultSiteName = "サイト";

// The values of the last accepted run. They live in memory only.
struct LastRun {
    std::string filePath;
    std::string siteName;
    std::string pointLayer = "0";
    std::string ipLayer = "0";
    std::string lotLayer = "0";
    std::string wideStakeLayer = "0";
    std::string continuousLayer = "0";
    double shiftDistance = 0.0001; // metres
    std::int64_t fileTime = 0;
    sima::SimaImportOptions options;
    sima::SimaReader reader;
};

struct CommandSettings {
    sima::Encoding encoding = sima::Encoding::Cp932;
};

// One run. Failures are silent or end in the dialogs; an exception that leaves the read leaves this too. The reader
// that did the full pass is given out for those who report on it (its counters, its passed-over lines).
void Fenmark(host::HostBoundary& host, Dialogs& dialogs, LastRun& lastRun, sima::SimaReader& reader,
             const CommandSettings& settings = {});

} // namespace fenmark::command
