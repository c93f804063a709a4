// Finds objects of a drawing by their names: points, lots, route lines and alignments.
//
// Names are folded once, so that "ip", "IP" and "ＩＰ" are the same, and so are half-width and full-width kana. A search
// then is one walk over their text.
#pragma once

#include "desk/plan/plan_object.h"
#include "drawing/drawing.h"

#include <QString>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::desk {

class NameSearch {
  public:
    explicit NameSearch(const drawing::Drawing& drawing);

    struct Result {
        std::vector<PlanObject> objects; // the best ones
        std::size_t total = 0;           // all that match
    };
    // Objects whose names hold the text: equal names first, then points and polylines of that number, names that begin
    // with the text, and all others, each in the drawing's order and alignments before entities.
    Result find(const QString& text, std::size_t most) const;

  private:
    void add(std::string_view name);
    PlanObject objectAt(std::size_t entry) const;

    const drawing::Drawing& drawing_;
    std::size_t alignments_ = 0; // the first entries
    std::string names_;          // folded, each with a NUL behind it
    std::vector<std::uint64_t> starts_;
};

} // namespace fenmark::desk
