// Measures the import. The comparisons print times, ratios and the bounds that the ratios must keep; what is registered
// with the benchmark library runs behind them. "reader" or "embedded" as the first argument measures that alone.
#include "import/embedded_bench.h"
#include "import/reader_bench.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    const std::string only = argc == 2 ? argv[1] : "";
    if (only == "reader" || only == "embedded") {
        argc = 1;
    }
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 2;
    }
    std::string folder = (std::filesystem::temp_directory_path() / "fenmark-bench-XXXXXX").string();
    if (mkdtemp(folder.data()) == nullptr) {
        std::perror(folder.c_str());
        return 1;
    }
    if (only != "embedded") {
        fenmark::bench::compareReader(folder);
    }
    if (only != "reader") {
        fenmark::bench::compareEmbedded(folder);
    }
    std::filesystem::remove_all(folder);
    if (only.empty()) {
        benchmark::RunSpecifiedBenchmarks();
    }
    return 0;
}
