// Notes on a SIMA file that was likely not written as it was read: what its user should look at next.
#pragma once

#include "cli/cli.h"
#include "sima/log/sima_log.h"
#include "sima/reader/read_context.h"
#include "sima/reader/sima_reader.h"
#include "sima/text/encoding_choice.h"

#include <optional>
#include <string>

namespace fenmark::cli {

// The encoding that a file is read in: the one asked for, or what its bytes show.
struct FileEncoding {
    sima::Encoding encoding = sima::Encoding::Cp932;
    bool asked = false;
    sima::TextKind looksLike = sima::TextKind::Cp932;
};
FileEncoding encodingOf(const std::string& file, std::optional<sima::Encoding> asked);

// What encoding was taken where it is not code page 932, what else the file looks like, and lines that end in a
// carriage return alone. Nothing if quiet.
void tellLikelyMisreading(const Streams& streams, bool quiet, const std::string& file, const FileEncoding& encoding);
// That a pass found nothing at all. Nothing if quiet.
void tellNothingFound(const Streams& streams, bool quiet, const std::string& file);
// The first record in the log that opens a section inside another one, which so lacks its end record. Nothing if quiet.
void tellUnclosedSection(const Streams& streams, bool quiet, const std::string& file, const sima::SimaLog& log);
// How many of the records that the log reports for their number of fields lack their last comma, or have one comma too
// many at their end. Nothing if quiet.
void tellCommas(const Streams& streams, bool quiet, const std::string& file, const sima::SimaLog& log);
// How many records the log reports for a point number that is none, with the first one. Nothing if quiet.
void tellPointNumbers(const Streams& streams, bool quiet, const std::string& file, const sima::SimaLog& log);

} // namespace fenmark::cli
