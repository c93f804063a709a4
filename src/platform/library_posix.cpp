// Libraries on POSIX systems.
#include "platform/library.h"

#include <utility>

#include <dlfcn.h>

namespace fenmark::platform {

Library& Library::operator=(Library&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
}

Outcome Library::open(const std::string& path) {
    close();
    handle_ = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    return handle_ == nullptr ? failed(::dlerror()) : Outcome();
}

void Library::close() noexcept {
    if (handle_ != nullptr) {
        ::dlclose(std::exchange(handle_, nullptr));
    }
}

Library::AnyFunction Library::address(const char* name) const {
    return handle_ == nullptr ? nullptr : reinterpret_cast<AnyFunction>(::dlsym(handle_, name));
}

} // namespace fenmark::platform
