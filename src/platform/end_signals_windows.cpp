// Windows has no signals to end.
#include "platform/end_signals.h"

namespace fenmark::platform {

EndSignals::EndSignals() = default;
EndSignals::~EndSignals() = default;

int EndSignals::descriptor() const {
    return -1;
}

} // namespace fenmark::platform
