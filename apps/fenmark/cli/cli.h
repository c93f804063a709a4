// The fenmark command line as a function of its arguments and streams.
#pragma once

#include "values/language.h"

#include <chrono>
#include <iosfwd>
#include <string>
#include <vector>

namespace fenmark::cli {

// What a command ends with.
inline constexpr int kDone = 0;
inline constexpr int kNotDone = 1;      // a file not readable, a drawing not writable, an import broken off
inline constexpr int kWrongUsage = 2;   // the arguments
inline constexpr int kLogHasErrors = 3; // --strict only

struct FileReport;

struct Streams {
    std::ostream& out;
    std::ostream& err;
    bool errIsTerminal = false; // a progress bar is drawn on a terminal only
    // Where bars are drawn: the terminal itself, which a carriage return reaches. Null: err.
    std::ostream* terminal = nullptr;
    // Of that terminal; 0 where nobody knows them.
    int columns = 0;
    // Keeps the notes and errors of a file beside printing them, also those that --quiet keeps back. Null: nowhere.
    FileReport* report = nullptr;
    // Of the notes. Result lines, the texts of the log and of the dialogs are Japanese always.
    Language language = Language::English;
    // A pass that is over before the user's patience ends shows no bar.
    std::chrono::milliseconds patience{50};
};

// Runs one command line; the arguments are those behind the program's name. Raises nothing.
int run(const std::vector<std::string>& arguments, const Streams& streams);

} // namespace fenmark::cli
