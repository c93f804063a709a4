// The result dialog, its list, and the selection of an alignment.
#include "dialog_test_support.h"
#include "ui/dialogs/h_scroll_list_box.h"
#include "ui/dialogs/select_alignment_form.h"
#include "ui/dialogs/sima_result_form.h"

#include <QApplication>
#include <QFileInfo>
#include <QPushButton>
#include <QScrollBar>
#include <QStyle>
#include <QTest>

#include <gtest/gtest.h>

namespace fenmark::ui::test {
namespace {

const std::string kNoErrors =
    "\x83\x47\x83\x89\x81\x5B\x96\xB3\x82\xB5\r\n"; // the line for no errors, as the log has it

TEST(ResultForm, AnImportOfNothingShowsTheOneLineAndNoLogButton) {
    Files files;
    command::ImportResult result;
    result.filePath = files.write("a.sim", "");
    SimaResultForm form(nullptr, result);
    EXPECT_EQ(control<CHScrollListBox>(form, 213)->lines(), QStringList{QStringLiteral("エラー無し")});
    EXPECT_FALSE(control<QPushButton>(form, 214)->isEnabled());
    EXPECT_TRUE(control<QPushButton>(form, 1)->isDefault());
}

TEST(ResultForm, EachOpeningAppendsItsLinesToTheLog) {
    Files files;
    command::ImportResult result;
    result.filePath = files.write("a.sim", "");
    const std::string log = result.filePath.substr(0, result.filePath.size() - 4) + "_Input.log";
    { SimaResultForm form(nullptr, result); }
    EXPECT_EQ(Files::read(log), kNoErrors);
    { SimaResultForm form(nullptr, result); }
    EXPECT_EQ(Files::read(log), kNoErrors + kNoErrors);
}

TEST(ResultForm, ALogThatCannotBeWrittenIsPassedOver) {
    command::ImportResult result;
    result.filePath = "/proc/no/such/folder/a.sim";
    SimaResultForm form(nullptr, result);
    EXPECT_EQ(control<CHScrollListBox>(form, 213)->count(), 1);
}

TEST(ResultForm, ErrorsEnableTheButtonThatOpensTheLog) {
    Files files;
    command::ImportResult result;
    result.filePath = files.write("a.sim", "");
    result.errorCount = 3;
    std::vector<QString> opened;
    SimaResultForm form(nullptr, result, [&](const QString& path) { opened.push_back(path); });
    form.show();
    ASSERT_TRUE(control<QPushButton>(form, 214)->isEnabled());
    QTest::mouseClick(control<QPushButton>(form, 214), Qt::LeftButton);
    ASSERT_EQ(opened.size(), 1U);
    EXPECT_TRUE(opened[0].endsWith(QStringLiteral("a_Input.log")));
    EXPECT_TRUE(form.isVisible());
    QTest::mouseClick(control<QPushButton>(form, 1), Qt::LeftButton);
    EXPECT_FALSE(form.isVisible());
}

TEST(ResultForm, ListsTheAlignmentsInTheOrderOfTheirNames) {
    Files files;
    command::ImportResult result;
    result.filePath = files.write("a.sim", "");
    result.alignments = 2;
    result.alignmentNames = {"本線", "支線"};
    SimaResultForm form(nullptr, result);
    const QStringList lines = control<CHScrollListBox>(form, 213)->lines();
    ASSERT_EQ(lines.size(), 3);
    EXPECT_EQ(lines[1], QStringLiteral("平面線形【本線】を作成"));
    EXPECT_EQ(lines[2], QStringLiteral("平面線形【支線】を作成"));
}

TEST(ScrollListBox, WidensForALongLineAndShrinksWhenItIsDeleted) {
    CHScrollListBox list;
    list.resize(120, 200);
    list.show();
    list.addLine(QStringLiteral("short"));
    const int small = list.horizontalExtent();
    EXPECT_FALSE(list.horizontalScrollBar()->isVisible());
    list.addLine(QString(80, QLatin1Char('W')));
    EXPECT_GT(list.horizontalExtent(), small);
    EXPECT_TRUE(QTest::qWaitFor([&] { return list.horizontalScrollBar()->isVisible(); }, 60000));
    EXPECT_EQ(list.deleteLine(1), 1);
    EXPECT_EQ(list.horizontalExtent(), small);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !list.horizontalScrollBar()->isVisible(); }, 60000));
}

