// The coordinate section, A00 to A99: the numbered points that all other sections refer to.
#include "sima/reader/section_readers.h"

#include "sima/reader/result_number.h"
#include "sima/text/number.h"
#include "sima/validators/field_tests.h"
#include "sima/validators/validators.h"

#include <algorithm>
#include <string>
#include <utility>

namespace fenmark::sima {

namespace {

// Room for the points of a file is taken at once and filled as they come: what is not filled is never resident. A
// record with coordinates is seldom shorter than this, and beyond so many points the room grows by doubling.
constexpr std::int64_t kShortRecord = 28; // bytes
constexpr std::int64_t kMostExpected = 4'000'000;

void expectPoints(FilePass& file) {
    const std::int64_t records = file.remainingBytes() / kShortRecord;
    file.reader().points.expect(static_cast<std::size_t>(std::clamp<std::int64_t>(records, 0, kMostExpected)));
}

// The record as a point if all its fields are as they should be and in plain form, so that none of the tests could
// refuse it but the one for duplicates. False leaves it to the validator and the storing rule.
bool readPlainPoint(const Fields& fields, SimaPoint& point) {
    if (fields.size() < 6 || fields.size() > 7 || !toPlainInteger(fields[1], point.number)) {
        return false;
    }
    if (!toPlainReal(fields[3], point.y) || !toPlainReal(fields[4], point.x) || !toPlainReal(fields[5], point.z)) {
        return false;
    }
    point.name = fields[2];
    point.hasZ = !fields[5].empty();
    return true;
}

// Notes what is doubtful about the numbers of the point's record.
void doubtNumbers(FilePass& file, const SimaPoint& point) {
    const Fields& fields = file.fields();
    file.doubtNumber(fields[3], point.y);
    file.doubtNumber(fields[4], point.x);
    file.doubtNumber(fields[5], point.z);
    file.doubtNumber(fields[1], point.number);
    if (isEmptyNumber(fields[3]) || isEmptyNumber(fields[4])) {
        file.doubt(Doubt::EmptyCoordinate);
    }
}

// The first point of a number, which lots and routes take, may stand in an earlier section.
void doubtNumberAgain(FilePass& file, std::size_t firstOfSection, const SimaPoint& point) {
    if (firstOfSection == 0) {
        return;
    }
    const SimaPoint* const first = file.reader().points.find(point.number);
    if (first != nullptr && (first->x != point.x || first->y != point.y)) {
        file.doubt(Doubt::PointNumberAgain);
    }
}

// One A01 with its tests.
void readPoint(FilePass& file, std::size_t firstOfSection) {
    PointTable& points = file.reader().points;
    const Record record = file.record();
    SimaPoint point;
    if (readPlainPoint(record.fields, point) && !points.hasFrom(firstOfSection, point.number)) {
        // Numbers in plain form are read whole, unless a sign or a point alone gave 0.
        if (point.x == 0.0 || point.y == 0.0 || (point.z == 0.0 && !record.fields[5].empty())) {
            doubtNumbers(file, point);
        }
        doubtNumberAgain(file, firstOfSection, point);
        points.append(std::move(point));
        return;
    }
    const auto isDuplicate = [&] { return points.hasFrom(firstOfSection, toInteger(record.fields[1])); };
    if (validateA01(file.log(), record, isDuplicate) != 0) {
        file.updateErrorCount();
    } else if (!storePoint(points, record.fields)) {
        file.passOver(PassedKind::PointWithoutNumber);
    } else {
        const SimaPoint& stored = points[points.size() - 1];
        doubtNumbers(file, stored);
        doubtNumberAgain(file, firstOfSection, stored);
    }
}

} // namespace

bool storePoint(PointTable& points, const Fields& fields) {
    if (fields.size() < 2 || fields[1].empty()) {
        return false;
    }
    // A short record is filled up with empty fields.
    const auto field = [&fields](std::size_t i) { return i < fields.size() ? fields[i] : std::string_view{}; };
    SimaPoint point;
    point.number = toInteger(fields[1]);
    point.name = field(2);
    // The axes cross here: the file's X is the northing, the drawing's y.
    point.y = toReal(field(3));
    point.x = toReal(field(4));
    point.z = toReal(field(5));
    point.hasZ = !field(5).empty();
    points.append(std::move(point));
    return true;
}

void readCoordinateSection(FilePass& file) {
    SimaReader& reader = file.reader();
    SimaLog& log = file.log();
    validateEndRecord(log, file.record());
    file.updateErrorCount();
    log.coordinateBegin(reader.lineNumber);

    // Nothing looks points up while their section is open, so they go straight behind those of earlier sections.
    const std::size_t first = reader.points.size();
    expectPoints(file);
    for (bool open = true; open && file.next();) {
        if (file.code() == recordCode("A01")) {
            readPoint(file, first);
            continue;
        }
        const Record record = file.record();
        if (filterCoordinateSection(log, record) != 0) {
            file.updateErrorCount();
            continue;
        }
        switch (file.code()) {
        case recordCode("A99"):
            validateEndRecord(log, record);
            file.updateErrorCount();
            open = false;
            break;
        case recordCode("Z00"):
            file.passOver(PassedKind::Comment);
            break;
        default:
            break;
        }
    }
    // The end of the file closes the section as A99 does.
    if (file.sink() != nullptr) {
        file.sink()->createCoordinatePoints(reader, reader.points.from(first));
    }
}

// Nothing is tested here, so a number that stands twice counts twice.
void previewCoordinateSection(FilePass& file) {
    expectPoints(file);
    while (file.next()) {
        const RecordCode code = file.code();
        if (code == recordCode("A99")) {
            return;
        }
        if (code == recordCode("A01")) {
            storePoint(file.reader().points, file.fields());
        }
    }
}

} // namespace fenmark::sima
