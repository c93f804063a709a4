// Packages of other programs: which of their tables are taken and how, and which are refused with a remedy.
#include "drawing/geopackage/foreign_package.h"
#include "drawing/index_check.h"
#include "support/drawing_support.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

namespace fenmark::drawing {
namespace {

// Geometries as GeoPackage keeps them, little-endian and without a box.
std::string hexOfReal(double value) {
    unsigned char raw[sizeof value];
    std::memcpy(raw, &value, sizeof value);
    std::string hex;
    for (const unsigned char byte : raw) {
        char digits[8];
        std::snprintf(digits, sizeof digits, "%02x", byte);
        hex += digits;
    }
    return hex;
}
std::string hexOfCount(unsigned value) {
    char digits[16];
    std::snprintf(digits, sizeof digits, "%02x%02x0000", value & 0xFFU, value >> 8U);
    return digits;
}
const std::string kBlobHead = "4750000100000000";
std::string pointBlob(double x, double y) {
    return "x'" + kBlobHead + "01" + hexOfCount(1) + hexOfReal(x) + hexOfReal(y) + "'";
}
std::string hexOfRing(double size) {
    std::string text = hexOfCount(4);
    for (const double at : {0.0, 0.0, size, 0.0, size, size, 0.0, 0.0}) {
        text += hexOfReal(at);
    }
    return text;
}
std::string polygonBlob(unsigned rings) {
    std::string text = "x'" + kBlobHead + "01" + hexOfCount(3) + hexOfCount(rings);
    for (unsigned i = 0; i < rings; ++i) {
        text += hexOfRing(10.0 - i);
    }
    return text + "'";
}
std::string twoPolygonsBlob() {
    std::string text = "x'" + kBlobHead + "01" + hexOfCount(6) + hexOfCount(2);
    for (int i = 0; i < 2; ++i) {
        text += "01" + hexOfCount(3) + hexOfCount(1) + hexOfRing(10.0 + i);
    }
    return text + "'";
}
std::string lineBlob() {
    return "x'" + kBlobHead + "01" + hexOfCount(2) + hexOfCount(2) + hexOfReal(0) + hexOfReal(0) + hexOfReal(5) +
           hexOfReal(5) + "'";
}

class PackageOfAnother : public ::testing::Test {
  protected:
    TemporaryFolder folder_;
    std::string path_ = folder_.at("他.gpkg");
    ForeignPackage package_;

