// The widest of many texts, without laying each of them out.
#pragma once

#include <array>
#include <string_view>
#include <vector>

#include <QFontMetrics>
#include <QFontMetricsF>
#include <QHash>

namespace fenmark::ui::treelist {

// Adds up the advances of the characters, which is exact but for the kerning of pairs, and lays out only the texts that
// came out widest. The texts must live until widest() is called.
class WidestText {
  public:
    explicit WidestText(const QFont& font);
    void offer(std::string_view utf8, int before); // pixels that stand before the text
    // Pixels of the widest text with what stands before it; 0 without texts.
    [[nodiscard]] int widest() const;

  private:
    struct Candidate {
        double estimate;
        std::string_view text;
        int before;
        // The least wide candidate is at the top of the heap.
        bool operator<(const Candidate& other) const { return estimate > other.estimate; }
    };
    [[nodiscard]] double advanceOf(char32_t character);

    QFontMetrics metrics_;
    QFontMetricsF exact_;
    std::array<double, 128> ascii_{};
    QHash<char32_t, double> others_;
    std::vector<Candidate> candidates_;
};

} // namespace fenmark::ui::treelist
