// The fenmark program: hands its arguments and streams to the command line.
#include "cli/cli.h"

#include <csignal>
#include <cstdio>
#include <iostream>
#include <new>
#include <string>
#include <vector>

#include <unistd.h>

int main(int count, char** values) {
    // A file size limit then ends in a write error with its message, not in a silent death.
    std::signal(SIGXFSZ, SIG_IGN);
    int code = fenmark::cli::kNotDone;
    try {
        std::ios::sync_with_stdio(false);
        const std::vector<std::string> arguments(values + 1, values + count);
        code = fenmark::cli::run(arguments, {std::cout, std::cerr, ::isatty(STDERR_FILENO) != 0});
    } catch (const std::bad_alloc&) {
        std::fputs("fenmark: error: out of memory\n", stderr);
    }
    std::cout.flush();
    if (!std::cout && code == fenmark::cli::kDone) {
        std::cerr << "fenmark: standard output cannot be written\n";
        return fenmark::cli::kNotDone;
    }
    return code;
}
