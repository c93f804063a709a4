// What fenmark import promises whatever it is given: log and drawing together, encodings, names, files imported again.
#include "command_line.h"
#include "drawing/drawing.h"
#include "drawing/file_digest.h"
#include "drawing/geopackage/drawing_store.h"
#include "sima/text/cp932.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace fenmark::cli {
namespace {

using namespace std::string_literals;
using ImportSafety = CommandLine;

std::string utf16(std::string_view text) {
    std::string bytes = "\xFF\xFE";
    for (const char c : text) {
        bytes += c;
        bytes += '\0';
    }
    return bytes;
}

// --- log and drawing ---

TEST_F(ImportSafety, LogIsNotWrittenThroughALink) {
    const std::string path = file(kPoints);
    const std::string other = file("somebody's own", "other.txt");
    std::filesystem::create_symlink(other, folder.at("a_Input.log"));
    EXPECT_EQ(fenmark({"import", path}).code, kDone);
    EXPECT_EQ(test::readFile(other), "somebody's own");
    EXPECT_FALSE(std::filesystem::is_symlink(folder.at("a_Input.log"))) << "the log takes the link's place";
}

TEST_F(ImportSafety, LogNeverTakesThePlaceOfADrawing) {
    const std::string path = file(kPoints);
    const std::string log = folder.at("a_Input.log");
    const Ran asLog = fenmark({"import", path, "--drawing", log});
    EXPECT_EQ(asLog.code, kNotDone);
    EXPECT_EQ(asLog.err, "fenmark: error: " + path + ": its log " + log + " would take the place of a drawing\n");
    EXPECT_FALSE(test::fileExists(log));
    EXPECT_EQ(fenmark({"import", path, "--drawing", folder.at("./a_Input.log")}).code, kNotDone);

    // A drawing that bears the log's name, whatever this import goes into.
    ASSERT_EQ(fenmark({"import", file(kPoints, "b.sim"), "--drawing", folder.at("other.gpkg")}).code, kDone);
    std::filesystem::rename(folder.at("other.gpkg"), log);
    const std::string before = test::readFile(log);
    EXPECT_EQ(fenmark({"import", path}).code, kNotDone);
    EXPECT_EQ(test::readFile(log), before);
    EXPECT_FALSE(test::fileExists(folder.at("a.gpkg")));

    // Through a link.
    std::filesystem::create_symlink(log, folder.at("c.gpkg"));
    EXPECT_EQ(fenmark({"import", path, "--drawing", folder.at("c.gpkg")}).code, kNotDone);
    EXPECT_EQ(test::readFile(log), before);
    EXPECT_EQ(inJapanese({"import", path}).err,
              "fenmark: error: " + path + ": ログ " + log + " が図面と同じファイルになります\n");
}

// What is made of a drawing may be told to go where the drawing is, or where a link leads to it.
TEST_F(ImportSafety, NothingIsWrittenOverADrawing) {
    ASSERT_EQ(fenmark({"import", file(std::string(kPoints) + kRoute)}).code, kDone);
    const std::string drawing = folder.at("a.gpkg");
    const std::string before = test::readFile(drawing);
    const std::vector<std::vector<std::string>> lines = {
        {"stakes", drawing, "CL", "--format", "sim", "--out", drawing},
        {"plot", drawing, folder.at("l.svg")},
        {"plot", drawing, folder.at("l.pdf")},
        {"report", drawing, folder.at("l.html")},
        {"report", drawing, folder.at("l.csv")},
        {"export", drawing, folder.at("l.dxf")},
        {"export", drawing, folder.at("l.sim")},
        {"export", drawing, folder.at("l.xml")},
    };
    for (const std::vector<std::string>& line : lines) {
        if (line[2] != "CL") {
            std::filesystem::create_symlink(drawing, line[2]);
        }
        const Ran ran = fenmark(line);
        EXPECT_EQ(ran.code, kNotDone) << line[0] << ' ' << line[2];
        EXPECT_TRUE(contains(ran.err, ": is a drawing, which no other file may replace")) << ran.err;
        EXPECT_EQ(test::readFile(drawing), before) << line[0] << ' ' << line[2];
    }
    // Another file of that name is replaced as ever.
    file("SQLite format 3", "o.svg");
    EXPECT_EQ(fenmark({"plot", drawing, folder.at("o.svg")}).code, kDone) << "no database";
}

TEST_F(ImportSafety, LogTellsNothingThatTheDrawingDoesNotHold) {
    const std::string path = file(kPoints);
    ASSERT_EQ(fenmark({"import", path}).code, kDone);
    file("of another day", "a_Input.log");
    std::filesystem::create_directory(folder.at("d.gpkg"));
    EXPECT_EQ(fenmark({"import", path, "--drawing", folder.at("d.gpkg")}).code, kNotDone);
    EXPECT_EQ(fenmark({"import", path, "--drawing", folder.at("none/d.gpkg")}).code, kNotDone);
    EXPECT_EQ(test::readFile(folder.at("a_Input.log")), "of another day");
}

TEST_F(ImportSafety, DrawingThatCannotBeMadeIsToldBeforeTheFileIsRead) {
    // Of a file that was read, its errors would be reported.
    const std::string path = file("A00,\r\nA01,x,P,0,0,,\r\nA99,\r\n");
    const Ran ran = fenmark({"import", path, "--drawing", folder.at("none/d.gpkg")});
    EXPECT_EQ(ran.code, kNotDone);
    EXPECT_FALSE(contains(ran.err, "ErrA01-1")) << ran.err;
    EXPECT_FALSE(test::fileExists(folder.at("a_Input.log")));
}

TEST_F(ImportSafety, NothingIsLeftBesideTheFileAfterAFailure) {
    const std::string path = file(std::string(kPoints) + kTooShortArc);
    EXPECT_EQ(fenmark({"import", path}).code, kNotDone);
    std::size_t files = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder.path())) {
        ++files;
    }
    EXPECT_EQ(files, 1U) << "the survey alone";
}

