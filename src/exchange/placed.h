// What of a drawing has a place that a file can hold.
//
// A field of four hundred digits is a number for the reader of SIMA files, and becomes infinite. Such coordinates stay in
// the drawing; files for other programs must not hold them.
#pragma once

#include "drawing/drawing.h"
#include "exchange/notes.h"

#include <optional>

namespace fenmark::exchange {

// Metres. Areas and centres of what lies farther away may be no numbers, even where its coordinates are.
inline constexpr double kFarthest = 1e100;

bool hasPlace(const drawing::EntityView& entity);
bool hasPlace(const drawing::Alignment& alignment);
bool isNear(const drawing::Extent& extent);
// The height of a point, 0 if it is beyond all bounds.
double heightOf(const drawing::EntityView& point);
// The height of a point; nothing if it is beyond all bounds or unknown. A record without a height is drawn at 0, so a
// coordinate point at exactly 0 has none that anybody gave. Results of sections always have theirs.
std::optional<double> knownHeight(const drawing::EntityView& point);

// Counts what has no place, or no height, for the notes to the user.
class Unplaced {
  public:
    // True if it has a place.
    bool look(const drawing::EntityView& entity);
    bool look(const drawing::Alignment& alignment);
    // None if everything has its place.
    Notes notes(Fate became) const;

  private:
    std::size_t points_ = 0;
    std::size_t polylines_ = 0;
    std::size_t alignments_ = 0;
    std::size_t heights_ = 0;
};

} // namespace fenmark::exchange
