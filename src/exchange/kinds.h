// The kind of an object of a drawing, as the exchange formats name, colour and select it.
#pragma once

#include "drawing/drawing.h"
#include "values/kinds.h"

#include <optional>
#include <string_view>

namespace fenmark::exchange {

// By its row alone.
Kind kindOf(const drawing::EntityView& entity);
// By its row, if that is one of a point or a line as the object is.
Kind drawnKindOf(const drawing::EntityView& entity);
std::optional<Kind> kindNamed(std::string_view option);

} // namespace fenmark::exchange
