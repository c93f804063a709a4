// From record numbers to the places of their first and last records.
#include "sima/records/number_index.h"

#include <algorithm>

namespace fenmark::sima {

namespace {

constexpr std::size_t kFirstSlots = 64;

// The stretch of slots where a number belongs: the group of sixteen is scattered, the place in it is kept.
std::uint64_t scatter(std::int32_t number) {
    const std::uint64_t bits = static_cast<std::uint32_t>(number);
    std::uint64_t group = (bits >> 4) * 0x9E3779B97F4A7C15U; // 2^64 over the golden ratio
    group ^= group >> 32;
    return (group << 4) | (bits & 15U);
}

} // namespace

std::size_t NumberIndex::slotOf(std::int32_t number) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t slot = static_cast<std::size_t>(scatter(number)) & mask;
    while (slots_[slot].firstPlusOne != 0 && slots_[slot].number != number)
        slot = (slot + 1) & mask;
    return slot;
}

std::optional<NumberIndex::Places> NumberIndex::find(std::int32_t number) const {
    if (slots_.empty())
        return std::nullopt;
    const Slot& slot = slots_[slotOf(number)];
    if (slot.firstPlusOne == 0)
        return std::nullopt;
    return Places{slot.firstPlusOne - 1, slot.last};
}

void NumberIndex::add(std::int32_t number, std::uint32_t place) {
    if (2 * (used_ + 1) > slots_.size())
        grow();
    Slot& slot = slots_[slotOf(number)];
    if (slot.firstPlusOne == 0) {
        slot.number = number;
        slot.firstPlusOne = place + 1;
        ++used_;
    }
    slot.last = place;
}

void NumberIndex::clear() {
    slots_.clear();
    slots_.shrink_to_fit();
    used_ = 0;
}

void NumberIndex::grow() {
    std::vector<Slot> old(std::max(kFirstSlots, 2 * slots_.size()));
    old.swap(slots_);
    for (const Slot& slot : old)
        if (slot.firstPlusOne != 0)
            slots_[slotOf(slot.number)] = slot;
}

} // namespace fenmark::sima
