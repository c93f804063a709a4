// From record numbers to the places of their first and last records.
#include "sima/records/number_index.h"

#include <algorithm>
#include <utility>

namespace fenmark::sima {

namespace {

constexpr std::size_t kFirstSlots = 64;
constexpr std::size_t kFirstDense = 1024;
constexpr std::size_t kDenseFactor = 4; // the array holds at most so many entries for each record

std::size_t scatter(std::int32_t number) {
    const std::uint64_t product =
        static_cast<std::uint32_t>(number) * 0x9E3779B97F4A7C15U; // 2^64 over the golden ratio
    return static_cast<std::size_t>(product ^ product >> 32);
}

} // namespace

std::size_t NumberIndex::slotOf(std::int32_t number) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t slot = scatter(number) & mask;
    while (slots_[slot].entry.firstPlusOne != 0 && slots_[slot].number != number) {
        slot = (slot + 1) & mask;
    }
    return slot;
}

NumberIndex::Entry NumberIndex::entryOfSlot(std::int32_t number) const {
    return slots_.empty() ? Entry{} : slots_[slotOf(number)].entry;
}

void NumberIndex::note(Entry& entry, std::uint32_t place) {
    if (entry.firstPlusOne == 0) {
        entry.firstPlusOne = place + 1;
    }
    entry.last = place;
}

void NumberIndex::add(std::int32_t number, std::uint32_t place) {
    ++added_;
    if (number >= 0 && (static_cast<std::size_t>(number) < dense_.size() || growDense(number))) {
        note(dense_[static_cast<std::size_t>(number)], place);
        return;
    }
    if (2 * (usedSlots_ + 1) > slots_.size()) {
        growSlots();
    }
    Slot& slot = slots_[slotOf(number)];
    if (slot.entry.firstPlusOne == 0) {
        slot.number = number;
        ++usedSlots_;
    }
    note(slot.entry, place);
}

// Makes room for the number in the array, which at least doubles it, and takes over what the hash table holds of that
// range. False if the array would become too large for what is in it.
bool NumberIndex::growDense(std::int32_t number) {
    const std::size_t size = std::max({static_cast<std::size_t>(number) + 1, kFirstDense, 2 * dense_.size()});
    if (size > std::max(kFirstDense, kDenseFactor * added_)) {
        return false;
    }
    dense_.resize(size);
    if (usedSlots_ == 0) {
        return true;
    }
    const std::vector<Slot> old = std::exchange(slots_, {});
    usedSlots_ = 0;
    for (const Slot& slot : old) {
        if (slot.entry.firstPlusOne == 0) {
            continue;
        }
        if (slot.number >= 0 && static_cast<std::size_t>(slot.number) < dense_.size()) {
            dense_[static_cast<std::size_t>(slot.number)] = slot.entry;
        } else {
            if (2 * (usedSlots_ + 1) > slots_.size()) {
                growSlots();
            }
            slots_[slotOf(slot.number)] = slot;
            ++usedSlots_;
        }
    }
    return true;
}

void NumberIndex::growSlots() {
    std::vector<Slot> old(std::max(kFirstSlots, 2 * slots_.size()));
    old.swap(slots_);
    for (const Slot& slot : old) {
        if (slot.entry.firstPlusOne != 0) {
            slots_[slotOf(slot.number)] = slot;
        }
    }
}

void NumberIndex::clear() {
    *this = {};
}

} // namespace fenmark::sima
