// Imports that the drawing knows: a file that comes again, logs of drawings opened later, the way back to what was saved.
#include "desk_test_support.h"

#include <QTextBlock>

namespace fenmark::desk::test {
namespace {

constexpr const char* kTwoPoints = "A00,\r\nA01,1,P,1.0,2.0,,\r\nA01,2,Q,x,2.0,,\r\nA99,\r\n";

struct SameFile : DeskWindow {
    QString file;

    void SetUp() override {
        DeskWindow::SetUp();
        window->questions().again = nullptr; // asked for real
        file = folder.example(QStringLiteral("cadastral.sim"));
        import(file);
    }
    void importAgain(const QString& button) {
        Answers answers;
        answers.accept().accept().click(button);
        EXPECT_TRUE(window->openFile(file));
    }
};

TEST_F(DeskWindow, AnImportIsNotedAsTheCommandLineNotesIt) {
    const QString file = folder.write(QStringLiteral("a.sim"), kTwoPoints);
    import(file);
    ASSERT_EQ(drawing().imports().size(), 1U);
    const drawing::Import& noted = drawing().imports().front();
    EXPECT_EQ(noted.fileName, "a.sim");
    EXPECT_EQ(noted.path, file.toStdString());
    EXPECT_EQ(noted.fileSize, static_cast<std::uint64_t>(QFile(file).size()));
    EXPECT_TRUE(noted.digest.starts_with("sha256:"));
    EXPECT_EQ(noted.counts.points, 1);
    EXPECT_EQ(noted.counts.errors, 1);
    EXPECT_EQ(drawing().importOf(drawing().entity(0).id), noted.id);
    window->undo();
    EXPECT_TRUE(drawing().imports().empty());
}

TEST_F(DeskWindow, AnImportThatWasNotAcceptedIsNotNoted) {
    Answers answers;
    answers.click(QStringLiteral("id2"));
    window->openFile(folder.example(QStringLiteral("cadastral.sim")));
    EXPECT_TRUE(drawing().imports().empty());
}

TEST_F(SameFile, AddKeepsBoth) {
    const std::size_t before = drawing().entityCount();
    importAgain(QStringLiteral("add"));
    EXPECT_EQ(drawing().entityCount(), 2 * before);
    EXPECT_EQ(drawing().imports().size(), 2U);
}

TEST_F(SameFile, CancelLeavesTheDrawingAsItWas) {
    const std::size_t before = drawing().entityCount();
    importAgain(QStringLiteral("cancel"));
    EXPECT_EQ(drawing().entityCount(), before);
    EXPECT_EQ(drawing().imports().size(), 1U);
}

TEST_F(SameFile, ReplacePutsTheNewOnesInPlaceAlsoInTheFile) {
    const std::size_t before = drawing().entityCount();
    const host::MdDbObjectId first = drawing().entity(0).id;
    const QString path = folder.path(QStringLiteral("a.gpkg"));
    window->questions().save = [&](QWidget*, const QString&, const QString&, const QString&) { return path; };
    ASSERT_TRUE(window->saveDrawing());
    importAgain(QStringLiteral("replace"));
    EXPECT_EQ(drawing().entityCount(), before);
    EXPECT_FALSE(drawing().findEntity(first));
    EXPECT_FALSE(window->action(Text::Undo)->isEnabled()) << "there is no way back";
    EXPECT_TRUE(window->isWindowModified());
    ASSERT_TRUE(window->saveDrawing());
    ASSERT_TRUE(window->openFile(path));
    EXPECT_EQ(drawing().entityCount(), before);
    EXPECT_EQ(drawing().imports().size(), 1U);
}

TEST_F(DeskWindow, TheStarGoesWhenStepsComeBackToWhatWasSaved) {
    import(folder.example(QStringLiteral("cadastral.sim")));
    const QString path = folder.path(QStringLiteral("a.gpkg"));
    window->questions().save = [&](QWidget*, const QString&, const QString&, const QString&) { return path; };
    ASSERT_TRUE(window->saveDrawing());
    import(folder.example(QStringLiteral("road.sim")));
    EXPECT_TRUE(window->isWindowModified());
    window->undo();
    EXPECT_FALSE(window->isWindowModified());
    window->redo();
    EXPECT_TRUE(window->isWindowModified());
    window->undo();
    window->undo();
    EXPECT_TRUE(window->isWindowModified()) << "less than was saved";
    window->redo();
    EXPECT_FALSE(window->isWindowModified());
    ASSERT_TRUE(window->openFile(path)) << "no question";
    EXPECT_FALSE(window->isWindowModified());
}

TEST_F(DeskWindow, ADrawingOpenedLaterLeadsFromItsLogToTheObjects) {
    const QString file = folder.example(QStringLiteral("road.sim"));
    import(folder.example(QStringLiteral("cadastral.sim")));
    import(file);
    const QString path = folder.path(QStringLiteral("a.gpkg"));
    window->questions().save = [&](QWidget*, const QString&, const QString&, const QString&) { return path; };
    ASSERT_TRUE(window->saveDrawing());
    window->newDrawing();
    EXPECT_TRUE(window->log().toPlainText().isEmpty());
    ASSERT_TRUE(window->openFile(path));
    EXPECT_EQ(window->imports().count(), 2);
    EXPECT_TRUE(window->log().toPlainText().contains(QStringLiteral("平面線形”中心線”")));
    const QTextBlock line = window->log().document()->find(QStringLiteral("平面線形”中心線”")).block();
    window->log().setTextCursor(QTextCursor(line));
    QTest::keyClick(&window->log(), Qt::Key_Return);
    ASSERT_TRUE(plan().selected());
    EXPECT_EQ(*plan().selected(), (PlanObject{PlanObject::Kind::Alignment, 0, {}}));
    EXPECT_FALSE(said(QStringLiteral("変更されています")));
    // The earlier one.
    window->imports().setCurrentIndex(1);
    emit window->imports().activated(1);
    EXPECT_TRUE(QString::fromStdString(window->log().path()).endsWith(QStringLiteral("cadastral_Input.log")));
    // A file that changed since is reported.
    window->imports().setCurrentIndex(0);
    emit window->imports().activated(0);
    QFile changed(file);
    ASSERT_TRUE(changed.open(QIODevice::Append));
    changed.write("\r\n");
    changed.close();
    window->showRecord(1);
    EXPECT_TRUE(said(QStringLiteral("road.sim は読み込み後に変更されています")));
}

TEST_F(DeskWindow, LinesThatWerePassedOverAreTold) {
    import(folder.write(QStringLiteral("a.sim"), "X01,1\r\nX02,1\r\nA00,\r\nA01,1,P,1.0,2.0,,\r\nA99,\r\n"));
    EXPECT_TRUE(said(QStringLiteral("2行を読み飛ばしました: 不明なレコード (X01, X02)")))
        << window->command().said().toStdString();
}

TEST_F(DeskWindow, RecordsThatAreReadOtherwiseThanTheyLookAreTold) {
    import(folder.write(QStringLiteral("a.sim"), "A00,\r\nA01,1,P,,2.0,,\r\nA01,2,Q,1.0,,,\r\nA01,3,R,--5,1.0,,\r\n"
                                                 "A99,\r\n"));
    const QString said = window->command().said();
    EXPECT_TRUE(said.contains(QStringLiteral("2行目: XまたはYが空欄のため、0で読みました。ほかに1件")))
        << said.toStdString();
    EXPECT_TRUE(said.contains(QStringLiteral("4行目: 数値を、数値でない文字の前までで読みました")))
        << said.toStdString();
    EXPECT_FALSE(said.contains(QStringLiteral("しました。ほかに0件")));
}

TEST_F(DeskWindow, AnAlignmentOffItsPointsIsToldWithWhatMayMendIt) {
    // A short arc between clothoids of A = 120, whose chord in millimetres gives its tangents only roughly, on a slope.
    const char* const points[] = {"2000.000,1000.000", "2009.933,1049.003", "2028.415,1118.484",
                                  "2029.549,1121.261", "2064.962,1183.831", "2097.592,1234.183"};
    QByteArray content = "A00,\r\n";
    for (int i = 0; i < 6; ++i) {
        content += "A01," + QByteArray::number(i + 1) + ",p," + points[i] + "," + QByteArray::number(i) + ",\r\n";
    }
    content += "A99,\r\nF00,1,1,CL,3,\r\nB01,1,,\r\nB01,2,,\r\nC02,120,0,200,\r\nB01,3,,\r\n"
               "C01,0,200,\r\nB01,4,,\r\nC02,120,200,0,\r\nB01,5,,\r\nB01,6,,\r\nF99,\r\n";
    const QString file = folder.write(QStringLiteral("a.sim"), content);
    import(file);
    const QString note = QStringLiteral("線形「CL」は路線の点から最大");
    EXPECT_TRUE(said(note)) << window->command().said().toStdString();
    EXPECT_TRUE(said(QStringLiteral("「クロソイドの接線交点を平面で求める」を選んで読み込み直すと直る")));
    // With that setting the next import has nothing more to report.
    window->undo();
    window->action(Text::PlanTangents)->trigger();
    const qsizetype before = window->command().said().count(note);
    import(file);
    EXPECT_EQ(window->command().said().count(note), before);
}

TEST_F(DeskWindow, TheLinesOfAFileInUtf8AreReadInUtf8) {
    const QByteArray text =
        QStringLiteral("A00,座標,\r\nA01,1,多角点１,1.0,2.0,,\r\nA01,2,三角点乙,x,2.0,,\r\nA99,\r\n").toUtf8();
    import(folder.write(QStringLiteral("a.sim"), text));
    window->showRecord(3);
    EXPECT_TRUE(window->source().toPlainText().contains(QStringLiteral("三角点乙")));
    EXPECT_FALSE(window->preview().isVisible());
    EXPECT_TRUE(window->preview().toPlainText().contains(QStringLiteral("多角点１")));
    EXPECT_TRUE(window->preview().toPlainText().contains(QStringLiteral("UTF-8")));
}

TEST(SourceOfTheDesk, LinesOfUtf16AreRead) {
    Folder folder;
    QByteArray bytes("\xff\xfe", 2);
    for (const QChar letter : QStringLiteral("A00,\r\nA01,1,点,1,2,\r\n")) {
        bytes.append(static_cast<char>(letter.unicode() & 0xff));
        bytes.append(static_cast<char>(letter.unicode() >> 8));
    }
    const auto excerpt = readSource(folder.write(QStringLiteral("a.sim"), bytes).toStdString(), 2, 5);
    ASSERT_TRUE(excerpt);
    EXPECT_EQ(excerpt->record.text, "A01,1,点,1,2,");
    EXPECT_EQ(excerpt->record.section, "A00,");
}

} // namespace
} // namespace fenmark::desk::test
