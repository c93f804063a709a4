// What a pass needs beside the file: where sections go, who shows progress, who knows alignment names, the encoding.
#pragma once

#include "host/boundary/host_boundary.h"
#include "sima/reader/progress.h"
#include "sima/reader/section_sink.h"
#include "sima/text/encoding.h"

#include <cstddef>
#include <limits>

namespace fenmark::sima {

// Null members are allowed: nothing is then created, shown or asked.
struct ReadContext {
    SectionSink* sink = nullptr;
    ProgressFactory* progress = nullptr;
    host::HostBoundary* host = nullptr;
    Encoding encoding = Encoding::Cp932;
    // Bytes of the longest line; a longer one ends the pass with LineTooLong. The format itself knows no limit.
    std::size_t longestLine = std::numeric_limits<std::size_t>::max();
};

} // namespace fenmark::sima
