// Image tiles of a web map from this machine: an MBTiles file or a folder of z/x/y pictures. Nothing is ever fetched.
#pragma once

#include <QCache>
#include <QImage>
#include <QString>

#include <memory>
#include <string>

namespace fenmark::drawing {
class Connection;
}

namespace fenmark::desk {

class TileSource {
  public:
    ~TileSource();
    TileSource(const TileSource&) = delete;
    TileSource& operator=(const TileSource&) = delete;

    // A folder, or a file of MBTiles; null if it is neither or has no tiles.
    static std::unique_ptr<TileSource> open(const QString& path);

    [[nodiscard]] int minZoom() const { return minZoom_; }
    [[nodiscard]] int maxZoom() const { return maxZoom_; }
    // Rows count from the north, as web maps number them. Null where there is no tile.
    [[nodiscard]] QImage tile(int zoom, int column, int row);
    // Keeps no more pictures that were read than have room in so many bytes.
    void keepWithin(qsizetype bytes);

  private:
    TileSource();
    bool openFolder(const QString& path);
    bool openFile(const QString& path);
    [[nodiscard]] QImage readTile(int zoom, int column, int row);

    QString folder_;
    std::unique_ptr<drawing::Connection> connection_; // of a file
    std::string query_;
    int minZoom_ = 0;
    int maxZoom_ = 0;
    QCache<QString, QImage> cache_;
};

} // namespace fenmark::desk
