// What a program asks of the system that started it: its arguments, its streams, the user's language.
#pragma once

#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace fenmark::platform {

// The arguments behind the program's name, in UTF-8 (on POSIX: the bytes as they are). Windows leaves it to programs
// to find the files that "*.sim" names: there an argument with * or ? becomes the files that are there, in the order
// of their names, or stays as it is if there are none.
[[nodiscard]] std::vector<std::string> programArguments(int count, char** values);

// Sets up what every program here needs: a limit on the size of files then gives an error to the write, not the end
// of the program.
void prepareProcess();

// For programs that have work to lose: what is written to a stream that its reader has closed then gives an error, not
// the end of the program.
void outliveClosedStreams();

// Whether work can run beside the program. A browser that runs the program in one worker has no threads, and there
// std::async with a thread of its own never returns: the standard library waits for a thread that did not begin.
[[nodiscard]] bool hasThreads() noexcept;

// Standard output and standard error, for UTF-8: files and pipes get the bytes as they are, and terminals show the
// text, whatever code page a console of Windows has. One at a time, from main.
class StandardStreams {
  public:
    StandardStreams();
    ~StandardStreams();
    StandardStreams(const StandardStreams&) = delete;
    StandardStreams& operator=(const StandardStreams&) = delete;

    [[nodiscard]] std::ostream& out();
    [[nodiscard]] std::ostream& err();

  private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

enum class Stream { Output, Error };

// True if the stream goes to a terminal, which a person reads.
[[nodiscard]] bool isTerminal(Stream stream);
// The terminal's columns; nothing if the stream goes to none, or if nobody can say.
[[nodiscard]] std::optional<int> terminalWidth(Stream stream);

// The language that the user reads messages in, as two letters of ISO 639, "ja"; empty if none is set. LC_ALL,
// LC_MESSAGES and LANG say it, and on Windows, where these are rarely set, the language of the user's desktop.
[[nodiscard]] std::string messageLanguage();

} // namespace fenmark::platform
