// Text of a drawing, kept once behind another; texts that come again and again (types, file names) are kept once.
#pragma once

#include "drawing/chunked_array.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace fenmark::drawing {

// Valid UTF-8, as every program that opens the drawing can read it: a byte that belongs to no character becomes U+FFFD.
// A NUL is a character as any other.
std::string readableText(std::string_view text);

// A handle stays good until the pool is rolled back behind it.
class TextPool {
  public:
    using Handle = std::uint64_t;
    struct Mark {
        ChunkedArray<char, 65536>::Mark bytes;

        friend bool operator==(const Mark&, const Mark&) = default;
    };
    using Tail = ChunkedArray<char, 65536>::Tail;

    Handle add(std::string_view text);
    std::string_view view(Handle handle) const;

    Mark mark() const { return {bytes_.mark()}; }
    void rollback(const Mark& mark) { cut(mark); }
    // As of a chunked array.
    Tail cut(const Mark& mark);
    void restore(Tail&& tail) { bytes_.restore(std::move(tail)); }

  private:
    static constexpr std::size_t kRecent = 256; // texts remembered, by hash

    ChunkedArray<char, 65536> bytes_;
    std::array<Handle, kRecent> recent_{};
    std::array<bool, kRecent> remembered_{};
};

} // namespace fenmark::drawing
