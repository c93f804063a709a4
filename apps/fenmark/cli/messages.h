// What the commands say on standard error, and how they stop.
#pragma once

#include "cli/cli.h"
#include "cli/texts.h"
#include "drawing/geopackage/store_notes.h"
#include "exchange/notes.h"
#include "sima/log/sima_log.h"
#include "sima/reader/sima_reader.h"
#include "values/outcome.h"

#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace fenmark::cli {

// Ends the command at hand with a code and one line for the user.
class Stop : public std::runtime_error {
  public:
    Stop(int code, const std::string& message) : std::runtime_error(message), code_(code) {}
    int code() const { return code_; }

  private:
    int code_;
};

// Raises Stop where something was not done, with its message behind `before`.
void require(const Streams& streams, const Outcome& outcome, const std::string& before = {});

// A preview that an exception of a record ended: what stands before that record was counted.
class PreviewBrokenOff : public Stop {
  public:
    using Stop::Stop;
};

// What was said of one file, for an answer in JSON.
struct FileReport {
    struct Error { // texts of an error block
        std::string line;
        std::string code;
        std::string text;
        std::string record;
    };
    struct Note {
        std::string code; // the same in every language
        std::string text;
        std::string line; // of the file; empty for all of it
    };
    std::vector<Error> errors;
    std::vector<Note> notes;
};

// "fenmark: error: text"
void tellError(const Streams& streams, std::string_view text);
// "fenmark: note: text"; nothing if quiet.
void tellNote(const Streams& streams, bool quiet, std::string_view text);
void tellNotes(const Streams& streams, bool quiet, const exchange::Notes& notes);

// "file: note: text"; nothing if quiet. The code is for programs that read an answer in JSON.
void tellFileNote(const Streams& streams, bool quiet, const std::string& file, std::string_view code,
                  std::string_view text);
// "file:line: note: text"; nothing if quiet.
void tellLineNote(const Streams& streams, bool quiet, const std::string& file, std::string_view line,
                  std::string_view code, std::string_view text);

// The notes on a drawing or a package that was opened.
void tellStoreNotes(const Streams& streams, bool quiet, const std::string& path,
                    const std::vector<drawing::StoreNote>& notes);

// The text in the language of the notes.
std::string inLanguage(const Streams& streams, std::string japanese, std::string english);

// The log's error blocks, each as "file:line: code: text". On a terminal only the first ones.
void tellErrorBlocks(const Streams& streams, const std::string& file, const sima::SimaLog& log);
// The lines that were passed over in silence, by kind with their number.
void tellPassedOver(const Streams& streams, bool quiet, const std::string& file, const sima::PassedOver& lines);
// The records that were taken otherwise than expected, each kind with its first line.
void tellDoubts(const Streams& streams, bool quiet, const std::string& file, const sima::Doubts& doubts);

// "a, b, c", or "none". Of many the first ones and how many more there are.
[[nodiscard]] std::string joined(const std::vector<std::string>& names, Language language);

// A real in plain decimals that reads back to the same 64-bit value.
std::string plainReal(double value);

// The command that writes files of that extension, "plot"; empty where none does.
[[nodiscard]] std::string_view commandThatWrites(const std::string& path);
// What to say of a target whose extension the command does not write; names the one that does.
[[nodiscard]] std::string otherExtension(Language language, const std::string& target, const std::string& extensions);

// Raises Stop unless the file is named *.sim and can be read.
void requireReadableSimFile(const std::string& path, Language language);

// Counts what the file holds into the reader. Raises Stop if the file cannot be read, PreviewBrokenOff at a record that
// is too short or too long.
void previewFile(sima::SimaReader& reader, const std::string& path, const sima::ReadContext& context,
                 Language language);

// What an exception that left a pass says; the exception of the host boundary is thrown as a pointer and deleted here.
[[nodiscard]] std::string currentExceptionText(Language language);
// The system's reason.
[[nodiscard]] std::string reasonOf(const std::error_code& error, Language language);

} // namespace fenmark::cli
