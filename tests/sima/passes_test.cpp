// The two passes as a whole: opening, line steps, dispatch, progress, binding of routes.
#include "support.h"

#include "sima/records/passed_over.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace fenmark::sima {

using test::fullRead;
using test::joined;
using test::Lines;
using test::Pass;
using test::preview;
using test::readAfterPoints;
using test::TemporaryFolder;

namespace {

// Writes down what the window is told.
class WindowNotes : public ProgressFactory {
  public:
    std::vector<std::string> notes;
    std::vector<std::int64_t> positions;
    std::size_t pumps = 0;
    bool makesWindow = true;

    std::unique_ptr<Progress> create(std::string_view title, bool smooth) override {
        notes.push_back("create " + std::string(title) + (smooth ? " smooth" : ""));
        return makesWindow ? std::make_unique<Window>(*this) : nullptr;
    }

  private:
    class Window : public Progress {
      public:
        explicit Window(WindowNotes& notes) : notes_(notes) {}
        ~Window() override { notes_.notes.emplace_back("destroy"); }
        std::int32_t goModal(std::string_view title, bool smooth) override {
            notes_.notes.push_back("modal " + std::string(title) + (smooth ? " smooth" : ""));
            return 0;
        }
        void setRange(std::int64_t lower, std::int64_t upper, std::int32_t step) override {
            notes_.notes.push_back("range " + std::to_string(lower) + " " + std::to_string(upper) + " " +
                                   std::to_string(step));
        }
        void setText(std::string_view text) override { notes_.notes.push_back("text " + std::string(text)); }
        void setPosition(std::int64_t position) override { notes_.positions.push_back(position); }
        void pump() override {
            ++notes_.pumps;
            EXPECT_EQ(notes_.pumps, notes_.positions.size()) << "the position comes before the pump";
        }

      private:
        WindowNotes& notes_;
    };
};

// Knows alignments by "line <id>" and writes down its calls.
class NamingHost : public host::HostBoundary {
  public:
    std::vector<std::string> calls;

    host::DrawingWriter& drawingWriter() override { throw std::logic_error("not used"); }
    host::ObjectDataWriter& objectDataWriter() override { throw std::logic_error("not used"); }
    std::unique_ptr<host::CorridorUtility> makeCorridorUtility() override { return std::make_unique<Corridor>(calls); }

  private:
    class Corridor : public host::CorridorUtility {
      public:
        explicit Corridor(std::vector<std::string>& calls) : calls_(calls) {}
        void connect() override { calls_.emplace_back("connect"); }
        void disconnect() override { calls_.emplace_back("disconnect"); }
        std::int32_t listSites(std::vector<std::string>&) override { return -1; }
        std::int32_t createSite(std::string_view) override { return -1; }
        std::int32_t findSite(std::string_view) override { return -1; }
        std::int32_t collectAlignments(std::map<std::string, host::MdDbObjectId>&) override { return -1; }
        host::MdDbObjectId createAlignment(std::string_view, std::string_view, std::string_view, double,
                                           Array<EntityData>&) override {
            return {};
        }
        std::string getAlignmentName(host::MdDbObjectId id) override {
            calls_.push_back("name " + std::to_string(id.asUint64()));
            return "line " + std::to_string(id.asUint64());
        }
        std::int32_t pointAtStation(host::MdDbObjectId, double, host::PlanPoint&) override { return -1; }
        std::int32_t pointAtStationOffset(host::MdDbObjectId, double, double, host::PlanPoint&) override { return -1; }

      private:
        std::vector<std::string>& calls_;
    };
};

std::int32_t fullReadOf(const std::string& path) {
    SimaReader reader;
    return reader.fullRead(path, {});
}

} // namespace

TEST(Passes, ReadAnEmptyFile) {
    const Pass full = fullRead("");
    EXPECT_EQ(full.result, 0);
    EXPECT_EQ(full.processLines(), Lines{"00000     読み込み終了"});
    EXPECT_EQ(preview({}).result, 0);
}

