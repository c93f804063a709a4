// Memory on POSIX systems.
#include "platform/memory.h"

#include <sys/mman.h>

namespace fenmark::platform {

void wishLargePages([[maybe_unused]] void* memory, [[maybe_unused]] std::size_t bytes) noexcept {
#ifdef MADV_HUGEPAGE
    (void)::madvise(memory, bytes, MADV_HUGEPAGE);
#endif
}

} // namespace fenmark::platform