TEST_F(ImportSafety, LongNamesAndPathsThatBeginWithTwoSlashes) {
    const std::string path = file(kPoints, std::string(240, 'n') + ".sim");
    const Ran ran = fenmark({"import", "/" + path});
    EXPECT_EQ(ran.code, kDone) << ran.err;
    EXPECT_EQ(fenmark({"import", "/" + path}).code, kDone) << "also into a drawing that is there";
    EXPECT_EQ(fenmark({"info", "/" + folder.at(std::string(240, 'n') + ".gpkg")}).code, kDone);
}

TEST_F(ImportSafety, PreviewThatBreaksOffKeepsAPartWhereThatIsAsked) {
    const std::string path = file(std::string(kPoints) + "H00\r\nH01,No.1,20.0,5.5,6.0,1,\r\nH99,\r\n");
    const Ran ran = fenmark({"import", path, "--keep-partial"});
    EXPECT_EQ(ran.code, kNotDone);
    EXPECT_TRUE(contains(ran.err, "is kept in " + folder.at("a.gpkg"))) << ran.err;
    EXPECT_EQ(info(folder.at("a.gpkg"))["entities"].size(), 2U);
}

TEST_F(ImportSafety, LineBeyondSixtyFourMebibytesIsNoRecord) {
    constexpr std::size_t kLimit = std::size_t{64} << 20;
    const std::string path = file("A00,\r\n" + std::string(kLimit + 10, 'x') + "\r\nA99,\r\n");
    for (const char* command : {"import", "preview"}) {
        const Ran ran = fenmark({command, path});
        EXPECT_EQ(ran.code, kNotDone);
        EXPECT_TRUE(contains(ran.err, path + ":2: reading broken off: the line is longer than 64 MiB")) << ran.err;
    }
    EXPECT_FALSE(test::fileExists(folder.at("a.gpkg")));
}

// --- encodings ---

TEST_F(ImportSafety, EncodingIsTakenFromTheBytes) {
    const std::string text = "A00,\r\nA01,1,境界点,1,2,,\r\nA99,\r\n";
    std::string cp932;
    sima::encodeCp932(cp932, text);
    const auto nameIn = [this](std::string_view bytes) {
        std::filesystem::remove(folder.at("a.gpkg"));
        const Ran ran = fenmark({"import", file(bytes)});
        EXPECT_EQ(ran.out, "エラー無し\n座標データから1個のポイントを作成\n") << ran.err;
        return info(folder.at("a.gpkg"))["entities"][0]["data"]["Name"].get<std::string>() +
               (contains(ran.err, "note: read in UTF-8") ? ", read in UTF-8" : "") +
               (contains(ran.err, "note: read in UTF-16") ? ", read in UTF-16" : "");
    };
    EXPECT_EQ(nameIn(cp932), "境界点");
    EXPECT_EQ(nameIn(text), "境界点, read in UTF-8");
    EXPECT_EQ(nameIn("\xEF\xBB\xBF" + text), "境界点, read in UTF-8") << "the preview too begins behind the mark";
    EXPECT_EQ(nameIn(utf16("A00,\r\nA01,1,KP1,1,2,,\r\nA99,\r\n")), "KP1, read in UTF-16");
}

