// The command flow over the recording host, with scripted dialogs.
#include "command/import_command.h"
#include "host/recording/recording_host.h"
#include "scripted_dialogs.h"
#include "sima/text/cp932.h"
#include "support/recorded_alignment.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <system_error>

namespace fenmark::command {
namespace {

using sima::ImportKind;

constexpr const char* kPoints = "A00,\r\nA01,1,BP,0.000,0.000,,\r\nA01,2,EP,0.000,100.000,,\r\nA99,\r\n";
constexpr const char* kRoute = "F00,1,1,CL,3,\r\nB01,1,BP,\r\nB01,2,EP,\r\nF99,\r\n";
constexpr const char* kLongitudinal = "H00,1,CL,\r\nH01,No.1,20.0,5.5,6.0,1,\r\nH99,\r\n";
constexpr const char* kCrossSection = "I00,1,CL,\r\nI01,No.1,20.0,5.5,6.0,\r\nI02,,-5.0,5.0,\r\nI99,\r\n";

class ImportCommand : public ::testing::Test {
  protected:
    std::string file(const std::string& content, const char* name = "a.sim") { return folder.write(name, content); }
    void acceptNextWith(const std::string& path, std::function<void(ImportDialogState&)> change = {}) {
        dialogs.import = [path, change = std::move(change)](ImportDialogState& state) {
            if (!acceptFile(state, path)) {
                return false;
            }
            if (change) {
                change(state);
            }
            return true;
        };
    }
    void run() { Fenmark(host, dialogs, lastRun, reader); }
    void addAlignment(const std::string& name) { fenmark::test::addStraightAlignment(host, name); }

