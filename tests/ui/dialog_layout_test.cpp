// Where the controls of the dialogs stand, in dialog units, with their texts; and what the keyboard reaches.
#include "dialog_test_support.h"
#include "ui/dialogs/dialog_units.h"
#include "ui/dialogs/fenmark_settings_form.h"
#include "ui/dialogs/h_scroll_list_box.h"
#include "ui/dialogs/select_alignment_form.h"
#include "ui/dialogs/sima_result_form.h"

#include <QAccessible>
#include <QComboBox>
#include <QFontDatabase>
#include <QFontInfo>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

namespace fenmark::ui::test {
namespace {

struct Place {
    int x, y, width, height;
};

struct DialogLayout : ::testing::Test {
    Files files;
    Answers answers;
    DialogUnits units{dialogFont()};

    command::ImportDialogState state(const std::string& path = {}) const {
        command::ImportDialogState state;
        state.filePath = path;
        state.siteNames = {"サイト"};
        state.layerNames = {"0"};
        return state;
    }
    void expectPlace(const QWidget* widget, const Place& place) const {
        ASSERT_NE(widget, nullptr);
        EXPECT_EQ(widget->geometry(), units.rect(place.x, place.y, place.width, place.height))
            << widget->objectName().toStdString();
    }
    void expectSize(const QWidget& form, int width, int height) const {
        EXPECT_EQ(form.size(), QSize(units.x(width), units.y(height)));
        EXPECT_EQ(form.minimumSize(), form.maximumSize()) << "fixed in size";
    }
    static QLabel* label(QWidget& form, const QString& text) {
        for (QLabel* each : form.findChildren<QLabel*>()) {
            if (each->text() == text) {
                return each;
            }
        }
        return nullptr;
    }
    static QGroupBox* group(QWidget& form, const QString& title) {
        for (QGroupBox* each : form.findChildren<QGroupBox*>()) {
            if (each->title() == title) {
                return each;
            }
        }
        return nullptr;
    }
    // Whether all of the text can be seen in the widget.
    static void expectTextFits(QWidget& form) {
        for (QLabel* each : form.findChildren<QLabel*>()) {
            EXPECT_GE(each->width(), QFontMetrics(each->font()).horizontalAdvance(each->text().trimmed()))
                << each->text().toStdString();
        }
        for (QPushButton* each : form.findChildren<QPushButton*>()) {
            EXPECT_GE(each->width() - 4, QFontMetrics(each->font()).horizontalAdvance(each->text()))
                << each->text().toStdString();
        }
        for (QWidget* each : form.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
            EXPECT_TRUE(form.rect().contains(each->geometry())) << each->objectName().toStdString();
        }
    }
    // What a click in the middle of the control would reach.
    static void expectReached(QWidget& form, QWidget* control) {
        QWidget* hit = form.childAt(control->geometry().center());
        EXPECT_TRUE(hit == control || control->isAncestorOf(hit)) << control->objectName().toStdString();
    }
    // The controls that Tab goes through, from the one that has the focus.
    static QStringList tabOrder(QWidget& form, int steps) {
        QStringList order;
        for (int i = 0; i < steps; ++i) {
            const QWidget* focus = form.focusWidget();
            order << (focus != nullptr ? focus->objectName() : QString());
            QTest::keyClick(form.focusWidget(), Qt::Key_Tab);
        }
        return order;
    }
    static void open(QWidget& form) {
        form.show();
        QApplication::setActiveWindow(&form);
        QApplication::processEvents();
    }
};

TEST_F(DialogLayout, TheImportFormHasItsControlsInTheirPlaces) {
    FenmarkForm form(nullptr, state(), answers.services());
    EXPECT_EQ(form.windowTitle(), QStringLiteral("SIMAファイル読み込み"));
    EXPECT_EQ(form.font().pointSize(), 8);
    EXPECT_EQ(form.minimumSize(), form.maximumSize());
    expectPlace(label(form, QStringLiteral("ファイル名:")), {6, 6, 42, 8});
    expectPlace(control<QLineEdit>(form, 210), {78, 6, 144, 12});
    expectPlace(control<QPushButton>(form, 206), {228, 6, 36, 12});
    expectPlace(control<QLabel>(form, 220), {6, 24, 60, 8});
    expectPlace(control<treelist::CTreeListCtrl>(form, 208), {6, 42, 258, 138});
    expectPlace(control<QPushButton>(form, 209), {6, 186, 48, 12});
    expectPlace(control<QPushButton>(form, 212), {102, 186, 50, 14});
    expectPlace(control<QPushButton>(form, 1), {156, 186, 50, 14});
    expectPlace(control<QPushButton>(form, 2), {210, 186, 50, 14});
    const QRect sites = control<QComboBox>(form, 207)->geometry();
    EXPECT_EQ(sites.topLeft(), QPoint(units.x(78), units.y(24)));
    EXPECT_EQ(sites.width(), units.x(186));
    expectTextFits(form);
}

TEST_F(DialogLayout, TheImportFormHasItsTextsAndStates) {
    FenmarkForm form(nullptr, state(), answers.services());
    EXPECT_TRUE(control<QLineEdit>(form, 210)->isReadOnly());
    EXPECT_EQ(control<QPushButton>(form, 206)->text(), QStringLiteral("参照"));
    EXPECT_EQ(control<QLabel>(form, 220)->text(), QStringLiteral("サイト名:"));
    EXPECT_FALSE(control<QComboBox>(form, 207)->isEditable());
    EXPECT_EQ(control<QPushButton>(form, 209)->text(), QStringLiteral("設定..."));
    EXPECT_EQ(control<QPushButton>(form, 212)->text(), QStringLiteral("ログの表示..."));
    EXPECT_EQ(control<QPushButton>(form, 1)->text(), QStringLiteral("読み込み"));
    EXPECT_TRUE(control<QPushButton>(form, 1)->isDefault());
    EXPECT_EQ(control<QPushButton>(form, 2)->text(), QStringLiteral("閉じる"));
    EXPECT_TRUE(control<QPushButton>(form, 206)->isEnabled());
    EXPECT_TRUE(control<QPushButton>(form, 209)->isEnabled());
    EXPECT_TRUE(control<QPushButton>(form, 212)->isHidden());
}

TEST_F(DialogLayout, TheTreeHasOneColumnItsStyleAndTheImageNumbersOfItsRows) {
    FenmarkForm form(nullptr, state(), answers.services());
    auto* tree = control<treelist::CTreeListCtrl>(form, 208);
    EXPECT_EQ(tree->GetStyle(), 0xf00f1U);
    ASSERT_EQ(tree->GetColumnCount(), 1);
    EXPECT_EQ(tree->GetColumnText(0), QStringLiteral("Name"));
    EXPECT_EQ(tree->GetColumnModify(0), 1);
    EXPECT_EQ(tree->GetColumnWidth(0), tree->width() - 2 * tree->frameWidth() - 20);
    treelist::CTreeListItem* root = tree->GetChildItem(treelist::TLI_ROOT);
    EXPECT_EQ(tree->GetItemText(root), QStringLiteral("全て "));
    EXPECT_TRUE(root->isExpanded());
    EXPECT_EQ(root->images, (std::array<std::int32_t, 4>{0, 1, 2, 3}));
    const QStringList texts{QStringLiteral("座標データ "),
                            QStringLiteral("画地データ "),
                            QStringLiteral("路線成果-IP線 "),
                            QStringLiteral("路線成果-主要線  "),
                            QStringLiteral("路線成果-中心線 "),
                            QStringLiteral("路線成果-幅杭線左 "),
                            QStringLiteral("路線成果-幅杭線右 "),
                            QStringLiteral("路線成果-連続線(直線のみ)　"),
                            QStringLiteral("路線成果-連続線(曲線含み) "),
                            QStringLiteral("縦断成果データ "),
                            QStringLiteral("横断成果データ ")};
    int number = 0;
    for (treelist::CTreeListItem* row = tree->GetChildItem(root); row; row = tree->GetNextSiblingItem(row), ++number) {
        EXPECT_EQ(tree->GetItemText(row), texts.value(number));
        const std::int32_t first = number == 0 ? 4 : number == 1 ? 8 : 0;
        EXPECT_EQ(row->images, (std::array<std::int32_t, 4>{first, first + 1, first + 2, first + 3})) << number;
        EXPECT_FALSE(row->canHaveButton()) << number;
        EXPECT_EQ(tree->GetLock(row), 1) << number;
    }
    EXPECT_EQ(number, 11);
    EXPECT_EQ(tree->GetItemCount(), 12);
    open(form);
    // With a face of small line height the box, which is measured in it, holds eleven of the twelve rows.
    EXPECT_TRUE(tree->GetCountPerPage() >= 12 || tree->verticalScrollBar()->isVisible()) << tree->GetCountPerPage();
}

TEST_F(DialogLayout, RowsWithDataAreUnlocked) {
    FenmarkForm form(nullptr, state(files.write("a.sim", kPointsOnly)), answers.services());
    auto* tree = control<treelist::CTreeListCtrl>(form, 208);
    treelist::CTreeListItem* points = tree->GetChildItem(tree->GetChildItem(treelist::TLI_ROOT));
    EXPECT_EQ(tree->GetLock(points), 0);
    EXPECT_NE(points->state & treelist::kItemCheckBox, 0U);
    EXPECT_EQ(tree->GetLock(tree->GetNextSiblingItem(points)), 1);
}

TEST_F(DialogLayout, TheSettingsFormHasItsControlsInTheirPlaces) {
    FenmarkSettingsForm form(nullptr, {"0"}, {});
    expectSize(form, 292, 193);
    expectPlace(group(form, QStringLiteral("ポリラインの画層")), {6, 6, 282, 126});
    expectPlace(group(form, QStringLiteral("縦断・横断成果の垂直壁のシフト距離　")), {6, 138, 282, 30});
    const std::pair<int, int> rows[] = {{205, 24}, {200, 42}, {201, 60}, {202, 79}, {203, 97}};
    for (const auto& [id, y] : rows) {
        const QRect list = control<QComboBox>(form, id)->geometry();
        EXPECT_EQ(list.y(), units.y(y)) << id;
        EXPECT_EQ(list.width(), units.x(138)) << id;
    }
    expectPlace(control<QLineEdit>(form, 204), {144, 151, 120, 12});
    expectPlace(control<QPushButton>(form, 1), {180, 174, 50, 14});
    expectPlace(control<QPushButton>(form, 2), {234, 174, 50, 14});
    for (const char* text :
         {"ポイント：", "ＩＰ線：　", "画地：", "幅杭線：", "曲線を含まない連続線：", "シフト距離：　", "m"}) {
        EXPECT_NE(label(form, QString::fromUtf8(text)), nullptr) << text;
    }
    expectTextFits(form);
}

TEST_F(DialogLayout, WhatStandsInTheGroupBoxesOfTheSettingsIsReachedByTheMouse) {
    FenmarkSettingsForm form(nullptr, {"0"}, {});
    open(form);
    for (const int id : {200, 201, 202, 203, 205}) {
        expectReached(form, control<QComboBox>(form, id));
    }
    expectReached(form, control<QLineEdit>(form, 204));
    // The titles of the boxes stay clear of what stands in them.
    EXPECT_GT(control<QComboBox>(form, 205)->y(),
              group(form, QStringLiteral("ポリラインの画層"))->y() + QFontMetrics(form.font()).height());
}

TEST_F(DialogLayout, TheSelectionHasItsControlsInTheirPlaces) {
    SelectAlignmentForm form(nullptr, {{"a", host::MdDbObjectId(1)}});
    EXPECT_EQ(form.windowTitle(), QStringLiteral("平面線形選択"));
    expectSize(form, 184, 54);
    expectPlace(label(form, QStringLiteral("平面線形:")), {6, 6, 126, 12});
    const QRect list = control<QComboBox>(form, 215)->geometry();
    EXPECT_EQ(list.topLeft(), QPoint(units.x(6), units.y(18)));
    EXPECT_EQ(list.width(), units.x(174));
    EXPECT_FALSE(control<QComboBox>(form, 215)->isEditable());
    expectPlace(control<QPushButton>(form, 1), {36, 36, 50, 14});
    expectPlace(control<QPushButton>(form, 2), {96, 36, 50, 14});
    EXPECT_EQ(control<QPushButton>(form, 1)->text(), QStringLiteral("選択"));
    EXPECT_TRUE(control<QPushButton>(form, 1)->isDefault());
    EXPECT_EQ(control<QPushButton>(form, 2)->text(), QStringLiteral("キャンセル"));
    expectTextFits(form);
}

TEST_F(DialogLayout, TheResultHasItsControlsInTheirPlaces) {
    command::ImportResult result;
    result.filePath = files.write("a.sim", "");
    SimaResultForm form(nullptr, result);
    EXPECT_EQ(form.windowTitle(), QStringLiteral("SIMA読み込み結果"));
    expectSize(form, 286, 169);
    expectPlace(label(form, QStringLiteral("読み込み結果:")), {6, 6, 150, 8});
    expectPlace(control<CHScrollListBox>(form, 213), {6, 18, 276, 113});
    expectPlace(control<QPushButton>(form, 1), {56, 144, 75, 18});
    expectPlace(control<QPushButton>(form, 214), {154, 144, 75, 18});
    ASSERT_NE(label(form, QStringLiteral("SIMAファイル")), nullptr);
    EXPECT_TRUE(label(form, QStringLiteral("SIMAファイル"))->isHidden());
    EXPECT_EQ(control<QPushButton>(form, 1)->text(), QStringLiteral("閉じる"));
    EXPECT_EQ(control<QPushButton>(form, 214)->text(), QStringLiteral("ログを表示"));
    expectTextFits(form);
}

TEST_F(DialogLayout, TabGoesThroughTheImportFormFromTopToBottom) {
    FenmarkForm form(nullptr, state(files.write("a.sim", kPointsOnly)), answers.services());
    open(form);
    EXPECT_EQ(tabOrder(form, 8), (QStringList{"id210", "id206", "id207", "id208", "id209", "id1", "id2", "id210"}));
}

TEST_F(DialogLayout, TabGoesThroughTheSettingsFromTopToBottom) {
    FenmarkSettingsForm form(nullptr, {"0"}, {});
    open(form);
    control<QComboBox>(form, 205)->setFocus();
    EXPECT_EQ(tabOrder(form, 9),
              (QStringList{"id205", "id200", "id201", "id202", "id203", "id204", "id1", "id2", "id205"}));
}

TEST_F(DialogLayout, EnterImportsOnceThereIsSomethingToImportAndElseBrowses) {
    FenmarkForm ready(nullptr, state(files.write("a.sim", kPointsOnly)), answers.services());
    open(ready);
    QTest::keyClick(ready.focusWidget(), Qt::Key_Return);
    EXPECT_EQ(ready.result(), QDialog::Accepted);

    FenmarkForm empty(nullptr, state(), answers.services());
    open(empty);
    answers.chosen = QString::fromStdString(files.write("b.sim", kPointsOnly));
    QTest::keyClick(empty.focusWidget(), Qt::Key_Return);
    EXPECT_TRUE(empty.isVisible());
    EXPECT_EQ(control<QLineEdit>(empty, 210)->text(), *answers.chosen);
    QTest::keyClick(empty.focusWidget(), Qt::Key_Return);
    EXPECT_EQ(empty.result(), QDialog::Accepted) << "the file that was just chosen";
}

TEST_F(DialogLayout, EnterPressesTheButtonThatHasTheFocus) {
    FenmarkForm form(nullptr, state(files.write("a.sim", kPointsOnly)), answers.services());
    open(form);
    control<QPushButton>(form, 2)->setFocus();
    QTest::keyClick(control<QPushButton>(form, 2), Qt::Key_Return);
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(form.result(), QDialog::Rejected);
}

TEST_F(DialogLayout, EnterInTheTreeAndInAListPressesTheDefaultButton) {
    for (const int id : {208, 207}) {
        FenmarkForm form(nullptr, state(files.write("a.sim", kPointsOnly)), answers.services());
        open(form);
        auto* widget = control<QWidget>(form, id);
        widget->setFocus();
        QTest::keyClick(widget, Qt::Key_Return);
        EXPECT_EQ(form.result(), QDialog::Accepted) << id;
    }
}

TEST_F(DialogLayout, TheKeyboardTicksRowsAndTheRoot) {
    FenmarkForm form(nullptr, state(files.write("a.sim", kPointsOnly)), answers.services());
    open(form);
    auto* tree = control<treelist::CTreeListCtrl>(form, 208);
    tree->setFocus(Qt::TabFocusReason);
    treelist::CTreeListItem* root = tree->GetChildItem(treelist::TLI_ROOT);
    treelist::CTreeListItem* points = tree->GetChildItem(root);
    EXPECT_EQ(tree->GetFocusItem(), root);
    EXPECT_GE(tree->GetCountPerPage(), tree->GetVisibleCount()) << "all rows are seen at once";
    QTest::keyClick(tree, Qt::Key_Insert);
    EXPECT_EQ(tree->GetCheck(points), 0);
    EXPECT_FALSE(control<QPushButton>(form, 1)->isEnabled());
    QTest::keyClick(tree, Qt::Key_Down);
    QTest::keyClick(tree, Qt::Key_Space);
    EXPECT_EQ(tree->GetCheck(points), 1);
    EXPECT_TRUE(control<QPushButton>(form, 1)->isEnabled());
}

TEST_F(DialogLayout, EscapeClosesEveryDialogWithoutResult) {
    FenmarkForm import(nullptr, state(files.write("a.sim", kPointsOnly)), answers.services());
    SelectAlignmentForm select(nullptr, {{"a", host::MdDbObjectId(1)}});
    command::ImportResult result;
    result.filePath = files.write("b.sim", "");
    SimaResultForm summary(nullptr, result);
    for (QDialog* form :
         {static_cast<QDialog*>(&import), static_cast<QDialog*>(&select), static_cast<QDialog*>(&summary)}) {
        open(*form);
        QTest::keyClick(form, Qt::Key_Escape);
        EXPECT_FALSE(form->isVisible());
        EXPECT_EQ(form->result(), QDialog::Rejected);
    }
}

TEST_F(DialogLayout, HelpRequestsAreSwallowedInEveryControl) {
    struct Parent : QWidget {
        int heard = 0;
        void keyPressEvent(QKeyEvent* event) override { heard += event->key() == Qt::Key_F1 ? 1 : 0; }
    } parent;
    FenmarkForm form(&parent, state(files.write("a.sim", kPointsOnly)), answers.services());
    open(form);
    for (const int id : {210, 206, 207, 208, 209, 1, 2}) {
        auto* widget = control<QWidget>(form, id);
        widget->setFocus();
        QTest::keyClick(widget, Qt::Key_F1);
        EXPECT_TRUE(form.isVisible()) << id;
    }
    EXPECT_EQ(parent.heard, 0);
    EXPECT_TRUE(answers.warnings.empty());
}

TEST_F(DialogLayout, EveryControlHasANameForScreenReaders) {
    FenmarkForm import(nullptr, state(), answers.services());
    FenmarkSettingsForm settings(nullptr, {"0"}, {});
    SelectAlignmentForm select(nullptr, {{"a", host::MdDbObjectId(1)}});
    command::ImportResult result;
    result.filePath = files.write("a.sim", "");
    SimaResultForm summary(nullptr, result);
    for (QWidget* form : {static_cast<QWidget*>(&import), static_cast<QWidget*>(&settings),
                          static_cast<QWidget*>(&select), static_cast<QWidget*>(&summary)}) {
        for (QWidget* widget : form->findChildren<QWidget*>(QRegularExpression(QStringLiteral("^id\\d+$")))) {
            QAccessibleInterface* face = QAccessible::queryAccessibleInterface(widget);
            ASSERT_NE(face, nullptr) << widget->objectName().toStdString();
            EXPECT_FALSE(face->text(QAccessible::Name).isEmpty()) << widget->objectName().toStdString();
        }
    }
}

TEST_F(DialogLayout, AJapaneseFaceIsAskedForByFallback) {
    const QStringList families = dialogFont().families();
    EXPECT_GT(families.size(), 3);
    if (QFontDatabase::families(QFontDatabase::Japanese).isEmpty()) {
        GTEST_SKIP() << "no Japanese face is installed";
    }
    EXPECT_TRUE(QFontMetrics(dialogFont()).inFont(QChar(0x6E2C))) << "the face at hand shows Japanese";
}

TEST_F(DialogLayout, DialogUnitsFollowTheFont) {
    QFont large = dialogFont();
    large.setPointSize(16);
    const DialogUnits twice(large);
    constexpr double kHinting = 0.1; // widths and heights of small letters are fitted to whole pixels
    EXPECT_NEAR(twice.x(400), 2 * units.x(400), kHinting * twice.x(400));
    EXPECT_NEAR(twice.y(400), 2 * units.y(400), kHinting * twice.y(400));
}

TEST_F(DialogLayout, ADialogOpensInTheMiddleOfTheScreen) {
    FenmarkForm form(nullptr, state(), answers.services());
    const QPoint middle = form.screen()->availableGeometry().center();
    EXPECT_NEAR(form.geometry().center().x(), middle.x(), 1);
    EXPECT_NEAR(form.geometry().center().y(), middle.y(), 1);
}

} // namespace
} // namespace fenmark::ui::test
