// The locale that the module asks for on its thread.
#include "module/thread_locale.h"

namespace fenmark::module {

namespace {

thread_local int currentLocale = 0;

} // namespace

void setThreadLocale(int locale) {
    currentLocale = locale;
}

int threadLocale() {
    return currentLocale;
}

} // namespace fenmark::module
