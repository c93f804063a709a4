// What a pass needs beside the file: where sections go, who shows progress, who knows alignment names, the encoding.
#pragma once

#include "host/boundary/host_boundary.h"
#include "sima/reader/progress.h"
#include "sima/reader/section_sink.h"

namespace fenmark::sima {

enum class Encoding { Cp932, Utf8 };

// Null members are allowed: nothing is then created, shown or asked.
struct ReadContext {
    SectionSink* sink = nullptr;
    ProgressFactory* progress = nullptr;
    host::HostBoundary* host = nullptr;
    Encoding encoding = Encoding::Cp932;
};

} // namespace fenmark::sima
