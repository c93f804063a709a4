// The passes over a route's elements that run while the host makes an alignment: PIs of clothoids, then the elements.
#pragma once

#include "host/boundary/alignment_elements.h"
#include "sima/records/entity_data.h"
#include "values/array.h"

#include <cstdint>

namespace fenmark::output {

// Fills sparePoint2 with the meeting point of the two end tangents; (0, 0, 0) if they do not meet.
void computeSpiralPi(sima::EntityData& element);

// computeSpiralPi on every clothoid.
void resolveSpiralPis(sima::Array<sima::EntityData>& elements);

// Adds each element to the alignment; 0, or -1 if a MirdanException stopped it. LeadingClothoid leaves it when
// the first element is a clothoid.
std::int32_t addAlignmentElements(host::AlignmentElements& alignment, sima::Array<sima::EntityData>& elements);

} // namespace fenmark::output
