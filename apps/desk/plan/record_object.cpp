// Which object of the drawing an import made of a record.
#include "desk/plan/record_object.h"

#include "host/boundary/object_data_writer.h"
#include "sima/records/import_options.h"
#include "sima/records/sections.h"
#include "sima/text/number.h"
#include "sima/text/splitter.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

namespace fenmark::desk {

using drawing::Drawing;
using drawing::EntityView;

namespace {

// The fields of a record; those that it does not have are empty.
class Record {
  public:
    explicit Record(const std::string& line) { sima::splitLine(line, ",", fields_); }

    std::string_view text(std::size_t field) const {
        return field < fields_.size() && field < sima::Fields::kKept ? sima::trim(fields_[field]) : std::string_view();
    }
    std::int32_t number(std::size_t field) const { return sima::toInteger(text(field)); }
    std::string_view code() const { return text(0); }

  private:
    sima::Fields fields_;
};

// An entity's row as a record would have made it. An empty name stands for any.
struct Wanted {
    std::string_view type;
    std::int32_t number = 0;
    std::string_view name;
    std::optional<double> height; // of a point

    bool isMetBy(const EntityView& entity) const {
        return entity.row && entity.row->type == type && entity.row->no == number &&
               (name.empty() || sima::trim(entity.row->name) == name) && (!height || entity.position().z == *height);
    }
};

std::optional<std::size_t> findEntity(const Drawing& drawing, const MadeObjects& made, const Wanted& wanted) {
    for (std::size_t i = made.firstEntity; i < std::min(made.endEntity, drawing.entityCount()); ++i) {
        if (wanted.isMetBy(drawing.entity(i))) {
            return i;
        }
    }
    return std::nullopt;
}

std::optional<PlanObject> asObject(std::optional<std::size_t> entity) {
    if (!entity) {
        return std::nullopt;
    }
    return PlanObject{PlanObject::Kind::Entity, *entity, {}};
}

// A point of the same number at another place was made of another record, such as this one's double.
std::optional<PlanObject> coordinateObject(const Drawing& drawing, const MadeObjects& made, const Record& record) {
    const auto entity = findEntity(drawing, made, {host::kCoordinateType, record.number(1), {}, {}});
    if (!entity) {
        return std::nullopt;
    }
    const host::MdGePoint3d& at = drawing.entity(*entity).position();
    const bool same = at.y == sima::toReal(record.text(3)) && at.x == sima::toReal(record.text(4));
    return same ? asObject(entity) : std::nullopt;
}

std::optional<PlanObject> routeObject(const Drawing& drawing, const MadeObjects& made, const Record& opening) {
    constexpr std::size_t kTypeField = 4;
    const std::int32_t type = opening.number(kTypeField);
    const std::string_view name = opening.text(3);
    if (!sima::becomesAlignment(type)) {
        return asObject(findEntity(drawing, made, {host::routeTypeLabel(type), opening.number(1), name, {}}));
    }
    for (std::size_t a = made.firstAlignment; a < std::min(made.endAlignment, drawing.alignmentCount()); ++a) {
        if (sima::trim(drawing.alignment(a).name) == name) {
            return PlanObject{PlanObject::Kind::Alignment, a, {}};
        }
    }
    return std::nullopt;
}

std::optional<PlanObject> longitudinalObject(const Drawing& drawing, const MadeObjects& made, const Record& opening,
                                             const Record& record) {
    const std::string_view station = record.code() == "H01" ? record.text(1) : std::string_view();
    return asObject(findEntity(drawing, made, {host::kLongitudinalType, opening.number(1), station, {}}));
}

// A point without a name bears that of its cross section, and names come again in the next one: the height keeps them
// apart, and those from the first point of that section on come first.
std::optional<PlanObject> crossSectionObject(const Drawing& drawing, const MadeObjects& made, const Record& opening,
                                             const Record& record, const Record& crossSection) {
    constexpr std::size_t kHeightField = 3;
    const bool tellsAPoint = record.code() == "I01" || record.code() == "I02";
    Wanted wanted{host::kCrossSectionType, opening.number(1), tellsAPoint ? crossSection.text(1) : "", {}};
    const auto first = findEntity(drawing, made, wanted);
    if (!first || !tellsAPoint) {
        return asObject(first);
    }
    if (record.code() == "I02" && !record.text(1).empty()) {
        wanted.name = record.text(1);
    }
    wanted.height = sima::toReal(record.text(kHeightField));
    MadeObjects fromFirst = made;
    fromFirst.firstEntity = *first;
    for (const MadeObjects& among : {fromFirst, made}) {
        if (const auto point = findEntity(drawing, among, wanted)) {
            return asObject(point);
        }
    }
    // At a wall heights and names may have changed places.
    wanted.name = {};
    return asObject(findEntity(drawing, fromFirst, wanted));
}

} // namespace

MadeObjects madeSince(const Drawing::Mark& mark) {
    return {mark.entities, MadeObjects::kAll, mark.alignments, MadeObjects::kAll};
}

MadeObjects madeBy(const Drawing& drawing, const drawing::Import& import) {
    const auto below = [](std::size_t count, auto idOf, std::uint64_t id) {
        std::size_t low = 0;
        for (std::size_t high = count; low < high;) {
            const std::size_t middle = low + (high - low) / 2;
            if (idOf(middle) < id) {
                low = middle + 1;
            } else {
                high = middle;
            }
        }
        return low;
    };
    const auto entityId = [&](std::size_t i) { return drawing.entity(i).id.asUint64(); };
    const auto alignmentId = [&](std::size_t i) { return drawing.alignment(i).id.asUint64(); };
    return {below(drawing.entityCount(), entityId, import.firstId),
            below(drawing.entityCount(), entityId, import.lastId + 1),
            below(drawing.alignmentCount(), alignmentId, import.firstId),
            below(drawing.alignmentCount(), alignmentId, import.lastId + 1)};
}

std::optional<PlanObject> objectOfRecord(const Drawing& drawing, const MadeObjects& made, const SourceRecord& source) {
    const Record record(source.text);
    const Record opening(source.section);
    if (record.code() == "A01") {
        return coordinateObject(drawing, made, record);
    }
    const sima::SectionEntry* const opened = sima::sectionOpenedBy(sima::recordCode(opening.code()));
    if (opened == nullptr) {
        return std::nullopt;
    }
    switch (opened->section) {
    case sima::Section::Lots:
        return asObject(findEntity(drawing, made, {host::kLotType, opening.number(1), opening.text(2), {}}));
    case sima::Section::Route:
        return routeObject(drawing, made, opening);
    case sima::Section::Longitudinal:
        return longitudinalObject(drawing, made, opening, record);
    case sima::Section::CrossSection:
        return crossSectionObject(drawing, made, opening, record, Record(source.crossSection));
    case sima::Section::Coordinates:
        break;
    }
    return std::nullopt;
}

} // namespace fenmark::desk
