// The automation objects of the embedded host. Only the first is made from outside; each gives the next.
#pragma once

#include "host/surface/automation.h"

namespace fenmark::host::embedded {

// The application's object, with one reference for the caller that is not counted among those held.
mirdane::AutomationObject* makeApplication();

} // namespace fenmark::host::embedded
