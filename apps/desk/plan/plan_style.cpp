// Colours and kinds of what the plan shows.
#include "desk/plan/plan_style.h"

#include "host/boundary/object_data_writer.h"

namespace fenmark::desk {

using drawing::ElementType;

FigureStyle styleOf(const drawing::EntityView& entity) {
    const std::string_view type = entity.row ? entity.row->type : std::string_view();
    if (entity.isPoint()) {
        if (type == host::kCoordinateType) {
            return FigureStyle::Coordinate;
        }
        if (type == host::kLongitudinalType) {
            return FigureStyle::Longitudinal;
        }
        return type == host::kCrossSectionType ? FigureStyle::CrossSection : FigureStyle::OtherPoint;
    }
    if (type == host::kLotType) {
        return FigureStyle::Lot;
    }
    if (type.empty()) {
        return FigureStyle::OtherLine;
    }
    if (type == host::routeTypeLabel(1)) {
        return FigureStyle::IpLine;
    }
    if (type == host::routeTypeLabel(4) || type == host::routeTypeLabel(5)) {
        return FigureStyle::Stakes;
    }
    return type == host::routeTypeLabel(6) ? FigureStyle::Continuous : FigureStyle::OtherLine;
}

QColor colourOf(ElementType type) {
    if (type == ElementType::Arc) {
        return kArc;
    }
    return type == ElementType::Clothoid ? kClothoid : kStraight;
}

} // namespace fenmark::desk
