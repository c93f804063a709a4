// The object of one import.
#include "sima/reader/sima_reader.h"

#include "host/boundary/mirdan_exception.h"
#include "sima/text/number.h"
#include "sima/text/string_table.h"

#include <algorithm>

namespace fenmark::sima {

namespace {

// Of the types from 1 on; beyond every place for a type below.
std::size_t placeOfRouteType(std::int32_t type) {
    return static_cast<std::size_t>(type) - 1;
}

} // namespace

std::int32_t SimaReader::routesRead(std::int32_t type) const {
    const std::size_t place = placeOfRouteType(type);
    return place < routesRead_.size() ? routesRead_[place] : 0;
}

std::int32_t SimaReader::routesCreated(std::int32_t type) const {
    const std::size_t place = placeOfRouteType(type);
    return place < routesCreated_.size() ? routesCreated_[place] : 0;
}

void SimaReader::countRouteRead(std::int32_t type) {
    if (const std::size_t place = placeOfRouteType(type); place < routesRead_.size()) {
        ++routesRead_[place];
    }
}

void SimaReader::countRouteCreated(std::int32_t type) {
    if (const std::size_t place = placeOfRouteType(type); place < routesCreated_.size()) {
        ++routesCreated_[place];
    }
}

std::int32_t SimaReader::lotCount() const {
    return static_cast<std::int32_t>(lots.size());
}

std::int32_t SimaReader::longitudinalPointCount() const {
    std::size_t count = 0;
    for (const HSeriesData& section : hSeries) {
        count += section.verticals.size();
    }
    return static_cast<std::int32_t>(count);
}

std::int32_t SimaReader::crossSectionCount() const {
    std::size_t count = 0;
    for (const IntersectionData& section : intersections) {
        count += section.subEntities.size();
    }
    return static_cast<std::int32_t>(count);
}

bool SimaReader::nothingFound() const {
    return points.empty() && lots.empty() && alignments.empty() && hSeries.empty() && intersections.empty();
}

bool SimaReader::allLongitudinalRoutesFound() const {
    return std::all_of(hSeries.begin(), hSeries.end(), [](const HSeriesData& section) { return section.routeFound; });
}

bool SimaReader::allCrossSectionRoutesFound() const {
    return std::all_of(intersections.begin(), intersections.end(),
                       [](const IntersectionData& section) { return section.routeFound; });
}

std::optional<NumberIndex::Places> SimaReader::placesOfRoute(std::int32_t number) const {
    if (alignments.size() < routeIndex_.indexed) {
        routeIndex_ = {};
    }
    for (; routeIndex_.indexed < alignments.size(); ++routeIndex_.indexed) {
        routeIndex_.places.add(alignments[routeIndex_.indexed].routeNumber,
                               static_cast<std::uint32_t>(routeIndex_.indexed));
    }
    return routeIndex_.places.find(number);
}

const SimaAlignment* SimaReader::findRoute(std::int32_t number) const {
    constexpr std::size_t kFewRoutes = 32;
    if (alignments.size() <= kFewRoutes) {
        const auto found = std::find_if(alignments.begin(), alignments.end(),
                                        [number](const SimaAlignment& route) { return route.routeNumber == number; });
        return found != alignments.end() ? &*found : nullptr;
    }
    const auto places = placesOfRoute(number);
    return places ? &alignments[places->first] : nullptr;
}

bool SimaReader::bindsOtherName(std::int32_t number, std::string_view routeName) const {
    const auto places = placesOfRoute(number);
    return !forceChosenAlignment && places && places->first != places->last &&
           trim(alignments[places->first].routeName) != routeName;
}

host::MdDbObjectId SimaReader::alignmentIdOfRoute(std::int32_t number) const {
    const SimaAlignment* const route = findRoute(number);
    return route != nullptr ? route->objectId : host::MdDbObjectId{};
}

SimaPoint SimaReader::findPoint(std::int32_t number) const {
    const SimaPoint* const point = points.find(number);
    if (point == nullptr) {
        throw new host::MirdanException(std::string(resourceText(kMessageMissingPoint)));
    }
    return *point;
}

bool SimaReader::bindRoute(std::int32_t number) {
    const SimaAlignment* const route = findRoute(number);
    if (route == nullptr) {
        return false;
    }
    usedRouteType2 = usedRouteType2 || route->routeType == 2;
    usedRouteType3 = usedRouteType3 || route->routeType == 3;
    usedRouteType7 = usedRouteType7 || route->routeType == 7;
    if (!forceChosenAlignment && route->objectId.isValid() && passHost_.host != nullptr) {
        const auto corridor = passHost_.host->makeCorridorUtility();
        corridor->connect();
        alignmentName = corridor->getAlignmentName(route->objectId);
        corridor->disconnect();
    }
    return true;
}

void SimaReader::reset() {
    alignments.clear();
    lots.clear();
    verticals.clear();
    intersections.clear();
    hSeries.clear();
    points.clear();
    entities.clear(); // a pass that an exception ended may have left a route open
    log.clear();
    lineNumber = 0;
    errorCount = 0;
    openError.clear();
    routesRead_ = {};
    routesCreated_ = {};
    static_cast<CreatedObjects&>(*this) = {};
    passedOver.clear();
    doubts = {};
    routeIndex_ = {};
}

} // namespace fenmark::sima