    test::TemporaryFolder folder;
    host::RecordingHost host;
    ScriptedDialogs dialogs;
    LastRun lastRun;
    sima::SimaReader reader;
};

TEST_F(ImportCommand, DrawingWithoutSitesGetsItsSiteBeforeTheDialogOpensEvenIfTheUserCancels) {
    run();
    EXPECT_EQ(host.civil.sites, std::vector<std::string>{"サイト"});
    ASSERT_EQ(dialogs.imports.size(), 1U);
    EXPECT_EQ(dialogs.imports[0].siteNames, std::vector<std::string>{"サイト"});
    EXPECT_TRUE(dialogs.results.empty());
}

TEST_F(ImportCommand, SiteListingIsFramedByOneConnection) {
    run();
    EXPECT_EQ(host.calls.text(), "connect listSites createSite listSites disconnect listLayers");
}

TEST_F(ImportCommand, DrawingWithSitesGetsNoFurtherSite) {
    host.civil.sites = {"乙", "甲"};
    run();
    EXPECT_EQ(host.civil.sites, (std::vector<std::string>{"乙", "甲"}));
    EXPECT_EQ(host.calls.count(host::Call::CreateSite), 0U);
}

TEST_F(ImportCommand, EndsWithoutDialogWhenTheSitesCannotBeListed) {
    host.civil.failSites = true;
    run();
    EXPECT_TRUE(dialogs.imports.empty());
    EXPECT_TRUE(dialogs.results.empty());
    EXPECT_EQ(host.calls.count(host::Call::CreateSite), 0U);
}

TEST_F(ImportCommand, DialogIsGivenTheValuesOfTheLastRun) {
    lastRun.filePath = "x/a.sim";
    lastRun.siteName = "工区";
    lastRun.pointLayer = "P";
    lastRun.ipLayer = "IP";
    lastRun.lotLayer = "L";
    lastRun.wideStakeLayer = "W";
    lastRun.continuousLayer = "C";
    lastRun.shiftDistance = 0.5;
    lastRun.fileTime = 77;
    lastRun.options.flags[1] = true;
    lastRun.options.counts[1] = 9;
    lastRun.reader.baseName = "a";
    run();
    ASSERT_EQ(dialogs.imports.size(), 1U);
    const ImportDialogState& shown = dialogs.imports[0];
    EXPECT_EQ(shown.filePath, "x/a.sim");
    EXPECT_EQ(shown.siteName, "工区");
    EXPECT_EQ(shown.pointLayer, "P");
    EXPECT_EQ(shown.ipLayer, "IP");
    EXPECT_EQ(shown.lotLayer, "L");
    EXPECT_EQ(shown.wideStakeLayer, "W");
    EXPECT_EQ(shown.continuousLayer, "C");
    EXPECT_EQ(shown.shiftDistance, 0.5);
    EXPECT_EQ(shown.fileTime, 77);
    EXPECT_TRUE(shown.options.flags[1]);
    EXPECT_EQ(shown.options.counts[1], 9);
    EXPECT_EQ(shown.reader.baseName, "a");
    EXPECT_FALSE(shown.mustChooseAlignment);
    EXPECT_EQ(shown.layerNames, std::vector<std::string>{"0"});
}

TEST_F(ImportCommand, FirstRunStartsWithTheStartValues) {
    run();
    const ImportDialogState& shown = dialogs.imports.at(0);
    EXPECT_EQ(shown.filePath, "");
    EXPECT_EQ(shown.siteName, "");
    for (const std::string* layer :
         {&shown.pointLayer, &shown.ipLayer, &shown.lotLayer, &shown.wideStakeLayer, &shown.continuousLayer}) {
        EXPECT_EQ(*layer, "0");
    }
    EXPECT_EQ(shown.shiftDistance, 0.0001);
    EXPECT_EQ(shown.fileTime, 0);
    EXPECT_FALSE(shown.options.anySelected());
}

TEST_F(ImportCommand, CancellingTheDialogKeepsEveryValueFromBefore) {
    lastRun.filePath = "before.sim";
    lastRun.lotLayer = "L";
    lastRun.options.flags[0] = true;
    dialogs.import = [](ImportDialogState& state) {
        state.filePath = "after.sim";
        state.lotLayer = "M";
        state.options.flags[0] = false;
        state.reader.baseName = "after";
        return false;
    };
    run();
    EXPECT_EQ(lastRun.filePath, "before.sim");
    EXPECT_EQ(lastRun.lotLayer, "L");
    EXPECT_TRUE(lastRun.options.flags[0]);
    EXPECT_EQ(lastRun.reader.baseName, "");
    EXPECT_TRUE(dialogs.results.empty());
}

TEST_F(ImportCommand, AcceptingKeepsTheValuesForTheNextRun) {
    const std::string path = file(kPoints);
    acceptNextWith(path, [](ImportDialogState& state) {
        state.pointLayer = "測点";
        state.shiftDistance = 0.25;
        state.siteName = "サイト";
    });
    run();
    EXPECT_EQ(lastRun.filePath, path);
    EXPECT_EQ(lastRun.pointLayer, "測点");
    EXPECT_EQ(lastRun.siteName, "サイト");
    EXPECT_EQ(lastRun.shiftDistance, 0.25);
    EXPECT_NE(lastRun.fileTime, 0);
    EXPECT_TRUE(lastRun.options.flag(ImportKind::Coordinates));
    EXPECT_EQ(lastRun.options.counts[0], 2);
}

TEST_F(ImportCommand, KeptReaderIsThatOfThePreview) {
    acceptNextWith(file(std::string(kPoints) + kRoute));
    run();
    EXPECT_EQ(lastRun.reader.baseName, "a");
    EXPECT_EQ(lastRun.reader.points.size(), 2U);
    EXPECT_TRUE(lastRun.reader.log.lines().empty()) << "the preview logs nothing, the full pass is another reader's";
    EXPECT_EQ(lastRun.reader.coordinatePointsCreated, 0);
}

TEST_F(ImportCommand, AcceptingAnotherFileReplacesTheKeptReader) {
    acceptNextWith(file(kPoints));
    run();
    acceptNextWith(file("A00,\r\nA01,9,X,1,2,,\r\nA99,\r\n", "b.sim"));
    run();
    EXPECT_EQ(lastRun.reader.baseName, "b");
    EXPECT_EQ(lastRun.reader.points.size(), 1U);
    run();
    EXPECT_EQ(dialogs.imports.back().reader.baseName, "b");
}

TEST_F(ImportCommand, ImportCreatesWhatIsTicked) {
    acceptNextWith(file(std::string(kPoints) + kRoute), [](ImportDialogState& state) {
        state.options.flags[0] = true;
        state.options.flags[6] = false;
    });
    run();
    EXPECT_EQ(host.drawing.pointCount(), 2U);
    EXPECT_TRUE(host.civil.alignments.empty());
    ASSERT_EQ(dialogs.results.size(), 1U);
    EXPECT_EQ(dialogs.results[0].coordinatePoints, 2);
    EXPECT_EQ(dialogs.results[0].alignments, 0);
}

TEST_F(ImportCommand, LayersAndShiftReachTheReader) {
    acceptNextWith(file(kPoints), [](ImportDialogState& state) {
        state.pointLayer = "P";
        state.ipLayer = "IP";
        state.lotLayer = "L";
        state.wideStakeLayer = "W";
        state.continuousLayer = "C";
        state.shiftDistance = 0.5;
        state.siteName = "S";
    });
    run();
    EXPECT_EQ(reader.pointLayer, "P");
    EXPECT_EQ(reader.ipLayer, "IP");
    EXPECT_EQ(reader.lotLayer, "L");
    EXPECT_EQ(reader.wideStakeLayer, "W");
    EXPECT_EQ(reader.continuousLayer, "C");
    EXPECT_EQ(reader.shiftDistance, 0.5);
    EXPECT_EQ(reader.siteName, "S");
    EXPECT_EQ(host.drawing.point(0).layer, "P");
}

TEST_F(ImportCommand, NoSelectionIsShownWhenEveryResultHasItsRoute) {
    acceptNextWith(file(std::string(kPoints) + kRoute + kLongitudinal + kCrossSection));
    run();
    EXPECT_TRUE(dialogs.offered.empty());
    EXPECT_EQ(dialogs.results.at(0).longitudinalPoints, 1);
    EXPECT_EQ(dialogs.results.at(0).crossSectionPoints, 2);
}

TEST_F(ImportCommand, LongitudinalResultWithoutItsRouteAsksForAnAlignment) {
    addAlignment("既設");
    acceptNextWith(file(std::string(kPoints) + kLongitudinal));
    dialogs.selections = {"既設"};
    run();
    ASSERT_EQ(dialogs.offered.size(), 1U);
    EXPECT_EQ(dialogs.offered[0].size(), 1U);
    EXPECT_EQ(reader.alignmentName, "既設");
    EXPECT_FALSE(reader.forceChosenAlignment);
    EXPECT_EQ(dialogs.results.at(0).longitudinalPoints, 1);
}

TEST_F(ImportCommand, RouteThatStandsBehindItsResultIsNotFound) {
    acceptNextWith(file(std::string(kPoints) + kLongitudinal + kRoute));
    run();
    EXPECT_EQ(dialogs.offered.size(), 1U);
}

TEST_F(ImportCommand, CrossSectionWithoutItsRouteAsksForAnAlignment) {
    addAlignment("既設");
    acceptNextWith(file(std::string(kPoints) + kCrossSection));
    dialogs.selections = {"既設"};
    run();
    EXPECT_EQ(dialogs.offered.size(), 1U);
    EXPECT_EQ(dialogs.results.at(0).crossSectionPoints, 2);
}

TEST_F(ImportCommand, BothResultsWithoutTheirRoutesAskOnce) {
    acceptNextWith(file(std::string(kPoints) + kLongitudinal + kCrossSection));
    run();
    EXPECT_EQ(dialogs.offered.size(), 1U);
}

TEST_F(ImportCommand, UntickedResultsAskForNothing) {
    acceptNextWith(file(std::string(kPoints) + kLongitudinal + kCrossSection), [](ImportDialogState& state) {
        state.options.flags[2] = false;
        state.options.flags[3] = false;
    });
    run();
    EXPECT_TRUE(dialogs.offered.empty());
}

TEST_F(ImportCommand, CancelledSelectionImportsWithoutAnAlignmentAndTheResultsFail) {
    addAlignment("既設");
    acceptNextWith(file(std::string(kPoints) + kLongitudinal));
    run();
    ASSERT_EQ(dialogs.results.size(), 1U);
    EXPECT_TRUE(reader.alignmentId.isNull());
    EXPECT_EQ(reader.alignmentName, "");
    EXPECT_EQ(dialogs.results[0].longitudinalPoints, 0);
    EXPECT_EQ(dialogs.results[0].errorCount, 1);
    EXPECT_EQ(dialogs.results[0].coordinatePoints, 2);
}

TEST_F(ImportCommand, SelectionForcesTheAlignmentWhenTheDialogSaysSo) {
    addAlignment("既設");
    // The route is there but unticked, so its alignment will not be made.
    acceptNextWith(file(std::string(kPoints) + kRoute + kLongitudinal), [](ImportDialogState& state) {
        state.options.flags[6] = false;
        state.mustChooseAlignment = mustChooseAlignment(state.reader, state.options, false);
    });
    dialogs.selections = {"既設"};
    run();
    EXPECT_EQ(dialogs.offered.size(), 1U);
    EXPECT_TRUE(reader.forceChosenAlignment);
    EXPECT_EQ(dialogs.results.at(0).longitudinalPoints, 1);
}

TEST_F(ImportCommand, CancelledForcedSelectionLeavesTheForceOff) {
    addAlignment("既設");
    acceptNextWith(file(std::string(kPoints) + kRoute + kLongitudinal), [](ImportDialogState& state) {
        state.options.flags[6] = false;
        state.mustChooseAlignment = true;
    });
    run();
    EXPECT_EQ(dialogs.offered.size(), 1U);
    EXPECT_FALSE(reader.forceChosenAlignment);
    EXPECT_TRUE(reader.alignmentId.isNull());
}

TEST_F(ImportCommand, TwoSelectionsInOneRunAndTheSecondReplacesTheFirst) {
    addAlignment("第一");
    addAlignment("第二");
    acceptNextWith(file(std::string(kPoints) + kLongitudinal),
                   [](ImportDialogState& state) { state.mustChooseAlignment = true; });
    dialogs.selections = {"第一", "第二"};
    run();
    EXPECT_EQ(dialogs.offered.size(), 2U);
    EXPECT_EQ(reader.alignmentName, "第二");
    EXPECT_EQ(reader.alignmentId, host.civil.alignments[1].id);
    EXPECT_TRUE(reader.forceChosenAlignment);
}

TEST_F(ImportCommand, EachSelectionIsFramedByAConnectionOfItsOwn) {
    acceptNextWith(file(kLongitudinal), [](ImportDialogState& state) {
        state.mustChooseAlignment = true;
        state.options.flags[2] = false;
    });
    run();
    EXPECT_EQ(host.calls.text(), "connect listSites createSite listSites disconnect listLayers "
                                 "connect collectAlignments disconnect");
}

TEST_F(ImportCommand, CancelOfTheSecondSelectionKeepsTheFirst) {
    addAlignment("第一");
    acceptNextWith(file(std::string(kPoints) + kLongitudinal),
                   [](ImportDialogState& state) { state.mustChooseAlignment = true; });
    dialogs.selections = {"第一", std::nullopt};
    run();
    EXPECT_EQ(dialogs.offered.size(), 2U);
    EXPECT_EQ(reader.alignmentName, "第一");
    EXPECT_FALSE(reader.forceChosenAlignment);
}

TEST_F(ImportCommand, SelectionOffersWhatWasCollectedAlsoWhenCollectingBreaksOff) {
    addAlignment("第一");
    addAlignment("第二");
    host.civil.failAlignments = true;
    acceptNextWith(file(std::string(kPoints) + kLongitudinal));
    run();
    ASSERT_EQ(dialogs.offered.size(), 1U);
    EXPECT_EQ(dialogs.offered[0].size(), 1U);
}

TEST_F(ImportCommand, LogStandsBesideTheFileWithTheResultBehindIt) {
    acceptNextWith(file(kPoints));
    run();
    std::string expected;
    sima::encodeCp932(expected, "----- Brindlow　Version1.0 -----\r\n\r\n"
                                "00001 A00 座標データの読み込み開始\r\n"
                                "00004     読み込み終了\r\n"
                                "エラー無し\r\n"
                                "座標データから2個のポイントを作成\r\n");
    EXPECT_EQ(test::readFile(folder.at("a_Input.log")), expected);
}

TEST_F(ImportCommand, LogStandsWhereTheSettingsPutItOrNowhere) {
    const std::string named = folder.at("elsewhere.txt");
    for (const std::string& log : {named, std::string()}) {
        acceptNextWith(file(kPoints));
        dialogs.appendResult = false;
        Fenmark(host, dialogs, lastRun, reader, {.logFile = log});
        EXPECT_FALSE(test::fileExists(folder.at("a_Input.log"))) << log;
        EXPECT_EQ(test::fileExists(named), !log.empty()) << log;
        std::filesystem::remove(named);
    }
}

TEST_F(ImportCommand, SecondRunReplacesTheLog) {
    const std::string path = file(kPoints);
    acceptNextWith(path);
    run();
    const std::string first = test::readFile(folder.at("a_Input.log"));
    run();
    EXPECT_EQ(test::readFile(folder.at("a_Input.log")), first);
}

TEST_F(ImportCommand, FileThatCannotBeOpenedLeavesALogOfItsBannerAndAResultOfZeros) {
    const std::string path = folder.at("gone.sim");
    dialogs.import = [path](ImportDialogState& state) {
        state.filePath = path;
        return true;
    };
    dialogs.appendResult = false;
    run();
    std::string banner;
    sima::encodeCp932(banner, "----- Brindlow　Version1.0 -----\r\n\r\n");
    EXPECT_EQ(test::readFile(folder.at("gone_Input.log")), banner);
    ASSERT_EQ(dialogs.results.size(), 1U);
    EXPECT_EQ(resultLines(dialogs.results[0]), std::vector<std::string>{"エラー無し"});
}

TEST_F(ImportCommand, LogThatCannotBeWrittenRaises) {
    const std::string path = file(kPoints);
    std::filesystem::create_directory(folder.at("a_Input.log"));
    acceptNextWith(path);
    EXPECT_THROW(run(), std::system_error);
    EXPECT_TRUE(dialogs.results.empty());
}

TEST_F(ImportCommand, ExceptionOfTheReadLeavesTheCommandAndNoLogIsWritten) {
    const std::string path =
        file(std::string(kPoints) + "F00,1,1,CL,3,\r\nB01,1,BP,\r\nC01,0,\r\nC01\r\nB01,2,EP,\r\nF99,\r\n");
    acceptNextWith(path);
    EXPECT_THROW(run(), std::invalid_argument);
    EXPECT_EQ(reader.lineNumber, 8);
    EXPECT_FALSE(test::fileExists(folder.at("a_Input.log")));
    EXPECT_TRUE(dialogs.results.empty());
    EXPECT_EQ(lastRun.filePath, path) << "the accepted values are kept before the read";
}

TEST_F(ImportCommand, LotsAreTheLotsReadAndOnlyWithTheirFlag) {
    const std::string lots =
        std::string(kPoints) + "D00,1,甲,1,\r\nB01,1,,\r\nB01,2,,\r\nD99,\r\nD00,2,空,1,\r\nD99,\r\n";
    acceptNextWith(file(lots));
    run();
    EXPECT_EQ(dialogs.results.at(0).lots, 2) << "a lot without points is read, though nothing is drawn";
    EXPECT_EQ(host.drawing.polylineCount(), 1U);
    acceptNextWith(file(lots), [](ImportDialogState& state) { state.options.flags[1] = false; });
    run();
    EXPECT_EQ(dialogs.results.at(1).lots, 0);
}

TEST_F(ImportCommand, ResultTellsRoutesByTypeAndAlignmentsByName) {
    acceptNextWith(file(std::string(kPoints) + kRoute + "F00,2,1,IP,1,\r\nB01,1,,\r\nB01,2,,\r\nF99,\r\n" +
                        "F00,3,1,DL,7,\r\nB01,1,,\r\nB01,2,,\r\nF99,\r\n"));
    run();
    const ImportResult& result = dialogs.results.at(0);
    EXPECT_EQ(result.alignments, 2);
    EXPECT_EQ(result.alignmentNames, (std::vector<std::string>{"CL", "DL"}));
    EXPECT_EQ(result.polylines, 1);
    EXPECT_EQ(result.routesCreated, (std::array<std::int32_t, 7>{1, 0, 1, 0, 0, 0, 1}));
    EXPECT_EQ(result.filePath, folder.at("a.sim"));
}

TEST_F(ImportCommand, SecondRunBeginsWithAFreshReader) {
    addAlignment("既設");
    acceptNextWith(file(std::string(kPoints) + kLongitudinal));
    dialogs.selections = {"既設"};
    run();
    EXPECT_EQ(reader.alignmentName, "既設");
    run(); // the selection is cancelled this time
    EXPECT_EQ(reader.alignmentName, "");
    EXPECT_TRUE(reader.alignmentId.isNull());
    EXPECT_EQ(dialogs.results.at(1).errorCount, 1);
}

TEST_F(ImportCommand, Utf8FilesAreReadWhenAsked) {
    acceptNextWith(file("A00,\nA01,1,点,1,2,,\nA99,\n"));
    Fenmark(host, dialogs, lastRun, reader, {sima::Encoding::Utf8});
    ASSERT_EQ(reader.points.size(), 1U);
    EXPECT_EQ(reader.points[0].name, "点");
}

} // namespace
} // namespace fenmark::command