TEST_F(ImportSafety, EncodingThatIsNamedIsTaken) {
    const std::string path = file("A00,\r\nA01,1,境界点,1,2,,\r\nA99,\r\n");
    for (const char* name : {"sjis", "Shift_JIS", "cp932"}) {
        const Ran ran = fenmark({"preview", path, "--encoding", name});
        EXPECT_EQ(ran.code, kDone) << ran.err;
        EXPECT_TRUE(contains(ran.err, "looks like UTF-8 and is read in code page 932")) << ran.err;
    }
    EXPECT_EQ(fenmark({"preview", path, "--encoding", "UTF8"}).err, "");
    const Ran wrong = fenmark({"preview", path, "--encoding", "latin1"});
    EXPECT_EQ(wrong.code, kWrongUsage);
    EXPECT_TRUE(contains(wrong.err, "'latin1'")) << wrong.err;
}

TEST_F(ImportSafety, EncodingsThatAreNotReadAreTold) {
    const auto reported = [this](std::string_view name, std::string_view title) {
        const Ran ran = fenmark({"import", file("A00,\r\nA01,1," + std::string(name) + ",1,2,,\r\nA99,\r\n")});
        EXPECT_TRUE(contains(ran.err, "note: looks like " + std::string(title) + ", which is not read")) << ran.err;
    };
    reported("\xC2\xAC\xCE\xCC\xE5\xBB", "EUC-JP");
    reported("\x1B$B6-3&\x1B(B", "ISO-2022-JP (JIS)");
}

// --- what is printed ---

TEST_F(ImportSafety, NoControlCharacterOfANameReachesTheTerminal) {
    const std::string evil = "\x1B]0;x\x07 \xC2\x9B 2J\x7F";
    const std::string content = "A00,\nA01,1,a,0,0,,\nA01,2,b,0,9,,\nA01,x,基準" + evil +
                                ",0,0,,\nA99,\nF00,1,1,C基準" + evil + ",3,\nB01,1,,\nB01,2,,\nF99,\nX" + evil + ",\n";
    const std::string path = file(content, "e\x1B[31m.sim");
    std::string all;
    for (const auto& line :
         {std::vector<std::string>{"import", path}, std::vector<std::string>{"import", path, "--json"},
          std::vector<std::string>{"import", path + "\x1B.sim"}, std::vector<std::string>{"preview", path},
          std::vector<std::string>{"info", folder.at("e\x1B[31m.gpkg")},
          std::vector<std::string>{"info", folder.at("e\x1B[31m.gpkg"), "--json"},
          std::vector<std::string>{"station", folder.at("e\x1B[31m.gpkg"), "\x1B", "0"},
          std::vector<std::string>{"import", "--\x1B[2J"}}) {
        const Ran ran = fenmark(line, true);
        all += ran.out + ran.err;
    }
    for (const char control : {'\x1B', '\x07', '\x7F'}) {
        EXPECT_FALSE(all.find(control) != std::string::npos) << static_cast<int>(control);
    }
    EXPECT_FALSE(contains(all, "\xC2\x9B"));
    EXPECT_TRUE(contains(all, "\\u001b]0;x\\u0007 \\u009b 2J\\u007f")) << all;
    EXPECT_TRUE(contains(all, "基準")) << "all other characters stay";
    const nlohmann::json json = info(folder.at("e\x1B[31m.gpkg"));
    EXPECT_EQ(json["sites"][0]["alignments"][0]["name"], "C基準" + evil) << "JSON reads the same name from it";
}

