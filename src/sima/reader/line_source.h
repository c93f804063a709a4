// A text file line by line, read forward once in large blocks.
#pragma once

#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::sima {

class LineSource {
  public:
    // False if the path is no file that can be read; a folder is none.
    bool open(std::string_view path);
    void close() { file_.close(); }
    std::int64_t length() const { return length_; } // bytes
    // The place behind the last line and its end, bytes.
    std::int64_t position() const { return position_; }
    // The next line without its end, LF or CR LF. False at the end of the file. The view holds until the next call.
    // Raises std::system_error if the file breaks off with a fault.
    bool next(std::string_view& line);
    // What is at hand of the text behind that line; mostly many lines, but any piece of one too. Holds until next().
    std::string_view ahead() const { return {buffer_.data() + start_, end_ - start_}; }
    // Passes over so much of that.
    void skip(std::size_t bytes) {
        start_ += bytes;
        position_ += static_cast<std::int64_t>(bytes);
    }

  private:
    bool fill();

    std::string path_;
    std::ifstream file_;
    std::vector<char> buffer_;
    std::size_t start_ = 0; // of what was not yet given out
    std::size_t end_ = 0;
    bool atEnd_ = false;
    std::int64_t length_ = 0;
    std::int64_t position_ = 0;
};

} // namespace fenmark::sima
