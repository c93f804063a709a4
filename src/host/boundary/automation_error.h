// Errors that the automation layer raises and that nothing on the way up catches but the host.
#pragma once

#include <cstdint>
#include <stdexcept>

namespace fenmark::host {

constexpr std::int32_t kStatusPointerError = static_cast<std::int32_t>(0x80004003U);
constexpr std::int32_t kStatusOutOfMemory = static_cast<std::int32_t>(0x8007000EU);
constexpr std::int32_t kStatusFailure = static_cast<std::int32_t>(0x80004005U);

class AutomationError : public std::runtime_error {
  public:
    AutomationError(std::int32_t status, const char* what) : std::runtime_error(what), status_(status) {}
    std::int32_t status() const { return status_; }

  private:
    std::int32_t status_;
};

} // namespace fenmark::host
