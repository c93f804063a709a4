// The ways in which surveyors write a station.
#pragma once

#include "exchange/survey_text.h"

#include <optional>
#include <string_view>

namespace fenmark::exchange {

// A number in decimals, with a sign or an exponent or not, that fills the whole text; nothing if it is none, or not
// finite.
std::optional<double> parseReal(std::string_view text);

// The station in metres: a number of metres ("120.5"), the name of a stake, which stand `pitch` metres apart, and the
// metres beyond it ("No.6", "No.6+0.5"), or kilometres and the metres beyond them ("1k", "1k234.5", "1k+234.5"; "-0k946.9"
// before 0, as the names of stations have it). Nothing if the text is none of these.
std::optional<double> parseStation(std::string_view text, double pitch = kStakePitch);

} // namespace fenmark::exchange
