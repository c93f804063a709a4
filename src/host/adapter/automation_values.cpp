// Strings and safe arrays.
#include "host/adapter/automation_values.h"

#include "host/boundary/automation_error.h"

#include <new>
#include <utility>

namespace fenmark::host {

std::string automationString(std::string_view text) {
    try {
        return std::string(text);
    } catch (const std::bad_alloc&) {
        throw AutomationError(kStatusOutOfMemory, "no memory for an automation string");
    }
}

mirdane::Variant stringVariant(std::string_view text) {
    return mirdane::Variant::string(automationString(text));
}

mirdane::Variant pointVariant(const MdGePoint3d& point) {
    constexpr std::int32_t kLowerBound = 0;
    constexpr std::size_t kCount = 3;
    auto array = mirdane::createSafeArray(kLowerBound, kCount);
    if (array == nullptr) {
        throw AutomationError(kStatusFailure, "a safe array cannot be made");
    }
    array->values() = {point.x, point.y, point.z};
    return mirdane::Variant::array(std::move(array));
}

} // namespace fenmark::host
