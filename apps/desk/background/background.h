// What lies under the plan, faded: shapes of other files and image tiles.
#pragma once

#include "desk/background/shapes.h"
#include "desk/background/tiles.h"
#include "desk/plan/view_transform.h"

#include <QPainter>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace fenmark::desk {

struct BackgroundLayer {
    QString path;
    BackgroundShapes shapes;
    std::unique_ptr<TileSource> tiles; // in place of shapes
};

class Background {
  public:
    // No more are read: a drawing may name as many as it likes.
    static constexpr std::size_t kMostLayers = 64;

    // Bytes of files that are read for a drawing unasked, all together, since the window waits for them.
    static constexpr std::int64_t kMostBytesUnasked = std::int64_t{512} << 20;

    // Reads the file or folder for a drawing of that zone; on failure nothing is added.
    BackgroundRead add(const QString& path, int zone);
    // How many bytes of a file that takes; of tiles none, as each is read when it comes into view.
    [[nodiscard]] static std::int64_t bytesToRead(const QString& path);
    void clear() { layers_.clear(); }
    [[nodiscard]] const std::vector<BackgroundLayer>& layers() const { return layers_; }

    // Strength from 0 (nothing) to 1.
    void paint(QPainter& painter, const ViewTransform& view, int zone, double strength) const;

  private:
    // They share the tiles of a picture and the room for them.
    [[nodiscard]] qsizetype tileLayers() const;

    std::vector<BackgroundLayer> layers_;
};

// The tile of a web map at a place, columns from 180 degrees west, rows from the north; fractions are places within it.
struct TilePlace {
    double column = 0.0;
    double row = 0.0;
};
[[nodiscard]] TilePlace tileAt(double longitude, double latitude, int zoom);
// Longitude and latitude, degrees, of a place of the tiles.
struct TileGround {
    double longitude = 0.0;
    double latitude = 0.0;
};
[[nodiscard]] TileGround groundOfTile(double column, double row, int zoom);

} // namespace fenmark::desk