TEST_F(ImportSafety, NulInANameStaysInTheDrawing) {
    const std::string path = file("A00,\r\nA01,1,a\0b,1,2,,\r\nA99,\r\n"s);
    ASSERT_EQ(fenmark({"import", path}).code, kDone);
    const std::string json = fenmark({"info", folder.at("a.gpkg"), "--json"}).out;
    EXPECT_TRUE(contains(json, "\"Name\":\"a\\u0000b\"")) << json;
}

TEST_F(ImportSafety, NoCellOfACsvFileRunsInASpreadsheet) {
    std::string content = "A00,\r\n";
    int number = 0;
    for (const char* name : {"=1+1", "+A1", "-A1", "@SUM(A1)", "\u3000=1", "＝1", "-12.5", "+3", "P-1"}) {
        content += "A01," + std::to_string(++number) + "," + name + ",0,0,,\r\n";
    }
    ASSERT_EQ(fenmark({"import", file(content + "A99,\r\n")}).code, kDone);
    ASSERT_EQ(fenmark({"export", folder.at("a.gpkg"), folder.at("a.csv")}).code, kDone);
    const std::string csv = test::readFile(folder.at("a.csv"));
    for (const char* cell : {",\"'=1+1\",", ",\"'+A1\",", ",\"'-A1\",", ",\"'@SUM(A1)\",", ",\"'\u3000=1\",",
                             ",\"'＝1\",", ",-12.5,", ",+3,", ",P-1,"}) {
        EXPECT_TRUE(contains(csv, cell)) << cell << "\n" << csv;
    }
}

// --- names on the command line ---

TEST_F(ImportSafety, NamesMeetWithoutTheBlanksAtTheirEnds) {
    const std::string content = std::string(kPoints) + "F00,1,1,  中心線　 ,3,\r\nB01,1,BP,\r\nB01,2,EP,\r\nF99,\r\n";
    ASSERT_EQ(fenmark({"import", file(content)}).code, kDone);
    for (const char* name : {"中心線", "中心線　", " 中心線", "  中心線　 ", "　中心線", " 　　 中心線　　"}) {
        EXPECT_EQ(fenmark({"station", folder.at("a.gpkg"), name, "20"}).out, "20 0\n") << name;
    }
    const std::string results = file("H00,9,?,\r\nH01,No.1,20.0,5.5,6.0,1,\r\nH99,\r\n", "h.sim");
    EXPECT_EQ(fenmark({"import", results, "--drawing", folder.at("a.gpkg"), "--alignment", "中心線"}).out,
              "エラー無し\n縦断成果から1個のポイントを作成\n");
    ASSERT_EQ(fenmark({"import", file(kPoints, "p.sim"), "--drawing", folder.at("a.gpkg"), "--point-layer", "測点 ",
                       "--create-layers"})
                  .code,
              kDone);
    ASSERT_EQ(fenmark({"import", file(kPoints, "p.sim"), "--drawing", folder.at("a.gpkg"), "--point-layer", "測点",
                       "--site", "サイト　"})
                  .code,
              kDone);
    ASSERT_EQ(fenmark({"import", file(std::string(kPoints) + kRoute, "r.sim"), "--drawing", folder.at("a.gpkg"),
                       "--site", "サイト　"})
                  .code,
              kDone);
    const nlohmann::json drawing = info(folder.at("a.gpkg"));
    EXPECT_EQ(drawing["layers"].size(), 2U) << "the layer is the one that is there";
    ASSERT_EQ(drawing["sites"].size(), 1U);
    EXPECT_EQ(drawing["sites"][0]["alignments"].size(), 2U) << "of the site that is there";
}

