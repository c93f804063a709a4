// The program as a process: pictures without a display, help, wrong usage.
#include "desk_test_support.h"
#include "support/manual_page.h"

#include <QImage>
#include <QProcess>
#include <QProcessEnvironment>

#include <sys/resource.h>
#include <unistd.h>

#include <functional>
#include <utility>

namespace fenmark::desk::test {
namespace {

struct Ended {
    int code = -1;
    QString out;
    QString err;
};

constexpr int kPatience = 60000; // milliseconds

Ended runDesk(const QStringList& arguments, const QString& output = {}) {
    QProcess process;
    process.setStandardOutputFile(output);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    environment.remove(QStringLiteral("DISPLAY"));
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(FENMARK_DESK_PROGRAM), arguments);
    EXPECT_TRUE(process.waitForFinished(kPatience));
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAllStandardOutput()), QString::fromUtf8(process.readAllStandardError())};
}

std::string savedDrawing(const QString& path) {
    host::embedded::EmbeddedHost host;
    host.drawing().addPoint({-18000.0, -36000.0, 1.0}, 0);
    host.drawing().addPoint({-17900.0, -35900.0, 1.0}, 0);
    EXPECT_TRUE(host.currentDocument()->store().save(path.toStdString(), host.drawing()));
    return path.toStdString();
}

TEST(DeskProcess, DrawsThePictureOfADrawingWithoutADisplay) {
    const Folder folder;
    const QString drawing = folder.path(QStringLiteral("図面.gpkg"));
    savedDrawing(drawing);
    const QString picture = folder.path(QStringLiteral("絵.png"));
    const Ended ended = runDesk({QStringLiteral("--lang"), QStringLiteral("ja"), QStringLiteral("--size=900x700"),
                                 QStringLiteral("--screenshot"), picture, drawing});
    EXPECT_EQ(ended.code, 0) << ended.err.toStdString();
    const QImage image(picture);
    EXPECT_EQ(image.size(), QSize(900, 700));
    // The middle of the plan is paper, with perhaps a line of the grid.
    int paper = 0;
    for (int x = 0; x < 20; ++x) {
        for (int y = 0; y < 20; ++y) {
            paper += image.pixelColor(image.width() / 2 + x, image.height() / 3 + y) == QColor(Qt::white) ? 1 : 0;
        }
    }
    EXPECT_GT(paper, 300) << "of 400 pixels";
}

TEST(DeskProcess, SaysWhyThereIsNoPicture) {
    const Folder folder;
    const QString picture = folder.path(QStringLiteral("a.png"));
    Ended ended = runDesk({QStringLiteral("--screenshot"), picture, folder.path(QStringLiteral("missing.gpkg"))});
    EXPECT_EQ(ended.code, 1);
    EXPECT_TRUE(ended.err.contains(QStringLiteral("missing.gpkg"))) << ended.err.toStdString();
    EXPECT_FALSE(QFile::exists(picture));
    ended = runDesk({QStringLiteral("--screenshot"), picture, folder.write(QStringLiteral("bad.gpkg"), "text")});
    EXPECT_EQ(ended.code, 1);
    EXPECT_TRUE(ended.err.contains(QStringLiteral("bad.gpkg")));
    const QString drawing = folder.path(QStringLiteral("a.gpkg"));
    savedDrawing(drawing);
    ended = runDesk({QStringLiteral("--screenshot"), QStringLiteral("/no/such/folder/a.png"), drawing});
    EXPECT_EQ(ended.code, 1);
    EXPECT_TRUE(ended.err.contains(QStringLiteral("/no/such/folder/a.png")));
}

TEST(DeskProcess, APictureReplacesNoDrawingAndTellsAFullDisk) {
    const Folder folder;
    const QString drawing = folder.path(QStringLiteral("a.gpkg"));
    savedDrawing(drawing);
    const auto content = [&] {
        QFile file(drawing);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    };
    const QByteArray before = content();
    for (const QString& target : {drawing, QStringLiteral("/dev/full")}) {
        const Ended ended = runDesk({QStringLiteral("--screenshot"), target, drawing});
        EXPECT_EQ(ended.code, 1) << target.toStdString();
        EXPECT_TRUE(ended.err.contains(target)) << ended.err.toStdString();
        EXPECT_EQ(content(), before) << target.toStdString();
    }
}

