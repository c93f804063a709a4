// The result dialog, its list, and the selection of an alignment.
#include "dialog_test_support.h"
#include "ui/dialogs/h_scroll_list_box.h"
#include "ui/dialogs/select_alignment_form.h"
#include "ui/dialogs/sima_result_form.h"

#include <QPushButton>
#include <QScrollBar>
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
    EXPECT_TRUE(QTest::qWaitFor([&] { return list.horizontalScrollBar()->isVisible(); }));
    EXPECT_EQ(list.deleteLine(1), 1);
    EXPECT_EQ(list.horizontalExtent(), small);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !list.horizontalScrollBar()->isVisible(); }));
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

} // namespace
} // namespace fenmark::ui::test
