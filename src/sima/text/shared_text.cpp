// A text that does not change: its length, the number of its users and its characters lie in one piece of memory.
#include "sima/text/shared_text.h"

#include <atomic>
#include <cstring>
#include <new>

namespace fenmark::sima {

struct SharedText::Characters {
    std::size_t length;
    // Copies may live in several threads.
    std::atomic<std::size_t> users;

    char* text() { return reinterpret_cast<char*>(this) + sizeof(Characters); }
};

std::string_view SharedText::view() const {
    return characters_ == nullptr ? std::string_view() : std::string_view(characters_->text(), characters_->length);
}

SharedText::Characters* SharedText::made(std::string_view text) {
    if (text.empty()) {
        return nullptr;
    }
    void* const memory = ::operator new(sizeof(Characters) + text.size());
    auto* const characters = new (memory) Characters{text.size(), 1};
    std::memcpy(characters->text(), text.data(), text.size());
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
