// Steps taken back and made again.
#include "desk_test_support.h"

namespace fenmark::desk::test {
namespace {

struct Redo : DeskWindow {
    void importBoth() {
        import(folder.example(QStringLiteral("cadastral.sim")));
        import(folder.example(QStringLiteral("road.sim")));
    }
    bool canRedo() { return window->action(Text::Redo)->isEnabled(); }
};

TEST_F(Redo, BringsTheObjectsOfAnImportBackUnderTheirIdentifiers) {
    importBoth();
    const std::size_t entities = drawing().entityCount();
    const host::MdDbObjectId last = drawing().entity(entities - 1).id;
    const host::MdDbObjectId road = drawing().alignment(0).id;
    const QString log = window->log().toPlainText();
    EXPECT_FALSE(canRedo());
    press(Qt::Key_Z, Qt::ControlModifier);
    press(Qt::Key_Z, Qt::ControlModifier);
    ASSERT_EQ(drawing().entityCount(), 0U);
    EXPECT_TRUE(window->log().toPlainText().isEmpty());
    press(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(drawing().alignmentCount(), 0U);
    EXPECT_GT(drawing().entityCount(), 0U);
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    ASSERT_EQ(drawing().entityCount(), entities);
    EXPECT_EQ(drawing().entity(entities - 1).id, last);
    EXPECT_EQ(drawing().alignment(0).id, road);
    EXPECT_EQ(plan().index().size(), entities);
    EXPECT_EQ(window->log().toPlainText(), log);
    EXPECT_FALSE(canRedo());
    EXPECT_TRUE(window->action(Text::Undo)->isEnabled());
}

TEST_F(Redo, IsForgottenByANewStep) {
    importBoth();
    window->undo();
    ASSERT_TRUE(canRedo());
    import(folder.example(QStringLiteral("road.sim")));
    EXPECT_FALSE(canRedo());
    window->undo();
    window->session().setZone(9);
    window->redo();
    EXPECT_TRUE(said(QStringLiteral("やり直す操作がありません")));
    EXPECT_EQ(drawing().alignmentCount(), 0U);
}

TEST_F(Redo, WorksAcrossASaveAndTheFileFollows) {
    importBoth();
    const QString path = folder.path(QStringLiteral("a.gpkg"));
    window->questions().save = [&](QWidget*, const QString&, const QString&, const QString&) { return path; };
    ASSERT_TRUE(window->saveDrawing());
    const std::size_t entities = drawing().entityCount();
    window->undo();
    ASSERT_TRUE(window->saveDrawing());
    window->redo();
    EXPECT_TRUE(window->isWindowModified());
    ASSERT_TRUE(window->saveDrawing());
    EXPECT_FALSE(window->isWindowModified());
    ASSERT_TRUE(window->openFile(path));
    EXPECT_EQ(drawing().entityCount(), entities);
    EXPECT_EQ(drawing().alignmentCount(), 3U);
    EXPECT_FALSE(canRedo()) << "another drawing, other steps";
}

TEST_F(Redo, TellsWhatItWillMakeAgainInBothLanguages) {
    window->session().setZone(9);
    window->session().addLayer("測点");
    window->undo();
    EXPECT_EQ(window->action(Text::Redo)->text(), QStringLiteral("やり直し(&R): 画層の追加"));
    window->setLanguage(Language::English);
    EXPECT_EQ(window->action(Text::Redo)->text(), QStringLiteral("&Redo Add Layer"));
    type(QStringLiteral("Redo"));
    EXPECT_TRUE(said(QStringLiteral("Redone: Add Layer")));
    EXPECT_TRUE(drawing().findLayer("測点"));
    window->undo();
    window->undo();
    EXPECT_EQ(drawing().zone(), 0);
    type(QStringLiteral("redo"));
    EXPECT_EQ(drawing().zone(), 9);
}

} // namespace
} // namespace fenmark::desk::test
