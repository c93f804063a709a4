// Judges the spatial index of a layer from outside: SQLite's own check, and every box against its feature.
#pragma once

#include "drawing/drawing.h"

#include <sqlite3.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <map>
#include <string>
#include <vector>

namespace fenmark::drawing {

// A database that another program has open.
class OtherProgram {
  public:
    explicit OtherProgram(const std::string& path) { sqlite3_open(path.c_str(), &database_); }
    ~OtherProgram() { sqlite3_close(database_); }
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;

    // The rows, columns joined by "|"; an error as text.
    std::vector<std::string> ask(const std::string& sql) const {
        std::vector<std::string> rows;
        char* error = nullptr;
        const auto take = [](void* all, int count, char** values, char**) {
            std::string row;
            for (int i = 0; i < count; ++i) {
                row += (i > 0 ? "|" : "") + std::string(values[i] == nullptr ? "NULL" : values[i]);
            }
            static_cast<std::vector<std::string>*>(all)->push_back(row);
            return 0;
        };
        if (sqlite3_exec(database_, sql.c_str(), take, &rows, &error) != SQLITE_OK) {
            rows.emplace_back(error == nullptr ? "error" : error);
            sqlite3_free(error);
        }
        return rows;
    }
    std::string one(const std::string& sql) const {
        const std::vector<std::string> rows = ask(sql);
        return rows.empty() ? "" : rows.front();
    }
    sqlite3* get() const { return database_; }

  private:
    sqlite3* database_ = nullptr;
};

// The box of a blob: of its header if it bears one, else of the point behind it. A line without a box has no place.
inline Extent extentOfBlob(const unsigned char* blob) {
    constexpr int kHead = 8;
    constexpr int kPointBefore = 5; // byte order and type
    Extent extent;
    double value[4] = {};
    if (((blob[3] >> 1) & 7) != 0) {
        std::memcpy(value, blob + kHead, sizeof value);
        extent = {value[0], value[2], value[1], value[3]};
    } else if (const int type = blob[kHead + 1] + 256 * blob[kHead + 2]; type % 1000 == 1) {
        std::memcpy(value, blob + kHead + kPointBefore, 16);
        if (!std::isnan(value[0])) {
            extent.add(value[0], value[1]);
        }
    }
    return extent;
}

// Empty if the index holds just the features that have a place, each in a box of single precision around it.
inline std::string indexFault(const std::string& path, const std::string& layer) {
    const OtherProgram other(path);
    const std::string name = "rtree_" + layer + "_geom";
    if (const std::string check = other.one("SELECT rtreecheck('" + name + "')"); check != "ok") {
        return check;
    }
    std::map<std::int64_t, Extent> features;
    sqlite3_stmt* rows = nullptr;
    sqlite3_prepare_v2(other.get(), ("SELECT fid, geom FROM " + layer).c_str(), -1, &rows, nullptr);
    while (sqlite3_step(rows) == SQLITE_ROW) {
        const auto* blob = static_cast<const unsigned char*>(sqlite3_column_blob(rows, 1));
        if (blob == nullptr) {
            continue;
        }
        const Extent extent = extentOfBlob(blob);
        if (!extent.empty()) {
            features[sqlite3_column_int64(rows, 0)] = extent;
        }
    }
    sqlite3_finalize(rows);

    std::string fault;
    std::size_t boxes = 0;
    sqlite3_prepare_v2(other.get(), ("SELECT id, minx, maxx, miny, maxy FROM " + name).c_str(), -1, &rows, nullptr);
    while (sqlite3_step(rows) == SQLITE_ROW) {
        ++boxes;
        const std::int64_t id = sqlite3_column_int64(rows, 0);
        const auto found = features.find(id);
        if (found == features.end()) {
            fault = "a box of no feature: " + std::to_string(id);
            continue;
        }
        const Extent& extent = found->second;
        const double bounds[] = {extent.minX, extent.maxX, extent.minY, extent.maxY};
        for (int i = 0; i < 4; ++i) {
            const double bound = sqlite3_column_double(rows, i + 1);
            const double outwards = i % 2 == 0 ? bounds[i] - bound : bound - bounds[i];
            constexpr double kSinglePrecision = 1.2e-7 * 2.0;
            if (!(outwards >= 0.0) || outwards > kSinglePrecision * std::fabs(bounds[i])) {
                fault = "the box of " + std::to_string(id) + " is off by " + std::to_string(outwards);
            }
        }
    }
    sqlite3_finalize(rows);
    if (boxes != features.size()) {
        fault = std::to_string(boxes) + " boxes of " + std::to_string(features.size()) + " features";
    }
    return fault;
}

inline constexpr const char* kIndexedLayers[] = {"points", "polylines", "lots", "alignments"};

} // namespace fenmark::drawing
