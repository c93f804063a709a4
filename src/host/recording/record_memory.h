// Memory for the vertices that a recorded drawing holds.
#pragma once

#include "sima/records/large_allocator.h"

#include <cstddef>
#include <memory_resource>

namespace fenmark::host {

// Hands out one piece behind the other, from blocks that grow with the drawing and lie in large pages, and gives all of
// them back at once: a million outlines are as many small pieces, and none of them goes before the drawing does.
class RecordMemory {
  public:
    std::pmr::memory_resource* resource() { return &pieces_; }

  private:
    class LargePages : public std::pmr::memory_resource {
        void* do_allocate(std::size_t bytes, std::size_t) override { return sima::allocateLarge(bytes); }
        void do_deallocate(void* memory, std::size_t bytes, std::size_t) override {
            sima::deallocateLarge(memory, bytes);
        }
        bool do_is_equal(const std::pmr::memory_resource& other) const noexcept override { return this == &other; }
    };

    static constexpr std::size_t kFirstBlock = std::size_t{64} << 10; // bytes: a small drawing takes little

    LargePages pages_;
    std::pmr::monotonic_buffer_resource pieces_{kFirstBlock, &pages_};
};

} // namespace fenmark::host
