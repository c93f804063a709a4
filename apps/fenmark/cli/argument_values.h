// Reads the values of options: numbers, lists, encodings, paths.
#pragma once

#include "cli/texts.h"
#include "sima/reader/read_context.h"

#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::cli {

// A value that cannot be taken, with the line for the user.
class WrongUsage : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

[[noreturn]] void refuse(Language language, Text text, std::initializer_list<Figure> figures = {});

// The pieces of a list with commas.
[[nodiscard]] std::vector<std::string> listed(const std::string& list);
// "points lots longitudinal", of any table whose entries have an `option`.
template <typename Table>
[[nodiscard]] std::vector<std::string> optionsOf(const Table& table) {
    std::vector<std::string> names;
    for (const auto& entry : table) {
        names.emplace_back(entry.option);
    }
    return names;
}
[[nodiscard]] std::string withBlanks(std::span<const std::string> words);

// Throws WrongUsage unless the text is a number of metres. `what` is the option's name.
[[nodiscard]] double metresIn(const std::string& text, const char* what, Language language);
// None for "auto".
[[nodiscard]] std::optional<sima::Encoding> encodingNamed(const std::string& name, Language language);
// Whoever starts the program from a script with an unset variable should read what is missing.
void requireName(const std::string& name, const char* what, Language language);
// The same for options whose absence has a meaning of its own: a check of the parser, which words the refusal itself.
[[nodiscard]] std::string refusalOfEmpty(const std::string& value);
// Each path as it was typed, with the system's own separators, so that a file has one name in messages and rows.
void takeTyped(std::string& path);
void takeTyped(std::optional<std::string>& path);
void takeTyped(std::vector<std::string>& paths);

} // namespace fenmark::cli
