// A GeoPackage that another program made, as a drawing.
#include "drawing/geopackage/foreign_package.h"

#include "drawing/geopackage/drawing_shape.h"
#include "drawing/geopackage/file_system.h"
#include "drawing/geopackage/geometry_blob.h"
#include "drawing/geopackage/reference_systems.h"
#include "drawing/geopackage/sqlite_handles.h"
#include "values/ascii_case.h"
#include "values/kinds.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <span>
#include <string_view>

namespace fenmark::drawing {

namespace {

constexpr const char* kHasTables = "SELECT count(*) FROM sqlite_master WHERE type = 'table' AND substr(sql, 1, 13) ="
                                   " 'CREATE TABLE ' AND name IN ('gpkg_contents', 'gpkg_geometry_columns',"
                                   " 'gpkg_spatial_ref_sys')";
constexpr const char* kFeatureTables =
    "SELECT g.table_name, g.column_name, g.srs_id, s.organization, s.organization_coordsys_id, s.srs_name,"
    " g.table_name COLLATE NOCASE IN (SELECT table_name FROM gpkg_contents WHERE data_type = 'features')"
    " FROM gpkg_geometry_columns AS g LEFT JOIN gpkg_spatial_ref_sys AS s ON s.srs_id = g.srs_id ORDER BY g.table_name";
constexpr const char* kWithoutGeometry =
    "SELECT table_name FROM gpkg_contents WHERE data_type = 'features'"
    " AND table_name COLLATE NOCASE NOT IN (SELECT table_name FROM gpkg_geometry_columns WHERE table_name IS NOT NULL)"
    " ORDER BY table_name";
constexpr const char* kIsTable = "SELECT count(*) FROM sqlite_master WHERE name = ?1 AND type = 'table'"
                                 " AND substr(sql, 1, 13) = 'CREATE TABLE '";
constexpr const char* kColumnsOf = "SELECT name FROM pragma_table_xinfo(?1) WHERE hidden = 0 ORDER BY cid";
constexpr const char* kKey = "SELECT name FROM pragma_table_xinfo(?1) WHERE pk = 1";

constexpr std::string_view kNameColumns[] = {"name", "点名", "名称", "地番", "画地名", "point_name", "label", "title"};
constexpr std::string_view kNumberColumns[] = {"no", "点番号", "点番", "番号", "画地番号", "number", "point_no"};

struct Datum {
    std::int32_t firstCode; // of zone 1
    const char* name;
};
constexpr Datum kDatums[] = {
    {kFirstOfDatum[0], "JGD2011"}, {kFirstOfDatum[1], "JGD2000"}, {kFirstOfDatum[2], "the Tokyo datum"}};

struct Table {
    std::string name;
    std::string geometry;
    std::string key;
    std::string nameColumn;   // empty: the number is the name
    std::string numberColumn; // empty: the feature's
    std::int64_t srs = kUndefinedSrs;
};

// The plane of a package: zone 0 for an undefined one.
struct Plane {
    int zone = 0;
    const char* datum = nullptr; // of kDatums

    friend bool operator==(const Plane&, const Plane&) = default;
};

[[noreturn]] void refuse(const Worded& why) {
    throw StoreFailure{Failure::NotOurs, why};
}

Plane planeOf(const Statement& row, int zone) {
    const std::string table(row.text(0));
    const std::int64_t srs = row.integer(2);
    if (srs == -1) {
        return {};
    }
    if (row.text(3).empty() || srs == 0 || asciiLower(row.text(3)) == "none") {
        if (zone == 0) {
            refuse({"the table '" + table +
                        "' does not tell its reference system; --zone 1..19 takes it as metres of that"
                        " plane rectangular zone",
                    "表「" + table +
                        "」に座標系の指定がありません。--zone 1..19 を付けると平面直角座標系のその系として読みます"});
        }
        return {zone, kDatums[0].name};
    }
    if (asciiLower(row.text(3)) == "epsg") {
        for (const Datum& datum : kDatums) {
            const std::int64_t found = row.integer(4) - datum.firstCode + 1;
            if (found >= 1 && found <= kZoneCount) {
                return {static_cast<int>(found), datum.name};
            }
        }
    }
    refuse({"the table '" + table + "' is in '" + std::string(row.text(5)) +
                "', and not in metres of a plane rectangular zone; bring it into one first, as by ogr2ogr -t_srs"
                " EPSG:6677 for zone 9",
            "表「" + table + "」の座標系は「" + std::string(row.text(5)) +
                "」で、平面直角座標系ではありません。先に変換してください(例: 9系は ogr2ogr -t_srs EPSG:6677)"});
}

std::string columnAmong(std::span<const std::string_view> wanted, const std::vector<std::string>& columns) {
    for (const std::string_view name : wanted) {
        for (const std::string& column : columns) {
            if (asciiLower(column) == name) {
                return column;
            }
        }
    }
    return {};
}

bool isPlainTable(Connection& connection, const std::string& name) {
    Statement rows(connection, kIsTable);
    return rows.bind(1, std::string_view(name)).step() && rows.integer(0) == 1;
}

class PackageReader {
  public:
    PackageReader(Connection& connection, int zone, ForeignPackage& package)
        : connection_(connection), zone_(zone), package_(package) {}