TEST(Passes, CannotOpenWhatIsNoFile) {
    const TemporaryFolder folder;
    SimaReader reader;
    reader.log.finished(3);
    WindowNotes window;
    ReadContext context;
    context.progress = &window;
    EXPECT_EQ(reader.fullRead(folder.at("missing.sim"), context), -1);
    EXPECT_TRUE(reader.log.lines().empty()) << "the model has been emptied all the same";
    EXPECT_TRUE(window.notes.empty());
    EXPECT_EQ(reader.baseName, "missing");
    EXPECT_EQ(reader.previewScan(folder.at("missing.sim"), context), -1);
    std::filesystem::create_directory(folder.at("folder.sim"));
    EXPECT_EQ(fullReadOf(folder.at("folder.sim")), -1);
    EXPECT_EQ(fullReadOf(""), -1);
    EXPECT_EQ(reader.openError, std::errc::no_such_file_or_directory);
    std::ofstream(folder.at("good.sim")) << "A00,\n";
    EXPECT_EQ(reader.fullRead(folder.at("good.sim"), context), 0);
    EXPECT_FALSE(reader.openError) << "of the last pass";
    if (std::filesystem::exists("/proc/self/mem")) { // opens, and has nothing at its beginning
        EXPECT_EQ(fullReadOf("/proc/self/mem"), -1);
    }
}

TEST(Passes, DeriveTheBaseName) {
    const auto baseName = [](std::string_view path) {
        SimaReader reader;
        reader.fullRead(path, {});
        EXPECT_EQ(reader.filePath, path);
        return reader.baseName;
    };
    EXPECT_EQ(baseName("C:\\data\\a.b.sim"), "a.b");
    EXPECT_EQ(baseName("noextension"), "noextension");
    EXPECT_EQ(baseName("a.sim"), "a");
    EXPECT_EQ(baseName(".sim"), ".sim");
    EXPECT_EQ(baseName("x\\.sim"), "");
#ifndef _WIN32
    EXPECT_EQ(baseName("/nowhere/地籍.sim"), "地籍");
    EXPECT_EQ(baseName("/測量/\x95\x5C.sim"), "表") << "a name in code page 932, whose second byte is no separator";
#endif
}

TEST(Passes, CountEveryLineWhateverItsEnd) {
    EXPECT_EQ(fullRead("A00,\n\r\n  \r\nA99,").reader.lineNumber, 4);
    EXPECT_EQ(fullRead("\n").reader.lineNumber, 1);
    EXPECT_EQ(fullRead("A00,\rA99,\n").reader.lineNumber, 1) << "a lone CR ends no line";
}

TEST(Passes, KeepALoneCarriageReturnInsideAField) {
    const Pass pass = fullRead("A00,\n A01,1,a\rb,1,2,,\t\r\r\nA99,\n");
    ASSERT_EQ(pass.reader.points.size(), 1U);
    EXPECT_EQ(pass.reader.points[0].name, "a\rb");
    EXPECT_EQ(pass.errors(), Lines{});
}

TEST(Passes, ReadLinesLongerThanTheirBlocks) {
    const std::string name(3'000'000, 'x');
    const Pass pass = fullRead("A00,\nA01,1," + name + ",1,2,,\nA01,2," + name + ",1,2,,\nA99,\n");
    ASSERT_EQ(pass.reader.points.size(), 2U);
    EXPECT_EQ(pass.reader.points[1].name, name);
    EXPECT_EQ(pass.reader.lineNumber, 4);
}

TEST(Passes, ReadLinesThatEndAtTheEndOfABlock) {
    constexpr std::size_t kBlock = std::size_t{256} << 10;
    for (std::size_t before = kBlock - 4; before <= kBlock + 4; ++before) {
        const Pass pass = fullRead(std::string(before, 'x') + "\r\nA00,\r\nA01,1,P,1,2,,\r\nA99,");
        EXPECT_EQ(pass.reader.lineNumber, 4);
        EXPECT_EQ(pass.errors(), Lines{});
        EXPECT_EQ(pass.reader.points.size(), 1U);
    }
}

TEST(Passes, ReadNullsAndEndOfFileCharactersAsOrdinaryOnes) {
    const Pass nulls = fullRead(std::string_view("\0\0\0\0\0\n\0\0\0,", 10));
    EXPECT_EQ(nulls.result, 0);
    EXPECT_EQ(nulls.reader.lineNumber, 2);
    const Pass pass = fullRead("A00,\n\x1A\nA01,1,a\x1A,1,2,,\nA99,\n");
    EXPECT_EQ(pass.errorCodes(), Lines{"ErrA001"});
    EXPECT_EQ(pass.reader.points.size(), 1U);
}