TEST(ScrollListBox, AnInsertThatFailsChangesNothing) {
    CHScrollListBox list;
    EXPECT_EQ(list.insertLine(3, QStringLiteral("text")), -1);
    EXPECT_EQ(list.count(), 0);
    EXPECT_EQ(list.horizontalExtent(), 0);
    EXPECT_EQ(list.deleteLine(0), -1);
}

TEST(ScrollListBox, ClearingSetsTheExtentToZero) {
    CHScrollListBox list;
    list.addLine(QStringLiteral("text"));
    EXPECT_EQ(list.horizontalExtent(), QFontMetrics(list.font()).horizontalAdvance(QStringLiteral("text")) + 3);
    list.resetContent();
    EXPECT_EQ(list.horizontalExtent(), 0);
    EXPECT_EQ(list.count(), 0);
}

TEST(ResultForm, WithoutAlignmentsCountedTheirNamesAreNotListed) {
    Files files;
    command::ImportResult result;
    result.filePath = files.write("a.sim", "");
    result.alignmentNames = {"本線"};
    SimaResultForm form(nullptr, result);
    EXPECT_EQ(control<CHScrollListBox>(form, 213)->lines(), QStringList{QStringLiteral("エラー無し")});
}

TEST(ResultForm, EveryCountHasItsLineInOrderAndRoutesThatBecameAlignmentsHaveNone) {
    Files files;
    command::ImportResult result;
    result.filePath = files.write("a.sim", "");
    result.errorCount = 2;
    result.coordinatePoints = 3;
    result.lots = 4;
    result.alignments = 1;
    result.alignmentNames = {"本線"};
    result.polylines = 99; // handed in, not shown
    result.routesCreated = {11, 12, 13, 14, 15, 16, 17};
    result.longitudinalPoints = 18;
    result.crossSectionPoints = 19;
    SimaResultForm form(nullptr, result);
    EXPECT_EQ(
        control<CHScrollListBox>(form, 213)->lines(),
        (QStringList{QStringLiteral("2個のエラー"), QStringLiteral("座標データから3個のポイントを作成"),
                     QStringLiteral("画地データから4個のポリラインを作成"), QStringLiteral("平面線形【本線】を作成"),
                     QStringLiteral("路線成果-IP線から11個のポリラインを作成"),
                     QStringLiteral("路線成果-幅杭線左から14個のポリラインを作成"),
                     QStringLiteral("路線成果-幅杭線右から15個のポリラインを作成"),
                     QStringLiteral("路線成果-連続線（直線のみ）から16個のポリラインを作成"),
                     QStringLiteral("縦断成果から18個のポイントを作成"),
                     QStringLiteral("横断成果から19個のポイントを作成")}));
}

TEST(ScrollListBox, ALineOfTheWidthOfTheExtentIsSeenWhole) {
    CHScrollListBox list;
    list.resize(400, 200);
    list.addLine(QStringLiteral("a line that is seen whole"));
    list.show();
    QApplication::processEvents();
    const int text = QFontMetrics(list.font()).horizontalAdvance(QStringLiteral("a line that is seen whole"));
    EXPECT_GE(list.visualItemRect(list.item(0)).width(),
              text + 2 * (list.style()->pixelMetric(QStyle::PM_FocusFrameHMargin) + 1));
}

TEST(ScrollListBox, TabsAreExpandedInAListThatExpandsThem) {
    CHScrollListBox list;
    list.setExpandsTabs(true);
    list.addLine(QStringLiteral("a\tb"));
    EXPECT_EQ(list.horizontalExtent(),
              QFontMetrics(list.font()).size(Qt::TextExpandTabs | Qt::TextSingleLine, QStringLiteral("a\tb")).width() +
                  2);
}

TEST(ScrollListBox, InsertingInTheMiddleWidensToo) {
    CHScrollListBox list;
    list.addLine(QStringLiteral("a"));
    list.addLine(QStringLiteral("b"));
    EXPECT_EQ(list.insertLine(1, QStringLiteral("a wider line")), 1);
    EXPECT_EQ(list.lines(), (QStringList{QStringLiteral("a"), QStringLiteral("a wider line"), QStringLiteral("b")}));
    EXPECT_EQ(list.horizontalExtent(), QFontMetrics(list.font()).horizontalAdvance(QStringLiteral("a wider line")) + 3);
}

