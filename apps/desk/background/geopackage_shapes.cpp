// Points and lines of any GeoPackage.
#include "desk/background/shapes.h"

#include "drawing/geopackage/file_system.h"
#include "drawing/geopackage/sqlite_handles.h"

#include <QFileInfo>
#include <QString>

#include <cstring>
#include <optional>
#include <span>

namespace fenmark::desk {

using drawing::Connection;
using drawing::Statement;
using host::PlanPoint;

namespace {

constexpr int kDeepest = 16; // collections within collections

// Reads the well-known binary of a geometry; whatever is cut short or odd counts as left out.
class Geometry {
  public:
    Geometry(std::span<const std::byte> blob, BackgroundShapes& shapes, const ToZone& toZone)
        : rest_(blob), shapes_(shapes), toZone_(toZone) {}

    void read() {
        constexpr std::size_t kHeader = 8;
        constexpr std::size_t kEnvelopes[] = {0, 32, 48, 48, 64};
        if (rest_.size() < kHeader || rest_[0] != std::byte{'G'} || rest_[1] != std::byte{'P'}) {
            ++shapes_.leftOut;
            return;
        }
        const auto flags = static_cast<unsigned>(rest_[3]);
        const unsigned envelope = (flags >> 1U) & 7U;
        if (envelope > 4 || rest_.size() < kHeader + kEnvelopes[envelope]) {
            ++shapes_.leftOut;
            return;
        }
        rest_ = rest_.subspan(kHeader + kEnvelopes[envelope]);
        if (!geometry(0)) {
            ++shapes_.leftOut;
        }
    }

  private:
    template <typename T>
    std::optional<T> number() {
        if (rest_.size() < sizeof(T)) {
            return std::nullopt;
        }
        std::byte bytes[sizeof(T)];
        for (std::size_t i = 0; i < sizeof(T); ++i) {
            bytes[i] = rest_[little_ == nativeIsLittle() ? i : sizeof(T) - 1 - i];
        }
        rest_ = rest_.subspan(sizeof(T));
        T value{};
        std::memcpy(&value, bytes, sizeof(T));
        return value;
    }
    static bool nativeIsLittle() {
        const std::uint16_t one = 1;
        return *reinterpret_cast<const unsigned char*>(&one) == 1;
    }

    std::optional<PlanPoint> position() {
        const auto x = number<double>();
        const auto y = number<double>();
        for (int i = 0; i < further_; ++i) {
            if (!number<double>()) {
                return std::nullopt;
            }
        }
        return x && y ? std::optional(toZone_(*x, *y)) : std::nullopt;
    }

    bool line() {
        const auto count = number<std::uint32_t>();
        if (!count || *count > rest_.size() / (2 * sizeof(double))) {
            return false;
        }
        std::vector<PlanPoint> points;
        points.reserve(*count);
        for (std::uint32_t i = 0; i < *count; ++i) {
            const auto at = position();
            if (!at) {
                return false;
            }
            points.push_back(*at);
        }
        shapes_.addLine(std::move(points));
        return true;
    }

    bool geometry(int depth) {
        if (rest_.empty() || depth > kDeepest) {
            return false;
        }
        little_ = rest_[0] == std::byte{1};
        rest_ = rest_.subspan(1);
        const auto type = number<std::uint32_t>();
        if (!type) {
            return false;
        }
        // Heights and measures: in thousands, or as the two highest bits.
        const std::uint32_t plain = *type & 0x0FFFFFFFU;
        const std::uint32_t dimensions = plain / 1000U;
        further_ = dimensions == 3 ? 2 : dimensions > 0 ? 1 : 0;
        further_ += static_cast<int>((*type >> 31U) & 1U) + static_cast<int>((*type >> 30U) & 1U);
        switch (plain % 1000U) {
        case 1: {
            const auto at = position();
            if (at) {
                shapes_.addPoint(*at);
            }
            return at.has_value();
        }
        case 2:
            return line();
        case 3: {
            const auto rings = number<std::uint32_t>();
            for (std::uint32_t i = 0; rings && i < *rings; ++i) {
                if (!line()) {
                    return false;
                }
            }
            return rings.has_value();
        }
        case 4:
        case 5:
        case 6:
        case 7: {
            const auto parts = number<std::uint32_t>();
            for (std::uint32_t i = 0; parts && i < *parts; ++i) {
                if (!geometry(depth + 1)) {
                    return false;
                }
            }
            return parts.has_value();
        }
        default:
            return false; // curves and surfaces
        }
    }

    std::span<const std::byte> rest_;
    BackgroundShapes& shapes_;
    const ToZone& toZone_;
    bool little_ = true;
    int further_ = 0; // numbers of a position behind x and y
};

struct Layer {
    std::string table;
    std::string column;
    std::int64_t reference = 0;
};

} // namespace

BackgroundRead readGeoPackage(const std::string& path, int zone) {
    BackgroundRead read;
    if (!QFileInfo::exists(QString::fromStdString(path))) {
        read.error = BackgroundError::NotReadable;
        return read;
    }
    try {
        drawing::requireReadable(path);
        Connection connection(path, drawing::modeToRead(path));
        std::vector<Layer> layers;
        {
            Statement statement(connection,
                                "SELECT table_name, column_name, min(srs_id) FROM gpkg_geometry_columns"
                                " GROUP BY table_name COLLATE NOCASE, column_name COLLATE NOCASE ORDER BY table_name");
            while (statement.step()) {
                layers.push_back(
                    {std::string(statement.text(0)), std::string(statement.text(1)), statement.integer(2)});
            }
        }
        for (const Layer& layer : layers) {
            const ToZone toZone(layer.reference, zone);
            if (toZone.error() != BackgroundError::None) {
                read.error = toZone.error();
                read.detail = "EPSG:" + std::to_string(layer.reference);
                continue; // another layer may be of use
            }
            const std::string sql = "SELECT " + drawing::quoted(layer.column) + " FROM " + drawing::quoted(layer.table);
            Statement statement(connection, sql.c_str());
            while (statement.step()) {
                if (!statement.isNull(0)) {
                    Geometry(statement.blob(0), read.shapes, toZone).read();
                }
            }
        }
        if (!read.shapes.points.empty() || !read.shapes.lines.empty()) {
            read.error = BackgroundError::None;
        }
    } catch (const drawing::StoreFailure& failure) {
        read.shapes = {};
        const bool isThere = failure.failure != Failure::NotFound && failure.failure != Failure::NotReadable;
        read.error = isThere ? BackgroundError::NotThisFormat : BackgroundError::NotReadable;
        read.detail = failure.detail.english;
    }
    return read;
}

} // namespace fenmark::desk
