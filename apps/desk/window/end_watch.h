// Ends the program in order when the system asks it to.
#pragma once

#include "platform/end_signals.h"

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace fenmark::desk {

// While it lives, a request of the system to end calls the function from the event loop, once. One at a time.
class EndWatch {
  public:
    explicit EndWatch(std::function<void()> end);
    EndWatch(const EndWatch&) = delete;
    EndWatch& operator=(const EndWatch&) = delete;

  private:
    std::function<void()> end_;
    platform::EndSignals signals_;
    std::unique_ptr<QSocketNotifier> notifier_; // gone before what it watches
};

} // namespace fenmark::desk