    void read() {
        Statement known(connection_, kHasTables);
        if (!known.step() || known.integer(0) != 3) {
            refuse("");
        }
        const std::vector<Table> tables = findTables();
        package_.drawing.setZone(plane_->datum == kDatums[0].name ? plane_->zone : 0);
        pointTable_ = tableNamed("JSIMA_V3_Point");
        polylineTable_ = tableNamed("JSIMA_V3_Pline");
        for (const Table& table : tables) {
            readTable(table);
        }
        if (package_.drawing.entityCount() == 0) {
            const Worded leftOut = leftOutText();
            refuse({"no table holds points or polygons" + leftOut.english,
                    "点または面を持つ表がありません" + leftOut.japanese});
        }
        if (plane_->datum != nullptr && plane_->datum != kDatums[0].name) {
            note({StoreNoteCode::OtherDatum, {}, plane_->datum, static_cast<std::uint64_t>(plane_->zone), 0, {}});
        }
        for (const auto& [what, found] : leftOut_) {
            note(found);
        }
    }

  private:
    std::vector<Table> findTables() {
        std::vector<Table> tables;
        Statement rows(connection_, kFeatureTables);
        while (rows.step()) {
            Table table;
            table.name = rows.text(0);
            table.geometry = rows.text(1);
            if (rows.integer(6) != 1) {
                note({StoreNoteCode::NotListed, table.name, {}, 0, 0, {}});
                continue;
            }
            if (!isPlainTable(connection_, table.name)) {
                note({StoreNoteCode::NoPlainTable, table.name, {}, 0, 0, {}});
                continue;
            }
            if (!describe(table)) {
                note({StoreNoteCode::NoGeometryColumn, table.name, {}, 0, 0, {}});
                continue;
            }
            const Plane plane = planeOf(rows, zone_);
            if (plane_ && *plane_ != plane) {
                refuse({"its tables are in several reference systems; bring them into one first, as by ogr2ogr -t_srs",
                        "表の座標系が1つではありません。先に1つに変換してください(例: ogr2ogr -t_srs)"});
            }
            plane_ = plane;
            table.srs = rows.integer(2);
            tables.push_back(std::move(table));
        }
        Statement without(connection_, kWithoutGeometry);
        while (without.step()) {
            note({StoreNoteCode::NoGeometryColumn, std::string(without.text(0)), {}, 0, 0, {}});
        }
        if (tables.empty()) {
            refuse({"it has no table of features", "地物の表がありません"});
        }
        return tables;
    }

    bool describe(Table& table) {
        std::vector<std::string> columns;
        Statement rows(connection_, kColumnsOf);
        rows.bind(1, std::string_view(table.name));
        while (rows.step()) {
            columns.emplace_back(rows.text(0));
        }
        const auto isGeometry = [wanted = asciiLower(table.geometry)](const std::string& column) {
            return asciiLower(column) == wanted;
        };
        if (std::none_of(columns.begin(), columns.end(), isGeometry)) {
            return false;
        }
        Statement key(connection_, kKey);
        table.key = key.bind(1, std::string_view(table.name)).step() ? key.text(0) : "rowid";
        table.nameColumn = columnAmong(kNameColumns, columns);
        table.numberColumn = columnAmong(kNumberColumns, columns);
        return true;
    }

    std::size_t tableNamed(const char* name) {
        package_.drawing.addTable(name);
        return *package_.drawing.findTable(name);
    }

    void readTable(const Table& table) {
        const std::string query = "SELECT " + quoted(table.key) + ", " + quoted(table.geometry) + ", " +
                                  (table.nameColumn.empty() ? "NULL" : quoted(table.nameColumn)) + ", " +
                                  (table.numberColumn.empty() ? "NULL" : quoted(table.numberColumn)) + " FROM " +
                                  quoted(table.name) + " ORDER BY 1";
        Drawing& drawing = package_.drawing;
        if (!drawing.findLayer(table.name)) {
            drawing.addLayer(table.name);
        }
        layer_ = *drawing.findLayer(table.name);
        const std::size_t before = drawing.entityCount();
        ofFeature_ = {StoreNoteCode::NumberOfFeature, table.name, table.numberColumn, 0, 0, {}};
        withoutNumber_ = {StoreNoteCode::NoNumber, table.name, table.key, 0, 0, {}};
        Statement rows(connection_, query.c_str());
        while (rows.step()) {
            readFeature(rows, table);
        }
        if (drawing.entityCount() > before) {
            note({StoreNoteCode::NamesFrom, table.name, table.nameColumn, 0, 0, table.numberColumn});
            if (ofFeature_.count > 0 && !table.numberColumn.empty()) {
                note(ofFeature_);
            }
            if (withoutNumber_.count > 0) {
                note(withoutNumber_);
            }
        }
    }

