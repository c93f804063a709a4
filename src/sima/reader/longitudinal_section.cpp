// The longitudinal section, H00 to H99: heights at stations of a route.
#include "sima/reader/section_readers.h"

#include "sima/reader/result_number.h"
#include "sima/text/short_record.h"
#include "sima/validators/validators.h"

#include <string>
#include <utility>

namespace fenmark::sima {

namespace {

VerticalData makeVertical(const Record& record) {
    VerticalData vertical;
    vertical.stationName = trim(record.fields[1]);
    vertical.station = resultNumber(record.fields[2]);
    vertical.groundHeight = resultNumber(record.fields[3]);
    vertical.pileHeadHeight = resultNumber(record.fields[4]);
    vertical.sourceText = record.text;
    return vertical;
}

void doubtVertical(FilePass& file, const VerticalData& vertical) {
    const Fields& fields = file.fields();
    file.doubtNumber(fields[2], vertical.station);
    file.doubtNumber(fields[3], vertical.groundHeight);
    if (isEmptyNumber(fields[2])) {
        file.doubt(Doubt::EmptyPlace);
    }
    if (isEmptyNumber(fields[3])) {
        file.doubt(Doubt::EmptyHeight);
    }
}

} // namespace

void readLongitudinalSection(FilePass& file) {
    SimaReader& reader = file.reader();
    SimaLog& log = file.log();
    validateH00(log, file.record());
    file.updateErrorCount();

    const bool isImported = file.imports(ImportKind::Longitudinal);
    HSeriesData section;
    section.routeName = trim(file.fields()[2]);
    section.routeNumber = toInteger(file.fields()[1]);
    section.firstLine = reader.lineNumber;
    section.opened = true;
    section.routeFound = reader.bindRoute(section.routeNumber);
    if (isImported && reader.bindsOtherName(section.routeNumber, section.routeName)) {
        file.doubt(Doubt::RouteNumberAgain);
    }
    log.longitudinalBegin(reader.lineNumber, reader.alignmentName);

    while (!section.closed && file.next()) {
        const Record record = file.record();
        if (filterLongitudinalSection(log, record) != 0) {
            file.updateErrorCount();
            continue;
        }
        if (file.code() == recordCode("H01")) {
            if (validateH01(log, record) == 0) {
                section.verticals.push_back(makeVertical(record));
                if (isImported) {
                    doubtVertical(file, section.verticals.back());
                }
                reader.verticals.push_back(section.verticals.back());
            }
            file.updateErrorCount();
        } else if (file.code() == recordCode("H99")) {
            validateEndRecord(log, record);
            file.updateErrorCount();
            section.closed = true;
            section.lastLine = reader.lineNumber;
        }
    }
    if (section.closed) {
        if (file.sink() != nullptr) {
            file.sink()->createLongitudinalPoints(reader, section);
        }
        reader.hSeries.push_back(std::move(section));
    } else if (!section.verticals.empty()) {
        file.countPassedOver({PassedKind::ResultWithoutEnd, "H01"}, section.verticals.size());
    }
    // The count is that of all sections of the file so far, not of this one alone, on purpose.
    const bool ok = !reader.alignmentName.empty();
    log.longitudinalEnd(reader.lineNumber, ok, ok ? static_cast<std::int32_t>(reader.verticals.size()) : 0);
}

// A section that the file's end cuts off is not stored, and one without records finds no route.
void previewLongitudinalSection(FilePass& file) {
    SimaReader& reader = file.reader();
    const Record opening = file.record();
    const bool hasNumber = opening.fields.size() > 1;
    const std::int32_t routeNumber = hasNumber ? toInteger(opening.fields[1]) : 0;
    HSeriesData section;
    while (file.next()) {
        if (file.code() == recordCode("H99")) {
            reader.hSeries.push_back(std::move(section));
            return;
        }
        if (file.code() != recordCode("H01")) {
            continue;
        }
        if (section.verticals.empty()) {
            if (!hasNumber) {
                throw ShortRecord();
            }
            section.routeNumber = routeNumber;
            section.routeFound = reader.bindRoute(routeNumber); // the same for every record of the section
        }
        section.verticals.emplace_back();
        reader.verticals.push_back({});
    }
}

} // namespace fenmark::sima