TEST(Passes, IgnoreUnknownCodesAtTopLevelAndCountThem) {
    const Pass pass =
        fullRead({"Z00,test,", "Z01,x,", "C00,", "C03,1,2,", "a00,", "A00 ,", "A0", "A000,", "", "Z01,y,"});
    EXPECT_EQ(pass.errors(), Lines{});
    EXPECT_EQ(pass.processLines(), Lines{"00010     読み込み終了"});
    const PassedOver expected{{"comment: Z00", 1},
                              {"outside any section: C00", 1},
                              {"unknown code at top level: A0", 1},
                              {"unknown code at top level: A00 ", 1},
                              {"unknown code at top level: A000", 1},
                              {"unknown code at top level: C03", 1},
                              {"unknown code at top level: Z01", 2},
                              {"unknown code at top level: a00", 1}};
    EXPECT_EQ(pass.reader.passedOver, expected);
}

TEST(Passes, NameCodesOfUpToTwelvePrintableBytesAmongThosePassedOver) {
    const std::pair<std::string, bool> codes[] = {{"q", true},        {"q12345678901", true}, {"q123456789012", false},
                                                  {"測点測点", true}, {"測点測点q", false},   {"q\x1Fq", false},
                                                  {"q q", true},      {"q~", true},           {"q\x7Fq", false}};
    for (const auto& [code, named] : codes) {
        const Pass pass = fullRead(code + ",1,\r\n");
        const std::string key = "unknown code at top level";
        EXPECT_EQ(pass.reader.passedOver, (PassedOver{{named ? key + ": " + code : key, 1}})) << code;
    }
    // So many kinds are kept apart.
    for (const std::size_t kinds : {64U, 65U}) {
        std::string text;
        for (std::size_t i = 0; i < kinds; ++i) {
            text += "q" + std::to_string(i) + ",\n";
        }
        const Pass pass = fullRead(text);
        EXPECT_EQ(pass.reader.passedOver.contains("unknown code at top level"), kinds > 64);
        EXPECT_TRUE(pass.reader.passedOver.contains("unknown code at top level: q63"));
    }
}

TEST(PassedOverKinds, ReadBackFromTheKeysOfTheCounts) {
    for (std::size_t i = 0; i <= static_cast<std::size_t>(kLastPassedKind); ++i) {
        const auto kind = static_cast<PassedKind>(i);
        for (const std::string_view code : {"", "X01", "B01 ", "a: b"}) {
            const std::string key = passedLinesKey({kind, code});
            const std::optional<PassedLines> lines = passedLinesOf(key);
            ASSERT_TRUE(lines) << key;
            EXPECT_EQ(lines->kind, kind) << key;
            EXPECT_EQ(lines->code, code) << key;
        }
        EXPECT_NE(passedKindText(kind, Language::Japanese), passedKindText(kind, Language::English));
    }
    EXPECT_FALSE(passedLinesOf("comments"));
    EXPECT_FALSE(passedLinesOf("something else: X01"));
}

TEST(Passes, CountGarbageTogether) {
    std::string text;
    for (int i = 0; i < 1000; ++i) {
        text += "q" + std::to_string(i) + ",\n";
    }
    const Pass pass = fullRead(text);
    EXPECT_LE(pass.reader.passedOver.size(), 65U);
    EXPECT_EQ(pass.reader.passedOver.at("unknown code at top level"), 1000 - 64);
}

TEST(Passes, ActInFileOrder) {
    const Pass pass = readAfterPoints({"F00,1,1,R,3,", "F99,", "I00,1,R,", "I99,", "D00,1,L,1,", "D99,", "H00,1,R,",
                                       "H99,", "A00,", "A99,", "F00,1,1,R,6,", "F99,"});
    EXPECT_EQ(pass.sink.calls, (std::vector<std::string>{"points", "alignment", "cross section", "lot", "longitudinal",
                                                         "points", "polyline"}));
}

TEST(Passes, LoseTheRestOfTheFileInASectionThatIsNotClosedWithAnErrorForEachLine) {
    for (const char* opening : {"D00,1,L,1,", "H00,1,R,", "I00,1,R,"}) {
        const Pass pass = fullRead({opening, "A00,", "A01,1,P,1,2,,", "A99,"});
        EXPECT_EQ(pass.errors().size(), 3U) << opening;
        EXPECT_TRUE(pass.reader.points.empty());
    }
}

