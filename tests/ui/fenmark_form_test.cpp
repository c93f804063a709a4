// The import dialog: scanning, ticking, choosing files, what it hands back.
#include "dialog_test_support.h"
#include "ui/dialogs/progress_wnd.h"
#include "ui/dialogs/sim_file_dialog.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <functional>

namespace fenmark::ui::test {
namespace {

using treelist::CTreeListCtrl;
using treelist::CTreeListItem;

constexpr std::size_t kLongitudinal = 2;
constexpr std::size_t kCurves = 10;

const std::string kLongitudinalOnCurves = "A00,\nA01,1,P,0,0,,\nA01,2,Q,0,100,,\nA99,\n"
                                          "F00,1,1,R,7,\nB01,1,,\nB01,2,,\nF99,\n"
                                          "H00,1,R,\nH01,No.0,0.0,1.0,1.1,1,\nH99,\n";

struct ImportForm : ::testing::Test {
    Files files;
    Answers answers;

    command::ImportDialogState state(const std::string& path = {}) const {
        command::ImportDialogState state;
        state.filePath = path;
        state.siteNames = {"b", "サイト", "a"};
        state.layerNames = {"0"};
        return state;
    }
    static CTreeListItem* row(FenmarkForm& form, int number) {
        auto* tree = control<CTreeListCtrl>(form, 208);
        CTreeListItem* item = tree->GetChildItem(tree->GetChildItem(treelist::TLI_ROOT));
        for (int i = 0; i < number; ++i) {
            item = tree->GetNextSiblingItem(item);
        }
        return item;
    }
    static CTreeListItem* root(FenmarkForm& form) {
        return control<CTreeListCtrl>(form, 208)->GetChildItem(treelist::TLI_ROOT);
    }
    static QString text(FenmarkForm& form, int number) {
        return control<CTreeListCtrl>(form, 208)->GetItemText(row(form, number), 0);
    }
    static int check(FenmarkForm& form, int number) {
        return control<CTreeListCtrl>(form, 208)->GetCheck(row(form, number));
    }
    static void tick(FenmarkForm& form, CTreeListItem* item) { control<CTreeListCtrl>(form, 208)->SetItemCheck(item); }
    static QPushButton* importButton(FenmarkForm& form) { return control<QPushButton>(form, 1); }
};

TEST_F(ImportForm, WithoutAFileAllRowsAreBareAndTheButtonIsDisabled) {
    FenmarkForm form(nullptr, state(), answers.services());
    EXPECT_FALSE(importButton(form)->isEnabled());
    EXPECT_EQ(text(form, 0), QStringLiteral("座標データ "));
    EXPECT_EQ(text(form, 7), QStringLiteral("路線成果-連続線(直線のみ)　"));
    EXPECT_EQ(text(form, 9), QStringLiteral("縦断成果データ "));
    EXPECT_EQ(check(form, 0), 0);
    EXPECT_EQ(row(form, 0)->state & treelist::kItemCheckBox, 0U);
    EXPECT_TRUE(answers.warnings.empty());
}

TEST_F(ImportForm, AFileOfPointsCountsThemAndEnablesTheButton) {
    FenmarkForm form(nullptr, state(files.write("a.sim", kPointsOnly)), answers.services());
    EXPECT_EQ(text(form, 0), QStringLiteral("座標データ  [2]"));
    EXPECT_EQ(check(form, 0), 1);
    EXPECT_EQ(text(form, 1), QStringLiteral("画地データ "));
    EXPECT_TRUE(importButton(form)->isEnabled());
}

TEST_F(ImportForm, UntickingTheLastRowDisablesTheButton) {
    FenmarkForm form(nullptr, state(files.write("a.sim", kPointsOnly)), answers.services());
    tick(form, row(form, 0));
    EXPECT_FALSE(importButton(form)->isEnabled());
    EXPECT_FALSE(form.state().options.flags[0]);
    tick(form, row(form, 0));
    EXPECT_TRUE(importButton(form)->isEnabled());
    EXPECT_TRUE(form.state().options.flags[0]);
}

TEST_F(ImportForm, TheRootTicksAndUnticksAllRowsWithData) {
    FenmarkForm form(nullptr, state(files.write("a.sim", kLongitudinalOnCurves)), answers.services());
    tick(form, root(form));
    EXPECT_EQ(check(form, 0), 0);
    EXPECT_EQ(check(form, 8), 0);
    EXPECT_FALSE(importButton(form)->isEnabled());
    tick(form, root(form));
    EXPECT_TRUE(form.state().options.flags[0]);
    EXPECT_TRUE(form.state().options.flags[kCurves]);
    EXPECT_FALSE(form.state().options.flags[1]) << "a row without data is never ticked";
}

TEST_F(ImportForm, AClickOnTheCheckBoxUnticksItsRow) {
    FenmarkForm form(nullptr, state(files.write("a.sim", kPointsOnly)), answers.services());
    form.show();
    auto* tree = control<CTreeListCtrl>(form, 208);
    const QRect place = tree->GetItemRect(row(form, 0));
    ASSERT_FALSE(place.isEmpty());
    QPoint box;
    for (int x = place.left(); x < place.right() && box.isNull(); ++x) {
        int flags = 0;
        if (tree->HitTest({x, place.center().y()}, &flags) != nullptr && flags == treelist::kHitCheck) {
            box = {x + 4, place.center().y()};
        }
    }
    ASSERT_FALSE(box.isNull());
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, box);
    EXPECT_EQ(check(form, 0), 0);
    EXPECT_FALSE(importButton(form)->isEnabled());
}

TEST_F(ImportForm, ResultsOfARouteTypeThatIsUntickedNeedAnAlignment) {
    FenmarkForm form(nullptr, state(files.write("a.sim", kLongitudinalOnCurves)), answers.services());
    EXPECT_EQ(text(form, 8), QStringLiteral("路線成果-連続線(曲線含み)  [1]"));
    tick(form, row(form, 8));
    EXPECT_TRUE(form.state().options.flags[kLongitudinal]);
    form.accept();
    EXPECT_EQ(form.result(), QDialog::Accepted);
    EXPECT_TRUE(form.state().mustChooseAlignment);
}

TEST_F(ImportForm, ResultsOfATickedRouteNeedNoAlignment) {
    FenmarkForm form(nullptr, state(files.write("a.sim", kLongitudinalOnCurves)), answers.services());
    form.accept();
    EXPECT_FALSE(form.state().mustChooseAlignment);
}

TEST_F(ImportForm, FileNamesPassInBothCasesAndNothingElseDoes) {
    EXPECT_TRUE(command::isSimFile(files.write("a.sim", "")));
    EXPECT_TRUE(command::isSimFile(files.write("A.SIM", "")));
    EXPECT_FALSE(command::isSimFile(files.write("a.sima", "")));
    EXPECT_FALSE(command::isSimFile("/no/such/file.sim"));
}

TEST_F(ImportForm, ARejectedFileStaysStoredUntilAValidOneIsChosen) {
    FenmarkForm form(nullptr, state(files.write("good.sim", kPointsOnly)), answers.services());
    const std::string bad = files.write("bad.txt", "");
    answers.chosen = QString::fromStdString(bad);
    form.browse();
    ASSERT_EQ(answers.warnings.size(), 1U);
    EXPECT_EQ(answers.warnings[0].text, QStringLiteral("Please browse for Valid SIM File."));
    EXPECT_EQ(answers.warnings[0].caption, QStringLiteral("Invalid SIM File!"));
    EXPECT_EQ(form.state().filePath, bad);
    EXPECT_TRUE(control<QLineEdit>(form, 210)->text().endsWith(QStringLiteral("good.sim")));
    EXPECT_EQ(text(form, 0), QStringLiteral("座標データ  [2]"));
    form.accept();
    EXPECT_EQ(answers.warnings.size(), 2U);
    EXPECT_NE(form.result(), QDialog::Accepted);
    answers.chosen = QString::fromStdString(files.write("next.sim", kPointsOnly));
    form.browse();
    form.accept();
    EXPECT_EQ(form.result(), QDialog::Accepted);
}

TEST_F(ImportForm, ACancelledBrowseChangesNothing) {
    const std::string path = files.write("a.sim", kPointsOnly);
    FenmarkForm form(nullptr, state(path), answers.services());
    form.browse();
    EXPECT_EQ(form.state().filePath, path);
}

TEST_F(ImportForm, AnotherFileStartsWithAFreshOptionsRecord) {
    FenmarkForm form(nullptr, state(files.write("a.sim", kLongitudinalOnCurves)), answers.services());
    answers.chosen = QString::fromStdString(files.write("b.sim", kPointsOnly));
    form.browse();
    EXPECT_EQ(form.state().options.counts[kLongitudinal], 0);
    EXPECT_FALSE(form.state().options.flags[kLongitudinal]);
    EXPECT_TRUE(form.state().options.flags[0]);
    EXPECT_EQ(form.focusWidget(), control<QPushButton>(form, 1)) << "Enter imports what was chosen";
}

TEST_F(ImportForm, AnUnchangedFileIsNotScannedAgain) {
    struct Counter : sima::ProgressFactory {
        int made = 0;
        std::unique_ptr<sima::Progress> create(std::string_view, bool) override {
            ++made;
            return nullptr;
        }
    } counter;
    FenmarkFormServices services = answers.services();
    services.progress = &counter;
    FenmarkForm first(nullptr, state(files.write("a.sim", kPointsOnly)), services);
    first.accept();
    EXPECT_EQ(counter.made, 1);
    FenmarkForm second(nullptr, first.takeState(), services);
    EXPECT_EQ(counter.made, 1);
    EXPECT_EQ(text(second, 0), QStringLiteral("座標データ  [2]"));
}

TEST_F(ImportForm, AFileThatIsGoneClearsTheEditAndKeepsThePath) {
    FenmarkForm form(nullptr, state("/no/such/file.sim"), answers.services());
    EXPECT_TRUE(control<QLineEdit>(form, 210)->text().isEmpty());
    EXPECT_EQ(form.state().filePath, "/no/such/file.sim");
    EXPECT_FALSE(importButton(form)->isEnabled());
}

TEST_F(ImportForm, TheStoredSiteIsSelectedOrElseTheFirstOfTheSortedList) {
    command::ImportDialogState known = state(files.write("a.sim", kPointsOnly));
    known.siteName = "サイト";
    FenmarkForm form(nullptr, known, answers.services());
    EXPECT_EQ(control<QComboBox>(form, 207)->currentText(), QStringLiteral("サイト"));
    FenmarkForm other(nullptr, state(), answers.services());
    EXPECT_EQ(control<QComboBox>(other, 207)->currentText(), QStringLiteral("a"));
}

TEST_F(ImportForm, TheLogButtonIsNeverShownAndItsLogIsEmptyOfErrors) {
    const std::string path = files.write("a.sim", "A00,\nQ01,bad,\nA99,\n");
    FenmarkForm form(nullptr, state(path), answers.services());
    form.show();
    EXPECT_FALSE(control<QPushButton>(form, 212)->isVisible());
    EXPECT_FALSE(control<QPushButton>(form, 212)->isEnabled());
    form.showLog();
    ASSERT_EQ(answers.opened.size(), 1U);
    EXPECT_EQ(Files::read(answers.opened[0].toStdString()), "");
}

TEST_F(ImportForm, CloseLeavesWithoutResult) {
    FenmarkForm form(nullptr, state(files.write("a.sim", kPointsOnly)), answers.services());
    form.show();
    QTest::mouseClick(control<QPushButton>(form, 2), Qt::LeftButton);
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(form.result(), QDialog::Rejected);
}

TEST_F(ImportForm, AFileWithoutRecordsShowsBareRowsWithoutBoxesAndADisabledButton) {
    FenmarkForm form(nullptr, state(files.write("a.sim", "nothing that is known\r\n,,,\r\n")), answers.services());
    for (int i = 0; i < 11; ++i) {
        EXPECT_EQ(row(form, i)->state & treelist::kItemCheckBox, 0U) << i;
        EXPECT_EQ(check(form, i), 0) << i;
        EXPECT_FALSE(text(form, i).contains(QLatin1Char('['))) << i;
    }
    EXPECT_FALSE(importButton(form)->isEnabled());
}

TEST_F(ImportForm, TheTickedRowsAreNotRememberedWhenTheDialogOpensAgain) {
    FenmarkForm first(nullptr, state(files.write("a.sim", kLongitudinalOnCurves)), answers.services());
    tick(first, row(first, 0));
    first.accept();
    EXPECT_FALSE(first.state().options.flags[0]);
    FenmarkForm second(nullptr, first.takeState(), answers.services());
    EXPECT_EQ(check(second, 0), 1);
    second.accept();
    EXPECT_TRUE(second.state().options.flags[0]);
}

TEST_F(ImportForm, AChangedFileIsScannedAgainAndAnAcceptedOneKeepsItsTime) {
    const std::string path = files.write("a.sim", kPointsOnly);
    FenmarkForm first(nullptr, state(path), answers.services());
    first.accept();
    const command::ImportDialogState kept = first.takeState();
    EXPECT_EQ(kept.fileTime, command::modificationTime(path));
    files.write("a.sim", "A00,\r\nA01,1,P1,100.0,200.0,,\r\nA99,\r\n");
    std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now() + std::chrono::hours(1));
    FenmarkForm second(nullptr, kept, answers.services());
    EXPECT_EQ(text(second, 0), QStringLiteral("座標データ  [1]"));
    EXPECT_EQ(second.state().fileTime, kept.fileTime) << "taken when the dialog is accepted, not before";
}

