// Points and lines of other files: reference systems, GeoJSON, and the choice by the file's name.
#include "desk/background/shapes.h"

#include "exchange/geographic.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QString>

#include <cmath>
#include <limits>
#include <numbers>
#include <utility>

namespace fenmark::desk {

using host::PlanPoint;

namespace {

constexpr long long kFirstJgd2011 = 6669; // of nineteen zones
constexpr long long kFirstJgd2000 = 2443;
constexpr int kZones = 19;
constexpr long long kGeographic[] = {4326, 6668, 4612, 4979, 6697}; // WGS 84, JGD2011, JGD2000, and with heights
constexpr long long kWebMercator = 3857;
constexpr double kMercatorRadius = 6378137.0; // metres
constexpr qint64 kLargestText = 512LL << 20;  // bytes
constexpr int kDeepest = 32;                  // collections within collections

bool isPlace(const PlanPoint& point) {
    return std::isfinite(point.x) && std::isfinite(point.y);
}

class GeoJson {
  public:
    GeoJson(BackgroundShapes& shapes, const ToZone& toZone) : shapes_(shapes), toZone_(toZone) {}

    // A feature, a collection of them, or a geometry.
    void add(const QJsonObject& object, int depth) {
        const QString type = object.value(QLatin1String("type")).toString();
        if (depth > kDeepest) {
            ++shapes_.leftOut;
        } else if (type == QLatin1String("FeatureCollection")) {
            each(object.value(QLatin1String("features")).toArray(), depth);
        } else if (type == QLatin1String("GeometryCollection")) {
            each(object.value(QLatin1String("geometries")).toArray(), depth);
        } else if (type == QLatin1String("Feature")) {
            if (object.value(QLatin1String("geometry")).isObject()) {
                add(object.value(QLatin1String("geometry")).toObject(), depth + 1);
            }
        } else {
            addGeometry(type, object.value(QLatin1String("coordinates")).toArray());
        }
    }

  private:
    void each(const QJsonArray& objects, int depth) {
        for (const QJsonValue& object : objects) {
            add(object.toObject(), depth + 1);
        }
    }

    PlanPoint place(const QJsonValue& position) const {
        const QJsonArray numbers = position.toArray();
        const double nowhere = std::numeric_limits<double>::quiet_NaN();
        return numbers.size() < 2 ? PlanPoint{nowhere, nowhere}
                                  : toZone_(numbers[0].toDouble(nowhere), numbers[1].toDouble(nowhere));
    }

    void addLine(const QJsonArray& positions) {
        std::vector<PlanPoint> line;
        for (const QJsonValue& position : positions) {
            line.push_back(place(position));
        }
        shapes_.addLine(std::move(line));
    }

    void addGeometry(const QString& type, const QJsonArray& coordinates) {
        if (type == QLatin1String("Point")) {
            shapes_.addPoint(place(coordinates));
        } else if (type == QLatin1String("MultiPoint")) {
            for (const QJsonValue& position : coordinates) {
                shapes_.addPoint(place(position));
            }
        } else if (type == QLatin1String("LineString")) {
            addLine(coordinates);
        } else if (type == QLatin1String("MultiLineString") || type == QLatin1String("Polygon")) {
            for (const QJsonValue& line : coordinates) {
                addLine(line.toArray());
            }
        } else if (type == QLatin1String("MultiPolygon")) {
            for (const QJsonValue& polygon : coordinates) {
                for (const QJsonValue& ring : polygon.toArray()) {
                    addLine(ring.toArray());
                }
            }
        } else {
            ++shapes_.leftOut;
        }
    }

