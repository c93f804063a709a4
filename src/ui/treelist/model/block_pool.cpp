// Size classes: steps of 8 bytes for small blocks, powers of two above.
#include "ui/treelist/model/block_pool.h"

#include <bit>
#include <new>

namespace fenmark::ui::treelist {

std::size_t BlockPool::roundUp(std::size_t bytes) {
    if (bytes <= kSmall) {
        return bytes == 0 ? kStep : (bytes + kStep - 1) / kStep * kStep;
    }
    return std::bit_ceil(bytes);
}

std::size_t BlockPool::classOf(std::size_t rounded) {
    return rounded <= kSmall ? rounded / kStep - 1
                             : kSmallClasses + static_cast<std::size_t>(std::countr_zero(rounded));
}

void* BlockPool::take(std::size_t bytes) {
    const std::size_t size = roundUp(bytes);
    Free*& list = free_[classOf(size)];
    if (list) {
        Free* block = list;
        list = block->next;
        return block;
    }
    if (size > kChunk / 4) {
        // A chunk of its own, so that the rest of the current chunk is not lost.
        chunks_.push_back(std::make_unique_for_overwrite<std::byte[]>(size));
        reserved_ += size;
        return chunks_.back().get();
    }
    if (static_cast<std::size_t>(end_ - at_) < size) {
        chunks_.push_back(std::make_unique_for_overwrite<std::byte[]>(kChunk));
        reserved_ += kChunk;
        at_ = chunks_.back().get();
        end_ = at_ + kChunk;
    }
    void* block = at_;
    at_ += size;
    return block;
}

void BlockPool::give(void* block, std::size_t bytes) {
    Free*& list = free_[classOf(roundUp(bytes))];
    list = ::new (block) Free{list};
}

void BlockPool::clear() {
    chunks_.clear();
    at_ = nullptr;
    end_ = nullptr;
    free_.fill(nullptr);
    reserved_ = 0;
}

} // namespace fenmark::ui::treelist
