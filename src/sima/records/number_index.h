// From record numbers to the places of their first and last records.
#pragma once

#include "sima/records/large_allocator.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace fenmark::sima {

// Most files count their points up from 1, so small numbers are looked up in an array of their own; the others lie in a
// flat hash table. The array grows as long as a quarter of it is in use.
class NumberIndex {
  public:
    struct Places {
        std::uint32_t first = 0;
        std::uint32_t last = 0;
    };

    // Empty if the number was never added.
    std::optional<Places> find(std::int32_t number) const {
        const bool isDense = number >= 0 && static_cast<std::size_t>(number) < dense_.size();
        const Entry entry = isDense ? dense_[static_cast<std::size_t>(number)] : entryOfSlot(number);
        if (entry.firstPlusOne == 0) {
            return std::nullopt;
        }
        return Places{entry.firstPlusOne - 1, entry.last};
    }
    // Notes that a record with that number stands at the given place; places come in rising order.
    void add(std::int32_t number, std::uint32_t place);
    // Room for about so many records that count up from 1; what is not filled is never resident.
    void expect(std::size_t records) { dense_.reserve(records + 1); }
    void clear();

  private:
    // Places plus one, so that 0 marks what is free.
    struct Entry {
        std::uint32_t firstPlusOne = 0;
        std::uint32_t last = 0;
    };
    struct Slot {
        std::int32_t number = 0;
        Entry entry;
    };

    Entry entryOfSlot(std::int32_t number) const;
    static void note(Entry& entry, std::uint32_t place);
    bool growDense(std::int32_t number);
    std::size_t slotOf(std::int32_t number) const;
    void growSlots();

    std::vector<Entry, LargeAllocator<Entry>> dense_; // by number, from 0
    std::vector<Slot> slots_;                         // a power of two, at most half full
    std::size_t usedSlots_ = 0;
    std::size_t added_ = 0;
};

} // namespace fenmark::sima
