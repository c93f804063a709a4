// Notes on a SIMA file that was likely not written as it was read: what its user should look at next.
#pragma once

#include "cli/cli.h"
#include "sima/log/sima_log.h"
#include "sima/reader/read_context.h"
#include "sima/reader/sima_reader.h"

#include <string>

namespace fenmark::cli {

// From the head of the file: another encoding than the one it was read in, or lines that end in a carriage return
// alone. Nothing if quiet.
void tellLikelyMisreading(const Streams& streams, bool quiet, const std::string& file, sima::Encoding encoding);
// If a pass found nothing at all. Nothing if quiet.
void tellNothingFound(const Streams& streams, bool quiet, const std::string& file, const sima::SimaReader& reader);
// The first record in the log that opens a section inside another one, which so lacks its end record. Nothing if quiet.
void tellUnclosedSection(const Streams& streams, bool quiet, const std::string& file, const sima::SimaLog& log);
// How many of the records that the log reports for their number of fields lack their last comma. Nothing if quiet.
void tellMissingCommas(const Streams& streams, bool quiet, const std::string& file, const sima::SimaLog& log);

} // namespace fenmark::cli
