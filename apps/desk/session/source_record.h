// The lines of a SIMA file that a log speaks of. No windows here.
#pragma once

#include "sima/text/encoding.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::desk {

// A line of a SIMA file and what it stands in.
struct SourceRecord {
    std::int64_t number = 0;  // from 1
    std::string text;         // without the end of the line
    std::string section;      // the record that opened the section around it: A00, D00, F00, H00 or I00; or empty
    std::string crossSection; // the last I01 in that section; or empty
};

struct SourceExcerpt {
    SourceRecord record;
    std::int64_t first = 0; // number of the first of the lines
    std::vector<std::string> lines;
};

// The number of the record that a line of the log is about: "00012 A00 ..." or "00012行目 A01,...". Nothing if the line
// begins with no such number.
std::optional<std::int64_t> recordNumberIn(std::string_view logLine);

// The SIMA file that a log "name_Input.log" belongs to: "name.sim" in its folder, in letters of any case. Empty if there
// is none.
std::string sourceOfLog(const std::string& logPath);

// Whether an import could write its log under that name.
bool isNamedAsLog(const std::string& path);

// False also for pipes and devices, at which reading would wait or never end. A drawing may name any path.
bool isOrdinaryFile(const std::string& path);

// Reads the line and some lines around it in the named encoding, "auto" for the one that the bytes of the file show.
// Nothing if the file has no such line or cannot be read.
std::optional<SourceExcerpt> readSource(const std::string& path, std::int64_t number, std::int64_t around,
                                        std::string_view encoding = "auto");

// The encoding of a file: the named one, or what its bytes show.
sima::Encoding encodingOfFile(const std::string& path, std::string_view setting);
// Bytes of that encoding as UTF-8, without a byte order mark.
std::string decodedText(std::string_view bytes, sima::Encoding encoding);

} // namespace fenmark::desk
