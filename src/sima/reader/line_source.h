// A text file line by line, read forward once in large blocks.
#pragma once

#include "sima/text/encoding.h"

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <limits>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace fenmark::sima {

// The file opened, and its bytes could not be read.
class ReadFailure : public std::system_error {
  public:
    using std::system_error::system_error;
};

// A line beyond the length that the program allows.
class LineTooLong : public std::runtime_error {
  public:
    explicit LineTooLong(std::size_t longest);
};

class LineSource {
  public:
    // Text in UTF-16 is given out in UTF-8; all other text as it lies in the file. A byte order mark of UTF-8 or UTF-16
    // is passed over where the encoding is that one.
    explicit LineSource(Encoding encoding = Encoding::Cp932,
                        std::size_t longestLine = std::numeric_limits<std::size_t>::max())
        : encoding_(encoding), longestLine_(longestLine) {}

    // False if the path is no file that can be opened, or its first bytes cannot be read; a folder is none.
    bool open(std::string_view path);
    std::error_code openError() const { return openError_; } // why open returned false
    void close() { file_.close(); }
    std::int64_t length() const { return length_; } // bytes
    // The place behind the last line and its end, bytes. Of UTF-16: behind what was read of the file.
    std::int64_t position() const { return isUtf16() ? filePosition_ : position_; }
    // The next line without its end, LF or CR LF. False at the end of the file. The view holds until the next call.
    // Raises ReadFailure if the file breaks off with a fault, LineTooLong for a line that is.
    bool next(std::string_view& line);
    // What the buffer holds of the text behind that line; mostly many lines, but any piece of one too. Holds until next().
    std::string_view ahead() const { return {buffer_.data() + start_, end_ - start_}; }
    // Passes over so much of that.
    void skip(std::size_t bytes) {
        start_ += bytes;
        position_ += static_cast<std::int64_t>(bytes);
    }

  private:
    bool fill();
    std::size_t readBlock(char* into, std::size_t size);
    std::size_t fillFromUtf16();
    void makeRoom();
    bool isUtf16() const { return encoding_ == Encoding::Utf16Le || encoding_ == Encoding::Utf16Be; }

    Encoding encoding_;
    std::size_t longestLine_;
    std::string path_;
    std::error_code openError_;
    std::ifstream file_;
    std::vector<char> buffer_;
    std::size_t start_ = 0; // of what was not yet given out
    std::size_t end_ = 0;
    bool atEnd_ = false;
    std::int64_t length_ = 0;
    std::int64_t position_ = 0;
    std::int64_t filePosition_ = 0;
    std::string pending_;    // bytes of UTF-16 that are no whole character yet
    std::string transcoded_; // the last block of UTF-16 as UTF-8
    bool markSeen_ = false;  // of UTF-16
};

} // namespace fenmark::sima