TEST(ScrollListBox, ADirectoryIsListedWithTheExtentOfItsLongestName) {
    Files files;
    const QString folder = QFileInfo(QString::fromStdString(files.write("a.sim", ""))).absolutePath();
    files.write("a_long_name_of_a_file.sim", "");
    files.write("other.txt", "");
    CHScrollListBox list;
    EXPECT_EQ(list.addDirectory(folder + QStringLiteral("/*.sim")), 1);
    EXPECT_EQ(list.horizontalExtent(),
              QFontMetrics(list.font()).horizontalAdvance(QStringLiteral("a_long_name_of_a_file.sim")) + 3);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST(ScrollListBox, DeletingTheLastLineLeavesAnExtentOfZero) {
    CHScrollListBox list;
    list.addLine(QStringLiteral("text"));
    EXPECT_EQ(list.deleteLine(0), 0);
    EXPECT_EQ(list.horizontalExtent(), 0);
}

// Each line wider than all before it: the extent grows with every one.
TEST(ScrollListBox, FiftyThousandLinesAreAddedInOneLayout) {
    CHScrollListBox list;
    list.resize(200, 200);
    list.show();
    for (int i = 0; i < 50000; ++i) {
        list.addLine(QString::number(i).rightJustified(1 + i / 1000, QLatin1Char('0')));
    }
    QApplication::processEvents();
    EXPECT_EQ(list.count(), 50000);
    EXPECT_EQ(list.horizontalExtent(), QFontMetrics(list.font()).horizontalAdvance(list.item(49999)->text()) + 3);
    EXPECT_TRUE(list.horizontalScrollBar()->isVisible());
}

TEST(SelectAlignment, AnEmptyMapLeavesOnlyCancel) {
    SelectAlignmentForm form(nullptr, {});
    EXPECT_FALSE(control<QPushButton>(form, 1)->isEnabled());
    EXPECT_EQ(control<QComboBox>(form, 215)->count(), 1);
    form.show();
    QTest::mouseClick(control<QPushButton>(form, 2), Qt::LeftButton);
    EXPECT_EQ(form.result(), QDialog::Rejected);
    EXPECT_TRUE(form.chosenId().isNull());
}

TEST(SelectAlignment, TheFirstNameIsSelectedAndOkTakesItsId) {
    SelectAlignmentForm form(nullptr, {{"b", host::MdDbObjectId(7)}, {"a", host::MdDbObjectId(5)}});
    EXPECT_EQ(control<QComboBox>(form, 215)->currentText(), QStringLiteral("a"));
    form.show();
    QTest::keyClick(control<QComboBox>(form, 215), Qt::Key_Down);
    QTest::mouseClick(control<QPushButton>(form, 1), Qt::LeftButton);
    EXPECT_EQ(form.result(), QDialog::Accepted);
    EXPECT_EQ(form.chosenName(), "b");
    EXPECT_EQ(form.chosenId().asUint64(), 7U);
}

TEST(SelectAlignment, NamesAreSortedAndTheIdIsLookedUpByName) {
    SelectAlignmentForm form(nullptr, {{"B", host::MdDbObjectId(7)},
                                       {"a", host::MdDbObjectId(5)},
                                       {"う", host::MdDbObjectId(8)},
                                       {"ア", host::MdDbObjectId(9)}});
    auto* list = control<QComboBox>(form, 215);
    QStringList names;
    for (int i = 0; i < list->count(); ++i) {
        names << list->itemText(i);
    }
    EXPECT_EQ(names,
              (QStringList{QStringLiteral("a"), QStringLiteral("B"), QStringLiteral("ア"), QStringLiteral("う")}));
    EXPECT_EQ(list->currentIndex(), 0);
    list->setCurrentText(QStringLiteral("ア"));
    form.accept();
    EXPECT_EQ(form.chosenId().asUint64(), 9U);
    EXPECT_EQ(form.chosenName(), "ア");
}

TEST(SelectAlignment, ANameThatIsNotInTheMapIsTakenWithTheNullIdentifier) {
    SelectAlignmentForm form(nullptr, {});
    EXPECT_EQ(control<QComboBox>(form, 215)->itemText(0), QString());
    form.accept();
    EXPECT_EQ(form.result(), QDialog::Accepted);
    EXPECT_EQ(form.chosenName(), "");
    EXPECT_TRUE(form.chosenId().isNull());
}

TEST(SelectAlignment, EnterDoesNothingWhileThereIsNothingToSelect) {
    SelectAlignmentForm form(nullptr, {});
    form.show();
    control<QComboBox>(form, 215)->setFocus();
    QTest::keyClick(control<QComboBox>(form, 215), Qt::Key_Return);
    EXPECT_TRUE(form.isVisible());
}

} // namespace
} // namespace fenmark::ui::test
