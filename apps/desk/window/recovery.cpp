// Copies of what was not saved, for the next run after a crash.
#include "desk/window/recovery.h"

#include "platform/files.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <chrono>
#include <ostream>
#include <system_error>
#include <utility>

namespace fenmark::desk {

namespace {

constexpr std::chrono::minutes kEvery{2};
constexpr qint64 kLongestName = 4096; // bytes

// The run's process and one window of it.
QString ownName() {
    static int number = 0;
    return QStringLiteral("%1-%2-%3")
        .arg(QCoreApplication::applicationPid())
        .arg(QDateTime::currentSecsSinceEpoch())
        .arg(++number);
}

// Something that is there and no file: reading a pipe would wait for ever, and a device may never end.
bool isOther(const QString& path) {
    const platform::PathKind kind = platform::lookUp(path.toStdString()).kind;
    return kind != platform::PathKind::File && kind != platform::PathKind::Missing;
}

// The path that such a file holds; empty where there is none.
QString whoseIn(const QString& path) {
    QFile file(path);
    return !isOther(path) && file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.read(kLongestName)) : QString();
}

bool tellsItsRun(const QLockFile& lock) {
    qint64 process = 0;
    QString host;
    QString program;
    return lock.getLockInfo(&process, &host, &program);
}

// What a run's files begin with, from the lock or the copy: both endings have five characters.
QString stemOf(const QString& file) {
    return file.chopped(5);
}

void removeFilesOf(const QString& stem) {
    for (const char* end : {".gpkg", ".name", ".lock"}) {
        QFile::remove(stem + QLatin1String(end));
    }
    for (const char* end : {".gpkg", ".name"}) {
        platform::TemporaryFile next; // with it goes what a killed run was writing
        (void)next.make((stem + QLatin1String(end)).toStdString());
    }
}

enum class Holder { Gone, AtWork, Odd };

// Whose the lock of a run is now. The process and the computer that it names prove nothing: a number is given out again,
// soon where the program runs in a box of its own, and a computer gets another name. What the run holds goes with it.
Holder holderOf(const QString& lockName) {
    if (isOther(lockName)) {
        return Holder::Odd;
    }
    QLockFile lock(lockName);
    lock.setStaleLockTime(0);
    if (lock.tryLock()) {
        return Holder::Gone;
    }
    if (!tellsItsRun(lock)) {
        return Holder::Odd;
    }
    return lock.removeStaleLockFile() ? Holder::Gone : Holder::AtWork;
}

} // namespace

Recovery::~Recovery() {
    if (lock_ && !kept_) {
        lock_->unlock();
        QFile::remove(lock_->fileName());
    }
}

void Recovery::start(DeskSession& session, bool keep) {
    session_ = &session;
    if (!keep && folder_.isEmpty()) {
        return;
    }
    if (folder_.isEmpty()) {
        folder_ = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QStringLiteral("/recovery");
    }
    if (const Outcome locked = takeLock(); !locked) {
        tellOnce(locked);
    }
    connect(&timer_, &QTimer::timeout, this, [this] { keepNow(); });
    timer_.start(kEvery);
}

Outcome Recovery::takeLock() {
    if (lock_) {
        return {};
    }
    auto lock = std::make_unique<QLockFile>(folder_ + QLatin1Char('/') + ownName() + QStringLiteral(".lock"));
    lock->setStaleLockTime(0); // a lock is old when its process is gone, not after a time
    if (!QDir().mkpath(folder_) || !lock->tryLock()) {
        return failed(drawing::storeMessage(Failure::NotWritable, folder_.toStdString()));
    }
    lock_ = std::move(lock);
    clearAway();
    return {};
}

void Recovery::tellOnce(const Outcome& failure) {
    if (!toldOfFailure_ && failureHandler_) {
        failureHandler_(failure);
    }
    toldOfFailure_ = true;
}

void Recovery::clearAway() const {
    const QStringList names{QStringLiteral("[0-9]*-[0-9]*-[0-9]*.lock")}; // as of runs, not of any program
    for (const QFileInfo& file : QDir(folder_).entryInfoList(names, QDir::Files)) {
        const QString stem = stemOf(file.filePath());
        const std::string copy = (stem + QStringLiteral(".gpkg")).toStdString();
        if (file.filePath() != lock_->fileName() && platform::lookUp(copy).kind == platform::PathKind::Missing &&
            holderOf(file.filePath()) == Holder::Gone) {
            removeFilesOf(stem);
        }
    }
}

QString Recovery::stem() const {
    return stemOf(lock_->fileName());
}

bool Recovery::keepNow() {
    if (folder_.isEmpty() || session_ == nullptr || session_->isRunning()) {
        return false;
    }
    const drawing::TextChanges texts = texts_ ? texts_() : drawing::TextChanges();
    if (!session_->hasChanges() && texts.before == texts.wanted) {
        return false;
    }
    if (const Outcome locked = takeLock(); !locked) {
        tellOnce(locked);
        return false;
    }
    const std::string copy = (stem() + QStringLiteral(".gpkg")).toStdString();
    if (kept_ && keptState_ == session_->state() && keptTexts_ == texts.wanted &&
        platform::lookUp(copy).kind == platform::PathKind::File) {
        return true;
    }
    if (const Outcome written = writeCopy(copy, texts.wanted); !written) {
        tellOnce(written);
        return false;
    }
    toldOfFailure_ = false;
    kept_ = true;
    keptState_ = session_->state();
    keptTexts_ = texts.wanted;
    return true;
}

// The name and the copy; what was kept before stays where one of them cannot be written.
Outcome Recovery::writeCopy(const std::string& copy, const drawing::DrawingTexts& texts) const {
    const std::string name = (stem() + QStringLiteral(".name")).toStdString();
    if (const std::error_code error = platform::writeWhole(
            name, [&](std::ostream& out) { out << session_->path(); }, platform::AtLink::Replace)) {
        return failed(platform::wordedReason(error));
    }
    return session_->writeCopy(copy, texts);
}

void Recovery::forget() {
    if (lock_ && kept_) {
        QFile::remove(stem() + QStringLiteral(".gpkg"));
        QFile::remove(stem() + QStringLiteral(".name"));
        kept_ = false;
    }
}

std::vector<LeftDrawing> Recovery::left() const {
    std::vector<LeftDrawing> found;
    if (!lock_) {
        return found;
    }
    for (const QFileInfo& file : QDir(folder_).entryInfoList({QStringLiteral("*.gpkg")}, QDir::Files, QDir::Time)) {
        const QString others = file.path() + QLatin1Char('/') + file.completeBaseName();
        if (others == stem()) {
            continue;
        }
        const QString lockName = others + QStringLiteral(".lock");
        const Holder holder = holderOf(lockName);
        if (holder != Holder::AtWork) {
            found.push_back({file.filePath(), whoseIn(others + QStringLiteral(".name")), file.lastModified(),
                             holder == Holder::Odd ? lockName : QString()});
        }
    }
    return found;
}

void Recovery::remove(const LeftDrawing& left) const {
    removeFilesOf(stemOf(left.path));
}

} // namespace fenmark::desk
