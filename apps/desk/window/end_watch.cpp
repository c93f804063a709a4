// Ends the program in order when the system asks it to.
#include "desk/window/end_watch.h"

#ifndef _WIN32
#include <csignal>
#include <unistd.h>
#endif

#include <array>
#include <utility>

namespace fenmark::desk {

#ifdef _WIN32

EndWatch::EndWatch(std::function<void()> end) : end_(std::move(end)) {}
EndWatch::~EndWatch() = default;

#else

namespace {

// The handler may only write: the event loop reads and acts.
std::array<int, 2> ends{-1, -1};
constexpr std::array kSignals{SIGTERM, SIGHUP, SIGINT};

extern "C" void fenmarkDeskToldToEnd(int) {
    const char any = 1;
    [[maybe_unused]] const auto written = write(ends[1], &any, 1);
}

} // namespace

EndWatch::EndWatch(std::function<void()> end) : end_(std::move(end)) {
    if (pipe(ends.data()) != 0) {
        return;
    }
    notifier_ = std::make_unique<QSocketNotifier>(ends[0], QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] {
        notifier_->setEnabled(false);
        end_();
    });
    for (const int signal : kSignals) {
        std::signal(signal, fenmarkDeskToldToEnd);
    }
}

EndWatch::~EndWatch() {
    if (!notifier_) {
        return;
    }
    for (const int signal : kSignals) {
        std::signal(signal, SIG_DFL);
    }
    notifier_.reset();
    for (int& end : ends) {
        close(end);
        end = -1;
    }
}

#endif

} // namespace fenmark::desk
