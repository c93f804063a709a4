// What a user meets on the first day: the size of the window, the language of the toolkit's own windows, an import that
// breaks off, objects out of view, errors by key.
#include "desk_test_support.h"

#include <QDialogButtonBox>
#include <QDropEvent>
#include <QMessageBox>
#include <QMimeData>
#include <QTextBlock>

namespace fenmark::desk::test {
namespace {

TEST(FirstWindow, FitsTheScreenItOpensOn) {
    EXPECT_EQ(firstWindowSize(QSize(1920, 1080)), QSize(1400, 900));
    const QSize small = firstWindowSize(QSize(1024, 728));
    EXPECT_LE(small.width(), 1024);
    EXPECT_LT(small.height(), 728);
}

TEST_F(DeskWindow, AllPanelsLieWithinAScreenOf1024By768) {
    window->resize(firstWindowSize(QSize(1024, 768)));
    QApplication::processEvents();
    EXPECT_LE(window->width(), 1024);
    EXPECT_LE(window->height(), 768);
    const QRect inside = window->rect();
    for (QWidget* panel : {static_cast<QWidget*>(&window->plan()), static_cast<QWidget*>(&window->command()),
                           static_cast<QWidget*>(&window->properties()), static_cast<QWidget*>(&window->log()),
                           static_cast<QWidget*>(&window->sites())}) {
        ASSERT_TRUE(panel->isVisible()) << panel->objectName().toStdString();
        const QRect place(panel->mapTo(window.get(), QPoint(0, 0)), panel->size());
        EXPECT_TRUE(inside.contains(place)) << panel->objectName().toStdString();
    }
}

TEST_F(DeskWindow, TheToolkitSpeaksTheLanguageOfTheWindow) {
    const auto cancel = [] {
        QDialogButtonBox box(QDialogButtonBox::Cancel);
        return box.button(QDialogButtonBox::Cancel)->text();
    };
    EXPECT_EQ(cancel(), QStringLiteral("キャンセル"));
    window->setLanguage(Language::English);
    EXPECT_EQ(cancel().remove(QLatin1Char('&')), QStringLiteral("Cancel"));
    window->setLanguage(Language::Japanese);
    EXPECT_EQ(cancel(), QStringLiteral("キャンセル"));
}

// The third line of a section with a record too short ends the command.
QByteArray fileThatBreaksOff() {
    return "A00,\r\nA01,1,a,0,0,,\r\nA01,2,b,10,10,,\r\nA99,\r\nD00,1\r\n";
}

TEST_F(DeskWindow, AnImportThatBreaksOffSaysSoAndCanBeTakenBack) {
    const QString file = folder.write(QStringLiteral("short.sim"), fileThatBreaksOff());
    QString text;
    Answers answers;
    answers.accept().then([&](QWidget& dialog) {
        auto* box = qobject_cast<QMessageBox*>(&dialog);
        ASSERT_NE(box, nullptr);
        text = box->text() + box->informativeText();
        dialog.findChild<QPushButton*>(QStringLiteral("takeBack"))->click();
    });
    EXPECT_TRUE(window->openFile(file));
    EXPECT_TRUE(text.contains(QStringLiteral("途中で終わりました"))) << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("5"))) << text.toStdString(); // the line
    EXPECT_EQ(drawing().entityCount(), 0U);
}

TEST_F(DeskWindow, WhatAnImportThatBreaksOffMadeCanBeKept) {
    const QString file = folder.write(QStringLiteral("short.sim"), fileThatBreaksOff());
    Answers answers;
    answers.accept().click(QStringLiteral("keep"));
    EXPECT_TRUE(window->openFile(file));
    EXPECT_EQ(drawing().entityCount(), 2U);
}

TEST_F(DeskWindow, ASecondImportIsShownWhereAllWasInView) {
    import(folder.example(QStringLiteral("cadastral.sim")));
    import(folder.example(QStringLiteral("road.sim")));
    const drawing::Extent seen = plan().view().visible();
    EXPECT_LE(seen.minX, drawing().extent().minX);
    EXPECT_GE(seen.maxX, drawing().extent().maxX);
}

TEST_F(DeskWindow, AHintLeadsToAnImportOutOfView) {
    import(folder.example(QStringLiteral("cadastral.sim")));
    window->plan().zoomAt(QPointF(100, 100), 50.0);
    auto* hint = window->findChild<QPushButton*>(QStringLiteral("viewHint"));
    ASSERT_NE(hint, nullptr);
    EXPECT_FALSE(hint->isVisible());
    const drawing::Extent before = plan().view().visible();
    import(folder.example(QStringLiteral("road.sim")));
    EXPECT_EQ(plan().view().visible(), before);
    ASSERT_TRUE(hint->isVisible());
    hint->click();
    EXPECT_FALSE(hint->isVisible());
    EXPECT_LE(plan().view().visible().minX, drawing().extent().minX);
}

TEST_F(DeskWindow, TheLogOpensAtItsFirstErrorAndKeysGoOn) {
    import(folder.write(QStringLiteral("errors.sim"), "A00,\r\nA01,x,a,0,0,,\r\nA01,2,b,y,10,,\r\nA99,\r\n"));
    LogPanel& log = window->log();
    const int first = log.textCursor().blockNumber();
    EXPECT_TRUE(log.document()->findBlockByNumber(first).text().startsWith(QStringLiteral("ERROR ---")));
    press(Qt::Key_F8, Qt::NoModifier);
    const int second = log.textCursor().blockNumber();
    EXPECT_GT(second, first);
    EXPECT_TRUE(log.document()->findBlockByNumber(second).text().startsWith(QStringLiteral("ERROR ---")));
    press(Qt::Key_F8, Qt::ShiftModifier);
    EXPECT_EQ(log.textCursor().blockNumber(), first);
    press(Qt::Key_F8, Qt::ShiftModifier);
    EXPECT_EQ(log.textCursor().blockNumber(), first);
    EXPECT_TRUE(said(QStringLiteral("この先にエラーはありません")));
}

TEST_F(DeskWindow, ADroppedFileIsCopiedAndNotMoved) {
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(folder.example(QStringLiteral("road.sim")))});
    QDragEnterEvent enter(QPoint(10, 10), Qt::MoveAction | Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.get(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    EXPECT_EQ(enter.dropAction(), Qt::CopyAction);
}

} // namespace
} // namespace fenmark::desk::test