    void readFeature(Statement& row, const Table& table) {
        const std::int64_t fid = row.integer(0);
        const BlobParts parts = row.isNull(1) ? BlobParts{BlobKind::Empty, 0, {}, {}, 0, 0} : readParts(row.blob(1));
        switch (parts.kind) {
        case BlobKind::Empty:
            return leaveOut(StoreNoteCode::FeatureNoPlace, "without a place", table.name, fid);
        case BlobKind::Malformed:
            return leaveOut(StoreNoteCode::FeatureDamaged, "damaged geometry", table.name, fid);
        case BlobKind::Other:
            return leaveOut(StoreNoteCode::FeatureGeometry, nameOfGeometry(parts.type), table.name, fid);
        case BlobKind::Point:
        case BlobKind::Line:
            break;
        }
        if (parts.holes > 0) {
            return leaveOut(StoreNoteCode::FeatureWithHoles, "polygons with holes", table.name, fid);
        }
        if (parts.srs > 0 && parts.srs != table.srs) {
            count(package_.notes, StoreNoteCode::OtherSystem, table.name, {}, fid);
        }
        const std::int32_t number = numberOf(row, fid);
        const std::string name = row.text(2).empty() ? std::to_string(number) : std::string(row.text(2));
        Drawing& drawing = package_.drawing;
        for (const MdGePoint3d& point : parts.points) {
            drawing.addPoint(point, layer_);
            drawing.setRow(drawing.entityCount() - 1, pointTable_, number, name, typeOf(Kind::Points), table.name);
        }
        for (const std::vector<MdGePoint3d>& ring : parts.rings) {
            drawing.addPolyline(ring, layer_, EntityKind::Polyline, true);
            drawing.setRow(drawing.entityCount() - 1, polylineTable_, number, name, typeOf(Kind::Lots), table.name);
        }
    }

    // A number that is none, or none that a row holds, is the feature's; 0 if a row does not hold that either.
    std::int32_t numberOf(const Statement& row, std::int64_t fid) {
        std::string_view text = row.text(3);
        if (constexpr std::string_view kWholeReal = ".0"; text.ends_with(kWholeReal)) {
            text.remove_suffix(kWholeReal.size());
        }
        std::int32_t number = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (!text.empty() && error == std::errc() && end == text.data() + text.size() && number >= 0) {
            return number;
        }
        const bool holdsFid = fid >= 0 && fid <= std::numeric_limits<std::int32_t>::max();
        StoreNote& told = holdsFid ? ofFeature_ : withoutNumber_;
        if (told.count++ == 0) {
            told.firstId = fid;
        }
        return holdsFid ? static_cast<std::int32_t>(fid) : 0;
    }

    void leaveOut(StoreNoteCode code, const std::string& what, const std::string& table, std::int64_t fid) {
        const StoreNote first{code, table, what, 0, fid, {}};
        ++leftOut_.try_emplace(what + " in '" + table + "'", first).first->second.count;
    }

    Worded leftOutText() const {
        Worded text;
        for (const auto& [what, found] : leftOut_) {
            text.english += (text.empty() ? ": " : ", ") + std::to_string(found.count) + " " + what;
            text.japanese += (text.japanese.empty() ? "。" : "、") + noteText(found, Language::Japanese);
        }
        return text;
    }

    void note(StoreNote note) { package_.notes.push_back(std::move(note)); }

    Connection& connection_;
    int zone_;
    ForeignPackage& package_;
    std::optional<Plane> plane_;
    std::map<std::string, StoreNote> leftOut_; // by what and where, in English
    StoreNote ofFeature_;                      // of the table that is read
    StoreNote withoutNumber_;                  // of it too
    std::size_t pointTable_ = 0;
    std::size_t polylineTable_ = 0;
    std::size_t layer_ = 0;
};

} // namespace

Outcome readForeignPackage(const std::string& path, int zone, ForeignPackage& package) {
    try {
        Connection connection(path, modeToRead(path));
        ForeignPackage read;
        requirePragmas(connection);
        PackageReader(connection, zone, read).read();
        package = std::move(read);
        return {};
    } catch (const StoreFailure& failure) {
        if (failure.failure == Failure::NotOurs && !failure.detail.empty()) {
            return failed({path + ": cannot be taken: " + failure.detail.english,
                           path + ": 取り込めません: " + failure.detail.japanese},
                          failure.failure);
        }
        return failed(storeMessage(failure.failure, path, failure.detail), failure.failure);
    }
}

} // namespace fenmark::drawing
