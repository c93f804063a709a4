// The signals by which a system asks a program to end, as something that an event loop can wait for.
#pragma once

namespace fenmark::platform {

// While it lives, SIGTERM, SIGHUP and SIGINT make its descriptor readable instead of ending the program. One at a time.
// Windows ends programs by messages to their windows: there it does nothing.
class EndSignals {
  public:
    EndSignals();
    ~EndSignals();
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;

    // To be read in an event loop; -1 where there is none.
    [[nodiscard]] int descriptor() const;
};

} // namespace fenmark::platform
