// Layout of the block: capacity, number of cells, end offsets of the cells, bytes of the cells.
#include "ui/treelist/model/row_texts.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "ui/treelist/model/block_pool.h"

namespace fenmark::ui::treelist {

std::string_view RowTexts::at(std::size_t column) const {
    if (column >= size()) {
        return {};
    }
    const std::uint32_t* offsets = ends();
    const std::uint32_t begin = column == 0 ? 0 : offsets[column - 1];
    const char* bytes = reinterpret_cast<const char*>(offsets + block_->cells);
    return {bytes + begin, offsets[column] - begin};
}

void RowTexts::build(BlockPool& pool, const std::string_view* cells, std::size_t count) {
    while (count > 0 && cells[count - 1].empty()) {
        --count;
    }
    Block* old = block_;
    block_ = nullptr;
    if (count > 0) {
        std::size_t bytes = 0;
        for (std::size_t i = 0; i < count; ++i) {
            bytes += cells[i].size();
        }
        const std::size_t capacity = BlockPool::roundUp(sizeof(Block) + count * sizeof(std::uint32_t) + bytes);
        Block* block =
            ::new (pool.take(capacity)) Block{static_cast<std::uint32_t>(capacity), static_cast<std::uint32_t>(count)};
        auto* offsets = reinterpret_cast<std::uint32_t*>(block + 1);
        char* to = reinterpret_cast<char*>(offsets + count);
        std::uint32_t end = 0;
        for (std::size_t i = 0; i < count; ++i) {
            if (!cells[i].empty()) {
                std::memcpy(to + end, cells[i].data(), cells[i].size());
            }
            end += static_cast<std::uint32_t>(cells[i].size());
            offsets[i] = end;
        }
        block_ = block;
    }
    // The given texts may lie in the old block, so it goes last.
    if (old) {
        pool.give(old, old->capacity);
    }
}

void RowTexts::set(BlockPool& pool, std::size_t column, std::string_view text) {
    if (column >= size() && text.empty()) {
        return;
    }
    const std::size_t count = std::max(size(), column + 1);
    std::array<std::string_view, 16> few;
    std::vector<std::string_view> many;
    std::string_view* cells = few.data();
    if (count > few.size()) {
        many.resize(count);
        cells = many.data();
    }
    for (std::size_t i = 0; i < count; ++i) {
        cells[i] = at(i);
    }
    cells[column] = text;
    build(pool, cells, count);
}

void RowTexts::removeColumn(BlockPool& pool, std::size_t column) {
    if (column >= size()) {
        return;
    }
    std::vector<std::string_view> cells;
    for (std::size_t i = 0; i < size(); ++i) {
        if (i != column) {
            cells.push_back(at(i));
        }
    }
    build(pool, cells.data(), cells.size());
}

void RowTexts::assign(BlockPool& pool, const std::vector<std::string>& texts) {
    const std::vector<std::string_view> cells(texts.begin(), texts.end());
    build(pool, cells.data(), cells.size());
}

std::vector<std::string> RowTexts::copy() const {
    std::vector<std::string> cells;
    cells.reserve(size());
    for (std::size_t i = 0; i < size(); ++i) {
        cells.emplace_back(at(i));
    }
    return cells;
}

void RowTexts::clear(BlockPool& pool) {
    build(pool, nullptr, 0);
}

} // namespace fenmark::ui::treelist
