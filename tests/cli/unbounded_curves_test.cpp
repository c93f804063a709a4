// Radii and lengths that no survey holds, mistyped or hostile: laid exactly, drawn with a bounded number of points, reported.
#include "command_line.h"

#include <sqlite3.h>

#include <cmath>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace fenmark::cli {
namespace {

using UnboundedCurves = CommandLine;

// Two points, a straight, and the curve in question: its record behind the second point.
std::string route(const std::string& curve) {
    return "A00,\r\nA01,1,BP,0.000,0.000,,\r\nA01,2,BC,0.000,100.000,,\r\nA01,3,EP,10.000,220.000,,\r\nA99,\r\n"
           "F00,1,1,CL,3,\r\nB01,1,BP,\r\nB01,2,BC,\r\n" +
           curve + "\r\nB01,3,EP,\r\nF99,\r\n";
}

// The most bytes of a drawing with one such curve: 10,000 points of 16 bytes, and what a new drawing takes.
constexpr std::uintmax_t kDrawingBytes = 1'200'000;
constexpr double kEndTolerance = 1e-6; // metres

struct Mistyped {
    const char* name;
    const char* record;
    double length; // metres
    double reach;  // how far from its start its end can lie at most, metres
    bool wound;    // turns more than ten times
};

class MistypedClothoid : public CommandLine, public ::testing::WithParamInterface<Mistyped> {};

TEST_P(MistypedClothoid, IsLaidExactlyAndTold) {
    const Mistyped& mistyped = GetParam();
    const std::string path = file(route(mistyped.record));
    const Ran ran = fenmark({"import", path});
    EXPECT_EQ(ran.code, kDone) << ran.err;
    const nlohmann::json alignment = info(folder.at("a.gpkg"))["sites"][0]["alignments"][0];
    ASSERT_EQ(alignment["elements"].size(), 2U) << ran.err;
    const nlohmann::json clothoid = alignment["elements"][1];
    EXPECT_NEAR(clothoid["length"].get<double>() / mistyped.length, 1.0, 1e-9);
    const double dx = clothoid["end"][0].get<double>() - clothoid["start"][0].get<double>();
    const double dy = clothoid["end"][1].get<double>() - clothoid["start"][1].get<double>();
    EXPECT_LE(std::hypot(dx, dy), mistyped.reach + kEndTolerance);
    EXPECT_EQ(ran.err.find(" turns ") != std::string::npos, mistyped.wound) << ran.err;
    EXPECT_LE(std::filesystem::file_size(folder.at("a.gpkg")), kDrawingBytes);
    // The nearest place and a station are found at once too.
    EXPECT_EQ(fenmark({"locate", folder.at("a.gpkg"), "CL", "50", "3"}).code, kDone);
    EXPECT_EQ(fenmark({"station", folder.at("a.gpkg"), "CL", "50"}).code, kDone);
    for (const char* out : {"a.dxf", "a.xml", "a.csv"}) {
        EXPECT_EQ(fenmark({"export", folder.at("a.gpkg"), folder.at(out), "--quiet"}).code, kDone) << out;
    }
    // In metres: the points of such curves have no latitude.
    EXPECT_EQ(fenmark({"export", folder.at("a.gpkg"), folder.at("a.geojson"), "--crs", "plane", "--quiet"}).code,
              kDone);
    EXPECT_EQ(fenmark({"plot", folder.at("a.gpkg"), folder.at("a.svg"), "--quiet"}).code, kDone);
}

// A clothoid winds about a place that is sqrt(pi / 2) = 1.25 A from its inflection, so it ends within 1.5 A of its start.
INSTANTIATE_TEST_SUITE_P(
    Records, MistypedClothoid,
    ::testing::Values(Mistyped{"ARadiusOfNothing", "C02,133.3,0.0000000000000000000000000000001,212,",
                               133.3 * 133.3 * 1e31, 200.0, true},
                      Mistyped{"ARadiusOfAMillimetre", "C02,100,0.001,212,", 1e7 - 1e4 / 212.0, 150.0, true},
                      Mistyped{"ARadiusOfATenth", "C02,100,0.0001,212,", 1e8 - 1e4 / 212.0, 150.0, true},
                      Mistyped{"ARadiusOfAHundredth", "C02,100,0.00001,212,", 1e9 - 1e4 / 212.0, 150.0, true},
                      Mistyped{"AParameterInMillimetres", "C02,90000,0,150,", 5.4e7, 135000.0, true},
                      Mistyped{"ARadiusOfAMetre", "C02,100,0,1,", 1e4, 150.0, true},
                      Mistyped{"ARadiusOfThirtyCentimetres", "C02,100,0,0.3,", 1e4 / 0.3, 150.0, true},
                      Mistyped{"ARadiusOfACentimetre", "C02,100,0,0.01,", 1e6, 150.0, true}),
    [](const auto& info) { return info.param.name; });

TEST_F(UnboundedCurves, TheExtentIsThatOfTheTrueCurve) {
    ASSERT_EQ(fenmark({"import", file(route("C02,100,0,0.01,"))}).code, kDone);
    const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> base(
        [&] {
            sqlite3* opened = nullptr;
            sqlite3_open(folder.at("a.gpkg").c_str(), &opened);
            return opened;
        }(),
        &sqlite3_close);
    sqlite3_stmt* statement = nullptr;
    ASSERT_EQ(sqlite3_prepare_v2(base.get(),
                                 "SELECT min_x, min_y, max_x, max_y FROM gpkg_contents WHERE table_name = 'alignments'",
                                 -1, &statement, nullptr),
              SQLITE_OK);
    ASSERT_EQ(sqlite3_step(statement), SQLITE_ROW);
    for (int i = 0; i < 4; ++i) {
        EXPECT_LT(std::abs(sqlite3_column_double(statement, i)), 400.0);
    }
    sqlite3_finalize(statement);
}

TEST_F(UnboundedCurves, TwelveParametersInMillimetresStaySmall) {
    std::string points = "A00,\r\nA01,1,BP,0.000,0.000,,\r\n";
    std::string records = "F00,1,1,CL,3,\r\nB01,1,BP,\r\n";
    for (int i = 2; i <= 14; ++i) {
        const std::string number = std::to_string(i);
        points += "A01," + number + ",P" + number + ",0.000," + std::to_string(100 * i) + ".000,,\r\n";
        records += "B01," + number + ",P" + number + ",\r\n" + (i < 14 ? "C02,90000,0,150,\r\n" : "");
    }
    ASSERT_EQ(fenmark({"import", file(points + "A99,\r\n" + records + "F99,\r\n")}).code, kDone);
    EXPECT_LE(std::filesystem::file_size(folder.at("a.gpkg")), 12 * 200'000 + kDrawingBytes);
}

TEST_F(UnboundedCurves, ACoordinateOfSixtyDigitsIsKeptAndDrawn) {
    const std::string far = "1" + std::string(59, '0') + ".000";
    const std::string text = "A00,\r\nA01,1,BP,0.000,0.000,,\r\nA01,2,EP,0.000," + far +
                             ",,\r\nA99,\r\nF00,1,1,CL,3,\r\nB01,1,BP,\r\nB01,2,EP,\r\nF99,\r\n";
    ASSERT_EQ(fenmark({"import", file(text)}).code, kDone);
    EXPECT_NEAR(info(folder.at("a.gpkg"))["sites"][0]["alignments"][0]["length"].get<double>() / 1e59, 1.0, 1e-12);
    EXPECT_EQ(fenmark({"plot", folder.at("a.gpkg"), folder.at("a.svg"), "--quiet"}).code, kDone);
}

// Where a start station is so large that adding the length is lost, there was no sheet: no SVG, or a PDF without a page.
TEST_F(UnboundedCurves, NoSheetAlongAnAlignmentIsToldAndWritesNothing) {
    const std::string text = "A00,\r\nA01,1,BP,0.000,0.000,,\r\nA01,2,EP,0.000,100.000,,\r\nA99,\r\n"
                             "F00,1,1,CL,3,\r\nF03,10000000000000000000,\r\nB01,1,BP,\r\nB01,2,EP,\r\nF99,\r\n";
    ASSERT_EQ(fenmark({"import", file(text)}).code, kDone);
    for (const char* name : {"o.svg", "o.pdf"}) {
        const std::vector<std::string> plot = {"plot", folder.at("a.gpkg"), folder.at(name), "--along", "CL"};
        const Ran ran = fenmark(plot);
        EXPECT_EQ(ran.code, kNotDone) << name;
        EXPECT_TRUE(contains(ran.err, "stations that no survey has")) << ran.err;
        EXPECT_TRUE(contains(inJapanese(plot).err, "追加距離が大きすぎる")) << name;
        EXPECT_FALSE(test::fileExists(folder.at(name))) << name;
    }
}

TEST_F(UnboundedCurves, NoStationIsCountedPastAnElementWithoutEnd) {
    ASSERT_EQ(fenmark({"import", file(route("C02,100,0,50,"))}).code, kDone);
    const std::string drawing = folder.at("a.gpkg");
    const std::vector<std::string> questions[] = {{"station", drawing, "CL", "100"},
                                                  {"locate", drawing, "CL", "50", "3"}};
    for (const auto& question : questions) {
        EXPECT_EQ(fenmark(question).code, kDone) << question[0];
    }
    sqlite3* raw = nullptr;
    ASSERT_EQ(sqlite3_open(drawing.c_str(), &raw), SQLITE_OK);
    const std::unique_ptr<sqlite3, int (*)(sqlite3*)> base(raw, sqlite3_close);
    for (const char* change : {"length = NULL", "length = 0, start_x = 9e999", "start_x = 0, direction = NULL"}) {
        const std::string sql = std::string("UPDATE alignment_elements SET ") + change + " WHERE place = 0";
        ASSERT_EQ(sqlite3_exec(raw, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(raw);
        for (const auto& question : questions) {
            const Ran ran = fenmark(question);
            EXPECT_EQ(ran.code, kNotDone) << question[0] << " " << change;
            EXPECT_EQ(ran.out, "") << question[0] << " " << change;
            EXPECT_TRUE(contains(ran.err, "the alignment 'CL' has elements beyond all bounds")) << ran.err;
            EXPECT_TRUE(contains(inJapanese(question).err, "測点を求められません")) << question[0];
        }
    }
}

// A drawing whose elements somebody changed.
class HostileDrawing : public CommandLine, public ::testing::WithParamInterface<const char*> {};

TEST_P(HostileDrawing, IsOpenedAndAnswers) {
    ASSERT_EQ(fenmark({"import", file(route("C02,100,0,50,"))}).code, kDone);
    const std::string drawing = folder.at("a.gpkg");
    sqlite3* base = nullptr;
    ASSERT_EQ(sqlite3_open(drawing.c_str(), &base), SQLITE_OK);
    const std::string change = std::string("UPDATE alignment_elements SET ") + GetParam() + " WHERE type = 'A'";
    EXPECT_EQ(sqlite3_exec(base, change.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(base);
    sqlite3_close(base);
    // Each ends in an answer or in a clear message; none of them hangs or takes all memory.
    const auto ends = [&](const std::vector<std::string>& arguments) {
        const Ran ran = fenmark(arguments);
        EXPECT_TRUE(ran.code == kDone || (ran.code == kNotDone && !ran.err.empty())) << arguments[0] << ran.err;
    };
    ends({"info", drawing, "--json"});
    ends({"station", drawing, "CL", "120"});
    ends({"locate", drawing, "CL", "50", "3"});
    ends({"export", drawing, folder.at("b.dxf"), "--quiet"});
    ends({"export", drawing, folder.at("b.geojson"), "--quiet"});
    ends({"plot", drawing, folder.at("b.svg"), "--quiet"});
    EXPECT_TRUE(!test::fileExists(folder.at("b.dxf")) || std::filesystem::file_size(folder.at("b.dxf")) < 2'000'000);
}

INSTANTIATE_TEST_SUITE_P(Changes, HostileDrawing,
                         ::testing::Values("length = 1e308", "length = 1e-320", "length = NULL", "end_radius = 1e-300",
                                           "end_radius = 1e-320", "length = 1e308, end_radius = 1e-300",
                                           "length = 1e15, end_radius = 0.001", "start_x = 1e308, length = 1e308"),
                         [](const auto& info) { return "Case" + std::to_string(info.index); });

} // namespace
} // namespace fenmark::cli