TEST(Passes, DoNotRaiseForShortRecordsThatTheirTestsRefuse) {
    // A short H01 and a short B01 of a lot are refused by their tests and never raise.
    const Pass pass = readAfterPoints({"H00,1,R,", "H01", "H99,", "D00,1,L,1,", "B01", "D99,"});
    EXPECT_EQ(pass.result, 0);
    EXPECT_EQ(pass.errorCodes(), (Lines{"ErrX001", "ErrX001"}));
}

TEST(Passes, StandBehindWhatAnEarlierPassLeft) {
    const TemporaryFolder folder;
    const std::string path = folder.write("a.sim", joined({"A00,", "A01,1,P,1,x,,", "A01,2,P,1,2,,", "A99,",
                                                           "D00,1,L,1,", "D99,", "F00,1,1,R,2,", "F99,", "ZZZ,"}));
    SimaReader reader;
    reader.pointLayer = "点";
    reader.siteName = "サイト";
    reader.alignmentName = "chosen";
    reader.alignmentId = host::MdDbObjectId{5};
    reader.shiftDistance = 0.25;
    reader.forceChosenAlignment = true;
    reader.usedRouteType7 = true;
    EXPECT_EQ(reader.previewScan(path, {}), 0);
    EXPECT_EQ(reader.points.size(), 2U);
    reader.coordinatePointsCreated = 9;
    reader.countRouteCreated(2);
    reader.createdAlignmentNames.push_back("x");
    for (int pass = 1; pass <= 2; ++pass) {
        EXPECT_EQ(reader.fullRead(path, {}), 0);
        EXPECT_EQ(reader.points.size(), 1U);
        EXPECT_EQ(reader.lots.size(), 1U);
        EXPECT_EQ(reader.alignments.size(), 1U);
        EXPECT_EQ(reader.routesRead(2), 1);
        EXPECT_EQ(reader.routesCreated(2), 0);
        EXPECT_EQ(reader.coordinatePointsCreated, 0);
        EXPECT_TRUE(reader.createdAlignmentNames.empty());
        EXPECT_EQ(reader.lineNumber, 9);
        EXPECT_EQ(reader.log.lines().size(), 9U);
        EXPECT_EQ(reader.log.errors().size(), 4U);
        EXPECT_EQ(reader.log.errorCount(), pass) << "the log's counter goes on";
        EXPECT_EQ(reader.errorCount, pass);
        EXPECT_EQ(reader.passedOver.size(), 1U);
    }
    EXPECT_EQ(reader.pointLayer, "点");
    EXPECT_EQ(reader.siteName, "サイト");
    EXPECT_EQ(reader.alignmentName, "chosen");
    EXPECT_EQ(reader.alignmentId, host::MdDbObjectId{5});
    EXPECT_EQ(reader.shiftDistance, 0.25);
    EXPECT_TRUE(reader.forceChosenAlignment);
    EXPECT_TRUE(reader.usedRouteType7);
}

