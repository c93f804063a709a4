// Work that runs beside its caller.
#pragma once

#include "platform/process.h"

#include <future>
#include <system_error>

namespace fenmark::platform {

// The work's result: of a thread of its own where one is to be had, otherwise made when it is asked for. What the work
// throws is thrown to who asks. A thread is waited for when its future goes.
template <typename Work>
[[nodiscard]] auto startBeside(const Work& work) -> std::future<decltype(work())> {
    if (hasThreads()) {
        try {
            return std::async(std::launch::async, work);
        } catch (const std::system_error&) { // no thread to be had
        }
    }
    return std::async(std::launch::deferred, work);
}

} // namespace fenmark::platform
