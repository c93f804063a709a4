// Windows asks windows to close, which the toolkit hands on: there is nothing to watch.
#include "platform/end_signals.h"

namespace fenmark::platform {

EndSignals::EndSignals() = default;
EndSignals::~EndSignals() = default;

} // namespace fenmark::platform