TEST_F(ImportForm, AFileChosenThatCannotBeReadShowsItsPathAndNothingToImport) {
    const std::string path = files.write("folder.sim/inside.txt", "");
    std::filesystem::create_directory(std::filesystem::path(path).parent_path());
    FenmarkForm form(nullptr, state(files.write("a.sim", kPointsOnly)), answers.services());
    answers.chosen = QString::fromStdString(std::filesystem::path(path).parent_path().string());
    form.browse();
    EXPECT_TRUE(answers.warnings.empty()) << "it can be accessed, and is named as it must";
    EXPECT_EQ(control<QLineEdit>(form, 210)->text(), *answers.chosen);
    EXPECT_EQ(text(form, 0), QStringLiteral("座標データ "));
    EXPECT_FALSE(importButton(form)->isEnabled());
}

TEST_F(ImportForm, TheButtonOpensTheSettingsAndTakesThemBack) {
    command::ImportDialogState before = state(files.write("a.sim", kPointsOnly));
    before.layerNames = {"0", "測点"};
    FenmarkForm form(nullptr, before, answers.services());
    QTimer::singleShot(0, [] {
        QWidget* settings = QApplication::activeModalWidget();
        ASSERT_NE(settings, nullptr);
        control<QComboBox>(*settings, 203)->setCurrentText(QStringLiteral("測点"));
        control<QLineEdit>(*settings, 204)->setText(QStringLiteral("0.5"));
        control<QPushButton>(*settings, 1)->click();
    });
    control<QPushButton>(form, 209)->click();
    EXPECT_EQ(form.state().continuousLayer, "測点");
    EXPECT_EQ(form.state().pointLayer, "0");
    EXPECT_EQ(form.state().shiftDistance, 0.5);
    EXPECT_TRUE(importButton(form)->isEnabled());
}

