// fenmark preview, info, station, locate, export and plot.
#include "command_line.h"

#include <sqlite3.h>

#include <algorithm>
#include <filesystem>
#include <regex>
#include <string>
#include <vector>

namespace fenmark::cli {
namespace {

using QueryLine = CommandLine;

TEST_F(QueryLine, PreviewShowsTheTreeOfTheDialog) {
    const Ran ran = fenmark({"preview", file(std::string(kPoints) + kRoute + kLongitudinal)});
    EXPECT_EQ(ran.code, kDone) << ran.err;
    EXPECT_EQ(ran.out, "全て\n"
                       "├─ 座標データ  [2]\n"
                       "├─ 画地データ\n"
                       "├─ 路線成果-IP線\n"
                       "├─ 路線成果-主要線\n"
                       "├─ 路線成果-中心線  [1]\n"
                       "├─ 路線成果-幅杭線左\n"
                       "├─ 路線成果-幅杭線右\n"
                       "├─ 路線成果-連続線(直線のみ)\n"
                       "├─ 路線成果-連続線(曲線含み)\n"
                       "├─ 縦断成果データ  [1]\n"
                       "└─ 横断成果データ\n");
    EXPECT_EQ(ran.err, "");
    EXPECT_FALSE(test::fileExists(folder.at("a_Input.log"))) << "a preview leaves no log";
}

TEST_F(QueryLine, PreviewAsJsonHasTheShapeToldAndItsCounts) {
    EXPECT_EQ(fenmark({"preview", example("road.sim"), "--json"}).out,
              "{\"coordinates\":136,\"lots\":5,\"longitudinal\":46,\"cross_sections\":22,\"routes\":[1,1,1,1,1,1,1],"
              "\"refers_to_route_types\":[3]}\n");
    EXPECT_EQ(fenmark({"preview", file("", "empty.sim"), "--json"}).out,
              "{\"coordinates\":0,\"lots\":0,\"longitudinal\":0,\"cross_sections\":0,\"routes\":[0,0,0,0,0,0,0],"
              "\"refers_to_route_types\":[]}\n");
}

TEST_F(QueryLine, PreviewAsJsonTellsTheRoutesThatResultsReferTo) {
    std::string all = kPoints;
    std::string results;
    for (int type = 1; type <= 7; ++type) {
        const std::string number = std::to_string(type);
        const std::string route =
            "F00," + number + ",1,R" + number + "," + number + ",\r\nB01,1,BP,\r\nB01,2,EP,\r\nF99,\r\n";
        const std::string result = "H00," + number + ",R" + number + ",\r\nH01,No.1,20.0,5.5,6.0,1,\r\nH99,\r\n";
        const std::string wanted = type == 2 || type == 3 || type == 7 ? "[" + number + "]" : "[]";
        const Ran ran = fenmark({"preview", file(kPoints + route + result), "--json"});
        EXPECT_EQ(ran.json()["refers_to_route_types"].dump(), wanted) << type;
        all += route;
        results += result;
    }
    EXPECT_EQ(fenmark({"preview", file(all + results), "--json"}).json()["refers_to_route_types"].dump(), "[2,3,7]");
}

TEST_F(QueryLine, PreviewCountsDuplicatesThatTheImportRefuses) {
    const std::string path = file("A00,\r\nA01,1,a,1,2,,\r\nA01,1,b,3,4,,\r\nA99,\r\n");
    EXPECT_EQ(fenmark({"preview", path, "--json"}).json()["coordinates"], 2);
    EXPECT_EQ(fenmark({"import", path}).out, "1個のエラー\n座標データから1個のポイントを作成\n");
}

TEST_F(QueryLine, InfoAsJsonHasTheShapeTold) {
    const std::string lot = "D00,7,\"L\"\"1\",1,\r\nB01,1,,\r\nB01,2,,\r\nD99,\r\n";
    ASSERT_EQ(fenmark({"import", file(std::string(kPoints) + kRoute + lot)}).code, kDone);
    const std::string out = fenmark({"info", folder.at("a.gpkg"), "--json"}).out;
    const std::string expected =
        R"({"layers":[{"name":"0"}],"sites":[{"name":"サイト","alignments":[{"id":#,"name":"CL","description":"a-CL",)"
        R"("layer":"0","start_station":0.0,"length":100.0,"elements":[{"id":#,"type":"S","start":[0.0,0.0],)"
        R"("end":[100.0,0.0],"length":100.0}]}]}],"entities":[{"id":#,"type":"point","layer":"0",)"
        R"("position":[0.0,0.0,0.0],"data":{"table":"JSIMA_V3_Point","No":1,"Name":"BP","Type":"座標",)"
        R"("FileName":"a.sim"}},{"id":#,"type":"point","layer":"0","position":[100.0,0.0,0.0],)"
        R"("data":{"table":"JSIMA_V3_Point","No":2,"Name":"EP","Type":"座標","FileName":"a.sim"}},{"id":#,)"
        R"("type":"polyline","layer":"0","closed":true,"vertices":[[0.0,0.0],[100.0,0.0]],)"
        R"("data":{"table":"JSIMA_V3_Pline","No":7,"Name":"L\"1","Type":"画地","FileName":"a.sim"}}]})"
        "\n";
    EXPECT_EQ(std::regex_replace(out, std::regex(R"("id":[1-9][0-9]*)"), R"("id":#)"), expected);
}

