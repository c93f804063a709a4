// Any bytes as a SIMA file: the whole command into a drawing on disk, and every exporter on what came of it.
#include "cli/commands.h"
#include "cli/messages.h"
#include "judge.h"
#include "sandbox.h"
#include "support/drawing_support.h"

#include <sstream>

namespace {

using namespace fenmark;
using fuzz::require;

// Options follow from the bytes, so that an input alone repeats a run.
std::uint64_t hashOf(const std::uint8_t* data, std::size_t size) {
    std::uint64_t hash = 1469598103934665603ULL;
    for (std::size_t i = 0; i < size; ++i) {
        hash = (hash ^ data[i]) * 1099511628211ULL;
    }
    return hash ^ (hash >> 29);
}

int import(const cli::ImportArguments& arguments, std::string& reported) {
    std::ostringstream out;
    std::ostringstream err;
    try {
        const int code = cli::runImport(arguments, {out, err}); // a file that fails does not stop the others
        reported = err.str();
        return code;
    } catch (const cli::Stop& stop) {
        reported = stop.what();
        return stop.code();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::uint64_t hash = hashOf(data, size);
    const fuzz::Sandbox& folder = fuzz::sandbox();
    cli::ImportArguments arguments;
    arguments.files = {folder.write("a.sim", std::string_view(reinterpret_cast<const char*>(data), size))};
    arguments.wanted.fill(true);
    arguments.planTangents = hash % 2 == 0;
    arguments.positiveRadius = std::array{host::embedded::PositiveRadius::Auto, host::embedded::PositiveRadius::Left,
                                          host::embedded::PositiveRadius::Right}[hash / 2 % 3];
    arguments.keepPartial = hash / 6 % 4 == 0;
    if (hash / 24 % 4 == 0) {
        arguments.shift = 0.1;
    }
    const std::string path = folder.at("a.gpkg");
    for (int run = 0; run < 2; ++run) { // into a new drawing, and into one that is there
        arguments.replace = run == 1 && hash / 96 % 2 == 0;
        const std::string before = fuzz::Sandbox::read(path);
        std::string reported;
        const int code = import(arguments, reported);
        require(code == cli::kDone || (code == cli::kNotDone && !reported.empty()), "done, or reported why not");
        const std::string after = fuzz::Sandbox::read(path);
        require(code != cli::kDone || after != before, "done means that the drawing has the import");
        require(code == cli::kDone || arguments.keepPartial || after == before, "not done leaves the drawing");
        if (after.empty()) {
            break;
        }
        drawing::Drawing drawing;
        drawing::DrawingStore store;
        const Outcome opened = store.open(path, drawing);
        require(static_cast<bool>(opened), "what was imported opens: " + opened.message.english);
        require(store.notes().empty(), "and nothing about it is odd");
        if (run == 0) {
            fuzz::judgeExports(drawing);
        }
    }
    folder.clear();
    return 0;
}