// Whatever stands in the file before, a reader makes of the next one what a new reader makes of it.
TEST(Passes, LeaveNothingOfTheFileBefore) {
    const TemporaryFolder folder;
    const std::string full = folder.write(
        "full.sim", test::cp932(joined({"ZZZ,",     "A00,",         "A01,1,P,1,1,,",     "A01,2,Q,1,2,,",
                                        "X01,",     "A99,",         "D00,1,L,1,",        "B01,1,P,",
                                        "D99,",     "F00,1,1,R,3,", "F03,20,",           "B01,1,P,",
                                        "B01,2,Q,", "F99,",         "H00,1,R,",          "H01,No.1,1.0,5.5,6.0,1,",
                                        "H99,",     "I00,1,R,",     "I01,No.1,1.0,5.5,", "I02,1,1.0,5.5,0,",
                                        "I99,",     "G00,x,1,"})));
    const std::string small = folder.write("small.sim", test::cp932(joined({"YYY,", "A00,", "A01,7,P,1,1,,", "A99,"})));
    const auto pass = [](SimaReader& reader, const std::string& path, bool isFull) {
        ReadContext context;
        test::KeepingSink sink;
        context.sink = &sink;
        EXPECT_EQ(isFull ? reader.fullRead(path, context) : reader.previewScan(path, context), 0);
    };
    for (const bool fullBefore : {false, true}) {
        for (const bool fullBehind : {false, true}) {
            SimaReader used;
            test::tickAll(used);
            pass(used, full, fullBefore);
            EXPECT_FALSE(used.points.empty() || used.lots.empty() || used.alignments.empty() || used.verticals.empty());
            EXPECT_FALSE(used.hSeries.empty() || used.intersections.empty());
            EXPECT_EQ(used.passedOver.size(), fullBefore ? 1U : 0U);
            const std::int32_t errors = used.log.errorCount();
            EXPECT_EQ(errors > 0, fullBefore);
            pass(used, small, fullBehind);
            SimaReader fresh;
            test::tickAll(fresh);
            pass(fresh, small, fullBehind);
            EXPECT_EQ(used.points.size(), fresh.points.size());
            EXPECT_TRUE(used.lots.empty() && used.alignments.empty() && used.verticals.empty());
            EXPECT_TRUE(used.hSeries.empty() && used.intersections.empty() && used.entities.empty());
            EXPECT_EQ(used.passedOver, fresh.passedOver);
            EXPECT_EQ(used.lineNumber, fresh.lineNumber);
            EXPECT_EQ(used.log.errorCount(), errors) << "the log's counter goes on";
            EXPECT_EQ(used.errorCount, fullBehind ? errors : 0);
            EXPECT_EQ(test::texts(used.log.lines()), test::texts(fresh.log.lines()));
            EXPECT_EQ(used.log.errors().size(), 0U);
            EXPECT_EQ(used.baseName, "small");
            for (std::int32_t type = 1; type <= 7; ++type) {
                EXPECT_EQ(used.routesRead(type), 0) << type;
                EXPECT_EQ(used.routesCreated(type), 0) << type;
            }
            EXPECT_FALSE(used.bindRoute(1)) << "the route went with its file";
        }
    }
}

TEST(Passes, CountsOfRoutesAreZeroOutsideTheTypes) {
    SimaReader reader;
    for (std::int32_t type = -1; type <= 9; ++type) {
        for (std::int32_t i = 0; i < 10 + type; ++i) {
            reader.countRouteRead(type);
            reader.countRouteCreated(type);
        }
        reader.countRouteRead(type);
    }
    reader.countRouteRead(1000);
    reader.countRouteCreated(1000);
    for (const std::int32_t type : {-1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 1000}) {
        const bool isType = type >= 1 && type <= 7;
        EXPECT_EQ(reader.routesRead(type), isType ? 11 + type : 0) << type;
        EXPECT_EQ(reader.routesCreated(type), isType ? 10 + type : 0) << type;
    }
}

TEST(Passes, PreviewsAskForTheNumberOfARouteOnlyWhereTheyUseIt) {
    const auto raises = [](std::string_view text) {
        const TemporaryFolder folder;
        SimaReader reader;
        try {
            EXPECT_EQ(reader.previewScan(folder.write("a.sim", text), {}), 0) << text;
        } catch (const std::invalid_argument&) {
            return true;
        }
        return false;
    };
    for (const char* text : {"I00\n", "I00\nI01,a,0,0,0,\n", "I00,1\nI99,\n", "I00,\nI01\nI99\n", "H00\n",
                             "H00\nH99,\n", "H00,1\nH01,a,0,0,0,1,\nH99,\n", "H00,\nH01\nH99\n"}) {
        EXPECT_FALSE(raises(text)) << text;
    }
    for (const char* text : {"I00\nI99,\n", "I00\nI01,a,0,0,0,\nI99,\n", "H00\nH01\n", "H00\nH01,a,0,0,0,1,\nH99,\n"}) {
        EXPECT_TRUE(raises(text)) << text;
    }
}