    BackgroundShapes& shapes_;
    const ToZone& toZone_;
};

// The EPSG number of a file's "crs", geographic as the format has it where there is none.
long long referenceOf(const QJsonObject& root) {
    const QString name = root.value(QLatin1String("crs"))
                             .toObject()
                             .value(QLatin1String("properties"))
                             .toObject()
                             .value(QLatin1String("name"))
                             .toString();
    if (name.isEmpty() || name.contains(QLatin1String("CRS84"))) {
        return kGeographic[0];
    }
    bool number = false;
    const long long epsg = name.section(QLatin1Char(':'), -1).toLongLong(&number);
    return number ? epsg : std::numeric_limits<long long>::max();
}

} // namespace

void BackgroundShapes::addPoint(const PlanPoint& point) {
    if (!isPlace(point)) {
        ++leftOut;
        return;
    }
    points.push_back(point);
    extent.add(point.x, point.y);
}

void BackgroundShapes::addLine(std::vector<PlanPoint> line) {
    BackgroundLine added;
    for (const PlanPoint& point : line) {
        if (!isPlace(point)) {
            ++leftOut;
            return;
        }
        added.extent.add(point.x, point.y);
    }
    if (line.size() < 2) {
        ++leftOut;
        return;
    }
    extent.add(added.extent);
    added.points = std::move(line);
    lines.push_back(std::move(added));
}

ToZone::ToZone(long long epsg, int zone) : zone_(zone) {
    for (const long long first : {kFirstJgd2011, kFirstJgd2000}) {
        if (epsg >= first && epsg < first + kZones) {
            from_ = static_cast<int>(epsg - first) + 1;
            way_ = zone == 0 || from_ == zone ? Way::AsItIs : Way::OtherZone;
            return;
        }
    }
    if (epsg <= 0) {
        return;
    }
    for (const long long geographic : kGeographic) {
        if (epsg == geographic) {
            way_ = Way::Geographic;
        }
    }
    if (epsg == kWebMercator) {
        way_ = Way::Mercator;
    }
    if (way_ == Way::AsItIs) {
        error_ = BackgroundError::UnknownReference;
    } else if (zone == 0) {
        error_ = BackgroundError::NeedsZone;
    }
}

PlanPoint ToZone::operator()(double x, double y) const {
    const double nowhere = std::numeric_limits<double>::quiet_NaN();
    exchange::LongitudeLatitude at{x, y};
    switch (way_) {
    case Way::AsItIs:
        return {x, y};
    case Way::Geographic:
        break;
    case Way::Mercator:
        at.longitude = x / kMercatorRadius * 180.0 / std::numbers::pi;
        at.latitude = std::atan(std::sinh(y / kMercatorRadius)) * 180.0 / std::numbers::pi;
        break;
    case Way::OtherZone: {
        const auto geographic = exchange::PlaneZone(from_).geographic(x, y);
        if (!geographic) {
            return {nowhere, nowhere};
        }
        at = *geographic;
        break;
    }
    }
    const auto plane = exchange::PlaneZone(zone_).plane(at);
    return plane ? *plane : PlanPoint{nowhere, nowhere};
}

BackgroundRead readGeoJson(std::string_view text, int zone) {
    BackgroundRead read;
    QJsonParseError error{};
    const QJsonDocument document =
        QJsonDocument::fromJson(QByteArray::fromRawData(text.data(), static_cast<qsizetype>(text.size())), &error);
    if (!document.isObject() || !document.object().value(QLatin1String("type")).isString()) {
        read.error = BackgroundError::NotThisFormat;
        read.detail = error.errorString().toStdString();
        return read;
    }
    const ToZone toZone(referenceOf(document.object()), zone);
    read.error = toZone.error();
    if (read.error == BackgroundError::None) {
        GeoJson(read.shapes, toZone).add(document.object(), 0);
    }
    return read;
}

BackgroundRead readShapes(const std::string& path, int zone) {
    const QString name = QString::fromStdString(path);
    const QString suffix = QFileInfo(name).suffix().toLower();
    BackgroundRead read;
    if (suffix == QLatin1String("gpkg")) {
        return readGeoPackage(path, zone);
    }
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) {
        read.error = BackgroundError::NotReadable;
        read.detail = file.errorString().toStdString();
        return read;
    }
    if (file.size() > kLargestText) {
        read.error = BackgroundError::TooLarge;
        return read;
    }
    const QByteArray bytes = file.readAll();
    const std::string_view text(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    if (suffix == QLatin1String("dxf")) {
        return readDxf(text);
    }
    if (suffix == QLatin1String("geojson") || suffix == QLatin1String("json")) {
        return readGeoJson(text, zone);
    }
    read.error = BackgroundError::NotThisFormat;
    return read;
}

} // namespace fenmark::desk
