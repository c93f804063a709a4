// Memory in large pages.
#include "sima/records/large_allocator.h"

#include "platform/memory.h"

namespace fenmark::sima {

void* allocateLarge(std::size_t bytes) {
    if (bytes < kLargePage) {
        return ::operator new(bytes);
    }
    void* const memory = ::operator new (bytes, std::align_val_t{kLargePage});
    // Only whole pages, so that nothing behind the piece changes.
    platform::wishLargePages(memory, bytes / kLargePage * kLargePage);
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
