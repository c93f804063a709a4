// The lot section, D00 to D99: one parcel by references to points.
#include "sima/reader/section_readers.h"

#include "sima/text/number.h"
#include "sima/validators/validators.h"

#include <algorithm>
#include <string>
#include <utility>

namespace fenmark::sima {

namespace {

// Passes over the triangle data E00 to E99, whatever its lines hold.
void skipTriangleBlock(FilePass& file) {
    while (file.next()) {
        if (file.code() == recordCode("E99")) {
            return;
        }
        if (file.code() != recordCode("E01") && file.code() != recordCode("E03") && file.code() != kNoCode) {
            file.passOver(PassedKind::InTriangleData);
        }
    }
}

// Room for the lots of a file is taken at its first lot; what is not filled is never resident.
constexpr std::int64_t kShortLot = 86; // bytes: three points and the two records around them
constexpr std::int64_t kMostLotsExpected = 1'000'000;

// Adds the point that a B01 refers to. False, with its error block, if there is no such point.
bool addLotPoint(FilePass& file, const Record& record, std::int32_t number) {
    const auto place = file.reader().points.placeOf(number);
    if (!place) {
        reportMissingPoint(file.log(), record);
        file.updateErrorCount();
        return false;
    }
    file.lotOutlines()->add(*place);
    return true;
}

// Whether the B01 is in plain form, so that its validator could not refuse it, and then the number of its point.
bool isPlainReference(const Fields& fields, std::int32_t& number) {
    return fields.size() == 4 && toPlainInteger(fields[1], number);
}

// Stores the lot, gives it to the output and logs its end, whether or not anything is drawn.
void closeLot(FilePass& file, LotData&& lot, bool hasTriangleData) {
    SimaReader& reader = file.reader();
    lot.points = LotOutlines::close(file.lotOutlines());
    const auto pointCount = static_cast<std::int32_t>(lot.points.size());
    if (pointCount == 0 && file.imports(ImportKind::Lots)) {
        file.doubt(Doubt::LotWithoutPoint);
    }
    if (reader.lots.empty()) {
        const std::int64_t lots = std::clamp<std::int64_t>(file.remainingBytes() / kShortLot, 0, kMostLotsExpected);
        reader.lots.edits().reserve(static_cast<std::size_t>(lots) + 1);
    }
    reader.lots.push_back(std::move(lot));
    if (file.sink() != nullptr) {
        // Shares the elements, so that the lot stays whatever the output does with the reader.
        const auto lots = reader.lots;
        file.sink()->createLotPolyline(reader, lots.back());
    }
    file.log().lotEnd(reader.lineNumber, true, pointCount, hasTriangleData);
}

} // namespace

void readLotSection(FilePass& file) {
    SimaReader& reader = file.reader();
    SimaLog& log = file.log();
    validateD00(log, file.record());
    file.updateErrorCount();
    log.lotBegin(reader.lineNumber);

    LotData lot;
    file.lotOutlines()->open(reader.points);
    bool abandoned = false;
    bool hasTriangleData = false;
    std::int32_t number = 0; // of the point of a B01
    const Fields& opening = file.fields();
    lot.isType1 = trim(opening[3]) == "1";
    lot.number = toInteger(opening[1]);
    lot.name = opening[2];
    file.doubtNumber(opening[1], lot.number);

    while (file.next()) {
        const Record record = file.record();
        const RecordCode code = file.code();
        if (code != recordCode("B01") && filterLotSection(log, record) != 0) { // a B01 always passes
            file.updateErrorCount();
            continue;
        }
        if (abandoned) {
            // Nothing counts any more but the end of the lot; an E00 opens no block here.
            if (code == recordCode("D99")) {
                log.lotEnd(reader.lineNumber, false, 0, false);
                return;
            }
            if (code != kNoCode) {
                file.passOver(PassedKind::InLotWithMissingPoint);
            }
            continue;
        }
        switch (code) {
        case recordCode("B01"):
            if (!isPlainReference(record.fields, number)) {
                if (validateB01(log, record) != 0) {
                    file.updateErrorCount();
                    break;
                }
                number = toInteger(record.fields[1]);
            }
            abandoned = !addLotPoint(file, record, number);
            break;
        case recordCode("E00"):
            hasTriangleData = true;
            skipTriangleBlock(file);
            break;
        case recordCode("D99"): // the one end record that is not tested
            closeLot(file, std::move(lot), hasTriangleData);
            return;
        case kNoCode:
            break;
        default:
            file.passOver(PassedKind::NotUsedInLot);
            break;
        }
    }
    // The end of the file closes a lot as good even if it was abandoned, which D99 would have refused; on purpose.
    closeLot(file, std::move(lot), hasTriangleData);
}

// Only the codes count. At the end one empty lot is stored.
void previewLotSection(FilePass& file) {
    while (file.next()) {
        if (file.code() == recordCode("D99")) {
            break;
        }
        if (file.code() == recordCode("E00")) {
            skipTriangleBlock(file);
        }
    }
    file.reader().lots.push_back({});
}

} // namespace fenmark::sima
