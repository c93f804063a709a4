// What the system says to a program that is to end.
#pragma once

namespace fenmark::platform {

// While it lives, a request to end the program (SIGTERM, SIGHUP and SIGINT on POSIX systems) does not kill it: the
// descriptor becomes readable. One at a time.
class EndSignals {
  public:
    EndSignals();
    ~EndSignals();
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;

    // -1 where the system has no such requests, or where they cannot be watched.
    int descriptor() const { return descriptor_; }

  private:
    int descriptor_ = -1;
};

} // namespace fenmark::platform
