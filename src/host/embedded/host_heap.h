// Counters behind the embedded host: what was given out and has not come back.
#pragma once

#include <atomic>
#include <cstdint>

namespace fenmark::host::embedded {

struct Counters {
    std::atomic<std::int64_t> heapBlocks{0};
    std::atomic<std::int64_t> openObjects{0};
    std::atomic<std::int64_t> automationReferences{0};
};

Counters& counters();

} // namespace fenmark::host::embedded
