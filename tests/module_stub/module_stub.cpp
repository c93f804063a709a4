// The least that a host takes for a module: entry points of the version that the build gives it. It allows no unloading.
#include "host/surface/module.h"

int mdrxEntryPoint(int, void*) {
    return 0;
}

int mdrxGetApiVersion() {
    return FENMARK_STUB_VERSION;
}
