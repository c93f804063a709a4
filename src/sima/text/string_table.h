// The texts of the module by their numeric id, 101 to 155.
#pragma once

#include <string_view>

namespace fenmark::sima {

enum MessageId : int {
    kMessageTooManyFields = 101,
    kMessageTooFewFields,
    kMessageBadCoordinates,
    kMessagePointNumber,
    kMessageDuplicatePoint,
    kMessageX,
    kMessageY,
    kMessageZ,
    kMessageAddedDistance,
    kMessageParameterA,
    kMessageStartRadius,
    kMessageEndRadius,
    kMessageSideLength,
    kMessageAzimuth,
    kMessageLotNumber,
    kMessageRouteNumber,
    kMessageGroupNumber,
    kMessageStartDistance,
    kMessageResultRouteNumber,
    kMessageResultGroupNumber,
    kMessageStakeHeadHeight,
    kMessageDistance,
    kMessageGroundHeight,
    kMessageVersion,
    kMessageCoordinateSystem,
    kMessageLotKind,
    kMessageRouteKind,
    kMessageStationKind,
    kMessageBadLine,
    kMessageBadLot,
    kMessageBadRoute,
    kMessageBadLongitudinal,
    kMessageBadCrossSection,
    kMessageRadius,
    kMessageWidth,
    kMessageStationPitch,
    kMessageIntermediatePitch,
    kMessageMissingPoint,
    kMessageNoCurvesHere,
    kLabelCoordinates,
    kMessageLongitudinalOutside,
    kLabelLots,
    kLabelLongitudinal,
    kLabelCrossSections,
    kLabelIpLine,
    kLabelMainLine,
    kLabelCentreLine,
    kLabelWideStakesLeft,
    kLabelWideStakesRight,
    kLabelContinuousStraight,
    kLabelContinuousCurved,
    kLabelAll,
    kMessageCrossSectionOutside,
    kMessagePointFormat,
    kMessageLongitudinalFormat,
};

// The labels of the import kinds are kLabelCoordinates, then kLabelLots to kLabelContinuousCurved in the order of the kinds.
// Empty for an id that the table does not hold.
std::string_view resourceText(int id);

} // namespace fenmark::sima
