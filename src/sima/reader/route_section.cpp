// The route section, F00 to F99: points with arc and clothoid parameters between them.
#include "sima/reader/section_readers.h"

#include "sima/text/number.h"
#include "sima/text/string_table.h"
#include "sima/text/utf8.h"
#include "sima/validators/validators.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <string>
#include <utility>

namespace fenmark::sima {

namespace {

constexpr double kNominalValue = 100.0;

bool isPolylineType(std::int32_t routeType) {
    return routeType == 1 || (routeType >= 4 && routeType <= 6);
}

// Takes the opening record over into the reader. A record of fewer than five fields changes nothing, so that the
// values of the route before stay.
void takeRouteFields(FilePass& file) {
    SimaReader& reader = file.reader();
    const Fields& fields = file.fields();
    if (fields.size() >= 5) {
        reader.routeNumberText = fields[1];
        reader.routeGroupText = fields[2];
        reader.routeNameText = fields[3];
        reader.routeType = toInteger(fields[4]);
    }
    reader.countRouteRead(reader.routeType);
}

// The elements that a route has when it counts as a long one. Doubling the room of one would hold half of it twice.
constexpr std::size_t kLongRoute = 65536;
constexpr double kMostElementsExpected = 2e6; // elements; beyond, the room grows by doubling

// Takes the room of a long route at once, as if the rest of the file went on as the route did so far. What is not filled
// is never resident.
void expectElements(SimaReader& reader, std::int64_t bytesRead, std::int64_t bytesLeft) {
    if (reader.entities.size() != kLongRoute || bytesRead <= 0) {
        return;
    }
    const double all = static_cast<double>(bytesRead + bytesLeft) / static_cast<double>(bytesRead);
    try {
        reader.entities.reserve(
            static_cast<std::size_t>(std::min(all * static_cast<double>(kLongRoute), kMostElementsExpected)) + 1);
    } catch (const std::bad_alloc&) {
        // The elements come one by one then, and may still fit.
    }
}

// Closes the element before at the point and opens a new one there. False if there is no such point.
bool addRoutePoint(SimaReader& reader, const Fields& fields) {
    if (fields.size() < 3) {
        return true;
    }
    const SimaPoint* const point = reader.points.find(toInteger(fields[1]));
    if (point == nullptr) {
        return false;
    }
    SharedText x = formatReal(point->x);
    SharedText y = formatReal(point->y);
    if (!reader.entities.empty()) {
        EntityData& last = reader.entities.back();
        last.endX = x;
        last.endY = y;
        last.endZ = point->z;
    }
    static const SharedText straight = "S";
    EntityData element;
    element.type = straight;
    element.startX = std::move(x);
    element.startY = std::move(y);
    element.startZ = point->z;
    element.nominalValue = kNominalValue;
    reader.entities.push_back(std::move(element));
    return true;
}

// Whether something is made of routes of the type.
bool importsRoutes(const FilePass& file, std::int32_t routeType) {
    return routeType >= 1 && routeType <= 7 && file.imports(static_cast<ImportKind>(3 + routeType));
}

// An element whose curve never comes into the drawing.
void doubtCurve(FilePass& file, const EntityData& element) {
    if (element.type != "S" && importsRoutes(file, file.reader().routeType)) {
        file.doubt(Doubt::CurveUnused);
    }
}

// Of the element that the last point closed: one that ends where it begins is no part of an alignment.
void doubtCurveWithoutChord(FilePass& file) {
    const Array<EntityData>& entities = file.reader().entities;
    if (entities.size() < 2) {
        return;
    }
    const EntityData& closed = entities[entities.size() - 2];
    if (closed.type != "S" && closed.startPoint() == closed.endPoint()) {
        doubtCurve(file, closed);
    }
}

// Makes the last element an arc. std::invalid_argument for a record of fewer than three fields.
void setArc(FilePass& file) {
    Array<EntityData>& entities = file.reader().entities;
    if (entities.empty()) {
        file.passOver(PassedKind::BeforeFirstPointOfRoute);
        return;
    }
    const std::string_view radius = file.fields()[2];
    EntityData& last = entities.back();
    doubtCurve(file, last); // an element becomes a curve once
    last.type = "R";
    last.editCurve().radius = radius;
    last.direction = toReal(radius) >= 0.0 ? "R" : "L";
}

// Makes the last element a clothoid. std::invalid_argument for a record of fewer than four fields.
void setClothoid(FilePass& file) {
    Array<EntityData>& entities = file.reader().entities;
    if (entities.empty()) {
        file.passOver(PassedKind::BeforeFirstPointOfRoute);
        return;
    }
    const auto cleaned = [&file](std::size_t field) {
        const std::string text = replaceIdeographicSpaces(file.fields()[field]);
        return std::string(trim(text));
    };
    EntityData& last = entities.back();
    doubtCurve(file, last); // an element becomes a curve once
    last.type = "A";
    CurveData& curve = last.editCurve();
    curve.parameterA = cleaned(1);
    curve.startRadius = cleaned(2);
    curve.endRadius = cleaned(3);
    const double parameter = toReal(curve.parameterA);
    const double startRadius = toReal(curve.startRadius);
    const double endRadius = toReal(curve.endRadius);
    // Not the true length, which is clothoidLength(); kept on purpose. Equal radii give the text of infinity.
    curve.length = formatReal(parameter * parameter / std::abs(endRadius - startRadius));
    last.direction = startRadius < 0.0 || endRadius < 0.0 ? "L" : "R";
}

void reportNoCurvesHere(FilePass& file, const Record& record) {
    reportRecord(file.log(), "ErrF002", resourceText(kMessageNoCurvesHere), record.line, record.text);
    file.updateErrorCount();
}

void skipElementBlock(FilePass& file) {
    while (file.next() && file.code() != recordCode("C99")) {
        if (file.code() != kNoCode) {
            file.passOver(PassedKind::InElementData);
        }
    }
}

// Reads up to F99. 0, or -1 if a point was missing. The end of the file gives 0 even then, on purpose.
std::int32_t readRouteSection(FilePass& file) {
    SimaReader& reader = file.reader();
    SimaLog& log = file.log();
    bool elementSeen = false; // the last accepted line was C01, C02 or C03
    bool failed = false;
    const std::int64_t bytesAtStart = file.remainingBytes();
    reader.startStation = 0.0;

    while (file.next()) {
        const Record record = file.record();
        if (filterRouteSection(log, record) != 0) {
            file.updateErrorCount();
            continue;
        }
        const RecordCode code = file.code();
        if (code == recordCode("F99")) {
            validateEndRecord(log, record);
            file.updateErrorCount();
            return failed ? -1 : 0;
        }
        if (elementSeen) {
            elementSeen = false;
            if (code == recordCode("C00")) {
                skipElementBlock(file);
                continue;
            }
        }
        switch (code) {
        case recordCode("F03"): // has no validator
            reader.startStation = toReal(record.fields[1]);
            file.doubtNumber(record.fields[1], reader.startStation);
            break;
        case recordCode("B01"): // used whatever the verdict is
            validateB01(log, record);
            file.updateErrorCount();
            if (!addRoutePoint(reader, record.fields)) {
                reportMissingPoint(log, record);
                file.updateErrorCount();
                failed = true;
            } else {
                doubtCurveWithoutChord(file);
            }
            expectElements(reader, bytesAtStart - file.remainingBytes(), file.remainingBytes());
            break;
        case recordCode("B03"):
            validateB03(log, record);
            file.updateErrorCount();
            break;
        case recordCode("C01"):
        case recordCode("C02"): {
            elementSeen = true;
            if (isPolylineType(reader.routeType)) {
                reportNoCurvesHere(file, record);
                break;
            }
            const bool isArc = code == recordCode("C01");
            if (isArc) {
                validateC01(log, record);
            } else {
                validateC02(log, record);
            }
            file.updateErrorCount();
            if (isArc) {
                setArc(file);
            } else {
                setClothoid(file);
            }
            break;
        }
        case recordCode("C03"):
            elementSeen = true;
            validateC03(log, record);
            file.updateErrorCount();
            break;
        case kNoCode:
            break;
        default:
            file.passOver(PassedKind::NotUsedInRoute);
            break;
        }
    }
    return 0;
}

// Passes the route to the output if its type is ticked. Null if nothing was made or no alignment came of it.
host::MdDbObjectId createRoute(FilePass& file, const SimaAlignment& route) {
    SimaReader& reader = file.reader();
    if (file.sink() == nullptr || !importsRoutes(file, route.routeType)) {
        return {};
    }
    if (route.entities.size() < 2) {
        file.doubt(Doubt::RouteWithoutLine);
    }
    if (!route.entities.empty()) {
        doubtCurve(file, route.entities.back()); // no point follows it
    }
    if (!isPolylineType(route.routeType)) {
        return file.sink()->createRouteAlignment(reader, route);
    }
    file.sink()->createRoutePolyline(reader, route);
    return {};
}

} // namespace

void readRoute(FilePass& file) {
    SimaReader& reader = file.reader();
    SimaLog& log = file.log();
    validateF00(log, file.record());
    file.updateErrorCount();
    log.routeBegin(reader.lineNumber);
    takeRouteFields(file);

    SimaAlignment route;
    route.points = reader.points;
    route.routeType = reader.routeType;
    route.routeName = reader.routeNameText;
    route.routeNumber = toInteger(reader.routeNumberText);
    file.doubtNumber(reader.routeNumberText, route.routeNumber);

    if (readRouteSection(file) != 0) {
        log.routeEnd(reader.lineNumber, false, route.routeType, 0, route.routeName);
        reader.entities.clear();
        return;
    }
    const auto elementCount = static_cast<std::int32_t>(reader.entities.size());
    const std::int32_t routeType = route.routeType;
    const std::string routeName = route.routeName;
    route.startStation = reader.startStation;
    route.entities = std::exchange(reader.entities, {});
    // Giving back what is left over takes a second copy for a while, so it must be worth it.
    if (route.entities.capacity() / 4 * 3 > route.entities.size()) {
        route.entities.shrink_to_fit();
    }
    route.alignmentName = reader.baseName + "-" + reader.routeNameText;
    route.objectId = createRoute(file, route);
    reader.alignments.push_back(std::move(route));
    // Logged as good whatever the output could make of it.
    log.routeEnd(reader.lineNumber, true, routeType, elementCount, routeName);
}

// Number and type are all that is kept; the lines up to F99 are not looked at.
void previewRoute(FilePass& file) {
    SimaReader& reader = file.reader();
    takeRouteFields(file);
    SimaAlignment route;
    route.routeType = reader.routeType;
    route.routeNumber = toInteger(reader.routeNumberText);
    while (file.next() && file.code() != recordCode("F99")) {
    }
    reader.alignments.push_back(std::move(route));
}

} // namespace fenmark::sima
