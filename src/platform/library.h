// Libraries loaded at run time.
#pragma once

#include "values/outcome.h"

#include <string>

namespace fenmark::platform {

// A loaded library; it is let go at the end.
class Library {
  public:
    Library() = default;
    ~Library() { close(); }
    Library(Library&& other) noexcept : handle_(other.handle_) { other.handle_ = nullptr; }
    Library& operator=(Library&& other) noexcept;
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    // Fails with what the system says.
    Outcome open(const std::string& path);
    void close() noexcept;

    // The function of that name as a pointer to Function; null if the library has none.
    template <typename Function>
    [[nodiscard]] Function* function(const char* name) const {
        return reinterpret_cast<Function*>(address(name));
    }

  private:
    using AnyFunction = void (*)();
    [[nodiscard]] AnyFunction address(const char* name) const;

    void* handle_ = nullptr;
};

} // namespace fenmark::platform
