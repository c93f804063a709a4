// A text that does not change: the number of its users, its length and its characters lie in one piece of memory.
#include "sima/text/shared_text.h"

#include <atomic>
#include <cstdint>
#include <cstring>
#include <new>

namespace fenmark::sima {

// With a head of five bytes a coordinate of up to 19 characters takes 24 bytes, one step of the allocator less than with one
// of eight.
struct SharedText::Characters {
    // Copies may live in several threads. Each is as wide as a pointer, so that 2^32 of them have no room.
    std::atomic<std::uint32_t> users;
    std::uint8_t length; // kLong: the length follows, then the text

    static constexpr std::uint8_t kLong = 255;
    static constexpr std::size_t kHead = sizeof users + sizeof length;

    char* behindHead() { return reinterpret_cast<char*>(this) + kHead; }
    std::string_view view() {
        if (length != kLong) {
            return {behindHead(), length};
        }
        std::size_t longLength = 0;
        std::memcpy(&longLength, behindHead(), sizeof longLength);
        return {behindHead() + sizeof longLength, longLength};
    }
};

std::string_view SharedText::view() const {
    return characters_ == nullptr ? std::string_view() : characters_->view();
}

SharedText::Characters* SharedText::made(std::string_view text) {
    if (text.empty()) {
        return nullptr;
    }
    const std::size_t length = text.size();
    const bool isLong = length >= Characters::kLong;
    const std::size_t head = Characters::kHead + (isLong ? sizeof length : 0);
    const std::size_t size = head + length;
    void* const memory = ::operator new(size < sizeof(Characters) ? sizeof(Characters) : size);
    auto* const characters = new (memory) Characters{1, isLong ? Characters::kLong : static_cast<std::uint8_t>(length)};
    if (isLong) {
        std::memcpy(characters->behindHead(), &length, sizeof length);
    }
    std::memcpy(static_cast<char*>(memory) + head, text.data(), length);
    return characters;
}

SharedText::Characters* SharedText::shared(Characters* characters) noexcept {
    if (characters != nullptr) {
        characters->users.fetch_add(1, std::memory_order_relaxed);
    }
    return characters;
}

void SharedText::drop(Characters* characters) noexcept {
    if (characters != nullptr && characters->users.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        characters->~Characters();
        ::operator delete(characters);
    }
}

} // namespace fenmark::sima
