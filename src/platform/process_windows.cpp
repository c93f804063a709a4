// Arguments, streams and language on Windows.
#include "platform/process.h"

#include "platform/language.h"
#include "platform/wide_windows.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iostream>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

namespace fenmark::platform {

namespace {

HANDLE handleOf(Stream stream) {
    return ::GetStdHandle(stream == Stream::Output ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
}

// The files that a pattern names, sorted; the pattern itself if there are none.
void appendFiles(std::vector<std::string>& arguments, const std::wstring& pattern) {
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW found;
    const HANDLE search = ::FindFirstFileW(pattern.c_str(), &found);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
                names.emplace_back(found.cFileName);
            }
        } while (::FindNextFileW(search, &found) != 0);
        ::FindClose(search);
    }
    if (names.empty()) {
        arguments.push_back(narrow(pattern));
        return;
    }
    std::sort(names.begin(), names.end());
    const std::size_t last = pattern.find_last_of(L"\\/:");
    const std::wstring folder = last == std::wstring::npos ? std::wstring() : pattern.substr(0, last + 1);
    for (const std::wstring& name : names) {
        arguments.push_back(narrow(folder + name));
    }
}

// The bytes of the last character as far as they are there; 0 if it is whole.
std::size_t unfinishedBytes(std::string_view utf8) {
    const std::size_t look = std::min<std::size_t>(utf8.size(), 3);
    for (std::size_t back = 1; back <= look; ++back) {
        const auto byte = static_cast<unsigned char>(utf8[utf8.size() - back]);
        if (byte >= 0xC0) {
            const std::size_t needed = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : 2;
            return needed > back ? back : 0;
        }
        if (byte < 0x80) {
            return 0;
        }
    }
    return 0;
}

// UTF-8 onto a console as UTF-16, so that its code page does not matter.
class ConsoleBuffer : public std::streambuf {
  public:
    explicit ConsoleBuffer(HANDLE console) : console_(console) { setp(bytes_.data(), bytes_.data() + bytes_.size()); }
    ~ConsoleBuffer() override { show(true); }
    ConsoleBuffer(const ConsoleBuffer&) = delete;
    ConsoleBuffer& operator=(const ConsoleBuffer&) = delete;

  protected:
    int_type overflow(int_type c) override {
        if (!show(false)) {
            return traits_type::eof();
        }
        if (!traits_type::eq_int_type(c, traits_type::eof())) {
            sputc(traits_type::to_char_type(c));
        }
        return traits_type::not_eof(c);
    }
    int sync() override { return show(false) ? 0 : -1; }

  private:
    // What is there of an unfinished character waits for its rest.
    bool show(bool all) {
        const std::string_view text(pbase(), static_cast<std::size_t>(pptr() - pbase()));
        const std::size_t kept = all ? 0 : unfinishedBytes(text);
        const std::wstring shown = wide(text.substr(0, text.size() - kept));
        DWORD written = 0;
        const bool done = shown.empty() || ::WriteConsoleW(console_, shown.data(), static_cast<DWORD>(shown.size()),
                                                           &written, nullptr) != 0;
        std::copy(text.end() - static_cast<std::ptrdiff_t>(kept), text.end(), bytes_.begin());
        setp(bytes_.data(), bytes_.data() + bytes_.size());
        pbump(static_cast<int>(kept));
        return done;
    }

    HANDLE console_;
    std::array<char, 8192> bytes_;
};

// One standard stream: the library's own for files and pipes, or one upon the console.
class OneStream {
  public:
    OneStream(Stream which, std::ostream& usual, std::FILE* file) : usual_(usual), console_(handleOf(which)) {
        DWORD mode = 0;
        if (!::GetConsoleMode(console_, &mode)) {
            (void)::_setmode(::_fileno(file), _O_BINARY);
            return;
        }
        // Lets a progress bar clear its line. What the console had it gets back.
        before_ = mode;
        (void)::SetConsoleMode(console_, mode | ENABLE_PROCESSED_OUTPUT | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
        buffer_ = std::make_unique<ConsoleBuffer>(console_);
        stream_ = std::make_unique<std::ostream>(buffer_.get());
        if (which == Stream::Error) {
            *stream_ << std::unitbuf;
        }
    }
    ~OneStream() {
        if (stream_) {
            stream_->flush();
            (void)::SetConsoleMode(console_, before_);
        }
    }
    OneStream(const OneStream&) = delete;
    OneStream& operator=(const OneStream&) = delete;

    std::ostream& stream() { return stream_ ? *stream_ : usual_; }

  private:
    std::ostream& usual_;
    HANDLE console_;
    DWORD before_ = 0;
    std::unique_ptr<ConsoleBuffer> buffer_;
    std::unique_ptr<std::ostream> stream_;
};

} // namespace

std::vector<std::string> programArguments(int, char**) {
    std::vector<std::string> arguments;
    int count = 0;
    LPWSTR* const values = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    for (int i = 1; i < count; ++i) {
        const std::wstring value = values[i];
        if (value.find_first_of(L"*?") != std::wstring::npos && !value.starts_with(L"-")) {
            appendFiles(arguments, value);
        } else {
            arguments.push_back(narrow(value));
        }
    }
    ::LocalFree(values);
    return arguments;
}

void prepareProcess() {
    // A drive without a disk gives an error, not a window that waits for a click.
    ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
}

void outliveClosedStreams() {}

bool hasThreads() noexcept {
    return true;
}

struct StandardStreams::Parts {
    OneStream out{Stream::Output, std::cout, stdout};
    OneStream err{Stream::Error, std::cerr, stderr};
};

StandardStreams::StandardStreams() {
    std::ios::sync_with_stdio(false);
    parts_ = std::make_unique<Parts>();
}

StandardStreams::~StandardStreams() = default;

std::ostream& StandardStreams::out() {
    return parts_->out.stream();
}

std::ostream& StandardStreams::err() {
    return parts_->err.stream();
}

bool isTerminal(Stream stream) {
    DWORD mode = 0;
    return ::GetConsoleMode(handleOf(stream), &mode) != 0;
}

std::optional<int> terminalWidth(Stream stream) {
    CONSOLE_SCREEN_BUFFER_INFO screen;
    if (!::GetConsoleScreenBufferInfo(handleOf(stream), &screen)) {
        return std::nullopt;
    }
    return screen.srWindow.Right - screen.srWindow.Left + 1;
}

std::string messageLanguage() {
    if (std::optional<std::string> language = languageOfEnvironment()) {
        return *std::move(language);
    }
    return PRIMARYLANGID(::GetUserDefaultUILanguage()) == LANG_JAPANESE ? "ja" : "";
}

} // namespace fenmark::platform
