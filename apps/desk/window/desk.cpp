// fenmark-desk as a function.
#include "desk/window/desk.h"

#include "desk/paper/ask_target.h"
#include "desk/window/end_watch.h"
#include "desk/window/main_window.h"
#include "exchange/output_file.h"
#include "platform/process.h"

#include <QApplication>
#include <QBuffer>
#include <QByteArray>
#include <QDir>
#include <QFileInfo>
#include <QFontDatabase>
#include <QSettings>

#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>
#include <optional>
#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::desk {

namespace {

constexpr const char* kHelp =
    R"(fenmark-desk: shows drawings and brings SIMA survey files into them.

Usage: fenmark-desk [OPTIONS] [FILE]

  FILE                    a drawing (.gpkg) to open, or a SIMA file (.sim) to import
  --screenshot OUT.png    draw the window with the drawing FILE, without a display, and exit
  --size WIDTHxHEIGHT     size of the window in pixels (default 1400x900)
  --lang ja|en            language of the window (default: the user's locale)
  --help                  this text
  --version               the version

Options of the toolkit, such as -style fusion or -platform xcb, are passed on.

Example: fenmark-desk --screenshot plan.png road.gpkg
)";

constexpr int kNotDone = 1;
constexpr int kWrongUsage = 2;
constexpr int kLargestSide = 16384; // pixels

struct Options {
    std::string file;
    std::string screenshot;
    QSize size{1400, 900};
    bool sizeGiven = false;
    std::optional<Language> language;
    bool help = false;
    bool version = false;
    std::string wrong; // what is wrong with the usage
};

std::optional<QSize> sizeOf(const std::string& text) {
    const QStringList sides = QString::fromStdString(text).split(QLatin1Char('x'));
    bool wide = false;
    bool high = false;
    if (sides.size() != 2) {
        return std::nullopt;
    }
    const QSize size(sides[0].toInt(&wide), sides[1].toInt(&high));
    if (!wide || !high || size.width() < 1 || size.height() < 1 || size.width() > kLargestSide ||
        size.height() > kLargestSide) {
        return std::nullopt;
    }
    return size;
}

// Options of the toolkit, with one dash or two. It reads them itself.
constexpr std::array kToolkitValues{"style",           "stylesheet", "platform",     "platformpluginpath",
                                    "platformtheme",   "plugin",     "qwindowtitle", "qwindowicon",
                                    "qwindowgeometry", "display",    "fontengine",   "session"};
constexpr std::array kToolkitFlags{"reverse", "sync", "nograb", "dograb"};

// How many words of the list the toolkit's option at its beginning takes; 0 if it is none.
std::size_t toolkitWords(std::span<const std::string> words) {
    std::string_view name = words.front();
    if (!name.starts_with('-')) {
        return 0;
    }
    name.remove_prefix(name.starts_with("--") ? 2 : 1);
    const bool joined = name.find('=') != std::string_view::npos;
    name = name.substr(0, name.find('='));
    if (std::find(kToolkitFlags.begin(), kToolkitFlags.end(), name) != kToolkitFlags.end()) {
        return 1;
    }
    if (std::find(kToolkitValues.begin(), kToolkitValues.end(), name) == kToolkitValues.end()) {
        return 0;
    }
    return joined || words.size() < 2 ? 1 : 2;
}

Options parse(const std::vector<std::string>& arguments) {
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (const std::size_t words = toolkitWords(std::span(arguments).subspan(i)); words > 0) {
            i += words - 1;
            continue;
        }
        std::string name = arguments[i];
        std::optional<std::string> value;
        if (name.starts_with("--") && name.find('=') != std::string::npos) {
            value = name.substr(name.find('=') + 1);
            name.resize(name.find('='));
        }
        const bool takesValue = name == "--screenshot" || name == "--size" || name == "--lang";
        if (takesValue && !value && i + 1 < arguments.size()) {
            value = arguments[++i];
        }
        if (takesValue && value.value_or("").empty()) {
            options.wrong = name + " needs a value";
            return options;
        }
        if (name == "--help" || name == "-h") {
            options.help = true;
        } else if (name == "--version") {
            options.version = true;
        } else if (name == "--screenshot") {
            options.screenshot = *value;
        } else if (name == "--size") {
            const std::optional<QSize> size = sizeOf(*value);
            if (!size) {
                options.wrong = "--size: " + *value + " is no size such as 1400x900";
            }
            options.size = size.value_or(options.size);
            options.sizeGiven = true;
        } else if (name == "--lang") {
            if (*value != "ja" && *value != "en") {
                options.wrong = "--lang: " + *value + " is neither ja nor en";
            }
            options.language = *value == "ja" ? Language::Japanese : Language::English;
        } else if (name.size() > 1 && name.front() == '-') {
            options.wrong = "no option named " + name;
        } else if (!options.file.empty()) {
            options.wrong = "one file at a time: " + name;
        } else {
            options.file = name;
        }
    }
    if (options.wrong.empty() && !options.help && !options.version && !options.screenshot.empty() &&
        options.file.empty()) {
        options.wrong = "--screenshot needs a drawing to show";
    }
    return options;
}

