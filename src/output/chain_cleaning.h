// Cleaning a route's chain before it becomes an alignment.
#pragma once

#include "sima/records/entity_data.h"
#include "values/array.h"

namespace fenmark::output {

// Removes elements whose start and end agree within the host's tolerance, in all three coordinates: an element of no
// plan length between points of unequal heights stays.
void removeZeroLengthElements(sima::Array<sima::EntityData>& elements);

// Joins each straight with the straights behind it as long as their directions agree within 1 degree, both limits
// inclusive. The direction is that of the joined chord, so a slow bend merges step by step. Directions on both sides of
// +x (just above 0 and just below a full turn) count as different.
void mergeStraights(sima::Array<sima::EntityData>& elements);

} // namespace fenmark::output
