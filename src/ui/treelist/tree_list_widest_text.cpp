// The widest of many texts, without laying each of them out.
#include "ui/treelist/tree_list_widest_text.h"

#include <algorithm>

#include <QString>

namespace fenmark::ui::treelist {

namespace {

constexpr std::size_t kCandidates = 32; // texts that are laid out in the end

// The character at `at`, which moves on behind it. Bytes that are no UTF-8 count as one character each.
char32_t nextCharacter(std::string_view utf8, std::size_t& at) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(utf8[i]); };
    const unsigned char first = byte(at++);
    const int more = first >= 0xf0 ? 3 : first >= 0xe0 ? 2 : first >= 0xc0 ? 1 : 0;
    if (more == 0 || at + static_cast<std::size_t>(more) > utf8.size()) {
        return first;
    }
    char32_t character = first & (0x3fU >> more);
    for (int i = 0; i < more; ++i) {
        character = (character << 6) | (byte(at++) & 0x3fU);
    }
    return character;
}

} // namespace

WidestText::WidestText(const QFont& font) : metrics_(font), exact_(font) {
    for (std::size_t i = 0; i < ascii_.size(); ++i) {
        ascii_[i] = exact_.horizontalAdvance(QChar(static_cast<char16_t>(i)));
    }
}

double WidestText::advanceOf(char32_t character) {
    const auto known = others_.constFind(character);
    if (known != others_.constEnd()) {
        return *known;
    }
    const double advance = exact_.horizontalAdvance(QString::fromUcs4(&character, 1));
    others_.insert(character, advance);
    return advance;
}

void WidestText::offer(std::string_view utf8, int before) {
    double estimate = before;
    for (std::size_t at = 0; at < utf8.size();) {
        const auto byte = static_cast<unsigned char>(utf8[at]);
        if (byte < ascii_.size()) {
            estimate += ascii_[byte];
            ++at;
        } else {
            estimate += advanceOf(nextCharacter(utf8, at));
        }
    }
    if (candidates_.size() == kCandidates) {
        if (estimate <= candidates_.front().estimate) {
            return;
        }
        std::pop_heap(candidates_.begin(), candidates_.end());
        candidates_.pop_back();
    }
    candidates_.push_back({estimate, utf8, before});
    std::push_heap(candidates_.begin(), candidates_.end());
}

int WidestText::widest() const {
    int widest = 0;
    for (const Candidate& candidate : candidates_) {
        const QString text = QString::fromUtf8(candidate.text.data(), static_cast<qsizetype>(candidate.text.size()));
        widest = std::max(widest, candidate.before + metrics_.horizontalAdvance(text));
    }
    return widest;
}

} // namespace fenmark::ui::treelist
