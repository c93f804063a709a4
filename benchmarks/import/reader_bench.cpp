// The reader against its baselines, its memory, and how its time grows with the file.
#include "import/reader_bench.h"

#include "host/recording/recording_host.h"
#include "import/baselines.h"
#include "import/measured.h"
#include "output/drawing_output.h"
#include "sima/generator/sima_generator.h"
#include "sima/reader/sima_reader.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>

namespace fenmark::bench {

namespace {

constexpr int kRuns = 3;
constexpr double kMegabyte = 1e6;

// Takes the positions of every line, as a window would.
class CountingProgress : public sima::Progress {
  public:
    explicit CountingProgress(std::uint64_t& calls) : calls_(calls) {}
    std::int32_t goModal(std::string_view, bool) override { return 1; }
    void setRange(std::int64_t, std::int64_t, std::int32_t) override {}
    void setText(std::string_view) override {}
    void setPosition(std::int64_t) override { ++calls_; }
    void pump() override { ++calls_; }

  private:
    std::uint64_t& calls_;
};

class CountingFactory : public sima::ProgressFactory {
  public:
    std::uint64_t calls = 0;
    std::unique_ptr<sima::Progress> create(std::string_view, bool) override {
        return std::make_unique<CountingProgress>(calls);
    }
};

std::string generate(const std::string& folder, const char* name, const sima::GeneratorSizes& sizes) {
    const std::string path = (std::filesystem::path(folder) / name).string();
    // In a process of its own, so that its memory is not counted with what is measured.
    Measured generation;
    measureOnce(generation, [&path, &sizes] {
        std::ofstream file(path, std::ios::binary);
        sima::generateSima(file, sizes);
        file.close();
        return file ? std::uint64_t{1} : std::uint64_t{0};
    });
    if (generation.result != 1) {
        std::perror(path.c_str());
        std::exit(1);
    }
    return path;
}

double sizeOf(const std::string& path) {
    return static_cast<double>(std::filesystem::file_size(path));
}

Measured best(const std::function<std::uint64_t()>& work) {
    Measured measured;
    for (int run = 0; run < kRuns; ++run) {
        measureOnce(measured, work);
    }
    return measured;
}

void printRow(const char* what, const Measured& measured, double bytes) {
    std::printf("  %-46s %8.3f s %8.0f MB/s   peak %6.1f MB = %4.2f x file\n", what, measured.seconds,
                bytes / measured.seconds / kMegabyte, measured.peakBytes / kMegabyte, measured.peakBytes / bytes);
}

void compareWhole(const std::string& folder, bool padded) {
    sima::GeneratorSizes sizes;
    sizes.points = 1'000'000;
    sizes.lots = 250'000;
    sizes.padded = padded;
    const std::string path = generate(folder, "million.sim", sizes);
    const double bytes = sizeOf(path);
    std::printf("1,000,000 points and 250,000 lots%s, %.1f MB:\n", padded ? ", padded with blanks" : "",
                bytes / kMegabyte);

    // Side by side: one run of each in turn, so that all see the same machine.
    Measured floor;
    Measured cut;
    Measured stream;
    Measured nothing;
    Measured preview;
    Measured recording;
    for (int run = 0; run < kRuns; ++run) {
        measureOnce(floor, [&path] { return mapSplitConvert(path); });
        measureOnce(cut, [&path] { return getlineIconvCut(path); });
        measureOnce(stream, [&path] { return getlineIconvStream(path); });
        measureOnce(nothing, [&path] { return readIntoNothing(path); });
        measureOnce(preview, [&path] { return previewOnly(path); });
        measureOnce(recording, [&path] { return readIntoRecordingHost(path); });
    }
    printRow("floor: map, split, convert coordinates", floor, bytes);
    printRow("getline, iconv by line, wide strings by cutting", cut, bytes);
    printRow("getline, iconv by line, wide strings by stream", stream, bytes);
    printRow("preview", preview, bytes);
    printRow("reader, validators, log; no output", nothing, bytes);
    printRow("reader, validators, log, output into recording", recording, bytes);
    std::printf("  recording / floor         %5.2f   (at most 3)\n", recording.seconds / floor.seconds);
    std::printf("  recording / getline loop  %5.2f by cutting, %.2f by stream   (at most 0.3)\n",
                recording.seconds / cut.seconds, recording.seconds / stream.seconds);
    std::printf("  peak memory / file        %5.2f   (at most 4)\n", recording.peakBytes / bytes);
}

void compareGrowth(const std::string& folder) {
    std::printf("growth, reader with output into the recording doubles (at most 11 for ten times the input):\n");
    double before = 0.0;
    for (const std::int32_t points : {10'000, 100'000, 1'000'000}) {
        sima::GeneratorSizes sizes;
        sizes.points = points;
        sizes.lots = points / 4;
        const std::string path = generate(folder, "growth.sim", sizes);
        const Measured measured = best([&path] { return readIntoRecordingHost(path); });
        std::printf("  %9d points %9.4f s", points, measured.seconds);
        if (before > 0.0) {
            std::printf("   %5.2f times", measured.seconds / before);
        }
        std::printf("\n");
        before = measured.seconds;
    }
    before = 0.0;
    for (const std::int32_t routes : {200, 2'000}) {
        sima::GeneratorSizes sizes;
        sizes.points = 100 * routes;
        sizes.lots = 0;
        sizes.routes = routes;
        const std::string path = generate(folder, "routes.sim", sizes);
        const Measured measured = best([&path] { return readIntoNothing(path); });
        std::printf("  %9d routes over %d points %9.4f s", routes, sizes.points, measured.seconds);
        if (before > 0.0) {
            std::printf("   %5.2f times", measured.seconds / before);
        }
        std::printf("\n");
        before = measured.seconds;
    }
}

} // namespace

std::uint64_t readIntoNothing(const std::string& path) {
    CountingFactory progress;
    sima::ReadContext context;
    context.progress = &progress;
    sima::SimaReader reader;
    reader.fullRead(path, context);
    return reader.points.size() + reader.lots.size() + reader.alignments.size() + progress.calls;
}

std::uint64_t readIntoRecordingHost(const std::string& path) {
    CountingFactory progress;
    host::RecordingHost host;
    output::DrawingOutput output(host);
    sima::ReadContext context;
    context.progress = &progress;
    context.host = &host;
    context.sink = &output;
    sima::SimaReader reader;
    reader.options.flags.fill(true);
    reader.pointLayer = "0";
    reader.lotLayer = "0";
    reader.fullRead(path, context);
    reader.log.setFileName(path);
    reader.log.writeAll();
    return host.drawing.pointCount() + host.drawing.polylineCount() + host.rows.rowCount() + progress.calls;
}

std::uint64_t previewOnly(const std::string& path) {
    sima::SimaReader reader;
    reader.previewScan(path, {});
    return reader.points.size() + reader.lots.size();
}

void compareReader(const std::string& folder) {
    compareWhole(folder, true);
    compareWhole(folder, false);
    compareGrowth(folder);
}

} // namespace fenmark::bench
