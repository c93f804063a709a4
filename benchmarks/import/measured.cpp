// Time and peak memory of a piece of work.
#include "import/measured.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fenmark::bench {

namespace {

struct Report {
    double seconds;
    std::uint64_t result;
};

// Of this process, the kernel's part included. All work here is one thread on files in the page cache, so that this is
// what a quiet machine's clock would show.
double processorSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

[[noreturn]] void fail(const char* what) {
    std::perror(what);
    std::exit(1);
}

constexpr std::size_t kTouchedBytes = std::size_t{320} << 20;
constexpr std::size_t kSmallPage = 4096;

// Takes memory from the system and gives it back. A virtual machine returns memory that lay free for some seconds to its
// host, and fetching it anew takes the import up to 0.2 s: without this the same run is measured at 0.15 s or at 0.35 s.
// All contenders begin alike.
void touchMemory() {
    void* memory = mmap(nullptr, kTouchedBytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) {
        fail("mmap");
    }
    madvise(memory, kTouchedBytes, MADV_HUGEPAGE);
    for (std::size_t at = 0; at < kTouchedBytes; at += kSmallPage) {
        static_cast<volatile char*>(memory)[at] = 1;
    }
    munmap(memory, kTouchedBytes);
}

} // namespace

void measureOnce(Measured& measured, const std::function<std::uint64_t()>& work) {
    int channel[2];
    if (pipe(channel) != 0) {
        fail("pipe");
    }
    std::fflush(nullptr);
    touchMemory();
    const pid_t child = fork();
    if (child < 0) {
        fail("fork");
    }
    if (child == 0) {
        const double start = processorSeconds();
        const std::uint64_t result = work();
        const Report report{processorSeconds() - start, result};
        _exit(write(channel[1], &report, sizeof report) == sizeof report ? 0 : 1);
    }
    close(channel[1]);
    Report report{};
    const bool complete = read(channel[0], &report, sizeof report) == sizeof report;
    close(channel[0]);
    int status = 0;
    rusage usage{};
    if (wait4(child, &status, 0, &usage) != child || status != 0 || !complete) {
        std::fprintf(stderr, "the measured work failed\n");
        std::exit(1);
    }
    measured.seconds = std::min(measured.seconds, report.seconds);
    measured.peakBytes = std::max(measured.peakBytes, static_cast<double>(usage.ru_maxrss) * 1024.0);
    measured.result = report.result;
}

} // namespace fenmark::bench
