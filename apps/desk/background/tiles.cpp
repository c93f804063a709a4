// Image tiles of a web map from this machine.
#include "desk/background/tiles.h"

#include "drawing/geopackage/file_system.h"
#include "drawing/geopackage/sqlite_handles.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QImageReader>

#include <algorithm>

namespace fenmark::desk {

using drawing::Connection;
using drawing::Statement;

namespace {

constexpr int kDeepestZoom = 24;
constexpr int kLargestTile = 1024; // pixels of a side: a small file may hold a picture that fills the memory
constexpr int kFinestTile = 512;   // pixels of a side: more than that is not seen
constexpr qsizetype kUnit = 1024;  // bytes that the cache counts as one
constexpr const char* kSuffixes[] = {"png", "jpg", "jpeg"};

// Files of the format keep their tiles in one table, or, where many are alike, in two.
struct Queries {
    const char* zooms;
    const char* tile;
};
constexpr Queries kQueries[] = {
    {"SELECT min(zoom_level), max(zoom_level) FROM tiles",
     "SELECT tile_data FROM tiles WHERE zoom_level = ?1 AND tile_column = ?2 AND tile_row = ?3"},
    {"SELECT min(zoom_level), max(zoom_level) FROM map",
     "SELECT images.tile_data FROM map JOIN images ON images.tile_id = map.tile_id"
     " WHERE map.zoom_level = ?1 AND map.tile_column = ?2 AND map.tile_row = ?3"},
};

QImage readPicture(QImageReader& reader) {
    const QSize size = reader.size();
    if (!size.isValid() || size.width() > kLargestTile || size.height() > kLargestTile) {
        return {};
    }
    if (size.width() > kFinestTile || size.height() > kFinestTile) {
        reader.setScaledSize(size.scaled(kFinestTile, kFinestTile, Qt::KeepAspectRatio));
    }
    return reader.read();
}

} // namespace

TileSource::TileSource() = default;
TileSource::~TileSource() = default;

std::unique_ptr<TileSource> TileSource::open(const QString& path) {
    std::unique_ptr<TileSource> source(new TileSource);
    const bool opened = QFileInfo(path).isDir() ? source->openFolder(path) : source->openFile(path);
    return opened ? std::move(source) : nullptr;
}

bool TileSource::openFolder(const QString& path) {
    folder_ = path;
    minZoom_ = kDeepestZoom + 1;
    maxZoom_ = -1;
    for (const QString& name : QDir(path).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        bool number = false;
        const int zoom = name.toInt(&number);
        if (number && zoom >= 0 && zoom <= kDeepestZoom) {
            minZoom_ = std::min(minZoom_, zoom);
            maxZoom_ = std::max(maxZoom_, zoom);
        }
    }
    return maxZoom_ >= 0;
}

bool TileSource::openFile(const QString& path) {
    try {
        drawing::requireReadable(path.toStdString());
        connection_ = std::make_unique<Connection>(path.toStdString(), Connection::Mode::Read);
    } catch (const drawing::StoreFailure&) {
        return false;
    }
    for (const Queries& queries : kQueries) {
        try {
            Statement statement(*connection_, queries.zooms);
            if (statement.step() && !statement.isNull(0)) {
                minZoom_ = static_cast<int>(std::clamp<std::int64_t>(statement.integer(0), 0, kDeepestZoom));
                maxZoom_ = static_cast<int>(std::clamp<std::int64_t>(statement.integer(1), 0, kDeepestZoom));
                query_ = queries.tile;
                return true;
            }
        } catch (const drawing::StoreFailure&) {
            continue; // no such table
        }
    }
    return false;
}

QImage TileSource::tile(int zoom, int column, int row) {
    const QString key = QStringLiteral("%1/%2/%3").arg(zoom).arg(column).arg(row);
    if (const QImage* kept = cache_.object(key)) {
        return *kept;
    }
    const QImage read = readTile(zoom, column, row);
    cache_.insert(key, new QImage(read), 1 + read.sizeInBytes() / kUnit); // also that there is none
    return read;
}

void TileSource::keepWithin(qsizetype bytes) {
    cache_.setMaxCost(bytes / kUnit);
}

QImage TileSource::readTile(int zoom, int column, int row) {
    if (!connection_) {
        for (const char* suffix : kSuffixes) {
            const QString file =
                QStringLiteral("%1/%2/%3/%4.%5").arg(folder_).arg(zoom).arg(column).arg(row).arg(QLatin1String(suffix));
            if (QFileInfo(file).isFile()) {
                QImageReader reader(file);
                return readPicture(reader);
            }
        }
        return {};
    }
    try {
        connection_->expectRows(1);
        Statement statement(*connection_, query_.c_str());
        const std::int64_t fromSouth = (std::int64_t{1} << zoom) - 1 - row; // the file counts rows from the south
        statement.bind(1, std::int64_t{zoom}).bind(2, std::int64_t{column}).bind(3, fromSouth);
        if (statement.step()) {
            const auto blob = statement.blob(0);
            QByteArray bytes(reinterpret_cast<const char*>(blob.data()), static_cast<qsizetype>(blob.size()));
            QBuffer buffer(&bytes);
            QImageReader reader(&buffer);
            return readPicture(reader);
        }
    } catch (const drawing::StoreFailure&) {
        return {}; // a damaged tile is a gap in the background
    }
    return {};
}

} // namespace fenmark::desk