TEST_F(QueryLine, InfoAsJsonTellsCurvesAndNullForInfiniteRadii) {
    ASSERT_EQ(fenmark({"import", example("road.sim")}).code, kDone);
    const nlohmann::json elements = info(folder.at("road.gpkg"))["sites"][0]["alignments"][0]["elements"];
    auto keys = [](const nlohmann::json& element) {
        std::string names;
        for (const auto& [key, value] : element.items()) {
            names += key + " ";
        }
        return names;
    };
    EXPECT_EQ(keys(elements[0]), "end id length start type ");
    EXPECT_EQ(keys(elements[1]), "clockwise end end_radius id length pi start start_radius type ");
    EXPECT_EQ(keys(elements[2]), "center clockwise end id length radius start type ");
    EXPECT_TRUE(elements[1]["start_radius"].is_null());
    EXPECT_EQ(elements[1]["end_radius"], 150.0);
    EXPECT_EQ(elements[2]["radius"], 150.0);
    EXPECT_TRUE(elements[3]["end_radius"].is_null());
}

TEST_F(QueryLine, InfoSumsUpForPeople) {
    ASSERT_EQ(fenmark({"import", example("road.sim")}).code, kDone);
    const std::string out = fenmark({"info", folder.at("road.gpkg")}).out;
    EXPECT_TRUE(contains(out, "points     402  (座標 136, 縦断成果 46, 横断成果 220)")) << out;
    EXPECT_TRUE(contains(out, "polylines  9  (画地 5, IP線 1, 幅杭線左 1, 幅杭線右 1, 連続線 1)")) << out;
    EXPECT_TRUE(contains(out, "中心線  100.000 to 968.417 m, length 868.417 m, 4 straight, 4 arc, 7 clothoid")) << out;
}

TEST_F(QueryLine, StationBeyondTheEndsIsRefusedWithTheReach) {
    ASSERT_EQ(fenmark({"import", file(std::string(kPoints) + kRoute)}).code, kDone);
    const std::string drawing = folder.at("a.gpkg");
    EXPECT_EQ(fenmark({"station", drawing, "CL", "100"}).out, "100 0\n");
    EXPECT_EQ(fenmark({"station", drawing, "CL", "100.0000005"}).code, kDone) << "within 1e-6 m of the end";
    const Ran ran = fenmark({"station", drawing, "CL", "100.01"});
    EXPECT_EQ(ran.code, kNotDone);
    EXPECT_TRUE(contains(ran.err, "it runs from 0 to 100")) << ran.err;
    EXPECT_EQ(fenmark({"station", drawing, "CL", "-1"}).code, kNotDone);
    EXPECT_EQ(fenmark({"station", drawing, "CL", "50", ""}).code, kWrongUsage) << "an empty offset is not 0";
}

TEST_F(QueryLine, UnknownAlignmentIsRefusedWithTheNames) {
    ASSERT_EQ(fenmark({"import", file(std::string(kPoints) + kRoute)}).code, kDone);
    for (const std::vector<std::string>& line :
         {std::vector<std::string>{"station", folder.at("a.gpkg"), "cl", "0"},
          std::vector<std::string>{"locate", folder.at("a.gpkg"), "cl", "0", "0"}}) {
        const Ran ran = fenmark(line);
        EXPECT_EQ(ran.code, kNotDone);
        EXPECT_TRUE(contains(ran.err, "no alignment named 'cl'; its alignments: CL")) << ran.err;
    }
}

