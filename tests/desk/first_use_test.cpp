// What a user meets on the first day: the size of the window, the language of the toolkit's own windows, an import that
// breaks off, objects out of view, errors by key.
#include "desk_test_support.h"

#include <QDialogButtonBox>
#include <QDropEvent>
#include <QHeaderView>
#include <QMessageBox>
#include <QMimeData>
#include <QTextBlock>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

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

TEST_F(DeskWindow, RadiiAndStationsOfElementsAreSeenWholeOnASmallScreen) {
    window->resize(firstWindowSize(QSize(1024, 768)));
    import(folder.example(QStringLiteral("road.sim")));
    QApplication::processEvents();
    const SitesPanel& sites = window->sites();
    EXPECT_LE(sites.header()->length(), sites.viewport()->width());
    for (int column = 0; column < sites.columnCount(); ++column) {
        EXPECT_GE(sites.columnWidth(column), sites.header()->sectionSizeHint(column)) << column;
    }
    EXPECT_GT(window->plan().width(), 480) << "room is left for the plan";
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

// 点 in UTF-8, and enough of it to be told from code page 932.
QByteArray fileInUtf8() {
    return QStringLiteral("A00,\r\nA01,1,境界点一,0,0,,\r\nA01,2,境界点二,10,10,,\r\nA99,\r\n").toUtf8();
}

TEST_F(DeskWindow, AFileInUtf8IsReadAsItsBytesShowAndTheEncodingIsTold) {
    import(folder.write(QStringLiteral("utf8.sim"), fileInUtf8()));
    ASSERT_EQ(drawing().entityCount(), 2U);
    entityNamed("境界点一");
    EXPECT_TRUE(said(QStringLiteral("文字コードを UTF-8 として読み込みました")));
}

TEST_F(DeskWindow, NothingIsToldOfAFileInCodePage932) {
    import(folder.write(QStringLiteral("sjis.sim"), "A00,\r\nA01,1,\x93\x5F,0,0,,\r\nA99,\r\n"));
    entityNamed("点");
    EXPECT_FALSE(said(QStringLiteral("文字コード")));
}

TEST_F(DeskWindow, TheSettingOverridesWhatTheBytesShow) {
    const QString file = folder.write(QStringLiteral("utf8.sim"), fileInUtf8());
    window->action(Text::EncodingCp932)->trigger();
    import(file);
    ASSERT_EQ(drawing().entityCount(), 2U);
    ASSERT_TRUE(drawing().entity(0).row);
    EXPECT_FALSE(drawing().entity(0).row->name.starts_with("境界点一"));
    EXPECT_FALSE(said(QStringLiteral("文字コードを")));
    EXPECT_TRUE(said(QStringLiteral("文字コードにない文字をU+FFFDで読みました")));
    window->action(Text::EncodingUtf8)->trigger();
    import(file);
    ASSERT_EQ(drawing().entityCount(), 4U);
    EXPECT_TRUE(drawing().entity(2).row->name.starts_with("境界点一"));
    EXPECT_TRUE(said(QStringLiteral("文字コードを UTF-8 として読み込みました")));
}

TEST_F(DeskWindow, PlanTangentsAreASettingOfTheHost) {
    QAction* tangents = window->action(Text::PlanTangents);
    EXPECT_FALSE(window->session().host().planTangents());
    tangents->trigger();
    EXPECT_TRUE(window->session().host().planTangents());
    tangents->trigger();
    EXPECT_FALSE(window->session().host().planTangents());
}

TEST_F(DeskWindow, ABrokenJointIsToldWithWhatMayMendIt) {
    window->action(Text::RadiusRight)->trigger();
    import(folder.example(QStringLiteral("road.sim")));
    EXPECT_TRUE(said(QStringLiteral("折れています; 設定の「正の半径の向き」を「自動」にして")))
        << window->command().said().toStdString();
}

// Contrast of two colours (Web Content Accessibility Guidelines 2.1, 1.4.3).
double contrast(const QColor& a, const QColor& b) {
    const auto luminance = [](const QColor& colour) {
        const auto linear = [](double value) {
            return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(static_cast<double>(colour.redF())) +
               0.7152 * linear(static_cast<double>(colour.greenF())) +
               0.0722 * linear(static_cast<double>(colour.blueF()));
    };
    const double lighter = std::max(luminance(a), luminance(b));
    const double darker = std::min(luminance(a), luminance(b));
    return (lighter + 0.05) / (darker + 0.05);
}

TEST_F(DeskWindow, LinesOfTheLogAreReadableOnLightAndDark) {
    import(folder.write(QStringLiteral("errors.sim"), "A00,\r\nA01,x,a,0,0,,\r\nA99,\r\n"));
    LogPanel& log = window->log();
    for (const QColor& background : {QColor(0xff, 0xff, 0xff), QColor(0xef, 0xef, 0xef), QColor(0x2d, 0x2d, 0x2d),
                                     QColor(0x19, 0x19, 0x19), QColor(0, 0, 0)}) {
        QPalette palette = log.palette();
        palette.setColor(QPalette::Base, background);
        log.setPalette(palette);
        int coloured = 0;
        for (QTextBlock line = log.document()->begin(); line.isValid(); line = line.next()) {
            for (const QTextLayout::FormatRange& part : line.layout()->formats()) {
                ++coloured;
                EXPECT_GE(contrast(part.format.foreground().color(), background), 4.5)
                    << line.text().toStdString() << " on " << background.name().toStdString();
            }
        }
        EXPECT_GT(coloured, 0);
    }
}

} // namespace
} // namespace fenmark::desk::test
