// Reads one command line.
#pragma once

#include "cli/options.h"
#include "values/language.h"

#include <string>
#include <variant>
#include <vector>

namespace fenmark::cli {

// A text to print on standard output, for --help and --version.
struct ShowText {
    std::string text;
};

// What is wrong with the arguments, in one line or two.
struct UsageError {
    std::string message;
};

using ParsedCommand =
    std::variant<ShowText, UsageError, ImportArguments, PreviewArguments, InfoArguments, StationArguments,
                 LocateArguments, ExportArguments, StakesArguments, ReportArguments, PlotArguments>;

// Help and errors are in the language.
[[nodiscard]] ParsedCommand parseArguments(const std::vector<std::string>& arguments, Language language);

} // namespace fenmark::cli