int fail(int code, const std::string& message) {
    std::fprintf(stderr, "fenmark-desk: %s\n", message.c_str());
    return code;
}

int print(const char* text) {
    const bool printed = std::fputs(text, stdout) >= 0 && std::fflush(stdout) == 0;
    return printed ? 0 : fail(kNotDone, "the output cannot be written");
}

Language languageFor(const Options& options) {
    if (options.language) {
        return *options.language;
    }
    const QString kept =
        options.screenshot.empty() ? QSettings().value(QStringLiteral("language")).toString() : QString();
    if (kept == QStringLiteral("ja")) {
        return Language::Japanese;
    }
    return kept == QStringLiteral("en") ? Language::English : languageOfLocale();
}

int takePicture(const Options& options) {
    MainWindow window({languageFor(options), false});
    window.loadModule(modulePaths(QApplication::applicationDirPath().toStdString()));
    const Outcome opened = window.showDrawing(options.file);
    if (!opened) {
        return fail(kNotDone, opened.in(languageFor(options)));
    }
    window.resize(options.size);
    window.show();
    // The panels settle in a few rounds of the event loop.
    for (int round = 0; round < 5; ++round) {
        QApplication::processEvents();
    }
    window.plan().fitAll();
    window.plan().clearFocus();
    QApplication::processEvents();
    window.plan().placeNames();
    if (const auto refused = targetRefusal(window.session().drawing(), QString::fromStdString(options.screenshot))) {
        return fail(kNotDone, window.texts()(*refused).arg(QString::fromStdString(options.screenshot)).toStdString());
    }
    QByteArray bytes; // whole before the file is touched
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!window.grab().toImage().save(&buffer, "PNG")) {
        return fail(kNotDone, options.screenshot + ": cannot be written");
    }
    const Outcome written = exchange::writeFile(options.screenshot, [&](std::ostream& out) {
        out.write(bytes.constData(), static_cast<std::streamsize>(bytes.size()));
    });
    return written ? 0 : fail(kNotDone, written.in(languageFor(options)));
}

int runWindow(const Options& options) {
    MainWindow window({languageFor(options), true});
    window.loadModule(modulePaths(QApplication::applicationDirPath().toStdString()));
    if (options.sizeGiven) {
        window.resize(options.size);
    }
    window.show();
    const EndWatch end([&] {
        window.closeAtOnce();
        QCoreApplication::exit(0); // also out of the loop of a dialog
    });
    window.begin(options.file.empty() ? QString()
                                      : QFileInfo(QString::fromLocal8Bit(options.file.c_str())).absoluteFilePath());
    return QApplication::exec();
}

} // namespace

void useJapaneseFonts() {
    QFont font = QApplication::font();
    QStringList families{font.family()};
    const QStringList known = QFontDatabase::families();
    for (const char* family : {"Yu Gothic UI", "Meiryo UI", "Noto Sans CJK JP", "IPAPGothic", "TakaoPGothic"}) {
        if (known.contains(QLatin1String(family))) {
            families << QLatin1String(family);
        }
    }
    font.setFamilies(families);
    QApplication::setFont(font);
}

int runDesk(int argc, char** argv) {
    const Options options = parse(std::vector<std::string>(argv + 1, argv + argc));
    if (options.help) {
        return print(kHelp);
    }
    if (options.version) {
        return print("fenmark-desk " FENMARK_VERSION "\n");
    }
    if (!options.wrong.empty()) {
        return fail(kWrongUsage, options.wrong + " (--help tells the usage)");
    }
    platform::prepareProcess();
    platform::outliveClosedStreams(); // the toolkit writes warnings as it likes
    if (!options.screenshot.empty() && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication application(argc, argv); // takes its own options out of the list
    QCoreApplication::setOrganizationName(QStringLiteral("Fenmark"));
    QCoreApplication::setApplicationName(QStringLiteral("fenmark-desk"));
    useJapaneseFonts();
    try {
        return options.screenshot.empty() ? runWindow(options) : takePicture(options);
    } catch (const std::exception& error) {
        return fail(kNotDone, error.what());
    }
}

} // namespace fenmark::desk
