// Memory in large pages.
#include "sima/records/large_allocator.h"

#include "platform/memory.h"

#include <limits>
#include <new>

namespace fenmark::sima {

void* allocateLarge(std::size_t bytes) {
    if (bytes < kLargePage) {
        return ::operator new(bytes);
    }
    // Whole pages, so that nothing behind the piece changes, and its end does not come in small ones.
    const std::size_t pages = bytes / kLargePage + (bytes % kLargePage != 0 ? 1 : 0);
    if (pages > std::numeric_limits<std::size_t>::max() / kLargePage) {
        throw std::bad_alloc();
    }
    const std::size_t size = pages * kLargePage;
    void* const memory = ::operator new (size, std::align_val_t{kLargePage});
    platform::wishLargePages(memory, size);
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
