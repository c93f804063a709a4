// Streams that reach a terminal: no name, path or text of a file sends it a control sequence.
#pragma once

#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>

namespace fenmark::cli {

// Passes text on with every control character, but line feed and tabulator, as "\u001b": those below 0x20, DEL, and
// U+0080 to U+009F. JSON reads the same character from it.
class PrintableBuffer : public std::streambuf {
  public:
    explicit PrintableBuffer(std::streambuf& target) : target_(target) {}

  protected:
    int_type overflow(int_type c) override;
    std::streamsize xsputn(const char* text, std::streamsize size) override;
    int sync() override;

  private:
    bool put(std::string_view text);
    bool escape(unsigned char control);

    std::streambuf& target_;
    bool leadSeen_ = false; // of a character from U+0080 on, whose second byte decides
};

// A stream over another one. A failure shows in both.
class PrintableStream : public std::ostream {
  public:
    explicit PrintableStream(std::ostream& target);
    ~PrintableStream() override;
    PrintableStream(const PrintableStream&) = delete;
    PrintableStream& operator=(const PrintableStream&) = delete;

  private:
    std::ostream& target_;
    PrintableBuffer buffer_;
};

// The text with its line feeds as "\u000a" too, for a message of one line.
std::string oneLine(std::string_view text);

} // namespace fenmark::cli
