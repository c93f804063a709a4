// The settings dialog: layers, and the rules of the shift distance.
#include "dialog_test_support.h"
#include "ui/dialogs/fenmark_settings_form.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

namespace fenmark::ui::test {
namespace {

struct SettingsForm : ::testing::Test {
    std::vector<QString> messages;

    FenmarkSettingsForm make(const ImportSettings& settings,
                             const std::vector<std::string>& layers = {"測点", "0", "a"}) {
        return {nullptr, layers, settings,
                [this](QWidget*, const QString&, const QString& text) { messages.push_back(text); }};
    }

    // Whether the text is accepted as a shift distance.
    bool accepts(const QString& text) {
        FenmarkSettingsForm form = make({});
        control<QLineEdit>(form, 204)->setText(text);
        form.show();
        QTest::mouseClick(control<QPushButton>(form, 1), Qt::LeftButton);
        return form.result() == QDialog::Accepted;
    }
};

TEST_F(SettingsForm, FindsEveryControlByItsId) {
    FenmarkSettingsForm form = make({});
    for (int id : {200, 201, 202, 203, 205}) {
        EXPECT_NE(control<QComboBox>(form, id), nullptr) << id;
    }
    EXPECT_NE(control<QLineEdit>(form, 204), nullptr);
    EXPECT_EQ(control<QPushButton>(form, 1)->text(), QStringLiteral("設定"));
    EXPECT_TRUE(control<QPushButton>(form, 1)->isDefault());
    EXPECT_EQ(control<QPushButton>(form, 2)->text(), QStringLiteral("取り消し"));
    EXPECT_EQ(form.windowTitle(), QStringLiteral("SIMAファイル読み込み設定"));
}

TEST_F(SettingsForm, SelectsTheStoredLayersInSortedLists) {
    FenmarkSettingsForm form = make({.pointLayer = "測点", .ipLayer = "a", .lotLayer = "0"});
    EXPECT_EQ(control<QComboBox>(form, 205)->currentText(), QStringLiteral("測点"));
    EXPECT_EQ(control<QComboBox>(form, 200)->currentText(), QStringLiteral("a"));
    EXPECT_EQ(control<QComboBox>(form, 201)->currentText(), QStringLiteral("0"));
    EXPECT_EQ(control<QComboBox>(form, 205)->itemText(0), QStringLiteral("0"));
    EXPECT_FALSE(control<QComboBox>(form, 205)->isEditable());
}

TEST_F(SettingsForm, ALayerThatIsGoneShowsTheFirstOfTheSortedList) {
    FenmarkSettingsForm form = make({.lotLayer = "gone"});
    EXPECT_EQ(control<QComboBox>(form, 201)->currentText(), QStringLiteral("0"));
    form.accept();
    EXPECT_EQ(form.settings().lotLayer, "0");
}

TEST_F(SettingsForm, CutsTrailingZerosButNeverThePoint) {
    EXPECT_EQ(formatShiftDistance(5.0), "5.");
    EXPECT_EQ(formatShiftDistance(0.0), "0.");
    EXPECT_EQ(formatShiftDistance(0.0001), "0.0001");
    EXPECT_EQ(formatShiftDistance(10.25), "10.25");
}

TEST_F(SettingsForm, AcceptsPlainNumbersAboveZero) {
    EXPECT_TRUE(accepts(QStringLiteral("1.5")));
    EXPECT_TRUE(accepts(QStringLiteral(" 1.5 ")));
    EXPECT_TRUE(accepts(QStringLiteral("5.")));
    EXPECT_TRUE(accepts(QStringLiteral(".5")));
    EXPECT_TRUE(messages.empty());
}

TEST_F(SettingsForm, RefusesEveryBadNumberWithTheOneMessage) {
    const QStringList bad{QStringLiteral("+1"),    QStringLiteral("1e3"), QStringLiteral("-1"), QStringLiteral("1-2"),
                          QStringLiteral("1.2.3"), QStringLiteral("."),   QStringLiteral("0"),  QString(),
                          QStringLiteral("abc")};
    for (const QString& text : bad) {
        EXPECT_FALSE(accepts(text)) << text.toStdString();
    }
    ASSERT_EQ(messages.size(), static_cast<std::size_t>(bad.size()));
    for (const QString& message : messages) {
        EXPECT_EQ(message, QStringLiteral("0より大きい値を指定してください。"));
    }
}

TEST_F(SettingsForm, ARefusedShiftKeepsTheDialogOpenWithTheLayersTaken) {
    FenmarkSettingsForm form = make({.pointLayer = "0"});
    form.show();
    control<QComboBox>(form, 205)->setCurrentText(QStringLiteral("測点"));
    control<QLineEdit>(form, 204)->setText(QStringLiteral("-1"));
    QTest::mouseClick(control<QPushButton>(form, 1), Qt::LeftButton);
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(form.settings().pointLayer, "測点");
}

TEST_F(SettingsForm, EnterAcceptsAndEscapeCloses) {
    FenmarkSettingsForm form = make({});
    form.show();
    QTest::keyClick(&form, Qt::Key_Return);
    EXPECT_EQ(form.result(), QDialog::Accepted);
    FenmarkSettingsForm other = make({});
    other.show();
    QTest::keyClick(&other, Qt::Key_Escape);
    EXPECT_EQ(other.result(), QDialog::Rejected);
}

TEST_F(SettingsForm, TheHelpKeyHasNoEffect) {
    FenmarkSettingsForm form = make({});
    form.show();
    QTest::keyClick(&form, Qt::Key_F1);
    EXPECT_TRUE(form.isVisible());
}

TEST_F(SettingsForm, EveryListHoldsEveryLayerInTheOrderOfTheJapaneseLocale) {
    FenmarkSettingsForm form = make({}, {"測点", "b", "0", "A", "ア"});
    for (int id : {205, 200, 201, 202, 203}) {
        auto* list = control<QComboBox>(form, id);
        QStringList names;
        for (int i = 0; i < list->count(); ++i) {
            names << list->itemText(i);
        }
        EXPECT_EQ(names, (QStringList{QStringLiteral("0"), QStringLiteral("A"), QStringLiteral("b"),
                                      QStringLiteral("ア"), QStringLiteral("測点")}))
            << id;
    }
}

TEST_F(SettingsForm, TheNameMustMatchExactly) {
    FenmarkSettingsForm form = make({.pointLayer = "B"}, {"0", "b"});
    EXPECT_EQ(control<QComboBox>(form, 205)->currentText(), QStringLiteral("0"));
}

TEST_F(SettingsForm, AllFiveLayersAndTheShiftAreHandedBack) {
    FenmarkSettingsForm form = make({}, {"0", "1", "2", "3", "4"});
    const std::pair<int, const char*> choices[] = {{205, "4"}, {200, "3"}, {201, "2"}, {202, "1"}, {203, "0"}};
    for (const auto& [id, name] : choices) {
        control<QComboBox>(form, id)->setCurrentText(QString::fromLatin1(name));
    }
    control<QLineEdit>(form, 204)->setText(QStringLiteral("2.5"));
    form.accept();
    EXPECT_EQ(form.settings().pointLayer, "4");
    EXPECT_EQ(form.settings().ipLayer, "3");
    EXPECT_EQ(form.settings().lotLayer, "2");
    EXPECT_EQ(form.settings().wideStakeLayer, "1");
    EXPECT_EQ(form.settings().continuousLayer, "0");
    EXPECT_EQ(form.settings().shiftDistance, 2.5);
}

TEST_F(SettingsForm, TheShiftIsShownAsItWasHandedIn) {
    FenmarkSettingsForm form = make({.shiftDistance = 5.0});
    EXPECT_EQ(control<QLineEdit>(form, 204)->text(), QStringLiteral("5."));
}

TEST_F(SettingsForm, ARefusedValueCanBeOverwrittenAtOnce) {
    FenmarkSettingsForm form = make({});
    form.show();
    QApplication::setActiveWindow(&form);
    control<QLineEdit>(form, 204)->setText(QStringLiteral("abc"));
    form.accept();
    EXPECT_EQ(messages.size(), 1U);
    EXPECT_EQ(form.focusWidget(), control<QLineEdit>(form, 204));
    QTest::keyClicks(control<QLineEdit>(form, 204), QStringLiteral("0.5"));
    form.accept();
    EXPECT_EQ(form.settings().shiftDistance, 0.5);
}

} // namespace
} // namespace fenmark::ui::test