TEST_F(ImportSafety, OneOfTwoAlignmentsOfAnEqualNameIsNamedByItsIdentifier) {
    const std::string second = "A00,\r\nA01,3,c,50,0,,\r\nA01,4,d,50,100,,\r\nA99,\r\n"
                               "F00,2,1,CL ,3,\r\nB01,3,,\r\nB01,4,,\r\nF99,\r\n";
    ASSERT_EQ(fenmark({"import", file(std::string(kPoints) + kRoute + second)}).code, kDone);
    const nlohmann::json alignments = info(folder.at("a.gpkg"))["sites"][0]["alignments"];
    ASSERT_EQ(alignments.size(), 2U);
    const std::string first = "#" + std::to_string(alignments[0]["id"].get<int>());
    const std::string other = "#" + std::to_string(alignments[1]["id"].get<int>());
    const Ran ran = fenmark({"station", folder.at("a.gpkg"), "CL", "20"});
    EXPECT_EQ(ran.code, kNotDone);
    EXPECT_TRUE(contains(ran.err, "several alignments are named 'CL'")) << ran.err;
    EXPECT_TRUE(contains(ran.err, first + ", " + other)) << ran.err;
    EXPECT_EQ(fenmark({"station", folder.at("a.gpkg"), first, "20"}).out, "20 0\n");
    EXPECT_EQ(fenmark({"station", folder.at("a.gpkg"), other, "20"}).out, "20 50\n");
    for (const std::string& none :
         {std::string("#99999"), first + "x", "#" + first, std::string("#"), first.substr(1),
          first.substr(0, 1) + "-" + first.substr(1), "#18446744073709551616" + first.substr(1)}) {
        EXPECT_EQ(fenmark({"station", folder.at("a.gpkg"), none, "20"}).code, kNotDone) << none;
    }
}

TEST_F(ImportSafety, ExchangedCoordinatesAreHintedAt) {
    const std::string far = "A00,\r\nA01,1,a,-36000,12000,,\r\nA01,2,b,-36000,12100,,\r\nA99,\r\n";
    ASSERT_EQ(fenmark({"import", file(far + kRoute)}).code, kDone);
    EXPECT_TRUE(contains(fenmark({"locate", folder.at("a.gpkg"), "CL", "-36001", "12050"}).err, "X and Y exchanged"));
    EXPECT_FALSE(contains(fenmark({"locate", folder.at("a.gpkg"), "CL", "12050", "-36001"}).err, "exchanged"));
    EXPECT_FALSE(contains(fenmark({"locate", folder.at("a.gpkg"), "CL", "0", "0"}).err, "exchanged"));
}

// Only where the point as given is more than 100 m off, and ten times as far as with X and Y exchanged, which is 100 m at
// most and beside the line.
TEST_F(ImportSafety, ExchangedCoordinatesAreHintedAtWhereTheyAreMuchNearer) {
    const std::string road = "A00,\r\nA01,1,a,0,0,,\r\nA01,2,b,0,3000,,\r\nA99,\r\n"; // eastwards from the origin
    ASSERT_EQ(fenmark({"import", file(road + kRoute)}).code, kDone);
    const struct {
        const char* x;
        const char* y;
        bool told;
    } kPlaces[] = {
        {"100", "1500", true}, {"100.001", "1500", false}, {"50", "500.001", true},
        {"50", "500", false},  {"5", "100.001", true},     {"5", "100", false},
        {"5", "2999.9", true}, {"5", "3000.1", false},     {"50", "-501", false},
    };
    for (const auto& [x, y, told] : kPlaces) {
        const Ran ran = fenmark({"locate", folder.at("a.gpkg"), "CL", x, y});
        EXPECT_EQ(contains(ran.err, "X and Y exchanged"), told) << x << ' ' << y;
    }
}

// --- a file imported again ---

TEST_F(ImportSafety, FileThatWasImportedBeforeIsToldAndReplacedWhereAsked) {
    const std::string path = file(std::string(kPoints) + kRoute);
    const std::string drawing = folder.at("d.gpkg");
    const Ran first = fenmark({"import", path, "--drawing", drawing});
    ASSERT_EQ(first.code, kDone);
    EXPECT_FALSE(contains(first.err, "already"));
    ASSERT_EQ(fenmark({"import", file(kPoints, "b.sim"), "--drawing", drawing}).code, kDone);

    const Ran again = fenmark({"import", path, "--drawing", drawing});
    EXPECT_EQ(again.code, kDone);
    EXPECT_TRUE(contains(again.err, "already, imported once, last at 20")) << again.err;
    EXPECT_TRUE(contains(again.err, "--replace puts the new ones in their place")) << again.err;
    EXPECT_EQ(info(drawing)["entities"].size(), 6U);

    const Ran replaced = fenmark({"import", path, "--drawing", drawing, "--replace"});
    EXPECT_EQ(replaced.code, kDone);
    EXPECT_TRUE(contains(replaced.err, "replaces what the drawing had of a file of this name, imported 2 times"))
        << replaced.err;
    const nlohmann::json left = info(drawing);
    ASSERT_EQ(left["entities"].size(), 4U);
    EXPECT_EQ(left["entities"][0]["data"]["FileName"], "b.sim") << "what came of other files stays";
    EXPECT_EQ(left["entities"][2]["data"]["FileName"], "a.sim");
    EXPECT_EQ(left["sites"][0]["alignments"].size(), 1U);
}

