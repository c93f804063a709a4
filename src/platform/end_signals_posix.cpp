// What a POSIX system says to a program that is to end: signals.
#include "platform/end_signals.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace fenmark::platform {

namespace {

// The handler may only write: whoever watches the other end acts.
std::array<int, 2> ends{-1, -1};
constexpr std::array kSignals{SIGTERM, SIGHUP, SIGINT};

extern "C" void fenmarkToldToEnd(int) {
    const char any = 1;
    [[maybe_unused]] const auto written = write(ends[1], &any, 1);
}

} // namespace

EndSignals::EndSignals() {
    if (pipe(ends.data()) != 0) {
        return;
    }
    for (const int end : ends) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
    }
    descriptor_ = ends[0];
    for (const int signal : kSignals) {
        std::signal(signal, fenmarkToldToEnd);
    }
}

EndSignals::~EndSignals() {
    if (descriptor_ < 0) {
        return;
    }
    for (const int signal : kSignals) {
        std::signal(signal, SIG_DFL);
    }
    for (int& end : ends) {
        close(end);
        end = -1;
    }
}

} // namespace fenmark::platform
