// Any bytes as a SIMA file: both passes, the output into the recording doubles, and what must hold whatever they read.
#include "host/recording/recording_host.h"
#include "output/drawing_output.h"
#include "sima/reader/sima_reader.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

namespace {

using namespace fenmark;

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

void readAll(const std::string& path, sima::Encoding encoding) {
    host::RecordingHost host;
    output::DrawingOutput output(host);
    sima::ReadContext context;
    context.sink = &output;
    context.host = &host;
    context.encoding = encoding;

    sima::SimaReader preview;
    try {
        require(preview.previewScan(path, context) == 0);
    } catch (const std::invalid_argument&) {
        // a record too short for a field that the reader takes: the stated end of a pass
    }
    require(preview.log.lines().empty() && preview.log.errors().empty());

    sima::SimaReader reader;
    reader.options.flags.fill(true);
    reader.shiftDistance = 0.1;
    try {
        require(reader.fullRead(path, context) == 0);
        require(!reader.log.lines().empty());
    } catch (const std::invalid_argument&) {
    }
    require(reader.log.errors().size() == 4 * static_cast<std::size_t>(reader.log.errorCount()));
    for (std::size_t i = 0; i < reader.log.lines().size(); ++i) {
        require(!reader.log.lines()[i].empty());
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const int file = memfd_create("input", 0);
    if (file < 0 || write(file, data, size) != static_cast<ssize_t>(size)) {
        std::abort();
    }
    const std::string path = "/proc/self/fd/" + std::to_string(file);
    readAll(path, sima::Encoding::Cp932);
    readAll(path, sima::Encoding::Utf8);
    close(file);
    return 0;
}
