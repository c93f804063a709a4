// The validators: each looks at one record, writes at most one error block to the log, and returns 0 or -1. They never
// change the model and never stop a read; the section readers decide what a verdict means.
#pragma once

#include "sima/log/sima_log.h"
#include "sima/text/record_code.h"
#include "sima/validators/record.h"

#include <cstdint>
#include <string_view>

namespace fenmark::sima {

// An error block "identifier message" over "line number, text". Returns -1.
std::int32_t reportRecord(SimaLog& log, std::string_view identifier, std::string_view message, std::int32_t line,
                          std::string_view text);

// The block of a reference to a point that does not exist: the message alone, and a line without its unit.
void reportMissingPoint(SimaLog& log, const Record& record);

// A00, A99, F99, H99 and I99 have their code and an empty last field.
std::int32_t validateEndRecord(SimaLog& log, const Record& record);

std::int32_t validateG00(SimaLog& log, const Record& record);
// The caller says whether the current section already holds a point of this number.
template <typename HasNumber>
std::int32_t validateA01(SimaLog& log, const Record& record, HasNumber&& hasNumber);
std::int32_t validateB01(SimaLog& log, const Record& record);
std::int32_t validateB03(SimaLog& log, const Record& record);
std::int32_t validateC01(SimaLog& log, const Record& record);
std::int32_t validateC02(SimaLog& log, const Record& record);
std::int32_t validateC03(SimaLog& log, const Record& record);
std::int32_t validateD00(SimaLog& log, const Record& record);
std::int32_t validateF00(SimaLog& log, const Record& record);
std::int32_t validateH00(SimaLog& log, const Record& record);
std::int32_t validateH01(SimaLog& log, const Record& record);
std::int32_t validateI00(SimaLog& log, const Record& record);
std::int32_t validateI01(SimaLog& log, const Record& record);
std::int32_t validateI02(SimaLog& log, const Record& record);

// The section filters look at field 0 only; blank lines pass.
std::int32_t filterCoordinateSection(SimaLog& log, const Record& record);
std::int32_t filterLotSection(SimaLog& log, const Record& record); // compares the trimmed field
std::int32_t filterRouteSection(SimaLog& log, const Record& record);
std::int32_t filterLongitudinalSection(SimaLog& log, const Record& record);
std::int32_t filterCrossSection(SimaLog& log, const Record& record);

// The two parts of validateA01 around the test for duplicates.
std::int32_t validateA01Number(SimaLog& log, const Record& record);
std::int32_t validateA01Coordinates(SimaLog& log, const Record& record);
std::int32_t reportDuplicate(SimaLog& log, const Record& record);

template <typename HasNumber>
std::int32_t validateA01(SimaLog& log, const Record& record, HasNumber&& hasNumber) {
    if (validateA01Number(log, record) != 0) {
        return -1;
    }
    if (hasNumber()) {
        return reportDuplicate(log, record);
    }
    return validateA01Coordinates(log, record);
}

} // namespace fenmark::sima
