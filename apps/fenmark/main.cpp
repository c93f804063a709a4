// The fenmark program: passes its arguments and streams to the command line.
#include "cli/cli.h"
#include "cli/texts.h"
#include "platform/process.h"

#include <cstdio>
#include <new>
#include <ostream>

int main(int count, char** values) {
    namespace platform = fenmark::platform;
    platform::prepareProcess();
    try {
        platform::StandardStreams streams;
        fenmark::cli::Streams spoken{streams.out(), streams.err(), platform::isTerminal(platform::Stream::Error)};
        spoken.columns = platform::terminalWidth(platform::Stream::Error).value_or(0);
        spoken.language =
            platform::messageLanguage() == "ja" ? fenmark::Language::Japanese : fenmark::Language::English;
        const int code = fenmark::cli::run(platform::programArguments(count, values), spoken);
        streams.out().flush();
        if (!streams.out() && code == fenmark::cli::kDone) {
            streams.err() << "fenmark: " << fenmark::cli::said(spoken.language, fenmark::cli::Text::OutputNotWritable)
                          << '\n';
            return fenmark::cli::kNotDone;
        }
        return code;
    } catch (const std::bad_alloc&) {
        std::fputs("fenmark: error: out of memory\n", stderr);
        return fenmark::cli::kNotDone;
    }
}
