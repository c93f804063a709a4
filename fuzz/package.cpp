// A drawing whose bytes were changed on the disk.
//
// An input is a list of changes to the bytes of a sound package: a place, how many bytes, and the bytes. An input that
// begins with "SQLite format 3" is a whole file.
#include "bytes.h"
#include "sandbox.h"

#include <algorithm>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace fenmark::fuzz;
    static const std::string kSample = samplePackage();
    Bytes bytes(data, size);
    std::string package = kSample;
    if (bytes.rest().starts_with("SQLite format 3")) {
        package = bytes.rest();
    } else {
        while (!bytes.empty()) {
            // The head of the file and of its pages matter more than the rest.
            const auto where = bytes.take<std::uint8_t>();
            std::size_t at = bytes.take<std::uint32_t>();
            at = where < 64 ? at % 100 : where < 128 ? (at / 16 * 8192 + at % 16) : at;
            const std::string_view written = bytes.text(1 + bytes.take<std::uint8_t>() % 16);
            at %= kSample.size();
            std::copy_n(written.begin(), std::min(written.size(), kSample.size() - at),
                        package.begin() + static_cast<std::ptrdiff_t>(at));
            if (where == 255) {
                package.resize(at);
                break;
            }
        }
    }
    judgePackage(sandbox().write("x.gpkg", package));
    sandbox().clear();
    return 0;
}
