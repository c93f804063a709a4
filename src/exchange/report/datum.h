// The datum and the plane rectangular zone of a drawing, as the head of a report says them.
#pragma once

#include <string>

namespace fenmark::drawing {
class Drawing;
}

namespace fenmark::exchange {

[[nodiscard]] std::string datumOf(const drawing::Drawing& drawing);

} // namespace fenmark::exchange
