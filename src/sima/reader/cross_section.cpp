// The cross-section section, I00 to I99: offset points with heights at stations of a route.
#include "sima/reader/section_readers.h"

#include "sima/reader/result_number.h"
#include "sima/text/short_record.h"
#include "sima/validators/validators.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>
#include <utility>

namespace fenmark::sima {

namespace {

// std::invalid_argument for a record of fewer than five fields.
IntersectionData::SubEntity makeSubEntity(const Record& record) {
    IntersectionData::SubEntity subEntity;
    subEntity.pileHeadHeight = resultNumber(record.fields[4]);
    subEntity.sectionName = trim(record.fields[1]);
    subEntity.station = resultNumber(record.fields[2]);
    subEntity.groundHeight = resultNumber(record.fields[3]);
    subEntity.sourceLine = record.line;
    subEntity.sourceText = record.text;
    return subEntity;
}

// std::invalid_argument for a record of fewer than four fields. A distance that is no number counts as 0.0, so as a
// point on the centre line.
void addOffsetPoint(IntersectionData::SubEntity& subEntity, const Record& record) {
    const double height = resultNumber(record.fields[3]);
    subEntity.pointNames.emplace_back(record.fields[1]);
    subEntity.distances.push_back(resultNumber(record.fields[2]));
    subEntity.heights.push_back(height);
}

// Where points have one negative offset and others follow, moving them apart turns the order of their heights round. Of
// those between the first and the last one, the second half gets the heights of the first.
bool mixesHeights(const IntersectionData::SubEntity& subEntity) {
    const auto& distances = subEntity.distances;
    std::size_t first = 0; // of one offset
    for (std::size_t i = 1; i < distances.size(); ++i) {
        if (distances[i] == distances[first]) {
            continue;
        }
        if (distances[first] < 0.0 && i - first > 2) {
            const std::span<const double> between(&subEntity.heights[first + 1], i - first - 2);
            if (!std::equal(between.begin(), between.end(), between.rbegin())) {
                return true;
            }
        }
        first = i;
    }
    return false;
}

void doubtSubEntity(FilePass& file, const IntersectionData::SubEntity& subEntity, bool isHeightEmpty) {
    if (!file.imports(ImportKind::CrossSections)) {
        return;
    }
    if (isHeightEmpty && !subEntity.hasCentrePoint()) {
        file.doubt(Doubt::EmptyHeight, subEntity.sourceLine);
    }
    if (mixesHeights(subEntity)) {
        file.doubt(Doubt::HeightsMixed, subEntity.sourceLine);
    }
}

// Notes what is doubtful about a result of a station or an offset that its validator has passed.
void doubtPlace(FilePass& file, double place, double height) {
    const Fields& fields = file.fields();
    file.doubtNumber(fields[2], place);
    file.doubtNumber(fields[3], height);
    if (isEmptyNumber(fields[2])) {
        file.doubt(Doubt::EmptyPlace);
    }
}

// Logs the points of the last cross section and returns their number.
std::int32_t closeSubEntity(FilePass& file, const IntersectionData& section, bool isHeightEmpty) {
    if (section.subEntities.empty()) {
        return 0;
    }
    doubtSubEntity(file, section.subEntities.back(), isHeightEmpty);
    const std::int32_t count = pointsOfCrossSection(section.subEntities.back());
    file.log().crossSectionPoints(count);
    return count;
}

} // namespace

void readCrossSection(FilePass& file) {
    SimaReader& reader = file.reader();
    SimaLog& log = file.log();
    validateI00(log, file.record());
    file.updateErrorCount();
    // The route is bound at the end only, so the name is that of the section before.
    log.crossSectionBegin(reader.lineNumber, reader.alignmentName);

    const std::int32_t firstLine = reader.lineNumber;
    IntersectionData section;
    section.routeName = trim(file.fields()[2]);
    section.routeNumber = toInteger(file.fields()[1]);
    std::int32_t total = 0;
    const bool isImported = file.imports(ImportKind::CrossSections);
    bool closed = false;
    bool isHeightEmpty = false; // in the last I01

    while (!closed && file.next()) {
        const Record record = file.record();
        bool isGood = true;
        if (filterCrossSection(log, record) != 0) {
            file.updateErrorCount();
            continue;
        }
        switch (file.code()) {
        case recordCode("I01"): // used whatever the verdict is
            total += closeSubEntity(file, section, isHeightEmpty);
            isGood = validateI01(log, record) == 0;
            file.updateErrorCount();
            section.subEntities.push_back(makeSubEntity(record));
            isHeightEmpty = isGood && isEmptyNumber(record.fields[3]);
            if (isGood && isImported) {
                const IntersectionData::SubEntity& last = section.subEntities.back();
                doubtPlace(file, last.station, last.groundHeight);
            }
            log.crossSectionItem(reader.lineNumber, section.subEntities.back().sectionName);
            break;
        case recordCode("I02"): // used whatever the verdict is
            isGood = validateI02(log, record) == 0;
            file.updateErrorCount();
            if (section.subEntities.empty()) {
                file.passOver(PassedKind::BeforeFirstCrossSection);
                break;
            }
            addOffsetPoint(section.subEntities.back(), record);
            if (isGood && isImported) {
                const IntersectionData::SubEntity& last = section.subEntities.back();
                doubtPlace(file, last.distances.back(), last.heights.back());
                if (isEmptyNumber(record.fields[3])) {
                    file.doubt(Doubt::EmptyHeight);
                }
            }
            break;
        case recordCode("I99"):
            total += closeSubEntity(file, section, isHeightEmpty);
            validateEndRecord(log, record);
            file.updateErrorCount();
            closed = true;
            break;
        default:
            break;
        }
    }
    if (closed) {
        section.routeFound = reader.bindRoute(section.routeNumber);
        if (isImported && reader.bindsOtherName(section.routeNumber, section.routeName)) {
            file.doubt(Doubt::RouteNumberAgain, firstLine);
        }
        if (file.sink() != nullptr) {
            file.sink()->createCrossSectionPoints(reader, section);
        }
        reader.intersections.push_back(std::move(section));
    } else if (!section.subEntities.empty()) {
        file.countPassedOver({PassedKind::ResultWithoutEnd, "I01"}, section.subEntities.size());
    }
    log.crossSectionEnd(reader.lineNumber, !reader.alignmentName.empty(), total);
}

// A section that the file's end cuts off is not stored.
void previewCrossSection(FilePass& file) {
    SimaReader& reader = file.reader();
    const Record opening = file.record();
    const bool hasNumber = opening.fields.size() > 1;
    IntersectionData section;
    section.routeNumber = hasNumber ? toInteger(opening.fields[1]) : 0;
    while (file.next()) {
        if (file.code() == recordCode("I01")) {
            section.subEntities.emplace_back();
        } else if (file.code() == recordCode("I99")) {
            if (!hasNumber) {
                throw ShortRecord();
            }
            section.routeFound = reader.bindRoute(section.routeNumber);
            reader.intersections.push_back(std::move(section));
            return;
        }
    }
}

} // namespace fenmark::sima
