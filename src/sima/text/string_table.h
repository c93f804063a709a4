// The texts of the module by their numeric id, 101 to 155.
#pragma once

#include <string_view>

namespace fenmark::sima {

// Ids of the texts that more than one place uses.
constexpr int kMessageMissingPoint = 138;
constexpr int kMessageNoCurvesHere = 139;
constexpr int kMessageLongitudinalOutside = 141;
constexpr int kMessageCrossSectionOutside = 153;
constexpr int kLabelCoordinates = 140; // the labels of the import kinds: 140, then 142 to 151
constexpr int kLabelLots = 142;
constexpr int kLabelAll = 152;

// Empty for an id that the table does not hold.
std::string_view resourceText(int id);

} // namespace fenmark::sima