TEST_F(ImportForm, MustChooseAlignmentIsNeverHandedIn) {
    command::ImportDialogState before = state(files.write("a.sim", kPointsOnly));
    before.mustChooseAlignment = true;
    FenmarkForm form(nullptr, before, answers.services());
    form.accept();
    EXPECT_FALSE(form.state().mustChooseAlignment);
}

TEST_F(ImportForm, UntickedResultsNeedNoAlignment) {
    FenmarkForm form(nullptr, state(files.write("a.sim", kLongitudinalOnCurves)), answers.services());
    tick(form, row(form, 8));
    tick(form, row(form, 9));
    form.accept();
    EXPECT_FALSE(form.state().mustChooseAlignment);
}

TEST_F(ImportForm, AnEmptyListOfSitesGivesAnEmptyName) {
    command::ImportDialogState before = state(files.write("a.sim", kPointsOnly));
    before.siteNames.clear();
    before.siteName = "gone";
    FenmarkForm form(nullptr, before, answers.services());
    form.accept();
    EXPECT_EQ(form.state().siteName, "");
}

TEST_F(ImportForm, TheFormWaitsWhileAFileThatWasChosenIsRead) {
    struct Factory : sima::ProgressFactory {
        ProgressWindows windows{nullptr};
        std::function<void()> meanwhile;
        std::unique_ptr<sima::Progress> create(std::string_view title, bool smooth) override {
            auto made = windows.create(title, smooth);
            // A message that waits, and that the first pump dispatches.
            QMetaObject::invokeMethod(qApp, meanwhile, Qt::QueuedConnection);
            return made;
        }
    } factory;
    FenmarkFormServices services = answers.services();
    services.progress = &factory;
    FenmarkForm form(nullptr, state(), services);
    answers.chosen = QString::fromStdString(files.write("a.sim", kPointsOnly));
    bool looked = false;
    bool enabled = true;
    factory.meanwhile = [&] {
        looked = true;
        enabled = form.isEnabled();
        QTest::mouseClick(control<QPushButton>(form, 206), Qt::LeftButton);
        QTest::mouseClick(control<QPushButton>(form, 2), Qt::LeftButton);
    };
    QTimer::singleShot(0, [&] {
        control<QPushButton>(form, 206)->setFocus();
        form.browse();
        EXPECT_TRUE(looked);
        EXPECT_FALSE(enabled);
        EXPECT_TRUE(form.isEnabled());
        EXPECT_EQ(form.focusWidget(), control<QPushButton>(form, 1)) << "Enter imports";
        EXPECT_EQ(text(form, 0), QStringLiteral("座標データ  [2]"));
        form.accept();
    });
    EXPECT_EQ(form.exec(), QDialog::Accepted);
}

