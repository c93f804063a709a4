// Text of a drawing: a length of one to five bytes, seven bits each, and the text behind it.
#include "drawing/text_pool.h"

#include <functional>

namespace fenmark::drawing {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD"; // U+FFFD
constexpr std::size_t kLongestLength = 5;

// Length of the well-formed UTF-8 sequence at the front; 0 if there is none.
std::size_t sequenceLength(std::string_view text) {
    const auto at = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const auto follows = [&](std::size_t i, unsigned low = 0x80, unsigned high = 0xBF) {
        return i < text.size() && at(i) >= low && at(i) <= high;
    };
    const unsigned lead = at(0);
    if (lead < 0x80) {
        return 1;
    }
    if (lead >= 0xC2 && lead <= 0xDF) {
        return follows(1) ? 2 : 0;
    }
    if (lead >= 0xE0 && lead <= 0xEF) {
        const unsigned low = lead == 0xE0 ? 0xA0 : 0x80;
        const unsigned high = lead == 0xED ? 0x9F : 0xBF; // no surrogates
        return follows(1, low, high) && follows(2) ? 3 : 0;
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        const unsigned low = lead == 0xF0 ? 0x90 : 0x80;
        const unsigned high = lead == 0xF4 ? 0x8F : 0xBF; // up to U+10FFFF
        return follows(1, low, high) && follows(2) && follows(3) ? 4 : 0;
    }
    return 0;
}

// Length of the front part that needs no change.
std::size_t readablePart(std::string_view text) {
    std::size_t i = 0;
    while (i < text.size()) {
        const std::size_t length = sequenceLength(text.substr(i));
        if (length == 0) {
            break;
        }
        i += length;
    }
    return i;
}

} // namespace

std::string readableText(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (;;) {
        const std::size_t good = readablePart(text);
        out.append(text.substr(0, good));
        text.remove_prefix(good);
        if (text.empty()) {
            return out;
        }
        out.append(kReplacement);
        text.remove_prefix(1);
    }
}

TextPool::Handle TextPool::add(std::string_view text) {
    const std::size_t slot = std::hash<std::string_view>{}(text) % kRecent;
    if (remembered_[slot] && view(recent_[slot]) == text) {
        return recent_[slot];
    }
    if (readablePart(text) != text.size()) {
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