TEST_F(ImportSafety, DrawingKnowsWhatCameOfEachImport) {
    const std::string drawing = folder.at("d.gpkg");
    const std::string lot = "D00,1,12-3,1,\r\nB01,1,BP,\r\nB01,2,EP,\r\nD99,\r\n";
    const std::string ipLine = "F00,2,1,IP,1,\r\nB01,1,BP,\r\nB01,2,EP,\r\nF99,\r\n";
    const std::string section = "I00,1,CL,\r\nI01,No.1,20.0,5.5,6.0,\r\nI02,L,-3.0,5.0,\r\nI02,R,3.0,5.0,\r\nI99,\r\n";
    const std::string paths[] = {
        file(std::string(kPoints) + lot + kRoute + ipLine + kLongitudinal + section),
        file("A00,\r\nA01,1,BP,x,0.000,,\r\nA01,2,EP,0.000,y,,\r\nA99,\r\n", "b.sim"),
        file(kPoints, "c.sim"),
    };
    const std::size_t entities[] = {8, 0, 2}; // a cross-section gets a point on the line
    for (const std::string& path : paths) {
        ASSERT_EQ(fenmark({"import", path, "--drawing", drawing}).code, kDone);
    }
    drawing::Drawing read;
    ASSERT_TRUE(drawing::DrawingStore().open(drawing, read));
    const std::vector<drawing::Import>& imports = read.imports();
    ASSERT_EQ(imports.size(), 3U);
    for (std::size_t i = 0; i < 3; ++i) {
        const std::filesystem::path path(paths[i]);
        EXPECT_EQ(imports[i].fileName, path.filename().string());
        EXPECT_EQ(imports[i].path, std::filesystem::absolute(path).string());
        EXPECT_EQ(imports[i].fileSize, std::filesystem::file_size(path));
        EXPECT_EQ(imports[i].digest, drawing::digestFile(paths[i])->digest);
        EXPECT_TRUE(imports[i].time.starts_with("20")) << imports[i].time;
        std::size_t own = 0;
        for (std::size_t entity = 0; entity < read.entityCount(); ++entity) {
            const std::uint64_t id = read.entity(entity).id.asUint64();
            const bool within = imports[i].firstId <= id && id <= imports[i].lastId;
            EXPECT_EQ(within, read.entity(entity).row->fileName == imports[i].fileName) << i << ' ' << id;
            own += within ? 1 : 0;
        }
        EXPECT_EQ(own, entities[i]);
        const std::uint64_t road = read.alignment(0).id.asUint64();
        EXPECT_EQ(imports[i].firstId <= road && road <= imports[i].lastId, i == 0);
    }
    const auto countsOf = [&](std::size_t i) {
        const drawing::ImportCounts& counts = imports[i].counts;
        return std::vector<std::int64_t>{counts.points,       counts.lots,          counts.routes, counts.alignments,
                                         counts.longitudinal, counts.crossSections, counts.errors};
    };
    EXPECT_EQ(countsOf(0), (std::vector<std::int64_t>{2, 1, 1, 1, 1, 3, 0}));
    EXPECT_EQ(countsOf(1), (std::vector<std::int64_t>{0, 0, 0, 0, 0, 0, 2}));
    EXPECT_EQ(countsOf(2), (std::vector<std::int64_t>{2, 0, 0, 0, 0, 0, 0}));
}

TEST_F(ImportSafety, ReplacingAnImportLeavesThoseBeforeAndBehindIt) {
    const std::string drawing = folder.at("d.gpkg");
    const auto import = [&](const char* name, bool replace) {
        std::vector<std::string> line = {"import", file(kPoints, name), "--drawing", drawing};
        if (replace) {
            line.emplace_back("--replace");
        }
        ASSERT_EQ(fenmark(line).code, kDone);
    };
    for (const char* name : {"a.sim", "b.sim", "c.sim"}) {
        import(name, false);
    }
    for (const char* name : {"b.sim", "a.sim", "c.sim"}) {
        import(name, true);
        const nlohmann::json left = info(drawing);
        std::map<std::string, int> points;
        for (const nlohmann::json& entity : left["entities"]) {
            ++points[entity["data"]["FileName"].get<std::string>()];
        }
        EXPECT_EQ(points, (std::map<std::string, int>{{"a.sim", 2}, {"b.sim", 2}, {"c.sim", 2}})) << name;
    }
}

