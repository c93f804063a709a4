// The whole command over a recording host, with the real dialogs and a user who answers them.
#include "command/import_command.h"
#include "dialog_test_support.h"
#include "dialog_user.h"
#include "host/recording/recording_host.h"
#include "support/recorded_alignment.h"
#include "ui/dialogs/h_scroll_list_box.h"
#include "ui/dialogs/ui_dialogs.h"

#include <QComboBox>
#include <QFileInfo>
#include <QLineEdit>
#include <QMainWindow>
#include <QMessageBox>
#include <QSettings>

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace fenmark::ui::test {
namespace {

using treelist::CTreeListCtrl;
using treelist::CTreeListItem;

const QString kImport = QStringLiteral("SIMAファイル読み込み");
const QString kSettings = QStringLiteral("SIMAファイル読み込み設定");
const QString kSelection = QStringLiteral("平面線形選択");
const QString kResult = QStringLiteral("SIMA読み込み結果");
const QString kInvalid = QStringLiteral("Invalid SIM File!");

constexpr int kOk = 1;
constexpr int kCancel = 2;
constexpr int kBrowse = 206;
constexpr int kSettingsButton = 209;
constexpr int kLogButton = 214;
constexpr int kCentreLineRow = 4;

const std::string kPoints = "A00,\r\nA01,1,BP,0.000,0.000,,\r\nA01,2,EP,0.000,100.000,,\r\nA99,\r\n";
const std::string kRoute = "F00,1,1,CL,3,\r\nB01,1,BP,\r\nB01,2,EP,\r\nF99,\r\n";
const std::string kOnRoute = "H00,1,CL,\r\nH01,No.1,20.0,5.5,6.0,1,\r\nH99,\r\n";
const std::string kOnNoRoute = "H00,2,XX,\r\nH01,No.2,40.0,5.5,6.0,1,\r\nH99,\r\n";

QString shownPath(QWidget& window) {
    return control<QLineEdit>(window, 210)->text();
}

void tickRow(QWidget& window, int number) {
    auto* tree = control<CTreeListCtrl>(window, 208);
    CTreeListItem* row = tree->GetChildItem(tree->GetChildItem(treelist::TLI_ROOT));
    for (int i = 0; i < number; ++i) {
        row = tree->GetNextSiblingItem(row);
    }
    tree->SetItemCheck(row);
}

QString rowText(QWidget& window, int number) {
    auto* tree = control<CTreeListCtrl>(window, 208);
    CTreeListItem* row = tree->GetChildItem(tree->GetChildItem(treelist::TLI_ROOT));
    for (int i = 0; i < number; ++i) {
        row = tree->GetNextSiblingItem(row);
    }
    return tree->GetItemText(row, 0);
}

struct CommandFlow : ::testing::Test {
    Files files;
    host::RecordingHost host;
    command::LastRun lastRun;
    sima::SimaReader reader;
    QMainWindow window;
    std::vector<QString> opened;
    UiDialogs dialogs{&window, [this](const QString& path) { opened.push_back(path); }};
    User user;

    void SetUp() override {
        QSettings().clear();
        window.show();
    }
    void TearDown() override {
        EXPECT_TRUE(window.isEnabled()) << "the main window is given back";
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    }
    void run() { command::Fenmark(host, dialogs, lastRun, reader); }

    void addAlignment(const std::string& name) { fenmark::test::addStraightAlignment(host, name); }
    User& chooseFile(const std::string& path) {
        return user.press(kImport, kBrowse).open(QString::fromStdString(path));
    }
    User& selectAlignment(const QString& name) {
        return user.then(kSelection, [name](QWidget& form) {
            control<QComboBox>(form, 215)->setCurrentText(name);
            User::click(form, kOk);
        });
    }
    static std::string logOf(const std::string& path) { return path.substr(0, path.size() - 4) + "_Input.log"; }
};

TEST_F(CommandFlow, AFileIsChosenImportedLoggedAndSummedUp) {
    const std::string path = files.write("a.sim", kPoints + kRoute);
    QStringList lines;
    chooseFile(path).press(kImport, kOk).then(kResult, [&](QWidget& form) {
        lines = control<CHScrollListBox>(form, 213)->lines();
        User::click(form, kOk);
    });
    run();
    EXPECT_EQ(host.civil.sites, std::vector<std::string>{"サイト"});
    EXPECT_EQ(host.drawing.pointCount(), 2U);
    ASSERT_EQ(host.civil.alignments.size(), 1U);
    EXPECT_EQ(host.civil.alignments[0].name, "CL");
    EXPECT_EQ(host.civil.alignments[0].site, "サイト");
    EXPECT_EQ(lines, (QStringList{QStringLiteral("エラー無し"), QStringLiteral("座標データから2個のポイントを作成"),
                                  QStringLiteral("平面線形【CL】を作成")}));
    EXPECT_FALSE(Files::read(logOf(path)).empty());
    EXPECT_EQ(lastRun.filePath, path);
    EXPECT_EQ(lastRun.siteName, "サイト");
}

TEST_F(CommandFlow, ClosingTheDialogLeavesTheSiteAndTheValuesFromBefore) {
    lastRun.lotLayer = "L";
    chooseFile(files.write("a.sim", kPoints)).press(kImport, kCancel);
    run();
    EXPECT_EQ(host.civil.sites, std::vector<std::string>{"サイト"});
    EXPECT_EQ(lastRun.filePath, "");
    EXPECT_EQ(lastRun.lotLayer, "L");
    EXPECT_FALSE(lastRun.options.anySelected());
    EXPECT_EQ(host.drawing.pointCount(), 0U);
}

TEST_F(CommandFlow, SitesThatCannotBeListedEndItWithoutADialog) {
    host.civil.failSites = true;
    run();
    EXPECT_EQ(host.drawing.pointCount(), 0U);
}

TEST_F(CommandFlow, AnUntickedKindIsNotCreated) {
    chooseFile(files.write("a.sim", kPoints + kRoute))
        .then(kImport,
              [](QWidget& form) {
                  tickRow(form, kCentreLineRow);
                  User::click(form, kOk);
              })
        .press(kResult, kOk);
    run();
    EXPECT_EQ(host.drawing.pointCount(), 2U);
    EXPECT_TRUE(host.civil.alignments.empty());
}

TEST_F(CommandFlow, LayersAndShiftOfTheSettingsReachTheDrawingAndTheNextRun) {
    host.drawing.layers = {"0", "測点"};
    const std::string path = files.write("a.sim", kPoints);
    chooseFile(path)
        .press(kImport, kSettingsButton)
        .then(kSettings,
              [](QWidget& form) {
                  control<QComboBox>(form, 205)->setCurrentText(QStringLiteral("測点"));
                  control<QLineEdit>(form, 204)->setText(QStringLiteral("0.25"));
                  User::click(form, kOk);
              })
        .press(kImport, kOk)
        .press(kResult, kOk);
    run();
    ASSERT_EQ(host.drawing.pointCount(), 2U);
    EXPECT_EQ(host.drawing.point(0).layer, "測点");
    EXPECT_EQ(lastRun.pointLayer, "測点");
    EXPECT_EQ(lastRun.ipLayer, "0");
    EXPECT_EQ(lastRun.shiftDistance, 0.25);

    user.press(kImport, kSettingsButton)
        .then(kSettings,
              [](QWidget& form) {
                  EXPECT_EQ(control<QComboBox>(form, 205)->currentText(), QStringLiteral("測点"));
                  EXPECT_EQ(control<QLineEdit>(form, 204)->text(), QStringLiteral("0.25"));
                  User::click(form, kCancel);
              })
        .press(kImport, kCancel);
    run();
}

TEST_F(CommandFlow, CancelledSettingsChangeNothing) {
    host.drawing.layers = {"0", "測点"};
    chooseFile(files.write("a.sim", kPoints))
        .press(kImport, kSettingsButton)
        .then(kSettings,
              [](QWidget& form) {
                  control<QComboBox>(form, 205)->setCurrentText(QStringLiteral("測点"));
                  User::click(form, kCancel);
              })
        .press(kImport, kOk)
        .press(kResult, kOk);
    run();
    EXPECT_EQ(host.drawing.point(0).layer, "0");
    EXPECT_EQ(lastRun.pointLayer, "0");
}

TEST_F(CommandFlow, AWrongFileIsRefusedUntilAValidOneIsChosen) {
    // Under the name that the dialog's filter lets through; the file goes before the import.
    const std::string bad = files.write("bad.sim", kPoints);
    const std::string good = files.write("GOOD.SIM", kPoints);
    const auto agree = [](QWidget& box) {
        auto& message = dynamic_cast<QMessageBox&>(box);
        EXPECT_EQ(message.text(), QStringLiteral("Please browse for Valid SIM File."));
        EXPECT_EQ(message.icon(), QMessageBox::Warning);
        message.button(QMessageBox::Ok)->click();
    };
    chooseFile(bad)
        .then(kImport,
              [&](QWidget& form) {
                  std::filesystem::remove(bad);
                  User::click(form, kOk);
              })
        .then(kInvalid, agree)
        .press(kImport, kBrowse)
        .open(QString::fromStdString(good))
        .press(kImport, kOk)
        .press(kResult, kOk);
    run();
    EXPECT_EQ(lastRun.filePath, good);
    EXPECT_EQ(host.drawing.pointCount(), 2U);
}

TEST_F(CommandFlow, ACancelledFileDialogChangesNothing) {
    user.press(kImport, kBrowse)
        .then(QStringLiteral("SIMAファイルを選択"),
              [](QWidget& dialog) { dynamic_cast<QFileDialog&>(dialog).reject(); })
        .then(kImport, [](QWidget& form) {
            EXPECT_TRUE(shownPath(form).isEmpty());
            User::click(form, kCancel);
        });
    run();
}

TEST_F(CommandFlow, AResultWithoutItsRouteGoesOnTheAlignmentThatIsSelected) {
    addAlignment("既設");
    chooseFile(files.write("a.sim", kPoints + kOnNoRoute)).press(kImport, kOk);
    selectAlignment(QStringLiteral("既設")).press(kResult, kOk);
    run();
    EXPECT_EQ(reader.alignmentId, host.civil.alignments[0].id);
    EXPECT_FALSE(reader.forceChosenAlignment);
    EXPECT_EQ(reader.longitudinalPointsCreated, 1);
}

TEST_F(CommandFlow, ACancelledSelectionImportsAllButTheResults) {
    addAlignment("既設");
    QStringList lines;
    chooseFile(files.write("a.sim", kPoints + kOnNoRoute))
        .press(kImport, kOk)
        .press(kSelection, kCancel)
        .then(kResult, [&](QWidget& form) {
            lines = control<CHScrollListBox>(form, 213)->lines();
            User::click(form, kLogButton);
            User::click(form, kOk);
        });
    run();
    EXPECT_TRUE(reader.alignmentId.isNull());
    EXPECT_EQ(lines.value(0), QStringLiteral("1個のエラー"));
    EXPECT_EQ(host.drawing.pointCount(), 2U);
    ASSERT_EQ(opened.size(), 1U);
    EXPECT_TRUE(opened[0].endsWith(QStringLiteral("a_Input.log")));
}

TEST_F(CommandFlow, WithoutAlignmentsTheSelectionCanOnlyBeCancelled) {
    chooseFile(files.write("a.sim", kPoints + kOnNoRoute))
        .press(kImport, kOk)
        .then(kSelection,
              [](QWidget& form) {
                  EXPECT_FALSE(control<QPushButton>(form, kOk)->isEnabled());
                  EXPECT_EQ(control<QComboBox>(form, 215)->count(), 1);
                  User::click(form, kCancel);
              })
        .press(kResult, kOk);
    run();
    EXPECT_EQ(reader.log.errorCount(), 1);
}

// One result has no route; the route of another one is not imported.
TEST_F(CommandFlow, TwoSelectionsAreShownOneAfterTheOtherAndTheSecondReplacesTheFirst) {
    addAlignment("第一");
    addAlignment("第二");
    chooseFile(files.write("a.sim", kPoints + kRoute + kOnRoute + kOnNoRoute)).then(kImport, [](QWidget& form) {
        tickRow(form, kCentreLineRow);
        User::click(form, kOk);
    });
    selectAlignment(QStringLiteral("第一"));
    selectAlignment(QStringLiteral("第二")).press(kResult, kOk);
    run();
    EXPECT_TRUE(reader.forceChosenAlignment);
    EXPECT_EQ(reader.alignmentId, host.civil.alignments[1].id);
    EXPECT_EQ(reader.longitudinalPointsCreated, 2);
    ASSERT_FALSE(host.civil.stationsAsked.empty());
    for (const host::RecordedStation& asked : host.civil.stationsAsked) {
        EXPECT_EQ(asked.alignment, host.civil.alignments[1].id);
    }
}

TEST_F(CommandFlow, ACancelOfTheSecondSelectionKeepsTheFirstWithoutForcingIt) {
    addAlignment("第一");
    chooseFile(files.write("a.sim", kPoints + kRoute + kOnRoute + kOnNoRoute)).then(kImport, [](QWidget& form) {
        tickRow(form, kCentreLineRow);
        User::click(form, kOk);
    });
    selectAlignment(QStringLiteral("第一")).press(kSelection, kCancel).press(kResult, kOk);
    run();
    EXPECT_FALSE(reader.forceChosenAlignment);
    EXPECT_EQ(reader.alignmentId, host.civil.alignments[0].id);
}

TEST_F(CommandFlow, TheNextRunOpensOnTheLastFileAcceptedWithoutReadingItAgain) {
    const std::string first = files.write("a.sim", kPoints);
    const std::string second = files.write("b.sim", kPoints + kRoute);
    chooseFile(first).press(kImport, kOk).press(kResult, kOk);
    run();
    chooseFile(second).press(kImport, kOk).press(kResult, kOk);
    run();
    QSettings().clear();
    user.then(kImport, [&](QWidget& form) {
        EXPECT_EQ(shownPath(form).toStdString(), second);
        EXPECT_EQ(rowText(form, kCentreLineRow), QStringLiteral("路線成果-中心線  [1]"));
        User::click(form, kCancel);
    });
    run();
    EXPECT_FALSE(QSettings().contains(QStringLiteral("Settings/X"))) << "a progress window was shown";
}

TEST_F(CommandFlow, AFileThatChangedSinceItsPreviewIsReadAgainAtTheNextOpening) {
    const std::string path = files.write("a.sim", kPoints);
    chooseFile(path).press(kImport, kOk).press(kResult, kOk);
    run();
    files.write("a.sim", kPoints + kRoute);
    std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now() + std::chrono::hours(1));
    user.then(kImport, [&](QWidget& form) {
        EXPECT_EQ(rowText(form, kCentreLineRow), QStringLiteral("路線成果-中心線  [1]"));
        User::click(form, kCancel);
    });
    run();
}

TEST_F(CommandFlow, AnExceptionOfThePreviewLeavesTheCommandFromTheOpeningAndFromTheBrowsing) {
    const std::string bad = files.write("bad.sim", "H00\nH01,a,0,0,0,1,\nH99,\n");
    chooseFile(bad);
    EXPECT_THROW(run(), std::invalid_argument);
    lastRun.filePath = bad;
    EXPECT_THROW(run(), std::invalid_argument);
    EXPECT_EQ(host.drawing.pointCount(), 0U);
}

TEST_F(CommandFlow, AnExceptionOfTheReadLeavesTheCommandWithoutResultAndLog) {
    const std::string path =
        files.write("a.sim", kPoints + "F00,1,1,CL,3,\r\nB01,1,BP,\r\nC01,0,\r\nC01\r\nB01,2,EP,\r\nF99,\r\n");
    chooseFile(path).press(kImport, kOk);
    EXPECT_THROW(run(), std::invalid_argument);
    EXPECT_EQ(lastRun.filePath, path);
    EXPECT_FALSE(std::filesystem::exists(logOf(path)));
}

TEST_F(CommandFlow, ALogThatCannotBeWrittenLeavesTheCommandBeforeTheResult) {
    const std::string path = files.write("a.sim", kPoints);
    std::filesystem::create_directory(logOf(path));
    chooseFile(path).press(kImport, kOk);
    EXPECT_THROW(run(), std::system_error);
    EXPECT_EQ(host.drawing.pointCount(), 2U);
}

TEST_F(CommandFlow, TicksStartAnewInEveryRun) {
    const std::string path = files.write("a.sim", kPoints + kRoute);
    chooseFile(path)
        .then(kImport,
              [](QWidget& form) {
                  tickRow(form, kCentreLineRow);
                  User::click(form, kOk);
              })
        .press(kResult, kOk);
    run();
    EXPECT_TRUE(host.civil.alignments.empty());
    user.press(kImport, kOk).press(kResult, kOk);
    run();
    EXPECT_EQ(host.civil.alignments.size(), 1U) << "the row of the route is ticked again";
    EXPECT_EQ(host.drawing.pointCount(), 4U);
}

TEST_F(CommandFlow, AWindowWithoutAParentDoesAsWell) {
    UiDialogs alone(nullptr);
    chooseFile(files.write("a.sim", kPoints)).press(kImport, kOk).press(kResult, kOk);
    command::Fenmark(host, alone, lastRun, reader);
    EXPECT_EQ(host.drawing.pointCount(), 2U);
}

} // namespace
} // namespace fenmark::ui::test
