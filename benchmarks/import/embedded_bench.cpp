// The import into a GeoPackage against the import into the recording doubles and a loop of inserts of the same rows.
#include "import/embedded_bench.h"

#include "drawing/geopackage/geometry_blob.h"
#include "drawing/geopackage/schema.h"
#include "host/adapter/host_adapter.h"
#include "host/embedded/embedded_host.h"
#include "import/embedded_geometry_bench.h"
#include "import/measured.h"
#include "import/reader_bench.h"
#include "output/drawing_output.h"
#include "sima/generator/sima_generator.h"
#include "sima/reader/sima_reader.h"

#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>

namespace fenmark::bench {

namespace {

namespace embedded = host::embedded;

constexpr int kRuns = 3;
constexpr double kMegabyte = 1e6;

void demand(bool holds, const std::string& what) {
    if (!holds) {
        std::fprintf(stderr, "%s\n", what.c_str());
        std::exit(1);
    }
}

class SilentProgress : public sima::Progress {
  public:
    std::int32_t goModal(std::string_view, bool) override { return 1; }
    void setRange(std::int64_t, std::int64_t, std::int32_t) override {}
    void setText(std::string_view) override {}
    void setPosition(std::int64_t) override {}
    void pump() override {}
};

class SilentFactory : public sima::ProgressFactory {
  public:
    std::unique_ptr<sima::Progress> create(std::string_view, bool) override {
        return std::make_unique<SilentProgress>();
    }
};

// A full pass into the current drawing of the embedded host, everything ticked.
void import(embedded::EmbeddedHost& host, const std::string& path) {
    host::HostAdapter adapter;
    output::DrawingOutput output(adapter);
    SilentFactory progress;
    sima::ReadContext context;
    context.progress = &progress;
    context.host = &adapter;
    context.sink = &output;
    sima::SimaReader reader;
    reader.options.flags.fill(true);
    reader.pointLayer = "0";
    reader.lotLayer = "0";
    reader.fullRead(path, context);
    reader.log.setFileName(path);
    reader.log.writeAll();
    demand(host.drawing().entityCount() > 0, "nothing was imported");
}

std::uint64_t importInto(const std::string& path, const std::string& drawingPath) {
    std::filesystem::remove(drawingPath);
    embedded::EmbeddedHost host;
    import(host, path);
    const Outcome result = host.currentDocument()->store().save(drawingPath, host.drawing());
    demand(static_cast<bool>(result), result.message.english);
    return host.drawing().lastId();
}

std::uint64_t importWithoutSaving(const std::string& path) {
    embedded::EmbeddedHost host;
    import(host, path);
    return host.drawing().lastId();
}

constexpr const char* kInsertPoint = "INSERT INTO points VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, NULL)";
constexpr const char* kInsertPolyline =
    "INSERT INTO polylines VALUES (?1, ?2, ?3, ?9, ?10, ?11, ?4, ?5, ?6, ?7, ?8, NULL)";
constexpr const char* kInsertLot = "INSERT INTO lots VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, 1, ?8, NULL)";

// The bare loop: the rows of a drawing that is in memory, by prepared inserts in one transaction, nothing else.
std::uint64_t insertRows(const drawing::Drawing& drawing, const std::string& path) {
    std::filesystem::remove(path);
    sqlite3* database = nullptr;
    // The message of a failure, once it has come about.
    const auto want = [&](bool holds) { demand(holds, holds ? "" : sqlite3_errmsg(database)); };
    const auto execute = [&](const char* text) {
        want(sqlite3_exec(database, text, nullptr, nullptr, nullptr) == SQLITE_OK);
    };
    demand(sqlite3_open(path.c_str(), &database) == SQLITE_OK, path);
    execute(drawing::sql::kPrepareNewFile);
    execute("BEGIN");
    execute(drawing::sql::kSchema);
    const auto prepare = [&](const char* text) {
        sqlite3_stmt* statement = nullptr;
        want(sqlite3_prepare_v2(database, text, -1, &statement, nullptr) == SQLITE_OK);
        return statement;
    };
    sqlite3_stmt* point = prepare(kInsertPoint);
    sqlite3_stmt* polyline = prepare(kInsertPolyline);
    sqlite3_stmt* lot = prepare(kInsertLot);
    drawing::BlobWriter blobs(-1);
    std::uint64_t rows = 0;
    const auto text = [](sqlite3_stmt* statement, int index, std::string_view value) {
        sqlite3_bind_text(statement, index, value.data(), static_cast<int>(value.size()), SQLITE_STATIC);
    };
    const auto insert = [&](sqlite3_stmt* statement, const drawing::EntityView& entity, std::span<const std::byte> blob,
                            int table, int first) {
        sqlite3_bind_int64(statement, 1, static_cast<sqlite3_int64>(entity.id.asUint64()));
        sqlite3_bind_blob(statement, 2, blob.data(), static_cast<int>(blob.size()), SQLITE_STATIC);
        text(statement, 3, entity.layer);
        if (table != 0) {
            text(statement, table, entity.row->table);
        }
        sqlite3_bind_int(statement, first, entity.row->no);
        text(statement, first + 1, entity.row->name);
        text(statement, first + 2, entity.row->type);
        text(statement, first + 3, entity.row->fileName);
        want(sqlite3_step(statement) == SQLITE_DONE);
        sqlite3_reset(statement);
        ++rows;
    };
    for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
        const drawing::EntityView entity = drawing.entity(i);
        if (entity.isPoint()) {
            insert(point, entity, blobs.point(entity.position()), 4, 5);
            continue;
        }
        sqlite3_bind_int(polyline, 9, entity.closed);
        sqlite3_bind_int(polyline, 10, static_cast<int>(entity.vertices.size()));
        sqlite3_bind_int(polyline, 11, 1);
        insert(polyline, entity, blobs.line(entity.vertices, entity.closed), 4, 5);
        if (entity.closed) {
            sqlite3_bind_double(lot, 8, entity.vertices.front().x); // as many bytes as its area
            insert(lot, entity, blobs.polygon(entity.vertices), 0, 4);
        }
    }
    execute("COMMIT");
    for (sqlite3_stmt* statement : {point, polyline, lot}) {
        sqlite3_finalize(statement);
    }
    sqlite3_close(database);
    return rows;
}

void compareWriting(const std::string& folder) {
    const std::string path = (std::filesystem::path(folder) / "million.sim").string();
    {
        std::ofstream file(path, std::ios::binary);
        sima::GeneratorSizes sizes;
        sizes.points = 1'000'000;
        sizes.lots = 250'000;
        sima::generateSima(file, sizes);
    }
    const std::string drawingPath = (std::filesystem::path(folder) / "million.gpkg").string();
    const std::string barePath = (std::filesystem::path(folder) / "bare.gpkg").string();
    Measured recording;
    Measured memory;
    Measured whole;
    for (int run = 0; run < kRuns; ++run) {
        measureOnce(recording, [&] { return readIntoRecordingHost(path); });
        measureOnce(memory, [&] { return importWithoutSaving(path); });
        measureOnce(whole, [&] { return importInto(path, drawingPath); });
    }
    Measured bare;
    Measured append;
    Measured load;
    {
        drawing::Drawing drawing;
        drawing::DrawingStore store;
        const Outcome opened = store.open(drawingPath, drawing);
        demand(static_cast<bool>(opened), opened.message.english);
        for (int run = 0; run < kRuns; ++run) {
            measureOnce(bare, [&] { return insertRows(drawing, barePath); });
        }
    }
    for (int run = 0; run < kRuns; ++run) {
        measureOnce(load, [&] {
            drawing::Drawing drawing;
            demand(static_cast<bool>(drawing::DrawingStore().open(drawingPath, drawing)), "not opened");
            return drawing.entityCount();
        });
        measureOnce(append, [&] {
            drawing::Drawing drawing;
            drawing::DrawingStore store;
            demand(static_cast<bool>(store.open(drawingPath, drawing, drawing::Load::WithoutEntities)), "not opened");
            drawing.addPoint({1, 2, 3}, 0);
            demand(static_cast<bool>(store.save(drawingPath, drawing)), "not appended");
            return drawing.lastId();
        });
    }
    const auto row = [](const char* what, const Measured& measured) {
        std::printf("  %-52s %8.3f s   peak %6.1f MB\n", what, measured.seconds, measured.peakBytes / kMegabyte);
    };
    std::printf("1,000,000 points and 250,000 lots into a drawing on disk:\n");
    row("into the recording doubles", recording);
    row("into the embedded host, not saved", memory);
    row("bare loop of prepared inserts of the same rows", bare);
    row("into the embedded host and its GeoPackage", whole);
    row("opening that drawing whole", load);
    row("appending one point to it", append);
    std::printf("  drawing / (recording + bare inserts) %5.2f   (at most 1.5)\n",
                whole.seconds / (recording.seconds + bare.seconds));
}

} // namespace

void compareEmbedded(const std::string& folder) {
    compareWriting(folder);
    compareGeometry();
}

} // namespace fenmark::bench
