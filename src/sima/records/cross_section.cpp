// Cross-section results.
#include "sima/records/cross_section.h"

#include <algorithm>

namespace fenmark::sima {

bool IntersectionData::SubEntity::hasCentrePoint() const {
    return std::find(distances.begin(), distances.end(), 0.0) != distances.end();
}

std::int32_t pointsOfCrossSection(const IntersectionData::SubEntity& subEntity) {
    return static_cast<std::int32_t>(subEntity.distances.size()) + (subEntity.hasCentrePoint() ? 0 : 1);
}

} // namespace fenmark::sima