TEST(Passes, CountEachErrorAtTheLineThatItStandsIn) {
    // Every kind of record as it must not be, and what it takes to get there; the file may end behind any line.
    struct Line {
        std::string_view text;
        bool wrong = true;
    };
    const Line lines[] = {
        {"G00"},
        {"A00"},
        {"XXX,"},
        {"A01,x,P,1,2,,"},
        {"A01,1,P,1,2,,", false},
        {"A01,1,P,1,2,,"},
        {"A99"},
        {"D00,x,L,1,"},
        {"XXX,"},
        {"B01,x,"},
        {"B01,1,P,", false},
        {"B01,7,P,"},
        {"B01,8,P,", false},
        {"D99", false},
        {"F00,x,1,R,3,"},
        {"XXX,"},
        {"F03,1", false},
        {"B01,1"},
        {"B01,7,,"},
        {"B03,x,1"},
        {"C01,9,1"},
        {"C02,x,1,2"},
        {"C03"},
        {"F99"},
        {"F00,2,1,R,3,", false},
        {"B01,1,,", false},
        {"C01,0,x,"},
        {"C02,1,x,2,"},
        {"C03,x,"},
        {"F99"},
        {"F00,1,1,R,1,", false},
        {"C01,0,1,"},
        {"C02,1,2,3,"},
        {"F99"},
        {"H00,x,R,"},
        {"XXX,"},
        {"H01,a,x,0,0,1,"},
        {"H01,a,1,0,0,1,", false},
        {"H99"},
        {"I00,x,R,"},
        {"XXX,"},
        {"I01,a,x,0,0,"},
        {"I02,b,x,0"},
        {"I02,b,1,0,", false},
        {"I99"},
    };
    std::string text;
    std::int32_t errors = 0;
    for (const Line& line : lines) {
        text += std::string(line.text) + "\r\n";
        errors += line.wrong ? 1 : 0;
        const Pass pass = fullRead(text);
        EXPECT_EQ(pass.reader.log.errorCount(), errors) << pass.reader.lineNumber << " " << line.text;
        EXPECT_EQ(pass.reader.errorCount, errors) << pass.reader.lineNumber << " " << line.text;
    }
}

TEST(ProgressWindow, FollowsTheReadingAndGoesAtItsEnd) {
    WindowNotes window;
    ReadContext context;
    context.progress = &window;
    const std::string text = "A00,\r\n\r\nA99,";
    const Pass pass = fullRead(text, context);
    EXPECT_EQ(window.notes, (std::vector<std::string>{"create SIMAファイル読み込み中", "modal Progress", "range 0 12 1",
                                                      "text SIMAファイル読み込み中...\n\n", "destroy"}));
    EXPECT_EQ(window.positions, (std::vector<std::int64_t>{6, 8, 12}));
    EXPECT_EQ(window.pumps, 3U);
    EXPECT_EQ(pass.result, 0);
}

TEST(Passes, LeaveNoElementOfARouteThatAnExceptionEnded) {
    const TemporaryFolder folder;
    const std::string points(test::kThreePoints);
    SimaReader reader;
    EXPECT_THROW(reader.fullRead(folder.write("a.sim", points + "F00,1,1,R,3,\r\nB01,1,,\r\nC01,0\r\n"), {}),
                 std::invalid_argument);
    EXPECT_EQ(reader.fullRead(folder.write("b.sim", points + "F00,1,1,R,3,\r\nB01,2,,\r\nF99,\r\n"), {}), 0);
    ASSERT_EQ(reader.alignments.size(), 1U);
    EXPECT_EQ(reader.alignments[0].entities.size(), 1U);
}

TEST(Passes, FindSomethingWhereAnyOneSectionHoldsSomething) {
    EXPECT_TRUE(fullRead("").reader.nothingFound());
    EXPECT_TRUE(fullRead("A00,\nA99,\nZ00,x\n").reader.nothingFound());
    for (const char* text : {"A00,\nA01,1,P,1,2,,\nA99,\n", "D00,1,L,1,\nD99,\n", "F00,1,1,R,3,\nF99,\n",
                             "H00,1,R,\nH99,\n", "I00,1,R,\nI99,\n"}) {
        EXPECT_FALSE(fullRead(text).reader.nothingFound()) << text;
    }
}

// A record stands in the log as it is in its file, without what ends its line.
TEST(Passes, KeepTheWholeTextOfALineOfEitherEnd) {
    for (const std::string end : {"\n", "\r\n"}) {
        const std::string wrong = "A01,x,P,1,2,,tail";
        for (const std::string& line : {wrong, wrong + "!", std::string("A01,x,P,1,2,,")}) {
            const Pass pass = fullRead("A00," + end + line + end + "A99," + end);
            ASSERT_EQ(pass.errors().size(), 1U) << line;
            EXPECT_TRUE(pass.errors()[0].ends_with(line)) << pass.errors()[0];
        }
    }
}

TEST(ProgressWindow, MayFailToBeMade) {
    WindowNotes window;
    window.makesWindow = false;
    ReadContext context;
    context.progress = &window;
    EXPECT_EQ(fullRead("A00,\nA99,\n", context).result, 0);
    EXPECT_EQ(window.notes.size(), 1U);
}

