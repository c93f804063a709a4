// A text that does not change, as wide as a pointer: copies share its characters. It is for records of which a file makes
// a million, with many texts each that are empty or stand in the record before, too.
#pragma once

#include <concepts>
#include <cstddef>
#include <string_view>
#include <type_traits>
#include <utility>

namespace fenmark::sima {

class SharedText;

// What a text is made of and compared with: std::string, std::string_view and literals.
template <typename T>
concept PlainText =
    std::convertible_to<const T&, std::string_view> && !std::same_as<std::remove_cvref_t<T>, SharedText>;

class SharedText {
  public:
    SharedText() = default;
    template <PlainText T>
    SharedText(const T& text) : characters_(made(text)) {}
    SharedText(const SharedText& other) noexcept : characters_(shared(other.characters_)) {}
    SharedText(SharedText&& other) noexcept : characters_(std::exchange(other.characters_, nullptr)) {}
    SharedText& operator=(SharedText other) noexcept {
        std::swap(characters_, other.characters_);
        return *this;
    }
    ~SharedText() { drop(characters_); }

    bool empty() const { return characters_ == nullptr; }
    std::string_view view() const;
    operator std::string_view() const { return view(); }

    friend bool operator==(const SharedText& a, const SharedText& b) { return a.view() == b.view(); }
    template <PlainText T>
    friend bool operator==(const SharedText& a, const T& b) {
        return a.view() == std::string_view(b);
    }

  private:
    struct Characters;

    // Null for an empty text. std::bad_alloc.
    static Characters* made(std::string_view text);
    static Characters* shared(Characters* characters) noexcept;
    static void drop(Characters* characters) noexcept;

    Characters* characters_ = nullptr;
};

} // namespace fenmark::sima
