// Copies of what was not saved: made in time, offered by the next run, gone when they are not needed.
#include "desk/window/end_watch.h"
#include "desk/window/workbench.h"
#include "desk_test_support.h"
#include "drawing/geopackage/drawing_texts.h"
#include "platform/files.h"
#include "support/drawing_texts_support.h"
#include "support/temporary_folder.h"

#include <QDir>
#include <QLockFile>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <string>
#include <tuple>
#include <vector>

namespace fenmark::desk::test {
namespace {

struct Recovering : DeskWindow {
    QString place() const { return folder.path(QStringLiteral("recovery")); }
    QStringList copies() const { return QDir(place()).entryList({QStringLiteral("*.gpkg")}, QDir::Files); }
    void startKeeping() {
        window->recovery().setFolder(place());
        window->recovery().start(window->session(), true);
    }
};

TEST_F(Recovering, ACopyIsKeptWhileThereIsSomethingToLoseAndGoesWithTheSave) {
    startKeeping();
    EXPECT_FALSE(window->recovery().keepNow()) << "nothing to lose";
    import(folder.example(QStringLiteral("cadastral.sim")));
    EXPECT_TRUE(window->recovery().keepNow());
    EXPECT_EQ(copies().size(), 1);
    EXPECT_TRUE(window->isWindowModified()) << "a copy is no save";
    EXPECT_TRUE(window->session().hasChanges());
    EXPECT_TRUE(window->recovery().left().empty()) << "its run is at work";
    const QString path = folder.path(QStringLiteral("a.gpkg"));
    window->questions().save = [&](QWidget*, const QString&, const QString&, const QString&) { return path; };
    ASSERT_TRUE(window->saveDrawing());
    EXPECT_TRUE(copies().isEmpty());
    // What is saved after a copy is whole.
    const std::size_t entities = drawing().entityCount();
    import(folder.example(QStringLiteral("road.sim")));
    EXPECT_TRUE(window->recovery().keepNow());
    const std::size_t more = drawing().entityCount();
    ASSERT_TRUE(window->saveDrawing());
    ASSERT_TRUE(window->openFile(path));
    EXPECT_EQ(drawing().entityCount(), more);
    EXPECT_GT(more, entities);
}

TEST_F(Recovering, TheNextRunOffersWhatWasLeft) {
    startKeeping();
    import(folder.example(QStringLiteral("cadastral.sim")));
    const std::size_t entities = drawing().entityCount();
    ASSERT_TRUE(window->recovery().keepNow());
    // As after a crash: the copy stays and nobody holds its lock.
    make(Language::Japanese);
    startKeeping();
    ASSERT_EQ(window->recovery().left().size(), 1U);
    {
        Answers answers;
        answers.click(QStringLiteral("later"));
        window->offerRecovery();
    }
    EXPECT_EQ(drawing().entityCount(), 0U);
    {
        Answers answers;
        answers.click(QStringLiteral("recover"));
        window->offerRecovery();
    }
    EXPECT_EQ(drawing().entityCount(), entities);
    EXPECT_TRUE(window->session().path().empty());
    EXPECT_TRUE(window->isWindowModified());
    EXPECT_EQ(copies().size(), 1) << "that of this run";
    EXPECT_TRUE(window->recovery().left().empty());
    window->recovery().forget();
}

TEST_F(Recovering, ACopyCanBeThrownAway) {
    startKeeping();
    import(folder.example(QStringLiteral("cadastral.sim")));
    ASSERT_TRUE(window->recovery().keepNow());
    make(Language::Japanese);
    startKeeping();
    Answers answers;
    answers.click(QStringLiteral("discard"));
    window->offerRecovery();
    EXPECT_TRUE(QDir(place()).entryList({QStringLiteral("*.gpkg")}, QDir::Files).isEmpty());
}

TEST_F(Recovering, ATerminationKeepsACopy) {
    startKeeping();
    import(folder.example(QStringLiteral("cadastral.sim")));
    bool ended = false;
    const EndWatch watch([&] {
        ended = true;
        window->closeAtOnce();
    });
    std::raise(SIGTERM);
    ASSERT_TRUE(QTest::qWaitFor([&] { return ended; }, kPatience));
    EXPECT_EQ(copies().size(), 1);
    EXPECT_TRUE(window->close()) << "without a question";
    EXPECT_EQ(copies().size(), 1);
}

TEST_F(Recovering, TheFileThatARunIsToBeginWithComesBehindTheQuestion) {
    const QString path = folder.path(QStringLiteral("empty.gpkg"));
    ASSERT_TRUE(window->session().save(path.toStdString()));
    window->newDrawing();
    startKeeping();
    import(folder.example(QStringLiteral("cadastral.sim")));
    const std::size_t entities = drawing().entityCount();
    ASSERT_TRUE(window->recovery().keepNow());
    make(Language::Japanese);
    startKeeping();
    bool asked = false;
    Answers answers;
    answers
        .then([&](QWidget& dialog) {
            EXPECT_TRUE(window->session().path().empty()) << "opened beneath the question";
            dialog.findChild<QPushButton*>(QStringLiteral("recover"))->click();
        })
        .then([&](QWidget& dialog) {
            EXPECT_EQ(drawing().entityCount(), entities);
            asked = true;
            dialog.findChild<QPushButton*>(QStringLiteral("cancel"))->click();
        });
    window->begin(path);
    ASSERT_TRUE(QTest::qWaitFor([&] { return asked; }, kPatience));
    QApplication::processEvents();
    EXPECT_EQ(drawing().entityCount(), entities);
    window->recovery().forget();
}

TEST_F(Recovering, WhatIsUnsavedIsAskedForBeforeACopyTakesItsPlace) {
    startKeeping();
    import(folder.example(QStringLiteral("cadastral.sim")));
    ASSERT_TRUE(window->recovery().keepNow());
    make(Language::Japanese);
    startKeeping();
    window->session().addLayer("unsaved");
    Answers answers;
    answers.click(QStringLiteral("recover")).click(QStringLiteral("cancel"));
    window->offerRecovery();
    EXPECT_TRUE(drawing().findLayer("unsaved"));
    EXPECT_EQ(window->recovery().left().size(), 1U);
}

TEST_F(Recovering, ATerminationInsideADialogKeepsACopyToo) {
    startKeeping();
    import(folder.example(QStringLiteral("cadastral.sim")));
    Answers answers;
    answers.then([&](QWidget& dialog) {
        window->closeAtOnce();
        dialog.close();
    });
    window->openFile(folder.example(QStringLiteral("road.sim")));
    EXPECT_EQ(copies().size(), 1);
}

TEST_F(Recovering, ACopyHoldsTheTitleBlock) {
    startKeeping();
    import(folder.example(QStringLiteral("cadastral.sim")));
    const QString path = folder.path(QStringLiteral("a.gpkg"));
    window->questions().save = [&](QWidget*, const QString&, const QString&, const QString&) { return path; };
    ASSERT_TRUE(window->saveDrawing());
    ASSERT_TRUE(drawing::writeTexts(path.toStdString(), {{"title/author", "測量士"}}));
    ASSERT_TRUE(window->openFile(path));
    window->session().addLayer("unsaved");
    ASSERT_TRUE(window->recovery().keepNow());
    make(Language::Japanese);
    startKeeping();
    {
        Answers answers;
        answers.click(QStringLiteral("recover"));
        window->offerRecovery();
    }
    EXPECT_EQ(window->workbench().texts().at("title/author"), "測量士");
    // Saved over the file of old, it leaves the title block there.
    window->questions().save = [&](QWidget*, const QString&, const QString&, const QString&) { return path; };
    ASSERT_TRUE(window->saveDrawing());
    EXPECT_EQ(drawing::readTexts(path.toStdString()).at("title/author"), "測量士");
}

TEST_F(Recovering, AFolderThatCannotBeUsedIsToldAndTriedAgain) {
    const QString inTheWay = folder.write(QStringLiteral("recovery"), "a file");
    startKeeping();
    EXPECT_TRUE(said(inTheWay)) << window->command().said().toStdString();
    window->session().addLayer("unsaved");
    EXPECT_FALSE(window->recovery().keepNow());
    EXPECT_EQ(window->command().said().count(inTheWay), 1);
    ASSERT_TRUE(QFile::remove(inTheWay));
    EXPECT_TRUE(window->recovery().keepNow());
    EXPECT_EQ(copies().size(), 1);
    ASSERT_TRUE(QFile::remove(place() + QLatin1Char('/') + copies().first()));
    EXPECT_TRUE(window->recovery().keepNow());
    EXPECT_EQ(copies().size(), 1) << "somebody cleared the folder";
    window->recovery().forget();
}

TEST_F(Recovering, ATerminationKeepsWhatChangedBesideTheDrawing) {
    startKeeping();
    const QString path = folder.path(QStringLiteral("a.gpkg"));
    window->session().addLayer("saved");
    window->questions().save = [&](QWidget*, const QString&, const QString&, const QString&) { return path; };
    ASSERT_TRUE(window->saveDrawing());
    ASSERT_TRUE(window->openFile(path));
    ASSERT_TRUE(window->workbench().addBackground(
        folder.write(QStringLiteral("a.dxf"), "0\nSECTION\n2\nENTITIES\n0\nPOINT\n10\n1\n20\n2\n0\nENDSEC\n0\nEOF\n")));
    const drawing::DrawingTexts texts = window->workbench().texts();
    ASSERT_EQ(texts.size(), 1U);
    window->closeAtOnce();
    EXPECT_EQ(copies().size(), 1);
    make(Language::Japanese);
    startKeeping();
    Answers answers;
    answers.click(QStringLiteral("recover"));
    window->offerRecovery();
    EXPECT_TRUE(drawing().findLayer("saved"));
    EXPECT_EQ(window->workbench().texts(), texts);
    window->recovery().forget();
}

// Reading a pipe would wait for ever, and a device may never end.
TEST_F(Recovering, WhatIsNoFileInTheFolderIsNotRead) {
    startKeeping();
    const QDir kept(place());
    for (const auto& [name, ending] :
         {std::tuple("1", ".gpkg"), std::tuple("2", ".name"), std::tuple("3", ".lock"), std::tuple("4", ".none")}) {
        folder.write(QStringLiteral("recovery/") + QLatin1String(name) + QStringLiteral(".gpkg"), "no drawing");
        const QString pipe = kept.filePath(QLatin1String(name) + QLatin1String(ending));
        QFile::remove(pipe);
        ASSERT_EQ(mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
    }
    folder.write(QStringLiteral("recovery/4.name"), QByteArray(1'000'000, 'x'));
    std::vector<std::string> left;
    for (const LeftDrawing& found : window->recovery().left()) {
        EXPECT_LE(found.name.size(), 10'000) << found.path.toStdString();
        if (found.oddLock.isEmpty()) {
            left.push_back(QFileInfo(found.path).fileName().toStdString());
        }
    }
    std::sort(left.begin(), left.end());
    EXPECT_EQ(left, (std::vector<std::string>{"2.gpkg", "4.gpkg"}));
}

// On a full disk, say. A folder in the place of the name stands for one here.
TEST_F(Recovering, ACopyThatCannotBeWrittenIsToldOnceAndTheOneBeforeStays) {
    startKeeping();
    window->session().addLayer("first");
    ASSERT_TRUE(window->recovery().keepNow());
    ASSERT_EQ(copies().size(), 1);
    const QString copy = QDir(place()).filePath(copies().value(0));
    const std::string before = fenmark::test::readFile(copy.toStdString());
    const QString name = copy.chopped(5) + QStringLiteral(".name");
    const QString words = window->texts()(Text::RecoverNotKept).section(QLatin1Char('%'), 0, 0);
    std::string kept = before;
    for (int round = 1; round <= 2; ++round) {
        QFile::remove(name);
        ASSERT_TRUE(QDir().mkpath(name + QStringLiteral("/kept")));
        window->session().addLayer("more " + std::to_string(round));
        EXPECT_FALSE(window->recovery().keepNow());
        EXPECT_FALSE(window->recovery().keepNow());
        EXPECT_EQ(window->command().said().count(words), round) << "once each time that it begins to fail";
        EXPECT_EQ(fenmark::test::readFile(copy.toStdString()), kept);
        ASSERT_TRUE(QDir(name).removeRecursively());
        EXPECT_TRUE(window->recovery().keepNow());
        EXPECT_NE(fenmark::test::readFile(copy.toStdString()), kept);
        kept = fenmark::test::readFile(copy.toStdString());
    }
    EXPECT_EQ(QDir(place()).entryList(QDir::Files | QDir::Hidden).size(), 3) << "copy, name and lock";
    window->recovery().forget();
}

TEST_F(Recovering, ACopyOfWhichTheLockIsNoneIsToldAndLeftAlone) {
    startKeeping();
    QDir kept(place());
    ASSERT_EQ(mkfifo(kept.filePath(QStringLiteral("1.lock")).toLocal8Bit().constData(), 0600), 0);
    ASSERT_TRUE(kept.mkdir(QStringLiteral("2.lock")));
    ASSERT_TRUE(QFile::link(kept.filePath(QStringLiteral("nothing")), kept.filePath(QStringLiteral("3.lock"))));
    folder.write(QStringLiteral("recovery/4.lock"), "somebody's");
    for (const char* name : {"1", "2", "3", "4"}) {
        const std::string copy = kept.filePath(QLatin1String(name)).toStdString() + ".gpkg";
        ASSERT_TRUE(window->session().writeCopy(copy));
    }
    window->offerRecovery(); // no question: it would wait for an answer
    for (const char* name : {"1", "2", "3", "4"}) {
        EXPECT_TRUE(said(kept.filePath(QLatin1String(name) + QStringLiteral(".gpkg")))) << name;
        EXPECT_TRUE(said(kept.filePath(QLatin1String(name) + QStringLiteral(".lock")))) << name;
    }
    EXPECT_EQ(copies().size(), 4);
    EXPECT_EQ(QFileInfo(kept.filePath(QStringLiteral("4.lock"))).size(), 10) << "left as it was";

    ASSERT_TRUE(kept.remove(QStringLiteral("1.lock")));
    Answers answers;
    answers.click(QStringLiteral("discard"));
    window->offerRecovery();
    EXPECT_EQ(copies().size(), 3) << "its lock gone, it is asked about";
}

TEST_F(Recovering, TheCopyOfARunThatWasKilledIsOfferedAndThatOfOneAtWorkIsNot) {
    startKeeping();
    const QString stem = folder.path(QStringLiteral("recovery/1"));
    ASSERT_TRUE(window->session().writeCopy((stem + QStringLiteral(".gpkg")).toStdString()));
    std::array<int, 2> hold{};
    std::array<int, 2> held{};
    ASSERT_EQ(pipe(hold.data()), 0);
    ASSERT_EQ(pipe(held.data()), 0);
    const pid_t run = fork();
    ASSERT_GE(run, 0);
    char byte = 0;
    if (run == 0) {
        close(hold[1]);
        QLockFile lock(stem + QStringLiteral(".lock"));
        byte = lock.tryLock() ? 'y' : 'n';
        (void)!write(held[1], &byte, 1);
        (void)!read(hold[0], &byte, 1); // until it is killed
        _exit(0);
    }
    EXPECT_EQ(read(held[0], &byte, 1), 1);
    EXPECT_EQ(byte, 'y');
    EXPECT_TRUE(window->recovery().left().empty());
    EXPECT_TRUE(QFile::exists(stem + QStringLiteral(".lock")));
    kill(run, SIGKILL);
    waitpid(run, nullptr, 0);
    EXPECT_EQ(window->recovery().left().size(), 1U);
    for (const int end : {hold[0], hold[1], held[0], held[1]}) {
        close(end);
    }
}

// The process that a lock names may be another one by now, even this one, and the computer may have another name.
TEST_F(Recovering, ACopyIsOfferedWhatsoeverItsLockNames) {
    startKeeping();
    QFile own(QDir(place()).filePath(QDir(place()).entryList({QStringLiteral("*.lock")}).value(0)));
    ASSERT_TRUE(own.open(QIODevice::ReadOnly));
    const QByteArray lock = own.readAll();
    QByteArrayList lines = lock.split('\n');
    ASSERT_GE(lines.size(), 4) << lock.toStdString();
    lines[2] = "elsewhere";
    lines[3] = "another";
    folder.write(QStringLiteral("recovery/1.lock"), lock);
    folder.write(QStringLiteral("recovery/2.lock"), lines.join('\n'));
    for (const char* name : {"/1.gpkg", "/2.gpkg"}) {
        ASSERT_TRUE(window->session().writeCopy((place() + QLatin1String(name)).toStdString()));
    }
    EXPECT_EQ(window->recovery().left().size(), 2U);
}

TEST_F(Recovering, WhatARunLeftThatWasKilledBeforeItHadACopyIsClearedAway) {
    ASSERT_TRUE(QDir().mkpath(place()));
    const auto inPlace = [&] { return QDir(place()).entryList(QDir::Files | QDir::Hidden); };
    const QString stem = folder.path(QStringLiteral("recovery/11-12-1"));
    const pid_t run = fork();
    ASSERT_GE(run, 0);
    if (run == 0) {
        QLockFile lock(stem + QStringLiteral(".lock"));
        platform::TemporaryFile copy;
        QLockFile other(folder.path(QStringLiteral("recovery/settings.lock")));
        if (lock.tryLock() && other.tryLock() && !copy.make(stem.toStdString() + ".gpkg")) {
            folder.write(QStringLiteral("recovery/11-12-1.name"), "a.gpkg");
            folder.write(QStringLiteral("recovery/settings.name"), "of something else");
            kill(getpid(), SIGKILL);
        }
        _exit(1);
    }
    int end = 0;
    ASSERT_EQ(waitpid(run, &end, 0), run);
    ASSERT_TRUE(WIFSIGNALED(end));
    ASSERT_EQ(inPlace().size(), 5) << inPlace().join(QLatin1Char(' ')).toStdString();
    folder.write(QStringLiteral("recovery/11-12-2.lock"), "somebody's");
    startKeeping();
    ASSERT_EQ(inPlace().size(), 4) << inPlace().join(QLatin1Char(' ')).toStdString();
    EXPECT_TRUE(inPlace().contains(QStringLiteral("11-12-2.lock"))) << "nobody knows whose";
    EXPECT_TRUE(inPlace().contains(QStringLiteral("settings.lock"))) << "of no run";
    EXPECT_TRUE(inPlace().contains(QStringLiteral("settings.name")));
}

TEST_F(Recovering, ADamagedCopyIsToldAndKeepsNothingFromWorking) {
    startKeeping();
    folder.write(QStringLiteral("recovery/1.gpkg"), "no drawing");
    {
        Answers answers;
        answers.click(QStringLiteral("recover")).ok();
        window->offerRecovery();
        EXPECT_TRUE(answers.said.contains(QStringLiteral("1.gpkg"))) << answers.said.toStdString();
    }
    import(folder.example(QStringLiteral("cadastral.sim")));
    EXPECT_TRUE(window->recovery().keepNow());
    EXPECT_EQ(copies().size(), 2);
    window->recovery().forget();
}

} // namespace
} // namespace fenmark::desk::test
