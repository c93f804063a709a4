// Memory in large pages.
#include "sima/records/large_allocator.h"

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace fenmark::sima {

void* allocateLarge(std::size_t bytes) {
    if (bytes < kLargePage) {
        return ::operator new(bytes);
    }
    void* const memory = ::operator new (bytes, std::align_val_t{kLargePage});
#ifdef __linux__
    // A wish: where it is refused, the memory has small pages and holds the same. Only whole pages, so that nothing
    // behind the piece changes.
    madvise(memory, bytes / kLargePage * kLargePage, MADV_HUGEPAGE);
#endif
    return memory;
}

void deallocateLarge(void* memory, std::size_t bytes) noexcept {
    if (bytes < kLargePage) {
        ::operator delete(memory);
    } else {
        ::operator delete (memory, std::align_val_t{kLargePage});
    }
}

} // namespace fenmark::sima
