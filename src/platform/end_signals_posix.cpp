// The signals to end on POSIX systems: a handler may only write, so it writes to a pipe.
#include "platform/end_signals.h"

#include <array>
#include <csignal>

#include <unistd.h>

namespace fenmark::platform {

namespace {

std::array<int, 2> ends{-1, -1};
constexpr std::array kSignals{SIGTERM, SIGHUP, SIGINT};

extern "C" void fenmarkToldToEnd(int) {
    const char any = 1;
    [[maybe_unused]] const auto written = ::write(ends[1], &any, 1);
}

} // namespace

EndSignals::EndSignals() {
    if (::pipe(ends.data()) != 0) {
        ends = {-1, -1};
        return;
    }
    for (const int signal : kSignals) {
        std::signal(signal, fenmarkToldToEnd);
    }
}

EndSignals::~EndSignals() {
    if (ends[0] < 0) {
        return;
    }
    for (const int signal : kSignals) {
        std::signal(signal, SIG_DFL);
    }
    for (int& end : ends) {
        ::close(end);
        end = -1;
    }
}

int EndSignals::descriptor() const {
    return ends[0];
}

} // namespace fenmark::platform
