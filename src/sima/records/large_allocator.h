// Memory for the few arrays that grow with the file, in the large pages of the processor where the system has them.
#pragma once

#include <cstddef>
#include <limits>
#include <new>

namespace fenmark::sima {

// Pieces from this size on lie on a border of this size, and the system is asked to back them by pages of it. A first
// touch of memory costs the same for a page of 2 MiB as for a few of 4 KiB, and a large file touches 200 MB.
inline constexpr std::size_t kLargePage = std::size_t{2} << 20; // bytes

// Raise std::bad_alloc as operator new does. Both take the same size, in bytes.
void* allocateLarge(std::size_t bytes);
void deallocateLarge(void* memory, std::size_t bytes) noexcept;

// An allocator for std::vector.
template <typename T>
struct LargeAllocator {
    using value_type = T;

    LargeAllocator() = default;
    template <typename Other>
    LargeAllocator(const LargeAllocator<Other>&) {}

    T* allocate(std::size_t count) {
        if (count > std::numeric_limits<std::size_t>::max() / sizeof(T)) {
            throw std::bad_array_new_length();
        }
        return static_cast<T*>(allocateLarge(count * sizeof(T)));
    }
    void deallocate(T* memory, std::size_t count) noexcept { deallocateLarge(memory, count * sizeof(T)); }

    friend bool operator==(const LargeAllocator&, const LargeAllocator&) { return true; }
};

} // namespace fenmark::sima
