// Memory on Windows, where large pages need a right that users do not have.
#include "platform/memory.h"

namespace fenmark::platform {

void wishLargePages(void*, std::size_t) noexcept {}

} // namespace fenmark::platform
