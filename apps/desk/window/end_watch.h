// Ends the program in order when the system asks it to.
#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace fenmark::desk {

// While it lives, SIGTERM, SIGHUP and SIGINT call the function from the event loop. Elsewhere than on POSIX systems it
// does nothing. One at a time.
class EndWatch {
  public:
    explicit EndWatch(std::function<void()> end);
    ~EndWatch();
    EndWatch(const EndWatch&) = delete;
    EndWatch& operator=(const EndWatch&) = delete;

  private:
    std::function<void()> end_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

} // namespace fenmark::desk
