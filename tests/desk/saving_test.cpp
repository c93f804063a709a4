// Saving and exporting where something stands in the way: every failure is told, and no file is lost by it.
#include "desk_test_support.h"

#include "desk/paper/paper_dialog.h"
#include "desk/window/workbench.h"
#include "drawing/geopackage/drawing_store.h"
#include "drawing/geopackage/drawing_texts.h"

#include <QLineEdit>

#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <utility>

namespace fenmark::desk::test {
namespace {

struct Saving : DeskWindow {
    QString saved(const char* name) {
        import(folder.example(QStringLiteral("cadastral.sim")));
        const QString path = folder.path(QLatin1String(name));
        answer(path);
        EXPECT_TRUE(window->saveDrawing());
        return path;
    }
    void answer(const QString& path) {
        window->questions().save = [path](QWidget*, const QString&, const QString&, const QString&) { return path; };
    }
    // A symbolic and a hard one.
    std::pair<QString, QString> linksTo(const QString& path) {
        const QString link = folder.path(QStringLiteral("link.gpkg"));
        const QString hard = folder.path(QStringLiteral("hard.gpkg"));
        EXPECT_TRUE(QFile::link(path, link));
        std::filesystem::create_hard_link(path.toStdString(), hard.toStdString());
        return {link, hard};
    }
    void addLayer(const char* name) {
        window->questions().name = [name](QWidget*, const QString&, const QString&) { return QLatin1String(name); };
        window->addLayer();
    }
    void setAuthor(const QString& author) {
        window->workbench().beforePaper = [&](PaperDialog& dialog) {
            auto* line = dialog.findChild<QLineEdit*>(QStringLiteral("title/author"));
            line->setText(author);
            emit line->editingFinished();
            return false;
        };
        window->workbench().showPaper(PaperKind::Plan);
    }
    static void addLayerByAnotherProgram(const QString& path, const char* name) {
        drawing::Drawing other;
        drawing::DrawingStore store;
        ASSERT_TRUE(store.open(path.toStdString(), other));
        other.addLayer(name);
        ASSERT_TRUE(store.save(path.toStdString(), other));
    }
    static bool holdsLayer(const QString& path, const char* layer) {
        drawing::Drawing drawing;
        EXPECT_TRUE(drawing::DrawingStore().open(path.toStdString(), drawing));
        return drawing.findLayer(layer).has_value();
    }
    static QByteArray content(const QString& path) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        return file.readAll();
    }
    // A save that must fail and be told; what it tells.
    QString refusal(bool (MainWindow::*save)()) {
        Answers answers;
        answers.ok();
        EXPECT_FALSE((window.get()->*save)());
        EXPECT_TRUE(window->isWindowModified());
        return answers.said;
    }
};

// A limit on the size of files stands for the disk.
class FullDisk {
  public:
    explicit FullDisk(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        EXPECT_EQ(getrlimit(RLIMIT_FSIZE, &usual_), 0);
        const rlimit limit{bytes, usual_.rlim_max};
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &usual_);
        std::signal(SIGXFSZ, handler_);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

