// Backgrounds: what is read of other files, where tiles lie, and that they are kept with the drawing.
#include "desk_test_support.h"

#include "desk/background/background.h"
#include "desk/background/tiles.h"
#include "desk/window/workbench.h"
#include "drawing/geopackage/drawing_texts.h"
#include "exchange/formats.h"
#include "exchange/geographic.h"
#include "support/drawing_texts_support.h"

#include <QBuffer>
#include <QDir>
#include <QPainter>

#include <sqlite3.h>
#include <sys/stat.h>

#include <cmath>
#include <numbers>
#include <sstream>

namespace fenmark::desk::test {
namespace {

constexpr double kMillimetre = 1e-3;

TEST(Background, ReadsTheEntitiesOfADxf) {
    const char* text =
        "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1009\n0\nENDSEC\n0\nSECTION\n2\nENTITIES\n"
        "0\nPOINT\n8\n0\n10\n1.5\n20\n2.5\n"
        "0\nLINE\n10\n0\n20\n0\n11\n3\n21\n4\n"
        "0\nLWPOLYLINE\n90\n2\n70\n1\n10\n0\n20\n0\n42\n1.0\n10\n2\n20\n0\n42\n1.0\n"
        "0\nPOLYLINE\n66\n1\n70\n0\n10\n0\n20\n0\n0\nVERTEX\n10\n5\n20\n5\n0\nVERTEX\n10\n6\n20\n7\n0\nSEQEND\n"
        "0\nCIRCLE\n10\n10\n20\n10\n40\n2\n"
        "0\nTEXT\n1\nabc\n10\n0\n20\n0\n"
        "0\nENDSEC\n0\nEOF\n";
    const BackgroundRead read = readDxf(text);
    ASSERT_EQ(read.error, BackgroundError::None);
    ASSERT_EQ(read.shapes.points.size(), 1U);
    EXPECT_EQ(read.shapes.points[0], (host::PlanPoint{1.5, 2.5}));
    ASSERT_EQ(read.shapes.lines.size(), 4U);
    EXPECT_EQ(read.shapes.leftOut, 1U) << "a text is no line";
    EXPECT_EQ(read.shapes.lines[0].points.back(), (host::PlanPoint{3.0, 4.0}));
    // Two half circles of radius 1 about (1, 0).
    for (const host::PlanPoint& point : read.shapes.lines[1].points) {
        EXPECT_NEAR(std::hypot(point.x - 1.0, point.y), 1.0, 1e-12);
    }
    EXPECT_NEAR(read.shapes.lines[1].extent.minY, -1.0, 1e-3) << "a positive bulge turns left";
    EXPECT_NEAR(read.shapes.lines[1].extent.maxY, 1.0, 1e-3);
    EXPECT_EQ(read.shapes.lines[2].points.size(), 2U);
    for (const host::PlanPoint& point : read.shapes.lines[3].points) {
        EXPECT_NEAR(std::hypot(point.x - 10.0, point.y - 10.0), 2.0, 1e-12);
    }
    EXPECT_EQ(readDxf("no dxf at all").error, BackgroundError::NotThisFormat);
    EXPECT_EQ(readDxf("").error, BackgroundError::NotThisFormat);
}

TEST(Background, BringsGeographicCoordinatesIntoTheZone) {
    const exchange::PlaneZone zone(9);
    const auto at = zone.geographic(-5000.0, -35000.0);
    ASSERT_TRUE(at);
    std::ostringstream text;
    text.precision(15);
    text
        << R"({"type":"FeatureCollection","features":[{"type":"Feature","properties":{},"geometry":{"type":"Point","coordinates":[)"
        << at->longitude << ',' << at->latitude
        << R"(]}},{"type":"Feature","geometry":{"type":"GeometryCollection","geometries":[{"type":"Unknown"}]}}]})";
    const BackgroundRead read = readGeoJson(text.str(), 9);
    ASSERT_EQ(read.error, BackgroundError::None);
    ASSERT_EQ(read.shapes.points.size(), 1U);
    EXPECT_NEAR(read.shapes.points[0].x, -5000.0, kMillimetre);
    EXPECT_NEAR(read.shapes.points[0].y, -35000.0, kMillimetre);
    EXPECT_EQ(read.shapes.leftOut, 1U);
    EXPECT_EQ(readGeoJson(text.str(), 0).error, BackgroundError::NeedsZone);
    EXPECT_EQ(readGeoJson("{", 9).error, BackgroundError::NotThisFormat);
    const char* utm =
        R"({"type":"Point","coordinates":[1,2],"crs":{"type":"name","properties":{"name":"EPSG:32654"}}})";
    EXPECT_EQ(readGeoJson(utm, 9).error, BackgroundError::UnknownReference);
}

TEST(Background, BringsAnotherZoneIntoTheDrawings) {
    // The same place in zones 8 and 9.
    const exchange::PlaneZone eight(8);
    const exchange::PlaneZone nine(9);
    const auto ground = nine.geographic(-60000.0, 20000.0);
    ASSERT_TRUE(ground);
    const auto inEight = eight.plane(*ground);
    ASSERT_TRUE(inEight);
    const ToZone toNine(6669 + 7, 9);
    ASSERT_EQ(toNine.error(), BackgroundError::None);
    const host::PlanPoint at = toNine(inEight->x, inEight->y);
    EXPECT_NEAR(at.x, -60000.0, kMillimetre);
    EXPECT_NEAR(at.y, 20000.0, kMillimetre);
    const host::PlanPoint same = ToZone(6669 + 8, 9)(1.25, 2.5);
    EXPECT_EQ(same, (host::PlanPoint{1.25, 2.5}));
    EXPECT_FALSE(nine.plane({-170.0, 35.0}));
    EXPECT_FALSE(nine.plane({std::nan(""), 35.0}));
}

TEST(Background, TilesLieWhereWebMapsHaveThem) {
    const TilePlace tokyo = tileAt(139.767125, 35.681236, 14);
    EXPECT_EQ(std::floor(tokyo.column), 14552.0); // the tile of Tokyo station at zoom 14
    EXPECT_EQ(std::floor(tokyo.row), 6451.0);
    const TileGround back = groundOfTile(tokyo.column, tokyo.row, 14);
    EXPECT_NEAR(back.longitude, 139.767125, 1e-9);
    EXPECT_NEAR(back.latitude, 35.681236, 1e-9);
}

struct Backgrounds : DeskWindow {
    // The own drawing as a GeoPackage, a DXF and a GeoJSON of it.
    QString exported(const char* name) {
        const QString path = folder.path(QLatin1String(name));
        exchange::ExportOptions options;
        std::ostringstream out;
        exchange::formatOf(name)->write(drawing(), options, out);
        folder.write(QLatin1String(name), QByteArray::fromStdString(out.str()));
        return path;
    }
};

TEST_F(Backgrounds, OtherFilesLieFadedUnderThePlanAndComeBack) {
    import(folder.example(QStringLiteral("road.sim")));
    window->session().setZone(9);
    const QString dxf = exported("road.dxf");
    const QString json = exported("road.geojson");
    const QString other = folder.path(QStringLiteral("other.gpkg"));
    ASSERT_TRUE(window->session().save(other.toStdString()));
    window->session().newDrawing();
    ASSERT_TRUE(window->showDrawing(other.toStdString()));
    Workbench& bench = window->workbench();
    EXPECT_TRUE(bench.addBackground(dxf));
    EXPECT_TRUE(bench.addBackground(json));
    ASSERT_EQ(bench.background().layers().size(), 2U);
    for (const BackgroundLayer& layer : bench.background().layers()) {
        const drawing::Extent& box = layer.shapes.extent;
        EXPECT_NEAR(box.minX, drawing().extent().minX, 0.01) << layer.path.toStdString();
        EXPECT_NEAR(box.maxY, drawing().extent().maxY, 0.01);
        EXPECT_GT(layer.shapes.lines.size(), 5U);
    }
    EXPECT_TRUE(window->isWindowModified()) << "the list is kept with the drawing";
    // Shown without the plan's own layers.
    plan().fitAll();
    PlanLook look = plan().look();
    look.hiddenLayers.assign(drawing().layers().size(), true);
    look.grid = false;
    plan().setLook(look);
    const QImage with = plan().grab().toImage();
    bench.action(WorkText::BackgroundShow)->trigger();
    EXPECT_NE(plan().grab().toImage(), with);
    ASSERT_TRUE(window->saveDrawing());
    EXPECT_FALSE(window->isWindowModified());
    window->newDrawing();
    EXPECT_TRUE(bench.background().layers().empty());
    ASSERT_TRUE(window->showDrawing(other.toStdString()));
    EXPECT_EQ(bench.background().layers().size(), 2U);
    bench.removeBackgrounds();
    EXPECT_TRUE(bench.texts().empty());
    window->saveDrawing();
}

TEST_F(Backgrounds, AGeoPackageIsReadInItsZone) {
    import(folder.example(QStringLiteral("cadastral.sim")));
    window->session().setZone(9);
    const QString path = folder.path(QStringLiteral("lots.gpkg"));
    ASSERT_TRUE(window->session().save(path.toStdString()));
    const BackgroundRead read = readGeoPackage(path.toStdString(), 9);
    ASSERT_EQ(read.error, BackgroundError::None);
    EXPECT_EQ(read.shapes.points.size(), 90U);
    EXPECT_GE(read.shapes.lines.size(), 48U);
    EXPECT_NEAR(read.shapes.extent.maxX, drawing().extent().maxX, kMillimetre);
    const BackgroundRead shifted = readGeoPackage(path.toStdString(), 8);
    EXPECT_GT(std::abs(shifted.shapes.extent.maxX - drawing().extent().maxX), 1000.0);
    EXPECT_EQ(readGeoPackage(folder.path(QStringLiteral("none.gpkg")).toStdString(), 9).error,
              BackgroundError::NotReadable);
    EXPECT_EQ(readGeoPackage(folder.write(QStringLiteral("text.gpkg"), "text").toStdString(), 9).error,
              BackgroundError::NotThisFormat);
}

TEST_F(Backgrounds, TilesOfAFolderAreDrawnInTheirPlace) {
    import(folder.example(QStringLiteral("road.sim")));
    window->session().setZone(9);
    plan().fitAll();
    // One red tile around the middle of the drawing.
    const drawing::Extent& box = drawing().extent();
    const auto middle = exchange::PlaneZone(9).geographic((box.minX + box.maxX) / 2.0, (box.minY + box.maxY) / 2.0);
    ASSERT_TRUE(middle);
    constexpr int kZoom = 15;
    const TilePlace place = tileAt(middle->longitude, middle->latitude, kZoom);
    const QString column = QString::number(static_cast<int>(place.column));
    ASSERT_TRUE(QDir(folder.path({})).mkpath(QStringLiteral("tiles/%1/%2").arg(kZoom).arg(column)));
    QImage red(256, 256, QImage::Format_RGB32);
    red.fill(Qt::red);
    ASSERT_TRUE(red.save(folder.path(QStringLiteral("tiles/%1/%2/%3.png").arg(kZoom).arg(column).arg(int(place.row)))));
    Workbench& bench = window->workbench();
    {
        Answers answers;
        answers.ok(); // nothing there to show
        ASSERT_TRUE(QDir(folder.path({})).mkpath(QStringLiteral("empty")));
        EXPECT_FALSE(bench.addBackground(folder.path(QStringLiteral("empty"))));
    }
    ASSERT_TRUE(bench.addBackground(folder.path(QStringLiteral("tiles"))));
    PlanLook look = plan().look();
    look.hiddenLayers.assign(drawing().layers().size(), true);
    look.grid = false;
    plan().setLook(look);
    const QImage picture = plan().grab().toImage();
    const QPointF pixel = plan().view().toPixel((box.minX + box.maxX) / 2.0, (box.minY + box.maxY) / 2.0);
    const QColor colour = picture.pixelColor(pixel.toPoint());
    EXPECT_EQ(colour.red(), 255);
    EXPECT_NEAR(colour.green(), 127, 2) << "half as strong";
    // A corner of the tile lies where its longitude and latitude lie in the zone.
    const TileGround ground = groundOfTile(std::floor(place.column), std::floor(place.row), kZoom);
    const auto corner = exchange::PlaneZone(9).plane({ground.longitude, ground.latitude});
    ASSERT_TRUE(corner);
    const QPointF at = plan().view().toPixel(corner->x, corner->y);
    if (QRectF(plan().rect()).adjusted(60, 60, -60, -60).contains(at)) {
        EXPECT_EQ(picture.pixelColor((at + QPointF(4, 4)).toPoint()).green(), colour.green());
        EXPECT_EQ(picture.pixelColor((at - QPointF(4, 4)).toPoint()), QColor(Qt::white));
    }
}

// A file of tiles with one tile, in one table or, as where many tiles are alike, in two. Rows count from the south.
void writeMbTiles(const QString& path, int zoom, int column, int row, const QByteArray& image, bool twoTables) {
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(path.toUtf8().constData(), &database), SQLITE_OK);
    const char* const tables =
        twoTables ? "CREATE TABLE map (zoom_level INTEGER, tile_column INTEGER, tile_row INTEGER, tile_id TEXT);"
                    "CREATE TABLE images (tile_data BLOB, tile_id TEXT);"
                    "CREATE VIEW tiles AS SELECT zoom_level, tile_column, tile_row, tile_data FROM map JOIN images"
                    " ON images.tile_id = map.tile_id"
                  : "CREATE TABLE tiles (zoom_level INTEGER, tile_column INTEGER, tile_row INTEGER, tile_data BLOB)";
    ASSERT_EQ(sqlite3_exec(database, tables, nullptr, nullptr, nullptr), SQLITE_OK);
    const QString place = QStringLiteral("%1, %2, %3").arg(zoom).arg(column).arg((1 << zoom) - 1 - row);
    const QString bytes = QStringLiteral("x'%1'").arg(QLatin1String(image.toHex()));
    const QString rows =
        twoTables
            ? QStringLiteral("INSERT INTO map VALUES (%1, 'a'); INSERT INTO images VALUES (%2, 'a')").arg(place, bytes)
            : QStringLiteral("INSERT INTO tiles VALUES (%1, %2)").arg(place, bytes);
    ASSERT_EQ(sqlite3_exec(database, rows.toUtf8().constData(), nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(database);
}

TEST_F(Backgrounds, TilesOfAFileAreDrawnInTheirPlaceWhicheverTablesItHas) {
    import(folder.example(QStringLiteral("road.sim")));
    window->session().setZone(9);
    plan().fitAll();
    const drawing::Extent& box = drawing().extent();
    const double x = (box.minX + box.maxX) / 2.0;
    const double y = (box.minY + box.maxY) / 2.0;
    const auto middle = exchange::PlaneZone(9).geographic(x, y);
    ASSERT_TRUE(middle);
    constexpr int kZoom = 15;
    const TilePlace place = tileAt(middle->longitude, middle->latitude, kZoom);
    QImage red(256, 256, QImage::Format_RGB32);
    red.fill(Qt::red);
    QByteArray png;
    QBuffer buffer(&png);
    ASSERT_TRUE(red.save(&buffer, "PNG"));
    PlanLook look = plan().look();
    look.hiddenLayers.assign(drawing().layers().size(), true);
    look.grid = false;
    plan().setLook(look);
    Workbench& bench = window->workbench();
    for (const bool twoTables : {false, true}) {
        const QString path = folder.path(twoTables ? QStringLiteral("two.mbtiles") : QStringLiteral("one.mbtiles"));
        writeMbTiles(path, kZoom, int(place.column), int(place.row), png, twoTables);
        ASSERT_TRUE(bench.addBackground(path)) << twoTables;
        const QColor colour = plan().grab().toImage().pixelColor(plan().view().toPixel(x, y).toPoint());
        EXPECT_EQ(colour.red(), 255);
        EXPECT_NEAR(colour.green(), 127, 2) << "half as strong";
        bench.removeBackgrounds();
        EXPECT_EQ(plan().grab().toImage().pixelColor(plan().view().toPixel(x, y).toPoint()), QColor(Qt::white));
    }
    Answers answers;
    answers.ok();
    EXPECT_FALSE(bench.addBackground(folder.write(QStringLiteral("text.mbtiles"), "text")));
}

// At a pipe reading waits for ever, and a device may never end; a drawing may name either.
TEST_F(Backgrounds, WhatIsNoFileIsNotRead) {
    Background background;
    for (const char* extension : {".geojson", ".dxf", ".gpkg", ".mbtiles"}) {
        const QString path = folder.path(QStringLiteral("device") + QLatin1String(extension));
        ASSERT_TRUE(QFile::link(QStringLiteral("/dev/null"), path));
        EXPECT_EQ(background.add(path, 9).error, BackgroundError::NotReadable) << extension;
    }
}

TEST_F(Backgrounds, ATileThatIsNoTileOfAMapIsLeftOut) {
    constexpr int kZoom = 15;
    QImage vast(20'000, 300, QImage::Format_Mono);
    vast.fill(0);
    QByteArray png;
    QBuffer buffer(&png);
    ASSERT_TRUE(vast.save(&buffer, "PNG"));
    const QString path = folder.path(QStringLiteral("vast.mbtiles"));
    writeMbTiles(path, kZoom, 1, 2, png, false);
    const auto tiles = TileSource::open(path);
    ASSERT_NE(tiles, nullptr);
    EXPECT_TRUE(tiles->tile(kZoom, 1, 2).isNull());
}

// A file of 50 kB may name one picture in thousands of places, and a drawing dozens of such files.
TEST_F(Backgrounds, VastTilesAreKeptSmallAndManyBackgroundsShareThoseOfAPicture) {
    QImage large(1024, 512, QImage::Format_RGB32);
    large.fill(Qt::red);
    const QString tiles = folder.path(QStringLiteral("tiles"));
    ASSERT_TRUE(QDir().mkpath(tiles + QStringLiteral("/4/14")));
    ASSERT_TRUE(large.save(tiles + QStringLiteral("/4/14/6.png")));
    EXPECT_EQ(TileSource::open(tiles)->tile(4, 14, 6).size(), QSize(512, 256));

    import(folder.example(QStringLiteral("road.sim")));
    window->session().setZone(9);
    plan().fitAll();
    const drawing::Extent seen = plan().view().visible();
    const auto middle = exchange::PlaneZone(9).geographic((seen.minX + seen.maxX) / 2.0, (seen.minY + seen.maxY) / 2.0);
    ASSERT_TRUE(middle);
    constexpr int kZoom = 17; // a few dozen tiles
    const TilePlace place = tileAt(middle->longitude, middle->latitude, kZoom);
    const QString fine = folder.path(QStringLiteral("fine/%1/%2")).arg(kZoom).arg(static_cast<int>(place.column));
    ASSERT_TRUE(QDir().mkpath(fine));
    ASSERT_TRUE(large.save(fine + QStringLiteral("/%1.png").arg(static_cast<int>(place.row))));
    const auto isRed = [&](std::size_t backgrounds) {
        Background background;
        while (background.layers().size() < backgrounds) {
            EXPECT_EQ(background.add(folder.path(QStringLiteral("fine")), 9).error, BackgroundError::None);
        }
        QImage picture(plan().size(), QImage::Format_RGB32);
        picture.fill(Qt::white);
        QPainter painter(&picture);
        background.paint(painter, plan().view(), 9, 1.0);
        painter.end();
        return picture.pixelColor(picture.rect().center()) == QColor(Qt::red);
    };
    EXPECT_TRUE(isRed(2));
    EXPECT_FALSE(isRed(Background::kMostLayers)) << "each has a few tiles";
}

TEST_F(Backgrounds, APipeBesideAFileIsNotWaitedFor) {
    for (const char* name : {"a.mbtiles", "a.gpkg"}) {
        const QString path = folder.path(QLatin1String(name));
        writeMbTiles(path, 15, 1, 2, "no picture", false);
        Background background;
        EXPECT_EQ(background.add(path, 9).error == BackgroundError::None, path.endsWith(QStringLiteral(".mbtiles")));
        ASSERT_EQ(mkfifo((path + QStringLiteral("-journal")).toUtf8().constData(), 0600), 0);
        EXPECT_NE(Background().add(path, 9).error, BackgroundError::None) << name;
    }
}

// A hostile package may name one layer as often as it likes, and each naming would cost a reading of it.
TEST_F(Backgrounds, ALayerOfAPackageIsReadOnceHoweverOftenItIsNamed) {
    const QString path = folder.path(QStringLiteral("named.gpkg"));
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(path.toUtf8().constData(), &database), SQLITE_OK);
    const char* const sql = "CREATE TABLE gpkg_geometry_columns (table_name TEXT, column_name TEXT, srs_id INTEGER);"
                            "INSERT INTO gpkg_geometry_columns VALUES ('t', 'g', 0), ('T', 'g', 0), ('t', 'G', 0);"
                            "CREATE TABLE t (g BLOB);"
                            "INSERT INTO t VALUES (x'47500001000000000101000000000000000000F03F0000000000000040')";
    ASSERT_EQ(sqlite3_exec(database, sql, nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(database);
    const BackgroundRead read = readGeoPackage(path.toStdString(), 9);
    EXPECT_EQ(read.error, BackgroundError::None) << read.detail;
    EXPECT_EQ(read.shapes.points.size(), 1U);
}

// So may a hostile drawing name one file, or more files than anybody lays under a plan.
TEST_F(Backgrounds, ADrawingNamesAFileOnceAndNotEndlesslyMany) {
    const QByteArray nothing = R"({"type":"FeatureCollection","features":[]})";
    const QString file = folder.write(QStringLiteral("a.geojson"), nothing);
    const QString path = folder.path(QStringLiteral("a.gpkg"));
    window->session().setZone(9);
    ASSERT_TRUE(window->session().save(path.toStdString()));
    drawing::DrawingTexts texts;
    for (int i = 0; i < 100; ++i) {
        texts["background/" + std::to_string(i)] =
            (QFileInfo(file).path() + QStringLiteral("/.").repeated(i) + QStringLiteral("/a.geojson")).toStdString();
    }
    ASSERT_TRUE(drawing::writeTexts(path.toStdString(), texts));
    ASSERT_TRUE(window->showDrawing(path.toStdString()));
    Workbench& bench = window->workbench();
    EXPECT_EQ(bench.background().layers().size(), 1U);
    EXPECT_EQ(bench.texts(), texts);
    for (int i = 0; i < 100; ++i) {
        texts["background/" + std::to_string(i)] =
            folder.write(QStringLiteral("%1.geojson").arg(i), nothing).toStdString();
    }
    ASSERT_TRUE(drawing::writeTexts(path.toStdString(), texts));
    ASSERT_TRUE(window->showDrawing(path.toStdString()));
    EXPECT_EQ(bench.background().layers().size(), Background::kMostLayers);
    EXPECT_EQ(bench.texts(), texts) << "those that are not shown stay kept";
    Answers answers;
    answers.ok();
    EXPECT_FALSE(bench.addBackground(file));
    EXPECT_TRUE(answers.said.contains(QStringLiteral("a.geojson")));
}

// The window waits for them: what would take long is left to whoever wants it.
TEST_F(Backgrounds, ADrawingOpensFilesOfSoManyBytesAndTheRestIsAddedByHand) {
    import(folder.example(QStringLiteral("road.sim")));
    window->session().setZone(9);
    const QString small = exported("small.geojson");
    const QString large = folder.path(QStringLiteral("large.gpkg"));
    const QString path = folder.path(QStringLiteral("a.gpkg"));
    ASSERT_TRUE(window->session().writeCopy(large.toStdString()));
    ASSERT_TRUE(window->session().save(path.toStdString()));
    ASSERT_TRUE(QFile::resize(large, Background::kMostBytesUnasked)); // nothing on the disk behind the drawing
    const drawing::DrawingTexts texts{{"background/1", small.toStdString()}, {"background/2", large.toStdString()}};
    ASSERT_TRUE(drawing::writeTexts(path.toStdString(), texts));

    ASSERT_TRUE(window->showDrawing(path.toStdString()));
    Workbench& bench = window->workbench();
    ASSERT_EQ(bench.background().layers().size(), 1U);
    EXPECT_EQ(bench.background().layers()[0].path, small);
    EXPECT_TRUE(said(large));
    EXPECT_TRUE(said(QStringLiteral("512 MB")));
    EXPECT_TRUE(bench.addBackground(large));
    EXPECT_EQ(bench.background().layers().size(), 2U);
    EXPECT_EQ(bench.texts(), texts) << "it is kept already";
    window->session().setZone(8);
    window->questions().name = [](QWidget*, const QString&, const QString&) { return QStringLiteral("new"); };
    window->addLayer(); // the window learns of the zone too
    EXPECT_EQ(bench.background().layers().size(), 2U) << "who chose it once is not asked again";

    // By itself that many bytes are not too much.
    ASSERT_TRUE(drawing::writeTexts(path.toStdString(), {{"background/1", large.toStdString()}}));
    ASSERT_TRUE(window->showDrawing(path.toStdString()));
    EXPECT_EQ(bench.background().layers().size(), 1U);
}

} // namespace
} // namespace fenmark::desk::test
