// From record numbers to the places of their first and last records.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace fenmark::sima {

// A flat hash table. Sixteen numbers in a row share a stretch of slots, since most files count their points up.
class NumberIndex {
  public:
    struct Places {
        std::uint32_t first = 0;
        std::uint32_t last = 0;
    };

    // Empty if the number was never added.
    std::optional<Places> find(std::int32_t number) const;
    // Notes that a record with that number stands at the given place; places come in rising order.
    void add(std::int32_t number, std::uint32_t place);
    void clear();

  private:
    struct Slot {
        std::int32_t number = 0;
        std::uint32_t firstPlusOne = 0; // 0 marks a free slot
        std::uint32_t last = 0;
    };

    std::size_t slotOf(std::int32_t number) const;
    void grow();

    std::vector<Slot> slots_; // a power of two, at most half full
    std::size_t used_ = 0;
};

} // namespace fenmark::sima
