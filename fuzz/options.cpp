// Any words as a command line, in a folder with a survey and its drawing.
//
// An input is one argument a line. A slash becomes an underline, so that no file outside the folder is named.
#include "cli/cli.h"
#include "require.h"
#include "sandbox.h"

#include <filesystem>
#include <sstream>
#include <vector>

namespace {

using namespace fenmark;
using fuzz::require;
using fuzz::Sandbox;

std::string survey() {
    return Sandbox::read(FENMARK_SOURCE_DIR "/fuzz/seeds/import/road.sim");
}

std::string drawingOf() {
    std::ostringstream out;
    std::ostringstream err;
    require(cli::run({"import", "a.sim", "--zone", "9"}, {out, err}) == cli::kDone, "the survey is imported");
    return Sandbox::read("a.gpkg");
}

void requirePrintable(const std::string& text) {
    for (const char c : text) {
        require(static_cast<unsigned char>(c) >= 0x20 || c == '\n' || c == '\t', "nothing but text is printed");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::filesystem::current_path(fuzz::sandbox().folder());
    static const std::string kSurvey = survey();
    fuzz::sandbox().write("a.sim", kSurvey);
    static const std::string kDrawing = drawingOf();
    fuzz::sandbox().write("a.gpkg", kDrawing);

    std::vector<std::string> arguments(1);
    for (std::size_t i = 0; i < size; ++i) {
        const char c = static_cast<char>(data[i]);
        if (c == '\n') {
            arguments.emplace_back();
        } else if (c != '\0') { // no program is started with a NUL in an argument
            arguments.back() += c == '/' ? '_' : c;
        }
    }
    std::ostringstream out;
    std::ostringstream err;
    const int code = cli::run(arguments, {out, err});
    require(code >= cli::kDone && code <= cli::kLogHasErrors, "a code of the list");
    const bool failed = code == cli::kNotDone || code == cli::kWrongUsage;
    require(!failed || err.str().find("fenmark: error: ") != std::string::npos, "a failure is reported");
    requirePrintable(out.str());
    requirePrintable(err.str());
    require(Sandbox::read("a.sim") == kSurvey || arguments.front() != "import", "an import never writes its input");
    fuzz::sandbox().clear();
    return 0;
}