TEST(ProgressWindow, GoesWhenAnExceptionEndsThePass) {
    const TemporaryFolder folder;
    WindowNotes window;
    ReadContext context;
    context.progress = &window;
    SimaReader reader;
    EXPECT_THROW(reader.fullRead(folder.write("a.sim", "D00,\n"), context), std::invalid_argument);
    EXPECT_EQ(window.notes.back(), "destroy");
}

TEST(Encodings, AreCodePage932UnlessSaidOtherwise) {
    const TemporaryFolder folder;
    const std::string path = folder.write("a.sim", "A00,\r\nA01,1,\x8D\xC0\x95\x57\xB1\xFF,1,2,,\r\nA99,\r\n");
    SimaReader reader;
    EXPECT_EQ(reader.fullRead(path, {}), 0);
    EXPECT_EQ(reader.points[0].name, "座標ｱ\xEF\xBF\xBD");
}

TEST(Encodings, NoByteOrderMarkIsLookedForInCodePage932) {
    const Pass pass = fullRead("");
    const TemporaryFolder folder;
    SimaReader reader;
    reader.fullRead(folder.write("a.sim", "\xEF\xBB\xBF"
                                          "A00,\r\nA01,1,P,1,2,,\r\nA99,\r\n"),
                    {});
    EXPECT_TRUE(reader.points.empty());
}

TEST(Encodings, Utf8SkipsAByteOrderMarkAndReplacesWhatIsInvalid) {
    const TemporaryFolder folder;
    ReadContext context;
    context.encoding = Encoding::Utf8;
    SimaReader reader;
    const std::string path = folder.write("a.sim", "\xEF\xBB\xBF"
                                                   "A00,\nA01,1,座標\xFFx\xE5\xBA,1,2,,\nA99,\n");
    EXPECT_EQ(reader.fullRead(path, context), 0);
    ASSERT_EQ(reader.points.size(), 1U);
    EXPECT_EQ(reader.points[0].name, "座標\xEF\xBF\xBDx\xEF\xBF\xBD");
    EXPECT_EQ(reader.log.errorCount(), 0);
}

TEST(Encodings, Utf8TakesAByteOrderMarkAloneForAnEmptyFile) {
    const TemporaryFolder folder;
    ReadContext context;
    context.encoding = Encoding::Utf8;
    SimaReader reader;
    EXPECT_EQ(reader.fullRead(folder.write("a.sim", "\xEF\xBB\xBF"), context), 0);
    EXPECT_EQ(reader.lineNumber, 0);
    EXPECT_EQ(test::texts(reader.log.lines()), Lines{"00000     読み込み終了"});
}

TEST(BindRoute, NamesTheAlignmentOfTheRoute) {
    NamingHost host;
    ReadContext context;
    context.host = &host;
    const Pass pass = readAfterPoints(
        {"F00,4,1,R,2,", "F99,", "F00,5,1,S,3,", "F99,", "H00,5,S,", "H99,", "I00,4,R,", "I99,", "I00,4,R,", "I99,"},
        context, 70);
    EXPECT_EQ(host.calls, (std::vector<std::string>{"connect", "name 71", "disconnect", "connect", "name 70",
                                                    "disconnect", "connect", "name 70", "disconnect"}));
    EXPECT_TRUE(pass.reader.hSeries[0].routeFound);
    EXPECT_TRUE(pass.reader.intersections[0].routeFound);
    EXPECT_EQ(pass.reader.alignmentName, "line 70");
    EXPECT_TRUE(pass.reader.usedRouteType2);
    EXPECT_TRUE(pass.reader.usedRouteType3);
    EXPECT_FALSE(pass.reader.usedRouteType7);
    const Lines lines = pass.processLines();
    const auto count = [&lines](std::string_view text) { return std::count(lines.begin(), lines.end(), text); };
    EXPECT_EQ(count("          中心線”line 71”の縦断成果データ"), 1)
        << "the longitudinal section binds before it begins";
    EXPECT_EQ(count("          中心線”line 71”の横断成果データ"), 1) << "the cross section binds at its end";
    EXPECT_EQ(count("          中心線”line 70”の横断成果データ"), 1);
}