TEST_F(ImportSafety, FilesOfOneNameInOneCallDoNotReplaceEachOther) {
    const std::string drawing = folder.at("d.gpkg");
    std::vector<std::string> paths;
    for (const char* place : {"east", "west"}) {
        std::filesystem::create_directory(folder.at(place));
        paths.push_back(folder.write(std::string(place) + "/a.sim", kPoints));
    }
    for (const std::size_t earlier : {0U, 2U}) {
        const Ran both = fenmark({"import", paths[0], paths[1], "--drawing", drawing, "--replace"});
        ASSERT_EQ(both.code, kDone);
        EXPECT_TRUE(contains(both.err, paths[1] + ": note: --replace: another file of this name was imported just now"))
            << both.err;
        EXPECT_EQ(contains(both.err, paths[0] +
                                         ": note: replaces what the drawing had of a file of this name, imported " +
                                         std::to_string(earlier) + " times"),
                  earlier > 0)
            << both.err;
        EXPECT_EQ(info(drawing)["entities"].size(), 4U) << "two points of each";
    }
    // The same file a second time.
    ASSERT_EQ(fenmark({"import", paths[0], folder.at("east/../east/a.sim"), "--drawing", drawing, "--replace"}).code,
              kDone);
    EXPECT_EQ(info(drawing)["entities"].size(), 2U);
}

TEST_F(ImportSafety, ImportThatBreaksOffReplacesNothing) {
    const std::string drawing = folder.at("d.gpkg");
    ASSERT_EQ(fenmark({"import", file(kPoints), "--drawing", drawing}).code, kDone);
    const std::string before = test::readFile(drawing);
    EXPECT_EQ(fenmark({"import", file(std::string(kPoints) + kTooShortArc), "--drawing", drawing, "--replace"}).code,
              kNotDone);
    EXPECT_EQ(test::readFile(drawing), before);
}

// --- hints ---

TEST_F(ImportSafety, RecordsWithOneCommaTooManyAreCounted) {
    const auto notes = [this](std::string_view content) { return fenmark({"import", file(content)}).err; };
    EXPECT_TRUE(contains(notes("A00,\r\nA01,1,P,0,0,0,,\r\nA01,2,P,0,0,0,,\r\nA99,\r\n"),
                         ": note: one comma too many at the end of 2 records"));
    EXPECT_TRUE(contains(notes("A00,\r\nA01,1,P,0,0,0,\r\nA99,\r\nD00,1,L,1,,\r\nD99,\r\n"), "end of 1 record,"));
    EXPECT_FALSE(contains(notes("A00,\r\nA01,1,P,0,0,0,1,\r\nA99,\r\n"), "one comma too many")) << "a value too many";
    EXPECT_FALSE(contains(notes("A00,\r\nA01,x,P,0,0,,\r\nA99,\r\n"), "one comma too many"));
    for (const char* record : {"A01,1,,", "A01,1,P,,", "A01,1,P,0,0,,,,", "X01,1,,"}) {
        const std::string told = notes("A00,\r\n" + std::string(record) + "\r\nA99,\r\n");
        EXPECT_TRUE(contains(told, ":2: Err")) << told;
        EXPECT_FALSE(contains(told, "one comma too many")) << told;
    }
}

TEST_F(ImportSafety, PointNumbersThatAreNamesAreToldWithWhatIsWanted) {
    const Ran ran = fenmark({"import", file("A00,\r\nA01,K1,P,0,0,0,\r\nA01,K2,P,0,0,0,\r\nA99,\r\n")});
    EXPECT_TRUE(contains(ran.err, ": note: 2 records have a point number such as 'K1'; the format wants a whole number "
                                  "of at most five digits there"))
        << ran.err;
    EXPECT_FALSE(contains(fenmark({"import", file(kPoints)}).err, "point number"));
}

} // namespace
} // namespace fenmark::cli