// A drawing may have thousands of alignments, and names of any length.
TEST_F(QueryLine, NamesOfVeryManyAlignmentsAndVeryLongNamesAreCut) {
    const std::string long60 = "長い" + std::string(58, 'n');
    std::string text(kPoints);
    for (int i = 0; i < 53; ++i) {
        std::string route(kRoute);
        const std::string name = i == 0   ? long60
                                 : i == 1 ? long60 + "n"
                                 : i == 2 ? std::string(20'000, 'x')
                                          : "R" + std::to_string(i);
        route.replace(route.find("CL"), 2, name);
        text += route;
    }
    ASSERT_EQ(fenmark({"import", file(text)}).code, kDone);
    const Ran ran = fenmark({"station", folder.at("a.gpkg"), "none", "0"});
    EXPECT_EQ(ran.code, kNotDone);
    EXPECT_TRUE(contains(ran.err, "alignments: " + long60 + ", " + long60 + "…, " + std::string(60, 'x') + "…, R3, "))
        << ran.err;
    EXPECT_TRUE(contains(ran.err, "R48, R49 and 3 more")) << ran.err;
    EXPECT_FALSE(contains(ran.err, "R50"));
    for (const int count : {49, 50, 51}) {
        std::string names(kPoints);
        for (int i = 0; i < count; ++i) {
            std::string route(kRoute);
            names += route.replace(route.find("CL"), 2, "R" + std::to_string(i));
        }
        const std::string path = file(names, "b" + std::to_string(count) + ".sim");
        ASSERT_EQ(fenmark({"import", path, "--drawing", path + ".gpkg"}).code, kDone);
        EXPECT_EQ(contains(fenmark({"station", path + ".gpkg", "none", "0"}).err, " more"), count > 50) << count;
    }
    const Ran japanese = fenmark({"station", folder.at("a.gpkg"), "none", "0"}, false, Language::Japanese);
    EXPECT_TRUE(contains(japanese.err, "R48, R49、ほか3件")) << japanese.err;
}

TEST_F(QueryLine, StationAndLocateAsJson) {
    ASSERT_EQ(fenmark({"import", file(std::string(kPoints) + kRoute)}).code, kDone);
    EXPECT_EQ(fenmark({"station", folder.at("a.gpkg"), "CL", "20", "4", "--json"}).json(),
              (nlohmann::json{{"x", 20}, {"y", -4}}));
    EXPECT_EQ(fenmark({"locate", folder.at("a.gpkg"), "CL", "20", "-4", "--json"}).json(),
              (nlohmann::json{{"station", 20}, {"offset", 4}, {"perpendicular", true}}));
}

TEST_F(QueryLine, PointBeyondTheEndIsLocatedWithANote) {
    ASSERT_EQ(fenmark({"import", file(std::string(kPoints) + kRoute)}).code, kDone);
    const Ran ran = fenmark({"locate", folder.at("a.gpkg"), "CL", "130", "40"});
    EXPECT_EQ(ran.code, kDone);
    EXPECT_TRUE(ran.out.starts_with("100 ")) << ran.out;
    EXPECT_TRUE(contains(ran.err, "note")) << ran.err;
}

class ReadsADrawing : public CommandLine, public ::testing::WithParamInterface<std::vector<std::string>> {
  protected:
    Ran on(const std::string& drawing) const {
        std::vector<std::string> line = GetParam();
        for (std::string& argument : line) {
            if (argument == "DRAWING") {
                argument = drawing;
            } else if (argument.starts_with("OUT")) {
                argument = folder.at(argument);
            }
        }
        return fenmark(line);
    }
};

TEST_P(ReadsADrawing, RefusesWhatIsNoDrawingInOneLine) {
    std::filesystem::create_directory(folder.at("folder.gpkg"));
    for (const std::string& drawing : {folder.at("missing.gpkg"), folder.at("folder.gpkg"),
                                       file("not a drawing", "text.gpkg"), file("", "empty.gpkg")}) {
        const Ran ran = on(drawing);
        EXPECT_EQ(ran.code, kNotDone) << drawing;
        EXPECT_EQ(ran.out, "");
        EXPECT_EQ(std::count(ran.err.begin(), ran.err.end(), '\n'), 1) << ran.err;
        EXPECT_TRUE(contains(ran.err, drawing)) << ran.err;
    }
}

TEST_P(ReadsADrawing, ChangesNothingInIt) {
    ASSERT_EQ(fenmark({"import", file(std::string(kPoints) + kRoute)}).code, kDone);
    const std::string drawing = folder.at("a.gpkg");
    const std::string before = test::readFile(drawing);
    const Ran ran = on(drawing);
    EXPECT_EQ(ran.code, kDone) << ran.err;
    EXPECT_EQ(test::readFile(drawing), before);
}

INSTANTIATE_TEST_SUITE_P(Commands, ReadsADrawing,
                         ::testing::Values(std::vector<std::string>{"info", "DRAWING"},
                                           std::vector<std::string>{"info", "DRAWING", "--json"},
                                           std::vector<std::string>{"station", "DRAWING", "CL", "1"},
                                           std::vector<std::string>{"locate", "DRAWING", "CL", "1", "1"},
                                           std::vector<std::string>{"export", "DRAWING", "OUT.dxf"},
                                           std::vector<std::string>{"export", "DRAWING", "OUT.XML"},
                                           std::vector<std::string>{"export", "DRAWING", "OUT.geojson", "--crs",
                                                                    "plane"},
                                           std::vector<std::string>{"export", "DRAWING", "OUT.kml", "--zone", "9"},
                                           std::vector<std::string>{"export", "DRAWING", "OUT.sim"},
                                           std::vector<std::string>{"export", "DRAWING", "OUT.csv"},
                                           std::vector<std::string>{"plot", "DRAWING", "OUT.svg"}));

TEST_F(QueryLine, AZoneInPlaceOfTheDrawingsIsInTheFileOrToldAsNotNeeded) {
    ASSERT_EQ(fenmark({"import", file(std::string(kPoints) + kRoute), "--zone", "9"}).code, kDone);
    const auto exported = [&](const char* target, std::vector<std::string> more) {
        more.insert(more.begin(), {"export", folder.at("a.gpkg"), folder.at(target), "--zone"});
        const Ran ran = fenmark(more);
        EXPECT_EQ(ran.code, kDone) << ran.err;
        return ran.err.find("--zone was not needed") == std::string::npos;
    };
    EXPECT_TRUE(exported("a.xml", {"5"}));
    EXPECT_NE(test::readFile(folder.at("a.xml")).find("zone 5\" epsgCode=\"6673\""), std::string::npos);
    EXPECT_TRUE(exported("b.xml", {"5", "--profile", "j-landxml", "--only", "alignments"}));
    EXPECT_NE(test::readFile(folder.at("b.xml")).find("horizontalCoordinateSystemName=\"5(X,Y)\""), std::string::npos);
    EXPECT_TRUE(exported("a.geojson", {"5"}));
    EXPECT_TRUE(exported("a.kml", {"5"}));
    EXPECT_TRUE(exported("a.dxf", {"9"})) << "which the drawing has";
    for (const char* target : {"a.dxf", "a.csv", "b.sim"}) {
        for (const char* zone : {"1", "5", "19"}) {
            EXPECT_FALSE(exported(target, {zone})) << target << ' ' << zone;
        }
    }
    EXPECT_FALSE(exported("b.geojson", {"5", "--crs", "plane"}));
    EXPECT_TRUE(exported("b.csv", {"5", "--quiet"}));
}

TEST_F(QueryLine, ExportTakesADatabaseOfOthersForAPackageAndNoDrawingThatIsWrong) {
    const struct {
        const char* change;
        const char* refusal; // empty where it is exported
    } kChanges[] = {{"UPDATE fenmark_drawing SET format = 9", "was made by a later version of this program"},
                    {"ALTER TABLE sites RENAME TO theirs", "its table 'sites' is missing"},
                    {"DELETE FROM layers", "it has no layer"},
                    {"DROP TABLE fenmark_drawing", ""}};
    const std::string path = file(kPoints);
    for (const auto& [change, refusal] : kChanges) {
        ASSERT_EQ(fenmark({"import", path}).code, kDone);
        sqlite3* base = nullptr;
        ASSERT_EQ(sqlite3_open(folder.at("a.gpkg").c_str(), &base), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(base, change, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(base);
        sqlite3_close(base);
        const Ran ran = fenmark({"export", folder.at("a.gpkg"), folder.at("b.sim")});
        const bool isPackage = *refusal == '\0';
        EXPECT_EQ(ran.code, isPackage ? kDone : kNotDone) << change << ": " << ran.err;
        EXPECT_TRUE(contains(ran.err, refusal)) << ran.err;
        EXPECT_EQ(test::fileExists(folder.at("b.sim")), isPackage) << change;
        std::filesystem::remove(folder.at("a.gpkg"));
    }
    EXPECT_TRUE(contains(test::readFile(folder.at("b.sim")), "A01,    1,BP,")) << "with its points";
}

TEST_F(QueryLine, ExportSaysWhatIsMissingOrWrong) {
    ASSERT_EQ(fenmark({"import", file(std::string(kPoints) + kRoute)}).code, kDone);
    const auto exported = [&](std::vector<std::string> more, const char* target = "out.dxf") {
        more.insert(more.begin(), {"export", folder.at("a.gpkg"), folder.at(target)});
        return fenmark(more);
    };
    const Ran zone = exported({}, "out.geojson");
    EXPECT_EQ(zone.code, kNotDone);
    EXPECT_NE(zone.err.find("--zone 1..19, or --crs plane"), std::string::npos) << zone.err;
    EXPECT_FALSE(test::fileExists(folder.at("out.geojson")));
    const Ran kml = exported({}, "out.kml");
    EXPECT_EQ(kml.code, kNotDone);
    EXPECT_EQ(kml.err.find("--crs"), std::string::npos) << "KML has no metres";
    EXPECT_EQ(exported({"--zone", "9"}, "out.kml").code, kDone);
    EXPECT_EQ(exported({"--crs", "plane"}, "out.kml").code, kWrongUsage);
    EXPECT_EQ(exported({"--layer", "0"}).code, kDone);
    const Ran layer = exported({"--layer", "無い"});
    EXPECT_EQ(layer.code, kNotDone);
    EXPECT_NE(layer.err.find("無い"), std::string::npos);
    EXPECT_EQ(exported({"--only", "points,lots"}).code, kDone);
    for (const std::vector<std::string>& wrong : std::vector<std::vector<std::string>>{{"--only", "trees"},
                                                                                       {"--rectangle", "1,2,3"},
                                                                                       {"--rectangle", "1,2,3,x"},
                                                                                       {"--scale", "0"},
                                                                                       {"--scale", "1e308"},
                                                                                       {"--scale", "1e-308"},
                                                                                       {"--scale", "nan"},
                                                                                       {"--scale", "big"},
                                                                                       {"--dxf-version", "R13"},
                                                                                       {"--zone", "20"}}) {
        EXPECT_EQ(exported(wrong).code, kWrongUsage) << wrong[0] << " " << wrong[1];
    }
    EXPECT_EQ(exported({"--rectangle", "90,-1,110,1", "--only", "points"}, "out.csv").code, kDone);
    const std::string csv = test::readFile(folder.at("out.csv"));
    EXPECT_EQ(csv.find(",BP,"), std::string::npos);
    EXPECT_NE(csv.find(",EP,"), std::string::npos);
}

TEST_F(QueryLine, AFileOfWhichNothingWasSelectedIsTold) {
    ASSERT_EQ(fenmark({"import", file(std::string(kPoints) + kRoute), "--zone", "9"}).code, kDone);
    const auto told = [&](const std::string& target, const std::vector<std::string>& selection) {
        std::vector<std::string> arguments = {"export", folder.at("a.gpkg"), folder.at(target)};
        arguments.insert(arguments.end(), selection.begin(), selection.end());
        const Ran ran = fenmark(arguments);
        EXPECT_EQ(ran.code, kDone) << target << ran.err;
        return contains(ran.err, "the file holds no object: none of the drawing is what was asked for");
    };
    for (const std::string target : {"out.dxf", "out.xml", "out.sim", "out.geojson", "out.kml", "out.csv"}) {
        EXPECT_TRUE(told(target, {"--rectangle", "-1,90,1,110"})) << target << ": east and north exchanged";
        EXPECT_TRUE(told(target, {"--only", "lots"})) << target;
        EXPECT_FALSE(told(target, {"--rectangle", "90,-1,110,1"})) << target;
        EXPECT_FALSE(told(target, {"--only", "alignments"})) << target;
        EXPECT_FALSE(told(target, {})) << target;
    }
}

TEST_F(QueryLine, ExportReplacesItsTargetAndLeavesNothingBeside) {
    ASSERT_EQ(fenmark({"import", file(std::string(kPoints) + kRoute)}).code, kDone);
    file("old", "out.csv");
    ASSERT_EQ(fenmark({"export", folder.at("a.gpkg"), folder.at("out.csv")}).code, kDone);
    EXPECT_TRUE(contains(test::readFile(folder.at("out.csv")), "x_east"));
    std::size_t files = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder.path())) {
        ++files;
    }
    EXPECT_EQ(files, 4U) << "the SIMA file, its log, the drawing, the export";
}

TEST_F(QueryLine, NothingIsWrittenOverTheFileThatWasImported) {
    const std::string source = file(std::string(kPoints) + kRoute + "X01,kept here alone,\r\n");
    ASSERT_EQ(fenmark({"import", source}).code, kDone);
    const std::string drawing = folder.at("a.gpkg");
    const std::string before = test::readFile(source);
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"export", drawing, source}, {"stakes", drawing, "CL", "--out", source}}) {
        const Ran ran = fenmark(arguments);
        EXPECT_EQ(ran.code, kNotDone) << arguments.front();
        EXPECT_TRUE(contains(ran.err, source + ": was imported into the drawing and is not written over")) << ran.err;
        EXPECT_EQ(test::readFile(source), before);
    }
    // Nor by a link, nor over the log, which tells what else was not taken.
    const std::string log = folder.at("a_Input.log");
    const std::string logged = test::readFile(log);
    std::vector<std::vector<std::string>> lines{{"stakes", drawing, "CL", "--out", log}};
    for (const auto& [to, stem] : {std::pair(source, "s"), std::pair(log, "l")}) {
        for (const auto& [command, end] : {std::pair("export", ".csv"), std::pair("plot", ".svg"),
                                           std::pair("plot", ".pdf"), std::pair("report", ".html")}) {
            const std::string link = folder.at(std::string(stem) + end);
            std::filesystem::create_symlink(to, link);
            lines.push_back({command, drawing, link});
        }
    }
    for (const std::vector<std::string>& line : lines) {
        const Ran ran = fenmark(line);
        EXPECT_EQ(ran.code, kNotDone) << line[0] << ' ' << line.back();
        EXPECT_TRUE(contains(ran.err, line.back() + ": ")) << ran.err;
        EXPECT_TRUE(contains(ran.err, " and is not written over; give another name\n")) << ran.err;
        EXPECT_EQ(test::readFile(source), before) << line[0] << ' ' << line.back();
        EXPECT_EQ(test::readFile(log), logged) << line[0] << ' ' << line.back();
    }
    EXPECT_TRUE(contains(inJapanese(lines[0]).err, log + ": 読み込みのログです。上書きしません"));
    // What has taken its place since is a file as any other.
    file("other");
    EXPECT_EQ(fenmark({"export", drawing, source}).code, kDone);
    EXPECT_EQ(fenmark({"export", drawing, source}).code, kDone);
}

