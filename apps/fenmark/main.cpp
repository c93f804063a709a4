// The fenmark program: hands its arguments and streams to the command line.
#include "cli/cli.h"
#include "platform/process.h"

#include <cstdio>
#include <new>
#include <ostream>

int main(int count, char** values) {
    namespace platform = fenmark::platform;
    platform::prepareProcess();
    try {
        platform::StandardStreams streams;
        const int code =
            fenmark::cli::run(platform::programArguments(count, values),
                              {streams.out(), streams.err(), platform::isTerminal(platform::Stream::Error)});
        streams.out().flush();
        if (!streams.out() && code == fenmark::cli::kDone) {
            streams.err() << "fenmark: standard output cannot be written\n";
            return fenmark::cli::kNotDone;
        }
        return code;
    } catch (const std::bad_alloc&) {
        std::fputs("fenmark: error: out of memory\n", stderr);
        return fenmark::cli::kNotDone;
    }
}