// The toolkit warns on standard error, and a limit on the size of files meets each file that is written.
TEST(DeskProcess, OutlivesAClosedStreamAndALimitOnFiles) {
    const Folder folder;
    const QString drawing = folder.path(QStringLiteral("a.gpkg"));
    savedDrawing(drawing);
    const QString picture = folder.path(QStringLiteral("a.png"));
    const auto codeOf = [&](std::function<void()> inTheProcess) {
        QProcess process;
        process.setChildProcessModifier(std::move(inTheProcess));
        process.start(QStringLiteral(FENMARK_DESK_PROGRAM), {QStringLiteral("--screenshot"), picture, drawing});
        EXPECT_TRUE(process.waitForFinished(kPatience));
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    };
    EXPECT_EQ(codeOf([] {
                  int ends[2] = {-1, -1};
                  if (::pipe(ends) == 0) {
                      ::dup2(ends[1], STDERR_FILENO);
                      ::close(ends[0]);
                      ::close(ends[1]);
                  }
              }),
              0);
    EXPECT_TRUE(QFile::remove(picture));
    EXPECT_EQ(codeOf([] {
                  const rlimit limit{1000, 1000};
                  ::setrlimit(RLIMIT_FSIZE, &limit);
              }),
              1);
    EXPECT_FALSE(QFile::exists(picture));
}

TEST(DeskProcess, TellsItsUsageAndVersionWithoutADisplay) {
    Ended ended = runDesk({QStringLiteral("--help")});
    EXPECT_EQ(ended.code, 0);
    EXPECT_TRUE(ended.out.contains(QStringLiteral("Example:")));
    ended = runDesk({QStringLiteral("--version")});
    EXPECT_EQ(ended.code, 0);
    EXPECT_TRUE(ended.out.startsWith(QStringLiteral("fenmark-desk 1.")));
    for (const char* option : {"--help", "--version"}) {
        ended = runDesk({QLatin1String(option)}, QStringLiteral("/dev/full"));
        EXPECT_EQ(ended.code, 1) << option;
        EXPECT_FALSE(ended.err.isEmpty()) << option;
    }
}

TEST(DeskProcess, TheManualPageHasTheOptionsOfHelpAndNoOthers) {
    const Ended ended = runDesk({QStringLiteral("--help")});
    const std::string page = fenmark::test::plainManualPage(FENMARK_SOURCE_DIR "/apps/desk/share/fenmark-desk.1");
    EXPECT_EQ(fenmark::test::optionsIn(page), fenmark::test::optionsIn(ended.out.toStdString()));
}

TEST(DeskProcess, OptionsOfTheToolkitPass) {
    const Folder folder;
    const QString drawing = folder.path(QStringLiteral("a.gpkg"));
    savedDrawing(drawing);
    const auto pictureOf = [&](const char* style) {
        const QString picture = folder.path(QLatin1String(style) + QStringLiteral(".png"));
        const Ended ended =
            runDesk({QStringLiteral("-style"), QLatin1String(style), QStringLiteral("--platform=offscreen"),
                     QStringLiteral("--screenshot"), picture, drawing});
        EXPECT_EQ(ended.code, 0) << ended.err.toStdString();
        return QImage(picture);
    };
    const QImage fusion = pictureOf("fusion");
    ASSERT_FALSE(fusion.isNull());
    EXPECT_NE(fusion, pictureOf("windows"));
}

TEST(DeskProcess, WrongUsageEndsWithTwo) {
    for (const QStringList& arguments :
         {QStringList{QStringLiteral("--nothing")}, QStringList{QStringLiteral("--screenshot")},
          QStringList{QStringLiteral("--screenshot"), QStringLiteral("a.png")},
          QStringList{QStringLiteral("--screenshot="), QStringLiteral("a.gpkg")},
          QStringList{QStringLiteral("--size"), QStringLiteral("big"), QStringLiteral("a.gpkg")},
          QStringList{QStringLiteral("--lang"), QStringLiteral("fr")},
          QStringList{QStringLiteral("a.gpkg"), QStringLiteral("b.gpkg")}}) {
        const Ended ended = runDesk(arguments);
        EXPECT_EQ(ended.code, 2) << arguments.join(QLatin1Char(' ')).toStdString();
        EXPECT_TRUE(ended.err.startsWith(QStringLiteral("fenmark-desk: ")));
    }
}

} // namespace
} // namespace fenmark::desk::test
