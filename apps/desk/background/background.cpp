// What lies under the plan.
//
// Tiles are pictures in the spherical Mercator projection of web maps. Each is drawn into the quadrangle that its corners
// have in the drawing's zone, which a tile of a few hundred metres differs from by less than a pixel.
#include "desk/background/background.h"

#include "desk/plan/plan_style.h"
#include "exchange/geographic.h"
#include "platform/files.h"

#include <QFileInfo>
#include <QPen>
#include <QPolygonF>
#include <QTransform>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace fenmark::desk {

using host::PlanPoint;

namespace {

constexpr double kEquator = 40075016.686; // metres, of the sphere of web maps
constexpr int kTilePixels = 256;
constexpr double kMostTiles = 400.0;                  // in one picture; more, and a coarser zoom is taken
constexpr qsizetype kTileRoom = qsizetype{512} << 20; // bytes of tiles that are kept, which is room for one picture
constexpr double kDegree = std::numbers::pi / 180.0;

QColor shapeInk() {
    constexpr int kDarkBelow = 128;
    return kPaper.lightness() < kDarkBelow ? QColor(0xd7, 0xc9, 0xb0) : QColor(0x5d, 0x4e, 0x37);
}

bool meets(const drawing::Extent& a, const drawing::Extent& b) {
    return a.minX <= b.maxX && b.minX <= a.maxX && a.minY <= b.maxY && b.minY <= a.maxY;
}

void paintShapes(QPainter& painter, const ViewTransform& view, const BackgroundShapes& shapes) {
    const drawing::Extent visible = view.visible(4.0);
    if (shapes.extent.empty() || !meets(shapes.extent, visible)) {
        return;
    }
    painter.setPen(QPen(shapeInk(), 1.0));
    painter.setBrush(Qt::NoBrush);
    for (const BackgroundLine& line : shapes.lines) {
        if (!meets(line.extent, visible)) {
            continue;
        }
        QPolygonF pixels;
        for (const PlanPoint& point : line.points) {
            pixels.append(view.toPixel(point.x, point.y));
        }
        painter.drawPolyline(pixels);
    }
    painter.setPen(QPen(shapeInk(), 3.0, Qt::SolidLine, Qt::RoundCap));
    for (const PlanPoint& point : shapes.points) {
        if (point.x >= visible.minX && point.x <= visible.maxX && point.y >= visible.minY && point.y <= visible.maxY) {
            painter.drawPoint(view.toPixel(point.x, point.y));
        }
    }
}

// The tiles of a zoom that meet what is in view.
struct TileRange {
    int firstColumn = 0;
    int lastColumn = -1;
    int firstRow = 0;
    int lastRow = -1;

    [[nodiscard]] double count() const {
        return (static_cast<double>(lastColumn) - firstColumn + 1.0) * (static_cast<double>(lastRow) - firstRow + 1.0);
    }
};

TileRange tilesInView(const exchange::PlaneZone& zone, const drawing::Extent& visible, int zoom) {
    double west = 1e9;
    double east = -1e9;
    double north = 1e9;
    double south = -1e9;
    for (const double fx : {0.0, 0.5, 1.0}) {
        for (const double fy : {0.0, 0.5, 1.0}) {
            const auto at = zone.geographic(visible.minX + fx * (visible.maxX - visible.minX),
                                            visible.minY + fy * (visible.maxY - visible.minY));
            if (at) {
                const TilePlace place = tileAt(at->longitude, at->latitude, zoom);
                west = std::min(west, place.column);
                east = std::max(east, place.column);
                north = std::min(north, place.row);
                south = std::max(south, place.row);
            }
        }
    }
    if (!(west <= east)) {
        return {};
    }
    const double last = std::exp2(zoom) - 1.0;
    const auto whole = [last](double value) { return static_cast<int>(std::clamp(std::floor(value), 0.0, last)); };
    return {whole(west), whole(east), whole(north), whole(south)};
}

void paintTiles(QPainter& painter, const ViewTransform& view, TileSource& tiles, int zoneNumber, double mostTiles) {
    const exchange::PlaneZone zone(zoneNumber);
    const drawing::Extent visible = view.visible();
    const auto middle = zone.geographic((visible.minX + visible.maxX) / 2.0, (visible.minY + visible.maxY) / 2.0);
    if (!middle) {
        return;
    }
    // The zoom whose pixels are about those of the window.
    const double metres = kEquator * std::cos(middle->latitude * kDegree) / kTilePixels; // of a pixel at zoom 0
    const double wanted = std::round(std::log2(metres / view.metresPerPixel()));
    int zoom = static_cast<int>(
        std::clamp(wanted, static_cast<double>(tiles.minZoom()), static_cast<double>(tiles.maxZoom())));
    TileRange range = tilesInView(zone, visible, zoom);
    while (range.count() > mostTiles && zoom > tiles.minZoom()) {
        range = tilesInView(zone, visible, --zoom);
    }
    if (range.count() > mostTiles) {
        return; // all tiles together would be a dot
    }
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    for (int column = range.firstColumn; column <= range.lastColumn; ++column) {
        for (int row = range.firstRow; row <= range.lastRow; ++row) {
            const QImage image = tiles.tile(zoom, column, row);
            if (image.isNull()) {
                continue;
            }
            QPolygonF corners;
            for (const auto& [c, r] : {std::pair(0, 0), std::pair(1, 0), std::pair(1, 1), std::pair(0, 1)}) {
                const TileGround ground = groundOfTile(column + c, row + r, zoom);
                if (const auto at = zone.plane({ground.longitude, ground.latitude})) {
                    corners.append(view.toPixel(at->x, at->y));
                }
            }
            const QPolygonF from{{0.0, 0.0},
                                 {static_cast<double>(image.width()), 0.0},
                                 {static_cast<double>(image.width()), static_cast<double>(image.height())},
                                 {0.0, static_cast<double>(image.height())}};
            QTransform transform;
            if (corners.size() == 4 && QTransform::quadToQuad(from, corners, transform)) {
                painter.save();
                painter.setTransform(transform, true);
                painter.drawImage(QPointF(0.0, 0.0), image);
                painter.restore();
            }
        }
    }
}

bool isTiles(const QFileInfo& file) {
    return file.isDir() || file.suffix().compare(QLatin1String("mbtiles"), Qt::CaseInsensitive) == 0;
}

} // namespace

