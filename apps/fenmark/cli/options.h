// The options of each command, as the arguments gave them.
#pragma once

#include "exchange/export_options.h"
#include "exchange/plan/plot.h"
#include "exchange/report/report.h"
#include "exchange/stakes.h"
#include "host/embedded/embedded_host.h"
#include "sima/reader/read_context.h"
#include "sima/records/import_options.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::cli {

// Bytes. A longer line is no record of a survey, and would be held in memory whole.
inline constexpr std::size_t kLongestLine = std::size_t{64} << 20;

struct ImportArguments {
    std::vector<std::string> files;
    std::optional<std::string> drawing;
    std::optional<std::string> site;
    std::array<bool, sima::kImportKinds> wanted{}; // after --only and --skip
    std::optional<std::string> pointLayer;
    std::optional<std::string> ipLayer;
    std::optional<std::string> lotLayer;
    std::optional<std::string> stakeLayer;
    std::optional<std::string> continuousLayer;
    std::optional<double> shift; // metres
    std::optional<std::string> alignment;
    bool forceAlignment = false;
    bool createLayers = false;
    std::optional<int> zone;                // plane rectangular zone, 1 to 19
    std::optional<sima::Encoding> encoding; // none: chosen for each file
    host::embedded::PositiveRadius positiveRadius = host::embedded::PositiveRadius::Auto;
    bool planTangents = false;
    bool replace = false;
    bool keepPartial = false;
    bool strict = false;
    bool json = false;
    bool quiet = false;
};

struct PreviewArguments {
    std::string file;
    std::optional<sima::Encoding> encoding; // none: chosen for each file
    bool json = false;
    bool quiet = false;
};

struct InfoArguments {
    std::string drawing;
    bool json = false;
    bool alignments = false; // their names alone
};

struct StationArguments {
    std::string drawing;
    std::string alignment;
    double station = 0.0; // metres
    double offset = 0.0;  // metres, positive right of travel
    bool json = false;
};

struct LocateArguments {
    std::string drawing;
    std::string alignment;
    double x = 0.0; // east, metres
    double y = 0.0; // north, metres
    bool json = false;
};

struct ExportArguments {
    std::string drawing;
    std::string target;
    exchange::ExportOptions options;
    bool quiet = false;
};

struct StakesArguments {
    std::string drawing;
    std::string alignment;
    exchange::StakeOptions options;
    exchange::StakeFormat format = exchange::StakeFormat::Table;
    std::optional<std::string> target; // standard output without
};

struct ReportArguments {
    std::string drawing;
    std::string target;
    exchange::ReportOptions options;
    std::vector<std::string> logs; // of imports, for the summary
    bool quiet = false;
};

struct PlotArguments {
    std::string drawing;
    std::string target;
    exchange::PlotOptions options;
    std::optional<std::string> along;         // alignment that the sheets follow
    std::optional<std::string> profile;       // alignment whose longitudinal section is drawn
    std::optional<std::string> crossSections; // alignment whose cross-sections are drawn
    bool quiet = false;
};

} // namespace fenmark::cli