TEST(BindRoute, LeavesTheNameOfTheSectionBeforeToOneThatFindsNoRoute) {
    NamingHost host;
    ReadContext context;
    context.host = &host;
    const Pass pass = readAfterPoints(
        {"F00,4,1,R,2,", "F99,", "H00,4,R,", "H99,", "H00,9,X,", "H01,a,0,0,0,1,", "H99,"}, context, 70);
    EXPECT_FALSE(pass.reader.hSeries[1].routeFound);
    const Lines lines = pass.processLines();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "          中心線”line 70”の縦断成果データ"), 2);
    EXPECT_EQ(lines[lines.size() - 2], "          1点のポイント\n") << "and it counts as good";
}

TEST(BindRoute, KeepsTheChosenAlignmentIfItIsForced) {
    NamingHost host;
    const TemporaryFolder folder;
    const std::string path = folder.write("a.sim", joined({"F00,4,1,R,2,", "F99,", "H00,4,R,", "H99,"}));
    SimaReader reader;
    test::tickAll(reader);
    test::KeepingSink sink;
    sink.nextId = 70;
    reader.forceChosenAlignment = true;
    reader.alignmentName = "chosen";
    ReadContext context;
    context.host = &host;
    context.sink = &sink;
    EXPECT_EQ(reader.fullRead(path, context), 0);
    EXPECT_TRUE(host.calls.empty());
    EXPECT_EQ(reader.alignmentName, "chosen");
    EXPECT_TRUE(reader.hSeries[0].routeFound);
    EXPECT_TRUE(reader.usedRouteType2);
}

TEST(BindRoute, FindsARouteThatWasNotTickedAndAsksForNoName) {
    NamingHost host;
    ReadContext context;
    context.host = &host;
    test::KeepingSink sink;
    sink.nextId = 70;
    context.sink = &sink;
    const TemporaryFolder folder;
    SimaReader reader;
    test::tickAll(reader);
    reader.options.flags[static_cast<std::size_t>(ImportKind::MainLine)] = false;
    EXPECT_EQ(reader.fullRead(folder.write("a.sim", joined({"F00,4,1,R,2,", "F99,", "H00,4,R,", "H99,"})), context), 0);
    EXPECT_TRUE(reader.alignments[0].objectId.isNull());
    EXPECT_TRUE(reader.hSeries[0].routeFound);
    EXPECT_TRUE(reader.usedRouteType2);
    EXPECT_TRUE(host.calls.empty());
    EXPECT_EQ(reader.alignmentName, "");
}

TEST(BindRoute, FindsTheFirstRouteOfANumberWhateverItsType) {
    const Pass pass = readAfterPoints({"F00,4,1,R,1,", "F99,", "F00,4,1,S,3,", "F99,", "H00,4,R,", "H99,"}, {}, 70);
    EXPECT_TRUE(pass.reader.hSeries[0].routeFound);
    EXPECT_TRUE(pass.reader.alignmentIdOfRoute(4).isNull()) << "the IP line's";
    EXPECT_FALSE(pass.reader.usedRouteType3);
}

TEST(BindRoute, TakesNumbersThatAreNoneForZero) {
    const Pass pass = readAfterPoints({"F00,abc,1,R,3,", "F99,", "H00,xyz,R,", "H99,"}, {}, 70);
    EXPECT_TRUE(pass.reader.hSeries[0].routeFound);
    EXPECT_EQ(pass.reader.alignmentIdOfRoute(0), host::MdDbObjectId{70});
}

TEST(BindRoute, DoesNotFindALaterRoute) {
    const Pass pass = readAfterPoints({"H00,4,R,", "H99,", "F00,4,1,R,3,", "F99,"}, {}, 70);
    EXPECT_FALSE(pass.reader.hSeries[0].routeFound);
    EXPECT_FALSE(pass.reader.allLongitudinalRoutesFound());
}

TEST(BindRoute, FindsTheFirstOfManyRoutes) {
    SimaReader reader;
    for (std::int32_t i = 0; i < 500; ++i) {
        SimaAlignment route;
        route.routeNumber = i % 250;
        route.objectId = host::MdDbObjectId{static_cast<std::uint64_t>(1 + i)};
        reader.alignments.push_back(route);
        EXPECT_EQ(reader.alignmentIdOfRoute(i % 250), host::MdDbObjectId{static_cast<std::uint64_t>(1 + i % 250)});
    }
    EXPECT_TRUE(reader.alignmentIdOfRoute(250).isNull());
    EXPECT_FALSE(reader.bindRoute(-1));
    reader.reset();
    EXPECT_TRUE(reader.alignmentIdOfRoute(1).isNull());
}

} // namespace fenmark::sima