TilePlace tileAt(double longitude, double latitude, int zoom) {
    const double tiles = std::exp2(zoom);
    const double mercator = std::asinh(std::tan(latitude * kDegree));
    return {(longitude + 180.0) / 360.0 * tiles, (1.0 - mercator / std::numbers::pi) / 2.0 * tiles};
}

TileGround groundOfTile(double column, double row, int zoom) {
    const double tiles = std::exp2(zoom);
    return {column / tiles * 360.0 - 180.0,
            std::atan(std::sinh(std::numbers::pi * (1.0 - 2.0 * row / tiles))) / kDegree};
}

std::int64_t Background::bytesToRead(const QString& path) {
    const QFileInfo file(path);
    return isTiles(file) ? 0 : file.size();
}

BackgroundRead Background::add(const QString& path, int zone) {
    BackgroundLayer layer;
    layer.path = path;
    BackgroundRead read;
    if (layers_.size() >= kMostLayers) {
        read.error = BackgroundError::TooMany;
        return read;
    }
    const QFileInfo info(path);
    // A drawing names its backgrounds: a pipe or a device among them would be waited for, or read without end.
    if (const platform::PathKind kind = platform::lookUp(path.toStdString()).kind;
        kind != platform::PathKind::File && kind != platform::PathKind::Folder) {
        read.error = BackgroundError::NotReadable;
        return read;
    }
    if (isTiles(info)) {
        layer.tiles = TileSource::open(path);
        read.error = !layer.tiles ? BackgroundError::NotThisFormat
                     : zone == 0  ? BackgroundError::NeedsZone
                                  : BackgroundError::None;
    } else {
        read = readShapes(path.toStdString(), zone);
    }
    if (read.error == BackgroundError::None) {
        layer.shapes = read.shapes;
        layers_.push_back(std::move(layer));
        for (const BackgroundLayer& each : layers_) {
            if (each.tiles) {
                each.tiles->keepWithin(kTileRoom / tileLayers());
            }
        }
    }
    return read;
}

qsizetype Background::tileLayers() const {
    return std::count_if(layers_.begin(), layers_.end(),
                         [](const BackgroundLayer& layer) { return layer.tiles != nullptr; });
}

void Background::paint(QPainter& painter, const ViewTransform& view, int zone, double strength) const {
    painter.setOpacity(strength);
    for (const bool pictures : {true, false}) { // shapes lie on the pictures
        for (const BackgroundLayer& layer : layers_) {
            if (pictures && layer.tiles && zone > 0) {
                paintTiles(painter, view, *layer.tiles, zone, kMostTiles / static_cast<double>(tileLayers()));
            } else if (!pictures && !layer.tiles) {
                paintShapes(painter, view, layer.shapes);
            }
        }
    }
}

} // namespace fenmark::desk
