// Lines into fields: the splitter of the format with its rules for quotes, and the module's plain splitter.
#pragma once

#include "values/array.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace fenmark::sima {

// The fields of one line: field 0 is the record code, field N the N-th value. The fields are views into the line, or
// into the storage here where unquoting changed them; they hold until the next split.
class Fields {
  public:
    // No record has more than seven fields. Those beyond this many are counted but not kept, so that a line of 100 MB
    // of commas takes no memory.
    static constexpr std::size_t kKept = 256;

    std::size_t size() const { return count_; }
    // std::invalid_argument for a field that the line does not have, or that was not kept.
    std::string_view operator[](std::size_t index) const {
        if (index >= kept()) {
            refuse();
        }
        return views_[index];
    }

  private:
    friend class QuotedLine;
    friend std::int32_t splitLine(std::string_view line, std::string_view separator, Fields& fields);
    friend bool splitAsciiLine(std::string_view line, Fields& fields);
    friend std::size_t splitPlainLine(std::string_view text, Fields& fields);
    [[noreturn]] static void refuse();
    void add(std::string_view field) {
        if (count_ < kKept) {
            views_[count_] = field;
        }
        ++count_;
    }
    void addPlain(const char* from, const char* to);
    std::size_t kept() const { return count_ < kKept ? count_ : kKept; }

    std::array<std::string_view, kKept> views_;
    std::size_t count_ = 0;
    std::string storage_;
};

// Replaces the fields by those of the line and returns their number. A field that begins with a double quote runs to
// its closing quote, separators included, with doubled quotes for single ones; see the source for the odd cases, which
// are on purpose. The line must outlive the fields. The separator is one character; the format's is ",".
std::int32_t splitLine(std::string_view line, std::string_view separator, Fields& fields);

// The same by commas, for a line without any byte of 0x80 or more. False, with the fields undefined, if it has one.
bool splitAsciiLine(std::string_view line, Fields& fields);

// The short way for nearly all lines of a file: finds the end of the first line of the text and splits the line in one
// go. Returns the length of the line with its line feed; or 0, with the fields undefined, if the text holds no line
// feed or the line is in any way out of the ordinary: empty, with a blank at an end, a quote, or a byte of 0x80 or more.
std::size_t splitPlainLine(std::string_view text, Fields& fields);

#pragma GCC visibility push(default)

// The module's exported splitter, which the import does not use.
class ExtendedCString {
  public:
    // Appends the pieces of the text between separators and returns how many these are. It knows no quotes; an empty
    // rest behind the last separator is no piece.
    static std::int32_t Splitter(Array<std::string>& fields, std::string_view text, std::string_view separator);
};

#pragma GCC visibility pop

} // namespace fenmark::sima
