// Libraries on Windows.
#include "platform/library.h"

#include "platform/files.h"
#include "platform/wide_windows.h"

#include <utility>

namespace fenmark::platform {

Library& Library::operator=(Library&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
}

Outcome Library::open(const std::string& path) {
    close();
    handle_ = ::LoadLibraryW(widePath(path).c_str());
    return handle_ == nullptr ? failed(path + ": " + reasonOf(meaningOf(::GetLastError()))) : Outcome();
}

void Library::close() noexcept {
    if (handle_ != nullptr) {
        ::FreeLibrary(static_cast<HMODULE>(std::exchange(handle_, nullptr)));
    }
}

Library::AnyFunction Library::address(const char* name) const {
    return handle_ == nullptr ? nullptr
                              : reinterpret_cast<AnyFunction>(::GetProcAddress(static_cast<HMODULE>(handle_), name));
}

} // namespace fenmark::platform
