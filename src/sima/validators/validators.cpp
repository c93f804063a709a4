// The validators of the single records.
#include "sima/validators/validators.h"

#include "sima/text/field_counts.h"
#include "sima/text/number.h"
#include "sima/text/string_table.h"
#include "sima/validators/field_tests.h"

#include <algorithm>
#include <string>

namespace fenmark::sima {

namespace {

constexpr std::string_view kLotFormat = "書式が正しくありませんが、無視して処理を続けます。";

// A line number in five digits or more.
std::string lineText(std::int32_t line) {
    const std::string digits = std::to_string(line);
    return std::string(5 - std::min<std::size_t>(5, digits.size()), '0') + digits;
}

std::int32_t report(SimaLog& log, const Record& record, std::string_view identifier, int message) {
    return reportRecord(log, identifier, resourceText(message), record.line, record.text);
}

// A code that the table lacks does not compile.
consteval std::size_t fieldsOf(std::string_view code) {
    return fieldCountOf(code).value();
}

// The count includes the empty field behind the trailing comma.
std::int32_t requireFields(SimaLog& log, const Record& record, std::size_t count) {
    if (record.fields.size() == count) {
        return 0;
    }
    return report(log, record, "ErrX001", record.fields.size() > count ? kMessageTooManyFields : kMessageTooFewFields);
}

struct FieldRule {
    std::size_t field;
    std::string_view identifier;
    int message;
};

std::int32_t requireNumber(SimaLog& log, const Record& record, const FieldRule& rule) {
    return isNumber(record.fields[rule.field]) ? 0 : report(log, record, rule.identifier, rule.message);
}

std::int32_t requireDigits(SimaLog& log, const Record& record, const FieldRule& rule) {
    return isDigits(record.fields[rule.field]) ? 0 : report(log, record, rule.identifier, rule.message);
}

// The first rule that fails is reported.
template <typename... Rules>
std::int32_t requireNumbers(SimaLog& log, const Record& record, const Rules&... rules) {
    return ((requireNumber(log, record, rules) == 0) && ...) ? 0 : -1;
}

} // namespace

std::int32_t reportRecord(SimaLog& log, std::string_view identifier, std::string_view message, std::int32_t line,
                          std::string_view text) {
    std::string first(identifier);
    first += ' ';
    first += message;
    std::string second = lineText(line);
    second += "行目 ";
    second += text;
    log.errorBlock(first, second);
    return -1;
}

void reportMissingPoint(SimaLog& log, const Record& record) {
    std::string second = lineText(record.line);
    second += ' ';
    second += record.text;
    log.errorBlock(resourceText(kMessageMissingPoint), second);
}

std::int32_t validateEndRecord(SimaLog& log, const Record& record) {
    return requireFields(log, record, 2);
}

std::int32_t validateG00(SimaLog& log, const Record& record) {
    if (requireFields(log, record, fieldsOf("G00")) != 0) {
        return -1;
    }
    return requireNumber(log, record, {1, "ErrG00-1", kMessageVersion});
}

std::int32_t validateA01Number(SimaLog& log, const Record& record) {
    if (record.fields.size() != fieldsOf("A01") && record.fields.size() != fieldsOf("A01") - 1) {
        return report(log, record, "ErrX001", kMessagePointFormat);
    }
    return requireDigits(log, record, {1, "ErrA01-1", kMessagePointNumber});
}

std::int32_t reportDuplicate(SimaLog& log, const Record& record) {
    return report(log, record, "ErrA002", kMessageDuplicatePoint);
}

std::int32_t validateA01Coordinates(SimaLog& log, const Record& record) {
    return requireNumbers(log, record, FieldRule{3, "ErrA01-2", kMessageX}, FieldRule{4, "ErrA01-3", kMessageY},
                          FieldRule{5, "ErrA01-4", kMessageZ});
}

std::int32_t validateB01(SimaLog& log, const Record& record) {
    if (requireFields(log, record, fieldsOf("B01")) != 0) {
        return -1;
    }
    return requireDigits(log, record, {1, "ErrB01-1", kMessagePointNumber});
}

std::int32_t validateB03(SimaLog& log, const Record& record) {
    if (requireFields(log, record, fieldsOf("B03")) != 0) {
        return -1;
    }
    return requireNumber(log, record, {1, "ErrB03-1", kMessageAddedDistance});
}

std::int32_t validateC01(SimaLog& log, const Record& record) {
    if (requireFields(log, record, fieldsOf("C01")) != 0) {
        return -1;
    }
    const std::string_view system = trim(record.fields[1]);
    if (system != "0" && system != "1") {
        return report(log, record, "ErrC01-1", kMessageCoordinateSystem);
    }
    return requireNumber(log, record, {2, "ErrC01-2", kMessageRadius});
}

std::int32_t validateC02(SimaLog& log, const Record& record) {
    if (requireFields(log, record, fieldsOf("C02")) != 0) {
        return -1;
    }
    return requireNumbers(log, record, FieldRule{1, "ErrC02-1", kMessageParameterA},
                          FieldRule{2, "ErrC02-2", kMessageStartRadius}, FieldRule{3, "ErrC02-3", kMessageEndRadius});
}

std::int32_t validateC03(SimaLog& log, const Record& record) {
    if (requireFields(log, record, fieldsOf("C03")) != 0) {
        return -1;
    }
    return requireNumbers(log, record, FieldRule{1, "ErrC03-1", kMessageSideLength},
                          FieldRule{2, "ErrC03-2", kMessageAzimuth});
}

std::int32_t validateD00(SimaLog& log, const Record& record) {
    if (record.fields.size() != fieldsOf("D00")) {
        return reportRecord(log, "ErrX001", kLotFormat, record.line, record.text);
    }
    if (requireDigits(log, record, {1, "ErrD00-1", kMessageLotNumber}) != 0) {
        return -1;
    }
    // Not trimmed here, although the reader trims: " 1" is refused, and closes the lot all the same.
    const std::string_view kind = record.fields[3];
    return kind == "1" || kind == "2" ? 0 : report(log, record, "ErrD00-2", kMessageLotKind);
}

std::int32_t validateF00(SimaLog& log, const Record& record) {
    if (requireFields(log, record, fieldsOf("F00")) != 0) {
        return -1;
    }
    if (requireDigits(log, record, {1, "ErrF00-1", kMessageRouteNumber}) != 0 ||
        requireDigits(log, record, {2, "ErrF00-2", kMessageGroupNumber}) != 0) {
        return -1;
    }
    const std::string_view type = trim(record.fields[4]);
    const bool known = type.size() == 1 && type.front() >= '1' && type.front() <= '7';
    return known ? 0 : report(log, record, "ErrF00-3", kMessageRouteKind);
}

std::int32_t validateH00(SimaLog& log, const Record& record) {
    if (requireFields(log, record, fieldsOf("H00")) != 0) {
        return -1;
    }
    return requireDigits(log, record, {1, "ErrH00-1", kMessageResultRouteNumber});
}

std::int32_t validateH01(SimaLog& log, const Record& record) {
    if (record.fields.size() != fieldsOf("H01")) {
        return report(log, record, "ErrX001", kMessageLongitudinalFormat);
    }
    if (requireNumbers(log, record, FieldRule{2, "ErrH01-1", kMessageAddedDistance},
                       FieldRule{3, "ErrH01-2", kMessageGroundHeight},
                       FieldRule{4, "ErrH01-3", kMessageStakeHeadHeight}) != 0) {
        return -1;
    }
    const std::string_view kind = trim(record.fields[5]);
    return kind == "1" || kind == "2" ? 0 : report(log, record, "ErrH01-4", kMessageStationKind);
}

std::int32_t validateI00(SimaLog& log, const Record& record) {
    if (requireFields(log, record, fieldsOf("I00")) != 0) {
        return -1;
    }
    return requireDigits(log, record, {1, "ErrI00-1", kMessageResultRouteNumber});
}

std::int32_t validateI01(SimaLog& log, const Record& record) {
    if (requireFields(log, record, fieldsOf("I01")) != 0) {
        return -1;
    }
    return requireNumbers(log, record, FieldRule{2, "ErrI01-1", kMessageAddedDistance},
                          FieldRule{3, "ErrI01-2", kMessageGroundHeight},
                          FieldRule{4, "ErrI01-3", kMessageStakeHeadHeight});
}

std::int32_t validateI02(SimaLog& log, const Record& record) {
    if (requireFields(log, record, fieldsOf("I02")) != 0) {
        return -1;
    }
    return requireNumbers(log, record, FieldRule{2, "ErrI02-1", kMessageDistance},
                          FieldRule{3, "ErrI02-2", kMessageGroundHeight});
}

std::int32_t filterCoordinateSection(SimaLog& log, const Record& record) {
    switch (recordCode(record.fields[0])) {
    case kNoCode:
    case recordCode("A01"):
    case recordCode("A99"):
    case recordCode("Z00"):
        return 0;
    default:
        return report(log, record, "ErrA001", kMessageBadCoordinates);
    }
}

std::int32_t filterLotSection(SimaLog& log, const Record& record) {
    switch (recordCode(trim(record.fields[0]))) {
    case kNoCode:
    case recordCode("B01"):
    case recordCode("C01"):
    case recordCode("C02"):
    case recordCode("C03"):
    case recordCode("E00"):
    case recordCode("E01"):
    case recordCode("E03"):
    case recordCode("E99"):
    case recordCode("D99"):
        return 0;
    default:
        return report(log, record, "ErrD001", kMessageBadLot);
    }
}

std::int32_t filterRouteSection(SimaLog& log, const Record& record) {
    switch (recordCode(record.fields[0])) {
    case kNoCode:
    case recordCode("B01"):
    case recordCode("B03"):
    case recordCode("B04"):
    case recordCode("C00"):
    case recordCode("C01"):
    case recordCode("C02"):
    case recordCode("C03"):
    case recordCode("C04"):
    case recordCode("C99"):
    case recordCode("F03"):
    case recordCode("F99"):
        return 0;
    default:
        return report(log, record, "ErrF001", kMessageBadRoute);
    }
}

std::int32_t filterLongitudinalSection(SimaLog& log, const Record& record) {
    switch (recordCode(record.fields[0])) {
    case kNoCode:
    case recordCode("H01"):
    case recordCode("H99"):
        return 0;
    default:
        return report(log, record, "ErrH001", kMessageBadLongitudinal);
    }
}

std::int32_t filterCrossSection(SimaLog& log, const Record& record) {
    switch (recordCode(record.fields[0])) {
    case kNoCode:
    case recordCode("I01"):
    case recordCode("I02"):
    case recordCode("I99"):
        return 0;
    default:
        return report(log, record, "ErrI001", kMessageBadCrossSection);
    }
}

} // namespace fenmark::sima
