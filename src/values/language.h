// The languages that the programs speak.
#pragma once

#include <cstdint>

namespace fenmark {

enum class Language : std::uint8_t { Japanese, English };

} // namespace fenmark
