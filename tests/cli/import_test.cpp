// fenmark import: options, answers to the dialogs, exit codes.
#include "cli/import_dialogs.h"
#include "cli/options.h"
#include "cli/progress_bar.h"
#include "command_line.h"
#include "drawing/drawing.h"
#include "drawing/geopackage/drawing_store.h"
#include "platform/files.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace fenmark::cli {
namespace {

using ImportLine = CommandLine;

TEST_F(ImportLine, PrintsTheLinesOfTheResultDialog) {
    const Ran ran = fenmark({"import", file(std::string(kPoints) + kRoute)});
    EXPECT_EQ(ran.code, kDone) << ran.err;
    EXPECT_EQ(ran.out, "エラー無し\n座標データから2個のポイントを作成\n平面線形【CL】を作成\n");
}

TEST_F(ImportLine, TheDrawingKeepsWhatWasMadeOfTheFile) {
    ASSERT_EQ(fenmark({"import", example("road.sim")}).code, kDone);
    drawing::Drawing drawing;
    drawing::DrawingStore store;
    ASSERT_TRUE(store.open(folder.at("road.gpkg"), drawing));
    ASSERT_EQ(drawing.imports().size(), 1U);
    EXPECT_EQ(drawing.imports()[0].fileName, "road.sim");
    EXPECT_EQ(drawing.imports()[0].counts, (drawing::ImportCounts{.points = 136,
                                                                  .lots = 5,
                                                                  .routes = 4,
                                                                  .alignments = 3,
                                                                  .longitudinal = 46,
                                                                  .crossSections = 220,
                                                                  .errors = 0}));
    ASSERT_EQ(fenmark({"import", example("dirty.sim"), "--skip", "lots"}).code, kDone);
    ASSERT_TRUE(store.open(folder.at("dirty.gpkg"), drawing));
    EXPECT_EQ(drawing.imports()[0].counts.lots, 0) << "what was not ticked";
    EXPECT_GT(drawing.imports()[0].counts.errors, 0);
}

TEST_F(ImportLine, DrawingStandsBesideTheFileByDefault) {
    fenmark({"import", file(kPoints, "Survey.SIM")});
    EXPECT_TRUE(test::fileExists(folder.at("Survey.gpkg")));
    EXPECT_TRUE(test::fileExists(folder.at("Survey_Input.log")));
}

TEST_F(ImportLine, DrawingThatIsThereIsAppendedTo) {
    const std::string path = file(kPoints);
    fenmark({"import", path});
    const nlohmann::json before = info(folder.at("a.gpkg"));
    const Ran again = fenmark({"import", path});
    EXPECT_EQ(again.code, kDone) << again.err;
    const nlohmann::json after = info(folder.at("a.gpkg"));
    ASSERT_EQ(after["entities"].size(), 4U);
    EXPECT_EQ(after["entities"][0], before["entities"][0]) << "what was there keeps its identifier";
    EXPECT_EQ(after["sites"].size(), 1U);
}

TEST_F(ImportLine, OnlyAndSkipChooseKinds) {
    const std::string path = file(std::string(kPoints) + kRoute + "D00,1,L,1,\r\nB01,1,,\r\nB01,2,,\r\nD99,\r\n");
    EXPECT_EQ(fenmark({"import", path, "--only", "lots,centre"}).out,
              "エラー無し\n画地データから1個のポリラインを作成\n平面線形【CL】を作成\n");
    EXPECT_EQ(fenmark({"import", path, "--skip", "points,lots"}).out, "エラー無し\n平面線形【CL】を作成\n");
    EXPECT_EQ(fenmark({"import", path, "--only", "points,lots", "--skip", "lots"}).out,
              "エラー無し\n座標データから2個のポイントを作成\n");
}

TEST_F(ImportLine, NothingTickedStillWritesTheLog) {
    const Ran ran = fenmark({"import", file(kPoints), "--skip", "points"});
    EXPECT_EQ(ran.code, kDone) << ran.err;
    EXPECT_EQ(ran.out, "エラー無し\n");
    EXPECT_TRUE(test::fileExists(folder.at("a_Input.log")));
}

TEST_F(ImportLine, UnknownKindIsWrongUsageAndTheKindsAreListed) {
    const Ran ran = fenmark({"import", file(kPoints), "--only", "dots"});
    EXPECT_EQ(ran.code, kWrongUsage);
    EXPECT_TRUE(contains(ran.err, "'dots'")) << ran.err;
    EXPECT_TRUE(contains(ran.err, "continuous-curves")) << ran.err;
    EXPECT_FALSE(test::fileExists(folder.at("a.gpkg")));
}

TEST_F(ImportLine, UnknownLayerIsRefusedWithTheLayersThatThereAre) {
    const Ran ran = fenmark({"import", file(kPoints), "--point-layer", "測点"});
    EXPECT_EQ(ran.code, kNotDone);
    EXPECT_TRUE(contains(ran.err, "no layer named '測点'; its layers: 0")) << ran.err;
    EXPECT_FALSE(test::fileExists(folder.at("a.gpkg")));
}

TEST_F(ImportLine, LayersAreMadeWhenAskedAndUsed) {
    const std::string content = std::string(kPoints) + "D00,1,L,1,\r\nB01,1,,\r\nB01,2,,\r\nD99,\r\n" +
                                "F00,1,1,IP,1,\r\nB01,1,,\r\nB01,2,,\r\nF99,\r\n" +
                                "F00,4,1,W,4,\r\nB01,1,,\r\nB01,2,,\r\nF99,\r\n" +
                                "F00,6,1,C,6,\r\nB01,1,,\r\nB01,2,,\r\nF99,\r\n";
    const Ran ran = fenmark({"import", file(content), "--create-layers", "--point-layer", "測点", "--lot-layer", "画地",
                             "--ip-layer", "IP", "--stake-layer", "幅杭", "--continuous-layer", "連続"});
    ASSERT_EQ(ran.code, kDone) << ran.err;
    const nlohmann::json drawing = info(folder.at("a.gpkg"));
    EXPECT_EQ(drawing["layers"].size(), 6U);
    std::vector<std::string> layers;
    for (const auto& entity : drawing["entities"]) {
        layers.push_back(entity["layer"]);
    }
    EXPECT_EQ(layers, (std::vector<std::string>{"測点", "測点", "画地", "IP", "幅杭", "連続"}));
}

TEST_F(ImportLine, SiteIsTheFirstByNameOrTheOneNamed) {
    const std::string path = file(std::string(kPoints) + kRoute);
    const std::string drawing = folder.at("d.gpkg");
    ASSERT_EQ(fenmark({"import", path, "--drawing", drawing, "--site", "工区"}).code, kDone);
    EXPECT_EQ(info(drawing)["sites"][0]["name"], "工区") << "a drawing without sites gets the one named";
    const Ran other = fenmark({"import", path, "--drawing", drawing, "--site", "別"});
    EXPECT_EQ(other.code, kNotDone);
    EXPECT_TRUE(contains(other.err, "no site named '別'; its sites: 工区")) << other.err;
    EXPECT_EQ(fenmark({"import", path, "--drawing", drawing}).code, kDone);
    EXPECT_EQ(info(drawing)["sites"][0]["alignments"].size(), 2U);
}

TEST_F(ImportLine, ResultsWithoutARouteGoOnTheAlignmentNamed) {
    const std::string drawing = folder.at("d.gpkg");
    fenmark({"import", file(std::string(kPoints) + kRoute), "--drawing", drawing});
    const std::string results = file("H00,9,?,\r\nH01,No.1,20.0,5.5,6.0,1,\r\nH99,\r\n", "h.sim");
    const Ran ran = fenmark({"import", results, "--drawing", drawing, "--alignment", "CL"});
    EXPECT_EQ(ran.code, kDone) << ran.err;
    EXPECT_EQ(ran.out, "エラー無し\n縦断成果から1個のポイントを作成\n");
    const auto point = info(drawing)["entities"].back();
    EXPECT_EQ(point["position"], nlohmann::json({20.0, 0.0, 5.5}));
}

TEST_F(ImportLine, ResultsWithoutAnAlignmentFailWithANote) {
    const std::string drawing = folder.at("d.gpkg");
    fenmark({"import", file(std::string(kPoints) + kRoute), "--drawing", drawing});
    const std::string results = file("H00,9,?,\r\nH01,No.1,20.0,5.5,6.0,1,\r\nH99,\r\n", "h.sim");
    const Ran ran = fenmark({"import", results, "--drawing", drawing});
    EXPECT_EQ(ran.code, kDone);
    EXPECT_EQ(ran.out, "1個のエラー\n");
    EXPECT_TRUE(contains(ran.err, "--alignment NAME")) << ran.err;
    EXPECT_TRUE(contains(ran.err, "has: CL")) << ran.err;
    EXPECT_TRUE(contains(ran.err, "h.sim:3: ErrX001: 次の縦断成果を作成できませんでした。（線形範囲外の測点です）"))
        << ran.err;
}

TEST(ImportDialogs, ChooseTheAlignmentNamedAndElseNone) {
    drawing::Drawing drawing;
    const host::MdDbObjectId made =
        drawing.alignment(drawing.addAlignment(drawing.addSite("工区"), "CL", "0", "", "")).id;
    const std::string file = "h.sim";
    for (const bool isNamed : {false, true}) {
        std::ostringstream out;
        std::ostringstream err;
        const Streams streams{out, err};
        ImportArguments arguments;
        if (isNamed) {
            arguments.alignment = " CL";
        }
        ImportDialogs dialogs(arguments, file, sima::Encoding::Cp932, "", drawing, streams);
        EXPECT_FALSE(dialogs.askedForAlignment());
        for (int round = 0; round < 2; ++round) { // it is asked twice at most, and told once
            host::MdDbObjectId id;
            std::string name = "before";
            EXPECT_EQ(dialogs.selectAlignment({{"CL", made}}, id, name), isNamed);
            EXPECT_EQ(id, isNamed ? made : host::MdDbObjectId());
            EXPECT_EQ(name, isNamed ? "CL" : "before");
            EXPECT_TRUE(dialogs.askedForAlignment());
        }
        const std::string told = err.str();
        EXPECT_EQ(std::count(told.begin(), told.end(), '\n'), isNamed ? 0 : 1) << told;
    }
}

// Nobody is asked for the results of the route that is skipped, which must not take those of the other one along.
TEST_F(ImportLine, ResultsOfASkippedRouteLeaveThoseOfTheOthersAlone) {
    const std::string main = "F00,2,2,ML,2,\r\nB01,1,BP,\r\nB01,2,EP,\r\nF99,\r\n";
    const std::string ofMain = "H00,2,ML,\r\nH01,No.2,40.0,5.5,6.0,1,\r\nH99,\r\n";
    const std::string path = file(std::string(kPoints) + kRoute + main + kLongitudinal + ofMain);
    const auto made = [&](const std::vector<std::string>& options) {
        std::vector<std::string> line = {"import", path, "--json", "--drawing", folder.at("d.gpkg"), "--replace"};
        line.insert(line.end(), options.begin(), options.end());
        return fenmark(line).json()[0]["longitudinal"];
    };
    EXPECT_EQ(made({}), 2);
    EXPECT_EQ(made({"--skip", "main"}), 1);
    EXPECT_EQ(made({"--skip", "centre"}), 1);
}

TEST_F(ImportLine, UnknownAlignmentIsRefusedWithTheNamesAndNothingIsKept) {
    const std::string drawing = folder.at("d.gpkg");
    fenmark({"import", file(std::string(kPoints) + kRoute), "--drawing", drawing});
    const std::string before = test::readFile(drawing);
    const std::string results = file(std::string(kPoints) + "H00,9,?,\r\nH01,a,20,5,6,1,\r\nH99,\r\n", "h.sim");
    const Ran ran = fenmark({"import", results, "--drawing", drawing, "--alignment", "XX"});
    EXPECT_EQ(ran.code, kNotDone);
    EXPECT_TRUE(contains(ran.err, "no alignment named 'XX'; its alignments: CL")) << ran.err;
    EXPECT_EQ(test::readFile(drawing), before);
}

TEST_F(ImportLine, AlignmentThatWasNotNeededIsIgnoredWithANote) {
    const Ran ran = fenmark({"import", file(std::string(kPoints) + kRoute + kLongitudinal), "--alignment", "XX"});
    EXPECT_EQ(ran.code, kDone);
    EXPECT_TRUE(contains(ran.err, "--alignment was not needed")) << ran.err;
}

TEST_F(ImportLine, ForcedAlignmentTakesAllResults) {
    const std::string drawing = folder.at("d.gpkg");
    fenmark({"import", file(std::string(kPoints) + kRoute), "--drawing", drawing});
    // The file has a route of its own, 100 m further north.
    const std::string other = "A00,\r\nA01,1,BP,100,0,,\r\nA01,2,EP,100,100,,\r\nA99,\r\n"
                              "F00,1,1,NEW,3,\r\nB01,1,BP,\r\nB01,2,EP,\r\nF99,\r\n";
    const std::string path = file(other + kLongitudinal, "b.sim");
    ASSERT_EQ(fenmark({"import", path, "--drawing", drawing, "--alignment", "CL", "--force-alignment"}).code, kDone);
    EXPECT_EQ(info(drawing)["entities"].back()["position"], nlohmann::json({20.0, 0.0, 5.5}));
    ASSERT_EQ(fenmark({"import", path, "--drawing", drawing, "--alignment", "CL"}).code, kDone);
    EXPECT_EQ(info(drawing)["entities"].back()["position"], nlohmann::json({20.0, 100.0, 5.5}));
}

TEST_F(ImportLine, ForceWithoutANameIsWrongUsage) {
    EXPECT_EQ(fenmark({"import", file(kPoints), "--force-alignment"}).code, kWrongUsage);
}

TEST_F(ImportLine, ShiftMovesWallsApart) {
    const std::string walls =
        std::string(kPoints) + kRoute + "H00,1,CL,\r\nH01,a,20.0,5,6,1,\r\nH01,b,20.0,7,6,1,\r\nH99,\r\n";
    ASSERT_EQ(fenmark({"import", file(walls), "--shift", "0.5", "--only", "centre,longitudinal"}).code, kDone);
    const nlohmann::json drawing = info(folder.at("a.gpkg"));
    EXPECT_EQ(drawing["entities"][0]["position"], nlohmann::json({20.0, 0.0, 5.0}));
    EXPECT_EQ(drawing["entities"][1]["position"], nlohmann::json({20.5, 0.0, 7.0}));
}

TEST_F(ImportLine, ShiftThatTheSettingsDialogRefusesIsWrongUsage) {
    for (const char* shift : {"0", "-1", "abc", "1e3", "+1", "1.2.3"}) {
        const Ran ran = fenmark({"import", file(kPoints), "--shift", shift});
        EXPECT_EQ(ran.code, kWrongUsage) << shift;
        EXPECT_FALSE(test::fileExists(folder.at("a.gpkg")));
    }
}

TEST_F(ImportLine, ZoneIsKeptAndMayNotBeContradicted) {
    const std::string path = file(kPoints);
    ASSERT_EQ(fenmark({"import", path, "--zone", "9"}).code, kDone);
    EXPECT_TRUE(contains(fenmark({"info", folder.at("a.gpkg")}).out, "EPSG:6677"));
    EXPECT_EQ(fenmark({"import", path, "--zone", "9"}).code, kDone);
    EXPECT_EQ(fenmark({"import", path}).code, kDone);
    const Ran other = fenmark({"import", path, "--zone", "8"});
    EXPECT_EQ(other.code, kNotDone);
    EXPECT_TRUE(contains(other.err, "zone 9, not in zone 8")) << other.err;
    EXPECT_EQ(fenmark({"import", path, "--zone", "20"}).code, kWrongUsage);
    EXPECT_EQ(fenmark({"import", path, "--zone", "0"}).code, kWrongUsage);
}

TEST_F(ImportLine, Utf8FilesAreReadWhenAsked) {
    const std::string path = file("A00,\nA01,1,基準点,1,2,,\nA99,\n");
    ASSERT_EQ(fenmark({"import", path, "--encoding", "utf-8"}).code, kDone);
    EXPECT_EQ(info(folder.at("a.gpkg"))["entities"][0]["data"]["Name"], "基準点");
}

TEST_F(ImportLine, AFileWithAMarkIsCountedInTheEncodingThatWasAsked) {
    // Read in another encoding, the mark would hide the first record, and nothing would be found to import.
    const std::string path = file("\xEF\xBB\xBF"
                                  "A00,\nA01,1,基準点,1,2,,\nA99,\n");
    for (const char* encoding : {"utf-8", "auto"}) {
        const std::string drawing = folder.at(std::string(encoding) + ".gpkg");
        ASSERT_EQ(fenmark({"import", path, "--encoding", encoding, "--drawing", drawing}).code, kDone);
        EXPECT_EQ(info(drawing)["entities"].size(), 1U) << encoding;
        EXPECT_EQ(fenmark({"preview", path, "--encoding", encoding, "--json"}).json()["coordinates"], 1) << encoding;
    }
}

TEST_F(ImportLine, AFileThatIsNotNamedSoIsNotTaken) {
    for (const char* name : {"sim", "s", "a.si", "asim"}) {
        const Ran ran = fenmark({"import", file(kPoints, name)});
        EXPECT_EQ(ran.code, kNotDone) << name;
        EXPECT_TRUE(contains(ran.err, "its name must end in .sim")) << ran.err;
    }
}

TEST_F(ImportLine, FileThatLooksLikeUtf8IsToldWhereItIsReadOtherwise) {
    const std::string utf8 = file("A00,\r\nA01,1,境界点,0,0,,\r\nA99,\r\n");
    const std::string cp932 = file("A00,\r\nA01,1,\x95\x5C\x83\x5C\xB6\xDE,0,0,,\r\nA99,\r\n", "b.sim");
    for (const char* command : {"import", "preview"}) {
        EXPECT_TRUE(contains(fenmark({command, utf8, "--encoding", "cp932"}).err, utf8 + ": note: looks like UTF-8 "))
            << command;
        for (const auto& line : {std::vector<std::string>{command, utf8, "--encoding", "utf-8"},
                                 std::vector<std::string>{command, utf8},
                                 std::vector<std::string>{command, utf8, "--quiet"},
                                 std::vector<std::string>{command, cp932},
                                 {command, file(kPoints, "c.sim")}}) {
            EXPECT_FALSE(contains(fenmark(line).err, "looks like")) << line[1];
        }
    }
}

TEST_F(ImportLine, FileThatIsNoUtf8IsToldWhenItIsReadAsSuch) {
    const std::string cp932 = file("A00,\r\nA01,1,\x95\x5C\x83\x5C\xB6\xDE,0,0,,\r\nA99,\r\n");
    for (const char* command : {"import", "preview"}) {
        const auto reported = [&](std::vector<std::string> options) {
            options.insert(options.begin(), {command, cp932});
            return contains(fenmark(options).err, cp932 + ": note: is no UTF-8;");
        };
        EXPECT_TRUE(reported({"--encoding", "utf-8"})) << command;
        EXPECT_FALSE(reported({"--encoding", "utf-8", "--quiet"})) << command;
        EXPECT_FALSE(reported({})) << command;
    }
}

TEST_F(ImportLine, FileThatIsReadOtherwiseThanItWasWrittenIsToldAsSuch) {
    const auto notes = [this](std::string_view content) { return fenmark({"import", file(content)}).err; };
    EXPECT_TRUE(contains(notes(std::string_view("\xFF\xFE\x41\0\x30\0", 6)), ": note: read in UTF-16"));
    EXPECT_TRUE(contains(notes("A00,\rA01,1,P,0,0,,\rA99,\r"), ": note: its lines end in a carriage return alone"));
    EXPECT_FALSE(contains(notes("A00,\rx,\n"), "carriage return"));
}

TEST_F(ImportLine, FileWithNothingInItIsToldAsSuch) {
    for (const char* command : {"import", "preview"}) {
        const auto reported = [&](std::string_view content, std::string_view name) {
            return contains(fenmark({command, file(content, name)}).err, "no point, lot, route or result was found");
        };
        EXPECT_TRUE(reported("", "a.sim")) << command;
        EXPECT_TRUE(reported("a00,\r\na01,1,P,0,0,,\r\n", "b.sim")) << command;
        EXPECT_FALSE(reported(kPoints, "c.sim")) << command;
        EXPECT_FALSE(reported("D00,1,L,1,\r\nD99,\r\n", "d.sim")) << command;
    }
}

TEST_F(ImportLine, RecordsWithoutTheirLastCommaAreCounted) {
    const auto notes = [this](std::string_view content) { return fenmark({"import", file(content)}).err; };
    EXPECT_TRUE(contains(notes("A00\r\nA01,1,P,0,0\r\nA99,\r\n"),
                         ": note: 2 records lack the comma that every record of the format ends in\n"));
    EXPECT_TRUE(contains(notes("A00\r\nA01,1,P,0,0,1\r\nA99,\r\n"), ": note: 1 record lacks the comma "))
        << "a point of six fields needs none";
    EXPECT_TRUE(contains(notes("A00\r\nA99,\r\nH00,1\r\nH99,\r\n"), ": note: 2 records lack the comma "))
        << "where the import is broken off too";
    EXPECT_FALSE(contains(notes("A00,,\r\nA01,x,P,0,0,0\r\nA99,\r\n"), "comma"));
    EXPECT_FALSE(contains(notes("H00,1,R,\r\nH01,No.1,0,0,0,1,x\r\nH99,\r\n"), "comma"))
        << "a result outside its alignment";
}

TEST_F(ImportLine, SectionThatIsNotClosedIsToldAtTheFirstRecordThatOpensAnother) {
    const std::string path =
        file("A00,\r\nA01,1,P,0,0,,\r\nB01,1,P,\r\nD00,1,L,1,\r\nB01,1,P,\r\nD99,\r\nD00,2,L,1,\r\nD99,\r\n");
    const Ran ran = fenmark({"import", path});
    const std::size_t note = ran.err.find("note: D00 inside section A; A99 seems to be missing");
    ASSERT_NE(note, std::string::npos) << ran.err;
    EXPECT_EQ(ran.err.substr(note - path.size() - 4, path.size() + 3), path + ":4:");
    EXPECT_EQ(ran.err.find("inside section", note + 20), std::string::npos) << "once is enough";
    EXPECT_FALSE(contains(fenmark({"import", path, "--quiet"}).err, "note"));
    EXPECT_FALSE(contains(fenmark({"import", example("dirty.sim")}).err, "inside section"));
    const std::string first = file("A00,\r\nA01,1,P,0,0,,\r\nD00,1,L,1,\r\nD99,\r\n", "b.sim");
    EXPECT_TRUE(contains(fenmark({"import", first}).err, first + ":3: note: D00 inside section A"))
        << "the first error";
}

TEST_F(ImportLine, StrictTellsOfErrorBlocksByItsExitCode) {
    EXPECT_EQ(fenmark({"import", example("dirty.sim"), "--strict"}).code, kLogHasErrors);
    EXPECT_EQ(fenmark({"import", example("road.sim"), "--strict"}).code, kDone);
    EXPECT_TRUE(test::fileExists(folder.at("dirty.gpkg"))) << "it is done all the same";
    EXPECT_EQ(fenmark({"import", file("A00,\r\nA01,x,P,0,0,,\r\nA99,\r\n"), "--strict"}).code, kLogHasErrors)
        << "of one error";
}

TEST_F(ImportLine, ErrorBlocksAreToldAsFileLineCodeText) {
    const std::string path = example("dirty.sim");
    const Ran ran = fenmark({"import", path});
    EXPECT_EQ(ran.code, kDone);
    EXPECT_TRUE(contains(ran.err, path + ":10: ErrA01-1: 点番号が５桁以下の整数ではありません。\n")) << ran.err;
    EXPECT_TRUE(contains(ran.err, path + ":47: error: 参照する座標が見つかりません。\n")) << ran.err;
    EXPECT_TRUE(
        contains(ran.err, path + ":120: ErrX001: 次の横断成果を作成できませんでした。（線形範囲外の測点です）\n"));
    std::size_t blocks = 0;
    for (std::size_t at = 0; (at = ran.err.find(path + ":", at)) != std::string::npos; ++at) {
        blocks += ran.err.compare(ran.err.find(' ', at + path.size()), 7, " note: ") != 0 ? 1 : 0;
    }
    EXPECT_EQ(blocks, 62U) << "as many as the result line counts";
}

TEST_F(ImportLine, SilentLinesAreCountedByKindAndToldAtTheEnd) {
    const Ran ran = fenmark({"import", file("Z01,x,\r\nX01,1,\r\nX01,2,\r\n" + std::string(kPoints))});
    EXPECT_TRUE(contains(ran.err, "note: 2 lines passed over, unknown code at top level: X01\n")) << ran.err;
    EXPECT_TRUE(contains(ran.err, "note: 1 line passed over, unknown code at top level: Z01\n")) << ran.err;
}

TEST_F(ImportLine, QuietLeavesOutNotesButNeitherErrorsNorResults) {
    const Ran ran = fenmark({"import", file("X01,1,\r\nG00,x,1,\r\n" + std::string(kPoints)), "--quiet"});
    EXPECT_EQ(ran.out, "1個のエラー\n座標データから2個のポイントを作成\n");
    EXPECT_EQ(ran.err, folder.at("a.sim") + ":2: ErrG00-1: バージョン番号が、整数ではありません。\n");
}

TEST_F(ImportLine, ResultAsJson) {
    const nlohmann::json all = fenmark({"import", file(std::string(kPoints) + kRoute), "--json"}).json();
    ASSERT_EQ(all.size(), 1U);
    const nlohmann::json& json = all[0];
    EXPECT_EQ(json["points"], 2);
    EXPECT_EQ(json["alignments"], nlohmann::json({"CL"}));
    EXPECT_EQ(json["errors"], 0);
    EXPECT_EQ(json["drawing"], folder.at("a.gpkg"));
    EXPECT_EQ(json["log"], folder.at("a_Input.log"));
    EXPECT_EQ(json["error_records"], nlohmann::json::array());
    EXPECT_EQ(json["failure"], nullptr);
}

TEST_F(ImportLine, JsonHasEveryFileWithItsErrorsByRecordItsNotesAndWhatFailed) {
    const std::string bad = file("X01,1,\r\nG00,x,1,\r\n" + std::string(kPoints), "bad.sim");
    const std::string missing = folder.at("missing.sim");
    for (const char* quiet : {"--json", "--quiet"}) {
        const Ran ran = fenmark({"import", bad, missing, file(kPoints, "good.sim"), "--json", quiet});
        EXPECT_EQ(ran.code, kNotDone);
        const nlohmann::json all = ran.json();
        ASSERT_EQ(all.size(), 3U);
        EXPECT_EQ(all[0]["errors"], 1);
        EXPECT_EQ(all[0]["error_records"], nlohmann::json::array({{{"line", 2},
                                                                   {"code", "ErrG00-1"},
                                                                   {"text", "バージョン番号が、整数ではありません。"},
                                                                   {"record", "G00,x,1,"}}}));
        EXPECT_TRUE(contains(all[0]["notes"].dump(), "1 line passed over, unknown code at top level: X01")) << all[0];
        EXPECT_EQ(all[0]["failure"], nullptr);
        EXPECT_EQ(all[1]["file"], missing);
        EXPECT_EQ(all[1]["log"], nullptr);
        EXPECT_TRUE(contains(all[1]["failure"].get<std::string>(), "missing.sim: cannot be read")) << all[1];
        EXPECT_EQ(all[2]["points"], 2);
        EXPECT_EQ(all[2]["failure"], nullptr);
    }
}

TEST_F(ImportLine, JsonHasLinesOfAnyCountOfDigitsAsNumbers) {
    for (const std::size_t line : {2U, 9U, 10U, 11U, 98U, 100U, 201U, 1234U}) {
        std::string text = "A00,\n";
        for (std::size_t i = 2; i < line; ++i) {
            text += "A01," + std::to_string(i) + ",P,1,2,,\n";
        }
        const std::string name = file(text + "A01,x,P,1,2,,\nD00,1,L,1,\nA99,\n");
        const nlohmann::json json = fenmark({"import", name, "--replace", "--json"}).json()[0];
        ASSERT_FALSE(json["error_records"].empty()) << json.dump();
        EXPECT_EQ(json["error_records"][0]["line"], line);
        bool told = false;
        for (const nlohmann::json& note : json["notes"]) {
            told = told || note["code"] == "unclosed-section";
            EXPECT_TRUE(note["code"] != "unclosed-section" || note["line"] == line + 1) << note.dump();
        }
        EXPECT_TRUE(told) << json.dump();
    }
}

TEST_F(ImportLine, NamesThatTheDrawingDoesNotHaveAreAnsweredWithTheNearestOnes) {
    const std::string path = file(std::string(kPoints) + kRoute);
    ASSERT_EQ(fenmark({"import", path, "--point-layer", "測点測量", "--create-layers"}).code, kDone);
    const Ran ran = fenmark({"import", path, "--point-layer", "測点側量"});
    EXPECT_TRUE(contains(ran.err, "did you mean '測点測量'?")) << ran.err;
}

TEST_F(ImportLine, FileNamedInCodePage932IsToldByItsNameInTheDrawingAndInJson) {
    // What an archive from Japanese Windows leaves; its second byte is that of a backslash.
    const std::string path = file(std::string(kPoints) + kRoute, "\x95\x5C.sim");
    const Ran ran = fenmark({"import", path, "--json"});
    ASSERT_EQ(ran.code, kDone) << ran.err;
    EXPECT_EQ(ran.json()[0]["file"], folder.at("表.sim"));
    EXPECT_TRUE(test::fileExists(folder.at("\x95\x5C_Input.log")));
    const nlohmann::json drawing = info(folder.at("\x95\x5C.gpkg"));
    EXPECT_EQ(drawing["entities"][0]["data"]["FileName"], "表.sim");
    EXPECT_EQ(drawing["sites"][0]["alignments"][0]["description"], "表-CL");
}

TEST_F(ImportLine, SeveralFilesHaveADrawingEachOrShareTheOneNamed) {
    const std::string a = file(kPoints, "a.sim");
    const std::string b = file(kPoints, "b.sim");
    const Ran each = fenmark({"import", a, b});
    EXPECT_EQ(each.code, kDone) << each.err;
    EXPECT_EQ(each.out, a + ":\nエラー無し\n座標データから2個のポイントを作成\n" + b +
                            ":\nエラー無し\n座標データから2個のポイントを作成\n");
    EXPECT_EQ(info(folder.at("a.gpkg"))["entities"].size(), 2U);
    EXPECT_EQ(info(folder.at("b.gpkg"))["entities"].size(), 2U);
    const std::string both = folder.at("both.gpkg");
    EXPECT_EQ(fenmark({"import", b, a, "--drawing", both}).code, kDone);
    const nlohmann::json drawing = info(both);
    ASSERT_EQ(drawing["entities"].size(), 4U);
    EXPECT_EQ(drawing["entities"][0]["data"]["FileName"], "b.sim") << "in the order of the line";
    EXPECT_EQ(drawing["entities"][2]["data"]["FileName"], "a.sim");
}

TEST_F(ImportLine, TheLogOfOneFileDoesNotTakeThePlaceOfAnothersInOneCall) {
    const std::string first = file(kPoints, "a.sim");
    const std::string second = file("A00,\r\nA01,x,,1,2,,\r\nA99,\r\n", "a.SIM");
    if (platform::leadToOneFile(first, second)) {
        GTEST_SKIP() << "capitals make no difference here";
    }
    const std::string drawing = folder.at("d.gpkg");
    const std::string otherwise = folder.at("./a.SIM");
    const Ran ran = fenmark({"import", first, otherwise, "--drawing", drawing});
    EXPECT_EQ(ran.code, kNotDone);
    EXPECT_TRUE(contains(ran.err, "would take the place of that of " + first)) << ran.err;
    EXPECT_FALSE(contains(test::readFile(folder.at("a_Input.log")), "ERROR"));
    EXPECT_EQ(info(drawing)["entities"].size(), 2U);
    // A file that is named twice has one log, as in two calls.
    EXPECT_EQ(fenmark({"import", first, folder.at("./a.sim"), "--drawing", drawing}).code, kDone);
    EXPECT_EQ(fenmark({"import", second, "--drawing", drawing}).code, kDone);
    EXPECT_TRUE(contains(test::readFile(folder.at("a_Input.log")), "ERROR"));
}

TEST_F(ImportLine, FileThatFailsDoesNotStopTheOthersAndTheHighestCodeIsGiven) {
    const std::string both = folder.at("both.gpkg");
    const std::string good = file(kPoints, "a.sim");
    const std::string bad = file(std::string(kPoints) + kTooShortArc, "bad.sim");
    const Ran ran = fenmark({"import", good, folder.at("missing.sim"), bad, good, "--drawing", both});
    EXPECT_EQ(ran.code, kNotDone);
    EXPECT_EQ(info(both)["entities"].size(), 4U) << "of the broken file nothing is kept";
    EXPECT_EQ(fenmark({"import", folder.at("missing.sim"), example("dirty.sim"), "--strict"}).code, kLogHasErrors);
}

TEST_F(ImportLine, RecordTooShortBreaksTheImportOffAndLeavesTheDrawingAsItWas) {
    const std::string drawing = folder.at("d.gpkg");
    fenmark({"import", file(kPoints), "--drawing", drawing});
    const std::string before = test::readFile(drawing);
    const std::string bad = file(std::string(kPoints) + kTooShortArc, "bad.sim");
    const Ran ran = fenmark({"import", bad, "--drawing", drawing});
    EXPECT_EQ(ran.code, kNotDone);
    EXPECT_EQ(ran.out, "");
    EXPECT_TRUE(contains(ran.err, bad + ":8: import broken off: ")) << ran.err;
    EXPECT_TRUE(contains(ran.err, "the drawing is left as it was")) << ran.err;
    EXPECT_EQ(test::readFile(drawing), before);
    EXPECT_FALSE(test::fileExists(folder.at("bad_Input.log")));
}

TEST_F(ImportLine, RecordTooShortForThePreviewIsToldWithItsLine) {
    // Both passes take the route's number, the preview where a record of the section needs it.
    const std::string path = file(std::string(kPoints) + "H00\r\nH01,No.1,20.0,5.5,6.0,1,\r\nH99,\r\n");
    for (const char* command : {"import", "preview"}) {
        const Ran ran = fenmark({command, path});
        EXPECT_EQ(ran.code, kNotDone);
        EXPECT_TRUE(contains(ran.err, path + ":6: reading broken off: the record is too short")) << ran.err;
    }
    EXPECT_FALSE(test::fileExists(folder.at("a.gpkg")));
}

TEST_F(ImportLine, LongitudinalResultOutsideIsToldWithItsRecord) {
    const std::string path = file(std::string(kPoints) + kRoute + "H00,1,CL,\r\nH01,No.9,200.0,5.5,6.0,1,\r\nH99,\r\n");
    const Ran ran = fenmark({"import", path});
    EXPECT_EQ(ran.code, kDone);
    EXPECT_TRUE(contains(ran.err, path + ":11: ErrX001: ")) << ran.err;
    EXPECT_TRUE(contains(ran.err, " H01,No.9,200.0,5.5,6.0,1,\n")) << ran.err;
}

TEST_F(ImportLine, BrokenOffImportMakesNoNewDrawing) {
    const Ran ran = fenmark({"import", file(std::string(kPoints) + kTooShortArc)});
    EXPECT_EQ(ran.code, kNotDone);
    EXPECT_FALSE(test::fileExists(folder.at("a.gpkg")));
}

TEST_F(ImportLine, KeepPartialKeepsWhatWasMadeAndStillFails) {
    const Ran ran = fenmark({"import", file(std::string(kPoints) + kTooShortArc), "--keep-partial"});
    EXPECT_EQ(ran.code, kNotDone);
    EXPECT_TRUE(contains(ran.err, "is kept in " + folder.at("a.gpkg"))) << ran.err;
    EXPECT_EQ(info(folder.at("a.gpkg"))["entities"].size(), 2U);
}

TEST_F(ImportLine, LeadingClothoidBreaksTheImportOff) {
    // The command ends there, with the half-made alignment and its auxiliary line, if these are to be kept.
    const std::string path =
        file("A00,\r\nA01,1,a,0,0,,\r\nA01,2,b,1,50,,\r\nA99,\r\nF00,1,1,CL,3,\r\nB01,1,,\r\nC02,70,0,100,\r\n"
             "B01,2,,\r\nF99,\r\n");
    const Ran ran = fenmark({"import", path, "--keep-partial"});
    EXPECT_EQ(ran.code, kNotDone);
    EXPECT_TRUE(contains(ran.err, path + ":9: import broken off: the route begins with a clothoid")) << ran.err;
    EXPECT_EQ(info(folder.at("a.gpkg"))["sites"][0]["alignments"].size(), 1U);
}

TEST_F(ImportLine, PositiveRadiusTurnsLeftUnlessTheOtherWayJoins) {
    // East, then a quarter turn to the north (left) or to the south (right), then on.
    auto curve = [](const char* radius, int side) {
        const std::string up = std::to_string(side * 100);
        const std::string further = std::to_string(side * 200);
        return "A00,\r\nA01,1,a,0,0,,\r\nA01,2,b,0,100,,\r\nA01,3,c," + up + ",200,,\r\nA01,4,d," + further +
               ",200,,\r\nA99,\r\nF00,1,1,CL,3,\r\nB01,1,,\r\nB01,2,,\r\nC01,0," + radius +
               ",\r\nB01,3,,\r\nB01,4,,\r\nF99,\r\n";
    };
    auto clockwise = [&](const std::string& content, const char* sense) {
        std::filesystem::remove(folder.at("a.gpkg"));
        const Ran ran = fenmark({"import", file(content), "--positive-radius", sense});
        EXPECT_EQ(ran.code, kDone) << ran.err;
        return info(folder.at("a.gpkg"))["sites"][0]["alignments"][0]["elements"][1]["clockwise"].get<bool>();
    };
    EXPECT_FALSE(clockwise(curve("100", 1), "auto"));
    EXPECT_FALSE(clockwise(curve("100", 1), "left"));
    EXPECT_TRUE(clockwise(curve("100", 1), "right"));
    EXPECT_TRUE(clockwise(curve("-100", -1), "auto"));
    // The other habit: positive turns right.
    EXPECT_TRUE(clockwise(curve("100", -1), "auto"));
    EXPECT_FALSE(clockwise(curve("100", -1), "left"));
    EXPECT_EQ(fenmark({"import", file(curve("100", 1)), "--positive-radius", "up"}).code, kWrongUsage);
}

TEST_F(ImportLine, OtherTurningSenseIsToldInOneLine) {
    const Ran ran =
        fenmark({"import", file("A00,\r\nA01,1,a,0,0,,\r\nA01,2,b,0,100,,\r\nA01,3,c,-100,200,,\r\nA99,\r\n"
                                "F00,1,1,CL,3,\r\nB01,1,,\r\nB01,2,,\r\nC01,0,100,\r\nB01,3,,\r\nF99,\r\n")});
    EXPECT_TRUE(contains(ran.err, "a.sim: note: 1 element was taken with the other turning sense\n")) << ran.err;
    EXPECT_EQ(ran.code, kDone);
}

TEST_F(ImportLine, PlanTangentsMendWhatHeightsSpoil) {
    // A short arc between clothoids of A = 120, whose chord in millimetres gives its tangents only roughly.
    auto road = [](bool sloping) {
        const char* const points[] = {"2000.000,1000.000", "2009.933,1049.003", "2028.415,1118.484",
                                      "2029.549,1121.261", "2064.962,1183.831", "2097.592,1234.183"};
        std::string content = "A00,\r\n";
        for (int i = 0; i < 6; ++i) {
            content += "A01," + std::to_string(i + 1) + ",p," + points[i] + "," +
                       (sloping ? std::to_string(i) : std::string()) + ",\r\n";
        }
        return content + "A99,\r\nF00,1,1,CL,3,\r\nB01,1,,\r\nB01,2,,\r\nC02,120,0,200,\r\nB01,3,,\r\n"
                         "C01,0,200,\r\nB01,4,,\r\nC02,120,200,0,\r\nB01,5,,\r\nB01,6,,\r\nF99,\r\n";
    };
    auto imported = [&](bool sloping, const std::vector<std::string>& options, std::string& reported) {
        std::filesystem::remove(folder.at("a.gpkg"));
        std::vector<std::string> line{"import", file(road(sloping))};
        line.insert(line.end(), options.begin(), options.end());
        const Ran ran = fenmark(line);
        EXPECT_EQ(ran.code, kDone);
        reported = ran.err;
        return info(folder.at("a.gpkg"))["sites"][0]["alignments"][0]["elements"];
    };
    const char* const kNote = "m off the route's points, which differ in height; --plan-tangents may mend it\n";
    std::string reported;
    const auto level = imported(false, {}, reported);
    EXPECT_FALSE(contains(reported, "off the route's points")) << reported;
    const auto sloping = imported(true, {}, reported);
    EXPECT_TRUE(contains(reported, kNote)) << reported;
    EXPECT_NE(sloping, level);
    EXPECT_EQ(imported(true, {"--plan-tangents"}, reported), level);
    EXPECT_FALSE(contains(reported, "off the route's points")) << reported;
}

TEST_F(ImportLine, JointThatIsBrokenIsToldWithItsStation) {
    // A right angle between straights behind 50 m, which no setting mends.
    const Ran ran =
        fenmark({"import", file("A00,\r\nA01,1,a,0,0,,\r\nA01,2,b,0,50,,\r\nA01,3,c,40,50,,\r\nA99,\r\n"
                                "F00,1,1,CL,3,\r\nF03,100.0,\r\nB01,1,,\r\nB01,2,,\r\nB01,3,,\r\nF99,\r\n")});
    EXPECT_EQ(ran.code, kDone);
    EXPECT_TRUE(contains(ran.err, "note: alignment CL: the joint at station 150.000 is broken by 90.00 degrees"))
        << ran.err;
}

TEST_F(ImportLine, RouteThatBreaksOffIsToldWithTheElementThatCouldNotBeLaid) {
    // A half circle whose chord is half a metre longer than its diameter.
    const Ran ran =
        fenmark({"import", file("A00,\r\nA01,1,a,0,0,,\r\nA01,2,b,0,50,,\r\nA01,3,c,100.5,50,,\r\nA99,\r\n"
                                "F00,1,1,CL,3,\r\nB01,1,,\r\nB01,2,,\r\nC01,0,50,\r\nB01,3,,\r\nF99,\r\n")});
    EXPECT_EQ(ran.code, kDone);
    EXPECT_TRUE(contains(ran.err, "a.sim: note: alignment CL breaks off after 50.000 m: "
                                  "an arc of radius 50.000 m does not reach over its chord of 100.500 m\n"))
        << ran.err;
}

TEST_F(ImportLine, NoProgressWithoutATerminalOrWhenQuiet) {
    EXPECT_EQ(fenmark({"import", example("road.sim")}).err.find('\r'), std::string::npos);
    EXPECT_EQ(fenmark({"import", folder.at("road.sim"), "--quiet"}, true).err.find('\r'), std::string::npos);
}

TEST(ProgressBar, IsDrawnAndTakenAwayAgain) {
    std::ostringstream terminal;
    ProgressBars bars(terminal, std::chrono::milliseconds(0));
    {
        const auto bar = bars.create("読み込み中", true);
        EXPECT_EQ(bar->goModal("読み込み中", true), 1);
        bar->setRange(0, 200, 1);
        bar->setPosition(100);
    }
    EXPECT_TRUE(contains(terminal.str(), "読み込み中 [====================                    ] 50 %"))
        << terminal.str();
    EXPECT_TRUE(terminal.str().ends_with("\r\033[K"));
}

TEST(ProgressBar, StaysWithinANarrowTerminal) {
    constexpr int kColumns = 30;
    std::ostringstream terminal;
    ProgressBars bars(terminal, std::chrono::milliseconds(0), kColumns);
    const auto bar = bars.create("読み込み中", true); // ten columns
    bar->setRange(0, 200, 1);
    bar->setPosition(200);
    EXPECT_EQ(terminal.str(), "\r読み込み中 [==========] 100 %") << "a column is left to the cursor";
    std::ostringstream narrower;
    ProgressBars none(narrower, std::chrono::milliseconds(0), 5);
    const auto bare = none.create("読み込み中", true);
    bare->setRange(0, 200, 1);
    bare->setPosition(100);
    EXPECT_EQ(narrower.str(), "\r読み込み中 [] 50 %");
}

// A file that grows while it is read leads beyond the end that was told.
TEST(ProgressBar, StaysWithinItsRange) {
    for (const auto& [position, shown] : {std::pair(99, "99 %"), std::pair(101, "100 %"), std::pair(300, "100 %")}) {
        std::ostringstream terminal;
        ProgressBars bars(terminal, std::chrono::milliseconds(0));
        const auto bar = bars.create("a", true);
        bar->setRange(0, 100, 1);
        bar->setPosition(position);
        EXPECT_TRUE(terminal.str().ends_with(shown)) << terminal.str();
    }
}

TEST(ProgressBar, ShortPassShowsNone) {
    std::ostringstream terminal;
    ProgressBars bars(terminal, std::chrono::hours(1));
    {
        const auto bar = bars.create("読み込み中", true);
        bar->setRange(0, 200, 1);
        bar->setPosition(100);
    }
    EXPECT_EQ(terminal.str(), "");
}

TEST_F(ImportLine, TerminalShowsTheFirstErrorsOnly) {
    std::string content = "A00,\r\n";
    for (int i = 0; i < 250; ++i) {
        content += "X,\r\n";
    }
    const std::string path = file(content + "A99,\r\n");
    const Ran terminal = fenmark({"import", path}, true);
    EXPECT_TRUE(contains(terminal.err, "150 more in the log")) << terminal.err;
    EXPECT_TRUE(contains(fenmark({"import", path}).err, path + ":251: ErrA001")) << "a pipe gets them all";
}

} // namespace
} // namespace fenmark::cli
