// The texts of a row, one for each column, in a single block of memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::ui::treelist {

class BlockPool;

// UTF-8 texts of the cells of one row. Empty texts behind the last filled cell take no memory, a row without texts
// takes none at all. The block belongs to a BlockPool, which every changing call must be given; it's always the same.
class RowTexts {
  public:
    // Number of cells that are kept; cells beyond it are empty.
    [[nodiscard]] std::size_t size() const { return block_ ? block_->cells : 0; }
    // The text of a cell, empty beyond size(). Valid until the row's texts change.
    [[nodiscard]] std::string_view at(std::size_t column) const;
    void set(BlockPool& pool, std::size_t column, std::string_view text);
    // Takes the column out; the cells behind it move up.
    void removeColumn(BlockPool& pool, std::size_t column);
    void assign(BlockPool& pool, const std::vector<std::string>& cells);
    [[nodiscard]] std::vector<std::string> copy() const;
    void clear(BlockPool& pool);

  private:
    // Followed by `cells` end offsets (32-bit) and then the bytes of all cells.
    struct Block {
        std::uint32_t capacity; // bytes of the whole block
        std::uint32_t cells;
    };
    [[nodiscard]] const std::uint32_t* ends() const { return reinterpret_cast<const std::uint32_t*>(block_ + 1); }
    void build(BlockPool& pool, const std::string_view* cells, std::size_t count);

    Block* block_ = nullptr;
};

} // namespace fenmark::ui::treelist
