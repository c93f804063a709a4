// Where names stand on a plan: a label is taken only where it covers no other.
#pragma once

#include "exchange/plan/plan_sheet.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::exchange {

// One text on the paper: millimetres, degrees clockwise; the anchor is the middle of the left end, the middle, or the
// middle of the right end.
struct Label {
    enum class Anchor { Start, Middle, End };

    PaperPoint at;
    double size = 2.0; // height of the letters' em, millimetres
    double angle = 0.0;
    Anchor anchor = Anchor::Start;
    std::string text;
    const char* style = ""; // class of the text
};

// Width in ems: a CJK character takes one, others about half.
double widthInEms(std::string_view text);

// The text, or as much of it as has room, with an ellipsis behind it.
std::string cutToEms(std::string_view text, double ems);

// Which cells of the map are taken.
class LabelSpace {
  public:
    explicit LabelSpace(const Rect& map);

    // Keeps a symbol or a line free of later names where there is a choice.
    void takeDot(const PaperPoint& at, double radius);
    void takeLine(const PaperPoint& from, const PaperPoint& to);

    // Whether the map has that place.
    bool shows(const PaperPoint& at) const { return cellAt(at.x, at.y) < cells_.size(); }
    // Whether a label may be free that begins, ends or has its middle within so many millimetres of a place.
    bool mayHold(const PaperPoint& at, double away) const;
    // Whether the label lies within the map and covers no label; and no symbol or line, if that is asked for.
    bool isFree(const Label& label, bool offLines) const;
    void take(const Label& label);
    // Takes the first candidate that is free, one off the lines if there is any. Null if there is none.
    const Label* takeFirst(const std::vector<Label>& candidates, bool offLinesOnly);

  private:
    static constexpr std::uint8_t kLine = 1;
    static constexpr std::uint8_t kLabel = 2;

    // Calls the function with each cell of the label's box until it returns false; a cell outside the map is null.
    template <typename Function>
    bool eachCell(const Label& label, Function function) const;
    std::size_t cellAt(double x, double y) const; // cells_.size() outside the map

    Rect map_;
    std::size_t columns_;
    std::size_t rows_;
    std::vector<std::uint8_t> cells_;
};

} // namespace fenmark::exchange
