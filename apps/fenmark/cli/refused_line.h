// What to say of a command line that the parser refused.
#pragma once

#include "values/language.h"

#include <string>
#include <vector>

namespace CLI {
class App;
class ParseError;
} // namespace CLI

namespace fenmark::cli {

[[nodiscard]] std::vector<std::string> commandNames(const CLI::App& app);

// Of a line that names no command.
[[nodiscard]] std::string withoutCommand(const CLI::App& app, const std::vector<std::string>& arguments,
                                         Language language);

// Of a line that the parser would take although it holds something that means nothing: a number in front of the command, a
// value of an option that takes none. Empty for all others.
[[nodiscard]] std::string misuse(const CLI::App& app, const std::vector<std::string>& arguments, Language language);

// Of any other.
[[nodiscard]] std::string refusal(const CLI::App& app, const CLI::ParseError& error,
                                  const std::vector<std::string>& arguments, Language language);

} // namespace fenmark::cli