  private:
    rlimit usual_{};
    void (*handler_)(int);
};

TEST_F(Saving, NothingReplacesTheFileThatWasImportedOrItsLog) {
    const QString source = folder.example(QStringLiteral("road.sim"));
    const QString log = folder.path(QStringLiteral("road_Input.log"));
    const QByteArray before = content(source);
    import(source);
    const QByteArray logged = content(log);
    ASSERT_FALSE(logged.isEmpty());
    for (const auto& [name, to] : {std::pair("a.svg", source), std::pair("a.csv", source), std::pair("a.dxf", source),
                                   std::pair("a.pdf", source), std::pair("a.gpkg", source), std::pair("l.svg", log),
                                   std::pair("l.pdf", log), std::pair("l.gpkg", log)}) {
        const QString link = folder.path(QLatin1String(name));
        ASSERT_TRUE(QFile::link(to, link));
        answer(link);
        QString said;
        if (link.endsWith(QStringLiteral(".gpkg"))) {
            said = refusal(&MainWindow::saveDrawing);
        } else if (link.endsWith(QStringLiteral(".pdf"))) {
            window->workbench().beforePaper = [&](PaperDialog& dialog) {
                dialog.askPath = [&](QWidget*, const QString&, const QString&, const QString&) { return link; };
                EXPECT_FALSE(dialog.savePdf());
                said = dialog.message();
                return false;
            };
            window->workbench().showPaper(PaperKind::Plan);
        } else {
            Answers answers;
            answers.ok();
            window->exportDrawing();
            said = answers.said;
        }
        EXPECT_TRUE(said.contains(link)) << name << ": " << said.toStdString();
        EXPECT_EQ(said.contains(QStringLiteral("ログ")), to == log) << said.toStdString();
        EXPECT_EQ(content(source), before) << name;
        EXPECT_EQ(content(log), logged) << name;
    }
    // Changed since, it is no longer what was imported.
    folder.write(QStringLiteral("road.sim"), "somebody's");
    answer(folder.path(QStringLiteral("a.csv")));
    window->exportDrawing();
    EXPECT_NE(content(source), "somebody's");
}

TEST_F(Saving, APrintIntoAFileReplacesNoMoreThanAPdfDoesAndTellsAFullDisk) {
    const QString drawing = saved("a.gpkg");
    const QString source = folder.path(QStringLiteral("cadastral.sim"));
    const QString log = folder.path(QStringLiteral("cadastral_Input.log"));
    const QString free = folder.path(QStringLiteral("printed.pdf"));
    for (const QString& target : {drawing, source, log, QStringLiteral("/dev/full"), free}) {
        const QByteArray before = target == drawing || target == source || target == log ? content(target) : "";
        window->workbench().beforePaper = [&](PaperDialog& dialog) {
            dialog.askPrinter = [&](QPrinter& printer, QWidget*) {
                printer.setOutputFormat(QPrinter::PdfFormat);
                printer.setOutputFileName(target);
                return true;
            };
            EXPECT_EQ(dialog.print(), target == free) << target.toStdString();
            EXPECT_TRUE(dialog.message().contains(target)) << dialog.message().toStdString();
            return false;
        };
        window->workbench().showPaper(PaperKind::Plan);
        if (!before.isEmpty()) {
            EXPECT_EQ(content(target), before) << target.toStdString();
        }
    }
    EXPECT_TRUE(content(free).startsWith("%PDF-"));
}

TEST_F(Saving, ALinkAtTheNameOfALogLeavesTheDrawingBehindItAsItIs) {
    const QString drawing = saved("a.gpkg");
    const QByteArray before = content(drawing);
    const auto [soft, hard] = linksTo(drawing);
    const QString road = folder.example(QStringLiteral("road.sim"));
    const QString log = folder.path(QStringLiteral("road_Input.log"));
    for (const QString& link : {soft, hard}) {
        QFile::remove(log);
        ASSERT_TRUE(QFile::rename(link, log));
        import(road);
        EXPECT_EQ(content(drawing), before) << link.toStdString();
        EXPECT_TRUE(content(log).startsWith("-----")) << link.toStdString();
    }
    EXPECT_TRUE(window->saveDrawing());
}

TEST_F(Saving, NoDrawingBearsTheNameOfALog) {
    import(folder.example(QStringLiteral("road.sim")));
    const QString drawing = folder.path(QStringLiteral("a.gpkg"));
    answer(drawing);
    ASSERT_TRUE(window->saveDrawing());
    const QString log = folder.path(QStringLiteral("other_Input.log"));
    const QString link = folder.path(QStringLiteral("b.gpkg"));
    ASSERT_TRUE(QFile::copy(drawing, log) && QFile::link(log, link));
    for (const QString& name : {log, link}) {
        for (const Outcome& outcome :
             {window->session().open(name.toStdString()), window->session().save(name.toStdString())}) {
            EXPECT_FALSE(outcome) << name.toStdString();
            EXPECT_NE(outcome.message.english.find("the name of an import's log"), std::string::npos);
        }
        EXPECT_EQ(window->session().path(), drawing.toStdString());
        EXPECT_EQ(content(log), content(drawing));
    }
}

TEST_F(Saving, WhereALogHasNoRoomTheOldOneStaysAndTheImportIsNoted) {
    const QString source = folder.example(QStringLiteral("cadastral.sim"));
    import(source);
    const QString log = folder.path(QStringLiteral("cadastral_Input.log"));
    const QByteArray before = content(log);
    {
        const FullDisk full(100);
        Answers answers;
        answers.accept().click(QStringLiteral("keep"));
        window->openFile(source);
    }
    EXPECT_EQ(content(log), before);
    EXPECT_EQ(window->session().drawing().imports().size(), 2U);
}

TEST_F(Saving, WhatAnotherProgramImportedMeanwhileStaysAndTheOwnWorkGoesElsewhere) {
    const QString path = saved("a.gpkg");
    addLayerByAnotherProgram(path, "theirs");
    addLayer("ours");
    EXPECT_TRUE(refusal(&MainWindow::saveDrawing).contains(path));
    EXPECT_TRUE(refusal(&MainWindow::saveDrawingAs).contains(path)) << "under its own name";
    EXPECT_TRUE(holdsLayer(path, "theirs"));
    const QString elsewhere = folder.path(QStringLiteral("b.gpkg"));
    answer(elsewhere);
    EXPECT_TRUE(window->saveDrawingAs());
    EXPECT_TRUE(holdsLayer(elsewhere, "ours"));
    EXPECT_TRUE(holdsLayer(path, "theirs"));
    EXPECT_FALSE(window->isWindowModified());
}

// By any name that leads to it the open drawing is the same file, and "save as" is no way to lose what it holds.
// Nothing is left to be written, and yet the drawing is in no file.
TEST_F(Saving, AFileThatNoLongerHoldsTheUnchangedDrawingIsTold) {
    const QString path = saved("a.gpkg");
    const QByteArray whole = content(path);
    const QString other = folder.path(QStringLiteral("b.gpkg"));
    drawing::Drawing another;
    another.addPoint({1.0, 2.0, 3.0}, 0);
    ASSERT_TRUE(drawing::DrawingStore().save(other.toStdString(), another));
    for (const QByteArray& now : {QByteArray("somebody's"), whole.left(5000), content(other)}) {
        folder.write(QStringLiteral("a.gpkg"), now);
        Answers answers;
        answers.ok();
        EXPECT_FALSE(window->saveDrawing()) << now.left(20).toStdString();
        EXPECT_TRUE(answers.said.contains(path)) << answers.said.toStdString();
        EXPECT_EQ(content(path), now);
    }
    folder.write(QStringLiteral("a.gpkg"), whole);
    EXPECT_TRUE(window->saveDrawing());
    QFile::remove(path);
    EXPECT_TRUE(window->saveDrawing());
    EXPECT_TRUE(holdsLayer(path, "0")) << "made anew";
}

TEST_F(Saving, SavingAsALinkToTheOpenDrawingIsSavingIt) {
    const QString path = saved("a.gpkg");
    const auto [link, hard] = linksTo(path);
    for (const auto& [name, layer] : {std::pair(link, "by link"), std::pair(hard, "by hard link")}) {
        addLayer(layer);
        answer(name);
        EXPECT_TRUE(window->saveDrawingAs());
        EXPECT_TRUE(holdsLayer(path, layer));
        EXPECT_EQ(window->session().path(), path.toStdString());
    }
    EXPECT_EQ(QFile::symLinkTarget(link), path);
    EXPECT_TRUE(std::filesystem::equivalent(path.toStdString(), hard.toStdString()));

    addLayerByAnotherProgram(path, "theirs");
    addLayer("ours");
    for (const QString& name : {link, hard}) {
        answer(name);
        EXPECT_TRUE(refusal(&MainWindow::saveDrawingAs).contains(path)) << name.toStdString();
        EXPECT_TRUE(holdsLayer(path, "theirs")) << name.toStdString();
    }
}

TEST_F(Saving, AFullDiskIsToldAndTheNextSaveIsWhole) {
    const QString path = saved("a.gpkg");
    const QByteArray before = content(path);
    import(folder.example(QStringLiteral("road.sim")));
    const std::size_t entities = drawing().entityCount();
    {
        const FullDisk full(static_cast<rlim_t>(before.size()));
        EXPECT_TRUE(refusal(&MainWindow::saveDrawing).contains(path));
    }
    EXPECT_EQ(content(path), before);
    ASSERT_TRUE(window->saveDrawing());
    ASSERT_TRUE(window->openFile(path));
    EXPECT_EQ(drawing().entityCount(), entities);
}

TEST_F(Saving, DrawingAndTitleBlockAreWrittenTogetherOrNotAtAll) {
    const QString path = saved("a.gpkg");
    const QByteArray before = content(path);
    const drawing::DrawingTexts texts{{"title/author", std::string(30'000, 'x')}};
    setAuthor(QString::fromStdString(texts.at("title/author")));
    addLayer("L");
    const QString elsewhere = folder.path(QStringLiteral("b.gpkg"));
    {
        const FullDisk full(static_cast<rlim_t>(before.size()) + 20'000); // room for the drawing alone
        EXPECT_TRUE(refusal(&MainWindow::saveDrawing).contains(path));
        EXPECT_EQ(content(path), before);
        answer(elsewhere);
        EXPECT_TRUE(refusal(&MainWindow::saveDrawingAs).contains(elsewhere));
        EXPECT_FALSE(QFile::exists(elsewhere));
    }
    ASSERT_TRUE(window->saveDrawing());
    ASSERT_TRUE(window->saveDrawingAs());
    for (const QString& file : {path, elsewhere}) {
        EXPECT_EQ(drawing::readTexts(file.toStdString()), texts);
        EXPECT_TRUE(holdsLayer(file, "L"));
    }
}

TEST_F(Saving, AFileThatCannotBeOpenedLeavesTheTitleBlockOfTheOpenDrawing) {
    const QString path = saved("a.gpkg");
    setAuthor(QStringLiteral("測量士"));
    ASSERT_TRUE(window->saveDrawing());
    const drawing::DrawingTexts texts = window->workbench().texts();
    ASSERT_TRUE(QFile::remove(path));
    Answers answers;
    answers.ok();
    EXPECT_FALSE(window->openFile(folder.write(QStringLiteral("bad.gpkg"), "no drawing")));
    EXPECT_EQ(window->workbench().texts(), texts);
    ASSERT_TRUE(window->saveDrawing());
    EXPECT_EQ(drawing::readTexts(path.toStdString()), texts);
}

TEST_F(Saving, ADrawingWhoseFileIsFoundToBeAnotherIsUnsaved) {
    const QString path = saved("a.gpkg");
    ASSERT_FALSE(window->isWindowModified());
    folder.write(QStringLiteral("a.gpkg"), "somebody's");
    EXPECT_TRUE(refusal(&MainWindow::saveDrawing).contains(path));
    Answers answers;
    answers.click(QStringLiteral("cancel"));
    EXPECT_FALSE(window->close()) << "it is nowhere else";
}

TEST_F(Saving, ALinkStaysALink) {
    const QString path = saved("a.gpkg");
    const auto [link, hard] = linksTo(path);
    for (const auto& [name, layer] : {std::pair(link, "by link"), std::pair(hard, "by hard link")}) {
        ASSERT_TRUE(window->openFile(name));
        window->session().addLayer(layer);
        ASSERT_TRUE(window->saveDrawing());
        EXPECT_TRUE(holdsLayer(path, layer));
    }
    EXPECT_EQ(QFile::symLinkTarget(link), path);
    EXPECT_TRUE(std::filesystem::equivalent(path.toStdString(), hard.toStdString()));
}

TEST_F(Saving, AFileOrFolderThatMayNotBeWrittenIsTold) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "root may write everything";
    }
    const QString path = saved("a.gpkg");
    addLayer("unsaved");
    ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner));
    EXPECT_TRUE(refusal(&MainWindow::saveDrawing).contains(path));
    ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner));
    const QString place = folder.path(QString());
    ASSERT_TRUE(QFile::setPermissions(place, QFile::ReadOwner | QFile::ExeOwner));
    refusal(&MainWindow::saveDrawing);
    ASSERT_TRUE(QFile::setPermissions(place, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    EXPECT_TRUE(window->saveDrawing());
    EXPECT_TRUE(holdsLayer(path, "unsaved"));
}

} // namespace
} // namespace fenmark::desk::test