// The pattern of what can be chosen is the only one, and names without an extension get theirs.
TEST(SimFileDialog, AsksForAnExistingSimFileByItsTitleAndFilter) {
    QFileDialog dialog;
    prepareSimFileDialog(dialog, QStringLiteral(FENMARK_SOURCE_DIR "/examples/road.sim"));
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("SIMAファイルを選択"));
    ASSERT_EQ(dialog.nameFilters().size(), 1);
    EXPECT_TRUE(dialog.nameFilters().first().startsWith(QStringLiteral("(*.sim)")));
    EXPECT_TRUE(dialog.testOption(QFileDialog::HideNameFilterDetails));
    EXPECT_EQ(dialog.defaultSuffix(), QStringLiteral("sim"));
    EXPECT_EQ(dialog.fileMode(), QFileDialog::ExistingFile);
    EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptOpen);
    EXPECT_NE(dialog.minimumSize(), dialog.maximumSize()) << "resizable";
    EXPECT_EQ(dialog.directory().absolutePath(), QStringLiteral(FENMARK_SOURCE_DIR "/examples"));
}

// An exception of the preview leaves the dialog as any exception leaves the command.
TEST_F(ImportForm, AnExceptionOfThePreviewLeavesTheForm) {
    const std::string path = files.write("a.sim", "H00\nH01,a,0,0,0,1,\nH99,\n");
    EXPECT_THROW(FenmarkForm(nullptr, state(path), answers.services()), std::invalid_argument);
}

TEST_F(ImportForm, AnExceptionAfterAChoiceOfFileEndsTheFormAndIsKeptForTheCaller) {
    FenmarkForm form(nullptr, state(files.write("a.sim", kPointsOnly)), answers.services());
    form.show();
    answers.chosen = QString::fromStdString(files.write("b.sim", "I00\nI99,\n"));
    QTest::mouseClick(control<QPushButton>(form, 206), Qt::LeftButton);
    EXPECT_FALSE(form.isVisible());
    ASSERT_TRUE(form.failure());
    EXPECT_THROW(std::rethrow_exception(form.failure()), std::invalid_argument);
}

} // namespace
} // namespace fenmark::ui::test