    void SetUp() override {
        run("PRAGMA application_id = 1196444487;"
            "CREATE TABLE gpkg_spatial_ref_sys (srs_name TEXT, srs_id INTEGER PRIMARY KEY, organization TEXT,"
            " organization_coordsys_id INTEGER, definition TEXT);"
            "CREATE TABLE gpkg_contents (table_name TEXT PRIMARY KEY, data_type TEXT, srs_id INTEGER);"
            "CREATE TABLE gpkg_geometry_columns (table_name TEXT, column_name TEXT, geometry_type_name TEXT,"
            " srs_id INTEGER, z TINYINT, m TINYINT);"
            "INSERT INTO gpkg_spatial_ref_sys VALUES ('Undefined cartesian', -1, 'NONE', -1, ''),"
            " ('Undefined geographic', 0, 'NONE', 0, ''), ('zone 9', 6677, 'EPSG', 6677, ''),"
            " ('old zone 9', 2451, 'epsg', 2451, ''), ('older zone 9', 30169, 'EPSG', 30169, ''),"
            " ('WGS 84', 4326, 'EPSG', 4326, ''), ('own', 100001, 'mine', 6677, '')");
    }
    void run(const std::string& sql) const {
        const std::vector<std::string> said = OtherProgram(path_).ask(sql);
        EXPECT_TRUE(said.empty()) << sql << ": " << said.front();
    }
    // A table of features with the columns given behind its geometry.
    void addTable(const std::string& name, int srs, const std::string& columns = "") const {
        run("CREATE TABLE \"" + name + "\" (fid INTEGER PRIMARY KEY, geom GEOMETRY" + columns + ")");
        declare(name, srs);
    }
    void declare(const std::string& name, int srs) const {
        run("INSERT INTO gpkg_contents VALUES ('" + name + "', 'features', " + std::to_string(srs) +
            "); INSERT INTO gpkg_geometry_columns VALUES ('" + name + "', 'geom', 'GEOMETRY', " + std::to_string(srs) +
            ", 0, 0)");
    }
    Outcome read(int zone = 0) { return readForeignPackage(path_, zone, package_); }
    std::vector<std::string> notes() const {
        std::vector<std::string> texts;
        for (const StoreNote& note : package_.notes) {
            texts.push_back(noteText(note));
        }
        return texts;
    }
    std::string refusal(int zone = 0) {
        addSmallImport(package_.drawing);
        const std::string before = describe(package_.drawing);
        const Outcome outcome = read(zone);
        EXPECT_EQ(outcome.failure, Failure::NotOurs);
        EXPECT_FALSE(outcome.message.japanese.empty());
        EXPECT_EQ(describe(package_.drawing), before) << "what is refused changes nothing";
        return outcome.message.english;
    }
};

TEST_F(PackageOfAnother, PointsAndPolygonsBecomeCoordinatesAndLots) {
    addTable("杭", 6677, ", 点名 TEXT, NO INTEGER");
    run("INSERT INTO 杭 VALUES (3, " + pointBlob(1, 2) + ", 'K1', 31), (4, " + pointBlob(3, 4) + ", NULL, -5), (5, " +
        pointBlob(5, 6) + ", 'K0', 0)");
    addTable("筆", 6677, ", 地番 TEXT");
    run("INSERT INTO 筆 VALUES (1, " + polygonBlob(1) + ", '12-3'), (2, " + twoPolygonsBlob() + ", '12-4')");
    const Outcome outcome = read();
    ASSERT_TRUE(outcome) << outcome.message.english;
    const Drawing& drawing = package_.drawing;
    EXPECT_EQ(drawing.zone(), 9);
    ASSERT_EQ(drawing.entityCount(), 6U);
    const EntityView first = drawing.entity(0);
    EXPECT_EQ(first.layer, "杭");
    EXPECT_EQ(first.position(), (MdGePoint3d{1, 2, 0}));
    EXPECT_EQ(first.row->name, "K1");
    EXPECT_EQ(first.row->no, 31);
    EXPECT_EQ(first.row->type, "座標");
    EXPECT_EQ(first.row->fileName, "杭");
    EXPECT_EQ(drawing.entity(1).row->no, 4) << "a number that a row cannot hold is the feature's";
    EXPECT_EQ(drawing.entity(1).row->name, "4") << "and stands for the name";
    EXPECT_EQ(drawing.entity(2).row->no, 0) << "which a row can hold";
    EXPECT_EQ(drawing.entity(3).row->name, "12-3");
    EXPECT_EQ(drawing.entity(3).row->type, "画地");
    EXPECT_TRUE(drawing.entity(3).closed);
    EXPECT_EQ(drawing.entity(3).vertices.size(), 3U);
    EXPECT_EQ(drawing.entity(5).row->name, "12-4") << "both parts have the name";
    EXPECT_EQ(drawing.tables()[0].name, drawing.entity(0).row->table);
    EXPECT_EQ(drawing.tables()[1].name, drawing.entity(5).row->table);
    EXPECT_EQ(notes(), (std::vector<std::string>{"'杭': names from '点名', numbers from 'NO'",
                                                 "1 feature without a whole number in the column 'NO' of '杭' (first "
                                                 "fid 4): the fid is taken",
                                                 "'筆': names from '地番', numbers from the features"}));
}

TEST_F(PackageOfAnother, NumbersThatNoRowHoldsAreToldOnceForATable) {
    addTable("p", 6677, ", no");
    const std::string point = pointBlob(1, 2);
    const std::vector<std::pair<std::string, int>> cases = {
        {"31", 31},   {"'32'", 32}, {"33.0", 33}, {"0", 0},           {"2147483647", 2147483647},
        {"-5", 6},    {"7.5", 7},   {"'K1'", 8},  {"99999999999", 9}, {"2147483648", 10},
        {"NULL", 11}, {"''", 12},
    };
    for (std::size_t i = 0; i < cases.size(); ++i) {
        run("INSERT INTO p VALUES (" + std::to_string(i + 1) + ", " + point + ", " + cases[i].first + ")");
    }
    ASSERT_TRUE(read());
    ASSERT_EQ(package_.drawing.entityCount(), cases.size());
    for (std::size_t i = 0; i < cases.size(); ++i) {
        EXPECT_EQ(package_.drawing.entity(i).row->no, cases[i].second) << cases[i].first;
    }
    EXPECT_EQ(notes(),
              (std::vector<std::string>{
                  "'p': names from the numbers, numbers from 'no'",
                  "7 features without a whole number in the column 'no' of 'p' (first fid 6): the fid is taken"}));
}

TEST_F(PackageOfAnother, AFeatureWhoseOwnNumberNoRowHoldsGetsNoneAndIsTold) {
    addTable("p", 6677, ", no");
    run("INSERT INTO p VALUES (-3, " + pointBlob(1, 2) + ", NULL), (-2, " + pointBlob(1, 2) + ", 8), (7, " +
        pointBlob(1, 2) + ", 'x'), (2147483648, " + pointBlob(1, 2) + ", -1)");
    ASSERT_TRUE(read());
    std::vector<int> numbers;
    for (std::size_t i = 0; i < package_.drawing.entityCount(); ++i) {
        numbers.push_back(package_.drawing.entity(i).row->no);
    }
    EXPECT_EQ(numbers, (std::vector<int>{0, 8, 7, 0}));
    EXPECT_EQ(notes(),
              (std::vector<std::string>{
                  "'p': names from the numbers, numbers from 'no'",
                  "1 feature without a whole number in the column 'no' of 'p' (first fid 7): the fid is taken",
                  "2 features of the layer 'p' (first fid -3) whose 'fid' is no number that can be used, taken as 0"}));
}

TEST_F(PackageOfAnother, QuotesInNamesOfTablesAndColumnsAreTheirs) {
    run(R"(CREATE TABLE "a""b" ("f""id" INTEGER PRIMARY KEY, "ge""om" GEOMETRY, name TEXT))");
    run(R"(INSERT INTO "a""b" VALUES (7, )" + pointBlob(1, 2) + ", 'K1')");
    run(R"(INSERT INTO gpkg_contents VALUES ('a"b', 'features', 6677);)"
        R"(INSERT INTO gpkg_geometry_columns VALUES ('a"b', 'ge"om', 'GEOMETRY', 6677, 0, 0))");
    const Outcome outcome = read();
    ASSERT_TRUE(outcome) << outcome.message.english;
    ASSERT_EQ(package_.drawing.entityCount(), 1U);
    const EntityView point = package_.drawing.entity(0);
    EXPECT_EQ(point.position(), (MdGePoint3d{1, 2, 0}));
    EXPECT_EQ(point.row->name, "K1");
    EXPECT_EQ(point.row->no, 7) << "the number of the feature";
}

TEST_F(PackageOfAnother, WhatIsNoPointAndNoPlainPolygonIsLeftOutAndCounted) {
    addTable("p", 6677);
    run("INSERT INTO p VALUES (1, " + pointBlob(1, 2) + "), (2, " + lineBlob() + "), (3, " + lineBlob() + "), (4, " +
        polygonBlob(2) + "), (5, NULL), (6, x'47500001')");
    run("CREATE VIEW v AS SELECT * FROM p");
    declare("v", 6677);
    ASSERT_TRUE(read());
    EXPECT_EQ(package_.drawing.entityCount(), 1U);
    EXPECT_EQ(package_.drawing.entity(0).row->name, "1");
    const std::vector<std::string> said = notes();
    for (const char* wanted :
         {"'v' is no table of its own: left out", "2 features left out: LINESTRING in 'p' (first fid 2)",
          "1 feature left out: polygons with holes in 'p' (first fid 4)",
          "1 feature left out: without a place in 'p' (first fid 5)",
          "1 feature left out: damaged geometry in 'p' (first fid 6)"}) {
        EXPECT_NE(std::find(said.begin(), said.end(), wanted), said.end()) << wanted;
    }
    EXPECT_EQ(said.size(), 6U);
}

TEST_F(PackageOfAnother, ATableThatIsRegisteredByHalfIsLeftOutAndTold) {
    for (const char* name : {"p", "unlisted", "attributes", "without"}) {
        addTable(name, 6677);
        run(std::string("INSERT INTO \"") + name + "\" VALUES (1, " + pointBlob(1, 2) + ")");
    }
    run("DELETE FROM gpkg_contents WHERE table_name = 'unlisted';"
        "UPDATE gpkg_contents SET data_type = 'attributes' WHERE table_name = 'attributes';"
        "DELETE FROM gpkg_geometry_columns WHERE table_name = 'without';"
        "INSERT INTO gpkg_geometry_columns VALUES (NULL, 'geom', 'POINT', 6677, 0, 0)");
    ASSERT_TRUE(read());
    EXPECT_EQ(package_.drawing.entityCount(), 1U);
    const std::vector<std::string> said = notes();
    for (const char* wanted : {"the table 'attributes' is not listed as features in gpkg_contents: left out",
                               "the table 'unlisted' is not listed as features in gpkg_contents: left out",
                               "the table 'without' has no column of geometry that is stored: left out"}) {
        EXPECT_NE(std::find(said.begin(), said.end(), wanted), said.end()) << wanted;
    }
}

TEST_F(PackageOfAnother, TablesAndColumnsThatAreRegisteredInOtherLettersAreTaken) {
    for (const char* name : {"Listed", "Column"}) {
        addTable(name, 6677);
        run(std::string("INSERT INTO \"") + name + "\" VALUES (1, " + pointBlob(1, 2) + ")");
    }
    run("UPDATE gpkg_contents SET table_name = 'LISTED' WHERE table_name = 'Listed';"
        "UPDATE gpkg_geometry_columns SET column_name = 'GEOM' WHERE table_name = 'Column'");
    ASSERT_TRUE(read());
    EXPECT_EQ(package_.drawing.entityCount(), 2U);
    EXPECT_EQ(notes(), (std::vector<std::string>{"'Column': names from the numbers, numbers from the features",
                                                 "'Listed': names from the numbers, numbers from the features"}));
}

// Each row of one register with each of the other would be more than any file holds.
TEST_F(PackageOfAnother, ManyRegistrationsOfOneNameAreReadOnceEach) {
    addTable("p", 6677);
    run("INSERT INTO p VALUES (1, " + pointBlob(1, 2) +
        "); CREATE TABLE copy AS SELECT * FROM gpkg_contents; DROP TABLE gpkg_contents;"
        "ALTER TABLE copy RENAME TO gpkg_contents; CREATE TABLE n AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL"
        " SELECT i + 1 FROM n WHERE i < 1000) SELECT i FROM n;"
        "INSERT INTO gpkg_contents SELECT 'q', 'other', 6677 FROM n;"
        "INSERT INTO gpkg_geometry_columns SELECT 'q', 'geom', 'POINT', 6677, 0, 0 FROM n");
    const Outcome outcome = read();
    ASSERT_TRUE(outcome) << outcome.message.english;
    EXPECT_EQ(package_.drawing.entityCount(), 1U);
    EXPECT_EQ(notes().size(), 1001U);
}

TEST_F(PackageOfAnother, OlderDatumsAreTakenAsTheyStandAndTold) {
    const struct {
        int srs;
        int zone;
        const char* note;
    } table[] = {{6677, 9, nullptr},
                 {2451, 0, "coordinates of zone 9 of JGD2000, taken as they stand"},
                 {30169, 0, "coordinates of zone 9 of the Tokyo datum, taken as they stand"},
                 {-1, 0, nullptr}};
    addTable("p", 6677);
    run("INSERT INTO p VALUES (1, " + pointBlob(1, 2) + ")");
    for (const auto& [srs, zone, note] : table) {
        run("UPDATE gpkg_geometry_columns SET srs_id = " + std::to_string(srs));
        ASSERT_TRUE(read()) << srs;
        EXPECT_EQ(package_.drawing.zone(), zone) << srs;
        const std::vector<std::string> said = notes();
        EXPECT_EQ(said.size(), note == nullptr ? 1U : 2U) << srs;
        EXPECT_TRUE(note == nullptr || said.back() == note) << said.back();
    }
}

TEST_F(PackageOfAnother, GeometryThatNamesAnotherReferenceSystemThanItsTableIsTold) {
    addTable("p", 6677);
    // The number of the system stands behind four bytes, in the order of bytes that the last of these tells.
    const auto inSystem = [](std::string blob, const char* srs, bool bigEndian) {
        blob.replace(std::string("x'475000").size(), 2, bigEndian ? "00" : "01");
        return blob.replace(std::string("x'47500001").size(), 8, srs);
    };
    run("INSERT INTO p VALUES (1, " + inSystem(pointBlob(1, 2), "151a0000", false) + "), (2, " +
        inSystem(pointBlob(3, 4), "00001a15", true) + "), (3, " + pointBlob(5, 6) + "), (4, " +
        inSystem(pointBlob(7, 8), "ffffffff", true) + ")");
    ASSERT_TRUE(read());
    EXPECT_EQ(notes(), (std::vector<std::string>{"'p': names from the numbers, numbers from the features"}));
    run("UPDATE p SET geom = " + inSystem(pointBlob(3, 4), "161a0000", false) +
        " WHERE fid = 2; UPDATE p SET geom = " + inSystem(pointBlob(7, 8), "000010e6", true) + " WHERE fid = 4");
    ASSERT_TRUE(read());
    EXPECT_EQ(package_.drawing.entity(1).position(), (MdGePoint3d{3, 4, 0}));
    EXPECT_EQ(notes(),
              (std::vector<std::string>{"2 features name another reference system than the table 'p' (first fid 2), "
                                        "taken as coordinates in the table's",
                                        "'p': names from the numbers, numbers from the features"}));
}

TEST_F(PackageOfAnother, EveryZoneOfEveryDatumIsKnownByItsCodeAndNoOther) {
    addTable("p", 6677);
    run("INSERT INTO p VALUES (1, " + pointBlob(1, 2) + ")");
    for (const int first : {6669, 2443, 30161}) {
        for (const int zone : {0, 1, 2, 9, 18, 19, 20}) {
            run("UPDATE gpkg_spatial_ref_sys SET organization_coordsys_id = " + std::to_string(first + zone - 1) +
                " WHERE srs_id = 6677");
            const Outcome outcome = read();
            ASSERT_EQ(static_cast<bool>(outcome), zone >= 1 && zone <= 19) << first << ' ' << zone;
            if (outcome) {
                EXPECT_EQ(package_.drawing.zone(), first == 6669 ? zone : 0);
                const std::string told = "coordinates of zone " + std::to_string(zone) + " of ";
                EXPECT_EQ(notes().back().starts_with(told), first != 6669) << notes().back();
            }
        }
    }
}

TEST_F(PackageOfAnother, ATableThatDoesNotTellItsPlaneNeedsAZone) {
    addTable("p", 0);
    run("INSERT INTO p VALUES (1, " + pointBlob(1, 2) + ")");
    EXPECT_NE(refusal().find("the table 'p' does not tell its reference system; --zone"), std::string::npos);
    ASSERT_TRUE(read(7));
    EXPECT_EQ(package_.drawing.zone(), 7);
    run("UPDATE gpkg_geometry_columns SET srs_id = 555"); // of which the package says nothing
    EXPECT_NE(refusal().find("does not tell its reference system"), std::string::npos);
    ASSERT_TRUE(read(3));
    EXPECT_EQ(package_.drawing.zone(), 3);
}

TEST_F(PackageOfAnother, WhatIsNotInMetresOfOnePlaneIsRefusedWithARemedy) {
    addTable("p", 4326);
    run("INSERT INTO p VALUES (1, " + pointBlob(1, 2) + ")");
    EXPECT_NE(refusal(9).find("the table 'p' is in 'WGS 84', and not in metres"), std::string::npos);
    run("UPDATE gpkg_geometry_columns SET srs_id = 100001");
    EXPECT_NE(refusal().find("the table 'p' is in 'own', and not in metres"), std::string::npos)
        << "of an own register";
    run("UPDATE gpkg_geometry_columns SET srs_id = 6677");
    addTable("q", 2451);
    EXPECT_NE(refusal().find("in several reference systems"), std::string::npos);
}

TEST_F(PackageOfAnother, ADatabaseWithoutItsTablesIsNoPackage) {
    addTable("p", 6677);
    run("DROP TABLE gpkg_spatial_ref_sys");
    const Outcome outcome = read();
    EXPECT_EQ(outcome.failure, Failure::NotOurs);
    EXPECT_NE(outcome.message.english.find("is a database, but not a drawing"), std::string::npos)
        << outcome.message.english;
    const Outcome missing = readForeignPackage(folder_.at("none.gpkg"), 0, package_);
    EXPECT_FALSE(missing);
}

TEST_F(PackageOfAnother, ATableWithoutAKeyAndOneOfTheLayersNamesAreTaken) {
    run("CREATE TABLE \"0\" (geom POINT)");
    declare("0", 6677);
    run("INSERT INTO \"0\" VALUES (" + pointBlob(1, 2) + ")");
    ASSERT_TRUE(read());
    EXPECT_EQ(package_.drawing.layers().size(), 1U);
    EXPECT_EQ(package_.drawing.entity(0).layer, "0");
    EXPECT_EQ(package_.drawing.entity(0).row->no, 1);
}

// As a GIS leaves it that did not come to its end.
TEST_F(PackageOfAnother, OneThatAsksForALogGetsNoFilesBesideItWhenItIsRead) {
    addTable("p", 6677);
    run("INSERT INTO p (geom) VALUES (" + pointBlob(1, 2) + ")");
    {
        const OtherProgram gis(path_);
        ASSERT_EQ(gis.one("PRAGMA journal_mode = WAL"), "wal");
        run("INSERT INTO p (geom) VALUES (" + pointBlob(3, 4) + ")");
        ASSERT_TRUE(read());
        EXPECT_EQ(package_.drawing.entityCount(), 2U) << "the log is read where it is there";
    }
    const std::vector<std::string> before = folder_.names();
    ASSERT_EQ(before.size(), 1U);
    ASSERT_TRUE(read());
    EXPECT_EQ(package_.drawing.entityCount(), 2U);
    EXPECT_EQ(folder_.names(), before);
}

TEST_F(PackageOfAnother, ATableThatStandsInForThoseOfSqliteIsRefused) {
    run("CREATE TABLE pragma_table_xinfo (name, hidden, cid, pk)");
    const Outcome outcome = read();
    EXPECT_EQ(outcome.failure, Failure::Reshaped);
    EXPECT_NE(outcome.message.english.find("it has a table named 'pragma_...'"), std::string::npos)
        << outcome.message.english;
}

} // namespace
} // namespace fenmark::drawing
