// The help of F1 has every key.
#include "desk_test_support.h"

#include "desk/window/keys_dialog.h"

#include <QDialog>
#include <QRegularExpression>
#include <QTreeWidget>

namespace fenmark::desk::test {
namespace {

struct Keys : DeskWindow {
    // What stands in the first column of the help, word by word.
    QStringList keysOfHelp() {
        QStringList words;
        Answers answers;
        answers.then([&](QWidget& dialog) {
            const QRect screen(0, 0, 1024, 768);
            EXPECT_TRUE(screen.contains(QRect(QPoint(0, 0), dialog.size())));
            auto* list = dialog.findChild<QTreeWidget*>();
            for (int i = 0; i < list->topLevelItemCount(); ++i) {
                const QTreeWidgetItem& row = *list->topLevelItem(i);
                const bool heading = row.isFirstColumnSpanned();
                EXPECT_EQ(row.text(1).isEmpty(), heading) << row.text(0).toStdString();
                words += row.text(0).split(QRegularExpression(QStringLiteral(" / ")));
                words += row.text(0).split(QLatin1Char(' '));
            }
            QTest::keyClick(&dialog, Qt::Key_Return);
        });
        press(Qt::Key_F1, Qt::NoModifier);
        return words;
    }
};

TEST_F(Keys, OfEveryActionAreInTheHelp) {
    const QStringList help = keysOfHelp();
    std::size_t shortcuts = 0;
    for (const QAction* action : window->findChildren<QAction*>()) {
        for (const QKeySequence& shortcut : action->shortcuts()) {
            ++shortcuts;
            const QString keys = shortcut.toString(QKeySequence::NativeText);
            EXPECT_TRUE(help.contains(keys)) << keys.toStdString() << ' ' << action->text().toStdString();
        }
    }
    EXPECT_GT(shortcuts, 30U);
}

TEST_F(Keys, OfThePlanAndThePanelsAreInTheHelpOfBothLanguages) {
    for (const Language language : {Language::Japanese, Language::English}) {
        make(language);
        const QStringList help = keysOfHelp();
        for (const char* keys : {"+", "-", "Page Up", "Page Down", "F", "Home", "N", "P", "Tab", "Shift+Tab", "Enter",
                                 "Esc", "Backspace", "F2", "Delete", "Ctrl+A", "Ctrl+C"}) {
            EXPECT_TRUE(help.contains(QLatin1String(keys))) << keys;
        }
        EXPECT_TRUE(help.contains(language == Language::English ? QStringLiteral("Arrows") : QStringLiteral("矢印")));
    }
}

TEST_F(Keys, NoTwoActionsOfTheMenusHaveTheSame) {
    QStringList seen;
    for (const KeyHelp& row : keysOf(*window)) {
        static const QRegularExpression ofMenus(QStringLiteral("^(Ctrl\\+|F\\d)"));
        if (row.keys.contains(ofMenus)) {
            for (const QString& keys : row.keys.split(QStringLiteral(" / "))) {
                if (!keys.contains(QLatin1Char(' '))) {
                    EXPECT_FALSE(seen.contains(keys)) << keys.toStdString();
                    seen << keys;
                }
            }
        }
    }
    EXPECT_TRUE(seen.contains(QStringLiteral("Ctrl+K")));
}

} // namespace
} // namespace fenmark::desk::test