TEST_F(QueryLine, ExportThatCannotBeWrittenSaysSo) {
    ASSERT_EQ(fenmark({"import", file(std::string(kPoints) + kRoute)}).code, kDone);
    std::filesystem::create_directory(folder.at("folder.csv"));
    for (const std::string& target :
         {folder.at("folder.csv"), folder.at("no/such/out.csv"), folder.at("a.sim/out.csv")}) {
        const Ran ran = fenmark({"export", folder.at("a.gpkg"), target});
        EXPECT_EQ(ran.code, kNotDone);
        EXPECT_TRUE(contains(ran.err, target)) << ran.err;
    }
}

TEST_F(QueryLine, CsvTellsWhatItLeavesOut) {
    ASSERT_EQ(fenmark({"import", file(std::string(kPoints) + kRoute)}).code, kDone);
    const std::vector<std::string> line{"export", folder.at("a.gpkg"), folder.at("out.csv")};
    EXPECT_TRUE(contains(fenmark(line).err, "0 polylines, 1 alignment\n"));
    std::vector<std::string> quiet = line;
    quiet.push_back("--quiet");
    EXPECT_EQ(fenmark(quiet).err, "");
}

TEST_F(QueryLine, StationTakesTheNamesOfStakesThatThePlanShows) {
    ASSERT_EQ(fenmark({"import", file(std::string(kPoints) + kRoute)}).code, kDone);
    const std::string drawing = folder.at("a.gpkg");
    EXPECT_EQ(fenmark({"station", drawing, "CL", "No.3+2.5"}).out, "62.5 0\n");
    EXPECT_EQ(fenmark({"station", drawing, "CL", "0k062.5"}).out, "62.5 0\n");
    const Ran ran = fenmark({"station", drawing, "CL", "0+62.5"});
    EXPECT_EQ(ran.code, kWrongUsage);
    EXPECT_NE(ran.err.find("No.6+0.5 or 1k234.5"), std::string::npos) << ran.err;
}

} // namespace
} // namespace fenmark::cli
