// The notes of the commands, in the language of the user's messages.
#include "command_line.h"
#include "support/sample_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace fenmark::cli {
namespace {

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

const std::string kBoundless(400, '9'); // digits of a number that becomes infinite

class NotesLine : public CommandLine {
  protected:
    // The points of a file as a drawing, whose path it returns.
    std::string drawingOf(const std::string& content) {
        const std::string drawing = folder.at("a.gpkg");
        EXPECT_EQ(fenmark({"import", file(content), "--drawing", drawing, "-q"}).code, kDone);
        return drawing;
    }
};

TEST_F(NotesLine, ExportAndPlotSpeakTheSameLanguage) {
    const std::string drawing =
        drawingOf(std::string(kPoints) + kRoute + "A00,\r\nA01,3,FAR," + kBoundless + ",0,,\r\nA99,\r\n");
    const std::string csv = folder.at("a.csv");
    const std::string svg = folder.at("a.svg");
    EXPECT_TRUE(contains(fenmark({"export", drawing, csv}).err,
                         "fenmark: note: a CSV file holds points alone; left out: 0 polylines, 1 alignment\n"));
    EXPECT_TRUE(contains(inJapanese({"export", drawing, csv}).err,
                         "fenmark: note: CSVファイルは点だけを持ちます。線0本と線形1本は出力していません\n"));
    EXPECT_TRUE(contains(fenmark({"plot", drawing, svg}).err,
                         "fenmark: note: 1 object with coordinates that no survey has is not drawn\n"));
    EXPECT_TRUE(contains(inJapanese({"plot", drawing, svg}).err,
                         "fenmark: note: 座標が大きすぎる1個の図形は図示していません\n"));
}

TEST_F(NotesLine, RecordsTakenOtherwiseThanExpectedAreToldWithTheirFirstLine) {
    const std::string path = file("A00,\r\nA01,1,\x85\x40x,,0,,\r\nA01,2,b,1,\x81\x40"
                                  "5,,\r\nA01,3,c,5,,,\r\nA99,\r\n");
    const std::string english = fenmark({"import", path}).err;
    EXPECT_TRUE(contains(english, path + ":2: note: a character that the encoding does not have, read as U+FFFD\n"))
        << english;
    EXPECT_TRUE(contains(english, path + ":2: note: an empty X or Y, read as 0; 1 more\n")) << english;
    EXPECT_TRUE(contains(english, path + ":3: note: a number read up to a character")) << english;
    EXPECT_TRUE(contains(inJapanese({"import", path}).err,
                         path + ":2: note: XまたはYが空欄のため、0で読みました。ほかに1件\n"));
    const Ran json = fenmark({"import", path, "--json", "-q"});
    EXPECT_TRUE(
        contains(json.out, R"({"code":"empty-coordinate","text":"an empty X or Y, read as 0; 1 more","line":2})"))
        << json.out;
    EXPECT_EQ(json.err, "");
}

// Every kind of file, read in every encoding that can be asked for.
TEST_F(NotesLine, FilesThatWereLikelyNotWrittenAsTheyAreReadAreToldOf) {
    const auto named = [](std::string_view name) {
        return "A00,\r\nA01,1," + std::string(name) + ",0,0,,\r\nA99,\r\n";
    };
    const auto utf16 = [&](bool highByteFirst) {
        std::string bytes = highByteFirst ? "\xFE\xFF" : "\xFF\xFE";
        for (const char c : named("KP1")) {
            bytes += highByteFirst ? '\0' : c;
            bytes += highByteFirst ? c : '\0';
        }
        return bytes;
    };
    std::string oneLine = named("KP1");
    std::erase(oneLine, '\n');
    const std::pair<std::string, std::string> files[] = {
        {"ASCII", named("KP1")},
        {"code page 932", named("\x95\x5C\x83\x5C\xB6\xDE")},
        {"UTF-8", named("境界点")},
        {"UTF-8 with a mark", "\xEF\xBB\xBF" + named("境界点")},
        {"UTF-16", utf16(false)},
        {"UTF-16, high byte first", utf16(true)},
        {"EUC-JP", named("\xA4\xB3\xA4\xEC")},
        {"ISO-2022-JP", named("\x1B$B6-3&\x1B(B")},
        {"carriage returns", oneLine},
        {"carriage returns but for the last", oneLine + "\n"},
        {"nothing", ""},
    };
    std::string told;
    for (const auto& [kind, content] : files) {
        const std::string path = file(content);
        for (const std::string encoding : {"auto", "cp932", "utf-8", "utf-16", "utf-16be"}) {
            told += "== " + kind + ", --encoding " + encoding + "\n";
            for (const Language language : {Language::English, Language::Japanese}) {
                std::istringstream lines(fenmark({"preview", path, "--encoding", encoding}, false, language).err);
                for (std::string line; std::getline(lines, line);) {
                    ASSERT_TRUE(line.starts_with(path + ": ")) << line;
                    told += line.substr(path.size() + 2) + "\n";
                }
            }
            EXPECT_EQ(fenmark({"preview", path, "--encoding", encoding, "--quiet"}).err, "") << kind << ' ' << encoding;
        }
    }
    test::expectSampleOf("cli", "encodings.txt", told);
}

TEST_F(NotesLine, TheFirst64KilobytesShowWhetherAFileIsUtf8) {
    constexpr std::size_t kLookedAt = 65536;
    const auto told = [&](const std::string& content) {
        return contains(fenmark({"preview", file(content), "--encoding", "utf-8"}).err, "is no UTF-8");
    };
    const std::string start = "Z00,";
    const std::string end = "\x95,\r\n";
    for (const std::size_t beyond : {0U, 1U}) {
        std::string lines(kLookedAt + beyond - start.size() - end.size(), 'x');
        lines[lines.size() / 2] = '\n';
        EXPECT_EQ(told(start + lines + end), beyond == 0) << "only whole lines are looked at";
        EXPECT_TRUE(told(start + end + lines));
    }
    // A character of the line behind them that begins within.
    const std::string whole = start + std::string(kLookedAt - start.size() - 2, 'x') + "\n";
    EXPECT_FALSE(told(whole + "境界,\r\n"));
    const std::string noLine(kLookedAt - 1, 'x');
    EXPECT_TRUE(told(noLine + "\x95"));
    EXPECT_FALSE(told(noLine + "x\x95"));
}

TEST_F(NotesLine, StakesSayInBothLanguagesWhyThereAreNone) {
    const std::string drawing = drawingOf(std::string(kPoints) + kRoute);
    EXPECT_TRUE(contains(fenmark({"stakes", drawing, "CL", "--every", "0"}).err, "no stake: none was asked for"));
    EXPECT_TRUE(contains(inJapanese({"stakes", drawing, "CL", "--every", "0"}).err, "測設点がありません"));
}

TEST_F(NotesLine, ImportTellsTheSameNotesInBothLanguagesUnderTheSameCodes) {
    const std::string bad = "A00\r\nA01,2,P,0,0,0,,\r\nA01,K1,P,0,0,0,\r\nA01,4,F," + kBoundless +
                            ",0,0,\r\nD00,1,L,1,\r\nA99,\r\nX01,\r\n";
    const std::string path = file(bad);
    const auto notesOf = [&](Language language) {
        return fenmark({"import", path, "--json", "--drawing", folder.at("n.gpkg"), "--replace"}, false, language)
            .json()[0]["notes"];
    };
    const nlohmann::json first = notesOf(Language::English);
    const nlohmann::json english = notesOf(Language::English); // the drawing is there now, as for the next one
    const nlohmann::json japanese = notesOf(Language::Japanese);
    ASSERT_EQ(english.size(), japanese.size());
    std::set<std::string> codes;
    for (std::size_t i = 0; i < english.size(); ++i) {
        EXPECT_EQ(english[i]["code"], japanese[i]["code"]);
        EXPECT_EQ(english[i].value("line", 0), japanese[i].value("line", 0));
        EXPECT_TRUE(isAscii(english[i]["text"].get<std::string>())) << english[i];
        EXPECT_NE(english[i]["text"], japanese[i]["text"]);
        EXPECT_FALSE(isAscii(japanese[i]["text"].get<std::string>())) << japanese[i];
        codes.insert(english[i]["code"]);
    }
    EXPECT_EQ(codes, (std::set<std::string>{"unclosed-section", "lacking-comma", "comma-too-many", "point-number",
                                            "no-place", "passed-over", "replaced"}));
    EXPECT_EQ(first.back()["code"], "nothing-replaced");
}

TEST_F(NotesLine, QuietKeepsNotesFromTheTerminalAndNotFromJson) {
    const std::string bad = "A00\r\nA01,2,P,0,0,0,,\r\nA01,K1,P,0,0,0,\r\nD00,1,L,1,\r\nA99,\r\nX01,\r\n";
    const std::string named = "A00,\r\nA01,1,境界点,0,0,,\r\nA99,\r\n";
    struct Case {
        std::string content;
        std::vector<std::string> options;
        std::set<std::string> codes;
    };
    const Case cases[] = {
        {bad,
         {},
         {"comma-too-many", "lacking-comma", "nothing-found", "passed-over", "point-number", "unclosed-section"}},
        {named, {}, {"read-in"}},
        {"\xEF\xBB\xBF" + named, {}, {"read-in"}},
        {named, {"--encoding", "cp932"}, {"likely-misread", "unreadable-character"}},
        {"A00,\r\nA01,1,\x95\x5C,0,0,,\r\nA99,\r\n",
         {"--encoding", "utf-8"},
         {"likely-misread", "unreadable-character"}},
        {"A00,\r\nA01,1,\xA4\xB3\xA4\xEC,0,0,,\r\nA99,\r\n", {}, {"unread-encoding", "unreadable-character"}},
        {"A00,\rA01,1,P,0,0,,\rA99,\r", {}, {"carriage-returns", "nothing-found"}},
        {"A00,\r\nA99,\r\n", {}, {"nothing-found"}},
        {std::string(kPoints) + kLongitudinal, {}, {"no-alignment"}},
        {kPoints, {}, {}},
    };
    for (const Case& c : cases) {
        const auto ran = [&](const char* quiet) {
            std::vector<std::string> line = {"import", file(c.content), "--json", quiet};
            line.insert(line.end(), c.options.begin(), c.options.end());
            std::filesystem::remove(folder.at("a.gpkg"));
            return fenmark(line);
        };
        const Ran loud = ran("--json");
        const Ran quiet = ran("--quiet");
        EXPECT_FALSE(contains(quiet.err, ": note: ")) << quiet.err;
        EXPECT_EQ(quiet.out, loud.out) << c.content;
        std::set<std::string> told;
        const nlohmann::json all = quiet.json();
        for (const nlohmann::json& note : all[0]["notes"]) {
            told.insert(note["code"]);
            EXPECT_TRUE(contains(loud.err, ": note: " + note["text"].get<std::string>())) << loud.err;
        }
        EXPECT_EQ(told, c.codes) << c.content;
    }
}

TEST_F(NotesLine, ResultLinesAndErrorBlocksAreJapaneseAlways) {
    const std::string path = file("A00,\r\nA01,1,P,0,0,0,\r\nA01,x,P,0,0,0,\r\nA99,\r\n");
    const Ran english = fenmark({"import", path, "--drawing", folder.at("e.gpkg")});
    const Ran japanese = inJapanese({"import", path, "--drawing", folder.at("j.gpkg")});
    EXPECT_EQ(english.out, japanese.out);
    EXPECT_TRUE(contains(english.out, "座標データから1個のポイントを作成")) << english.out;
    const std::string block = path + ":3: ErrA01-1: ";
    ASSERT_TRUE(contains(english.err, block)) << english.err;
    const auto lineOf = [&](const std::string& text) {
        const std::size_t at = text.find(block);
        return text.substr(at, text.find('\n', at) - at);
    };
    EXPECT_EQ(lineOf(english.err), lineOf(japanese.err));
}

} // namespace
} // namespace fenmark::cli
