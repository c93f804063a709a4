// Arguments, streams and language on POSIX systems.
#include "platform/process.h"

#include "platform/language.h"

#include <csignal>
#include <iostream>

#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fenmark::platform {

namespace {

int descriptorOf(Stream stream) {
    return stream == Stream::Output ? STDOUT_FILENO : STDERR_FILENO;
}

} // namespace

std::vector<std::string> programArguments(int count, char** values) {
    return count < 1 ? std::vector<std::string>() : std::vector<std::string>(values + 1, values + count);
}

void prepareProcess() {
#ifdef SIGXFSZ
    std::signal(SIGXFSZ, SIG_IGN);
#endif
#ifdef __EMSCRIPTEN__
    ::umask(022); // the browser's file system starts with a mask of 0
#endif
}

void outliveClosedStreams() {
    std::signal(SIGPIPE, SIG_IGN);
}

bool hasThreads() noexcept {
#ifdef __EMSCRIPTEN__
    return false;
#else
    return true;
#endif
}

struct StandardStreams::Parts {};

StandardStreams::StandardStreams() {
    std::ios::sync_with_stdio(false);
}

StandardStreams::~StandardStreams() = default;

std::ostream& StandardStreams::out() {
    return std::cout;
}

std::ostream& StandardStreams::err() {
    return std::cerr;
}

bool isTerminal(Stream stream) {
    return ::isatty(descriptorOf(stream)) != 0;
}

std::optional<int> terminalWidth(Stream stream) {
    struct ::winsize size {};
    if (!isTerminal(stream) || ::ioctl(descriptorOf(stream), TIOCGWINSZ, &size) != 0 || size.ws_col == 0) {
        return std::nullopt;
    }
    return size.ws_col;
}

std::string messageLanguage() {
    return languageOfEnvironment().value_or("");
}

} // namespace fenmark::platform
