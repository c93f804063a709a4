// BlockPool: memory for many small blocks that live and die with one tree.
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <vector>

namespace fenmark::ui::treelist {

// Blocks are cut from large chunks and go to a list of free blocks of their size when they are given back. Nothing goes
// back to the system before clear() or the end of the pool. Blocks are aligned to 8 bytes.
class BlockPool {
  public:
    BlockPool() = default;
    BlockPool(const BlockPool&) = delete;
    BlockPool& operator=(const BlockPool&) = delete;

    // Size that a block of at least `bytes` really has.
    [[nodiscard]] static std::size_t roundUp(std::size_t bytes);
    [[nodiscard]] void* take(std::size_t bytes);
    void give(void* block, std::size_t bytes); // the size that was asked for, or its roundUp
    void clear();                              // all blocks end
    [[nodiscard]] std::size_t reserved() const { return reserved_; }

  private:
    struct Free {
        Free* next;
    };
    static constexpr std::size_t kStep = 8;           // size classes up to kSmall
    static constexpr std::size_t kSmall = 256;        // bytes
    static constexpr std::size_t kChunk = 256 * 1024; // bytes
    static constexpr std::size_t kSmallClasses = kSmall / kStep;
    [[nodiscard]] static std::size_t classOf(std::size_t rounded);

    std::vector<std::unique_ptr<std::byte[]>> chunks_;
    std::byte* at_ = nullptr;
    std::byte* end_ = nullptr;
    std::array<Free*, kSmallClasses + 64> free_{};
    std::size_t reserved_ = 0;
};

} // namespace fenmark::ui::treelist
