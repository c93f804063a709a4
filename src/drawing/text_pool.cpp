// Text of a drawing: a length of one to five bytes, seven bits each, and the text behind it.
#include "drawing/text_pool.h"

#include "sima/text/utf8.h"

#include <functional>

namespace fenmark::drawing {

namespace {

constexpr std::size_t kLongestLength = 5;

} // namespace

std::string readableText(std::string_view text) {
    if (sima::isValidUtf8(text)) {
        return std::string(text);
    }
    std::string out;
    while (!text.empty()) {
        const std::string_view before = text;
        const bool isCharacter =
            sima::takeCharacter(text) != U'\uFFFD' || before.starts_with(sima::kReplacementCharacter);
        const std::size_t taken = before.size() - text.size();
        if (isCharacter) {
            out += before.substr(0, taken);
            continue;
        }
        for (std::size_t byte = 0; byte < taken; ++byte) {
            out += sima::kReplacementCharacter;
        }
    }
    return out;
}

TextPool::Handle TextPool::add(std::string_view text) {
    const std::size_t slot = std::hash<std::string_view>{}(text) % kRecent;
    if (remembered_[slot] && view(recent_[slot]) == text) {
        return recent_[slot];
    }
    if (!sima::isValidUtf8(text)) {
        return add(readableText(text));
    }

    std::array<char, kLongestLength> length{};
    std::size_t bytes = 0;
    std::size_t rest = text.size();
    do {
        length[bytes++] = static_cast<char>((rest & 0x7FU) | (rest > 0x7FU ? 0x80U : 0U));
        rest >>= 7U;
    } while (rest > 0 && bytes < kLongestLength);
    // One run for both, so that they stay together.
    const Handle handle = bytes_.appendUninitialized(bytes + text.size());
    const std::span<char> run = bytes_.run(handle, bytes + text.size());
    std::copy_n(length.begin(), bytes, run.begin());
    std::copy(text.begin(), text.end(), run.begin() + static_cast<std::ptrdiff_t>(bytes));
    recent_[slot] = handle;
    remembered_[slot] = true;
    return handle;
}

std::string_view TextPool::view(Handle handle) const {
    const char* at = bytes_.run(handle, 1).data();
    std::size_t length = 0;
    unsigned shift = 0;
    for (;;) {
        const auto byte = static_cast<unsigned char>(*at++);
        length |= static_cast<std::size_t>(byte & 0x7FU) << shift;
        if ((byte & 0x80U) == 0) {
            return {at, length};
        }
        shift += 7;
    }
}

TextPool::Tail TextPool::cut(const Mark& mark) {
    remembered_.fill(false);
    return bytes_.cut(mark.bytes);
}

} // namespace fenmark::drawing
