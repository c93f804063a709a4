// What the module exports towards the host, and what happens when the library is loaded and unloaded.

#include "module/fenmark_app.h"
#include "module/thread_locale.h"

namespace fenmark::module {

namespace {

CFenmarkApp app;

// The library's attach and detach. Each first sets the thread's locale.
struct Library {
    Library() {
        setThreadLocale(kJapaneseLocale);
        mirdane::InitMdUiDLL();
    }
    ~Library() { setThreadLocale(kJapaneseLocale); }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
};

Library library;

} // namespace

} // namespace fenmark::module

extern "C" int mdrxEntryPoint(int message, void* package) {
    return fenmark::module::dispatchMessage(fenmark::module::app, message, package);
}

extern "C" int mdrxGetApiVersion() {
    return mirdane::kModuleApiVersion;
}
