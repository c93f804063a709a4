// What the user chose in the last accepted run of the command.
#pragma once

#include "sima/reader/sima_reader.h"
#include "sima/records/import_options.h"

#include <cstdint>
#include <string>

namespace fenmark::command {

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

} // namespace fenmark::command
